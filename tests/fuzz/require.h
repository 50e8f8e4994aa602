#ifndef BKOQ_TESTS_FUZZ_REQUIRE_H_
#define BKOQ_TESTS_FUZZ_REQUIRE_H_

#include <cstdio>
#include <cstdlib>

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
