// Nodes as records, in both layouts, converted directly as a client may do it.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/catalog/kinds.h"
#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/name_list.h"
#include "tests/support/node_conversion.h"
#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

TYPED_TEST_SUITE(NodeConversion, Layouts, );

TYPED_TEST(NodeConversion, FillsEveryFieldOfTheRecord) {
  using L = TypeParam;
  BKQMacNode node("mac");
  node.setBeforeNode("first");
  node.setAfterNode("last");
  node.setNodeOS(0x00010007);
  node.setNodeOSver("9.2");
  node.setNodeAddress("10.0.0.1");
  node.setNodeDomain("office");
  node.setUserName("user");
  node.setPassword("secret");
  node.setOptions(0x80000001);
  node.setDeviceType(0x1234);
  node.setBeforeNodeWait(0xFFFF);
  // What follows reaches no record.
  node.setPriority(1);
  node.setNodeType(5);
  BKQGroom groom;
  node.setGroomInfo(groom);
  BKQDirFilter filter(BKQFilter::Exclude, "/tmp");
  node.addFilter(filter);
  NamedDisk disk("HD");
  node.addDisk(disk);

  ASSERT_EQ(this->convert(node), 1);
  std::vector<Row> rows = {
      number(0, 2, 2),            // usNodeType
      number(2, 2, 7),            // usNodeOS: low 16 bits
      text(4, "9.2"),             // pszNodeOSVer
      text(8, "mac"),             // pszNodeName
      text(12, "10.0.0.1"),       // pszNodeAddress
      text(16, "user"),           // pszUserName
      text(20, "secret"),         // pszPassword
      number(24, 4, 1),           // ulFilterCount
      block(28),                  // pFilters
      number(32, 2, 0x1234),      // usDeviceType
      number(36, 4, 1),           // ulMediaCount
      block(40),                  // pMedia
      text(44, "first"),          // pszBeforeNode
      text(48, "last"),           // pszAfterNode
      number(52, 2, 0xFFFF),      // usBeforeNodeWait
      number(56, 4, 0x80000001),  // ulNodeOptions
  };
  if (!L::kPrevious) rows.push_back(text(84, "office"));  // pszNodeDomain
  this->expectNode("node", rows);
  expectRows(
      "filter", this->record.pFilters, 32,
      {number(0, 2, 3), number(2, 2, 1), number(4, 4, 1), text(8, "/tmp"), number(12, 2, 5)});
  expectRows("disk", this->record.pMedia, 52, {text(0, "HD")});
  expectBlockSize(this->record.pFilters, 32);
  expectBlockSize(this->record.pMedia, 52);
  EXPECT_EQ(L::currentNodeType(), 2u);
}

TYPED_TEST(NodeConversion, EachMachineClassHasItsTypeAndSystem) {
  using L = TypeParam;
  for (const NodeKindLine& line : kNodeKinds) {
    if (line.family != NodeFamily::kDisk) continue;
    const std::unique_ptr<BKQNode> machine(line.make("n"));
    // The previous layout has another code for NDS trees.
    const unsigned int type = L::kPrevious && line.kind == NodeClass::kNDS ? 6 : line.code;
    ASSERT_EQ(this->convert(static_cast<BKQDiskNode&>(*machine)), 1) << line.className;
    this->expectNode(line.className, {
                                         number(0, 2, type),
                                         number(2, 2, line.os),
                                         text(8, "n"),
                                         number(56, 4, line.options),
                                     });
    EXPECT_EQ(L::currentNodeType(), type) << line.className;
  }
}

TYPED_TEST(NodeConversion, NodeOptionsOfTheMachinesReachNoRecord) {
  BKQSybaseNode node("n");
  node.setSybaseOptions(static_cast<BKQSybaseNode::BKQSybaseNodeOptions>(0x40));
  node.setEncryptKey("key");
  node.setDumpFile("dump");
  ASSERT_EQ(this->convert(node), 1);
  this->expectNode("Sybase",
                   {number(0, 2, 21), number(2, 2, 6), text(8, "n"), number(56, 4, 0x120)});
}

