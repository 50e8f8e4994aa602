// On its own, so that no compiler looks through it.
#include "debugger/filled_new.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace bkoq::debugger {
unsigned char newMemoryFill = 0;
}

void* operator new(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return std::memset(memory, bkoq::debugger::newMemoryFill, size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
