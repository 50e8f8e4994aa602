#ifndef BKOQ_TESTS_CATALOG_CLASSES_H_
#define BKOQ_TESTS_CATALOG_CLASSES_H_

// Every class of the library, once: the tests of copies and attributes take them from
// here.

#include <bkoq/bkoq.h>

#include <string>
#include <type_traits>

#include "tests/catalog/kinds.h"

// X(class, sort, copies, model, steps)
// - sort: Concrete, Abstract, or List: a collection
// - copies: Value, or Alone: it holds objects by address, and only clone() and mycopy() copy it
// - model: the file of its mycopy(); empty when it has none
// - steps: the file of its step of the conversion; empty when it reaches no record
// clang-format off
#define BKOQ_CLASSES(X) \
  X(BKQNodeCol, List, Value, "", "") \
  X(BKQRestoreNodeCol, List, Value, "", "") \
  X(BKQTapeNodeCol, List, Value, "", "") \
  X(BKQFilterCol, List, Value, "", "") \
  X(BKQStringCol, List, Value, "", "") \
  X(BKQTapeCol, List, Value, "", "") \
  X(BKQDiskCol, List, Value, "", "") \
  X(BKQTapeItemCol, List, Value, "", "") \
  X(BKQDiskItemCol, List, Value, "", "") \
  X(BKQJobUnitCol, List, Value, "", "") \
  X(BKQExceptionDayCol, List, Value, "", "") \
  X(BKQJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQBackupJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQCruiseBackupJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQRotationBackupJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQCruiseMakeupJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQRotationMakeupJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQCustomBackupJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQDatabaseBackupJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQRestoreJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQDatabaseRestoreJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQVerifyJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQCompareJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQMergeJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQScanJob, Concrete, Alone, "model/job.cpp", "transfer/job_steps.h") \
  X(BKQNode, Abstract, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQDiskNode, Abstract, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQMacNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQWinNTNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQOS2Node, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQWin95Node, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQWindowsNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQNDSNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQFTPNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQUnixNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQOracleNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQInformixNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQSnapShotNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQNetwareNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQSybaseNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQTapeNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQRestoreNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQDBRestoreNode, Concrete, Alone, "model/node.cpp", "transfer/node_steps.h") \
  X(BKQDisk, Concrete, Alone, "model/disk.cpp", "transfer/disk_steps.h") \
  X(BKQDiskItem, Concrete, Alone, "model/disk.cpp", "transfer/disk_steps.h") \
  X(BKQTape, Concrete, Alone, "model/tape.cpp", "transfer/tape_steps.h") \
  X(BKQTapeItem, Concrete, Value, "model/tape.cpp", "transfer/tape_steps.h") \
  X(BKQTapeXtension, Concrete, Value, "", "transfer/tape_steps.h") \
  X(BKQGroom, Concrete, Alone, "model/groom.cpp", "") \
  X(BKQFilter, Abstract, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQDirFilter, Concrete, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQFileFilter, Concrete, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQVolumeFilter, Concrete, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQAttributeFilter, Concrete, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQTimeFilter, Abstract, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQWithinTimeFilter, Concrete, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQBeforeTimeFilter, Concrete, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQAfterTimeFilter, Concrete, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQBetweenTimeFilter, Concrete, Value, "model/filter.cpp", "transfer/filter_steps.h") \
  X(BKQTime, Concrete, Value, "model/sched.cpp", "") \
  X(BKQJobMask, Concrete, Alone, "model/sched.cpp", "transfer/sched_steps.h") \
  X(BKQSchedule, Abstract, Value, "model/sched.cpp", "transfer/sched_steps.h") \
  X(BKQRegularSchedule, Concrete, Value, "model/sched.cpp", "transfer/sched_steps.h") \
  X(BKQCustomSchedule, Concrete, Value, "model/sched.cpp", "transfer/sched_steps.h") \
  X(BKQRotationSchedule, Concrete, Alone, "model/cruise.cpp", "transfer/sched_steps.h") \
  X(BKQCruiseSchedule, Concrete, Alone, "model/cruise.cpp", "transfer/sched_steps.h") \
  X(BKQJobUnit, Concrete, Value, "model/cruise.cpp", "transfer/sched_steps.h") \
  X(BKQExceptionDay, Concrete, Value, "model/cruise.cpp", "") \
  X(BKQFax, Concrete, Value, "model/fax.cpp", "transfer/notify_steps.h") \
  X(BKQPrintQueue, Concrete, Value, "model/print.cpp", "transfer/notify_steps.h") \
  X(BKQEMail, Abstract, Value, "model/email.cpp", "transfer/notify_steps.h") \
  X(BKQInternetEMail, Concrete, Value, "model/email.cpp", "transfer/notify_steps.h") \
  X(BKQMHSEMail, Concrete, Value, "model/email.cpp", "transfer/notify_steps.h") \
  X(BKQOpenFileInfo, Concrete, Value, "model/ofile.cpp", "transfer/notify_steps.h")
// clang-format on

namespace bkoq::test {

enum class ClassSort { kConcrete, kAbstract, kList };

struct ClassLine {
  const char* name;
  ClassSort sort;
  const char* model;
  const char* steps;
};

constexpr ClassLine kClasses[] = {
#define BKOQ_LINE(class_, sort, copies, model, steps) {#class_, ClassSort::k##sort, model, steps},
    BKOQ_CLASSES(BKOQ_LINE)
#undef BKOQ_LINE
};

inline const ClassLine* findClass(const std::string& name) {
  for (const ClassLine& line : kClasses) {
    if (name == line.name) return &line;
  }
  return nullptr;
}

template <class Object>
const char* nameOfClass() {
#define BKOQ_NAME(class_, ...) \
  if (std::is_same_v<Object, class_>) return #class_;
  BKOQ_CLASSES(BKOQ_NAME)
#undef BKOQ_NAME
  return "a class that is not in tests/catalog/classes.h";
}

// Calls `visit(Type<Class>())` for each class whose objects can be made.
template <class Visitor>
void eachConcreteClass(Visitor&& visit) {
#define BKOQ_VISIT(class_, sort, copies, model, steps) \
  if constexpr (ClassSort::k##sort == ClassSort::kConcrete) visit(Type<class_>());
  BKOQ_CLASSES(BKOQ_VISIT)
#undef BKOQ_VISIT
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_CATALOG_CLASSES_H_
