// A fax notification as its block of the job record, in both layouts.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/free_records.h"
#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

template <class L>
class FaxConversion : public testing::Test {
 protected:
  ~FaxConversion() override { freeJobRecord(job); }

  // Expects the job record whole, so that no byte outside of the block is touched.
  void expectBlock(BKQFax& fax, const std::vector<Row>& rows) {
    freeJobRecord(job);
    job = static_cast<typename L::Job*>(calloc(1, 292));
    void* block = &job->stFax;
    EXPECT_EQ(L::convert(fax, block), 1);
    EXPECT_EQ(block, static_cast<void*>(&job->stFax));
    expectRows("job", job, 292, rows);
  }

  typename L::Job* job = nullptr;
};

TYPED_TEST_SUITE(FaxConversion, Layouts, );

TYPED_TEST(FaxConversion, CopiesEveryText) {
  BKQFax fax;
  fax.setHostName("host");
  fax.setUserName("user");
  fax.setUserPW("password");
  fax.setFaxNumber("+1 555 0100");
  fax.setCoverPageFile("cover.txt");
  fax.setReceiverName("receiver");
  std::vector<Row> rows{
      text(132, "host"),         // pszHostName
      text(136, "user"),         // pszUserName
      text(140, "password"),     // pszUserPW
      text(144, "+1 555 0100"),  // pszFaxNumber
      text(148, "cover.txt"),    // pszCoverPageFile
  };
  // pszReceiverName stays null in the current layout.
  if (TypeParam::kPrevious) rows.push_back(text(152, "receiver"));
  this->expectBlock(fax, rows);
  expectBlockSize(this->job->stFax.pszFaxNumber, 12);
  // Copies, not the object's own texts.
  EXPECT_NE(this->job->stFax.pszHostName, fax.getHostName().data());
}

TYPED_TEST(FaxConversion, LeavesNullForAnEmptyText) {
  BKQFax fax;
  this->expectBlock(fax, {});
  fax.setUserName("user");
  fax.setCoverPageFile("cover");
  this->expectBlock(fax, {text(136, "user"), text(148, "cover")});
  fax.setUserName(nullptr);
  fax.setCoverPageFile("");
  fax.setHostName("host");
  fax.setUserPW("password");
  fax.setFaxNumber("1");
  this->expectBlock(fax, {text(132, "host"), text(140, "password"), text(144, "1")});
}

TYPED_TEST(FaxConversion, ReceiverAlone) {
  BKQFax fax;
  fax.setReceiverName("receiver");
  this->expectBlock(
      fax, TypeParam::kPrevious ? std::vector<Row>{text(152, "receiver")} : std::vector<Row>{});
}

}  // namespace
}  // namespace bkoq::test
