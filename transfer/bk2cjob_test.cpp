// Jobs as record trees, in both layouts: every job kind and every overload.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/block_size.h"
#include "tests/support/foreign_attachments.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/layouts.h"
#include "tests/support/name_list.h"
#include "tests/support/rows.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/time_zone.h"

namespace {

class NamedDisk : public BKQDisk {
 public:
  explicit NamedDisk(const char* name, unsigned int options = 0) {
    setDiskName(name);
    setOptions(options);
  }
};

class SessionTape : public BKQTape {
 public:
  SessionTape(const char* name, unsigned short session) : BKQTape("", name) {
    setSessionNumber(session);
  }
};

// A tape node with tapes A of session 1, A of session 2 and B of session 1.
class Library : public BKQTapeNode {
 public:
  explicit Library(const char* name = "library") : BKQTapeNode(name) {
    addTape(a1_);
    addTape(a2_);
    addTape(b1_);
  }

 private:
  SessionTape a1_{"A", 1};
  SessionTape a2_{"A", 2};
  SessionTape b1_{"B", 1};
};

template <class L>
class JobConversion : public testing::Test {
 protected:
  using Other = OtherLayout<L>;

  void SetUp() override {
    // Whatever is taken from or stored in the other layout's variables shows.
    Other::newTapeTimeout() = 71;
    Other::spanTapeTimeout() = 72;
    Other::newTapeMethod() = 73;
    Other::spanTapeMethod() = 74;
    Other::diskSessionPassword() = otherDiskPassword_;
    Other::tapeSessionPassword() = otherTapePassword_;
    Other::diskEncryption() = 1;
    Other::diskCompression() = 1;
    Other::nodeNoEstimate() = 1;
    Other::currentNodeType() = 77;
    Other::unixOptions() = 0x8000;
    Other::diskName() = "other";
  }

  void TearDown() override {
    EXPECT_EQ(Other::newTapeTimeout(), 71u);
    EXPECT_EQ(Other::spanTapeTimeout(), 72u);
    EXPECT_EQ(Other::newTapeMethod(), 73u);
    EXPECT_EQ(Other::spanTapeMethod(), 74u);
    EXPECT_EQ(Other::diskSessionPassword(), otherDiskPassword_);
    EXPECT_EQ(Other::tapeSessionPassword(), otherTapePassword_);
    EXPECT_EQ(Other::diskEncryption(), 1u);
    EXPECT_EQ(Other::diskCompression(), 1u);
    EXPECT_EQ(Other::nodeNoEstimate(), 1u);
    EXPECT_EQ(Other::currentNodeType(), 77u);
    EXPECT_EQ(Other::unixOptions(), 0x8000u);
    EXPECT_STREQ(Other::diskName().data(), "other");
    Other::diskSessionPassword() = nullptr;
    Other::tapeSessionPassword() = nullptr;
    clear();
  }

  // Flattens the job; the fixture keeps the record and frees it.
  template <class Job, class... Arguments>
  int convert(Job& job, Arguments&&... arguments) {
    clear();
    void* out = nullptr;
    const int result = L::convert(job, out, std::forward<Arguments>(arguments)...);
    record = static_cast<typename L::Job*>(out);
    return result;
  }

  void expectJob(const std::string& what, const std::vector<Row>& rows) {
    expectRows(what, record, 292, rows);
  }

  std::vector<std::string> sourceNames() const {
    return names(record->pSourceNodes, record->ulNumSourceNodes);
  }
  std::vector<std::string> destNames() const {
    return names(record->pDestNodes, record->ulNumDestNodes);
  }
  const typename L::Disk& disk(const typename L::Node& node, unsigned int i = 0) const {
    return static_cast<const typename L::Disk*>(node.pMedia)[i];
  }
  const typename L::Tape& tape(const typename L::Node& node, unsigned int i = 0) const {
    return static_cast<const typename L::Tape*>(node.pMedia)[i];
  }
  // Name and session of each tape, "A1 B2".
  std::string tapes(const typename L::Node& node) const {
    std::string all;
    for (unsigned int i = 0; i < node.ulMediaCount; ++i) {
      if (i != 0) all += ' ';
      all += tape(node, i).pszTapeName + std::to_string(tape(node, i).usSessionNumber);
    }
    return all;
  }
  std::string disks(const typename L::Node& node) const {
    std::string all;
    for (unsigned int i = 0; i < node.ulMediaCount; ++i) {
      if (i != 0) all += ' ';
      all += disk(node, i).pszDiskName;
    }
    return all;
  }

  typename L::Job* record = nullptr;

 private:
  static std::vector<std::string> names(const typename L::Node* nodes, unsigned int count) {
    std::vector<std::string> all;
    for (unsigned int i = 0; i < count; ++i) all.emplace_back(nodes[i].pszNodeName);
    return all;
  }

  void clear() {
    freeJobRecord(record);
    record = nullptr;
    free(L::diskSessionPassword());
    L::diskSessionPassword() = nullptr;
    free(L::tapeSessionPassword());
    L::tapeSessionPassword() = nullptr;
  }

