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

namespace bkoq::test {

using Text = std::string;

// A value that a setter gives, or the one that the constructor leaves.
template <class Value>
struct Attribute {
  Attribute() = default;
  Attribute(Value first) : value(first) {}  // NOLINT: a first value reads as such
  operator const Value&() const { return value; }

  Value value{};
  bool isSet = false;
};

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
  Text path;
  bool pathByConstructor = false;
  Attribute<std::uint32_t> optionsBeforeFiles;
  std::vector<Text> files;
  Attribute<std::uint32_t> optionsAfterFiles;
  Attribute<std::uint32_t> objectProperty;
};

struct DiskPlan {
  bool typeByConstructor = false;
  Attribute<std::uint32_t> type;
  Attribute<Text> name;
  Attribute<std::uint32_t> options;
  Attribute<Text> user;
  Attribute<Text> password;
  Attribute<Text> password2;
  Attribute<std::uint16_t> priority{255};
  Attribute<Text> encryptionKey;
  Attribute<std::uint16_t> compareFirstMB;
  Attribute<Text> beforeDisk;
  Attribute<Text> afterDisk;
  Attribute<std::uint16_t> beforeDiskWait;
  Attribute<std::uint32_t> dbProperty;
  List<DiskItemPlan> items;
  List<FilterPlan> filters;
};

struct TapeItemPlan {
  bool byConstructor = false;  // chunk number and offset
  Attribute<Text> fileOrDir;
  Attribute<std::uint32_t> chunkNumber;
  Attribute<std::uint32_t> chunkOffset;  // 16 bits of it are kept
  Attribute<std::uint32_t> options;
  Attribute<std::uint32_t> physicalChunkNumber;
};

struct TapeExtensionPlan {
  bool timeByConstructor = false;
  Attribute<Text> user;
  Attribute<Text> password;
  Attribute<std::int32_t> sessionEndTime;
  Attribute<std::uint32_t> options;
};

enum class ExtensionBy { kNothing, kSetter, kGetter };

struct TapePlan {
  bool byConstructor = false;  // device group and name
  Attribute<Text> name;
  Attribute<Text> deviceGroup;
  Attribute<Text> sessionPassword;
  Attribute<std::uint8_t> streamNumber;
  Attribute<std::uint16_t> sessionNumber;
  Attribute<std::uint32_t> qfaBlockNumber;
  Attribute<std::uint16_t> level;
  Attribute<Text> path;
  Attribute<Text> location;
  Attribute<std::uint32_t> id;
  Attribute<std::uint8_t> sequence;
  Attribute<Text> mediaName;
  Attribute<std::uint32_t> serialNumber;
  Attribute<Text> tapeSerialNumber;
  Attribute<std::uint8_t> fileSystem;
  Attribute<std::int32_t> sessionEndTime;
  Attribute<std::uint32_t> optionsBeforeExtension;
  ExtensionBy extensionBy = ExtensionBy::kNothing;
  std::shared_ptr<TapeExtensionPlan> extension;  // what is set; used when there is one
  Attribute<std::uint32_t> optionsAfterExtension;
  List<TapeItemPlan> items;
  List<FilterPlan> filters;
};

enum class NodeClass {
  kMac,
  kUnix,
  kNetware,
  kWinNT,
  kOS2,
  kWin95,
  kWindows,
  kNDS,
  kFTP,
  kSybase,
  kOracle,
  kInformix,
  kSnapShot,
  kTape,
  kRestore,
  kDBRestore
};
constexpr unsigned int kDiskNodeClasses = 13;

struct GroomPlan {
  Attribute<std::uint16_t> months;
  Attribute<std::uint16_t> copies;
  Attribute<std::uint32_t> options{2};
  List<FilterPlan> filters;
};

struct NodePlan {
  NodeClass nodeClass = NodeClass::kUnix;
  Attribute<Text> name;  // by the constructor or the setter
  bool nameByConstructor = true;
  Attribute<Text> beforeNode;
  Attribute<Text> afterNode;
  Attribute<std::uint32_t> os;
  Attribute<Text> osVersion;
  Attribute<Text> address;
  Attribute<Text> domain;
  Attribute<Text> userName;
  Attribute<Text> password;
  Attribute<std::uint16_t> priority{255};
  Attribute<std::uint32_t> storedNodeType;
  Attribute<std::uint32_t> options;
  Attribute<std::uint16_t> deviceType;
  Attribute<std::uint16_t> beforeNodeWait;
  List<FilterPlan> filters;

  // Disk nodes.
  List<DiskPlan> disks;
  std::vector<Text> removedDisks;  // removeDisk() with a disk of this name, after all were added
  std::shared_ptr<GroomPlan> groom;
  Attribute<std::uint32_t> classOptions;  // UNIX, Sybase, Oracle, Informix, snapshot
  Attribute<Text> encryptKey;             // Sybase
  Attribute<Text> dumpFile;

  // Tape nodes.
  List<TapePlan> tapes;

  // Restore nodes.
  bool diskNameByConstructor = false;
  Attribute<std::uint32_t> actualType;
  bool osAfterActualType = false;  // whether setNodeOS() comes last
  Attribute<Text> destinationDir;
  Attribute<Text> diskName;
  bool dbUserSet = false;
  Text dbUser;
  Text dbPassword;
  Attribute<std::uint32_t> fsType;
  Attribute<std::uint32_t> dbOptions;
};

struct JobUnitPlan {
  Attribute<std::uint32_t> jobType;
  Attribute<std::uint32_t> options;
  Attribute<std::uint32_t> serialNumber;
  Attribute<Text> mediaName;
  Attribute<Text> tapeSerialNumber;
  std::uint32_t execTime = 0;
};

