#ifndef RW_EXPORT_H_
#define RW_EXPORT_H_

/// Marks what the shared library exports: its classes.
#if defined(__GNUC__)
#define RW_API __attribute__((visibility("default")))
#else
#define RW_API
#endif

#endif  // RW_EXPORT_H_