  char otherDiskPassword_[8] = "disk";
  char otherTapePassword_[8] = "tape";
};

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

void fillBase(BKQJob& job) {
  job.setOwner("owner");
  job.setReportFile("report");
  job.setComments("comments");
  job.setBeforeJob("before");
  job.setAfterJob("after");
  job.setHost("host");
  job.setJobStatus(static_cast<BKQJob::BKQJobStatus>(0x00010002));
  job.setScriptType(0xFFFE);
  job.setBeforeJobWait(0xFFFD);
  job.setOptions(0x80000001);
  job.setNewTapeTimeout(0xFFFF);
  job.setSpanTapeTimeout(0xFFFE);
  // What follows reaches no record.
  job.setJobID(0x11111111);
  job.setJobNumber(0x22222222);
  job.setOnExitCode(-1);
  job.setJobVersion("version");
  job.setPassword("password");
  job.setMachineName("machine");
  job.setMachineUser("user");
  job.setMachinePassword("machine password");
  job.setMachineAddress("address");
  job.setFileName("file");
  job.setPoolName("pool");
  job.setSNMPOn();
  job.setOvixOn();
  job.setScriptUserID("id", "script password");
}

std::vector<Row> baseRows(unsigned int jobType) {
  return {
      number(4, 2, jobType),       // usJobType
      number(8, 2, 2),             // usJobStatus: low 16 bits
      number(10, 2, 0xFFFE),       // usScriptType
      text(28, "owner"),           // pszOwner
      text(32, "report"),          // pszReportFile
      text(36, "comments"),        // pszComments
      text(40, "before"),          // pszBeforeJob
      text(44, "after"),           // pszAfterJob
      number(48, 2, 0xFFFD),       // usBeforeJobWait
      number(256, 4, 0x80000001),  // ulOptions
      text(260, "host"),           // pszHost
  };
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
  BKQJob job("n");
  BKQBackupJob backup("n");
  BKQCruiseBackupJob cruise("n");
  BKQCruiseMakeupJob cruiseMakeup("n");
  BKQRotationBackupJob rotation("n");
  BKQRotationMakeupJob rotationMakeup("n");
  BKQCustomBackupJob custom("n");
  BKQDatabaseBackupJob database("n");
  BKQVerifyJob verify("n");
  BKQMergeJob merge;
  BKQScanJob scan;
  const struct {
    BKQJob& job;
    unsigned int type;
  } jobs[] = {
      {job, 1},       {backup, 1},          {cruise, 3}, {cruiseMakeup, 5},
      {rotation, 20}, {rotationMakeup, 21}, {custom, 1}, {database, 9},
      {verify, 29},   {merge, 8},           {scan, 14},
  };
  for (const auto& c : jobs) {
    fillBase(c.job);
    ASSERT_EQ(this->convert(c.job), 1) << c.type;
    this->expectJob("job type " + std::to_string(c.type), baseRows(c.type));
  }

  // The restores say more at once: what happens on conflict.
  BKQRestoreJob restore("n");
  BKQDatabaseRestoreJob databaseRestore("n");
  for (BKQJob* c : {static_cast<BKQJob*>(&restore), static_cast<BKQJob*>(&databaseRestore)}) {
    fillBase(*c);
    ASSERT_EQ(this->convert(*c), 1);
    std::vector<Row> rows = baseRows(c == &restore ? 7 : 10);
    rows.push_back(number(52, 2, 3));  // usOnConflict
    this->expectJob("restore", rows);
  }

  // A comparison always has a destination.
  BKQCompareJob compare("n");
  fillBase(compare);
  compare.setDestination(*new BKQWinNTNode("nt"));
  ASSERT_EQ(this->convert(static_cast<BKQJob&>(compare)), 1);
  std::vector<Row> rows = baseRows(11);
  rows.push_back(number(20, 4, 1));  // ulNumDestNodes
  rows.push_back(block(24));         // pDestNodes
  this->expectJob("compare", rows);
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
  const bool isPrevious = TypeParam::kPrevious;
  BKQJob job;
  std::string calls;
  void* mailBlock = nullptr;
  void* schedBlock = nullptr;
  auto* email = new ForeignEMail([&](void* block, bool previous) {
    EXPECT_EQ(previous, isPrevious);
    mailBlock = block;
    calls += "e-mail ";
    return 1;
  });
  auto* schedule = new ForeignSchedule([&](void* block, bool previous) {
    EXPECT_EQ(previous, isPrevious);
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
  job.setEMailInfo(*new ForeignEMail([](void*, bool) {
    EXPECT_EQ(L::newTapeTimeout(), 42u);
    EXPECT_EQ(L::nodeNoEstimate(), 1u);
    return 1;
  }));
  ASSERT_EQ(this->convert(job), 1);
}

// Backup jobs.

// Three machines, the second and the fourth of one name, each with a disk.
class Machines {
 public:
  Machines() {
    unixNode.setNodeOSver("5");
    unixNode.setUnixOptions(0x10);
    unixNode.addDisk(usr);
    unixNode.addDisk(opt);
    winNT.addDisk(drive);
    mac.addDisk(hd);
    otherB.addDisk(usr);
  }
  void addTo(BKQBackupJob& job) {
    job.addSourceNode(unixNode);
    job.addSourceNode(winNT);
    job.addSourceNode(mac);
  }

  NamedDisk usr{"/usr", 1};
  NamedDisk opt{"/opt", 2};
  NamedDisk drive{"C:", 4};
  NamedDisk hd{"HD", 8};
  BKQUnixNode unixNode{"A"};
  BKQWinNTNode winNT{"B"};
  BKQMacNode mac{"C"};
  BKQFTPNode otherB{"B"};
  BKQDirFilter directory{BKQFilter::Exclude, "/tmp"};
  BKQFileFilter file{BKQFilter::Include, "*.c"};
};

using Names = std::vector<std::string>;

TYPED_TEST(JobConversion, EverySourceNodeGetsEveryFilter) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.directory);
  job.addFilter(machines.file);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job", {number(4, 2, 1), number(12, 4, 3), block(16)});
  EXPECT_EQ(this->sourceNames(), (Names{"A", "B", "C"}));
  expectBlockSize(this->record->pSourceNodes, 300);
  for (unsigned int i = 0; i < 3; ++i) {
    const auto& node = this->record->pSourceNodes[i];
    ASSERT_EQ(node.ulFilterCount, 2u);
    expectBlockSize(node.pFilters, 64);
    expectRows(
        "first filter", &node.pFilters[0], 32,
        {number(0, 2, 3), number(2, 2, 1), number(4, 4, 1), text(8, "/tmp"), number(12, 2, 5)});
    expectRows("second filter", &node.pFilters[1], 32,
               {number(0, 2, 2), number(4, 4, 1), text(8, "*.c"), number(12, 2, 4)});
  }
  // Each its own copy.
  EXPECT_NE(this->record->pSourceNodes[0].pFilters[0].pszFilter,
            this->record->pSourceNodes[1].pFilters[0].pszFilter);
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/usr /opt");
}

TYPED_TEST(JobConversion, NodesOwnFiltersComeFirst) {
  Machines machines;
  machines.winNT.addFilter(machines.file);
  BKQBackupJob job;
  machines.addTo(job);
  ForeignFilter foreign(1);
  job.addFilter(foreign);
  job.addFilter(machines.directory);
  ASSERT_EQ(this->convert(job), 1);
  const auto& node = this->record->pSourceNodes[1];
  ASSERT_EQ(node.ulFilterCount, 3u);
  EXPECT_EQ(node.pFilters[0].usFilterType, 2);
  EXPECT_EQ(node.pFilters[1].usFilterType,
            TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark);
  EXPECT_EQ(node.pFilters[2].usFilterType, 3);
  EXPECT_EQ(this->record->pSourceNodes[0].ulFilterCount, 2u);
}

TYPED_TEST(JobConversion, OneNodeByName) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.file);
  const struct {
    const char* name;
    Names nodes;
  } cases[] = {
      {"B", {"B"}}, {"", {"A", "B", "C"}}, {nullptr, {"A", "B", "C"}}, {"b", {}}, {"BB", {}},
      {"X", {}},
  };
  for (const auto& c : cases) {
    const std::string what = c.name != nullptr ? c.name : "null";
    ASSERT_EQ(this->convert(job, c.name), 1) << what;
    EXPECT_EQ(this->sourceNames(), c.nodes) << what;
    for (unsigned int i = 0; i < c.nodes.size(); ++i) {
      EXPECT_EQ(this->record->pSourceNodes[i].ulFilterCount, 1u) << what;
    }
    if (c.nodes.empty()) {
      EXPECT_EQ(this->record->pSourceNodes, nullptr) << what;
    } else {
      expectBlockSize(this->record->pSourceNodes, 100 * c.nodes.size());
    }
  }

  job.addSourceNode(machines.otherB);
  ASSERT_EQ(this->convert(job, "B"), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"B", "B"}));
  EXPECT_EQ(this->record->pSourceNodes[0].usNodeType, 9);
  EXPECT_EQ(this->record->pSourceNodes[1].usNodeType, 20);
}

