#ifndef BKOQ_BENCH_MEASURE_H_
#define BKOQ_BENCH_MEASURE_H_

#include <algorithm>
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

// Nanoseconds of one piece of work, as the mean of so many.
using Timing = std::function<double(unsigned int repeats)>;
Timing timingOf(const Work& work);
// The same of making something, without the freeing of what was made, which each result owns.
template <class Make>
Timing timingOfMaking(const Make& make) {
  return [make](unsigned int repeats) {
    // No more at once: the heap is to stay as large as it is.
    constexpr unsigned int kBatch = 32;
    std::vector<decltype(make())> made;
    made.reserve(kBatch);
    double time = 0;
    for (unsigned int done = 0; done < repeats;) {
      const unsigned int end = std::min(done + kBatch, repeats);
      const double start = processNanoseconds();
      for (; done < end; ++done) made.push_back(make());
      time += processNanoseconds() - start;
      made.clear();
    }
    return time / repeats;
  };
}

// How many repetitions take the time of one slice, some milliseconds.
unsigned int repeatsFor(const Timing& timing);

struct Comparison {
  Spread ratio;           // of the first to the second, one a round
  double nanoseconds;     // median of one of the first
  double itsNanoseconds;  // and of the second
};
// Runs the two in alternation, one slice each a round, and changes who goes first every round.
Comparison compareTimings(const Timing& first, const Timing& second, unsigned int rounds);
// The same of what is run once a slice, whatever time it takes.
Comparison compareFixed(const Timing& first, const Timing& second, unsigned int rounds);
Comparison compareTimes(const Work& first, const Work& second, unsigned int rounds);

double geometricMean(const std::vector<double>& values);

// The exponent of `y` over `x`, by least squares of their logarithms.
double exponentOf(const std::vector<double>& x, const std::vector<double>& y);

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_MEASURE_H_
