#include "kit/characters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "kit/test_characters.h"
#include "kit/test_trees.h"
#include "kit/text.h"

namespace bkoq::test {
namespace {

using kit::Character;
using kit::characterAt;
using kit::CharacterRange;

constexpr std::uint32_t kLast = 0x10FFFF;

bool isSurrogate(std::uint32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

// Whether a terminal shows all of a text and obeys none of it.
bool isPlain(const std::string& text) {
  for (std::size_t i = 0; i < text.size();) {
    const Character character = characterAt(text, i);
    if (!character.isPrintable) return false;
    i += character.size;
  }
  return true;
}

TEST(Characters, TakesEveryCodeAsItIsWritten) {
  for (std::uint32_t code = 0; code <= kLast; ++code) {
    const std::string bytes = utf8(code);
    const Character character = characterAt(bytes + "x", 0);
    ASSERT_EQ(character.isValid, !isSurrogate(code)) << code;
    ASSERT_EQ(character.size, isSurrogate(code) ? 1 : bytes.size()) << code;
    if (!isSurrogate(code)) {
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
  std::vector<const char*> whatIsWrong(kLast + 1, nullptr);
  for (const Harm& harm : harms()) {
    for (std::uint32_t code = harm.first; code <= harm.last; ++code) whatIsWrong[code] = harm.what;
  }
  for (std::uint32_t code = 0; code <= kLast; ++code) {
    const bool isHarmless = whatIsWrong[code] == nullptr;
    ASSERT_EQ(characterAt(utf8(code), 0).isPrintable, isHarmless)
        << (isHarmless ? "nothing is wrong with" : whatIsWrong[code]) << " " << std::hex << code;
  }
}

TEST(Characters, TakesNoOtherFormThanTheShortest) {
  for (const auto& [what, bytes] : invalidSequences()) {
    const Character character = characterAt(bytes, 0);
    EXPECT_FALSE(character.isValid) << what;
    EXPECT_FALSE(character.isPrintable) << what;
    EXPECT_EQ(character.size, 1u) << what;
    EXPECT_EQ(character.code, static_cast<unsigned char>(bytes[0])) << what;
  }
}

// How long a character is that begins like this, 0 for none: the table of the Unicode standard, in
// which the second byte decides what the first leaves open.
std::size_t sizeByTable(unsigned int first, unsigned int second) {
  const struct {
    unsigned int first, last;              // of the first byte
    unsigned int leastSecond, mostSecond;  // of the second one
    std::size_t size;
  } rows[] = {
      {0x00, 0x7F, 0x00, 0xFF, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
      {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
      {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4}};
  for (const auto& row : rows) {
    if (first >= row.first && first <= row.last && second >= row.leastSecond &&
        second <= row.mostSecond) {
      return row.size;
    }
  }
  return 0;
}

std::string bytesOf(std::initializer_list<unsigned int> values) {
  return {values.begin(), values.end()};
}

TEST(Characters, TakesTheBytesOfTheTable) {
  for (unsigned int first = 0; first <= 0xFF; ++first) {
    for (unsigned int second = 0; second <= 0xFF; ++second) {
      const std::size_t size = sizeByTable(first, second);
      const Character character = characterAt(bytesOf({first, second, 0x80, 0xBF}), 0);
      ASSERT_EQ(character.isValid, size != 0) << std::hex << first << " " << second;
      ASSERT_EQ(character.size, std::max<std::size_t>(size, 1))
          << std::hex << first << " " << second;
    }
    for (unsigned int next = 0; next <= 0xFF; ++next) {
      const bool isNext = next >= 0x80 && next <= 0xBF;
      // 0xA0 and 0x90 are second bytes of all that begin so, but for 0xED and 0xF4.
      if (sizeByTable(first, 0xA0) == 3) {
        ASSERT_EQ(characterAt(bytesOf({first, 0xA0, next}), 0).isValid, isNext) << std::hex << next;
      }
      if (sizeByTable(first, 0x90) == 4) {
        ASSERT_EQ(characterAt(bytesOf({first, 0x90, next, 0x80}), 0).isValid, isNext);
        ASSERT_EQ(characterAt(bytesOf({first, 0x90, 0x80, next}), 0).isValid, isNext);
      }
    }
  }
}

TEST(Characters, LooksAtNothingBehindTheText) {
  const std::string_view text("a\xF0\x9F\x98\x80");
  for (std::size_t size = 2; size < text.size(); ++size) {
    EXPECT_FALSE(characterAt(text.substr(0, size), 1).isValid) << size;
  }
  EXPECT_TRUE(characterAt(text, 1).isValid);
}

TEST(Characters, GivesTheRangesByWhichItDecides) {
  const std::vector<CharacterRange> ranges = kit::unprintableRanges();
  std::size_t next = 0;
  for (std::uint32_t code = 0; code <= kLast; ++code) {
    while (next < ranges.size() && ranges[next].last < code) ++next;
    const bool isInside = next < ranges.size() && code >= ranges[next].first;
    ASSERT_EQ(characterAt(utf8(code), 0).isPrintable, !isInside) << std::hex << code;
  }
}

// Every character, and whatever is none, as the kit writes it.
TEST(Characters, ReachTheTerminalPlainlyInEveryFormOfTheKit) {
  for (const std::string& text : allCharacters()) {
    ASSERT_TRUE(isPlain(kit::quoted(text))) << std::hex << characterAt(text, 0).code;
    ASSERT_TRUE(isPlain(kit::jsonQuoted(text))) << std::hex << characterAt(text, 0).code;
  }
  for (const auto& [what, bytes] : invalidSequences()) {
    EXPECT_TRUE(isPlain(kit::quoted(bytes))) << what;
    EXPECT_TRUE(isPlain(kit::quoted(bytes + "\xC3\xA9"))) << what;
    std::string json;
    kit::Output out(appendToString, &json);
    kit::putJsonText(out, bytes);
    out.flush();
    EXPECT_TRUE(isPlain(json)) << what;
  }
}

}  // namespace
}  // namespace bkoq::test