TYPED_TEST(JobConversion, SkippedNodeConvertsNothing) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  ASSERT_EQ(this->convert(job, "X"), 1);
  EXPECT_EQ(TypeParam::currentNodeType(), 0u);
  EXPECT_EQ(TypeParam::unixOptions(), 0u);
}

TYPED_TEST(JobConversion, DisksByName) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  NameList names{"C:", "/opt"};
  // The list reaches every source node, UNIX or not.
  ASSERT_EQ(this->convert(job, "", names), 1);
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/opt");
  EXPECT_EQ(this->disks(this->record->pSourceNodes[1]), "C:");
  EXPECT_EQ(this->disks(this->record->pSourceNodes[2]), "");
  EXPECT_EQ(this->record->pSourceNodes[2].pMedia, nullptr);
  ASSERT_EQ(this->convert(job, "A", names), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"A"}));
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/opt");
  NameList none{};
  ASSERT_EQ(this->convert(job, "A", none), 1);
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/usr /opt");
  EXPECT_EQ(names.entries(), 2u);
}

TYPED_TEST(JobConversion, UnixTextReachesUnixNodesOnly) {
  Machines machines;
  machines.winNT.setNodeOSver("4");
  BKQBackupJob job;
  machines.addTo(job);
  NameList names{"/usr", "C:"};

  ASSERT_EQ(this->convert(job, "", 1, "x"), 1);
  expectRows("UNIX node", &this->record->pSourceNodes[0], 100,
             {number(0, 2, 3), number(2, 2, 6), bytes(4, "5\0x\0"), bytes(8, "A\0\0"),
              number(36, 4, 2), block(40), number(56, 4, 0x920)});
  expectRows("Windows NT node", &this->record->pSourceNodes[1], 100,
             {number(0, 2, 9), number(2, 2, 8), text(4, "4"), text(8, "B"), number(36, 4, 1),
              block(40), number(56, 4, 0x120)});

  ASSERT_EQ(this->convert(job, "A", 2, "xy"), 1);
  EXPECT_EQ(this->record->ulNumSourceNodes, 1u);
  expectRows("UNIX node", &this->record->pSourceNodes[0], 100,
             {number(0, 2, 3), number(2, 2, 6), bytes(4, "5\0\0"), bytes(8, "A\0xy\0"),
              number(36, 4, 2), block(40), number(56, 4, 0x320)});

  ASSERT_EQ(this->convert(job, "", names, 1, "x"), 1);
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/usr");
  EXPECT_EQ(std::string(this->record->pSourceNodes[0].pszNodeOSVer, 4), std::string("5\0x\0", 4));
  EXPECT_EQ(this->disks(this->record->pSourceNodes[1]), "C:");
  EXPECT_EQ(this->disks(this->record->pSourceNodes[2]), "");

  ASSERT_EQ(this->convert(job, "", 3, "x"), 1);
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x120u);
}

// Without a text a form takes what the shorter forms take: every node, and no second text.
TYPED_TEST(JobConversion, NullTextsOfABackupAreEmptyOnes) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  NameList names{"/usr", "C:"};
  const auto expect = [&](const char* disksOfTheFirst) {
    EXPECT_EQ(this->sourceNames(), (Names{"A", "B", "C"}));
    EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), disksOfTheFirst);
    EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x120u);
    EXPECT_EQ(std::string(this->record->pSourceNodes[0].pszNodeOSVer, 3), std::string("5\0\0", 3));
    EXPECT_EQ(std::string(this->record->pSourceNodes[0].pszNodeName, 3), std::string("A\0\0", 3));
  };
  ASSERT_EQ(this->convert(job, nullptr), 1);
  expect("/usr /opt");
  ASSERT_EQ(this->convert(job, nullptr, names), 1);
  expect("/usr");
  for (const int kind : {1, 2}) {
    ASSERT_EQ(this->convert(job, nullptr, kind, nullptr), 1);
    expect("/usr /opt");
    ASSERT_EQ(this->convert(job, nullptr, names, kind, nullptr), 1);
    expect("/usr");
  }
  // Each of the two for itself.
  ASSERT_EQ(this->convert(job, nullptr, names, 1, "x"), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"A", "B", "C"}));
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x920u);
  ASSERT_EQ(this->convert(job, "A", names, 1, nullptr), 1);
  EXPECT_EQ(this->sourceNames(), Names{"A"});
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x120u);
}

