// A client that hands a null pointer to a conversion gets 0 and a line, and the model and the state
// variables stay as they were.

#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/catalog/types.h"
#include "tests/support/stderr_capture.h"

namespace bkoq::test {
namespace {

template <class Layout>
class NoRecord : public testing::Test {
 protected:
  template <class Object, class... Arguments>
  void expectLines(const std::string& lines, Object&& object, Arguments&&... arguments) {
    void* record = nullptr;
    EXPECT_EQ(standardErrorOf([&] { EXPECT_EQ(Layout::convert(object, record, arguments...), 0); }),
              "No record to convert into\n" + lines);
    EXPECT_EQ(record, nullptr);
  }
};
TYPED_TEST_SUITE(NoRecord, Layouts, );

TYPED_TEST(NoRecord, Nodes) {
  RWSlistCollectables names;
  this->expectLines("Failed to convert Base BKQNode\n", BKQMacNode("n"));
  this->expectLines("Failed to convert Base BKQNode\n", BKQMacNode("n"), "/override");
  this->expectLines("Failed to convert Base BKQNode\n", BKQMacNode("n"), names);
  this->expectLines("Failed to convert Base BKQNode\n", BKQTapeNode("n"));
  this->expectLines("Failed to convert Base BKQNode\n", BKQTapeNode("n"), "tape",
                    static_cast<unsigned short>(1));
  this->expectLines("Failed to convert Base BKQNode\n", BKQRestoreNode("n"));
  this->expectLines(
      "Failed to convert Base BKQNode\n"
      "Failed to convert Base BKQRestoreNode\n",
      BKQDBRestoreNode("n"));
  this->expectLines("Failed to convert Base BKQNode\n", BKQMacNode("n"), names, "/override");
  TypeParam::unixOptions() = 77;
  BKQUnixNode unix("n");
  unix.setUnixOptions(1);
  const std::string unixLines =
      "Failed to convert Base BKQNode\n"
      "Failed to convert Base BKQDiskNode\n";
  this->expectLines(unixLines, unix);
  this->expectLines(unixLines, unix, names, 1, "text");
  EXPECT_EQ(TypeParam::unixOptions(), 77u);
  TypeParam::unixOptions() = 0;
}

TYPED_TEST(NoRecord, Media) {
  TypeParam::diskName() = "before";
  BKQDisk disk;
  disk.setDiskName("now");
  this->expectLines("", disk, "");
  this->expectLines("", disk, "/override");
  EXPECT_STREQ(TypeParam::diskName(), "before");
  this->expectLines("", BKQDiskItem("/a"));
  this->expectLines("", BKQDiskItem("/a"), "/override");
  this->expectLines("", BKQTape("group", "name"));
  this->expectLines("", BKQTapeItem(1, static_cast<unsigned short>(2)));
}

TEST(NoRecordOfTheCurrentLayout, TapeExtension) {
  BKQTapeXtension extension;
  void* record = nullptr;
  EXPECT_EQ(standardErrorOf([&] { EXPECT_EQ(extension.convertToBK2(record), 0); }),
            "No record to convert into\n");
}

TYPED_TEST(NoRecord, Filters) {
  const RWCollectableTime time;
  const BKQTimeFilter::BKQTimeAttrType attribute{};
  const std::string base = "Failed to convert Time Filter\n";
  this->expectLines("Failed to convert Directory Filter\n", BKQDirFilter(BKQFilter::Include, "*"));
  this->expectLines("Failed to convert File Filter\n", BKQFileFilter(BKQFilter::Include, "*"));
  this->expectLines("Failed to convert Volume Filter\n", BKQVolumeFilter(BKQFilter::Include, "*"));
  this->expectLines("Failed to convert Attribute Filter\n",
                    BKQAttributeFilter(BKQFilter::Include, 1));
  this->expectLines(base + "Failed to convert Before Time Filter\n",
                    BKQBeforeTimeFilter(attribute, time));
  this->expectLines(base + "Failed to convert After Time Filter\n",
                    BKQAfterTimeFilter(attribute, time));
  this->expectLines(base + "Failed to convert Between Time Filter\n",
                    BKQBetweenTimeFilter(attribute, time, time));
  this->expectLines(base + "Failed to convert Within Time Filter\n",
                    BKQWithinTimeFilter(attribute));
}

TYPED_TEST(NoRecord, Notifications) {
  this->expectLines("", BKQFax());
  this->expectLines("", BKQPrintQueue());
  this->expectLines("", BKQInternetEMail());
  this->expectLines("Failed to convert Email\n", BKQMHSEMail());
  this->expectLines("", BKQOpenFileInfo());
}

TYPED_TEST(NoRecord, Schedules) {
  void* rotation = nullptr;
  this->expectLines("", BKQRegularSchedule(), rotation);
  this->expectLines("Failed to convert Custom Schedule\n", BKQCustomSchedule(), rotation);
  this->expectLines("Failed to convert Rotation Schedule\n", BKQRotationSchedule(), rotation);
  this->expectLines(
      "Failed to convert Rotation Schedule\n"
      "Failed to convert GFS Rotation Schedule\n",
      BKQCruiseSchedule(), rotation);

  // Only the block of the rotation is missing.
  BKSCHEDINFO block = {};
  void* record = &block;
  BKQCruiseSchedule cruise;
  EXPECT_EQ(standardErrorOf([&] { EXPECT_EQ(TypeParam::convert(cruise, record, rotation), 0); }),
            "No record to convert into\nFailed to convert GFS Rotation Schedule\n");
}

}  // namespace
}  // namespace bkoq::test
