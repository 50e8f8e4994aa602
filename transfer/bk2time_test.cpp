// Calendar times and local-clock times, in zones given as rules.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

#include <type_traits>

#include "bkoq/bktime.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

// The prototypes: a 32-bit value and the platform's calendar time.
static_assert(std::is_same<decltype(&BKConvertToBKTime), long (*)(time_t, int)>::value, "");
static_assert(std::is_same<decltype(&BKConvertFromBKTime), time_t (*)(long)>::value, "");
static_assert(sizeof(long) == 4, "");

constexpr long kLargest = 2147483647;        // 2038-01-19 03:14:07 UTC
constexpr long kSmallest = -2147483647 - 1;  // 1901-12-13 20:45:52 UTC

struct Conversion {
  const char* zone;
  time_t t;
  long value;
};

TEST(BKConvertToBKTime, AddsTheOffsetOfStandardTime) {
  for (const Conversion& c : {
           Conversion{kUtc, kJanuary, kJanuary},
           {kUtc, 0, 0},
           {kUtc, -1, -1},
           {kFiveHoursWest, kJanuary, kJanuary - 18000},
           {kFiveHoursWest, kJuly, kJuly - 18000},
           {kFiveHoursWest, 0, -18000},
           {kNewYork, kJanuary, kJanuary - 18000},
           // While daylight saving is in force, too: four hours would be -14400.
           {kNewYork, kJuly, kJuly - 18000},
           {kNineHoursEast, kJanuary, kJanuary + 32400},
           {kNineHoursEast, kJuly, kJuly + 32400},
           {kHalfHourEast, kJanuary, kJanuary + 19800},
       }) {
    TimeZone zone(c.zone);
    EXPECT_EQ(BKConvertToBKTime(c.t, 0), c.value) << c.zone << ' ' << c.t;
    EXPECT_EQ(BKConvertFromBKTime(c.value), c.t) << c.zone << ' ' << c.t;
  }
}

TEST(BKConvertToBKTime, WrapsAtTheEndsOfTheRange) {
  for (const Conversion& c : {
           Conversion{kUtc, kLargest, kLargest},
           {kUtc, kSmallest, kSmallest},
           // 2147483647 + 32400 - 2^32.
           {kNineHoursEast, kLargest, -2147451249},
           // -2147483648 - 18000 + 2^32.
           {kFiveHoursWest, kSmallest, 2147465648},
           // The local reading does not fit, which mktime() answers with -1: 2t + 1.
           {kFiveHoursWest, kLargest, -1},
           {kNineHoursEast, kSmallest, 1},
       }) {
    TimeZone zone(c.zone);
    EXPECT_EQ(BKConvertToBKTime(c.t, 0), c.value) << c.zone << ' ' << c.t;
  }
}

TEST(BKConvertToBKTime, FlagOneGivesLocalMidnight) {
  for (const Conversion& c : {
           // 2023-11-14 22:13:20 UTC.
           Conversion{kUtc, 1700000000, 1699920000},          // 11-14
           {kFiveHoursWest, 1700000000, 1699920000},          // 11-14 17:13:20
           {kNineHoursEast, 1700000000, 1700006400},          // 11-15 07:13:20
           {kHalfHourEast, 1700000000, 1700006400},           // 11-15 03:43:20
           {kFiveHoursWest, 1699920000 + 3600, 1699833600},   // 11-13 20:00
           {kFiveHoursWest, 1699920000 + 18000, 1699920000},  // 11-14 00:00
           {kFiveHoursWest, 1699920000 + 17999, 1699833600},  // 11-13 23:59:59
           // 12:00 UTC: 07:00 and, in July, 08:00 daylight time, of which midnight is read as
           // standard time.
           {kNewYork, kJanuary, kJanuary - 43200},
           {kNewYork, kJuly, kJuly - 43200},
       }) {
    TimeZone zone(c.zone);
    EXPECT_EQ(BKConvertToBKTime(c.t, 1), c.value) << c.zone << ' ' << c.t;
    EXPECT_EQ(c.value % 86400, 0) << c.zone << ' ' << c.t;
  }
}

TEST(BKConvertToBKTime, AnyOtherFlagIsNone) {
  TimeZone zone(kFiveHoursWest);
  for (int flag : {0, 2, -1, 3, 256, 0x10001}) {
    EXPECT_EQ(BKConvertToBKTime(1700000000, flag), 1699982000) << flag;
  }
}

TEST(BKConvertFromBKTime, ReadsTheValueOnTheLocalClock) {
  for (const Conversion& c : {
           Conversion{kUtc, 1700000000, 1700000000},
           {kUtc, -86400, -86400},
           {kFiveHoursWest, 18000, 0},
           {kNineHoursEast, -32400, 0},
           // Midnight of a July day, standard time.
           {kNewYork, kJuly - 43200 + 18000, kJuly - 43200},
       }) {
    TimeZone zone(c.zone);
    EXPECT_EQ(BKConvertFromBKTime(c.value), c.t) << c.zone << ' ' << c.value;
  }
}

TEST(BKConvert, FollowAChangeOfTheZone) {
  TimeZone restored(kFiveHoursWest);
  EXPECT_EQ(BKConvertToBKTime(1700000000, 0), 1699982000);
  setenv("TZ", kNineHoursEast, 1);
  EXPECT_EQ(BKConvertToBKTime(1700000000, 0), 1700032400);
  setenv("TZ", kFiveHoursWest, 1);
  EXPECT_EQ(BKConvertToBKTime(1700000000, 1), 1699920000);
  setenv("TZ", kNineHoursEast, 1);
  EXPECT_EQ(BKConvertToBKTime(1700000000, 1), 1700006400);
  setenv("TZ", kFiveHoursWest, 1);
  EXPECT_EQ(BKConvertFromBKTime(0), 18000);
  setenv("TZ", kNineHoursEast, 1);
  EXPECT_EQ(BKConvertFromBKTime(0), -32400);
}

}  // namespace
}  // namespace bkoq::test
