#ifndef BKOQ_TESTS_CATALOG_ATTRIBUTES_H_
#define BKOQ_TESTS_CATALOG_ATTRIBUTES_H_

#include <string>
#include <type_traits>

#include "tests/catalog/kinds.h"

// Every attribute of every class, once: unit tests, random jobs, fuzzing and the checks of the job
// file's tables take them from here. A new attribute is one line here; what else it needs,
// tests/catalog tells: each test there names the file in which it is missing.
//
// X(class, member, getter, setter, value, first, key, fields)
//   member  in the plans of the random jobs (tests/random/plan.h)
//   value   Text, Time or a number as wide as the plan holds it
//   first   what the constructor leaves; classes that begin with another value are in
//           tests/catalog/kinds.h
//   key     in a job file
//   fields  of the records that it fills, with their record inside a job's or rotation's block;
//           those of one layout after "current:" or "previous:"; empty: it reaches no record
// APART() has the same columns, for attributes that random jobs choose by rules of their own: the
// plan's member is written by hand.

// clang-format off
#define BKOQ_JOB_ATTRIBUTES(X, APART) \
  X(BKQJob, id, getJobID, setJobID, std::uint32_t, 0, "jobID", "") \
  APART(BKQJob, number, getJobNumber, setJobNumber, std::uint32_t, 0, "jobNumber", "") \
  APART(BKQJob, number, getInstanceID, setInstanceID, std::uint32_t, 0, "instanceID", "") \
  X(BKQJob, scriptType, getScriptType, setScriptType, std::uint16_t, 0, "scriptType", "usScriptType") \
  X(BKQJob, status, getJobStatus, setJobStatus, std::uint32_t, 0, "jobStatus", "usJobStatus") \
  APART(BKQJob, options, getOptions, setOptions, std::uint32_t, 0, "options", "ulOptions") \
  X(BKQJob, beforeJobWait, getBeforeJobWait, setBeforeJobWait, std::uint16_t, 0, "beforeJobWait", "usBeforeJobWait") \
  X(BKQJob, onExitCode, getOnExitCode, setOnExitCode, std::int32_t, 0, "onExitCode", "") \
  X(BKQJob, newTapeTimeout, getNewTapeTimeout, setNewTapeTimeout, std::uint16_t, 5, "newTapeTimeout", "usNewTapeTimeout") \
  X(BKQJob, spanTapeTimeout, getSpanTapeTimeout, setSpanTapeTimeout, std::uint16_t, 9999, "spanTapeTimeout", "usSpanTapeTimeout") \
  X(BKQJob, version, getJobVersion, setJobVersion, Text, "", "jobVersion", "") \
  X(BKQJob, host, getHost, setHost, Text, "", "host", "pszHost") \
  X(BKQJob, owner, getOwner, setOwner, Text, "", "owner", "pszOwner") \
  X(BKQJob, password, getPassword, setPassword, Text, "", "password", "") \
  X(BKQJob, machineName, getMachineName, setMachineName, Text, "", "machineName", "") \
  X(BKQJob, machineUser, getMachineUser, setMachineUser, Text, "", "machineUser", "") \
  X(BKQJob, machinePassword, getMachinePassword, setMachinePassword, Text, "", "machinePassword", "") \
  X(BKQJob, machineAddress, getMachineAddress, setMachineAddress, Text, "", "machineAddress", "") \
  X(BKQJob, reportFile, getReportFile, setReportFile, Text, "", "reportFile", "pszReportFile") \
  X(BKQJob, comments, getComments, setComments, Text, "", "comments", "pszComments") \
  X(BKQJob, beforeJob, getBeforeJob, setBeforeJob, Text, "", "beforeJob", "pszBeforeJob") \
  X(BKQJob, afterJob, getAfterJob, setAfterJob, Text, "", "afterJob", "pszAfterJob") \
  X(BKQJob, fileName, getFileName, setFileName, Text, "", "fileName", "") \
  X(BKQJob, poolName, getPoolName, setPoolName, Text, "", "poolName", "")

#define BKOQ_BACKUP_ATTRIBUTES(X, APART) \
  X(BKQBackupJob, maxThreads, getMaxThreads, setMaxThreads, std::uint16_t, 0, "maxThreads", "") \
  X(BKQBackupJob, sessionPassword, getSessionPassword, setSessionPassword, Text, "", "sessionPassword", "pszPassword") \
  X(BKQBackupJob, tapeMethod, getTapeMethod, setTapeMethod, std::uint32_t, 0, "tapeMethod", "usNewTapeMethod") \
  X(BKQBackupJob, spanMethod, getSpanMethod, setSpanMethod, std::uint32_t, 0, "spanMethod", "usSpanTapeMethod")

