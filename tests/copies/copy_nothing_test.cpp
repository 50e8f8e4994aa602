// A copy from a null pointer, or of an object onto itself, leaves every object as it is.

#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <cstring>
#include <typeinfo>
#include <vector>

namespace bkoq::test {
namespace {

template <class Object>
std::vector<char> bytesOf(const Object& object) {
  std::vector<char> bytes(sizeof object);
  std::memcpy(bytes.data(), static_cast<const void*>(&object), bytes.size());
  return bytes;
}

// A text would get a new block if it was copied.
template <class Object>
void expectUnchanged(Object&& object) {
  SCOPED_TRACE(typeid(object).name());
  const std::vector<char> before = bytesOf(object);
  object.mycopy(static_cast<Object*>(nullptr));
  EXPECT_EQ(bytesOf(object), before);
  object.mycopy(&object);
  EXPECT_EQ(bytesOf(object), before);
}

template <class... Objects>
void expectUnchangedWithName() {
  (expectUnchanged(Objects("n")), ...);
}

template <class... Objects>
void expectUnchangedAsMade() {
  (expectUnchanged(Objects()), ...);
}

TEST(CopyOfNothing, ChangesNoJob) {
  expectUnchangedWithName<BKQJob, BKQBackupJob, BKQCruiseBackupJob, BKQRotationBackupJob,
                          BKQCruiseMakeupJob, BKQRotationMakeupJob, BKQCustomBackupJob,
                          BKQDatabaseBackupJob, BKQRestoreJob, BKQDatabaseRestoreJob, BKQVerifyJob,
                          BKQCompareJob>();
  expectUnchangedAsMade<BKQMergeJob, BKQScanJob>();
}

TEST(CopyOfNothing, ChangesNoNode) {
  expectUnchangedWithName<BKQMacNode, BKQUnixNode, BKQNetwareNode, BKQWinNTNode, BKQOS2Node,
                          BKQWin95Node, BKQWindowsNode, BKQNDSNode, BKQFTPNode, BKQSybaseNode,
                          BKQOracleNode, BKQInformixNode, BKQSnapShotNode, BKQTapeNode,
                          BKQRestoreNode, BKQDBRestoreNode>();
}

TEST(CopyOfNothing, ChangesNoMedium) {
  expectUnchangedAsMade<BKQDisk, BKQTape, BKQTapeItem, BKQGroom>();
  expectUnchangedWithName<BKQDiskItem>();
}

TEST(CopyOfNothing, ChangesNoFilter) {
  expectUnchangedAsMade<BKQDirFilter, BKQFileFilter, BKQVolumeFilter, BKQAttributeFilter,
                        BKQWithinTimeFilter, BKQBeforeTimeFilter, BKQAfterTimeFilter,
                        BKQBetweenTimeFilter>();
}

TEST(CopyOfNothing, ChangesNoSchedule) {
  expectUnchangedAsMade<BKQRegularSchedule, BKQCustomSchedule, BKQRotationSchedule,
                        BKQCruiseSchedule, BKQTime, BKQJobMask, BKQJobUnit, BKQExceptionDay>();
}

TEST(CopyOfNothing, ChangesNoNotification) {
  expectUnchangedAsMade<BKQFax, BKQPrintQueue, BKQInternetEMail, BKQMHSEMail, BKQOpenFileInfo>();
}

}  // namespace
}  // namespace bkoq::test
