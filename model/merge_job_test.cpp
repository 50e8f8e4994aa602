#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "examples/nightly_job.h"
#include "examples/other_jobs.h"
#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"
#include "tests/support/foreign_attachments.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/heap.h"
#include "tests/support/job_copies.h"
#include "tests/support/parts.h"
#include "tests/support/private_member.h"

namespace bkoq::test {
namespace {

TEST(MergeJob, ClonesInScarceMemory) {
  Keeper keeper;
  BKQMergeJob job;
  defineMerge(job, keeper);
  expectClonesInScarceMemory(job);
}

// Merge and scan have one shape.
struct Merge {
  using Job = BKQMergeJob;
  static int setFilter(Job& job, const RWCollectableString& text) {
    return job.setMergeFilter(text);
  }
  static const char* filter(Job& job) { return job.getMergeFilter(); }
  static void setRange(Job& job, int start, int end) { job.setMergeRange(start, end); }
  static void getRange(Job& job, unsigned short& start, unsigned short& end) {
    job.getMergeRange(start, end);
  }
  static int all(Job& job) { return job.mergeAll(); }
};
struct Scan {
  using Job = BKQScanJob;
  static int setFilter(Job& job, const RWCollectableString& text) {
    return job.setScanFilter(text);
  }
  static const char* filter(Job& job) { return job.getScanFilter(); }
  static void setRange(Job& job, int start, int end) { job.setScanRange(start, end); }
  static void getRange(Job& job, unsigned short& start, unsigned short& end) {
    job.getScanRange(start, end);
  }
  static int all(Job& job) { return job.scanAll(); }
};

template <class Kind>
class MergeAndScanTest : public testing::Test {};
using MergeAndScan = testing::Types<Merge, Scan>;
TYPED_TEST_SUITE(MergeAndScanTest, MergeAndScan, );

TYPED_TEST(MergeAndScanTest, RangeAndFlagOfAll) {
  typename TypeParam::Job job;
  EXPECT_STREQ(job.getJobName(), "testjob");
  EXPECT_STREQ(TypeParam::filter(job), "");
  EXPECT_EQ(job.sourceExists(), 0);
  EXPECT_EQ(job.getSource(), nullptr);
  EXPECT_EQ(TypeParam::all(job), 1);
  TypeParam::setRange(job, 0, 5);
  EXPECT_EQ(TypeParam::all(job), 0);
  TypeParam::setRange(job, 5, 0);
  EXPECT_EQ(TypeParam::all(job), 0);
  unsigned short start = 0;
  unsigned short end = 1;
  TypeParam::getRange(job, start, end);
  EXPECT_EQ(start, 5);
  EXPECT_EQ(end, 0);
}

TYPED_TEST(MergeAndScanTest, FilterIsASessionOrARange) {
  const struct {
    const char* text;
    int accepted;
  } rows[] = {
      {"12", 1},   {"1", 1},      {"5000", 1},   {"0", 0},     {"5001", 0},
      {"-1", 1},   {"", 0},       {"abc", 0},    {"12abc", 1}, {"99999999999999999999", 0},
      {"3-7", 1},  {"7-7", 1},    {"7-3", 0},    {"9-4", 0},   {"1-2-3", 0},
      {"0-5", 0},  {"1-5001", 0}, {"5-", 1},     {"-5", 1},    {"3--7", 1},
      {"-", 1},    {"--", 1},     {"1-5000", 1}, {"4-5-", 1},  {"1-99999999999999999999", 0},
      {"-5-3", 0}, {"1x-2", 1},   {"1-x2", 0},   {"x-5", 0},   {" 7", 1},
      {" -5", 0},  {"5- -7", 0},  {"5- 7", 1},
  };
  for (const auto& row : rows) {
    typename TypeParam::Job job;
    EXPECT_EQ(TypeParam::setFilter(job, "42"), 1);
    EXPECT_EQ(TypeParam::setFilter(job, row.text), row.accepted) << row.text;
    EXPECT_STREQ(TypeParam::filter(job), row.accepted ? row.text : "42");
    EXPECT_EQ(TypeParam::all(job), 1);
  }
}

// Memory that has run out makes no filter of a text that is none.
TYPED_TEST(MergeAndScanTest, FilterIsJudgedAndStoredWithoutMemory) {
  if (!kSeesAllocations) GTEST_SKIP() << "allocations are not seen with this heap";
  const struct {
    const char* text;
    int accepted;
  } rows[] = {{"7-3", 0}, {"1-2-3", 0}, {"3-7", 1}, {"-", 1}, {"12", 1}, {"0", 0}};
  for (const auto& row : rows) {
    const RWCollectableString text(row.text);
    for (unsigned int failing : {0, 1, 2, 3, 4}) {
      typename TypeParam::Job job;
      EXPECT_EQ(TypeParam::setFilter(job, "42"), 1);
      int result = -1;
      unsigned int allocations = 99;
      {
        const HeapWatch heap(failing);
        result = TypeParam::setFilter(job, text);
        allocations = heap.allocations();
      }
      EXPECT_EQ(result, row.accepted) << row.text;
      EXPECT_EQ(allocations, 0u) << row.text;
      EXPECT_STREQ(TypeParam::filter(job), row.accepted ? row.text : "42");
    }
  }
}

TYPED_TEST(MergeAndScanTest, OwnsItsSource) {
  int destroyed = 0;
  {
    typename TypeParam::Job job;
    job.setSource(*new Counted<BKQTapeNode>(destroyed, "s"));
    EXPECT_EQ(job.sourceExists(), 1);
    TypeParam::setFilter(job, "3-7");
    TypeParam::setRange(job, 1, 2);
    std::unique_ptr<typename TypeParam::Job> clone(job.clone());
    clone->mycopy(clone.get());
    EXPECT_NE(clone->getSource(), job.getSource());
    EXPECT_STREQ(clone->getSource()->getNodeName(), "s");
    EXPECT_STREQ(TypeParam::filter(*clone), "3-7");
    EXPECT_EQ(TypeParam::all(*clone), 0);
    const typename TypeParam::Job empty;
    job.mycopy(const_cast<typename TypeParam::Job*>(&empty));
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(job.sourceExists(), 0);
    job.setSource(*new Counted<BKQTapeNode>(destroyed, "s"));
  }
  EXPECT_EQ(destroyed, 2);
}

TYPED_TEST(MergeAndScanTest, CopyHasTheRangeAndLeavesTheSourcesNodeAlone) {
  int destroyed = 0;
  typename TypeParam::Job source;
  typename TypeParam::Job target;
  auto* node = new Counted<BKQTapeNode>(destroyed, "s");
  source.setSource(*node);
  target.setSource(*node);
  TypeParam::setRange(source, 3, 4);
  target.mycopy(&source);
  EXPECT_EQ(destroyed, 0);
  EXPECT_NE(target.getSource(), node);
  unsigned short start = 0;
  unsigned short end = 0;
  TypeParam::getRange(target, start, end);
  EXPECT_EQ(start, 3);
  EXPECT_EQ(end, 4);
}

TYPED_TEST(MergeAndScanTest, SettingAbandonsTheFormerSource) {
  int destroyed = 0;
  Counted<BKQTapeNode> former(destroyed, "former");
  typename TypeParam::Job job;
  job.setSource(former);
  job.setSource(*new BKQTapeNode("s"));
  EXPECT_EQ(destroyed, 0);
}

TEST(MergeJob, CopyLeavesTheSourcesDestinationAlone) {
  int destroyed = 0;
  BKQMergeJob source;
  BKQMergeJob target;
  auto* destination = new Counted<BKQMacNode>(destroyed, "d");
  source.setDestination(*destination);
  target.setDestination(*destination);
  target.mycopy(&source);
  EXPECT_EQ(destroyed, 0);
  EXPECT_NE(target.getDestination(), destination);
}

TEST(MergeJob, SettingAbandonsTheFormerDestination) {
  int destroyed = 0;
  Counted<BKQMacNode> former(destroyed, "former");
  BKQMergeJob job;
  job.setDestination(former);
  job.setDestination(*new BKQUnixNode("d"));
  EXPECT_STREQ(job.getDestination()->getNodeName(), "d");
  EXPECT_EQ(destroyed, 0);
}

TEST(MergeJob, OwnsItsDestination) {
  int destroyed = 0;
  {
    BKQMergeJob job;
    EXPECT_EQ(job.destinationExists(), 0);
    EXPECT_EQ(job.getDestination(), nullptr);
    job.setDestination(*new Counted<BKQMacNode>(destroyed, "d"));
    EXPECT_EQ(job.destinationExists(), 1);
    std::unique_ptr<BKQMergeJob> clone(job.clone());
    EXPECT_STREQ(clone->getDestination()->getNodeName(), "d");
  }
  EXPECT_EQ(destroyed, 1);
}

}  // namespace
}  // namespace bkoq::test