#define BKOQ_RESTORE_ATTRIBUTES(X, APART) \
  X(BKQRestoreJob, onConflict, getOnConflict, setOnConflict, std::uint32_t, 3, "onConflict", "usOnConflict") \
  X(BKQRestoreJob, restoreView, getRestoreView, setRestoreView, std::uint32_t, 1, "restoreView", "") \
  X(BKQRestoreJob, restorePassword, getSessionPassword, setSessionPassword, Text, "", "sessionPassword", "pszSessionPW")

#define BKOQ_MERGE_ATTRIBUTES(X, APART) \
  X(BKQMergeJob, mergeType, getMergeType, setMergeType, std::uint32_t, 0, "mergeType", "") \
  X(BKQMergeJob, detailedMerge, getDetailedMerge, setDetailedMerge, std::int32_t, 0, "detailedMerge", "")

#define BKOQ_SCAN_ATTRIBUTES(X, APART) \
  X(BKQScanJob, scanType, getScanType, setScanType, std::uint32_t, 0, "scanType", "") \
  X(BKQScanJob, detailedScan, getDetailedScan, setDetailedScan, std::int32_t, 0, "detailedScan", "")

#define BKOQ_FAX_ATTRIBUTES(X, APART) \
  X(BKQFax, host, getHostName, setHostName, Text, "", "hostName", "stFax.pszHostName") \
  X(BKQFax, user, getUserName, setUserName, Text, "", "userName", "stFax.pszUserName") \
  X(BKQFax, password, getUserPW, setUserPW, Text, "", "userPW", "stFax.pszUserPW") \
  X(BKQFax, number, getFaxNumber, setFaxNumber, Text, "", "faxNumber", "stFax.pszFaxNumber") \
  X(BKQFax, coverPage, getCoverPageFile, setCoverPageFile, Text, "", "coverPageFile", "stFax.pszCoverPageFile") \
  X(BKQFax, receiver, getReceiverName, setReceiverName, Text, "", "receiverName", "previous:stFax.pszReceiverName")

#define BKOQ_EMAIL_ATTRIBUTES(X, APART) \
  X(BKQEMail, host, getHostName, setHostName, Text, "", "hostName", "stEMail.pszHostName") \
  X(BKQEMail, user, getUserName, setUserName, Text, "", "userName", "stEMail.pszUserName") \
  X(BKQEMail, password, getUserPW, setUserPW, Text, "", "userPW", "stEMail.pszUserPW")

#define BKOQ_MHS_EMAIL_ATTRIBUTES(X, APART) \
  X(BKQMHSEMail, mhsDir, getMHSDir, setMHSDir, Text, "", "mhsDir", "stEMail.pszMHSDir") \
  X(BKQMHSEMail, mhsId, getMHSId, setMHSId, Text, "", "mhsId", "stEMail.pszMHSId") \
  X(BKQMHSEMail, mhsUserName, getMHSUserName, setMHSUserName, Text, "", "mhsUserName", "stEMail.pszMHSUserName")

#define BKOQ_PRINT_QUEUE_ATTRIBUTES(X, APART) \
  X(BKQPrintQueue, host, getHostName, setHostName, Text, "", "hostName", "stPrintQueue.pszHostName") \
  X(BKQPrintQueue, user, getUserName, setUserName, Text, "", "userName", "stPrintQueue.pszUserName") \
  X(BKQPrintQueue, password, getUserPW, setUserPW, Text, "", "userPW", "stPrintQueue.pszUserPW") \
  X(BKQPrintQueue, queue, getQueueName, setQueueName, Text, "", "queueName", "stPrintQueue.pszQueueName")

#define BKOQ_OPEN_FILE_ATTRIBUTES(X, APART) \
  X(BKQOpenFileInfo, actions, getFActions, setFActions, std::uint32_t, 1, "fActions", "stOpenFile.ulFActions") \
  X(BKQOpenFileInfo, methods, getFMethods, setFMethods, std::uint32_t, 0, "fMethods", "stOpenFile.ulFMethods") \
  X(BKQOpenFileInfo, retryCount, getRetryCount, setRetryCount, std::uint16_t, 5, "retryCount", "stOpenFile.usRetryCount") \
  X(BKQOpenFileInfo, retryInterval, getRetryInterval, setRetryInterval, std::uint16_t, 5, "retryInterval", "stOpenFile.usRetryInterval")

