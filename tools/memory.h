#ifndef BKOQ_TOOLS_MEMORY_H_
#define BKOQ_TOOLS_MEMORY_H_

#include <cerrno>
#include <new>

namespace bkoq::tool {

// What the library cannot allocate of a text or a list is left out, and nothing says so but errno.
// These two enclose a use of the library: a job without some of its texts must not become an image.
inline void expectMemory() { errno = 0; }
inline void requireMemory() {
  if (errno == ENOMEM) throw std::bad_alloc();
}

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_MEMORY_H_
