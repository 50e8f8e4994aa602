#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "testing/attributes.h"
#include "testing/counted.h"

namespace {

constexpr unsigned long kTime = 3255627600UL;

TEST(Time, Attributes) {
  BKQTime object;
  expectNumber(object, &BKQTime::getValue, &BKQTime::setValue, 0);
  expectNumber(object, &BKQTime::getType, &BKQTime::setType, 1);
  BKQTime time(5, static_cast<BKQTime::BKQTimeType>(2));
  std::unique_ptr<BKQTime> clone(time.clone());
  EXPECT_EQ(clone->getValue(), 5u);
  EXPECT_EQ(clone->getType(), 2u);
}

TEST(JobMask, Attributes) {
  BKQJobMask object;
  expectNumber(object, &BKQJobMask::getTapeNamePrefix, &BKQJobMask::setTapeNamePrefix, 1);
  expectNumber(object, &BKQJobMask::getRepeats, &BKQJobMask::setRepeats, 0);
  for (const BKQTime* time : {&object.getRepeatCycle(), &object.getRepeatInterval()}) {
    EXPECT_EQ(time->getValue(), 0u);
    EXPECT_EQ(time->getType(), 1u);
  }
  object.setRepeatCycle(BKQTime(5, static_cast<BKQTime::BKQTimeType>(2)));
  object.setRepeatInterval(BKQTime(7, static_cast<BKQTime::BKQTimeType>(3)));
  EXPECT_EQ(object.getRepeatCycle().getValue(), 5u);
  EXPECT_EQ(object.getRepeatCycle().getType(), 2u);
  EXPECT_EQ(object.getRepeatInterval().getValue(), 7u);
  EXPECT_EQ(object.getRepeatInterval().getType(), 3u);
  EXPECT_EQ(BKQJobMask(static_cast<BKQJobMask::BKQTapePrefixType>(4)).getTapeNamePrefix(), 4u);
}

TEST(JobMask, CloneHoldsEachUnitTwice) {
  int destroyed = 0;
  Counted<BKQJobUnit> a(destroyed), b(destroyed), c(destroyed);
  b.setMediaName("b");
  BKQJobMask mask;
  for (BKQJobUnit* unit : {&a, &b, &c}) EXPECT_EQ(mask.addJobUnit(*unit), unit);
  mask.setRepeats(2);
  mask.setRepeatCycle(BKQTime(5, static_cast<BKQTime::BKQTimeType>(2)));
  std::unique_ptr<BKQJobMask> clone(mask.clone());
  clone->mycopy(clone.get());
  clone->mycopy(nullptr);
  EXPECT_EQ(clone->jobUnitEntries(), 6u);
  EXPECT_EQ(clone->getRepeats(), 2);
  EXPECT_EQ(clone->getRepeatCycle().getValue(), 5u);
  BKQJobUnitCol* units = nullptr;
  EXPECT_EQ(clone->enumJobUnits(units, 0), 6u);
  EXPECT_EQ(units->at(0), &a);
  EXPECT_EQ(units->at(2), &c);
  EXPECT_STREQ(static_cast<BKQJobUnit*>(units->at(4))->getMediaName(), "b");
  EXPECT_NE(units->at(4), &b);
  for (unsigned int i = 3; i < 6; ++i) delete units->at(i);
  delete units;
  EXPECT_EQ(destroyed, 0);
}

template <class Schedule>
void expectScheduleAttributes() {
  Schedule object;
  expectTime(object, &BKQSchedule::getSubmitTime, &BKQSchedule::setSubmitTime);
  expectTime(object, &BKQSchedule::getExecTime, &BKQSchedule::setExecTime);
  expectText(object, &BKQSchedule::getPoolName, &BKQSchedule::setPoolName);
  EXPECT_EQ(object.runJobNow(), 0);
  object.runJobNow(1);
  EXPECT_EQ(object.runJobNow(), 1);
  object.setScheduleWindow(RWCollectableTime(kTime), RWCollectableTime(kTime + 1));
  object.setPoolName("pool");
  std::unique_ptr<Schedule> clone(object.clone());
  RWCollectableTime start(0UL);
  RWCollectableTime end(0UL);
  clone->getScheduleWindow(start, end);
  EXPECT_EQ(start.seconds(), kTime);
  EXPECT_EQ(end.seconds(), kTime + 1);
  EXPECT_EQ(clone->runJobNow(), 1);
  EXPECT_EQ(clone->getSubmitTime().seconds(), kTime);
  EXPECT_EQ(clone->getExecTime().seconds(), kTime);
  EXPECT_STREQ(clone->getPoolName(), "pool");
}

TEST(Schedule, AttributesAndTheirCopies) {
  expectScheduleAttributes<BKQRegularSchedule>();
  expectScheduleAttributes<BKQCustomSchedule>();
  expectScheduleAttributes<BKQRotationSchedule>();
  expectScheduleAttributes<BKQCruiseSchedule>();
}

TEST(Schedule, Kinds) {
  EXPECT_EQ(BKQCustomSchedule().getType(), 0u);
  EXPECT_EQ(BKQCruiseSchedule().getType(), 1u);
  EXPECT_EQ(BKQRotationSchedule().getType(), 2u);
  EXPECT_EQ(BKQRegularSchedule().getType(), 3u);
}

TEST(Schedule, RootClonesToNull) {
  BKQRegularSchedule schedule;
  EXPECT_EQ(schedule.BKQSchedule::clone(), nullptr);
}

TEST(CustomSchedule, RepeatValuesInOrderThroughBothForms) {
  BKQCustomSchedule schedule(1, 2, 3, 4);
  unsigned short a = 0, b = 0, c = 0, d = 0;
  schedule.getRepeat(a, b, c, d);
  EXPECT_EQ(a, 1);
  EXPECT_EQ(b, 2);
  EXPECT_EQ(c, 3);
  EXPECT_EQ(d, 4);
  schedule.setRepeat(5, 6, 7, 8);
  schedule.setSkipWeekDayFlag(9);
  std::unique_ptr<BKQCustomSchedule> clone(schedule.clone());
  clone->getRepeat(&a, &b, &c, &d);
  EXPECT_EQ(a, 5);
  EXPECT_EQ(b, 6);
  EXPECT_EQ(c, 7);
  EXPECT_EQ(d, 8);
  EXPECT_EQ(clone->getSkipWeekDayFlag(), 9);
  EXPECT_EQ(BKQCustomSchedule().getSkipWeekDayFlag(), 0);
}

}  // namespace
