#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

#include <set>
#include <string>

#include "examples/nightly_job.h"
#include "examples/other_jobs.h"
#include "testing/free_records.h"
#include "testing/layouts.h"
#include "testing/nightly_records.h"
#include "testing/stderr_capture.h"
#include "transfer/file_list.h"
#include "transfer/internal/wrap_malloc.h"

// What memory that runs out does to a flattening: the result, the lines on the standard error
// stream, and what the owner finds in `out`.

namespace {

struct Outcome {
  int result;
  void* out;
  std::string lines;
  std::vector<Allocation> seen;
};

void* untouched() {
  static char mark;
  return &mark;
}

template <class Layout, class Job, class... Arguments>
Outcome flatten(Job& job, std::size_t failing, Arguments... arguments) {
  Outcome outcome{0, untouched(), {}, {}};
  outcome.lines = standardErrorOf([&] {
    AllocationWatch watch(failing);
    outcome.result = Layout::convert(job, outcome.out, arguments...);
    outcome.seen = watch.seen();
  });
  freeSessionPasswords();
  return outcome;
}

template <class Layout>
void freeOutcome(const Outcome& outcome) {
  if (outcome.out != untouched()) freeJobRecord(static_cast<typename Layout::Job*>(outcome.out));
}

// Puts the layout's names into lines that give the current ones: every "BK..." record name but that
// of a node's own filters.
template <class Layout>
std::string inLayout(std::string lines) {
  if (!Layout::kPrevious) return lines;
  for (const char* record : {"BKQJDATATRANSFER", "BKNODE", "BKFILTER_FILE", "BKDDISK", "BKDISKITEM",
                             "BKDTAPE", "BKTAPEITEM"}) {
    const std::string name = std::string(" ") + record + "\n";
    const std::size_t at = lines.find(name);
    if (at != std::string::npos) lines.replace(at, name.size(), " " + Layout::name(record) + "\n");
  }
  return lines;
}

// The number of an allocation: the occurrence-th one of this kind and size.
std::size_t numberOf(const std::vector<Allocation>& seen, const Allocation& wanted,
                     int occurrence) {
  for (std::size_t i = 0; i < seen.size(); ++i) {
    if (seen[i] == wanted && --occurrence == 0) return i + 1;
  }
  ADD_FAILURE() << "no such allocation of " << wanted.size << " bytes";
  return 0;
}

struct Row {
  Allocation allocation;
  int occurrence;
  const char* lines;
};

template <class Layout, class Job, class... Arguments>
void expectFailures(Job& job, const std::vector<Row>& rows, Arguments... arguments) {
  const Outcome whole = flatten<Layout>(job, 0, arguments...);
  ASSERT_EQ(whole.result, 1);
  freeOutcome<Layout>(whole);
  for (const Row& row : rows) {
    const std::size_t failing = numberOf(whole.seen, row.allocation, row.occurrence);
    const Outcome outcome = flatten<Layout>(job, failing, arguments...);
    EXPECT_EQ(outcome.result, 0) << row.lines;
    EXPECT_EQ(outcome.lines, inLayout<Layout>(row.lines));
    // Only a base step that fails leaves `out` alone.
    EXPECT_EQ(outcome.out == untouched(), row.allocation.size == 292) << row.lines;
    freeOutcome<Layout>(outcome);
  }
}

template <class Layout>
class FailureTest : public testing::Test {
 protected:
  FailureTest() {
    setenv("TZ", "EST5", 1);
    tzset();
  }
};
TYPED_TEST_SUITE(FailureTest, Layouts);

Allocation mallocOf(std::size_t size) { return {Allocation::kMalloc, size}; }
Allocation reallocOf(std::size_t size) { return {Allocation::kRealloc, size}; }

TYPED_TEST(FailureTest, RecordsOfABackup) {
  BKQBackupJob job("b");
  BKQUnixNode unixNode("u");
  BKQWinNTNode windows("w");
  BKQDisk disk, second;
  BKQDiskItem item("/x"), empty;
  item.addFile("four");     // a list of 5 bytes,
  item.addFile("seventy");  // then of 13
  BKQDirFilter filter, again;
  disk.addDiskItem(item);
  disk.addDiskItem(empty);
  disk.addFilter(filter);
  disk.addFilter(again);
  unixNode.addDisk(disk);
  unixNode.addDisk(second);
  job.addSourceNode(unixNode);
  job.addSourceNode(windows);
  auto* library = new BKQTapeNode("t");
  BKQTape tape, secondTape;
  BKQTapeItem tapeItem, secondTapeItem;
  tape.addTapeItem(tapeItem);
  tape.addTapeItem(secondTapeItem);
  tape.addFilter(filter);
  tape.addFilter(again);
  library->addTape(tape);
  library->addTape(secondTape);
  job.setDestination(*library);
  job.addFilter(filter);
  job.addFilter(again);

#define OF_DISK \
  "Failed to convert Disk\nFailed to convert Base BKQDiskNode\nFailed to convert Unix Node\n"
  expectFailures<TypeParam>(
      job,
      {
          {mallocOf(292), 1, "Failed in malloc BKQJDATATRANSFER\nFailed to convert Base BKQJob\n"},
          {mallocOf(100), 1, "Failed in malloc BKNODE\n"},
          {reallocOf(200), 1, "Failed in realloc BKNODE\n"},
          {mallocOf(52), 1,
           "Failed in malloc BKDDISK\nFailed to convert Base BKQDiskNode\n"
           "Failed to convert Unix Node\n"},
          {reallocOf(104), 1,
           "Failed in realloc BKDDISK\nFailed to convert Base BKQDiskNode\n"
           "Failed to convert Unix Node\n"},
          {mallocOf(32), 1, "Failed in malloc BKDISKITEM\n" OF_DISK},
          {mallocOf(5), 1, "Failed in malloc File List\nFailed to convert DiskItem\n" OF_DISK},
          {reallocOf(13), 1, "Failed in realloc File List\nFailed to convert DiskItem\n" OF_DISK},
          {reallocOf(64), 1, "Failed in realloc BKDISKITEM\n" OF_DISK},
          {mallocOf(32), 2, "Failed in malloc BKFILTER_FILE\n" OF_DISK},
          {reallocOf(64), 2, "Failed in realloc BKFILTER_FILE\n" OF_DISK},
          {mallocOf(100), 2, "Failed in malloc BKNODE\n"},
          {mallocOf(72), 1, "Failed in malloc BKDTAPE\nFailed to convert Tape Node\n"},
          {mallocOf(32), 3, "Failed in malloc BKTAPEITEM\nFailed to convert Tape Node\n"},
          {reallocOf(64), 3, "Failed in realloc BKTAPEITEM\nFailed to convert Tape Node\n"},
          {mallocOf(32), 4, "Failed in malloc BKFILTER_FILE\nFailed to convert Tape Node\n"},
          {reallocOf(64), 4, "Failed in realloc BKFILTER_FILE\nFailed to convert Tape Node\n"},
          {reallocOf(144), 1, "Failed in realloc BKDTAPE\nFailed to convert Tape Node\n"},
          {mallocOf(32), 5, "Failed in malloc BKFILTER_FILE\n"},
          {reallocOf(64), 5, "Failed in realloc BKFILTER_FILE\n"},
      });
#undef OF_DISK
}

// A node's own filters are reported under the current name of the record in both layouts.
TYPED_TEST(FailureTest, OwnFiltersOfNodes) {
  BKQDirFilter filter, again;
  BKQBackupJob job("b");
  BKQUnixNode unixNode("u");
  BKQMacNode mac("m");
  for (BKQNode* node : {static_cast<BKQNode*>(&unixNode), static_cast<BKQNode*>(&mac)}) {
    node->addFilter(filter);
    node->addFilter(again);
    job.addSourceNode(*node);
  }
  const Outcome whole = flatten<TypeParam>(job, 0);
  freeOutcome<TypeParam>(whole);
  const Row rows[] = {
      {mallocOf(32), 1,
       "Failed in malloc BKFILTER_FILE\nFailed to convert Base BKQNode\n"
       "Failed to convert Base BKQDiskNode\nFailed to convert Unix Node\n"},
      {reallocOf(64), 1,
       "Failed in realloc BKFILTER_FILE\nFailed to convert Base BKQNode\n"
       "Failed to convert Base BKQDiskNode\nFailed to convert Unix Node\n"},
      {mallocOf(32), 2,
       "Failed in malloc BKFILTER_FILE\nFailed to convert Base BKQNode\n"
       "Failed to convert Node\n"},
  };
  for (const Row& row : rows) {
    const Outcome outcome =
        flatten<TypeParam>(job, numberOf(whole.seen, row.allocation, row.occurrence));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.lines, row.lines);
    freeOutcome<TypeParam>(outcome);
  }
}

