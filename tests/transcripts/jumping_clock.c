/* Preloaded into the command: two seconds pass between any two looks at the clock that measures how
   long something takes, so that a bar is drawn at every step. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stddef.h>
#include <time.h>

int clock_gettime(clockid_t clock, struct timespec* now) {
  static int (*next)(clockid_t, struct timespec*);
  static time_t seconds;
  if (next == NULL) *(void**)&next = dlsym(RTLD_NEXT, "clock_gettime");
  if (clock != CLOCK_MONOTONIC) return next(clock, now);
  now->tv_sec = seconds += 2;
  now->tv_nsec = 0;
  return 0;
}
