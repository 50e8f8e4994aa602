#include <gtest/gtest.h>

#include <cstdio>

#include "kit/test_trees.h"

namespace {

// Expected text begins with a line end, so that it stands at the left margin.
std::string expected(const char* text) { return text + 1; }

template <class Job>
std::string printed(const Tree<Job>& job, const BkoqPrintOptions& options) {
  std::string text;
  EXPECT_EQ(bkoqPrint(job.get(), LayoutOf<Job>::kValue, &options, appendToString, &text), BKOQ_OK);
  return text;
}

BkoqPrintOptions withoutZeros() {
  BkoqPrintOptions options{};
  options.hideZero = 1;
  return options;
}

TEST(Print, ShowsEveryFieldOfAJob) {
  const CurrentTree job = currentJob(7);
  job->pszHost = text("backup1");
  EXPECT_EQ(printed(job, BkoqPrintOptions{}), expected(R"(
BKQJDATATRANSFER  #1+0
    0  ulReserved0       zero          4 bytes
    4  usJobType         7             restore
    6  abReserved6       zero          2 bytes
    8  usJobStatus       0
   10  usScriptType      0
   12  ulNumSourceNodes  0
   16  pSourceNodes      null
   20  ulNumDestNodes    0
   24  pDestNodes        null
   28  pszOwner          null
   32  pszReportFile     null
   36  pszComments       null
   40  pszBeforeJob      null
   44  pszAfterJob       null
   48  usBeforeJobWait   0
   50  abReserved50      zero          2 bytes
   52  usOnConflict      0
   54  abReserved54      zero          2 bytes
   56  stSchedule        BKSCHEDINFO   18 bytes
        0  lSubmitTime    0
        4  lExecTime      0
        8  usRepeat1      0
       10  usRepeat2      0
       12  usRepeat3      0
       14  usRepeat4      0
       16  usSkipWeekDay  0
   74  abReserved74      zero          30 bytes
  104  stOpenFile        BKOFINFO      12 bytes
        0  ulFActions       0
        4  ulFMethods       0
        8  usRetryCount     0
       10  usRetryInterval  0
  116  abReserved116     zero          16 bytes
  132  stFax             BKFAXINFO     24 bytes
        0  pszHostName       null
        4  pszUserName       null
        8  pszUserPW         null
       12  pszFaxNumber      null
       16  pszCoverPageFile  null
       20  pszReceiverName   null
  156  stEMail           BKEMAILINFO   24 bytes
        0  pszHostName     null
        4  pszUserName     null
        8  pszUserPW       null
       12  pszMHSDir       null
       16  pszMHSId        null
       20  pszMHSUserName  null
  180  stPrintQueue      BKPRINTQ      16 bytes
        0  pszHostName   null
        4  pszUserName   null
        8  pszUserPW     null
       12  pszQueueName  null
  196  stScheduleExt     BKROTATIONINFO  48 bytes
        0  pszSetName       null
        4  abReserved4      zero          4 bytes
        8  usCruiseMethod   0
       10  abReserved10     zero          2 bytes
       12  abReserved12     zero          8 bytes
       20  usSaveMonthly    0
       22  usSaveWeekly     0
       24  usSaveDaily      0
       26  abReserved26     zero          14 bytes
       40  ulCruiseOptions  0
       44  usMonths         0
       46  usCopies         0
  244  abReserved244     zero          12 bytes
  256  ulOptions         0
  260  pszHost           #2  "backup1"
  264  abReserved264     zero          28 bytes
)"));
}

TEST(Print, IndentsArraysAndEmbeddedRecordsUnderTheirOwner) {
  BkoqPrintOptions options{};
  options.hideReserved = 1;
  EXPECT_EQ(printed(previousBackup(), options), expected(R"(
BKQJDATATRANSFER_OLD  #1+0
    4  usJobType         20            rotation backup
    8  usJobStatus       2
   10  usScriptType      0
   12  ulNumSourceNodes  2
   16  pSourceNodes      #2  2 BKNODE_OLD  200 bytes
    BKNODE_OLD pSourceNodes[0]  #2+0
        0  usNodeType        3             UNIX
        2  usNodeOS          6             UNIX
        4  pszNodeOSVer      #3  "5.8", ""
        8  pszNodeName       #4  "ledger", "extra"
       12  pszNodeAddress    null
       16  pszUserName       null
       20  pszPassword       #5  ********
       24  ulFilterCount     5
       28  pFilters          #6  5 BKFILTER_FILE_OLD  160 bytes
        BKFILTER_FILE_OLD pSourceNodes[0].pFilters[0]  #6+0
            0  usFilterType    2             file
            2  usInclExcl      0             include
            4  ulFilterCount   1
            8  pszFilter       #7  "*.tmp"
           12  usFilterLen     6
        BKFILTER_FILE_OLD pSourceNodes[0].pFilters[1]  #6+32
            0  usFilterType    5             attribute
            2  usInclExcl      1             exclude
            4  ulAttributes    0x80000001    2147483649
        BKFILTER_FILE_OLD pSourceNodes[0].pFilters[2]  #6+64
            0  usFilterType    4             time
            2  usInclExcl      0             include
            4  usTimeAttr      0
            6  usTimeRange     1             after
            8  lTime           1078070400    2004-02-29 16:00:00
        BKFILTER_FILE_OLD pSourceNodes[0].pFilters[3]  #6+96
            0  usFilterType    4             time
            2  usInclExcl      0             include
            4  usTimeAttr      0
            6  usTimeRange     2             between
            8  lStartTime      1078070400    2004-02-29 16:00:00
           12  lEndTime        1078156800    2004-03-01 16:00:00
        BKFILTER_FILE_OLD pSourceNodes[0].pFilters[4]  #6+128
            0  usFilterType    4             time
            2  usInclExcl      0             include
            4  usTimeAttr      0
            6  usTimeRange     3             within
            8  ulTimeUnits     7
           16  usTimeUnitType  2
       32  usDeviceType      0
       36  ulMediaCount      1
       40  pMedia            #8  1 BKDDISK_OLD  52 bytes
        BKDDISK_OLD pSourceNodes[0].pMedia[0]  #8+0
            0  pszDiskName       #9  "/home"
            4  pszPassword       null
            8  ulFilterCount     0
           12  pFilters          null
           16  ulDiskItemCount   1
           20  pDiskItems        #10  1 BKDISKITEM_OLD  32 bytes
            BKDISKITEM_OLD pSourceNodes[0].pMedia[0].pDiskItems[0]  #10+0
                0  pszPath       #11  "/home/ledgers"
                4  ulFileCount   2
                8  pFileList     #12  2 texts: "2003.db", "2004.db"
               12  ulOptions     0
           24  usDiskType        5
           28  ulOptions         0x00006011    24593: compression, encryption, 0x00000011
           36  pszDiskPW2        #13  "ops", ********
           44  pszEncryptionKey  #14  ********
       44  pszBeforeNode     null
       48  pszAfterNode      null
       52  usBeforeNodeWait  0
       56  ulNodeOptions     0x00000360    864: no estimate, a text follows the name, 0x00000120
    BKNODE_OLD pSourceNodes[1]  #2+100
        0  usNodeType        9             Windows NT
        2  usNodeOS          0
        4  pszNodeOSVer      null
        8  pszNodeName       #15  "payroll"
       12  pszNodeAddress    null
       16  pszUserName       null
       20  pszPassword       null
       24  ulFilterCount     0
       28  pFilters          null
       32  usDeviceType      0
       36  ulMediaCount      0
       40  pMedia            null
       44  pszBeforeNode     null
       48  pszAfterNode      null
       52  usBeforeNodeWait  0
       56  ulNodeOptions     0
   20  ulNumDestNodes    1
   24  pDestNodes        #16  1 BKNODE_OLD  100 bytes
    BKNODE_OLD pDestNodes[0]  #16+0
        0  usNodeType        3             tape node
        2  usNodeOS          0
        4  pszNodeOSVer      null
        8  pszNodeName       #17  "library1"
       12  pszNodeAddress    null
       16  pszUserName       null
       20  pszPassword       null
       24  ulFilterCount     0
       28  pFilters          null
       32  usDeviceType      1
       36  ulMediaCount      1
       40  pMedia            #18  1 BKDTAPE_OLD  72 bytes
        BKDTAPE_OLD pDestNodes[0].pMedia[0]  #18+0
            0  pszDeviceGroup     null
            4  pszTapeName        #19  "NIGHT-01"
            8  ulTapeID           74565
           12  usTapeSeq          0
           14  usSessionNumber    17
           16  ulQFABlockNumber   0
           20  pszSessionPW       null
           24  usNewTapeMethod    0
           26  usSpanTapeMethod   0
           28  usNewTapeTimeout   0
           30  usSpanTapeTimeout  0
           32  ulFilterCount      0
           36  pFilters           null
           40  ulTapeItemCount    1
           44  pTapeItems         #20  1 BKTAPEITEM_OLD  32 bytes
            BKTAPEITEM_OLD pDestNodes[0].pMedia[0].pTapeItems[0]  #20+0
                0  ulChunkNum     7
                4  usChunkOffset  0
                8  pszFileOrDir   #21  "/etc/passwd"
               12  ulOptions      0
           48  usFileSystem       0
           52  ulOptions          0
           56  pszPath            null
           60  pszLocation        null
           64  lSessionEndTime    1000          1970-01-01 00:16:40 UTC
       44  pszBeforeNode     null
       48  pszAfterNode      null
       52  usBeforeNodeWait  0
       56  ulNodeOptions     0
   28  pszOwner          #22  "operator"
   32  pszReportFile     null
   36  pszComments       null
   40  pszBeforeJob      null
   44  pszAfterJob       null
   48  usBeforeJobWait   0
   52  usOnConflict      0
   56  stSchedule        BKSCHEDINFO_OLD  18 bytes
        0  lSubmitTime    1078156800    2004-03-01 16:00:00
        4  lExecTime      -1            1969-12-31 23:59:59
        8  usRepeat1      0
       10  usRepeat2      0
       12  usRepeat3      0
       14  usRepeat4      0
       16  usSkipWeekDay  0
  104  stOpenFile        BKOFINFO_OLD  12 bytes
        0  ulFActions       0x00000003    3
        4  ulFMethods       0
        8  usRetryCount     0
       10  usRetryInterval  0
  132  stFax             BKFAXINFO_OLD  24 bytes
        0  pszHostName       #23  "faxhost"
        4  pszUserName       null
        8  pszUserPW         #24  ********
       12  pszFaxNumber      null
       16  pszCoverPageFile  null
       20  pszReceiverName   #25  "night shift"
  156  stEMail           BKEMAILINFO_OLD  24 bytes
        0  pszHostName     null
        4  pszUserName     null
        8  pszUserPW       null
       12  pszMHSDir       null
       16  pszMHSId        null
       20  pszMHSUserName  null
  180  stPrintQueue      BKPRINTQ_OLD  16 bytes
        0  pszHostName   null
        4  pszUserName   null
        8  pszUserPW     null
       12  pszQueueName  null
  196  stScheduleExt     BKROTATIONINFO_OLD  48 bytes
        0  pszSetName       #26  "NIGHTSET"
        8  usCruiseMethod   0
       12  abJobTypes       1 2 0 0 0 0 0 0
       20  usSaveMonthly    0
       22  usSaveWeekly     0
       24  usSaveDaily      0
       40  ulCruiseOptions  0
       44  usMonths         0
       46  usCopies         0
  256  ulOptions         0x00100008    1048584: no estimate, 0x00000008
  260  pszHost           null
)"));
}

TEST(Print, LeavesOutZerosWhenAsked) {
  EXPECT_EQ(printed(currentBackup(), withoutZeros()), expected(R"(
BKQJDATATRANSFER  #1+0
    4  usJobType         20            rotation backup
    8  usJobStatus       2
   12  ulNumSourceNodes  2
   16  pSourceNodes      #2  2 BKNODE  200 bytes
    BKNODE pSourceNodes[0]  #2+0
        0  usNodeType        3             UNIX
        2  usNodeOS          6             UNIX
        4  pszNodeOSVer      #3  "5.8", ""
        8  pszNodeName       #4  "ledger", "extra"
       20  pszPassword       #5  ********
       24  ulFilterCount     5
       28  pFilters          #6  5 BKFILTER_FILE  160 bytes
        BKFILTER_FILE pSourceNodes[0].pFilters[0]  #6+0
            0  usFilterType    2             file
            4  ulFilterCount   1
            8  pszFilter       #7  "*.tmp"
           12  usFilterLen     6
        BKFILTER_FILE pSourceNodes[0].pFilters[1]  #6+32
            0  usFilterType    5             attribute
            2  usInclExcl      1             exclude
            4  ulAttributes    0x80000001    2147483649
        BKFILTER_FILE pSourceNodes[0].pFilters[2]  #6+64
            0  usFilterType    4             time
            6  usTimeRange     1             after
            8  lTime           1078070400    2004-02-29 16:00:00
        BKFILTER_FILE pSourceNodes[0].pFilters[3]  #6+96
            0  usFilterType    4             time
            6  usTimeRange     2             between
            8  lStartTime      1078070400    2004-02-29 16:00:00
           12  lEndTime        1078156800    2004-03-01 16:00:00
        BKFILTER_FILE pSourceNodes[0].pFilters[4]  #6+128
            0  usFilterType    4             time
            6  usTimeRange     3             within
            8  ulTimeUnits     7
           16  usTimeUnitType  2
       36  ulMediaCount      1
       40  pMedia            #8  1 BKDDISK  52 bytes
        BKDDISK pSourceNodes[0].pMedia[0]  #8+0
            0  pszDiskName       #9  "/home"
           16  ulDiskItemCount   1
           20  pDiskItems        #10  1 BKDISKITEM  32 bytes
            BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]  #10+0
                0  pszPath       #11  "/home/ledgers"
                4  ulFileCount   2
                8  pFileList     #12  2 texts: "2003.db", "2004.db"
           24  usDiskType        5
           28  ulOptions         0x00006011    24593: compression, encryption, 0x00000011
           36  pszDiskPW2        #13  "ops", ********
           44  pszEncryptionKey  #14  ********
       56  ulNodeOptions     0x00000360    864: no estimate, a text follows the name, 0x00000120
       84  pszNodeDomain     #15  "accounting"
    BKNODE pSourceNodes[1]  #2+100
        0  usNodeType        9             Windows NT
        8  pszNodeName       #16  "payroll"
   20  ulNumDestNodes    1
   24  pDestNodes        #17  1 BKNODE  100 bytes
    BKNODE pDestNodes[0]  #17+0
        0  usNodeType        3             tape node
        8  pszNodeName       #18  "library1"
       32  usDeviceType      1
       36  ulMediaCount      1
       40  pMedia            #19  1 BKDTAPE  72 bytes
        BKDTAPE pDestNodes[0].pMedia[0]  #19+0
            4  pszTapeName        #20  "NIGHT-01"
            8  usTapeID           9029
           14  usSessionNumber    17
           40  ulTapeItemCount    1
           44  pTapeItems         #21  1 BKTAPEITEM  32 bytes
            BKTAPEITEM pDestNodes[0].pMedia[0].pTapeItems[0]  #21+0
                0  ulChunkNum     7
                8  pszFileOrDir   #22  "/etc/passwd"
           52  ulOptions          0x08000000    134217728: extension
           68  pTapeX             #23  1 BKDTAPEX  64 bytes
            BKDTAPEX pDestNodes[0].pMedia[0].pTapeX  #23+0
                0  pszDBUser        #24  "sa"
                4  pszDBPW          #25  ********
                8  lSessionEndTime  1000          1970-01-01 00:16:40 UTC
   28  pszOwner          #26  "operator"
   56  stSchedule        BKSCHEDINFO   18 bytes
        0  lSubmitTime    1078156800    2004-03-01 16:00:00
        4  lExecTime      -1            1969-12-31 23:59:59
  104  stOpenFile        BKOFINFO      12 bytes
        0  ulFActions       0x00000003    3
  132  stFax             BKFAXINFO     24 bytes
        0  pszHostName       #27  "faxhost"
        8  pszUserPW         #28  ********
  196  stScheduleExt     BKROTATIONINFO  48 bytes
        0  pszSetName       #29  "NIGHTSET"
  256  ulOptions         0x00100008    1048584: no estimate, 0x00000008
)"));
}

TEST(Print, StopsAtADepth) {
  BkoqPrintOptions options = withoutZeros();
  options.depth = 1;
  EXPECT_EQ(printed(currentBackup(), options), expected(R"(
BKQJDATATRANSFER  #1+0
    4  usJobType         20            rotation backup
    8  usJobStatus       2
   12  ulNumSourceNodes  2
   16  pSourceNodes      #2  2 BKNODE  200 bytes, not shown
   20  ulNumDestNodes    1
   24  pDestNodes        #17  1 BKNODE  100 bytes, not shown
   28  pszOwner          #26  "operator"
   56  stSchedule        BKSCHEDINFO   18 bytes, not shown
  104  stOpenFile        BKOFINFO      12 bytes, not shown
  132  stFax             BKFAXINFO     24 bytes, not shown
  196  stScheduleExt     BKROTATIONINFO  48 bytes, not shown
  256  ulOptions         0x00100008    1048584: no estimate, 0x00000008
)"));
  options.depth = 4;
  EXPECT_EQ(printed(currentBackup(), options), printed(currentBackup(), withoutZeros()));
}

TEST(Print, ShowsOnlyRecordsOfOneName) {
  BkoqPrintOptions options = withoutZeros();
  options.onlyRecord = "BKFILTER_FILE";
  EXPECT_EQ(printed(currentBackup(), options), expected(R"(
BKFILTER_FILE pSourceNodes[0].pFilters[0]  #6+0
    0  usFilterType    2             file
    4  ulFilterCount   1
    8  pszFilter       #7  "*.tmp"
   12  usFilterLen     6
BKFILTER_FILE pSourceNodes[0].pFilters[1]  #6+32
    0  usFilterType    5             attribute
    2  usInclExcl      1             exclude
    4  ulAttributes    0x80000001    2147483649
BKFILTER_FILE pSourceNodes[0].pFilters[2]  #6+64
    0  usFilterType    4             time
    6  usTimeRange     1             after
    8  lTime           1078070400    2004-02-29 16:00:00
BKFILTER_FILE pSourceNodes[0].pFilters[3]  #6+96
    0  usFilterType    4             time
    6  usTimeRange     2             between
    8  lStartTime      1078070400    2004-02-29 16:00:00
   12  lEndTime        1078156800    2004-03-01 16:00:00
BKFILTER_FILE pSourceNodes[0].pFilters[4]  #6+128
    0  usFilterType    4             time
    6  usTimeRange     3             within
    8  ulTimeUnits     7
   16  usTimeUnitType  2
)"));
  options.onlyRecord = "BKFAXINFO";
  EXPECT_EQ(printed(currentBackup(), options), expected(R"(
BKFAXINFO stFax  #1+132
    0  pszHostName       #27  "faxhost"
    8  pszUserPW         #28  ********
)"));
  // The name serves both layouts; the previous one's has a suffix.
  options.onlyRecord = "BKDTAPE";
  const std::string text = expected(R"(
BKDTAPE_OLD pDestNodes[0].pMedia[0]  #18+0
    4  pszTapeName        #19  "NIGHT-01"
    8  ulTapeID           74565
   14  usSessionNumber    17
   40  ulTapeItemCount    1
   44  pTapeItems         #20  1 BKTAPEITEM_OLD  32 bytes
   64  lSessionEndTime    1000          1970-01-01 00:16:40 UTC
)");
  EXPECT_EQ(printed(previousBackup(), options), text);
  options.onlyRecord = "BKDTAPE_OLD";
  EXPECT_EQ(printed(previousBackup(), options), text);
}

TEST(Print, SaysWhenThereIsNoSuchRecord) {
  const CurrentTree current = currentJob(1);
  const PreviousTree previous = previousJob(1);
  std::string text;
  BkoqPrintOptions options{};
  for (const char* name : {"BKNODE", "BKNODE_OLD", "BKNOD", ""}) {
    options.onlyRecord = name;
    EXPECT_EQ(bkoqPrint(current.get(), BKOQ_LAYOUT_CURRENT, &options, appendToString, &text),
              BKOQ_NOT_FOUND)
        << name;
  }
  options.onlyRecord = "BKDTAPEX";
  EXPECT_EQ(bkoqPrint(previous.get(), BKOQ_LAYOUT_PREVIOUS, &options, appendToString, &text),
            BKOQ_NOT_FOUND);
  EXPECT_EQ(text, "");
}

TEST(Print, KeepsToAWidthAndLosesNothing) {
  const CurrentTree job = currentJob(20);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  auto& item = *give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, 1);
  item.pszPath = text("/export/home/accounting/ledgers/closed/quarters/2003/fourth");
  item.ulFileCount = 4;
  item.pFileList =
      texts({"march.xls", "april.xls", "may.xls", "a name with a \" in the middle of it"});
  item.ulOptions = 4;
  BkoqPrintOptions options{};
  options.onlyRecord = "BKDISKITEM";
  options.width = 60;
  EXPECT_EQ(printed(job, options), expected(R"(
BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]  #4+0
    0  pszPath       #5
                     "/export/home/accounting/ledgers/close"
                     "d/quarters/2003/fourth"
    4  ulFileCount   4
    8  pFileList     #6  4 texts: "march.xls", "april.xls",
                     "may.xls",
                     "a name with a \" in the middle of it"
   12  ulOptions     0x00000004    4
   16  abReserved16  zero          16 bytes
)"));
  // Less than 40 is taken for 40.
  options.width = 1;
  EXPECT_EQ(printed(job, options), expected(R"(
BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]  #4+0
    0  pszPath       #5
                     "/export/home/acco"
                     "unting/ledgers/cl"
                     "osed/quarters/200"
                     "3/fourth"
    4  ulFileCount   4
    8  pFileList     #6  4 texts:
                     "march.xls",
                     "april.xls",
                     "may.xls",
                     "a name with a \" "
                     "in the middle of "
                     "it"
   12  ulOptions     0x00000004    4
   16  abReserved16  zero  16 bytes
)"));
}

TEST(Print, ColoursWhenAsked) {
  BkoqPrintOptions options = withoutZeros();
  options.colour = 1;
  options.onlyRecord = "BKSCHEDINFO";
  EXPECT_EQ(printed(currentBackup(), options),
            "\033[1mBKSCHEDINFO stSchedule\033[0m  \033[2m#1+56\033[0m\n"
            "  \033[2m  0\033[0m  \033[36mlSubmitTime  \033[0m  1078156800    "
            "\033[2m2004-03-01 16:00:00\033[0m\n"
            "  \033[2m  4\033[0m  \033[36mlExecTime    \033[0m  -1            "
            "\033[2m1969-12-31 23:59:59\033[0m\n");
}

TEST(Print, MarksWhatShouldNotBe) {
  const CurrentTree job = currentJob(99);
  job->abReserved6[1] = 7;
  job->ulNumDestNodes = 2;
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  int somewhere = 0;
  node.pMedia = &somewhere;
  auto& filter = *give<BKFILTER_FILE>(node.ulFilterCount, node.pFilters, 1);
  filter.usFilterType = 6;
  filter.ulTimeUnits = 0x12345678;
  EXPECT_EQ(printed(job, withoutZeros()), expected(R"(
BKQJDATATRANSFER  #1+0
    4  usJobType         99
    6  abReserved6       00 07         reserved, but not zero
   12  ulNumSourceNodes  1
   16  pSourceNodes      #2  1 BKNODE  100 bytes
    BKNODE pSourceNodes[0]  #2+0
       24  ulFilterCount     1
       28  pFilters          #3  1 BKFILTER_FILE  32 bytes
        BKFILTER_FILE pSourceNodes[0].pFilters[0]  #3+0
            0  usFilterType    6
            8  ulOpaque8       0x12345678
       40  pMedia            not followed  what the node holds depends on the kind of the job, which is unknown
   20  ulNumDestNodes    2
)"));
  BkoqPrintOptions options{};
  options.hideReserved = 1;
  EXPECT_NE(printed(job, options)
                .find("   24  pDestNodes        null          unfinished: the count is 2\n"),
            std::string::npos);
}

TEST(Print, MasksPasswordsAndKeysUnlessAskedFor) {
  const CurrentTree job = currentJob(20);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  node.pszPassword = text("SECRET");
  auto* disks = give<BKDDISK>(node.ulMediaCount, node.pMedia, 5);
  disks[0].pszPassword = text("SECRET");
  disks[0].pszEncryptionKey = text("SECRET");
  disks[0].pszDiskPW2 = texts({"ops", "SECRET"});
  disks[1].pszDiskPW2 = texts({"backup:SECRET", ""});
  disks[2].pszDiskPW2 = texts({"", "SECRET"});
  disks[3].pszDiskPW2 = texts({"sa", ""});
  disks[4].pszDiskPW2 = texts({"", ""});
  auto& tapes = *give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
  auto& tape = *give<BKDTAPE>(tapes.ulMediaCount, tapes.pMedia, 1);
  tape.pszSessionPW = text("SECRET");
  tape.pTapeX = zeroed<BKDTAPEX>();
  tape.pTapeX->pszDBPW = text("SECRET");
  job->stFax.pszUserPW = text("SECRET");
  job->stEMail.pszUserPW = text("SECRET");
  job->stPrintQueue.pszUserPW = text("SECRET");

  BkoqPrintOptions options{};
  options.onlyRecord = "BKDDISK";
  options.hideZero = 1;
  EXPECT_EQ(printed(job, options), expected(R"(
BKDDISK pSourceNodes[0].pMedia[0]  #4+0
    4  pszPassword       #5  ********
   36  pszDiskPW2        #6  "ops", ********
   44  pszEncryptionKey  #7  ********
BKDDISK pSourceNodes[0].pMedia[1]  #4+52
   36  pszDiskPW2        #8  "backup:********", ""
BKDDISK pSourceNodes[0].pMedia[2]  #4+104
   36  pszDiskPW2        #9  "", ********
BKDDISK pSourceNodes[0].pMedia[3]  #4+156
   36  pszDiskPW2        #10  "sa", ""
BKDDISK pSourceNodes[0].pMedia[4]  #4+208
   36  pszDiskPW2        #11  "", ""
)"));
  options.onlyRecord = nullptr;
  const auto secretsIn = [&] {
    const std::string text = printed(job, options);
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find("SECRET", at)) != std::string::npos; ++at) ++count;
    return count;
  };
  for (const BkoqFormat format : {BKOQ_FORMAT_TEXT, BKOQ_FORMAT_JSON, BKOQ_FORMAT_ANNOTATED}) {
    options.format = format;
    options.showSecrets = 0;
    EXPECT_EQ(secretsIn(), 0u);
    EXPECT_EQ(printed(job, options).find("53 45 43"), std::string::npos);
    options.showSecrets = 1;
    // Bytes are annotated eight a line, which splits "backup:SECRET" in two.
    EXPECT_EQ(secretsIn(), format == BKOQ_FORMAT_ANNOTATED ? 10u : 11u);
  }
}

TEST(Print, LetsNothingOfATextReachTheTerminalUnseen) {
  struct Row {
    const char* text;
    const char* text_;
    const char* json;
  };
  const Row rows[] = {
      {"", "\"\"", "\"\""},
      {"a\"b\\c", "\"a\\\"b\\\\c\"", "\"a\\\"b\\\\c\""},
      {"a\nb\tc\x1b[2J\x7f", "\"a\\nb\\tc\\x1b[2J\\x7f\"",
       "\"a\\u000ab\\u0009c\\u001b[2J\\u007f\""},
      {"Z\xc3\xbcrich \xe2\x82\xac", "\"Z\xc3\xbcrich \xe2\x82\xac\"",
       "\"Z\xc3\xbcrich \xe2\x82\xac\""},
      {"\xf0\x9f\x98\x80", "\"\xf0\x9f\x98\x80\"", "\"\xf0\x9f\x98\x80\""},
      // A control of the upper half, an override of the direction, a tag.
      {"\xc2\x9b", "\"\\xc2\\x9b\"", "\"\\u009b\""},
      // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what it is about
      {"\xe2\x80\xae", "\"\\xe2\\x80\\xae\"", "\"\\u202e\""},
      {"\xf3\xa0\x81\x81", "\"\\xf3\\xa0\\x81\\x81\"", "\"\\udb40\\udc41\""},
      // No UTF-8: a lone byte, an overlong form, a surrogate, too large, cut off.
      {"caf\xe9", "\"caf\\xe9\"", "{\"hex\": \"63 61 66 e9\"}"},
      {"\xc0\xaf", "\"\\xc0\\xaf\"", "{\"hex\": \"c0 af\"}"},
      {"\xe0\x80\xaf", "\"\\xe0\\x80\\xaf\"", "{\"hex\": \"e0 80 af\"}"},
      {"\xed\xa0\x80", "\"\\xed\\xa0\\x80\"", "{\"hex\": \"ed a0 80\"}"},
      {"\xf4\x90\x80\x80", "\"\\xf4\\x90\\x80\\x80\"", "{\"hex\": \"f4 90 80 80\"}"},
      {"\xe2\x82", "\"\\xe2\\x82\"", "{\"hex\": \"e2 82\"}"},
  };
  for (const Row& row : rows) {
    const CurrentTree job = currentJob(1);
    job->pszOwner = text(row.text);
    std::string value;
    EXPECT_EQ(
        bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "pszOwner", nullptr, appendToString, &value),
        BKOQ_OK);
    EXPECT_EQ(value, std::string(row.text_) + "\n");
    BkoqPrintOptions options{};
    options.format = BKOQ_FORMAT_JSON;
    EXPECT_NE(printed(job, options).find(std::string("\"value\": ") + row.json + "}"),
              std::string::npos)
        << row.text_;
  }
}

TEST(Print, TellsTimesByTheirOwnClock) {
  struct Row {
    std::int32_t seconds;
    const char* line;
  };
  const Row rows[] = {
      {0, "  lSubmitTime    0\n"},
      {1, "  lSubmitTime    1             1970-01-01 00:00:01\n"},
      {-1, "  lSubmitTime    -1            1969-12-31 23:59:59\n"},
      {951782399, "  lSubmitTime    951782399     2000-02-28 23:59:59\n"},
      {951868799, "  lSubmitTime    951868799     2000-02-29 23:59:59\n"},
      {951868800, "  lSubmitTime    951868800     2000-03-01 00:00:00\n"},
      {1078156800, "  lSubmitTime    1078156800    2004-03-01 16:00:00\n"},
      {2147483647, "  lSubmitTime    2147483647    2038-01-19 03:14:07\n"},
      {-2147483647 - 1, "  lSubmitTime    -2147483648   1901-12-13 20:45:52\n"},
  };
  for (const Row& row : rows) {
    const CurrentTree job = currentJob(1);
    job->stSchedule.lSubmitTime = row.seconds;
    BkoqPrintOptions options{};
    options.onlyRecord = "BKSCHEDINFO";
    EXPECT_NE(printed(job, options).find(row.line), std::string::npos) << row.line;
  }
}

TEST(PrintJson, HoldsTheWholeTree) {
  BkoqPrintOptions options = withoutZeros();
  options.format = BKOQ_FORMAT_JSON;
  EXPECT_EQ(printed(previousBackup(), options), expected(R"(
{
  "format": "bkoq-tree",
  "version": 1,
  "layout": "previous",
  "job": {"record": "BKQJDATATRANSFER_OLD", "block": 1, "offset": 0, "size": 292, "fields": {
    "usJobType": {"offset": 4, "width": 2, "kind": "number", "value": 20, "word": "rotation backup"},
    "usJobStatus": {"offset": 8, "width": 2, "kind": "number", "value": 2},
    "ulNumSourceNodes": {"offset": 12, "width": 4, "kind": "count", "value": 2},
    "pSourceNodes": {"offset": 16, "width": 4, "kind": "array", "block": 2, "size": 200, "count": 2, "value": [
      {"record": "BKNODE_OLD", "block": 2, "offset": 0, "size": 100, "fields": {
        "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 3, "word": "UNIX"},
        "usNodeOS": {"offset": 2, "width": 2, "kind": "number", "value": 6, "word": "UNIX"},
        "pszNodeOSVer": {"offset": 4, "width": 4, "kind": "two texts", "block": 3, "size": 5, "value": ["5.8", ""]},
        "pszNodeName": {"offset": 8, "width": 4, "kind": "two texts", "block": 4, "size": 13, "value": ["ledger", "extra"]},
        "pszPassword": {"offset": 20, "width": 4, "kind": "text", "block": 5, "value": "********", "masked": true},
        "ulFilterCount": {"offset": 24, "width": 4, "kind": "count", "value": 5},
        "pFilters": {"offset": 28, "width": 4, "kind": "array", "block": 6, "size": 160, "count": 5, "value": [
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 0, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 2, "word": "file"},
            "ulFilterCount": {"offset": 4, "width": 4, "kind": "number", "value": 1},
            "pszFilter": {"offset": 8, "width": 4, "kind": "text", "block": 7, "size": 6, "value": "*.tmp"},
            "usFilterLen": {"offset": 12, "width": 2, "kind": "number", "value": 6}
          }},
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 32, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 5, "word": "attribute"},
            "usInclExcl": {"offset": 2, "width": 2, "kind": "number", "value": 1, "word": "exclude"},
            "ulAttributes": {"offset": 4, "width": 4, "kind": "flags", "value": 2147483649}
          }},
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 64, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 4, "word": "time"},
            "usTimeRange": {"offset": 6, "width": 2, "kind": "number", "value": 1, "word": "after"},
            "lTime": {"offset": 8, "width": 4, "kind": "time", "value": 1078070400, "date": "2004-02-29 16:00:00"}
          }},
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 96, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 4, "word": "time"},
            "usTimeRange": {"offset": 6, "width": 2, "kind": "number", "value": 2, "word": "between"},
            "lStartTime": {"offset": 8, "width": 4, "kind": "time", "value": 1078070400, "date": "2004-02-29 16:00:00"},
            "lEndTime": {"offset": 12, "width": 4, "kind": "time", "value": 1078156800, "date": "2004-03-01 16:00:00"}
          }},
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 128, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 4, "word": "time"},
            "usTimeRange": {"offset": 6, "width": 2, "kind": "number", "value": 3, "word": "within"},
            "ulTimeUnits": {"offset": 8, "width": 4, "kind": "number", "value": 7},
            "usTimeUnitType": {"offset": 16, "width": 2, "kind": "number", "value": 2}
          }}]},
        "ulMediaCount": {"offset": 36, "width": 4, "kind": "count", "value": 1},
        "pMedia": {"offset": 40, "width": 4, "kind": "array", "block": 8, "size": 52, "count": 1, "value": [
          {"record": "BKDDISK_OLD", "block": 8, "offset": 0, "size": 52, "fields": {
            "pszDiskName": {"offset": 0, "width": 4, "kind": "text", "block": 9, "size": 6, "value": "/home"},
            "ulDiskItemCount": {"offset": 16, "width": 4, "kind": "count", "value": 1},
            "pDiskItems": {"offset": 20, "width": 4, "kind": "array", "block": 10, "size": 32, "count": 1, "value": [
              {"record": "BKDISKITEM_OLD", "block": 10, "offset": 0, "size": 32, "fields": {
                "pszPath": {"offset": 0, "width": 4, "kind": "text", "block": 11, "size": 14, "value": "/home/ledgers"},
                "ulFileCount": {"offset": 4, "width": 4, "kind": "count", "value": 2},
                "pFileList": {"offset": 8, "width": 4, "kind": "text list", "block": 12, "size": 16, "value": ["2003.db", "2004.db"]}
              }}]},
            "usDiskType": {"offset": 24, "width": 2, "kind": "number", "value": 5},
            "ulOptions": {"offset": 28, "width": 4, "kind": "flags", "value": 24593, "word": "compression, encryption, 0x00000011"},
            "pszDiskPW2": {"offset": 36, "width": 4, "kind": "two texts", "block": 13, "value": ["ops", "********"], "masked": true},
            "pszEncryptionKey": {"offset": 44, "width": 4, "kind": "text", "block": 14, "value": "********", "masked": true}
          }}]},
        "ulNodeOptions": {"offset": 56, "width": 4, "kind": "flags", "value": 864, "word": "no estimate, a text follows the name, 0x00000120"}
      }},
      {"record": "BKNODE_OLD", "block": 2, "offset": 100, "size": 100, "fields": {
        "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 9, "word": "Windows NT"},
        "pszNodeName": {"offset": 8, "width": 4, "kind": "text", "block": 15, "size": 8, "value": "payroll"}
      }}]},
    "ulNumDestNodes": {"offset": 20, "width": 4, "kind": "count", "value": 1},
    "pDestNodes": {"offset": 24, "width": 4, "kind": "array", "block": 16, "size": 100, "count": 1, "value": [
      {"record": "BKNODE_OLD", "block": 16, "offset": 0, "size": 100, "fields": {
        "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 3, "word": "tape node"},
        "pszNodeName": {"offset": 8, "width": 4, "kind": "text", "block": 17, "size": 9, "value": "library1"},
        "usDeviceType": {"offset": 32, "width": 2, "kind": "number", "value": 1},
        "ulMediaCount": {"offset": 36, "width": 4, "kind": "count", "value": 1},
        "pMedia": {"offset": 40, "width": 4, "kind": "array", "block": 18, "size": 72, "count": 1, "value": [
          {"record": "BKDTAPE_OLD", "block": 18, "offset": 0, "size": 72, "fields": {
            "pszTapeName": {"offset": 4, "width": 4, "kind": "text", "block": 19, "size": 9, "value": "NIGHT-01"},
            "ulTapeID": {"offset": 8, "width": 4, "kind": "number", "value": 74565},
            "usSessionNumber": {"offset": 14, "width": 2, "kind": "number", "value": 17},
            "ulTapeItemCount": {"offset": 40, "width": 4, "kind": "count", "value": 1},
            "pTapeItems": {"offset": 44, "width": 4, "kind": "array", "block": 20, "size": 32, "count": 1, "value": [
              {"record": "BKTAPEITEM_OLD", "block": 20, "offset": 0, "size": 32, "fields": {
                "ulChunkNum": {"offset": 0, "width": 4, "kind": "number", "value": 7},
                "pszFileOrDir": {"offset": 8, "width": 4, "kind": "text", "block": 21, "size": 12, "value": "/etc/passwd"}
              }}]},
            "lSessionEndTime": {"offset": 64, "width": 4, "kind": "client time", "value": 1000, "date": "1970-01-01 00:16:40"}
          }}]}
      }}]},
    "pszOwner": {"offset": 28, "width": 4, "kind": "text", "block": 22, "size": 9, "value": "operator"},
    "stSchedule": {"offset": 56, "width": 18, "kind": "embedded", "value": {"record": "BKSCHEDINFO_OLD", "block": 1, "offset": 56, "size": 18, "fields": {
        "lSubmitTime": {"offset": 0, "width": 4, "kind": "time", "value": 1078156800, "date": "2004-03-01 16:00:00"},
        "lExecTime": {"offset": 4, "width": 4, "kind": "time", "value": -1, "date": "1969-12-31 23:59:59"}
      }}},
    "stOpenFile": {"offset": 104, "width": 12, "kind": "embedded", "value": {"record": "BKOFINFO_OLD", "block": 1, "offset": 104, "size": 12, "fields": {
        "ulFActions": {"offset": 0, "width": 4, "kind": "flags", "value": 3}
      }}},
    "stFax": {"offset": 132, "width": 24, "kind": "embedded", "value": {"record": "BKFAXINFO_OLD", "block": 1, "offset": 132, "size": 24, "fields": {
        "pszHostName": {"offset": 0, "width": 4, "kind": "text", "block": 23, "size": 8, "value": "faxhost"},
        "pszUserPW": {"offset": 8, "width": 4, "kind": "text", "block": 24, "value": "********", "masked": true},
        "pszReceiverName": {"offset": 20, "width": 4, "kind": "text", "block": 25, "size": 12, "value": "night shift"}
      }}},
    "stScheduleExt": {"offset": 196, "width": 48, "kind": "embedded", "value": {"record": "BKROTATIONINFO_OLD", "block": 1, "offset": 196, "size": 48, "fields": {
        "pszSetName": {"offset": 0, "width": 4, "kind": "text", "block": 26, "size": 9, "value": "NIGHTSET"},
        "abJobTypes": {"offset": 12, "width": 8, "kind": "byte list", "value": [1, 2, 0, 0, 0, 0, 0, 0]}
      }}},
    "ulOptions": {"offset": 256, "width": 4, "kind": "flags", "value": 1048584, "word": "no estimate, 0x00000008"}
  }}
}
)"));
}

