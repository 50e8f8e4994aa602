#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"

namespace bkoq::test {
namespace {

TEST(TapeItem, Attributes) {
  BKQTapeItem object;
  EXPECT_EQ(object.getChunkOffset(), 0);
  object.setChunkOffset(0x12345);
  EXPECT_EQ(object.getChunkOffset(), 0x2345);
  object.setFileOrDir("etc/passwd");
  EXPECT_STREQ(object.getFileOrDir(), "etc/passwd");
}

TEST(TapeItem, CloneCopiesAll) {
  BKQTapeItem item(7, 512);
  item.setOptions(1);
  item.setPhysicalChunkNum(9);
  item.setFileOrDir("x");
  std::unique_ptr<BKQTapeItem> clone(item.clone());
  EXPECT_EQ(clone->getChunkNum(), 7u);
  EXPECT_EQ(clone->getChunkOffset(), 512);
  EXPECT_EQ(clone->getOptions(), 1u);
  EXPECT_EQ(clone->getPhysicalChunkNum(), 9u);
  EXPECT_STREQ(clone->getFileOrDir(), "x");
  clone->mycopy(clone.get());
  clone->mycopy(nullptr);
  EXPECT_STREQ(clone->getFileOrDir(), "x");
}

TEST(Tape, Attributes) {
  BKQTape object;
  object.setOptions(0x40000001);
  EXPECT_EQ(object.getOptions(), 0x40000001u);
  inACopy(object, [](BKQTape& copy) { EXPECT_EQ(copy.getOptions(), 0x40000001u); });
}

TEST(Tape, ConstructorTakesGroupThenName) {
  BKQTape tape("GROUP", "TAPE");
  EXPECT_STREQ(tape.getDeviceGroup(), "GROUP");
  EXPECT_STREQ(tape.getTapeName(), "TAPE");
  EXPECT_STREQ(BKQTape(nullptr, nullptr).getTapeName(), "");
  EXPECT_STREQ(BKQTape(nullptr, nullptr).getDeviceGroup(), "");
  EXPECT_EQ(tape.getOptions(), 0u);
}

TEST(Tape, ExactlyTheExtensionMarkCreatesOne) {
  BKQTape tape;
  tape.setOptions(0x8000001);
  EXPECT_EQ(tape.tapeXtensionExists(), 0);
  tape.setOptions(0x8000000);
  EXPECT_EQ(tape.tapeXtensionExists(), 1);
  std::unique_ptr<BKQTapeXtension> created(tape.getTapeXtension());
  tape.setOptions(0x8000000);
  EXPECT_EQ(tape.getTapeXtension(), created.get());
  tape.setOptions(0);
  EXPECT_EQ(tape.tapeXtensionExists(), 1);
}

TEST(Tape, AttachingAnExtensionMarksTheOptions) {
  const BKQTapeXtension extension(1000);
  EXPECT_EQ(extension.getSessionEndTime(), 1000);
  BKQTape tape;
  tape.setOptions(1);
  tape.setTapeXtension(extension);
  EXPECT_EQ(tape.getOptions(), 0x8000001u);
  EXPECT_EQ(tape.getTapeXtension(), &extension);
}

TEST(Tape, GetCreatesAnExtensionOnce) {
  BKQTape tape;
  std::unique_ptr<BKQTapeXtension> extension(tape.getTapeXtension());
  ASSERT_NE(extension, nullptr);
  EXPECT_EQ(tape.getTapeXtension(), extension.get());
  EXPECT_EQ(tape.getOptions(), 0u);
}

TEST(Tape, AllFiltersMeansAsManyAsItems) {
  BKQTape tape;
  BKQTapeItem item;
  BKQDirFilter filters[3];
  tape.addTapeItem(item);
  for (BKQDirFilter& filter : filters) tape.addFilter(filter);
  BKQFilterCol* out = nullptr;
  EXPECT_EQ(tape.enumFilters(out, 0), 1u);
  delete out;
  EXPECT_EQ(tape.enumFilters(out, 3), 2u);
  EXPECT_EQ(out->at(1), &filters[2]);
  delete out;
  tape.resetFilters();
  EXPECT_EQ(tape.enumFilters(out, 2), 2u);
  delete out;
}

TEST(Tape, TakesEveryCloneBeforeItDeletesAnything) {
  std::string log;
  Logged<BKQTapeItem> item(log);
  Logged<BKQDirFilter> filter(log);
  BKQTape tape;
  tape.addTapeItem(item);
  tape.addFilter(filter);
  BKQTape target;
  target.addTapeItem(*new Logged<BKQTapeItem>(log));
  target.addFilter(*new Logged<BKQDirFilter>(log));
  target.mycopy(&tape);
  EXPECT_EQ(log, "ccdd");
  BKQTapeItemCol* items = nullptr;
  target.enumTapeItems(items, 0);
  delete items->at(1);
  delete items;
  BKQFilterCol* filters = nullptr;
  target.enumFilters(filters, 2);
  delete filters->at(1);
  delete filters;
}

TEST(Tape, AllFiltersOfATapeWithoutItemsAreNone) {
  BKQTape tape;
  BKQDirFilter filter;
  tape.addFilter(filter);
  BKQFilterCol* out = nullptr;
  EXPECT_EQ(tape.enumFilters(out, 0), 0u);
  ASSERT_NE(out, nullptr);
  delete out;
  EXPECT_EQ(tape.enumFilters(out, 1), 1u);
  delete out;
}

TEST(Tape, WithoutMemoryThereIsNothingNew) {
  BKQTape tape;
  BKQTapeItem item;
  const FailingNew noMemory(1);
  EXPECT_EQ(tape.clone(), nullptr);
  EXPECT_EQ(item.clone(), nullptr);
  EXPECT_EQ(tape.getTapeXtension(), nullptr);
  tape.setOptions(0x8000000);
  EXPECT_EQ(tape.tapeXtensionExists(), 0);
  EXPECT_EQ(tape.getOptions(), 0x8000000u);
}

TEST(Tape, IsDestroyedWithoutItsExtension) {
  int destroyed = 0;
  Counted<BKQTapeXtension> extension(destroyed, 5);
  {
    BKQTape tape;
    tape.setTapeXtension(extension);
  }
  EXPECT_EQ(destroyed, 0);
}

TEST(Tape, CopyHoldsPartsTwiceAndSharesTheExtension) {
  int destroyed = 0;
  Counted<BKQTapeItem> item(destroyed);
  Counted<BKQDirFilter> filter(destroyed);
  BKQTapeXtension extension;
  BKQTape tape("G", "T");
  tape.addTapeItem(item);
  tape.addFilter(filter);
  tape.setTapeXtension(extension);
  tape.setTapeLevel(3);
  tape.setTapeSeq(4);
  std::unique_ptr<BKQTape> clone(tape.clone());
  clone->mycopy(&tape);
  clone->mycopy(clone.get());
  EXPECT_EQ(destroyed, 0);
  EXPECT_STREQ(clone->getDeviceGroup(), "G");
  EXPECT_STREQ(clone->getTapeName(), "T");
  EXPECT_EQ(clone->getTapeLevel(), 3);
  EXPECT_EQ(clone->getTapeSeq(), 4);
  EXPECT_EQ(clone->getOptions(), 0x8000000u);
  EXPECT_EQ(clone->getTapeXtension(), &extension);
  EXPECT_EQ(clone->tapeItemEntries(), 2u);
  EXPECT_EQ(clone->filterEntries(), 2u);
  BKQTapeItemCol* items = nullptr;
  clone->enumTapeItems(items, 0);
  EXPECT_EQ(items->at(0), &item);
  delete items->at(1);
  delete items;
  BKQFilterCol* filters = nullptr;
  clone->enumFilters(filters, 2);
  EXPECT_EQ(filters->at(0), &filter);
  delete filters->at(1);
  delete filters;
}

}  // namespace
}  // namespace bkoq::test
