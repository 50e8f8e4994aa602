// Tapes, their items and their extension as records, in both layouts.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/rows.h"
#include "tests/support/stderr_capture.h"

namespace bkoq::test {
namespace {

constexpr unsigned int kExtensionBit = 0x8000000;

template <class L>
class TapeConversion : public testing::Test {
 protected:
  using Other = OtherLayout<L>;

  void SetUp() override {
    set<L>(0, 0, 0, 0, nullptr);
    // Whatever is taken from the other layout's variables shows.
    set<Other>(0x71, 0x72, 0x73, 0x74, foreignPassword_);
    L::diskName() = "untouched";
  }

  void TearDown() override {
    EXPECT_STREQ(L::diskName().data(), "untouched");
    L::diskName() = "";
    set<L>(0, 0, 0, 0, nullptr);
    set<Other>(0, 0, 0, 0, nullptr);
    freeTapes(record, 1);
  }

  template <class Layout>
  static void set(unsigned int newMethod, unsigned int spanMethod, unsigned int newTimeout,
                  // NOLINTNEXTLINE(readability-non-const-parameter): as the variable is declared
                  unsigned int spanTimeout, char* password) {
    Layout::newTapeMethod() = newMethod;
    Layout::spanTapeMethod() = spanMethod;
    Layout::newTapeTimeout() = newTimeout;
    Layout::spanTapeTimeout() = spanTimeout;
    Layout::tapeSessionPassword() = password;
  }

  // Converts into a zeroed record that the fixture keeps and frees.
  int convert(BKQTape& tape) {
    freeTapes(record, 1);
    record = static_cast<typename L::Tape*>(calloc(1, sizeof(typename L::Tape)));
    void* rec = record;
    const int result = L::convert(tape, rec);
    EXPECT_EQ(rec, static_cast<void*>(record));
    return result;
  }

  void expectTape(const std::string& what, const std::vector<Row>& rows) {
    expectRows(what, record, 72, rows);
  }

  typename L::Tape* record = nullptr;

