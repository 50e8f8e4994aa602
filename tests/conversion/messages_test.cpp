// What conversions report when something of a client's own fails inside them, in both layouts: the
// exact lines, from the innermost part outwards, and what is left in the record.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/foreign_attachments.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/rows.h"
#include "tests/support/stderr_capture.h"

namespace bkoq::test {
namespace {

std::string failedToConvert(std::initializer_list<const char*> parts) {
  std::string lines;
  for (const char* part : parts) lines += std::string("Failed to convert ") + part + "\n";
  return lines;
}

template <class L>
class Messages : public testing::Test {
 protected:
  ~Messages() override { clear(); }

  // Flattens the job, expects the result and the lines, and keeps the record.
  template <class Job, class... Arguments>
  void expect(int result, const std::string& lines, Job& job, Arguments&&... arguments) {
    clear();
    void* out = &untouched_;
    int answer = -1;
    const std::string written = standardErrorOf(
        [&] { answer = L::convert(job, out, std::forward<Arguments>(arguments)...); });
    EXPECT_EQ(answer, result);
    EXPECT_EQ(written, lines);
    if (out != &untouched_) record = static_cast<typename L::Job*>(out);
  }

  // The same, with a failure of the base step: nothing reaches the caller.
  template <class Job>
  void expectBaseFailure(std::initializer_list<const char*> parts, Job& job) {
    expect(0, failedToConvert(parts), job);
    EXPECT_EQ(record, nullptr);
  }

  typename L::Job* record = nullptr;
  ForeignFilter failing{0};

 private:
  void clear() {
    freeJobRecord(record);
    record = nullptr;
    freeSessionPasswords();
  }

