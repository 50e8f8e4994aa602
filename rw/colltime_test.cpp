#include "rw/colltime.h"

#include <gtest/gtest.h>

#include <memory>

#include "rw/collstr.h"

namespace {

using Owned = std::unique_ptr<RWCollectable>;

TEST(CollectableTime, IsMadeLikeATime) {
  EXPECT_EQ(5UL, RWCollectableTime(5UL).seconds());
  EXPECT_EQ(6UL, RWCollectableTime(RWTime(6UL)).seconds());

  struct tm fields = {};
  fields.tm_year = 100;
  fields.tm_mday = 1;
  EXPECT_EQ(RWTime(&fields).seconds(), RWCollectableTime(&fields).seconds());
  EXPECT_NE(0UL, RWCollectableTime(&fields).seconds());

  const RWTime before;
  const RWCollectableTime now;
  const RWTime after;
  EXPECT_LE(before, now);
  EXPECT_LE(now, after);

  RWCollectableTime time;
  time = RWTime(7UL);
  EXPECT_EQ(7UL, time.seconds());
  time = RWCollectableTime(8UL);
  EXPECT_EQ(8UL, time.seconds());
}

TEST(CollectableTime, ComparesByMoment) {
  const RWCollectableTime early(5UL);
  const RWCollectableTime same(5UL);
  const RWCollectableTime late(4000000000UL);
  EXPECT_EQ(0, early.compareTo(&same));
  EXPECT_EQ(-1, early.compareTo(&late));
  EXPECT_EQ(1, late.compareTo(&early));
  EXPECT_TRUE(early < late);

  EXPECT_EQ(1, early.isEqual(&same));
  EXPECT_EQ(0, early.isEqual(&late));
  EXPECT_EQ(0, early.isEqual(nullptr));
  const RWCollectableString text("5");
  EXPECT_EQ(0, early.isEqual(&text));
  EXPECT_EQ(early.hash(), same.hash());
  EXPECT_NE(early.hash(), late.hash());
}

TEST(CollectableTime, MakesItsLike) {
  const RWCollectableTime time(5UL);
  const RWCollectable& object = time;
  const Owned copy(object.copy());
  EXPECT_EQ(5UL, dynamic_cast<const RWCollectableTime&>(*copy).seconds());
  const Owned other(object.newSpecies());
  EXPECT_NE(nullptr, dynamic_cast<const RWCollectableTime*>(other.get()));
}

}  // namespace
