#include "bkoq/filter.h"

#include "model/clone.h"

BKQFilter::BKQFilter() : mode_(Include) {}

BKQFilter::BKQFilter(BKQInclExclType mode) : mode_(mode) {}

BKQFilter::~BKQFilter() = default;

BKQFilter* BKQFilter::clone() { return nullptr; }

BKQFilter::BKQInclExclType BKQFilter::getInclExcl() const { return mode_; }

void BKQFilter::setInclExcl(BKQInclExclType mode) { mode_ = mode; }

int BKQFilter::isInclude() const { return mode_ == Include ? 1 : 0; }

int BKQFilter::isExclude() const { return mode_ == Exclude ? 1 : 0; }

void BKQFilter::mycopy(BKQFilter* source) {
  if (source == nullptr || source == this) return;
  mode_ = source->mode_;
}

BKQDirFilter::BKQDirFilter() = default;

BKQDirFilter::BKQDirFilter(BKQInclExclType mode, const char* pattern)
    : BKQFilter(mode), pattern_(pattern) {}

BKQDirFilter::~BKQDirFilter() = default;

BKQDirFilter* BKQDirFilter::clone() { return bkoq::makeClone(this); }

unsigned int BKQDirFilter::filterType() const { return 3; }

const RWCollectableString& BKQDirFilter::getFilterString() const { return pattern_; }

void BKQDirFilter::setFilterString(const char* pattern) { pattern_ = pattern; }

void BKQDirFilter::mycopy(BKQDirFilter* source) {
  if (source == nullptr || source == this) return;
  pattern_ = source->pattern_;
  BKQFilter::mycopy(source);
}

BKQFileFilter::BKQFileFilter() = default;

BKQFileFilter::BKQFileFilter(BKQInclExclType mode, const char* pattern)
    : BKQFilter(mode), pattern_(pattern) {}

BKQFileFilter::~BKQFileFilter() = default;

BKQFileFilter* BKQFileFilter::clone() { return bkoq::makeClone(this); }

unsigned int BKQFileFilter::filterType() const { return 2; }

const RWCollectableString& BKQFileFilter::getFilterString() const { return pattern_; }

void BKQFileFilter::setFilterString(const char* pattern) { pattern_ = pattern; }

void BKQFileFilter::mycopy(BKQFileFilter* source) {
  if (source == nullptr || source == this) return;
  pattern_ = source->pattern_;
  BKQFilter::mycopy(source);
}

BKQVolumeFilter::BKQVolumeFilter() = default;

BKQVolumeFilter::BKQVolumeFilter(BKQInclExclType mode, const char* pattern)
    : BKQFilter(mode), pattern_(pattern) {}

BKQVolumeFilter::~BKQVolumeFilter() = default;

BKQVolumeFilter* BKQVolumeFilter::clone() { return bkoq::makeClone(this); }

unsigned int BKQVolumeFilter::filterType() const { return 1; }

const RWCollectableString& BKQVolumeFilter::getFilterString() const { return pattern_; }

void BKQVolumeFilter::setFilterString(const char* pattern) { pattern_ = pattern; }

void BKQVolumeFilter::mycopy(BKQVolumeFilter* source) {
  if (source == nullptr || source == this) return;
  pattern_ = source->pattern_;
  BKQFilter::mycopy(source);
}

BKQAttributeFilter::BKQAttributeFilter() : attributes_(0) {}

BKQAttributeFilter::BKQAttributeFilter(BKQInclExclType mode, unsigned int attributes)
    : BKQFilter(mode), attributes_(attributes) {}

BKQAttributeFilter::~BKQAttributeFilter() = default;

BKQAttributeFilter* BKQAttributeFilter::clone() { return bkoq::makeClone(this); }

unsigned int BKQAttributeFilter::filterType() const { return 5; }

unsigned int BKQAttributeFilter::getAttributes() const { return attributes_; }

void BKQAttributeFilter::setAttributes(unsigned int attributes) { attributes_ = attributes; }

void BKQAttributeFilter::mycopy(BKQAttributeFilter* source) {
  if (source == nullptr || source == this) return;
  attributes_ = source->attributes_;
  BKQFilter::mycopy(source);
}

BKQTimeFilter::BKQTimeFilter()
    : range_(static_cast<BKQTimeRangeType>(0)), attribute_(static_cast<BKQTimeAttrType>(0)) {}

BKQTimeFilter::BKQTimeFilter(BKQTimeRangeType range, BKQTimeAttrType attribute)
    : range_(range), attribute_(attribute) {}

BKQTimeFilter::~BKQTimeFilter() = default;

BKQTimeFilter* BKQTimeFilter::clone() { return nullptr; }

unsigned int BKQTimeFilter::filterType() const { return 4; }

BKQTimeFilter::BKQTimeAttrType BKQTimeFilter::getTRattribute() const { return attribute_; }

void BKQTimeFilter::setTRattribute(BKQTimeAttrType attribute) { attribute_ = attribute; }

void BKQTimeFilter::mycopy(BKQTimeFilter* source) {
  if (source == nullptr || source == this) return;
  range_ = source->range_;
  attribute_ = source->attribute_;
  BKQFilter::mycopy(source);
}

BKQWithinTimeFilter::BKQWithinTimeFilter()
    : units_(0), unitType_(static_cast<BKQTimeUnitType>(0)) {}

