// Jobs as record trees, in both layouts: what every job kind has.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/catalog/kinds.h"
#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/foreign_attachments.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/job_conversion.h"
#include "tests/support/name_list.h"
#include "tests/support/rows.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

TYPED_TEST_SUITE(JobConversion, Layouts, );

// The base step.

TYPED_TEST(JobConversion, DefaultJobIsAlmostEmpty) {
  using L = TypeParam;
  BKQJob job;
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("default job", {number(4, 2, 1)});
  expectBlockSize(this->record, 292);
  EXPECT_EQ(L::newTapeTimeout(), 5u);
  EXPECT_EQ(L::spanTapeTimeout(), 9999u);
  EXPECT_EQ(L::nodeNoEstimate(), 0u);
}

TYPED_TEST(JobConversion, BaseStepFillsEveryFieldOfTheRecord) {
  using L = TypeParam;
  BKQJob job("name");
  fillBase(job);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job", baseRows(1));
  EXPECT_EQ(L::newTapeTimeout(), 0xFFFFu);
  EXPECT_EQ(L::spanTapeTimeout(), 0xFFFEu);
}

TYPED_TEST(JobConversion, EveryJobKindRunsTheBaseStep) {
  for (const JobKindLine& line : kJobKinds) {
    SCOPED_TRACE(line.className);
    const std::unique_ptr<BKQJob> job(line.make("n"));
    fillBase(*job);
    std::vector<Row> rows = baseRows(line.code);
    // The restores say more at once: what happens on conflict.
    if (line.family == JobFamily::kRestore) rows.push_back(number(52, 2, 3));  // usOnConflict
    // A comparison always has a destination.
    if (line.family == JobFamily::kCompare) {
      static_cast<BKQCompareJob&>(*job).setDestination(*new BKQWinNTNode("nt"));
      rows.push_back(number(20, 4, 1));  // ulNumDestNodes
      rows.push_back(block(24));         // pDestNodes
    }
    ASSERT_EQ(this->convert(*job), 1);
    this->expectJob(line.className, rows);
  }
}

TYPED_TEST(JobConversion, NoEstimateFollowsOptionBit20) {
  using L = TypeParam;
  BKQJob job;
  const struct {
    unsigned int options;
    unsigned int noEstimate;
  } cases[] = {{0x00100000, 1}, {0x000FFFFF, 0}, {0xFFFFFFFF, 1}, {0xFFEFFFFF, 0}, {0, 0}};
  for (const auto& c : cases) {
    job.setOptions(c.options);
    ASSERT_EQ(this->convert(job), 1);
    EXPECT_EQ(L::nodeNoEstimate(), c.noEstimate) << c.options;
    EXPECT_EQ(this->record->ulOptions, c.options);
  }
}

TYPED_TEST(JobConversion, BaseStepResetsWhatJobsDecide) {
  using L = TypeParam;
  char disk[] = "disk";
  char tape[] = "tape";
  L::newTapeTimeout() = L::spanTapeTimeout() = L::newTapeMethod() = L::spanTapeMethod() = 9;
  L::diskEncryption() = L::diskCompression() = L::nodeNoEstimate() = 1;
  L::currentNodeType() = 9;
  L::unixOptions() = 8;
  L::diskName() = "name";
  BKQJob job;
  void* out = nullptr;
  L::diskSessionPassword() = disk;
  L::tapeSessionPassword() = tape;
  ASSERT_EQ(L::convert(job, out), 1);
  this->record = static_cast<typename L::Job*>(out);
  EXPECT_EQ(L::newTapeTimeout(), 5u);
  EXPECT_EQ(L::spanTapeTimeout(), 9999u);
  EXPECT_EQ(L::newTapeMethod(), 0u);
  EXPECT_EQ(L::spanTapeMethod(), 0u);
  EXPECT_EQ(L::diskSessionPassword(), nullptr);  // the former copies are their readers'
  EXPECT_EQ(L::tapeSessionPassword(), nullptr);
  EXPECT_EQ(L::diskEncryption(), 0u);
  EXPECT_EQ(L::diskCompression(), 0u);
  EXPECT_EQ(L::nodeNoEstimate(), 0u);
  // These are the nodes' and disks' and stay.
  EXPECT_EQ(L::currentNodeType(), 9u);
  EXPECT_EQ(L::unixOptions(), 8u);
  EXPECT_STREQ(L::diskName().data(), "name");
}

