#ifndef BKOQ_TESTS_RANDOM_PLAN_H_
#define BKOQ_TESTS_RANDOM_PLAN_H_

// A job as plain data: what a client will tell the library, drawn before any object of the library
// exists. The plan is applied to the public classes, and what the records must be is computed from
// it. Parts are shared between plans exactly as a copy shares objects with its source.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tests/catalog/attributes.h"
#include "tests/catalog/kinds.h"
#include "tests/catalog/layouts.h"

namespace bkoq::test {

// A value that a setter gives, or the one that the constructor leaves.
template <class Value>
struct Attribute {
  Attribute() = default;
  Attribute(Value first) : value(first) {}  // NOLINT: a first value reads as such
  operator const Value&() const { return value; }

  Value value{};
  bool isSet = false;
};

// The members of a plan for the attributes of one list of the catalogue.
#define BKOQ_MEMBER(class_, member, getter, setter, value, first, ...) \
  Attribute<value> member{first};
#define BKOQ_MEMBERS(list) BKOQ_##list##_ATTRIBUTES(BKOQ_MEMBER, BKOQ_NO_ATTRIBUTE)

template <class Plan>
using List = std::vector<std::shared_ptr<Plan>>;

enum class FilterClass {
  kDir,
  kFile,
  kVolume,
  kAttribute,
  kWithin,
  kBefore,
  kAfter,
  kBetween,
  kForeignTime,  // a client's own, which converts as its base class does
  kFailing       // a client's own, whose conversions fail
};
constexpr unsigned int kFilterClasses = 9;  // without those that fail

struct FilterPlan {
  FilterClass filterClass = FilterClass::kDir;
  unsigned int constructor = 0;  // how many of the class's values its constructor takes: 0, 1, all
  Attribute<std::uint32_t> kind;
  Text pattern;
  std::uint32_t attributes = 0;
  std::uint32_t storedRange = 0;
  std::uint32_t timeAttribute = 0;
  std::uint16_t units = 0;
  std::uint32_t unitType = 0;
  std::uint32_t time = 0;  // seconds since 1901, as the other times
  std::uint32_t endTime = 0;
};

struct DiskItemPlan {
  BKOQ_MEMBERS(DISK_ITEM)
  Text path;
  bool pathByConstructor = false;
  Attribute<std::uint32_t> optionsBeforeFiles;
  std::vector<Text> files;
  Attribute<std::uint32_t> optionsAfterFiles;
};

struct DiskPlan {
  BKOQ_MEMBERS(DISK)
  bool typeByConstructor = false;
  Attribute<std::uint32_t> type;
  List<DiskItemPlan> items;
  List<FilterPlan> filters;
};

struct TapeItemPlan {
  BKOQ_MEMBERS(TAPE_ITEM)
  bool byConstructor = false;  // chunk number and offset
  Attribute<std::uint32_t> chunkNumber;
  Attribute<std::uint32_t> chunkOffset;  // 16 bits of it are kept
};

struct TapeExtensionPlan {
  BKOQ_MEMBERS(TAPE_EXTENSION)
  bool timeByConstructor = false;
  Attribute<std::int32_t> sessionEndTime;
};

enum class ExtensionBy { kNothing, kSetter, kGetter };

struct TapePlan {
  BKOQ_MEMBERS(TAPE)
  bool byConstructor = false;  // device group and name
  Attribute<Text> name;
  Attribute<Text> deviceGroup;
  Attribute<std::uint32_t> optionsBeforeExtension;
  ExtensionBy extensionBy = ExtensionBy::kNothing;
  std::shared_ptr<TapeExtensionPlan> extension;  // what is set; used when there is one
  Attribute<std::uint32_t> optionsAfterExtension;
  List<TapeItemPlan> items;
  List<FilterPlan> filters;
};

struct GroomPlan {
  BKOQ_MEMBERS(GROOM)
  List<FilterPlan> filters;
};

struct NodePlan {
  BKOQ_MEMBERS(NODE)
  BKOQ_MEMBERS(UNIX_NODE)
  BKOQ_MEMBERS(SYBASE_NODE)
  BKOQ_MEMBERS(ORACLE_NODE)
  BKOQ_MEMBERS(INFORMIX_NODE)
  BKOQ_MEMBERS(SNAPSHOT_NODE)
  BKOQ_MEMBERS(RESTORE_NODE)
  BKOQ_MEMBERS(DB_RESTORE_NODE)
  NodeClass nodeClass = NodeClass::kUnix;
  Attribute<Text> name;  // by the constructor or the setter
  bool nameByConstructor = true;
  Attribute<std::uint32_t> os;
  Attribute<std::uint32_t> options;
  Attribute<std::uint16_t> deviceType;
  List<FilterPlan> filters;

  // Disk nodes.
  List<DiskPlan> disks;
  std::vector<Text> removedDisks;  // removeDisk() with a disk of this name, after all were added
  std::shared_ptr<GroomPlan> groom;

