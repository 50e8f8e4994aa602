#include "tools/attributes.h"

namespace bkoq::tool {
namespace {

// The library's jobs take their name from the constructor alone; those that have only a default
// constructor are always called "testjob".
template <class Job>
Job* makeNamed(const Value& value) {
  const Value* name = value.find("jobName");
  return new Job(name != nullptr ? name->text.c_str() : "");
}

template <class Job>
Job* makeUnnamed(const Value& /*value*/) {
  return new Job;
}

template <class Job>
void describeName(Table<Job>& t) {
  t.text(
       "jobName", [](Job&, const char*) {}, "in no record")
      .required()
      .shown("\"nightly\"");
}

template <class Job>
void describeJob(Table<Job>& t) {
  t.number("jobID", &BKQJob::setJobID, "in no record");
  t.number("jobNumber", &BKQJob::setJobNumber, "number of the instance; in no record");
  t.number("instanceID", &BKQJob::setInstanceID, "another name of jobNumber, which it replaces");
  t.number("scriptType", &BKQJob::setScriptType, "usScriptType");
  t.number("jobStatus", &BKQJob::setJobStatus, "the server's code; usJobStatus").upTo(0xFFFF);
  t.number("options", &BKQJob::setOptions,
           "option bits, 0x100000 for no estimate on any node; ulOptions");
  t.number("beforeJobWait", &BKQJob::setBeforeJobWait, "usBeforeJobWait");
  t.number("onExitCode", &BKQJob::setOnExitCode, "in no record");
  t.number("newTapeTimeout", &BKQJob::setNewTapeTimeout,
           "5 unless given; usNewTapeTimeout of every tape");
  t.number("spanTapeTimeout", &BKQJob::setSpanTapeTimeout,
           "9999 unless given; usSpanTapeTimeout of every tape");
  t.text(
      "jobVersion", [](Job& job, const char* text) { job.setJobVersion(text); }, "in no record");
  t.text("host", &BKQJob::setHost, "pszHost").shown("\"backup1\"");
  t.text("owner", &BKQJob::setOwner, "pszOwner").shown("\"operator\"");
  t.text("password", &BKQJob::setPassword, "in no record");
  t.text("machineName", &BKQJob::setMachineName, "in no record");
  t.text("machineUser", &BKQJob::setMachineUser, "in no record");
  t.text("machinePassword", &BKQJob::setMachinePassword, "in no record");
  t.text("machineAddress", &BKQJob::setMachineAddress, "in no record");
  t.text("reportFile", &BKQJob::setReportFile, "pszReportFile");
  t.text("comments", &BKQJob::setComments, "pszComments");
  t.text("beforeJob", &BKQJob::setBeforeJob, "command run before; pszBeforeJob");
  t.text("afterJob", &BKQJob::setAfterJob, "command run after; pszAfterJob");
  t.text("fileName", &BKQJob::setFileName, "in no record");
  t.text("poolName", &BKQJob::setPoolName, "media pool; in no record");
  t.flag(
      "snmp", [](Job& job, int on) { on != 0 ? job.setSNMPOn() : job.setSNMPOff(); },
      "in no record");
  t.flag(
      "ovix", [](Job& job, int on) { on != 0 ? job.setOvixOn() : job.setOvixOff(); },
      "in no record");
  t.text(
      "scriptUserID",
      [](Job& job, const char* text) {
        RWCollectableString user;
        RWCollectableString password;
        job.getScriptUserID(user, password);
        job.setScriptUserID(text, password);
      },
      "in no record");
  t.text(
      "scriptUserPassword",
      [](Job& job, const char* text) {
        RWCollectableString user;
        RWCollectableString password;
        job.getScriptUserID(user, password);
        job.setScriptUserID(user, text);
      },
      "in no record");
  t.adopted("faxInfo", faxes, adopting<BKQJob, BKQFax>(&BKQJob::setFaxInfo), "stFax");
  t.adopted("emailInfo", emails, adopting<BKQJob, BKQEMail>(&BKQJob::setEMailInfo), "stEMail");
  t.kept("printQueue", printQueues, adopting<BKQJob, BKQPrintQueue>(&BKQJob::setPrintQueue),
         "stPrintQueue");
}

// The job's own setSchedule() takes the classes that suit it.
template <class Schedule, class Job>
void describeSchedule(Table<Job>& t, const FamilyOf<Schedule>& (*family)()) {
  t.adopted(
      "schedule", family, [](Job& job, Schedule& schedule) { job.setSchedule(schedule); },
      "stSchedule and stScheduleExt");
}

template <class Schedule, class Job>
void describeBackup(Table<Job>& t, const FamilyOf<Schedule>& (*schedules)()) {
  describeName(t);
  describeJob(t);
  describeSchedule(t, schedules);
  t.number("maxThreads", &BKQBackupJob::setMaxThreads, "in no record");
  t.text("sessionPassword", &BKQBackupJob::setSessionPassword,
         "pszPassword of every disk without its own");
  t.flag(
      "encryption",
      [](Job& job, int on) { on != 0 ? job.setEncryptionOn() : job.setEncryptionOff(); },
      "adds 0x4000 to the options of every disk");
  t.flag(
      "compression",
      [](Job& job, int on) { on != 0 ? job.setCompressionOn() : job.setCompressionOff(); },
      "adds 0x2000 to the options of every disk");
  t.number("tapeMethod", &BKQBackupJob::setTapeMethod,
           "the server's code; usNewTapeMethod of every tape")
      .upTo(0xFFFF);
  t.number("spanMethod", &BKQBackupJob::setSpanMethod,
           "the server's code; usSpanTapeMethod of every tape")
      .upTo(0xFFFF);
  t.kept("openFileInfo", openFileInfos,
         adopting<BKQBackupJob, BKQOpenFileInfo>(&BKQBackupJob::setOpenFileInfo), "stOpenFile");
  t.parts("filters", filters, &BKQBackupJob::addFilter, "pFilters of every source node");
  t.parts("sourceNodes", machines, &BKQBackupJob::addSourceNode, "what is backed up; pSourceNodes")
      .shown("[]");
  t.adopted("destination", tapeNodes, &BKQBackupJob::setDestination, "where it goes; pDestNodes")
      .shown("{}");
}

template <class Job>
void describeTapeSources(Table<Job>& t) {
  t.parts("sourceNodes", tapeNodes, &Job::addSourceNode, "the tapes to read; pSourceNodes")
      .shown("[]");
}

template <class Job>
void describeRestore(Table<Job>& t) {
  describeName(t);
  describeJob(t);
  describeSchedule(t, schedules);
  t.number("onConflict", &BKQRestoreJob::setOnConflict,
           "the server's code, 3 unless given; usOnConflict")
      .upTo(0xFFFF);
  t.number("restoreView", &BKQRestoreJob::setRestoreView, "1 unless given; in no record");
  t.text("sessionPassword", &BKQRestoreJob::setSessionPassword,
         "pszSessionPW of every tape without its own");
  t.parts("filters", filters, &BKQRestoreJob::addFilter, "pFilters of every source node");
  describeTapeSources(t);
  t.parts("destNodes", restoreNodes, &BKQRestoreJob::addDestNode, "where it goes; pDestNodes")
      .shown("[]");
}

template <class Job>
void describeVerify(Table<Job>& t) {
  describeName(t);
  describeJob(t);
  describeSchedule(t, schedules);
  describeTapeSources(t);
}

constexpr const char* kNoSessions = "is no session number from 1 to 5000, nor a range of them";

}  // namespace

const FamilyOf<BKQJob>& jobs() {
  static const FamilyOf<BKQJob> family = [] {
    FamilyOf<BKQJob> jobs("job");
    jobs.add<BKQJob>("job", "BKQJob", "a job without nodes", makeNamed<BKQJob>,
                     [](Table<BKQJob>& t) {
                       describeName(t);
                       describeJob(t);
                       describeSchedule(t, schedules);
                     });
    jobs.add<BKQBackupJob>("backup", "BKQBackupJob", "a backup", makeNamed<BKQBackupJob>,
                           [](Table<BKQBackupJob>& t) { describeBackup(t, schedules); });
    jobs.add<BKQCruiseBackupJob>(
        "cruiseBackup", "BKQCruiseBackupJob", "a backup on a grandfather-father-son rotation",
        makeNamed<BKQCruiseBackupJob>,
        [](Table<BKQCruiseBackupJob>& t) { describeBackup(t, cruiseSchedules); });
    jobs.add<BKQRotationBackupJob>(
        "rotationBackup", "BKQRotationBackupJob", "a backup on a media rotation",
        makeNamed<BKQRotationBackupJob>,
        [](Table<BKQRotationBackupJob>& t) { describeBackup(t, rotationSchedules); });
    jobs.add<BKQCruiseMakeupJob>(
        "cruiseMakeup", "BKQCruiseMakeupJob",
        "a makeup of a backup on a grandfather-father-son rotation", makeNamed<BKQCruiseMakeupJob>,
        [](Table<BKQCruiseMakeupJob>& t) { describeBackup(t, cruiseSchedules); });
    jobs.add<BKQRotationMakeupJob>(
        "rotationMakeup", "BKQRotationMakeupJob", "a makeup of a backup on a media rotation",
        makeNamed<BKQRotationMakeupJob>,
        [](Table<BKQRotationMakeupJob>& t) { describeBackup(t, rotationSchedules); });
    jobs.add<BKQCustomBackupJob>(
        "customBackup", "BKQCustomBackupJob", "a backup on a custom schedule",
        makeNamed<BKQCustomBackupJob>,
        [](Table<BKQCustomBackupJob>& t) { describeBackup(t, customSchedules); });
    jobs.add<BKQDatabaseBackupJob>(
        "databaseBackup", "BKQDatabaseBackupJob", "a backup of databases",
        makeNamed<BKQDatabaseBackupJob>,
        [](Table<BKQDatabaseBackupJob>& t) { describeBackup(t, schedules); });
    jobs.add<BKQRestoreJob>("restore", "BKQRestoreJob", "a restore", makeNamed<BKQRestoreJob>,
                            describeRestore<BKQRestoreJob>);
    jobs.add<BKQDatabaseRestoreJob>("databaseRestore", "BKQDatabaseRestoreJob",
                                    "a restore of databases", makeNamed<BKQDatabaseRestoreJob>,
                                    describeRestore<BKQDatabaseRestoreJob>);
    jobs.add<BKQVerifyJob>("verify", "BKQVerifyJob", "reads tapes to verify them",
                           makeNamed<BKQVerifyJob>, describeVerify<BKQVerifyJob>);
    jobs.add<BKQCompareJob>("compare", "BKQCompareJob", "compares tapes with a machine",
                            makeNamed<BKQCompareJob>, [](Table<BKQCompareJob>& t) {
                              describeVerify(t);
                              t.adopted("destination", machines, &BKQCompareJob::setDestination,
                                        "the machine; pDestNodes")
                                  .required()
                                  .shown("{}");
                            });
    jobs.add<BKQMergeJob>(
        "merge", "BKQMergeJob", "merges tape sessions into a machine's database",
        makeUnnamed<BKQMergeJob>, [](Table<BKQMergeJob>& t) {
          describeJob(t);
          describeSchedule(t, schedules);
          t.numbers<unsigned short>(
              "mergeRange", 2,
              [](BKQMergeJob& job, const std::vector<unsigned short>& ends) {
                job.setMergeRange(ends[0], ends[1]);
              },
              "first and last session, 0 and 0 for all; in no record");
          t.number("mergeType", &BKQMergeJob::setMergeType, "the server's code; in no record");
          t.checkedText(
              "mergeFilter",
              [](BKQMergeJob& job, const char* text) { return job.setMergeFilter(text); },
              kNoSessions, "session or range, \"3-7\"; in no record");
          t.flag("detailedMerge", &BKQMergeJob::setDetailedMerge, "in no record");
          t.adopted("source", tapeNodes,
                    adopting<BKQMergeJob, BKQTapeNode>(&BKQMergeJob::setSource),
                    "the tapes; pSourceNodes")
              .shown("{}");
          t.adopted("destination", machines, &BKQMergeJob::setDestination,
                    "the machine; pDestNodes")
              .shown("{}");
        });
    jobs.add<BKQScanJob>(
        "scan", "BKQScanJob", "scans tape sessions", makeUnnamed<BKQScanJob>,
        [](Table<BKQScanJob>& t) {
          describeJob(t);
          describeSchedule(t, schedules);
          t.numbers<unsigned short>(
              "scanRange", 2,
              [](BKQScanJob& job, const std::vector<unsigned short>& ends) {
                job.setScanRange(ends[0], ends[1]);
              },
              "first and last session, 0 and 0 for all; in no record");
          t.number("scanType", &BKQScanJob::setScanType, "the server's code; in no record");
          t.checkedText(
              "scanFilter",
              [](BKQScanJob& job, const char* text) { return job.setScanFilter(text); },
              kNoSessions, "session or range, \"3-7\"; in no record");
          t.flag("detailedScan", &BKQScanJob::setDetailedScan, "in no record");
          t.adopted("source", tapeNodes, adopting<BKQScanJob, BKQTapeNode>(&BKQScanJob::setSource),
                    "the tapes; pSourceNodes")
              .shown("{}");
        });
    return jobs;
  }();
  return family;
}

}  // namespace bkoq::tool