  char untouched_ = 0;
};

TYPED_TEST_SUITE(Messages, Layouts, );

// A failing filter of a node or a disk of a backup's source.

template <class Node>
struct Source {
  Source() { node.addDisk(disk); }
  Node node{"node"};
  BKQDisk disk;
};

TYPED_TEST(Messages, NodeFilterOfAUnixSource) {
  Source<BKQUnixNode> source;
  source.node.addFilter(this->failing);
  source.node.addFilter(this->failing);  // is not reached
  BKQBackupJob job;
  job.addSourceNode(source.node);
  job.addSourceNode(source.node);
  this->expect(0, failedToConvert({"Filter", "Base BKQNode", "Base BKQDiskNode", "Unix Node"}),
               job);
  // The record is the caller's, filled as far as it came.
  ASSERT_NE(this->record, nullptr);
  expectRows("job", this->record, 292, {number(4, 2, 1), number(12, 4, 1), block(16)});
  const auto& node = this->record->pSourceNodes[0];
  EXPECT_STREQ(node.pszNodeName, "node");
  EXPECT_EQ(node.ulMediaCount, 0u);
  ASSERT_EQ(node.ulFilterCount, 1u);
  const unsigned int mark =
      TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark;
  expectRows("filter", node.pFilters, 32, {number(0, 2, mark)});
}

// Other writers of the stream cannot come between the parts of a line.
TYPED_TEST(Messages, EachLineIsOneWrite) {
  Source<BKQUnixNode> source;
  source.node.addFilter(this->failing);
  BKQBackupJob job;
  job.addSourceNode(source.node);
  void* out = nullptr;
  int result = -1;
  const std::vector<std::string> writes =
      standardErrorWritesOf([&] { result = TypeParam::convert(job, out); });
  freeJobRecord(static_cast<typename TypeParam::Job*>(out));
  EXPECT_EQ(result, 0);
  EXPECT_EQ(writes, (std::vector<std::string>{
                        "Failed to convert Filter\n", "Failed to convert Base BKQNode\n",
                        "Failed to convert Base BKQDiskNode\n", "Failed to convert Unix Node\n"}));
}

TYPED_TEST(Messages, NodeFilterOfAnotherSource) {
  Source<BKQWinNTNode> source;
  source.node.addFilter(this->failing);
  BKQBackupJob job;
  job.addSourceNode(source.node);
  this->expect(0, failedToConvert({"Filter", "Base BKQNode", "Node"}), job);
  EXPECT_EQ(this->record->ulNumSourceNodes, 1u);
  EXPECT_EQ(this->record->pSourceNodes[0].ulMediaCount, 0u);
}

TYPED_TEST(Messages, DiskFilterOfAUnixSource) {
  Source<BKQUnixNode> source;
  source.disk.addFilter(this->failing);
  BKQBackupJob job;
  job.addSourceNode(source.node);
  this->expect(0, failedToConvert({"Filter", "Disk", "Base BKQDiskNode", "Unix Node"}), job, "", 1,
               "extra");
  // The second text comes after the disks.
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x120u);
  EXPECT_EQ(this->record->pSourceNodes[0].ulMediaCount, 1u);
}

TYPED_TEST(Messages, DiskFilterOfAnotherSource) {
  Source<BKQWinNTNode> source;
  source.disk.addFilter(this->failing);
  BKQBackupJob job;
  job.addSourceNode(source.node);
  this->expect(0, failedToConvert({"Filter", "Disk", "Node"}), job);
  const auto& node = this->record->pSourceNodes[0];
  ASSERT_EQ(node.ulMediaCount, 1u);
  EXPECT_EQ(static_cast<typename TypeParam::Disk*>(node.pMedia)->ulFilterCount, 1u);
}

// A failing filter of a machine that a job writes to or compares with.

TYPED_TEST(Messages, FiltersOfAMachineAsDestination) {
  for (const bool onNode : {true, false}) {
    BKQDisk disk;
    auto* compared = new BKQWinNTNode("node");
    auto* merged = new BKQWinNTNode("node");
    compared->addDisk(disk);
    merged->addDisk(disk);
    if (onNode) {
      compared->addFilter(this->failing);
      merged->addFilter(this->failing);
    } else {
      disk.addFilter(this->failing);
    }
    const std::string lines = onNode ? failedToConvert({"Filter", "Base BKQNode", "Disk Node"})
                                     : failedToConvert({"Filter", "Disk", "Disk Node"});
    BKQCompareJob compare("compare");
    compare.setDestination(*compared);
    this->expect(0, lines, compare);
    EXPECT_EQ(this->record->ulNumDestNodes, 1u);
    BKQMergeJob merge;
    merge.setDestination(*merged);
    this->expect(0, lines, merge);
    EXPECT_EQ(this->record->ulNumDestNodes, 1u);
  }
}

TYPED_TEST(Messages, UnixMachineOfAComparisonIsAnyDiskNode) {
  BKQCompareJob job("compare");
  auto* node = new BKQUnixNode("node");
  node->addFilter(this->failing);
  job.setDestination(*node);
  this->expect(0, failedToConvert({"Filter", "Base BKQNode", "Disk Node"}), job);
}

// A failing filter of a tape node or a tape, in every kind of job that has one.

template <class Test>
void expectTapeFailures(Test& test, bool onNode, BKQFilter& failing,
                        void (Test::*expect)(const std::string& lines, BKQJob& job)) {
  BKQTape tape("group", "tape");
  if (!onNode) tape.addFilter(failing);
  const auto fill = [&](BKQTapeNode& node) -> BKQTapeNode& {
    if (onNode) node.addFilter(failing);
    node.addTape(tape);
    return node;
  };
  BKQTapeNode source("library");
  fill(source);
  const std::string lines = onNode ? failedToConvert({"Filter", "Base BKQNode", "Tape Node"})
                                   : failedToConvert({"Filter", "Tape Node"});
  BKQBackupJob backup;
  backup.setDestination(fill(*new BKQTapeNode("library")));
  (test.*expect)(lines, backup);
  BKQRestoreJob restore("restore");
  restore.addSourceNode(source);
  (test.*expect)(lines, restore);
  BKQDatabaseRestoreJob database("restore");
  database.addSourceNode(source);
  (test.*expect)(lines, database);
  BKQVerifyJob verify("verify");
  verify.addSourceNode(source);
  (test.*expect)(lines, verify);
  BKQMergeJob merge;
  merge.setSource(fill(*new BKQTapeNode("library")));
  (test.*expect)(lines, merge);
  BKQScanJob scan;
  scan.setSource(fill(*new BKQTapeNode("library")));
  (test.*expect)(lines, scan);
  BKQCompareJob compare("compare");
  compare.addSourceNode(source);
  compare.setDestination(*new BKQWinNTNode("node"));
  (test.*expect)(lines + failedToConvert({"Base BKQVerifyJob"}), compare);
}

template <class L>
class TapeMessages : public Messages<L> {
 public:
  void expectLines(const std::string& lines, BKQJob& job) {
    this->expect(0, lines, job);
    // The node that failed is counted, and what comes after it is not begun.
    const bool isBackup = this->record->usJobType == 1;
    EXPECT_EQ(this->record->ulNumSourceNodes, isBackup ? 0u : 1u);
    EXPECT_EQ(this->record->ulNumDestNodes, isBackup ? 1u : 0u);
  }
};

TYPED_TEST_SUITE(TapeMessages, Layouts, );

TYPED_TEST(TapeMessages, NodeFilter) {
  expectTapeFailures<TapeMessages<TypeParam>>(*this, true, this->failing,
                                              &TapeMessages<TypeParam>::expectLines);
}

TYPED_TEST(TapeMessages, TapeFilter) {
  expectTapeFailures<TapeMessages<TypeParam>>(*this, false, this->failing,
                                              &TapeMessages<TypeParam>::expectLines);
}

// A failing filter of a restore destination.

TYPED_TEST(Messages, FilterOfARestoreNode) {
  BKQRestoreJob job("restore");
  BKQRestoreNode node("node");
  node.addFilter(this->failing);
  job.addDestNode(node);
  this->expect(0, failedToConvert({"Filter", "Base BKQNode", "Restore Node"}), job);
  EXPECT_EQ(this->record->ulNumDestNodes, 1u);
  EXPECT_EQ(this->record->pDestNodes[0].usNodeType, 25);  // the actual type comes later
}

TYPED_TEST(Messages, FilterOfADatabaseRestoreNode) {
  BKQRestoreJob job("restore");
  BKQDBRestoreNode node("node");
  node.addFilter(this->failing);
  job.addDestNode(node);
  this->expect(
      0, failedToConvert({"Filter", "Base BKQNode", "Base BKQRestoreNode", "DB Restore Node"}),
      job);
}

// A failing filter of the job.

TYPED_TEST(Messages, JobFilterOfABackup) {
  Source<BKQUnixNode> source;
  BKQBackupJob job;
  job.addSourceNode(source.node);
  job.addSourceNode(source.node);
  job.addFilter(this->failing);
  this->expect(0, failedToConvert({"Filter"}), job);
  EXPECT_EQ(this->record->pSourceNodes[0].ulFilterCount, 1u);
  EXPECT_EQ(this->record->pSourceNodes[1].ulFilterCount, 0u);
}

TYPED_TEST(Messages, JobFilterOfARestoreIsNotAsked) {
  BKQTapeNode source("library");
  BKQRestoreJob job("restore");
  job.addSourceNode(source);
  job.addFilter(this->failing);
  this->expect(1, "", job);
  const unsigned int mark =
      TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark;
  expectRows("filter", this->record->pSourceNodes[0].pFilters, 32, {number(0, 2, mark)});
}

// Classes of a client's own that answer 0.

template <class Base>
class FailingNode : public Base {
 public:
  explicit FailingNode(unsigned int type) : type_(type) {}
  unsigned int nodeType() const override { return type_; }
  int convertToBK2(void*& /*rec*/) override { return 0; }
  int convertToBK2_old(void*& /*rec*/) override { return 0; }

