#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"
#include "tests/support/private_member.h"

namespace bkoq::test {

// The three lists that no accessor reads, but that every copy carries.
struct CustomLists {
  using Type = RWSlistCollectables (BKQCustomSchedule::*)[3];
  friend constexpr Type privateMember(CustomLists);
};
template struct PrivateMember<CustomLists, &BKQCustomSchedule::lists_>;

namespace {

constexpr unsigned long kTime = 3255627600UL;

TEST(Time, CloneHasBoth) {
  BKQTime time(5, static_cast<BKQTime::BKQTimeType>(2));
  std::unique_ptr<BKQTime> clone(time.clone());
  EXPECT_EQ(clone->getValue(), 5u);
  EXPECT_EQ(clone->getType(), 2u);
}

TEST(JobMask, Attributes) {
  BKQJobMask object;
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
  inACopy(object, [](BKQJobMask& copy) {
    EXPECT_EQ(copy.getRepeatCycle().getValue(), 5u);
    EXPECT_EQ(copy.getRepeatCycle().getType(), 2u);
    EXPECT_EQ(copy.getRepeatInterval().getValue(), 7u);
    EXPECT_EQ(copy.getRepeatInterval().getType(), 3u);
  });
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

// A schedule of a client's own class.
class PlainSchedule : public BKQSchedule {
 public:
  unsigned int getType() const override { return 77; }
};

// What every schedule has, in each class with a copy rule of its own.
template <class Schedule>
void expectScheduleAttributes() {
  const RWTime before;
  Schedule object;
  const RWTime after;
  RWCollectableTime start(0UL);
  RWCollectableTime end(0UL);
  object.getScheduleWindow(start, end);
  for (const RWTime& now :
       {RWTime(object.getSubmitTime()), RWTime(object.getExecTime()), RWTime(start), RWTime(end)}) {
    EXPECT_GE(now, before);
    EXPECT_LE(now, after);
  }
  EXPECT_EQ(object.runJobNow(), 0);
  object.runJobNow(-1);
  EXPECT_EQ(object.runJobNow(), -1);
  object.setScheduleWindow(RWCollectableTime(kTime), RWCollectableTime(kTime + 1));
  inACopy(object, [](Schedule& copy) {
    RWCollectableTime start(0UL);
    RWCollectableTime end(0UL);
    copy.getScheduleWindow(start, end);
    EXPECT_EQ(start.seconds(), kTime);
    EXPECT_EQ(end.seconds(), kTime + 1);
    EXPECT_EQ(copy.runJobNow(), -1);
    copy.mycopy(&copy);
    copy.mycopy(static_cast<Schedule*>(nullptr));
    EXPECT_EQ(copy.runJobNow(), -1);
  });
}

TEST(Schedule, AttributesAndTheirCopies) {
  expectScheduleAttributes<PlainSchedule>();
  expectScheduleAttributes<BKQRegularSchedule>();
  expectScheduleAttributes<BKQCustomSchedule>();
  expectScheduleAttributes<BKQRotationSchedule>();
  expectScheduleAttributes<BKQCruiseSchedule>();
}

template <class Object>
void expectCloneIfMemory() {
  Object object;
  const std::unique_ptr<Object> clone(object.clone());
  EXPECT_NE(clone, nullptr);
  const FailingNew noMemory(1);
  EXPECT_EQ(object.clone(), nullptr);
}

TEST(Schedule, WithoutMemoryThereIsNoClone) {
  expectCloneIfMemory<BKQTime>();
  expectCloneIfMemory<BKQJobMask>();
  expectCloneIfMemory<BKQRegularSchedule>();
  expectCloneIfMemory<BKQCustomSchedule>();
  expectCloneIfMemory<BKQRotationSchedule>();
  expectCloneIfMemory<BKQCruiseSchedule>();
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

  clone->setRepeat(1, 2, 3, 4);
  clone->getRepeat(nullptr, &b, nullptr, nullptr);
  clone->getRepeat(&a, nullptr, nullptr, nullptr);
  EXPECT_EQ(a, 1);
  EXPECT_EQ(b, 2);
  EXPECT_EQ(c, 7);
}

TEST(CustomSchedule, Attributes) {
  BKQCustomSchedule object;
  unsigned short a = 1, b = 1, c = 1, d = 1;
  object.getRepeat(a, b, c, d);
  EXPECT_EQ(a, 0);
  EXPECT_EQ(b, 0);
  EXPECT_EQ(c, 0);
  EXPECT_EQ(d, 0);
  EXPECT_EQ(BKQCustomSchedule(1, 2, 3, 4).getSkipWeekDayFlag(), 0);
}

// The lists that nothing reads are copied as lists of the same objects.
TEST(CustomSchedule, CopyHasTheReservedLists) {
  int destroyed = 0;
  Counted<RWCollectable> first(destroyed);
  Counted<RWCollectable> former(destroyed);
  {
    BKQCustomSchedule source;
    BKQCustomSchedule target;
    for (int i = 0; i < 3; ++i) {
      RWSlistCollectables& list = (source.*privateMember(CustomLists()))[i];
      for (int entries = 0; entries <= i; ++entries) list.insert(&first);
      (target.*privateMember(CustomLists()))[i].insert(&former);
    }
    target.mycopy(&source);
    for (unsigned int i = 0; i < 3; ++i) {
      const RWSlistCollectables& list = (target.*privateMember(CustomLists()))[i];
      ASSERT_EQ(list.entries(), i + 1);
      EXPECT_EQ(list.at(i), &first);
    }
  }
  EXPECT_EQ(destroyed, 0);
}

}  // namespace
}  // namespace bkoq::test
