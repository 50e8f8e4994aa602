#include "tests/support/nightly_records.h"

#include <gtest/gtest.h>

#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

// Where the arrays of a record stand: offset of the count, offset of the pointer, element size.
struct Array {
  std::size_t count;
  std::size_t pointer;
  std::size_t size;
};
constexpr Array kSourceNodes{12, 16, 100};
constexpr Array kDestNodes{20, 24, 100};
constexpr Array kNodeFilters{24, 28, 32};
constexpr Array kNodeDisks{36, 40, 52};
constexpr Array kNodeTapes{36, 40, 72};
constexpr Array kDiskFilters{8, 12, 32};
constexpr Array kDiskItems{16, 20, 32};
constexpr Array kTapeFilters{32, 36, 32};
constexpr Array kTapeItems{40, 44, 32};

const void* element(const void* record, const Array& array, std::size_t index) {
  const std::uint32_t count = numberAt(record, array.count, 4);
  if (index >= count) {
    ADD_FAILURE() << "element " << index << " of " << count;
    return nullptr;
  }
  return pointerAt(record, array.pointer) + index * array.size;
}

class Checker {
 public:
  Checker(BkoqLayout layout, Origin origin)
      : previous_(layout == BKOQ_LAYOUT_PREVIOUS), cloned_(origin == Origin::kCloned) {}

  void checkJob(const void* job) {
    std::vector<Row> rows = {
        number(4, 2, 20),                  // usJobType: rotation backup
        number(8, 2, 2),                   // usJobStatus: low half of 0x00010002
        number(10, 2, 2),                  // usScriptType
        number(12, 4, cloned_ ? 8 : 4),    // ulNumSourceNodes
        block(16),                         // pSourceNodes
        number(20, 4, 1),                  // ulNumDestNodes
        block(24),                         // pDestNodes
        text(28, "operator"),              // pszOwner
        text(32, "/var/log/nightly.rpt"),  // pszReportFile
        text(36, "Nightly backup of the accounting machines"),  // pszComments
        text(40, "/usr/local/bin/quiesce"),                     // pszBeforeJob
        text(44, "/usr/local/bin/resume"),                      // pszAfterJob
        number(48, 2, 30),                                      // usBeforeJobWait
        number(56, 4, 1078156800),   // stSchedule.lSubmitTime: 2004-03-01 16:00
        number(60, 4, 1078160400),   // stSchedule.lExecTime: 2004-03-01 17:00
        number(104, 4, 3),           // stOpenFile.ulFActions
        number(108, 4, 1),           // stOpenFile.ulFMethods
        number(112, 2, 4),           // stOpenFile.usRetryCount
        number(114, 2, 15),          // stOpenFile.usRetryInterval
        text(132, "faxhost"),        // stFax.pszHostName
        text(136, "faxuser"),        // stFax.pszUserName
        text(140, "f4x"),            // stFax.pszUserPW
        text(144, "555-0100"),       // stFax.pszFaxNumber
        text(148, "cover.txt"),      // stFax.pszCoverPageFile
        text(156, "mailhost"),       // stEMail.pszHostName
        text(160, "mailuser"),       // stEMail.pszUserName
        text(164, "m4il"),           // stEMail.pszUserPW
        text(168, "sys:mhs"),        // stEMail.pszMHSDir
        text(172, "ops@acme"),       // stEMail.pszMHSId
        text(176, "ops"),            // stEMail.pszMHSUserName
        text(180, "printhost"),      // stPrintQueue.pszHostName
        text(184, "printuser"),      // stPrintQueue.pszUserName
        text(188, "pr1nt"),          // stPrintQueue.pszUserPW
        text(192, "Q_NIGHT"),        // stPrintQueue.pszQueueName
        text(196, "NIGHTSET"),       // stScheduleExt.pszSetName
        number(256, 4, 0x00100008),  // ulOptions
        text(260, "backup1"),        // pszHost
    };
    if (previous_) {
      rows.push_back(text(152, "Night shift"));    // stFax.pszReceiverName
      rows.push_back(number(208, 4, 0x04030201));  // stScheduleExt.abJobTypes 1 to 4
      rows.push_back(number(212, 4, 0x08070605));  // stScheduleExt.abJobTypes 5 to 8
    }
    expectRows("job", job, 292, rows);

    checkUnixNode(element(job, kSourceNodes, 0), false);
    checkWindowsNode(element(job, kSourceNodes, 1), false);
    checkNDSNode(element(job, kSourceNodes, 2));
    checkDatabaseNode(element(job, kSourceNodes, 3), false);
    if (cloned_) {
      checkUnixNode(element(job, kSourceNodes, 4), true);
      checkWindowsNode(element(job, kSourceNodes, 5), true);
      checkNDSNode(element(job, kSourceNodes, 6));
      checkDatabaseNode(element(job, kSourceNodes, 7), true);
    }
    checkDestination(element(job, kDestNodes, 0));
  }