 private:
  unsigned int type_;
};

TYPED_TEST(Messages, FailingDestinations) {
  BKQBackupJob backup;
  backup.setDestination(*new FailingNode<BKQTapeNode>(24));
  this->expect(0, failedToConvert({"Tape Node"}), backup);
  EXPECT_EQ(this->record->ulNumDestNodes, 1u);
  expectRows("destination", this->record->pDestNodes, 100, {});

  BKQMergeJob merge;
  merge.setDestination(*new FailingNode<BKQDiskNode>(9));
  this->expect(0, failedToConvert({"Disk Node"}), merge);
  expectRows("destination", this->record->pDestNodes, 100, {});

  FailingNode<BKQRestoreNode> machine(25);
  BKQRestoreJob restore("restore");
  restore.addDestNode(machine);
  this->expect(0, failedToConvert({"Restore Node"}), restore);

  // The node's type chooses the words, whatever its class.
  FailingNode<BKQRestoreNode> database(27);
  FailingNode<BKQDBRestoreNode> noDatabase(25);
  BKQRestoreJob databaseRestore("restore");
  databaseRestore.addDestNode(database);
  this->expect(0, failedToConvert({"DB Restore Node"}), databaseRestore);
  BKQRestoreJob plainRestore("restore");
  plainRestore.addDestNode(noDatabase);
  this->expect(0, failedToConvert({"Restore Node"}), plainRestore);
}

// Source nodes of a backup whose class cannot take the conversion that their type asks for.

class TypedMachine : public BKQDiskNode {
 public:
  explicit TypedMachine(unsigned int type) : type_(type) {}
  unsigned int nodeType() const override { return type_; }

