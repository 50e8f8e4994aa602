#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"
#include "tests/support/heap.h"

namespace bkoq::test {
namespace {

TEST(DiskItem, AddFileClearsTheOptions) {
  BKQDiskItem item("/etc");
  EXPECT_STREQ(item.getPath(), "/etc");
  EXPECT_EQ(item.getOptions(), 1u);
  ASSERT_NE(item.addFile("passwd"), nullptr);
  EXPECT_EQ(item.getOptions(), 0u);
  item.setOptions(5);
  EXPECT_EQ(item.getOptions(), 5u);
  EXPECT_EQ(item.fileEntries(), 1u);
  ASSERT_NE(item.addFile(nullptr), nullptr);  // an empty name
  EXPECT_EQ(item.getOptions(), 0u);
  BKQStringCol* names = nullptr;
  EXPECT_EQ(item.enumFiles(names, 0), 2u);
  EXPECT_STREQ(*static_cast<RWCollectableString*>(names->at(1)), "");
  names->clearAndDestroy();
  delete names;
  EXPECT_STREQ(BKQDiskItem(nullptr).getPath(), "");
}

TEST(DiskItem, EnumeratesCopiesOfItsNames) {
  BKQDiskItem item;
  for (const char* name : {"a", "b", "c"}) item.addFile(name);
  BKQStringCol* first = nullptr;
  EXPECT_EQ(item.enumFiles(first, 2), 2u);
  BKQStringCol* rest = nullptr;
  EXPECT_EQ(item.enumFiles(rest, 0), 1u);
  EXPECT_STREQ(*static_cast<RWCollectableString*>(rest->at(0)), "c");
  item.resetFiles();
  BKQStringCol* again = nullptr;
  EXPECT_EQ(item.enumFiles(again, 1), 1u);
  EXPECT_NE(first->at(0), again->at(0));
  for (BKQStringCol* names : {first, rest, again}) {
    names->clearAndDestroy();
    delete names;
  }
}

TEST(DiskItem, LosesNoNameForWhichTheCollectionHasNoPlace) {
  if (!kSeesAllocations) GTEST_SKIP() << "allocations are not seen with this heap";
  BKQDiskItem item;
  item.addFile("a");
  BKQStringCol* names = nullptr;
  unsigned int placed = 99;
  int blocks = 0;
  {
    const HeapWatch heap(3);  // the collection, the copy, its place
    placed = item.enumFiles(names, 0);
    blocks = heap.blocks();
  }
  EXPECT_EQ(placed, 0u);
  ASSERT_NE(names, nullptr);
  EXPECT_TRUE(names->isEmpty());
  EXPECT_EQ(blocks, 1) << "there is more than the collection";
  delete names;
  EXPECT_EQ(item.enumFiles(names, 0), 1u) << "the name comes again";
  names->clearAndDestroy();
  delete names;
}

TEST(DiskItem, CopyHoldsEachNameTwice) {
  BKQDiskItem item("/etc");
  item.addFile("a");
  item.addFile("b");
  item.setOptions(3);
  item.setObjectProperty(4);
  BKQStringCol* some = nullptr;
  item.enumFiles(some, 1);
  some->clearAndDestroy();
  delete some;
  std::unique_ptr<BKQDiskItem> clone(item.clone());
  EXPECT_STREQ(clone->getPath(), "/etc");
  EXPECT_EQ(clone->getOptions(), 3u);
  EXPECT_EQ(clone->getObjectProperty(), 4u);
  ASSERT_EQ(clone->fileEntries(), 4u);
  clone->mycopy(&item);
  clone->mycopy(clone.get());
  ASSERT_EQ(clone->fileEntries(), 4u);
  EXPECT_EQ(item.fileEntries(), 2u);
  // The cursor is copied: it is after the first name.
  BKQStringCol* names = nullptr;
  EXPECT_EQ(clone->enumFiles(names, 0), 3u);
  names->clearAndDestroy();
  delete names;
  clone->resetFiles();
  clone->enumFiles(names, 0);
  const char* expected[] = {"a", "b", "a", "b"};
  for (unsigned int i = 0; i < 4; ++i) {
    EXPECT_STREQ(*static_cast<RWCollectableString*>(names->at(i)), expected[i]);
  }
  names->clearAndDestroy();
  delete names;
}

TEST(Disk, TypeByConstructor) {
  EXPECT_EQ(BKQDisk().getDiskType(), 0u);
  EXPECT_EQ(BKQDisk(static_cast<BKQDisk::BKQDiskType>(23)).getDiskType(), 23u);
}

TEST(Disk, EnumeratesByCursor) {
  BKQDisk disk;
  BKQDiskItem items[3];
  for (BKQDiskItem& item : items) EXPECT_EQ(disk.addDiskItem(item), &item);
  BKQDiskItemCol* out = nullptr;
  EXPECT_EQ(disk.enumDiskItems(out, 0), 3u);
  delete out;
  EXPECT_EQ(disk.enumDiskItems(out, 0), 0u);
  ASSERT_NE(out, nullptr);
  EXPECT_TRUE(out->isEmpty());
  delete out;
  disk.resetDiskItems();
  EXPECT_EQ(disk.enumDiskItems(out, 2), 2u);
  EXPECT_EQ(out->at(1), &items[1]);
  delete out;

  BKQDirFilter filters[3];
  for (BKQDirFilter& filter : filters) disk.addFilter(filter);
  BKQFilterCol* some = nullptr;
  EXPECT_EQ(disk.enumFilters(some, 2), 2u);
  delete some;
  EXPECT_EQ(disk.enumFilters(some, 0), 1u);
  EXPECT_EQ(some->at(0), &filters[2]);
  delete some;
}

TEST(Disk, TakesEveryCloneBeforeItDeletesAnything) {
  std::string log;
  Logged<BKQDiskItem> item(log);
  Logged<BKQDirFilter> filter(log);
  BKQDisk disk;
  disk.addDiskItem(item);
  disk.addFilter(filter);
  BKQDisk target;
  target.addDiskItem(*new Logged<BKQDiskItem>(log));
  target.addFilter(*new Logged<BKQDirFilter>(log));
  target.mycopy(&disk);
  EXPECT_EQ(log, "ccdd");
  BKQDiskItemCol* items = nullptr;
  target.enumDiskItems(items, 0);
  delete items->at(1);
  delete items;
  BKQFilterCol* filters = nullptr;
  target.enumFilters(filters, 0);
  delete filters->at(1);
  delete filters;
}

TEST(Disk, WithoutMemoryThereIsNothingNew) {
  BKQDisk disk;
  BKQDiskItem item;
  const FailingNew noMemory(1);
  EXPECT_EQ(disk.clone(), nullptr);
  EXPECT_EQ(item.clone(), nullptr);
  EXPECT_EQ(item.addFile("name"), nullptr);
  EXPECT_EQ(item.fileEntries(), 0u);
  BKQStringCol unchanged;
  BKQStringCol* names = &unchanged;
  EXPECT_EQ(item.enumFiles(names, 0), 0u);
  EXPECT_EQ(names, nullptr);
}

TEST(Disk, CopyHoldsItemsAndFiltersTwice) {
  int destroyed = 0;
  Counted<BKQDiskItem> item(destroyed, "/etc");
  Counted<BKQDirFilter> filter(destroyed);
  BKQDisk disk;
  disk.setDiskName("/");
  disk.addDiskItem(item);
  disk.addFilter(filter);
  BKQDiskItemCol* out = nullptr;
  disk.enumDiskItems(out, 1);
  delete out;

  BKQDisk target;
  target.addDiskItem(*new Counted<BKQDiskItem>(destroyed));
  target.addFilter(*new Counted<BKQDirFilter>(destroyed));
  target.mycopy(&disk);
  EXPECT_EQ(destroyed, 2);
  target.mycopy(&disk);
  target.mycopy(&target);
  target.mycopy(nullptr);
  EXPECT_EQ(destroyed, 2);
  EXPECT_STREQ(target.getDiskName(), "/");
  EXPECT_EQ(target.diskItemEntries(), 2u);
  EXPECT_EQ(target.filterEntries(), 2u);
  // The cursor is copied: it is after the first item.
  EXPECT_EQ(target.enumDiskItems(out, 0), 1u);
  auto* clonedItem = static_cast<BKQDiskItem*>(out->at(0));
  EXPECT_NE(clonedItem, &item);
  EXPECT_STREQ(clonedItem->getPath(), "/etc");
  delete clonedItem;
  delete out;
  BKQFilterCol* filters = nullptr;
  target.enumFilters(filters, 0);
  EXPECT_EQ(filters->at(0), &filter);
  delete filters->at(1);
  delete filters;
}

}  // namespace
}  // namespace bkoq::test
