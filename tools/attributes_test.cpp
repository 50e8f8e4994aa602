// Every attribute of a job file reaches the setter that it names. For each class that a job file
// can hold there is a table here: how an attribute is written, and what the class then gives back
// for it. Each attribute has a value of its own, so that none can pass for another.

#include "tools/attributes.h"

#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "tests/support/time_zone.h"
#include "tools/job_file.h"
#include "tools/moment.h"
#include "tools/problems.h"

namespace bkoq::tool {
namespace {

using test::kUtc;
using test::TimeZone;

// ------------------------------------------------------------------- what getters give, as a text

std::string shownTime(const RWTime& time) {
  // Whatever is made without a time gets the present one, which differs from run to run.
  if (time >= commandTime()) return "now";
  const auto seconds = static_cast<std::time_t>(time.seconds() - kSecondsBefore1970);
  std::tm fields = {};
  gmtime_r(&seconds, &fields);
  char text[32] = "";
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &fields);
  return text;
}

template <class Value>
std::string shown(const Value& value) {
  if constexpr (std::is_base_of_v<RWCString, Value>) {
    return value.data();
  } else if constexpr (std::is_base_of_v<RWTime, Value>) {
    return shownTime(value);
  } else if constexpr (std::is_same_v<std::string, Value>) {
    return value;
  } else {
    return std::to_string(static_cast<std::int64_t>(value));
  }
}

template <class First, class... Others>
std::string list(const First& first, const Others&... others) {
  return (shown(first) + ... + (", " + shown(others)));
}

// One attribute of an object that may be missing.
template <class Object, class Get>
std::string of(Object* object, Get get) {
  return object == nullptr ? "" : shown(std::invoke(get, *object));
}

// What an object hands out by a cursor; nothing for a null object.
template <class Element, class Object, class Base, class Collection>
std::vector<Element*> elements(Object* object, void (Base::*reset)(),
                               unsigned int (Base::*enumerate)(Collection*&, unsigned int)) {
  constexpr unsigned int kAll = 100;
  std::vector<Element*> elements;
  if (object == nullptr) return elements;
  (object->*reset)();
  Collection* handedOut = nullptr;
  (object->*enumerate)(handedOut, kAll);
  const std::unique_ptr<Collection> collection(handedOut);
  for (unsigned int i = 0; i < collection->entries(); ++i) {
    elements.push_back(dynamic_cast<Element*>(collection->at(i)));
  }
  return elements;
}

template <class Element>
Element* first(const std::vector<Element*>& elements) {
  return elements.empty() ? nullptr : elements.front();
}

// The same attribute of each.
template <class Element, class Get>
std::string ofEach(const std::vector<Element*>& elements, Get get) {
  std::string all;
  for (Element* element : elements) all += (all.empty() ? "" : ", ") + of(element, get);
  return all;
}

struct Credentials {
  RWCollectableString user;
  RWCollectableString password;
};
// Either half of what a class hands out at once.
template <class Object, class Get>
auto halfOf(Get get, RWCollectableString Credentials::*half) {
  return [get, half](Object& object) {
    Credentials all;
    std::invoke(get, object, all.user, all.password);
    return all.*half;
  };
}

template <class Object, class Base>
std::string filtersOf(Object& object, void (Base::*reset)(),
                      unsigned int (Base::*enumerate)(BKQFilterCol*&, unsigned int)) {
  return ofEach(elements<BKQFileFilter>(&object, reset, enumerate),
                &BKQFileFilter::getFilterString);
}

constexpr const char* kTwoFilters =
    R"([{"kind": "file", "filterString": "*.c"}, {"kind": "file", "filterString": "*.h"}])";
constexpr const char* kTwoFiltersShown = "*.c, *.h";

// ------------------------------------------------------------------------------------- the tables

struct Row {
  std::string key;
  std::string json;       // the value, as it is written
  std::string otherwise;  // what is written when others are tested; mostly nothing
  std::string value;      // what the getter then gives
  std::function<std::string(void* object)> get;
  std::map<std::string, std::string> also;  // other attributes that change with it, and to what
  bool isFlag = false;
  bool isAlias = false;  // of an attribute that must not be written beside it
};

// Adds rows for a class; a getter is a member function, or a function that takes the object.
template <class Object>
class Rows {
 public:
  explicit Rows(std::vector<Row>& rows) : rows_(rows) {}

  template <class Get>
  Rows& text(const char* key, Get get, const std::string& value) {
    return row(key, "\"" + value + "\"", get, value);
  }
  template <class Get>
  Rows& number(const char* key, Get get, std::int64_t value) {
    return row(key, std::to_string(value), get, std::to_string(value));
  }
  template <class Get>
  Rows& flag(const char* key, Get get) {
    row(key, "true", get, "1");
    rows_.back().isFlag = true;
    return *this;
  }
  template <class Get>
  Rows& time(const char* key, Get get, const std::string& value) {
    return text(key, get, value);
  }
  // Anything, in JSON.
  template <class Get>
  Rows& row(const char* key, const std::string& json, Get get, const std::string& value) {
    Row row;
    row.key = key;
    row.json = json;
    row.value = value;
    row.get = [get](void* object) {
      return shown(std::invoke(get, *static_cast<Object*>(object)));
    };
    rows_.push_back(std::move(row));
    return *this;
  }

  // Of the row before: an attribute that cannot be left out is written so when it is not tested.
  Rows& otherwise(const char* json) {
    rows_.back().otherwise = json;
    return *this;
  }
  // The row before changes another attribute, too, when that is not given.
  Rows& also(const char* key, const std::string& value) {
    rows_.back().also[key] = value;
    return *this;
  }
  // The row before is another name of this attribute.
  Rows& aliasOf(const char* key) {
    rows_.back().isAlias = true;
    return also(key, rows_.back().value);
  }

 private:
  std::vector<Row>& rows_;
};

// A class, and where a job holds an object of it.
struct Case {
  const Family* family;
  std::string kind;
  std::string job;                     // a job file, with @ in place of the object
  std::function<void*(BKQJob&)> find;  // the object in the loaded job; null unless of the class
  std::vector<Row> rows;

