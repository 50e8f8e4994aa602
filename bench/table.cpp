#include "bench/table.h"

#include <cstdio>

namespace bkoq::bench {
namespace {

void print(const std::string& measure, double value, const std::string& range, const Limit* must,
           const std::string& remark) {
  std::string verdict;
  if (must != nullptr) {
    char text[32];
    std::snprintf(text, sizeof text, "<= %.2f %s", must->value,
                  value <= must->value ? "ok" : "OVER");
    verdict = text;
  }
  std::printf("%-50s %9.3f  %-15s %-12s  %s\n", measure.c_str(), value, range.c_str(),
              verdict.c_str(), remark.c_str());
  std::fflush(stdout);
}

}  // namespace

void Table::section(const char* title) {
  std::printf("\n%s\n%-50s %9s  %-15s %-12s\n", title, "measure", "value", "min .. max", "must");
  std::fflush(stdout);
}

void Table::note(const std::string& text) {
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
}

void Table::row(const std::string& measure, const Spread& value, const Limit* must,
                const std::string& remark) {
  char range[32];
  std::snprintf(range, sizeof range, "%.2f .. %.2f", value.min, value.max);
  print(measure, value.median, range, must, remark);
}

void Table::row(const std::string& measure, double value, const Limit* must,
                const std::string& remark) {
  print(measure, value, "", must, remark);
}

std::string timeText(double nanoseconds) {
  char text[32];
  if (nanoseconds < 1e4) {
    std::snprintf(text, sizeof text, "%.1f ns", nanoseconds);
  } else if (nanoseconds < 1e7) {
    std::snprintf(text, sizeof text, "%.1f us", nanoseconds / 1e3);
  } else {
    std::snprintf(text, sizeof text, "%.1f ms", nanoseconds / 1e6);
  }
  return text;
}

std::string countText(unsigned long long count) {
  std::string text = std::to_string(count);
  for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, ",");
  return text;
}

}  // namespace bkoq::bench
