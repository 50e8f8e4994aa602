#include "transfer/record_time.h"

#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "bkoq/bktime.h"
#include "rw/zone.h"

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
