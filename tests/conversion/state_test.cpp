// The state variables: what they are, that they are empty at load, and who writes and reads which.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/free_records.h"
#include "tests/support/heap.h"
#include "tests/support/name_list.h"
#include "tests/support/state_values.h"
#include "tests/support/stderr_capture.h"

namespace bkoq::test {
namespace {

// Taken before any test runs: the library is loaded then, and nothing is flattened yet.
const StateValues kCurrentAtLoad = stateOf<CurrentLayout>();
const StateValues kPreviousAtLoad = stateOf<PreviousLayout>();

TEST(StateVariables, AreEmptyAtLoad) {
  expectState(kCurrentAtLoad, kEmptyState);
  expectState(kPreviousAtLoad, kEmptyState);
}

TEST(StateVariables, AreWordsPointersAndOneTextOfEightBytes) {
  const void* const variables[] = {
      &BK6_NEWTAPETIMEOUT,     &BK6_SPANTAPETIMEOUT,
      &BK6_NEWTAPEMETHOD,      &BK6_SPANTAPEMETHOD,
      &BK6_DISKSESSIONPW,      &BK6_TAPESESSIONPW,
      &DISK_ENCRYPTION,        &DISK_COMPRESSION,
      &NODE_NOESTIMATE,        &CURRENT_NODETYPE,
      &UNIX_OPTIONS,           &DISK_DISKNAME,
      &BK6_NEWTAPETIMEOUT_OLD, &BK6_SPANTAPETIMEOUT_OLD,
      &BK6_NEWTAPEMETHOD_OLD,  &BK6_SPANTAPEMETHOD_OLD,
      &BK6_DISKSESSIONPW_OLD,  &BK6_TAPESESSIONPW_OLD,
      &DISK_ENCRYPTION_OLD,    &DISK_COMPRESSION_OLD,
      &NODE_NOESTIMATE_OLD,    &CURRENT_NODETYPE_OLD,
      &UNIX_OPTIONS_OLD,       &DISK_DISKNAME_OLD,
  };
  EXPECT_EQ(std::set<const void*>(std::begin(variables), std::end(variables)).size(), 24u);

#define EXPECT_KEPT(condition) \
  static_assert(condition, "clients read and write this variable as it was: its type is fixed")
  EXPECT_KEPT((std::is_same<decltype(BK6_NEWTAPETIMEOUT), unsigned int>::value));
  EXPECT_KEPT((std::is_same<decltype(BK6_DISKSESSIONPW), char*>::value));
  EXPECT_KEPT((std::is_same<decltype(BK6_TAPESESSIONPW_OLD), char*>::value));
  EXPECT_KEPT((std::is_same<decltype(UNIX_OPTIONS_OLD), unsigned int>::value));
  EXPECT_KEPT((sizeof(BK6_NEWTAPETIMEOUT) == 4 && sizeof(BK6_DISKSESSIONPW) == 4));
  EXPECT_KEPT((sizeof(DISK_DISKNAME) == 8 && sizeof(DISK_DISKNAME_OLD) == 8));
}

// A client may hand in what the last flattening left in the variables; it changes on the way.
template <class L>
class TextsInTheDiskName : public testing::Test {
 protected:
  TextsInTheDiskName() {
    L::diskName() = kLong;
    for (const char* name : {"first", "second"}) {
      disks_.emplace_back(new BKQDisk);
      disks_.back()->setDiskName(name);
      disks_.back()->addDiskItem(item_);
    }
  }
  ~TextsInTheDiskName() override { L::diskName() = ""; }

  template <class Node>
  Node& addDisks(Node& node) {
    for (auto& disk : disks_) node.addDisk(*disk);
    return node;
  }
  static std::string pathOf(const typename L::Node& node, unsigned int disk) {
    return static_cast<typename L::Disk*>(node.pMedia)[disk].pDiskItems[0].pszPath;
  }

