#ifndef BKOQ_BKTIME_H_
#define BKOQ_BKTIME_H_

#include <time.h>

#include "bkoq/export.h"

/* The first says so in every language, the second with every C library. */
#if defined(__USE_TIME_BITS64)
#include "libbkoq takes a time_t of 32 bits: compile without -D_TIME_BITS=64"
#endif
BKOQ_STATIC_ASSERT(sizeof(time_t) == 4, "libbkoq takes a time_t of 32 bits");

#ifdef __cplusplus
extern "C" {
#endif

/** The local-clock time value of the calendar time `t`: seconds since 1970-01-01 00:00 as read on
    the local wall clock, with the zone's standard-time offset also while daylight saving is in
    force. `flag` 1 first moves `t` to local midnight of its day; any other value takes it as it is.
    The result wraps at 32 bits. Follows TZ; uses the C library's shared calendar storage, so one
    thread at a time. */
BKOQ_API long BKConvertToBKTime(time_t t, int flag);

/** The calendar time that corresponds to the local-clock time value `v`: the inverse of
    BKConvertToBKTime(t, 0) wherever the zone's offset is the same at both instants. */
BKOQ_API time_t BKConvertFromBKTime(long v);

#ifdef __cplusplus
}
#endif

#endif /* BKOQ_BKTIME_H_ */
