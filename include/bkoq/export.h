#ifndef BKOQ_EXPORT_H_
#define BKOQ_EXPORT_H_

/* What every public header includes first: the one target that the library is built for, and the
   mark of what it exports. Usable from C99 and C++11. */

/* A target of another shape would only be told by a page of errors about offsets and sizes. A file
   that is not found ends the compilation at once, so that its name is all that is said. */
#if !defined(__SIZEOF_POINTER__) || __SIZEOF_POINTER__ != 4 || \
    __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#include "libbkoq is 32-bit: compile with -m32"
#endif

/** Marks what the shared library exports: its public classes, variables and functions. */
#if defined(__GNUC__)
#define BKOQ_API __attribute__((visibility("default")))
#else
#define BKOQ_API
#endif

/** Asserts at compile time, in every language of the public headers; in C99 the text may be left
    out of what the compiler says. */
#ifdef __cplusplus
#define BKOQ_STATIC_ASSERT(condition, text) static_assert(condition, text)
#else
#define BKOQ_STATIC_ASSERT(condition, text) __extension__ _Static_assert(condition, text)
#endif

#ifdef __cplusplus
namespace bkoq {
/// The flattening of the model into records; it reads the model's members in place.
struct Flattening;
}  // namespace bkoq
#endif

#endif /* BKOQ_EXPORT_H_ */
