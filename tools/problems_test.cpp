// What messages and JSON of the command keep from a terminal, by the table that the kit is tested
// with.
#include "tools/problems.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "kit/characters.h"
#include "kit/test_characters.h"

namespace bkoq::test {
namespace {

using nlohmann::json;
using tool::printable;
using tool::printableJson;
using tool::shortened;

// Whether a terminal shows all of a text and obeys none of it; lines may end.
bool isPlain(std::string_view text, bool hasLines = false) {
  for (std::size_t i = 0; i < text.size();) {
    const kit::Character character = kit::characterAt(text, i);
    if (!character.isPrintable && !(hasLines && character.code == '\n')) return false;
    i += character.size;
  }
  return true;
}

std::string jsonOf(const std::string& text) {
  return printableJson(json{{"text", text}}.dump(2, ' ', false, json::error_handler_t::replace));
}

TEST(Messages, ShowEveryCharacterPlainly) {
  for (const std::string& text : allCharacters()) {
    ASSERT_TRUE(isPlain(printable(text))) << std::hex << kit::characterAt(text, 0).code;
  }
  for (const auto& [what, bytes] : invalidSequences()) {
    EXPECT_TRUE(isPlain(printable(bytes))) << what;
    EXPECT_TRUE(isPlain(printable(bytes + "\xC3\xA9"))) << what;
  }
  // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what it is about
  EXPECT_EQ(printable("a\x1b\n\xe2\x80\xae\xf3\xa0\x80\x81\xff\xc3\xa9"),
            "a\\u001B\\u000A\\u202E\\U000E0001\\xFF\xc3\xa9");
  // Four digits, and eight, whatever the first of them is.
  EXPECT_EQ(printable("\xef\xbb\xbf\xf0\x9d\x85\xb3"), "\\uFEFF\\U0001D173");
}

// No message is cut within a character; bytes that are none have no place to be cut at.
TEST(Messages, ShortenTextsOfMoreThan80Bytes) {
  const std::string most(80, 'a');
  const std::string less(79, 'a');
  EXPECT_EQ(shortened(most), most);
  EXPECT_EQ(shortened(most + "b"), most + "...");
  EXPECT_EQ(shortened(less + "\xc3\xa9"), less + "...");
  EXPECT_EQ(shortened(std::string(100, '\x80')), "...");
}

TEST(Messages, ShowTheNameOfTheirFilePlainly) {
  tool::Problem problem;
  problem.place = {3, 5};
  // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what it is about
  problem.path = "host\xe2\x80\xae";
  problem.message = "unknown \x1b[2J";
  EXPECT_EQ(tool::lineOf(problem, "a\rb\xff.json"),
            "a\\u000Db\\xFF.json:3:5: host\\u202E: unknown \\u001B[2J");
}

TEST(Messages, AreManyFromTheThousandAndFirst) {
  tool::Problems problems;
  for (int i = 0; i < 1000; ++i) {
    EXPECT_FALSE(problems.areMany()) << i;
    problems.add({1, 1}, "", "");
  }
  EXPECT_FALSE(problems.areMany());
  problems.warn({1, 1}, "", "");
  EXPECT_TRUE(problems.areMany());
}

TEST(MessagesAsJson, ShowEveryCharacterPlainlyAndKeepIt) {
  for (const std::string& text : allCharacters()) {
    const std::string written = jsonOf(text);
    const std::uint32_t first = kit::characterAt(text, 0).code;
    ASSERT_TRUE(isPlain(written, true)) << std::hex << first;
    ASSERT_EQ(json::parse(written)["text"].get<std::string>(), text) << std::hex << first;
  }
  EXPECT_NE(jsonOf("\xc3\xa9 \xe4\xb8\xad").find("\xc3\xa9 \xe4\xb8\xad"), std::string::npos);
  for (const auto& [what, bytes] : invalidSequences()) {
    EXPECT_TRUE(isPlain(jsonOf(bytes), true)) << what;
    EXPECT_TRUE(json::accept(jsonOf(bytes))) << what;
  }
  EXPECT_EQ(printableJson("\xff\n"), "\\ufffd\n");
}

}  // namespace
}  // namespace bkoq::test
