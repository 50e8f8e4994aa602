#include "kit/output.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace bkoq::test {
namespace {

using kit::decimal;
using kit::Output;
using kit::Phrase;
using kit::printedBy;

constexpr std::size_t kPiece = 16384;

std::string counted(std::size_t size, char first = '!') {
  std::string text(size, ' ');
  for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>(first + i % 90);
  return text;
}

int keep(void* user, const char* text, std::size_t size) {
  static_cast<std::vector<std::string>*>(user)->emplace_back(text, size);
  return 0;
}

std::string joined(const std::vector<std::string>& pieces) {
  std::string all;
  for (const std::string& piece : pieces) all += piece;
  return all;
}

TEST(Output, HandsOnAllInOrder) {
  // What is pending, and what comes behind it: up to a full piece, and beyond.
  for (const std::size_t pending :
       {std::size_t{0}, std::size_t{1}, kPiece - 40, kPiece - 1, kPiece}) {
    for (const std::size_t more : {kPiece - 1, kPiece, kPiece + 1, 3 * kPiece + 5}) {
      std::vector<std::string> pieces;
      Output out(keep, &pieces);
      out.put(counted(pending));
      out.put(counted(more, '#'));
      out.put("end");
      EXPECT_TRUE(out.flush());
      EXPECT_EQ(joined(pieces), counted(pending) + counted(more, '#') + "end");
      for (const std::string& piece : pieces) EXPECT_LE(piece.size(), kPiece);
      EXPECT_TRUE(out.flush());
      EXPECT_EQ(joined(pieces).size(), pending + more + 3) << "nothing is handed on twice";
    }
  }
}

TEST(Output, CopiesShortTextsWhole) {
  for (std::size_t size = 0; size <= 80; ++size) {
    std::vector<std::string> pieces;
    Output out(keep, &pieces);
    out.put("<");
    out.put(counted(size));
    out.put(">");
    out.flush();
    EXPECT_EQ(joined(pieces), "<" + counted(size) + ">");
  }
}

TEST(Output, FillsPiecesToTheLastByte) {
  std::vector<std::string> pieces;
  Output out(keep, &pieces);
  out.put(counted(kPiece - 3));
  out.put("abc");
  EXPECT_TRUE(pieces.empty());
  out.put(std::size_t{2}, 'x');
  ASSERT_EQ(pieces.size(), 1u);
  EXPECT_EQ(pieces[0], counted(kPiece - 3) + "abc");
  out.put(kPiece - 2, 'y');
  EXPECT_EQ(pieces.size(), 1u);
  out.put(std::size_t{1}, 'z');
  EXPECT_EQ(pieces.size(), 2u);
  out.flush();
  EXPECT_EQ(joined(pieces), counted(kPiece - 3) + "abcxx" + std::string(kPiece - 2, 'y') + "z");
}

TEST(Output, AsksNoSinkAgainThatHasFailed) {
  int calls = 0;
  const BkoqSink fail = [](void* user, const char*, std::size_t) {
    ++*static_cast<int*>(user);
    return 1;
  };
  Output out(fail, &calls);
  out.put("a");
  EXPECT_FALSE(out.failed());
  EXPECT_EQ(calls, 0);
  EXPECT_FALSE(out.flush());
  EXPECT_TRUE(out.failed());
  out.put(counted(3 * kPiece));
  EXPECT_FALSE(out.flush());
  EXPECT_EQ(calls, 1);
}

TEST(Output, WritesNumbersInFull) {
  const auto text = [](auto number) { return std::string(std::string_view(decimal(number))); };
  EXPECT_EQ(text(0), "0");
  EXPECT_EQ(text(9), "9");
  EXPECT_EQ(text(10), "10");
  EXPECT_EQ(text(-1), "-1");
  EXPECT_EQ(text(std::numeric_limits<std::int32_t>::min()), "-2147483648");
  EXPECT_EQ(text(std::numeric_limits<std::uint32_t>::max()), "4294967295");
}

TEST(Phrase, TakesMoreThanItHasRoomFor) {
  for (std::size_t first = 0; first <= 80; ++first) {
    for (const std::size_t second : {1, 2, 40, 72, 73, 200}) {
      Phrase phrase;
      EXPECT_TRUE(phrase.isEmpty());
      phrase.put(counted(first), counted(second, '#'), "end");
      EXPECT_EQ(std::string_view(phrase), counted(first) + counted(second, '#') + "end");
      EXPECT_FALSE(phrase.isEmpty());
      phrase.clear();
      EXPECT_TRUE(phrase.isEmpty());
      EXPECT_EQ(std::string_view(phrase), "");
      phrase.put("x");
      EXPECT_EQ(std::string_view(phrase), "x");
    }
  }
}

TEST(Phrase, CutsNoCharacter) {
  const struct {
    const char* text;
    std::size_t most;
    const char* kept;
  } rows[] = {
      {"abc", 3, "abc"},
      {"abc", 2, "ab..."},
      {"abc", 0, "..."},
      {"a\xC3\xA9z", 3, "a..."},  // the two bytes are given up as a whole, complete or not
      {"a\xC3\xA9z", 2, "a..."},
      {"a\xC3\xA9z", 1, "a..."},
      {"a\xC3\xA9z", 4, "a\xC3\xA9z"},
      {"a\xF0\x9F\x98\x80z", 4, "a..."},
      {"\xBF\xBF\xBF", 2, "..."},
      {"ab`z", 3, "ab`..."},
      {"a@z", 2, "a@..."},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(printedBy([&](Output& out) { out.put(row.text); }, row.most), row.kept)
        << row.text << " " << row.most;
  }
  EXPECT_EQ(printedBy([](Output& out) { out.put(counted(2 * kPiece)); }), counted(2 * kPiece));
  EXPECT_EQ(printedBy([](Output& out) { out.put(counted(2 * kPiece)); }, kPiece + 1),
            counted(kPiece + 1) + "...");
}

}  // namespace
}  // namespace bkoq::test
