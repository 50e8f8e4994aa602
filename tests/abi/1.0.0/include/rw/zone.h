#ifndef RW_ZONE_H_
#define RW_ZONE_H_

#include "rw/export.h"

/// A time zone; its only object is the system's.
class RW_API RWZone {
 public:
  RWZone(const RWZone&) = delete;
  RWZone& operator=(const RWZone&) = delete;

  /// The zone that TZ names; a change of TZ takes effect at the next use.
  static const RWZone& local() noexcept;

 private:
  constexpr RWZone() noexcept {}
};

#endif  // RW_ZONE_H_
