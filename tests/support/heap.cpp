#include "tests/support/heap.h"

#include <cstddef>

#include "tests/support/sanitizers.h"

#ifdef BKOQ_WITH_ASAN
#include <sanitizer/asan_interface.h>
#endif

namespace bkoq::test {

// What the functions of the C library's heap tell.
struct Heap {
  static bool isWatched;
  static unsigned int allocations;
  static unsigned int failing;
  static int blocks;
  static BlockWatch* watches;

  static bool failsNow() { return isWatched && ++allocations == failing; }

  static void* made(void* block) {
    if (isWatched && block != nullptr) ++blocks;
    return block;
  }

  static void freed(const void* block) {
    if (isWatched) --blocks;
    for (BlockWatch* watch = watches; watch != nullptr; watch = watch->next_) {
      if (watch->block_ == block) watch->isFreed_ = true;
    }
  }
};

bool Heap::isWatched = false;
unsigned int Heap::allocations = 0;
unsigned int Heap::failing = 0;
int Heap::blocks = 0;
BlockWatch* Heap::watches = nullptr;

HeapWatch::HeapWatch(unsigned int failing) {
  Heap::allocations = 0;
  Heap::failing = failing;
  Heap::blocks = 0;
  Heap::isWatched = true;
}

HeapWatch::~HeapWatch() { Heap::isWatched = false; }

unsigned int HeapWatch::allocations() const { return Heap::allocations; }

int HeapWatch::blocks() const { return Heap::blocks; }

BlockWatch::BlockWatch(const void* block) : block_(block), next_(Heap::watches) {
  Heap::watches = this;
}

BlockWatch::~BlockWatch() {
  BlockWatch** link = &Heap::watches;
  while (*link != this) link = &(*link)->next_;
  *link = next_;
}

// A freed block is poisoned by AddressSanitizer, and is not handed out again for long.
#ifdef BKOQ_WITH_ASAN
bool BlockWatch::isFreed() const { return __asan_address_is_poisoned(block_) != 0; }

#else
bool BlockWatch::isFreed() const { return isFreed_; }
#endif

}  // namespace bkoq::test

#ifndef BKOQ_WITH_ASAN

using bkoq::test::Heap;

// These take the place of the C library's own in the whole process. The test programs whose linker
// wraps malloc() and realloc() come here from the real ones.
#pragma GCC visibility push(default)
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) {
  return Heap::failsNow() ? nullptr : Heap::made(__libc_malloc(size));
}

void* calloc(std::size_t nmemb, std::size_t size) {
  return Heap::failsNow() ? nullptr : Heap::made(__libc_calloc(nmemb, size));
}

void* realloc(void* ptr, std::size_t size) {
  if (size != 0 && Heap::failsNow()) return nullptr;
  void* moved = __libc_realloc(ptr, size);
  if (moved != ptr && (moved != nullptr || size == 0)) {
    if (ptr != nullptr) Heap::freed(ptr);
    Heap::made(moved);
  }
  return moved;
}

void free(void* ptr) {
  if (ptr != nullptr) Heap::freed(ptr);
  __libc_free(ptr);
}

}  // extern "C"
#pragma GCC visibility pop

#endif