TYPED_TEST(JobConversion, UnixNodeAlwaysSetsItsOptions) {
  using L = TypeParam;
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(L::unixOptions(), 0x10u);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[0], 0).ulOptions, 0x11u);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[1], 0).ulOptions, 4u);
  EXPECT_EQ(L::currentNodeType(), 2u);
  EXPECT_STREQ(L::diskName().data(), "HD");
}

TYPED_TEST(JobConversion, DestinationGetsNoFilters) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.file);
  job.setDestination(*new Library);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job",
                  {number(4, 2, 1), number(12, 4, 3), block(16), number(20, 4, 1), block(24)});
  expectBlockSize(this->record->pDestNodes, 100);
  expectRows("destination", this->record->pDestNodes, 100,
             {number(0, 2, 3), number(2, 2, 6), text(8, "library"), number(32, 2, 1),
              number(36, 4, 3), block(40)});
  EXPECT_EQ(this->tapes(this->record->pDestNodes[0]), "A1 A2 B1");
}

TYPED_TEST(JobConversion, DestinationAloneAndFiltersDropped) {
  Machines machines;
  BKQBackupJob job;
  job.addFilter(machines.file);
  job.setDestination(*new BKQTapeNode("library"));
  const std::string lines = standardErrorOf([&] { ASSERT_EQ(this->convert(job), 1); });
  EXPECT_EQ(lines, "");
  this->expectJob("job", {number(4, 2, 1), number(20, 4, 1), block(24)});
}

// A tape node class of a client's own.
class ForeignTapeNode : public BKQTapeNode {
 public:
  int convertToBK2(void*& rec) override { return mark(rec, 301); }
  int convertToBK2_old(void*& rec) override { return mark(rec, 302); }

 private:
  int mark(void* rec, unsigned int type) {
    static_cast<BKNODE*>(rec)->usNodeType = static_cast<uint16_t>(type);
    return 1;
  }
};

// A disk node class of a client's own, of any kind.
template <class Base>
class ForeignMachine : public Base {
 public:
  ForeignMachine(unsigned int type, const char* name) : Base(name), type_(type) {}
  unsigned int nodeType() const override { return type_; }
  using Base::convertToBK2;
  using Base::convertToBK2_old;
  int convertToBK2(void*& rec) override { return mark(rec, 301); }
  int convertToBK2_old(void*& rec) override { return mark(rec, 302); }

 private:
  int mark(void* rec, unsigned int type) {
    static_cast<BKNODE*>(rec)->usNodeType = static_cast<uint16_t>(type);
    return 1;
  }
  unsigned int type_;
};

TYPED_TEST(JobConversion, DestinationIsCalledThroughItsOwnClassSourcesAreNot) {
  const unsigned int mark = TypeParam::kPrevious ? 302 : 301;
  BKQBackupJob job;
  ForeignMachine<BKQDiskNode> other(99, "other");
  ForeignMachine<BKQUnixNode> unixNode(3, "unix");
  job.addSourceNode(other);
  job.addSourceNode(unixNode);
  job.setDestination(*new ForeignTapeNode);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(this->record->pSourceNodes[0].usNodeType, 99);
  EXPECT_EQ(this->record->pSourceNodes[1].usNodeType, 3);
  EXPECT_EQ(this->record->pDestNodes[0].usNodeType, mark);
}

TYPED_TEST(JobConversion, TypeNotClassMakesAUnixSource) {
  // A UNIX node that answers another type is flattened as any disk node.
  BKQBackupJob job;
  ForeignMachine<BKQUnixNode> node(9, "n");
  node.setNodeOSver("5");
  node.setUnixOptions(0x10);
  job.addSourceNode(node);
  ASSERT_EQ(this->convert(job, "", 1, "x"), 1);
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x120u);
  EXPECT_EQ(TypeParam::unixOptions(), 0u);
}

TYPED_TEST(JobConversion, SessionPasswordReachesDisksOnly) {
  using L = TypeParam;
  Machines machines;
  machines.opt.setPassword("own");
  BKQBackupJob job;
  machines.addTo(job);
  job.setDestination(*new Library);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(L::diskSessionPassword(), nullptr);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[0], 0).pszPassword, nullptr);

  job.setSessionPassword("secret");
  ASSERT_EQ(this->convert(job), 1);
  ASSERT_NE(L::diskSessionPassword(), nullptr);
  EXPECT_STREQ(L::diskSessionPassword(), "secret");
  expectBlockSize(L::diskSessionPassword(), 7);
  EXPECT_NE(static_cast<const void*>(L::diskSessionPassword()), job.getSessionPassword().data());
  EXPECT_EQ(L::tapeSessionPassword(), nullptr);
  EXPECT_STREQ(this->disk(this->record->pSourceNodes[0], 0).pszPassword, "secret");
  EXPECT_STREQ(this->disk(this->record->pSourceNodes[0], 1).pszPassword, "own");
  EXPECT_STREQ(this->disk(this->record->pSourceNodes[1], 0).pszPassword, "secret");
  EXPECT_NE(this->disk(this->record->pSourceNodes[0], 0).pszPassword, L::diskSessionPassword());
  EXPECT_EQ(this->tape(this->record->pDestNodes[0], 0).pszSessionPW, nullptr);

  // Each flattening makes a copy of its own and leaves the one before to its reader.
  char* former = L::diskSessionPassword();
  void* out = nullptr;
  ASSERT_EQ(L::convert(job, out), 1);
  freeJobRecord(static_cast<typename L::Job*>(out));
  EXPECT_STREQ(former, "secret");
  EXPECT_NE(L::diskSessionPassword(), former);
  free(former);
}

