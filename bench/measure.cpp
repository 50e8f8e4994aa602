#include "bench/measure.h"

#include <time.h>

#include <algorithm>
#include <cmath>

namespace bkoq::bench {

double processNanoseconds() {
  struct timespec now;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

Spread spreadOf(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t half = values.size() / 2;
  const double median =
      values.size() % 2 != 0 ? values[half] : (values[half - 1] + values[half]) / 2;
  return {median, values.front(), values.back()};
}

Timing timingOf(const Work& work) {
  return [work](unsigned int repeats) {
    const double start = processNanoseconds();
    for (unsigned int i = 0; i < repeats; ++i) work();
    return (processNanoseconds() - start) / repeats;
  };
}

unsigned int repeatsFor(const Timing& timing) {
  constexpr double kSlice = 4e6;
  unsigned int repeats = 1;
  for (;;) {
    const double slice = timing(repeats) * repeats;
    if (slice >= kSlice) return repeats;
    repeats = slice < kSlice / 16
                  ? repeats * 8
                  : static_cast<unsigned int>(std::ceil(repeats * kSlice / slice * 1.05));
  }
}

namespace {

Comparison compareSlices(const Timing& first, unsigned int repeats, const Timing& second,
                         unsigned int itsRepeats, unsigned int rounds) {
  std::vector<double> ratios;
  std::vector<double> times;
  std::vector<double> itsTimes;
  for (unsigned int i = 0; i < rounds; ++i) {
    const bool firstLeads = i % 2 == 0;
    double time = firstLeads ? first(repeats) : 0;
    const double itsTime = second(itsRepeats);
    if (!firstLeads) time = first(repeats);
    ratios.push_back(time / itsTime);
    times.push_back(time);
    itsTimes.push_back(itsTime);
  }
  return {spreadOf(ratios), spreadOf(times).median, spreadOf(itsTimes).median};
}

}  // namespace

Comparison compareTimings(const Timing& first, const Timing& second, unsigned int rounds) {
  return compareSlices(first, repeatsFor(first), second, repeatsFor(second), rounds);
}

Comparison compareFixed(const Timing& first, const Timing& second, unsigned int rounds) {
  return compareSlices(first, 1, second, 1, rounds);
}

Comparison compareTimes(const Work& first, const Work& second, unsigned int rounds) {
  return compareTimings(timingOf(first), timingOf(second), rounds);
}

double geometricMean(const std::vector<double>& values) {
  double sum = 0;
  for (const double value : values) sum += std::log(value);
  return std::exp(sum / static_cast<double>(values.size()));
}

double exponentOf(const std::vector<double>& x, const std::vector<double>& y) {
  const auto count = static_cast<double>(x.size());
  double sumX = 0;
  double sumY = 0;
  double sumXX = 0;
  double sumXY = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double logX = std::log(x[i]);
    const double logY = std::log(y[i]);
    sumX += logX;
    sumY += logY;
    sumXX += logX * logX;
    sumXY += logX * logY;
  }
  return (count * sumXY - sumX * sumY) / (count * sumXX - sumX * sumX);
}

}  // namespace bkoq::bench
