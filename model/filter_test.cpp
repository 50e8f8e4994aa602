#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"
#include "tests/support/private_member.h"

namespace bkoq::test {

// The range that the constructors store; no accessor reads it, but every copy carries it.
struct StoredRange {
  using Type = BKQTimeFilter::BKQTimeRangeType BKQTimeFilter::*;
  friend constexpr Type privateMember(StoredRange);
};
template struct PrivateMember<StoredRange, &BKQTimeFilter::range_>;

namespace {

constexpr BKQFilter::BKQInclExclType kExclude = BKQFilter::Exclude;
constexpr BKQTimeFilter::BKQTimeAttrType kAttribute =
    static_cast<BKQTimeFilter::BKQTimeAttrType>(9);

const RWCollectableTime kEarly(3000000000UL);
const RWCollectableTime kLate(3255627600UL);

TEST(Filter, TypesAndRanges) {
  EXPECT_EQ(BKQVolumeFilter().filterType(), 1u);
  EXPECT_EQ(BKQFileFilter().filterType(), 2u);
  EXPECT_EQ(BKQDirFilter().filterType(), 3u);
  EXPECT_EQ(BKQAttributeFilter().filterType(), 5u);
  EXPECT_EQ(BKQBeforeTimeFilter().filterType(), 4u);
  EXPECT_EQ(BKQAfterTimeFilter().filterType(), 4u);
  EXPECT_EQ(BKQBetweenTimeFilter().filterType(), 4u);
  EXPECT_EQ(BKQWithinTimeFilter().filterType(), 4u);
  EXPECT_EQ(BKQBeforeTimeFilter().getTRtype(), 0u);
  EXPECT_EQ(BKQAfterTimeFilter().getTRtype(), 1u);
  EXPECT_EQ(BKQBetweenTimeFilter().getTRtype(), 2u);
  EXPECT_EQ(BKQWithinTimeFilter().getTRtype(), 3u);
}

TEST(Filter, IncludeAndExcludeAreNoComplements) {
  BKQDirFilter filter;
  EXPECT_EQ(filter.getInclExcl(), BKQFilter::Include);
  EXPECT_EQ(filter.isInclude(), 1);
  EXPECT_EQ(filter.isExclude(), 0);
  filter.setInclExcl(kExclude);
  EXPECT_EQ(filter.isInclude(), 0);
  EXPECT_EQ(filter.isExclude(), 1);
  filter.setInclExcl(static_cast<BKQFilter::BKQInclExclType>(2));
  EXPECT_EQ(filter.isInclude(), 0);
  EXPECT_EQ(filter.isExclude(), 0);
}

template <class PatternFilter>
void expectPatternFilter() {
  PatternFilter filter(kExclude, "*.o");
  EXPECT_EQ(filter.isExclude(), 1);
  EXPECT_STREQ(filter.getFilterString(), "*.o");
  std::unique_ptr<PatternFilter> clone(filter.clone());
  filter.setFilterString("*.c");
  EXPECT_STREQ(clone->getFilterString(), "*.o");
  EXPECT_EQ(clone->isExclude(), 1);
  EXPECT_STREQ(PatternFilter(kExclude, nullptr).getFilterString(), "");
}

TEST(Filter, PatternFilters) {
  expectPatternFilter<BKQDirFilter>();
  expectPatternFilter<BKQFileFilter>();
  expectPatternFilter<BKQVolumeFilter>();
}

TEST(Filter, AttributeFilter) {
  BKQAttributeFilter filter(kExclude, 0x80000001);
  std::unique_ptr<BKQAttributeFilter> clone(filter.clone());
  EXPECT_EQ(clone->getAttributes(), 0x80000001u);
  EXPECT_EQ(clone->isExclude(), 1);
}

TEST(Filter, WithinTimeFilter) {
  const BKQWithinTimeFilter half(kAttribute);
  EXPECT_EQ(half.getTRattribute(), kAttribute);
  EXPECT_EQ(half.getTimeUnits(), 0);
  EXPECT_EQ(half.getTimeUnitType(), 0u);
  EXPECT_EQ(half.isInclude(), 1);
  BKQWithinTimeFilter filter(kAttribute, 7, static_cast<BKQTimeFilter::BKQTimeUnitType>(3));
  filter.setInclExcl(kExclude);
  std::unique_ptr<BKQWithinTimeFilter> clone(filter.clone());
  EXPECT_EQ(clone->getTRattribute(), kAttribute);
  EXPECT_EQ(clone->getTimeUnits(), 7);
  EXPECT_EQ(clone->getTimeUnitType(), 3u);
  EXPECT_EQ(clone->isExclude(), 1);
}

template <class BoundFilter>
void expectBoundFilter() {
  BoundFilter filter(kAttribute, kLate);
  std::unique_ptr<BoundFilter> clone(filter.clone());
  filter.setTime(kEarly);
  EXPECT_EQ(clone->getTime().seconds(), kLate.seconds());
  EXPECT_EQ(clone->getTRattribute(), kAttribute);
}

TEST(Filter, BeforeAndAfterTimeFilters) {
  expectBoundFilter<BKQBeforeTimeFilter>();
  expectBoundFilter<BKQAfterTimeFilter>();
}

TEST(Filter, BetweenTimeFilterClonesIndependently) {
  BKQBetweenTimeFilter filter(kAttribute, kEarly, kLate);
  filter.setInclExcl(kExclude);
  std::unique_ptr<BKQBetweenTimeFilter> clone(filter.clone());
  filter.setStartTime(kLate);
  filter.setEndTime(kEarly);
  EXPECT_EQ(clone->getStartTime().seconds(), kEarly.seconds());
  EXPECT_EQ(clone->getEndTime().seconds(), kLate.seconds());
  EXPECT_EQ(clone->getTRattribute(), kAttribute);
  EXPECT_EQ(clone->isExclude(), 1);
}

template <class TimeFilter>
void expectStoredRange(BKQTimeFilter::BKQTimeRangeType range) {
  TimeFilter plain;
  EXPECT_EQ(plain.getTRtype(), range);
  EXPECT_EQ(plain.*privateMember(StoredRange()), 0u);
  EXPECT_EQ(plain.getTRattribute(), 0u);
  TimeFilter filter(kAttribute);
  EXPECT_EQ(filter.*privateMember(StoredRange()), range);
  EXPECT_EQ(filter.getTRattribute(), kAttribute);
  EXPECT_EQ(filter.isInclude(), 1);
  inACopy(filter, [=](TimeFilter& copy) {
    EXPECT_EQ(copy.*privateMember(StoredRange()), range);
    copy.mycopy(&copy);
    copy.mycopy(static_cast<TimeFilter*>(nullptr));
    EXPECT_EQ(copy.getTRattribute(), kAttribute);
  });
}

// The default constructors store no range; the class decides anyway.
TEST(Filter, StoredRangeOfTimeFilters) {
  expectStoredRange<BKQBeforeTimeFilter>(BKQTimeFilter::Before);
  expectStoredRange<BKQAfterTimeFilter>(BKQTimeFilter::After);
  expectStoredRange<BKQBetweenTimeFilter>(BKQTimeFilter::Between);
  expectStoredRange<BKQWithinTimeFilter>(BKQTimeFilter::Within);
  const BKQTimeFilter::BKQTimeUnitType days = static_cast<BKQTimeFilter::BKQTimeUnitType>(3);
  EXPECT_EQ(BKQBeforeTimeFilter(kAttribute, kLate).*privateMember(StoredRange()), 0u);
  EXPECT_EQ(BKQAfterTimeFilter(kAttribute, kLate).*privateMember(StoredRange()), 1u);
  EXPECT_EQ(BKQBetweenTimeFilter(kAttribute, kEarly, kLate).*privateMember(StoredRange()), 2u);
  EXPECT_EQ(BKQWithinTimeFilter(kAttribute, 7, days).*privateMember(StoredRange()), 3u);
}

// What every filter has, in each class with a copy rule of its own.
template <class Filter>
void expectKind() {
  Filter object;
  object.setInclExcl(static_cast<BKQFilter::BKQInclExclType>(0x5a));
  const std::unique_ptr<BKQFilter> clone(static_cast<BKQFilter&>(object).clone());
  EXPECT_NE(dynamic_cast<Filter*>(clone.get()), nullptr);
  EXPECT_EQ(clone->getInclExcl(), 0x5au);
  const FailingNew noMemory(1);
  EXPECT_EQ(object.clone(), nullptr);
}

TEST(Filter, KindsAndClones) {
  expectKind<BKQDirFilter>();
  expectKind<BKQFileFilter>();
  expectKind<BKQVolumeFilter>();
  expectKind<BKQAttributeFilter>();
  expectKind<BKQWithinTimeFilter>();
  expectKind<BKQBeforeTimeFilter>();
  expectKind<BKQAfterTimeFilter>();
  expectKind<BKQBetweenTimeFilter>();
}

template <class TimeFilter>
void expectNow(const RWCollectableTime& (TimeFilter::*get)() const) {
  const RWTime before;
  const TimeFilter plain;
  const TimeFilter filter(kAttribute);
  const RWTime after;
  for (const TimeFilter* object : {&plain, &filter}) {
    EXPECT_GE((object->*get)(), before);
    EXPECT_LE((object->*get)(), after);
  }
}

TEST(Filter, BoundsAreNowUntilSet) {
  expectNow(&BKQBeforeTimeFilter::getTime);
  expectNow(&BKQAfterTimeFilter::getTime);
  expectNow(&BKQBetweenTimeFilter::getStartTime);
  expectNow(&BKQBetweenTimeFilter::getEndTime);
}

// Filter classes of a client's own.
class PlainFilter : public BKQFilter {
 public:
  using BKQFilter::BKQFilter;
  unsigned int filterType() const override { return 77; }
};
class PlainTimeFilter : public BKQTimeFilter {
 public:
  using BKQTimeFilter::BKQTimeFilter;
  BKQTimeRangeType getTRtype() const override { return After; }
};

TEST(Filter, RootsForClassesOfAClient) {
  PlainFilter filter(kExclude);
  EXPECT_EQ(filter.isExclude(), 1);
  EXPECT_EQ(PlainFilter().isInclude(), 1);
  inACopy(filter, [](PlainFilter& copy) { EXPECT_EQ(copy.isExclude(), 1); });
  PlainTimeFilter time(BKQTimeFilter::Within, kAttribute);
  EXPECT_EQ(time.filterType(), 4u);
  EXPECT_EQ(time.clone(), nullptr);
  inACopy(time, [](PlainTimeFilter& copy) {
    EXPECT_EQ(copy.*privateMember(StoredRange()), BKQTimeFilter::Within);
    EXPECT_EQ(copy.getTRattribute(), kAttribute);
  });
}

TEST(Filter, AbstractRootsCloneToNull) {
  BKQBetweenTimeFilter filter;
  EXPECT_EQ(filter.BKQTimeFilter::clone(), nullptr);
  EXPECT_EQ(filter.BKQFilter::clone(), nullptr);
}

}  // namespace
}  // namespace bkoq::test