#define BKOQ_NODE_ATTRIBUTES(X, APART) \
  APART(BKQNode, name, getNodeName, setNodeName, Text, "localhost", "nodeName", "pszNodeName") \
  X(BKQNode, beforeNode, getBeforeNode, setBeforeNode, Text, "", "beforeNode", "pszBeforeNode") \
  X(BKQNode, afterNode, getAfterNode, setAfterNode, Text, "", "afterNode", "pszAfterNode") \
  APART(BKQNode, os, getNodeOS, setNodeOS, std::uint32_t, 0, "nodeOS", "usNodeOS") \
  X(BKQNode, osVersion, getNodeOSver, setNodeOSver, Text, "", "nodeOSver", "pszNodeOSVer") \
  X(BKQNode, address, getNodeAddress, setNodeAddress, Text, "", "nodeAddress", "pszNodeAddress") \
  X(BKQNode, domain, getNodeDomain, setNodeDomain, Text, "", "nodeDomain", "current:pszNodeDomain") \
  X(BKQNode, userName, getUserName, setUserName, Text, "", "userName", "pszUserName") \
  X(BKQNode, password, getPassword, setPassword, Text, "", "password", "pszPassword") \
  X(BKQNode, priority, getPriority, setPriority, std::uint16_t, 255, "priority", "") \
  X(BKQNode, storedNodeType, getNodeType, setNodeType, std::uint32_t, 0, "nodeType", "") \
  APART(BKQNode, options, getOptions, setOptions, std::uint32_t, 0, "options", "ulNodeOptions") \
  APART(BKQNode, deviceType, getDeviceType, setDeviceType, std::uint16_t, 0, "deviceType", "usDeviceType") \
  X(BKQNode, beforeNodeWait, getBeforeNodeWait, setBeforeNodeWait, std::uint16_t, 0, "beforeNodeWait", "usBeforeNodeWait")

#define BKOQ_UNIX_NODE_ATTRIBUTES(X, APART) \
  X(BKQUnixNode, unixOptions, getUnixOptions, setUnixOptions, std::uint32_t, 0, "unixOptions", "ulOptions")

#define BKOQ_SYBASE_NODE_ATTRIBUTES(X, APART) \
  X(BKQSybaseNode, sybaseOptions, getSybaseOptions, setSybaseOptions, std::uint32_t, 0, "sybaseOptions", "") \
  X(BKQSybaseNode, encryptKey, getEncryptKey, setEncryptKey, Text, "", "encryptKey", "") \
  X(BKQSybaseNode, dumpFile, getDumpFile, setDumpFile, Text, "", "dumpFile", "")

#define BKOQ_ORACLE_NODE_ATTRIBUTES(X, APART) \
  X(BKQOracleNode, oracleOptions, getOracleOptions, setOracleOptions, std::uint32_t, 0, "oracleOptions", "")

#define BKOQ_INFORMIX_NODE_ATTRIBUTES(X, APART) \
  X(BKQInformixNode, informixOptions, getInformixOptions, setInformixOptions, std::uint32_t, 0, "informixOptions", "")

#define BKOQ_SNAPSHOT_NODE_ATTRIBUTES(X, APART) \
  X(BKQSnapShotNode, snapShotOptions, getSnapShotOptions, setSnapShotOptions, std::uint32_t, 0, "snapShotOptions", "")

#define BKOQ_RESTORE_NODE_ATTRIBUTES(X, APART) \
  X(BKQRestoreNode, destinationDir, getDestinationDir, setDestinationDir, Text, "", "destinationDir", "pszPath") \
  APART(BKQRestoreNode, actualType, getActualNodeType, setActualNodeType, std::uint32_t, 0, "actualNodeType", "usNodeType") \
  APART(BKQRestoreNode, diskName, getDiskName, setDiskName, Text, "", "diskName", "pszDiskName")

#define BKOQ_DB_RESTORE_NODE_ATTRIBUTES(X, APART) \
  X(BKQDBRestoreNode, fsType, getFStype, setFStype, std::uint32_t, 0, "fsType", "usDiskType") \
  X(BKQDBRestoreNode, dbOptions, getOptions, setOptions, std::uint32_t, 0, "options", "ulOptions")

#define BKOQ_GROOM_ATTRIBUTES(X, APART) \
  X(BKQGroom, months, getMonths, setMonths, std::uint16_t, 0, "months", "") \
  X(BKQGroom, copies, getCopies, setCopies, std::uint16_t, 0, "copies", "") \
  X(BKQGroom, options, getOptions, setOptions, std::uint32_t, 2, "options", "")

