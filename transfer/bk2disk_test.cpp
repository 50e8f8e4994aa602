// Disks and disk items as records, in both layouts, with state variables as a client sets them.

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

constexpr unsigned int kUnixNode = 3;
constexpr unsigned int kWinNTNode = 9;

BKQDisk::BKQDiskType diskType(unsigned int code) { return static_cast<BKQDisk::BKQDiskType>(code); }

BKQFilter::BKQInclExclType inclExcl(unsigned int code) {
  return static_cast<BKQFilter::BKQInclExclType>(code);
}

// An item that takes its names with it.
class Item : public BKQDiskItem {
 public:
  explicit Item(const char* path, const std::vector<const char*>& names = {}) : BKQDiskItem(path) {
    for (const char* name : names) addFile(name);
  }
  ~Item() override {
    BKQDiskItem empty;
    mycopy(&empty);
  }
};

template <class L>
class DiskConversion : public testing::Test {
 protected:
  using Other = OtherLayout<L>;

  void SetUp() override {
    set<L>(0, 0, 0, 0, nullptr, "");
    // Whatever is taken from or stored in the other layout's variables shows.
    set<Other>(kUnixNode, 0x80, 1, 1, foreignPassword_, "foreign");
  }

  void TearDown() override {
    EXPECT_STREQ(Other::diskName().data(), "foreign");
    EXPECT_EQ(Other::currentNodeType(), kUnixNode);
    EXPECT_EQ(Other::unixOptions(), 0x80u);
    EXPECT_EQ(Other::diskSessionPassword(), foreignPassword_);
    set<L>(0, 0, 0, 0, nullptr, "");
    set<Other>(0, 0, 0, 0, nullptr, "");
    clear();
  }

  template <class Layout>
  static void set(unsigned int nodeType, unsigned int unixOptions, unsigned int encryption,
                  // NOLINTNEXTLINE(readability-non-const-parameter): as the variable is declared
                  unsigned int compression, char* password, const char* diskName) {
    Layout::currentNodeType() = nodeType;
    Layout::unixOptions() = unixOptions;
    Layout::diskEncryption() = encryption;
    Layout::diskCompression() = compression;
    Layout::diskSessionPassword() = password;
    Layout::diskName() = diskName;
  }

  // Converts into a zeroed record that the fixture keeps and frees.
  int convert(BKQDisk& disk, const char* overridePath = "") {
    clear();
    void* rec = &record;
    const int result = L::convert(disk, rec, overridePath);
    EXPECT_EQ(rec, static_cast<void*>(&record));
    return result;
  }

  int convertItem(BKQDiskItem& item) {
    newItemRecord();
    void* rec = itemRecord;
    return L::convert(item, rec);
  }

  int convertItem(BKQDiskItem& item, const char* overridePath) {
    newItemRecord();
    void* rec = itemRecord;
    return L::convert(item, rec, overridePath);
  }

  void expectDisk(const std::string& what, const std::vector<Row>& rows) {
    expectRows(what, &record, 52, rows);
  }
  void expectItem(const std::string& what, const std::vector<Row>& rows) {
    expectRows(what, itemRecord, 32, rows);
  }

  typename L::Disk record{};
  typename L::DiskItem* itemRecord = nullptr;

 private:
  void clear() {
    freeDisk(record);
    record = {};
  }
  void newItemRecord() {
    clear();
    itemRecord = static_cast<typename L::DiskItem*>(calloc(1, sizeof(typename L::DiskItem)));
    record.pDiskItems = itemRecord;
    record.ulDiskItemCount = 1;
  }

  char foreignPassword_[8] = "foreign";
};

TYPED_TEST_SUITE(DiskConversion, Layouts, );

