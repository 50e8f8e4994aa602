// Filters as entries, in both layouts, with bounds read in zones given as rules.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/rows.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

BKQFilter::BKQInclExclType kind(unsigned int code) {
  return static_cast<BKQFilter::BKQInclExclType>(code);
}
BKQTimeFilter::BKQTimeAttrType attribute(unsigned int code) {
  return static_cast<BKQTimeFilter::BKQTimeAttrType>(code);
}
BKQTimeFilter::BKQTimeUnitType unit(unsigned int code) {
  return static_cast<BKQTimeFilter::BKQTimeUnitType>(code);
}

template <class L>
class FilterConversion : public testing::Test {
 protected:
  // Through the virtual table, as owners call it, into a zeroed entry.
  void expectEntry(const std::string& what, BKQFilter& filter, const std::vector<Row>& rows) {
    entry = {};
    void* at = &entry;
    EXPECT_EQ(L::convert(filter, at), 1) << what;
    EXPECT_EQ(at, static_cast<void*>(&entry)) << what;
    expectRows(what, &entry, 32, rows);
  }

  typename L::Filter entry{};
};

TYPED_TEST_SUITE(FilterConversion, Layouts, );

TYPED_TEST(FilterConversion, Patterns) {
  BKQDirFilter directory(BKQFilter::Exclude, "/tmp");
  BKQFileFilter file(BKQFilter::Include, "*.o");
  BKQVolumeFilter volume(BKQFilter::Exclude, "SYS");
  struct Case {
    BKQFilter& filter;
    unsigned int type, kind;
    std::string pattern;
  };
  for (const Case& c : {
           Case{directory, 3, 1, "/tmp"},
           Case{file, 2, 0, "*.o"},
           Case{volume, 1, 1, "SYS"},
       }) {
    const auto length = static_cast<uint32_t>(c.pattern.size());
    this->expectEntry(c.pattern, c.filter,
                      {
                          number(0, 2, c.type),       // usFilterType
                          number(2, 2, c.kind),       // usInclExcl
                          number(4, 4, 1),            // ulFilterCount
                          text(8, c.pattern),         // pszFilter
                          number(12, 2, length + 1),  // usFilterLen, the NUL included
                      });
    expectBlockSize(this->entry.pszFilter, length + 1);
    free(this->entry.pszFilter);
  }
}

TYPED_TEST(FilterConversion, EmptyPatterns) {
  BKQDirFilter directory(BKQFilter::Exclude, "");
  BKQFileFilter file(BKQFilter::Exclude, nullptr);
  BKQVolumeFilter volume;
  this->expectEntry("directory", directory, {number(0, 2, 3), number(2, 2, 1)});
  this->expectEntry("file", file, {number(0, 2, 2), number(2, 2, 1)});
  this->expectEntry("volume", volume, {number(0, 2, 1)});
}

TYPED_TEST(FilterConversion, LengthOfAPatternIsCutTo16Bits) {
  const std::string pattern(65535, 'x');
  BKQFileFilter file(BKQFilter::Include, pattern.c_str());
  this->expectEntry("65535 bytes", file,
                    {
                        number(0, 2, 2),   // usFilterType
                        number(4, 4, 1),   // ulFilterCount
                        text(8, pattern),  // pszFilter, whole
                    });
  expectBlockSize(this->entry.pszFilter, 65536);
  free(this->entry.pszFilter);
}

// The count is raised, not set: the caller zeroes the entry.
TYPED_TEST(FilterConversion, RaisesTheCountOfTheEntry) {
  BKQFileFilter file(BKQFilter::Include, "*");
  void* at = &this->entry;
  this->entry.ulFilterCount = 5;
  ASSERT_EQ(TypeParam::convert(file, at), 1);
  EXPECT_EQ(this->entry.ulFilterCount, 6u);
  free(this->entry.pszFilter);
}

TYPED_TEST(FilterConversion, KindsAreCutTo16Bits) {
  BKQFileFilter file;
  BKQAttributeFilter attributes;
  for (unsigned int code : {0u, 1u, 2u, 0xffffu, 0x10001u, 0xffffffffu}) {
    file.setInclExcl(kind(code));
    this->expectEntry("file", file, {number(0, 2, 2), number(2, 2, code & 0xffff)});
    attributes.setInclExcl(kind(code));
    this->expectEntry("attribute", attributes, {number(0, 2, 5), number(2, 2, code & 0xffff)});
  }
}

TYPED_TEST(FilterConversion, Attributes) {
  BKQAttributeFilter attributes(BKQFilter::Exclude, 0x80000001);
  this->expectEntry("attributes", attributes,
                    {
                        number(0, 2, 5),           // usFilterType
                        number(2, 2, 1),           // usInclExcl
                        number(4, 4, 0x80000001),  // ulAttributes, whole
                    });
  BKQAttributeFilter none;
  this->expectEntry("no attributes", none, {number(0, 2, 5)});
}