#define BKOQ_DISK_ATTRIBUTES(X, APART) \
  X(BKQDisk, name, getDiskName, setDiskName, Text, "", "diskName", "pszDiskName") \
  APART(BKQDisk, type, getDiskType, setDiskType, std::uint32_t, 0, "diskType", "usDiskType") \
  X(BKQDisk, options, getOptions, setOptions, std::uint32_t, 0, "options", "ulOptions") \
  X(BKQDisk, password, getPassword, setPassword, Text, "", "password", "pszPassword") \
  X(BKQDisk, user, getUser, setUser, Text, "", "user", "pszDiskPW2") \
  X(BKQDisk, password2, getDiskPW2, setDiskPW2, Text, "", "diskPW2", "pszDiskPW2") \
  X(BKQDisk, encryptionKey, getEncryptionKey, setEncryptionKey, Text, "", "encryptionKey", "pszEncryptionKey") \
  X(BKQDisk, priority, getPriority, setPriority, std::uint16_t, 255, "priority", "") \
  X(BKQDisk, compareFirstMB, getCompareFirstMB, setCompareFirstMB, std::uint16_t, 0, "compareFirstMB", "") \
  X(BKQDisk, afterDisk, getAfterDisk, setAfterDisk, Text, "", "afterDisk", "") \
  X(BKQDisk, beforeDisk, getBeforeDisk, setBeforeDisk, Text, "", "beforeDisk", "") \
  X(BKQDisk, beforeDiskWait, getBeforeDiskWait, setBeforeDiskWait, std::uint16_t, 0, "beforeDiskWait", "") \
  X(BKQDisk, dbProperty, getDBProperty, setDBProperty, std::uint32_t, 0, "dbProperty", "")

#define BKOQ_DISK_ITEM_ATTRIBUTES(X, APART) \
  APART(BKQDiskItem, path, getPath, setPath, Text, "", "path", "pszPath") \
  APART(BKQDiskItem, optionsAfterFiles, getOptions, setOptions, std::uint32_t, 1, "options", "ulOptions") \
  X(BKQDiskItem, objectProperty, getObjectProperty, setObjectProperty, std::uint32_t, 0, "objectProperty", "")

#define BKOQ_TAPE_ATTRIBUTES(X, APART) \
  APART(BKQTape, name, getTapeName, setTapeName, Text, "", "tapeName", "pszTapeName") \
  APART(BKQTape, deviceGroup, getDeviceGroup, setDeviceGroup, Text, "", "deviceGroup", "pszDeviceGroup") \
  X(BKQTape, sessionPassword, getSessionPW, setSessionPW, Text, "", "sessionPW", "pszSessionPW") \
  X(BKQTape, streamNumber, getStreamNum, setStreamNum, std::uint8_t, 0, "streamNum", "") \
  X(BKQTape, sessionNumber, getSessionNumber, setSessionNumber, std::uint16_t, 0, "sessionNumber", "usSessionNumber") \
  X(BKQTape, qfaBlockNumber, getQFABlockNumber, setQFABlockNumber, std::uint32_t, 0, "qfaBlockNumber", "ulQFABlockNumber") \
  X(BKQTape, level, getTapeLevel, setTapeLevel, std::uint16_t, 0, "tapeLevel", "") \
  X(BKQTape, path, getPath, setPath, Text, "", "path", "pszPath") \
  X(BKQTape, location, getLocation, setLocation, Text, "", "location", "pszLocation") \
  X(BKQTape, id, getTapeID, setTapeID, std::uint32_t, 0, "tapeID", "current:usTapeID,previous:ulTapeID") \
  X(BKQTape, sequence, getTapeSeq, setTapeSeq, std::uint8_t, 0, "tapeSeq", "usTapeSeq") \
  X(BKQTape, mediaName, getMediaName, setMediaName, Text, "", "mediaName", "") \
  X(BKQTape, serialNumber, getSerialNumber, setSerialNumber, std::uint32_t, 0, "serialNumber", "") \
  X(BKQTape, tapeSerialNumber, getTapeSerialNumber, setTapeSerialNumber, Text, "", "tapeSerialNumber", "") \
  X(BKQTape, fileSystem, getFileSystem, setFileSystem, std::uint8_t, 0, "fileSystem", "usFileSystem") \
  X(BKQTape, sessionEndTime, getSessionEndTime, setSessionEndTime, std::int32_t, 0, "sessionEndTime", "previous:lSessionEndTime") \
  APART(BKQTape, optionsAfterExtension, getOptions, setOptions, std::uint32_t, 0, "options", "ulOptions")

