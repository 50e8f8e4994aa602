#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/attributes.h"
#include "tests/support/failing_new.h"

namespace bkoq::test {
namespace {

TEST(OpenFileInfo, CloneIsIndependent) {
  BKQOpenFileInfo info;
  info.setFActions(7);
  info.setRetryCount(0);
  std::unique_ptr<BKQOpenFileInfo> clone(info.clone());
  info.setFActions(9);
  EXPECT_EQ(clone->getFActions(), 7u);
  EXPECT_EQ(clone->getFMethods(), 0u);
  EXPECT_EQ(clone->getRetryCount(), 0);
  EXPECT_EQ(clone->getRetryInterval(), 5);
}

TEST(OpenFileInfo, WithoutMemoryThereIsNoClone) {
  BKQOpenFileInfo object;
  const FailingNew noMemory(1);
  EXPECT_EQ(object.clone(), nullptr);
}

}  // namespace
}  // namespace bkoq::test