  std::string name() const {
    std::string name = family->name + (kind.empty() ? "" : "_" + kind);
    for (char& c : name) {
      if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    }
    return name;
  }
};

std::ostream& operator<<(std::ostream& out, const Case& tested) { return out << tested.name(); }

template <class Object, class Find, class Describe>
Case makeCase(const Family& (*family)(), const char* kind, const std::string& job, Find find,
              Describe describe) {
  Case made;
  made.family = &family();
  made.kind = kind;
  made.job = job;
  made.find = [find](BKQJob& job) -> void* {
    auto* part = find(job);
    // A class that derives from it would not do.
    if (part == nullptr || typeid(*part) != typeid(Object)) return nullptr;
    return dynamic_cast<Object*>(part);
  };
  Rows<Object> rows(made.rows);
  describe(rows);
  return made;
}

// ---------------------------------------------------------------------- the way to a part of a job

BKQDiskNode* machineOf(BKQJob& job) {
  return first(elements<BKQDiskNode>(dynamic_cast<BKQBackupJob*>(&job),
                                     &BKQBackupJob::resetSourceNodes,
                                     &BKQBackupJob::enumSourceNodes));
}

BKQDisk* diskOf(BKQJob& job) {
  return first(
      elements<BKQDisk>(machineOf(job), &BKQDiskNode::resetDisks, &BKQDiskNode::enumDisks));
}

BKQDiskItem* diskItemOf(BKQJob& job) {
  return first(
      elements<BKQDiskItem>(diskOf(job), &BKQDisk::resetDiskItems, &BKQDisk::enumDiskItems));
}

BKQTapeNode* tapeNodeOf(BKQJob& job) {
  return first(elements<BKQTapeNode>(dynamic_cast<BKQRestoreJob*>(&job),
                                     &BKQRestoreJob::resetSourceNodes,
                                     &BKQRestoreJob::enumSourceNodes));
}

BKQTape* tapeOf(BKQJob& job) {
  return first(
      elements<BKQTape>(tapeNodeOf(job), &BKQTapeNode::resetTapes, &BKQTapeNode::enumTapes));
}

BKQTapeItem* tapeItemOf(BKQJob& job) {
  return first(
      elements<BKQTapeItem>(tapeOf(job), &BKQTape::resetTapeItems, &BKQTape::enumTapeItems));
}

// Makes no extension, as the tape itself would.
BKQTapeXtension* extensionOf(BKQTape* tape) {
  return tape == nullptr || tape->tapeXtensionExists() == 0 ? nullptr : tape->getTapeXtension();
}

BKQRestoreNode* restoreNodeOf(BKQJob& job) {
  return first(elements<BKQRestoreNode>(dynamic_cast<BKQRestoreJob*>(&job),
                                        &BKQRestoreJob::resetDestNodes,
                                        &BKQRestoreJob::enumDestNodes));
}

BKQFilter* filterOf(BKQJob& job) {
  return first(elements<BKQFilter>(dynamic_cast<BKQBackupJob*>(&job), &BKQBackupJob::resetFilters,
                                   &BKQBackupJob::enumFilters));
}

BKQRotationSchedule* rotationOf(BKQJob& job) {
  return dynamic_cast<BKQRotationSchedule*>(job.getSchedule());
}

BKQJobMask* jobMaskOf(BKQJob& job) {
  BKQRotationSchedule* rotation = rotationOf(job);
  return rotation == nullptr ? nullptr : rotation->getJobMask();
}

BKQJobUnit* jobUnitOf(BKQJob& job) {
  return first(
      elements<BKQJobUnit>(jobMaskOf(job), &BKQJobMask::resetJobUnits, &BKQJobMask::enumJobUnits));
}

// Makes no fax, as the job itself would.
BKQFax* faxOf(BKQJob& job) { return job.faxInfoExists() == 0 ? nullptr : job.getFaxInfo(); }

// Makes none, as the job itself would.
BKQOpenFileInfo* openFileInfoOf(BKQJob& job) {
  auto* backup = dynamic_cast<BKQBackupJob*>(&job);
  return backup == nullptr || backup->openFileInfoExists() == 0 ? nullptr
                                                                : backup->getOpenFileInfo();
}

// ------------------------------------------------------------------------------------------- jobs

template <class Job>
void describeName(Rows<Job>& rows) {
  rows.text("jobName", &BKQJob::getJobName, "nightly").otherwise(R"("")");
}

template <class Job>
void describeJob(Rows<Job>& rows, const std::string& scheduleKind) {
  rows.number("jobID", &BKQJob::getJobID, 70001)
      .number("jobNumber", &BKQJob::getJobNumber, 70002)
      .also("instanceID", "70002")
      .number("instanceID", &BKQJob::getInstanceID, 70003)
      .aliasOf("jobNumber")
      .number("scriptType", &BKQJob::getScriptType, 304)
      .number("jobStatus", &BKQJob::getJobStatus, 305)
      .row("options", R"("0x80100006")", &BKQJob::getOptions, std::to_string(0x80100006U))
      .number("beforeJobWait", &BKQJob::getBeforeJobWait, 307)
      .number("onExitCode", &BKQJob::getOnExitCode, -70008)
      .number("newTapeTimeout", &BKQJob::getNewTapeTimeout, 309)
      .number("spanTapeTimeout", &BKQJob::getSpanTapeTimeout, 310)
      .text("jobVersion", &BKQJob::getJobVersion, "version 2")
      .text("host", &BKQJob::getHost, "server")
      .text("owner", &BKQJob::getOwner, "operator")
      .text("password", &BKQJob::getPassword, "the operator's password")
      .text("machineName", &BKQJob::getMachineName, "machine")
      .text("machineUser", &BKQJob::getMachineUser, "machine's user")
      .text("machinePassword", &BKQJob::getMachinePassword, "machine's password")
      .text("machineAddress", &BKQJob::getMachineAddress, "10.0.0.1")
      .text("reportFile", &BKQJob::getReportFile, "/var/report")
      .text("comments", &BKQJob::getComments, "every night")
      .text("beforeJob", &BKQJob::getBeforeJob, "/bin/before")
      .text("afterJob", &BKQJob::getAfterJob, "/bin/after")
      .text("fileName", &BKQJob::getFileName, "nightly.job")
      .text("poolName", &BKQJob::getPoolName, "pool of the job")
      .flag("snmp", &BKQJob::SNMPOn)
      .flag("ovix", &BKQJob::OvixOn)
      .text("scriptUserID", halfOf<BKQJob>(&BKQJob::getScriptUserID, &Credentials::user),
            "script's user")
      .text("scriptUserPassword", halfOf<BKQJob>(&BKQJob::getScriptUserID, &Credentials::password),
            "script's password")
      .row(
          "faxInfo", R"({"hostName": "host of the fax"})",
          [](BKQJob& job) { return of(faxOf(job), &BKQFax::getHostName); }, "host of the fax")
      .row(
          "emailInfo", R"({"kind": "internet", "hostName": "host of the e-mail"})",
          [](BKQJob& job) { return of(job.getEMailInfo(), &BKQEMail::getHostName); },
          "host of the e-mail")
      .row(
          "printQueue", R"({"hostName": "host of the queue"})",
          [](BKQJob& job) { return of(job.getPrintQueue(), &BKQPrintQueue::getHostName); },
          "host of the queue")
      // Each class of jobs has a setSchedule() and a getSchedule() of its own.
      .row(
          "schedule", R"({"kind": ")" + scheduleKind + R"(", "poolName": "pool of the schedule"})",
          [](Job& job) { return of(job.getSchedule(), &BKQSchedule::getPoolName); },
          "pool of the schedule");
}

template <class Job>
void describeTapeSources(Rows<Job>& rows) {
  rows.row(
      "sourceNodes", R"([{"nodeName": "tapes 1"}, {"nodeName": "tapes 2"}])",
      [](Job& job) {
        return ofEach(elements<BKQTapeNode>(&job, &Job::resetSourceNodes, &Job::enumSourceNodes),
                      &BKQNode::getNodeName);
      },
      "tapes 1, tapes 2");
}

template <class Job>
void describeBackup(Rows<Job>& rows, const std::string& scheduleKind) {
  describeName(rows);
  describeJob(rows, scheduleKind);
  rows.number("maxThreads", &BKQBackupJob::getMaxThreads, 401)
      .text("sessionPassword", &BKQBackupJob::getSessionPassword, "session's password")
      .flag("encryption", &BKQBackupJob::encryptionOn)
      .flag("compression", &BKQBackupJob::compressionOn)
      .number("tapeMethod", &BKQBackupJob::getTapeMethod, 402)
      .number("spanMethod", &BKQBackupJob::getSpanMethod, 403)
      .row(
          "openFileInfo", R"({"retryCount": 404})",
          [](BKQJob& job) { return of(openFileInfoOf(job), &BKQOpenFileInfo::getRetryCount); },
          "404")
      .row(
          "filters", kTwoFilters,
          [](BKQBackupJob& job) {
            return filtersOf(job, &BKQBackupJob::resetFilters, &BKQBackupJob::enumFilters);
          },
          kTwoFiltersShown)
      .row(
          "sourceNodes",
          R"([{"kind": "unix", "nodeName": "machine 1"}, {"kind": "mac", "nodeName": "machine 2"}])",
          [](BKQBackupJob& job) {
            return ofEach(elements<BKQNode>(&job, &BKQBackupJob::resetSourceNodes,
                                            &BKQBackupJob::enumSourceNodes),
                          &BKQNode::getNodeName);
          },
          "machine 1, machine 2")
      .row(
          "destination", R"({"nodeName": "tapes"})",
          [](BKQBackupJob& job) { return of(job.getDestination(), &BKQNode::getNodeName); },
          "tapes");
}

template <class Job>
void describeRestore(Rows<Job>& rows) {
  describeName(rows);
  describeJob(rows, "regular");
  describeTapeSources(rows);
  rows.number("onConflict", &BKQRestoreJob::getOnConflict, 401)
      .number("restoreView", &BKQRestoreJob::getRestoreView, 70402)
      .text("sessionPassword", &BKQRestoreJob::getSessionPassword, "session's password")
      .row(
          "filters", kTwoFilters,
          [](BKQRestoreJob& job) {
            return filtersOf(job, &BKQRestoreJob::resetFilters, &BKQRestoreJob::enumFilters);
          },
          kTwoFiltersShown)
      .row(
          "destNodes",
          R"([{"kind": "machine", "nodeName": "to 1"}, {"kind": "database", "nodeName": "to 2"}])",
          [](BKQRestoreJob& job) {
            return ofEach(elements<BKQRestoreNode>(&job, &BKQRestoreJob::resetDestNodes,
                                                   &BKQRestoreJob::enumDestNodes),
                          &BKQNode::getNodeName);
          },
          "to 1, to 2");
}

template <class Job>
void describeVerify(Rows<Job>& rows) {
  describeName(rows);
  describeJob(rows, "regular");
  describeTapeSources(rows);
}

void describeCompare(Rows<BKQCompareJob>& rows) {
  describeVerify(rows);
  rows.row(
          "destination", R"({"kind": "unix", "nodeName": "compared"})",
          [](BKQCompareJob& job) { return of(job.getDestination(), &BKQNode::getNodeName); },
          "compared")
      .otherwise(R"({"kind": "unix", "nodeName": ""})");
}

void describeMerge(Rows<BKQMergeJob>& rows) {
  describeJob(rows, "regular");
  rows.row(
          "mergeRange", "[401, 302]",
          [](BKQMergeJob& job) {
            unsigned short start = 0;
            unsigned short end = 0;
            job.getMergeRange(start, end);
            return list(start, end);
          },
          "401, 302")
      .number("mergeType", &BKQMergeJob::getMergeType, 70403)
      .text("mergeFilter", &BKQMergeJob::getMergeFilter, "3-7")
      .flag("detailedMerge", &BKQMergeJob::getDetailedMerge)
      .row(
          "source", R"({"nodeName": "tapes"})",
          [](BKQMergeJob& job) { return of(job.getSource(), &BKQNode::getNodeName); }, "tapes")
      .row(
          "destination", R"({"kind": "unix", "nodeName": "merged"})",
          [](BKQMergeJob& job) { return of(job.getDestination(), &BKQNode::getNodeName); },
          "merged");
}

void describeScan(Rows<BKQScanJob>& rows) {
  describeJob(rows, "regular");
  rows.row(
          "scanRange", "[401, 302]",
          [](BKQScanJob& job) {
            unsigned short start = 0;
            unsigned short end = 0;
            job.getScanRange(start, end);
            return list(start, end);
          },
          "401, 302")
      .number("scanType", &BKQScanJob::getScanType, 70403)
      .text("scanFilter", &BKQScanJob::getScanFilter, "3-7")
      .flag("detailedScan", &BKQScanJob::getDetailedScan)
      .row(
          "source", R"({"nodeName": "tapes"})",
          [](BKQScanJob& job) { return of(job.getSource(), &BKQNode::getNodeName); }, "tapes");
}

template <class Job, class Describe>
Case jobCase(const char* kind, Describe describe) {
  return makeCase<Job>(
      jobs, kind, "@", [](BKQJob& job) { return &job; }, describe);
}

template <class Job>
Case backupCase(const char* kind, const std::string& scheduleKind) {
  return jobCase<Job>(kind,
                      [scheduleKind](Rows<Job>& rows) { describeBackup(rows, scheduleKind); });
}

void addJobs(std::vector<Case>& cases) {
  cases.push_back(jobCase<BKQJob>("job", [](Rows<BKQJob>& rows) {
    describeName(rows);
    describeJob(rows, "regular");
  }));
  cases.push_back(backupCase<BKQBackupJob>("backup", "regular"));
  cases.push_back(backupCase<BKQCruiseBackupJob>("cruiseBackup", "cruise"));
  cases.push_back(backupCase<BKQRotationBackupJob>("rotationBackup", "rotation"));
  cases.push_back(backupCase<BKQCruiseMakeupJob>("cruiseMakeup", "cruise"));
  cases.push_back(backupCase<BKQRotationMakeupJob>("rotationMakeup", "rotation"));
  cases.push_back(backupCase<BKQCustomBackupJob>("customBackup", "custom"));
  cases.push_back(backupCase<BKQDatabaseBackupJob>("databaseBackup", "regular"));
  cases.push_back(jobCase<BKQRestoreJob>("restore", describeRestore<BKQRestoreJob>));
  cases.push_back(
      jobCase<BKQDatabaseRestoreJob>("databaseRestore", describeRestore<BKQDatabaseRestoreJob>));
  cases.push_back(jobCase<BKQVerifyJob>("verify", describeVerify<BKQVerifyJob>));
  cases.push_back(jobCase<BKQCompareJob>("compare", describeCompare));
  cases.push_back(jobCase<BKQMergeJob>("merge", describeMerge));
  cases.push_back(jobCase<BKQScanJob>("scan", describeScan));
}

// ------------------------------------------------------------------------------------------ nodes

template <class Node>
void describeNode(Rows<Node>& rows) {
  rows.text("nodeName", &BKQNode::getNodeName, "machine")
      .otherwise(R"("")")
      .text("beforeNode", &BKQNode::getBeforeNode, "/bin/before")
      .text("afterNode", &BKQNode::getAfterNode, "/bin/after")
      .number("beforeNodeWait", &BKQNode::getBeforeNodeWait, 501)
      .text("nodeOSver", &BKQNode::getNodeOSver, "5.8")
      .text("nodeAddress", &BKQNode::getNodeAddress, "10.0.0.2")
      .text("nodeDomain", &BKQNode::getNodeDomain, "DOMAIN")
      .text("userName", &BKQNode::getUserName, "root")
      .text("password", &BKQNode::getPassword, "root's password")
      .number("priority", &BKQNode::getPriority, 502)
      .number("nodeType", &BKQNode::getNodeType, 70503)
      .number("deviceType", &BKQNode::getDeviceType, 504)
      .number("nodeOS", &BKQNode::getNodeOS, 505)
      .row(
          "filters", kTwoFilters,
          [](BKQNode& node) {
            return filtersOf(node, &BKQNode::resetFilters, &BKQNode::enumFilters);
          },
          kTwoFiltersShown);
}

template <class Node>
void describeMachine(Rows<Node>& rows) {
  describeNode(rows);
  rows.number("options", &BKQNode::getOptions, 70506)
      .row(
          "groomInfo", R"({"months": 507})",
          [](BKQDiskNode& node) { return of(node.getGroomInfo(), &BKQGroom::getMonths); }, "507")
      .row(
          "disks", R"([{"diskName": "C:"}, {"diskName": "D:"}])",
          [](BKQDiskNode& node) {
            return ofEach(
                elements<BKQDisk>(&node, &BKQDiskNode::resetDisks, &BKQDiskNode::enumDisks),
                &BKQDisk::getDiskName);
          },
          "C:, D:");
}

template <class Node, class Describe>
Case machineCase(const char* kind, Describe describe) {
  return makeCase<Node>(machines, kind, R"({"kind": "backup", "jobName": "", "sourceNodes": [@]})",
                        machineOf, [describe](Rows<Node>& rows) {
                          describeMachine(rows);
                          describe(rows);
                        });
}

template <class Node>
Case machineCase(const char* kind) {
  return machineCase<Node>(kind, [](Rows<Node>&) {});
}

void describeTapeNode(Rows<BKQTapeNode>& rows) {
  describeNode(rows);
  rows.number("options", &BKQNode::getOptions, 70506)
      .row(
          "tapes", R"([{"tapeName": "TAPE-01"}, {"tapeName": "TAPE-02"}])",
          [](BKQTapeNode& node) {
            return ofEach(
                elements<BKQTape>(&node, &BKQTapeNode::resetTapes, &BKQTapeNode::enumTapes),
                &BKQTape::getTapeName);
          },
          "TAPE-01, TAPE-02");
}

template <class Node>
void describeRestoreNode(Rows<Node>& rows) {
  describeNode(rows);
  rows.row("actualNodeType", R"("winNT")", &BKQRestoreNode::getActualNodeType,
           std::to_string(BKQNode::WinNTNode))
      .also("nodeOS", "8")
      .text("diskName", &BKQRestoreNode::getDiskName, "E:")
      .text("destinationDir", &BKQRestoreNode::getDestinationDir, "/restored");
}

void describeDatabaseRestoreNode(Rows<BKQDBRestoreNode>& rows) {
  describeRestoreNode(rows);
  // The class has two words of options: that of the node, and its own.
  rows.number("nodeOptions", &BKQNode::getOptions, 70506)
      .number("options", &BKQDBRestoreNode::getOptions, 70508)
      .number("fsType", &BKQDBRestoreNode::getFStype, 509)
      .text("dbUser", halfOf<BKQDBRestoreNode>(&BKQDBRestoreNode::getDBuser, &Credentials::user),
            "database's user")
      .text("dbPassword",
            halfOf<BKQDBRestoreNode>(&BKQDBRestoreNode::getDBuser, &Credentials::password),
            "database's password");
}

void addNodes(std::vector<Case>& cases) {
  cases.push_back(machineCase<BKQUnixNode>("unix", [](Rows<BKQUnixNode>& rows) {
    rows.number("unixOptions", &BKQUnixNode::getUnixOptions, 70601);
  }));
  cases.push_back(machineCase<BKQMacNode>("mac"));
  cases.push_back(machineCase<BKQNetwareNode>("netware"));
  cases.push_back(machineCase<BKQWinNTNode>("winNT"));
  cases.push_back(machineCase<BKQOS2Node>("os2"));
  cases.push_back(machineCase<BKQWin95Node>("win95"));
  cases.push_back(machineCase<BKQWindowsNode>("windows"));
  cases.push_back(machineCase<BKQNDSNode>("nds"));
  cases.push_back(machineCase<BKQFTPNode>("ftp"));
  cases.push_back(machineCase<BKQSybaseNode>("sybase", [](Rows<BKQSybaseNode>& rows) {
    rows.number("sybaseOptions", &BKQSybaseNode::getSybaseOptions, 70602)
        .text("encryptKey", &BKQSybaseNode::getEncryptKey, "key")
        .text("dumpFile", &BKQSybaseNode::getDumpFile, "/var/dump");
  }));
  cases.push_back(machineCase<BKQOracleNode>("oracle", [](Rows<BKQOracleNode>& rows) {
    rows.number("oracleOptions", &BKQOracleNode::getOracleOptions, 70603);
  }));
  cases.push_back(machineCase<BKQInformixNode>("informix", [](Rows<BKQInformixNode>& rows) {
    rows.number("informixOptions", &BKQInformixNode::getInformixOptions, 70604);
  }));
  cases.push_back(machineCase<BKQSnapShotNode>("snapShot", [](Rows<BKQSnapShotNode>& rows) {
    rows.number("snapShotOptions", &BKQSnapShotNode::getSnapShotOptions, 70605);
  }));

  cases.push_back(makeCase<BKQTapeNode>(tapeNodes, "",
                                        R"({"kind": "restore", "jobName": "", "sourceNodes": [@]})",
                                        tapeNodeOf, describeTapeNode));

  const std::string restored = R"({"kind": "restore", "jobName": "", "destNodes": [@]})";
  cases.push_back(makeCase<BKQRestoreNode>(restoreNodes, "machine", restored, restoreNodeOf,
                                           [](Rows<BKQRestoreNode>& rows) {
                                             describeRestoreNode(rows);
                                             rows.number("options", &BKQNode::getOptions, 70506);
                                           }));
  cases.push_back(makeCase<BKQDBRestoreNode>(restoreNodes, "database", restored, restoreNodeOf,
                                             describeDatabaseRestoreNode));
}

// -------------------------------------------------------------------------------- disks and tapes

void addDisks(std::vector<Case>& cases) {
  cases.push_back(makeCase<BKQDisk>(
      disks, "",
      R"({"kind": "backup", "jobName": "",
          "sourceNodes": [{"kind": "unix", "nodeName": "", "disks": [@]}]})",
      diskOf, [](Rows<BKQDisk>& rows) {
        rows.text("diskName", &BKQDisk::getDiskName, "/")
            .number("diskType", &BKQDisk::getDiskType, 301)
            .number("options", &BKQDisk::getOptions, 70302)
            .text("password", &BKQDisk::getPassword, "password")
            .text("user", &BKQDisk::getUser, "user")
            .text("diskPW2", &BKQDisk::getDiskPW2, "second password")
            .text("encryptionKey", &BKQDisk::getEncryptionKey, "key")
            .number("priority", &BKQDisk::getPriority, 303)
            .number("compareFirstMB", &BKQDisk::getCompareFirstMB, 304)
            .text("afterDisk", &BKQDisk::getAfterDisk, "/bin/after")
            .text("beforeDisk", &BKQDisk::getBeforeDisk, "/bin/before")
            .number("beforeDiskWait", &BKQDisk::getBeforeDiskWait, 305)
            .number("dbProperty", &BKQDisk::getDBProperty, 70306)
            .row(
                "diskItems", R"([{"path": "/home"}, {"path": "/var"}])",
                [](BKQDisk& disk) {
                  return ofEach(elements<BKQDiskItem>(&disk, &BKQDisk::resetDiskItems,
                                                      &BKQDisk::enumDiskItems),
                                &BKQDiskItem::getPath);
                },
                "/home, /var")
            .row(
                "filters", kTwoFilters,
                [](BKQDisk& disk) {
                  return filtersOf(disk, &BKQDisk::resetFilters, &BKQDisk::enumFilters);
                },
                kTwoFiltersShown);
      }));
  cases.push_back(makeCase<BKQDiskItem>(
      diskItems, "",
      R"({"kind": "backup", "jobName": "",
          "sourceNodes": [{"kind": "unix", "nodeName": "", "disks": [{"diskItems": [@]}]}]})",
      diskItemOf, [](Rows<BKQDiskItem>& rows) {
        rows.text("path", &BKQDiskItem::getPath, "/home")
            .row(
                "files", R"(["a.txt", "b.txt"])",
                [](BKQDiskItem& item) {
                  // This list is one of copies, which are the caller's.
                  item.resetFiles();
                  BKQStringCol* handedOut = nullptr;
                  item.enumFiles(handedOut, 0);
                  const std::unique_ptr<BKQStringCol> names(handedOut);
                  std::string all;
                  for (unsigned int i = 0; i < names->entries(); ++i) {
                    all += (i == 0 ? "" : ", ") +
                           shown(*dynamic_cast<RWCollectableString*>(names->at(i)));
                  }
                  names->clearAndDestroy();
                  return all;
                },
                "a.txt, b.txt")
            .also("options", "0")
            .number("options", &BKQDiskItem::getOptions, 70301)
            .number("objectProperty", &BKQDiskItem::getObjectProperty, 70302);
      }));
}

