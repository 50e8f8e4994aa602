// The job types that the rotation block of the previous layout carries.

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/catalog/layouts.h"
#include "tests/support/rows.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

// A schedule of times zero whose mask has units of these job types.
template <class Schedule>
class MaskedSchedule {
 public:
  explicit MaskedSchedule(const std::vector<unsigned int>& jobTypes) : zone_(kUtc) {
    schedule.setSubmitTime(storedTime(0));
    schedule.setExecTime(storedTime(0));
    schedule.setJobMask(*mask);
    for (unsigned int type : jobTypes) {
      units.push_back(std::make_unique<BKQJobUnit>());
      units.back()->setJobType(static_cast<BKQJobUnit::BKQCruiseJobType>(type));
      mask->addJobUnit(*units.back());
    }
  }

  void expectRotation(const std::vector<Row>& rows) {
    BKQJDATATRANSFER_OLD job{};
    void* schedBlock = &job.stSchedule;
    void* rotationBlock = &job.stScheduleExt;
    EXPECT_EQ(schedule.convertToBK2_old(schedBlock, rotationBlock), 1);
    expectRows("job", &job, 292, rows);
  }

  unsigned int unitsBehindTheCursor() {
    BKQJobUnitCol* rest = nullptr;
    const unsigned int count = mask->enumJobUnits(rest, 0);
    delete rest;
    return count;
  }

  Schedule schedule;
  BKQJobMask* mask = new BKQJobMask;  // the schedule deletes it
  std::vector<std::unique_ptr<BKQJobUnit>> units;

 private:
  TimeZone zone_;
};

using Rotation = MaskedSchedule<BKQRotationSchedule>;

TEST(ScheduleOfPreviousLayout, CarriesTheFirstEightJobTypes) {
  Rotation rotation({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
  rotation.expectRotation({
      number(208, 1, 1),
      number(209, 1, 2),
      number(210, 1, 3),
      number(211, 1, 4),
      number(212, 1, 5),
      number(213, 1, 6),
      number(214, 1, 7),
      number(215, 1, 8),
  });
  // All units are passed, those too that are dropped.
  EXPECT_EQ(rotation.unitsBehindTheCursor(), 0u);
  rotation.mask->resetJobUnits();
  EXPECT_EQ(rotation.unitsBehindTheCursor(), 10u);
}

TEST(ScheduleOfPreviousLayout, CarriesEightJobTypesWhole) {
  Rotation rotation({8, 7, 6, 5, 4, 3, 2, 1});
  rotation.expectRotation({number(208, 4, 0x05060708), number(212, 4, 0x01020304)});
}

TEST(ScheduleOfPreviousLayout, LeavesUnusedPlacesZero) {
  Rotation rotation({5, 6});
  rotation.expectRotation({number(208, 1, 5), number(209, 1, 6)});
  // Wherever the cursor stood before.
  rotation.expectRotation({number(208, 1, 5), number(209, 1, 6)});
}

TEST(ScheduleOfPreviousLayout, CutsJobTypesTo8Bits) {
  Rotation rotation({0x1ff, 0x100, 0xffffff12});
  rotation.expectRotation({number(208, 1, 0xff), number(210, 1, 0x12)});
}

TEST(ScheduleOfPreviousLayout, MaskWithoutUnitsLeavesAllPlacesZero) {
  Rotation rotation({});
  rotation.expectRotation({});
}

TEST(ScheduleOfPreviousLayout, CruiseCarriesJobTypesToo) {
  MaskedSchedule<BKQCruiseSchedule> cruise({3, 1, 2});
  cruise.schedule.setOptions(0x00010002);
  cruise.expectRotation({
      number(208, 1, 3), number(209, 1, 1), number(210, 1, 2),
      number(236, 4, 0x00010002),  // ulCruiseOptions
  });
}

TEST(ScheduleOfPreviousLayout, CloneRepeatsTheJobTypes) {
  Rotation rotation({1, 2, 3, 4, 5});
  BKQRotationSchedule* copy = rotation.schedule.clone();
  ASSERT_NE(copy, nullptr);
  BKQJDATATRANSFER_OLD job{};
  void* schedBlock = &job.stSchedule;
  void* rotationBlock = &job.stScheduleExt;
  ASSERT_EQ(copy->convertToBK2_old(schedBlock, rotationBlock), 1);
  expectRows("clone", &job, 292,
             {
                 number(208, 1, 1),
                 number(209, 1, 2),
                 number(210, 1, 3),
                 number(211, 1, 4),
                 number(212, 1, 5),
                 number(213, 1, 1),
                 number(214, 1, 2),
                 number(215, 1, 3),
             });

  BKQJobMask* mask = copy->getJobMask();
  mask->resetJobUnits();
  BKQJobUnitCol* units = nullptr;
  ASSERT_EQ(mask->enumJobUnits(units, 0), 10u);
  for (unsigned int i = 5; i < 10; ++i) delete units->at(i);
  delete units;
  delete copy;
}

}  // namespace
}  // namespace bkoq::test
