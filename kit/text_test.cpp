#include "kit/text.h"

#include <gtest/gtest.h>

#include <string>

namespace bkoq::test {
namespace {

using kit::columns;
using kit::leftPadded;
using kit::padded;

TEST(Text, TakesAColumnForEachCharacter) {
  const struct {
    const char* text;
    std::size_t columns;
  } rows[] = {
      {"", 0}, {"host", 4}, {"\x7F", 1}, {"\u00E9t\u00E9", 3}, {"\u20AC", 1}, {"\U0001F600!", 2},
  };
  for (const auto& row : rows) {
    const std::string text = row.text;
    EXPECT_EQ(columns(text), row.columns) << text;
    EXPECT_EQ(padded(text, 5), text + std::string(5 - row.columns, ' '));
    EXPECT_EQ(leftPadded(text, 5), std::string(5 - row.columns, ' ') + text);
    EXPECT_EQ(padded(text, row.columns), text);
    EXPECT_EQ(leftPadded(text, row.columns), text);
  }
}

}  // namespace
}  // namespace bkoq::test