TYPED_TEST(FailureTest, CountsStayOneAboveTheLostArray) {
  BKQBackupJob job("b");
  BKQMacNode a("a"), b("b");
  job.addSourceNode(a);
  job.addSourceNode(b);
  const Outcome whole = flatten<TypeParam>(job, 0);
  freeOutcome<TypeParam>(whole);
  const Outcome outcome = flatten<TypeParam>(job, numberOf(whole.seen, reallocOf(200), 1));
  auto* record = static_cast<typename TypeParam::Job*>(outcome.out);
  EXPECT_EQ(record->ulNumSourceNodes, 2u);
  EXPECT_EQ(record->pSourceNodes, nullptr);
  freeOutcome<TypeParam>(outcome);
}

TYPED_TEST(FailureTest, SecondTextsOfAUnixNode) {
  BKQBackupJob job("b");
  BKQUnixNode node("node");  // a block of 6 bytes
  job.addSourceNode(node);
  const char* extra = "some extra text";  // 15 bytes
  expectFailures<TypeParam>(
      job, {{mallocOf(17), 1, "Failed in malloc pszNodeOSVer\nFailed to convert Unix Node\n"}}, "",
      1, extra);
  expectFailures<TypeParam>(
      job, {{reallocOf(21), 1, "Failed in realloc pszNodeName\nFailed to convert Unix Node\n"}}, "",
      2, extra);
  node.setNodeOSver("5.8");
  node.setNodeName("");
  expectFailures<TypeParam>(
      job, {{reallocOf(20), 1, "Failed in realloc pszNodeOSVer\nFailed to convert Unix Node\n"}},
      "", 1, extra);
  expectFailures<TypeParam>(
      job, {{mallocOf(17), 1, "Failed in malloc pszNodeName\nFailed to convert Unix Node\n"}}, "",
      2, extra);
  // The field is null then, and the option bit unset.
  const Outcome whole = flatten<TypeParam>(job, 0, "", 1, extra);
  freeOutcome<TypeParam>(whole);
  const Outcome outcome =
      flatten<TypeParam>(job, numberOf(whole.seen, reallocOf(20), 1), "", 1, extra);
  auto* record = static_cast<typename TypeParam::Job*>(outcome.out);
  EXPECT_EQ(record->pSourceNodes[0].pszNodeOSVer, nullptr);
  EXPECT_EQ(record->pSourceNodes[0].ulNodeOptions, 0x120u);
  freeOutcome<TypeParam>(outcome);
}