TYPED_TEST(DiskConversion, FillsEveryFieldOfTheRecord) {
  BKQDisk disk(diskType(0x12345));
  disk.setDiskName("/usr");
  disk.setOptions(0x80000001);
  disk.setPassword("diskpw");
  disk.setUser("backup");
  disk.setDiskPW2("second");
  disk.setEncryptionKey("key");
  // What follows reaches no record.
  disk.setPriority(7);
  disk.setCompareFirstMB(8);
  disk.setBeforeDisk("before");
  disk.setAfterDisk("after");
  disk.setBeforeDiskWait(9);
  disk.setDBProperty(10);
  Item etc("/etc");
  Item var("/var", {"a", "bc"});
  disk.addDiskItem(etc);
  disk.addDiskItem(var);
  BKQDirFilter directory(BKQFilter::Exclude, "/tmp");
  BKQAttributeFilter attributes(BKQFilter::Include, 0x20);
  disk.addFilter(directory);
  disk.addFilter(attributes);

  ASSERT_EQ(this->convert(disk), 1);
  this->expectDisk("disk", {
                               text(0, "/usr"),                // pszDiskName
                               text(4, "diskpw"),              // pszPassword
                               number(8, 4, 2),                // ulFilterCount
                               block(12),                      // pFilters
                               number(16, 4, 2),               // ulDiskItemCount
                               block(20),                      // pDiskItems
                               number(24, 2, 0x2345),          // usDiskType
                               number(28, 4, 0x80000001),      // ulOptions
                               bytes(36, "backup\0second\0"),  // pszDiskPW2
                               text(44, "key"),                // pszEncryptionKey
                           });
  const auto* items = reinterpret_cast<const char*>(this->record.pDiskItems);
  expectBlockSize(items, 2 * 32);
  expectRows("item 0", items, 32,
             {
                 text(0, "/etc"),   // pszPath
                 number(12, 4, 1),  // ulOptions
             });
  expectRows("item 1", items + 32, 32,
             {
                 text(0, "/var"),      // pszPath
                 number(4, 4, 2),      // ulFileCount
                 bytes(8, "a\0bc\0"),  // pFileList
             });
  const auto* filters = reinterpret_cast<const char*>(this->record.pFilters);
  expectBlockSize(filters, 2 * 32);
  expectRows("filter 0", filters, 32,
             {
                 number(0, 2, 3),   // usFilterType
                 number(2, 2, 1),   // usInclExcl
                 number(4, 4, 1),   // ulFilterCount
                 text(8, "/tmp"),   // pszFilter
                 number(12, 2, 5),  // usFilterLen
             });
  expectRows("filter 1", filters + 32, 32,
             {
                 number(0, 2, 5),     // usFilterType
                 number(4, 4, 0x20),  // ulAttributes
             });
}

TYPED_TEST(DiskConversion, LeavesNullForWhatIsNotGiven) {
  BKQDisk disk;
  ASSERT_EQ(this->convert(disk), 1);
  this->expectDisk("empty disk", {});
  ASSERT_EQ(this->convert(disk, "/override"), 1);
  this->expectDisk("no item, no item record", {});
  ASSERT_EQ(this->convert(disk, nullptr), 1);
  this->expectDisk("null for an empty path", {});
}

TYPED_TEST(DiskConversion, AdjustsTheType) {
  struct Case {
    unsigned int type;
    const char* name;
    unsigned int nodeType;
    unsigned int recorded;
  };
  for (const Case& c : {
           Case{5, "c:", kWinNTNode, 5},
           {23, "c:", 0, 0},
           {23, "", kUnixNode, 0},
           {5, "Registry", kWinNTNode, 11},
           {0, "Registry", kWinNTNode, 11},
           {23, "Registry", kWinNTNode, 0},
           {5, "registry", kWinNTNode, 5},
           {5, "REGISTRY", kWinNTNode, 5},
           {5, "Registry ", kWinNTNode, 5},
           {5, "Registr", kWinNTNode, 5},
           {5, "Registry", kUnixNode, 5},
           {5, "Registry", 10, 5},
           {5, "Registry", 0x10009, 5},
           {0x10005, "c:", 0, 5},
           {0xffffffff, "c:", 0, 0xffff},
           // The whole type is compared with 23, the record takes the low half.
           {0x10017, "c:", 0, 23},
           {0x10017, "Registry", kWinNTNode, 11},
       }) {
    TypeParam::currentNodeType() = c.nodeType;
    BKQDisk disk(diskType(c.type));
    disk.setDiskName(c.name);
    ASSERT_EQ(this->convert(disk), 1);
    EXPECT_EQ(this->record.usDiskType, c.recorded) << c.type << ' ' << c.name << ' ' << c.nodeType;
    EXPECT_EQ(disk.getDiskType(), c.type);
  }
}