TYPED_TEST(JobConversion, MethodsAndFlagsReachTheirReaders) {
  using L = TypeParam;
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.setDestination(*new Library);
  job.setEncryptionOn();
  job.setTapeMethod(static_cast<BKQBackupJob::BKQTapeMethodType>(0x10002));
  job.setSpanMethod(static_cast<BKQBackupJob::BKQSpanMethodType>(0x10003));
  job.setNewTapeTimeout(11);
  job.setSpanTapeTimeout(12);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(L::diskEncryption(), 1u);
  EXPECT_EQ(L::diskCompression(), 0u);
  EXPECT_EQ(L::newTapeMethod(), 0x10002u);
  EXPECT_EQ(L::spanTapeMethod(), 0x10003u);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[1], 0).ulOptions, 0x4004u);
  for (unsigned int i = 0; i < 3; ++i) {
    const auto& tape = this->tape(this->record->pDestNodes[0], i);
    EXPECT_EQ(tape.usNewTapeMethod, 2);
    EXPECT_EQ(tape.usSpanTapeMethod, 3);
    EXPECT_EQ(tape.usNewTapeTimeout, 11);
    EXPECT_EQ(tape.usSpanTapeTimeout, 12);
  }

  job.setEncryptionOff();
  job.setCompressionOn();
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[1], 0).ulOptions, 0x2004u);

  // Nothing survives into another job.
  BKQBackupJob plain;
  machines.addTo(plain);
  ASSERT_EQ(this->convert(plain), 1);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[1], 0).ulOptions, 4u);
  EXPECT_EQ(L::newTapeMethod(), 0u);
  EXPECT_EQ(L::spanTapeMethod(), 0u);
}

TYPED_TEST(JobConversion, NoEstimateReachesEveryNode) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.setDestination(*new Library);
  job.setOptions(0x00100000);
  ASSERT_EQ(this->convert(job), 1);
  for (unsigned int i = 0; i < 3; ++i) {
    EXPECT_EQ(this->record->pSourceNodes[i].ulNodeOptions, 0x160u);
  }
  EXPECT_EQ(this->record->pDestNodes[0].ulNodeOptions, 0x40u);
}

TYPED_TEST(JobConversion, OpenFileInformationFillsItsBlock) {
  BKQBackupJob job;
  BKQOpenFileInfo info;
  info.setFActions(0x80000001);
  info.setFMethods(0x80000002);
  info.setRetryCount(0xFFFE);
  info.setRetryInterval(0xFFFD);
  job.setOpenFileInfo(info);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job", {number(4, 2, 1), number(104, 4, 0x80000001), number(108, 4, 0x80000002),
                          number(112, 2, 0xFFFE), number(114, 2, 0xFFFD)});
}

TYPED_TEST(JobConversion, EveryBackupKindIsFlattenedAlike) {
  Machines machines;
  BKQBackupJob backup("n");
  BKQCruiseBackupJob cruise("n");
  BKQCruiseMakeupJob cruiseMakeup("n");
  BKQRotationBackupJob rotation("n");
  BKQRotationMakeupJob rotationMakeup("n");
  BKQCustomBackupJob custom("n");
  BKQDatabaseBackupJob database("n");
  for (BKQBackupJob* job :
       {&backup, static_cast<BKQBackupJob*>(&cruise), static_cast<BKQBackupJob*>(&cruiseMakeup),
        static_cast<BKQBackupJob*>(&rotation), static_cast<BKQBackupJob*>(&rotationMakeup),
        static_cast<BKQBackupJob*>(&custom), static_cast<BKQBackupJob*>(&database)}) {
    machines.addTo(*job);
    job->addFilter(machines.file);
    job->setDestination(*new Library);
    // Through the base class, as a queue of jobs does it.
    ASSERT_EQ(this->convert(static_cast<BKQJob&>(*job)), 1);
    this->expectJob("job", {number(4, 2, job->jobType()), number(12, 4, 3), block(16),
                            number(20, 4, 1), block(24)});
    EXPECT_EQ(this->record->pSourceNodes[2].ulFilterCount, 1u);
  }
  NameList names{"/usr"};
  ASSERT_EQ(this->convert(rotation, "A", names, 2, "x"), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"A"}));
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x320u);
}

template <class Collection, class Job>
unsigned int left(Job& job, unsigned int (Job::*enumerate)(Collection*&, unsigned int),
                  unsigned int n = 0) {
  Collection* elements = nullptr;
  const unsigned int count = (job.*enumerate)(elements, n);
  delete elements;
  return count;
}

TYPED_TEST(JobConversion, BackupCursorsStandAtTheEnd) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.file);
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes, 1), 1u);
  ASSERT_EQ(this->convert(job, "C"), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"C"}));
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes), 0u);
  EXPECT_EQ(left(job, &BKQBackupJob::enumFilters), 0u);
  job.resetSourceNodes();
  job.resetFilters();
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes), 3u);
  EXPECT_EQ(left(job, &BKQBackupJob::enumFilters), 1u);
}

TYPED_TEST(JobConversion, CursorOfAnEmptyListStays) {
  BKQBackupJob job;
  auto* node = new BKQWinNTNode("n");
  job.addSourceNode(*node);
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes), 1u);
  job.clearSourceNodes();
  ASSERT_EQ(this->convert(job), 1);
  // The cursor still stands at 1, so that the first of two new nodes is passed over.
  BKQWinNTNode first("first");
  BKQWinNTNode second("second");
  job.addSourceNode(first);
  job.addSourceNode(second);
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes), 1u);
}

TYPED_TEST(JobConversion, FlatteningChangesNothingOfTheJob) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.file);
  job.setDestination(*new Library);
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(this->convert(job), 1);
    this->expectJob("job",
                    {number(4, 2, 1), number(12, 4, 3), block(16), number(20, 4, 1), block(24)});
    EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/usr /opt");
    EXPECT_EQ(this->record->pSourceNodes[0].ulFilterCount, 1u);
  }
}

// Restore jobs.

