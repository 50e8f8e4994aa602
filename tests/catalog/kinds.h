#ifndef BKOQ_TESTS_CATALOG_KINDS_H_
#define BKOQ_TESTS_CATALOG_KINDS_H_

// Every kind of job and of node, once: the unit tests of the classes, random jobs, fuzzing and the
// tests of sizes, slots, copies, images and failures take them from here.

#include <bkoq/bkoq.h>

#include <cstring>
#include <string>
#include <type_traits>
#include <typeinfo>

// X(kind, class, code, word, schedule, family, names)
//   kind      in enumerations and in names of tests
//   code      jobType() and usJobType
//   word      under "kind" in a job file
//   schedule  what its own setSchedule() takes
//   family    which parts and which forms of the conversion it has, see JobFamily
//   names     what its constructors take: a name, none, or either
// clang-format off
#define BKOQ_JOB_KINDS(X) \
  X(Base, BKQJob, 1, "job", BKQSchedule, Plain, Either) \
  X(Backup, BKQBackupJob, 1, "backup", BKQSchedule, Backup, Either) \
  X(CustomBackup, BKQCustomBackupJob, 1, "customBackup", BKQCustomSchedule, Backup, Either) \
  X(CruiseBackup, BKQCruiseBackupJob, 3, "cruiseBackup", BKQCruiseSchedule, Backup, Either) \
  X(CruiseMakeup, BKQCruiseMakeupJob, 5, "cruiseMakeup", BKQCruiseSchedule, Backup, Either) \
  X(RotationBackup, BKQRotationBackupJob, 20, "rotationBackup", BKQRotationSchedule, Backup, Either) \
  X(RotationMakeup, BKQRotationMakeupJob, 21, "rotationMakeup", BKQRotationSchedule, Backup, Either) \
  X(DatabaseBackup, BKQDatabaseBackupJob, 9, "databaseBackup", BKQRegularSchedule, Backup, Name) \
  X(Restore, BKQRestoreJob, 7, "restore", BKQRegularSchedule, Restore, Name) \
  X(DatabaseRestore, BKQDatabaseRestoreJob, 10, "databaseRestore", BKQRegularSchedule, Restore, Name) \
  X(Verify, BKQVerifyJob, 29, "verify", BKQRegularSchedule, Verify, Name) \
  X(Compare, BKQCompareJob, 11, "compare", BKQRegularSchedule, Compare, Name) \
  X(Merge, BKQMergeJob, 8, "merge", BKQRegularSchedule, Merge, None) \
  X(Scan, BKQScanJob, 14, "scan", BKQRegularSchedule, Scan, None)

// X(kind, class, code, os, options, device, family): nodeType(), and what the constructor leaves in
// the system, the options and the device type.
#define BKOQ_NODE_KINDS(X) \
  X(Mac, BKQMacNode, 2, 7, 0x120, 0, Disk) \
  X(Unix, BKQUnixNode, 3, 6, 0x120, 0, Disk) \
  X(Netware, BKQNetwareNode, 8, 4, 0x120, 0, Disk) \
  X(WinNT, BKQWinNTNode, 9, 8, 0x120, 0, Disk) \
  X(OS2, BKQOS2Node, 10, 2, 0x120, 0, Disk) \
  X(Win95, BKQWin95Node, 11, 5, 0x120, 0, Disk) \
  X(Windows, BKQWindowsNode, 12, 5, 0x120, 0, Disk) \
  X(NDS, BKQNDSNode, 13, 4, 0x120, 0, Disk) \
  X(FTP, BKQFTPNode, 20, 6, 0x120, 0, Disk) \
  X(Sybase, BKQSybaseNode, 21, 6, 0x120, 0, Disk) \
  X(Oracle, BKQOracleNode, 22, 6, 0x120, 0, Disk) \
  X(Informix, BKQInformixNode, 23, 6, 0x120, 0, Disk) \
  X(SnapShot, BKQSnapShotNode, 26, 6, 0x120, 0, Disk) \
  X(Tape, BKQTapeNode, 24, 6, 0, 1, Tape) \
  X(Restore, BKQRestoreNode, 25, 6, 0, 0, Restore) \
  X(DBRestore, BKQDBRestoreNode, 27, 6, 0, 0, Restore)
// clang-format on