  static constexpr const char* kLong = "x, a name that is longer than those of the disks";
  BKQDiskItem item_{"item"};
  std::vector<std::unique_ptr<BKQDisk>> disks_;
};
TYPED_TEST_SUITE(TextsInTheDiskName, Layouts, );

TYPED_TEST(TextsInTheDiskName, OverrideADisk) {
  typename TypeParam::Node node{};
  node.ulMediaCount = 1;
  node.pMedia = calloc(1, sizeof(typename TypeParam::Disk));
  ASSERT_EQ(TypeParam::convert(*this->disks_[0], node.pMedia, TypeParam::diskName().data()), 1);
  EXPECT_EQ(this->pathOf(node, 0), this->kLong);
  freeNodeContents(node, NodeFamily::kDisk);
}

TYPED_TEST(TextsInTheDiskName, OverrideEveryDiskOfANode) {
  BKQMacNode node("n");
  typename TypeParam::Node record{};
  void* rec = &record;
  ASSERT_EQ(TypeParam::convert(this->addDisks(node), rec, TypeParam::diskName().data()), 1);
  EXPECT_EQ(this->pathOf(record, 0), this->kLong);
  EXPECT_EQ(this->pathOf(record, 1), this->kLong);
  freeNodeContents(record, NodeFamily::kDisk);
}

TYPED_TEST(TextsInTheDiskName, OverrideEveryDiskOfAComparison) {
  BKQCompareJob job("n");
  job.setDestination(this->addDisks(*new BKQMacNode("n")));
  void* out = nullptr;
  ASSERT_EQ(TypeParam::convert(job, out, TypeParam::diskName().data()), 1);
  auto* record = static_cast<typename TypeParam::Job*>(out);
  EXPECT_EQ(this->pathOf(record->pDestNodes[0], 1), this->kLong);
  freeJobRecord(record);
}

TYPED_TEST(TextsInTheDiskName, NameTheDisksOfANode) {
  this->disks_[1]->setDiskName(this->kLong);
  this->disks_[0]->setDiskName(this->kLong);
  BKQMacNode node("n");
  RWSlistCollectables names;
  names.insert(&TypeParam::diskName());
  typename TypeParam::Node record{};
  void* rec = &record;
  ASSERT_EQ(TypeParam::convert(this->addDisks(node), rec, names), 1);
  EXPECT_EQ(record.ulMediaCount, 2u);
  freeNodeContents(record, NodeFamily::kDisk);
}

TYPED_TEST(TextsInTheDiskName, NameTheNodesOfABackupAndFollowTheirTexts) {
  BKQUnixNode first(this->kLong);
  BKQUnixNode second(this->kLong);
  BKQBackupJob job;
  job.addSourceNode(this->addDisks(first));
  job.addSourceNode(this->addDisks(second));
  const char* text = TypeParam::diskName().data();
  void* out = nullptr;
  ASSERT_EQ(TypeParam::convert(job, out, text, 1, text), 1);
  auto* record = static_cast<typename TypeParam::Job*>(out);
  ASSERT_EQ(record->ulNumSourceNodes, 2u);
  EXPECT_STREQ(record->pSourceNodes[1].pszNodeOSVer + 1, this->kLong);
  freeJobRecord(record);
}

// Whatever memory runs out on the way: a name that was lost would stand for all nodes.
TYPED_TEST(TextsInTheDiskName, NameOneNodeInScarceMemory) {
  if (!kSeesAllocations) GTEST_SKIP() << "allocations are not seen with this heap";
  BKQUnixNode wanted(this->kLong);
  BKQUnixNode other("other");
  BKQBackupJob job;
  job.addSourceNode(wanted);
  job.addSourceNode(other);
  unsigned int allocations = 0;
  for (unsigned int failing = 0; failing <= allocations; ++failing) {
    void* out = nullptr;
    standardErrorOf([&] {
      const HeapWatch heap(failing);
      TypeParam::convert(job, out, TypeParam::diskName().data());
      if (failing == 0) allocations = heap.allocations();
    });
    if (out == nullptr) continue;
    auto* record = static_cast<typename TypeParam::Job*>(out);
    EXPECT_EQ(record->ulNumSourceNodes, 1u) << failing;
    freeJobRecord(record);
  }
  EXPECT_GE(allocations, 3u);
}

template <class L>
class StateOfAFlattening : public testing::Test {
 protected:
  ~StateOfAFlattening() override { freeSessionPasswords(); }

  template <class Job>
  void flatten(Job& job) {
    freeSessionPasswords();
    void* out = nullptr;
    EXPECT_EQ(L::convert(job, out), 1);
    freeJobRecord(static_cast<typename L::Job*>(out));
  }

