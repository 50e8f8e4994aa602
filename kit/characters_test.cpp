#include "kit/characters.h"

#include <gtest/gtest.h>

#include <string>

namespace bkoq::test {
namespace {

using kit::Character;
using kit::characterAt;

std::string utf8(std::uint32_t code) {
  std::string bytes;
  const auto add = [&](std::uint32_t byte) { bytes += static_cast<char>(byte); };
  if (code < 0x80) {
    add(code);
  } else if (code < 0x800) {
    add(0xC0 | code >> 6);
  } else if (code < 0x10000) {
    add(0xE0 | code >> 12);
    add(0x80 | (code >> 6 & 0x3F));
  } else {
    add(0xF0 | code >> 18);
    add(0x80 | (code >> 12 & 0x3F));
    add(0x80 | (code >> 6 & 0x3F));
  }
  if (code >= 0x80) add(0x80 | (code & 0x3F));
  return bytes;
}

TEST(Characters, TakesEveryCodeAsItIsWritten) {
  for (std::uint32_t code = 0; code <= 0x10FFFF; ++code) {
    const std::string bytes = utf8(code);
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    const Character character = characterAt(bytes + "x", 0);
    ASSERT_EQ(character.isValid, !isSurrogate) << code;
    ASSERT_EQ(character.size, isSurrogate ? 1 : bytes.size()) << code;
    if (!isSurrogate) {
      ASSERT_EQ(character.code, code);
    }
  }
}

TEST(Characters, PrintsWhatShowsAndLeavesItsSurroundingsAlone) {
  for (const std::uint32_t code : {0x20, 0x41, 0x7E, 0xA0, 0xE9, 0x3B1, 0x5D0, 0x4E2D, 0x1F600}) {
    EXPECT_TRUE(characterAt(utf8(code), 0).isPrintable) << std::hex << code;
  }
}

TEST(Characters, KeepsFromTheTerminalWhatMovesTurnsOrHides) {
  const std::uint32_t codes[] = {
      0x00,   0x07,   0x08,   0x0A,    0x1B,    0x1F,    0x7F,    0x80,    0x9B,    0x9F,   0xAD,
      0x34F,  0x61C,  0x115F, 0x1160,  0x17B4,  0x180E,  0x200B,  0x200C,  0x200D,  0x200E, 0x200F,
      0x2028, 0x2029, 0x202A, 0x202B,  0x202C,  0x202D,  0x202E,  0x2060,  0x2064,  0x2066, 0x2067,
      0x2068, 0x2069, 0x206F, 0x2800,  0x3164,  0xFE0F,  0xFEFF,  0xFFA0,  0xFFF9,  0xFFFB, 0xFFFE,
      0xFFFF, 0xE000, 0xFDD0, 0x1D173, 0xE0001, 0xE0020, 0xE01EF, 0xF0000, 0x10FFFF};
  for (const std::uint32_t code : codes) {
    const Character character = characterAt(utf8(code), 0);
    EXPECT_TRUE(character.isValid) << std::hex << code;
    EXPECT_FALSE(character.isPrintable) << std::hex << code;
  }
}

TEST(Characters, TakesNoOtherFormThanTheShortest) {
  for (const std::string bytes :
       {"\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xF0\x80\x80\x80",
        "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
        "\xFF", "\xFE", "\x80", "\xBF", "\xC2", "\xE2\x80", "\xF0\x9F\x98", "\xC2x", "\xE2\x80x"}) {
    const Character character = characterAt(bytes, 0);
    EXPECT_FALSE(character.isValid);
    EXPECT_FALSE(character.isPrintable);
    EXPECT_EQ(character.size, 1u);
    EXPECT_EQ(character.code, static_cast<unsigned char>(bytes[0]));
  }
}

}  // namespace
}  // namespace bkoq::test
