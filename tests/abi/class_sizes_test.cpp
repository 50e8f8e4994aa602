#include <bkoq/bkoq.h>

namespace bkoq::test {

// The size of each class is part of the contract with the clients that derive from it or hold it.

namespace {

#define EXPECT_SIZE(type, size)                                \
  static_assert(sizeof(type) == (size), #type                  \
                " has changed its size, and clients that were" \
                " compiled before hold it by value or derive"  \
                " from it: take the change back, or give the"  \
                " library a new major version and this row"    \
                " the new size")

constexpr unsigned int kList = 16;
EXPECT_SIZE(RWSlistCollectables, kList);

EXPECT_SIZE(RWCollectable, 4);
EXPECT_SIZE(RWCString, 4);
EXPECT_SIZE(RWCollectableString, 8);
EXPECT_SIZE(RWTime, 4);
EXPECT_SIZE(RWCollectableTime, 8);

EXPECT_SIZE(BKQNodeCol, kList);
EXPECT_SIZE(BKQRestoreNodeCol, kList);
EXPECT_SIZE(BKQTapeNodeCol, kList);
EXPECT_SIZE(BKQFilterCol, kList);
EXPECT_SIZE(BKQStringCol, kList);
EXPECT_SIZE(BKQTapeCol, kList);
EXPECT_SIZE(BKQDiskCol, kList);
EXPECT_SIZE(BKQTapeItemCol, kList);
EXPECT_SIZE(BKQDiskItemCol, kList);
EXPECT_SIZE(BKQJobUnitCol, kList);
EXPECT_SIZE(BKQExceptionDayCol, kList);
EXPECT_SIZE(BKQJob, 204);
EXPECT_SIZE(BKQBackupJob, 252 + 2 * kList);
EXPECT_SIZE(BKQCruiseBackupJob, 252 + 2 * kList);
EXPECT_SIZE(BKQRotationBackupJob, 252 + 2 * kList);
EXPECT_SIZE(BKQCruiseMakeupJob, 252 + 2 * kList);
EXPECT_SIZE(BKQRotationMakeupJob, 252 + 2 * kList);
EXPECT_SIZE(BKQCustomBackupJob, 252 + 2 * kList);
EXPECT_SIZE(BKQDatabaseBackupJob, 252 + 2 * kList);
EXPECT_SIZE(BKQRestoreJob, 228 + 3 * kList);
EXPECT_SIZE(BKQDatabaseRestoreJob, 228 + 3 * kList);
EXPECT_SIZE(BKQVerifyJob, 208 + kList);
EXPECT_SIZE(BKQCompareJob, 212 + kList);
EXPECT_SIZE(BKQMergeJob, 232);
EXPECT_SIZE(BKQScanJob, 228);
EXPECT_SIZE(BKQNode, 92 + kList);
EXPECT_SIZE(BKQDiskNode, 100 + 2 * kList);
EXPECT_SIZE(BKQMacNode, 100 + 2 * kList);
EXPECT_SIZE(BKQWinNTNode, 100 + 2 * kList);
EXPECT_SIZE(BKQOS2Node, 100 + 2 * kList);
EXPECT_SIZE(BKQWin95Node, 100 + 2 * kList);
EXPECT_SIZE(BKQWindowsNode, 100 + 2 * kList);
EXPECT_SIZE(BKQNDSNode, 100 + 2 * kList);
EXPECT_SIZE(BKQFTPNode, 100 + 2 * kList);
EXPECT_SIZE(BKQUnixNode, 104 + 2 * kList);
EXPECT_SIZE(BKQOracleNode, 104 + 2 * kList);
EXPECT_SIZE(BKQInformixNode, 104 + 2 * kList);
EXPECT_SIZE(BKQSnapShotNode, 104 + 2 * kList);
EXPECT_SIZE(BKQNetwareNode, 104 + 3 * kList);
EXPECT_SIZE(BKQSybaseNode, 120 + 5 * kList);
EXPECT_SIZE(BKQTapeNode, 96 + 2 * kList);
EXPECT_SIZE(BKQRestoreNode, 112 + kList);
EXPECT_SIZE(BKQDBRestoreNode, 136 + kList);
EXPECT_SIZE(BKQDisk, 92 + 2 * kList);
EXPECT_SIZE(BKQDiskItem, 24 + kList);
EXPECT_SIZE(BKQTape, 96 + 2 * kList);
EXPECT_SIZE(BKQTapeItem, 28);
EXPECT_SIZE(BKQTapeXtension, 28);
EXPECT_SIZE(BKQGroom, 16 + kList);
EXPECT_SIZE(BKQFilter, 8);
EXPECT_SIZE(BKQDirFilter, 16);
EXPECT_SIZE(BKQFileFilter, 16);
EXPECT_SIZE(BKQVolumeFilter, 16);
EXPECT_SIZE(BKQAttributeFilter, 12);
EXPECT_SIZE(BKQTimeFilter, 16);
EXPECT_SIZE(BKQWithinTimeFilter, 24);
EXPECT_SIZE(BKQBeforeTimeFilter, 24);
EXPECT_SIZE(BKQAfterTimeFilter, 24);
EXPECT_SIZE(BKQBetweenTimeFilter, 32);
EXPECT_SIZE(BKQTime, 12);
EXPECT_SIZE(BKQJobMask, 44 + kList);
EXPECT_SIZE(BKQSchedule, 48);
EXPECT_SIZE(BKQRegularSchedule, 48);
EXPECT_SIZE(BKQCustomSchedule, 60 + 3 * kList);
EXPECT_SIZE(BKQRotationSchedule, 96 + kList);
EXPECT_SIZE(BKQCruiseSchedule, 156 + kList);
EXPECT_SIZE(BKQJobUnit, 40);
EXPECT_SIZE(BKQExceptionDay, 20);
EXPECT_SIZE(BKQFax, 52);
EXPECT_SIZE(BKQPrintQueue, 36);
EXPECT_SIZE(BKQEMail, 28);
EXPECT_SIZE(BKQInternetEMail, 28);
EXPECT_SIZE(BKQMHSEMail, 52);
EXPECT_SIZE(BKQOpenFileInfo, 16);

}  // namespace
}  // namespace bkoq::test