TYPED_TEST(NodeConversion, TypeIsTruncatedInTheRecordOnly) {
  Machine node(0x10003, "n");
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.usNodeType, 3);
  EXPECT_EQ(TypeParam::currentNodeType(), 0x10003u);
}

TYPED_TEST(NodeConversion, EmptyTextsAreNull) {
  BKQWinNTNode node("");
  node.setOptions(0);
  node.setNodeOS(0);
  ASSERT_EQ(this->convert(node), 1);
  this->expectNode("node", {number(0, 2, 9)});
}

TYPED_TEST(NodeConversion, DomainAndAddress) {
  const struct {
    unsigned int type;
    const char* domain;
    const char* address;
    const char* currentAddress;
    const char* currentDomain;
    const char* previousAddress;
  } cases[] = {
      {9, "D", "A", "A", "D", "A"},
      {9, "D", "", nullptr, "D", nullptr},
      {9, "", "A", "A", nullptr, "A"},
      {9, "", "", nullptr, nullptr, nullptr},
      {3, "D", "A", "A", "D", "A"},
      {13, "D", "A", "A", "A", "D"},
      {13, "D", "", "D", nullptr, "D"},
      {13, "", "A", "A", "A", nullptr},
      {13, "", "", nullptr, nullptr, nullptr},
      // What the previous layout makes of an NDS tree is a type like any other here.
      {6, "D", "A", "A", "D", "A"},
  };
  for (const auto& c : cases) {
    const std::string what = std::to_string(c.type) + " " + c.domain + " " + c.address;
    Machine node(c.type, "");
    node.setOptions(0);
    node.setNodeDomain(c.domain);
    node.setNodeAddress(c.address);
    ASSERT_EQ(this->convert(node), 1) << what;
    const bool isPreviousNDS = TypeParam::kPrevious && c.type == 13;
    std::vector<Row> rows = {number(0, 2, isPreviousNDS ? 6 : c.type)};
    const char* address = TypeParam::kPrevious ? c.previousAddress : c.currentAddress;
    const char* domain = TypeParam::kPrevious ? nullptr : c.currentDomain;
    if (address != nullptr) rows.push_back(text(12, address));
    if (domain != nullptr) rows.push_back(text(84, domain));
    this->expectNode(what, rows);
  }
}

TYPED_TEST(NodeConversion, NoEstimateOnlyWhenExactlyOne) {
  using L = TypeParam;
  BKQWinNTNode machine("n");
  BKQTapeNode tapes("t");
  BKQRestoreNode restore("r");
  BKQDBRestoreNode database("d");
  const struct {
    unsigned int variable;
    uint32_t bit;
  } cases[] = {{0, 0}, {1, 0x40}, {2, 0}, {0xFFFFFFFF, 0}};
  for (const auto& c : cases) {
    L::nodeNoEstimate() = c.variable;
    ASSERT_EQ(this->convert(machine), 1);
    EXPECT_EQ(this->record.ulNodeOptions, 0x120 | c.bit) << c.variable;
    ASSERT_EQ(this->convert(tapes), 1);
    EXPECT_EQ(this->record.ulNodeOptions, c.bit) << c.variable;
    ASSERT_EQ(this->convert(restore), 1);
    EXPECT_EQ(this->record.ulNodeOptions, c.bit) << c.variable;
    ASSERT_EQ(this->convert(database), 1);
    EXPECT_EQ(this->record.ulNodeOptions, c.bit) << c.variable;
    EXPECT_EQ(L::nodeNoEstimate(), c.variable);
  }
}

