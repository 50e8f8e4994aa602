#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "testing/attributes.h"
#include "testing/counted.h"

namespace {

constexpr unsigned long kTime = 3255627600UL;

TEST(JobUnit, Attributes) {
  BKQJobUnit object;
  expectNumber(object, &BKQJobUnit::getJobType, &BKQJobUnit::setJobType, 0);
  expectNumber(object, &BKQJobUnit::getOptions, &BKQJobUnit::setOptions, 0);
  expectNumber(object, &BKQJobUnit::getSerialNumber, &BKQJobUnit::setSerialNumber, 0);
  expectText(object, &BKQJobUnit::getMediaName, &BKQJobUnit::setMediaName);
  expectText(object, &BKQJobUnit::getTapeSerialNumber, &BKQJobUnit::setTapeSerialNumber);
  expectTime(object, &BKQJobUnit::getExecTime, &BKQJobUnit::setExecTime);
}

TEST(ExceptionDay, Attributes) {
  BKQExceptionDay object;
  expectNumber(object, &BKQExceptionDay::getJobType, &BKQExceptionDay::setJobType, 0);
  expectNumber(object, &BKQExceptionDay::getOptions, &BKQExceptionDay::setOptions, 0);
  expectTime(object, &BKQExceptionDay::getExceptionTime, &BKQExceptionDay::setExceptionTime);
}

TEST(RotationSchedule, Attributes) {
  BKQRotationSchedule object;
  expectText(object, &BKQRotationSchedule::getSetName, &BKQRotationSchedule::setSetName);
  expectText(object, &BKQRotationSchedule::getSetPW, &BKQRotationSchedule::setSetPW);
  expectText(object, &BKQRotationSchedule::getSchemeName, &BKQRotationSchedule::setSchemeName);
  expectTime(object, &BKQRotationSchedule::getPreferedMakeupTime,
             &BKQRotationSchedule::setPreferedMakeupTime);
}

TEST(CruiseSchedule, Attributes) {
  BKQCruiseSchedule object;
  expectNumber(object, &BKQCruiseSchedule::getSaveMonthly, &BKQCruiseSchedule::setSaveMonthly, 0);
  expectNumber(object, &BKQCruiseSchedule::getSaveWeekly, &BKQCruiseSchedule::setSaveWeekly, 0);
  expectNumber(object, &BKQCruiseSchedule::getSaveDaily, &BKQCruiseSchedule::setSaveDaily, 0);
  expectNumber(object, &BKQCruiseSchedule::getMonths, &BKQCruiseSchedule::setMonths, 0);
  expectNumber(object, &BKQCruiseSchedule::getCopies, &BKQCruiseSchedule::setCopies, 0);
  expectNumber(object, &BKQCruiseSchedule::getOptions, &BKQCruiseSchedule::setOptions, 0);
  expectNumber(object, &BKQCruiseSchedule::getCruiseMethod, &BKQCruiseSchedule::setCruiseMethod, 0);
}

TEST(JobUnit, NoTwoAreEqual) {
  BKQJobUnit unit;
  BKQJobUnit other;
  EXPECT_FALSE(unit == other);
  EXPECT_FALSE(unit == unit);
}

TEST(JobUnit, CloneCopiesAll) {
  BKQJobUnit unit;
  unit.setJobType(static_cast<BKQJobUnit::BKQCruiseJobType>(3));
  unit.setMediaName("media");
  unit.setSerialNumber(4);
  unit.setTapeSerialNumber("bar");
  unit.setExecTime(RWCollectableTime(kTime));
  unit.setOptions(static_cast<BKQJobUnit::BKQJobUnitOptions>(5));
  std::unique_ptr<BKQJobUnit> clone(unit.clone());
  EXPECT_EQ(clone->getJobType(), 3u);
  EXPECT_STREQ(clone->getMediaName(), "media");
  EXPECT_EQ(clone->getSerialNumber(), 4u);
  EXPECT_STREQ(clone->getTapeSerialNumber(), "bar");
  EXPECT_EQ(clone->getExecTime().seconds(), kTime);
  EXPECT_EQ(clone->getOptions(), 5u);
}

TEST(RotationSchedule, MakeupJobTime) {
  BKQRotationSchedule schedule;
  unsigned char hour = 1;
  unsigned char minute = 1;
  schedule.getPreferedMakeupJobTime(hour, minute);
  EXPECT_EQ(hour, 0);
  EXPECT_EQ(minute, 0);
  schedule.setPreferedMakeupJobTime(23, 59);
  schedule.getPreferedMakeupJobTime(hour, minute);
  EXPECT_EQ(hour, 23);
  EXPECT_EQ(minute, 59);
  EXPECT_EQ(schedule.doMakeup(), 0);
  schedule.doMakeup(1);
  EXPECT_EQ(schedule.doMakeup(), 1);
  EXPECT_EQ(schedule.getJobMask(), nullptr);
}

TEST(RotationSchedule, DeletesItsMask) {
  int destroyed = 0;
  {
    BKQRotationSchedule schedule;
    auto* mask = new Counted<BKQJobMask>(destroyed);
    schedule.setJobMask(*mask);
    schedule.setJobMask(*mask);
    EXPECT_EQ(schedule.getJobMask(), mask);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(RotationSchedule, AbandonsTheMaskThatItReplaces) {
  int destroyed = 0;
  Counted<BKQJobMask> first(destroyed);
  BKQRotationSchedule schedule;
  schedule.setJobMask(first);
  schedule.setJobMask(*new BKQJobMask);
  EXPECT_EQ(destroyed, 0);
}

TEST(RotationSchedule, CopyClonesTheMaskAndHoldsTheDaysTwice) {
  int destroyed = 0;
  Counted<BKQExceptionDay> day(destroyed);
  day.setOptions(static_cast<BKQJobUnit::BKQJobUnitOptions>(6));
  BKQJobUnit unit;
  auto* mask = new BKQJobMask;
  mask->addJobUnit(unit);
  BKQRotationSchedule schedule;
  schedule.setJobMask(*mask);
  schedule.addExceptionDay(day);
  schedule.setSetName("SET");
  schedule.setPreferedMakeupJobTime(1, 2);
  schedule.setSubmitTime(RWCollectableTime(kTime));

  BKQRotationSchedule target;
  target.setJobMask(*new Counted<BKQJobMask>(destroyed));
  target.addExceptionDay(*new Counted<BKQExceptionDay>(destroyed));
  target.mycopy(&schedule);
  EXPECT_EQ(destroyed, 2);
  target.mycopy(&target);
  target.mycopy(nullptr);
  EXPECT_STREQ(target.getSetName(), "SET");
  EXPECT_EQ(target.getSubmitTime().seconds(), kTime);
  ASSERT_NE(target.getJobMask(), nullptr);
  EXPECT_NE(target.getJobMask(), mask);
  EXPECT_EQ(target.getJobMask()->jobUnitEntries(), 2u);
  EXPECT_EQ(schedule.getJobMask(), mask);
  BKQExceptionDayCol* days = nullptr;
  EXPECT_EQ(target.enumExceptionDays(days, 0), 2u);
  EXPECT_EQ(days->at(0), &day);
  EXPECT_EQ(static_cast<BKQExceptionDay*>(days->at(1))->getOptions(), 6u);
  delete days->at(1);
  delete days;
  BKQJobUnitCol* units = nullptr;
  target.getJobMask()->enumJobUnits(units, 0);
  EXPECT_EQ(units->at(0), &unit);
  delete units->at(1);
  delete units;
}

TEST(RotationSchedule, AMissingMaskCopiesAsNone) {
  BKQRotationSchedule schedule;
  std::unique_ptr<BKQRotationSchedule> clone(schedule.clone());
  EXPECT_EQ(clone->getJobMask(), nullptr);
}

TEST(CruiseSchedule, CopySharesTheMaskUntilTheLastGoes) {
  int destroyed = 0;
  BKQExceptionDay day;
  auto* mask = new Counted<BKQJobMask>(destroyed);
  auto* schedule = new BKQCruiseSchedule("one", "two");
  schedule->setJobMask(*mask);
  schedule->addExceptionDay(day);
  schedule->setSaveMonthly(1);
  schedule->setSaveWeekly(2);
  schedule->setSaveDaily(3);
  schedule->setOptions(4);
  schedule->setMonths(5);
  schedule->setCopies(6);
  schedule->setCruiseMethod(static_cast<BKQCruiseSchedule::BKQCruiseMethod>(7));
  schedule->setGFSPoolNames("daily", "weekly", nullptr);
  schedule->setSetName("SET");
  BKQCruiseSchedule* clone = schedule->clone();
  EXPECT_EQ(clone->getJobMask(), mask);
  EXPECT_EQ(clone->exceptionDayEntries(), 1u);
  EXPECT_EQ(clone->getSaveMonthly(), 1);
  EXPECT_EQ(clone->getSaveWeekly(), 2);
  EXPECT_EQ(clone->getSaveDaily(), 3);
  EXPECT_EQ(clone->getOptions(), 4u);
  EXPECT_EQ(clone->getMonths(), 5);
  EXPECT_EQ(clone->getCopies(), 6);
  EXPECT_EQ(clone->getCruiseMethod(), 7u);
  EXPECT_STREQ(clone->getSetName(), "SET");
  RWCollectableString pools[3];
  clone->getGFSPoolNames(pools[0], pools[1], pools[2]);
  EXPECT_STREQ(pools[0], "daily");
  EXPECT_STREQ(pools[1], "weekly");
  EXPECT_STREQ(pools[2], "");
  clone->setGFSPoolNames(pools[1], pools[0], pools[2]);
  clone->getGFSPoolNames(pools[0], pools[1], pools[2]);
  EXPECT_STREQ(pools[0], "weekly");
  delete schedule;
  EXPECT_EQ(destroyed, 0);
  delete clone;
  EXPECT_EQ(destroyed, 1);
}

}  // namespace