 private:
  unsigned int type_;
};

TYPED_TEST(Messages, SourceNodesOfTheWrongClass) {
  BKQTapeNode tapes;
  BKQRestoreNode restore;
  BKQDBRestoreNode database;
  TypedMachine machine(3);
  FailingNode<BKQTapeNode> unixTapes(3);
  const struct {
    BKQNode& node;
    const char* part;
  } cases[] = {
      {tapes, "Node"},        {restore, "Node"},        {database, "Node"},
      {machine, "Unix Node"}, {unixTapes, "Unix Node"},
  };
  for (const auto& c : cases) {
    // Each node is asked for itself: that those before are of a right class tells nothing.
    BKQWinNTNode first("first");
    BKQUnixNode second("second");
    BKQBackupJob job;
    job.addSourceNode(first);
    job.addSourceNode(second);
    job.addSourceNode(c.node);
    job.addSourceNode(first);
    this->expect(0, failedToConvert({c.part}), job);
    ASSERT_EQ(this->record->ulNumSourceNodes, 3u);
    EXPECT_STREQ(this->record->pSourceNodes[0].pszNodeName, "first");
    EXPECT_STREQ(this->record->pSourceNodes[1].pszNodeName, "second");
    expectRows("the node that failed", &this->record->pSourceNodes[2], 100, {});
  }
}

TYPED_TEST(Messages, SourceNodeOfTheWrongClassIsSkippedByName) {
  BKQTapeNode tapes("library");
  BKQBackupJob job;
  job.addSourceNode(tapes);
  this->expect(1, "", job, "other");
  EXPECT_EQ(this->record->ulNumSourceNodes, 0u);
}

TYPED_TEST(Messages, ComparisonWithoutDestination) {
  BKQTapeNode source("library");
  BKQCompareJob job("compare");
  job.addSourceNode(source);
  this->expect(0, failedToConvert({"Disk Node"}), job);
  EXPECT_EQ(this->record->ulNumSourceNodes, 1u);
  ASSERT_EQ(this->record->ulNumDestNodes, 1u);
  expectRows("destination", this->record->pDestNodes, 100, {});
}

// Failures of the base step. Nothing of the record reaches the caller, and nothing is freed: the
// client's class, which sees the block inside it, can tell.

template <class L>
class BaseStepMessages : public Messages<L> {
 protected:
  ~BaseStepMessages() override { freeJobRecord(abandoned_); }