#define BKOQ_TAPE_ITEM_ATTRIBUTES(X, APART) \
  X(BKQTapeItem, fileOrDir, getFileOrDir, setFileOrDir, Text, "", "fileOrDir", "pszFileOrDir") \
  APART(BKQTapeItem, chunkNumber, getChunkNum, setChunkNum, std::uint32_t, 0, "chunkNum", "ulChunkNum") \
  APART(BKQTapeItem, chunkOffset, getChunkOffset, setChunkOffset, std::uint32_t, 0, "chunkOffset", "usChunkOffset") \
  X(BKQTapeItem, options, getOptions, setOptions, std::uint32_t, 0, "options", "ulOptions") \
  X(BKQTapeItem, physicalChunkNumber, getPhysicalChunkNum, setPhysicalChunkNum, std::uint32_t, 0, "physicalChunkNum", "")

#define BKOQ_TAPE_EXTENSION_ATTRIBUTES(X, APART) \
  X(BKQTapeXtension, user, getDBuser, setDBuser, Text, "", "dbUser", "current:pszDBUser") \
  X(BKQTapeXtension, password, getDBpw, setDBpw, Text, "", "dbPassword", "current:pszDBPW") \
  APART(BKQTapeXtension, sessionEndTime, getSessionEndTime, setSessionEndTime, std::int32_t, 0, "sessionEndTime", "lSessionEndTime") \
  X(BKQTapeXtension, options, getOptions, setOptions, std::uint32_t, 0, "options", "current:ulOptions")

#define BKOQ_JOB_UNIT_ATTRIBUTES(X, APART) \
  X(BKQJobUnit, jobType, getJobType, setJobType, std::uint32_t, 0, "jobType", "previous:stScheduleExt.abJobTypes") \
  X(BKQJobUnit, options, getOptions, setOptions, std::uint32_t, 0, "options", "") \
  X(BKQJobUnit, serialNumber, getSerialNumber, setSerialNumber, std::uint32_t, 0, "serialNumber", "") \
  X(BKQJobUnit, mediaName, getMediaName, setMediaName, Text, "", "mediaName", "") \
  X(BKQJobUnit, tapeSerialNumber, getTapeSerialNumber, setTapeSerialNumber, Text, "", "tapeSerialNumber", "") \
  APART(BKQJobUnit, execTime, getExecTime, setExecTime, Time, 0, "execTime", "")

#define BKOQ_EXCEPTION_DAY_ATTRIBUTES(X, APART) \
  X(BKQExceptionDay, jobType, getJobType, setJobType, std::uint32_t, 0, "jobType", "") \
  X(BKQExceptionDay, options, getOptions, setOptions, std::uint32_t, 0, "options", "") \
  APART(BKQExceptionDay, time, getExceptionTime, setExceptionTime, Time, 0, "exceptionTime", "")

#define BKOQ_TIME_SPAN_ATTRIBUTES(X, APART) \
  APART(BKQTime, intervalValue, getValue, setValue, std::uint32_t, 0, "value", "") \
  APART(BKQTime, intervalType, getType, setType, std::uint32_t, 1, "type", "")

#define BKOQ_JOB_MASK_ATTRIBUTES(X, APART) \
  X(BKQJobMask, repeats, getRepeats, setRepeats, std::uint16_t, 0, "repeats", "") \
  APART(BKQJobMask, prefix, getTapeNamePrefix, setTapeNamePrefix, std::uint32_t, 1, "tapeNamePrefix", "")

#define BKOQ_SCHEDULE_ATTRIBUTES(X, APART) \
  APART(BKQSchedule, submitTime, getSubmitTime, setSubmitTime, Time, 0, "submitTime", "stSchedule.lSubmitTime") \
  APART(BKQSchedule, execTime, getExecTime, setExecTime, Time, 0, "execTime", "stSchedule.lExecTime") \
  X(BKQSchedule, poolName, getPoolName, setPoolName, Text, "", "poolName", "") \
  X(BKQSchedule, runNow, runJobNow, runJobNow, std::int32_t, 0, "runJobNow", "")

#define BKOQ_CUSTOM_SCHEDULE_ATTRIBUTES(X, APART) \
  X(BKQCustomSchedule, skipWeekDay, getSkipWeekDayFlag, setSkipWeekDayFlag, std::uint16_t, 0, "skipWeekDayFlag", "stSchedule.usSkipWeekDay")

