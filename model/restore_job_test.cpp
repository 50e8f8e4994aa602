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

// Restore, verify and compare jobs.

// A client's class that inherits clone() from a root class.
TEST(RestoreJob, PartsThatCloneToNullAreMissingFromACopy) {
  ForeignFilter filter(1);
  BKQFileFilter own(BKQFilter::Include, "*");
  BKQRestoreJob job("n");
  job.addFilter(filter);
  job.addFilter(own);
  job.BKQJob::setSchedule(*new UnclonedSchedule);
  job.setEMailInfo(*new ForeignEMail([](void*, BkoqLayout) { return 1; }));
  const std::unique_ptr<BKQRestoreJob> clone(job.clone());
  EXPECT_EQ(clone->filterEntries(), 1u);
  EXPECT_EQ(clone->scheduleExists(), 0);
  EXPECT_EQ(clone->emailInfoExists(), 0);
  BKQFilterCol* filters = nullptr;
  ASSERT_EQ(clone->enumFilters(filters, 1), 1u);
  delete filters->at(0);
  delete filters;
}

TEST(RestoreJob, ClonesInScarceMemory) {
  Keeper keeper;
  BKQRestoreJob job("restore");
  defineRestore(job, keeper);
  expectClonesInScarceMemory(job);
}

TEST(RestoreJob, CopyHoldsClonesOnly) {
  BKQTapeNode source("source");
  BKQRestoreNode dest("dest");
  BKQDBRestoreNode database("database");
  BKQDirFilter filter;
  BKQRestoreJob job("n");
  EXPECT_EQ(job.addSourceNode(source), &source);
  EXPECT_EQ(job.addDestNode(dest), &dest);
  job.addDestNode(database);
  EXPECT_EQ(job.addFilter(filter), &filter);
  job.setSessionPassword("pw");
  job.setOnConflict(static_cast<BKQRestoreJob::BKQConflictType>(9));
  BKQRestoreJob* clone = job.clone();
  clone->mycopy(clone);
  EXPECT_EQ(clone->sourceNodeEntries(), 1u);
  EXPECT_EQ(clone->destNodeEntries(), 2u);
  EXPECT_EQ(clone->filterEntries(), 1u);
  EXPECT_STREQ(clone->getSessionPassword(), "pw");
  EXPECT_EQ(clone->getOnConflict(), 9u);
  BKQRestoreNodeCol* nodes = nullptr;
  EXPECT_EQ(clone->enumDestNodes(nodes, 0), 2u);
  EXPECT_NE(nodes->at(0), &dest);
  EXPECT_EQ(static_cast<BKQNode*>(nodes->at(1))->nodeType(), 27u);
  delete nodes;
  EXPECT_EQ(clone->enumDestNodes(nodes, 0), 0u);
  delete nodes;
  deleteClone(clone, job);
  EXPECT_EQ(job.sourceNodeEntries(), 1u);
}

TEST(VerifyJob, CopyHoldsClonesOnly) {
  BKQTapeNode source("source");
  BKQVerifyJob job("n");
  job.addSourceNode(source);
  BKQVerifyJob* clone = job.clone();
  BKQTapeNodeCol* nodes = nullptr;
  EXPECT_EQ(clone->enumSourceNodes(nodes, 0), 1u);
  EXPECT_NE(nodes->at(0), &source);
  delete nodes;
  EXPECT_EQ(clone->enumSourceNodes(nodes, 0), 0u);
  delete nodes;
  deleteClone(clone, job);
}

TEST(CompareJob, DeletesItsDestination) {
  int destroyed = 0;
  {
    BKQCompareJob job("n");
    EXPECT_EQ(job.getDestination(), nullptr);
    job.setDestination(*new Counted<BKQMacNode>(destroyed, "d"));
    std::unique_ptr<BKQCompareJob> clone(job.clone());
    EXPECT_STREQ(clone->getDestination()->getNodeName(), "d");
    EXPECT_NE(clone->getDestination(), job.getDestination());
    BKQCompareJob other("o");
    job.mycopy(&other);
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(job.getDestination(), nullptr);
    job.setDestination(*new Counted<BKQMacNode>(destroyed, "d"));
  }
  EXPECT_EQ(destroyed, 2);
}

TEST(CompareJob, CopyLeavesTheSourcesDestinationAlone) {
  int destroyed = 0;
  BKQCompareJob source("n");
  BKQCompareJob target("n");
  auto* destination = new Counted<BKQMacNode>(destroyed, "d");
  source.setDestination(*destination);
  target.setDestination(*destination);
  target.mycopy(&source);
  target.mycopy(&target);
  EXPECT_EQ(destroyed, 0);
  EXPECT_NE(target.getDestination(), destination);
  EXPECT_STREQ(target.getDestination()->getNodeName(), "d");
}

TEST(CompareJob, SettingAbandonsTheFormerDestination) {
  int destroyed = 0;
  Counted<BKQMacNode> former(destroyed, "former");
  BKQCompareJob job("n");
  job.setDestination(former);
  job.setDestination(*new BKQUnixNode("d"));
  EXPECT_EQ(destroyed, 0);
}

}  // namespace
}  // namespace bkoq::test
