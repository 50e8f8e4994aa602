// Nodes as records, in both layouts, converted directly as a client may do it.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/block_size.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/layouts.h"
#include "tests/support/name_list.h"
#include "tests/support/rows.h"

namespace {

// A machine class of a client's own, of any kind.
class Machine : public BKQDiskNode {
 public:
  Machine(unsigned int type, const char* name) : BKQDiskNode(name), type_(type) {}
  unsigned int nodeType() const override { return type_; }

 private:
  unsigned int type_;
};

class NamedDisk : public BKQDisk {
 public:
  explicit NamedDisk(const char* name, unsigned int options = 0) {
    setDiskName(name);
    setOptions(options);
  }
};

class SessionTape : public BKQTape {
 public:
  SessionTape(const char* name, unsigned short session) : BKQTape("GROUP", name) {
    setSessionNumber(session);
  }
};

template <class L>
class NodeConversion : public testing::Test {
 protected:
  using Other = OtherLayout<L>;

  void SetUp() override {
    // Whatever is taken from or stored in the other layout's variables shows.
    Other::nodeNoEstimate() = 1;
    Other::currentNodeType() = 77;
    Other::unixOptions() = 0x8000;
    Other::diskName() = "foreign";
  }

  void TearDown() override {
    EXPECT_EQ(Other::nodeNoEstimate(), 1u);
    EXPECT_EQ(Other::currentNodeType(), 77u);
    EXPECT_EQ(Other::unixOptions(), 0x8000u);
    EXPECT_STREQ(Other::diskName().data(), "foreign");
    clear();
  }

  // Converts into a zeroed record that the fixture keeps and frees.
  template <class Node, class... Arguments>
  int convert(Node& node, Arguments&&... arguments) {
    clear();
    media_ = std::is_base_of<BKQTapeNode, Node>::value ? Media::kTapes : Media::kDisks;
    void* rec = &record;
    const int result = L::convert(node, rec, std::forward<Arguments>(arguments)...);
    EXPECT_EQ(rec, static_cast<void*>(&record));
    return result;
  }

  void expectNode(const std::string& what, const std::vector<Row>& rows) {
    expectRows(what, &record, 100, rows);
  }

  // The records that hang from the node, one per index.
  const typename L::Disk& disk(unsigned int i = 0) const {
    return static_cast<const typename L::Disk*>(record.pMedia)[i];
  }
  const typename L::Tape& tape(unsigned int i = 0) const {
    return static_cast<const typename L::Tape*>(record.pMedia)[i];
  }
  std::vector<std::string> diskNames() const {
    std::vector<std::string> names;
    for (unsigned int i = 0; i < record.ulMediaCount; ++i) names.emplace_back(disk(i).pszDiskName);
    return names;
  }
  std::vector<std::string> tapeNames() const {
    std::vector<std::string> names;
    for (unsigned int i = 0; i < record.ulMediaCount; ++i) names.emplace_back(tape(i).pszTapeName);
    return names;
  }

  typename L::Node record{};

 private:
  void clear() {
    freeNodeContents(record, media_);
    record = {};
  }

