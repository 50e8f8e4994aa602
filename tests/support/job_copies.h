#ifndef BKOQ_TESTS_SUPPORT_JOB_COPIES_H_
#define BKOQ_TESTS_SUPPORT_JOB_COPIES_H_

// What the tests of the job classes have in common.

#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>

#include "tests/support/failing_new.h"
#include "tests/support/heap.h"
#include "tests/support/parts.h"

namespace bkoq::test {

// Attaches an object of the test's, then another in its place, which is handed over.
template <class Object, class Job>
void expectAbandoned(Job& job, void (Job::*set)(const Object&), Object* (Job::*get)()) {
  const std::unique_ptr<Object> former(new Object);
  const BlockWatch watch(former.get());
  (job.*set)(*former);
  auto* object = new Object;
  (job.*set)(*object);
  EXPECT_EQ((job.*get)(), object);
  EXPECT_FALSE(watch.isFreed());
}

// A schedule class of a client's own that inherits clone() from the root class.
class UnclonedSchedule : public BKQSchedule {
 public:
  unsigned int getType() const override { return 3; }
};

// Whichever allocation fails, alone or with all after it, a clone is null or can be used and
// deleted, and its source stays as it was.
inline void expectClonesInScarceMemory(BKQJob& job) {
  const std::size_t parts = partsOf(job).size();
  for (FailingNew::Mode mode : {FailingNew::kOnce, FailingNew::kFromThenOn}) {
    bool hasFailed = true;
    unsigned int nth = 0;
    while (hasFailed) {
      BKQJob* clone = nullptr;
      {
        const FailingNew scarceMemory(++nth, mode);
        clone = job.clone();
        hasFailed = scarceMemory.hasFailed();
      }
      EXPECT_EQ(clone == nullptr, nth == 1);
      if (clone != nullptr) deleteClone(clone, job);
      EXPECT_EQ(partsOf(job).size(), parts);
    }
    EXPECT_GT(nth, 5u);
  }
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_JOB_COPIES_H_