void addTapes(std::vector<Case>& cases) {
  cases.push_back(makeCase<BKQTape>(
      tapes, "",
      R"({"kind": "restore", "jobName": "", "sourceNodes": [{"nodeName": "", "tapes": [@]}]})",
      tapeOf, [](Rows<BKQTape>& rows) {
        rows.text("deviceGroup", &BKQTape::getDeviceGroup, "GROUP")
            .text("tapeName", &BKQTape::getTapeName, "TAPE-01")
            .text("sessionPW", &BKQTape::getSessionPW, "session's password")
            .number("streamNum", &BKQTape::getStreamNum, 201)
            .number("sessionNumber", &BKQTape::getSessionNumber, 302)
            .number("qfaBlockNumber", &BKQTape::getQFABlockNumber, 70303)
            .number("tapeLevel", &BKQTape::getTapeLevel, 304)
            .text("path", &BKQTape::getPath, "/home")
            .text("location", &BKQTape::getLocation, "cellar")
            .number("tapeID", &BKQTape::getTapeID, 70305)
            .number("tapeSeq", &BKQTape::getTapeSeq, 206)
            .text("mediaName", &BKQTape::getMediaName, "medium")
            .number("serialNumber", &BKQTape::getSerialNumber, 70307)
            .text("tapeSerialNumber", &BKQTape::getTapeSerialNumber, "bar code")
            .number("fileSystem", &BKQTape::getFileSystem, 208)
            .number("sessionEndTime", &BKQTape::getSessionEndTime, -70309)
            .row("options", R"("0x8000010")", &BKQTape::getOptions, std::to_string(0x8000010))
            .row(
                "tapeXtension", R"({"dbUser": "database's user"})",
                [](BKQTape& tape) { return of(extensionOf(&tape), &BKQTapeXtension::getDBuser); },
                "database's user")
            .also("options", std::to_string(0x8000000))
            .row(
                "tapeItems", R"([{"fileOrDir": "/home/a"}, {"fileOrDir": "/home/b"}])",
                [](BKQTape& tape) {
                  return ofEach(elements<BKQTapeItem>(&tape, &BKQTape::resetTapeItems,
                                                      &BKQTape::enumTapeItems),
                                &BKQTapeItem::getFileOrDir);
                },
                "/home/a, /home/b")
            .row(
                "filters", kTwoFilters,
                [](BKQTape& tape) {
                  return filtersOf(tape, &BKQTape::resetFilters, &BKQTape::enumFilters);
                },
                kTwoFiltersShown);
      }));
  cases.push_back(makeCase<BKQTapeItem>(
      tapeItems, "",
      R"({"kind": "restore", "jobName": "",
          "sourceNodes": [{"nodeName": "", "tapes": [{"tapeItems": [@]}]}]})",
      tapeItemOf, [](Rows<BKQTapeItem>& rows) {
        rows.text("fileOrDir", &BKQTapeItem::getFileOrDir, "/home/a")
            .number("chunkNum", &BKQTapeItem::getChunkNum, 70301)
            .number("physicalChunkNum", &BKQTapeItem::getPhysicalChunkNum, 70302)
            .number("chunkOffset", &BKQTapeItem::getChunkOffset, 303)
            .number("options", &BKQTapeItem::getOptions, 70304);
      }));
  cases.push_back(makeCase<BKQTapeXtension>(
      tapeExtensions, "",
      R"({"kind": "restore", "jobName": "",
          "sourceNodes": [{"nodeName": "", "tapes": [{"tapeXtension": @}]}]})",
      [](BKQJob& job) { return extensionOf(tapeOf(job)); },
      [](Rows<BKQTapeXtension>& rows) {
        rows.text("dbUser", &BKQTapeXtension::getDBuser, "database's user")
            .text("dbPassword", &BKQTapeXtension::getDBpw, "database's password")
            // Seconds of the client's, as a time.
            .row("sessionEndTime", R"("1970-01-02T01:00:00")", &BKQTapeXtension::getSessionEndTime,
                 std::to_string(25 * 3600))
            .number("options", &BKQTapeXtension::getOptions, 70301);
      }));
}