 private:
  char foreignPassword_[8] = "foreign";
};

TYPED_TEST_SUITE(TapeConversion, Layouts, );

TYPED_TEST(TapeConversion, FillsEveryFieldOfTheRecord) {
  char session[] = "session";
  TestFixture::template set<TypeParam>(0x10001, 0xffff0002, 0x10003, 0x10004, session);
  BKQTape tape("group", "tape");
  tape.setTapeID(0x12345);
  tape.setTapeSeq(255);
  tape.setSessionNumber(0xfedc);
  tape.setQFABlockNumber(0x87654321);
  tape.setSessionPW("own");
  tape.setFileSystem(0xf1);
  tape.setOptions(0x40000003);
  tape.setPath("/path");
  tape.setLocation("shelf");
  // What follows reaches no record.
  tape.setMediaName("media");
  tape.setTapeSerialNumber("barcode");
  tape.setSerialNumber(5);
  tape.setTapeLevel(6);
  tape.setStreamNum(7);
  BKQTapeItem first(0x11223344, 0x5566);
  first.setFileOrDir("//srv/share");
  first.setOptions(0x80000001);
  first.setPhysicalChunkNum(9);
  BKQTapeItem second;
  tape.addTapeItem(first);
  tape.addTapeItem(second);
  BKQVolumeFilter volume(BKQFilter::Exclude, "SYS");
  BKQAttributeFilter attributes(BKQFilter::Include, 0x80000001);
  tape.addFilter(volume);
  tape.addFilter(attributes);

  ASSERT_EQ(this->convert(tape), 1);
  this->expectTape("tape", {
                               text(0, "group"),  // pszDeviceGroup
                               text(4, "tape"),   // pszTapeName
                               // usTapeID and two bytes reserved, or ulTapeID
                               number(8, 4, TypeParam::kPrevious ? 0x12345 : 0x2345),
                               number(12, 2, 255),         // usTapeSeq
                               number(14, 2, 0xfedc),      // usSessionNumber
                               number(16, 4, 0x87654321),  // ulQFABlockNumber
                               text(20, "own"),            // pszSessionPW
                               number(24, 2, 1),           // usNewTapeMethod
                               number(26, 2, 2),           // usSpanTapeMethod
                               number(28, 2, 3),           // usNewTapeTimeout
                               number(30, 2, 4),           // usSpanTapeTimeout
                               number(32, 4, 2),           // ulFilterCount
                               block(36),                  // pFilters
                               number(40, 4, 2),           // ulTapeItemCount
                               block(44),                  // pTapeItems
                               number(48, 2, 0xf1),        // usFileSystem
                               number(52, 4, 0x40000003),  // ulOptions
                               text(56, "/path"),          // pszPath
                               text(60, "shelf"),          // pszLocation
                           });
  const auto* items = reinterpret_cast<const char*>(this->record->pTapeItems);
  expectBlockSize(items, 2 * 32);
  expectRows("item 0", items, 32,
             {
                 number(0, 4, 0x11223344),   // ulChunkNum
                 number(4, 2, 0x5566),       // usChunkOffset
                 text(8, "//srv/share"),     // pszFileOrDir
                 number(12, 4, 0x80000001),  // ulOptions
             });
  expectRows("item 1", items + 32, 32, {});
  const auto* filters = reinterpret_cast<const char*>(this->record->pFilters);
  expectBlockSize(filters, 2 * 32);
  expectRows("filter 0", filters, 32,
             {
                 number(0, 2, 1),   // usFilterType
                 number(2, 2, 1),   // usInclExcl
                 number(4, 4, 1),   // ulFilterCount
                 text(8, "SYS"),    // pszFilter
                 number(12, 2, 4),  // usFilterLen
             });
  expectRows("filter 1", filters + 32, 32,
             {
                 number(0, 2, 5),           // usFilterType
                 number(4, 4, 0x80000001),  // ulAttributes
             });
}

TYPED_TEST(TapeConversion, LeavesNullForWhatIsNotGiven) {
  BKQTape tape;
  ASSERT_EQ(this->convert(tape), 1);
  this->expectTape("empty tape", {});
  // A conversion makes no extension on demand.
  EXPECT_EQ(tape.tapeXtensionExists(), 0);
}

TYPED_TEST(TapeConversion, ItemsWithoutFilters) {
  BKQTape tape;
  BKQTapeItem first;
  BKQTapeItem second;
  tape.addTapeItem(first);
  tape.addTapeItem(second);
  ASSERT_EQ(this->convert(tape), 1);
  this->expectTape("tape", {
                               number(40, 4, 2),  // ulTapeItemCount
                               block(44),         // pTapeItems
                           });
}

// The limit of the public enumeration, the number of items, does not hold here.
TYPED_TEST(TapeConversion, FiltersWithoutItems) {
  BKQTape tape;
  BKQFileFilter first(BKQFilter::Include, "a");
  BKQFileFilter second(BKQFilter::Include, "b");
  BKQFileFilter third(BKQFilter::Include, "c");
  tape.addFilter(first);
  tape.addFilter(second);
  tape.addFilter(third);
  ASSERT_EQ(this->convert(tape), 1);
  this->expectTape("tape", {
                               number(32, 4, 3),  // ulFilterCount
                               block(36),         // pFilters
                           });
  EXPECT_STREQ(this->record->pFilters[0].pszFilter, "a");
  EXPECT_STREQ(this->record->pFilters[2].pszFilter, "c");
}

TYPED_TEST(TapeConversion, TakesTheSessionPasswordForWantOfItsOwn) {
  char session[] = "session";
  char none[] = "";
  BKQTape tape;
  ASSERT_EQ(this->convert(tape), 1);
  EXPECT_EQ(this->record->pszSessionPW, nullptr);

  TypeParam::tapeSessionPassword() = session;
  ASSERT_EQ(this->convert(tape), 1);
  EXPECT_STREQ(this->record->pszSessionPW, "session");
  EXPECT_NE(this->record->pszSessionPW, session);  // a copy

  tape.setSessionPW("own");
  ASSERT_EQ(this->convert(tape), 1);
  EXPECT_STREQ(this->record->pszSessionPW, "own");

  // The variable counts as given when it is not null.
  TypeParam::tapeSessionPassword() = none;
  tape.setSessionPW("");
  ASSERT_EQ(this->convert(tape), 1);
  EXPECT_STREQ(this->record->pszSessionPW, "");
}

TYPED_TEST(TapeConversion, DiskSessionPasswordIsNoneOfATapes) {
  char session[] = "session";
  TypeParam::diskSessionPassword() = session;
  BKQTape tape;
  ASSERT_EQ(this->convert(tape), 1);
  EXPECT_EQ(this->record->pszSessionPW, nullptr);
  TypeParam::diskSessionPassword() = nullptr;
}

TYPED_TEST(TapeConversion, BringsItemPathsIntoServerForm) {
  struct Case {
    const char* name;
    const char* recorded;
  };
  for (const Case& c : {
           Case{"//srv/share", "//srv/share"},
           {"//", "//"},
           {"///x", "///x"},
           {"etc/passwd", "/etc/passwd"},
           {"/etc", "//etc"},
           {"/", "//"},
           {"x", "/x"},
           {"\\\\srv", "/\\\\srv"},
           {"x//", "/x//"},
       }) {
    BKQTape tape;
    BKQTapeItem item;
    item.setFileOrDir(c.name);
    tape.addTapeItem(item);
    ASSERT_EQ(this->convert(tape), 1);
    expectRows(c.name, this->record->pTapeItems, 32, {text(8, c.recorded)});  // pszFileOrDir
    expectBlockSize(this->record->pTapeItems->pszFileOrDir, std::string(c.recorded).size() + 1);
    EXPECT_STREQ(item.getFileOrDir().data(), c.name);
  }
}

TYPED_TEST(TapeConversion, ItemConvertsByItself) {
  BKQTapeItem item(7, 8);
  item.setChunkOffset(0x12345);  // keeps 16 bits
  item.setFileOrDir("etc");
  typename TypeParam::TapeItem itemRecord{};
  void* rec = &itemRecord;
  ASSERT_EQ(TypeParam::convert(item, rec), 1);
  expectRows("item", &itemRecord, 32,
             {
                 number(0, 4, 7),       // ulChunkNum
                 number(4, 2, 0x2345),  // usChunkOffset
                 text(8, "/etc"),       // pszFileOrDir
             });
  free(itemRecord.pszFileOrDir);
}

TYPED_TEST(TapeConversion, LeavesTheCursorsAtTheEnd) {
  BKQTape tape;
  BKQTapeItem item;
  BKQFileFilter filter;
  tape.addTapeItem(item);
  tape.addFilter(filter);
  for (int time = 0; time < 2; ++time) {  // wherever they stood before
    ASSERT_EQ(this->convert(tape), 1);
    EXPECT_EQ(this->record->ulTapeItemCount, 1u);
    EXPECT_EQ(this->record->ulFilterCount, 1u);
    BKQTapeItemCol* items = nullptr;
    EXPECT_EQ(tape.enumTapeItems(items, 0), 0u);
    delete items;
    BKQFilterCol* filters = nullptr;
    EXPECT_EQ(tape.enumFilters(filters, 0), 0u);
    delete filters;
  }
}

// The cursors have 16 bits; the walk goes on past the 65536th element.
TYPED_TEST(TapeConversion, VisitsEachOfManyElementsOnce) {
  if (kSanitized) GTEST_SKIP() << "takes minutes where each realloc() copies";
  constexpr unsigned int kItems = 65537;
  std::vector<BKQTapeItem> items(kItems);
  BKQTape tape;
  for (unsigned int i = 0; i < kItems; ++i) {
    items[i].setChunkNum(i);
    tape.addTapeItem(items[i]);
  }
  ASSERT_EQ(this->convert(tape), 1);
  ASSERT_EQ(this->record->ulTapeItemCount, kItems);
  EXPECT_EQ(this->record->pTapeItems[0].ulChunkNum, 0u);
  EXPECT_EQ(this->record->pTapeItems[65535].ulChunkNum, 65535u);
  EXPECT_EQ(this->record->pTapeItems[65536].ulChunkNum, 65536u);
}

TYPED_TEST(TapeConversion, AsksFiltersThroughTheVirtualTable) {
  BKQTape tape;
  ForeignFilter filter(1);
  tape.addFilter(filter);
  ASSERT_EQ(this->convert(tape), 1);
  expectRows(
      "filter", this->record->pFilters, 32,
      {number(0, 2,
              TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark)});
}

TYPED_TEST(TapeConversion, FailsWithAFilterThatFails) {
  BKQTape tape("group", "");
  BKQTapeItem item;
  tape.addTapeItem(item);
  BKQVolumeFilter before(BKQFilter::Include, "v");
  ForeignFilter failing(0);
  BKQVolumeFilter after(BKQFilter::Include, "w");
  tape.addFilter(before);
  tape.addFilter(failing);
  tape.addFilter(after);

  int result = -1;
  EXPECT_EQ(standardErrorOf([&] { result = this->convert(tape); }), "Failed to convert Filter\n");
  EXPECT_EQ(result, 0);
  // What was filled stays: the items come before the filters.
  this->expectTape("tape", {
                               text(0, "group"),  // pszDeviceGroup
                               number(32, 4, 2),  // ulFilterCount, with the one that failed
                               block(36),         // pFilters
                               number(40, 4, 1),  // ulTapeItemCount
                               block(44),         // pTapeItems
                           });
  EXPECT_STREQ(this->record->pFilters[0].pszFilter, "v");
  expectRows(
      "filter 1", this->record->pFilters + 1, 32,
      {number(0, 2,
              TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark)});
}

// A count and an array that are there already go on growing.
TYPED_TEST(TapeConversion, AppendsToWhatTheRecordHolds) {
  BKQTape tape;
  BKQTapeItem item(5, 6);
  BKQFileFilter filter(BKQFilter::Include, "*");
  tape.addTapeItem(item);
  tape.addFilter(filter);
  ASSERT_EQ(this->convert(tape), 1);
  void* rec = this->record;
  ASSERT_EQ(TypeParam::convert(tape, rec), 1);
  EXPECT_EQ(this->record->ulTapeItemCount, 2u);
  EXPECT_EQ(this->record->ulFilterCount, 2u);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(this->record->pTapeItems[i].ulChunkNum, 5u);
    EXPECT_STREQ(this->record->pFilters[i].pszFilter, "*");
  }
}

TYPED_TEST(TapeConversion, TransfersAClonesElementsTwice) {
  BKQTape tape("group", "tape");
  BKQTapeItem item(5, 6);
  BKQFileFilter filter(BKQFilter::Include, "*");
  tape.addTapeItem(item);
  tape.addFilter(filter);
  BKQTape* copy = tape.clone();
  ASSERT_NE(copy, nullptr);
  ASSERT_EQ(this->convert(*copy), 1);
  ASSERT_EQ(this->record->ulTapeItemCount, 2u);
  ASSERT_EQ(this->record->ulFilterCount, 2u);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(this->record->pTapeItems[i].ulChunkNum, 5u);
    EXPECT_STREQ(this->record->pFilters[i].pszFilter, "*");
  }