  // Nothing is to be left in the variables of the other layout.
  void TearDown() override { expectState(stateOf<OtherLayout<L>>(), kEmptyState); }
};

TYPED_TEST_SUITE(StateOfAFlattening, Layouts, );

TYPED_TEST(StateOfAFlattening, GoesFromJobToJob) {
  using L = TypeParam;
  BKQDisk disk;
  disk.setDiskName("/usr");
  BKQUnixNode node("n");
  node.setUnixOptions(0x10);
  node.addDisk(disk);

  BKQBackupJob backup;
  backup.addSourceNode(node);
  backup.setNewTapeTimeout(1);
  backup.setSpanTapeTimeout(2);
  backup.setTapeMethod(static_cast<BKQBackupJob::BKQTapeMethodType>(3));
  backup.setSpanMethod(static_cast<BKQBackupJob::BKQSpanMethodType>(4));
  backup.setSessionPassword("secret");
  backup.setEncryptionOn();
  backup.setCompressionOn();
  backup.setOptions(0x00100000);
  this->flatten(backup);
  const StateValues afterBackup = {1, 2, 3, 4, "secret", nullptr, 1, 1, 1, 3, 0x10, "/usr"};
  expectState(stateOf<L>(), afterBackup);

  // What nodes and disks left stays until other ones overwrite it.
  BKQRestoreJob restore("r");
  restore.setSessionPassword("tapes");
  this->flatten(restore);
  const StateValues afterRestore = {5, 9999, 0, 0, nullptr, "tapes", 0, 0, 0, 3, 0x10, "/usr"};
  expectState(stateOf<L>(), afterRestore);

  BKQTapeNode tapes("t");
  restore.addSourceNode(tapes);
  BKQRestoreNode machine("m", "C:");
  machine.setActualNodeType(BKQNode::WinNTNode);
  restore.addDestNode(machine);
  restore.setSessionPassword("");
  this->flatten(restore);
  const StateValues afterDestination = {5, 9999, 0, 0, nullptr, nullptr, 0, 0, 0, 9, 0x10, "/usr"};
  expectState(stateOf<L>(), afterDestination);

  // Jobs of the other kinds decide what the base job decides.
  BKQVerifyJob verify("v");
  verify.addSourceNode(tapes);
  this->flatten(verify);
  const StateValues afterVerify = {5, 9999, 0, 0, nullptr, nullptr, 0, 0, 0, 3, 0x10, "/usr"};
  expectState(stateOf<L>(), afterVerify);
}

TYPED_TEST(StateOfAFlattening, IsTakenFromTheClientWhenANodeIsConvertedAlone) {
  using L = TypeParam;
  char password[] = "secret";
  L::diskSessionPassword() = password;
  L::diskEncryption() = 1;
  L::diskCompression() = 1;
  L::nodeNoEstimate() = 1;
  L::unixOptions() = 0x20;
  BKQDisk disk;
  disk.setDiskName("/usr");
  BKQUnixNode node("n");
  node.addDisk(disk);
  typename L::Node record{};
  void* rec = &record;
  NameList allDisks{};
  ASSERT_EQ(L::convert(node, rec, allDisks), 1);
  const auto* disks = static_cast<const typename L::Disk*>(record.pMedia);
  EXPECT_EQ(record.ulNodeOptions, 0x160u);
  EXPECT_EQ(disks[0].ulOptions, 0x6020u);
  EXPECT_STREQ(disks[0].pszPassword, "secret");
  freeNodeContents(record, NodeFamily::kDisk);
  L::diskSessionPassword() = nullptr;
}

TYPED_TEST(StateOfAFlattening, TapeVariablesAreTakenFromTheClientToo) {
  using L = TypeParam;
  char password[] = "secret";
  L::tapeSessionPassword() = password;
  L::newTapeTimeout() = 0x10001;
  L::spanTapeTimeout() = 0x10002;
  L::newTapeMethod() = 0x10003;
  L::spanTapeMethod() = 0x10004;
  BKQTape tape("group", "name");
  BKQTapeNode node("n");
  node.addTape(tape);
  typename L::Node record{};
  void* rec = &record;
  ASSERT_EQ(L::convert(node, rec), 1);
  const auto* tapes = static_cast<const typename L::Tape*>(record.pMedia);
  EXPECT_STREQ(tapes[0].pszSessionPW, "secret");
  EXPECT_EQ(tapes[0].usNewTapeTimeout, 1);
  EXPECT_EQ(tapes[0].usSpanTapeTimeout, 2);
  EXPECT_EQ(tapes[0].usNewTapeMethod, 3);
  EXPECT_EQ(tapes[0].usSpanTapeMethod, 4);
  freeNodeContents(record, NodeFamily::kTape);
  L::tapeSessionPassword() = nullptr;
}

}  // namespace
}  // namespace bkoq::test
