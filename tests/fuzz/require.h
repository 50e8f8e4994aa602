#ifndef BKOQ_TESTS_FUZZ_REQUIRE_H_
#define BKOQ_TESTS_FUZZ_REQUIRE_H_

#include <cstdio>
#include <cstdlib>

// Of the harness itself: what it does with each byte is of no interest to the fuzzer, which would
// spend most of its time on it.
#if defined(__clang__)
#define FUZZ_UNSEEN __attribute__((no_sanitize("coverage", "address", "undefined")))
#else
#define FUZZ_UNSEEN
#endif

// Whether this is a replay of a few known inputs, each of which is worth all there is. A fuzzer
// lets the content choose, since it tries what is alike again and again.
extern "C" __attribute__((weak)) bool fuzzReplays();
inline bool takesAll(bool isChosen) { return isChosen || fuzzReplays != nullptr; }

// Ends the process with a line that says what does not hold: that is a finding.
#define FUZZ_REQUIRE(condition)                                                 \
  do {                                                                          \
    if (!(condition)) {                                                         \
      std::printf("%s:%d: %s does not hold\n", __FILE__, __LINE__, #condition); \
      std::fflush(stdout);                                                      \
      std::abort();                                                             \
    }                                                                           \
  } while (false)

#endif  // BKOQ_TESTS_FUZZ_REQUIRE_H_