// ---------------------------------------------------------------------------------------- filters

template <class Filter>
void describeFilter(Rows<Filter>& rows) {
  rows.row("inclExcl", R"("exclude")", &BKQFilter::getInclExcl, std::to_string(BKQFilter::Exclude));
}

template <class Filter>
void describePattern(Rows<Filter>& rows) {
  describeFilter(rows);
  rows.text("filterString", &Filter::getFilterString, "*.tmp");
}

template <class Filter>
void describeTime(Rows<Filter>& rows) {
  describeFilter(rows);
  rows.number("trAttribute", &BKQTimeFilter::getTRattribute, 301);
}

template <class Filter>
void describeBound(Rows<Filter>& rows) {
  describeTime(rows);
  rows.time("time", &Filter::getTime, "2004-03-01T21:00:00");
}

void describeBetween(Rows<BKQBetweenTimeFilter>& rows) {
  describeTime(rows);
  rows.time("startTime", &BKQBetweenTimeFilter::getStartTime, "2004-02-01T00:00:01")
      .time("endTime", &BKQBetweenTimeFilter::getEndTime, "2004-03-01T00:00:02");
}

void describeWithin(Rows<BKQWithinTimeFilter>& rows) {
  describeTime(rows);
  rows.number("timeUnits", &BKQWithinTimeFilter::getTimeUnits, 302)
      .number("timeUnitType", &BKQWithinTimeFilter::getTimeUnitType, 303);
}