TYPED_TEST(DiskConversion, AddsTheJobsOptions) {
  struct Case {
    unsigned int nodeType, unixOptions, encryption, compression;
    unsigned int recorded;
  };
  for (const Case& c : {
           Case{0, 0, 0, 0, 0x1},
           {0, 0, 1, 0, 0x4001},
           {0, 0, 0, 1, 0x2001},
           {0, 0, 1, 1, 0x6001},
           {0, 0, 2, 2, 0x1},
           {0, 0, 0xffffffff, 0x101, 0x1},
           {kUnixNode, 0x80000010, 0, 0, 0x80000011},
           {kUnixNode, 0x80000010, 1, 1, 0x80006011},
           {kUnixNode, 0, 0, 0, 0x1},
           {kWinNTNode, 0x80000010, 0, 0, 0x1},
           {0, 0x80000010, 0, 0, 0x1},
       }) {
    TypeParam::currentNodeType() = c.nodeType;
    TypeParam::unixOptions() = c.unixOptions;
    TypeParam::diskEncryption() = c.encryption;
    TypeParam::diskCompression() = c.compression;
    BKQDisk disk;
    disk.setOptions(0x1);
    ASSERT_EQ(this->convert(disk), 1);
    EXPECT_EQ(this->record.ulOptions, c.recorded)
        << c.nodeType << ' ' << c.unixOptions << ' ' << c.encryption << ' ' << c.compression;
    EXPECT_EQ(disk.getOptions(), 0x1u);
  }
}

TYPED_TEST(DiskConversion, TakesTheSessionPasswordForWantOfItsOwn) {
  char session[] = "session";
  char none[] = "";
  BKQDisk disk;
  ASSERT_EQ(this->convert(disk), 1);
  EXPECT_EQ(this->record.pszPassword, nullptr);

  TypeParam::diskSessionPassword() = session;
  ASSERT_EQ(this->convert(disk), 1);
  EXPECT_STREQ(this->record.pszPassword, "session");
  EXPECT_NE(this->record.pszPassword, session);  // a copy

  disk.setPassword("own");
  ASSERT_EQ(this->convert(disk), 1);
  EXPECT_STREQ(this->record.pszPassword, "own");

  // The variable counts as given when it is not null.
  TypeParam::diskSessionPassword() = none;
  disk.setPassword("");
  ASSERT_EQ(this->convert(disk), 1);
  EXPECT_STREQ(this->record.pszPassword, "");
}

TYPED_TEST(DiskConversion, StoresUserAndSecondPasswordByType) {
  struct Case {
    unsigned int type;
    const char* user;
    const char* password;
    std::string block;  // whole, with its NULs; empty for a null pointer
  };
  const std::string pair("u\0p\0", 4);
  const std::string joined("u:p\0\0", 5);
  // One text, and an empty second one for a reader that goes on.
  const std::string userOnly("u\0\0", 3);
  const std::string passwordOnly("\0p\0", 3);
  for (const Case& c : {
           Case{5, "u", "p", pair},
           {5, "u", "", userOnly},
           {5, "", "p", passwordOnly},
           {5, "", "", ""},
           {5, "backup", "secret", std::string("backup\0secret\0", 14)},
           {11, "u", "p", joined},
           {22, "u", "p", joined},
           {31, "u", "p", joined},
           {11, "u", "", userOnly},
           {22, "u", "", userOnly},
           {31, "u", "", userOnly},
           {11, "", "p", ""},
           {22, "", "p", ""},
           {31, "", "p", ""},
           {22, "", "", ""},
           {22, "backup", "secret", std::string("backup:secret\0\0", 15)},
           {0, "u", "p", pair},
           {23, "u", "p", pair},
           {10, "u", "p", pair},
           {30, "u", "p", pair},
           // The whole type decides, not the half that the record takes.
           {0x1000b, "u", "p", pair},
           {0x10016, "", "p", passwordOnly},
       }) {
    BKQDisk disk(diskType(c.type));
    disk.setUser(c.user);
    disk.setDiskPW2(c.password);
    ASSERT_EQ(this->convert(disk), 1);
    const std::string what = std::to_string(c.type) + " user " + c.user + " password " + c.password;
    if (c.block.empty()) {
      EXPECT_EQ(this->record.pszDiskPW2, nullptr) << what;
      continue;
    }
    expectRows(what, &this->record.pszDiskPW2, 4, {bytes(0, c.block)});
    expectBlockSize(this->record.pszDiskPW2, c.block.size());
  }
}

