#ifndef BKOQ_KIT_TEST_PRINT_H_
#define BKOQ_KIT_TEST_PRINT_H_

#include <gtest/gtest.h>

#include <string>

#include "kit/test_trees.h"

namespace bkoq::test {

// Expected text begins with a line end, so that it starts at the left margin.
inline std::string expected(const char* text) { return text + 1; }

template <class Job>
std::string printed(const TreeOf<Job>& job, const BkoqPrintOptions& options) {
  std::string text;
  EXPECT_EQ(bkoqPrint(job.get(), LayoutOf<Job>::kValue, &options, appendToString, &text), BKOQ_OK);
  return text;
}

inline BkoqPrintOptions withoutZeros() {
  BkoqPrintOptions options{};
  options.hideZero = 1;
  return options;
}

}  // namespace bkoq::test

#endif  // BKOQ_KIT_TEST_PRINT_H_