 private:
  // Filters that the job gives to each source node.
  std::uint32_t jobFilters() const { return cloned_ ? 8 : 4; }

  void checkJobFilters(const void* node, std::size_t first) {
    for (std::size_t round = 0; round < jobFilters() / 4; ++round, first += 4) {
      expectRows("job filter /tmp", element(node, kNodeFilters, first), 32,
                 {number(0, 2, 3),     // usFilterType: directory
                  number(2, 2, 1),     // usInclExcl: exclude
                  number(4, 4, 1),     // ulFilterCount
                  text(8, "/tmp"),     // pszFilter
                  number(12, 2, 5)});  // usFilterLen, with the NUL
      expectRows("job filter *.o", element(node, kNodeFilters, first + 1), 32,
                 {number(0, 2, 2),     // usFilterType: file
                  number(2, 2, 1),     // usInclExcl: exclude
                  number(4, 4, 1),     // ulFilterCount
                  text(8, "*.o"),      // pszFilter
                  number(12, 2, 4)});  // usFilterLen
      expectRows("job filter within", element(node, kNodeFilters, first + 2), 32,
                 {number(0, 2, 4),     // usFilterType: time
                  number(4, 2, 1),     // usTimeAttr
                  number(6, 2, 3),     // usTimeRange: within
                  number(8, 4, 7),     // ulTimeUnits
                  number(16, 2, 3)});  // usTimeUnitType
      expectRows("job filter between", element(node, kNodeFilters, first + 3), 32,
                 {number(0, 2, 4),              // usFilterType: time
                  number(4, 2, 1),              // usTimeAttr
                  number(6, 2, 2),              // usTimeRange: between
                  number(8, 4, 1075564800),     // lStartTime: 2004-01-31 16:00
                  number(12, 4, 1078156800)});  // lEndTime: 2004-03-01 16:00
    }
  }

  void checkUnixNode(const void* node, bool isClone) {
    std::vector<Row> rows = {
        number(0, 2, 3),                 // usNodeType: UNIX
        number(2, 2, 6),                 // usNodeOS
        bytes(4, "5.8\0\0"),             // pszNodeOSVer, an empty second text after it
        bytes(8, "ledger\0\0"),          // pszNodeName, likewise
        text(12, "10.0.0.5"),            // pszNodeAddress
        text(16, "root"),                // pszUserName
        text(20, "tr0ub4dor"),           // pszPassword
        number(24, 4, jobFilters()),     // ulFilterCount
        block(28),                       // pFilters
        number(36, 4, isClone ? 4 : 2),  // ulMediaCount
        block(40),                       // pMedia
        text(48, "payroll"),             // pszAfterNode
        number(52, 2, 5),                // usBeforeNodeWait
        number(56, 4, 0x160),            // ulNodeOptions: 0x120, no estimate 0x40
    };
    if (!previous_) rows.push_back(text(84, "accounting"));  // pszNodeDomain
    expectRows("UNIX node", node, 100, rows);
    checkJobFilters(node, 0);
    checkHomeDisk(element(node, kNodeDisks, 0), false);
    checkRootDisk(element(node, kNodeDisks, 1), false);
    if (isClone) {
      checkHomeDisk(element(node, kNodeDisks, 2), true);
      checkRootDisk(element(node, kNodeDisks, 3), true);
    }
  }

