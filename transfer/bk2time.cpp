#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "bkoq/bktime.h"
#include "rw/rwtime.h"
#include "rw/zone.h"
#include "transfer/record_time.h"

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

namespace bkoq {
namespace {

// What a flattening keeps. There are more places than one filter has bounds.
struct Kept {
  bool isOpen;
  bool hasZone;
  char zone[64];  // TZ when the values were found
  unsigned int count;
  struct {
    unsigned long seconds;
    int32_t value;
  } times[8];
};
constexpr unsigned int kPlaces = sizeof Kept::times / sizeof Kept::times[0];
Kept kept;

int32_t convert(const RWTime& time) {
  struct tm fields;
  time.extract(&fields, RWZone::local());
  return BKConvertToBKTime(mktime(&fields), 0);
}

// Forgets all when TZ is not what it was. Whether values can be kept for it.
bool keepsZone() {
  const char* zone = getenv("TZ");
  const bool hasZone = zone != nullptr;
  if (hasZone == kept.hasZone && (!hasZone || strcmp(zone, kept.zone) == 0)) return true;
  const size_t size = hasZone ? strlen(zone) + 1 : 0;
  if (size > sizeof kept.zone) return false;
  if (hasZone) memcpy(kept.zone, zone, size);
  kept.hasZone = hasZone;
  kept.count = 0;
  return true;
}

}  // namespace

KeptTimes::KeptTimes() {
  kept.isOpen = true;
  kept.count = 0;
}

KeptTimes::~KeptTimes() { kept.isOpen = false; }

int32_t recordTime(const RWTime& time) {
  if (!kept.isOpen || !keepsZone()) return convert(time);
  const unsigned int used = kept.count < kPlaces ? kept.count : kPlaces;
  for (unsigned int i = 0; i < used; ++i) {
    if (kept.times[i].seconds == time.seconds()) return kept.times[i].value;
  }
  auto& place = kept.times[kept.count % kPlaces];
  ++kept.count;
  place.seconds = time.seconds();
  place.value = convert(time);
  return place.value;
}

}  // namespace bkoq