template <class Filter, class Describe>
Case filterCase(const char* kind, Describe describe) {
  return makeCase<Filter>(filters, kind, R"({"kind": "backup", "jobName": "", "filters": [@]})",
                          filterOf, describe);
}

void addFilters(std::vector<Case>& cases) {
  cases.push_back(filterCase<BKQDirFilter>("dir", describePattern<BKQDirFilter>));
  cases.push_back(filterCase<BKQFileFilter>("file", describePattern<BKQFileFilter>));
  cases.push_back(filterCase<BKQVolumeFilter>("volume", describePattern<BKQVolumeFilter>));
  cases.push_back(filterCase<BKQAttributeFilter>("attribute", [](Rows<BKQAttributeFilter>& rows) {
    describeFilter(rows);
    rows.number("attributes", &BKQAttributeFilter::getAttributes, 70301);
  }));
  cases.push_back(
      filterCase<BKQBeforeTimeFilter>("beforeTime", describeBound<BKQBeforeTimeFilter>));
  cases.push_back(filterCase<BKQAfterTimeFilter>("afterTime", describeBound<BKQAfterTimeFilter>));
  cases.push_back(filterCase<BKQBetweenTimeFilter>("betweenTime", describeBetween));
  cases.push_back(filterCase<BKQWithinTimeFilter>("withinTime", describeWithin));

  cases.push_back(makeCase<BKQGroom>(
      grooms, "",
      R"({"kind": "backup", "jobName": "",
          "sourceNodes": [{"kind": "unix", "nodeName": "", "groomInfo": @}]})",
      [](BKQJob& job) -> BKQGroom* {
        BKQDiskNode* machine = machineOf(job);
        return machine == nullptr ? nullptr : machine->getGroomInfo();
      },
      [](Rows<BKQGroom>& rows) {
        rows.number("months", &BKQGroom::getMonths, 301)
            .number("copies", &BKQGroom::getCopies, 302)
            .number("options", &BKQGroom::getOptions, 70303)
            .row(
                "filters", kTwoFilters,
                [](BKQGroom& groom) {
                  return filtersOf(groom, &BKQGroom::resetFilters, &BKQGroom::enumFilters);
                },
                kTwoFiltersShown);
      }));
}