  void checkHomeDisk(const void* disk, bool isClone) {
    expectRows("disk /home", disk, 52,
               {text(0, "/home"),                // pszDiskName
                text(4, "s3ss10n"),              // pszPassword: the job's
                number(8, 4, isClone ? 4 : 2),   // ulFilterCount
                block(12),                       // pFilters
                number(16, 4, isClone ? 4 : 2),  // ulDiskItemCount
                block(20),                       // pDiskItems
                number(24, 2, 5),                // usDiskType
                number(28, 4, 0x6011),           // ulOptions: own, UNIX, encryption, compression
                bytes(36,
                      "ops\0"
                      "0ps\0")});  // pszDiskPW2
    for (std::size_t i = 0; i < (isClone ? 4u : 2u); i += 2) {
      // The clone of an item holds its names twice.
      const bool twice = i == 2;
      expectRows("item /ledgers", element(disk, kDiskItems, i), 32,
                 {text(0, "/home/ledgers"),     // pszPath, absolute
                  number(4, 4, twice ? 4 : 2),  // ulFileCount
                  twice ? bytes(8,
                                "2003.db\0"
                                "2004.db\0"
                                "2003.db\0"
                                "2004.db\0")
                        : bytes(8,
                                "2003.db\0"
                                "2004.db\0")});  // pFileList; ulOptions 0
      expectRows("empty item", element(disk, kDiskItems, i + 1), 32,
                 {text(0, "/home"),    // pszPath
                  number(12, 4, 1)});  // ulOptions
      expectRows("disk filter vol*", element(disk, kDiskFilters, i), 32,
                 {number(0, 2, 1),     // usFilterType: volume
                  number(4, 4, 1),     // ulFilterCount
                  text(8, "vol*"),     // pszFilter
                  number(12, 2, 5)});  // usFilterLen
      expectRows("disk filter attributes", element(disk, kDiskFilters, i + 1), 32,
                 {number(0, 2, 5),             // usFilterType: attribute
                  number(2, 2, 1),             // usInclExcl: exclude
                  number(4, 4, 0x80000001)});  // ulAttributes
    }
  }

  void checkRootDisk(const void* disk, bool isClone) {
    expectRows("disk /", disk, 52,
               {text(0, "/"),                    // pszDiskName
                text(4, "r00t"),                 // pszPassword: its own
                number(16, 4, isClone ? 2 : 1),  // ulDiskItemCount
                block(20),                       // pDiskItems
                number(28, 4, 0x6010)});         // ulOptions
    for (std::size_t i = 0; i < (isClone ? 2u : 1u); ++i) {
      expectRows("item /etc", element(disk, kDiskItems, i), 32,
                 {text(0, "/etc"),     // pszPath
                  number(12, 4, 1)});  // ulOptions
    }
  }

  void checkWindowsNode(const void* node, bool isClone) {
    expectRows("Windows NT node", node, 100,
               {number(0, 2, 9),                  // usNodeType
                number(2, 2, 8),                  // usNodeOS
                text(4, "4.0"),                   // pszNodeOSVer
                text(8, "payroll"),               // pszNodeName
                text(16, "Administrator"),        // pszUserName
                text(20, "l3tm31n"),              // pszPassword
                number(24, 4, 2 + jobFilters()),  // ulFilterCount: its own, then the job's
                block(28),                        // pFilters
                number(36, 4, isClone ? 4 : 2),   // ulMediaCount
                block(40),                        // pMedia
                number(56, 4, 0x160)});           // ulNodeOptions
    expectRows("node filter after", element(node, kNodeFilters, 0), 32,
               {number(0, 2, 4),             // usFilterType: time
                number(4, 2, 1),             // usTimeAttr
                number(6, 2, 1),             // usTimeRange: after
                number(8, 4, 1078070400)});  // lTime: 2004-02-29 16:00
    expectRows("node filter before", element(node, kNodeFilters, 1), 32,
               {number(0, 2, 4),             // usFilterType: time
                number(2, 2, 1),             // usInclExcl: exclude
                number(4, 2, 2),             // usTimeAttr; usTimeRange 0: before
                number(8, 4, 1078156800)});  // lTime: 2004-03-01 16:00
    checkJobFilters(node, 2);
    for (std::size_t i = 0; i < (isClone ? 4u : 2u); i += 2) {
      const std::size_t items = i == 2 ? 2 : 1;
      expectRows("disk Registry", element(node, kNodeDisks, i), 52,
                 {text(0, "Registry"),      // pszDiskName
                  text(4, "s3ss10n"),       // pszPassword: the job's
                  number(24, 2, 11),        // usDiskType: by its name
                  number(28, 4, 0x6000)});  // ulOptions
      const void* drive = element(node, kNodeDisks, i + 1);
      expectRows("disk D:", drive, 52,
                 {text(0, "D:"),                    // pszDiskName
                  text(4, "s3ss10n"),               // pszPassword: the job's
                  number(16, 4, items),             // ulDiskItemCount
                  block(20),                        // pDiskItems
                  number(24, 2, 22),                // usDiskType
                  number(28, 4, 0x6000),            // ulOptions
                  bytes(36, "backup:p4yr0ll\0\0"),  // pszDiskPW2, joined
                  text(44, "0123abcd")});           // pszEncryptionKey
      for (std::size_t j = 0; j < items; ++j) {
        expectRows("item \\payroll", element(drive, kDiskItems, j), 32,
                   {text(0, "\\payroll"),          // pszPath
                    number(4, 4, j == 0 ? 3 : 6),  // ulFileCount
                    j == 0 ? bytes(8,
                                   "march.xls\0"
                                   "april.xls\0"
                                   "may.xls\0")
                           : bytes(8,
                                   "march.xls\0"
                                   "april.xls\0"
                                   "may.xls\0"
                                   "march.xls\0"
                                   "april.xls\0"
                                   "may.xls\0"),  // pFileList
                    number(12, 4, 4)});           // ulOptions
      }
    }
  }

