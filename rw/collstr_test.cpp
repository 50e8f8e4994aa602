#include "rw/collstr.h"

#include <gtest/gtest.h>

#include <memory>

#include "rw/colltime.h"

namespace {

using Owned = std::unique_ptr<RWCollectable>;

const char* textOf(const Owned& object) {
  return dynamic_cast<const RWCollectableString&>(*object).data();
}

TEST(CollectableString, IsMadeFromAndAssignedEveryKindOfText) {
  EXPECT_TRUE(RWCollectableString().isNull());
  EXPECT_TRUE(RWCollectableString(static_cast<const char*>(nullptr)).isNull());
  EXPECT_STREQ("a", RWCollectableString("a").data());
  EXPECT_STREQ("b", RWCollectableString(RWCString("b")).data());

  RWCollectableString string;
  const RWCollectableString other("other");
  string = "text";
  EXPECT_STREQ("text", string.data());
  string = RWCString("string");
  EXPECT_STREQ("string", string.data());
  string = other;
  EXPECT_STREQ("other", string.data());
  string += "s";
  EXPECT_STREQ("others", string.data());
  EXPECT_STREQ("other", other.data());
  string = static_cast<const char*>(nullptr);
  EXPECT_TRUE(string.isNull());
}

TEST(CollectableString, ComparesByText) {
  const RWCollectableString abc("abc");
  const RWCollectableString same("abc");
  const RWCollectableString abd("abd");
  EXPECT_EQ(0, abc.compareTo(static_cast<const RWCollectable*>(&same)));
  EXPECT_EQ(-1, abc.compareTo(&abd));
  EXPECT_EQ(1, abd.compareTo(&abc));
  EXPECT_EQ(0, abc.compareTo("abc"));
  EXPECT_EQ(-1, abc.compareTo(abd));
  EXPECT_TRUE(abc == same);
  EXPECT_TRUE(abc == "abc");
  EXPECT_TRUE(abc < abd);

  EXPECT_EQ(1, abc.isEqual(&same));
  EXPECT_EQ(0, abc.isEqual(&abd));
  EXPECT_EQ(0, abc.isEqual(nullptr));
  const RWCollectableTime time(5UL);
  EXPECT_EQ(0, abc.isEqual(&time));
  EXPECT_EQ(abc.hash(), same.hash());
  EXPECT_NE(abc.hash(), abd.hash());
}

// The values that are published for FNV-1a of 32 bits.
TEST(CollectableString, HashesWell) {
  EXPECT_EQ(0x811C9DC5U, RWCollectableString("").hash());
  EXPECT_EQ(0xE40C292CU, RWCollectableString("a").hash());
  EXPECT_EQ(0xBF9CF968U, RWCollectableString("foobar").hash());
}

TEST(CollectableString, MakesItsLike) {
  const RWCollectableString string("text");
  const RWCollectable& object = string;
  EXPECT_STREQ("", textOf(Owned(object.newSpecies())));
  EXPECT_STREQ("text", textOf(Owned(object.copy())));
}

}  // namespace