BKQWithinTimeFilter::BKQWithinTimeFilter(BKQTimeAttrType attribute)
    : BKQTimeFilter(Within, attribute), units_(0), unitType_(static_cast<BKQTimeUnitType>(0)) {}

BKQWithinTimeFilter::BKQWithinTimeFilter(BKQTimeAttrType attribute, unsigned short units,
                                         BKQTimeUnitType unitType)
    : BKQTimeFilter(Within, attribute), units_(units), unitType_(unitType) {}

BKQWithinTimeFilter::~BKQWithinTimeFilter() = default;

BKQWithinTimeFilter* BKQWithinTimeFilter::clone() { return bkoq::makeClone(this); }

BKQTimeFilter::BKQTimeRangeType BKQWithinTimeFilter::getTRtype() const { return Within; }

unsigned short BKQWithinTimeFilter::getTimeUnits() const { return units_; }

void BKQWithinTimeFilter::setTimeUnits(unsigned short units) { units_ = units; }

BKQTimeFilter::BKQTimeUnitType BKQWithinTimeFilter::getTimeUnitType() const { return unitType_; }

void BKQWithinTimeFilter::setTimeUnitType(BKQTimeUnitType unitType) { unitType_ = unitType; }

void BKQWithinTimeFilter::mycopy(BKQWithinTimeFilter* source) {
  if (source == nullptr || source == this) return;
  units_ = source->units_;
  unitType_ = source->unitType_;
  BKQTimeFilter::mycopy(source);
}

BKQBeforeTimeFilter::BKQBeforeTimeFilter() = default;

BKQBeforeTimeFilter::BKQBeforeTimeFilter(BKQTimeAttrType attribute)
    : BKQTimeFilter(Before, attribute) {}

BKQBeforeTimeFilter::BKQBeforeTimeFilter(BKQTimeAttrType attribute, const RWCollectableTime& time)
    : BKQTimeFilter(Before, attribute), time_(time) {}

BKQBeforeTimeFilter::~BKQBeforeTimeFilter() = default;

BKQBeforeTimeFilter* BKQBeforeTimeFilter::clone() { return bkoq::makeClone(this); }

BKQTimeFilter::BKQTimeRangeType BKQBeforeTimeFilter::getTRtype() const { return Before; }

const RWCollectableTime& BKQBeforeTimeFilter::getTime() const { return time_; }

void BKQBeforeTimeFilter::setTime(const RWCollectableTime& time) { time_ = time; }

void BKQBeforeTimeFilter::mycopy(BKQBeforeTimeFilter* source) {
  if (source == nullptr || source == this) return;
  time_ = source->time_;
  BKQTimeFilter::mycopy(source);
}

BKQAfterTimeFilter::BKQAfterTimeFilter() = default;

BKQAfterTimeFilter::BKQAfterTimeFilter(BKQTimeAttrType attribute)
    : BKQTimeFilter(After, attribute) {}

BKQAfterTimeFilter::BKQAfterTimeFilter(BKQTimeAttrType attribute, const RWCollectableTime& time)
    : BKQTimeFilter(After, attribute), time_(time) {}

BKQAfterTimeFilter::~BKQAfterTimeFilter() = default;

BKQAfterTimeFilter* BKQAfterTimeFilter::clone() { return bkoq::makeClone(this); }

BKQTimeFilter::BKQTimeRangeType BKQAfterTimeFilter::getTRtype() const { return After; }

const RWCollectableTime& BKQAfterTimeFilter::getTime() const { return time_; }

void BKQAfterTimeFilter::setTime(const RWCollectableTime& time) { time_ = time; }

void BKQAfterTimeFilter::mycopy(BKQAfterTimeFilter* source) {
  if (source == nullptr || source == this) return;
  time_ = source->time_;
  BKQTimeFilter::mycopy(source);
}

BKQBetweenTimeFilter::BKQBetweenTimeFilter() = default;

BKQBetweenTimeFilter::BKQBetweenTimeFilter(BKQTimeAttrType attribute)
    : BKQTimeFilter(Between, attribute) {}

BKQBetweenTimeFilter::BKQBetweenTimeFilter(BKQTimeAttrType attribute,
                                           const RWCollectableTime& start,
                                           const RWCollectableTime& end)
    : BKQTimeFilter(Between, attribute), start_(start), end_(end) {}

BKQBetweenTimeFilter::~BKQBetweenTimeFilter() = default;

BKQBetweenTimeFilter* BKQBetweenTimeFilter::clone() { return bkoq::makeClone(this); }

BKQTimeFilter::BKQTimeRangeType BKQBetweenTimeFilter::getTRtype() const { return Between; }

const RWCollectableTime& BKQBetweenTimeFilter::getStartTime() const { return start_; }

void BKQBetweenTimeFilter::setStartTime(const RWCollectableTime& time) { start_ = time; }

const RWCollectableTime& BKQBetweenTimeFilter::getEndTime() const { return end_; }

void BKQBetweenTimeFilter::setEndTime(const RWCollectableTime& time) { end_ = time; }

void BKQBetweenTimeFilter::mycopy(BKQBetweenTimeFilter* source) {
  if (source == nullptr || source == this) return;
  start_ = source->start_;
  end_ = source->end_;
  BKQTimeFilter::mycopy(source);
}
