#include "kit/path.h"

#include <gtest/gtest.h>

#include <string>

namespace bkoq::test {
namespace {

using kit::Path;

TEST(Path, IsSpelledFromItsParts) {
  Path path;
  EXPECT_TRUE(path.isEmpty());
  EXPECT_STREQ(path.text(), "");
  path.append("pSourceNodes");
  EXPECT_FALSE(path.isEmpty());
  EXPECT_STREQ(path.text(), "pSourceNodes");
  path.appendIndex(0);
  path.append("pMedia");
  path.appendIndex(4294967295U);
  path.append("pszDiskName");
  EXPECT_STREQ(path.text(), "pSourceNodes[0].pMedia[4294967295].pszDiskName");
}

TEST(Path, IsCutWhereItEndedBefore) {
  Path path;
  path.append("a");
  const Path::Mark before = path.appendIndex(12);
  const Path::Mark last = path.append("b");
  EXPECT_STREQ(path.text(), "a[12].b");
  path.cut(last);
  EXPECT_STREQ(path.text(), "a[12]");
  path.append("c");
  path.cut(last);
  path.append("d");
  EXPECT_STREQ(path.text(), "a[12].d") << "c was never spelled";
  path.cut(before);
  EXPECT_STREQ(path.text(), "a");
  path.appendIndex(3);
  EXPECT_STREQ(path.text(), "a[3]");
  path.cut(0);
  EXPECT_TRUE(path.isEmpty());
  EXPECT_STREQ(path.text(), "");
}

// No path of a tree is so long; a name that is made up ends where there is no more room.
TEST(Path, EndsWhereThereIsNoMoreRoom) {
  const std::string name(Path::kSize, 'n');
  for (std::size_t size = Path::kSize - 4; size <= Path::kSize; ++size) {
    Path path;
    path.append(name.c_str() + (name.size() - size));
    path.append("xy");
    EXPECT_EQ(path.text(), (name.substr(0, size) + ".xy").substr(0, Path::kSize - 1)) << size;
  }
}

TEST(Path, HoldsSixteenParts) {
  Path path;
  std::string expected;
  for (unsigned int i = 0; i < 20; ++i) {
    path.appendIndex(i);
    if (i < 16) expected += "[" + std::to_string(i) + "]";
  }
  EXPECT_EQ(path.text(), expected);
}

}  // namespace
}  // namespace bkoq::test
