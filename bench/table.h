#ifndef BKOQ_BENCH_TABLE_H_
#define BKOQ_BENCH_TABLE_H_

#include <string>

#include "bench/measure.h"

namespace bkoq::bench {

// What a value must not exceed.
struct Limit {
  double value;
};

// The lines that the benchmark prints, each as soon as it is known.
class Table {
 public:
  // A heading, under which rows stand.
  static void section(const char* title);
  // A text of its own among the rows.
  static void note(const std::string& text);

  // A value, with its minimum and maximum over the rounds if there were any; a null `must` for one
  // that is only reported. `remark` stands at the end of the line.
  static void row(const std::string& measure, const Spread& value, const Limit* must,
                  const std::string& remark = "");
  static void row(const std::string& measure, double value, const Limit* must,
                  const std::string& remark = "");
};

// "12.3 ns" or a larger unit.
std::string timeText(double nanoseconds);
// "1,000".
std::string countText(unsigned long long count);

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_TABLE_H_