  Media media_ = Media::kDisks;
};

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
  BKQMacNode mac("n");
  BKQUnixNode unixNode("n");
  BKQNetwareNode netware("n");
  BKQWinNTNode winNT("n");
  BKQOS2Node os2("n");
  BKQWin95Node win95("n");
  BKQWindowsNode windows("n");
  BKQNDSNode nds("n");
  BKQFTPNode ftp("n");
  BKQSybaseNode sybase("n");
  BKQOracleNode oracle("n");
  BKQInformixNode informix("n");
  BKQSnapShotNode snapShot("n");
  const struct {
    BKQDiskNode& node;
    unsigned int type;
    unsigned int previousType;
    unsigned int os;
  } machines[] = {
      {mac, 2, 2, 7},        {unixNode, 3, 3, 6}, {netware, 8, 8, 4},   {winNT, 9, 9, 8},
      {os2, 10, 10, 2},      {win95, 11, 11, 5},  {windows, 12, 12, 5}, {nds, 13, 6, 4},
      {ftp, 20, 20, 6},      {sybase, 21, 21, 6}, {oracle, 22, 22, 6},  {informix, 23, 23, 6},
      {snapShot, 26, 26, 6},
  };
  for (const auto& machine : machines) {
    const unsigned int type = L::kPrevious ? machine.previousType : machine.type;
    const std::string what = "node type " + std::to_string(machine.type);
    ASSERT_EQ(this->convert(machine.node), 1) << what;
    this->expectNode(what, {
                               number(0, 2, type),
                               number(2, 2, machine.os),
                               text(8, "n"),
                               number(56, 4, 0x120),
                           });
    EXPECT_EQ(L::currentNodeType(), type) << what;
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

// The cursors after a conversion, told by what the enumeration still hands out.
unsigned int filtersLeft(BKQNode& node) {
  BKQFilterCol* filters = nullptr;
  const unsigned int count = node.enumFilters(filters, 0);
  delete filters;
  return count;
}
unsigned int disksLeft(BKQDiskNode& node) {
  BKQDiskCol* disks = nullptr;
  const unsigned int count = node.enumDisks(disks, 0);
  delete disks;
  return count;
}
unsigned int tapesLeft(BKQTapeNode& node) {
  BKQTapeCol* tapes = nullptr;
  const unsigned int count = node.enumTapes(tapes, 0);
  delete tapes;
  return count;
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

TYPED_TEST(NodeConversion, UnixNodeAddsItsOptionsToItsDisks) {
  using L = TypeParam;
  BKQUnixNode node("n");
  node.setUnixOptions(0x10);
  NamedDisk disk("/usr", 1);
  BKQDiskItem item("/lib");
  disk.addDiskItem(item);
  node.addDisk(disk);
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(L::unixOptions(), 0x10u);
  EXPECT_EQ(L::currentNodeType(), 3u);
  this->expectNode("UNIX node", {
                                    number(0, 2, 3),
                                    number(2, 2, 6),
                                    bytes(8, "n\0\0"),  // pszNodeName, an empty second text
                                    number(36, 4, 1),
                                    block(40),
                                    number(56, 4, 0x120),
                                });
  EXPECT_EQ(this->disk().ulOptions, 0x11u);
  EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, "/usr/lib");

  // The disk node's forms take what the last UNIX node left.
  L::unixOptions() = 0x20;
  NameList names{"/usr"};
  ASSERT_EQ(this->convert(node, names), 1);
  EXPECT_EQ(this->disk().ulOptions, 0x21u);
  ASSERT_EQ(this->convert(node, "/other"), 1);
  EXPECT_EQ(this->disk().ulOptions, 0x21u);
  EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, "/other");
  ASSERT_EQ(this->convert(node, names, "/other"), 1);
  EXPECT_EQ(this->disk().ulOptions, 0x21u);
  ASSERT_EQ(this->convert(static_cast<BKQDiskNode&>(node), names), 1);
  EXPECT_EQ(this->disk().ulOptions, 0x21u);
  EXPECT_EQ(L::unixOptions(), 0x20u);

  // The virtual form, through any base, is the UNIX node's.
  ASSERT_EQ(this->convert(static_cast<BKQNode&>(node)), 1);
  EXPECT_EQ(L::unixOptions(), 0x10u);
  EXPECT_EQ(this->disk().ulOptions, 0x11u);

  ASSERT_EQ(this->convert(node, names, 0, ""), 1);
  EXPECT_EQ(this->diskNames(), (std::vector<std::string>{"/usr"}));
  NameList otherNames{"/opt"};
  ASSERT_EQ(this->convert(node, otherNames, 0, ""), 1);
  EXPECT_EQ(this->record.ulMediaCount, 0u);
}

TYPED_TEST(NodeConversion, UnixOptionsStayForDisksOfOtherNodes) {
  BKQUnixNode first("n");
  first.setUnixOptions(0x10);
  ASSERT_EQ(this->convert(first), 1);
  BKQWinNTNode other("n");
  NamedDisk disk("C:", 1);
  other.addDisk(disk);
  ASSERT_EQ(this->convert(other), 1);
  EXPECT_EQ(this->disk().ulOptions, 1u);  // only on nodes of type 3
  EXPECT_EQ(TypeParam::unixOptions(), 0x10u);
}

TYPED_TEST(NodeConversion, UnixExtraTextIsPutBehindTheFirst) {
  const struct {
    const char* version;
    const char* name;
    int mode;
    const char* extra;
    std::string versionBytes;  // empty: null
    std::string nameBytes;
    uint32_t options;
  } cases[] = {
      {"5", "n", 1, "x", std::string("5\0x\0", 4), std::string("n\0\0", 3), 0x800},
      {"5.8", "n", 1, "long", std::string("5.8\0long\0", 9), std::string("n\0\0", 3), 0x800},
      {"", "n", 1, "x", std::string("\0x\0", 3), std::string("n\0\0", 3), 0x800},
      {"5", "node", 2, "xy", std::string("5\0\0", 3), std::string("node\0xy\0", 8), 0x200},
      {"5", "", 2, "x", std::string("5\0\0", 3), std::string("\0x\0", 3), 0x200},
      {"5", "n", 0, "x", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", 3, "x", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", -1, "x", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", 1, "", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", 2, "", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", 1, nullptr, std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"", "", 1, "", "", "", 0},
  };
  NameList names{};
  unsigned int index = 0;
  for (const auto& c : cases) {
    const std::string what = "case " + std::to_string(index++);
    BKQUnixNode node(c.name);
    node.setNodeOSver(c.version);
    ASSERT_EQ(this->convert(node, names, c.mode, c.extra), 1) << what;
    std::vector<Row> rows = {number(0, 2, 3), number(2, 2, 6), number(56, 4, 0x120 | c.options)};
    if (!c.versionBytes.empty()) rows.push_back(bytes(4, c.versionBytes));
    if (!c.nameBytes.empty()) rows.push_back(bytes(8, c.nameBytes));
    this->expectNode(what, rows);
    if (!c.versionBytes.empty()) {
      expectBlockSize(this->record.pszNodeOSVer, c.versionBytes.size());
    }
    if (!c.nameBytes.empty()) expectBlockSize(this->record.pszNodeName, c.nameBytes.size());
  }
}

TYPED_TEST(NodeConversion, UnixLongFormTakesNoOverridePath) {
  BKQUnixNode node("n");
  NamedDisk disk("/");
  BKQDiskItem etc("/etc");
  BKQDiskItem var("/var");
  disk.addDiskItem(etc);
  disk.addDiskItem(var);
  node.addDisk(disk);
  NameList names{"/"};
  ASSERT_EQ(this->convert(node, names, 1, "/extra"), 1);
  ASSERT_EQ(this->disk().ulDiskItemCount, 2u);
  EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, "/etc");
  EXPECT_STREQ(this->disk().pDiskItems[1].pszPath, "/var");
}

TYPED_TEST(NodeConversion, TapeNodeCarriesTypeThree) {
  using L = TypeParam;
  BKQTapeNode node;
  ASSERT_EQ(this->convert(node), 1);
  this->expectNode("tape node", {
                                    number(0, 2, 3),       // usNodeType, not 24
                                    number(2, 2, 6),       // usNodeOS
                                    text(8, "localhost"),  // pszNodeName
                                    number(32, 2, 1),      // usDeviceType
                                });
  EXPECT_EQ(L::currentNodeType(), 3u);
}

TYPED_TEST(NodeConversion, TapesAreSelectedByNameAndSession) {
  BKQTapeNode node("library");
  SessionTape a1("A", 1);
  SessionTape a2("A", 2);
  SessionTape b1("B", 1);
  SessionTape a0("A", 0);
  node.addTape(a1);
  node.addTape(a2);
  node.addTape(b1);
  node.addTape(a0);
  const struct {
    const char* name;
    unsigned short session;
    std::vector<std::string> selected;  // name and session
  } cases[] = {
      {"", 0, {"A1", "A2", "B1", "A0"}},
      {"A", 0, {"A1", "A2", "A0"}},
      {"", 1, {"A1", "B1"}},
      {"A", 2, {"A2"}},
      {"B", 2, {}},
      {"a", 0, {}},
      {"AA", 0, {}},
      {"", 9, {}},
      {nullptr, 0, {"A1", "A2", "B1", "A0"}},
  };
  unsigned int index = 0;
  for (const auto& c : cases) {
    const std::string what = "case " + std::to_string(index++);
    ASSERT_EQ(this->convert(node, c.name, c.session), 1) << what;
    std::vector<std::string> selected;
    for (unsigned int i = 0; i < this->record.ulMediaCount; ++i) {
      selected.push_back(this->tape(i).pszTapeName + std::to_string(this->tape(i).usSessionNumber));
    }
    EXPECT_EQ(selected, c.selected) << what;
    if (c.selected.empty()) {
      EXPECT_EQ(this->record.pMedia, nullptr) << what;
    } else {
      expectBlockSize(this->record.pMedia, 72 * c.selected.size());
    }
  }
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->tapeNames(), (std::vector<std::string>{"A", "A", "B", "A"}));
  ASSERT_EQ(this->convert(static_cast<BKQNode&>(node)), 1);
  EXPECT_EQ(this->record.ulMediaCount, 4u);
  freeTapes(static_cast<typename TypeParam::Tape*>(this->record.pMedia), 4);
  this->record.pMedia = nullptr;
}