TYPED_TEST(JobConversion, RestoreReadsTapesAndWritesToDestinations) {
  using L = TypeParam;
  BKQRestoreJob job("restore");
  Library first("first");
  Library second("second");
  job.addSourceNode(first);
  job.addSourceNode(second);
  BKQRestoreNode machine("machine", "/usr");
  machine.setActualNodeType(BKQNode::UnixNode);
  BKQDBRestoreNode database("database", "accounts");
  database.setFStype(static_cast<BKQDisk::BKQDiskType>(22));
  database.setDBuser("sa", "pw");
  job.addDestNode(machine);
  job.addDestNode(database);
  BKQDirFilter directory(BKQFilter::Exclude, "/tmp");
  BKQFileFilter file(BKQFilter::Include, "*.c");
  BKQAttributeFilter attributes(BKQFilter::Exclude, 1);
  job.addFilter(directory);
  job.addFilter(file);
  job.addFilter(attributes);
  job.setOnConflict(static_cast<BKQRestoreJob::BKQConflictType>(0x10002));
  job.setRestoreView(static_cast<BKQRestoreJob::BKQRestoreViewType>(0x77777777));

  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("restore", {
                                 number(4, 2, 7),            // usJobType
                                 number(12, 4, 2),           // ulNumSourceNodes
                                 block(16),                  // pSourceNodes
                                 number(20, 4, 2),           // ulNumDestNodes
                                 block(24),                  // pDestNodes
                                 number(52, 2, 2),           // usOnConflict: low 16 bits
                                 number(256, 4, 0x6200000),  // ulOptions
                             });
  expectBlockSize(this->record->pSourceNodes, 200);
  expectBlockSize(this->record->pDestNodes, 200);
  EXPECT_EQ(this->sourceNames(), (Names{"first", "second"}));
  EXPECT_EQ(this->destNames(), (Names{"machine", "database"}));
  for (unsigned int i = 0; i < 2; ++i) {
    const auto& source = this->record->pSourceNodes[i];
    EXPECT_EQ(source.usNodeType, 3);
    EXPECT_EQ(this->tapes(source), "A1 A2 B1");
    ASSERT_EQ(source.ulFilterCount, 3u);
    EXPECT_EQ(source.pFilters[0].usFilterType, 3);
    EXPECT_EQ(source.pFilters[1].usFilterType, 2);
    EXPECT_EQ(source.pFilters[2].usFilterType, 5);
    EXPECT_EQ(this->record->pDestNodes[i].ulFilterCount, 0u);
    EXPECT_EQ(this->record->pDestNodes[i].pFilters, nullptr);
  }
  EXPECT_STREQ(this->disk(this->record->pDestNodes[0]).pDiskItems[0].pszPath, "/usr");
  EXPECT_STREQ(this->disk(this->record->pDestNodes[1]).pszDiskPW2, "sa:pw");
  EXPECT_STREQ(this->disk(this->record->pDestNodes[1]).pDiskItems[0].pszPath, "accounts");
  EXPECT_EQ(L::tapeSessionPassword(), nullptr);
  EXPECT_EQ(L::diskSessionPassword(), nullptr);
}

TYPED_TEST(JobConversion, RestoreSelectsTapes) {
  BKQRestoreJob job("restore");
  BKQDatabaseRestoreJob database("restore");
  Library first("first");
  Library second("second");
  job.addSourceNode(first);
  job.addSourceNode(second);
  database.addSourceNode(first);
  database.addSourceNode(second);
  const struct {
    const char* name;
    unsigned short session;
    const char* tapes;
  } cases[] = {
      {"", 0, "A1 A2 B1"}, {"A", 0, "A1 A2"}, {"", 1, "A1 B1"}, {"A", 2, "A2"},
      {"B", 2, ""},        {"X", 0, ""},      {"", 9, ""},      {nullptr, 0, "A1 A2 B1"},
  };
  for (const auto& c : cases) {
    for (BKQRestoreJob* restore : {&job, static_cast<BKQRestoreJob*>(&database)}) {
      ASSERT_EQ(this->convert(*restore, c.name, c.session), 1);
      // A selection that matches nothing still yields the nodes.
      ASSERT_EQ(this->record->ulNumSourceNodes, 2u);
      EXPECT_EQ(this->record->usJobType, restore->jobType());
      for (unsigned int i = 0; i < 2; ++i) {
        EXPECT_EQ(this->tapes(this->record->pSourceNodes[i]), c.tapes);
      }
    }
  }
  ASSERT_EQ(this->convert(database, "A", 2), 1);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[1]), "A2");
}

TYPED_TEST(JobConversion, RestorePasswordReachesTapesOnly) {
  using L = TypeParam;
  BKQRestoreJob job("restore");
  SessionTape own("own", 1);
  own.setSessionPW("tape's");
  SessionTape none("none", 1);
  BKQTapeNode source("library");
  source.addTape(own);
  source.addTape(none);
  job.addSourceNode(source);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(L::tapeSessionPassword(), nullptr);
  EXPECT_EQ(this->tape(this->record->pSourceNodes[0], 1).pszSessionPW, nullptr);

  job.setSessionPassword("job's");
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_STREQ(L::tapeSessionPassword(), "job's");
  expectBlockSize(L::tapeSessionPassword(), 6);
  EXPECT_EQ(L::diskSessionPassword(), nullptr);
  EXPECT_STREQ(this->tape(this->record->pSourceNodes[0], 0).pszSessionPW, "tape's");
  EXPECT_STREQ(this->tape(this->record->pSourceNodes[0], 1).pszSessionPW, "job's");
  EXPECT_NE(this->tape(this->record->pSourceNodes[0], 1).pszSessionPW, L::tapeSessionPassword());

  // As with disks, each flattening makes a copy of its own and leaves the one before to its reader.
  char* former = L::tapeSessionPassword();
  void* out = nullptr;
  ASSERT_EQ(L::convert(job, out), 1);
  freeJobRecord(static_cast<typename L::Job*>(out));
  EXPECT_STREQ(former, "job's");
  EXPECT_STREQ(L::tapeSessionPassword(), "job's");
  EXPECT_NE(L::tapeSessionPassword(), former);
  free(former);
}

TYPED_TEST(JobConversion, RestoreTapesCarryNoMethodOfABackup) {
  using L = TypeParam;
  BKQBackupJob backup;
  backup.setTapeMethod(static_cast<BKQBackupJob::BKQTapeMethodType>(5));
  backup.setSpanMethod(static_cast<BKQBackupJob::BKQSpanMethodType>(6));
  ASSERT_EQ(this->convert(backup), 1);
  EXPECT_EQ(L::newTapeMethod(), 5u);
  BKQRestoreJob job("restore");
  Library source;
  job.addSourceNode(source);
  ASSERT_EQ(this->convert(job), 1);
  const auto& tape = this->tape(this->record->pSourceNodes[0], 0);
  EXPECT_EQ(tape.usNewTapeMethod, 0);
  EXPECT_EQ(tape.usSpanTapeMethod, 0);
  EXPECT_EQ(tape.usNewTapeTimeout, 5);
  EXPECT_EQ(tape.usSpanTapeTimeout, 9999);
}

