#include <gtest/gtest.h>

#include <algorithm>

#include "kit/test_trees.h"

namespace bkoq::test {
namespace {

std::string records(const char* name, BkoqLayout layout, BkoqFormat format) {
  std::string text;
  EXPECT_EQ(bkoqPrintRecords(name, layout, format, appendToString, &text), BKOQ_OK);
  return text;
}

std::string layoutDifferences(const char* name, BkoqFormat format) {
  std::string text;
  EXPECT_EQ(bkoqPrintLayoutDifferences(name, format, appendToString, &text), BKOQ_OK);
  return text;
}

std::string expected(const char* text) { return text + 1; }

TEST(Records, ArePrintedAsTables) {
  EXPECT_EQ(records("BKDDISK", BKOQ_LAYOUT_CURRENT, BKOQ_FORMAT_TEXT), expected(R"(
BKDDISK, 52 bytes: one disk of a machine or of a restore destination
  offset  width  field             kind                    meaning                                                                                filled by
       0      4  pszDiskName       text                    disk name                                                                              BKQDisk::setDiskName, BKQRestoreNode::setDiskName
       4      4  pszPassword       text, secret            disk password, or the job's session password                                           BKQDisk::setPassword, BKQBackupJob::setSessionPassword
       8      4  ulFilterCount     count                   elements of pFilters
      12      4  pFilters          array of BKFILTER_FILE  filters of this disk                                                                   BKQDisk::addFilter
      16      4  ulDiskItemCount   count                   elements of pDiskItems
      20      4  pDiskItems        array of BKDISKITEM     items of this disk                                                                     BKQDisk::addDiskItem, BKQRestoreNode::setDestinationDir
      24      2  usDiskType        number                  disk type code                                                                         BKQDisk::setDiskType, BKQDBRestoreNode::setFStype
      26      2  abReserved26      reserved                reserved: zero
      28      4  ulOptions         flags                   disk options with the job's bits added                                                 BKQDisk::setOptions, BKQUnixNode::setUnixOptions, BKQDBRestoreNode::setOptions
      32      4  ulReserved1       reserved                reserved: zero
      36      4  pszDiskPW2        two texts, secret       user and second password: two texts; types 11, 22, 31 (restore: 22, 31) joined by ":"  BKQDisk::setUser, setDiskPW2, BKQDBRestoreNode::setDBuser
      40      4  ulReserved2       reserved                reserved: zero
      44      4  pszEncryptionKey  text, secret            encryption key                                                                         BKQDisk::setEncryptionKey
      48      4  ulReserved3       reserved                reserved: zero

  ulOptions, bits: 0x00002000 compression; 0x00004000 encryption
)"));
  EXPECT_EQ(records("BKFILTER_FILE", BKOQ_LAYOUT_CURRENT, BKOQ_FORMAT_TEXT), expected(R"(
BKFILTER_FILE, 32 bytes: one filter
  offset  width  field           kind      meaning                                                            filled by
       0      2  usFilterType    number    kind of the filter; says how bytes 4 to 17 are read                BKQFilter::filterType
       2      2  usInclExcl      number    include or exclude                                                 BKQFilter::setInclExcl
       4      4  ulFilterCount   number    volume, file, directory: 1 with a pattern, 0 without
       4      4  ulAttributes    flags     attribute: attribute bits                                          BKQAttributeFilter::setAttributes
       4      2  usTimeAttr      number    time: which time stamp is tested                                   BKQTimeFilter::setTRattribute
       6      2  usTimeRange     number    time: range of the time                                            BKQTimeFilter::getTRtype
       4      4  ulOpaque4       opaque    unknown kind: nothing is known of it
       8      4  pszFilter       text      volume, file, directory: pattern                                   setFilterString of the filter
       8      4  lTime           time      time before, after: bound                                          setTime of the filter
       8      4  lStartTime      time      time between: start bound                                          BKQBetweenTimeFilter::setStartTime
       8      4  ulTimeUnits     number    time within: number of units                                       BKQWithinTimeFilter::setTimeUnits
       8     10  abUnused8       reserved  attribute: not used by this filter: zero
       8      4  ulOpaque8       opaque    unknown kind or range: nothing is known of it
      12      2  usFilterLen     number    volume, file, directory: length of the pattern with its NUL, or 0
      14      4  abUnused14      reserved  volume, file, directory: not used by this filter: zero
      12      6  abUnused12      reserved  time before, after: not used by this filter: zero
      12      4  lEndTime        time      time between: end bound                                            BKQBetweenTimeFilter::setEndTime
      12      4  abUnused12      reserved  time within: not used by this filter: zero
      16      2  abUnused16      reserved  time between: not used by this filter: zero
      16      2  usTimeUnitType  number    time within: kind of unit                                          BKQWithinTimeFilter::setTimeUnitType
      12      4  ulOpaque12      opaque    unknown kind or range: nothing is known of it
      16      2  usOpaque16      opaque    unknown kind or range: nothing is known of it
      18     14  abReserved18    reserved  reserved: zero

  usFilterType, codes: 1 volume; 2 file; 3 directory; 4 time; 5 attribute
  usInclExcl, codes: 0 include; 1 exclude
  usTimeRange, codes: 0 before; 1 after; 2 between; 3 within
)"));
  EXPECT_EQ(records("BKROTATIONINFO", BKOQ_LAYOUT_PREVIOUS, BKOQ_FORMAT_TEXT), expected(R"(
BKROTATIONINFO_OLD, 48 bytes: media rotation of the schedule
  offset  width  field            kind       meaning                                 filled by
       0      4  pszSetName       text       media set name                          BKQRotationSchedule::setSetName
       4      4  abReserved4      reserved   reserved: zero
       8      2  usCruiseMethod   number     cruise schedules: method, low 16 bits   BKQCruiseSchedule::setCruiseMethod
      10      2  abReserved10     reserved   reserved: zero
      12      8  abJobTypes       byte list  job types of the first eight job units  BKQJobUnit::setJobType
      20      2  usSaveMonthly    number     cruise schedules: monthly copies kept   BKQCruiseSchedule::setSaveMonthly
      22      2  usSaveWeekly     number     cruise schedules: weekly copies kept    BKQCruiseSchedule::setSaveWeekly
      24      2  usSaveDaily      number     cruise schedules: daily copies kept     BKQCruiseSchedule::setSaveDaily
      26     14  abReserved26     reserved   reserved: zero
      40      4  ulCruiseOptions  flags      cruise schedules: options               BKQCruiseSchedule::setOptions
      44      2  usMonths         number     cruise schedules: months                BKQCruiseSchedule::setMonths
      46      2  usCopies         number     cruise schedules: copies                BKQCruiseSchedule::setCopies
)"));
}

TEST(Records, ArePrintedAsMarkdown) {
  EXPECT_EQ(records("BKNODE", BKOQ_LAYOUT_CURRENT, BKOQ_FORMAT_MARKDOWN), expected(R"(
## `BKNODE`

100 bytes: one node: a machine, a tape node or a restore destination.

| offset | width | field | kind | meaning | filled by |
|---:|---:|---|---|---|---|
| 0 | 2 | `usNodeType` | number | node kind; tape node: 3, a restore node: actual one | BKQNode::nodeType, BKQRestoreNode::setActualNodeType |
| 2 | 2 | `usNodeOS` | number | operating-system code | BKQNode::setNodeOS |
| 4 | 4 | `pszNodeOSVer` | text, or two texts | operating-system version; UNIX: a second text after it | BKQNode::setNodeOSver |
| 8 | 4 | `pszNodeName` | text, or two texts | node name; UNIX: a second text after it | BKQNode::setNodeName |
| 12 | 4 | `pszNodeAddress` | text | node address; for an NDS node without one its domain | BKQNode::setNodeAddress, for NDS setNodeDomain |
| 16 | 4 | `pszUserName` | text | user name | BKQNode::setUserName |
| 20 | 4 | `pszPassword` | text, secret | password | BKQNode::setPassword |
| 24 | 4 | `ulFilterCount` | count | elements of pFilters | |
| 28 | 4 | `pFilters` | array of `BKFILTER_FILE` | the node's filters, then the job's | BKQNode::addFilter, addFilter of the job |
| 32 | 2 | `usDeviceType` | number | device type | BKQNode::setDeviceType |
| 34 | 2 | `abReserved34` | reserved | reserved: zero | |
| 36 | 4 | `ulMediaCount` | count | elements of pMedia | |
| 40 | 4 | `pMedia` | array of `BKDDISK` or `BKDTAPE` | disks of a machine or a restore destination, tapes of a tape node | BKQDiskNode::addDisk, BKQTapeNode::addTape |
| 44 | 4 | `pszBeforeNode` | text | node to process before this one | BKQNode::setBeforeNode |
| 48 | 4 | `pszAfterNode` | text | node to process after this one | BKQNode::setAfterNode |
| 52 | 2 | `usBeforeNodeWait` | number | wait for the before-node | BKQNode::setBeforeNodeWait |
| 54 | 2 | `abReserved54` | reserved | reserved: zero | |
| 56 | 4 | `ulNodeOptions` | flags | node options; the conversion may add 0x40, 0x200, 0x800 | BKQNode::setOptions |
| 60 | 24 | `abReserved60` | reserved | reserved: zero | |
| 84 | 4 | `pszNodeDomain` | text | node domain; for an NDS node its address | BKQNode::setNodeDomain, for NDS setNodeAddress |
| 88 | 12 | `abReserved88` | reserved | reserved: zero | |

- `usNodeType`, codes: 2 Macintosh; 3 UNIX; 6 NDS; 8 NetWare; 9 Windows NT; 10 OS/2; 11 Windows 95; 12 Windows; 13 NDS; 20 FTP; 21 Sybase; 22 Oracle; 23 Informix; 24 tape node, unfinished; 25 restore node, unfinished; 26 snapshot; 27 database restore node, unfinished; 3 tape node
- `usNodeOS`, codes: 2 OS/2; 4 NetWare; 5 Windows; 6 UNIX; 7 Mac; 8 Windows NT
- `ulNodeOptions`, bits: 0x00000040 no estimate; 0x00000200 a text follows the name; 0x00000800 a text follows the version
)"));
}

TEST(Records, ArePrintedAsJson) {
  EXPECT_EQ(records("BKDISKITEM_OLD", BKOQ_LAYOUT_PREVIOUS, BKOQ_FORMAT_JSON), expected(R"(
{
  "format": "bkoq-layout",
  "version": 1,
  "layout": "previous",
  "records": [
    {"record": "BKDISKITEM_OLD", "size": 32, "meaning": "one item of a disk", "fields": [
      {"name": "pszPath", "offset": 0, "width": 4, "kind": "text", "meaning": "path as the server uses it", "filledBy": "BKQDiskItem::setPath, BKQRestoreNode::setDestinationDir"},
      {"name": "ulFileCount", "offset": 4, "width": 4, "kind": "count", "meaning": "texts of pFileList"},
      {"name": "pFileList", "offset": 8, "width": 4, "kind": "text list", "countOffset": 4, "meaning": "file names, back to back", "filledBy": "BKQDiskItem::addFile"},
      {"name": "ulOptions", "offset": 12, "width": 4, "kind": "flags", "meaning": "item options", "filledBy": "BKQDiskItem::setOptions"},
      {"name": "abReserved16", "offset": 16, "width": 16, "kind": "reserved", "meaning": "reserved: zero"}
    ]}
  ]
}
)"));
  EXPECT_EQ(records("BKTAPEITEM", BKOQ_LAYOUT_CURRENT, BKOQ_FORMAT_JSON), expected(R"(
{
  "format": "bkoq-layout",
  "version": 1,
  "layout": "current",
  "records": [
    {"record": "BKTAPEITEM", "size": 32, "meaning": "one item of a tape", "fields": [
      {"name": "ulChunkNum", "offset": 0, "width": 4, "kind": "number", "meaning": "chunk of the session", "filledBy": "BKQTapeItem::setChunkNum"},
      {"name": "usChunkOffset", "offset": 4, "width": 2, "kind": "number", "meaning": "offset within the chunk", "filledBy": "BKQTapeItem::setChunkOffset"},
      {"name": "abReserved6", "offset": 6, "width": 2, "kind": "reserved", "meaning": "reserved: zero"},
      {"name": "pszFileOrDir", "offset": 8, "width": 4, "kind": "text", "meaning": "file or directory in server form", "filledBy": "BKQTapeItem::setFileOrDir"},
      {"name": "ulOptions", "offset": 12, "width": 4, "kind": "flags", "meaning": "item options", "filledBy": "BKQTapeItem::setOptions"},
      {"name": "abReserved16", "offset": 16, "width": 16, "kind": "reserved", "meaning": "reserved: zero"}
    ]}
  ]
}
)"));
}

// What programs need besides the place of a field: its codes or bits, and what it holds.
TEST(Records, NameCodesBitsAndRecordsInJson) {
  const char* const lines[] = {
      R"({"name": "usNodeOS", "offset": 2, "width": 2, "kind": "number", "values": {"2": "OS/2", "4": "NetWare", "5": "Windows", "6": "UNIX", "7": "Mac", "8": "Windows NT"}, "meaning": "operating-system code", "filledBy": "BKQNode::setNodeOS"},)",
      R"({"name": "pFilters", "offset": 28, "width": 4, "kind": "array", "records": ["BKFILTER_FILE"], "countOffset": 24, "meaning": "the node's filters, then the job's", "filledBy": "BKQNode::addFilter, addFilter of the job"},)",
      R"({"name": "pMedia", "offset": 40, "width": 4, "kind": "array", "records": ["BKDDISK", "BKDTAPE"], "countOffset": 36, "meaning": "disks of a machine or a restore destination, tapes of a tape node", "filledBy": "BKQDiskNode::addDisk, BKQTapeNode::addTape"},)",
      R"({"name": "ulNodeOptions", "offset": 56, "width": 4, "kind": "flags", "bits": {"64": "no estimate", "512": "a text follows the name", "2048": "a text follows the version"}, "meaning": "node options; the conversion may add 0x40, 0x200, 0x800", "filledBy": "BKQNode::setOptions"},)",
  };
  const std::string table = records("BKNODE", BKOQ_LAYOUT_CURRENT, BKOQ_FORMAT_JSON);
  for (const char* line : lines) {
    EXPECT_NE(table.find("\n      " + std::string(line) + "\n"), std::string::npos) << line;
  }
}

// Every record of a layout, and how many bytes it has.
TEST(Records, AreAllThere) {
  const std::string headings[] = {
      "BKQJDATATRANSFER, 292 bytes: one job, the root of the tree\n",
      "BKSCHEDINFO, 18 bytes: times and repeats of the schedule\n",
      "BKOFINFO, 12 bytes: open-file options of a backup job\n",
      "BKFAXINFO, 24 bytes: fax notification\n",
      "BKEMAILINFO, 24 bytes: e-mail notification\n",
      "BKPRINTQ, 16 bytes: print-queue notification\n",
      "BKROTATIONINFO, 48 bytes: media rotation of the schedule\n",
      "BKNODE, 100 bytes: one node: a machine, a tape node or a restore destination\n",
      "BKFILTER_FILE, 32 bytes: one filter\n",
      "BKDDISK, 52 bytes: one disk of a machine or of a restore destination\n",
      "BKDISKITEM, 32 bytes: one item of a disk\n",
      "BKDTAPE, 72 bytes: one tape\n",
      "BKTAPEITEM, 32 bytes: one item of a tape\n",
      "BKDTAPEX, 64 bytes: database credentials and session end of a tape\n",
  };
  const std::string current = records(nullptr, BKOQ_LAYOUT_CURRENT, BKOQ_FORMAT_TEXT);
  const std::string previous = records(nullptr, BKOQ_LAYOUT_PREVIOUS, BKOQ_FORMAT_TEXT);
  for (const std::string& heading : headings) {
    EXPECT_NE(current.find(heading), std::string::npos) << heading;
    const std::size_t comma = heading.find(',');
    const std::string old = heading.substr(0, comma) + "_OLD" + heading.substr(comma);
    const bool isMissing = heading.find("BKDTAPEX") == 0;
    EXPECT_EQ(previous.find(old) == std::string::npos, isMissing) << old;
  }
}

// Masking depends on this list alone.
TEST(Records, NameEverySecret) {
  std::string secrets;
  const std::string table = records(nullptr, BKOQ_LAYOUT_CURRENT, BKOQ_FORMAT_JSON);
  const std::string name = "{\"name\": \"";
  for (std::size_t at = table.find(name); at != std::string::npos; at = table.find(name, at + 1)) {
    const std::string line = table.substr(at, table.find('\n', at) - at);
    if (line.find("\"secret\": true") == std::string::npos) continue;
    const std::size_t begin = name.size();
    secrets += line.substr(begin, line.find('"', begin) - begin) + " ";
  }
  EXPECT_EQ(secrets,
            "pszUserPW pszUserPW pszUserPW pszPassword pszPassword pszDiskPW2 pszEncryptionKey "
            "pszSessionPW pszDBPW ");
}

TEST(Records, DifferBetweenTheLayoutsInAFewPlaces) {
  EXPECT_EQ(layoutDifferences(nullptr, BKOQ_FORMAT_TEXT), expected(R"(
BKFAXINFO and BKFAXINFO_OLD
  offset  current                                                     previous
      20  pszReceiverName, 4 bytes: not written in this layout: null  pszReceiverName, 4 bytes: receiver name

BKROTATIONINFO and BKROTATIONINFO_OLD
  offset  current                                previous
      12  abReserved12, 8 bytes: reserved: zero  abJobTypes, 8 bytes: job types of the first eight job units

BKNODE and BKNODE_OLD
  offset  current                                                                        previous
       0  usNodeType, 2 bytes: node kind; tape node: 3, a restore node: actual one       usNodeType, 2 bytes: node kind; tape node: 3, restore node: actual one, NDS tree: 6
      12  pszNodeAddress, 4 bytes: node address; for an NDS node without one its domain  pszNodeAddress, 4 bytes: node address; for an NDS node its domain
      84  pszNodeDomain, 4 bytes: node domain; for an NDS node its address               abReserved84, 16 bytes: reserved: zero
      88  abReserved88, 12 bytes: reserved: zero                                         part of the field before

BKDDISK and BKDDISK_OLD
  offset  current                                                                                                     previous
      36  pszDiskPW2, 4 bytes: user and second password: two texts; types 11, 22, 31 (restore: 22, 31) joined by ":"  pszDiskPW2, 4 bytes: user and second password: two texts; types 11, 22, 31 joined by ":"

BKDTAPE and BKDTAPE_OLD
  offset  current                                  previous
       8  usTapeID, 2 bytes: tape ID, low 16 bits  ulTapeID, 4 bytes: tape ID, whole
      10  abReserved10, 2 bytes: reserved: zero    part of the field before
      52  ulOptions, 4 bytes: tape options         ulOptions, 4 bytes: tape options; an extension's 0x8000000 cleared
      64  abReserved64, 4 bytes: reserved: zero    lSessionEndTime, 4 bytes: session end time, of the extension if there is one
      68  pTapeX, 4 bytes: extension               abReserved68, 4 bytes: reserved: zero

BKDTAPEX: not in the previous layout
)"));
  EXPECT_EQ(layoutDifferences("BKDTAPE", BKOQ_FORMAT_MARKDOWN), expected(R"(
## `BKDTAPE` and `BKDTAPE_OLD`

| offset | current | previous |
|---:|---|---|
| 8 | `usTapeID`, 2 bytes: tape ID, low 16 bits | `ulTapeID`, 4 bytes: tape ID, whole |
| 10 | `abReserved10`, 2 bytes: reserved: zero | part of the field before |
| 52 | `ulOptions`, 4 bytes: tape options | `ulOptions`, 4 bytes: tape options; an extension's 0x8000000 cleared |
| 64 | `abReserved64`, 4 bytes: reserved: zero | `lSessionEndTime`, 4 bytes: session end time, of the extension if there is one |
| 68 | `pTapeX`, 4 bytes: extension | `abReserved68`, 4 bytes: reserved: zero |
)"));
  EXPECT_EQ(layoutDifferences("BKROTATIONINFO", BKOQ_FORMAT_JSON), expected(R"(
{
  "format": "bkoq-layout-differences",
  "version": 1,
  "records": [
    {"current": "BKROTATIONINFO", "previous": "BKROTATIONINFO_OLD", "fields": [
      {"offset": 12, "current": {"name": "abReserved12", "offset": 12, "width": 8, "kind": "reserved", "meaning": "reserved: zero"}, "previous": {"name": "abJobTypes", "offset": 12, "width": 8, "kind": "byte list", "meaning": "job types of the first eight job units", "filledBy": "BKQJobUnit::setJobType"}}
    ]}
  ]
}
)"));
  EXPECT_EQ(layoutDifferences("BKDTAPE", BKOQ_FORMAT_JSON), expected(R"(
{
  "format": "bkoq-layout-differences",
  "version": 1,
  "records": [
    {"current": "BKDTAPE", "previous": "BKDTAPE_OLD", "fields": [
      {"offset": 8, "current": {"name": "usTapeID", "offset": 8, "width": 2, "kind": "number", "meaning": "tape ID, low 16 bits", "filledBy": "BKQTape::setTapeID"}, "previous": {"name": "ulTapeID", "offset": 8, "width": 4, "kind": "number", "meaning": "tape ID, whole", "filledBy": "BKQTape::setTapeID"}},
      {"offset": 10, "current": {"name": "abReserved10", "offset": 10, "width": 2, "kind": "reserved", "meaning": "reserved: zero"}, "previous": null},
      {"offset": 52, "current": {"name": "ulOptions", "offset": 52, "width": 4, "kind": "flags", "bits": {"134217728": "extension"}, "meaning": "tape options", "filledBy": "BKQTape::setOptions"}, "previous": {"name": "ulOptions", "offset": 52, "width": 4, "kind": "flags", "bits": {"134217728": "extension"}, "meaning": "tape options; an extension's 0x8000000 cleared", "filledBy": "BKQTape::setOptions"}},
      {"offset": 64, "current": {"name": "abReserved64", "offset": 64, "width": 4, "kind": "reserved", "meaning": "reserved: zero"}, "previous": {"name": "lSessionEndTime", "offset": 64, "width": 4, "kind": "client time", "meaning": "session end time, of the extension if there is one", "filledBy": "BKQTapeXtension::setSessionEndTime, BKQTape::setSessionEndTime"}},
      {"offset": 68, "current": {"name": "pTapeX", "offset": 68, "width": 4, "kind": "record", "records": ["BKDTAPEX"], "meaning": "extension", "filledBy": "BKQTape::setTapeXtension"}, "previous": {"name": "abReserved68", "offset": 68, "width": 4, "kind": "reserved", "meaning": "reserved: zero"}}
    ]}
  ]
}
)"));
  EXPECT_EQ(layoutDifferences("BKDTAPEX", BKOQ_FORMAT_JSON), expected(R"(
{
  "format": "bkoq-layout-differences",
  "version": 1,
  "records": [
    {"current": "BKDTAPEX", "previous": null, "fields": []}
  ]
}
)"));
  EXPECT_EQ(layoutDifferences("BKFILTER_FILE", BKOQ_FORMAT_TEXT),
            "No difference between the layouts.\n");
  EXPECT_EQ(layoutDifferences("BKFILTER_FILE", BKOQ_FORMAT_JSON), expected(R"(
{
  "format": "bkoq-layout-differences",
  "version": 1,
  "records": []
}
)"));
}

TEST(Records, RefuseBadArguments) {
  std::string text;
  const auto current = BKOQ_LAYOUT_CURRENT;
  const auto plain = BKOQ_FORMAT_TEXT;
  const auto sink = appendToString;
  EXPECT_EQ(bkoqPrintRecords("BKNOD", current, plain, sink, &text), BKOQ_NOT_FOUND);
  EXPECT_EQ(bkoqPrintRecords("", current, plain, sink, &text), BKOQ_NOT_FOUND);
  EXPECT_EQ(bkoqPrintRecords("BKNODE_OLD", current, plain, sink, &text), BKOQ_NOT_FOUND);
  EXPECT_EQ(bkoqPrintRecords("BKDTAPEX", BKOQ_LAYOUT_PREVIOUS, plain, sink, &text), BKOQ_NOT_FOUND);
  EXPECT_EQ(bkoqPrintRecords(nullptr, static_cast<BkoqLayout>(2), plain, sink, &text),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintRecords(nullptr, current, BKOQ_FORMAT_ANNOTATED, sink, &text),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintRecords("BKNODE", current, BKOQ_FORMAT_MAGIC, appendToString, &text),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintRecords("BKNODE", current, BKOQ_FORMAT_KAITAI, appendToString, &text),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintLayoutDifferences(nullptr, BKOQ_FORMAT_C, appendToString, &text),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintRecords(nullptr, current, plain, nullptr, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintLayoutDifferences("BKNOD", plain, sink, &text), BKOQ_NOT_FOUND);
  EXPECT_EQ(bkoqPrintLayoutDifferences(nullptr, BKOQ_FORMAT_ANNOTATED, sink, &text),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintLayoutDifferences(nullptr, plain, nullptr, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(text, "");
  const BkoqSink full = [](void*, const char*, std::size_t) { return 1; };
  EXPECT_EQ(bkoqPrintRecords(nullptr, current, plain, full, nullptr), BKOQ_SINK_FAILED);
  EXPECT_EQ(bkoqPrintLayoutDifferences(nullptr, plain, full, nullptr), BKOQ_SINK_FAILED);
}

}  // namespace
}  // namespace bkoq::test