TYPED_TEST(DiskConversion, FormOfTheSecondPasswordIgnoresTheAdjustments) {
  TypeParam::currentNodeType() = kWinNTNode;
  BKQDisk disk(diskType(5));
  disk.setDiskName("Registry");
  disk.setUser("u");
  disk.setDiskPW2("p");
  ASSERT_EQ(this->convert(disk), 1);
  this->expectDisk("registry", {
                                   text(0, "Registry"),  // pszDiskName
                                   number(24, 2, 11),    // usDiskType
                                   bytes(36, "u\0p\0"),  // pszDiskPW2
                               });

  disk.setDiskType(diskType(11));
  ASSERT_EQ(this->convert(disk), 1);
  this->expectDisk("registry of its own type", {
                                                   text(0, "Registry"),   // pszDiskName
                                                   number(24, 2, 11),     // usDiskType
                                                   bytes(36, "u:p\0\0"),  // pszDiskPW2
                                               });
}

TYPED_TEST(DiskConversion, LeavesItsNameInTheVariable) {
  BKQDisk disk;
  disk.setDiskName("/usr");
  ASSERT_EQ(this->convert(disk), 1);
  EXPECT_STREQ(TypeParam::diskName().data(), "/usr");
  disk.setDiskName("");
  ASSERT_EQ(this->convert(disk), 1);
  EXPECT_STREQ(TypeParam::diskName().data(), "");
}

TYPED_TEST(DiskConversion, EachDiskMakesItsOwnItemsAbsolute) {
  TypeParam::currentNodeType() = kUnixNode;
  BKQDisk usr;
  usr.setDiskName("/usr");
  BKQDisk home;
  home.setDiskName("/home");
  Item item("/lib");
  usr.addDiskItem(item);
  home.addDiskItem(item);
  ASSERT_EQ(this->convert(usr), 1);
  EXPECT_STREQ(this->record.pDiskItems[0].pszPath, "/usr/lib");
  ASSERT_EQ(this->convert(home), 1);
  EXPECT_STREQ(this->record.pDiskItems[0].pszPath, "/home/lib");
}

TYPED_TEST(DiskConversion, OverridePathStandsForAllItems) {
  TypeParam::currentNodeType() = kUnixNode;
  BKQDisk disk;
  disk.setDiskName("/usr");
  Item first("/lib", {"a", "bc"});
  first.setOptions(6);
  Item second("/bin");
  Item third("/sbin");
  disk.addDiskItem(first);
  disk.addDiskItem(second);
  disk.addDiskItem(third);
  BKQFileFilter filter(BKQFilter::Exclude, "*.o");
  disk.addFilter(filter);

  ASSERT_EQ(this->convert(disk, "/restore"), 1);
  this->expectDisk("disk", {
                               text(0, "/usr"),   // pszDiskName
                               number(8, 4, 1),   // ulFilterCount
                               block(12),         // pFilters
                               number(16, 4, 1),  // ulDiskItemCount
                               block(20),         // pDiskItems
                           });
  expectBlockSize(this->record.pDiskItems, 32);
  expectRows("item", this->record.pDiskItems, 32,
             {
                 text(0, "/restore"),  // pszPath
                 number(12, 4, 6),     // ulOptions
             });
  // The cursor passed all of them.
  BKQDiskItemCol* rest = nullptr;
  EXPECT_EQ(disk.enumDiskItems(rest, 0), 0u);
  delete rest;
}

