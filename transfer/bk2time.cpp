#include <stdint.h>
#include <time.h>

#include "bkoq/bktime.h"

namespace {

// The UTC fields of `t`, read as local standard time.
time_t readAsLocal(time_t t) {
  struct tm fields;
  const struct tm* utc = gmtime(&t);
  if (utc == nullptr) return t;
  fields = *utc;
  fields.tm_isdst = 0;
  return mktime(&fields);
}

}  // namespace

long BKConvertToBKTime(time_t t, int flag) {
  if (flag == 1) {
    // localtime(), unlike its reentrant twin, looks at TZ each time.
    const struct tm* local = localtime(&t);
    if (local != nullptr) {
      struct tm fields = *local;
      fields.tm_hour = 0;
      fields.tm_min = 0;
      fields.tm_sec = 0;
      fields.tm_isdst = 0;
      t = mktime(&fields);
    }
  }
  // The offset of the zone is t - g. Twice t would not fit, and near the ends of the range the
  // result wraps.
  const uint32_t value = static_cast<uint32_t>(t);
  const uint32_t g = static_cast<uint32_t>(readAsLocal(t));
  return static_cast<int32_t>(value - (g - value));
}

time_t BKConvertFromBKTime(long v) { return readAsLocal(static_cast<time_t>(v)); }
