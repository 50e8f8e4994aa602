// The zone in which the time filters of a job are read: the one in force at each conversion, though
// a flattening may keep what it found for the next machine.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/free_records.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

BKQTimeFilter::BKQTimeAttrType modified() { return static_cast<BKQTimeFilter::BKQTimeAttrType>(1); }

// A client's own filter: its bound is meant in a zone of its own, null for that of the machine.
class ForeignZoneFilter : public BKQBeforeTimeFilter {
 public:
  ForeignZoneFilter(const char* zone, const RWCollectableTime& time)
      : BKQBeforeTimeFilter(modified(), time), zone_(zone) {}

  int convertToBK2(void*& entry) override {
    const TimeZone restored(kUtc);
    set();
    return BKQBeforeTimeFilter::convertToBK2(entry);
  }
  int convertToBK2_old(void*& entry) override {
    const TimeZone restored(kUtc);
    set();
    return BKQBeforeTimeFilter::convertToBK2_old(entry);
  }

 private:
  void set() const {
    if (zone_ != nullptr) {
      setenv("TZ", zone_, 1);
    } else {
      unsetenv("TZ");
    }
  }

  const char* zone_;
};

template <class L>
class JobTimes : public testing::Test {
 protected:
  JobTimes() {
    job.addSourceNode(first);
    job.addSourceNode(second);
  }

  // The bounds in the entries of a machine, each entry's first.
  std::vector<int32_t> boundsOf(unsigned int machine) {
    void* out = nullptr;
    EXPECT_EQ(L::convert(job, out), 1);
    std::vector<int32_t> bounds;
    const auto& node = static_cast<typename L::Job*>(out)->pSourceNodes[machine];
    for (uint32_t i = 0; i < node.ulFilterCount; ++i) bounds.push_back(node.pFilters[i].lTime);
    freeJobRecord(static_cast<typename L::Job*>(out));
    return bounds;
  }

  BKQUnixNode first{"ledger"};
  BKQUnixNode second{"payroll"};
  BKQBackupJob job{"nightly"};
};
TYPED_TEST_SUITE(JobTimes, Layouts, );

TYPED_TEST(JobTimes, AreReadInTheZoneInForceAtEachFlattening) {
  BKQBeforeTimeFilter filter(modified(), storedTime(kJanuary));
  this->job.addFilter(filter);
  const TimeZone restored(kUtc);
  for (int i = 0; i < 2; ++i) {
    setenv("TZ", kFiveHoursWest, 1);
    EXPECT_EQ(this->boundsOf(1), std::vector<int32_t>{kJanuary - 18000});
    setenv("TZ", kNineHoursEast, 1);
    EXPECT_EQ(this->boundsOf(1), std::vector<int32_t>{kJanuary + 32400});
  }
  unsetenv("TZ");
  const std::vector<int32_t> unset = this->boundsOf(1);
  setenv("TZ", kFiveHoursWest, 1);
  EXPECT_EQ(this->boundsOf(1), std::vector<int32_t>{kJanuary - 18000});
  unsetenv("TZ");
  EXPECT_EQ(this->boundsOf(1), unset);
  EXPECT_EQ(unset, std::vector<int32_t>{static_cast<int32_t>(BKConvertToBKTime(kJanuary, 0))});
}

TYPED_TEST(JobTimes, AreReadInTheZoneThatAForeignFilterSets) {
  BKQBeforeTimeFilter before(modified(), storedTime(kJanuary));
  ForeignZoneFilter east(kNineHoursEast, storedTime(kJanuary));
  ForeignZoneFilter machines(nullptr, storedTime(kJanuary));
  BKQAfterTimeFilter after(modified(), storedTime(kJanuary));
  for (BKQFilter* filter : std::vector<BKQFilter*>{&before, &east, &machines, &after}) {
    this->job.addFilter(*filter);
  }
  const TimeZone zone(kFiveHoursWest);
  unsetenv("TZ");
  const auto ofTheMachine = static_cast<int32_t>(BKConvertToBKTime(kJanuary, 0));
  setenv("TZ", kFiveHoursWest, 1);
  const std::vector<int32_t> bounds = {kJanuary - 18000, kJanuary + 32400, ofTheMachine,
                                       kJanuary - 18000};
  EXPECT_EQ(this->boundsOf(0), bounds);
  EXPECT_EQ(this->boundsOf(1), bounds);
}

// Zones that are alike in their beginnings or ends, and such as are too long to be remembered.
TYPED_TEST(JobTimes, AreReadInTheirOwnOfSimilarZones) {
  const std::string longName = "<" + std::string(80, 'A') + ">";
  const std::string longZones[] = {longName + "5", longName + "-9"};
  const struct {
    const char* zone;
    int32_t offset;
  } rows[] = {
      {"AAAA0:30", -1800},
      {"BBB-1", 3600},
      {"BBB-1:30", 5400},
      {"AAAA0:30", -1800},
      {"BBB-1", 3600},
      {"BBB-0:30", 1800},
      {longZones[0].c_str(), -18000},
      {longZones[1].c_str(), 32400},
      {"BBB-1", 3600},
      {longZones[1].c_str(), 32400},
      {longZones[0].c_str(), -18000},
  };
  std::vector<std::unique_ptr<ForeignZoneFilter>> filters;
  std::vector<int32_t> bounds;
  for (const auto& row : rows) {
    filters.push_back(std::make_unique<ForeignZoneFilter>(row.zone, storedTime(kJanuary)));
    this->job.addFilter(*filters.back());
    bounds.push_back(kJanuary + row.offset);
  }
  const TimeZone restored(kUtc);
  EXPECT_EQ(this->boundsOf(0), bounds);
  EXPECT_EQ(this->boundsOf(1), bounds);
}

TYPED_TEST(JobTimes, OfMoreBoundsThanAreKeptAreAllExact) {
  std::vector<std::unique_ptr<BKQBetweenTimeFilter>> filters;
  std::vector<int32_t> bounds;
  for (int32_t i = 0; i < 30; ++i) {
    const int32_t start = kJanuary + 1000 * (i % 11);
    filters.push_back(std::make_unique<BKQBetweenTimeFilter>(modified(), storedTime(start),
                                                             storedTime(start + 500)));
    this->job.addFilter(*filters.back());
    bounds.push_back(start - 18000);
  }
  const TimeZone zone(kFiveHoursWest);
  EXPECT_EQ(this->boundsOf(0), bounds);
  EXPECT_EQ(this->boundsOf(1), bounds);
}

TYPED_TEST(JobTimes, AFilterAloneIsReadInTheZoneInForce) {
  BKQBeforeTimeFilter filter(modified(), storedTime(kJanuary));
  this->job.addFilter(filter);
  const TimeZone restored(kFiveHoursWest);
  EXPECT_EQ(this->boundsOf(0), std::vector<int32_t>{kJanuary - 18000});
  setenv("TZ", kNineHoursEast, 1);
  typename TypeParam::Filter entry{};
  void* at = &entry;
  EXPECT_EQ(TypeParam::convert(filter, at), 1);
  EXPECT_EQ(entry.lTime, kJanuary + 32400);
}

}  // namespace
}  // namespace bkoq::test
