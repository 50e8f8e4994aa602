#ifndef BKOQ_TESTS_RANDOM_SOURCE_H_
#define BKOQ_TESTS_RANDOM_SOURCE_H_

#include <string>

#include "tests/random/plan.h"

namespace bkoq::test {

// A text as C++ writes it.
std::string literal(const Text& text);

// A job as C++: a function makeJob() that makes it as the plan says and frees nothing.
std::string asSource(const JobPlan& plan);

// The same job as a job file. What a job file cannot say is named in a comment on its first lines.
struct JobFile {
  std::string text;
  bool isWhole = true;
};
JobFile asJobFile(const JobPlan& plan);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_SOURCE_H_
