#include "rw/rwtime.h"

#include <stdint.h>
#include <string.h>

static_assert(sizeof(RWTime) == 4, "a time is one 32-bit count");

namespace {

// In 28 years the calendar comes round to the same weekdays.
constexpr int kYears = 28;
constexpr int64_t kSecondsOfYears = (kYears * 365 + 7) * INT64_C(86400);

// The calendar fields of a moment before the first one that time_t holds, which lies in 1901 or,
// west of Greenwich, in the last day of 1900. `fields` holds those of the first one and keeps its
// offset.
void splitEarly(int64_t unixTime, struct tm* fields) {
  const struct tm first = *fields;
  const auto later = static_cast<time_t>(unixTime + first.tm_gmtoff + kSecondsOfYears);
  gmtime_r(&later, fields);
  fields->tm_year -= kYears;
  // 1900, unlike 1928, had no leap day.
  if (fields->tm_year == 0) --fields->tm_yday;
  fields->tm_isdst = first.tm_isdst;
  fields->tm_gmtoff = first.tm_gmtoff;
  fields->tm_zone = first.tm_zone;
}

unsigned int countOf(int64_t unixTime) {
  const int64_t count = unixTime + RW_SECONDS_TO_1970;
  return count >= 0 && count <= UINT32_MAX ? static_cast<unsigned int>(count) : 0;
}

}  // namespace

RWTime::RWTime() noexcept : seconds_(countOf(time(nullptr))) {}

RWTime::RWTime(unsigned long seconds) noexcept : seconds_(static_cast<unsigned int>(seconds)) {}

RWTime::RWTime(const struct tm* fields, const RWZone& /*zone*/) noexcept : seconds_(0) {
  if (fields == nullptr) return;
  struct tm copy = *fields;
  // mktime() answers -1 also for the second before 1970; only success sets the weekday.
  copy.tm_wday = -1;
  const time_t unixTime = mktime(&copy);
  if (copy.tm_wday != -1) seconds_ = countOf(unixTime);
}

void RWTime::extract(struct tm* fields, const RWZone& /*zone*/) const noexcept {
  if (fields == nullptr) return;
  // localtime_r() alone need not look at TZ again.
  tzset();
  const int64_t unixTime = static_cast<int64_t>(seconds_) - RW_SECONDS_TO_1970;
  memset(fields, 0, sizeof *fields);
  if (unixTime >= INT32_MIN) {
    const auto representable = static_cast<time_t>(unixTime);
    localtime_r(&representable, fields);
    return;
  }
  const time_t earliest = INT32_MIN;
  localtime_r(&earliest, fields);
  splitEarly(unixTime, fields);
}
