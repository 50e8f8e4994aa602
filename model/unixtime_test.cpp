#include <bkoq/unixtime.h>
#include <gtest/gtest.h>
#include <time.h>

namespace bkoq::test {
namespace {

constexpr time_t kFirstTimeT = -2147483647 - 1;  // 1901-12-13 20:45:52 UTC
constexpr time_t kLastMoment = 2117514495;       // 2037-02-06 06:28:15 UTC

TEST(UnixTime, AndStoredTimeAre69YearsApart) {
  EXPECT_EQ(bkoq::fromUnixTime(0).seconds(), 2177452800UL);
  EXPECT_EQ(bkoq::toUnixTime(RWTime(2177452800UL)), 0);
  EXPECT_EQ(RW_SECONDS_TO_1970, (69 * 365 + 17) * 86400U);
}

TEST(UnixTime, NowIsNow) {
  const time_t before = time(nullptr);
  const time_t now = bkoq::toUnixTime(RWCollectableTime());
  EXPECT_LE(before, now);
  EXPECT_GE(time(nullptr), now);
}

TEST(UnixTime, ComesBack) {
  for (const time_t t : {kFirstTimeT, static_cast<time_t>(-1), static_cast<time_t>(0),
                         static_cast<time_t>(1705320000), kLastMoment}) {
    EXPECT_EQ(bkoq::toUnixTime(bkoq::fromUnixTime(t)), t);
  }
}

TEST(UnixTime, OfNoStoredTimeIsCountZero) {
  EXPECT_EQ(bkoq::fromUnixTime(kLastMoment).seconds(), 4294967295UL);
  EXPECT_EQ(bkoq::fromUnixTime(kLastMoment + 1).seconds(), 0UL);
  EXPECT_EQ(bkoq::fromUnixTime(2147483647).seconds(), 0UL);
}

TEST(UnixTime, OfAMomentBeforeTheFirstIsTheFirst) {
  EXPECT_EQ(bkoq::toUnixTime(RWTime(29969152UL)), kFirstTimeT);
  EXPECT_EQ(bkoq::toUnixTime(RWTime(29969151UL)), kFirstTimeT);
  EXPECT_EQ(bkoq::toUnixTime(RWTime(0UL)), kFirstTimeT);
}

}  // namespace
}  // namespace bkoq::test