TEST(PrintJson, ListsRecordsOfOneName) {
  BkoqPrintOptions options = withoutZeros();
  options.format = BKOQ_FORMAT_JSON;
  options.onlyRecord = "BKNODE";
  EXPECT_EQ(printed(currentBackup(), options), expected(R"(
{
  "format": "bkoq-records",
  "version": 1,
  "layout": "current",
  "records": [
    {"record": "BKNODE", "path": "pSourceNodes[0]", "block": 2, "offset": 0, "size": 100, "fields": {
      "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 3, "word": "UNIX"},
      "usNodeOS": {"offset": 2, "width": 2, "kind": "number", "value": 6, "word": "UNIX"},
      "pszNodeOSVer": {"offset": 4, "width": 4, "kind": "two texts", "block": 3, "size": 5, "value": ["5.8", ""]},
      "pszNodeName": {"offset": 8, "width": 4, "kind": "two texts", "block": 4, "size": 13, "value": ["ledger", "extra"]},
      "pszPassword": {"offset": 20, "width": 4, "kind": "text", "block": 5, "value": "********", "masked": true},
      "ulFilterCount": {"offset": 24, "width": 4, "kind": "count", "value": 5},
      "pFilters": {"offset": 28, "width": 4, "kind": "array", "block": 6, "size": 160, "count": 5},
      "ulMediaCount": {"offset": 36, "width": 4, "kind": "count", "value": 1},
      "pMedia": {"offset": 40, "width": 4, "kind": "array", "block": 8, "size": 52, "count": 1},
      "ulNodeOptions": {"offset": 56, "width": 4, "kind": "flags", "value": 864, "word": "no estimate, a text follows the name, 0x00000120"},
      "pszNodeDomain": {"offset": 84, "width": 4, "kind": "text", "block": 15, "size": 11, "value": "accounting"}
    }},
    {"record": "BKNODE", "path": "pSourceNodes[1]", "block": 2, "offset": 100, "size": 100, "fields": {
      "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 9, "word": "Windows NT"},
      "pszNodeName": {"offset": 8, "width": 4, "kind": "text", "block": 16, "size": 8, "value": "payroll"}
    }},
    {"record": "BKNODE", "path": "pDestNodes[0]", "block": 17, "offset": 0, "size": 100, "fields": {
      "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 3, "word": "tape node"},
      "pszNodeName": {"offset": 8, "width": 4, "kind": "text", "block": 18, "size": 9, "value": "library1"},
      "usDeviceType": {"offset": 32, "width": 2, "kind": "number", "value": 1},
      "ulMediaCount": {"offset": 36, "width": 4, "kind": "count", "value": 1},
      "pMedia": {"offset": 40, "width": 4, "kind": "array", "block": 19, "size": 72, "count": 1}
    }}
  ]
}
)"));
}

TEST(PrintJson, StopsAtADepth) {
  BkoqPrintOptions options = withoutZeros();
  options.format = BKOQ_FORMAT_JSON;
  options.depth = 1;
  EXPECT_EQ(printed(currentBackup(), options), expected(R"(
{
  "format": "bkoq-tree",
  "version": 1,
  "layout": "current",
  "job": {"record": "BKQJDATATRANSFER", "block": 1, "offset": 0, "size": 292, "fields": {
    "usJobType": {"offset": 4, "width": 2, "kind": "number", "value": 20, "word": "rotation backup"},
    "usJobStatus": {"offset": 8, "width": 2, "kind": "number", "value": 2},
    "ulNumSourceNodes": {"offset": 12, "width": 4, "kind": "count", "value": 2},
    "pSourceNodes": {"offset": 16, "width": 4, "kind": "array", "block": 2, "size": 200, "count": 2},
    "ulNumDestNodes": {"offset": 20, "width": 4, "kind": "count", "value": 1},
    "pDestNodes": {"offset": 24, "width": 4, "kind": "array", "block": 17, "size": 100, "count": 1},
    "pszOwner": {"offset": 28, "width": 4, "kind": "text", "block": 26, "size": 9, "value": "operator"},
    "stSchedule": {"offset": 56, "width": 18, "kind": "embedded"},
    "stOpenFile": {"offset": 104, "width": 12, "kind": "embedded"},
    "stFax": {"offset": 132, "width": 24, "kind": "embedded"},
    "stScheduleExt": {"offset": 196, "width": 48, "kind": "embedded"},
    "ulOptions": {"offset": 256, "width": 4, "kind": "flags", "value": 1048584, "word": "no estimate, 0x00000008"}
  }}
}
)"));
}

TEST(PrintAnnotated, ShowsEveryByteOfEveryBlock) {
  const CurrentTree job = currentJob(1);
  job->pszOwner = text("operator");
  job->abReserved264[27] = 1;
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  disk.pszDiskPW2 = texts({"backup:p4yr0ll", ""});
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_ANNOTATED;
  EXPECT_EQ(printed(job, options), expected(R"(
#1  BKQJDATATRANSFER, 292 bytes
      0  00 00 00 00              ulReserved0                                               reserved: zero
      4  01 00                    usJobType                       1 = 0x0001                job kind (backup)
      6  00 00                    abReserved6                                               reserved: zero
      8  00 00                    usJobStatus                     0 = 0x0000                job status, low 16 bits
     10  00 00                    usScriptType                    0 = 0x0000                script type
     12  01 00 00 00              ulNumSourceNodes                1 = 0x00000001            elements of pSourceNodes
     16  pp pp pp pp              pSourceNodes                    #2  1 BKNODE              source nodes
     20  00 00 00 00              ulNumDestNodes                  0 = 0x00000000            elements of pDestNodes
     24  00 00 00 00              pDestNodes                      null                      destination nodes
     28  pp pp pp pp              pszOwner                        #5                        owner
     32  00 00 00 00              pszReportFile                   null                      report file
     36  00 00 00 00              pszComments                     null                      comments
     40  00 00 00 00              pszBeforeJob                    null                      command run before the job
     44  00 00 00 00              pszAfterJob                     null                      command run after the job
     48  00 00                    usBeforeJobWait                 0 = 0x0000                before-job wait
     50  00 00                    abReserved50                                              reserved: zero
     52  00 00                    usOnConflict                    0 = 0x0000                restore jobs: what to do on conflict
     54  00 00                    abReserved54                                              reserved: zero
     56  00 00 00 00              stSchedule.lSubmitTime          0 = 0x00000000            submit time
     60  00 00 00 00              stSchedule.lExecTime            0 = 0x00000000            execution time
     64  00 00                    stSchedule.usRepeat1            0 = 0x0000                custom schedules: first repeat value
     66  00 00                    stSchedule.usRepeat2            0 = 0x0000                custom schedules: second repeat value
     68  00 00                    stSchedule.usRepeat3            0 = 0x0000                custom schedules: third repeat value
     70  00 00                    stSchedule.usRepeat4            0 = 0x0000                custom schedules: fourth repeat value
     72  00 00                    stSchedule.usSkipWeekDay        0 = 0x0000                custom schedules: skip-weekday flag
     74  00 00 00 00 00 00 00 00  abReserved74                                              reserved: zero
     82  00 00 00 00 00 00 00 00
     90  00 00 00 00 00 00 00 00
     98  00 00 00 00 00 00
    104  00 00 00 00              stOpenFile.ulFActions           0 = 0x00000000            actions on open files
    108  00 00 00 00              stOpenFile.ulFMethods           0 = 0x00000000            methods of reading open files
    112  00 00                    stOpenFile.usRetryCount         0 = 0x0000                retries on an open file
    114  00 00                    stOpenFile.usRetryInterval      0 = 0x0000                interval between retries
    116  00 00 00 00 00 00 00 00  abReserved116                                             reserved: zero
    124  00 00 00 00 00 00 00 00
    132  00 00 00 00              stFax.pszHostName               null                      host name
    136  00 00 00 00              stFax.pszUserName               null                      user name
    140  00 00 00 00              stFax.pszUserPW                 null                      user password
    144  00 00 00 00              stFax.pszFaxNumber              null                      fax number
    148  00 00 00 00              stFax.pszCoverPageFile          null                      cover page file
    152  00 00 00 00              stFax.pszReceiverName           null                      not written in this layout: null
    156  00 00 00 00              stEMail.pszHostName             null                      host name
    160  00 00 00 00              stEMail.pszUserName             null                      user name
    164  00 00 00 00              stEMail.pszUserPW               null                      user password
    168  00 00 00 00              stEMail.pszMHSDir               null                      MHS: directory
    172  00 00 00 00              stEMail.pszMHSId                null                      MHS: id
    176  00 00 00 00              stEMail.pszMHSUserName          null                      MHS: user name
    180  00 00 00 00              stPrintQueue.pszHostName        null                      host name
    184  00 00 00 00              stPrintQueue.pszUserName        null                      user name
    188  00 00 00 00              stPrintQueue.pszUserPW          null                      user password
    192  00 00 00 00              stPrintQueue.pszQueueName       null                      queue name
    196  00 00 00 00              stScheduleExt.pszSetName        null                      media set name
    200  00 00 00 00              stScheduleExt.abReserved4                                 reserved: zero
    204  00 00                    stScheduleExt.usCruiseMethod    0 = 0x0000                cruise schedules: method, low 16 bits
    206  00 00                    stScheduleExt.abReserved10                                reserved: zero
    208  00 00 00 00 00 00 00 00  stScheduleExt.abReserved12                                reserved: zero
    216  00 00                    stScheduleExt.usSaveMonthly     0 = 0x0000                cruise schedules: monthly copies kept
    218  00 00                    stScheduleExt.usSaveWeekly      0 = 0x0000                cruise schedules: weekly copies kept
    220  00 00                    stScheduleExt.usSaveDaily       0 = 0x0000                cruise schedules: daily copies kept
    222  00 00 00 00 00 00 00 00  stScheduleExt.abReserved26                                reserved: zero
    230  00 00 00 00 00 00
    236  00 00 00 00              stScheduleExt.ulCruiseOptions   0 = 0x00000000            cruise schedules: options
    240  00 00                    stScheduleExt.usMonths          0 = 0x0000                cruise schedules: months
    242  00 00                    stScheduleExt.usCopies          0 = 0x0000                cruise schedules: copies
    244  00 00 00 00 00 00 00 00  abReserved244                                             reserved: zero
    252  00 00 00 00
    256  00 00 00 00              ulOptions                       0 = 0x00000000            job options
    260  00 00 00 00              pszHost                         null                      host
    264  00 00 00 00 00 00 00 00  abReserved264                                             reserved, but NOT ZERO
    272  00 00 00 00 00 00 00 00
    280  00 00 00 00 00 00 00 00
    288  00 00 00 01

#2  pSourceNodes: 1 BKNODE, 100 bytes
pSourceNodes[0]
      0  00 00                    usNodeType                      0 = 0x0000                node kind; 3 for a UNIX machine and for a tape node
      2  00 00                    usNodeOS                        0 = 0x0000                operating-system code
      4  00 00 00 00              pszNodeOSVer                    null                      operating-system version; UNIX: a second text behind it
      8  00 00 00 00              pszNodeName                     null                      node name; UNIX: a second text behind it
     12  00 00 00 00              pszNodeAddress                  null                      node address; for an NDS node without one its domain
     16  00 00 00 00              pszUserName                     null                      user name
     20  00 00 00 00              pszPassword                     null                      password
     24  00 00 00 00              ulFilterCount                   0 = 0x00000000            elements of pFilters
     28  00 00 00 00              pFilters                        null                      the node's filters, then the job's
     32  00 00                    usDeviceType                    0 = 0x0000                device type
     34  00 00                    abReserved34                                              reserved: zero
     36  01 00 00 00              ulMediaCount                    1 = 0x00000001            elements of pMedia
     40  pp pp pp pp              pMedia                          #3  1 BKDDISK             disks of a machine or a restore destination, tapes of a tape node
     44  00 00 00 00              pszBeforeNode                   null                      node to process before this one
     48  00 00 00 00              pszAfterNode                    null                      node to process after this one
     52  00 00                    usBeforeNodeWait                0 = 0x0000                wait for the before-node
     54  00 00                    abReserved54                                              reserved: zero
     56  00 00 00 00              ulNodeOptions                   0 = 0x00000000            node options; the conversion may add 0x40, 0x200, 0x800
     60  00 00 00 00 00 00 00 00  abReserved60                                              reserved: zero
     68  00 00 00 00 00 00 00 00
     76  00 00 00 00 00 00 00 00
     84  00 00 00 00              pszNodeDomain                   null                      node domain; for an NDS node its address
     88  00 00 00 00 00 00 00 00  abReserved88                                              reserved: zero
     96  00 00 00 00

#3  pSourceNodes[0].pMedia: 1 BKDDISK, 52 bytes
pSourceNodes[0].pMedia[0]
      0  00 00 00 00              pszDiskName                     null                      disk name
      4  00 00 00 00              pszPassword                     null                      disk password, or the job's session password
      8  00 00 00 00              ulFilterCount                   0 = 0x00000000            elements of pFilters
     12  00 00 00 00              pFilters                        null                      filters of this disk
     16  00 00 00 00              ulDiskItemCount                 0 = 0x00000000            elements of pDiskItems
     20  00 00 00 00              pDiskItems                      null                      items of this disk
     24  00 00                    usDiskType                      0 = 0x0000                disk type code
     26  00 00                    abReserved26                                              reserved: zero
     28  00 00 00 00              ulOptions                       0 = 0x00000000            disk options with the job's bits added
     32  00 00 00 00              ulReserved1                                               reserved: zero
     36  pp pp pp pp              pszDiskPW2                      #4                        user and second password: two texts; types 11, 22, 31 (restore: 22, 31) joined by ":"
     40  00 00 00 00              ulReserved2                                               reserved: zero
     44  00 00 00 00              pszEncryptionKey                null                      encryption key
     48  00 00 00 00              ulReserved3                                               reserved: zero

#4  pSourceNodes[0].pMedia[0].pszDiskPW2: 2 texts, 16 bytes
      0  62 61 63 6b 75 70 3a **  text 1                          "backup:" ********
      8  ** ** ** ** ** **                                        ********
     14  00                       NUL                                                       end of the text
     15  00                       NUL                                                       end of an empty text

#5  pszOwner: 1 text, 9 bytes
      0  6f 70 65 72 61 74 6f 72  text                            "operator"
      8  00                       NUL                                                       end of the text
)"));
  options.onlyRecord = "BKDDISK";
  EXPECT_EQ(printed(job, options).find("#3  pSourceNodes[0].pMedia: 1 BKDDISK, 52 bytes\n"), 0u);
}

TEST(PrintField, GivesAValueAlone) {
  struct Row {
    const char* path;
    const char* text;
  };
  const Row rows[] = {
      {"usJobType", "20\n"},
      {"ulOptions", "0x00100008\n"},
      {"pszOwner", "\"operator\"\n"},
      {"pszHost", "null\n"},
      {"pDestNodes[0].pMedia[0].pszTapeName", "\"NIGHT-01\"\n"},
      {"pSourceNodes[0].pszNodeName", "\"ledger\", \"extra\"\n"},
      {"pSourceNodes[0].pMedia[0].pszDiskPW2", "\"ops\", ********\n"},
      {"pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList", "\"2003.db\", \"2004.db\"\n"},
      {"stSchedule.lExecTime", "-1\n"},
      {"abReserved6", "zero\n"},
      {"pSourceNodes[1].pMedia", "null\n"},
      {"stFax", R"(
BKFAXINFO stFax  #1+132
    0  pszHostName       #27  "faxhost"
    4  pszUserName       null
    8  pszUserPW         #28  ********
   12  pszFaxNumber      null
   16  pszCoverPageFile  null
   20  pszReceiverName   null
)"},
      {"pDestNodes[0].pMedia[0].pTapeX", R"(
BKDTAPEX pDestNodes[0].pMedia[0].pTapeX  #23+0
    0  pszDBUser        #24  "sa"
    4  pszDBPW          #25  ********
    8  lSessionEndTime  1000          1970-01-01 00:16:40 UTC
   12  abReserved12     zero          44 bytes
   56  ulOptions        0
   60  abReserved60     zero          4 bytes
)"},
      {"pSourceNodes[0].pMedia[0].pDiskItems", R"(
BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]  #10+0
    0  pszPath       #11  "/home/ledgers"
    4  ulFileCount   2
    8  pFileList     #12  2 texts: "2003.db", "2004.db"
   12  ulOptions     0
   16  abReserved16  zero          16 bytes
)"},
      {"pSourceNodes[0].pMedia[0].pDiskItems[0]", R"(
BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]  #10+0
    0  pszPath       #11  "/home/ledgers"
    4  ulFileCount   2
    8  pFileList     #12  2 texts: "2003.db", "2004.db"
   12  ulOptions     0
   16  abReserved16  zero          16 bytes
)"},
  };
  const CurrentTree job = currentBackup();
  for (const Row& row : rows) {
    std::string text;
    EXPECT_EQ(
        bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, row.path, nullptr, appendToString, &text),
        BKOQ_OK)
        << row.path;
    EXPECT_EQ(text, row.text[0] == '\n' ? expected(row.text) : row.text) << row.path;
  }
}