#define BKOQ_ROTATION_SCHEDULE_ATTRIBUTES(X, APART) \
  X(BKQRotationSchedule, setName, getSetName, setSetName, Text, "", "setName", "stScheduleExt.pszSetName") \
  X(BKQRotationSchedule, setPassword, getSetPW, setSetPW, Text, "", "setPW", "") \
  X(BKQRotationSchedule, schemeName, getSchemeName, setSchemeName, Text, "", "schemeName", "") \
  X(BKQRotationSchedule, makeup, doMakeup, doMakeup, std::int32_t, 0, "doMakeup", "") \
  APART(BKQRotationSchedule, makeupTime, getPreferedMakeupTime, setPreferedMakeupTime, Time, 0, "preferedMakeupTime", "")

#define BKOQ_CRUISE_SCHEDULE_ATTRIBUTES(X, APART) \
  X(BKQCruiseSchedule, saveMonthly, getSaveMonthly, setSaveMonthly, std::uint16_t, 0, "saveMonthly", "stScheduleExt.usSaveMonthly") \
  X(BKQCruiseSchedule, saveWeekly, getSaveWeekly, setSaveWeekly, std::uint16_t, 0, "saveWeekly", "stScheduleExt.usSaveWeekly") \
  X(BKQCruiseSchedule, saveDaily, getSaveDaily, setSaveDaily, std::uint16_t, 0, "saveDaily", "stScheduleExt.usSaveDaily") \
  X(BKQCruiseSchedule, cruiseOptions, getOptions, setOptions, std::uint32_t, 0, "options", "stScheduleExt.ulCruiseOptions") \
  X(BKQCruiseSchedule, months, getMonths, setMonths, std::uint16_t, 0, "months", "stScheduleExt.usMonths") \
  X(BKQCruiseSchedule, copies, getCopies, setCopies, std::uint16_t, 0, "copies", "stScheduleExt.usCopies") \
  X(BKQCruiseSchedule, method, getCruiseMethod, setCruiseMethod, std::uint32_t, 0, "cruiseMethod", "stScheduleExt.usCruiseMethod")

#define BKOQ_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQFilter, kind, getInclExcl, setInclExcl, std::uint32_t, 0, "inclExcl", "usInclExcl")

#define BKOQ_DIR_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQDirFilter, pattern, getFilterString, setFilterString, Text, "", "filterString", "pszFilter,usFilterLen,ulFilterCount")

#define BKOQ_FILE_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQFileFilter, pattern, getFilterString, setFilterString, Text, "", "filterString", "pszFilter,usFilterLen,ulFilterCount")

#define BKOQ_VOLUME_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQVolumeFilter, pattern, getFilterString, setFilterString, Text, "", "filterString", "pszFilter,usFilterLen,ulFilterCount")

#define BKOQ_ATTRIBUTE_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQAttributeFilter, attributes, getAttributes, setAttributes, std::uint32_t, 0, "attributes", "ulAttributes")

#define BKOQ_TIME_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQTimeFilter, timeAttribute, getTRattribute, setTRattribute, std::uint32_t, 0, "trAttribute", "usTimeAttr")

#define BKOQ_WITHIN_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQWithinTimeFilter, units, getTimeUnits, setTimeUnits, std::uint16_t, 0, "timeUnits", "ulTimeUnits") \
  APART(BKQWithinTimeFilter, unitType, getTimeUnitType, setTimeUnitType, std::uint32_t, 0, "timeUnitType", "usTimeUnitType")

#define BKOQ_BEFORE_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQBeforeTimeFilter, time, getTime, setTime, Time, 0, "time", "lTime")

#define BKOQ_AFTER_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQAfterTimeFilter, time, getTime, setTime, Time, 0, "time", "lTime")

#define BKOQ_BETWEEN_FILTER_ATTRIBUTES(X, APART) \
  APART(BKQBetweenTimeFilter, time, getStartTime, setStartTime, Time, 0, "startTime", "lStartTime") \
  APART(BKQBetweenTimeFilter, endTime, getEndTime, setEndTime, Time, 0, "endTime", "lEndTime")