  copy->resetTapeItems();
  copy->resetFilters();
  BKQTapeItemCol* items = nullptr;
  BKQFilterCol* filters = nullptr;
  copy->enumTapeItems(items, 0);
  copy->enumFilters(filters, 0);
  delete items->at(1);
  delete filters->at(1);
  delete items;
  delete filters;
  delete copy;
}

TYPED_TEST(TapeConversion, KeepsTheTapesOptions) {
  BKQTapeXtension extension;
  BKQTape tape;
  tape.setTapeXtension(extension);
  ASSERT_EQ(this->convert(tape), 1);
  EXPECT_EQ(tape.getOptions(), kExtensionBit);
}

// The current layout has a record for the extension; the tape's own end time goes nowhere.

using CurrentTape = TapeConversion<CurrentLayout>;

TEST_F(CurrentTape, ExtensionBecomesARecord) {
  BKQTapeXtension extension(-1000);
  extension.setDBuser("dbuser");
  extension.setDBpw("dbpw");
  extension.setOptions(0x80000001);
  BKQTape tape;
  tape.setSessionEndTime(2000);
  tape.setTapeXtension(extension);
  ASSERT_EQ(convert(tape), 1);
  expectTape("tape", {
                         number(52, 4, 0x8000000),  // ulOptions
                         block(68),                 // pTapeX
                     });
  expectBlockSize(record->pTapeX, 64);
  expectRows("extension", record->pTapeX, 64,
             {
                 text(0, "dbuser"),          // pszDBUser
                 text(4, "dbpw"),            // pszDBPW
                 number(8, 4, 0xfffffc18),   // lSessionEndTime, as it was given
                 number(56, 4, 0x80000001),  // ulOptions
             });
}

