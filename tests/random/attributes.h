#ifndef BKOQ_TESTS_RANDOM_ATTRIBUTES_H_
#define BKOQ_TESTS_RANDOM_ATTRIBUTES_H_

// The attributes of the catalogue as a plan holds them: each function calls its visitor with the
// attribute's name, what the plan holds, the getter and the setter. A visitor draws, sets or checks
// it. Attributes that random jobs choose by rules of their own are not visited; their plans must
// have them nevertheless.

#include <bkoq/bkoq.h>

#include "tests/catalog/attributes.h"
#include "tests/random/plan.h"

namespace bkoq::test {

#define BKOQ_VISIT(class_, member, getter, setter, ...)                       \
  visit(#class_ "::" #setter, plan.member, getterOf<class_>(&class_::getter), \
        setterOf<class_>(&class_::setter));
#define BKOQ_HOLD(class_, member, ...) static_cast<void>(plan.member);
#define BKOQ_EACH_OF(name, list)                    \
  template <class Plan, class Visitor>              \
  void eachOf##name(Plan& plan, Visitor& visit) {   \
    BKOQ_##list##_ATTRIBUTES(BKOQ_VISIT, BKOQ_HOLD) \
  }

BKOQ_EACH_OF(Job, JOB)
BKOQ_EACH_OF(Backup, BACKUP)
BKOQ_EACH_OF(Restore, RESTORE)
BKOQ_EACH_OF(Merge, MERGE)
BKOQ_EACH_OF(Scan, SCAN)
BKOQ_EACH_OF(Fax, FAX)
BKOQ_EACH_OF(EMail, EMAIL)
BKOQ_EACH_OF(MHSEMail, MHS_EMAIL)
BKOQ_EACH_OF(PrintQueue, PRINT_QUEUE)
BKOQ_EACH_OF(OpenFile, OPEN_FILE)
BKOQ_EACH_OF(Node, NODE)
BKOQ_EACH_OF(UnixNode, UNIX_NODE)
BKOQ_EACH_OF(SybaseNode, SYBASE_NODE)
BKOQ_EACH_OF(OracleNode, ORACLE_NODE)
BKOQ_EACH_OF(InformixNode, INFORMIX_NODE)
BKOQ_EACH_OF(SnapShotNode, SNAPSHOT_NODE)
BKOQ_EACH_OF(RestoreNode, RESTORE_NODE)
BKOQ_EACH_OF(DBRestoreNode, DB_RESTORE_NODE)
BKOQ_EACH_OF(Groom, GROOM)
BKOQ_EACH_OF(Disk, DISK)
BKOQ_EACH_OF(DiskItem, DISK_ITEM)
BKOQ_EACH_OF(Tape, TAPE)
BKOQ_EACH_OF(TapeItem, TAPE_ITEM)
BKOQ_EACH_OF(TapeExtension, TAPE_EXTENSION)
BKOQ_EACH_OF(JobUnit, JOB_UNIT)
BKOQ_EACH_OF(ExceptionDay, EXCEPTION_DAY)
BKOQ_EACH_OF(JobMask, JOB_MASK)
BKOQ_EACH_OF(Schedule, SCHEDULE)
BKOQ_EACH_OF(CustomSchedule, CUSTOM_SCHEDULE)
BKOQ_EACH_OF(RotationSchedule, ROTATION_SCHEDULE)
BKOQ_EACH_OF(CruiseSchedule, CRUISE_SCHEDULE)

#undef BKOQ_EACH_OF
#undef BKOQ_HOLD
#undef BKOQ_VISIT

// Those of the node's own class, beside what every node has.
template <class Node, class Plan, class Visitor>
void eachOwnOfNode(Plan& plan, Visitor& visit) {
  if constexpr (std::is_base_of_v<BKQUnixNode, Node>) eachOfUnixNode(plan, visit);
  if constexpr (std::is_base_of_v<BKQSybaseNode, Node>) eachOfSybaseNode(plan, visit);
  if constexpr (std::is_base_of_v<BKQOracleNode, Node>) eachOfOracleNode(plan, visit);
  if constexpr (std::is_base_of_v<BKQInformixNode, Node>) eachOfInformixNode(plan, visit);
  if constexpr (std::is_base_of_v<BKQSnapShotNode, Node>) eachOfSnapShotNode(plan, visit);
  if constexpr (std::is_base_of_v<BKQRestoreNode, Node>) eachOfRestoreNode(plan, visit);
  if constexpr (std::is_base_of_v<BKQDBRestoreNode, Node>) eachOfDBRestoreNode(plan, visit);
}

// Which attributes were visited, and by whom: an attribute of the catalogue that is left out is
// named at the end of a run.
class Visited {
 public:
  enum Visitor { kDrawn, kSet, kChecked };

  static void note(Visitor visitor, const char* attribute);
  // What is left out, a line each; empty when nothing is.
  static std::string leftOut();
  // Of so many jobs the attributes are noted: more would take time and say nothing new.
  static constexpr unsigned int kJobs = 1000;
  static unsigned int jobs;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_ATTRIBUTES_H_
