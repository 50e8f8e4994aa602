#ifndef BKOQ_TRANSFER_RECORD_TIME_H_
#define BKOQ_TRANSFER_RECORD_TIME_H_

#include <stdint.h>

#include "rw/rwtime.h"

namespace bkoq {

// The time value that the records carry for a stored time: its calendar fields in the local zone,
// read back as a calendar time, as local-clock seconds.
int32_t recordTime(const RWTime& time);

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_RECORD_TIME_H_
