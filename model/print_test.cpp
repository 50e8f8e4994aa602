#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/attributes.h"
#include "tests/support/failing_new.h"

namespace bkoq::test {
namespace {

TEST(PrintQueue, CloneIsIndependent) {
  BKQPrintQueue queue;
  queue.setQueueName("Q1");
  std::unique_ptr<BKQPrintQueue> clone(queue.clone());
  queue.setQueueName("Q2");
  EXPECT_STREQ(clone->getQueueName(), "Q1");
  clone->mycopy(clone.get());
  clone->mycopy(nullptr);
  EXPECT_STREQ(clone->getQueueName(), "Q1");
}

TEST(PrintQueue, WithoutMemoryThereIsNoClone) {
  BKQPrintQueue object;
  const FailingNew noMemory(1);
  EXPECT_EQ(object.clone(), nullptr);
}

}  // namespace
}  // namespace bkoq::test