TEST(PrintField, GivesTheWholeTreeForTheEmptyPath) {
  const CurrentTree job = currentBackup();
  std::string text;
  EXPECT_EQ(bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "", nullptr, appendToString, &text),
            BKOQ_OK);
  EXPECT_EQ(text, printed(job, BkoqPrintOptions{}));
}

TEST(PrintField, GivesJson) {
  const CurrentTree job = currentBackup();
  BkoqPrintOptions options = withoutZeros();
  options.format = BKOQ_FORMAT_JSON;
  const std::pair<const char*, const char*> rows[] = {
      {"usJobType", R"(
{
  "format": "bkoq-field",
  "version": 1,
  "layout": "current",
  "path": "usJobType",
  "field": {"name": "usJobType", "offset": 4, "width": 2, "kind": "number", "value": 20, "word": "rotation backup"}
}
)"},
      {"stOpenFile", R"(
{
  "format": "bkoq-field",
  "version": 1,
  "layout": "current",
  "path": "stOpenFile",
  "field": {"name": "stOpenFile", "offset": 104, "width": 12, "kind": "embedded", "value": {"record": "BKOFINFO", "block": 1, "offset": 104, "size": 12, "fields": {
        "ulFActions": {"offset": 0, "width": 4, "kind": "flags", "value": 3}
      }}}
}
)"},
      {"pSourceNodes[0].pMedia[0].pDiskItems", R"(
{
  "format": "bkoq-field",
  "version": 1,
  "layout": "current",
  "path": "pSourceNodes[0].pMedia[0].pDiskItems",
  "field": {"name": "pDiskItems", "offset": 20, "width": 4, "kind": "array", "block": 10, "size": 32, "count": 1, "value": [
      {"record": "BKDISKITEM", "block": 10, "offset": 0, "size": 32, "fields": {
        "pszPath": {"offset": 0, "width": 4, "kind": "text", "block": 11, "size": 14, "value": "/home/ledgers"},
        "ulFileCount": {"offset": 4, "width": 4, "kind": "count", "value": 2},
        "pFileList": {"offset": 8, "width": 4, "kind": "text list", "block": 12, "size": 16, "value": ["2003.db", "2004.db"]}
      }}]}
}
)"},
      {"pDestNodes[0].pMedia[0].pTapeItems[0]", R"(
{
  "format": "bkoq-field",
  "version": 1,
  "layout": "current",
  "path": "pDestNodes[0].pMedia[0].pTapeItems[0]",
  "record": {"record": "BKTAPEITEM", "block": 21, "offset": 0, "size": 32, "fields": {
    "ulChunkNum": {"offset": 0, "width": 4, "kind": "number", "value": 7},
    "pszFileOrDir": {"offset": 8, "width": 4, "kind": "text", "block": 22, "size": 12, "value": "/etc/passwd"}
  }}
}
)"},
  };
  for (const auto& row : rows) {
    std::string text;
    EXPECT_EQ(
        bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, row.first, &options, appendToString, &text),
        BKOQ_OK);
    EXPECT_EQ(text, expected(row.second));
  }
}

