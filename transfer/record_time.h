#ifndef BKOQ_TRANSFER_RECORD_TIME_H_
#define BKOQ_TRANSFER_RECORD_TIME_H_

#include <stdint.h>

#include "rw/rwtime.h"

namespace bkoq {

// The time value that the records carry for a stored time: its calendar fields in the local zone,
// read back as a calendar time, as local-clock seconds.
int32_t recordTime(const RWTime& time);

// While a flattening holds one of these, recordTime() keeps the last values that it gave: a filter
// of a job is converted once for each node, and each conversion would look at the zone file three
// times. What is kept ends with the flattening, since the zone may change before the next one, and
// at once when TZ changes, as a client's own filter class may do for its conversion.
class KeptTimes {
 public:
  KeptTimes();
  ~KeptTimes();
  KeptTimes(const KeptTimes&) = delete;
  KeptTimes& operator=(const KeptTimes&) = delete;
};

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_RECORD_TIME_H_
