#ifndef BKOQ_TESTS_SUPPORT_TIME_ZONE_H_
#define BKOQ_TESTS_SUPPORT_TIME_ZONE_H_

#include <bkoq/bkoq.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace bkoq::test {

// Zones as POSIX rules, so that no test depends on the zones that a system has installed.
constexpr const char* kUtc = "UTC0";
constexpr const char* kFiveHoursWest = "EST5";
constexpr const char* kNewYork = "EST5EDT,M3.2.0,M11.1.0";
constexpr const char* kNineHoursEast = "JST-9";
constexpr const char* kHalfHourEast = "IST-5:30";

// Sets the zone of the process for as long as it lives.
class TimeZone {
 public:
  explicit TimeZone(const char* zone) {
    const char* former = std::getenv("TZ");
    wasSet_ = former != nullptr;
    if (wasSet_) former_ = former;
    setenv("TZ", zone, 1);
    tzset();
  }
  ~TimeZone() {
    if (wasSet_) {
      setenv("TZ", former_.c_str(), 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;

 private:
  bool wasSet_;
  std::string former_;
};

// The stored form of a calendar time.
inline RWCollectableTime storedTime(time_t t) {
  return RWCollectableTime(2177452800ul + static_cast<unsigned long>(t));
}

constexpr time_t kJanuary = 1705320000;  // 2024-01-15 12:00:00 UTC
constexpr time_t kJuly = 1721044800;     // 2024-07-15 12:00:00 UTC

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_TIME_ZONE_H_
