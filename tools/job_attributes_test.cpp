#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tools/attribute_cases.h"
#include "tools/job_file.h"
#include "tools/problems.h"

namespace bkoq::tool {
namespace {

template <class Job>
void describeName(AttributeRows<Job>& rows) {
  rows.text("jobName", &BKQJob::getJobName, "nightly").otherwise(R"("")");
}

template <class Job>
void describeJob(AttributeRows<Job>& rows, const std::string& scheduleKind) {
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
void describeTapeSources(AttributeRows<Job>& rows) {
  rows.row(
      "sourceNodes", R"([{"nodeName": "tapes 1"}, {"nodeName": "tapes 2"}])",
      [](Job& job) {
        return ofEach(elements<BKQTapeNode>(&job, &Job::resetSourceNodes, &Job::enumSourceNodes),
                      &BKQNode::getNodeName);
      },
      "tapes 1, tapes 2");
}

template <class Job>
void describeBackup(AttributeRows<Job>& rows, const std::string& scheduleKind) {
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
void describeRestore(AttributeRows<Job>& rows) {
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
void describeVerify(AttributeRows<Job>& rows) {
  describeName(rows);
  describeJob(rows, "regular");
  describeTapeSources(rows);
}

void describeCompare(AttributeRows<BKQCompareJob>& rows) {
  describeVerify(rows);
  rows.row(
          "destination", R"({"kind": "unix", "nodeName": "compared"})",
          [](BKQCompareJob& job) { return of(job.getDestination(), &BKQNode::getNodeName); },
          "compared")
      .otherwise(R"({"kind": "unix", "nodeName": ""})");
}

void describeMerge(AttributeRows<BKQMergeJob>& rows) {
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

void describeScan(AttributeRows<BKQScanJob>& rows) {
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
ClassCase jobCase(const char* kind, Describe describe) {
  return makeCase<Job>(
      jobs, kind, "@", [](BKQJob& job) { return &job; }, describe);
}

template <class Job>
ClassCase backupCase(const char* kind, const std::string& scheduleKind) {
  return jobCase<Job>(
      kind, [scheduleKind](AttributeRows<Job>& rows) { describeBackup(rows, scheduleKind); });
}

}  // namespace

void addJobs(std::vector<ClassCase>& cases) {
  cases.push_back(jobCase<BKQJob>("job", [](AttributeRows<BKQJob>& rows) {
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

namespace {

// What is neither a job nor an image is told by the first character that counts.
TEST(JobFile, IsTakenForOneByItsFirstCharacter) {
  const std::string neither = "neither a job file, which begins with {, nor an image";
  const struct {
    const char* text;
    bool isJob;
  } rows[] = {
      {"", true},
      {"{", true},
      {"[", true},
      {"/", true},
      {" \t\r\n\xEF\xBB\xBF{", true},
      {"x{", false},
      {"x[", false},
      {" \t\r\nx/", false},
      {"}", false},
      {"\"{", false},
  };
  for (const auto& row : rows) {
    Problems problems;
    readJob(row.text, problems);
    const std::vector<Problem> all = problems.sorted();
    ASSERT_EQ(all.size(), 1u) << row.text;
    EXPECT_EQ(all[0].message != neither, row.isJob) << row.text;
  }
}

}  // namespace
}  // namespace bkoq::tool
