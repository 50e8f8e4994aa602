#ifndef BKOQ_KIT_RECORD_ROWS_H_
#define BKOQ_KIT_RECORD_ROWS_H_

#include <array>

#include "bkoq/records.h"
#include "bkoq/records_old.h"
#include "kit/record_words.h"

namespace bkoq::kit {

// The rows of each record: one for each field, and for each way to read it.

// A row takes its place from the record itself, so it cannot stand elsewhere than the field does.
// clang-format off
#define BKOQ_ROW(field, kind, meaning, filledBy)                                          \
  FieldDef{#field, static_cast<std::uint16_t>(offsetof(R, field)),                        \
           static_cast<std::uint16_t>(sizeof(R::field)), FieldKind::kind, meaning, filledBy}
// clang-format on
#define BKOQ_RESERVED(field) BKOQ_ROW(field, kReserved, "reserved: zero", "")

// Bytes of a filter that its kind does not use and that have no name of their own.
constexpr FieldDef unused(const char* name, std::uint16_t offset, std::uint16_t width) {
  return FieldDef{name, offset, width, FieldKind::kReserved, "not used by this filter: zero", ""};
}
constexpr FieldDef opaque(const char* name, std::uint16_t offset, std::uint16_t width) {
  return FieldDef{name, offset, width, FieldKind::kOpaque, "nothing is known of it", ""};
}

template <class... Row>
constexpr auto rowsOf(Row... row) {
  return std::array<FieldDef, sizeof...(Row)>{{row...}};
}

template <std::size_t n, std::size_t m>
constexpr auto operator+(const std::array<FieldDef, n>& first,
                         const std::array<FieldDef, m>& second) {
  std::array<FieldDef, n + m> all{};
  for (std::size_t i = 0; i < n; ++i) all[i] = first[i];
  for (std::size_t i = 0; i < m; ++i) all[n + i] = second[i];
  return all;
}

template <class R>
constexpr auto jobRows() {
  return rowsOf(
      BKOQ_ROW(ulReserved0, kReserved, "reserved: zero", ""),
      BKOQ_ROW(usJobType, kNumber, "job kind", "BKQJob::jobType").called(kJobTypes.data()),
      BKOQ_RESERVED(abReserved6),
      BKOQ_ROW(usJobStatus, kNumber, "job status, low 16 bits", "BKQJob::setJobStatus"),
      BKOQ_ROW(usScriptType, kNumber, "script type", "BKQJob::setScriptType"),
      BKOQ_ROW(ulNumSourceNodes, kCount, "elements of pSourceNodes", ""),
      BKOQ_ROW(pSourceNodes, kArray, "source nodes", "addSourceNode, setSource of the job")
          .of(RecordType::kNode)
          .countedAt(offsetof(R, ulNumSourceNodes))
          .holding(NodeArray::kSources),
      BKOQ_ROW(ulNumDestNodes, kCount, "elements of pDestNodes", ""),
      BKOQ_ROW(pDestNodes, kArray, "destination nodes", "setDestination, addDestNode of the job")
          .of(RecordType::kNode)
          .countedAt(offsetof(R, ulNumDestNodes))
          .holding(NodeArray::kDestinations),
      BKOQ_ROW(pszOwner, kText, "owner", "BKQJob::setOwner"),
      BKOQ_ROW(pszReportFile, kText, "report file", "BKQJob::setReportFile"),
      BKOQ_ROW(pszComments, kText, "comments", "BKQJob::setComments"),
      BKOQ_ROW(pszBeforeJob, kText, "command run before the job", "BKQJob::setBeforeJob"),
      BKOQ_ROW(pszAfterJob, kText, "command run after the job", "BKQJob::setAfterJob"),
      BKOQ_ROW(usBeforeJobWait, kNumber, "before-job wait", "BKQJob::setBeforeJobWait"),
      BKOQ_RESERVED(abReserved50),
      BKOQ_ROW(usOnConflict, kNumber, "restore jobs: what to do on conflict",
               "BKQRestoreJob::setOnConflict"),
      BKOQ_RESERVED(abReserved54),
      BKOQ_ROW(stSchedule, kEmbedded, "schedule", "BKQJob::setSchedule").of(RecordType::kSchedule),
      BKOQ_RESERVED(abReserved74),
      BKOQ_ROW(stOpenFile, kEmbedded, "open-file options", "BKQBackupJob::setOpenFileInfo")
          .of(RecordType::kOpenFile),
      BKOQ_RESERVED(abReserved116),
      BKOQ_ROW(stFax, kEmbedded, "fax notification", "BKQJob::setFaxInfo").of(RecordType::kFax),
      BKOQ_ROW(stEMail, kEmbedded, "e-mail notification", "BKQJob::setEMailInfo")
          .of(RecordType::kEMail),
      BKOQ_ROW(stPrintQueue, kEmbedded, "print-queue notification", "BKQJob::setPrintQueue")
          .of(RecordType::kPrintQueue),
      BKOQ_ROW(stScheduleExt, kEmbedded, "media rotation", "BKQJob::setSchedule")
          .of(RecordType::kRotation),
      BKOQ_RESERVED(abReserved244),
      BKOQ_ROW(ulOptions, kFlags, "job options", "BKQJob::setOptions").called(kJobOptions),
      BKOQ_ROW(pszHost, kText, "host", "BKQJob::setHost"), BKOQ_RESERVED(abReserved264));
}

template <class R>
constexpr auto scheduleRows() {
  return rowsOf(BKOQ_ROW(lSubmitTime, kTime, "submit time", "BKQSchedule::setSubmitTime"),
                BKOQ_ROW(lExecTime, kTime, "execution time", "BKQSchedule::setExecTime"),
                BKOQ_ROW(usRepeat1, kNumber, "custom schedules: first repeat value",
                         "BKQCustomSchedule::setRepeat"),
                BKOQ_ROW(usRepeat2, kNumber, "custom schedules: second repeat value",
                         "BKQCustomSchedule::setRepeat"),
                BKOQ_ROW(usRepeat3, kNumber, "custom schedules: third repeat value",
                         "BKQCustomSchedule::setRepeat"),
                BKOQ_ROW(usRepeat4, kNumber, "custom schedules: fourth repeat value",
                         "BKQCustomSchedule::setRepeat"),
                BKOQ_ROW(usSkipWeekDay, kNumber, "custom schedules: skip-weekday flag",
                         "BKQCustomSchedule::setSkipWeekDayFlag"));
}

template <class R>
constexpr auto openFileRows() {
  return rowsOf(
      BKOQ_ROW(ulFActions, kFlags, "actions on open files", "BKQOpenFileInfo::setFActions"),
      BKOQ_ROW(ulFMethods, kFlags, "methods of reading open files", "BKQOpenFileInfo::setFMethods"),
      BKOQ_ROW(usRetryCount, kNumber, "retries on an open file", "BKQOpenFileInfo::setRetryCount"),
      BKOQ_ROW(usRetryInterval, kNumber, "interval between retries",
               "BKQOpenFileInfo::setRetryInterval"));
}

template <class R>
constexpr auto commonFaxRows() {
  return rowsOf(BKOQ_ROW(pszHostName, kText, "host name", "BKQFax::setHostName"),
                BKOQ_ROW(pszUserName, kText, "user name", "BKQFax::setUserName"),
                BKOQ_ROW(pszUserPW, kText, "user password", "BKQFax::setUserPW").hidden(),
                BKOQ_ROW(pszFaxNumber, kText, "fax number", "BKQFax::setFaxNumber"),
                BKOQ_ROW(pszCoverPageFile, kText, "cover page file", "BKQFax::setCoverPageFile"));
}

template <class R>
constexpr auto faxRows(BkoqLayout layout) {
  const FieldDef unwritten =
      BKOQ_ROW(pszReceiverName, kText, "not written in this layout: null", "");
  const FieldDef written =
      BKOQ_ROW(pszReceiverName, kText, "receiver name", "BKQFax::setReceiverName");
  return commonFaxRows<R>() + rowsOf(layout == BKOQ_LAYOUT_CURRENT ? unwritten : written);
}

template <class R>
constexpr auto emailRows() {
  return rowsOf(BKOQ_ROW(pszHostName, kText, "host name", "BKQEMail::setHostName"),
                BKOQ_ROW(pszUserName, kText, "user name", "BKQEMail::setUserName"),
                BKOQ_ROW(pszUserPW, kText, "user password", "BKQEMail::setUserPW").hidden(),
                BKOQ_ROW(pszMHSDir, kText, "MHS: directory", "BKQMHSEMail::setMHSDir"),
                BKOQ_ROW(pszMHSId, kText, "MHS: id", "BKQMHSEMail::setMHSId"),
                BKOQ_ROW(pszMHSUserName, kText, "MHS: user name", "BKQMHSEMail::setMHSUserName"));
}

template <class R>
constexpr auto printQueueRows() {
  return rowsOf(BKOQ_ROW(pszHostName, kText, "host name", "BKQPrintQueue::setHostName"),
                BKOQ_ROW(pszUserName, kText, "user name", "BKQPrintQueue::setUserName"),
                BKOQ_ROW(pszUserPW, kText, "user password", "BKQPrintQueue::setUserPW").hidden(),
                BKOQ_ROW(pszQueueName, kText, "queue name", "BKQPrintQueue::setQueueName"));
}

template <class R>
constexpr auto rotationStart() {
  return rowsOf(BKOQ_ROW(pszSetName, kText, "media set name", "BKQRotationSchedule::setSetName"),
                BKOQ_RESERVED(abReserved4),
                BKOQ_ROW(usCruiseMethod, kNumber, "cruise schedules: method, low 16 bits",
                         "BKQCruiseSchedule::setCruiseMethod"),
                BKOQ_RESERVED(abReserved10));
}

template <class R>
constexpr auto rotationEnd() {
  return rowsOf(
      BKOQ_ROW(usSaveMonthly, kNumber, "cruise schedules: monthly copies kept",
               "BKQCruiseSchedule::setSaveMonthly"),
      BKOQ_ROW(usSaveWeekly, kNumber, "cruise schedules: weekly copies kept",
               "BKQCruiseSchedule::setSaveWeekly"),
      BKOQ_ROW(usSaveDaily, kNumber, "cruise schedules: daily copies kept",
               "BKQCruiseSchedule::setSaveDaily"),
      BKOQ_RESERVED(abReserved26),
      BKOQ_ROW(ulCruiseOptions, kFlags, "cruise schedules: options",
               "BKQCruiseSchedule::setOptions"),
      BKOQ_ROW(usMonths, kNumber, "cruise schedules: months", "BKQCruiseSchedule::setMonths"),
      BKOQ_ROW(usCopies, kNumber, "cruise schedules: copies", "BKQCruiseSchedule::setCopies"));
}

constexpr auto rotationRows() {
  using R = BKROTATIONINFO;
  return rotationStart<R>() + rowsOf(BKOQ_RESERVED(abReserved12)) + rotationEnd<R>();
}

constexpr auto rotationRowsOld() {
  using R = BKROTATIONINFO_OLD;
  return rotationStart<R>() +
         rowsOf(BKOQ_ROW(abJobTypes, kByteList, "job types of the first eight job units",
                         "BKQJobUnit::setJobType")) +
         rotationEnd<R>();
}

template <class R>
constexpr auto nodeStart(BkoqLayout layout) {
  const FieldDef type =
      BKOQ_ROW(usNodeType, kNumber, "node kind; tape node: 3, a restore node: actual one",
               "BKQNode::nodeType, BKQRestoreNode::setActualNodeType")
          .called(kNodeTypes);
  const FieldDef typeOld =
      BKOQ_ROW(usNodeType, kNumber,
               "node kind; tape node: 3, restore node: actual one, NDS tree: 6",
               "BKQNode::nodeType, BKQRestoreNode::setActualNodeType")
          .called(kNodeTypes);
  const FieldDef address =
      BKOQ_ROW(pszNodeAddress, kText, "node address; for an NDS node without one its domain",
               "BKQNode::setNodeAddress, for NDS setNodeDomain");
  const FieldDef addressOld =
      BKOQ_ROW(pszNodeAddress, kText, "node address; for an NDS node its domain",
               "BKQNode::setNodeAddress, for NDS setNodeDomain");
  return rowsOf(
      layout == BKOQ_LAYOUT_CURRENT ? type : typeOld,
      BKOQ_ROW(usNodeOS, kNumber, "operating-system code", "BKQNode::setNodeOS")
          .called(kNodeSystems),
      BKOQ_ROW(pszNodeOSVer, kNodeText, "operating-system version; UNIX: a second text after it",
               "BKQNode::setNodeOSver"),
      BKOQ_ROW(pszNodeName, kNodeText, "node name; UNIX: a second text after it",
               "BKQNode::setNodeName"),
      layout == BKOQ_LAYOUT_CURRENT ? address : addressOld,
      BKOQ_ROW(pszUserName, kText, "user name", "BKQNode::setUserName"),
      BKOQ_ROW(pszPassword, kText, "password", "BKQNode::setPassword").hidden(),
      BKOQ_ROW(ulFilterCount, kCount, "elements of pFilters", ""),
      BKOQ_ROW(pFilters, kArray, "the node's filters, then the job's",
               "BKQNode::addFilter, addFilter of the job")
          .of(RecordType::kFilter)
          .countedAt(offsetof(R, ulFilterCount)),
      BKOQ_ROW(usDeviceType, kNumber, "device type", "BKQNode::setDeviceType"),
      BKOQ_RESERVED(abReserved34), BKOQ_ROW(ulMediaCount, kCount, "elements of pMedia", ""),
      BKOQ_ROW(pMedia, kArray, "disks of a machine or a restore destination, tapes of a tape node",
               "BKQDiskNode::addDisk, BKQTapeNode::addTape")
          .of(RecordType::kMedia)
          .countedAt(offsetof(R, ulMediaCount)),
      BKOQ_ROW(pszBeforeNode, kText, "node to process before this one", "BKQNode::setBeforeNode"),
      BKOQ_ROW(pszAfterNode, kText, "node to process after this one", "BKQNode::setAfterNode"),
      BKOQ_ROW(usBeforeNodeWait, kNumber, "wait for the before-node", "BKQNode::setBeforeNodeWait"),
      BKOQ_RESERVED(abReserved54),
      BKOQ_ROW(ulNodeOptions, kFlags, "node options; the conversion may add 0x40, 0x200, 0x800",
               "BKQNode::setOptions")
          .called(kNodeOptions),
      BKOQ_RESERVED(abReserved60));
}

constexpr auto nodeRows() {
  using R = BKNODE;
  return nodeStart<R>(BKOQ_LAYOUT_CURRENT) +
         rowsOf(BKOQ_ROW(pszNodeDomain, kText, "node domain; for an NDS node its address",
                         "BKQNode::setNodeDomain, for NDS setNodeAddress"),
                BKOQ_RESERVED(abReserved88));
}

constexpr auto nodeRowsOld() {
  using R = BKNODE_OLD;
  return nodeStart<R>(BKOQ_LAYOUT_PREVIOUS) + rowsOf(BKOQ_RESERVED(abReserved84));
}

template <class R>
constexpr auto filterRows() {
  return rowsOf(
      BKOQ_ROW(usFilterType, kNumber, "kind of the filter; says how bytes 4 to 17 are read",
               "BKQFilter::filterType")
          .called(kFilterTypes),
      BKOQ_ROW(usInclExcl, kNumber, "include or exclude", "BKQFilter::setInclExcl")
          .called(kInclExcl),
      BKOQ_ROW(ulFilterCount, kNumber, "1 with a pattern, 0 without", "").when(kPatternFilter),
      BKOQ_ROW(ulAttributes, kFlags, "attribute bits", "BKQAttributeFilter::setAttributes")
          .when(kAttributeFilter),
      BKOQ_ROW(usTimeAttr, kNumber, "which time stamp is tested", "BKQTimeFilter::setTRattribute")
          .when(kTimeFilter),
      BKOQ_ROW(usTimeRange, kNumber, "range of the time", "BKQTimeFilter::getTRtype")
          .called(kTimeRanges)
          .when(kTimeFilter),
      opaque("ulOpaque4", 4, 4).when(kUnknownFilter),
      BKOQ_ROW(pszFilter, kText, "pattern", "setFilterString of the filter").when(kPatternFilter),
      BKOQ_ROW(lTime, kTime, "bound", "setTime of the filter").when(kBoundFilter),
      BKOQ_ROW(lStartTime, kTime, "start bound", "BKQBetweenTimeFilter::setStartTime")
          .when(kBetweenFilter),
      BKOQ_ROW(ulTimeUnits, kNumber, "number of units", "BKQWithinTimeFilter::setTimeUnits")
          .when(kWithinFilter),
      unused("abUnused8", 8, 10).when(kAttributeFilter),
      opaque("ulOpaque8", 8, 4).when(kUnknownFilter | kUnknownTimeFilter),
      BKOQ_ROW(usFilterLen, kNumber, "length of the pattern with its NUL, or 0", "")
          .when(kPatternFilter),
      unused("abUnused14", 14, 4).when(kPatternFilter),
      unused("abUnused12", 12, 6).when(kBoundFilter),
      BKOQ_ROW(lEndTime, kTime, "end bound", "BKQBetweenTimeFilter::setEndTime")
          .when(kBetweenFilter),
      unused("abUnused12", 12, 4).when(kWithinFilter),
      unused("abUnused16", 16, 2).when(kBetweenFilter),
      BKOQ_ROW(usTimeUnitType, kNumber, "kind of unit", "BKQWithinTimeFilter::setTimeUnitType")
          .when(kWithinFilter),
      opaque("ulOpaque12", 12, 4).when(kUnknownFilter | kUnknownTimeFilter),
      opaque("usOpaque16", 16, 2).when(kUnknownFilter | kUnknownTimeFilter),
      BKOQ_RESERVED(abReserved18));
}

template <class R>
constexpr auto diskRows(BkoqLayout layout) {
  const FieldDef credentials =
      BKOQ_ROW(
          pszDiskPW2, kTwoTexts,
          "user and second password: two texts; types 11, 22, 31 (restore: 22, 31) joined by \":\"",
          "BKQDisk::setUser, setDiskPW2, BKQDBRestoreNode::setDBuser")
          .hidden(Secret::kCredentials);
  const FieldDef credentialsOld =
      BKOQ_ROW(pszDiskPW2, kTwoTexts,
               "user and second password: two texts; types 11, 22, 31 joined by \":\"",
               "BKQDisk::setUser, setDiskPW2, BKQDBRestoreNode::setDBuser")
          .hidden(Secret::kCredentials);
  return rowsOf(
      BKOQ_ROW(pszDiskName, kText, "disk name",
               "BKQDisk::setDiskName, BKQRestoreNode::setDiskName"),
      BKOQ_ROW(pszPassword, kText, "disk password, or the job's session password",
               "BKQDisk::setPassword, BKQBackupJob::setSessionPassword")
          .hidden(),
      BKOQ_ROW(ulFilterCount, kCount, "elements of pFilters", ""),
      BKOQ_ROW(pFilters, kArray, "filters of this disk", "BKQDisk::addFilter")
          .of(RecordType::kFilter)
          .countedAt(offsetof(R, ulFilterCount)),
      BKOQ_ROW(ulDiskItemCount, kCount, "elements of pDiskItems", ""),
      BKOQ_ROW(pDiskItems, kArray, "items of this disk",
               "BKQDisk::addDiskItem, BKQRestoreNode::setDestinationDir")
          .of(RecordType::kDiskItem)
          .countedAt(offsetof(R, ulDiskItemCount)),
      BKOQ_ROW(usDiskType, kNumber, "disk type code",
               "BKQDisk::setDiskType, BKQDBRestoreNode::setFStype"),
      BKOQ_RESERVED(abReserved26),
      BKOQ_ROW(ulOptions, kFlags, "disk options with the job's bits added",
               "BKQDisk::setOptions, BKQUnixNode::setUnixOptions, BKQDBRestoreNode::setOptions")
          .called(kDiskOptions),
      BKOQ_ROW(ulReserved1, kReserved, "reserved: zero", ""),
      layout == BKOQ_LAYOUT_CURRENT ? credentials : credentialsOld,
      BKOQ_ROW(ulReserved2, kReserved, "reserved: zero", ""),
      BKOQ_ROW(pszEncryptionKey, kText, "encryption key", "BKQDisk::setEncryptionKey").hidden(),
      BKOQ_ROW(ulReserved3, kReserved, "reserved: zero", ""));
}

template <class R>
constexpr auto diskItemRows() {
  return rowsOf(BKOQ_ROW(pszPath, kText, "path as the server uses it",
                         "BKQDiskItem::setPath, BKQRestoreNode::setDestinationDir"),
                BKOQ_ROW(ulFileCount, kCount, "texts of pFileList", ""),
                BKOQ_ROW(pFileList, kTextList, "file names, back to back", "BKQDiskItem::addFile")
                    .countedAt(offsetof(R, ulFileCount)),
                BKOQ_ROW(ulOptions, kFlags, "item options", "BKQDiskItem::setOptions"),
                BKOQ_RESERVED(abReserved16));
}

template <class R>
constexpr auto tapeStart() {
  return rowsOf(BKOQ_ROW(pszDeviceGroup, kText, "device group", "BKQTape::setDeviceGroup"),
                BKOQ_ROW(pszTapeName, kText, "tape name", "BKQTape::setTapeName"));
}

template <class R>
constexpr auto tapeMiddle() {
  return rowsOf(
      BKOQ_ROW(usTapeSeq, kNumber, "sequence within the tape set", "BKQTape::setTapeSeq"),
      BKOQ_ROW(usSessionNumber, kNumber, "session on the tape", "BKQTape::setSessionNumber"),
      BKOQ_ROW(ulQFABlockNumber, kNumber, "block at which the session starts",
               "BKQTape::setQFABlockNumber"),
      BKOQ_ROW(pszSessionPW, kText, "session password, or the restore job's",
               "BKQTape::setSessionPW, BKQRestoreJob::setSessionPassword")
          .hidden(),
      BKOQ_ROW(usNewTapeMethod, kNumber, "the job's tape method", "BKQBackupJob::setTapeMethod"),
      BKOQ_ROW(usSpanTapeMethod, kNumber, "the job's span method", "BKQBackupJob::setSpanMethod"),
      BKOQ_ROW(usNewTapeTimeout, kNumber, "the job's new-tape time-out",
               "BKQJob::setNewTapeTimeout"),
      BKOQ_ROW(usSpanTapeTimeout, kNumber, "the job's span-tape time-out",
               "BKQJob::setSpanTapeTimeout"),
      BKOQ_ROW(ulFilterCount, kCount, "elements of pFilters", ""),
      BKOQ_ROW(pFilters, kArray, "filters of this tape", "BKQTape::addFilter")
          .of(RecordType::kFilter)
          .countedAt(offsetof(R, ulFilterCount)),
      BKOQ_ROW(ulTapeItemCount, kCount, "elements of pTapeItems", ""),
      BKOQ_ROW(pTapeItems, kArray, "items of this tape", "BKQTape::addTapeItem")
          .of(RecordType::kTapeItem)
          .countedAt(offsetof(R, ulTapeItemCount)),
      BKOQ_ROW(usFileSystem, kNumber, "file-system code", "BKQTape::setFileSystem"),
      BKOQ_RESERVED(abReserved50));
}

constexpr auto tapeRows() {
  using R = BKDTAPE;
  return tapeStart<R>() +
         rowsOf(BKOQ_ROW(usTapeID, kNumber, "tape ID, low 16 bits", "BKQTape::setTapeID"),
                BKOQ_RESERVED(abReserved10)) +
         tapeMiddle<R>() +
         rowsOf(BKOQ_ROW(ulOptions, kFlags, "tape options", "BKQTape::setOptions")
                    .called(kTapeOptions),
                BKOQ_ROW(pszPath, kText, "path of the session", "BKQTape::setPath"),
                BKOQ_ROW(pszLocation, kText, "location of the tape", "BKQTape::setLocation"),
                BKOQ_RESERVED(abReserved64),
                BKOQ_ROW(pTapeX, kRecord, "extension", "BKQTape::setTapeXtension")
                    .of(RecordType::kTapeExtension));
}

constexpr auto tapeRowsOld() {
  using R = BKDTAPE_OLD;
  return tapeStart<R>() +
         rowsOf(BKOQ_ROW(ulTapeID, kNumber, "tape ID, whole", "BKQTape::setTapeID")) +
         tapeMiddle<R>() +
         rowsOf(BKOQ_ROW(ulOptions, kFlags, "tape options; an extension's 0x8000000 cleared",
                         "BKQTape::setOptions")
                    .called(kTapeOptions),
                BKOQ_ROW(pszPath, kText, "path of the session", "BKQTape::setPath"),
                BKOQ_ROW(pszLocation, kText, "location of the tape", "BKQTape::setLocation"),
                BKOQ_ROW(lSessionEndTime, kClientTime,
                         "session end time, of the extension if there is one",
                         "BKQTapeXtension::setSessionEndTime, BKQTape::setSessionEndTime"),
                BKOQ_RESERVED(abReserved68));
}

template <class R>
constexpr auto tapeItemRows() {
  return rowsOf(
      BKOQ_ROW(ulChunkNum, kNumber, "chunk of the session", "BKQTapeItem::setChunkNum"),
      BKOQ_ROW(usChunkOffset, kNumber, "offset within the chunk", "BKQTapeItem::setChunkOffset"),
      BKOQ_RESERVED(abReserved6),
      BKOQ_ROW(pszFileOrDir, kText, "file or directory in server form",
               "BKQTapeItem::setFileOrDir"),
      BKOQ_ROW(ulOptions, kFlags, "item options", "BKQTapeItem::setOptions"),
      BKOQ_RESERVED(abReserved16));
}

template <class R>
constexpr auto tapeExtensionRows() {
  return rowsOf(BKOQ_ROW(pszDBUser, kText, "database user", "BKQTapeXtension::setDBuser"),
                BKOQ_ROW(pszDBPW, kText, "database password", "BKQTapeXtension::setDBpw").hidden(),
                BKOQ_ROW(lSessionEndTime, kClientTime, "session end time",
                         "BKQTapeXtension::setSessionEndTime"),
                BKOQ_RESERVED(abReserved12),
                BKOQ_ROW(ulOptions, kFlags, "extension options", "BKQTapeXtension::setOptions"),
                BKOQ_RESERVED(abReserved60));
}

#undef BKOQ_ROW
#undef BKOQ_RESERVED

inline constexpr auto kJob = jobRows<BKQJDATATRANSFER>();
inline constexpr auto kJobOld = jobRows<BKQJDATATRANSFER_OLD>();
inline constexpr auto kSchedule = scheduleRows<BKSCHEDINFO>();
inline constexpr auto kOpenFile = openFileRows<BKOFINFO>();
inline constexpr auto kFax = faxRows<BKFAXINFO>(BKOQ_LAYOUT_CURRENT);
inline constexpr auto kFaxOld = faxRows<BKFAXINFO_OLD>(BKOQ_LAYOUT_PREVIOUS);
inline constexpr auto kEMail = emailRows<BKEMAILINFO>();
inline constexpr auto kPrintQueue = printQueueRows<BKPRINTQ>();
inline constexpr auto kRotation = rotationRows();
inline constexpr auto kRotationOld = rotationRowsOld();
inline constexpr auto kNode = nodeRows();
inline constexpr auto kNodeOld = nodeRowsOld();
inline constexpr auto kFilter = filterRows<BKFILTER_FILE>();
inline constexpr auto kDisk = diskRows<BKDDISK>(BKOQ_LAYOUT_CURRENT);
inline constexpr auto kDiskOld = diskRows<BKDDISK_OLD>(BKOQ_LAYOUT_PREVIOUS);
inline constexpr auto kDiskItem = diskItemRows<BKDISKITEM>();
inline constexpr auto kTape = tapeRows();
inline constexpr auto kTapeOld = tapeRowsOld();
inline constexpr auto kTapeItem = tapeItemRows<BKTAPEITEM>();
inline constexpr auto kTapeExtension = tapeExtensionRows<BKDTAPEX>();

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_RECORD_ROWS_H_
