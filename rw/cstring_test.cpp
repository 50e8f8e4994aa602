#include "rw/cstring.h"

#include <gtest/gtest.h>
#include <string.h>

#include <string>
#include <thread>

namespace {

const char* const kNull = nullptr;

TEST(CString, EmptyTextHasManyOrigins) {
  for (const RWCString& empty : {RWCString(), RWCString(""), RWCString(kNull),
                                 RWCString(RWCString()), RWCString() + "", kNull + RWCString()}) {
    EXPECT_TRUE(empty.isNull());
    EXPECT_EQ(0U, empty.length());
    EXPECT_STREQ("", empty.data());
    EXPECT_EQ(0, empty.compareTo(""));
    EXPECT_EQ(0, empty.compareTo(kNull));
    EXPECT_EQ(0, empty.compareTo(RWCString()));
  }
}

TEST(CString, ZeroedMemoryIsTheEmptyText) {
  alignas(RWCString) char memory[sizeof(RWCString)] = {};
  EXPECT_STREQ("", reinterpret_cast<RWCString*>(memory)->data());
}

TEST(CString, HoldsItsOwnCopyOfTheText) {
  char text[] = "payroll";
  const RWCString string(text);
  text[0] = 'P';
  EXPECT_FALSE(string.isNull());
  EXPECT_EQ(7U, string.length());
  EXPECT_STREQ("payroll", string.data());
  EXPECT_STREQ("payroll", static_cast<const char*>(string));
  EXPECT_EQ('y', string[2]);
  EXPECT_EQ(7U, strlen(string));
}

TEST(CString, CopiesShareOneBlockAndKeepTheirValue) {
  RWCString first("ledger");
  RWCString second(first);
  RWCString third;
  third = second;
  EXPECT_EQ(first.data(), second.data());
  EXPECT_EQ(first.data(), third.data());
  first = "other";
  second += "s";
  EXPECT_STREQ("other", first.data());
  EXPECT_STREQ("ledgers", second.data());
  EXPECT_STREQ("ledger", third.data());
}

TEST(CString, AssignsItselfAndPartsOfItself) {
  RWCString string("/home/users");
  const RWCString& same = string;
  string = same;
  EXPECT_STREQ("/home/users", string.data());
  string = string.data() + 5;
  EXPECT_STREQ("/users", string.data());
  string = "";
  EXPECT_TRUE(string.isNull());
  string = "again";
  string = kNull;
  EXPECT_TRUE(string.isNull());
}

TEST(CString, AppendsTextsAndItself) {
  RWCString string;
  string += "ab";
  string += RWCString("c");
  string += kNull;
  string += "";
  string += RWCString();
  EXPECT_STREQ("abc", string.data());
  string += string;
  EXPECT_STREQ("abcabc", string.data());
  string += string.data() + 4;
  EXPECT_STREQ("abcabcbc", string.data());
  EXPECT_EQ(8U, string.length());
}

TEST(CString, Concatenates) {
  const RWCString a("a");
  const RWCString empty;
  const struct {
    RWCString sum;
    const char* expected;
  } kRows[] = {
      {a + RWCString("b"), "ab"}, {a + "b", "ab"},      {"b" + a, "ba"},       {a + kNull, "a"},
      {kNull + a, "a"},           {empty + a, "a"},     {a + empty, "a"},      {empty + "b", "b"},
      {"b" + empty, "b"},         {a + "b" + a, "aba"}, {a + "" + empty, "a"},
  };
  for (const auto& row : kRows) EXPECT_STREQ(row.expected, row.sum.data());
}

TEST(CString, ComparesBytesAsUnsignedNumbersAndCaseSensitively) {
  const struct {
    const char* left;
    const char* right;
    int order;
  } kRows[] = {
      {"", "", 0},          {"", "a", -1},    {"a", "", 1},     {"abc", "abc", 0},
      {"abc", "abd", -1},   {"abc", "ab", 1}, {"B", "a", -1},   {"a", "A", 1},
      {"\x7f", "\x80", -1}, {"\xff", "z", 1}, {nullptr, "", 0}, {nullptr, "a", -1},
  };
  for (const auto& row : kRows) {
    const RWCString left(row.left);
    const RWCString right(row.right);
    EXPECT_EQ(row.order, left.compareTo(right)) << left << " / " << right;
    EXPECT_EQ(row.order, left.compareTo(row.right)) << left << " / " << right;

    EXPECT_EQ(row.order == 0, left == right);
    EXPECT_EQ(row.order != 0, left != right);
    EXPECT_EQ(row.order < 0, left < right);
    EXPECT_EQ(row.order > 0, left > right);
    EXPECT_EQ(row.order <= 0, left <= right);
    EXPECT_EQ(row.order >= 0, left >= right);

    EXPECT_EQ(row.order == 0, left == row.right);
    EXPECT_EQ(row.order != 0, left != row.right);
    EXPECT_EQ(row.order < 0, left < row.right);
    EXPECT_EQ(row.order > 0, left > row.right);
    EXPECT_EQ(row.order <= 0, left <= row.right);
    EXPECT_EQ(row.order >= 0, left >= row.right);

    EXPECT_EQ(row.order == 0, row.left == right);
    EXPECT_EQ(row.order != 0, row.left != right);
    EXPECT_EQ(row.order < 0, row.left < right);
    EXPECT_EQ(row.order > 0, row.left > right);
    EXPECT_EQ(row.order <= 0, row.left <= right);
    EXPECT_EQ(row.order >= 0, row.left >= right);
  }
}

TEST(CString, FindsTextsAndCharacters) {
  const RWCString string("12-15-19");
  EXPECT_EQ(2U, string.index("-"));
  EXPECT_EQ(2U, string.index("-", 2));
  EXPECT_EQ(5U, string.index("-", 3));
  EXPECT_EQ(RW_NPOS, string.index("-", 6));
  EXPECT_EQ(3U, string.index("15-"));
  EXPECT_EQ(RW_NPOS, string.index("15+"));
  EXPECT_EQ(0U, string.index(string));

  EXPECT_EQ(2U, string.index('-'));
  EXPECT_EQ(5U, string.index('-', 3));
  EXPECT_EQ(7U, string.index('9', 7));
  EXPECT_EQ(RW_NPOS, string.index('x'));
  EXPECT_EQ(RW_NPOS, string.index('\0'));
}

TEST(CString, FindsTheEmptyPatternUpToTheEndAndNothingBehindIt) {
  const RWCString string("ab");
  EXPECT_EQ(0U, string.index(""));
  EXPECT_EQ(2U, string.index("", 2));
  EXPECT_EQ(2U, string.index(kNull, 2));
  EXPECT_EQ(0U, RWCString().index(""));
  EXPECT_EQ(RW_NPOS, RWCString().index("a"));
  for (const unsigned int start : {3U, RW_NPOS}) {
    EXPECT_EQ(RW_NPOS, string.index("", start));
    EXPECT_EQ(RW_NPOS, string.index("b", start));
    EXPECT_EQ(RW_NPOS, string.index('b', start));
  }
}

TEST(CString, HoldsTextsOfEveryLength) {
  std::string text;
  for (int length = 0; length < 100; ++length) {
    const RWCString string(text.c_str());
    EXPECT_STREQ(text.c_str(), string.data());
    EXPECT_STREQ((text + text).c_str(), (string + string).data());
    text += static_cast<char>('a' + length % 26);
  }
}

TEST(CString, HoldsLongTexts) {
  const std::string text(1000000, 'x');
  RWCString string(text.c_str());
  string += string;
  EXPECT_EQ(2000000U, string.length());
  EXPECT_EQ(2000000U, strlen(string.data()));
}

// The strings are separate, the text is shared.
TEST(CString, IsUsedOnSeveralThreads) {
  const RWCString shared("shared");
  const auto copyOften = [copy = shared]() {
    for (int i = 0; i < 100000; ++i) {
      RWCString mine(copy);
      mine = RWCString(mine);
    }
  };
  {
    std::thread first(copyOften);
    std::thread second(copyOften);
    first.join();
    second.join();
  }
  EXPECT_STREQ("shared", shared.data());
  // All others have let go of the block: the text appended to is a new one, the old one is intact.
  RWCString last(shared);
  last += "!";
  EXPECT_STREQ("shared", shared.data());
  EXPECT_STREQ("shared!", last.data());
}

}  // namespace