// Every list.
#define BKOQ_ATTRIBUTES(X, APART) \
  BKOQ_JOB_ATTRIBUTES(X, APART) \
  BKOQ_BACKUP_ATTRIBUTES(X, APART) \
  BKOQ_RESTORE_ATTRIBUTES(X, APART) \
  BKOQ_MERGE_ATTRIBUTES(X, APART) \
  BKOQ_SCAN_ATTRIBUTES(X, APART) \
  BKOQ_FAX_ATTRIBUTES(X, APART) \
  BKOQ_EMAIL_ATTRIBUTES(X, APART) \
  BKOQ_MHS_EMAIL_ATTRIBUTES(X, APART) \
  BKOQ_PRINT_QUEUE_ATTRIBUTES(X, APART) \
  BKOQ_OPEN_FILE_ATTRIBUTES(X, APART) \
  BKOQ_NODE_ATTRIBUTES(X, APART) \
  BKOQ_UNIX_NODE_ATTRIBUTES(X, APART) \
  BKOQ_SYBASE_NODE_ATTRIBUTES(X, APART) \
  BKOQ_ORACLE_NODE_ATTRIBUTES(X, APART) \
  BKOQ_INFORMIX_NODE_ATTRIBUTES(X, APART) \
  BKOQ_SNAPSHOT_NODE_ATTRIBUTES(X, APART) \
  BKOQ_RESTORE_NODE_ATTRIBUTES(X, APART) \
  BKOQ_DB_RESTORE_NODE_ATTRIBUTES(X, APART) \
  BKOQ_GROOM_ATTRIBUTES(X, APART) \
  BKOQ_DISK_ATTRIBUTES(X, APART) \
  BKOQ_DISK_ITEM_ATTRIBUTES(X, APART) \
  BKOQ_TAPE_ATTRIBUTES(X, APART) \
  BKOQ_TAPE_ITEM_ATTRIBUTES(X, APART) \
  BKOQ_TAPE_EXTENSION_ATTRIBUTES(X, APART) \
  BKOQ_JOB_UNIT_ATTRIBUTES(X, APART) \
  BKOQ_EXCEPTION_DAY_ATTRIBUTES(X, APART) \
  BKOQ_TIME_SPAN_ATTRIBUTES(X, APART) \
  BKOQ_JOB_MASK_ATTRIBUTES(X, APART) \
  BKOQ_SCHEDULE_ATTRIBUTES(X, APART) \
  BKOQ_CUSTOM_SCHEDULE_ATTRIBUTES(X, APART) \
  BKOQ_ROTATION_SCHEDULE_ATTRIBUTES(X, APART) \
  BKOQ_CRUISE_SCHEDULE_ATTRIBUTES(X, APART) \
  BKOQ_FILTER_ATTRIBUTES(X, APART) \
  BKOQ_DIR_FILTER_ATTRIBUTES(X, APART) \
  BKOQ_FILE_FILTER_ATTRIBUTES(X, APART) \
  BKOQ_VOLUME_FILTER_ATTRIBUTES(X, APART) \
  BKOQ_ATTRIBUTE_FILTER_ATTRIBUTES(X, APART) \
  BKOQ_TIME_FILTER_ATTRIBUTES(X, APART) \
  BKOQ_WITHIN_FILTER_ATTRIBUTES(X, APART) \
  BKOQ_BEFORE_FILTER_ATTRIBUTES(X, APART) \
  BKOQ_AFTER_FILTER_ATTRIBUTES(X, APART) \
  BKOQ_BETWEEN_FILTER_ATTRIBUTES(X, APART)
// clang-format on

