// Schedules as the two blocks of the job record, in both layouts.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

#include <string>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/rows.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

template <class L>
class ScheduleConversion : public testing::Test {
 protected:
  ~ScheduleConversion() override { free(setName()); }

  // Converts into a zeroed job record and expects it whole, so that no byte outside of the two
  // blocks is touched. Offsets are the job record's.
  void expectBlocks(const std::string& what, BKQSchedule& schedule, const std::vector<Row>& rows) {
    free(setName());
    job = {};
    void* schedBlock = &job.stSchedule;
    void* rotationBlock = &job.stScheduleExt;
    EXPECT_EQ(L::convert(schedule, schedBlock, rotationBlock), 1) << what;
    EXPECT_EQ(schedBlock, static_cast<void*>(&job.stSchedule));
    EXPECT_EQ(rotationBlock, static_cast<void*>(&job.stScheduleExt));
    expectRows(what, &job, 292, rows);
  }

  char* setName() { return job.stScheduleExt.pszSetName; }

  typename L::Job job{};
};

TYPED_TEST_SUITE(ScheduleConversion, Layouts, );

// What no record carries is set, too.
void setTimes(BKQSchedule& schedule) {
  schedule.setSubmitTime(storedTime(kJanuary));
  schedule.setExecTime(storedTime(kJuly));
  schedule.setPoolName("pool");
  schedule.runJobNow(1);
  schedule.setScheduleWindow(storedTime(1), storedTime(2));
}

TYPED_TEST(ScheduleConversion, RegularFillsTheTimesOnly) {
  TimeZone zone(kFiveHoursWest);
  BKQRegularSchedule regular;
  setTimes(regular);
  this->expectBlocks("regular", regular,
                     {
                         number(56, 4, 1705302000),  // lSubmitTime
                         number(60, 4, 1721026800),  // lExecTime
                     });
}

TYPED_TEST(ScheduleConversion, TimesAreReadInTheZoneOfTheMoment) {
  struct Case {
    const char* zone;
    uint32_t submit;  // of January
    uint32_t exec;    // of July
  };
  TimeZone restored(kUtc);
  BKQRegularSchedule regular;
  setTimes(regular);
  for (const Case& c : {
           Case{kUtc, 1705320000, 1721044800},
           {kFiveHoursWest, 1705302000, 1721026800},
           {kNewYork, 1705302000, 1721026800},
           {kNineHoursEast, 1705352400, 1721077200},
           {kHalfHourEast, 1705339800, 1721064600},
           {kUtc, 1705320000, 1721044800},
       }) {
    setenv("TZ", c.zone, 1);  // and no more than that: the change itself is honoured
    this->expectBlocks(c.zone, regular, {number(56, 4, c.submit), number(60, 4, c.exec)});
  }
}

TYPED_TEST(ScheduleConversion, TimesOfADefaultScheduleAreNow) {
  TimeZone zone(kFiveHoursWest);
  const long before = static_cast<long>(time(nullptr)) - 18000;
  BKQRegularSchedule regular;
  const long after = static_cast<long>(time(nullptr)) - 18000;
  void* schedBlock = &this->job.stSchedule;
  void* rotationBlock = &this->job.stScheduleExt;
  ASSERT_EQ(TypeParam::convert(regular, schedBlock, rotationBlock), 1);
  for (long value : {this->job.stSchedule.lSubmitTime, this->job.stSchedule.lExecTime}) {
    EXPECT_GE(value, before);
    EXPECT_LE(value, after);
  }
}

TYPED_TEST(ScheduleConversion, CustomFillsItsRepeats) {
  TimeZone zone(kUtc);
  BKQCustomSchedule custom(1, 2, 3, 4);
  custom.setSubmitTime(storedTime(0));
  custom.setExecTime(storedTime(0));
  this->expectBlocks("custom", custom,
                     {
                         number(64, 2, 1),  // usRepeat1
                         number(66, 2, 2),  // usRepeat2
                         number(68, 2, 3),  // usRepeat3
                         number(70, 2, 4),  // usRepeat4
                     });

  setTimes(custom);
  custom.setRepeat(0xffff, 0x8000, 0x1234, 0);
  custom.setSkipWeekDayFlag(0xfedc);
  this->expectBlocks("every field", custom,
                     {
                         number(56, 4, 1705320000),  // lSubmitTime
                         number(60, 4, 1721044800),  // lExecTime
                         number(64, 2, 0xffff),      // usRepeat1
                         number(66, 2, 0x8000),      // usRepeat2
                         number(68, 2, 0x1234),      // usRepeat3
                         number(72, 2, 0xfedc),      // usSkipWeekDay
                     });
}