  void failEMail(BKQJob& job) {
    job.setOwner("owner");
    job.setEMailInfo(*new ForeignEMail([this](void* block, BkoqLayout) {
      abandon(static_cast<char*>(block) - ForeignEMail::kBlockOffset);
      return 0;
    }));
  }

  void failSchedule(BKQJob& job) {
    job.setOwner("owner");
    job.setSchedule(*new ForeignSchedule([this](void* block, BkoqLayout) {
      abandon(static_cast<char*>(block) - ForeignSchedule::kBlockOffset);
      return 0;
    }));
  }

  void expectAbandoned(std::initializer_list<const char*> parts, BKQJob& job) {
    this->expectBaseFailure(parts, job);
    ASSERT_NE(abandoned_, nullptr);
    EXPECT_EQ(abandoned_->usJobType, job.jobType());
    EXPECT_STREQ(abandoned_->pszOwner, "owner");
    EXPECT_EQ(abandoned_->ulNumSourceNodes, 0u);
    EXPECT_EQ(abandoned_->ulNumDestNodes, 0u);
    // The step had set its variables by then.
    EXPECT_EQ(L::spanTapeTimeout(), 9999u);
  }

  // Every kind of job, with a destination for the one that needs it.
  struct Jobs {
    Jobs() { compare.setDestination(*new BKQWinNTNode("node")); }
    BKQJob base;
    BKQBackupJob backup;
    BKQRotationBackupJob rotation;
    BKQDatabaseBackupJob databaseBackup{"n"};
    BKQRestoreJob restore{"n"};
    BKQDatabaseRestoreJob databaseRestore{"n"};
    BKQVerifyJob verify{"n"};
    BKQCompareJob compare{"n"};
    BKQMergeJob merge;
    BKQScanJob scan;
  };

 private:
  void abandon(void* record) {
    freeJobRecord(abandoned_);
    abandoned_ = static_cast<typename L::Job*>(record);
  }

