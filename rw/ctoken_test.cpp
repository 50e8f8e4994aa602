#include "rw/ctoken.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

TEST(Tokenizer, SkipsEmptyTokens) {
  const struct {
    const char* text;
    const char* delimiters;
    Texts tokens;
  } kRows[] = {
      {"3-7", "-", {"3", "7"}},
      {"5-", "-", {"5"}},
      {"-5", "-", {"5"}},
      {"1--2---3", "-", {"1", "2", "3"}},
      {"12", "-", {"12"}},
      {"-", "-", {}},
      {"", "-", {}},
      {nullptr, "-", {}},
      {"a,b;c", ",;", {"a", "b", "c"}},
      {"a b", "", {"a b"}},
      {"a b", nullptr, {"a b"}},
      {"ax b", nullptr, {"ax b"}},
  };
  for (const auto& row : kRows) {
    RWCTokenizer next((RWCString(row.text)));
    Texts tokens;
    for (RWCString token = next(row.delimiters); !token.isNull(); token = next(row.delimiters)) {
      tokens.emplace_back(token);
    }
    EXPECT_EQ(row.tokens, tokens) << row.text;
    EXPECT_TRUE(next(row.delimiters).isNull()) << "stays at the end";
  }
}

TEST(Tokenizer, SplitsAtWhiteSpaceUnlessToldOtherwise) {
  RWCTokenizer next(RWCString(" one\ttwo\n three,four "));
  EXPECT_STREQ("one", next());
  EXPECT_STREQ("two", next());
  EXPECT_STREQ("three", next(" ,\n"));
  EXPECT_STREQ("four", next(" ,\n"));
  EXPECT_STREQ("", next());
}

TEST(Tokenizer, KeepsItsText) {
  RWCString text("1 2");
  RWCTokenizer next(text);
  text = "changed";
  EXPECT_STREQ("1", next());
  EXPECT_STREQ("2", next());
}

}  // namespace
