#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/attributes.h"
#include "tests/support/failing_new.h"

namespace bkoq::test {
namespace {

TEST(Fax, CloneIsIndependent) {
  BKQFax fax;
  fax.setFaxNumber("555-0100");
  fax.setReceiverName("Night shift");
  std::unique_ptr<BKQFax> clone(fax.clone());
  fax.setFaxNumber("555-0199");
  EXPECT_STREQ(clone->getFaxNumber(), "555-0100");
  EXPECT_STREQ(clone->getReceiverName(), "Night shift");
  clone->mycopy(clone.get());
  clone->mycopy(nullptr);
  EXPECT_STREQ(clone->getFaxNumber(), "555-0100");
}

TEST(Fax, WithoutMemoryThereIsNoClone) {
  BKQFax object;
  const FailingNew noMemory(1);
  EXPECT_EQ(object.clone(), nullptr);
}

}  // namespace
}  // namespace bkoq::test
