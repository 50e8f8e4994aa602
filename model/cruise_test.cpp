#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"
#include "tests/support/private_member.h"

namespace bkoq::test {

// The two names that no accessor reads, but that every copy carries.
struct CruiseNames {
  using Type = RWCollectableString (BKQCruiseSchedule::*)[2];
  friend constexpr Type privateMember(CruiseNames);
};
template struct PrivateMember<CruiseNames, &BKQCruiseSchedule::names_>;

namespace {

constexpr unsigned long kTime = 3255627600UL;

// What every rotation has, in both classes.
template <class Rotation>
void expectRotationAttributes() {
  Rotation object;
  EXPECT_EQ(object.doMakeup(), 0);
  EXPECT_EQ(object.getJobMask(), nullptr);
  EXPECT_EQ(object.exceptionDayEntries(), 0u);
  unsigned char hour = 1;
  unsigned char minute = 1;
  object.getPreferedMakeupJobTime(hour, minute);
  EXPECT_EQ(hour, 0);
  EXPECT_EQ(minute, 0);
  object.setPreferedMakeupJobTime(23, 59);
  object.doMakeup(2);
  inACopy(object, [](Rotation& copy) {
    unsigned char hour = 0;
    unsigned char minute = 0;
    copy.getPreferedMakeupJobTime(hour, minute);
    EXPECT_EQ(hour, 23);
    EXPECT_EQ(minute, 59);
    EXPECT_EQ(copy.doMakeup(), 2);
  });
}

TEST(RotationSchedule, AttributesAndTheirCopies) {
  expectRotationAttributes<BKQRotationSchedule>();
  expectRotationAttributes<BKQCruiseSchedule>();
}

TEST(JobUnit, NoTwoAreEqual) {
  BKQJobUnit unit;
  BKQJobUnit other;
  EXPECT_FALSE(unit == other);
  EXPECT_FALSE(unit == unit);
  // A list looks for the object, not for an equal one.
  BKQJobUnitCol units;
  units.insert(&unit);
  EXPECT_EQ(units.find(&unit), &unit);
  EXPECT_EQ(units.find(&other), nullptr);
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
  clone->mycopy(clone.get());
  clone->mycopy(nullptr);
  EXPECT_EQ(clone->getSerialNumber(), 4u);
}

TEST(JobUnit, WithoutMemoryThereIsNoClone) {
  BKQJobUnit unit;
  BKQExceptionDay day;
  const FailingNew noMemory(1);
  EXPECT_EQ(unit.clone(), nullptr);
  EXPECT_EQ(day.clone(), nullptr);
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

TEST(RotationSchedule, TheLastHolderDeletesTheMask) {
  int destroyed = 0;
  auto* mask = new Counted<BKQJobMask>(destroyed);
  auto first = std::make_unique<BKQRotationSchedule>();
  auto second = std::make_unique<BKQCruiseSchedule>();
  auto third = std::make_unique<BKQRotationSchedule>();
  first->setJobMask(*mask);
  second->setJobMask(*mask);
  third->setJobMask(*mask);
  first.reset();
  EXPECT_EQ(destroyed, 0);
  third->mycopy(second.get());  // drops its hold: it has a clone now
  EXPECT_EQ(destroyed, 0);
  EXPECT_NE(third->getJobMask(), mask);
  second.reset();
  EXPECT_EQ(destroyed, 1);
}

TEST(RotationSchedule, ReplacingGivesUpTheHold) {
  int destroyed = 0;
  auto* mask = new Counted<BKQJobMask>(destroyed);
  {
    BKQRotationSchedule holder;
    holder.setJobMask(*mask);
    {
      BKQRotationSchedule other;
      other.setJobMask(*mask);
      other.setJobMask(*new BKQJobMask);
    }
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
}

// The holders of a mask are no part of what a copy of it carries.
TEST(RotationSchedule, CopiedMasksCountTheirOwnHolders) {
  int destroyed = 0;
  BKQRotationSchedule first;
  BKQRotationSchedule second;
  auto* held = new BKQJobMask;
  first.setJobMask(*held);
  second.setJobMask(*held);
  auto* mask = new Counted<BKQJobMask>(destroyed);
  mask->mycopy(held);
  {
    BKQRotationSchedule holder;
    holder.setJobMask(*mask);
    mask->mycopy(held);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(RotationSchedule, TakesEveryCloneBeforeItDeletesAnything) {
  std::string log;
  Logged<BKQExceptionDay> day(log);
  BKQRotationSchedule source;
  source.setJobMask(*new Logged<BKQJobMask>(log));
  source.addExceptionDay(day);
  BKQRotationSchedule target;
  target.setJobMask(*new Logged<BKQJobMask>(log));
  target.addExceptionDay(*new Logged<BKQExceptionDay>(log));
  target.mycopy(&source);
  EXPECT_EQ(log, "ccdd");
  BKQExceptionDayCol* days = nullptr;
  target.enumExceptionDays(days, 0);
  delete days->at(1);
  delete days;
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

// How many days are left from the position on; it is then at the end.
unsigned int daysLeft(BKQRotationSchedule& schedule) {
  BKQExceptionDayCol* days = nullptr;
  const unsigned int left = schedule.enumExceptionDays(days, 0);
  delete days;
  return left;
}

TEST(RotationSchedule, CopyKeepsItsOwnPositionInTheDays) {
  BKQExceptionDay days[3];
  BKQRotationSchedule source;
  for (BKQExceptionDay& day : days) source.addExceptionDay(day);
  ASSERT_EQ(daysLeft(source), 3u);

  std::unique_ptr<BKQRotationSchedule> clone(source.clone());
  EXPECT_EQ(daysLeft(*clone), 6u) << "a clone begins with the first day";
  BKQRotationSchedule target;
  target.addExceptionDay(*new BKQExceptionDay);
  ASSERT_EQ(daysLeft(target), 1u);
  target.mycopy(&source);
  EXPECT_EQ(daysLeft(target), 5u) << "an object that is filled stays where it is";

  for (BKQRotationSchedule* copy : {clone.get(), &target}) {
    copy->resetExceptionDays();
    BKQExceptionDayCol* all = nullptr;
    copy->enumExceptionDays(all, 0);
    for (unsigned int i = 3; i < all->entries(); ++i) delete all->at(i);
    delete all;
  }
}

TEST(CruiseSchedule, CopyStandsInTheDaysWhereItsSourceDoes) {
  BKQExceptionDay days[2];
  BKQCruiseSchedule source;
  for (BKQExceptionDay& day : days) source.addExceptionDay(day);
  BKQExceptionDayCol* first = nullptr;
  source.enumExceptionDays(first, 1);
  delete first;
  std::unique_ptr<BKQCruiseSchedule> clone(source.clone());
  EXPECT_EQ(daysLeft(*clone), 1u);
}

TEST(RotationSchedule, AMissingMaskCopiesAsNone) {
  BKQRotationSchedule schedule;
  std::unique_ptr<BKQRotationSchedule> clone(schedule.clone());
  EXPECT_EQ(clone->getJobMask(), nullptr);
}

TEST(CruiseSchedule, CopyAbandonsTheFormerMask) {
  int destroyed = 0;
  Counted<BKQJobMask> former(destroyed);
  {
    BKQCruiseSchedule source;
    BKQCruiseSchedule target;
    target.setJobMask(former);
    target.mycopy(&source);
    EXPECT_EQ(target.getJobMask(), nullptr);
    source.setJobMask(*new BKQJobMask);
    target.mycopy(&source);
    target.mycopy(&source);
    target.mycopy(&target);
    EXPECT_EQ(target.getJobMask(), source.getJobMask());
  }
  EXPECT_EQ(destroyed, 0);
}

TEST(CruiseSchedule, CopyHasTheNamesThatNothingReads) {
  BKQCruiseSchedule schedule("one", "two");
  EXPECT_STREQ((schedule.*privateMember(CruiseNames()))[0], "one");
  EXPECT_STREQ((schedule.*privateMember(CruiseNames()))[1], "two");
  inACopy(schedule, [](BKQCruiseSchedule& copy) {
    EXPECT_STREQ((copy.*privateMember(CruiseNames()))[0], "one");
    EXPECT_STREQ((copy.*privateMember(CruiseNames()))[1], "two");
  });
  BKQCruiseSchedule empty(nullptr, nullptr);
  EXPECT_STREQ((empty.*privateMember(CruiseNames()))[0], "");
  EXPECT_STREQ((empty.*privateMember(CruiseNames()))[1], "");
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
  schedule->setGFSPoolNames("daily", "weekly", "monthly");
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
  EXPECT_STREQ(pools[2], "monthly");
  clone->setGFSPoolNames(pools[1], pools[0], pools[2]);
  clone->getGFSPoolNames(pools[0], pools[1], pools[2]);
  EXPECT_STREQ(pools[0], "weekly");
  EXPECT_STREQ(pools[1], "daily");
  EXPECT_STREQ(pools[2], "monthly");
  clone->setGFSPoolNames(nullptr, "b", nullptr);
  clone->getGFSPoolNames(pools[0], pools[1], pools[2]);
  EXPECT_STREQ(pools[0], "");
  EXPECT_STREQ(pools[1], "b");
  EXPECT_STREQ(pools[2], "");
  delete schedule;
  EXPECT_EQ(destroyed, 0);
  delete clone;
  EXPECT_EQ(destroyed, 1);
}

}  // namespace
}  // namespace bkoq::test