TYPED_TEST(JobConversion, RestoreWithoutSourcesDropsItsFilters) {
  BKQRestoreJob job("restore");
  BKQFileFilter file(BKQFilter::Include, "*.c");
  BKQRestoreNode machine("machine");
  job.addFilter(file);
  job.addDestNode(machine);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("restore", {number(4, 2, 7), number(20, 4, 1), block(24), number(52, 2, 3),
                              number(256, 4, 0x6200000)});
  EXPECT_EQ(this->record->pDestNodes[0].ulFilterCount, 0u);
}

TYPED_TEST(JobConversion, RestoreIgnoresWhatItsFiltersAnswer) {
  const unsigned int mark =
      TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark;
  BKQRestoreJob job("restore");
  Library source;
  BKQDirFilter nodeFilter(BKQFilter::Include, "/a");
  source.addFilter(nodeFilter);
  job.addSourceNode(source);
  ForeignFilter failing(0);
  BKQFileFilter file(BKQFilter::Include, "*.c");
  job.addFilter(failing);
  job.addFilter(file);
  const std::string lines = standardErrorOf([&] { EXPECT_EQ(this->convert(job), 1); });
  EXPECT_EQ(lines, "");
  const auto& node = this->record->pSourceNodes[0];
  ASSERT_EQ(node.ulFilterCount, 3u);
  EXPECT_EQ(node.pFilters[0].usFilterType, 3);
  expectRows("failing filter", &node.pFilters[1], 32, {number(0, 2, mark)});
  EXPECT_EQ(node.pFilters[2].usFilterType, 2);
}

// A restore node class of a client's own.
class ForeignRestoreNode : public BKQRestoreNode {
 public:
  explicit ForeignRestoreNode(unsigned int type) : type_(type) {}
  unsigned int nodeType() const override { return type_; }
  int convertToBK2(void*& rec) override { return mark(rec, 301); }
  int convertToBK2_old(void*& rec) override { return mark(rec, 302); }

 private:
  int mark(void* rec, unsigned int type) {
    static_cast<BKNODE*>(rec)->usNodeType = static_cast<uint16_t>(type);
    return 1;
  }
  unsigned int type_;
};

TYPED_TEST(JobConversion, RestoreDestinationsAreCalledThroughTheirOwnClassesSourcesAreNot) {
  const unsigned int mark = TypeParam::kPrevious ? 302 : 301;
  BKQRestoreJob job("restore");
  ForeignTapeNode source;
  ForeignRestoreNode machine(25);
  ForeignRestoreNode database(27);  // answers the type of a class that it is not
  job.addSourceNode(source);
  job.addDestNode(machine);
  job.addDestNode(database);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(this->record->pSourceNodes[0].usNodeType, 3);
  EXPECT_EQ(this->record->pDestNodes[0].usNodeType, mark);
  EXPECT_EQ(this->record->pDestNodes[1].usNodeType, mark);
}

TYPED_TEST(JobConversion, RestoreCursorsStandAtTheEnd) {
  BKQRestoreJob job("restore");
  Library source;
  BKQRestoreNode machine("machine");
  BKQFileFilter file(BKQFilter::Include, "*.c");
  job.addSourceNode(source);
  job.addDestNode(machine);
  job.addFilter(file);
  ASSERT_EQ(this->convert(job, "X", 0), 1);
  EXPECT_EQ(left(job, &BKQRestoreJob::enumSourceNodes), 0u);
  EXPECT_EQ(left(job, &BKQRestoreJob::enumDestNodes), 0u);
  EXPECT_EQ(left(job, &BKQRestoreJob::enumFilters), 0u);
  job.resetSourceNodes();
  job.resetDestNodes();
  job.resetFilters();
  EXPECT_EQ(left(job, &BKQRestoreJob::enumSourceNodes), 1u);
  EXPECT_EQ(left(job, &BKQRestoreJob::enumDestNodes), 1u);
  EXPECT_EQ(left(job, &BKQRestoreJob::enumFilters), 1u);
}

#ifndef __SANITIZE_ADDRESS__  // which copies the whole array for every node
TYPED_TEST(JobConversion, WalkOutlastsTheNodeCursors) {
  // The cursors have 16 bits; the walk visits every node once nevertheless.
  BKQRestoreJob job("restore");
  BKQTapeNode source("");
  BKQRestoreNode machine("");
  for (int i = 0; i < 65537; ++i) {
    job.addSourceNode(source);
    job.addDestNode(machine);
  }
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(this->record->ulNumSourceNodes, 65537u);
  EXPECT_EQ(this->record->ulNumDestNodes, 65537u);
  EXPECT_EQ(this->record->pSourceNodes[65536].usNodeType, 3);
  EXPECT_EQ(this->record->pDestNodes[65536].ulMediaCount, 1u);
}
#endif

// Verify jobs.

TYPED_TEST(JobConversion, VerifyReadsTapes) {
  BKQVerifyJob job("verify");
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("verify", {number(4, 2, 29)});

  Library first("first");
  Library second("second");
  job.addSourceNode(first);
  job.addSourceNode(second);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("verify", {number(4, 2, 29), number(12, 4, 2), block(16)});
  EXPECT_EQ(this->sourceNames(), (Names{"first", "second"}));
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[1]), "A1 A2 B1");
  EXPECT_EQ(left(job, &BKQVerifyJob::enumSourceNodes), 0u);

  ASSERT_EQ(this->convert(job, "A", 1), 1);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A1");
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[1]), "A1");
  ASSERT_EQ(this->convert(job, "X", 1), 1);
  EXPECT_EQ(this->record->ulNumSourceNodes, 2u);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[1]), "");
}

// Compare jobs.

