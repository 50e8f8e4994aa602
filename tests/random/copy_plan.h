#ifndef BKOQ_TESTS_RANDOM_COPY_PLAN_H_
#define BKOQ_TESTS_RANDOM_COPY_PLAN_H_

#include <memory>

#include "tests/random/plan.h"

namespace bkoq::test {

// The plan of a copy of the job: what it shares with its source, it shares here.
std::shared_ptr<JobPlan> copyOf(const JobPlan& job);

std::shared_ptr<NodePlan> copyOf(const NodePlan& node);
std::shared_ptr<SchedulePlan> copyOf(const SchedulePlan& schedule);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_COPY_PLAN_H_