TYPED_TEST(JobConversion, NotificationsFillTheirBlocks) {
  BKQJob job;
  auto* fax = new BKQFax;
  fax->setHostName("fh");
  fax->setUserName("fu");
  fax->setUserPW("fp");
  fax->setFaxNumber("fn");
  fax->setCoverPageFile("fc");
  fax->setReceiverName("fr");
  job.setFaxInfo(*fax);
  auto* email = new BKQInternetEMail;
  email->setHostName("eh");
  email->setUserName("eu");
  email->setUserPW("ep");
  job.setEMailInfo(*email);
  BKQPrintQueue queue;
  queue.setHostName("ph");
  queue.setUserName("pu");
  queue.setUserPW("pp");
  queue.setQueueName("pq");
  job.setPrintQueue(queue);
  ASSERT_EQ(this->convert(job), 1);
  std::vector<Row> rows = {
      number(4, 2, 1), text(132, "fh"), text(136, "fu"), text(140, "fp"), text(144, "fn"),
      text(148, "fc"), text(156, "eh"), text(160, "eu"), text(164, "ep"), text(180, "ph"),
      text(184, "pu"), text(188, "pp"), text(192, "pq"),
  };
  if (TypeParam::kPrevious) rows.push_back(text(152, "fr"));  // stFax.pszReceiverName
  this->expectJob("job", rows);
}

TYPED_TEST(JobConversion, MHSEMailFillsSixTexts) {
  BKQJob job;
  auto* email = new BKQMHSEMail;
  email->setHostName("eh");
  email->setUserName("eu");
  email->setUserPW("ep");
  email->setMHSDir("md");
  email->setMHSId("mi");
  email->setMHSUserName("mu");
  job.setEMailInfo(*email);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job", {number(4, 2, 1), text(156, "eh"), text(160, "eu"), text(164, "ep"),
                          text(168, "md"), text(172, "mi"), text(176, "mu")});
}

TYPED_TEST(JobConversion, NothingIsCreatedOnDemand) {
  BKQBackupJob job;
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job", {number(4, 2, 1)});
  EXPECT_EQ(job.faxInfoExists(), 0);
  EXPECT_EQ(job.emailInfoExists(), 0);
  EXPECT_EQ(job.printQueueExists(), 0);
  EXPECT_EQ(job.scheduleExists(), 0);
  EXPECT_EQ(job.openFileInfoExists(), 0);
  EXPECT_EQ(job.destinationExists(), 0);
}

TYPED_TEST(JobConversion, SchedulesFillTheirBlocks) {
  TimeZone zone(kFiveHoursWest);
  std::vector<Row> rows = {
      number(4, 2, 1), number(56, 4, 1705302000),  // stSchedule.lSubmitTime
      number(60, 4, 1721026800),                   // stSchedule.lExecTime
  };
  const auto setTimes = [](BKQSchedule& schedule) {
    schedule.setSubmitTime(storedTime(kJanuary));
    schedule.setExecTime(storedTime(kJuly));
  };
  BKQJob regularJob;
  auto* regular = new BKQRegularSchedule;
  setTimes(*regular);
  regularJob.setSchedule(*regular);
  ASSERT_EQ(this->convert(regularJob), 1);
  this->expectJob("regular", rows);

  BKQJob customJob;
  auto* custom = new BKQCustomSchedule(1, 2, 3, 4);
  custom->setSkipWeekDayFlag(5);
  setTimes(*custom);
  customJob.setSchedule(*custom);
  ASSERT_EQ(this->convert(customJob), 1);
  std::vector<Row> customRows = rows;
  for (unsigned int i = 0; i < 5; ++i) customRows.push_back(number(64 + 2 * i, 2, i + 1));
  this->expectJob("custom", customRows);

  BKQCruiseBackupJob cruiseJob;
  auto* cruise = new BKQCruiseSchedule;
  setTimes(*cruise);
  cruise->setSetName("set");
  cruise->setCruiseMethod(static_cast<BKQCruiseSchedule::BKQCruiseMethod>(0x10001));
  cruise->setSaveMonthly(2);
  cruise->setSaveWeekly(3);
  cruise->setSaveDaily(4);
  cruise->setOptions(0x00010002);
  cruise->setMonths(5);
  cruise->setCopies(6);
  cruiseJob.setSchedule(*cruise);
  ASSERT_EQ(this->convert(cruiseJob), 1);
  std::vector<Row> cruiseRows = rows;
  cruiseRows[0] = number(4, 2, 3);
  for (const Row& row :
       {text(196, "set"), number(204, 2, 1), number(216, 2, 2), number(218, 2, 3),
        number(220, 2, 4), number(236, 4, 0x00010002), number(240, 2, 5), number(242, 2, 6)}) {
    cruiseRows.push_back(row);
  }
  this->expectJob("cruise", cruiseRows);
}