// -------------------------------------------------------------------------------------- schedules

template <class Schedule>
void describeSchedule(Rows<Schedule>& rows) {
  rows.time("submitTime", &BKQSchedule::getSubmitTime, "2004-03-01T20:00:01")
      .time("execTime", &BKQSchedule::getExecTime, "2004-03-01T21:00:02")
      .text("poolName", &BKQSchedule::getPoolName, "pool")
      .flag("runJobNow", [](BKQSchedule& schedule) { return schedule.runJobNow(); })
      .row(
          "scheduleWindow", R"(["2004-03-01T22:00:03", "2004-03-01T23:00:04"])",
          [](BKQSchedule& schedule) {
            RWCollectableTime start;
            RWCollectableTime end;
            schedule.getScheduleWindow(start, end);
            return list(start, end);
          },
          "2004-03-01T22:00:03, 2004-03-01T23:00:04");
}

void describeCustom(Rows<BKQCustomSchedule>& rows) {
  describeSchedule(rows);
  rows.row(
          "repeat", "[301, 302, 303, 304]",
          [](BKQCustomSchedule& schedule) {
            unsigned short repeats[4] = {};
            schedule.getRepeat(repeats[0], repeats[1], repeats[2], repeats[3]);
            return list(repeats[0], repeats[1], repeats[2], repeats[3]);
          },
          "301, 302, 303, 304")
      .number("skipWeekDayFlag", &BKQCustomSchedule::getSkipWeekDayFlag, 305);
}

template <class Schedule>
void describeRotation(Rows<Schedule>& rows) {
  describeSchedule(rows);
  rows.row(
          "jobMask", R"({"repeats": 401})",
          [](BKQRotationSchedule& schedule) {
            return of(schedule.getJobMask(), &BKQJobMask::getRepeats);
          },
          "401")
      .text("setName", &BKQRotationSchedule::getSetName, "SET")
      .text("setPW", &BKQRotationSchedule::getSetPW, "set's password")
      .text("schemeName", &BKQRotationSchedule::getSchemeName, "scheme")
      .time("preferedMakeupTime", &BKQRotationSchedule::getPreferedMakeupTime,
            "2004-03-02T01:00:05")
      .row(
          "preferedMakeupJobTime", "[20, 45]",
          [](BKQRotationSchedule& schedule) {
            unsigned char hour = 0;
            unsigned char minute = 0;
            schedule.getPreferedMakeupJobTime(hour, minute);
            return list(hour, minute);
          },
          "20, 45")
      .flag("doMakeup", [](BKQRotationSchedule& schedule) { return schedule.doMakeup(); })
      .row(
          "exceptionDays", R"([{"exceptionTime": "2004-12-24"}, {"exceptionTime": "2004-12-31"}])",
          [](BKQRotationSchedule& schedule) {
            return ofEach(
                elements<BKQExceptionDay>(&schedule, &BKQRotationSchedule::resetExceptionDays,
                                          &BKQRotationSchedule::enumExceptionDays),
                &BKQExceptionDay::getExceptionTime);
          },
          "2004-12-24T00:00:00, 2004-12-31T00:00:00");
}

void describeCruise(Rows<BKQCruiseSchedule>& rows) {
  describeRotation(rows);
  rows.number("saveMonthly", &BKQCruiseSchedule::getSaveMonthly, 501)
      .number("saveWeekly", &BKQCruiseSchedule::getSaveWeekly, 502)
      .number("saveDaily", &BKQCruiseSchedule::getSaveDaily, 503)
      .number("months", &BKQCruiseSchedule::getMonths, 504)
      .number("copies", &BKQCruiseSchedule::getCopies, 505)
      .number("options", &BKQCruiseSchedule::getOptions, 70506)
      .number("cruiseMethod", &BKQCruiseSchedule::getCruiseMethod, 507)
      .row(
          "gfsPoolNames", R"(["pool 1", "pool 2", "pool 3"])",
          [](BKQCruiseSchedule& schedule) {
            RWCollectableString pools[3];
            schedule.getGFSPoolNames(pools[0], pools[1], pools[2]);
            return list(pools[0], pools[1], pools[2]);
          },
          "pool 1, pool 2, pool 3");
}

template <class Schedule, class Describe>
Case scheduleCase(const Family& (*family)(), const char* kind, const std::string& jobKind,
                  Describe describe) {
  return makeCase<Schedule>(
      family, kind, R"({"kind": ")" + jobKind + R"(", "jobName": "", "schedule": @})",
      [](BKQJob& job) { return job.getSchedule(); }, describe);
}

std::string jobWithMask(const std::string& mask) {
  return R"({"kind": "rotationBackup", "jobName": "",
             "schedule": {"kind": "rotation", "jobMask": )" +
         mask + "}}";
}

