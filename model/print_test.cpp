#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "testing/attributes.h"
#include "testing/counted.h"

namespace {

TEST(PrintQueue, Attributes) {
  BKQPrintQueue object;
  expectText(object, &BKQPrintQueue::getHostName, &BKQPrintQueue::setHostName);
  expectText(object, &BKQPrintQueue::getUserName, &BKQPrintQueue::setUserName);
  expectText(object, &BKQPrintQueue::getUserPW, &BKQPrintQueue::setUserPW);
  expectText(object, &BKQPrintQueue::getQueueName, &BKQPrintQueue::setQueueName);
}

TEST(PrintQueue, CloneIsIndependent) {
  BKQPrintQueue queue;
  queue.setQueueName("Q1");
  std::unique_ptr<BKQPrintQueue> clone(queue.clone());
  queue.setQueueName("Q2");
  EXPECT_STREQ(clone->getQueueName(), "Q1");
}

}  // namespace