TYPED_TEST(NodeConversion, FiltersInOrderThroughTheirOwnConversion) {
  BKQWinNTNode node("n");
  BKQFileFilter first(BKQFilter::Include, "*.c");
  ForeignFilter second(1);
  BKQAttributeFilter third(BKQFilter::Exclude, 4);
  node.addFilter(first);
  node.addFilter(second);
  node.addFilter(third);
  ASSERT_EQ(this->convert(node), 1);
  ASSERT_EQ(this->record.ulFilterCount, 3u);
  expectBlockSize(this->record.pFilters, 96);
  expectRows("first", &this->record.pFilters[0], 32,
             {number(0, 2, 2), number(4, 4, 1), text(8, "*.c"), number(12, 2, 4)});
  const unsigned int mark =
      TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark;
  expectRows("second", &this->record.pFilters[1], 32, {number(0, 2, mark)});
  expectRows("third", &this->record.pFilters[2], 32,
             {number(0, 2, 5), number(2, 2, 1), number(4, 4, 4)});
}

TYPED_TEST(NodeConversion, CursorsStandAtTheEnd) {
  BKQWinNTNode node("n");
  BKQDirFilter filter;
  NamedDisk disk("C:");
  node.addFilter(filter);
  node.addDisk(disk);
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(filtersLeft(node), 0u);
  EXPECT_EQ(disksLeft(node), 0u);
  node.resetFilters();
  node.resetDisks();
  EXPECT_EQ(filtersLeft(node), 1u);
  EXPECT_EQ(disksLeft(node), 1u);

  // The cursors play no part in what is taken.
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.ulFilterCount, 1u);
  EXPECT_EQ(this->record.ulMediaCount, 1u);

  BKQTapeNode tapes("t");
  SessionTape tape("A", 1);
  tapes.addTape(tape);
  ASSERT_EQ(this->convert(tapes, "none of them", 0), 1);
  EXPECT_EQ(tapesLeft(tapes), 0u);
  tapes.resetTapes();
  EXPECT_EQ(tapesLeft(tapes), 1u);
}

TYPED_TEST(NodeConversion, NDSTreeHasNoDisksAndKeepsItsCursor) {
  BKQNDSNode node("tree");
  NamedDisk first("first");
  NamedDisk second("second");
  node.addDisk(first);
  node.addDisk(second);
  BKQDiskCol* one = nullptr;
  ASSERT_EQ(node.enumDisks(one, 1), 1u);
  delete one;
  NameList names{"first"};
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.ulMediaCount, 0u);
  EXPECT_EQ(this->record.pMedia, nullptr);
  ASSERT_EQ(this->convert(node, names, ""), 1);
  EXPECT_EQ(this->record.ulMediaCount, 0u);
  EXPECT_EQ(disksLeft(node), 1u);
}

TYPED_TEST(NodeConversion, PreviousNDSTypeIsNoNDSTreeOfItsOwn) {
  // Only the class's own type decides; 6 is just what the previous layout writes for 13.
  Machine node(6, "n");
  NamedDisk disk("C:");
  node.addDisk(disk);
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.ulMediaCount, 1u);
}

TYPED_TEST(NodeConversion, WhatIsNoTextNamesNoDisk) {
  BKQWinNTNode node("n");
  NamedDisk disk("C:");
  node.addDisk(disk);
  RWCollectable object;
  NameList names{};
  names.insert(&object);
  names.insert(&disk);
  ASSERT_EQ(this->convert(node, names), 1);
  EXPECT_EQ(this->record.ulMediaCount, 0u);
  RWCollectableString name("C:");
  names.insert(&name);
  ASSERT_EQ(this->convert(node, names), 1);
  EXPECT_EQ(this->diskNames(), std::vector<std::string>{"C:"});
}

TYPED_TEST(NodeConversion, AllDisksInTheirOrder) {
  BKQWinNTNode node("n");
  NamedDisk c("C:", 1);
  NamedDisk d("D:", 2);
  NamedDisk e("E:", 3);
  node.addDisk(d);
  node.addDisk(c);
  node.addDisk(e);
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->diskNames(), (std::vector<std::string>{"D:", "C:", "E:"}));
  expectBlockSize(this->record.pMedia, 3 * 52);
  expectRows("second", &this->disk(1), 52, {text(0, "C:"), number(28, 4, 1)});
  NameList noNames{};
  ASSERT_EQ(this->convert(node, noNames), 1);
  EXPECT_EQ(this->diskNames(), (std::vector<std::string>{"D:", "C:", "E:"}));
  EXPECT_STREQ(TypeParam::diskName().data(), "E:");
}