TYPED_TEST(FailureTest, OverridePathOfACompare) {
  BKQCompareJob job("c");
  auto* destination = new BKQMacNode("m");
  BKQDisk disk;
  BKQDiskItem item("x");
  disk.addDiskItem(item);
  destination->addDisk(disk);
  job.setDestination(*destination);
  BKQTapeNode source("t");
  BKQTape tape;
  source.addTape(tape);
  job.addSourceNode(source);
  expectFailures<TypeParam>(
      job,
      {
          {mallocOf(292), 1,
           "Failed in malloc BKQJDATATRANSFER\nFailed to convert Base BKQVerifyJob\n"},
          {mallocOf(100), 1, "Failed in malloc BKNODE\nFailed to convert Base BKQVerifyJob\n"},
          {mallocOf(72), 1,
           "Failed in malloc BKDTAPE\nFailed to convert Tape Node\n"
           "Failed to convert Base BKQVerifyJob\n"},
          {mallocOf(100), 2, "Failed in malloc BKNODE\n"},
          {mallocOf(52), 1, "Failed in malloc BKDDISK\nFailed to convert Disk Node\n"},
          {mallocOf(32), 1,
           "Failed in malloc BKDISKITEM\nFailed to convert Disk\nFailed to convert Disk Node\n"},
      },
      "/override");
}

