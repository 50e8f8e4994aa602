#include "bkoq/cruise.h"

#include "model/clone.h"
#include "model/copy_list.h"
#include "model/enumerate.h"

BKQJobUnit::BKQJobUnit()
    : jobType_(static_cast<BKQCruiseJobType>(0)),
      serialNumber_(0),
      options_(static_cast<BKQJobUnitOptions>(0)) {}

BKQJobUnit::~BKQJobUnit() = default;

BKQJobUnit* BKQJobUnit::clone() { return bkoq::makeClone(this); }

int BKQJobUnit::operator==(BKQJobUnit& /*other*/) { return 0; }

BKQJobUnit::BKQCruiseJobType BKQJobUnit::getJobType() const { return jobType_; }

void BKQJobUnit::setJobType(BKQCruiseJobType type) { jobType_ = type; }

BKQJobUnit::BKQJobUnitOptions BKQJobUnit::getOptions() const { return options_; }

void BKQJobUnit::setOptions(BKQJobUnitOptions options) { options_ = options; }

unsigned int BKQJobUnit::getSerialNumber() const { return serialNumber_; }

void BKQJobUnit::setSerialNumber(unsigned int number) { serialNumber_ = number; }

const RWCollectableString& BKQJobUnit::getMediaName() const { return mediaName_; }

void BKQJobUnit::setMediaName(const char* name) { mediaName_ = name; }

const RWCollectableString& BKQJobUnit::getTapeSerialNumber() const { return tapeSerialNumber_; }

void BKQJobUnit::setTapeSerialNumber(const char* number) { tapeSerialNumber_ = number; }

const RWCollectableTime& BKQJobUnit::getExecTime() const { return execTime_; }

void BKQJobUnit::setExecTime(const RWCollectableTime& time) { execTime_ = time; }

void BKQJobUnit::mycopy(BKQJobUnit* source) {
  if (source == nullptr || source == this) return;
  jobType_ = source->jobType_;
  options_ = source->options_;
  serialNumber_ = source->serialNumber_;
  mediaName_ = source->mediaName_;
  tapeSerialNumber_ = source->tapeSerialNumber_;
  execTime_ = source->execTime_;
}

BKQExceptionDay::BKQExceptionDay()
    : jobType_(static_cast<BKQJobUnit::BKQCruiseJobType>(0)),
      options_(static_cast<BKQJobUnit::BKQJobUnitOptions>(0)) {}

BKQExceptionDay::~BKQExceptionDay() = default;

BKQExceptionDay* BKQExceptionDay::clone() { return bkoq::makeClone(this); }

BKQJobUnit::BKQCruiseJobType BKQExceptionDay::getJobType() const { return jobType_; }

void BKQExceptionDay::setJobType(BKQJobUnit::BKQCruiseJobType type) { jobType_ = type; }

BKQJobUnit::BKQJobUnitOptions BKQExceptionDay::getOptions() const { return options_; }

void BKQExceptionDay::setOptions(BKQJobUnit::BKQJobUnitOptions options) { options_ = options; }

const RWCollectableTime& BKQExceptionDay::getExceptionTime() const { return exceptionTime_; }

void BKQExceptionDay::setExceptionTime(const RWCollectableTime& time) { exceptionTime_ = time; }

void BKQExceptionDay::mycopy(BKQExceptionDay* source) {
  if (source == nullptr || source == this) return;
  exceptionTime_ = source->exceptionTime_;
  jobType_ = source->jobType_;
  options_ = source->options_;
}

BKQRotationSchedule::BKQRotationSchedule()
    : mask_(nullptr), exceptionDayCursor_(0), makeup_(0), makeupHour_(0), makeupMinute_(0) {}

BKQRotationSchedule::~BKQRotationSchedule() { deleteUnlessHeld(releaseMask()); }

BKQRotationSchedule* BKQRotationSchedule::clone() { return bkoq::makeClone(this); }

unsigned int BKQRotationSchedule::getType() const { return 2; }

BKQJobMask* BKQRotationSchedule::getJobMask() const { return mask_; }

void BKQRotationSchedule::setJobMask(const BKQJobMask& mask) {
  holdMask(const_cast<BKQJobMask*>(&mask));
}

void BKQRotationSchedule::holdMask(BKQJobMask* mask) {
  if (mask != nullptr) ++mask->holders_;
  releaseMask();
  mask_ = mask;
}

BKQJobMask* BKQRotationSchedule::releaseMask() {
  BKQJobMask* mask = mask_;
  if (mask != nullptr) --mask->holders_;
  mask_ = nullptr;
  return mask;
}

void BKQRotationSchedule::deleteUnlessHeld(BKQJobMask* mask) {
  if (mask != nullptr && mask->holders_ == 0) delete mask;
}

const RWCollectableString& BKQRotationSchedule::getSetName() const { return setName_; }

void BKQRotationSchedule::setSetName(const char* name) { setName_ = name; }

const RWCollectableString& BKQRotationSchedule::getSetPW() const { return setPassword_; }

void BKQRotationSchedule::setSetPW(const char* password) { setPassword_ = password; }

const RWCollectableString& BKQRotationSchedule::getSchemeName() const { return schemeName_; }

void BKQRotationSchedule::setSchemeName(const char* name) { schemeName_ = name; }

const RWCollectableTime& BKQRotationSchedule::getPreferedMakeupTime() const { return makeupTime_; }

void BKQRotationSchedule::setPreferedMakeupTime(const RWCollectableTime& time) {
  makeupTime_ = time;
}

void BKQRotationSchedule::getPreferedMakeupJobTime(unsigned char& hour,
                                                   unsigned char& minute) const {
  hour = makeupHour_;
  minute = makeupMinute_;
}

