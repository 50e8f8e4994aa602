#ifndef BKOQ_BENCH_MEASURE_H_
#define BKOQ_BENCH_MEASURE_H_

#include <functional>
#include <vector>

namespace bkoq::bench {

// One thing that is timed.
using Work = std::function<void()>;

// Nanoseconds of this process, not counting what others do on the machine in the meantime.
double processNanoseconds();

struct Spread {
  double median;
  double min;
  double max;
};
Spread spreadOf(std::vector<double> values);

// How often `work` has to be repeated to take the time of one slice, some milliseconds.
unsigned int repeatsFor(const Work& work);
// Nanoseconds of one `work`, as the mean of that many.
double timeOf(const Work& work, unsigned int repeats);

struct Comparison {
  Spread ratio;           // of the first to the second, one a round
  double nanoseconds;     // median of one of the first
  double itsNanoseconds;  // and of the second
};
// Runs the two in alternation, one slice each a round, and changes who goes first every round.
Comparison compareTimes(const Work& first, const Work& second, unsigned int rounds);

double geometricMean(const std::vector<double>& values);

// The exponent of `y` over `x`, by least squares of their logarithms.
double exponentOf(const std::vector<double>& x, const std::vector<double>& y);

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_MEASURE_H_
