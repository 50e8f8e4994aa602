#ifndef RW_RWTIME_H_
#define RW_RWTIME_H_

#include <time.h>

#include "rw/export.h"
#include "rw/zone.h"

/// The count of RWTime at 1970-01-01 00:00:00 UTC, where a time_t is 0.
const unsigned int RW_SECONDS_TO_1970 = 2177452800U;

/// A moment: seconds since 1901-01-01 00:00:00 UTC, as an unsigned 32-bit count, which ends at
/// 2037-02-06 06:28:15 UTC.
class RW_API RWTime {
 public:
  /// Now.
  RWTime() noexcept;
  /// The moment of that count, which is no time_t: RWTime(time(nullptr)) lies 69 years too early.
  /// `bkoq/unixtime.h` converts.
  explicit RWTime(unsigned long seconds) noexcept;
  /// The moment of these calendar fields, read as mktime() reads them, the daylight-saving flag
  /// included; count 0 for null and for fields out of the range of time_t or of the count.
  explicit RWTime(const struct tm* fields, const RWZone& zone = RWZone::local()) noexcept;

  /// The count.
  unsigned long seconds() const noexcept { return seconds_; }

  /// Fills every calendar field, the daylight-saving flag included; nothing for a null pointer. A
  /// moment before the first one that time_t holds (1901-12-13 20:45:52 UTC) gets that one's offset
  /// from UTC.
  void extract(struct tm* fields, const RWZone& zone = RWZone::local()) const noexcept;

 private:
  unsigned int seconds_;
};

inline bool operator==(const RWTime& left, const RWTime& right) noexcept {
  return left.seconds() == right.seconds();
}
inline bool operator!=(const RWTime& left, const RWTime& right) noexcept {
  return left.seconds() != right.seconds();
}
inline bool operator<(const RWTime& left, const RWTime& right) noexcept {
  return left.seconds() < right.seconds();
}
inline bool operator>(const RWTime& left, const RWTime& right) noexcept {
  return left.seconds() > right.seconds();
}
inline bool operator<=(const RWTime& left, const RWTime& right) noexcept {
  return left.seconds() <= right.seconds();
}
inline bool operator>=(const RWTime& left, const RWTime& right) noexcept {
  return left.seconds() >= right.seconds();
}

#endif  // RW_RWTIME_H_
