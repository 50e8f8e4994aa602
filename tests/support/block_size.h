#ifndef BKOQ_TESTS_SUPPORT_BLOCK_SIZE_H_
#define BKOQ_TESTS_SUPPORT_BLOCK_SIZE_H_

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstddef>

#include "tests/support/sanitizers.h"

namespace bkoq::test {

// AddressSanitizer's allocator knows the exact size of a block, but copies it on each realloc().
#ifdef BKOQ_WITH_ASAN
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

// Checks the size of a block from malloc(): exactly where the allocator tells it, else as a bound.
inline void expectBlockSize(const void* block, std::size_t size) {
  ASSERT_NE(block, nullptr);
  const std::size_t usable = malloc_usable_size(const_cast<void*>(block));
  if (kSanitized) {
    EXPECT_EQ(usable, size);
  } else {
    EXPECT_GE(usable, size);
  }
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_BLOCK_SIZE_H_