void addSchedules(std::vector<Case>& cases) {
  cases.push_back(scheduleCase<BKQRegularSchedule>(schedules, "regular", "backup",
                                                   describeSchedule<BKQRegularSchedule>));
  cases.push_back(scheduleCase<BKQCustomSchedule>(schedules, "custom", "backup", describeCustom));
  cases.push_back(scheduleCase<BKQRotationSchedule>(schedules, "rotation", "backup",
                                                    describeRotation<BKQRotationSchedule>));
  cases.push_back(scheduleCase<BKQCruiseSchedule>(schedules, "cruise", "backup", describeCruise));
  cases.push_back(
      scheduleCase<BKQCustomSchedule>(customSchedules, "custom", "customBackup", describeCustom));
  cases.push_back(scheduleCase<BKQRotationSchedule>(rotationSchedules, "rotation", "rotationBackup",
                                                    describeRotation<BKQRotationSchedule>));
  cases.push_back(scheduleCase<BKQCruiseSchedule>(rotationSchedules, "cruise", "rotationBackup",
                                                  describeCruise));
  cases.push_back(
      scheduleCase<BKQCruiseSchedule>(cruiseSchedules, "cruise", "cruiseBackup", describeCruise));

  cases.push_back(
      makeCase<BKQJobMask>(jobMasks, "", jobWithMask("@"), jobMaskOf, [](Rows<BKQJobMask>& rows) {
        rows.number("tapeNamePrefix", &BKQJobMask::getTapeNamePrefix, 70301)
            .number("repeats", &BKQJobMask::getRepeats, 302)
            .row(
                "repeatCycle", R"({"value": 303})",
                [](BKQJobMask& mask) { return mask.getRepeatCycle().getValue(); }, "303")
            .row(
                "repeatInterval", R"({"value": 304})",
                [](BKQJobMask& mask) { return mask.getRepeatInterval().getValue(); }, "304")
            .row(
                "jobUnits", R"([{"jobType": 105}, {"jobType": 106}])",
                [](BKQJobMask& mask) {
                  return ofEach(elements<BKQJobUnit>(&mask, &BKQJobMask::resetJobUnits,
                                                     &BKQJobMask::enumJobUnits),
                                &BKQJobUnit::getJobType);
                },
                "105, 106");
      }));
  cases.push_back(makeCase<BKQJobUnit>(
      jobUnits, "", jobWithMask(R"({"jobUnits": [@]})"), jobUnitOf, [](Rows<BKQJobUnit>& rows) {
        rows.number("jobType", &BKQJobUnit::getJobType, 201)
            .number("options", &BKQJobUnit::getOptions, 70302)
            .number("serialNumber", &BKQJobUnit::getSerialNumber, 70303)
            .text("mediaName", &BKQJobUnit::getMediaName, "medium")
            .text("tapeSerialNumber", &BKQJobUnit::getTapeSerialNumber, "bar code")
            .time("execTime", &BKQJobUnit::getExecTime, "2004-03-03T21:00:00");
      }));
  cases.push_back(makeCase<BKQTime>(
      spans, "", jobWithMask(R"({"repeatCycle": @})"),
      [](BKQJob& job) -> BKQTime* {
        BKQJobMask* mask = jobMaskOf(job);
        return mask == nullptr ? nullptr : const_cast<BKQTime*>(&mask->getRepeatCycle());
      },
      [](Rows<BKQTime>& rows) {
        rows.number("value", &BKQTime::getValue, 70301).number("type", &BKQTime::getType, 70302);
      }));
  cases.push_back(makeCase<BKQExceptionDay>(
      exceptionDays, "",
      R"({"kind": "rotationBackup", "jobName": "",
          "schedule": {"kind": "rotation", "exceptionDays": [@]}})",
      [](BKQJob& job) {
        return first(elements<BKQExceptionDay>(rotationOf(job),
                                               &BKQRotationSchedule::resetExceptionDays,
                                               &BKQRotationSchedule::enumExceptionDays));
      },
      [](Rows<BKQExceptionDay>& rows) {
        rows.time("exceptionTime", &BKQExceptionDay::getExceptionTime, "2004-12-24T12:00:00")
            .number("jobType", &BKQExceptionDay::getJobType, 70301)
            .number("options", &BKQExceptionDay::getOptions, 70302);
      }));
}

// ---------------------------------------------------------------------------------- notifications

template <class Notification>
void describeHost(Rows<Notification>& rows) {
  rows.text("hostName", &Notification::getHostName, "host")
      .text("userName", &Notification::getUserName, "user")
      .text("userPW", &Notification::getUserPW, "password");
}

void addNotifications(std::vector<Case>& cases) {
  cases.push_back(makeCase<BKQFax>(
      faxes, "", R"({"kind": "job", "jobName": "", "faxInfo": @})", faxOf, [](Rows<BKQFax>& rows) {
        describeHost(rows);
        rows.text("faxNumber", &BKQFax::getFaxNumber, "+49 30 1234")
            .text("coverPageFile", &BKQFax::getCoverPageFile, "/etc/cover")
            .text("receiverName", &BKQFax::getReceiverName, "receiver");
      }));

  const std::string mailed = R"({"kind": "job", "jobName": "", "emailInfo": @})";
  const auto emailOf = [](BKQJob& job) { return job.getEMailInfo(); };
  cases.push_back(makeCase<BKQInternetEMail>(emails, "internet", mailed, emailOf,
                                             describeHost<BKQInternetEMail>));
  cases.push_back(
      makeCase<BKQMHSEMail>(emails, "mhs", mailed, emailOf, [](Rows<BKQMHSEMail>& rows) {
        describeHost(rows);
        rows.text("mhsDir", &BKQMHSEMail::getMHSDir, "SYS:MHS")
            .text("mhsId", &BKQMHSEMail::getMHSId, "id")
            .text("mhsUserName", &BKQMHSEMail::getMHSUserName, "MHS user");
      }));

  cases.push_back(makeCase<BKQPrintQueue>(
      printQueues, "", R"({"kind": "job", "jobName": "", "printQueue": @})",
      [](BKQJob& job) { return job.getPrintQueue(); },
      [](Rows<BKQPrintQueue>& rows) {
        describeHost(rows);
        rows.text("queueName", &BKQPrintQueue::getQueueName, "queue");
      }));
  cases.push_back(makeCase<BKQOpenFileInfo>(
      openFileInfos, "", R"({"kind": "backup", "jobName": "", "openFileInfo": @})", openFileInfoOf,
      [](Rows<BKQOpenFileInfo>& rows) {
        rows.number("fActions", &BKQOpenFileInfo::getFActions, 70301)
            .number("fMethods", &BKQOpenFileInfo::getFMethods, 70302)
            .number("retryCount", &BKQOpenFileInfo::getRetryCount, 303)
            .number("retryInterval", &BKQOpenFileInfo::getRetryInterval, 304);
      }));
}

const std::vector<Case>& cases() {
  static const std::vector<Case> all = [] {
    std::vector<Case> all;
    addJobs(all);
    addNodes(all);
    addDisks(all);
    addTapes(all);
    addFilters(all);
    addSchedules(all);
    addNotifications(all);
    return all;
  }();
  return all;
}

// -------------------------------------------------------------------------------------- the tests

const ObjectClass* classOf(const Family& family, const std::string& kind) {
  for (const ObjectClass& candidate : family.classes) {
    if (candidate.kind == kind) return &candidate;
  }
  return nullptr;
}

// A job that was read, and the object in it that is tested; null after a failure.
struct Read {
  LoadedJob loaded;
  void* object = nullptr;
};

LoadedJob readWithoutProblems(const std::string& text) {
  Problems problems;
  LoadedJob loaded = readJob(text, problems);
  for (const Problem& problem : problems.sorted()) {
    ADD_FAILURE() << lineOf(problem, "job") << "\nin " << text;
  }
  if (!problems.empty()) loaded.job.reset();
  return loaded;
}

// `jsonOf` gives what is written for a row, empty when it is left out.
Read read(const Case& tested, const std::function<std::string(const Row&)>& jsonOf) {
  std::string object = tested.kind.empty() ? "" : R"("kind": ")" + tested.kind + "\"";
  for (const Row& row : tested.rows) {
    const std::string json = jsonOf(row);
    if (json.empty()) continue;
    object += (object.empty() ? "" : ", ") + ("\"" + row.key + "\": " + json);
  }
  std::string text = tested.job;
  text.replace(text.find('@'), 1, "{" + object + "}");

  commandTime();  // what counts as now begins before the job is made
  Read read;
  read.loaded = readWithoutProblems(text);
  if (read.loaded.job == nullptr) return read;
  read.object = tested.find(*read.loaded.job);
  if (read.object == nullptr) ADD_FAILURE() << "no object of the class is in " << text;
  return read;
}

// One attribute is written as given, the others are not.
Read readAlone(const Case& tested, const Row& alone, const std::string& json) {
  return read(tested, [&](const Row& row) { return row.key == alone.key ? json : row.otherwise; });
}

class EveryAttribute : public testing::TestWithParam<Case> {
  TimeZone zone_{kUtc};
};