TEST(PrintField, SaysWhenThereIsNoSuchPath) {
  const CurrentTree job = currentBackup();
  for (const char* path : {"pszowner", "pSourceNodes[2]", "pSourceNodes[0].pMedia[0].",
                           "pszOwner.x", "pSourceNodes[00]", "[0]"}) {
    std::string text;
    EXPECT_EQ(bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, path, nullptr, appendToString, &text),
              BKOQ_NOT_FOUND)
        << path;
    EXPECT_EQ(text, "");
  }
}

TEST(PrintAt, SaysWhichFieldLiesThere) {
  struct Row {
    std::uint32_t block;
    std::uint32_t offset;
    const char* text;
  };
  const Row rows[] = {
      {1, 0,
       "#1+0: byte 0 of ulReserved0, BKQJDATATRANSFER+0, 4 bytes\nulReserved0: zero  4 "
       "bytes\nmeaning: reserved: zero\n"},
      {1, 5,
       "#1+5: byte 1 of usJobType, BKQJDATATRANSFER+4, 2 bytes\nusJobType: 20  rotation "
       "backup\nmeaning: job kind\n"},
      {1, 143,
       "#1+143: byte 3 of stFax.pszUserPW, BKFAXINFO+8, 4 bytes\npszUserPW: #28 ********\nmeaning: "
       "user password\n"},
      {2, 104,
       "#2+104: byte 0 of pSourceNodes[1].pszNodeOSVer, BKNODE+4, 4 bytes\npszNodeOSVer: "
       "null\nmeaning: operating-system version; UNIX: a second text behind it\n"},
      {12, 7,
       "#12+7: the NUL of text 1 of 2 of pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList\ntext: "
       "\"2003.db\"\nmeaning: file names, back to back\n"},
      {12, 9,
       "#12+9: byte 1 of text 2 of 2 of pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList\ntext: "
       "\"2004.db\"\nmeaning: file names, back to back\n"},
      {14, 0,
       "#14+0: byte 0 of text 1 of 1 of pSourceNodes[0].pMedia[0].pszEncryptionKey\ntext: "
       "********\nmeaning: encryption key\n"},
  };
  const CurrentTree job = currentBackup();
  for (const Row& row : rows) {
    std::string text;
    EXPECT_EQ(bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, row.block, row.offset, nullptr,
                          appendToString, &text),
              BKOQ_OK);
    EXPECT_EQ(text, row.text);
  }
}

