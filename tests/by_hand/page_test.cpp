// That a page fails when it should: a check that passes everything would prove nothing.

#include "tests/by_hand/page.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

#include <string>

namespace bkoq::test {
namespace {

struct Record {
  unsigned char bytes[4];
  const char* text;
  const char* none;
};

void expectFailure(const char* page, const char* why) {
  char* text = static_cast<char*>(malloc(3));
  memcpy(text, "ab", 3);
  const Record record = {{1, 2, 3, 0xff}, text, nullptr};
  testing::TestPartResultArray results;
  {
    testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
    expectPage(&record, sizeof record, page);
  }
  free(text);
  if (why == nullptr) {
    EXPECT_EQ(results.size(), 0) << page;
    return;
  }
  ASSERT_EQ(results.size(), 1) << page;
  EXPECT_NE(std::string(results.GetTestPartResult(0).message()).find(why), std::string::npos)
      << results.GetTestPartResult(0).message();
}

TEST(Page, AgreesWithTheRecord) {
  expectFailure(R"(
    0  01 02      | a reason
    2  03 ff      | another,
                  | on two lines
    4  -> "ab" 00
    8  null
  )",
                nullptr);
  expectFailure("0 01 02 03 ff\n4 -> block\n8 00*4", nullptr);
}

TEST(Page, TellsWhatDiffers) {
  expectFailure("0 01 02 03 fe\n4 -> block\n8 null", "0 01 02 03 fe");
  expectFailure("0 01 02 03 ff\n4 -> \"ac\" 00\n8 null", "\"ac\"");
  expectFailure("0 01 02 03 ff\n4 null\n8 null", "4 null");
  expectFailure("0 01 02 03 ff\n4 -> block\n8 -> block", "8 -> block");
}

TEST(Page, MustSayEveryByte) {
  expectFailure("0 01 02 03\n4 -> block\n8 null", "the offset of this line");
  expectFailure("0 01 02 03 ff\n4 -> block", "the page ends before the record does");
  expectFailure("0 01 02 03 ff\n4 -> block\n8 null\n12 00", "12 00");
  expectFailure("0 01 02 03 f\n4 -> block\n8 null", "not a line of a page");
  expectFailure("0\n4 -> block\n8 null", "not a line of a page");
}

}  // namespace
}  // namespace bkoq::test
