#include "kit/pattern.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace bkoq::test {
namespace {

using kit::covers;
using kit::leadsTo;
using kit::matches;

TEST(Pattern, MatchesPathsThatAreWrittenOut) {
  EXPECT_TRUE(matches("pszOwner", "pszOwner"));
  EXPECT_FALSE(matches("pszOwner", "pszOwne"));
  EXPECT_FALSE(matches("pszOwner", "pszOwner.x"));
  EXPECT_TRUE(matches("", ""));
  EXPECT_FALSE(matches("", "pszOwner"));
}

TEST(Pattern, TakesAStarForAnyPartOfANameOrIndex) {
  EXPECT_TRUE(
      matches("pSourceNodes[*].pMedia[*].pszDiskName", "pSourceNodes[12].pMedia[0].pszDiskName"));
  EXPECT_FALSE(matches("pSourceNodes[*].pMedia[*].pszDiskName", "pSourceNodes[12].pszDiskName"));
  EXPECT_TRUE(matches("p*Nodes[1*].psz*Name", "pDestNodes[13].pszNodeName"));
  EXPECT_FALSE(matches("p*Nodes[1*].psz*Name", "pDestNodes[23].pszNodeName"));
  EXPECT_TRUE(matches("*", "pszOwner"));
  EXPECT_FALSE(matches("*", "stFax.pszUserPW"));
  EXPECT_FALSE(matches("pSource*", "pSourceNodes[0]"));
  EXPECT_TRUE(matches("*x", "x"));
  EXPECT_FALSE(matches("*x", "a"));
}

TEST(Pattern, TakesTwoStarsForAnything) {
  EXPECT_TRUE(matches("**.pszPassword", "pSourceNodes[0].pMedia[1].pszPassword"));
  EXPECT_TRUE(matches("**.pszOwner", "pszOwner"));
  EXPECT_FALSE(matches("**.Owner", "pszOwner"));
  EXPECT_TRUE(matches("pDestNodes**", "pDestNodes[0].pMedia[1].pszPassword"));
  EXPECT_TRUE(matches("**", ""));
}

TEST(Pattern, CoversWhatLiesInWhatItIsAbout) {
  EXPECT_TRUE(covers("stFax", "stFax.pszUserPW"));
  EXPECT_TRUE(covers("stFax", "stFax"));
  EXPECT_FALSE(covers("stFa", "stFax"));
  EXPECT_TRUE(covers("pSourceNodes", "pSourceNodes[3]"));
  EXPECT_TRUE(covers("pSourceNodes[*]", "pSourceNodes[3].pszNodeName"));
  EXPECT_FALSE(covers("pSourceNodes[*]", "pDestNodes[3].pszNodeName"));
  EXPECT_TRUE(covers("", "pszOwner"));
}

TEST(Pattern, LeadsToWhatItMayBeAbout) {
  EXPECT_TRUE(leadsTo("pSourceNodes[*].pszNodeName", "pSourceNodes[3]"));
  EXPECT_TRUE(leadsTo("pSourceNodes[3].pszNodeName", "pSourceNodes[3]"));
  EXPECT_FALSE(leadsTo("pSourceNodes[*].pszNodeName", "pDestNodes[3]"));
  EXPECT_FALSE(leadsTo("pSourceNodes[3].pszNodeName", "pSourceNodes[31]"));
  EXPECT_TRUE(leadsTo("**.pszPassword", "pDestNodes[3]"));
  EXPECT_FALSE(leadsTo("pSource*.pszNodeName", "pSourceNodes[3]"));
  EXPECT_FALSE(leadsTo("pSourceNodes", "pSource"));
  EXPECT_FALSE(leadsTo("pDestNodes", "pSourceNodes"));
  // It is the last character alone that does not fit.
  EXPECT_FALSE(leadsTo("p*[3]", "pSourceNodes[3]s"));
  EXPECT_FALSE(leadsTo("p*[3].a", "pSourceNodes[3].b"));
  EXPECT_FALSE(leadsTo("p*", "pSourceNodes["));
  EXPECT_FALSE(leadsTo("p*", "pSourceNodes."));
  EXPECT_FALSE(leadsTo("p[*", "p[3]"));
  EXPECT_TRUE(leadsTo("pszOwner", ""));
  EXPECT_TRUE(leadsTo("", ""));
}

// What the stars stand for, said once more in the plainest way.
bool fits(std::string_view pattern, std::string_view path) {
  if (pattern.empty()) return path.empty();
  if (pattern.substr(0, 2) == "**") {
    return fits(pattern.substr(2), path) || (!path.empty() && fits(pattern, path.substr(1)));
  }
  if (pattern[0] == '*') {
    return fits(pattern.substr(1), path) ||
           (!path.empty() && std::strchr(".[]", path[0]) == nullptr &&
            fits(pattern, path.substr(1)));
  }
  return !path.empty() && pattern[0] == path[0] && fits(pattern.substr(1), path.substr(1));
}
bool fitsAtStart(std::string_view pattern, std::string_view path) {
  return fits(pattern, path) || (pattern.substr(0, 3) == "**." && fits(pattern.substr(3), path));
}

std::vector<std::string> allTexts(const char* characters, std::size_t longest) {
  std::vector<std::string> texts{""};
  for (std::size_t at = 0; at < texts.size() && texts[at].size() < longest; ++at) {
    for (const char* character = characters; *character != '\0'; ++character) {
      texts.push_back(texts[at] + *character);
    }
  }
  return texts;
}

TEST(Pattern, FitsAllShortPathsThatItShould) {
  const std::vector<std::string> paths = allTexts("ab.[]", 3);
  for (const std::string& pattern : allTexts("a.[*", 4)) {
    for (const std::string& path : paths) {
      ASSERT_EQ(matches(pattern.c_str(), path.c_str()), fitsAtStart(pattern, path))
          << pattern << " and " << path;
      // About the path, or about something that the path goes on from with a name or an index.
      bool isCovered = pattern.empty();
      for (std::size_t end = 0; end <= path.size(); ++end) {
        const bool isBoundary = end == path.size() || path[end] == '.' || path[end] == '[';
        isCovered |= isBoundary && fitsAtStart(pattern, std::string_view(path).substr(0, end));
      }
      ASSERT_EQ(covers(pattern.c_str(), path.c_str()), isCovered) << pattern << " and " << path;
    }
  }
}

// A pattern made to take long takes no longer than others.
TEST(Pattern, MayBeOfAnyLength) {
  std::string path;
  for (int i = 0; i < 200; ++i) {
    path += static_cast<char>('a' + i * 7 % 26);
    EXPECT_TRUE(matches(path.c_str(), path.c_str())) << path;
    EXPECT_FALSE(matches(path.c_str(), (path + "x").c_str())) << path;
    EXPECT_TRUE(matches((path + "*").c_str(), (path + "x").c_str())) << path;
  }
}

TEST(Pattern, EndsSoonWhateverItHolds) {
  std::string pattern;
  for (int i = 0; i < 60; ++i) pattern += "*a";
  EXPECT_FALSE(matches(pattern.c_str(), std::string(150, 'a').append("b").c_str()));
  EXPECT_TRUE(matches(pattern.c_str(), std::string(150, 'a').c_str()));
}

}  // namespace
}  // namespace bkoq::test