TYPED_TEST(NodeConversion, WalkOutlastsTheTapeCursor) {
  // The cursor has 16 bits; the walk visits every tape once nevertheless.
  BKQTapeNode node("library");
  SessionTape other("A", 1);
  SessionTape wanted("B", 1);
  for (int i = 0; i < 65536; ++i) node.addTape(other);
  node.addTape(wanted);
  ASSERT_EQ(this->convert(node, "B", 0), 1);
  EXPECT_EQ(this->tapeNames(), (std::vector<std::string>{"B"}));
}

TYPED_TEST(NodeConversion, TapeNodeFieldsAreTheBaseNodes) {
  BKQTapeNode node("library");
  node.setUserName("u");
  node.setPassword("p");
  node.setNodeOSver("1");
  node.setNodeAddress("A");
  node.setNodeDomain("D");
  node.setOptions(4);
  BKQDirFilter filter(BKQFilter::Include, "/");
  node.addFilter(filter);
  ASSERT_EQ(this->convert(node), 1);
  std::vector<Row> rows = {number(0, 2, 3), number(2, 2, 6),  text(4, "1"),    text(8, "library"),
                           text(12, "A"),   text(16, "u"),    text(20, "p"),   number(24, 4, 1),
                           block(28),       number(32, 2, 1), number(56, 4, 4)};
  if (!TypeParam::kPrevious) rows.push_back(text(84, "D"));
  this->expectNode("tape node", rows);
}