TYPED_TEST(FailureTest, RecordsOfARestore) {
  BKQRestoreJob job("r");
  BKQTapeNode source("t"), secondSource("t");
  job.addSourceNode(source);
  job.addSourceNode(secondSource);
  BKQRestoreNode plain("p", "/disk");
  BKQDBRestoreNode database("d", "db");
  database.setDBuser("user", "password");  // 14 bytes
  job.addDestNode(plain);
  job.addDestNode(database);
  BKQDirFilter filter, again;
  job.addFilter(filter);
  job.addFilter(again);
  expectFailures<TypeParam>(
      job,
      {
          {mallocOf(292), 1, "Failed in malloc BKQJDATATRANSFER\nFailed to convert Base BKQJob\n"},
          {mallocOf(100), 1, "Failed in malloc BKNODE\n"},
          {reallocOf(200), 1, "Failed in realloc BKNODE\n"},
          {mallocOf(100), 2, "Failed in malloc BKNODE\n"},
          {mallocOf(52), 1, "Failed in malloc BKDDISK\nFailed to convert Restore Node\n"},
          {mallocOf(32), 1, "Failed in malloc BKDISKITEM\nFailed to convert Restore Node\n"},
          {reallocOf(200), 2, "Failed in realloc BKNODE\n"},
          {mallocOf(52), 2,
           "Failed in malloc BKDDISK\nFailed to convert Base BKQRestoreNode\n"
           "Failed to convert DB Restore Node\n"},
          {mallocOf(32), 2,
           "Failed in malloc BKDISKITEM\nFailed to convert Base BKQRestoreNode\n"
           "Failed to convert DB Restore Node\n"},
          {mallocOf(14), 1, "Failed in malloc pszDiskPW2\nFailed to convert DB Restore Node\n"},
          {mallocOf(32), 3, "Failed in malloc BKFILTER_FILE\n"},
          {reallocOf(64), 1, "Failed in realloc BKFILTER_FILE\n"},
      });
}

TYPED_TEST(FailureTest, RecordsOfVerifyMergeAndScan) {
  BKQVerifyJob verify("v");
  BKQTapeNode first("t"), second("t");
  verify.addSourceNode(first);
  verify.addSourceNode(second);
  expectFailures<TypeParam>(verify, {{mallocOf(292), 1, "Failed in malloc BKQJDATATRANSFER\n"},
                                     {mallocOf(100), 1, "Failed in malloc BKNODE\n"},
                                     {reallocOf(200), 1, "Failed in realloc BKNODE\n"}});
  BKQTape tape;
  BKQMergeJob merge;
  auto* source = new BKQTapeNode("t");
  source->addTape(tape);
  merge.setSource(*source);
  auto* destination = new BKQMacNode("m");
  BKQDisk disk;
  destination->addDisk(disk);
  merge.setDestination(*destination);
  expectFailures<TypeParam>(
      merge,
      {{mallocOf(292), 1, "Failed in malloc BKQJDATATRANSFER\nFailed to convert Base BKQJob\n"},
       {mallocOf(100), 1, "Failed in malloc BKNODE\n"},
       {mallocOf(72), 1, "Failed in malloc BKDTAPE\nFailed to convert Tape Node\n"},
       {mallocOf(100), 2, "Failed in malloc BKNODE\n"},
       {mallocOf(52), 1, "Failed in malloc BKDDISK\nFailed to convert Disk Node\n"}});
  BKQScanJob scan;
  source = new BKQTapeNode("t");
  source->addTape(tape);
  scan.setSource(*source);
  expectFailures<TypeParam>(
      scan,
      {{mallocOf(292), 1, "Failed in malloc BKQJDATATRANSFER\nFailed to convert Base BKQJob\n"},
       {mallocOf(100), 1, "Failed in malloc BKNODE\n"},
       {mallocOf(72), 1, "Failed in malloc BKDTAPE\nFailed to convert Tape Node\n"}});
}

