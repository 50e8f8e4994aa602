#ifndef BKOQ_TESTING_BLOCK_SIZE_H_
#define BKOQ_TESTING_BLOCK_SIZE_H_

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstddef>

// Checks the size of a block from malloc(): exactly where the allocator tells it, else as a bound.
inline void expectBlockSize(const void* block, std::size_t size) {
  ASSERT_NE(block, nullptr);
  const std::size_t usable = malloc_usable_size(const_cast<void*>(block));
#ifdef __SANITIZE_ADDRESS__
  EXPECT_EQ(usable, size);
#else
  EXPECT_GE(usable, size);
#endif
}

#endif  // BKOQ_TESTING_BLOCK_SIZE_H_
