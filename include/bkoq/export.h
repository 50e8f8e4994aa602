#ifndef BKOQ_EXPORT_H_
#define BKOQ_EXPORT_H_

/// Marks what the shared library exports: its public classes, variables and functions.
#if defined(__GNUC__)
#define BKOQ_API __attribute__((visibility("default")))
#else
#define BKOQ_API
#endif

#ifdef __cplusplus
namespace bkoq {
/// The flattening of the model into records; it reads the model's members in place.
struct Flattening;
}  // namespace bkoq
#endif

#endif /* BKOQ_EXPORT_H_ */