TYPED_TEST(FilterConversion, WithinTime) {
  BKQWithinTimeFilter byDefault;  // stores range 0
  byDefault.setTimeUnits(7);
  byDefault.setTimeUnitType(unit(0x20002));
  this->expectEntry("by default", byDefault,
                    {
                        number(0, 2, 4),   // usFilterType
                        number(6, 2, 3),   // usTimeRange, the class's
                        number(8, 4, 7),   // ulTimeUnits
                        number(16, 2, 2),  // usTimeUnitType, low 16 bits
                    });

  BKQWithinTimeFilter within(attribute(0x30005), 0xffff, unit(1));
  within.setInclExcl(BKQFilter::Exclude);
  this->expectEntry("within", within,
                    {
                        number(0, 2, 4),       // usFilterType
                        number(2, 2, 1),       // usInclExcl
                        number(4, 2, 5),       // usTimeAttr, low 16 bits
                        number(6, 2, 3),       // usTimeRange
                        number(8, 4, 0xffff),  // ulTimeUnits, zero-extended
                        number(16, 2, 1),      // usTimeUnitType
                    });

  BKQWithinTimeFilter empty(attribute(1));
  this->expectEntry("no units", empty, {number(0, 2, 4), number(4, 2, 1), number(6, 2, 3)});
}

TYPED_TEST(FilterConversion, BeforeAndAfter) {
  TimeZone zone(kFiveHoursWest);
  BKQBeforeTimeFilter before(attribute(2), storedTime(1700000000));
  this->expectEntry("before", before,
                    {
                        number(0, 2, 4),           // usFilterType
                        number(4, 2, 2),           // usTimeAttr
                        number(8, 4, 1699982000),  // lTime
                    });                            // usTimeRange 0
  BKQAfterTimeFilter after(attribute(0x10003), storedTime(1700000000));
  after.setInclExcl(BKQFilter::Exclude);
  this->expectEntry("after", after,
                    {
                        number(0, 2, 4),           // usFilterType
                        number(2, 2, 1),           // usInclExcl
                        number(4, 2, 3),           // usTimeAttr, low 16 bits
                        number(6, 2, 1),           // usTimeRange
                        number(8, 4, 1699982000),  // lTime
                    });
}

TYPED_TEST(FilterConversion, BetweenTimes) {
  TimeZone zone(kNewYork);
  BKQBetweenTimeFilter between(attribute(1), storedTime(kJanuary), storedTime(kJuly));
  this->expectEntry("between", between,
                    {
                        number(0, 2, 4),            // usFilterType
                        number(4, 2, 1),            // usTimeAttr
                        number(6, 2, 2),            // usTimeRange
                        number(8, 4, 1705302000),   // lStartTime
                        number(12, 4, 1721026800),  // lEndTime
                    });
  // The order of the bounds is the client's.
  between.setStartTime(storedTime(kJuly));
  between.setEndTime(storedTime(kJanuary));
  this->expectEntry("turned round", between,
                    {
                        number(0, 2, 4),            // usFilterType
                        number(4, 2, 1),            // usTimeAttr
                        number(6, 2, 2),            // usTimeRange
                        number(8, 4, 1721026800),   // lStartTime
                        number(12, 4, 1705302000),  // lEndTime
                    });
}

TYPED_TEST(FilterConversion, DefaultTimeFiltersCarryTheRangeOfTheirClass) {
  TimeZone zone(kUtc);
  BKQAfterTimeFilter after;
  after.setTime(storedTime(0));
  this->expectEntry("after", after, {number(0, 2, 4), number(6, 2, 1)});
  BKQBetweenTimeFilter between;
  between.setStartTime(storedTime(0));
  between.setEndTime(storedTime(0));
  this->expectEntry("between", between, {number(0, 2, 4), number(6, 2, 2)});
  BKQBeforeTimeFilter before;
  before.setTime(storedTime(0));
  this->expectEntry("before", before, {number(0, 2, 4)});
}