  void checkNDSNode(const void* node) {
    std::vector<Row> rows = {
        number(0, 2, previous_ ? 6 : 13),  // usNodeType
        number(2, 2, 4),                   // usNodeOS
        text(8, "tree"),                   // pszNodeName
        number(24, 4, jobFilters()),       // ulFilterCount
        block(28),                         // pFilters
        number(56, 4, 0x160),              // ulNodeOptions; no media
    };
    if (previous_) {
      rows.push_back(text(12, "O=ACME"));  // pszNodeAddress: the domain
    } else {
      rows.push_back(text(12, "10.0.0.9"));  // pszNodeAddress
      rows.push_back(text(84, "10.0.0.9"));  // pszNodeDomain: the address as well
    }
    expectRows("NDS node", node, 100, rows);
    checkJobFilters(node, 0);
  }

  void checkDatabaseNode(const void* node, bool isClone) {
    expectRows("Sybase node", node, 100,
               {number(0, 2, 21),                // usNodeType
                number(2, 2, 6),                 // usNodeOS
                text(8, "dbserver"),             // pszNodeName
                text(16, "sa"),                  // pszUserName
                number(24, 4, jobFilters()),     // ulFilterCount
                block(28),                       // pFilters
                number(36, 4, isClone ? 2 : 1),  // ulMediaCount
                block(40),                       // pMedia
                number(56, 4, 0x160)});          // ulNodeOptions
    checkJobFilters(node, 0);
    for (std::size_t i = 0; i < (isClone ? 2u : 1u); ++i) {
      const void* disk = element(node, kNodeDisks, i);
      expectRows("disk accounts", disk, 52,
                 {text(0, "accounts"),           // pszDiskName
                  text(4, "s3ss10n"),            // pszPassword: the job's
                  number(16, 4, i + 1),          // ulDiskItemCount
                  block(20),                     // pDiskItems
                  number(24, 2, 31),             // usDiskType
                  number(28, 4, 0x6000),         // ulOptions
                  bytes(36, "sa:syb4se\0\0")});  // pszDiskPW2, joined
      for (std::size_t j = 0; j <= i; ++j) {
        expectRows("item master", element(disk, kDiskItems, j), 32,
                   {text(0, "master"),   // pszPath
                    number(12, 4, 1)});  // ulOptions
      }
    }
  }