  typename L::Job* abandoned_ = nullptr;
};

TYPED_TEST_SUITE(BaseStepMessages, Layouts, );

TYPED_TEST(BaseStepMessages, FailingEMail) {
  typename BaseStepMessages<TypeParam>::Jobs jobs;
  for (BKQJob* job :
       {&jobs.base, static_cast<BKQJob*>(&jobs.backup), static_cast<BKQJob*>(&jobs.rotation),
        static_cast<BKQJob*>(&jobs.databaseBackup), static_cast<BKQJob*>(&jobs.restore),
        static_cast<BKQJob*>(&jobs.databaseRestore), static_cast<BKQJob*>(&jobs.verify),
        static_cast<BKQJob*>(&jobs.compare), static_cast<BKQJob*>(&jobs.merge),
        static_cast<BKQJob*>(&jobs.scan)}) {
    this->failEMail(*job);
  }
  this->expectAbandoned({"EmailInfo"}, jobs.base);
  this->expectAbandoned({"EmailInfo", "Base BKQJob"}, jobs.backup);
  this->expectAbandoned({"EmailInfo", "Base BKQJob"}, jobs.rotation);
  this->expectAbandoned({"EmailInfo", "Base BKQJob"}, jobs.databaseBackup);
  this->expectAbandoned({"EmailInfo", "Base BKQJob"}, jobs.restore);
  this->expectAbandoned({"EmailInfo", "Base BKQJob"}, jobs.databaseRestore);
  this->expectAbandoned({"EmailInfo"}, jobs.verify);
  this->expectAbandoned({"EmailInfo", "Base BKQVerifyJob"}, jobs.compare);
  this->expectAbandoned({"EmailInfo", "Base BKQJob"}, jobs.merge);
  this->expectAbandoned({"EmailInfo", "Base BKQJob"}, jobs.scan);
}

TYPED_TEST(BaseStepMessages, FailingScheduleIsReportedByItselfOnly) {
  typename BaseStepMessages<TypeParam>::Jobs jobs;
  for (BKQJob* job :
       {&jobs.base, static_cast<BKQJob*>(&jobs.backup), static_cast<BKQJob*>(&jobs.rotation),
        static_cast<BKQJob*>(&jobs.databaseBackup), static_cast<BKQJob*>(&jobs.restore),
        static_cast<BKQJob*>(&jobs.databaseRestore), static_cast<BKQJob*>(&jobs.verify),
        static_cast<BKQJob*>(&jobs.compare), static_cast<BKQJob*>(&jobs.merge),
        static_cast<BKQJob*>(&jobs.scan)}) {
    this->failSchedule(*job);
  }
  this->expectAbandoned({}, jobs.base);
  this->expectAbandoned({"Base BKQJob"}, jobs.backup);
  this->expectAbandoned({"Base BKQJob"}, jobs.rotation);
  this->expectAbandoned({"Base BKQJob"}, jobs.databaseBackup);
  this->expectAbandoned({"Base BKQJob"}, jobs.restore);
  this->expectAbandoned({"Base BKQJob"}, jobs.databaseRestore);
  this->expectAbandoned({}, jobs.verify);
  this->expectAbandoned({"Base BKQVerifyJob"}, jobs.compare);
  this->expectAbandoned({"Base BKQJob"}, jobs.merge);
  this->expectAbandoned({"Base BKQJob"}, jobs.scan);
}

TYPED_TEST(BaseStepMessages, EMailComesBeforeTheSchedule) {
  BKQJob job;
  this->failSchedule(job);
  this->failEMail(job);
  this->expectAbandoned({"EmailInfo"}, job);
}

TYPED_TEST(BaseStepMessages, BackupStateIsNotSetAfterAFailure) {
  using L = TypeParam;
  BKQBackupJob job;
  job.setEncryptionOn();
  job.setSessionPassword("secret");
  this->failSchedule(job);
  this->expectAbandoned({"Base BKQJob"}, job);
  EXPECT_EQ(L::diskEncryption(), 0u);
  EXPECT_EQ(L::diskSessionPassword(), nullptr);
}

// Arrays that stand in the record already. Only a client's class that runs inside the base step,
// and finds the record around its block, can put them there.

template <class L>
class ArraysInUse : public Messages<L> {
 protected:
  using Node = typename L::Node;

  // Lets the job's e-mail, or its schedule, hang an array of one node in the record.
  static void presetByEMail(BKQJob& job, Node* L::Job::*nodes, Node*& preset) {
    job.setEMailInfo(*new ForeignEMail([nodes, &preset](void* block, BkoqLayout) {
      return hang(static_cast<char*>(block) - ForeignEMail::kBlockOffset, nodes, preset);
    }));
  }
  static void presetBySchedule(BKQJob& job, Node* L::Job::*nodes, Node*& preset) {
    job.setSchedule(*new ForeignSchedule([nodes, &preset](void* block, BkoqLayout) {
      return hang(static_cast<char*>(block) - ForeignSchedule::kBlockOffset, nodes, preset);
    }));
  }