TEST(PrintAt, GivesJson) {
  const CurrentTree job = currentBackup();
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_JSON;
  std::string text;
  EXPECT_EQ(bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, 2, 5, &options, appendToString, &text),
            BKOQ_OK);
  EXPECT_EQ(text, expected(R"(
{
  "format": "bkoq-place",
  "version": 1,
  "block": 2,
  "offset": 5,
  "place": {"path": "pSourceNodes[0].pszNodeOSVer", "byte": 1, "record": "BKNODE", "fieldOffset": 4, "width": 4, "meaning": "operating-system version; UNIX: a second text behind it", "kind": "two texts", "block": 3, "size": 5, "value": ["5.8", ""]}
}
)"));
  text.clear();
  EXPECT_EQ(bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, 13, 5, &options, appendToString, &text),
            BKOQ_OK);
  EXPECT_EQ(text, expected(R"(
{
  "format": "bkoq-place",
  "version": 1,
  "block": 13,
  "offset": 5,
  "place": {"path": "pSourceNodes[0].pMedia[0].pszDiskPW2", "byte": 1, "text": 2, "texts": 2, "value": "********", "masked": true, "meaning": "user and second password: two texts; types 11, 22, 31 (restore: 22, 31) joined by \":\""}
}
)"));
}

TEST(PrintAt, SaysWhenThereIsNoSuchPlace) {
  const CurrentTree job = currentBackup();
  const std::pair<std::uint32_t, std::uint32_t> rows[] = {{0, 0},   {30, 0},  {1, 292},
                                                          {2, 200}, {12, 16}, {12, 0xFFFFFFFF}};
  for (const auto& row : rows) {
    std::string text;
    EXPECT_EQ(bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, row.first, row.second, nullptr,
                          appendToString, &text),
              BKOQ_NOT_FOUND);
    EXPECT_EQ(text, "");
  }
}