  void checkDestination(const void* node) {
    expectRows("destination", node, 100,
               {number(0, 2, 3),                 // usNodeType: tape nodes carry 3
                number(2, 2, 6),                 // usNodeOS
                text(8, "library1"),             // pszNodeName
                number(32, 2, 1),                // usDeviceType
                number(36, 4, cloned_ ? 4 : 2),  // ulMediaCount
                block(40),                       // pMedia
                number(56, 4, 0x40)});           // ulNodeOptions: no estimate; no filters
    for (std::size_t i = 0; i < (cloned_ ? 4u : 2u); i += 2) {
      checkFirstTape(element(node, kNodeTapes, i), i == 2);
      checkSecondTape(element(node, kNodeTapes, i + 1));
    }
  }

  void checkFirstTape(const void* tape, bool isClone) {
    std::vector<Row> rows = {
        text(0, "DAILY"),                // pszDeviceGroup
        text(4, "NIGHT-01"),             // pszTapeName
        number(12, 2, 1),                // usTapeSeq
        number(14, 2, 17),               // usSessionNumber
        number(16, 4, 4096),             // ulQFABlockNumber; pszSessionPW null
        number(24, 2, 1),                // usNewTapeMethod
        number(26, 2, 2),                // usSpanTapeMethod
        number(28, 2, 10),               // usNewTapeTimeout
        number(30, 2, 600),              // usSpanTapeTimeout
        number(32, 4, isClone ? 2 : 1),  // ulFilterCount
        block(36),                       // pFilters
        number(40, 4, isClone ? 4 : 2),  // ulTapeItemCount
        block(44),                       // pTapeItems
        number(48, 2, 2),                // usFileSystem
        text(56, "/ledgers"),            // pszPath
        text(60, "shelf 4"),             // pszLocation
    };
    if (previous_) {
      rows.push_back(number(8, 4, 0x12345));  // ulTapeID, whole
      rows.push_back(number(64, 4, 1000));    // lSessionEndTime: the extension's; ulOptions 0
    } else {
      rows.push_back(number(8, 2, 0x2345));      // usTapeID
      rows.push_back(number(52, 4, 0x8000000));  // ulOptions
      rows.push_back(block(68));                 // pTapeX
    }
    expectRows("tape NIGHT-01", tape, 72, rows);
    if (!previous_) {
      expectRows("tape extension", pointerAt(tape, 68), 64,
                 {text(0, "sa"),       // pszDBUser
                  text(4, "syb4se"),   // pszDBPW
                  number(8, 4, 1000),  // lSessionEndTime
                  number(56, 4, 2)});  // ulOptions
    }
    for (std::size_t i = 0; i < (isClone ? 4u : 2u); i += 2) {
      expectRows("tape item 7", element(tape, kTapeItems, i), 32,
                 {number(0, 4, 7),      // ulChunkNum
                  number(4, 2, 512)});  // usChunkOffset
      expectRows("tape item 8", element(tape, kTapeItems, i + 1), 32,
                 {number(0, 4, 8),         // ulChunkNum
                  text(8, "/etc/passwd"),  // pszFileOrDir
                  number(12, 4, 1)});      // ulOptions
    }
    for (std::size_t i = 0; i < (isClone ? 2u : 1u); ++i) {
      expectRows("tape filter *.db", element(tape, kTapeFilters, i), 32,
                 {number(0, 2, 2),     // usFilterType: file
                  number(4, 4, 1),     // ulFilterCount
                  text(8, "*.db"),     // pszFilter
                  number(12, 2, 5)});  // usFilterLen
    }
  }

  void checkSecondTape(const void* tape) {
    std::vector<Row> rows = {
        text(0, "DAILY"),     // pszDeviceGroup
        text(4, "NIGHT-02"),  // pszTapeName
        number(12, 2, 2),     // usTapeSeq
        text(20, "t4pe"),     // pszSessionPW
        number(24, 2, 1),     // usNewTapeMethod
        number(26, 2, 2),     // usSpanTapeMethod
        number(28, 2, 10),    // usNewTapeTimeout
        number(30, 2, 600),   // usSpanTapeTimeout
    };
    if (previous_) rows.push_back(number(64, 4, 2000));  // lSessionEndTime: the tape's own
    expectRows("tape NIGHT-02", tape, 72, rows);
  }

  bool previous_;
  bool cloned_;
};

}  // namespace

void checkNightlyRecords(const void* job, BkoqLayout layout, Origin origin) {
  ASSERT_NE(job, nullptr);
  Checker(layout, origin).checkJob(job);
}

}  // namespace bkoq::test
