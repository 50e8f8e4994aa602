// Times of a job file: their forms, the local clock where it jumps, and both ends of the range.

#include "tools/moment.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "tests/support/time_zone.h"

namespace bkoq::tool {
namespace {

using test::kFiveHoursWest;
using test::kNewYork;
using test::kUtc;
using test::TimeZone;

constexpr const char* kForm =
    "is no time; write it as \"2004-03-01T21:00:00\", with \"Z\" or an offset such as \"+01:00\" "
    "after it unless it is local";
constexpr const char* kRange = "is out of range: 1901-12-17T00:00:00Z to 2037-02-06T06:28:15Z";
constexpr const char* kNoDay = "names a day that does not exist";
constexpr const char* kNoTimeOfDay = "names a time of day that does not exist";
constexpr const char* kNoOffset = "has an offset that does not exist";
constexpr const char* kSkipped =
    "does not exist in the local time zone: the clock was put forward over it";

// Seconds since 1970, or what is wrong.
std::string read(const std::string& text) {
  std::int64_t seconds = 0;
  const char* wrong = parseMoment(text, seconds);
  return wrong != nullptr ? wrong : std::to_string(seconds);
}

struct Case {
  const char* text;
  const char* result;
};

template <std::size_t count>
void expectAll(const Case (&cases)[count]) {
  for (const Case& each : cases) EXPECT_EQ(read(each.text), each.result) << each.text;
}

TEST(Moment, HasTheseForms) {
  const TimeZone zone(kFiveHoursWest);
  const Case cases[] = {
      {"1970-01-01", "18000"},
      {"1970-01-01T00:00", "18000"},
      {"1970-01-01 00:00:01", "18001"},
      {"1970-01-01T00:00Z", "0"},
      {"1970-01-01T00:01:02Z", "62"},
      {"1970-01-01T10:00+10:30", "-1800"},
      {"1970-01-01T10:00-10:30", "73800"},
      {"1970-01-01T00:00+23:59", "-86340"},
      {"2000-02-29T12:00Z", "951825600"},
      {"1969-12-31T23:59:59Z", "-1"},
      {"1970-01-02T00:00:00Z", "86400"},
      {"1968-03-01T00:00Z", "-57974400"},
      {"2004-12-31T23:59:59Z", "1104537599"},
  };
  expectAll(cases);
}

TEST(Moment, SaysWhatIsWrong) {
  const TimeZone zone(kUtc);
  const Case cases[] = {
      {"", kForm},
      {"now", kForm},
      {"2004-3-01", kForm},
      {"2004-03-1", kForm},
      {"04-03-01", kForm},
      {"2004/03/01", kForm},
      {"200x-03-01", kForm},
      {"2004-0x-01", kForm},
      {"2004-03-0x", kForm},
      {"2004-03-01T2x:00", kForm},
      {"2004-03/01", kForm},
      {"2004-03-01T", kForm},
      {"2004-03-01T21", kForm},
      {"2004-03-01T21:0", kForm},
      {"2004-03-01T21:00:0", kForm},
      {"2004-03-01T21:00:", kForm},
      {"2004-03-01T21:00x", kForm},
      {"2004-03-01T21:00Zx", kForm},
      {"2004-03-01Z", kForm},
      {"2004-03-01T21:00+1", kForm},
      {"2004-03-01T21:00+0100", kForm},
      {"2004-03-01T21:00+01:0", kForm},
      {" 2004-03-01", kForm},
      {"2004-00-01", kNoDay},
      {"2004-13-01", kNoDay},
      {"2004-01-00", kNoDay},
      {"2004-01-32", kNoDay},
      {"2004-04-31", kNoDay},
      {"2003-02-29", kNoDay},
      {"1900-02-29", kNoDay},
      {"2004-02-30", kNoDay},
      {"2004-03-01T24:00", kNoTimeOfDay},
      {"2004-03-01T23:60", kNoTimeOfDay},
      {"2004-03-01T23:59:60", kNoTimeOfDay},
      {"2004-03-01T23:59+24:00", kNoOffset},
      {"2004-03-01T23:59+23:60", kNoOffset},
  };
  expectAll(cases);
}

TEST(Moment, KnowsHowLongEachMonthIs) {
  constexpr int kDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  std::int64_t end = 1072915200;  // 2004-01-01
  for (int month = 1; month <= 12; ++month) {
    char text[32];
    end += std::int64_t{86400} * kDays[month - 1];
    std::snprintf(text, sizeof text, "2004-%02d-%02dT00:00Z", month, kDays[month - 1]);
    EXPECT_EQ(read(text), std::to_string(end - 86400)) << text;
    std::snprintf(text, sizeof text, "2004-%02d-%02dT00:00Z", month, kDays[month - 1] + 1);
    EXPECT_EQ(read(text), kNoDay) << text;
  }
}

TEST(Moment, EndsWhereTheRecordsDo) {
  const TimeZone zone(kUtc);
  const Case cases[] = {
      {"1901-12-17T00:00:00Z", "-2147212800"},
      {"1901-12-16T23:59:59Z", kRange},
      {"1901-12-17T00:00:00", "-2147212800"},
      {"1901-12-16T23:59:59", kRange},
      {"2037-02-06T06:28:15Z", "2117514495"},
      {"2037-02-06T06:28:16Z", kRange},
      {"2037-02-06T06:28:15", "2117514495"},
      {"2037-02-06T06:28:16", kRange},
      {"2037-02-06T07:28:15+01:00", "2117514495"},
      {"1899-12-31T00:00Z", kRange},
      {"1900-01-01T00:00Z", kRange},
      {"1900-01-01T00:00", kRange},
      {"2038-12-31T23:59Z", kRange},
      {"2038-12-31T23:59", kRange},
      {"2039-01-01T00:00Z", kRange},
      {"0000-01-01T00:00Z", kRange},
      {"9999-12-31T23:59", kRange},
  };
  expectAll(cases);
}

// A year that is out of range is so at an hour, too, over which the clock is put forward.
TEST(Moment, EndsBeforeTheLocalClockIsAsked) {
  const TimeZone zone(kNewYork);
  const Case cases[] = {
      {"1899-03-12T02:30", kRange}, {"2039-03-13T02:30", kRange}, {"2040-03-11T02:30", kRange}};
  expectAll(cases);
}

// mktime() answers -1 for an error and for the second before 1970.
TEST(Moment, KnowsTheSecondBefore1970FromAnError) {
  {
    const TimeZone zone(kUtc);
    EXPECT_EQ(read("1969-12-31T23:59:59"), "-1");
    EXPECT_EQ(read("1969-12-31T23:59:58"), "-2");
    EXPECT_EQ(read("1970-01-01T00:00:00"), "0");
  }
  const TimeZone zone(kFiveHoursWest);
  EXPECT_EQ(read("1969-12-31T18:59:59"), "-1");
}

TEST(Moment, FollowsTheLocalClockThroughTheYear) {
  const TimeZone zone(kNewYork);
  const Case cases[] = {
      {"2024-01-15T07:00", "1705320000"},  // 12:00 UTC
      {"2024-07-15T08:00", "1721044800"},  // 12:00 UTC, by a clock an hour ahead
      {"2024-03-10T01:59:59", "1710053999"}, {"2024-03-10T02:00:00", kSkipped},
      {"2024-03-10T02:59:59", kSkipped},     {"2024-03-10T03:00:00", "1710054000"},
      {"2024-11-03T00:59:59", "1730609999"}, {"2024-11-03T02:00:00", "1730617200"},
  };
  expectAll(cases);
  // An hour that comes twice is one of the two.
  const std::string twice = read("2024-11-03T01:30:00");
  EXPECT_TRUE(twice == "1730611800" || twice == "1730615400") << twice;
}

// Where midnight is skipped the day begins at one, and a date alone means midnight.
TEST(Moment, HasNoMidnightWhereTheClockSkipsIt) {
  const TimeZone zone("XST3XDT,M10.3.0/0,M2.3.0/0");
  EXPECT_EQ(read("2024-10-20"), kSkipped);
  EXPECT_EQ(read("2024-10-20T01:00"), "1729393200");
}

// Clocks are also put forward by half an hour, and at the date line by a whole day.
TEST(Moment, IsNotInHalfAnHourOrADayThatIsSkipped) {
  const struct {
    const char* zone;
    Case cases[4];
  } zones[] = {{"LHST-10:30LHDT-11,M10.1.0,M4.1.0",
                {{"2024-10-06T01:59:59", "1728142199"},
                 {"2024-10-06T02:00", kSkipped},
                 {"2024-10-06T02:15", kSkipped},
                 {"2024-10-06T02:30", "1728142200"}}},
               {"EAST12WEST-12,J364/0,J100/0",
                {{"2011-12-29T23:59:59", "1325246399"},
                 {"2011-12-30T00:00", kSkipped},
                 {"2011-12-30T10:00", kSkipped},
                 {"2011-12-31T00:00", "1325246400"}}}};
  for (const auto& each : zones) {
    const TimeZone zone(each.zone);
    expectAll(each.cases);
  }
}

TEST(Moment, IsWrittenAsItIsRead) {
  const TimeZone zone(kNewYork);
  for (const std::int64_t seconds :
       {INT64_C(-2147212800), INT64_C(-1), INT64_C(0), INT64_C(951825600), INT64_C(2117514495)}) {
    EXPECT_EQ(read(momentText(seconds)), std::to_string(seconds));
  }
  EXPECT_EQ(momentText(951825600), "2000-02-29T12:00:00Z");
}

}  // namespace
}  // namespace bkoq::tool