TYPED_TEST(DiskConversion, LeavesTheCursorsAtTheEnd) {
  BKQDisk disk;
  Item item("/etc");
  BKQFileFilter filter;
  disk.addDiskItem(item);
  disk.addFilter(filter);
  for (int time = 0; time < 2; ++time) {  // wherever they stood before
    ASSERT_EQ(this->convert(disk), 1);
    EXPECT_EQ(this->record.ulDiskItemCount, 1u);
    EXPECT_EQ(this->record.ulFilterCount, 1u);
    BKQDiskItemCol* items = nullptr;
    EXPECT_EQ(disk.enumDiskItems(items, 0), 0u);
    delete items;
    BKQFilterCol* filters = nullptr;
    EXPECT_EQ(disk.enumFilters(filters, 0), 0u);
    delete filters;
  }
  disk.resetDiskItems();
  disk.resetFilters();
  BKQDiskItemCol* items = nullptr;
  EXPECT_EQ(disk.enumDiskItems(items, 0), 1u);
  delete items;
  BKQFilterCol* filters = nullptr;
  EXPECT_EQ(disk.enumFilters(filters, 0), 1u);
  delete filters;
}

TYPED_TEST(DiskConversion, AsksFiltersThroughTheVirtualTable) {
  BKQDisk disk;
  ForeignFilter filter(1);
  disk.addFilter(filter);
  ASSERT_EQ(this->convert(disk), 1);
  expectRows(
      "filter", this->record.pFilters, 32,
      {number(0, 2,
              TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark)});
}

TYPED_TEST(DiskConversion, FailsWithAFilterThatFails) {
  BKQDisk disk;
  disk.setDiskName("/usr");
  Item item("/etc");
  disk.addDiskItem(item);
  BKQVolumeFilter before(inclExcl(0x10001), "v");
  ForeignFilter failing(0);
  BKQVolumeFilter after(BKQFilter::Include, "w");
  disk.addFilter(before);
  disk.addFilter(failing);
  disk.addFilter(after);

  int result = -1;
  EXPECT_EQ(standardErrorOf([&] { result = this->convert(disk); }), "Failed to convert Filter\n");
  EXPECT_EQ(result, 0);
  // What was filled stays: the items come before the filters.
  this->expectDisk("disk", {
                               text(0, "/usr"),   // pszDiskName
                               number(8, 4, 2),   // ulFilterCount, with the one that failed
                               block(12),         // pFilters
                               number(16, 4, 1),  // ulDiskItemCount
                               block(20),         // pDiskItems
                           });
  expectRows("filter 0", this->record.pFilters, 32,
             {
                 number(0, 2, 1),   // usFilterType
                 number(2, 2, 1),   // usInclExcl
                 number(4, 4, 1),   // ulFilterCount
                 text(8, "v"),      // pszFilter
                 number(12, 2, 2),  // usFilterLen
             });
  expectRows(
      "filter 1", this->record.pFilters + 1, 32,
      {number(0, 2,
              TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark)});
}

// A count and an array that are there already go on growing.
TYPED_TEST(DiskConversion, AppendsToWhatTheRecordHolds) {
  BKQDisk disk;
  Item item("/etc");
  disk.addDiskItem(item);
  BKQFileFilter filter(BKQFilter::Include, "*");
  disk.addFilter(filter);
  ASSERT_EQ(this->convert(disk), 1);
  void* rec = &this->record;
  ASSERT_EQ(TypeParam::convert(disk, rec, ""), 1);
  EXPECT_EQ(this->record.ulDiskItemCount, 2u);
  EXPECT_EQ(this->record.ulFilterCount, 2u);
  for (int i = 0; i < 2; ++i) {
    EXPECT_STREQ(this->record.pDiskItems[i].pszPath, "/etc");
    EXPECT_STREQ(this->record.pFilters[i].pszFilter, "*");
  }
  // With an override path an array that is there is left alone.
  ASSERT_EQ(TypeParam::convert(disk, rec, "/override"), 1);
  EXPECT_EQ(this->record.ulDiskItemCount, 2u);
  EXPECT_STREQ(this->record.pDiskItems[0].pszPath, "/etc");
  EXPECT_EQ(this->record.ulFilterCount, 3u);
}

