// The filter entry, in each of its forms, worked out by hand. Both layouts have the same.

#include <gtest/gtest.h>
#include <stdlib.h>

#include "tests/by_hand/page.h"
#include "tests/catalog/types.h"
#include "tests/support/free_records.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

template <class L>
class FilterByHand : public testing::Test {
 protected:
  void expectEntry(BKQFilter& filter, const char* page) {
    auto* entry = static_cast<BKFILTER_FILE*>(calloc(1, sizeof(BKFILTER_FILE)));
    void* place = entry;
    EXPECT_EQ(L::convert(filter, place), 1);
    expectPage(entry, 32, page);
    freeFilters(entry, 1);
  }

  const TimeZone zone_{kNewYork};  // where summer moves the clock
};

TYPED_TEST_SUITE(FilterByHand, Layouts, );

constexpr auto kAttribute = static_cast<BKQTimeFilter::BKQTimeAttrType>(0x00030201);

TYPED_TEST(FilterByHand, Directory) {
  BKQDirFilter filter(BKQFilter::Exclude, "/tmp");
  this->expectEntry(filter, R"(
     0  03 00             | directories are 3
     2  01 00             | excluded
     4  01 00 00 00       | one pattern
     8  -> "/tmp" 00
    12  05 00             | four characters and the NUL
    14  00*18
)");
}

TYPED_TEST(FilterByHand, FileWithoutPattern) {
  BKQFileFilter filter(BKQFilter::Include, "");
  this->expectEntry(filter, R"(
     0  02 00             | files are 2
     2  00 00
     4  00 00 00 00       | no pattern
     8  null
    12  00 00             | and not the length 1 of its NUL
    14  00*18
)");
}

TYPED_TEST(FilterByHand, VolumeWithALongPattern) {
  const std::string pattern(65535, 'v');
  BKQVolumeFilter filter(static_cast<BKQFilter::BKQInclExclType>(0x00020001), pattern.c_str());
  this->expectEntry(filter, R"(
     0  01 00             | volumes are 1
     2  01 00             | of the mode the low half
     4  01 00 00 00
     8  -> 76*65535 00
    12  00 00             | 65,536 does not fit into the field
    14  00*18
)");
}

TYPED_TEST(FilterByHand, Attributes) {
  BKQAttributeFilter filter(BKQFilter::Include, 0x80000001);
  this->expectEntry(filter, R"(
     0  05 00             | attributes are 5
     2  00 00
     4  01 00 00 80       | 0x80000001, whole
     8  00*24
)");
}

TYPED_TEST(FilterByHand, Within) {
  BKQWithinTimeFilter filter(kAttribute, 7, static_cast<BKQTimeFilter::BKQTimeUnitType>(2));
  this->expectEntry(filter, R"(
     0  04 00             | times are 4
     2  00 00
     4  01 02             | attribute 0x00030201, low half
     6  03 00             | within is 3
     8  07 00 00 00       | seven units
    12  00*4
    16  02 00             | of kind 2
    18  00*14
)");
}

TYPED_TEST(FilterByHand, Before) {
  BKQBeforeTimeFilter filter(kAttribute, storedTime(kJanuary));
  this->expectEntry(filter, R"(
     0  04 00
     2  00 00
     4  01 02
     6  00 00             | before is 0
     8  f0 d7 a4 65       | 1,705,320,000 less five hours
    12  00*20
)");
}

TYPED_TEST(FilterByHand, AfterInSummer) {
  BKQAfterTimeFilter filter(kAttribute, storedTime(kJuly));
  filter.setInclExcl(BKQFilter::Exclude);
  this->expectEntry(filter, R"(
     0  04 00
     2  01 00
     4  01 02
     6  01 00             | after is 1
     8  f0 c8 94 66       | 1,721,044,800 less five hours, as in winter: the shift is that of the
                          | zone's standard time, though its clocks show four hours less
    12  00*20
)");
}

TYPED_TEST(FilterByHand, Between) {
  BKQBetweenTimeFilter filter(kAttribute, storedTime(kJuly), storedTime(kJanuary));
  this->expectEntry(filter, R"(
     0  04 00
     2  00 00
     4  01 02
     6  02 00             | between is 2
     8  f0 c8 94 66       | start, which may be after
    12  f0 d7 a4 65       | the end
    16  00*16
)");
}

}  // namespace
}  // namespace bkoq::test