TYPED_TEST(NodeConversion, RestoreNodeCarriesTheActualType) {
  using L = TypeParam;
  BKQRestoreNode node("standby", "C:");
  node.setActualNodeType(BKQNode::WinNTNode);
  node.setDestinationDir("\\restored");
  node.setNodeOSver("4.0");
  node.setNodeAddress("A");
  node.setNodeDomain("D");
  node.setUserName("u");
  node.setPassword("p");
  node.setOptions(0x10);
  ASSERT_EQ(this->convert(node), 1);
  std::vector<Row> rows = {
      number(0, 2, 9),      // usNodeType, not 25
      number(2, 2, 8),      // usNodeOS by the actual type
      text(4, "4.0"),       // pszNodeOSVer
      text(8, "standby"),   // pszNodeName
      text(12, "A"),        // pszNodeAddress
      text(16, "u"),        // pszUserName
      text(20, "p"),        // pszPassword
      number(36, 4, 1),     // ulMediaCount
      block(40),            // pMedia
      number(56, 4, 0x10),  // ulNodeOptions
  };
  if (!L::kPrevious) rows.push_back(text(84, "D"));  // pszNodeDomain
  this->expectNode("restore node", rows);
  EXPECT_EQ(L::currentNodeType(), 9u);
  expectBlockSize(this->record.pMedia, 52);
  expectRows("disk", this->record.pMedia, 52, {text(0, "C:"), number(16, 4, 1), block(20)});
  expectBlockSize(this->disk().pDiskItems, 32);
  expectRows("item", this->disk().pDiskItems, 32, {text(0, "\\restored")});
}

TYPED_TEST(NodeConversion, RestoreNodeWithoutActualTypeCarriesZero) {
  BKQRestoreNode node("standby");
  ASSERT_EQ(this->convert(node), 1);
  this->expectNode("restore node",
                   {number(2, 2, 6), text(8, "standby"), number(36, 4, 1), block(40)});
  EXPECT_EQ(TypeParam::currentNodeType(), 0u);
  expectRows("disk", this->record.pMedia, 52, {number(16, 4, 1), block(20)});
  expectRows("item", this->disk().pDiskItems, 32, {});
}

