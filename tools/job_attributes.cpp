#include "tools/attributes.h"
#include "tools/credentials.h"

namespace bkoq::tool {
namespace {

// The library's jobs take their name from the constructor alone; those that have only a default
// constructor are always called "testjob".
template <class Job>
Job* makeNamed(const Value& value) {
  const Value* name = value.find("jobName");
  return new Job(name != nullptr ? std::string(name->text()).c_str() : "");
}

template <class Job>
Job* makeUnnamed(const Value& /*value*/) {
  return new Job;
}

void describeName(Table<BKQJob> t) {
  t.text(
       "jobName", [](BKQJob&, const char*) {}, &BKQJob::getJobName, "name of the job")
      .unrecorded()
      .required()
      .shown("\"nightly\"");
}

// A job without nodes has no tapes either.
void describeJob(Table<BKQJob> t, bool hasTapes = true) {
  t.number("jobID", &BKQJob::setJobID, &BKQJob::getJobID, "number of the job").unrecorded();
  t.number("jobNumber", &BKQJob::setJobNumber, &BKQJob::getJobNumber, "number of the instance")
      .unrecorded();
  t.number("instanceID", &BKQJob::setInstanceID, &BKQJob::getInstanceID,
           "another name of jobNumber, which it replaces")
      .unrecorded();
  t.number("scriptType", &BKQJob::setScriptType, &BKQJob::getScriptType,
           "the server's code of the script");
  t.number("jobStatus", &BKQJob::setJobStatus, &BKQJob::getJobStatus, "the server's code")
      .upTo(0xFFFF);
  t.number("options", &BKQJob::setOptions, &BKQJob::getOptions,
           "option bits; 0x100000: no estimate on any node");
  t.number("beforeJobWait", &BKQJob::setBeforeJobWait, &BKQJob::getBeforeJobWait,
           "wait after the command run before");
  t.number("onExitCode", &BKQJob::setOnExitCode, &BKQJob::getOnExitCode,
           "exit code of that command to act on")
      .unrecorded();
  t.number("newTapeTimeout", &BKQJob::setNewTapeTimeout, &BKQJob::getNewTapeTimeout,
           "how long the server waits for a new tape")
      .isRecorded = hasTapes;
  t.number("spanTapeTimeout", &BKQJob::setSpanTapeTimeout, &BKQJob::getSpanTapeTimeout,
           "how long the server waits for a tape to go on with")
      .isRecorded = hasTapes;
  t.text(
       "jobVersion", [](BKQJob& job, const char* text) { job.setJobVersion(text); },
       &BKQJob::getJobVersion, "version of the job")
      .unrecorded();
  t.text("host", &BKQJob::setHost, &BKQJob::getHost, "the server").shown("\"backup1\"");
  t.text("owner", &BKQJob::setOwner, &BKQJob::getOwner, "who owns the job").shown("\"operator\"");
  t.text("password", &BKQJob::setPassword, &BKQJob::getPassword, "password").unrecorded();
  t.text("machineName", &BKQJob::setMachineName, &BKQJob::getMachineName,
         "machine that the job belongs to")
      .unrecorded();
  t.text("machineUser", &BKQJob::setMachineUser, &BKQJob::getMachineUser, "account on that machine")
      .unrecorded();
  t.text("machinePassword", &BKQJob::setMachinePassword, &BKQJob::getMachinePassword,
         "password of that account")
      .unrecorded();
  t.text("machineAddress", &BKQJob::setMachineAddress, &BKQJob::getMachineAddress,
         "address of that machine")
      .unrecorded();
  t.text("reportFile", &BKQJob::setReportFile, &BKQJob::getReportFile, "file for the report");
  t.text("comments", &BKQJob::setComments, &BKQJob::getComments, "anything");
  t.text("beforeJob", &BKQJob::setBeforeJob, &BKQJob::getBeforeJob, "command run before the job");
  t.text("afterJob", &BKQJob::setAfterJob, &BKQJob::getAfterJob, "command run after the job");
  t.text("fileName", &BKQJob::setFileName, &BKQJob::getFileName, "file of the job").unrecorded();
  t.text("poolName", &BKQJob::setPoolName, &BKQJob::getPoolName, "media pool").unrecorded();
  t.flag(
       "snmp", [](BKQJob& job, int on) { on != 0 ? job.setSNMPOn() : job.setSNMPOff(); },
       &BKQJob::SNMPOn, "whether SNMP is told")
      .unrecorded();
  t.flag(
       "ovix", [](BKQJob& job, int on) { on != 0 ? job.setOvixOn() : job.setOvixOff(); },
       &BKQJob::OvixOn, "whether Ovix is told")
      .unrecorded();
  t.text("scriptUserID",
         settingCredential<Credential::kUser>(&BKQJob::getScriptUserID, &BKQJob::setScriptUserID),
         gettingCredential<Credential::kUser>(&BKQJob::getScriptUserID), "account for the script")
      .unrecorded();
  t.text(
       "scriptUserPassword",
       settingCredential<Credential::kPassword>(&BKQJob::getScriptUserID, &BKQJob::setScriptUserID),
       gettingCredential<Credential::kPassword>(&BKQJob::getScriptUserID),
       "password of that account")
      .unrecorded();
  t.adopted("faxInfo", faxes, adopting<BKQJob, BKQFax>(&BKQJob::setFaxInfo), "notification by fax");
  t.adopted("emailInfo", emails, adopting<BKQJob, BKQEMail>(&BKQJob::setEMailInfo),
            "notification by e-mail");
  t.kept("printQueue", printQueues, adopting<BKQJob, BKQPrintQueue>(&BKQJob::setPrintQueue),
         "report to a print queue");
}

// The job's own setSchedule() takes the classes that suit it.
template <class Schedule, class Job>
void describeSchedule(Table<Job> t, const FamilyOf<Schedule>& (*family)()) {
  t.adopted(
      "schedule", family, [](Job& job, Schedule& schedule) { job.setSchedule(schedule); },
      "when it runs");
}

void describeBackupOnly(Table<BKQBackupJob> t) {
  t.number("maxThreads", &BKQBackupJob::setMaxThreads, &BKQBackupJob::getMaxThreads,
           "threads at most")
      .unrecorded();
  t.text("sessionPassword", &BKQBackupJob::setSessionPassword, &BKQBackupJob::getSessionPassword,
         "password of every disk without its own");
  t.flag(
      "encryption",
      [](BKQBackupJob& job, int on) { on != 0 ? job.setEncryptionOn() : job.setEncryptionOff(); },
      &BKQBackupJob::encryptionOn, "adds 0x4000 to the options of every disk");
  t.flag(
      "compression",
      [](BKQBackupJob& job, int on) { on != 0 ? job.setCompressionOn() : job.setCompressionOff(); },
      &BKQBackupJob::compressionOn, "adds 0x2000 to the options of every disk");
  t.number("tapeMethod", &BKQBackupJob::setTapeMethod, &BKQBackupJob::getTapeMethod,
           "the server's code, for every tape")
      .upTo(0xFFFF);
  t.number("spanMethod", &BKQBackupJob::setSpanMethod, &BKQBackupJob::getSpanMethod,
           "the server's code, for every tape")
      .upTo(0xFFFF);
  t.kept("openFileInfo", openFileInfos,
         adopting<BKQBackupJob, BKQOpenFileInfo>(&BKQBackupJob::setOpenFileInfo),
         "what is done about open files");
  t.parts("filters", filters, &BKQBackupJob::addFilter, "filters of every source node");
  t.parts("sourceNodes", machines, &BKQBackupJob::addSourceNode, "what is backed up").shown("[]");
  t.adopted("destination", tapeNodes, &BKQBackupJob::setDestination, "where it goes").shown("{}");
}

template <class Schedule, class Job>
void describeBackup(Table<Job> t, const FamilyOf<Schedule>& (*schedules)()) {
  describeName(t);
  describeJob(t);
  describeSchedule(t, schedules);
  describeBackupOnly(t);
}

template <class Job>
void describeTapeSources(Table<Job> t) {
  t.parts("sourceNodes", tapeNodes, &Job::addSourceNode, "the tapes to read").shown("[]");
}

void describeRestore(Table<BKQRestoreJob> t) {
  describeName(t);
  describeJob(t);
  describeSchedule(t, schedules);
  t.number("onConflict", &BKQRestoreJob::setOnConflict, &BKQRestoreJob::getOnConflict,
           "the server's code of what to do on conflict")
      .upTo(0xFFFF);
  t.number("restoreView", &BKQRestoreJob::setRestoreView, &BKQRestoreJob::getRestoreView,
           "the server's code of the view")
      .unrecorded();
  t.text("sessionPassword", &BKQRestoreJob::setSessionPassword, &BKQRestoreJob::getSessionPassword,
         "session password of every tape without its own");
  t.parts("filters", filters, &BKQRestoreJob::addFilter, "filters of every source node");
  describeTapeSources(t);
  t.parts("destNodes", restoreNodes, &BKQRestoreJob::addDestNode, "where it goes").shown("[]");
}

void describeVerify(Table<BKQVerifyJob> t) {
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
                     [](Table<BKQJob> t) {
                       describeName(t);
                       describeJob(t, false);
                       describeSchedule(t, schedules);
                     });
    jobs.add<BKQBackupJob>("backup", "BKQBackupJob", "a backup", makeNamed<BKQBackupJob>,
                           [](Table<BKQBackupJob> t) { describeBackup(t, schedules); });
    jobs.add<BKQCruiseBackupJob>(
        "cruiseBackup", "BKQCruiseBackupJob", "a backup on a grandfather-father-son rotation",
        makeNamed<BKQCruiseBackupJob>,
        [](Table<BKQCruiseBackupJob> t) { describeBackup(t, cruiseSchedules); });
    jobs.add<BKQRotationBackupJob>(
        "rotationBackup", "BKQRotationBackupJob", "a backup on a media rotation",
        makeNamed<BKQRotationBackupJob>,
        [](Table<BKQRotationBackupJob> t) { describeBackup(t, rotationSchedules); });
    jobs.add<BKQCruiseMakeupJob>(
        "cruiseMakeup", "BKQCruiseMakeupJob",
        "a makeup of a backup on a grandfather-father-son rotation", makeNamed<BKQCruiseMakeupJob>,
        [](Table<BKQCruiseMakeupJob> t) { describeBackup(t, cruiseSchedules); });
    jobs.add<BKQRotationMakeupJob>(
        "rotationMakeup", "BKQRotationMakeupJob", "a makeup of a backup on a media rotation",
        makeNamed<BKQRotationMakeupJob>,
        [](Table<BKQRotationMakeupJob> t) { describeBackup(t, rotationSchedules); });
    jobs.add<BKQCustomBackupJob>(
        "customBackup", "BKQCustomBackupJob", "a backup on a custom schedule",
        makeNamed<BKQCustomBackupJob>,
        [](Table<BKQCustomBackupJob> t) { describeBackup(t, customSchedules); });
    jobs.add<BKQDatabaseBackupJob>(
        "databaseBackup", "BKQDatabaseBackupJob", "a backup of databases",
        makeNamed<BKQDatabaseBackupJob>,
        [](Table<BKQDatabaseBackupJob> t) { describeBackup(t, schedules); });
    jobs.add<BKQRestoreJob>("restore", "BKQRestoreJob", "a restore", makeNamed<BKQRestoreJob>,
                            describeRestore);
    jobs.add<BKQDatabaseRestoreJob>("databaseRestore", "BKQDatabaseRestoreJob",
                                    "a restore of databases", makeNamed<BKQDatabaseRestoreJob>,
                                    describeRestore);
    jobs.add<BKQVerifyJob>("verify", "BKQVerifyJob", "reads tapes to verify them",
                           makeNamed<BKQVerifyJob>, describeVerify);
    jobs.add<BKQCompareJob>("compare", "BKQCompareJob", "compares tapes with a machine",
                            makeNamed<BKQCompareJob>, [](Table<BKQCompareJob> t) {
                              describeVerify(t);
                              t.adopted("destination", machines, &BKQCompareJob::setDestination,
                                        "the machine")
                                  .required()
                                  .shown("{}");
                            });
    jobs.add<BKQMergeJob>(
        "merge", "BKQMergeJob", "merges tape sessions into a machine's database",
        makeUnnamed<BKQMergeJob>, [](Table<BKQMergeJob> t) {
          describeJob(t);
          describeSchedule(t, schedules);
          t.numbers<unsigned short>(
               "mergeRange", 2,
               [](BKQMergeJob& job, const std::vector<unsigned short>& ends) {
                 job.setMergeRange(ends[0], ends[1]);
               },
               [](BKQMergeJob& object) {
                 unsigned short first{};
                 unsigned short second{};
                 object.getMergeRange(first, second);
                 return std::vector<unsigned short>{first, second};
               },
               "first and last session, 0 and 0 for all")
              .unrecorded();
          t.number("mergeType", &BKQMergeJob::setMergeType, &BKQMergeJob::getMergeType,
                   "the server's code")
              .unrecorded();
          t.checkedText(
               "mergeFilter",
               [](BKQMergeJob& job, const char* text) { return job.setMergeFilter(text); },
               &BKQMergeJob::getMergeFilter, kNoSessions,
               "a session or a range of them, such as 3-7; empty for all")
              .suchAs("1", "2")
              .unrecorded();
          t.flag("detailedMerge", &BKQMergeJob::setDetailedMerge, &BKQMergeJob::getDetailedMerge,
                 "whether details are merged")
              .unrecorded();
          t.adopted("source", tapeNodes,
                    adopting<BKQMergeJob, BKQTapeNode>(&BKQMergeJob::setSource), "the tapes")
              .shown("{}");
          t.adopted("destination", machines, &BKQMergeJob::setDestination, "the machine")
              .shown("{}");
        });
    jobs.add<BKQScanJob>(
        "scan", "BKQScanJob", "scans tape sessions", makeUnnamed<BKQScanJob>,
        [](Table<BKQScanJob> t) {
          describeJob(t);
          describeSchedule(t, schedules);
          t.numbers<unsigned short>(
               "scanRange", 2,
               [](BKQScanJob& job, const std::vector<unsigned short>& ends) {
                 job.setScanRange(ends[0], ends[1]);
               },
               [](BKQScanJob& object) {
                 unsigned short first{};
                 unsigned short second{};
                 object.getScanRange(first, second);
                 return std::vector<unsigned short>{first, second};
               },
               "first and last session, 0 and 0 for all")
              .unrecorded();
          t.number("scanType", &BKQScanJob::setScanType, &BKQScanJob::getScanType,
                   "the server's code")
              .unrecorded();
          t.checkedText(
               "scanFilter",
               [](BKQScanJob& job, const char* text) { return job.setScanFilter(text); },
               &BKQScanJob::getScanFilter, kNoSessions,
               "a session or a range of them, such as 3-7; empty for all")
              .suchAs("1", "2")
              .unrecorded();
          t.flag("detailedScan", &BKQScanJob::setDetailedScan, &BKQScanJob::getDetailedScan,
                 "whether details are scanned")
              .unrecorded();
          t.adopted("source", tapeNodes, adopting<BKQScanJob, BKQTapeNode>(&BKQScanJob::setSource),
                    "the tapes")
              .shown("{}");
        });
    return jobs;
  }();
  return family;
}

}  // namespace bkoq::tool