// A sink that takes so many calls and refuses the next.
struct Refusing {
  int left;
  int calls;
};
int refuse(void* user, const char*, std::size_t) {
  auto* sink = static_cast<Refusing*>(user);
  ++sink->calls;
  return sink->left-- > 0 ? 0 : 1;
}

TEST(Sink, EndsAnOperationByFailing) {
  const CurrentTree job = currentJob(20);
  give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 200);
  const std::pair<BkoqFormat, int> rows[] = {{BKOQ_FORMAT_TEXT, 0},
                                             {BKOQ_FORMAT_TEXT, 2},
                                             {BKOQ_FORMAT_JSON, 0},
                                             {BKOQ_FORMAT_JSON, 2},
                                             {BKOQ_FORMAT_ANNOTATED, 0}};
  for (const auto& row : rows) {
    BkoqPrintOptions options{};
    options.format = row.first;
    Refusing sink{row.second, 0};
    EXPECT_EQ(bkoqPrint(job.get(), BKOQ_LAYOUT_CURRENT, &options, refuse, &sink), BKOQ_SINK_FAILED);
    EXPECT_EQ(sink.calls, row.second + 1);
  }
}

TEST(Sink, CanBeAFile) {
  const CurrentTree job = currentJob(1);
  std::FILE* file = std::tmpfile();
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(
      bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "usJobType", nullptr, bkoqFileSink, file),
      BKOQ_OK);
  std::rewind(file);
  char line[8] = "";
  EXPECT_STREQ(std::fgets(line, sizeof line, file), "1\n");
  std::fclose(file);

  std::FILE* full = std::fopen("/dev/full", "w");
  if (full == nullptr) GTEST_SKIP() << "the system has no /dev/full";
  std::setvbuf(full, nullptr, _IONBF, 0);
  EXPECT_EQ(bkoqPrint(job.get(), BKOQ_LAYOUT_CURRENT, nullptr, bkoqFileSink, full),
            BKOQ_SINK_FAILED);
  std::fclose(full);
}

TEST(Print, RefusesBadArguments) {
  const CurrentTree job = currentJob(1);
  const auto layout = static_cast<BkoqLayout>(2);
  const auto current = BKOQ_LAYOUT_CURRENT;
  std::string text;
  BkoqPrintOptions markdown{};
  markdown.format = BKOQ_FORMAT_MARKDOWN;
  BkoqPrintOptions annotated{};
  annotated.format = BKOQ_FORMAT_ANNOTATED;
  const auto sink = appendToString;
  EXPECT_EQ(bkoqPrint(nullptr, current, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrint(job.get(), layout, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrint(job.get(), current, nullptr, nullptr, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrint(job.get(), current, &markdown, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(nullptr, current, "", nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(job.get(), layout, "", nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(job.get(), current, nullptr, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(job.get(), current, "", nullptr, nullptr, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintField(job.get(), current, "", &annotated, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintAt(nullptr, current, 1, 0, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintAt(job.get(), layout, 1, 0, nullptr, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintAt(job.get(), current, 1, 0, nullptr, nullptr, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintAt(job.get(), current, 1, 0, &annotated, sink, &text), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(text, "");
}

}  // namespace