TYPED_TEST(NodeConversion, NamedDisksInTheOrderOfTheNames) {
  BKQWinNTNode node("n");
  NamedDisk c("C:", 1);
  NamedDisk d("D:", 2);
  NamedDisk otherC("C:", 3);
  NamedDisk unnamed("", 4);
  node.addDisk(c);
  node.addDisk(d);
  node.addDisk(otherC);
  node.addDisk(unnamed);
  const struct {
    NameList names;
    std::vector<unsigned int> options;  // of the disks that go
  } cases[] = {
      {{"D:", "C:"}, {2, 1, 3}},     // the order is the list's; every disk of a name goes
      {{"D:", "D:"}, {2, 2}},        // a name twice gives two records
      {{"X:"}, {}},                  // a name that no disk bears
      {{"d:", "D", "D:\\"}, {}},     // same length, same bytes, same case
      {{"X:", "D:", "Y:"}, {2}},     // names that match nothing are passed over
      {{""}, {4}},                   // the empty name is a name
      {{"C:", "C:"}, {1, 3, 1, 3}},  // each name scans all disks
  };
  unsigned int index = 0;
  for (const auto& c : cases) {
    const std::string what = "case " + std::to_string(index++);
    ASSERT_EQ(this->convert(node, const_cast<NameList&>(c.names)), 1) << what;
    ASSERT_EQ(this->record.ulMediaCount, c.options.size()) << what;
    for (unsigned int i = 0; i < c.options.size(); ++i) {
      EXPECT_EQ(this->disk(i).ulOptions, c.options[i]) << what;
    }
    if (c.options.empty()) {
      EXPECT_EQ(this->record.pMedia, nullptr) << what;
    } else {
      expectBlockSize(this->record.pMedia, c.options.size() * 52);
    }
    EXPECT_EQ(disksLeft(node), 0u) << what;
  }
}

TYPED_TEST(NodeConversion, OverridePathReachesEveryDisk) {
  BKQWinNTNode node("n");
  NamedDisk c("C:");
  NamedDisk d("D:");
  BKQDiskItem first("\\one");
  BKQDiskItem second("\\two");
  c.addDiskItem(first);
  c.addDiskItem(second);
  d.addDiskItem(second);
  node.addDisk(c);
  node.addDisk(d);
  NameList names{"D:"};

  ASSERT_EQ(this->convert(node, "\\other"), 1);
  ASSERT_EQ(this->record.ulMediaCount, 2u);
  for (unsigned int i = 0; i < 2; ++i) {
    EXPECT_EQ(this->disk(i).ulDiskItemCount, 1u);
    EXPECT_STREQ(this->disk(i).pDiskItems[0].pszPath, "\\other");
  }

  ASSERT_EQ(this->convert(node, names, "\\other"), 1);
  EXPECT_EQ(this->diskNames(), (std::vector<std::string>{"D:"}));
  EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, "\\other");

  for (const char* none : {"", static_cast<const char*>(nullptr)}) {
    ASSERT_EQ(this->convert(node, none), 1);
    EXPECT_EQ(this->disk(0).ulDiskItemCount, 2u);
    EXPECT_STREQ(this->disk(0).pDiskItems[1].pszPath, "\\two");
  }
}

TYPED_TEST(NodeConversion, ARecordInUseIsContinued) {
  // Counts and arrays of the record are the state: a second conversion appends to them.
  BKQWinNTNode node("n");
  BKQDirFilter filter(BKQFilter::Include, "/a");
  NamedDisk disk("C:");
  node.addFilter(filter);
  node.addDisk(disk);
  ASSERT_EQ(this->convert(node), 1);
  free(this->record.pszNodeName);
  void* rec = &this->record;
  ASSERT_EQ(TypeParam::convert(node, rec), 1);
  EXPECT_EQ(this->record.ulFilterCount, 2u);
  EXPECT_EQ(this->diskNames(), (std::vector<std::string>{"C:", "C:"}));
}

}  // namespace
}  // namespace bkoq::test
