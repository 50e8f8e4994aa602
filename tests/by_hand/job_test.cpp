// The job record, whole, worked out by hand.

#include "tests/by_hand/page.h"
#include "tests/catalog/types.h"
#include "tests/support/job_conversion.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

// Both layouts write the same job record but for two places, which the pages say.
std::string pageOf(bool previous, const char* before, const char* inCurrent, const char* inPrevious,
                   const char* after) {
  return std::string(before) + (previous ? inPrevious : inCurrent) + after;
}

template <class L>
class JobByHand : public JobConversion<L> {
 protected:
  const TimeZone zone_{kFiveHoursWest};
};

TYPED_TEST_SUITE(JobByHand, Layouts, );

TYPED_TEST(JobByHand, RestoreWithEveryNotification) {
  BKQRestoreJob job("the name reaches no record");
  job.setJobStatus(static_cast<BKQJob::BKQJobStatus>(0x00010002));
  job.setScriptType(0x1234);
  job.setBeforeJobWait(300);
  job.setOptions(0x00100001);
  job.setOwner("o");
  job.setReportFile("rep");
  job.setBeforeJob("b");
  job.setAfterJob("a");
  job.setHost("h");
  job.setOnConflict(static_cast<BKQRestoreJob::BKQConflictType>(0x00050004));
  BKQTapeNode source("library");
  job.addSourceNode(source);
  BKQRestoreNode destination("machine");
  job.addDestNode(destination);

  auto* fax = new BKQFax;
  fax->setHostName("fh");
  fax->setUserName("fu");
  fax->setUserPW("fp");
  fax->setFaxNumber("555");
  fax->setCoverPageFile("cover");
  fax->setReceiverName("rec");
  job.setFaxInfo(*fax);
  auto* mail = new BKQMHSEMail;
  mail->setHostName("mh");
  mail->setUserName("mu");
  mail->setMHSDir("dir");
  mail->setMHSUserName("mn");
  job.setEMailInfo(*mail);
  BKQPrintQueue queue;
  queue.setHostName("ph");
  queue.setUserPW("pp");
  queue.setQueueName("q");
  job.setPrintQueue(queue);
  auto* schedule = new BKQRegularSchedule;
  schedule->setSubmitTime(storedTime(kJanuary));
  schedule->setExecTime(storedTime(kJuly));
  job.setSchedule(*schedule);

  ASSERT_EQ(this->convert(job), 1);
  const std::string page = pageOf(TypeParam::kPrevious, R"(
      0  00*4
      4  07 00             | a restore job is 7
      6  00*2
      8  02 00             | of the status 0x00010002 the low half
     10  34 12             | script type 0x1234
     12  01 00 00 00       | one source
     16  -> block
     20  01 00 00 00       | one destination
     24  -> block
     28  -> "o" 00         | owner
     32  -> "rep" 00       | report file
     36  null              | no comments were set, and an empty text is no block
     40  -> "b" 00         | command before the job
     44  -> "a" 00         | command after it
     48  2c 01             | wait of 300
     50  00*2
     52  04 00             | on conflict 0x00050004, low half
     54  00*2
     56  f0 d7 a4 65       | 2024-01-15 12:00 UTC is 1,705,320,000; five hours west the clock shows
                           | 18,000 seconds less: 1,705,302,000
     60  f0 c8 94 66       | 2024-07-15 12:00 UTC, 1,721,044,800, less 18,000
     64  00*10             | a regular schedule repeats nothing
     74  00*30
    104  00*12             | open files matter to a backup only
    116  00*16
    132  -> "fh" 00        | the fax
    136  -> "fu" 00
    140  -> "fp" 00
    144  -> "555" 00
    148  -> "cover" 00
)",
                                  R"(
    152  null              | the receiver's name has no reader in this layout
)",
                                  R"(
    152  -> "rec" 00
)",
                                  R"(
    156  -> "mh" 00        | the e-mail
    160  -> "mu" 00
    164  null              | it has no password
    168  -> "dir" 00
    172  null              | nor an id
    176  -> "mn" 00
    180  -> "ph" 00        | the print queue
    184  null
    188  -> "pp" 00
    192  -> "q" 00
    196  00*48             | no rotation
    244  00*12
    256  01 00 10 00       | options 0x00100001
    260  -> "h" 00         | host
    264  00*28
)");
  expectPage(this->record, 292, page.c_str());
}

