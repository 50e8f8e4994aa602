#include "kit/record_table.h"

#include <array>
#include <cstring>

#include "bkoq/records.h"
#include "bkoq/records_old.h"

namespace bkoq {
namespace {

constexpr JobKind kJobKinds[] = {
    {1, "backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {3, "cruise backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {5, "cruise makeup", {Media::kDisks, false}, {Media::kTapes, false}},
    {7, "restore", {Media::kTapes, false}, {Media::kDisks, true}},
    {8, "merge", {Media::kTapes, false}, {Media::kDisks, false}},
    {9, "database backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {10, "database restore", {Media::kTapes, false}, {Media::kDisks, true}},
    {11, "compare", {Media::kTapes, false}, {Media::kDisks, false}},
    {14, "scan", {Media::kTapes, false}, {Media::kUnknown, false}},
    {20, "rotation backup", {Media::kDisks, false}, {Media::kTapes, false}},
    {21, "rotation makeup", {Media::kDisks, false}, {Media::kTapes, false}},
    {29, "verify", {Media::kTapes, false}, {Media::kUnknown, false}},
    {0, nullptr, {}, {}},
};

constexpr Word kJobTypes[] = {
    {1, "backup"}, {3, "cruise backup"},    {5, "cruise makeup"},     {7, "restore"},
    {8, "merge"},  {9, "database backup"},  {10, "database restore"}, {11, "compare"},
    {14, "scan"},  {20, "rotation backup"}, {21, "rotation makeup"},  {29, "verify"},
    {0, nullptr}};

constexpr bool namesEveryKind() {
  std::size_t i = 0;
  for (; kJobKinds[i].name != nullptr; ++i) {
    if (kJobTypes[i].value != kJobKinds[i].code) return false;
  }
  return kJobTypes[i].name == nullptr;
}
static_assert(namesEveryKind(), "the words of usJobType and the kinds of job belong together");

constexpr Word kNodeTypes[] = {{2, "Macintosh"},
                               {3, "UNIX"},
                               {6, "NDS"},
                               {8, "NetWare"},
                               {9, "Windows NT"},
                               {10, "OS/2"},
                               {11, "Windows 95"},
                               {12, "Windows"},
                               {13, "NDS"},
                               {20, "FTP"},
                               {21, "Sybase"},
                               {22, "Oracle"},
                               {23, "Informix"},
                               {24, "tape node, unfinished"},
                               {25, "restore node, unfinished"},
                               {26, "snapshot"},
                               {27, "database restore node, unfinished"},
                               {0, nullptr}};
constexpr Word kTapeNodeTypes[] = {{3, "tape node"}, {24, "tape node, unfinished"}, {0, nullptr}};
constexpr Word kNodeSystems[] = {{2, "OS/2"}, {4, "NetWare"},    {5, "Windows"}, {6, "UNIX"},
                                 {7, "Mac"},  {8, "Windows NT"}, {0, nullptr}};
constexpr Word kFilterTypes[] = {{1, "volume"}, {2, "file"},      {3, "directory"},
                                 {4, "time"},   {5, "attribute"}, {0, nullptr}};
constexpr Word kInclExcl[] = {{0, "include"}, {1, "exclude"}, {0, nullptr}};
constexpr Word kTimeRanges[] = {
    {0, "before"}, {1, "after"}, {2, "between"}, {3, "within"}, {0, nullptr}};

constexpr Word kJobOptions[] = {{0x00100000, "no estimate"}, {0, nullptr}};
constexpr Word kNodeOptions[] = {{0x40, "no estimate"},
                                 {0x200, "a text follows the name"},
                                 {0x800, "a text follows the version"},
                                 {0, nullptr}};
constexpr Word kDiskOptions[] = {{0x2000, "compression"}, {0x4000, "encryption"}, {0, nullptr}};
constexpr Word kTapeOptions[] = {{0x8000000, "extension"}, {0, nullptr}};

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
      BKOQ_ROW(usJobType, kNumber, "job kind", "BKQJob::jobType").called(kJobTypes),
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
constexpr auto faxRows(Layout layout) {
  const FieldDef unwritten =
      BKOQ_ROW(pszReceiverName, kText, "not written in this layout: null", "");
  const FieldDef written =
      BKOQ_ROW(pszReceiverName, kText, "receiver name", "BKQFax::setReceiverName");
  return commonFaxRows<R>() + rowsOf(layout == Layout::kCurrent ? unwritten : written);
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
constexpr auto nodeStart(Layout layout) {
  const FieldDef type =
      BKOQ_ROW(usNodeType, kNumber, "node kind; 3 for a UNIX machine and for a tape node",
               "BKQNode::nodeType, BKQRestoreNode::setActualNodeType")
          .called(kNodeTypes);
  const FieldDef typeOld =
      BKOQ_ROW(usNodeType, kNumber,
               "node kind; 3 for a UNIX machine and for a tape node, 6 for NDS",
               "BKQNode::nodeType, BKQRestoreNode::setActualNodeType")
          .called(kNodeTypes);
  const FieldDef address =
      BKOQ_ROW(pszNodeAddress, kText, "node address; for an NDS node without one its domain",
               "BKQNode::setNodeAddress, for NDS setNodeDomain");
  const FieldDef addressOld =
      BKOQ_ROW(pszNodeAddress, kText, "node address; for an NDS node its domain",
               "BKQNode::setNodeAddress, for NDS setNodeDomain");
  return rowsOf(
      layout == Layout::kCurrent ? type : typeOld,
      BKOQ_ROW(usNodeOS, kNumber, "operating-system code", "BKQNode::setNodeOS")
          .called(kNodeSystems),
      BKOQ_ROW(pszNodeOSVer, kNodeText, "operating-system version; UNIX: a second text behind it",
               "BKQNode::setNodeOSver"),
      BKOQ_ROW(pszNodeName, kNodeText, "node name; UNIX: a second text behind it",
               "BKQNode::setNodeName"),
      layout == Layout::kCurrent ? address : addressOld,
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
  return nodeStart<R>(Layout::kCurrent) +
         rowsOf(BKOQ_ROW(pszNodeDomain, kText, "node domain; for an NDS node its address",
                         "BKQNode::setNodeDomain, for NDS setNodeAddress"),
                BKOQ_RESERVED(abReserved88));
}

constexpr auto nodeRowsOld() {
  using R = BKNODE_OLD;
  return nodeStart<R>(Layout::kPrevious) + rowsOf(BKOQ_RESERVED(abReserved84));
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
constexpr auto diskRows(Layout layout) {
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
               "BKQDisk::setOptions, BKQDBRestoreNode::setOptions")
          .called(kDiskOptions),
      BKOQ_ROW(ulReserved1, kReserved, "reserved: zero", ""),
      layout == Layout::kCurrent ? credentials : credentialsOld,
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
         rowsOf(BKOQ_ROW(ulOptions, kFlags, "tape options, without the mark of an extension",
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

constexpr auto kJob = jobRows<BKQJDATATRANSFER>();
constexpr auto kJobOld = jobRows<BKQJDATATRANSFER_OLD>();
constexpr auto kSchedule = scheduleRows<BKSCHEDINFO>();
constexpr auto kOpenFile = openFileRows<BKOFINFO>();
constexpr auto kFax = faxRows<BKFAXINFO>(Layout::kCurrent);
constexpr auto kFaxOld = faxRows<BKFAXINFO_OLD>(Layout::kPrevious);
constexpr auto kEMail = emailRows<BKEMAILINFO>();
constexpr auto kPrintQueue = printQueueRows<BKPRINTQ>();
constexpr auto kRotation = rotationRows();
constexpr auto kRotationOld = rotationRowsOld();
constexpr auto kNode = nodeRows();
constexpr auto kNodeOld = nodeRowsOld();
constexpr auto kFilter = filterRows<BKFILTER_FILE>();
constexpr auto kDisk = diskRows<BKDDISK>(Layout::kCurrent);
constexpr auto kDiskOld = diskRows<BKDDISK_OLD>(Layout::kPrevious);
constexpr auto kDiskItem = diskItemRows<BKDISKITEM>();
constexpr auto kTape = tapeRows();
constexpr auto kTapeOld = tapeRowsOld();
constexpr auto kTapeItem = tapeItemRows<BKTAPEITEM>();
constexpr auto kTapeExtension = tapeExtensionRows<BKDTAPEX>();

// The rows of every reading of a record follow one another from its first byte to its last.
template <std::size_t n>
constexpr bool tiles(const std::array<FieldDef, n>& rows, std::size_t size) {
  for (unsigned int variant = 1; variant < kAlways; variant *= 2) {
    std::size_t next = 0;
    for (const FieldDef& row : rows) {
      if ((row.variants & variant) == 0) continue;
      if (row.offset != next || row.width == 0) return false;
      next += row.width;
    }
    if (next != size) return false;
  }
  return true;
}

constexpr std::size_t sizeOf(RecordType type) {
  switch (type) {
    case RecordType::kSchedule:
      return sizeof(BKSCHEDINFO);
    case RecordType::kOpenFile:
      return sizeof(BKOFINFO);
    case RecordType::kFax:
      return sizeof(BKFAXINFO);
    case RecordType::kEMail:
      return sizeof(BKEMAILINFO);
    case RecordType::kPrintQueue:
      return sizeof(BKPRINTQ);
    case RecordType::kRotation:
      return sizeof(BKROTATIONINFO);
    default:
      return 0;
  }
}

// Widths fit the kinds, counts stand where arrays and lists look for them.
template <std::size_t n>
constexpr bool isSound(const std::array<FieldDef, n>& rows) {
  for (const FieldDef& row : rows) {
    const bool isNumber = row.kind == FieldKind::kNumber || row.kind == FieldKind::kOpaque;
    const bool isWord = row.isPointer() || row.kind == FieldKind::kCount ||
                        row.kind == FieldKind::kFlags || row.kind == FieldKind::kTime ||
                        row.kind == FieldKind::kClientTime;
    if (isNumber && row.width != 2 && row.width != 4) return false;
    if (isWord && row.width != 4) return false;
    if (row.kind == FieldKind::kEmbedded && row.width != sizeOf(row.target)) return false;
    const bool hasTarget = row.kind == FieldKind::kArray || row.kind == FieldKind::kRecord ||
                           row.kind == FieldKind::kEmbedded;
    if (hasTarget != (row.target != RecordType::kNone)) return false;
    if ((row.target == RecordType::kNode) != (row.nodes != NodeArray::kNone)) return false;
    if (row.kind == FieldKind::kArray || row.kind == FieldKind::kTextList) {
      bool isCounted = false;
      for (const FieldDef& other : rows) {
        isCounted |= other.kind == FieldKind::kCount && other.offset == row.countOffset;
      }
      if (!isCounted) return false;
    }
    if (row.secret != Secret::kNone && row.kind != FieldKind::kText &&
        row.kind != FieldKind::kTwoTexts) {
      return false;
    }
  }
  return true;
}

#define BKOQ_CHECK_RECORD(rows, record)                                                \
  static_assert(tiles(rows, sizeof(record)), #record ": rows leave a gap or overlap"); \
  static_assert(isSound(rows), #record ": a row has the wrong width, count or target")

BKOQ_CHECK_RECORD(kJob, BKQJDATATRANSFER);
BKOQ_CHECK_RECORD(kJobOld, BKQJDATATRANSFER_OLD);
BKOQ_CHECK_RECORD(kSchedule, BKSCHEDINFO);
BKOQ_CHECK_RECORD(kOpenFile, BKOFINFO);
BKOQ_CHECK_RECORD(kFax, BKFAXINFO);
BKOQ_CHECK_RECORD(kFaxOld, BKFAXINFO_OLD);
BKOQ_CHECK_RECORD(kEMail, BKEMAILINFO);
BKOQ_CHECK_RECORD(kPrintQueue, BKPRINTQ);
BKOQ_CHECK_RECORD(kRotation, BKROTATIONINFO);
BKOQ_CHECK_RECORD(kRotationOld, BKROTATIONINFO_OLD);
BKOQ_CHECK_RECORD(kNode, BKNODE);
BKOQ_CHECK_RECORD(kNodeOld, BKNODE_OLD);
BKOQ_CHECK_RECORD(kFilter, BKFILTER_FILE);
BKOQ_CHECK_RECORD(kDisk, BKDDISK);
BKOQ_CHECK_RECORD(kDiskOld, BKDDISK_OLD);
BKOQ_CHECK_RECORD(kDiskItem, BKDISKITEM);
BKOQ_CHECK_RECORD(kTape, BKDTAPE);
BKOQ_CHECK_RECORD(kTapeOld, BKDTAPE_OLD);
BKOQ_CHECK_RECORD(kTapeItem, BKTAPEITEM);
BKOQ_CHECK_RECORD(kTapeExtension, BKDTAPEX);
#undef BKOQ_CHECK_RECORD

template <std::size_t n>
constexpr RecordDef record(RecordType type, const char* name, const char* meaning, std::size_t size,
                           const std::array<FieldDef, n>& rows) {
  return RecordDef{type, name, meaning, static_cast<std::uint32_t>(size), rows.data(), n};
}

constexpr const char* kJobMeaning = "one job, the root of the tree";
constexpr const char* kScheduleMeaning = "times and repeats of the schedule";
constexpr const char* kOpenFileMeaning = "open-file options of a backup job";
constexpr const char* kFaxMeaning = "fax notification";
constexpr const char* kEMailMeaning = "e-mail notification";
constexpr const char* kPrintQueueMeaning = "print-queue notification";
constexpr const char* kRotationMeaning = "media rotation of the schedule";
constexpr const char* kNodeMeaning = "one node: a machine, a tape node or a restore destination";
constexpr const char* kFilterMeaning = "one filter";
constexpr const char* kDiskMeaning = "one disk of a machine or of a restore destination";
constexpr const char* kDiskItemMeaning = "one item of a disk";
constexpr const char* kTapeMeaning = "one tape";
constexpr const char* kTapeItemMeaning = "one item of a tape";
constexpr const char* kTapeExtensionMeaning = "database credentials and session end of a tape";

// In the order of RecordType.
constexpr RecordDef kRecords[kLayoutCount][kRecordTypeCount] = {
    {record(RecordType::kJob, "BKQJDATATRANSFER", kJobMeaning, sizeof(BKQJDATATRANSFER), kJob),
     record(RecordType::kSchedule, "BKSCHEDINFO", kScheduleMeaning, sizeof(BKSCHEDINFO), kSchedule),
     record(RecordType::kOpenFile, "BKOFINFO", kOpenFileMeaning, sizeof(BKOFINFO), kOpenFile),
     record(RecordType::kFax, "BKFAXINFO", kFaxMeaning, sizeof(BKFAXINFO), kFax),
     record(RecordType::kEMail, "BKEMAILINFO", kEMailMeaning, sizeof(BKEMAILINFO), kEMail),
     record(RecordType::kPrintQueue, "BKPRINTQ", kPrintQueueMeaning, sizeof(BKPRINTQ), kPrintQueue),
     record(RecordType::kRotation, "BKROTATIONINFO", kRotationMeaning, sizeof(BKROTATIONINFO),
            kRotation),
     record(RecordType::kNode, "BKNODE", kNodeMeaning, sizeof(BKNODE), kNode),
     record(RecordType::kFilter, "BKFILTER_FILE", kFilterMeaning, sizeof(BKFILTER_FILE), kFilter),
     record(RecordType::kDisk, "BKDDISK", kDiskMeaning, sizeof(BKDDISK), kDisk),
     record(RecordType::kDiskItem, "BKDISKITEM", kDiskItemMeaning, sizeof(BKDISKITEM), kDiskItem),
     record(RecordType::kTape, "BKDTAPE", kTapeMeaning, sizeof(BKDTAPE), kTape),
     record(RecordType::kTapeItem, "BKTAPEITEM", kTapeItemMeaning, sizeof(BKTAPEITEM), kTapeItem),
     record(RecordType::kTapeExtension, "BKDTAPEX", kTapeExtensionMeaning, sizeof(BKDTAPEX),
            kTapeExtension)},
    {record(RecordType::kJob, "BKQJDATATRANSFER_OLD", kJobMeaning, sizeof(BKQJDATATRANSFER_OLD),
            kJobOld),
     record(RecordType::kSchedule, "BKSCHEDINFO_OLD", kScheduleMeaning, sizeof(BKSCHEDINFO_OLD),
            kSchedule),
     record(RecordType::kOpenFile, "BKOFINFO_OLD", kOpenFileMeaning, sizeof(BKOFINFO_OLD),
            kOpenFile),
     record(RecordType::kFax, "BKFAXINFO_OLD", kFaxMeaning, sizeof(BKFAXINFO_OLD), kFaxOld),
     record(RecordType::kEMail, "BKEMAILINFO_OLD", kEMailMeaning, sizeof(BKEMAILINFO_OLD), kEMail),
     record(RecordType::kPrintQueue, "BKPRINTQ_OLD", kPrintQueueMeaning, sizeof(BKPRINTQ_OLD),
            kPrintQueue),
     record(RecordType::kRotation, "BKROTATIONINFO_OLD", kRotationMeaning,
            sizeof(BKROTATIONINFO_OLD), kRotationOld),
     record(RecordType::kNode, "BKNODE_OLD", kNodeMeaning, sizeof(BKNODE_OLD), kNodeOld),
     record(RecordType::kFilter, "BKFILTER_FILE_OLD", kFilterMeaning, sizeof(BKFILTER_FILE_OLD),
            kFilter),
     record(RecordType::kDisk, "BKDDISK_OLD", kDiskMeaning, sizeof(BKDDISK_OLD), kDiskOld),
     record(RecordType::kDiskItem, "BKDISKITEM_OLD", kDiskItemMeaning, sizeof(BKDISKITEM_OLD),
            kDiskItem),
     record(RecordType::kTape, "BKDTAPE_OLD", kTapeMeaning, sizeof(BKDTAPE_OLD), kTapeOld),
     record(RecordType::kTapeItem, "BKTAPEITEM_OLD", kTapeItemMeaning, sizeof(BKTAPEITEM_OLD),
            kTapeItem),
     RecordDef{RecordType::kNone, nullptr, nullptr, 0, nullptr, 0}}};

constexpr bool standInOrder() {
  for (const auto& layout : kRecords) {
    for (std::size_t i = 0; i < kRecordTypeCount; ++i) {
      if (layout[i].name != nullptr && layout[i].type != static_cast<RecordType>(i)) return false;
    }
  }
  return true;
}
static_assert(standInOrder(), "records are looked up by their type");

// Whether the name asked for is this record's, the suffix of the previous layout left out or not.
bool isNamed(const char* recordName, const char* name) {
  const std::size_t length = std::strlen(name);
  if (std::strncmp(recordName, name, length) != 0) return false;
  return recordName[length] == '\0' || std::strcmp(recordName + length, "_OLD") == 0;
}

}  // namespace

const RecordDef* recordDef(Layout layout, RecordType type) {
  const auto index = static_cast<std::size_t>(type);
  if (index >= kRecordTypeCount) return nullptr;
  const RecordDef& def = kRecords[static_cast<std::size_t>(layout)][index];
  return def.name != nullptr ? &def : nullptr;
}

const RecordDef* findRecordDef(Layout layout, const char* name) {
  for (const RecordDef& def : kRecords[static_cast<std::size_t>(layout)]) {
    if (def.name != nullptr && isNamed(def.name, name)) return &def;
  }
  return nullptr;
}

const char* layoutName(Layout layout) {
  return layout == Layout::kCurrent ? "current" : "previous";
}

const JobKind* jobKinds() { return kJobKinds; }

const JobKind* findJobKind(std::uint32_t code) {
  for (const JobKind* kind = kJobKinds; kind->name != nullptr; ++kind) {
    if (kind->code == code) return kind;
  }
  return nullptr;
}

NodeRole nodeRole(std::uint32_t jobKind, NodeArray array) {
  const JobKind* kind = findJobKind(jobKind);
  if (kind == nullptr || array == NodeArray::kNone) return {};
  return array == NodeArray::kSources ? kind->sources : kind->destinations;
}

const Word* tapeNodeTypes() { return kTapeNodeTypes; }

const Word* nodeTypes() { return kNodeTypes; }

Variant filterVariant(std::uint32_t filterType, std::uint32_t timeRange) {
  switch (filterType) {
    case 1:
    case 2:
    case 3:
      return kPatternFilter;
    case 4:
      break;
    case 5:
      return kAttributeFilter;
    default:
      return kUnknownFilter;
  }
  switch (timeRange) {
    case 0:
    case 1:
      return kBoundFilter;
    case 2:
      return kBetweenFilter;
    case 3:
      return kWithinFilter;
    default:
      return kUnknownTimeFilter;
  }
}

const char* variantName(std::uint8_t variants) {
  switch (variants) {
    case kAlways:
      return "";
    case kPatternFilter:
      return "volume, file, directory";
    case kAttributeFilter:
      return "attribute";
    case kBoundFilter:
      return "time before, after";
    case kBetweenFilter:
      return "time between";
    case kWithinFilter:
      return "time within";
    case kTimeFilter:
      return "time";
    case kUnknownFilter:
      return "unknown kind";
    case kUnknownFilter | kUnknownTimeFilter:
      return "unknown kind or range";
    default:
      return "other";
  }
}

}  // namespace bkoq
