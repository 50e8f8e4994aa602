#include "tools/moment.h"

#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <ctime>

namespace bkoq::tool {
namespace {

// A record holds seconds of the local clock, which may be a day off.
constexpr std::int64_t kEarliest = -2147212800;
constexpr std::int64_t kLatest = INT64_C(0xFFFFFFFF) - kSecondsBefore1970;
constexpr const char* kRange = "is out of range: 1901-12-17T00:00:00Z to 2037-02-06T06:28:15Z";
constexpr const char* kForm =
    "is no time; write it as \"2004-03-01T21:00:00\", with \"Z\" or an offset such as \"+01:00\" "
    "after it unless it is local";

class Digits {
 public:
  explicit Digits(const std::string& text) : text_(text) {}

  // Exactly `count` digits.
  bool number(int count, int& value) {
    value = 0;
    for (int i = 0; i < count; ++i) {
      if (std::isdigit(static_cast<unsigned char>(peek())) == 0) return false;
      value = value * 10 + (text_[at_++] - '0');
    }
    return true;
  }
  bool take(char c) {
    if (peek() != c) return false;
    ++at_;
    return true;
  }
  char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool atEnd() const { return at_ == text_.size(); }

 private:
  const std::string& text_;
  std::size_t at_ = 0;
};

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 60 * kMinute;
constexpr std::int64_t kDay = 24 * kHour;

bool isLeap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int daysOf(int year, int month) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && isLeap(year) ? 29 : kDays[month - 1];
}

std::int64_t daysSince1970(int year, int month, int day) {
  std::int64_t days = day - 1;
  for (int m = 1; m < month; ++m) days += daysOf(year, m);
  for (int y = 1970; y < year; ++y) days += isLeap(y) ? 366 : 365;
  for (int y = year; y < 1970; ++y) days -= isLeap(y) ? 366 : 365;
  return days;
}

std::int64_t& chosenMoment() {
  static std::int64_t moment = [] {
    const char* epoch = std::getenv("SOURCE_DATE_EPOCH");
    char* end = nullptr;
    const long long seconds = epoch == nullptr ? 0 : std::strtoll(epoch, &end, 10);
    const bool isGiven =
        epoch != nullptr && *epoch != '\0' && *end == '\0' && seconds >= 0 && seconds <= kLatest;
    return isGiven ? static_cast<std::int64_t>(seconds)
                   : static_cast<std::int64_t>(std::time(nullptr));
  }();
  return moment;
}

}  // namespace

std::int64_t commandMoment() { return chosenMoment(); }
void setCommandMoment(std::int64_t seconds) { chosenMoment() = seconds; }

std::string momentText(std::int64_t seconds) {
  const auto time = static_cast<std::time_t>(seconds);
  std::tm fields = {};
  gmtime_r(&time, &fields);
  char text[32] = "";
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &fields);
  return text;
}

const char* parseMoment(const std::string& text, std::int64_t& seconds) {
  Digits digits(text);
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  if (!digits.number(4, year) || !digits.take('-') || !digits.number(2, month) ||
      !digits.take('-') || !digits.number(2, day)) {
    return kForm;
  }
  bool hasOffset = false;
  std::int64_t offset = 0;
  if (digits.take('T') || digits.take(' ')) {
    if (!digits.number(2, hour) || !digits.take(':') || !digits.number(2, minute)) return kForm;
    if (digits.take(':') && !digits.number(2, second)) return kForm;
    if (digits.take('Z')) {
      hasOffset = true;
    } else if (digits.peek() == '+' || digits.peek() == '-') {
      const int sign = digits.take('-') ? -1 : 1;
      if (sign == 1) digits.take('+');
      int hours = 0;
      int minutes = 0;
      if (!digits.number(2, hours) || !digits.take(':') || !digits.number(2, minutes)) {
        return kForm;
      }
      if (hours > 23 || minutes > 59) return "has an offset that does not exist";
      hasOffset = true;
      offset = sign * (hours * kHour + minutes * kMinute);
    }
  }
  if (!digits.atEnd()) return kForm;
  if (month < 1 || month > 12 || day < 1 || day > daysOf(year, month)) {
    return "names a day that does not exist";
  }
  if (hour > 23 || minute > 59 || second > 59) return "names a time of day that does not exist";
  // A year more on both sides, for the offsets; the rest is tested below.
  if (year < 1900 || year > 2038) return kRange;

  const std::int64_t utc =
      daysSince1970(year, month, day) * kDay + hour * kHour + minute * kMinute + second;
  if (hasOffset) {
    seconds = utc - offset;
  } else {
    std::tm fields = {};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = -1;
    const std::time_t local = std::mktime(&fields);
    if (local == static_cast<std::time_t>(-1) && (utc > 100000 || utc < -100000)) {
      return kRange;
    }
    if (fields.tm_hour != hour || fields.tm_min != minute || fields.tm_mday != day) {
      return "does not exist in the local time zone: the clock was put forward over it";
    }
    seconds = local;
  }
  if (seconds < kEarliest || seconds > kLatest) return kRange;
  return nullptr;
}

}  // namespace bkoq::tool
