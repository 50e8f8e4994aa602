// Restore jobs as record trees, in both layouts and both forms of the conversion.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/foreign_attachments.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/job_conversion.h"
#include "tests/support/name_list.h"
#include "tests/support/rows.h"
#include "tests/support/sanitizers.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

template <class L>
class RestoreConversion : public JobConversion<L> {};
TYPED_TEST_SUITE(RestoreConversion, Layouts, );

// Restore jobs.

TYPED_TEST(RestoreConversion, RestoreReadsTapesAndWritesToDestinations) {
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

TYPED_TEST(RestoreConversion, RestoreSelectsTapes) {
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

TYPED_TEST(RestoreConversion, RestorePasswordReachesTapesOnly) {
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

TYPED_TEST(RestoreConversion, RestoreTapesCarryNoMethodOfABackup) {
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

TYPED_TEST(RestoreConversion, RestoreWithoutSourcesDropsItsFilters) {
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

TYPED_TEST(RestoreConversion, RestoreIgnoresWhatItsFiltersAnswer) {
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

TYPED_TEST(RestoreConversion, RestoreDestinationsAreCalledThroughTheirOwnClassesSourcesAreNot) {
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

TYPED_TEST(RestoreConversion, RestoreCursorsStandAtTheEnd) {
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

#ifndef BKOQ_WITH_ASAN  // which copies the whole array for every node
TYPED_TEST(RestoreConversion, WalkOutlastsTheNodeCursors) {
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

}  // namespace
}  // namespace bkoq::test
