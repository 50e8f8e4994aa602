#ifndef BKOQ_TESTS_RANDOM_ATTRIBUTES_H_
#define BKOQ_TESTS_RANDOM_ATTRIBUTES_H_

// Every plain attribute of every class, named once: what the plan holds, the getter and the setter.
// A visitor draws, sets or checks it.

#include <bkoq/bkoq.h>

#include "tests/random/plan.h"

namespace bkoq::test {

template <class Plan, class Visitor>
void eachOfJob(Plan& plan, Visitor& visit) {
  visit("job ID", plan.id, &BKQJob::getJobID, &BKQJob::setJobID);
  visit("script type", plan.scriptType, &BKQJob::getScriptType, &BKQJob::setScriptType);
  visit("job status", plan.status, &BKQJob::getJobStatus, &BKQJob::setJobStatus);
  visit("before-job wait", plan.beforeJobWait, &BKQJob::getBeforeJobWait,
        &BKQJob::setBeforeJobWait);
  visit("on-exit code", plan.onExitCode, &BKQJob::getOnExitCode, &BKQJob::setOnExitCode);
  visit("new-tape time-out", plan.newTapeTimeout, &BKQJob::getNewTapeTimeout,
        &BKQJob::setNewTapeTimeout);
  visit("span-tape time-out", plan.spanTapeTimeout, &BKQJob::getSpanTapeTimeout,
        &BKQJob::setSpanTapeTimeout);
  visit("job version", plan.version, &BKQJob::getJobVersion, &BKQJob::setJobVersion);
  visit("host", plan.host, &BKQJob::getHost, &BKQJob::setHost);
  visit("owner", plan.owner, &BKQJob::getOwner, &BKQJob::setOwner);
  visit("password", plan.password, &BKQJob::getPassword, &BKQJob::setPassword);
  visit("machine name", plan.machineName, &BKQJob::getMachineName, &BKQJob::setMachineName);
  visit("machine user", plan.machineUser, &BKQJob::getMachineUser, &BKQJob::setMachineUser);
  visit("machine password", plan.machinePassword, &BKQJob::getMachinePassword,
        &BKQJob::setMachinePassword);
  visit("machine address", plan.machineAddress, &BKQJob::getMachineAddress,
        &BKQJob::setMachineAddress);
  visit("report file", plan.reportFile, &BKQJob::getReportFile, &BKQJob::setReportFile);
  visit("comments", plan.comments, &BKQJob::getComments, &BKQJob::setComments);
  visit("before job", plan.beforeJob, &BKQJob::getBeforeJob, &BKQJob::setBeforeJob);
  visit("after job", plan.afterJob, &BKQJob::getAfterJob, &BKQJob::setAfterJob);
  visit("file name", plan.fileName, &BKQJob::getFileName, &BKQJob::setFileName);
  visit("pool name", plan.poolName, &BKQJob::getPoolName, &BKQJob::setPoolName);
}

template <class Plan, class Visitor>
void eachOfBackup(Plan& plan, Visitor& visit) {
  visit("maximum threads", plan.maxThreads, &BKQBackupJob::getMaxThreads,
        &BKQBackupJob::setMaxThreads);
  visit("session password", plan.sessionPassword, &BKQBackupJob::getSessionPassword,
        &BKQBackupJob::setSessionPassword);
  visit("tape method", plan.tapeMethod, &BKQBackupJob::getTapeMethod, &BKQBackupJob::setTapeMethod);
  visit("span method", plan.spanMethod, &BKQBackupJob::getSpanMethod, &BKQBackupJob::setSpanMethod);
}

template <class Plan, class Visitor>
void eachOfRestore(Plan& plan, Visitor& visit) {
  visit("on conflict", plan.onConflict, &BKQRestoreJob::getOnConflict,
        &BKQRestoreJob::setOnConflict);
  visit("restore view", plan.restoreView, &BKQRestoreJob::getRestoreView,
        &BKQRestoreJob::setRestoreView);
  visit("session password", plan.sessionPassword, &BKQRestoreJob::getSessionPassword,
        &BKQRestoreJob::setSessionPassword);
}

template <class Plan, class Visitor>
void eachOfMerge(Plan& plan, Visitor& visit) {
  visit("merge type", plan.type, &BKQMergeJob::getMergeType, &BKQMergeJob::setMergeType);
  visit("detailed merge", plan.detailed, &BKQMergeJob::getDetailedMerge,
        &BKQMergeJob::setDetailedMerge);
}

template <class Plan, class Visitor>
void eachOfScan(Plan& plan, Visitor& visit) {
  visit("scan type", plan.type, &BKQScanJob::getScanType, &BKQScanJob::setScanType);
  visit("detailed scan", plan.detailed, &BKQScanJob::getDetailedScan, &BKQScanJob::setDetailedScan);
}

template <class Plan, class Visitor>
void eachOfFax(Plan& plan, Visitor& visit) {
  visit("fax host", plan.host, &BKQFax::getHostName, &BKQFax::setHostName);
  visit("fax user", plan.user, &BKQFax::getUserName, &BKQFax::setUserName);
  visit("fax password", plan.password, &BKQFax::getUserPW, &BKQFax::setUserPW);
  visit("fax number", plan.number, &BKQFax::getFaxNumber, &BKQFax::setFaxNumber);
  visit("cover page", plan.coverPage, &BKQFax::getCoverPageFile, &BKQFax::setCoverPageFile);
  visit("receiver", plan.receiver, &BKQFax::getReceiverName, &BKQFax::setReceiverName);
}

template <class Plan, class Visitor>
void eachOfEMail(Plan& plan, Visitor& visit) {
  visit("e-mail host", plan.host, &BKQEMail::getHostName, &BKQEMail::setHostName);
  visit("e-mail user", plan.user, &BKQEMail::getUserName, &BKQEMail::setUserName);
  visit("e-mail password", plan.password, &BKQEMail::getUserPW, &BKQEMail::setUserPW);
}

template <class Plan, class Visitor>
void eachOfMHSEMail(Plan& plan, Visitor& visit) {
  visit("MHS directory", plan.mhsDir, &BKQMHSEMail::getMHSDir, &BKQMHSEMail::setMHSDir);
  visit("MHS ID", plan.mhsId, &BKQMHSEMail::getMHSId, &BKQMHSEMail::setMHSId);
  visit("MHS user", plan.mhsUserName, &BKQMHSEMail::getMHSUserName, &BKQMHSEMail::setMHSUserName);
}

template <class Plan, class Visitor>
void eachOfPrintQueue(Plan& plan, Visitor& visit) {
  visit("queue host", plan.host, &BKQPrintQueue::getHostName, &BKQPrintQueue::setHostName);
  visit("queue user", plan.user, &BKQPrintQueue::getUserName, &BKQPrintQueue::setUserName);
  visit("queue password", plan.password, &BKQPrintQueue::getUserPW, &BKQPrintQueue::setUserPW);
  visit("queue", plan.queue, &BKQPrintQueue::getQueueName, &BKQPrintQueue::setQueueName);
}

template <class Plan, class Visitor>
void eachOfOpenFile(Plan& plan, Visitor& visit) {
  visit("actions", plan.actions, &BKQOpenFileInfo::getFActions, &BKQOpenFileInfo::setFActions);
  visit("methods", plan.methods, &BKQOpenFileInfo::getFMethods, &BKQOpenFileInfo::setFMethods);
  visit("retries", plan.retryCount, &BKQOpenFileInfo::getRetryCount,
        &BKQOpenFileInfo::setRetryCount);
  visit("retry interval", plan.retryInterval, &BKQOpenFileInfo::getRetryInterval,
        &BKQOpenFileInfo::setRetryInterval);
}

template <class Plan, class Visitor>
void eachOfNode(Plan& plan, Visitor& visit) {
  visit("before node", plan.beforeNode, &BKQNode::getBeforeNode, &BKQNode::setBeforeNode);
  visit("after node", plan.afterNode, &BKQNode::getAfterNode, &BKQNode::setAfterNode);
  visit("OS version", plan.osVersion, &BKQNode::getNodeOSver, &BKQNode::setNodeOSver);
  visit("node address", plan.address, &BKQNode::getNodeAddress, &BKQNode::setNodeAddress);
  visit("node domain", plan.domain, &BKQNode::getNodeDomain, &BKQNode::setNodeDomain);
  visit("user name", plan.userName, &BKQNode::getUserName, &BKQNode::setUserName);
  visit("password", plan.password, &BKQNode::getPassword, &BKQNode::setPassword);
  visit("priority", plan.priority, &BKQNode::getPriority, &BKQNode::setPriority);
  visit("stored node type", plan.storedNodeType, &BKQNode::getNodeType, &BKQNode::setNodeType);
  visit("before-node wait", plan.beforeNodeWait, &BKQNode::getBeforeNodeWait,
        &BKQNode::setBeforeNodeWait);
}

template <class Plan, class Visitor>
void eachOfUnixNode(Plan& plan, Visitor& visit) {
  visit("UNIX options", plan.classOptions, &BKQUnixNode::getUnixOptions,
        &BKQUnixNode::setUnixOptions);
}

template <class Plan, class Visitor>
void eachOfSybaseNode(Plan& plan, Visitor& visit) {
  visit("Sybase options", plan.classOptions, &BKQSybaseNode::getSybaseOptions,
        &BKQSybaseNode::setSybaseOptions);
  visit("encryption key", plan.encryptKey, &BKQSybaseNode::getEncryptKey,
        &BKQSybaseNode::setEncryptKey);
  visit("dump file", plan.dumpFile, &BKQSybaseNode::getDumpFile, &BKQSybaseNode::setDumpFile);
}

template <class Plan, class Visitor>
void eachOfOracleNode(Plan& plan, Visitor& visit) {
  visit("Oracle options", plan.classOptions, &BKQOracleNode::getOracleOptions,
        &BKQOracleNode::setOracleOptions);
}

template <class Plan, class Visitor>
void eachOfInformixNode(Plan& plan, Visitor& visit) {
  visit("Informix options", plan.classOptions, &BKQInformixNode::getInformixOptions,
        &BKQInformixNode::setInformixOptions);
}

template <class Plan, class Visitor>
void eachOfSnapShotNode(Plan& plan, Visitor& visit) {
  visit("snapshot options", plan.classOptions, &BKQSnapShotNode::getSnapShotOptions,
        &BKQSnapShotNode::setSnapShotOptions);
}

template <class Plan, class Visitor>
void eachOfRestoreNode(Plan& plan, Visitor& visit) {
  visit("destination directory", plan.destinationDir, &BKQRestoreNode::getDestinationDir,
        &BKQRestoreNode::setDestinationDir);
}

template <class Plan, class Visitor>
void eachOfDBRestoreNode(Plan& plan, Visitor& visit) {
  visit("file-system type", plan.fsType, &BKQDBRestoreNode::getFStype,
        &BKQDBRestoreNode::setFStype);
  visit("database options", plan.dbOptions, &BKQDBRestoreNode::getOptions,
        &BKQDBRestoreNode::setOptions);
}

template <class Plan, class Visitor>
void eachOfGroom(Plan& plan, Visitor& visit) {
  visit("months", plan.months, &BKQGroom::getMonths, &BKQGroom::setMonths);
  visit("copies", plan.copies, &BKQGroom::getCopies, &BKQGroom::setCopies);
  visit("groom options", plan.options, &BKQGroom::getOptions, &BKQGroom::setOptions);
}

template <class Plan, class Visitor>
void eachOfDisk(Plan& plan, Visitor& visit) {
  visit("disk name", plan.name, &BKQDisk::getDiskName, &BKQDisk::setDiskName);
  visit("disk options", plan.options, &BKQDisk::getOptions, &BKQDisk::setOptions);
  visit("disk password", plan.password, &BKQDisk::getPassword, &BKQDisk::setPassword);
  visit("disk user", plan.user, &BKQDisk::getUser, &BKQDisk::setUser);
  visit("disk password 2", plan.password2, &BKQDisk::getDiskPW2, &BKQDisk::setDiskPW2);
  visit("encryption key", plan.encryptionKey, &BKQDisk::getEncryptionKey,
        &BKQDisk::setEncryptionKey);
  visit("disk priority", plan.priority, &BKQDisk::getPriority, &BKQDisk::setPriority);
  visit("compare first MB", plan.compareFirstMB, &BKQDisk::getCompareFirstMB,
        &BKQDisk::setCompareFirstMB);
  visit("after disk", plan.afterDisk, &BKQDisk::getAfterDisk, &BKQDisk::setAfterDisk);
  visit("before disk", plan.beforeDisk, &BKQDisk::getBeforeDisk, &BKQDisk::setBeforeDisk);
  visit("before-disk wait", plan.beforeDiskWait, &BKQDisk::getBeforeDiskWait,
        &BKQDisk::setBeforeDiskWait);
  visit("database property", plan.dbProperty, &BKQDisk::getDBProperty, &BKQDisk::setDBProperty);
}

template <class Plan, class Visitor>
void eachOfDiskItem(Plan& plan, Visitor& visit) {
  visit("object property", plan.objectProperty, &BKQDiskItem::getObjectProperty,
        &BKQDiskItem::setObjectProperty);
}

template <class Plan, class Visitor>
void eachOfTape(Plan& plan, Visitor& visit) {
  visit("session password", plan.sessionPassword, &BKQTape::getSessionPW, &BKQTape::setSessionPW);
  visit("stream number", plan.streamNumber, &BKQTape::getStreamNum, &BKQTape::setStreamNum);
  visit("session number", plan.sessionNumber, &BKQTape::getSessionNumber,
        &BKQTape::setSessionNumber);
  visit("QFA block", plan.qfaBlockNumber, &BKQTape::getQFABlockNumber, &BKQTape::setQFABlockNumber);
  visit("tape level", plan.level, &BKQTape::getTapeLevel, &BKQTape::setTapeLevel);
  visit("tape path", plan.path, &BKQTape::getPath, &BKQTape::setPath);
  visit("tape location", plan.location, &BKQTape::getLocation, &BKQTape::setLocation);
  visit("tape ID", plan.id, &BKQTape::getTapeID, &BKQTape::setTapeID);
  visit("tape sequence", plan.sequence, &BKQTape::getTapeSeq, &BKQTape::setTapeSeq);
  visit("media name", plan.mediaName, &BKQTape::getMediaName, &BKQTape::setMediaName);
  visit("serial number", plan.serialNumber, &BKQTape::getSerialNumber, &BKQTape::setSerialNumber);
  visit("tape serial number", plan.tapeSerialNumber, &BKQTape::getTapeSerialNumber,
        &BKQTape::setTapeSerialNumber);
  visit("file system", plan.fileSystem, &BKQTape::getFileSystem, &BKQTape::setFileSystem);
  visit("session end time", plan.sessionEndTime, &BKQTape::getSessionEndTime,
        &BKQTape::setSessionEndTime);
}

template <class Plan, class Visitor>
void eachOfTapeItem(Plan& plan, Visitor& visit) {
  visit("file or directory", plan.fileOrDir, &BKQTapeItem::getFileOrDir,
        &BKQTapeItem::setFileOrDir);
  visit("item options", plan.options, &BKQTapeItem::getOptions, &BKQTapeItem::setOptions);
  visit("physical chunk", plan.physicalChunkNumber, &BKQTapeItem::getPhysicalChunkNum,
        &BKQTapeItem::setPhysicalChunkNum);
}

template <class Plan, class Visitor>
void eachOfTapeExtension(Plan& plan, Visitor& visit) {
  visit("database user", plan.user, &BKQTapeXtension::getDBuser, &BKQTapeXtension::setDBuser);
  visit("database password", plan.password, &BKQTapeXtension::getDBpw, &BKQTapeXtension::setDBpw);
  visit("extension options", plan.options, &BKQTapeXtension::getOptions,
        &BKQTapeXtension::setOptions);
}

template <class Plan, class Visitor>
void eachOfJobUnit(Plan& plan, Visitor& visit) {
  visit("unit job type", plan.jobType, &BKQJobUnit::getJobType, &BKQJobUnit::setJobType);
  visit("unit options", plan.options, &BKQJobUnit::getOptions, &BKQJobUnit::setOptions);
  visit("unit serial number", plan.serialNumber, &BKQJobUnit::getSerialNumber,
        &BKQJobUnit::setSerialNumber);
  visit("unit media name", plan.mediaName, &BKQJobUnit::getMediaName, &BKQJobUnit::setMediaName);
  visit("unit tape serial number", plan.tapeSerialNumber, &BKQJobUnit::getTapeSerialNumber,
        &BKQJobUnit::setTapeSerialNumber);
}

template <class Plan, class Visitor>
void eachOfExceptionDay(Plan& plan, Visitor& visit) {
  visit("day job type", plan.jobType, &BKQExceptionDay::getJobType, &BKQExceptionDay::setJobType);
  visit("day options", plan.options, &BKQExceptionDay::getOptions, &BKQExceptionDay::setOptions);
}

template <class Plan, class Visitor>
void eachOfJobMask(Plan& plan, Visitor& visit) {
  visit("repeats", plan.repeats, &BKQJobMask::getRepeats, &BKQJobMask::setRepeats);
}

template <class Plan, class Visitor>
void eachOfSchedule(Plan& plan, Visitor& visit) {
  visit("schedule pool", plan.poolName, &BKQSchedule::getPoolName, &BKQSchedule::setPoolName);
  using Schedule = BKQSchedule;
  visit("run now", plan.runNow, static_cast<int (Schedule::*)() const>(&Schedule::runJobNow),
        static_cast<void (Schedule::*)(int)>(&Schedule::runJobNow));
}

template <class Plan, class Visitor>
void eachOfCustomSchedule(Plan& plan, Visitor& visit) {
  visit("skip weekday", plan.skipWeekDay, &BKQCustomSchedule::getSkipWeekDayFlag,
        &BKQCustomSchedule::setSkipWeekDayFlag);
}

template <class Plan, class Visitor>
void eachOfRotationSchedule(Plan& plan, Visitor& visit) {
  using Schedule = BKQRotationSchedule;
  visit("set name", plan.setName, &Schedule::getSetName, &Schedule::setSetName);
  visit("set password", plan.setPassword, &Schedule::getSetPW, &Schedule::setSetPW);
  visit("scheme name", plan.schemeName, &Schedule::getSchemeName, &Schedule::setSchemeName);
  visit("makeup", plan.makeup, static_cast<int (Schedule::*)() const>(&Schedule::doMakeup),
        static_cast<void (Schedule::*)(int)>(&Schedule::doMakeup));
}

template <class Plan, class Visitor>
void eachOfCruiseSchedule(Plan& plan, Visitor& visit) {
  using Schedule = BKQCruiseSchedule;
  visit("save monthly", plan.saveMonthly, &Schedule::getSaveMonthly, &Schedule::setSaveMonthly);
  visit("save weekly", plan.saveWeekly, &Schedule::getSaveWeekly, &Schedule::setSaveWeekly);
  visit("save daily", plan.saveDaily, &Schedule::getSaveDaily, &Schedule::setSaveDaily);
  visit("cruise options", plan.cruiseOptions, &Schedule::getOptions, &Schedule::setOptions);
  visit("cruise months", plan.months, &Schedule::getMonths, &Schedule::setMonths);
  visit("cruise copies", plan.copies, &Schedule::getCopies, &Schedule::setCopies);
  visit("cruise method", plan.method, &Schedule::getCruiseMethod, &Schedule::setCruiseMethod);
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_ATTRIBUTES_H_
