#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "examples/nightly_job.h"
#include "examples/other_jobs.h"
#include "tests/catalog/types.h"
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

// A member that no accessor reads, but that every copy carries.
struct BackupReserved8 {
  using Type = unsigned int BKQBackupJob::*;
  friend constexpr Type privateMember(BackupReserved8);
};

template struct PrivateMember<BackupReserved8, &BKQBackupJob::reserved8_>;

namespace {

TEST(BackupJob, Attributes) {
  BKQBackupJob object;
  EXPECT_STREQ(object.getSessionPassword(), "");
  object.setSessionPassword("pw");
  EXPECT_STREQ(object.getSessionPassword(), "pw");
  object.setSessionPassword(nullptr);
  EXPECT_STREQ(object.getSessionPassword(), "");
  EXPECT_EQ(object.encryptionOn(), 0);
  EXPECT_EQ(object.compressionOn(), 0);
  object.setEncryptionOn();
  object.setCompressionOn();
  EXPECT_EQ(object.encryptionOn(), 1);
  EXPECT_EQ(object.compressionOn(), 1);
  object.setEncryptionOff();
  object.setCompressionOff();
  EXPECT_EQ(object.encryptionOn(), 0);
  EXPECT_EQ(object.compressionOn(), 0);
  EXPECT_EQ(object.sourceNodeEntries(), 0u);
  EXPECT_EQ(object.filterEntries(), 0u);
  EXPECT_EQ(object.destinationExists(), 0);
  EXPECT_EQ(object.getDestination(), nullptr);
}

TEST(BackupJob, OpenFileInfoIsMadeOnDemand) {
  BKQBackupJob job;
  EXPECT_EQ(job.openFileInfoExists(), 0);
  std::unique_ptr<BKQOpenFileInfo> info(job.getOpenFileInfo());
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(job.openFileInfoExists(), 1);
  EXPECT_EQ(job.getOpenFileInfo(), info.get());
}

TEST(BackupJob, SettersAbandonWhatTheyReplace) {
  int destroyed = 0;
  Counted<BKQTapeNode> former(destroyed, "former");
  BKQBackupJob job;
  job.setDestination(former);
  job.setDestination(*new BKQTapeNode("tapes"));
  EXPECT_STREQ(job.getDestination()->getNodeName(), "tapes");
  EXPECT_EQ(destroyed, 0);
  expectAbandoned<BKQOpenFileInfo>(job, &BKQBackupJob::setOpenFileInfo,
                                   &BKQBackupJob::getOpenFileInfo);
  const std::unique_ptr<BKQOpenFileInfo> info(job.getOpenFileInfo());
}

TEST(BackupJob, RemovesAndDeletesTheFirstNodeOfTheName) {
  int destroyed = 0;
  auto* first = new Counted<BKQMacNode>(destroyed, "A");
  auto* b = new Counted<BKQMacNode>(destroyed, "B");
  auto* second = new Counted<BKQMacNode>(destroyed, "A");
  BKQBackupJob job;
  for (BKQNode* node : {first, b, second}) EXPECT_EQ(job.addSourceNode(*node), node);
  BKQMacNode wanted("C");
  EXPECT_EQ(job.removeSourceNode(wanted), -1);
  EXPECT_EQ(job.sourceNodeEntries(), 3u);
  wanted.setNodeName("A");
  EXPECT_EQ(job.removeSourceNode(wanted), 0);
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(job.sourceNodeEntries(), 2u);
  EXPECT_EQ(job.removeSourceNode(*b), 0);  // the argument is the node that goes
  EXPECT_EQ(destroyed, 2);
  job.clearSourceNodes();
  EXPECT_EQ(destroyed, 3);
  EXPECT_EQ(job.sourceNodeEntries(), 0u);
}

// What a page of source nodes from the cursor on holds, by name.
std::string namesOfTheRest(BKQBackupJob& job) {
  BKQNodeCol* nodes = nullptr;
  job.enumSourceNodes(nodes, 9);
  std::string names;
  for (unsigned int i = 0; i < nodes->entries(); ++i) {
    names += static_cast<BKQNode*>(nodes->at(i))->getNodeName().data();
  }
  delete nodes;
  return names;
}

TEST(BackupJob, RemovingNodesMovesNoCursor) {
  const auto fill = [](BKQBackupJob& job) {
    for (const char* name : {"a", "b", "c", "d", "e"}) job.addSourceNode(*new BKQMacNode(name));
    BKQNodeCol* page = nullptr;
    job.resetSourceNodes();
    EXPECT_EQ(job.enumSourceNodes(page, 2), 2u);
    delete page;
  };
  const struct {
    const char* removed;
    const char* rest;
  } rows[] = {{"a", "de"}, {"b", "de"}, {"c", "de"}, {"d", "ce"}, {"e", "cd"}, {"x", "cde"}};
  for (const auto& row : rows) {
    BKQBackupJob job;
    fill(job);
    BKQMacNode wanted(row.removed);
    job.removeSourceNode(wanted);
    EXPECT_EQ(namesOfTheRest(job), row.rest) << row.removed;
    job.clearSourceNodes();
  }
  BKQBackupJob job;
  fill(job);
  job.clearSourceNodes();
  EXPECT_EQ(namesOfTheRest(job), "");
  for (const char* name : {"f", "g", "h"}) job.addSourceNode(*new BKQMacNode(name));
  EXPECT_EQ(namesOfTheRest(job), "h");
  job.clearSourceNodes();
}

TEST(BackupJob, DestructorDeletesTheDestinationOnly) {
  int destroyed = 0;
  int kept = 0;
  Counted<BKQMacNode> node(kept, "A");
  Counted<BKQDirFilter> filter(kept);
  BKQOpenFileInfo info;
  {
    BKQBackupJob job;
    job.addSourceNode(node);
    EXPECT_EQ(job.addFilter(filter), &filter);
    job.setOpenFileInfo(info);
    job.setDestination(*new Counted<BKQTapeNode>(destroyed, "T"));
    EXPECT_EQ(job.destinationExists(), 1);
  }
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(kept, 0);
}

TEST(BackupJob, CloneOfTwoNodesAndOneFilter) {
  BKQMacNode a("a");
  BKQUnixNode b("b");
  BKQDirFilter filter;
  BKQBackupJob job("n");
  job.addSourceNode(a);
  job.addSourceNode(b);
  job.addFilter(filter);
  BKQBackupJob* clone = job.clone();
  EXPECT_EQ(clone->sourceNodeEntries(), 4u);
  EXPECT_EQ(clone->filterEntries(), 2u);
  BKQNodeCol* nodes = nullptr;
  clone->enumSourceNodes(nodes, 0);
  EXPECT_EQ(nodes->at(0), &a);
  EXPECT_EQ(nodes->at(1), &b);
  EXPECT_STREQ(static_cast<BKQNode*>(nodes->at(2))->getNodeName(), "a");
  EXPECT_EQ(static_cast<BKQNode*>(nodes->at(3))->nodeType(), 3u);
  delete nodes;
  deleteClone(clone, job);
}

TEST(BackupJob, CopyingTwiceKeepsTheSourceUsable) {
  NightlyBackup nightly;
  BKQRotationBackupJob& source = nightly.job();
  BKQFax* fax = source.getFaxInfo();
  BKQTapeNode* destination = source.getDestination();
  BKQBackupJob* clone = source.clone();
  EXPECT_NE(clone->getFaxInfo(), fax);
  EXPECT_NE(clone->getDestination(), destination);
  EXPECT_STREQ(clone->getFaxInfo()->getFaxNumber(), "555-0100");
  EXPECT_EQ(clone->sourceNodeEntries(), 8u);
  EXPECT_EQ(source.sourceNodeEntries(), 4u);
  EXPECT_EQ(source.getFaxInfo(), fax);
  EXPECT_EQ(source.getDestination(), destination);
  EXPECT_STREQ(source.getPrintQueue()->getQueueName(), "Q_NIGHT");
  clone->mycopy(clone);
  clone->mycopy(nullptr);
  EXPECT_EQ(clone->sourceNodeEntries(), 8u);
  deleteClone(clone, source);

  // Twice from one source: what the source still holds stays, the first clones go.
  int destroyed = 0;
  Counted<BKQMacNode> node(destroyed, "n");
  BKQBackupJob simple("s");
  simple.addSourceNode(node);
  BKQBackupJob target("t");
  target.addSourceNode(*new Counted<BKQMacNode>(destroyed, "former"));
  target.setDestination(*new Counted<BKQTapeNode>(destroyed, "former"));
  target.mycopy(&simple);
  EXPECT_EQ(destroyed, 2);
  EXPECT_EQ(target.destinationExists(), 0);
  target.mycopy(&simple);
  EXPECT_EQ(destroyed, 2);
  EXPECT_EQ(target.sourceNodeEntries(), 2u);
  BKQNodeCol* nodes = nullptr;
  target.enumSourceNodes(nodes, 0);
  EXPECT_EQ(nodes->at(0), &node);
  delete nodes->at(1);
  delete nodes;
}

template <class Job>
class BackupJobTest : public testing::Test {};
TYPED_TEST_SUITE(BackupJobTest, BackupTypes, );

TYPED_TEST(BackupJobTest, CopyHasTheAttributes) {
  const std::unique_ptr<TypeParam> owner = newObject<TypeParam>();
  TypeParam& object = *owner;
  EXPECT_EQ(object.*privateMember(BackupReserved8()), 0u);
  object.*privateMember(BackupReserved8()) = 0x12345678;
  object.setSessionPassword("pw");
  object.setEncryptionOn();
  inACopy(object, [](TypeParam& copy) {
    EXPECT_EQ(copy.*privateMember(BackupReserved8()), 0x12345678u);
    EXPECT_STREQ(copy.getSessionPassword(), "pw");
    EXPECT_EQ(copy.encryptionOn(), 1);
    EXPECT_EQ(copy.compressionOn(), 0);
  });
  object.setEncryptionOff();
  object.setCompressionOn();
  inACopy(object, [](TypeParam& copy) {
    EXPECT_EQ(copy.encryptionOn(), 0);
    EXPECT_EQ(copy.compressionOn(), 1);
  });
}

// What the target's former objects refer to may be part of what is copied.
TYPED_TEST(BackupJobTest, TakesEveryCloneBeforeItDeletesAnything) {
  std::string log;
  const std::unique_ptr<TypeParam> source = newObject<TypeParam>();
  Logged<BKQMacNode> node(log, "node");
  Logged<BKQDirFilter> filter(log);
  source->addSourceNode(node);
  source->addFilter(filter);
  source->setDestination(*new Logged<BKQTapeNode>(log, "tapes"));
  source->setEMailInfo(*new Logged<BKQInternetEMail>(log));
  source->BKQJob::setSchedule(*new Logged<BKQRegularSchedule>(log));
  BKQOpenFileInfo info;
  info.setRetryCount(77);
  source->setOpenFileInfo(info);

  TypeParam* target = newObject<TypeParam>().release();
  target->addSourceNode(*new Logged<BKQMacNode>(log, "former"));
  target->addFilter(*new Logged<BKQDirFilter>(log));
  target->setDestination(*new Logged<BKQTapeNode>(log, "former"));
  target->setEMailInfo(*new Logged<BKQInternetEMail>(log));
  target->BKQJob::setSchedule(*new Logged<BKQRegularSchedule>(log));
  target->getOpenFileInfo();
  target->mycopy(source.get());
  EXPECT_EQ(log, "cccccddddd");
  EXPECT_EQ(source->getOpenFileInfo(), &info);
  EXPECT_NE(target->getOpenFileInfo(), &info);
  EXPECT_EQ(target->getOpenFileInfo()->getRetryCount(), 77);
  EXPECT_NE(target->getDestination(), source->getDestination());
  EXPECT_STREQ(target->getDestination()->getNodeName(), "tapes");
  deleteClone(target, *source);
}

TYPED_TEST(BackupJobTest, CopyLeavesAloneWhatTheSourceHoldsToo) {
  int destroyed = 0;
  BKQOpenFileInfo info;
  auto* destination = new Counted<BKQTapeNode>(destroyed, "tapes");
  const std::unique_ptr<TypeParam> source = newObject<TypeParam>();
  TypeParam* target = newObject<TypeParam>().release();
  for (TypeParam* job : {source.get(), target}) {
    job->setDestination(*destination);
    job->setOpenFileInfo(info);
  }
  target->mycopy(source.get());
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(source->getDestination(), destination);
  EXPECT_NE(target->getDestination(), destination);
  EXPECT_NE(target->getOpenFileInfo(), &info);
  deleteClone(target, *source);
}

TYPED_TEST(BackupJobTest, CopyDeletesTheFormerOpenFileInfo) {
  for (const bool sourceHasIt : {true, false}) {
    BKQOpenFileInfo info;
    const std::unique_ptr<TypeParam> source = newObject<TypeParam>();
    if (sourceHasIt) source->setOpenFileInfo(info);
    TypeParam* target = newObject<TypeParam>().release();
    const BlockWatch former(target->getOpenFileInfo());
    target->mycopy(source.get());
    EXPECT_TRUE(former.isFreed());
    EXPECT_EQ(target->openFileInfoExists(), sourceHasIt ? 1 : 0);
    deleteClone(target, *source);
  }
}

// A tape node can be a destination as well as a source node.
TYPED_TEST(BackupJobTest, CopyLeavesAloneATapeNodeThatTheSourceHoldsInTheOtherPlace) {
  int destroyed = 0;
  Counted<BKQTapeNode> node(destroyed, "node");
  const std::unique_ptr<TypeParam> source = newObject<TypeParam>();
  source->addSourceNode(node);
  TypeParam* target = newObject<TypeParam>().release();
  target->setDestination(node);
  target->mycopy(source.get());
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(target->getDestination(), nullptr);
  EXPECT_EQ(target->sourceNodeEntries(), 2u);
  deleteClone(target, *source);
  EXPECT_EQ(destroyed, 0);

  auto* destination = new Counted<BKQTapeNode>(destroyed, "tapes");
  source->setDestination(*destination);
  target = newObject<TypeParam>().release();
  target->addSourceNode(*destination);
  target->mycopy(source.get());
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(source->getDestination(), destination);
  EXPECT_NE(target->getDestination(), destination);
  EXPECT_STREQ(target->getDestination()->getNodeName(), "tapes");
  EXPECT_EQ(target->sourceNodeEntries(), 2u);
  deleteClone(target, *source);
  EXPECT_EQ(destroyed, 0);
}

TYPED_TEST(BackupJobTest, CopyDeletesATapeNodeInBothPlacesOnce) {
  int destroyed = 0;
  const std::unique_ptr<TypeParam> source = newObject<TypeParam>();
  const std::unique_ptr<TypeParam> target = newObject<TypeParam>();
  auto* node = new Counted<BKQTapeNode>(destroyed, "node");
  target->addSourceNode(*node);
  target->setDestination(*node);
  target->mycopy(source.get());
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(target->getDestination(), nullptr);
  EXPECT_EQ(target->sourceNodeEntries(), 0u);
}

TEST(BackupJob, CopyThroughTheRootCopiesItsPartOnly) {
  BKQMacNode node("n");
  BKQBackupJob source("source");
  source.addSourceNode(node);
  source.setMaxThreads(4);
  BKQBackupJob target("target");
  static_cast<BKQJob&>(target).mycopy(&source);
  EXPECT_STREQ(target.getJobName(), "source");
  EXPECT_EQ(target.sourceNodeEntries(), 0u);
  EXPECT_EQ(target.getMaxThreads(), 0);
}

TEST(BackupJob, WithoutMemoryThereIsNoOpenFileInfo) {
  BKQBackupJob job;
  const FailingNew noMemory(1);
  EXPECT_EQ(job.getOpenFileInfo(), nullptr);
  EXPECT_EQ(job.openFileInfoExists(), 0);
}

TEST(BackupJob, ClonesInScarceMemory) {
  NightlyBackup nightly;
  expectClonesInScarceMemory(nightly.job());
}

TEST(BackupJob, NodeListedTwiceIsDeletedWithItsLastPlace) {
  int destroyed = 0;
  auto* node = new Counted<BKQMacNode>(destroyed, "n");
  BKQBackupJob job;
  job.addSourceNode(*node);
  job.addSourceNode(*node);
  EXPECT_EQ(job.removeSourceNode(*node), 0);
  EXPECT_EQ(job.sourceNodeEntries(), 1u);
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(job.removeSourceNode(*node), 0);
  EXPECT_EQ(job.sourceNodeEntries(), 0u);
  EXPECT_EQ(destroyed, 1);
}

TEST(BackupJob, DestinationAmongTheSourcesGoesWithThem) {
  for (const bool clears : {true, false}) {
    int destroyed = 0;
    auto* node = new Counted<BKQTapeNode>(destroyed, "n");
    {
      BKQBackupJob job;
      job.addSourceNode(*node);
      job.setDestination(*node);
      clears ? job.clearSourceNodes() : static_cast<void>(job.removeSourceNode(*node));
      EXPECT_EQ(destroyed, 1);
      EXPECT_EQ(job.destinationExists(), 0);
    }
    EXPECT_EQ(destroyed, 1);
  }
}

// Nor does a copy delete what its source holds; without memory to look that up fast it is looked up
// slowly.
TEST(BackupJob, CopiesInScarceMemory) {
  if (!kSeesAllocations) GTEST_SKIP() << "allocations are not seen with this heap";
  unsigned int allocations = 99;
  for (unsigned int failing = 0; failing <= allocations; ++failing) {
    int sharedDestroyed = 0;
    int formerDestroyed = 0;
    auto* shared = new Counted<BKQMacNode>(sharedDestroyed, "shared");
    auto* former = new Counted<BKQMacNode>(formerDestroyed, "former");
    BKQBackupJob source("source");
    source.addSourceNode(*shared);
    BKQBackupJob target("target");
    target.addSourceNode(*shared);
    target.addSourceNode(*former);
    {
      const HeapWatch heap(failing);
      target.mycopy(&source);
      if (failing == 0) allocations = heap.allocations();
    }
    SCOPED_TRACE(failing);
    EXPECT_EQ(sharedDestroyed, 0);
    // The list of what is to be deleted may find no memory either.
    EXPECT_LE(formerDestroyed, 1);
    if (failing == 0) {
      EXPECT_EQ(formerDestroyed, 1);
    }
    if (formerDestroyed == 0) delete former;
    target.clearSourceNodes();
    if (sharedDestroyed == 0) delete shared;
  }
  EXPECT_GT(allocations, 5u);
}

}  // namespace
}  // namespace bkoq::test
