#ifndef BKOQ_TESTS_SUPPORT_HEAP_H_
#define BKOQ_TESTS_SUPPORT_HEAP_H_

#include "tests/support/block_size.h"

namespace bkoq::test {

// Memory runs out in five ways, each where no other reaches:
// - FailingNew (failing_new.h): what the classes ask for by `new (std::nothrow)`, also with
//   AddressSanitizer, which knows nothing of the class below
// - Allocations (memory/wrap_malloc.h): the library's own malloc() and realloc(), one by one, which
//   only a program that links its objects can tell apart
// - HeapWatch (here): every allocation of the process, all libraries included
// - kit_memory_test.cpp: `new` of the kit, which throws
// - failing_malloc.c: one allocation of the library inside the command, which is another process

// The heap of the whole process, all its libraries included. With AddressSanitizer, which brings a
// heap of its own, allocations are not seen; blocks that are freed are.
constexpr bool kSeesAllocations = !kSanitized;

// While one of these lives, counts the calls of malloc(), calloc() and realloc() that allocate, and
// fails the one numbered `failing`, counted from 1. One at a time.
class HeapWatch {
 public:
  explicit HeapWatch(unsigned int failing = 0);
  ~HeapWatch();
  HeapWatch(const HeapWatch&) = delete;
  HeapWatch& operator=(const HeapWatch&) = delete;

  unsigned int allocations() const;
  // How many blocks there are more than when this was made.
  int blocks() const;
};

// Tells whether a block was freed since this was made: what an object without a virtual destructor
// cannot tell of itself.
class BlockWatch {
 public:
  explicit BlockWatch(const void* block);
  ~BlockWatch();
  BlockWatch(const BlockWatch&) = delete;
  BlockWatch& operator=(const BlockWatch&) = delete;

  bool isFreed() const;

 private:
  friend struct Heap;
  const void* block_;
  bool isFreed_ = false;
  BlockWatch* next_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_HEAP_H_