TEST(ExtensionFailure, RecordOfATapeExtension) {
  BKQScanJob scan;
  auto* source = new BKQTapeNode("t");
  BKQTape tape;
  BKQTapeXtension extension;
  tape.setTapeXtension(extension);
  source->addTape(tape);
  scan.setSource(*source);
  expectFailures<Current>(
      scan, {{mallocOf(64), 1, "Failed in malloc BKDTAPEX\nFailed to convert Tape Node\n"}});
}

// Every allocation of a rich job fails in turn: a record or list ends the flattening with lines, a
// text leaves its field null and nothing else.
template <class Layout, class Job, class... Arguments>
void failEach(Job& job, Arguments... arguments) {
  const Outcome whole = flatten<Layout>(job, 0, arguments...);
  ASSERT_EQ(whole.result, 1);
  ASSERT_EQ(whole.lines, "");
  freeOutcome<Layout>(whole);
  for (std::size_t failing = 1; failing <= whole.seen.size(); ++failing) {
    const Outcome outcome = flatten<Layout>(job, failing, arguments...);
    EXPECT_EQ(outcome.result == 0, !outcome.lines.empty()) << failing;
    if (outcome.result == 1) {
      // The flattening went on. It makes no more allocations than a whole one, and fewer only
      // where the text would have been copied on: a session password.
      EXPECT_LE(outcome.seen.size(), whole.seen.size()) << failing;
      for (std::size_t i = 0; i < failing; ++i) {
        EXPECT_TRUE(outcome.seen[i] == whole.seen[i]) << failing;
      }
      EXPECT_EQ(whole.seen[failing - 1].kind, Allocation::kMalloc) << failing;
    } else {
      EXPECT_EQ(outcome.seen.size(), failing) << failing;
      EXPECT_EQ(outcome.lines.substr(0, 10), "Failed in ") << failing;
    }
    freeOutcome<Layout>(outcome);
  }
}

TYPED_TEST(FailureTest, EachAllocationOfRichJobs) {
  NightlyBackup nightly;
  failEach<TypeParam>(nightly.job());
  failEach<TypeParam>(nightly.job(), "ledger", 1, "extra");
  Keeper keeper;
  BKQRestoreJob restore("r");
  defineRestore(restore, keeper);
  failEach<TypeParam>(restore);
  BKQMergeJob merge;
  defineMerge(merge, keeper);
  failEach<TypeParam>(merge);
}

TEST(FileList, LengthOfItsFirstTexts) {
  const char list[] = "a\0bc\0def";
  EXPECT_EQ(bkoq::listLength(list, -1), 0u);
  EXPECT_EQ(bkoq::listLength(list, 0), 0u);
  EXPECT_EQ(bkoq::listLength(list, 1), 2u);
  EXPECT_EQ(bkoq::listLength(list, 2), 5u);
  EXPECT_EQ(bkoq::listLength(list, 3), 9u);
  EXPECT_EQ(bkoq::listLength(nullptr, 3), 0u);
}

}  // namespace
