#include <gtest/gtest.h>

#include <algorithm>

#include "kit/test_print.h"

namespace bkoq::test {
namespace {

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
      0  00 00                    usNodeType                      0 = 0x0000                node kind; tape node: 3, a restore node: actual one
      2  00 00                    usNodeOS                        0 = 0x0000                operating-system code
      4  00 00 00 00              pszNodeOSVer                    null                      operating-system version; UNIX: a second text after it
      8  00 00 00 00              pszNodeName                     null                      node name; UNIX: a second text after it
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

#4  pSourceNodes[0].pMedia[0].pszDiskPW2: 2 texts, masked
      0  62 61 63 6b 75 70 3a     text 1                          "backup:"
      7  **                                                       ********                  not shown
      ?  00                       NUL                                                       end of an empty text

#5  pszOwner: 1 text, 9 bytes
      0  6f 70 65 72 61 74 6f 72  text                            "operator"
      8  00                       NUL                                                       end of the text
)"));
  options.onlyRecord = "BKDDISK";
  EXPECT_EQ(printed(job, options).find("#3  pSourceNodes[0].pMedia: 1 BKDDISK, 52 bytes\n"), 0u);
}

// Each cell that has a colour; what is wrong, or doubtful, in the one for alarms. "@" stands for
// the escape character. The spaces after a name are a part of it.
TEST(PrintAnnotated, HasColours) {
  const CurrentTree job = currentJob(1);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  auto* items = give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, 2);
  items[0].pszPath = text("/home/led");
  items[0].ulFileCount = 3;
  items[1].pszPath = text("");
  items[1].abReserved16[8] = 0xff;
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_ANNOTATED;
  options.colour = 1;
  BkoqImagePlaces places{};
  places.doubtfulFrom = 5;
  std::string all;
  EXPECT_EQ(bkoqPrintImage(job.get(), BKOQ_LAYOUT_CURRENT, nullptr, &options, &places,
                           appendToString, &all),
            BKOQ_OK);
  EXPECT_EQ(all.find('@'), std::string::npos);
  std::replace(all.begin(), all.end(), '\033', '@');
  const std::size_t begin = all.find("@[1m#4");
  ASSERT_NE(begin, std::string::npos);
  EXPECT_EQ(all.substr(begin), expected(R"(
@[1m#4  pSourceNodes[0].pMedia[0].pDiskItems: 2 BKDISKITEM, 64 bytes@[0m
pSourceNodes[0].pMedia[0].pDiskItems[0]
@[2m      0@[0m  pp pp pp pp              @[36mpszPath                       @[0m  #5                        path as the server uses it
@[2m      4@[0m  03 00 00 00              @[36mulFileCount                   @[0m  3 = 0x00000003            texts of pFileList
@[2m      8@[0m  00 00 00 00              @[36mpFileList                     @[0m  null                      @[31mfile names, back to back (unfinished: the count is 3)@[0m
@[2m     12@[0m  00 00 00 00              @[36mulOptions                     @[0m  0 = 0x00000000            item options
@[2m     16@[0m  00 00 00 00 00 00 00 00  @[36mabReserved16                  @[0m                            reserved: zero
@[2m     24@[0m  00 00 00 00 00 00 00 00  @[36m                              @[0m
pSourceNodes[0].pMedia[0].pDiskItems[1]
@[2m     32@[0m  pp pp pp pp              @[36mpszPath                       @[0m  #6                        path as the server uses it
@[2m     36@[0m  00 00 00 00              @[36mulFileCount                   @[0m  0 = 0x00000000            texts of pFileList
@[2m     40@[0m  00 00 00 00              @[36mpFileList                     @[0m  null                      file names, back to back
@[2m     44@[0m  00 00 00 00              @[36mulOptions                     @[0m  0 = 0x00000000            item options
@[2m     48@[0m  00 00 00 00 00 00 00 00  @[36mabReserved16                  @[0m                            @[31mreserved, but NOT ZERO@[0m
@[2m     56@[0m  ff 00 00 00 00 00 00 00  @[36m                              @[0m

@[1m#5  pSourceNodes[0].pMedia[0].pDiskItems[0].pszPath: 1 text, 10 bytes@[0m  @[31mdoubtful@[0m
@[2m      0@[0m  2f 68 6f 6d 65 2f 6c 65  @[36mtext                          @[0m  "/home/le"
@[2m      8@[0m  64                       @[36m                              @[0m  "d"
@[2m      9@[0m  00                       @[36mNUL                           @[0m                            end of the text

@[1m#6  pSourceNodes[0].pMedia[0].pDiskItems[1].pszPath: 1 text, 1 byte@[0m  @[31mdoubtful@[0m
@[2m      0@[0m  00                       @[36mNUL                           @[0m                            end of an empty text
)"));
  // No block before the first that is.
  EXPECT_EQ(all.find("doubtful"), all.find("doubtful", begin));
}

// An embedded record is read on as part of the job, which is in the heading as soon as anything of
// it is shown.
TEST(PrintAnnotated, ShowsOneRecord) {
  const CurrentTree job = currentBackup();
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_ANNOTATED;
  options.onlyRecord = "BKFAXINFO";
  EXPECT_EQ(printed(job, options), expected(R"(
#1  BKQJDATATRANSFER, 292 bytes
    132  pp pp pp pp              stFax.pszHostName               #27                       host name
    136  00 00 00 00              stFax.pszUserName               null                      user name
    140  pp pp pp pp              stFax.pszUserPW                 #28                       user password
    144  00 00 00 00              stFax.pszFaxNumber              null                      fax number
    148  00 00 00 00              stFax.pszCoverPageFile          null                      cover page file
    152  00 00 00 00              stFax.pszReceiverName           null                      not written in this layout: null
)"));
  // The bits that are set have names or are shown as they are.
  options.onlyRecord = "BKQJDATATRANSFER";
  const std::string all = printed(job, options);
  EXPECT_EQ(all.substr(0, all.find('\n')), "#1  BKQJDATATRANSFER, 292 bytes");
  const std::size_t begin = all.find("    256  ");
  ASSERT_NE(begin, std::string::npos);
  EXPECT_EQ(all.substr(begin, all.find('\n', begin) - begin),
            "    256  08 00 10 00              ulOptions                       1048584 = "
            "0x00100008      job options (no estimate, 0x00000008)");
  job->ulOptions = 0xFFFFFFFF;
  EXPECT_NE(printed(job, options).find("job options (no estimate, 0xffefffff)"), std::string::npos);
}

// An array without elements is no block to show, but has its number.
TEST(PrintAnnotated, LeavesOutArraysWithoutElements) {
  const CurrentTree job = currentJob(1);
  job->pszOwner = text("operator");
  give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  job->ulNumSourceNodes = 0;
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_ANNOTATED;
  const std::string all = printed(job, options);
  EXPECT_EQ(all.find("\n#2"), std::string::npos);
  EXPECT_NE(all.find("\n\n#3  pszOwner: 1 text, 9 bytes\n"), std::string::npos);
}

// A value that is wider than its column has two spaces after it, as every other.
TEST(PrintAnnotated, GoesOnAfterAWideValue) {
  const PreviousTree job = previousJob(1);
  auto& node = *give<BKNODE_OLD>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  give<BKFILTER_FILE_OLD>(node.ulFilterCount, node.pFilters, 100);
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_ANNOTATED;
  options.onlyRecord = "BKNODE_OLD";
  const std::string all = printed(job, options);
  const std::size_t begin = all.find("     28  ");
  ASSERT_NE(begin, std::string::npos);
  EXPECT_EQ(all.substr(begin, all.find('\n', begin) - begin),
            "     28  pp pp pp pp              pFilters                        #3  100 "
            "BKFILTER_FILE_OLD  the node's filters, then the job's");
}

TEST(PrintAnnotated, SaysFirstThatATreeLooksLikeOneOfTheOtherLayout) {
  const CurrentTree job = currentJob(20);
  job->stScheduleExt.abReserved12[0] = 1;
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_ANNOTATED;
  options.onlyRecord = "BKOFINFO";
  const std::string note =
      "this looks like a tree of the previous layout: stScheduleExt.abReserved12 is not zero, "
      "where "
      "that layout has abJobTypes";
  const std::string plain = printed(job, options);
  EXPECT_EQ(plain.substr(0, plain.find("  BKQJ")), note + "\n#1");
  options.colour = 1;
  const std::string coloured = printed(job, options);
  EXPECT_EQ(coloured.substr(0, coloured.find("  BKQJ")), "\033[31m" + note + "\033[0m\n\033[1m#1");
}

}  // namespace
}  // namespace bkoq::test