// Setters that are no plain attribute: several values at once, switches, parts and lists of parts.
// X(class, setter, key)
// clang-format off
#define BKOQ_OTHER_SETTERS(X) \
  X(BKQJob, setSNMPOn, "snmp") \
  X(BKQJob, setSNMPOff, "snmp") \
  X(BKQJob, setOvixOn, "ovix") \
  X(BKQJob, setOvixOff, "ovix") \
  X(BKQJob, setScriptUserID, "scriptUserID") \
  X(BKQJob, setFaxInfo, "faxInfo") \
  X(BKQJob, setEMailInfo, "emailInfo") \
  X(BKQJob, setPrintQueue, "printQueue") \
  X(BKQJob, setSchedule, "schedule") \
  X(BKQBackupJob, setEncryptionOn, "encryption") \
  X(BKQBackupJob, setEncryptionOff, "encryption") \
  X(BKQBackupJob, setCompressionOn, "compression") \
  X(BKQBackupJob, setCompressionOff, "compression") \
  X(BKQBackupJob, setOpenFileInfo, "openFileInfo") \
  X(BKQBackupJob, setDestination, "destination") \
  X(BKQBackupJob, addSourceNode, "sourceNodes") \
  X(BKQBackupJob, addFilter, "filters") \
  X(BKQCruiseBackupJob, setSchedule, "schedule") \
  X(BKQCruiseMakeupJob, setSchedule, "schedule") \
  X(BKQRotationBackupJob, setSchedule, "schedule") \
  X(BKQRotationMakeupJob, setSchedule, "schedule") \
  X(BKQCustomBackupJob, setSchedule, "schedule") \
  X(BKQDatabaseBackupJob, setSchedule, "schedule") \
  X(BKQRestoreJob, setSchedule, "schedule") \
  X(BKQRestoreJob, addSourceNode, "sourceNodes") \
  X(BKQRestoreJob, addDestNode, "destNodes") \
  X(BKQRestoreJob, addFilter, "filters") \
  X(BKQVerifyJob, setSchedule, "schedule") \
  X(BKQVerifyJob, addSourceNode, "sourceNodes") \
  X(BKQCompareJob, setDestination, "destination") \
  X(BKQMergeJob, setSchedule, "schedule") \
  X(BKQMergeJob, setMergeRange, "mergeRange") \
  X(BKQMergeJob, setMergeFilter, "mergeFilter") \
  X(BKQMergeJob, setSource, "source") \
  X(BKQMergeJob, setDestination, "destination") \
  X(BKQScanJob, setSchedule, "schedule") \
  X(BKQScanJob, setScanRange, "scanRange") \
  X(BKQScanJob, setScanFilter, "scanFilter") \
  X(BKQScanJob, setSource, "source") \
  X(BKQNode, addFilter, "filters") \
  X(BKQDiskNode, addDisk, "disks") \
  X(BKQDiskNode, setGroomInfo, "groomInfo") \
  X(BKQTapeNode, addTape, "tapes") \
  X(BKQDBRestoreNode, setDBuser, "dbUser") \
  X(BKQDisk, addDiskItem, "diskItems") \
  X(BKQDisk, addFilter, "filters") \
  X(BKQDiskItem, addFile, "files") \
  X(BKQTape, setTapeXtension, "tapeXtension") \
  X(BKQTape, addTapeItem, "tapeItems") \
  X(BKQTape, addFilter, "filters") \
  X(BKQGroom, addFilter, "filters") \
  X(BKQJobMask, setRepeatCycle, "repeatCycle") \
  X(BKQJobMask, setRepeatInterval, "repeatInterval") \
  X(BKQJobMask, addJobUnit, "jobUnits") \
  X(BKQSchedule, setScheduleWindow, "scheduleWindow") \
  X(BKQCustomSchedule, setRepeat, "repeat") \
  X(BKQRotationSchedule, setJobMask, "jobMask") \
  X(BKQRotationSchedule, addExceptionDay, "exceptionDays") \
  X(BKQRotationSchedule, setPreferedMakeupJobTime, "preferedMakeupJobTime") \
  X(BKQCruiseSchedule, setGFSPoolNames, "gfsPoolNames")
// clang-format on

#define BKOQ_NO_ATTRIBUTE(...)

namespace bkoq::test {

// The kinds of values beside numbers.
using Text = std::string;
struct Time {};

// One line of the catalogue, without its types.
struct AttributeLine {
  const char* owner;   // "BKQJob"
  const char* setter;  // "setHost"
  const char* key;
  const char* fields;

  std::string name() const { return std::string(owner) + "::" + setter; }
};

// The accessors of an attribute among operations that may have the same name.
template <class Class, class Value>
constexpr auto getterOf(Value (Class::*getter)() const) {
  return getter;
}
template <class Class, class Value>
constexpr auto getterOf(Value (Class::*getter)()) {
  return getter;
}
template <class Class, class Parameter>
constexpr auto setterOf(void (Class::*setter)(Parameter)) {
  return setter;
}

// Calls `visit(line, Value type, getter, setter, first)` for each attribute that an object of the
// class has, its base classes' included.
template <class Object, class Visitor>
void eachAttribute(Visitor&& visit) {
// NOLINTBEGIN(bugprone-macro-parentheses): a type takes none
#define BKOQ_VISIT(class_, member, getter, setter, value, first, key, fields)         \
  if constexpr (std::is_base_of_v<class_, Object>) {                                  \
    visit(AttributeLine{#class_, #setter, key, fields}, static_cast<value*>(nullptr), \
          getterOf<class_>(&class_::getter), setterOf<class_>(&class_::setter),       \
          firstOf<Object>(#class_ "::" #setter, first));                              \
  }
  // NOLINTEND(bugprone-macro-parentheses)
  BKOQ_ATTRIBUTES(BKOQ_VISIT, BKOQ_VISIT)
#undef BKOQ_VISIT
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_CATALOG_ATTRIBUTES_H_