  // Tape nodes.
  List<TapePlan> tapes;

  // Restore nodes.
  bool diskNameByConstructor = false;
  Attribute<std::uint32_t> actualType;
  bool osAfterActualType = false;  // whether setNodeOS() comes last
  Attribute<Text> diskName;
  bool dbUserSet = false;
  Text dbUser;
  Text dbPassword;
};

struct JobUnitPlan {
  BKOQ_MEMBERS(JOB_UNIT)
  std::uint32_t execTime = 0;
};

struct ExceptionDayPlan {
  BKOQ_MEMBERS(EXCEPTION_DAY)
  std::uint32_t time = 0;
};

struct JobMaskPlan {
  BKOQ_MEMBERS(JOB_MASK)
  Attribute<std::uint32_t> prefix{1};
  bool prefixByConstructor = false;
  std::uint32_t intervalValue = 0, intervalType = 1;
  std::uint32_t cycleValue = 0, cycleType = 1;
  List<JobUnitPlan> units;
};

enum class ScheduleClass { kRegular, kCustom, kRotation, kCruise };

struct SchedulePlan {
  BKOQ_MEMBERS(SCHEDULE)
  BKOQ_MEMBERS(CUSTOM_SCHEDULE)
  BKOQ_MEMBERS(ROTATION_SCHEDULE)
  BKOQ_MEMBERS(CRUISE_SCHEDULE)
  ScheduleClass scheduleClass = ScheduleClass::kRegular;
  std::uint32_t submitTime = 0;
  std::uint32_t execTime = 0;
  std::uint32_t windowStart = 0;
  std::uint32_t windowEnd = 0;

  bool repeatsByConstructor = false;
  std::array<std::uint16_t, 4> repeats{};

  std::shared_ptr<JobMaskPlan> mask;
  List<ExceptionDayPlan> days;
  std::uint32_t makeupTime = 0;
  std::uint8_t makeupHour = 0, makeupMinute = 0;

  std::array<Text, 3> poolNames;
};

struct FaxPlan {
  BKOQ_MEMBERS(FAX)
};

struct EMailPlan {
  bool isMHS = false;
  BKOQ_MEMBERS(EMAIL)
  BKOQ_MEMBERS(MHS_EMAIL)
};

struct PrintQueuePlan {
  BKOQ_MEMBERS(PRINT_QUEUE)
};

struct OpenFilePlan {
  BKOQ_MEMBERS(OPEN_FILE)
};

struct JobPlan {
  BKOQ_MEMBERS(JOB)
  BKOQ_MEMBERS(BACKUP)
  BKOQ_MEMBERS(RESTORE)
  BKOQ_MEMBERS(MERGE)
  BKOQ_MEMBERS(SCAN)
  JobClass jobClass = JobClass::kBase;
  Attribute<Text> name{"testjob"};  // by the constructor
  Attribute<std::uint32_t> number;
  Attribute<std::uint32_t> options;
  Attribute<bool> snmp, ovix;
  Text scriptUser, scriptUserPassword;
  std::shared_ptr<SchedulePlan> schedule;
  std::shared_ptr<FaxPlan> fax;
  bool faxByGetter = false;
  std::shared_ptr<EMailPlan> email;
  std::shared_ptr<PrintQueuePlan> printQueue;

  // Backups: added before the sources, and removed by their names after them.
  List<NodePlan> removedSources;
  // Sources of backups (disk nodes), of restores, verifies and compares (tape nodes).
  List<NodePlan> sources;
  // Destinations of restores; the one of all others.
  List<NodePlan> destinations;
  List<FilterPlan> filters;

  // Backups.
  std::shared_ptr<OpenFilePlan> openFile;
  bool openFileByGetter = false;
  Attribute<bool> encryption, compression;

  // Merges and scans.
  std::uint16_t rangeStart = 0, rangeEnd = 0;
  Text filterText;  // an accepted one, or empty
};

inline bool isBackup(JobClass c) { return lineOf(c).family == JobFamily::kBackup; }
inline bool isRestore(JobClass c) { return lineOf(c).family == JobFamily::kRestore; }
inline bool isVerify(JobClass c) {
  return lineOf(c).family == JobFamily::kVerify || lineOf(c).family == JobFamily::kCompare;
}
inline bool isDiskNode(NodeClass c) { return lineOf(c).family == NodeFamily::kDisk; }

// One call of a conversion of a job.
struct Call {
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  unsigned int form = 0;  // of those in tests/catalog/forms.h
  Text nodeName;          // backups
  std::vector<Text> disks;
  std::int32_t unixKind = 0;
  Text unixText;
  Text tapeName;  // jobs that read tapes
  std::uint16_t session = 0;
  Text overridePath;  // compares
  // Whether what is told of the job's parts lies in the variable with the name of a disk, which the
  // conversion changes.
  bool liesInVariable = false;
};

#undef BKOQ_MEMBERS
#undef BKOQ_MEMBER

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_PLAN_H_