 private:
  static int hang(char* start, Node* L::Job::*nodes, Node*& preset) {
    auto* record = reinterpret_cast<typename L::Job*>(start);
    preset = static_cast<Node*>(calloc(1, sizeof(Node)));
    preset->usDeviceType = 99;
    record->*nodes = preset;
    return 1;
  }
};

TYPED_TEST_SUITE(ArraysInUse, Layouts, );

TYPED_TEST(ArraysInUse, MergeLeavesItsDestinationsAsTheyAre) {
  using Job = typename TypeParam::Job;
  typename TypeParam::Node* preset = nullptr;
  BKQMergeJob byEMail;
  BKQMergeJob bySchedule;
  this->presetByEMail(byEMail, &Job::pDestNodes, preset);
  this->presetBySchedule(bySchedule, &Job::pDestNodes, preset);
  for (BKQMergeJob* job : {&byEMail, &bySchedule}) {
    job->setDestination(*new BKQWinNTNode("node"));
    this->expect(1, "", *job);
    EXPECT_EQ(this->record->ulNumDestNodes, 1u);
    EXPECT_EQ(this->record->pDestNodes, preset);
    expectRows("destination", preset, 100, {number(32, 2, 99)});
    EXPECT_EQ(this->record->ulNumSourceNodes, 0u);
  }
}

TYPED_TEST(ArraysInUse, MergeLeavesItsSourcesAndGoesOnToItsDestination) {
  using Job = typename TypeParam::Job;
  typename TypeParam::Node* preset = nullptr;
  BKQMergeJob job;
  job.setSource(*new BKQTapeNode("library"));
  job.setDestination(*new BKQWinNTNode("node"));
  this->presetByEMail(job, &Job::pSourceNodes, preset);
  this->expect(1, "", job);
  EXPECT_EQ(this->record->ulNumSourceNodes, 1u);
  EXPECT_EQ(this->record->pSourceNodes, preset);
  expectRows("source", preset, 100, {number(32, 2, 99)});
  ASSERT_EQ(this->record->ulNumDestNodes, 1u);
  EXPECT_STREQ(this->record->pDestNodes[0].pszNodeName, "node");
}

TYPED_TEST(ArraysInUse, ScanLeavesItsSourcesAsTheyAre) {
  using Job = typename TypeParam::Job;
  typename TypeParam::Node* preset = nullptr;
  BKQScanJob byEMail;
  BKQScanJob bySchedule;
  this->presetByEMail(byEMail, &Job::pSourceNodes, preset);
  this->presetBySchedule(bySchedule, &Job::pSourceNodes, preset);
  for (BKQScanJob* job : {&byEMail, &bySchedule}) {
    job->setSource(*new BKQTapeNode("library"));
    this->expect(1, "", *job);
    EXPECT_EQ(this->record->ulNumSourceNodes, 1u);
    EXPECT_EQ(this->record->pSourceNodes, preset);
    expectRows("source", preset, 100, {number(32, 2, 99)});
  }
}

TYPED_TEST(ArraysInUse, CompareFillsTheFirstDestination) {
  using Job = typename TypeParam::Job;
  typename TypeParam::Node* preset = nullptr;
  BKQCompareJob byEMail("compare");
  BKQCompareJob bySchedule("compare");
  this->presetByEMail(byEMail, &Job::pDestNodes, preset);
  this->presetBySchedule(bySchedule, &Job::pDestNodes, preset);
  for (BKQCompareJob* job : {&byEMail, &bySchedule}) {
    job->setDestination(*new BKQWinNTNode("node"));
    this->expect(1, "", *job);
    EXPECT_EQ(this->record->ulNumDestNodes, 1u);
    EXPECT_EQ(this->record->pDestNodes, preset);
    expectRows("destination", preset, 100,
               {number(0, 2, 9), number(2, 2, 8), text(8, "node"), number(56, 4, 0x120)});
  }
}

TYPED_TEST(ArraysInUse, BackupTakesANewDestination) {
  using Job = typename TypeParam::Job;
  typename TypeParam::Node* preset = nullptr;
  BKQBackupJob job;
  job.setDestination(*new BKQTapeNode("library"));
  this->presetByEMail(job, &Job::pDestNodes, preset);
  this->expect(1, "", job);
  EXPECT_EQ(this->record->ulNumDestNodes, 1u);
  ASSERT_NE(this->record->pDestNodes, preset);
  EXPECT_STREQ(this->record->pDestNodes[0].pszNodeName, "library");
  free(preset);
}

}  // namespace
}  // namespace bkoq::test
