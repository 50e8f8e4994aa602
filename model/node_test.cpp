#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <type_traits>

#include "tests/catalog/kinds.h"
#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"
#include "tests/support/heap.h"
#include "tests/support/private_member.h"

namespace bkoq::test {

// Members that no accessor reads, but that every copy carries.
struct NetwareList {
  using Type = RWSlistCollectables BKQNetwareNode::*;
  friend constexpr Type privateMember(NetwareList);
};
struct NetwareValue {
  using Type = unsigned int BKQNetwareNode::*;
  friend constexpr Type privateMember(NetwareValue);
};
struct SybaseLists {
  using Type = BKQStringCol (BKQSybaseNode::*)[3];
  friend constexpr Type privateMember(SybaseLists);
};

template struct PrivateMember<NetwareList, &BKQNetwareNode::list_>;
template struct PrivateMember<NetwareValue, &BKQNetwareNode::value_>;
template struct PrivateMember<SybaseLists, &BKQSybaseNode::lists_>;

namespace {

class PlainNode : public BKQNode {
 public:
  PlainNode() {}
  explicit PlainNode(const char* name) : BKQNode(name) {}
  unsigned int nodeType() const override { return 99; }
};

class PlainDiskNode : public BKQDiskNode {
 public:
  PlainDiskNode() {}
  unsigned int nodeType() const override { return 99; }
};

// What the root classes leave; tests/catalog/kinds.h has it for the others.
TEST(Node, RootsBeginWithoutASystem) {
  PlainNode node;
  EXPECT_EQ(node.getNodeOS(), 0u);
  EXPECT_EQ(node.getOptions(), 0u);
  EXPECT_EQ(node.getDeviceType(), 0);
  PlainDiskNode diskNode;
  EXPECT_EQ(diskNode.getNodeOS(), 0u);
  EXPECT_EQ(diskNode.getOptions(), 0x120u);
  EXPECT_EQ(diskNode.getDeviceType(), 0);
}

TEST(Node, DefaultNameIsLocalhost) {
  PlainNode node;
  EXPECT_STREQ(node.getNodeName(), "localhost");
  EXPECT_EQ(node.getPriority(), 255);
  EXPECT_EQ(node.getNodeOS(), 0u);
  EXPECT_EQ(node.getOptions(), 0u);
  EXPECT_STREQ(PlainNode(nullptr).getNodeName(), "");
  EXPECT_EQ(node.clone(), nullptr);
  EXPECT_STREQ(PlainDiskNode().getNodeName(), "localhost");
  EXPECT_STREQ(BKQTapeNode().getNodeName(), "localhost");
  EXPECT_STREQ(BKQRestoreNode().getNodeName(), "localhost");
  EXPECT_STREQ(BKQDBRestoreNode().getNodeName(), "localhost");
}

TEST(Node, CopyOfTheRootClonesTheFilters) {
  int destroyed = 0;
  Counted<BKQDirFilter> filter(destroyed);
  BKQWinNTNode source("source");
  source.addFilter(filter);
  source.setPriority(7);
  BKQWinNTNode target("target");
  Counted<BKQDirFilter> former(destroyed);
  target.addFilter(former);
  target.BKQNode::mycopy(&source);
  EXPECT_EQ(destroyed, 0);
  EXPECT_STREQ(target.getNodeName(), "source");
  EXPECT_EQ(target.getPriority(), 7);
  ASSERT_EQ(target.filterEntries(), 1u);
  BKQFilterCol* filters = nullptr;
  target.enumFilters(filters, 0);
  EXPECT_NE(filters->at(0), &filter);
  delete filters->at(0);
  delete filters;
}

template <class Machine>
void expectMachine(unsigned int type, unsigned int os) {
  Machine node("name");
  EXPECT_EQ(node.nodeType(), type);
  EXPECT_EQ(node.getNodeOS(), os);
  EXPECT_EQ(node.getOptions(), 0x120u);
  EXPECT_STREQ(node.getNodeName(), "name");
  EXPECT_FALSE(std::is_default_constructible<Machine>::value);

  int destroyed = 0;
  Counted<BKQDisk> disk(destroyed);
  disk.setDiskName("/");
  BKQDirFilter filter;
  BKQGroom groom;
  node.addDisk(disk);
  node.addFilter(filter);
  node.setGroomInfo(groom);
  node.setNodeAddress("address");
  std::unique_ptr<BKQNode> clone(static_cast<BKQNode&>(node).clone());
  auto* copy = dynamic_cast<Machine*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->nodeType(), type);
  EXPECT_STREQ(copy->getNodeName(), "name");
  EXPECT_STREQ(copy->getNodeAddress(), "address");
  EXPECT_EQ(copy->getGroomInfo(), &groom);
  ASSERT_EQ(copy->diskEntries(), 2u);
  ASSERT_EQ(copy->filterEntries(), 1u);
  BKQDiskCol* disks = nullptr;
  copy->enumDisks(disks, 0);
  EXPECT_EQ(disks->at(0), &disk);
  std::unique_ptr<BKQDisk> clonedDisk(static_cast<BKQDisk*>(disks->at(1)));
  EXPECT_STREQ(clonedDisk->getDiskName(), "/");
  delete disks;
  BKQFilterCol* filters = nullptr;
  copy->enumFilters(filters, 0);
  EXPECT_EQ(filters->at(0), &filter);
  delete filters;
  copy->mycopy(copy);
  copy->mycopy(static_cast<Machine*>(nullptr));
  EXPECT_EQ(copy->diskEntries(), 2u);
  EXPECT_EQ(node.BKQDiskNode::clone(), nullptr);
  EXPECT_EQ(node.BKQNode::clone(), nullptr);
  EXPECT_EQ(destroyed, 0);
}

TEST(DiskNode, MachinesOfEveryKind) {
#define BKOQ_EXPECT_Disk(class_, code, os) expectMachine<class_>(code, os);
#define BKOQ_EXPECT_Tape(class_, code, os)
#define BKOQ_EXPECT_Restore(class_, code, os)
#define BKOQ_EXPECT(kind, class_, code, os, options, device, family) \
  BKOQ_EXPECT_##family(class_, code, os)
  BKOQ_NODE_KINDS(BKOQ_EXPECT)
#undef BKOQ_EXPECT
}

TEST(DiskNode, OptionsOfItsOwn) {
  BKQUnixNode unixNode("n");
  BKQSybaseNode sybase("n");
  unixNode.setUnixOptions(0x5a);
  sybase.setSybaseOptions(static_cast<BKQSybaseNode::BKQSybaseNodeOptions>(0x5a));
  EXPECT_EQ(std::unique_ptr<BKQUnixNode>(unixNode.clone())->getUnixOptions(), 0x5au);
  EXPECT_EQ(std::unique_ptr<BKQSybaseNode>(sybase.clone())->getSybaseOptions(), 0x5au);
  sybase.setEncryptKey("key");
  sybase.setDumpFile("dump");
  EXPECT_STREQ(std::unique_ptr<BKQSybaseNode>(sybase.clone())->getEncryptKey(), "key");
  EXPECT_STREQ(std::unique_ptr<BKQSybaseNode>(sybase.clone())->getDumpFile(), "dump");
}

// The lists that nothing reads are copied as lists of the same objects.
TEST(DiskNode, CopyHasTheReservedMembers) {
  int destroyed = 0;
  Counted<RWCollectableString> first(destroyed, "a");
  Counted<RWCollectableString> second(destroyed, "b");
  {
    BKQNetwareNode source("n");
    BKQNetwareNode target("n");
    EXPECT_EQ(source.*privateMember(NetwareValue()), 0u);
    source.*privateMember(NetwareValue()) = 0x12345678;
    (source.*privateMember(NetwareList())).insert(&first);
    (target.*privateMember(NetwareList())).insert(&second);
    target.mycopy(&source);
    EXPECT_EQ(target.*privateMember(NetwareValue()), 0x12345678u);
    const RWSlistCollectables& list = target.*privateMember(NetwareList());
    ASSERT_EQ(list.entries(), 1u);
    EXPECT_EQ(list.at(0), &first);
  }
  {
    BKQSybaseNode source("n");
    BKQSybaseNode target("n");
    for (int i = 0; i < 3; ++i) {
      BKQStringCol& list = (source.*privateMember(SybaseLists()))[i];
      for (int entries = 0; entries <= i; ++entries) list.insert(&first);
      (target.*privateMember(SybaseLists()))[i].insert(&second);
    }
    target.mycopy(&source);
    for (unsigned int i = 0; i < 3; ++i) {
      const BKQStringCol& list = (target.*privateMember(SybaseLists()))[i];
      ASSERT_EQ(list.entries(), i + 1);
      EXPECT_EQ(list.at(i), &first);
    }
  }
  EXPECT_EQ(destroyed, 0);
}

// Whatever memory runs out on the way: whoever copies may delete the former disks next.
TEST(DiskNode, CopyInScarceMemoryHoldsNoFormerDisk) {
  if (!kSeesAllocations) GTEST_SKIP() << "allocations are not seen with this heap";
  BKQDisk disks[5];
  BKQMacNode source("n");
  for (BKQDisk& disk : disks) source.addDisk(disk);
  unsigned int allocations = 0;
  for (unsigned int failing = 0; failing <= allocations; ++failing) {
    BKQDisk former;
    BKQMacNode copy("n");
    copy.addDisk(former);
    {
      const HeapWatch heap(failing);
      copy.mycopy(&source);
      if (failing == 0) allocations = heap.allocations();
    }
    BKQDiskCol* found = nullptr;
    copy.enumDisks(found, 0);
    for (unsigned int i = 0; i < found->entries(); ++i) {
      auto* disk = static_cast<BKQDisk*>(found->at(i));
      EXPECT_NE(disk, &former) << failing;
      if (disk != &former && std::none_of(std::begin(disks), std::end(disks),
                                          [&](const BKQDisk& each) { return &each == disk; })) {
        delete disk;
      }
    }
    delete found;
  }
  EXPECT_GE(allocations, 7u) << "the place of the disks, that of their clones, each clone";
}

TEST(DiskNode, CopyHasTheGroomInfoItself) {
  BKQGroom groom;
  BKQMacNode source("n");
  BKQMacNode target("n");
  target.setGroomInfo(groom);
  target.mycopy(&source);
  EXPECT_EQ(target.groomInfoExists(), 0);
  source.setGroomInfo(groom);
  target.mycopy(&source);
  EXPECT_EQ(target.getGroomInfo(), &groom);
}

TEST(DiskNode, OrderByPriority) {
  const struct {
    unsigned short own, other;
    int result;
  } rows[] = {
      {255, 255, -1},  // whenever the other has none
      {3, 255, -1},    //
      {255, 3, 1},     // a higher number
      {5, 5, 0},       //
      {6, 5, 1},       //
      {5, 6, -1},      //
      {65535, 0, -1},  // signed: 65535 is -1
      {0, 65535, 1},   //
      {32768, 32767, -1},
  };
  for (const auto& row : rows) {
    BKQMacNode own("a");
    BKQUnixNode other("b");
    own.setPriority(row.own);
    other.setPriority(row.other);
    EXPECT_EQ(own.compareTo(&other), row.result) << row.own << " and " << row.other;
  }
  EXPECT_EQ(BKQMacNode("n").compareTo(nullptr), -1);
}

TEST(DiskNode, RemovesTheFirstDiskOfTheName) {
  int destroyed = 0;
  Counted<BKQDisk> a(destroyed), b(destroyed), again(destroyed);
  a.setDiskName("a");
  b.setDiskName("b");
  again.setDiskName("a");
  BKQMacNode node("n");
  for (BKQDisk* disk : {&a, &b, &again}) EXPECT_EQ(node.addDisk(*disk), disk);
  BKQDisk wanted;
  wanted.setDiskName("c");
  EXPECT_EQ(node.removeDisk(wanted), -1);
  EXPECT_EQ(node.diskEntries(), 3u);
  wanted.setDiskName("a");
  EXPECT_EQ(node.removeDisk(wanted), 0);
  EXPECT_EQ(node.diskEntries(), 2u);
  BKQDiskCol* disks = nullptr;
  node.enumDisks(disks, 0);
  EXPECT_EQ(disks->at(0), &b);
  EXPECT_EQ(disks->at(1), &again);
  delete disks;
  EXPECT_EQ(node.removeDisk(again), 0);
  node.clearDisks();
  EXPECT_EQ(node.diskEntries(), 0u);
  EXPECT_EQ(destroyed, 0);
}

TEST(DiskNode, RemovingDisksMovesNoCursor) {
  const auto namesOfTheRest = [](BKQDiskNode& node) {
    BKQDiskCol* page = nullptr;
    node.enumDisks(page, 9);
    std::string names;
    for (unsigned int i = 0; i < page->entries(); ++i) {
      names += static_cast<BKQDisk*>(page->at(i))->getDiskName().data();
    }
    delete page;
    return names;
  };
  BKQDisk disks[5];
  for (int i = 0; i < 5; ++i)
    disks[i].setDiskName(std::string(1, static_cast<char>('a' + i)).c_str());
  const struct {
    const char* removed;
    const char* rest;
  } rows[] = {{"a", "de"}, {"b", "de"}, {"c", "de"}, {"d", "ce"}, {"e", "cd"}, {"x", "cde"}};
  for (const auto& row : rows) {
    BKQMacNode node("n");
    for (BKQDisk& disk : disks) node.addDisk(disk);
    BKQDiskCol* page = nullptr;
    EXPECT_EQ(node.enumDisks(page, 2), 2u);
    delete page;
    BKQDisk wanted;
    wanted.setDiskName(row.removed);
    node.removeDisk(wanted);
    EXPECT_EQ(namesOfTheRest(node), row.rest) << row.removed;
  }
  BKQMacNode node("n");
  for (BKQDisk& disk : disks) node.addDisk(disk);
  BKQDiskCol* page = nullptr;
  EXPECT_EQ(node.enumDisks(page, 2), 2u);
  delete page;
  node.clearDisks();
  EXPECT_EQ(namesOfTheRest(node), "");
  for (BKQDisk* disk : {&disks[0], &disks[1], &disks[2]}) node.addDisk(*disk);
  EXPECT_EQ(namesOfTheRest(node), "c");
}

TEST(DiskNode, GroomInfo) {
  BKQMacNode node("n");
  EXPECT_EQ(node.groomInfoExists(), 0);
  EXPECT_EQ(node.getGroomInfo(), nullptr);
  BKQGroom groom;
  node.setGroomInfo(groom);
  EXPECT_EQ(node.groomInfoExists(), 1);
  EXPECT_EQ(node.getGroomInfo(), &groom);
}

template <class Class>
void expectNoCloneWithoutMemory() {
  const std::unique_ptr<Class> node = newObject<Class>();
  const FailingNew noMemory(1);
  EXPECT_EQ(node->clone(), nullptr);
}

TEST(Node, WithoutMemoryThereIsNoClone) {
  expectNoCloneWithoutMemory<BKQMacNode>();
  expectNoCloneWithoutMemory<BKQUnixNode>();
  expectNoCloneWithoutMemory<BKQNetwareNode>();
  expectNoCloneWithoutMemory<BKQWinNTNode>();
  expectNoCloneWithoutMemory<BKQOS2Node>();
  expectNoCloneWithoutMemory<BKQWin95Node>();
  expectNoCloneWithoutMemory<BKQWindowsNode>();
  expectNoCloneWithoutMemory<BKQNDSNode>();
  expectNoCloneWithoutMemory<BKQFTPNode>();
  expectNoCloneWithoutMemory<BKQSybaseNode>();
  expectNoCloneWithoutMemory<BKQOracleNode>();
  expectNoCloneWithoutMemory<BKQInformixNode>();
  expectNoCloneWithoutMemory<BKQSnapShotNode>();
  expectNoCloneWithoutMemory<BKQTapeNode>();
  expectNoCloneWithoutMemory<BKQRestoreNode>();
  expectNoCloneWithoutMemory<BKQDBRestoreNode>();
}

TEST(Node, EnumeratesFiltersByCursor) {
  BKQMacNode node("n");
  BKQDirFilter filters[3];
  for (BKQDirFilter& filter : filters) EXPECT_EQ(node.addFilter(filter), &filter);
  BKQFilterCol* out = nullptr;
  EXPECT_EQ(node.enumFilters(out, 0), 3u);
  delete out;
  EXPECT_EQ(node.enumFilters(out, 0), 0u);
  ASSERT_NE(out, nullptr);
  delete out;
  node.resetFilters();
  EXPECT_EQ(node.enumFilters(out, 1), 1u);
  delete out;
}

TEST(TapeNode, CopyHoldsTheTapesTwice) {
  BKQTapeNode node("library");
  EXPECT_EQ(node.nodeType(), 24u);
  EXPECT_EQ(node.getDeviceType(), 1);
  EXPECT_EQ(node.getNodeOS(), 6u);
  EXPECT_EQ(node.getOptions(), 0u);
  BKQTape tape("G", "T");
  BKQDirFilter filter;
  EXPECT_EQ(node.addTape(tape), &tape);
  node.addFilter(filter);
  std::unique_ptr<BKQTapeNode> clone(node.clone());
  clone->mycopy(clone.get());
  EXPECT_STREQ(clone->getNodeName(), "library");
  ASSERT_EQ(clone->tapeEntries(), 2u);
  EXPECT_EQ(clone->filterEntries(), 1u);
  BKQTapeCol* tapes = nullptr;
  EXPECT_EQ(clone->enumTapes(tapes, 0), 2u);
  EXPECT_EQ(tapes->at(0), &tape);
  EXPECT_STREQ(static_cast<BKQTape*>(tapes->at(1))->getTapeName(), "T");
  delete tapes->at(1);
  delete tapes;
  clone->resetTapes();
  EXPECT_EQ(clone->enumTapes(tapes, 1), 1u);
  delete tapes;
}

TEST(RestoreNode, ActualNodeTypeSetsTheOS) {
  const struct {
    unsigned int type, os;
  } rows[] = {{2, 7},  {8, 4}, {13, 4}, {9, 8},  {10, 2}, {11, 5},
              {12, 5}, {3, 6}, {20, 6}, {21, 6}, {0, 6},  {4711, 6}};
  for (const auto& row : rows) {
    BKQRestoreNode node;
    node.setNodeOS(99);
    node.setActualNodeType(static_cast<BKQNode::BKQNodeType>(row.type));
    EXPECT_EQ(node.getActualNodeType(), row.type);
    EXPECT_EQ(node.getNodeOS(), row.os) << row.type;
  }
}

TEST(RestoreNode, Attributes) {
  BKQRestoreNode node("name", "disk");
  EXPECT_EQ(node.nodeType(), 25u);
  EXPECT_EQ(node.getNodeOS(), 6u);
  EXPECT_EQ(node.getActualNodeType(), 0u);
  EXPECT_STREQ(node.getDestinationDir(), "");
  EXPECT_STREQ(BKQRestoreNode("name").getDiskName(), "");
  node.setDestinationDir("/tmp");
  node.setDiskName("d");
  node.setActualNodeType(BKQNode::WinNTNode);
  BKQDirFilter filter;
  node.addFilter(filter);
  std::unique_ptr<BKQRestoreNode> clone(node.clone());
  clone->mycopy(clone.get());
  EXPECT_STREQ(clone->getNodeName(), "name");
  EXPECT_STREQ(clone->getDestinationDir(), "/tmp");
  EXPECT_STREQ(clone->getDiskName(), "d");
  EXPECT_EQ(clone->getActualNodeType(), 9u);
  EXPECT_EQ(clone->getNodeOS(), 8u);
  BKQFilterCol* filters = nullptr;
  clone->enumFilters(filters, 0);
  EXPECT_EQ(filters->at(0), &filter);
  delete filters;
}

TEST(DBRestoreNode, CredentialsAndHiddenOptions) {
  BKQDBRestoreNode node("name", "disk");
  EXPECT_EQ(node.nodeType(), 27u);
  EXPECT_EQ(node.getFStype(), 0u);
  EXPECT_EQ(node.getOptions(), 0u);
  EXPECT_STREQ(node.getDiskName(), "disk");
  EXPECT_STREQ(BKQDBRestoreNode("name").getNodeName(), "name");
  node.setDBuser("", "secret");
  RWCollectableString user("old");
  RWCollectableString password("old");
  node.getDBuser(user, password);
  EXPECT_STREQ(user, "");
  EXPECT_STREQ(password, "secret");
  node.setOptions(5);
  static_cast<BKQNode&>(node).setOptions(6);
  EXPECT_EQ(node.getOptions(), 5u);
  EXPECT_EQ(node.BKQNode::getOptions(), 6u);
  node.setFStype(static_cast<BKQDisk::BKQDiskType>(31));
  node.setDBuser("sa", "pw");
  std::unique_ptr<BKQDBRestoreNode> clone(node.clone());
  clone->mycopy(clone.get());
  node.setDBuser("other", "other");
  clone->getDBuser(user, password);
  EXPECT_STREQ(user, "sa");
  EXPECT_STREQ(password, "pw");
  EXPECT_EQ(clone->getOptions(), 5u);
  EXPECT_EQ(clone->BKQNode::getOptions(), 6u);
  EXPECT_EQ(clone->getFStype(), 31u);
}

}  // namespace
}  // namespace bkoq::test