struct ExceptionDayPlan {
  Attribute<std::uint32_t> jobType;
  Attribute<std::uint32_t> options;
  std::uint32_t time = 0;
};

struct JobMaskPlan {
  Attribute<std::uint32_t> prefix{1};
  bool prefixByConstructor = false;
  Attribute<std::uint16_t> repeats;
  std::uint32_t intervalValue = 0, intervalType = 1;
  std::uint32_t cycleValue = 0, cycleType = 1;
  List<JobUnitPlan> units;
};

enum class ScheduleClass { kRegular, kCustom, kRotation, kCruise };

struct SchedulePlan {
  ScheduleClass scheduleClass = ScheduleClass::kRegular;
  std::uint32_t submitTime = 0;
  std::uint32_t execTime = 0;
  std::uint32_t windowStart = 0;
  std::uint32_t windowEnd = 0;
  Attribute<Text> poolName;
  Attribute<std::int32_t> runNow;

  bool repeatsByConstructor = false;
  std::array<std::uint16_t, 4> repeats{};
  Attribute<std::uint16_t> skipWeekDay;

  std::shared_ptr<JobMaskPlan> mask;
  List<ExceptionDayPlan> days;
  Attribute<Text> setName;
  Attribute<Text> setPassword;
  Attribute<Text> schemeName;
  std::uint32_t makeupTime = 0;
  Attribute<std::int32_t> makeup;
  std::uint8_t makeupHour = 0, makeupMinute = 0;

  Attribute<std::uint16_t> saveMonthly;
  Attribute<std::uint16_t> saveWeekly;
  Attribute<std::uint16_t> saveDaily;
  Attribute<std::uint32_t> cruiseOptions;
  Attribute<std::uint16_t> months;
  Attribute<std::uint16_t> copies;
  Attribute<std::uint32_t> method;
  std::array<Text, 3> poolNames;
};

struct FaxPlan {
  Attribute<Text> host, user, password, number, coverPage, receiver;
};

struct EMailPlan {
  bool isMHS = false;
  Attribute<Text> host, user, password, mhsDir, mhsId, mhsUserName;
};

struct PrintQueuePlan {
  Attribute<Text> host, user, password, queue;
};

struct OpenFilePlan {
  Attribute<std::uint32_t> actions{1};
  Attribute<std::uint32_t> methods;
  Attribute<std::uint16_t> retryCount{5};
  Attribute<std::uint16_t> retryInterval{5};
};

enum class JobClass {
  kBase,
  kBackup,
  kCustomBackup,
  kCruiseBackup,
  kCruiseMakeup,
  kRotationBackup,
  kRotationMakeup,
  kDatabaseBackup,
  kRestore,
  kDatabaseRestore,
  kVerify,
  kCompare,
  kMerge,
  kScan
};
constexpr unsigned int kJobClasses = 14;
extern const char* const kJobClassNames[kJobClasses];

struct JobPlan {
  JobClass jobClass = JobClass::kBase;
  Attribute<Text> name{"testjob"};  // by the constructor
  Attribute<std::uint32_t> id;
  Attribute<std::uint32_t> number;
  Attribute<std::uint16_t> scriptType;
  Attribute<std::uint32_t> status;
  Attribute<std::uint32_t> options;
  Attribute<std::uint16_t> beforeJobWait;
  Attribute<std::int32_t> onExitCode;
  Attribute<std::uint16_t> newTapeTimeout{5};
  Attribute<std::uint16_t> spanTapeTimeout{9999};
  Attribute<Text> version, host, owner, password, machineName, machineUser, machinePassword,
      machineAddress, reportFile, comments, beforeJob, afterJob, fileName, poolName;
  Attribute<bool> snmp, ovix;
  Text scriptUser, scriptUserPassword;
  std::shared_ptr<SchedulePlan> schedule;
  std::shared_ptr<FaxPlan> fax;
  bool faxByGetter = false;
  std::shared_ptr<EMailPlan> email;
  std::shared_ptr<PrintQueuePlan> printQueue;

  // Sources of backups (disk nodes), of restores, verifies and compares (tape nodes).
  List<NodePlan> sources;
  // Destinations of restores; the one of all others.
  List<NodePlan> destinations;
  List<FilterPlan> filters;
  Attribute<Text> sessionPassword;

  // Backups.
  std::shared_ptr<OpenFilePlan> openFile;
  bool openFileByGetter = false;
  Attribute<std::uint16_t> maxThreads;
  Attribute<bool> encryption, compression;
  Attribute<std::uint32_t> tapeMethod, spanMethod;

  // Restores.
  Attribute<std::uint32_t> onConflict{3};
  Attribute<std::uint32_t> restoreView{1};

  // Merges and scans.
  std::uint16_t rangeStart = 0, rangeEnd = 0;
  Attribute<std::uint32_t> type;
  Text filterText;  // an accepted one, or empty
  Attribute<std::int32_t> detailed;
};

inline bool isBackup(JobClass c) {
  return c >= JobClass::kBackup && c <= JobClass::kDatabaseBackup;
}
inline bool isRestore(JobClass c) {
  return c == JobClass::kRestore || c == JobClass::kDatabaseRestore;
}
inline bool isVerify(JobClass c) { return c == JobClass::kVerify || c == JobClass::kCompare; }
inline bool isDiskNode(NodeClass c) { return c <= NodeClass::kSnapShot; }

// One call of a conversion of a job.
struct Call {
  bool previous = false;
  unsigned int arguments = 0;  // which overload: 0 has none, the others as the class lists them
  Text nodeName;               // backups
  std::vector<Text> disks;
  std::int32_t unixKind = 0;
  Text unixText;
  Text tapeName;  // jobs that read tapes
  std::uint16_t session = 0;
  Text overridePath;  // compares
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_PLAN_H_
