#include <bkoq/bkoq.h>

#include <type_traits>

namespace bkoq::test {

// Objects that hold others by address are copied by clone() and mycopy() alone: a constructor or an
// assignment would leave two owners of one object.

namespace {

template <class... Classes>
constexpr bool kNotCopyable = ((!std::is_copy_constructible<Classes>::value &&
                                !std::is_move_constructible<Classes>::value &&
                                !std::is_copy_assignable<Classes>::value &&
                                !std::is_move_assignable<Classes>::value) &&
                               ...);

static_assert(
    kNotCopyable<BKQJob, BKQBackupJob, BKQCruiseBackupJob, BKQRotationBackupJob, BKQCruiseMakeupJob,
                 BKQRotationMakeupJob, BKQCustomBackupJob, BKQDatabaseBackupJob, BKQRestoreJob,
                 BKQDatabaseRestoreJob, BKQVerifyJob, BKQCompareJob, BKQMergeJob, BKQScanJob>,
    "");
static_assert(
    kNotCopyable<BKQMacNode, BKQUnixNode, BKQNetwareNode, BKQWinNTNode, BKQOS2Node, BKQWin95Node,
                 BKQWindowsNode, BKQNDSNode, BKQFTPNode, BKQSybaseNode, BKQOracleNode,
                 BKQInformixNode, BKQSnapShotNode, BKQTapeNode, BKQRestoreNode, BKQDBRestoreNode>,
    "");
static_assert(kNotCopyable<BKQDisk, BKQDiskItem, BKQTape>, "");
static_assert(kNotCopyable<BKQRotationSchedule, BKQCruiseSchedule, BKQJobMask>, "");
static_assert(kNotCopyable<BKQGroom>, "");

// Abstract classes are never constructible, but a class of a client's that adds nothing is.
class ForeignNode : public BKQNode {
 public:
  unsigned int nodeType() const override { return 1; }
};
class ForeignDiskNode : public BKQDiskNode {
 public:
  unsigned int nodeType() const override { return 1; }
};
static_assert(kNotCopyable<ForeignNode, ForeignDiskNode>, "");

}  // namespace
}  // namespace bkoq::test
