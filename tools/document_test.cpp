// What of a document no message of the command shows by itself: places that are asked for in any
// order, and that values stay where they are, however many follow.
#include "tools/document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace bkoq::tool {
namespace {

// A place as it is defined: lines end with a line feed, and the bytes of a character after its
// first are no columns.
Place placeByDefinition(const std::string& text, std::size_t at) {
  Place place{1, 1};
  for (std::size_t i = 0; i < std::min(at, text.size()); ++i) {
    if (text[i] == '\n') {
      place = {place.line + 1, 1};
    } else if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80) {
      ++place.column;
    }
  }
  return place;
}

TEST(Places, AreTheSameInEveryOrder) {
  // Empty lines, lines of one character, and characters of one to four bytes, also at both ends of
  // a line.
  const std::string text = "\n\xC3\xA9{\"a\"\n\n\n1\n b\xE2\x82\xAC\xF0\x9D\x84\x9E: \xC3\xA9\n}";
  const Document document(text);
  const auto last = static_cast<Offset>(text.size() + 2);  // behind the end it is the end
  for (Offset from = 0; from <= last; ++from) {
    for (Offset to = 0; to <= last; ++to) {
      document.placeOf(from);
      const Place place = document.placeOf(to);
      const Place right = placeByDefinition(text, to);
      ASSERT_EQ(place.line, right.line) << "from " << from << " to " << to;
      ASSERT_EQ(place.column, right.column) << "from " << from << " to " << to;
    }
  }
  const Place end = document.placeOf(last);
  EXPECT_EQ(end.line, 7U);
  EXPECT_EQ(end.column, 2U);
}

// Where the mistake is stands "@", which is no part of the text.
struct Mistake {
  const char* text;
  const char* message;
};
constexpr const char* kOpenComment = "this comment is not closed with \"*/\"";
constexpr const char* kNull = "this word is written as null";
constexpr const char* kValue =
    "a value is expected: a text in double quotes, a number, true, false, null, a list or an "
    "object";
const Mistake kMistakes[] = {
    {"@/* a", kOpenComment},
    {"@/*/", kOpenComment},
    {"@/* a\n// b\n/* c\n", kOpenComment},
    {"{/**/@/*", kOpenComment},
    {"{/**/ /* a */ @/* b /* c", kOpenComment},
    {"{// /* a */ /*\n@/* b", kOpenComment},
    {"{// a\n// /*\n@/* b\n", kOpenComment},
    {"{//\n@/* b\n", kOpenComment},
    {"{\"/* a\": \"//\", @/* \"b", kOpenComment},
    {"{\"a\": \"\\\" /*\", @/* \"b\"", kOpenComment},
    {"{\"\": \"\", @/*", kOpenComment},
    {"{\"a\": 1, @/", "a comment is \"// to the end of the line\" or \"/* ... */\""},
    {"[@None]", kNull},
    {"[@None-]", kNull},
    {"[@None:]", kNull},
    {"[@None[]", kNull},
    {"@nil", kNull},
    {"{\"a\": \"\\n\\n\", \"b\": @None}", kNull},
    {"[@Nonea]", kValue},
    {"[@Nonez]", kValue},
    {"[@NoneA]", kValue},
    {"[@NoneZ]", kValue},
    {"[@None0]", kValue},
    {"[@None9]", kValue},
    {"[@None_]", kValue},
};

TEST(Mistakes, ArePointedAt) {
  for (const Mistake& mistake : kMistakes) {
    std::string text = mistake.text;
    const std::size_t at = text.find('@');
    text.erase(at, 1);
    Document document(text);
    SyntaxError error;
    ASSERT_FALSE(document.parse(error)) << mistake.text;
    EXPECT_EQ(error.at, at) << mistake.text;
    const Place place = document.placeOf(error.at);
    EXPECT_EQ(place.line, placeByDefinition(text, at).line) << mistake.text;
    EXPECT_EQ(place.column, placeByDefinition(text, at).column) << mistake.text;
    EXPECT_EQ(error.message, mistake.message) << mistake.text;
  }
}

TEST(Values, StayWhereTheyAre) {
  // Many blocks of lists and objects: most lists are short or empty, some larger than a block.
  constexpr std::size_t kRounds = 2000;
  std::string text = "[";
  std::size_t written = 0;
  std::vector<std::size_t> sizes;
  for (std::size_t round = 0; round < kRounds; ++round) {
    const std::size_t size = round % 300 == 3 ? 9000 : round % 6;
    sizes.push_back(size);
    text += round == 0 ? "{\"list\":[" : ",{\"list\":[";
    for (std::size_t i = 0; i < size; ++i) {
      text += (i == 0 ? "" : ",") + std::to_string(written);
      ++written;
    }
    text += "]}";
  }
  text += "]";

  Document document(text);
  SyntaxError error;
  ASSERT_TRUE(document.parse(error)) << error.message;
  const Sequence<Value> objects = document.root().elements();
  ASSERT_EQ(objects.size(), kRounds);
  std::size_t read = 0;
  for (std::size_t round = 0; round < kRounds; ++round) {
    const Value* list = objects[round].find("list");
    ASSERT_NE(list, nullptr) << round;
    ASSERT_EQ(list->elements().size(), sizes[round]) << round;
    for (const Value& value : list->elements()) {
      ASSERT_EQ(value.text(), std::to_string(read)) << round;
      ++read;
    }
  }
  EXPECT_EQ(read, written);
}

}  // namespace
}  // namespace bkoq::tool