void BKQRotationSchedule::setPreferedMakeupJobTime(unsigned char hour, unsigned char minute) {
  makeupHour_ = hour;
  makeupMinute_ = minute;
}

int BKQRotationSchedule::doMakeup() const { return makeup_; }

void BKQRotationSchedule::doMakeup(int flag) { makeup_ = flag; }

RWCollectable* BKQRotationSchedule::addExceptionDay(BKQExceptionDay& day) {
  return exceptionDays_.insert(&day);
}

unsigned int BKQRotationSchedule::exceptionDayEntries() const { return exceptionDays_.entries(); }

void BKQRotationSchedule::resetExceptionDays() { exceptionDayCursor_ = 0; }

unsigned int BKQRotationSchedule::enumExceptionDays(BKQExceptionDayCol*& out, unsigned int n) {
  return bkoq::enumerate(exceptionDays_, exceptionDayCursor_, out, n);
}

void BKQRotationSchedule::copyRotationValues(BKQRotationSchedule& source) {
  BKQRegularSchedule::mycopy(&source);
  setName_ = source.setName_;
  setPassword_ = source.setPassword_;
  schemeName_ = source.schemeName_;
  makeupTime_ = source.makeupTime_;
  makeup_ = source.makeup_;
  makeupHour_ = source.makeupHour_;
  makeupMinute_ = source.makeupMinute_;
}

void BKQRotationSchedule::mycopy(BKQRotationSchedule* source) {
  if (source == nullptr || source == this) return;
  BKQJobMask* maskClone = source->mask_ != nullptr ? source->mask_->clone() : nullptr;
  const bkoq::DoubledCopy<BKQExceptionDay> days(source->exceptionDays_);
  deleteUnlessHeld(releaseMask());
  holdMask(maskClone);
  copyRotationValues(*source);
  days.replace(exceptionDays_);
}

BKQCruiseSchedule::BKQCruiseSchedule() : BKQCruiseSchedule("", "") {}

BKQCruiseSchedule::BKQCruiseSchedule(const char* name1, const char* name2)
    : names_{name1, name2},
      saveMonthly_(0),
      saveWeekly_(0),
      saveDaily_(0),
      options_(0),
      months_(0),
      copies_(0),
      method_(static_cast<BKQCruiseMethod>(0)) {}

BKQCruiseSchedule::~BKQCruiseSchedule() = default;

BKQCruiseSchedule* BKQCruiseSchedule::clone() { return bkoq::makeClone(this); }

unsigned int BKQCruiseSchedule::getType() const { return 1; }

BKQCruiseSchedule::BKQCruiseMethod BKQCruiseSchedule::getCruiseMethod() const { return method_; }

void BKQCruiseSchedule::setCruiseMethod(BKQCruiseMethod method) { method_ = method; }

unsigned short BKQCruiseSchedule::getSaveMonthly() const { return saveMonthly_; }

void BKQCruiseSchedule::setSaveMonthly(unsigned short count) { saveMonthly_ = count; }

unsigned short BKQCruiseSchedule::getSaveWeekly() const { return saveWeekly_; }

void BKQCruiseSchedule::setSaveWeekly(unsigned short count) { saveWeekly_ = count; }

unsigned short BKQCruiseSchedule::getSaveDaily() const { return saveDaily_; }

void BKQCruiseSchedule::setSaveDaily(unsigned short count) { saveDaily_ = count; }

unsigned short BKQCruiseSchedule::getMonths() const { return months_; }

void BKQCruiseSchedule::setMonths(unsigned short months) { months_ = months; }

unsigned short BKQCruiseSchedule::getCopies() const { return copies_; }

void BKQCruiseSchedule::setCopies(unsigned short copies) { copies_ = copies; }

unsigned int BKQCruiseSchedule::getOptions() const { return options_; }

void BKQCruiseSchedule::setOptions(unsigned int options) { options_ = options; }

void BKQCruiseSchedule::getGFSPoolNames(RWCollectableString& pool1, RWCollectableString& pool2,
                                        RWCollectableString& pool3) const {
  pool1 = poolNames_[0];
  pool2 = poolNames_[1];
  pool3 = poolNames_[2];
}

void BKQCruiseSchedule::setGFSPoolNames(const RWCollectableString& pool1,
                                        const RWCollectableString& pool2,
                                        const RWCollectableString& pool3) {
  poolNames_[0] = pool1;
  poolNames_[1] = pool2;
  poolNames_[2] = pool3;
}

void BKQCruiseSchedule::setGFSPoolNames(const char* pool1, const char* pool2, const char* pool3) {
  setGFSPoolNames(RWCollectableString(pool1), RWCollectableString(pool2),
                  RWCollectableString(pool3));
}

void BKQCruiseSchedule::mycopy(BKQCruiseSchedule* source) {
  if (source == nullptr || source == this) return;
  copyRotationValues(*source);
  holdMask(source->mask_);
  exceptionDays_ = source->exceptionDays_;
  // Every field, unlike the copy of a rotation, which keeps its own position in the days.
  exceptionDayCursor_ = source->exceptionDayCursor_;
  for (int i = 0; i < 2; ++i) names_[i] = source->names_[i];
  saveMonthly_ = source->saveMonthly_;
  saveWeekly_ = source->saveWeekly_;
  saveDaily_ = source->saveDaily_;
  options_ = source->options_;
  months_ = source->months_;
  copies_ = source->copies_;
  method_ = source->method_;
  for (int i = 0; i < 3; ++i) poolNames_[i] = source->poolNames_[i];
}
