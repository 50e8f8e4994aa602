#ifndef BKOQ_TESTS_RANDOM_SHRINK_H_
#define BKOQ_TESTS_RANDOM_SHRINK_H_

#include <cstdint>
#include <functional>
#include <set>
#include <string>

#include "tests/random/plan.h"

namespace bkoq::test {

// Numbers of the parts of a plan that a job can do without: objects, and attributes that are set.
using PartNumbers = std::set<std::uint32_t>;

// Leaves parts out of a plan; how many it has in all.
std::uint32_t leaveOut(JobPlan& plan, const PartNumbers& parts);

// As many parts as can be left out so that a job still fails, one after the other.
PartNumbers shrunk(std::uint32_t parts, const std::function<bool(const PartNumbers&)>& stillFails);

// What is left of a plan: its objects, and the setters that are called with what.
std::string outline(JobPlan& plan);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_SHRINK_H_
