// E-mail notifications as their block of the job record, in both layouts.

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
class EMailConversion : public testing::Test {
 protected:
  ~EMailConversion() override { freeJobRecord(job); }

  // Through the virtual table, as the job calls it. Expects the job record whole, so that no byte
  // outside of the block is touched, and the e-mail kind is nowhere.
  void expectBlock(BKQEMail& email, const std::vector<Row>& rows) {
    freeJobRecord(job);
    job = static_cast<typename L::Job*>(calloc(1, 292));
    void* block = &job->stEMail;
    EXPECT_EQ(L::convert(email, block), 1);
    EXPECT_EQ(block, static_cast<void*>(&job->stEMail));
    expectRows("job", job, 292, rows);
  }

  typename L::Job* job = nullptr;
};

TYPED_TEST_SUITE(EMailConversion, Layouts, );

void setAccount(BKQEMail& email) {
  email.setHostName("host");
  email.setUserName("user");
  email.setUserPW("password");
}

TYPED_TEST(EMailConversion, InternetCopiesTheAccount) {
  BKQInternetEMail email;
  setAccount(email);
  this->expectBlock(email, {
                               text(156, "host"),      // pszHostName
                               text(160, "user"),      // pszUserName
                               text(164, "password"),  // pszUserPW
                           });
  expectBlockSize(this->job->stEMail.pszUserPW, 9);
  EXPECT_NE(this->job->stEMail.pszHostName, email.getHostName().data());
}

TYPED_TEST(EMailConversion, MHSCopiesItsAddress) {
  BKQMHSEMail email;
  setAccount(email);
  email.setMHSDir("dir");
  email.setMHSId("id");
  email.setMHSUserName("mhs user");
  this->expectBlock(email, {
                               text(156, "host"),      // pszHostName
                               text(160, "user"),      // pszUserName
                               text(164, "password"),  // pszUserPW
                               text(168, "dir"),       // pszMHSDir
                               text(172, "id"),        // pszMHSId
                               text(176, "mhs user"),  // pszMHSUserName
                           });
  expectBlockSize(this->job->stEMail.pszMHSUserName, 9);
}

TYPED_TEST(EMailConversion, LeavesNullForAnEmptyText) {
  BKQInternetEMail internet;
  this->expectBlock(internet, {});
  internet.setUserName("user");
  this->expectBlock(internet, {text(160, "user")});
  internet.setUserName(nullptr);
  internet.setHostName("host");
  internet.setUserPW("password");
  this->expectBlock(internet, {text(156, "host"), text(164, "password")});

  BKQMHSEMail mhs;
  this->expectBlock(mhs, {});
  mhs.setMHSId("id");
  this->expectBlock(mhs, {text(172, "id")});
  mhs.setMHSId("");
  mhs.setMHSDir("dir");
  mhs.setMHSUserName("mhs user");
  this->expectBlock(mhs, {text(168, "dir"), text(176, "mhs user")});
}

// The MHS step takes the account by the step of its own root, whatever a class in front of it does.
class ForeignEMail : public BKQMHSEMail {
 public:
  int convertToBK2(void*& block) override { return BKQMHSEMail::convertToBK2(block) + 10; }
  int convertToBK2_old(void*& block) override { return BKQMHSEMail::convertToBK2_old(block) + 20; }
};

TYPED_TEST(EMailConversion, ForeignClassMayGoOnFromMHS) {
  ForeignEMail email;
  setAccount(email);
  email.setMHSId("id");
  this->job = static_cast<typename TypeParam::Job*>(calloc(1, 292));
  void* block = &this->job->stEMail;
  BKQEMail& base = email;
  EXPECT_EQ(TypeParam::convert(base, block), TypeParam::kPrevious ? 21 : 11);
  expectRows("job", this->job, 292,
             {text(156, "host"), text(160, "user"), text(164, "password"), text(172, "id")});
}

}  // namespace
}  // namespace bkoq::test