INSTANTIATE_TEST_SUITE_P(Of, EveryAttribute, testing::ValuesIn(cases()),
                         [](const testing::TestParamInfo<Case>& info) {
                           return info.param.name();
                         });

TEST_P(EveryAttribute, StandsInTheTablesHere) {
  const Case& tested = GetParam();
  const ObjectClass* tables = classOf(*tested.family, tested.kind);
  ASSERT_NE(tables, nullptr) << "no such kind of " << tested.family->name;

  std::set<std::string> testedKeys;
  for (const Row& row : tested.rows) {
    EXPECT_TRUE(testedKeys.insert(row.key).second) << row.key << " has two rows here";
    EXPECT_NE(tables->find(row.key), nullptr) << row.key << " is no attribute of " << tables->name;
  }
  std::set<std::string> keys;
  for (const Attribute& attribute : tables->attributes) {
    EXPECT_TRUE(keys.insert(attribute.key).second) << attribute.key << " is described twice";
    EXPECT_EQ(testedKeys.count(attribute.key), 1u)
        << attribute.key << " of " << tables->name << " has no row here";
  }
}

TEST_P(EveryAttribute, HasAValueOfItsOwn) {
  const Case& tested = GetParam();
  const Read plain = read(tested, [](const Row& row) { return row.otherwise; });
  ASSERT_NE(plain.object, nullptr);
  std::map<std::string, std::string> owners;
  for (const Row& row : tested.rows) {
    EXPECT_NE(row.get(plain.object), row.value) << row.key << " has that value by itself";
    // A flag has no second value to be told apart by: ChangesNothingElse does that.
    if (row.isFlag) continue;
    const auto [owner, isNew] = owners.emplace(row.value, row.key);
    EXPECT_TRUE(isNew) << row.key << " and " << owner->second << " have the same value";
  }
}

TEST_P(EveryAttribute, ReachesItsSetter) {
  const Case& tested = GetParam();
  const Read all = read(tested, [](const Row& row) { return row.isAlias ? "" : row.json; });
  ASSERT_NE(all.object, nullptr);
  for (const Row& row : tested.rows) {
    if (row.isAlias) continue;
    EXPECT_EQ(row.get(all.object), row.value) << row.key;
  }
}

TEST_P(EveryAttribute, ChangesNothingElse) {
  const Case& tested = GetParam();
  const Read plain = read(tested, [](const Row& row) { return row.otherwise; });
  ASSERT_NE(plain.object, nullptr);
  for (const Row& alone : tested.rows) {
    const Read set = readAlone(tested, alone, alone.json);
    ASSERT_NE(set.object, nullptr) << alone.key;
    for (const Row& row : tested.rows) {
      const auto change = alone.also.find(row.key);
      const std::string expected = row.key == alone.key         ? row.value
                                   : change != alone.also.end() ? change->second
                                                                : row.get(plain.object);
      EXPECT_EQ(row.get(set.object), expected) << row.key << ", when " << alone.key << " is set";
    }
  }
}

TEST_P(EveryAttribute, CanBeSwitchedOff) {
  const Case& tested = GetParam();
  for (const Row& flag : tested.rows) {
    if (!flag.isFlag) continue;
    const Read off = readAlone(tested, flag, "false");
    ASSERT_NE(off.object, nullptr) << flag.key;
    EXPECT_EQ(flag.get(off.object), "0") << flag.key;
  }
}

// The setter of a number takes whatever the job file may hold.
TEST_P(EveryAttribute, TakesBothEndsOfItsRange) {
  const Case& tested = GetParam();
  const ObjectClass* tables = classOf(*tested.family, tested.kind);
  ASSERT_NE(tables, nullptr);
  for (const Row& row : tested.rows) {
    const Attribute* attribute = tables->find(row.key);
    if (attribute == nullptr || attribute->shape != Shape::kNumber) continue;
    for (const std::int64_t end : {attribute->least, attribute->most}) {
      const Read set = readAlone(tested, row, std::to_string(end));
      ASSERT_NE(set.object, nullptr) << row.key;
      EXPECT_EQ(row.get(set.object), std::to_string(end)) << row.key;
    }
  }
}

// All classes that can stand there in a job file, or in an object of them, have tables here.
void expectCases(const Family& family, std::set<const Family*>& seen) {
  if (!seen.insert(&family).second) return;
  for (const ObjectClass& own : family.classes) {
    int number = 0;
    for (const Case& tested : cases()) {
      if (tested.family == &family && tested.kind == own.kind) ++number;
    }
    EXPECT_EQ(number, 1) << "tables for " << own.name << ", a " << family.name << " of kind \""
                         << own.kind << "\"";
    for (const Attribute& attribute : own.attributes) {
      if (attribute.family != nullptr) expectCases(attribute.family(), seen);
    }
  }
}

TEST(Attributes, EveryClassIsTested) {
  std::set<const Family*> seen;
  expectCases(jobs(), seen);
  for (const Case& tested : cases()) {
    EXPECT_EQ(seen.count(tested.family), 1u) << "no job holds a " << tested.family->name;
  }
}

TEST(Attributes, TheInstanceIdReplacesTheJobNumber) {
  const LoadedJob loaded = readWithoutProblems(
      R"({"kind": "job", "jobName": "", "instanceID": 70003, "jobNumber": 70002})");
  ASSERT_NE(loaded.job, nullptr);
  EXPECT_EQ(loaded.job->getJobNumber(), 70003u);
  EXPECT_EQ(loaded.job->getInstanceID(), 70003u);
}

// The machine that is restored to is named by the same word as the machine that was backed up.
TEST(Attributes, ActualNodeTypeTakesTheKindsOfMachines) {
  for (const ObjectClass& machine : machines().classes) {
    const std::string kind = "\"" + machine.kind + "\"";
    const LoadedJob backup = readWithoutProblems(
        R"({"kind": "backup", "jobName": "", "sourceNodes": [{"nodeName": "", "kind": )" + kind +
        "}]}");
    const LoadedJob restore = readWithoutProblems(
        R"({"kind": "restore", "jobName": "", "destNodes": [{"kind": "machine", "nodeName": "",
            "actualNodeType": )" +
        kind + "}]}");
    ASSERT_TRUE(backup.job && restore.job) << kind;
    BKQDiskNode* from = machineOf(*backup.job);
    BKQRestoreNode* to = restoreNodeOf(*restore.job);
    ASSERT_TRUE(from != nullptr && to != nullptr) << kind;
    EXPECT_EQ(to->getActualNodeType(), from->nodeType()) << kind;
  }
  const Attribute* attribute = classOf(restoreNodes(), "machine")->find("actualNodeType");
  ASSERT_NE(attribute, nullptr);
  EXPECT_EQ(attribute->words->size(), machines().classes.size());
}

TEST(Attributes, AFilterIncludesOrExcludes) {
  const struct {
    const char* word;
    BKQFilter::BKQInclExclType kind;
  } rows[] = {{"include", BKQFilter::Include}, {"exclude", BKQFilter::Exclude}};
  for (const auto& row : rows) {
    const LoadedJob loaded =
        readWithoutProblems(std::string(R"({"kind": "backup", "jobName": "", "filters": [)") +
                            R"({"kind": "file", "inclExcl": ")" + row.word + R"("}]})");
    ASSERT_NE(loaded.job, nullptr);
    BKQFilter* filter = filterOf(*loaded.job);
    ASSERT_NE(filter, nullptr);
    EXPECT_EQ(filter->getInclExcl(), row.kind) << row.word;
  }
}

}  // namespace
}  // namespace bkoq::tool
