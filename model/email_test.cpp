#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"

namespace bkoq::test {
namespace {

TEST(EMail, Kinds) {
  EXPECT_EQ(BKQInternetEMail().emailType(), 0u);
  EXPECT_EQ(BKQMHSEMail().emailType(), 1u);
}

TEST(EMail, ClonesKeepTheirClassAndTexts) {
  BKQMHSEMail mhs;
  mhs.setHostName("host");
  mhs.setMHSId("id");
  std::unique_ptr<BKQEMail> clone(static_cast<BKQEMail&>(mhs).clone());
  EXPECT_EQ(clone->emailType(), 1u);
  EXPECT_STREQ(clone->getHostName(), "host");
  EXPECT_STREQ(dynamic_cast<BKQMHSEMail&>(*clone).getMHSId(), "id");

  BKQInternetEMail internet;
  internet.setUserPW("pw");
  std::unique_ptr<BKQInternetEMail> other(internet.clone());
  EXPECT_STREQ(other->getUserPW(), "pw");
  EXPECT_EQ(internet.BKQEMail::clone(), nullptr);
}

TEST(EMail, CopyingOntoItselfDoesNothing) {
  BKQMHSEMail mhs;
  mhs.setUserName("user");
  mhs.setMHSDir("dir");
  mhs.mycopy(&mhs);
  mhs.mycopy(nullptr);
  EXPECT_STREQ(mhs.getUserName(), "user");
  EXPECT_STREQ(mhs.getMHSDir(), "dir");
  BKQInternetEMail internet;
  internet.setUserName("user");
  internet.mycopy(&internet);
  internet.mycopy(nullptr);
  EXPECT_STREQ(internet.getUserName(), "user");
}

TEST(EMail, WithoutMemoryThereIsNoClone) {
  BKQInternetEMail internet;
  BKQMHSEMail mhs;
  const FailingNew noMemory(1);
  EXPECT_EQ(internet.clone(), nullptr);
  EXPECT_EQ(mhs.clone(), nullptr);
}

TEST(EMail, IsDestroyedWholeThroughItsRoot) {
  int destroyed = 0;
  BKQEMail* email = new Counted<BKQMHSEMail>(destroyed);
  delete email;
  EXPECT_EQ(destroyed, 1);
}

}  // namespace
}  // namespace bkoq::test