TYPED_TEST(FilterConversion, BoundsAreReadInTheZoneOfTheMoment) {
  struct Case {
    const char* zone;
    time_t t;
    uint32_t value;
  };
  TimeZone restored(kUtc);
  BKQBeforeTimeFilter before;
  for (const Case& c : {
           Case{kUtc, kJanuary, 1705320000},
           {kFiveHoursWest, kJanuary, 1705302000},
           {kNewYork, kJanuary, 1705302000},
           // The moment itself is not shifted by daylight saving, and the offset is the standard
           // one.
           {kNewYork, kJuly, 1721026800},
           {kNineHoursEast, kJuly, 1721077200},
           {kHalfHourEast, kJanuary, 1705339800},
           {kFiveHoursWest, 0, 0xffffb9b0},
           {kUtc, -1, 0xffffffff},
           // The last moment that the class library holds: 2037-02-06 06:28:15 UTC.
           {kUtc, 2117514495, 2117514495},
           {kNineHoursEast, 2117514495, 2117546895},
           // The first one that a calendar time holds: 1901-12-13 20:45:52 UTC.
           {kUtc, -2147483647 - 1, 0x80000000},
       }) {
    setenv("TZ", c.zone, 1);  // and no more than that: the change itself is honoured
    before.setTime(storedTime(c.t));
    this->entry = {};
    void* at = &this->entry;
    ASSERT_EQ(TypeParam::convert(before, at), 1);
    EXPECT_EQ(static_cast<uint32_t>(this->entry.lTime), c.value) << c.zone << ' ' << c.t;
  }
}

// The class library counts from 1901-01-01, before the first moment of a calendar time.
TYPED_TEST(FilterConversion, BoundBeforeAllCalendarTimesIsMinusOne) {
  TimeZone zone(kUtc);
  BKQBeforeTimeFilter before;
  before.setTime(RWCollectableTime(0ul));
  this->expectEntry("before", before, {number(0, 2, 4), number(8, 4, 0xffffffff)});
}

TYPED_TEST(FilterConversion, PutsClockTimesOfTheHourThatIsRepeatedInOrder) {
  TimeZone zone(kNewYork);
  // 2024-11-03: 01:30 daylight time, 01:30 standard time.
  BKQBetweenTimeFilter between;
  between.setStartTime(storedTime(1730611800));
  between.setEndTime(storedTime(1730615400));
  this->expectEntry("between", between,
                    {
                        number(0, 2, 4),                    // usFilterType
                        number(6, 2, 2),                    // usTimeRange
                        number(8, 4, 1730611800 - 18000),   // lStartTime
                        number(12, 4, 1730615400 - 18000),  // lEndTime
                    });
}

// The steps of the abstract classes by themselves, as a client's own class may use them.

class OwnFilter : public BKQFilter {
 public:
  using BKQFilter::BKQFilter;
  unsigned int filterType() const override { return 77; }
};

TYPED_TEST(FilterConversion, RootStoresTheKindOnly) {
  OwnFilter filter(kind(0x30002));
  this->expectEntry("root", filter, {number(2, 2, 2)});
}

class OwnTimeFilter : public BKQTimeFilter {
 public:
  using BKQTimeFilter::BKQTimeFilter;
  BKQTimeRangeType getTRtype() const override { return Within; }
};

TYPED_TEST(FilterConversion, TimeRootStoresTheRangeOfItsConstructor) {
  OwnTimeFilter filter(BKQTimeFilter::After, attribute(6));
  filter.setInclExcl(BKQFilter::Exclude);
  this->expectEntry("time root", filter,
                    {
                        number(0, 2, 4),  // usFilterType
                        number(2, 2, 1),  // usInclExcl
                        number(4, 2, 6),  // usTimeAttr
                        number(6, 2, 1),  // usTimeRange, as stored
                    });
}

class OwnFileFilter : public BKQFileFilter {
 public:
  unsigned int filterType() const override { return 0x10063; }
};

TYPED_TEST(FilterConversion, PatternFiltersAskForTheirType) {
  OwnFileFilter filter;
  this->expectEntry("own type", filter, {number(0, 2, 0x63)});
}

class OwnBeforeFilter : public BKQBeforeTimeFilter {
 public:
  BKQTimeRangeType getTRtype() const override { return static_cast<BKQTimeRangeType>(0x10009); }
};

TYPED_TEST(FilterConversion, TimeFiltersAskForTheirRange) {
  TimeZone zone(kUtc);
  OwnBeforeFilter filter;
  filter.setTime(storedTime(0));
  this->expectEntry("own range", filter, {number(0, 2, 4), number(6, 2, 9)});
}

TEST(FilterConversions, OfBothLayoutsGiveTheSameBytes) {
  TimeZone zone(kNewYork);
  BKQBetweenTimeFilter between(attribute(1), storedTime(kJanuary), storedTime(kJuly));
  BKFILTER_FILE current{};
  BKFILTER_FILE_OLD previous{};
  void* at = &current;
  ASSERT_EQ(between.convertToBK2(at), 1);
  at = &previous;
  ASSERT_EQ(between.convertToBK2_old(at), 1);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&current), 32),
            std::string(reinterpret_cast<const char*>(&previous), 32));
}

}  // namespace
}  // namespace bkoq::test
