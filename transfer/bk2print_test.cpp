// A print-queue notification as its block of the job record, in both layouts.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/free_records.h"
#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

template <class L>
class PrintQueueConversion : public testing::Test {
 protected:
  ~PrintQueueConversion() override { freeJobRecord(job); }

  // Expects the job record whole, so that no byte outside of the block is touched.
  void expectBlock(BKQPrintQueue& queue, const std::vector<Row>& rows) {
    freeJobRecord(job);
    job = static_cast<typename L::Job*>(calloc(1, 292));
    void* block = &job->stPrintQueue;
    EXPECT_EQ(L::convert(queue, block), 1);
    EXPECT_EQ(block, static_cast<void*>(&job->stPrintQueue));
    expectRows("job", job, 292, rows);
  }

  typename L::Job* job = nullptr;
};

TYPED_TEST_SUITE(PrintQueueConversion, Layouts, );

TYPED_TEST(PrintQueueConversion, CopiesEveryText) {
  BKQPrintQueue queue;
  queue.setHostName("host");
  queue.setUserName("user");
  queue.setUserPW("password");
  queue.setQueueName("queue");
  this->expectBlock(queue, {
                               text(180, "host"),      // pszHostName
                               text(184, "user"),      // pszUserName
                               text(188, "password"),  // pszUserPW
                               text(192, "queue"),     // pszQueueName
                           });
  expectBlockSize(this->job->stPrintQueue.pszQueueName, 6);
  EXPECT_NE(this->job->stPrintQueue.pszHostName, queue.getHostName().data());
}

TYPED_TEST(PrintQueueConversion, LeavesNullForAnEmptyText) {
  BKQPrintQueue queue;
  this->expectBlock(queue, {});
  queue.setHostName("host");
  queue.setUserName("user");
  queue.setQueueName("queue");
  this->expectBlock(queue, {text(180, "host"), text(184, "user"), text(192, "queue")});
  queue.setHostName("");
  queue.setUserName(nullptr);
  queue.setQueueName("");
  queue.setUserPW("password");
  this->expectBlock(queue, {text(188, "password")});
}

}  // namespace
}  // namespace bkoq::test
