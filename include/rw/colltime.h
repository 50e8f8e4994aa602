#ifndef RW_COLLTIME_H_
#define RW_COLLTIME_H_

#include "rw/collect.h"
#include "rw/export.h"
#include "rw/rwtime.h"

/// A moment that a list can hold. Comparison, equality, hash and copies go by the moment.
class RW_API RWCollectableTime : public RWCollectable, public RWTime {
 public:
  /// Now.
  RWCollectableTime() noexcept;
  /// As the constructors of RWTime: the count begins in 1901 and is no time_t, which
  /// `bkoq/unixtime.h` converts.
  explicit RWCollectableTime(unsigned long seconds) noexcept;
  explicit RWCollectableTime(const struct tm* fields,
                             const RWZone& zone = RWZone::local()) noexcept;
  RWCollectableTime(const RWTime& time) noexcept;
  RWCollectableTime(const RWCollectableTime&) = default;
  RWCollectableTime& operator=(const RWCollectableTime&) = default;

  RWCollectable* newSpecies() const override;
  RWCollectable* copy() const override;
  ~RWCollectableTime() override;
  /// The argument must be an RWCollectableTime.
  int compareTo(const RWCollectable* other) const override;
  unsigned int hash() const override;
  /// 0 for anything but an RWCollectableTime.
  RWBoolean isEqual(const RWCollectable* other) const override;
};

#endif  // RW_COLLTIME_H_