TYPED_TEST(ScheduleConversion, RotationFillsItsSetName) {
  TimeZone zone(kUtc);
  BKQRotationSchedule rotation;
  setTimes(rotation);
  // What follows reaches no record.
  rotation.setSetPW("setpw");
  rotation.setSchemeName("scheme");
  rotation.setPreferedMakeupTime(storedTime(3));
  rotation.setPreferedMakeupJobTime(4, 5);
  rotation.doMakeup(1);
  BKQExceptionDay day;
  rotation.addExceptionDay(day);
  rotation.setJobMask(*new BKQJobMask);
  this->expectBlocks("no set name", rotation,
                     {
                         number(56, 4, 1705320000),  // lSubmitTime
                         number(60, 4, 1721044800),  // lExecTime
                     });

  rotation.setSetName("weekly");
  this->expectBlocks("set name", rotation,
                     {
                         number(56, 4, 1705320000),  // lSubmitTime
                         number(60, 4, 1721044800),  // lExecTime
                         text(196, "weekly"),        // pszSetName
                     });
  expectBlockSize(this->setName(), 7);
}

TYPED_TEST(ScheduleConversion, RotationNeedsNoMask) {
  TimeZone zone(kUtc);
  BKQRotationSchedule rotation;
  rotation.setSubmitTime(storedTime(0));
  rotation.setExecTime(storedTime(0));
  rotation.setSetName("set");
  this->expectBlocks("rotation", rotation, {text(196, "set")});
}

TYPED_TEST(ScheduleConversion, CruiseFillsEveryField) {
  TimeZone zone(kUtc);
  BKQCruiseSchedule cruise("name1", "name2");
  setTimes(cruise);
  cruise.setSetName("gfs");
  cruise.setCruiseMethod(static_cast<BKQCruiseSchedule::BKQCruiseMethod>(0x20003));
  cruise.setSaveMonthly(0xfff1);
  cruise.setSaveWeekly(0xfff2);
  cruise.setSaveDaily(0xfff3);
  cruise.setOptions(0x00010002);
  cruise.setMonths(0xfff4);
  cruise.setCopies(0xfff5);
  cruise.setGFSPoolNames("pool1", "pool2", "pool3");  // reach no record
  this->expectBlocks("cruise", cruise,
                     {
                         number(56, 4, 1705320000),   // lSubmitTime
                         number(60, 4, 1721044800),   // lExecTime
                         text(196, "gfs"),            // pszSetName
                         number(204, 2, 3),           // usCruiseMethod, low 16 bits
                         number(216, 2, 0xfff1),      // usSaveMonthly
                         number(218, 2, 0xfff2),      // usSaveWeekly
                         number(220, 2, 0xfff3),      // usSaveDaily
                         number(236, 4, 0x00010002),  // ulCruiseOptions, whole
                         number(240, 2, 0xfff4),      // usMonths
                         number(242, 2, 0xfff5),      // usCopies
                     });
}

TYPED_TEST(ScheduleConversion, DefaultCruiseLeavesItsBlockZero) {
  TimeZone zone(kUtc);
  BKQCruiseSchedule cruise;
  cruise.setSubmitTime(storedTime(0));
  cruise.setExecTime(storedTime(0));
  this->expectBlocks("cruise", cruise, {});
}

// A schedule class of a client's own, as the job calls it.
class ForeignSchedule : public BKQSchedule {
 public:
  unsigned int getType() const override { return 99; }
};

TYPED_TEST(ScheduleConversion, RootIsTheWholeOfAClassThatAddsNothing) {
  TimeZone zone(kUtc);
  ForeignSchedule schedule;
  setTimes(schedule);
  this->expectBlocks("foreign", schedule, {number(56, 4, 1705320000), number(60, 4, 1721044800)});
}

// A unit of a mask, made on the heap, since masks and schedules do not own their units.
BKQJobUnit* newUnit(unsigned int jobType) {
  auto* unit = new BKQJobUnit;
  unit->setJobType(static_cast<BKQJobUnit::BKQCruiseJobType>(jobType));
  return unit;
}

TEST(ScheduleOfTheCurrentLayout, CarriesNoJobTypes) {
  TimeZone zone(kUtc);
  BKQRotationSchedule rotation;
  rotation.setSubmitTime(storedTime(0));
  rotation.setExecTime(storedTime(0));
  auto* mask = new BKQJobMask;
  BKQJobUnit* unit = newUnit(5);
  mask->addJobUnit(*unit);
  rotation.setJobMask(*mask);
  BKQJDATATRANSFER job{};
  void* schedBlock = &job.stSchedule;
  void* rotationBlock = &job.stScheduleExt;
  ASSERT_EQ(rotation.convertToBK2(schedBlock, rotationBlock), 1);
  expectRows("job", &job, 292, {});
  // Nor does it walk the units.
  BKQJobUnitCol* units = nullptr;
  EXPECT_EQ(mask->enumJobUnits(units, 0), 1u);
  delete units;
  delete unit;
}

}  // namespace
}  // namespace bkoq::test
