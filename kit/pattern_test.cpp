#include "kit/pattern.h"

#include <gtest/gtest.h>

#include <string>

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
}

// A pattern made to take long takes no longer than others.
TEST(Pattern, EndsSoonWhateverItHolds) {
  std::string pattern;
  for (int i = 0; i < 60; ++i) pattern += "*a";
  EXPECT_FALSE(matches(pattern.c_str(), std::string(150, 'a').append("b").c_str()));
  EXPECT_TRUE(matches(pattern.c_str(), std::string(150, 'a').c_str()));
}

}  // namespace
}  // namespace bkoq::test