TYPED_TEST(JobConversion, CompareAddsAMachine) {
  BKQCompareJob job("compare");
  Library source;
  job.addSourceNode(source);
  NamedDisk drive("C:");
  BKQDiskItem one("\\one");
  BKQDiskItem two("\\two");
  drive.addDiskItem(one);
  drive.addDiskItem(two);
  auto* machine = new BKQWinNTNode("machine");
  machine->addDisk(drive);
  job.setDestination(*machine);
  const auto paths = [&] {
    const auto& disk = this->disk(this->record->pDestNodes[0]);
    std::string all;
    for (unsigned int i = 0; i < disk.ulDiskItemCount; ++i) all += disk.pDiskItems[i].pszPath;
    return all;
  };
  const auto tapes = [&] { return this->tapes(this->record->pSourceNodes[0]); };

  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("compare",
                  {number(4, 2, 11), number(12, 4, 1), block(16), number(20, 4, 1), block(24)});
  expectBlockSize(this->record->pDestNodes, 100);
  expectRows("destination", this->record->pDestNodes, 100,
             {number(0, 2, 9), number(2, 2, 8), text(8, "machine"), number(36, 4, 1), block(40),
              number(56, 4, 0x120)});
  EXPECT_EQ(tapes(), "A1 A2 B1");
  EXPECT_EQ(paths(), "\\one\\two");

  ASSERT_EQ(this->convert(job, "\\other"), 1);
  EXPECT_EQ(tapes(), "A1 A2 B1");
  EXPECT_EQ(paths(), "\\other");

  ASSERT_EQ(this->convert(job, "A", 2), 1);
  EXPECT_EQ(tapes(), "A2");
  EXPECT_EQ(paths(), "\\one\\two");

  ASSERT_EQ(this->convert(job, "B", 0, "\\other"), 1);
  EXPECT_EQ(tapes(), "B1");
  EXPECT_EQ(paths(), "\\other");

  ASSERT_EQ(this->convert(job, nullptr, 0, nullptr), 1);
  EXPECT_EQ(tapes(), "A1 A2 B1");
  EXPECT_EQ(paths(), "\\one\\two");
}

TYPED_TEST(JobConversion, CompareTakesAUnixMachineAsAnyDiskNode) {
  using L = TypeParam;
  BKQCompareJob job("compare");
  NamedDisk disk("/usr", 1);
  auto* machine = new BKQUnixNode("machine");
  machine->setUnixOptions(0x10);
  machine->addDisk(disk);
  job.setDestination(*machine);
  L::unixOptions() = 0x20;  // left by a UNIX node before
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(L::unixOptions(), 0x20u);
  EXPECT_EQ(this->disk(this->record->pDestNodes[0]).ulOptions, 0x21u);
}

TYPED_TEST(JobConversion, CompareDestinationIsNotCalledThroughItsOwnClass) {
  BKQCompareJob job("compare");
  job.setDestination(*new ForeignMachine<BKQDiskNode>(99, "n"));
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(this->record->pDestNodes[0].usNodeType, 99);
}

// Merge jobs.

TYPED_TEST(JobConversion, MergeHasOneSourceAndOneDestination) {
  using L = TypeParam;
  BKQMergeJob job;
  job.setMergeRange(1, 2);
  job.setMergeType(static_cast<BKQJob::BKQMergeScanType>(3));
  job.setMergeFilter("1-2");
  job.setDetailedMerge(1);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("neither", {number(4, 2, 8)});

  auto* source = new Library;
  job.setSource(*source);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("source", {number(4, 2, 8), number(12, 4, 1), block(16)});
  expectBlockSize(this->record->pSourceNodes, 100);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A1 A2 B1");

  NamedDisk disk("/usr", 1);
  auto* machine = new BKQUnixNode("machine");
  machine->setUnixOptions(0x10);
  machine->addDisk(disk);
  job.setDestination(*machine);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("both",
                  {number(4, 2, 8), number(12, 4, 1), block(16), number(20, 4, 1), block(24)});
  expectBlockSize(this->record->pDestNodes, 100);
  // Through its own class: a UNIX machine sets its options.
  EXPECT_EQ(L::unixOptions(), 0x10u);
  EXPECT_EQ(this->disk(this->record->pDestNodes[0]).ulOptions, 0x11u);

  ASSERT_EQ(this->convert(job, "A", 2), 1);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A2");
  ASSERT_EQ(this->convert(job, "X", 0), 1);
  EXPECT_EQ(this->record->ulNumSourceNodes, 1u);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "");

  BKQMergeJob destinationOnly;
  destinationOnly.setDestination(*new ForeignMachine<BKQDiskNode>(99, "n"));
  ASSERT_EQ(this->convert(destinationOnly), 1);
  this->expectJob("destination", {number(4, 2, 8), number(20, 4, 1), block(24)});
  EXPECT_EQ(this->record->pDestNodes[0].usNodeType, L::kPrevious ? 302 : 301);
}

// Scan jobs.

TYPED_TEST(JobConversion, ScanHasOneSource) {
  BKQScanJob job;
  job.setScanRange(1, 2);
  job.setScanType(static_cast<BKQJob::BKQMergeScanType>(3));
  job.setScanFilter("1-2");
  job.setDetailedScan(1);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("without source", {number(4, 2, 14)});

  job.setSource(*new Library);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("scan", {number(4, 2, 14), number(12, 4, 1), block(16)});
  expectBlockSize(this->record->pSourceNodes, 100);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A1 A2 B1");
  ASSERT_EQ(this->convert(job, "B", 1), 1);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "B1");
  ASSERT_EQ(this->convert(job, "", 2), 1);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A2");
}

// A null tape name is no tape's name: all tapes go, those of the session if one is given.
TYPED_TEST(JobConversion, NullTapeNameIsTheEmptyOne) {
  Library source;
  BKQVerifyJob verify("verify");
  verify.addSourceNode(source);
  BKQCompareJob compare("compare");
  compare.addSourceNode(source);
  compare.setDestination(*new BKQWinNTNode("machine"));
  BKQMergeJob merge;
  merge.setSource(*new Library);
  BKQScanJob scan;
  scan.setSource(*new Library);
  const struct {
    unsigned short session;
    const char* tapes;
  } rows[] = {{0, "A1 A2 B1"}, {1, "A1 B1"}, {2, "A2"}, {9, ""}};
  for (const auto& row : rows) {
    const auto expect = [&](auto& job) {
      ASSERT_EQ(this->convert(job, nullptr, row.session), 1);
      ASSERT_EQ(this->record->ulNumSourceNodes, 1u);
      EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), row.tapes);
    };
    expect(verify);
    expect(compare);
    expect(merge);
    expect(scan);
  }
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
