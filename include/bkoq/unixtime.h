#ifndef BKOQ_UNIXTIME_H_
#define BKOQ_UNIXTIME_H_

/// The times of the model count from 1901, those of the system from 1970: these convert.

#include <time.h>

#include "bkoq/export.h"
#include "rw/colltime.h"

namespace bkoq {

/// The stored form of a system time, such as time(nullptr) gives. As with every RWTime, a moment
/// that its count does not hold, before 1901-01-01 00:00:00 or after 2037-02-06 06:28:15 UTC, is
/// count 0.
inline RWCollectableTime fromUnixTime(time_t seconds) {
  const long long count = static_cast<long long>(seconds) + RW_SECONDS_TO_1970;
  const bool fits = count >= 0 && count <= 0xFFFFFFFFLL;
  return RWCollectableTime(fits ? static_cast<unsigned long>(count) : 0UL);
}

/// The system time of a stored one. A moment before the first one that 32 bits hold
/// (1901-12-13 20:45:52 UTC) is that one.
inline time_t toUnixTime(const RWTime& time) {
  const long long first = -2147483647LL - 1;
  const long long seconds = static_cast<long long>(time.seconds()) - RW_SECONDS_TO_1970;
  return static_cast<time_t>(seconds < first ? first : seconds);
}

}  // namespace bkoq

#endif  // BKOQ_UNIXTIME_H_
