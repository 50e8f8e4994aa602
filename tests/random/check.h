#ifndef BKOQ_TESTS_RANDOM_CHECK_H_
#define BKOQ_TESTS_RANDOM_CHECK_H_

#include <bkoq/bkoq.h>

#include <string>

#include "tests/random/plan.h"
#include "tests/random/random.h"

namespace bkoq::test {

// Asks a job for everything that its plan told it, by getters and by enumerations in pages of
// random size. Empty when all of it is so, else what is not.
std::string check(BKQJob& job, const JobPlan& plan, Random& random);

// After a flattening of the whole job every list that it walked has been handed out: enumerations
// go on with nothing until they are reset.
std::string checkAllHandedOut(BKQJob& job, const JobPlan& plan, Random& random);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_CHECK_H_
