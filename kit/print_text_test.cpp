#include <gtest/gtest.h>

#include <cstdlib>

#include "kit/test_print.h"

namespace bkoq::test {
namespace {

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

// What does not fit where a value is put together.
TEST(Print, MarksManyBytesThatShouldBeZero) {
  const CurrentTree job = currentJob(1);
  job->abReserved74[29] = 1;
  std::string bytes;
  for (int i = 0; i < 29; ++i) bytes += "00 ";
  EXPECT_NE(printed(job, withoutZeros())
                .find("   74  abReserved74      " + bytes + "01  reserved, but not zero\n"),
            std::string::npos);
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
  node.pMedia = nullptr;
  EXPECT_NE(printed(job, options).find("pMedia            null\n"), std::string::npos);
  node.pMedia = &somewhere;
  options.colour = 1;
  EXPECT_NE(printed(job, options)
                .find("  \033[31mnot followed\033[0m  \033[31mwhat the node holds "
                      "depends on the kind of the job, which is unknown\033[0m\n"),
            std::string::npos);
}

// A code has two bytes, also where the first one alone would be a code that is known: what it
// decides about would be read as something else.
TEST(Print, TakesBothBytesOfACode) {
  const CurrentTree unknownJob = currentJob(0x0114);
  int somewhere = 0;
  give<BKNODE>(unknownJob->ulNumSourceNodes, unknownJob->pSourceNodes, 1)->pMedia = &somewhere;
  EXPECT_NE(printed(unknownJob, withoutZeros()).find("   40  pMedia            not followed  "),
            std::string::npos);

  const CurrentTree job = currentJob(20);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  node.usNodeType = 0x0103;
  node.pszNodeName = text("ledger");  // of a UNIX machine there would be a second one
  auto* filters = give<BKFILTER_FILE>(node.ulFilterCount, node.pFilters, 2);
  filters[0].usFilterType = 0x0105;
  filters[0].ulAttributes = 1;
  filters[1].usFilterType = 4;
  filters[1].usTimeRange = 0x0101;
  filters[1].lTime = 1;
  BkoqPrintOptions options = withoutZeros();
  options.onlyRecord = "BKFILTER_FILE";
  EXPECT_EQ(printed(job, options), expected(R"(
BKFILTER_FILE pSourceNodes[0].pFilters[0]  #4+0
    0  usFilterType    261
    4  ulOpaque4       0x00000001
BKFILTER_FILE pSourceNodes[0].pFilters[1]  #4+32
    0  usFilterType    4             time
    6  usTimeRange     257
    8  ulOpaque8       0x00000001
)"));
  options.onlyRecord = "BKNODE";
  EXPECT_EQ(printed(job, options), expected(R"(
BKNODE pSourceNodes[0]  #2+0
    0  usNodeType        259
    8  pszNodeName       #3  "ledger"
   24  ulFilterCount     2
   28  pFilters          #4  2 BKFILTER_FILE  64 bytes
)"));
}

TEST(Print, TellsTimesByTheirOwnClock) {
  struct Case {
    std::int32_t seconds;
    const char* line;
  };
  const Case cases[] = {
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
  for (const Case& each : cases) {
    const CurrentTree job = currentJob(1);
    job->stSchedule.lSubmitTime = each.seconds;
    BkoqPrintOptions options{};
    options.onlyRecord = "BKSCHEDINFO";
    EXPECT_NE(printed(job, options).find(each.line), std::string::npos) << each.line;
  }
}

// A job with one disk, and one item in it.
CurrentTree jobWithItem() {
  CurrentTree job = currentJob(20);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, 1);
  return job;
}
BKDDISK& diskOf(const CurrentTree& job) {
  return *static_cast<BKDDISK*>(job->pSourceNodes[0].pMedia);
}

std::string printedDoubtful(const CurrentTree& job, const BkoqPrintOptions& options,
                            std::uint32_t doubtfulFrom) {
  BkoqImagePlaces places{};
  places.doubtfulFrom = doubtfulFrom;
  std::string text;
  EXPECT_EQ(bkoqPrintImage(job.get(), BKOQ_LAYOUT_CURRENT, nullptr, &options, &places,
                           appendToString, &text),
            BKOQ_OK);
  return text;
}

// Each piece has a colour of its own, and none reaches beyond the end of its line.
TEST(Print, ColoursPiecesOfTextsAndDoubts) {
  const CurrentTree job = jobWithItem();
  BKDISKITEM& item = diskOf(job).pDiskItems[0];
  item.ulFileCount = 2;
  item.pFileList = texts({"0123456789abcdefghijkl", "b"});
  BkoqPrintOptions options = withoutZeros();
  options.colour = 1;
  options.onlyRecord = "BKDISKITEM";
  options.width = 40;
  EXPECT_EQ(printedDoubtful(job, options, 4),
            "\033[1mBKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]\033[0m  \033[2m#4+0\033[0m"
            "  \033[31mdoubtful\033[0m\n"
            "  \033[2m  4\033[0m  \033[36mulFileCount \033[0m  2\n"
            "  \033[2m  8\033[0m  \033[36mpFileList   \033[0m  #5  2 texts:\n"
            "                     \033[32m\"0123456789abcdefg\"\033[0m\n"
            "                     \033[32m\"hijkl\",\033[0m \033[32m\"b\"\033[0m\n"
            "                     \033[2mdoubtful\033[0m\n");
}

// Also after a text that was broken, and not beyond it.
TEST(Print, FillsALineToItsLastColumn) {
  const CurrentTree job = jobWithItem();
  BKDISKITEM& item = diskOf(job).pDiskItems[0];
  BkoqPrintOptions options = withoutZeros();
  options.width = 40;
  options.onlyRecord = "BKDISKITEM";
  item.ulFileCount = 2;
  item.pFileList = texts({"0123456789abcdefghijkl", "12345678"});
  EXPECT_EQ(printed(job, options), expected(R"(
BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]  #4+0
    4  ulFileCount   2
    8  pFileList     #5  2 texts:
                     "0123456789abcdefg"
                     "hijkl", "12345678"
)"));
  std::free(item.pFileList);
  item.pFileList = texts({"0123456789abcdefghijkl", "123456789"});
  EXPECT_EQ(printed(job, options), expected(R"(
BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]  #4+0
    4  ulFileCount   2
    8  pFileList     #5  2 texts:
                     "0123456789abcdefg"
                     "hijkl",
                     "123456789"
)"));
  // What is masked takes as many columns as the mask.
  diskOf(job).pszDiskPW2 = texts({"backup:SECRET", ""});
  diskOf(job).ulDiskItemCount = 0;
  std::free(item.pFileList);
  std::free(diskOf(job).pDiskItems);
  diskOf(job).pDiskItems = nullptr;
  options.onlyRecord = "BKDDISK";
  options.width = 47;
  EXPECT_EQ(printed(job, options), expected(R"(
BKDDISK pSourceNodes[0].pMedia[0]  #3+0
   36  pszDiskPW2        #4  "backup:********",
                         ""
)"));
  options.width = 46;
  EXPECT_EQ(printed(job, options), expected(R"(
BKDDISK pSourceNodes[0].pMedia[0]  #3+0
   36  pszDiskPW2        #4
                         "backup:********", ""
)"));
}

// Rather than that a line gets too wide.
TEST(Print, BreaksTextsIntoNoLessThanSixteenColumns) {
  const CurrentTree job = currentJob(20);
  auto& node = *give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
  auto& tape = *give<BKDTAPE>(node.ulMediaCount, node.pMedia, 1);
  tape.pszTapeName = text("0123456789abcdefghij");
  BkoqPrintOptions options = withoutZeros();
  options.onlyRecord = "BKDTAPE";
  options.width = 42;
  EXPECT_EQ(printed(job, options), expected(R"(
BKDTAPE pDestNodes[0].pMedia[0]  #3+0
    4  pszTapeName        #4
                          "0123456789abcdef"
                          "ghij"
)"));
}

TEST(Print, AlignsADoubtWithCommentsAlsoOnAFurtherLine) {
  const CurrentTree job = jobWithItem();
  diskOf(job).pszDiskPW2 = texts({"database-owner", "SECRET"});
  BkoqPrintOptions options = withoutZeros();
  options.onlyRecord = "BKDDISK";
  options.width = 51;
  EXPECT_EQ(printedDoubtful(job, options, 5), expected(R"(
BKDDISK pSourceNodes[0].pMedia[0]  #3+0
   16  ulDiskItemCount   1
   20  pDiskItems        #4  1 BKDISKITEM  32 bytes
   36  pszDiskPW2        #5  "database-owner",
                         ********      doubtful
)"));
}

TEST(Print, CountsTheDepthFromThePathThatIsAskedFor) {
  const CurrentTree job = jobWithItem();
  BkoqPrintOptions options = withoutZeros();
  const auto node = [&](unsigned int depth) {
    options.depth = depth;
    std::string text;
    EXPECT_EQ(bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "pSourceNodes[0]", &options,
                             appendToString, &text),
              BKOQ_OK);
    return text;
  };
  EXPECT_EQ(node(1), expected(R"(
BKNODE pSourceNodes[0]  #2+0
   36  ulMediaCount      1
   40  pMedia            #3  1 BKDDISK  52 bytes, not shown
)"));
  EXPECT_EQ(node(2), expected(R"(
BKNODE pSourceNodes[0]  #2+0
   36  ulMediaCount      1
   40  pMedia            #3  1 BKDDISK  52 bytes
    BKDDISK pSourceNodes[0].pMedia[0]  #3+0
       16  ulDiskItemCount   1
       20  pDiskItems        #4  1 BKDISKITEM  32 bytes, not shown
)"));
  // Of what is not there nothing is left out.
  options.hideZero = 0;
  EXPECT_NE(node(1).find("   28  pFilters          null\n"), std::string::npos);
}

TEST(Print, ColoursThePathsThatAPatternIsAbout) {
  BkoqPrintOptions options{};
  options.colour = 1;
  std::string text;
  EXPECT_EQ(bkoqPrintField(currentBackup().get(), BKOQ_LAYOUT_CURRENT,
                           "pSourceNodes[*].pszNodeName", &options, appendToString, &text),
            BKOQ_OK);
  EXPECT_EQ(text,
            "\033[36mpSourceNodes[0].pszNodeName\033[0m: \"ledger\", \"extra\"\n"
            "\033[36mpSourceNodes[1].pszNodeName\033[0m: \"payroll\"\n");
}

TEST(Print, BeginsWithAWordAboutTheLayout) {
  const CurrentTree job = currentJob(20);
  job->stScheduleExt.abReserved12[0] = 1;
  const std::string note =
      "this looks like a tree of the previous layout: stScheduleExt.abReserved12 is not zero, "
      "where that layout has abJobTypes";
  BkoqPrintOptions options = withoutZeros();
  options.onlyRecord = "BKROTATIONINFO";
  options.showSecrets = 1;
  EXPECT_EQ(printed(job, options), note + R"(
BKROTATIONINFO stScheduleExt  #1+196
   12  abReserved12     01 00 00 00 00 00 00 00  reserved, but not zero
)");
  options.showSecrets = 0;
  options.colour = 1;
  EXPECT_EQ(printed(job, options),
            "\033[31m" + note +
                "\033[0m\n"
                "\033[1mBKROTATIONINFO stScheduleExt\033[0m  \033[2m#1+196\033[0m\n"
                "  \033[2m 12\033[0m  \033[36mabReserved12   \033[0m  "
                "\033[31m01 00 00 00 00 00 00 00\033[0m  "
                "\033[31mreserved, but not zero\033[0m\n");
}

// Each byte of a field counts, and none that the other layout has reserved as well.
TEST(OtherLayout, IsNoticedByEachByteOfAFieldAndByNoOther) {
  struct Case {
    unsigned int byte;  // of those where the current layout has pszNodeDomain and what follows it
    BkoqStatus status;
  };
  const Case cases[] = {
      {0, BKOQ_OTHER_LAYOUT}, {3, BKOQ_OTHER_LAYOUT}, {4, BKOQ_OK}, {15, BKOQ_OK}};
  for (const Case& each : cases) {
    const PreviousTree job = previousJob(20);
    auto& node = *give<BKNODE_OLD>(job->ulNumSourceNodes, job->pSourceNodes, 1);
    node.abReserved84[each.byte] = 1;
    EXPECT_EQ(bkoqCheckLayout(job.get(), BKOQ_LAYOUT_PREVIOUS), each.status) << each.byte;
  }
}

// Bytes that are damaged speak for the other layout only where that has a field of its own.
TEST(OtherLayout, IsNotSeenInWhatIsOnlyDamaged) {
  const CurrentTree beforeField = currentJob(20);
  beforeField->abReserved6[1] = 7;
  beforeField->usJobStatus = 2;
  EXPECT_EQ(bkoqCheckLayout(beforeField.get(), BKOQ_LAYOUT_CURRENT), BKOQ_OK);

  // The previous layout has no such record.
  const CurrentTree inExtension = currentBackup();
  static_cast<BKDTAPE*>(inExtension->pDestNodes[0].pMedia)->pTapeX->abReserved12[0] = 1;
  EXPECT_EQ(bkoqCheckLayout(inExtension.get(), BKOQ_LAYOUT_CURRENT), BKOQ_OK);

  // How these bytes are read depends on the kind of the filter, in both layouts alike.
  const CurrentTree inFilter = currentJob(20);
  auto& node = *give<BKNODE>(inFilter->ulNumSourceNodes, inFilter->pSourceNodes, 1);
  auto& filter = *give<BKFILTER_FILE>(node.ulFilterCount, node.pFilters, 1);
  filter.usFilterType = 5;
  filter.lTime = 1;
  EXPECT_EQ(bkoqCheckLayout(inFilter.get(), BKOQ_LAYOUT_CURRENT), BKOQ_OK);
}

}  // namespace
}  // namespace bkoq::test