TYPED_TEST(DiskConversion, TransfersAClonesElementsTwice) {
  BKQDisk disk;
  BKQDiskItem item("/etc");
  item.addFile("a");
  disk.addDiskItem(item);
  BKQFileFilter filter(BKQFilter::Include, "*");
  disk.addFilter(filter);
  BKQDisk* copy = disk.clone();
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(this->convert(*copy), 1);
  ASSERT_EQ(this->record.ulDiskItemCount, 2u);
  ASSERT_EQ(this->record.ulFilterCount, 2u);
  EXPECT_STREQ(this->record.pDiskItems[1].pszPath, "/etc");
  // The cloned item in turn holds its name twice.
  EXPECT_EQ(this->record.pDiskItems[0].ulFileCount, 1u);
  EXPECT_EQ(this->record.pDiskItems[1].ulFileCount, 2u);
  expectRows("names", &this->record.pDiskItems[1].pFileList, 4, {bytes(0, "a\0a\0")});
  EXPECT_STREQ(this->record.pFilters[1].pszFilter, "*");

  copy->resetDiskItems();
  copy->resetFilters();
  BKQDiskItemCol* items = nullptr;
  BKQFilterCol* filters = nullptr;
  copy->enumDiskItems(items, 0);
  copy->enumFilters(filters, 0);
  auto* clonedItem = static_cast<BKQDiskItem*>(items->at(1));
  BKQDiskItem empty;
  clonedItem->mycopy(&empty);  // deletes the shared name and its copy
  delete clonedItem;
  delete filters->at(1);
  delete items;
  delete filters;
  delete copy;
}

TYPED_TEST(DiskConversion, ItemPathsOfUnixNodesStartWithTheDisk) {
  struct Case {
    unsigned int nodeType;
    const char* disk;
    const char* path;
    const char* recorded;
  };
  for (const Case& c : {
           Case{kUnixNode, "/usr", "/lib", "/usr/lib"},
           {kUnixNode, "/usr", "lib", "/usrlib"},  // no separator is put in
           {kUnixNode, "/usr", "", "/usr"},
           {kUnixNode, "/", "/etc", "/etc"},
           {kUnixNode, "/", "etc", "etc"},
           {kUnixNode, "/", "", "/"},
           {kUnixNode, "//", "", "//"},
           {kUnixNode, "//", "/etc", "///etc"},
           {kUnixNode, "", "/etc", "/etc"},
           {kUnixNode, "", "", ""},
           {kWinNTNode, "c:", "\\temp", "\\temp"},
           {0, "/usr", "/lib", "/lib"},
           {0, "/usr", "", ""},  // an empty path is a text, too
           {0, "/", "", ""},
           {0x10003, "/usr", "/lib", "/lib"},
       }) {
    TypeParam::currentNodeType() = c.nodeType;
    TypeParam::diskName() = c.disk;
    BKQDiskItem item(c.path);
    const std::string what = std::string(c.disk) + " and " + c.path;
    ASSERT_EQ(this->convertItem(item), 1);
    this->expectItem(what, {
                               text(0, c.recorded),  // pszPath
                               number(12, 4, 1),     // ulOptions
                           });
    expectBlockSize(this->itemRecord->pszPath, std::string(c.recorded).size() + 1);
    EXPECT_STREQ(item.getPath().data(), c.path);
  }
}

TYPED_TEST(DiskConversion, ItemCarriesItsOptionsOnly) {
  BKQDiskItem item("/etc");
  item.setOptions(0x80000005);
  item.setObjectProperty(0x77);  // reaches no record
  ASSERT_EQ(this->convertItem(item), 1);
  this->expectItem("item", {
                               text(0, "/etc"),            // pszPath
                               number(12, 4, 0x80000005),  // ulOptions
                           });
}

