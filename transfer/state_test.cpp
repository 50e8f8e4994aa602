// The state variables: what they are, that they are empty at load, and who writes and reads which.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "testing/free_records.h"
#include "testing/layouts.h"
#include "testing/name_list.h"
#include "testing/state_values.h"

namespace {

// Taken before any test runs: the library is loaded then, and nothing is flattened yet.
const StateValues currentAtLoad = stateOf<Current>();
const StateValues previousAtLoad = stateOf<Previous>();

TEST(StateVariables, AreEmptyAtLoad) {
  expectState(currentAtLoad, kEmptyState);
  expectState(previousAtLoad, kEmptyState);
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

  static_assert(std::is_same<decltype(BK6_NEWTAPETIMEOUT), unsigned int>::value, "");
  static_assert(std::is_same<decltype(BK6_DISKSESSIONPW), char*>::value, "");
  static_assert(std::is_same<decltype(BK6_TAPESESSIONPW_OLD), char*>::value, "");
  static_assert(std::is_same<decltype(UNIX_OPTIONS_OLD), unsigned int>::value, "");
  static_assert(sizeof(BK6_NEWTAPETIMEOUT) == 4 && sizeof(BK6_DISKSESSIONPW) == 4, "");
  static_assert(sizeof(DISK_DISKNAME) == 8 && sizeof(DISK_DISKNAME_OLD) == 8, "");
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
  freeNodeContents(record, Media::kDisks);
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
  freeNodeContents(record, Media::kTapes);
  L::tapeSessionPassword() = nullptr;
}

}  // namespace