namespace bkoq::test {

enum class JobFamily { kPlain, kBackup, kRestore, kVerify, kCompare, kMerge, kScan };
enum class JobNames { kEither, kName, kNone };
enum class NodeFamily { kDisk, kTape, kRestore };

#define BKOQ_ENUMERATOR(kind, ...) k##kind,
enum class JobClass { BKOQ_JOB_KINDS(BKOQ_ENUMERATOR) };
enum class NodeClass { BKOQ_NODE_KINDS(BKOQ_ENUMERATOR) };
#undef BKOQ_ENUMERATOR

struct JobKindLine {
  JobClass kind;
  const char* name;       // "CruiseBackup"
  const char* className;  // "BKQCruiseBackupJob"
  unsigned int code;
  const char* word;
  JobFamily family;
  JobNames names;
  BKQJob* (*make)(const char* name);
  BKQJob* (*makeFresh)();
  bool (*makes)(const BKQJob& job);  // whether the job is of this class
};

struct NodeKindLine {
  NodeClass kind;
  const char* name;
  const char* className;
  unsigned int code;
  unsigned int os;
  unsigned int options;
  unsigned int deviceType;
  NodeFamily family;
  BKQNode* (*make)(const char* name);
};

// An object with a name where its class takes one, and one as fresh as its class allows.
template <class Object>
Object* newNamed(const char* name) {
  if constexpr (std::is_constructible_v<Object, const char*>) {
    return new Object(name);
  } else {
    return new Object;
  }
}
template <class Object>
Object* newFresh() {
  if constexpr (std::is_default_constructible_v<Object>) {
    return new Object;
  } else {
    return new Object(static_cast<const char*>(nullptr));
  }
}

constexpr JobKindLine kJobKinds[] = {
#define BKOQ_LINE(kind, class_, code, word, schedule, family, names)   \
  {JobClass::k##kind,                                                  \
   #kind,                                                              \
   #class_,                                                            \
   code,                                                               \
   word,                                                               \
   JobFamily::k##family,                                               \
   JobNames::k##names,                                                 \
   [](const char* name) -> BKQJob* { return newNamed<class_>(name); }, \
   []() -> BKQJob* { return newFresh<class_>(); },                     \
   [](const BKQJob& job) { return typeid(job) == typeid(class_); }},
    BKOQ_JOB_KINDS(BKOQ_LINE)
#undef BKOQ_LINE
};

constexpr NodeKindLine kNodeKinds[] = {
#define BKOQ_LINE(kind, class_, code, os, options, device, family) \
  {NodeClass::k##kind,                                             \
   #kind,                                                          \
   #class_,                                                        \
   code,                                                           \
   os,                                                             \
   options,                                                        \
   device,                                                         \
   NodeFamily::k##family,                                          \
   [](const char* name) -> BKQNode* { return newNamed<class_>(name); }},
    BKOQ_NODE_KINDS(BKOQ_LINE)
#undef BKOQ_LINE
};

constexpr const JobKindLine& lineOf(JobClass kind) {
  return kJobKinds[static_cast<unsigned int>(kind)];
}
constexpr const NodeKindLine& lineOf(NodeClass kind) {
  return kNodeKinds[static_cast<unsigned int>(kind)];
}

// Whether the source nodes of the family's jobs hold tapes; the destinations then hold disks.
constexpr bool readsTapes(JobFamily family) {
  return family != JobFamily::kPlain && family != JobFamily::kBackup;
}

// The family of the kinds that write this number into usJobType.
inline JobFamily familyOfCode(unsigned int code) {
  JobFamily family = JobFamily::kPlain;
  for (const JobKindLine& line : kJobKinds) {
    if (line.code == code && line.family != JobFamily::kPlain) family = line.family;
  }
  return family;
}

// A class as a value.
template <class Object>
struct Type {
  using Of = Object;
};

// Calls `visit(Type<Class>())` for each kind of job of the family.
template <JobFamily wanted, class Visitor>
void eachJobOf(Visitor&& visit) {
#define BKOQ_VISIT(kind, class_, code, word, schedule, family, names) \
  if constexpr (JobFamily::k##family == wanted) visit(Type<class_>());
  BKOQ_JOB_KINDS(BKOQ_VISIT)
#undef BKOQ_VISIT
}

// The machines, which come first.
constexpr unsigned int kDiskNodeKinds = [] {
  unsigned int count = 0;
  while (kNodeKinds[count].family == NodeFamily::kDisk) ++count;
  return count;
}();

// What a constructor leaves in an attribute: what the catalogue's list says, unless the class has
// its own value.
template <class Object>
const char* firstOf(const char* attribute, const char* first) {
  // A machine always gets its name from its maker.
  const bool isName = std::strcmp(attribute, "BKQNode::setNodeName") == 0;
  return isName && !std::is_default_constructible_v<Object> ? "" : first;
}
template <class Object>
unsigned long firstOf(const char* attribute, int first) {
  const auto is = [&](const char* name) { return std::strcmp(attribute, name) == 0; };
  if (std::is_base_of_v<BKQRestoreJob, Object> && is("BKQJob::setOptions")) return 0x6200000;
#define BKOQ_OWN(kind, class_, code, os, options, device, family) \
  if (std::is_base_of_v<class_, Object>) {                        \
    if (is("BKQNode::setNodeOS")) return os;                      \
    if (is("BKQNode::setOptions")) return options;                \
    if (is("BKQNode::setDeviceType")) return device;              \
  }
  BKOQ_NODE_KINDS(BKOQ_OWN)
#undef BKOQ_OWN
  return static_cast<unsigned long>(first);
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_CATALOG_KINDS_H_
