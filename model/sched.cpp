#include "bkoq/sched.h"

#include "bkoq/cruise.h"
#include "model/clone.h"
#include "model/copy_list.h"
#include "model/enumerate.h"

BKQTime::BKQTime() : BKQTime(0, static_cast<BKQTimeType>(1)) {}

BKQTime::BKQTime(unsigned int value, BKQTimeType type) : value_(value), type_(type) {}

BKQTime::~BKQTime() = default;

BKQTime* BKQTime::clone() { return bkoq::makeClone(this); }

unsigned int BKQTime::getValue() const { return value_; }

void BKQTime::setValue(unsigned int value) { value_ = value; }

BKQTime::BKQTimeType BKQTime::getType() const { return type_; }

void BKQTime::setType(BKQTimeType type) { type_ = type; }

void BKQTime::mycopy(BKQTime* source) {
  if (source == nullptr || source == this) return;
  value_ = source->value_;
  type_ = source->type_;
}

BKQJobMask::BKQJobMask() : BKQJobMask(static_cast<BKQTapePrefixType>(1)) {}

BKQJobMask::BKQJobMask(BKQTapePrefixType prefix)
    : prefix_(prefix), repeats_(0), unitCursor_(0), holders_(0) {}

BKQJobMask::~BKQJobMask() = default;

BKQJobMask* BKQJobMask::clone() { return bkoq::makeClone(this); }

BKQJobMask::BKQTapePrefixType BKQJobMask::getTapeNamePrefix() const { return prefix_; }

void BKQJobMask::setTapeNamePrefix(BKQTapePrefixType prefix) { prefix_ = prefix; }

unsigned short BKQJobMask::getRepeats() const { return repeats_; }

void BKQJobMask::setRepeats(unsigned short repeats) { repeats_ = repeats; }

const BKQTime& BKQJobMask::getRepeatCycle() const { return cycle_; }

void BKQJobMask::setRepeatCycle(const BKQTime& cycle) { cycle_ = cycle; }

const BKQTime& BKQJobMask::getRepeatInterval() const { return interval_; }

void BKQJobMask::setRepeatInterval(const BKQTime& interval) { interval_ = interval; }

RWCollectable* BKQJobMask::addJobUnit(BKQJobUnit& unit) { return units_.insert(&unit); }

unsigned int BKQJobMask::jobUnitEntries() const { return units_.entries(); }

void BKQJobMask::resetJobUnits() { unitCursor_ = 0; }

unsigned int BKQJobMask::enumJobUnits(BKQJobUnitCol*& out, unsigned int n) {
  return bkoq::enumerate(units_, unitCursor_, out, n);
}

void BKQJobMask::mycopy(BKQJobMask* source) {
  if (source == nullptr || source == this) return;
  prefix_ = source->prefix_;
  interval_ = source->interval_;
  cycle_ = source->cycle_;
  repeats_ = source->repeats_;
  unitCursor_ = source->unitCursor_;
  bkoq::copyDoubled<BKQJobUnit>(units_, source->units_);
}

BKQSchedule::BKQSchedule() : runNow_(0) {}

BKQSchedule::~BKQSchedule() = default;

BKQSchedule* BKQSchedule::clone() { return nullptr; }

const RWCollectableTime& BKQSchedule::getSubmitTime() const { return submitTime_; }

void BKQSchedule::setSubmitTime(const RWCollectableTime& time) { submitTime_ = time; }

const RWCollectableTime& BKQSchedule::getExecTime() const { return execTime_; }

void BKQSchedule::setExecTime(const RWCollectableTime& time) { execTime_ = time; }

const RWCollectableString& BKQSchedule::getPoolName() const { return poolName_; }

void BKQSchedule::setPoolName(const char* name) { poolName_ = name; }

int BKQSchedule::runJobNow() const { return runNow_; }

void BKQSchedule::runJobNow(int flag) { runNow_ = flag; }

void BKQSchedule::getScheduleWindow(RWCollectableTime& start, RWCollectableTime& end) const {
  start = windowStart_;
  end = windowEnd_;
}

void BKQSchedule::setScheduleWindow(const RWCollectableTime& start, const RWCollectableTime& end) {
  windowStart_ = start;
  windowEnd_ = end;
}

void BKQSchedule::mycopy(BKQSchedule* source) {
  if (source == nullptr || source == this) return;
  submitTime_ = source->submitTime_;
  execTime_ = source->execTime_;
  poolName_ = source->poolName_;
  runNow_ = source->runNow_;
  windowStart_ = source->windowStart_;
  windowEnd_ = source->windowEnd_;
}

BKQRegularSchedule::BKQRegularSchedule() = default;

BKQRegularSchedule::~BKQRegularSchedule() = default;

BKQRegularSchedule* BKQRegularSchedule::clone() { return bkoq::makeClone(this); }

unsigned int BKQRegularSchedule::getType() const { return 3; }

void BKQRegularSchedule::mycopy(BKQRegularSchedule* source) { BKQSchedule::mycopy(source); }

BKQCustomSchedule::BKQCustomSchedule() : BKQCustomSchedule(0, 0, 0, 0) {}

BKQCustomSchedule::BKQCustomSchedule(unsigned short repeat1, unsigned short repeat2,
                                     unsigned short repeat3, unsigned short repeat4)
    : repeats_{repeat1, repeat2, repeat3, repeat4}, skipWeekDay_(0) {}

BKQCustomSchedule::~BKQCustomSchedule() = default;

BKQCustomSchedule* BKQCustomSchedule::clone() { return bkoq::makeClone(this); }

unsigned int BKQCustomSchedule::getType() const { return 0; }

void BKQCustomSchedule::getRepeat(unsigned short* repeat1, unsigned short* repeat2,
                                  unsigned short* repeat3, unsigned short* repeat4) const {
  unsigned short* const repeats[] = {repeat1, repeat2, repeat3, repeat4};
  for (unsigned int i = 0; i < 4; ++i) {
    if (repeats[i] != nullptr) *repeats[i] = repeats_[i];
  }
}

void BKQCustomSchedule::getRepeat(unsigned short& repeat1, unsigned short& repeat2,
                                  unsigned short& repeat3, unsigned short& repeat4) const {
  repeat1 = repeats_[0];
  repeat2 = repeats_[1];
  repeat3 = repeats_[2];
  repeat4 = repeats_[3];
}

void BKQCustomSchedule::setRepeat(unsigned short repeat1, unsigned short repeat2,
                                  unsigned short repeat3, unsigned short repeat4) {
  repeats_[0] = repeat1;
  repeats_[1] = repeat2;
  repeats_[2] = repeat3;
  repeats_[3] = repeat4;
}

unsigned short BKQCustomSchedule::getSkipWeekDayFlag() const { return skipWeekDay_; }

void BKQCustomSchedule::setSkipWeekDayFlag(unsigned short flag) { skipWeekDay_ = flag; }

void BKQCustomSchedule::mycopy(BKQCustomSchedule* source) {
  if (source == nullptr || source == this) return;
  for (int i = 0; i < 4; ++i) repeats_[i] = source->repeats_[i];
  for (int i = 0; i < 3; ++i) lists_[i] = source->lists_[i];
  skipWeekDay_ = source->skipWeekDay_;
  BKQRegularSchedule::mycopy(source);
}