TYPED_TEST(JobConversion, ScheduleAndEMailAreCalledThroughTheirOwnClasses) {
  BKQJob job;
  std::string calls;
  void* mailBlock = nullptr;
  void* schedBlock = nullptr;
  auto* email = new ForeignEMail([&](void* block, BkoqLayout layout) {
    EXPECT_EQ(layout, TypeParam::kLayout);
    mailBlock = block;
    calls += "e-mail ";
    return 1;
  });
  auto* schedule = new ForeignSchedule([&](void* block, BkoqLayout layout) {
    EXPECT_EQ(layout, TypeParam::kLayout);
    schedBlock = block;
    calls += "schedule";
    return 7;  // any result but 0 is a success
  });
  job.setEMailInfo(*email);
  job.setSchedule(*schedule);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job", {number(4, 2, 1)});
  EXPECT_EQ(calls, "e-mail schedule");
  char* start = reinterpret_cast<char*>(this->record);
  EXPECT_EQ(schedBlock, start + 56);
  EXPECT_EQ(schedule->rotationBlock(), start + 196);
  EXPECT_EQ(mailBlock, start + 156);
}

TYPED_TEST(JobConversion, AttachmentsConvertAfterTheStateIsSet) {
  using L = TypeParam;
  BKQJob job;
  job.setNewTapeTimeout(42);
  job.setOptions(0x00100000);
  job.setEMailInfo(*new ForeignEMail([](void*, BkoqLayout) {
    EXPECT_EQ(L::newTapeTimeout(), 42u);
    EXPECT_EQ(L::nodeNoEstimate(), 1u);
    return 1;
  }));
  ASSERT_EQ(this->convert(job), 1);
}

// Both layouts of one job.

TEST(BothLayouts, JobRecordsAreEqualAndTheVariablesApart) {
  Machines machines;
  BKQBackupJob job("n");
  fillBase(job);
  machines.addTo(job);
  job.setSessionPassword("secret");
  void* current = nullptr;
  ASSERT_EQ(job.convertToBK2(current), 1);
  char* const password = BK6_DISKSESSIONPW;
  void* previous = nullptr;
  job.setNewTapeTimeout(1);
  ASSERT_EQ(job.convertToBK2_old(previous), 1);

  EXPECT_EQ(BK6_DISKSESSIONPW, password);
  EXPECT_STREQ(BK6_DISKSESSIONPW_OLD, "secret");
  EXPECT_EQ(BK6_NEWTAPETIMEOUT, 0xFFFFu);
  EXPECT_EQ(BK6_NEWTAPETIMEOUT_OLD, 1u);
  EXPECT_STREQ(DISK_DISKNAME.data(), "HD");
  EXPECT_STREQ(DISK_DISKNAME_OLD.data(), "HD");
  std::vector<Row> rows = baseRows(1);
  rows.push_back(number(12, 4, 3));
  rows.push_back(block(16));
  expectRows("current", current, 292, rows);
  expectRows("previous", previous, 292, rows);
  freeJobRecord(static_cast<BKQJDATATRANSFER*>(current));
  freeJobRecord(static_cast<BKQJDATATRANSFER_OLD*>(previous));
  freeSessionPasswords();
}

}  // namespace
}  // namespace bkoq::test