TYPED_TEST(DiskConversion, FileListHoldsTheNamesBackToBack) {
  struct Case {
    std::vector<const char*> names;
    std::string list;
  };
  for (const Case& c : {
           Case{{"a"}, std::string("a\0", 2)},
           {{"a", "bc"}, std::string("a\0bc\0", 5)},
           {{"a", "bc", "def"}, std::string("a\0bc\0def\0", 9)},
           {{""}, std::string("\0", 1)},
           {{"", "", "x"}, std::string("\0\0x\0", 4)},
           {{"a", "", "b", ""}, std::string("a\0\0b\0\0", 6)},
       }) {
    Item item("/etc", c.names);
    item.setOptions(9);
    ASSERT_EQ(this->convertItem(item), 1);
    this->expectItem("item",
                     {
                         text(0, "/etc"),                                      // pszPath
                         number(4, 4, static_cast<uint32_t>(c.names.size())),  // ulFileCount
                         bytes(8, c.list),                                     // pFileList
                         number(12, 4, 9),                                     // ulOptions
                     });
    // No NUL more at the end.
    expectBlockSize(this->itemRecord->pFileList, c.list.size());
    BKQStringCol* rest = nullptr;
    EXPECT_EQ(item.enumFiles(rest, 0), 0u);
    delete rest;
  }
}

TYPED_TEST(DiskConversion, FileListGrowsFromWhatTheRecordHolds) {
  Item first("/etc", {"a", "bc"});
  Item second("/etc", {"def"});
  ASSERT_EQ(this->convertItem(first), 1);
  free(this->itemRecord->pszPath);
  void* rec = this->itemRecord;
  ASSERT_EQ(TypeParam::convert(second, rec), 1);
  this->expectItem("item", {
                               text(0, "/etc"),           // pszPath
                               number(4, 4, 3),           // ulFileCount
                               bytes(8, "a\0bc\0def\0"),  // pFileList
                           });
}

TYPED_TEST(DiskConversion, FileListHoldsManyNames) {
  constexpr unsigned int kNames = kSanitized ? 2000 : 100000;
  Item item("/etc");
  for (unsigned int i = 0; i < kNames; ++i) item.addFile("0123456789abcdef");
  ASSERT_EQ(this->convertItem(item), 1);
  ASSERT_EQ(this->itemRecord->ulFileCount, kNames);
  expectBlockSize(this->itemRecord->pFileList, 17 * kNames);
  EXPECT_STREQ(this->itemRecord->pFileList + 17 * (kNames - 1), "0123456789abcdef");
}

TYPED_TEST(DiskConversion, ItemWithOverridePathTakesPathAndOptionsOnly) {
  TypeParam::currentNodeType() = kUnixNode;
  TypeParam::diskName() = "/usr";
  Item item("/lib", {"a"});
  item.setOptions(6);
  ASSERT_EQ(this->convertItem(item, "/restore"), 1);
  this->expectItem("override", {
                                   text(0, "/restore"),  // pszPath
                                   number(12, 4, 6),     // ulOptions
                               });
  for (const char* none : {"", static_cast<const char*>(nullptr)}) {
    ASSERT_EQ(this->convertItem(item, none), 1);
    this->expectItem("own path", {
                                     text(0, "/lib"),   // pszPath
                                     number(12, 4, 6),  // ulOptions
                                 });
  }
  item.setPath("");
  ASSERT_EQ(this->convertItem(item, ""), 1);
  this->expectItem("no path at all", {number(12, 4, 6)});  // ulOptions
}

TEST(DiskConversions, OfTheTwoLayoutsKeepTheirNamesApart) {
  BKQDisk disk;
  disk.setDiskName("current");
  BKDDISK record{};
  void* rec = &record;
  ASSERT_EQ(disk.convertToBK2(rec, ""), 1);
  disk.setDiskName("previous");
  BKDDISK_OLD previous{};
  rec = &previous;
  ASSERT_EQ(disk.convertToBK2_old(rec, ""), 1);
  EXPECT_STREQ(DISK_DISKNAME.data(), "current");
  EXPECT_STREQ(DISK_DISKNAME_OLD.data(), "previous");
  DISK_DISKNAME = "";
  DISK_DISKNAME_OLD = "";
  freeDisk(record);
  freeDisk(previous);
}

}  // namespace
}  // namespace bkoq::test
