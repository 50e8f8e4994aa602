#include "rw/colltime.h"

#include <new>

static_assert(sizeof(RWCollectableTime) == sizeof(RWCollectable) + 4, "a collectable, then a time");

RWCollectableTime::RWCollectableTime() noexcept = default;

RWCollectableTime::RWCollectableTime(unsigned long seconds) noexcept : RWTime(seconds) {}

RWCollectableTime::RWCollectableTime(const struct tm* fields, const RWZone& zone) noexcept
    : RWTime(fields, zone) {}

RWCollectableTime::RWCollectableTime(const RWTime& time) noexcept : RWTime(time) {}

RWCollectable* RWCollectableTime::newSpecies() const {
  return new (std::nothrow) RWCollectableTime;
}

RWCollectable* RWCollectableTime::copy() const {
  return new (std::nothrow) RWCollectableTime(*this);
}

RWCollectableTime::~RWCollectableTime() = default;

int RWCollectableTime::compareTo(const RWCollectable* other) const {
  const RWTime& its = *static_cast<const RWCollectableTime*>(other);
  return seconds() < its.seconds() ? -1 : (seconds() > its.seconds() ? 1 : 0);
}

unsigned int RWCollectableTime::hash() const { return static_cast<unsigned int>(seconds()); }

RWBoolean RWCollectableTime::isEqual(const RWCollectable* other) const {
  const auto* time = dynamic_cast<const RWCollectableTime*>(other);
  return time != nullptr && time->seconds() == seconds();
}
