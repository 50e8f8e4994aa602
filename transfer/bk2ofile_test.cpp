// Open-file options as their area of the job record, in both layouts.

#include <gtest/gtest.h>

#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

template <class L>
class OpenFileConversion : public testing::Test {
 protected:
  // Expects the job record whole, so that the bytes after the area stay zero.
  void expectArea(BKQOpenFileInfo& info, const std::vector<Row>& rows) {
    typename L::Job job{};
    void* rec = &job.stOpenFile;
    EXPECT_EQ(L::convert(info, rec), 1);
    EXPECT_EQ(rec, static_cast<void*>(&job.stOpenFile));
    expectRows("job", &job, 292, rows);
  }
};

TYPED_TEST_SUITE(OpenFileConversion, Layouts, );

TYPED_TEST(OpenFileConversion, OfDefaults) {
  BKQOpenFileInfo info;
  this->expectArea(info, {
                             number(104, 4, 1),  // ulFActions
                             number(108, 4, 0),  // ulFMethods
                             number(112, 2, 5),  // usRetryCount
                             number(114, 2, 5),  // usRetryInterval
                         });
}

TYPED_TEST(OpenFileConversion, FillsEveryField) {
  BKQOpenFileInfo info;
  info.setFActions(0x80000001);
  info.setFMethods(0xfedcba98);
  info.setRetryCount(0xffff);
  info.setRetryInterval(0x1234);
  this->expectArea(info, {
                             number(104, 4, 0x80000001),  // ulFActions
                             number(108, 4, 0xfedcba98),  // ulFMethods
                             number(112, 2, 0xffff),      // usRetryCount
                             number(114, 2, 0x1234),      // usRetryInterval
                         });
}

TYPED_TEST(OpenFileConversion, WritesZerosToo) {
  BKQOpenFileInfo info;
  info.setFActions(0);
  info.setRetryCount(0);
  info.setRetryInterval(0);
  BKOFINFO record{9, 9, 9, 9};
  void* rec = &record;
  ASSERT_EQ(TypeParam::convert(info, rec), 1);
  expectRows("area", &record, 12, {});

  info.setRetryInterval(5);
  this->expectArea(info, {number(114, 2, 5)});
}

TYPED_TEST(OpenFileConversion, CloneKeepsItsOwnValues) {
  BKQOpenFileInfo info;
  info.setFActions(2);
  info.setFMethods(3);
  info.setRetryCount(4);
  info.setRetryInterval(6);
  BKQOpenFileInfo* copy = info.clone();
  ASSERT_NE(copy, nullptr);
  info.setFActions(0xff);
  info.setFMethods(0xff);
  info.setRetryCount(0xff);
  info.setRetryInterval(0xff);
  this->expectArea(*copy, {
                              number(104, 4, 2),  // ulFActions
                              number(108, 4, 3),  // ulFMethods
                              number(112, 2, 4),  // usRetryCount
                              number(114, 2, 6),  // usRetryInterval
                          });
  copy->BKQOpenFileInfo::~BKQOpenFileInfo();
  ::operator delete(copy);
}

}  // namespace
}  // namespace bkoq::test