TYPED_TEST(NodeConversion, ActualTypeOfAnNDSTreeIsKept) {
  // Both layouts take the actual type as it was set, and the class's own type for the address rule.
  BKQRestoreNode node("standby");
  node.setActualNodeType(BKQNode::NDSNode);
  node.setNodeAddress("A");
  node.setNodeDomain("D");
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.usNodeType, 13);
  EXPECT_EQ(TypeParam::currentNodeType(), 13u);
  EXPECT_EQ(this->record.usNodeOS, 4);
  EXPECT_STREQ(this->record.pszNodeAddress, "A");
}

TYPED_TEST(NodeConversion, NodeSystemSetAfterTheActualTypeWins) {
  BKQRestoreNode node("standby");
  node.setActualNodeType(BKQNode::WinNTNode);
  node.setNodeOS(99);
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.usNodeOS, 99);
}

TYPED_TEST(NodeConversion, RestorePath) {
  const struct {
    const char* disk;
    const char* directory;
    const char* path;          // null: none
    const char* databasePath;  // the same of a database restore node
  } cases[] = {
      {"", "", nullptr, nullptr},
      {"", "/tmp", "/tmp", "/tmp"},
      {"", "tmp", "tmp", "tmp"},
      {"/usr", "/tmp", "/usr/tmp", "/usr/tmp"},
      {"/usr", "tmp", "/usrtmp", "/usrtmp"},  // no separator
      {"/usr", "", "/usr", "/usr"},
      {"//", "/tmp", "///tmp", "///tmp"},
      {"/", "/tmp", "/tmp", "/tmp"},
      {"/", "", "/", "/"},
      {"C:", "\\tmp", "\\tmp", "\\tmp"},
      {"C:", "", nullptr, "C:"},
  };
  for (const auto& c : cases) {
    const std::string what = std::string(c.disk) + " " + c.directory;
    BKQRestoreNode node("n", c.disk);
    node.setDestinationDir(c.directory);
    ASSERT_EQ(this->convert(node), 1) << what;
    EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, c.path) << what;
    EXPECT_EQ(this->disk().ulDiskItemCount, 1u) << what;
    EXPECT_EQ(this->disk().pszDiskName != nullptr, *c.disk != '\0') << what;

    BKQDBRestoreNode database("n", c.disk);
    database.setDestinationDir(c.directory);
    ASSERT_EQ(this->convert(database), 1) << what;
    EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, c.databasePath) << what;
  }
}

TYPED_TEST(NodeConversion, ActualTypeMakesNoDatabaseOfARestoreNode) {
  // The rule for the disk name goes by the class, whatever type was set.
  BKQRestoreNode node("n", "accounts");
  node.setActualNodeType(BKQNode::DBRestoreNode);
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.usNodeType, 27);
  EXPECT_EQ(this->disk().pDiskItems[0].pszPath, nullptr);

  BKQDBRestoreNode database("n", "accounts");
  database.setActualNodeType(BKQNode::UnixNode);
  ASSERT_EQ(this->convert(database), 1);
  EXPECT_EQ(this->record.usNodeType, 3);
  EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, "accounts");
}

TYPED_TEST(NodeConversion, DatabaseRestoreNodeFillsItsDisk) {
  using L = TypeParam;
  BKQDBRestoreNode node("dbserver", "accounts");
  node.setActualNodeType(BKQNode::SybaseNode);
  node.setFStype(static_cast<BKQDisk::BKQDiskType>(0x10017));  // low half 23: no rule for it here
  node.setOptions(0x80000003);
  node.BKQNode::setOptions(0x11);
  node.setDBuser("sa", "pw");
  ASSERT_EQ(this->convert(node), 1);
  this->expectNode("database restore node",
                   {
                       number(0, 2, 21), number(2, 2, 6), text(8, "dbserver"), number(36, 4, 1),
                       block(40), number(56, 4, 0x11),  // the node's own word
                   });
  expectRows("disk", this->record.pMedia, 52,
             {
                 text(0, "accounts"),        // pszDiskName
                 number(16, 4, 1),           // ulDiskItemCount
                 block(20),                  // pDiskItems
                 number(24, 2, 23),          // usDiskType
                 number(28, 4, 0x80000003),  // ulOptions
                 bytes(36, "sa\0pw\0"),      // pszDiskPW2
             });
  EXPECT_EQ(L::currentNodeType(), 21u);
}

