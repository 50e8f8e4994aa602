#include <bkoq/bkoq.h>

// The size of each class is part of the contract with the clients that derive from it or hold it:
// a change here needs a new major version of the library.

namespace {

constexpr unsigned int kList = sizeof(RWSlistCollectables);

static_assert(sizeof(RWCollectable) == 4, "");
static_assert(sizeof(RWCString) == 4, "");
static_assert(sizeof(RWCollectableString) == 8, "");
static_assert(sizeof(RWTime) == 4, "");
static_assert(sizeof(RWCollectableTime) == 8, "");

static_assert(sizeof(BKQNodeCol) == kList, "");
static_assert(sizeof(BKQRestoreNodeCol) == kList, "");
static_assert(sizeof(BKQTapeNodeCol) == kList, "");
static_assert(sizeof(BKQFilterCol) == kList, "");
static_assert(sizeof(BKQStringCol) == kList, "");
static_assert(sizeof(BKQTapeCol) == kList, "");
static_assert(sizeof(BKQDiskCol) == kList, "");
static_assert(sizeof(BKQTapeItemCol) == kList, "");
static_assert(sizeof(BKQDiskItemCol) == kList, "");
static_assert(sizeof(BKQJobUnitCol) == kList, "");
static_assert(sizeof(BKQExceptionDayCol) == kList, "");
static_assert(sizeof(BKQJob) == 204, "");
static_assert(sizeof(BKQBackupJob) == 252 + 2 * kList, "");
static_assert(sizeof(BKQCruiseBackupJob) == 252 + 2 * kList, "");
static_assert(sizeof(BKQRotationBackupJob) == 252 + 2 * kList, "");
static_assert(sizeof(BKQCruiseMakeupJob) == 252 + 2 * kList, "");
static_assert(sizeof(BKQRotationMakeupJob) == 252 + 2 * kList, "");
static_assert(sizeof(BKQCustomBackupJob) == 252 + 2 * kList, "");
static_assert(sizeof(BKQDatabaseBackupJob) == 252 + 2 * kList, "");
static_assert(sizeof(BKQRestoreJob) == 228 + 3 * kList, "");
static_assert(sizeof(BKQDatabaseRestoreJob) == 228 + 3 * kList, "");
static_assert(sizeof(BKQVerifyJob) == 208 + kList, "");
static_assert(sizeof(BKQCompareJob) == 212 + kList, "");
static_assert(sizeof(BKQMergeJob) == 232, "");
static_assert(sizeof(BKQScanJob) == 228, "");
static_assert(sizeof(BKQNode) == 92 + kList, "");
static_assert(sizeof(BKQDiskNode) == 100 + 2 * kList, "");
static_assert(sizeof(BKQMacNode) == 100 + 2 * kList, "");
static_assert(sizeof(BKQWinNTNode) == 100 + 2 * kList, "");
static_assert(sizeof(BKQOS2Node) == 100 + 2 * kList, "");
static_assert(sizeof(BKQWin95Node) == 100 + 2 * kList, "");
static_assert(sizeof(BKQWindowsNode) == 100 + 2 * kList, "");
static_assert(sizeof(BKQNDSNode) == 100 + 2 * kList, "");
static_assert(sizeof(BKQFTPNode) == 100 + 2 * kList, "");
static_assert(sizeof(BKQUnixNode) == 104 + 2 * kList, "");
static_assert(sizeof(BKQOracleNode) == 104 + 2 * kList, "");
static_assert(sizeof(BKQInformixNode) == 104 + 2 * kList, "");
static_assert(sizeof(BKQSnapShotNode) == 104 + 2 * kList, "");
static_assert(sizeof(BKQNetwareNode) == 104 + 3 * kList, "");
static_assert(sizeof(BKQSybaseNode) == 120 + 5 * kList, "");
static_assert(sizeof(BKQTapeNode) == 96 + 2 * kList, "");
static_assert(sizeof(BKQRestoreNode) == 112 + kList, "");
static_assert(sizeof(BKQDBRestoreNode) == 136 + kList, "");
static_assert(sizeof(BKQDisk) == 92 + 2 * kList, "");
static_assert(sizeof(BKQDiskItem) == 24 + kList, "");
static_assert(sizeof(BKQTape) == 96 + 2 * kList, "");
static_assert(sizeof(BKQTapeItem) == 28, "");
static_assert(sizeof(BKQTapeXtension) == 28, "");
static_assert(sizeof(BKQGroom) == 16 + kList, "");
static_assert(sizeof(BKQFilter) == 8, "");
static_assert(sizeof(BKQDirFilter) == 16, "");
static_assert(sizeof(BKQFileFilter) == 16, "");
static_assert(sizeof(BKQVolumeFilter) == 16, "");
static_assert(sizeof(BKQAttributeFilter) == 12, "");
static_assert(sizeof(BKQTimeFilter) == 16, "");
static_assert(sizeof(BKQWithinTimeFilter) == 24, "");
static_assert(sizeof(BKQBeforeTimeFilter) == 24, "");
static_assert(sizeof(BKQAfterTimeFilter) == 24, "");
static_assert(sizeof(BKQBetweenTimeFilter) == 32, "");
static_assert(sizeof(BKQTime) == 12, "");
static_assert(sizeof(BKQJobMask) == 44 + kList, "");
static_assert(sizeof(BKQSchedule) == 48, "");
static_assert(sizeof(BKQRegularSchedule) == 48, "");
static_assert(sizeof(BKQCustomSchedule) == 60 + 3 * kList, "");
static_assert(sizeof(BKQRotationSchedule) == 96 + kList, "");
static_assert(sizeof(BKQCruiseSchedule) == 156 + kList, "");
static_assert(sizeof(BKQJobUnit) == 40, "");
static_assert(sizeof(BKQExceptionDay) == 20, "");
static_assert(sizeof(BKQFax) == 52, "");
static_assert(sizeof(BKQPrintQueue) == 36, "");
static_assert(sizeof(BKQEMail) == 28, "");
static_assert(sizeof(BKQInternetEMail) == 28, "");
static_assert(sizeof(BKQMHSEMail) == 52, "");
static_assert(sizeof(BKQOpenFileInfo) == 16, "");

}  // namespace
