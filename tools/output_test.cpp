// Lines that are folded for a terminal.

#include "tools/output.h"

#include <gtest/gtest.h>

#include <string>

namespace bkoq::tool {
namespace {

TEST(Folded, BreaksBetweenWordsAndIndents) {
  const struct {
    const char* line;
    unsigned int columns;
    const char* result;
  } cases[] = {
      {"", 10, ""},
      {"one two three", 0, "one two three"},
      {"one two three", 13, "one two three"},
      {"one two three", 12, "one two\n    three"},
      {"one two three", 9, "one two\n    three"},
      {"  one two three", 12, "  one two\n      three"},
      // A word that fits in no line stays where it is.
      {"one two three", 8, "one two three"},
      {"one abcdefghijkl two", 10, "one abcdefghijkl\n    two"},
      // The indentation takes half of a line at most, and the first word stays after its own.
      {"        one two", 10, "        one\n     two"},
      // What takes no column: the bytes of a character after the first, and colours.
      {"\xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9", 9,
       "\xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9"},
      {"\033[1mone\033[0m \033[31mtwo\033[0m six", 11, "\033[1mone\033[0m \033[31mtwo\033[0m six"},
      {"\033[1mone\033[0m \033[31mtwo\033[0m six", 10,
       "\033[1mone\033[0m \033[31mtwo\033[0m\n    six"},
      // Blanks at a break are left out, others are kept.
      {"one   two   three", 10, "one   two\n    three"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(folded(each.line, each.columns), each.result) << each.columns << ": " << each.line;
  }
}

}  // namespace
}  // namespace bkoq::tool
