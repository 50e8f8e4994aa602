#include "transfer/file_list.h"

#include <gtest/gtest.h>

namespace bkoq::test {
namespace {

TEST(FileList, LengthOfItsFirstTexts) {
  const char list[] = "a\0bc\0def";
  const struct {
    int count;
    std::size_t length;
  } rows[] = {{-1, 0}, {0, 0}, {1, 2}, {2, 5}, {3, 9}};
  for (const auto& row : rows) EXPECT_EQ(bkoq::listLength(list, row.count), row.length);
  EXPECT_EQ(bkoq::listLength(nullptr, 3), 0u);
}

}  // namespace
}  // namespace bkoq::test
