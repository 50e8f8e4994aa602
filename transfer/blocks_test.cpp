#include "transfer/blocks.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <initializer_list>
#include <string>

namespace bkoq::test {
namespace {

// No two bytes of it alike up to 94, so that each one copied from elsewhere shows.
std::string textOf(std::size_t length) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char>('!' + i % 94);
  return text;
}

std::string joined(std::initializer_list<std::string> parts) {
  std::string all;
  for (const std::string& part : parts) all += part;
  return all;
}

// The bytes of a block, which is freed.
std::string taken(char* block, std::size_t size) {
  std::string bytes(block, size);
  std::free(block);
  return bytes;
}

TEST(Blocks, CopyTheBytesThatWereCountedAndNoOther) {
  for (std::size_t count = 0; count <= 80; ++count) {
    const std::string from = textOf(count);
    std::string to(count + 2, '\x7f');
    bkoq::copyBytes(&to[1], from.data(), count);
    EXPECT_EQ(to, joined({"\x7f", from, "\x7f"})) << count << " bytes";
  }
}

TEST(Blocks, HoldTextsOfAnyLength) {
  const std::string nul(1, '\0');
  for (std::size_t length = 0; length <= 80; ++length) {
    const std::string first = textOf(length);
    const std::string second = textOf(80 - length);
    const bkoq::Text firstText(first.c_str());
    const bkoq::Text secondText(second.c_str());
    EXPECT_EQ(taken(bkoq::duplicate(firstText), length + 1), joined({first, nul}));
    EXPECT_EQ(taken(bkoq::duplicateFirst(firstText), length + 2), joined({first, nul, nul}));
    EXPECT_EQ(taken(bkoq::joinTexts(firstText, secondText, 1), 81), joined({first, second, nul}));
    EXPECT_EQ(taken(bkoq::packTexts(firstText, secondText), 82), joined({first, nul, second, nul}));
    if (length == 80) continue;
    EXPECT_EQ(taken(bkoq::copyCredentials(true, firstText, secondText), 83),
              joined({first, ":", second, nul, nul}));
  }
}

}  // namespace
}  // namespace bkoq::test
