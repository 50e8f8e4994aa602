#include "rw/rwtime.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

#include <string>

namespace {

constexpr unsigned long k1970 = 2177452800UL;

// Rules are written out, so that no zone database is needed.
const char* const kUtc = "UTC0";
const char* const kNewYork = "EST5EDT,M3.2.0,M11.1.0";
const char* const kEast = "EAST-14";

class Time : public testing::Test {
 protected:
  Time() {
    if (const char* zone = getenv("TZ")) {
      wasSet_ = true;
      former_ = zone;
    }
  }
  ~Time() override {
    if (wasSet_) {
      setenv("TZ", former_.c_str(), 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }

  // Without tzset(): the library has to notice by itself.
  static void moveTo(const char* zone) { setenv("TZ", zone, 1); }

 private:
  bool wasSet_ = false;
  std::string former_;
};

struct tm fieldsOf(int year, int month, int day, int hour, int minute, int second, int isDst) {
  struct tm fields = {};
  fields.tm_year = year - 1900;
  fields.tm_mon = month - 1;
  fields.tm_mday = day;
  fields.tm_hour = hour;
  fields.tm_min = minute;
  fields.tm_sec = second;
  fields.tm_isdst = isDst;
  return fields;
}

TEST_F(Time, CountsFrom1901) {
  EXPECT_EQ(0UL, RWTime(0UL).seconds());
  EXPECT_EQ(4294967295UL, RWTime(4294967295UL).seconds());
  const RWTime before(static_cast<unsigned long>(time(nullptr)) + k1970);
  const RWTime now;
  const RWTime after(static_cast<unsigned long>(time(nullptr)) + k1970);
  EXPECT_LE(before, now);
  EXPECT_LE(now, after);
}

TEST_F(Time, ComparesByCount) {
  const RWTime early(5UL);
  const RWTime same(5UL);
  const RWTime late(4000000000UL);
  EXPECT_TRUE(early == same && !(early == late));
  EXPECT_TRUE(early != late && !(early != same));
  EXPECT_TRUE(early < late && !(early < same));
  EXPECT_TRUE(late > early && !(same > early));
  EXPECT_TRUE(early <= same && early <= late && !(late <= early));
  EXPECT_TRUE(early >= same && late >= early && !(early >= late));
}

TEST_F(Time, ExtractsEveryCalendarField) {
  const struct {
    const char* zone;
    unsigned long count;
    int year, month, day, hour, minute, second, weekday, dayOfYear, isDst;
    long offset;
    const char* name;
  } kRows[] = {
      {kUtc, k1970, 1970, 1, 1, 0, 0, 0, 4, 0, 0, 0, "UTC"},
      {kNewYork, k1970, 1969, 12, 31, 19, 0, 0, 3, 364, 0, -18000, "EST"},
      // summer: the daylight-saving flag is set
      {kNewYork, 3140164800UL, 2000, 7, 4, 8, 0, 0, 2, 185, 1, -14400, "EDT"},
      // the last second of daylight saving of 2000 and the first of standard time
      {kNewYork, 3150856799UL, 2000, 11, 5, 1, 59, 59, 0, 309, 1, -14400, "EDT"},
      {kNewYork, 3150856800UL, 2000, 11, 5, 1, 0, 0, 0, 309, 0, -18000, "EST"},
      // the last count
      {kUtc, 4294967295UL, 2037, 2, 6, 6, 28, 15, 5, 36, 0, 0, "UTC"},
      // the first moment of time_t, the one before, and the first of all
      {kUtc, 29969152UL, 1901, 12, 13, 20, 45, 52, 5, 346, 0, 0, "UTC"},
      {kUtc, 29969151UL, 1901, 12, 13, 20, 45, 51, 5, 346, 0, 0, "UTC"},
      {kEast, 29969151UL, 1901, 12, 14, 10, 45, 51, 6, 347, 0, 50400, "EAST"},
      {kNewYork, 29969151UL, 1901, 12, 13, 15, 45, 51, 5, 346, 0, -18000, "EST"},
      {kUtc, 0UL, 1901, 1, 1, 0, 0, 0, 2, 0, 0, 0, "UTC"},
      {kEast, 0UL, 1901, 1, 1, 14, 0, 0, 2, 0, 0, 50400, "EAST"},
      {kNewYork, 0UL, 1900, 12, 31, 19, 0, 0, 1, 364, 0, -18000, "EST"},
      {kUtc, 5097599UL, 1901, 2, 28, 23, 59, 59, 4, 58, 0, 0, "UTC"},
      {kUtc, 5097600UL, 1901, 3, 1, 0, 0, 0, 5, 59, 0, 0, "UTC"},
      // in July, but with the offset of the first moment of time_t, a winter's day
      {kNewYork, 15681600UL, 1901, 7, 1, 7, 0, 0, 1, 181, 0, -18000, "EST"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.zone << " " << row.count);
    moveTo(row.zone);
    struct tm fields;
    memset(&fields, 0x5a, sizeof fields);
    RWTime(row.count).extract(nullptr);
    RWTime(row.count).extract(&fields);
    EXPECT_EQ(row.year, fields.tm_year + 1900);
    EXPECT_EQ(row.month, fields.tm_mon + 1);
    EXPECT_EQ(row.day, fields.tm_mday);
    EXPECT_EQ(row.hour, fields.tm_hour);
    EXPECT_EQ(row.minute, fields.tm_min);
    EXPECT_EQ(row.second, fields.tm_sec);
    EXPECT_EQ(row.weekday, fields.tm_wday);
    EXPECT_EQ(row.dayOfYear, fields.tm_yday);
    EXPECT_EQ(row.isDst, fields.tm_isdst);
    EXPECT_EQ(row.offset, fields.tm_gmtoff);
    EXPECT_STREQ(row.name, fields.tm_zone);
  }
}

TEST_F(Time, IsMadeFromCalendarFields) {
  const struct {
    const char* what;
    const char* zone;
    struct tm fields;
    unsigned long count;
  } kRows[] = {
      {"1970", kUtc, fieldsOf(1970, 1, 1, 0, 0, 0, 0), k1970},
      {"1970 in New York", kNewYork, fieldsOf(1970, 1, 1, 0, 0, 0, 0), k1970 + 18000},
      {"summer, daylight saving", kNewYork, fieldsOf(2000, 7, 4, 8, 0, 0, 1), 3140164800UL},
      {"summer, standard time", kNewYork, fieldsOf(2000, 7, 4, 8, 0, 0, 0), 3140168400UL},
      {"summer, flag unknown", kNewYork, fieldsOf(2000, 7, 4, 8, 0, 0, -1), 3140164800UL},
      {"fields out of their ranges", kUtc, fieldsOf(1969, 12, 31, 24, 0, 60, 0), k1970 + 60},
      {"the second for which mktime() answers -1", kUtc, fieldsOf(1969, 12, 31, 23, 59, 59, 0),
       k1970 - 1},
      {"first of time_t", kUtc, fieldsOf(1901, 12, 13, 20, 45, 52, 0), 29969152UL},
      {"before time_t", kUtc, fieldsOf(1901, 12, 13, 20, 45, 51, 0), 0},
      {"last count", kUtc, fieldsOf(2037, 2, 6, 6, 28, 15, 0), 4294967295UL},
      {"after the last count", kUtc, fieldsOf(2037, 2, 6, 6, 28, 16, 0), 0},
      {"after time_t", kUtc, fieldsOf(2100, 1, 1, 0, 0, 0, 0), 0},
  };
  for (const auto& row : kRows) {
    moveTo(row.zone);
    EXPECT_EQ(row.count, RWTime(&row.fields).seconds()) << row.what;
    EXPECT_EQ(row.count, RWTime(&row.fields, RWZone::local()).seconds()) << row.what;
  }
  EXPECT_EQ(0UL, RWTime(nullptr).seconds());
}

TEST_F(Time, LeavesTheGivenFieldsAlone) {
  moveTo(kNewYork);
  const struct tm fields = fieldsOf(2000, 7, 35, 8, 0, 0, -1);
  struct tm copy = fields;
  EXPECT_EQ(RWTime(&fields), RWTime(&copy));
  EXPECT_EQ(35, copy.tm_mday);
  EXPECT_EQ(-1, copy.tm_isdst);
}

TEST_F(Time, FieldsGiveTheMomentBack) {
  for (const char* zone : {kUtc, kNewYork, kEast}) {
    moveTo(zone);
    for (unsigned long count = 29969152UL; count < 4294967295UL - 7654321UL; count += 7654321UL) {
      struct tm fields;
      RWTime(count).extract(&fields);
      ASSERT_EQ(count, RWTime(&fields).seconds()) << zone;
    }
  }
}

}  // namespace
