#include "kit/characters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

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
  for (const Harm& harm : harms()) {
    for (std::uint32_t code = harm.first; code <= harm.last; ++code) {
      const Character character = characterAt(utf8(code), 0);
      ASSERT_EQ(character.isValid, !isSurrogate(code)) << harm.what << " " << std::hex << code;
      ASSERT_FALSE(character.isPrintable) << harm.what << " " << std::hex << code;
    }
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
