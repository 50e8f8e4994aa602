#ifndef RW_EXPORT_H_
#define RW_EXPORT_H_

// The classes are those of a 32-bit library. A file that is not found ends the compilation at once,
// so that its name is all that is said.
#if !defined(__SIZEOF_POINTER__) || __SIZEOF_POINTER__ != 4
#include "libbkoq is 32-bit: compile with -m32"
#endif

/// Marks what the shared library exports: its classes.
#if defined(__GNUC__)
#define RW_API __attribute__((visibility("default")))
#else
#define RW_API
#endif

#endif  // RW_EXPORT_H_