TYPED_TEST(NodeConversion, DatabaseCredentials) {
  const std::string none;
  const std::string pair("sa\0pw\0", 6);
  const std::string joined("sa:pw\0\0", 7);
  const std::string user("sa\0\0", 4);
  const std::string password("\0pw\0", 4);
  const bool isPrevious = TypeParam::kPrevious;
  const struct {
    unsigned int type;
    const char* user;
    const char* password;
    const std::string& bytes;  // empty: null
  } cases[] = {
      {5, "sa", "pw", pair},
      {5, "sa", "", user},
      {5, "", "pw", password},
      {5, "", "", none},
      {23, "sa", "pw", pair},
      {22, "sa", "pw", joined},
      {22, "sa", "", user},
      {22, "", "pw", none},
      {22, "", "", none},
      {31, "sa", "pw", joined},
      {31, "sa", "", user},
      {31, "", "pw", none},
      // The previous layout joins type 11, too.
      {11, "sa", "pw", isPrevious ? joined : pair},
      {11, "sa", "", user},
      {11, "", "pw", isPrevious ? none : password},
      {11, "", "", none},
      // The whole type counts, not the half that the record takes.
      {0x10016, "sa", "pw", pair},
  };
  for (const auto& c : cases) {
    const std::string what = std::to_string(c.type) + " " + c.user + " " + c.password;
    BKQDBRestoreNode node("n");
    node.setFStype(static_cast<BKQDisk::BKQDiskType>(c.type));
    node.setDBuser(c.user, c.password);
    ASSERT_EQ(this->convert(node), 1) << what;
    std::vector<Row> rows = {number(16, 4, 1), block(20), number(24, 2, c.type & 0xFFFF)};
    if (!c.bytes.empty()) rows.push_back(bytes(36, c.bytes));
    expectRows(what, this->record.pMedia, 52, rows);
    if (!c.bytes.empty()) expectBlockSize(this->disk().pszDiskPW2, c.bytes.size());
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

TYPED_TEST(NodeConversion, ATapeNodeContinuesARecordInUse) {
  BKQTapeNode node("n");
  BKQDirFilter filter(BKQFilter::Include, "/a");
  SessionTape first("A", 1);
  SessionTape second("B", 1);
  node.addFilter(filter);
  node.addTape(first);
  node.addTape(second);
  ASSERT_EQ(this->convert(node), 1);
  free(this->record.pszNodeName);
  void* rec = &this->record;
  ASSERT_EQ(TypeParam::convert(node, rec, "B", 0), 1);
  this->expectNode("n", {number(0, 2, 3), number(2, 2, 6), text(8, "n"), number(24, 4, 2),
                         block(28), number(32, 2, 1), number(36, 4, 3), block(40)});
  EXPECT_EQ(this->tapeNames(), (std::vector<std::string>{"A", "B", "B"}));
  EXPECT_STREQ(this->record.pFilters[1].pszFilter, "/a");
}

// A restore node continues its filters and the count of its media, but its one disk is a new array.
TYPED_TEST(NodeConversion, ARestoreNodeContinuesARecordInUse) {
  BKQRestoreNode plain("n", "/usr");
  BKQDBRestoreNode database("n", "/usr");
  BKQDirFilter filter(BKQFilter::Include, "/a");
  for (BKQRestoreNode* node : {&plain, static_cast<BKQRestoreNode*>(&database)}) {
    node->addFilter(filter);
    node->setDestinationDir("/lib");
    ASSERT_EQ(this->convert(*node), 1);
    void* const former = this->record.pMedia;
    free(this->record.pszNodeName);
    void* rec = &this->record;
    ASSERT_EQ(TypeParam::convert(*node, rec), 1);
    this->expectNode("n", {number(2, 2, 6), text(8, "n"), number(24, 4, 2), block(28),
                           number(36, 4, 2), block(40)});
    EXPECT_STREQ(this->record.pFilters[1].pszFilter, "/a");
    EXPECT_NE(this->record.pMedia, former);
    for (const void* disk : {former, static_cast<void*>(this->record.pMedia)}) {
      expectRows("disk", disk, 52, {text(0, "/usr"), number(16, 4, 1), block(20)});
      EXPECT_STREQ(static_cast<const typename TypeParam::Disk*>(disk)->pDiskItems[0].pszPath,
                   "/usr/lib");
    }
    freeDisks(former, 1);
    this->record.ulMediaCount = 1;
  }
}

}  // namespace