TEST_F(CurrentTape, ExtensionMadeByItsOptionIsEmpty) {
  BKQTape tape;
  tape.setOptions(kExtensionBit);
  ASSERT_EQ(convert(tape), 1);
  expectTape("tape", {
                         number(52, 4, 0x8000000),  // ulOptions
                         block(68),                 // pTapeX
                     });
  expectRows("extension", record->pTapeX, 64, {});
  delete tape.getTapeXtension();
}

TEST_F(CurrentTape, OptionBitWithoutExtensionGivesNoRecord) {
  BKQTape tape;
  tape.setOptions(0x8000001);  // makes no extension
  ASSERT_EQ(convert(tape), 1);
  expectTape("tape", {number(52, 4, 0x8000001)});  // ulOptions
}

TEST_F(CurrentTape, ExtensionIsTransferredWhateverTheOptions) {
  BKQTapeXtension extension;
  BKQTape tape;
  tape.setTapeXtension(extension);
  tape.setOptions(0);  // detaches nothing
  ASSERT_EQ(convert(tape), 1);
  expectTape("tape", {block(68)});  // pTapeX
}

TEST_F(CurrentTape, OwnSessionEndTimeIsNotTransferred) {
  BKQTape tape;
  tape.setSessionEndTime(1000);
  ASSERT_EQ(convert(tape), 1);
  expectTape("tape", {});
}

TEST(TapeExtension, ConvertsByItself) {
  BKQTapeXtension extension(0x7fffffff);
  extension.setDBpw("dbpw");
  BKDTAPEX extensionRecord{};
  void* rec = &extensionRecord;
  ASSERT_EQ(extension.convertToBK2(rec), 1);
  expectRows("extension", &extensionRecord, 64,
             {
                 text(4, "dbpw"),           // pszDBPW
                 number(8, 4, 0x7fffffff),  // lSessionEndTime
             });
  free(extensionRecord.pszDBPW);
}

}  // namespace
}  // namespace bkoq::test