TYPED_TEST(JobByHand, RotationBackupWithOpenFiles) {
  BKQCruiseBackupJob job("nightly");
  job.setComments("c");
  BKQOpenFileInfo openFiles;
  openFiles.setFActions(0x01020304);
  openFiles.setFMethods(0x80000000);
  openFiles.setRetryCount(0);
  openFiles.setRetryInterval(258);
  job.setOpenFileInfo(openFiles);

  BKQJobUnit units[10];
  auto* mask = new BKQJobMask;
  for (unsigned int i = 0; i < 10; ++i) {
    units[i].setJobType(static_cast<BKQJobUnit::BKQCruiseJobType>(i == 2 ? 0x1ff : i + 1));
    mask->addJobUnit(units[i]);
  }
  auto* schedule = new BKQCruiseSchedule;
  schedule->setSubmitTime(storedTime(18000));
  schedule->setExecTime(storedTime(0));
  schedule->setSetName("set");
  schedule->setJobMask(*mask);
  schedule->setCruiseMethod(static_cast<BKQCruiseSchedule::BKQCruiseMethod>(0x00020001));
  schedule->setSaveMonthly(12);
  schedule->setSaveWeekly(4);
  schedule->setSaveDaily(6);
  schedule->setOptions(0x00010002);
  schedule->setMonths(3);
  schedule->setCopies(2);
  job.setSchedule(*schedule);

  ASSERT_EQ(this->convert(job), 1);
  const std::string page = pageOf(TypeParam::kPrevious, R"(
      0  00*4
      4  03 00             | a rotation backup is 3
      6  00*2
      8  00*4              | status and script type
     12  00*4              | no source
     16  null
     20  00*4              | no destination
     24  null
     28  null
     32  null
     36  -> "c" 00         | comments
     40  null
     44  null
     48  00*2
     50  00*2
     52  00*2              | on conflict is the restore job's
     54  00*2
     56  00*4              | 05:00 UTC of the first day is midnight five hours west, where the count
                           | of the clock begins
     60  b0 b9 ff ff       | five hours before that: -18,000
     64  00*10
     74  00*30
    104  04 03 02 01       | actions 0x01020304
    108  00 00 00 80       | methods 0x80000000
    112  00 00             | no retries
    114  02 01             | interval 258
    116  00*16
    132  00*24             | no fax
    156  00*24             | no e-mail
    180  00*16             | no print queue
    196  -> "set" 00       | media set
    200  00*4
    204  01 00             | method 0x00020001, low half
    206  00*2
)",
                                  R"(
    208  00*8              | the job types have no place in this layout
)",
                                  R"(
    208  01 02 ff 04 05 06 07 08 | the first eight of ten units; of 0x1ff the low byte
)",
                                  R"(
    216  0c 00             | months to keep
    218  04 00             | weeks
    220  06 00             | days
    222  00*14
    236  02 00 01 00       | options 0x00010002, whole
    240  03 00             | months
    242  02 00             | copies
    244  00*12
    256  00*4
    260  null
    264  00*28
)");
  expectPage(this->record, 292, page.c_str());
}

TYPED_TEST(JobByHand, CustomBackup) {
  BKQCustomBackupJob job("weekly");
  auto* schedule = new BKQCustomSchedule(1, 0x0203, 3, 0xffff);
  schedule->setSkipWeekDayFlag(1);
  schedule->setSubmitTime(storedTime(18001));
  schedule->setExecTime(storedTime(18002));
  job.setSchedule(*schedule);
  ASSERT_EQ(this->convert(job), 1);
  expectPage(this->record, 292, R"(
      0  00*4
      4  01 00             | a custom backup is a backup: 1
      6  00*50
     56  01 00 00 00       | one second after midnight of the first day, by the clock
     60  02 00 00 00
     64  01 00             | the four repeats in order
     66  03 02
     68  03 00
     70  ff ff
     72  01 00             | skips a weekday
     74  00*182
    256  00*4
    260  null
    264  00*28
)");
}

}  // namespace
}  // namespace bkoq::test
