#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "examples/nightly_job.h"
#include "examples/other_jobs.h"
#include "tests/catalog/kinds.h"
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

// Members that no accessor reads, but that every copy carries.
struct Reserved3 {
  using Type = unsigned short BKQJob::*;
  friend constexpr Type privateMember(Reserved3);
};
struct Reserved26 {
  using Type = unsigned int BKQJob::*;
  friend constexpr Type privateMember(Reserved26);
};
struct Reserved35 {
  using Type = unsigned short BKQJob::*;
  friend constexpr Type privateMember(Reserved35);
};

template struct PrivateMember<Reserved3, &BKQJob::reserved3_>;
template struct PrivateMember<Reserved26, &BKQJob::reserved26_>;
template struct PrivateMember<Reserved35, &BKQJob::reserved35_>;

namespace {

// What every job has. A plain job, and each class of its own copy rule.
template <class Job>
class AnyJobTest : public testing::Test {
 protected:
  // What the job holds at its end may note there.
  std::string log;
  int destroyed = 0;
  std::unique_ptr<Job> job = newObject<Job>();
};
TYPED_TEST_SUITE(AnyJobTest, JobTypes, );

TYPED_TEST(AnyJobTest, IsNamedByItsConstructor) {
  if constexpr (std::is_default_constructible<TypeParam>::value) {
    EXPECT_STREQ(TypeParam().getJobName(), "testjob");
  }
  if constexpr (std::is_constructible<TypeParam, const char*>::value) {
    char name[] = "nightly";
    const TypeParam job(name);
    name[0] = 'X';
    EXPECT_STREQ(job.getJobName(), "nightly");
    EXPECT_STREQ(TypeParam(static_cast<const char*>(nullptr)).getJobName(), "");
  }
}

// Which constructors the classes have.
template <class Job, JobNames names>
constexpr bool kIsConstructible = std::is_default_constructible<Job>::value ==
                                      (names != JobNames::kName) &&
                                  std::is_constructible<Job, const char*>::value ==
                                      (names != JobNames::kNone);
#define BKOQ_EXPECT(kind, class_, code, word, schedule, family, names) \
  static_assert(kIsConstructible<class_, JobNames::k##names>, #class_);
BKOQ_JOB_KINDS(BKOQ_EXPECT)
#undef BKOQ_EXPECT

TYPED_TEST(AnyJobTest, CopyHasWhatIsNoPlainAttribute) {
  TypeParam& job = *this->job;
  EXPECT_STREQ(job.getJobVersion(), "");
  job.setSNMPOn();
  job.setOvixOn();
  job.setOnExitCode(-3);
  job.setJobVersion("1.2");
  job.setScriptUserID("user", "pw");
  EXPECT_EQ(job.*privateMember(Reserved3()), 1);
  EXPECT_EQ(job.*privateMember(Reserved26()), 0u);
  EXPECT_EQ(job.*privateMember(Reserved35()), 0);
  job.*privateMember(Reserved3()) = 0x1234;
  job.*privateMember(Reserved26()) = 0x12345678;
  job.*privateMember(Reserved35()) = 0x4321;
  inACopy(job, [](TypeParam& copy) {
    EXPECT_EQ(copy.SNMPOn(), 1);
    EXPECT_EQ(copy.OvixOn(), 1);
    EXPECT_EQ(copy.getOnExitCode(), -3);
    EXPECT_STREQ(copy.getJobVersion(), "1.2");
    RWCollectableString user;
    RWCollectableString password;
    copy.getScriptUserID(user, password);
    EXPECT_STREQ(user, "user");
    EXPECT_STREQ(password, "pw");
    EXPECT_EQ(copy.*privateMember(Reserved3()), 0x1234);
    EXPECT_EQ(copy.*privateMember(Reserved26()), 0x12345678u);
    EXPECT_EQ(copy.*privateMember(Reserved35()), 0x4321);
  });
}

TYPED_TEST(AnyJobTest, CopyHasClonesOfTheAttachments) {
  TypeParam& job = *this->job;
  std::string& log = this->log;
  BKQPrintQueue queue;
  queue.setQueueName("Q");
  job.setPrintQueue(queue);
  job.getFaxInfo()->setFaxNumber("555-0100");
  auto* email = new Logged<BKQMHSEMail>(log);
  email->setMHSId("id");
  job.setEMailInfo(*email);
  auto* schedule = new Logged<BKQCustomSchedule>(log);
  schedule->setPoolName("pool");
  job.BKQJob::setSchedule(*schedule);

  const std::unique_ptr<TypeParam> copy = newObject<TypeParam>();
  copy->getFaxInfo();
  copy->setEMailInfo(*new Logged<BKQInternetEMail>(log));
  copy->setPrintQueue(*new BKQPrintQueue);
  copy->BKQJob::setSchedule(*new Logged<BKQRegularSchedule>(log));
  copy->mycopy(&job);
  EXPECT_EQ(log, "ccdd");
  // A second time, over the clones.
  copy->mycopy(&job);
  copy->mycopy(copy.get());
  EXPECT_EQ(log, "ccddcc");

  EXPECT_NE(copy->getFaxInfo(), job.getFaxInfo());
  EXPECT_STREQ(copy->getFaxInfo()->getFaxNumber(), "555-0100");
  EXPECT_NE(copy->getEMailInfo(), email);
  EXPECT_STREQ(dynamic_cast<BKQMHSEMail&>(*copy->getEMailInfo()).getMHSId(), "id");
  const std::unique_ptr<BKQPrintQueue> copiedQueue(copy->getPrintQueue());
  EXPECT_NE(copiedQueue.get(), &queue);
  EXPECT_STREQ(copiedQueue->getQueueName(), "Q");
  EXPECT_NE(copy->BKQJob::getSchedule(), schedule);
  EXPECT_EQ(copy->BKQJob::getSchedule()->getType(), 0u);
  EXPECT_STREQ(copy->BKQJob::getSchedule()->getPoolName(), "pool");
  EXPECT_EQ(job.getEMailInfo(), email);
  EXPECT_EQ(job.getPrintQueue(), &queue);
  EXPECT_EQ(job.BKQJob::getSchedule(), schedule);
}

// An attachment that notes in a log that it is cloned. Without a virtual destructor, some of them
// must not be left to a job.
template <class Attachment>
class LoggedClone : public Attachment {
 public:
  LoggedClone(std::string& log, const char* entry) : log_(log), entry_(entry) {}
  Attachment* clone() override {
    log_ += entry_;
    return Attachment::clone();
  }

 private:
  std::string& log_;
  const char* entry_;
};

TYPED_TEST(AnyJobTest, AttachmentsAreClonedInOrder) {
  TypeParam& job = *this->job;
  LoggedClone<BKQFax> fax(this->log, "fax ");
  LoggedClone<BKQPrintQueue> queue(this->log, "queue ");
  job.BKQJob::setSchedule(*new LoggedClone<BKQRegularSchedule>(this->log, "schedule"));
  job.setPrintQueue(queue);
  job.setEMailInfo(*new LoggedClone<BKQInternetEMail>(this->log, "mail "));
  job.setFaxInfo(fax);
  const std::unique_ptr<TypeParam> copy = newObject<TypeParam>();
  copy->mycopy(&job);
  EXPECT_EQ(this->log, "fax mail queue schedule");
  job.setFaxInfo(*new BKQFax);
  const std::unique_ptr<BKQPrintQueue> copiedQueue(copy->getPrintQueue());
}

TYPED_TEST(AnyJobTest, CopyDeletesTheFormerFaxAndPrintQueue) {
  for (const bool sourceHasThem : {true, false}) {
    const std::unique_ptr<TypeParam> source = newObject<TypeParam>();
    BKQPrintQueue queue;
    if (sourceHasThem) {
      source->getFaxInfo();
      source->setPrintQueue(queue);
    }
    const std::unique_ptr<TypeParam> copy = newObject<TypeParam>();
    const BlockWatch fax(copy->getFaxInfo());
    copy->setPrintQueue(*new BKQPrintQueue);
    const BlockWatch printQueue(copy->getPrintQueue());
    copy->mycopy(source.get());
    EXPECT_TRUE(fax.isFreed());
    EXPECT_TRUE(printQueue.isFreed());
    const std::unique_ptr<BKQPrintQueue> copiedQueue(copy->getPrintQueue());
  }
}

TYPED_TEST(AnyJobTest, CopyLeavesAloneWhatTheSourceHoldsToo) {
  TypeParam& job = *this->job;
  int& destroyed = this->destroyed;
  const std::unique_ptr<BKQPrintQueue> queue(new BKQPrintQueue);
  BKQFax* fax = job.getFaxInfo();
  auto* email = new Counted<BKQInternetEMail>(destroyed);
  auto* schedule = new Counted<BKQRegularSchedule>(destroyed);
  const std::unique_ptr<TypeParam> copy = newObject<TypeParam>();
  for (TypeParam* holder : {&job, copy.get()}) {
    holder->setPrintQueue(*queue);
    holder->setFaxInfo(*fax);
    holder->setEMailInfo(*email);
    holder->BKQJob::setSchedule(*schedule);
  }
  copy->mycopy(&job);
  EXPECT_EQ(destroyed, 0);
  EXPECT_NE(copy->getFaxInfo(), fax);
  EXPECT_NE(copy->getEMailInfo(), email);
  EXPECT_NE(copy->BKQJob::getSchedule(), schedule);
  EXPECT_NE(copy->getPrintQueue(), queue.get());
  const std::unique_ptr<BKQPrintQueue> copiedQueue(copy->getPrintQueue());
}

TYPED_TEST(AnyJobTest, WhatIsMissingCopiesAsNone) {
  int destroyed = 0;
  const std::unique_ptr<TypeParam> copy = newObject<TypeParam>();
  copy->getFaxInfo();
  copy->setEMailInfo(*new Counted<BKQInternetEMail>(destroyed));
  copy->setPrintQueue(*new BKQPrintQueue);
  copy->BKQJob::setSchedule(*new Counted<BKQRegularSchedule>(destroyed));
  copy->mycopy(this->job.get());
  EXPECT_EQ(destroyed, 2);
  EXPECT_EQ(copy->faxInfoExists(), 0);
  EXPECT_EQ(copy->emailInfoExists(), 0);
  EXPECT_EQ(copy->printQueueExists(), 0);
  EXPECT_EQ(copy->scheduleExists(), 0);
}

TYPED_TEST(AnyJobTest, WithoutMemoryThereIsNoClone) {
  const FailingNew noMemory(1);
  EXPECT_EQ(this->job->clone(), nullptr);
  EXPECT_EQ(this->job->getFaxInfo(), nullptr);
  EXPECT_EQ(this->job->faxInfoExists(), 0);
}

TEST(Job, Defaults) {
  BKQJob job;
  EXPECT_STREQ(job.getJobName(), "testjob");
  EXPECT_STREQ(BKQJob("name").getJobName(), "name");
  EXPECT_STREQ(BKQJob(nullptr).getJobName(), "");
  EXPECT_EQ(job.getNewTapeTimeout(), 5);
  EXPECT_EQ(job.getSpanTapeTimeout(), 9999);
  EXPECT_EQ(job.getOptions(), 0u);
  EXPECT_EQ(job.getJobStatus(), 0u);
  EXPECT_EQ(job.SNMPOn(), 0);
  EXPECT_EQ(job.OvixOn(), 0);
  EXPECT_EQ(job.getOnExitCode(), 0);
  EXPECT_EQ(job.scheduleExists(), 0);
  EXPECT_EQ(job.faxInfoExists(), 0);
  EXPECT_EQ(job.emailInfoExists(), 0);
  EXPECT_EQ(job.printQueueExists(), 0);
  EXPECT_EQ(job.clone(), nullptr);
}

TEST(Job, NumberAndInstanceAreOne) {
  BKQJob job;
  job.setJobNumber(7);
  EXPECT_EQ(job.getInstanceID(), 7u);
  job.setInstanceID(9);
  EXPECT_EQ(job.getJobNumber(), 9u);
}

TEST(Job, FlagsCodesAndScriptUser) {
  BKQJob job;
  job.setSNMPOn();
  job.setOvixOn();
  EXPECT_EQ(job.SNMPOn(), 1);
  EXPECT_EQ(job.OvixOn(), 1);
  job.setSNMPOff();
  job.setOvixOff();
  EXPECT_EQ(job.SNMPOn(), 0);
  EXPECT_EQ(job.OvixOn(), 0);
  job.setOnExitCode(-3);
  EXPECT_EQ(job.getOnExitCode(), -3);
  job.setJobVersion("1.2");
  EXPECT_STREQ(job.getJobVersion(), "1.2");
  job.setScriptUserID("user", "pw");
  RWCollectableString user;
  RWCollectableString password;
  job.getScriptUserID(user, password);
  EXPECT_STREQ(user, "user");
  EXPECT_STREQ(password, "pw");
}

TEST(Job, EqualByID) {
  BKQJob job("a");
  BKQMergeJob other;
  job.setJobID(5);
  other.setJobID(5);
  EXPECT_EQ(job.isEqual(&other), 1);
  EXPECT_EQ(other.isEqual(&job), 1);
  EXPECT_EQ(job.isEqual(nullptr), 0);
  other.setJobID(6);
  EXPECT_EQ(job.isEqual(&other), 0);
}

TEST(Job, ListsFindJobsByIDAndNodesByAddress) {
  BKQJob first;
  BKQJob second;
  second.setJobID(5);
  BKQScanJob wanted;
  wanted.setJobID(5);
  RWSlistCollectables jobs;
  jobs.insert(&first);
  jobs.insert(&second);
  EXPECT_EQ(jobs.find(&wanted), &second);
  EXPECT_EQ(jobs.contains(&wanted), 1);
  wanted.setJobID(6);
  EXPECT_EQ(jobs.contains(&wanted), 0);
  BKQMacNode node("n");
  BKQMacNode sameName("n");
  BKQNodeCol nodes;
  nodes.insert(&node);
  EXPECT_EQ(nodes.find(&sameName), nullptr);
  EXPECT_EQ(nodes.find(&node), &node);
  EXPECT_EQ(nodes.contains(&sameName), 0);
  EXPECT_EQ(nodes.contains(&node), 1);
}

TEST(Job, ListsDeleteJobsByIDAndNodesByAddress) {
  int destroyed = 0;
  auto* first = new Counted<BKQJob>(destroyed);
  RWSlistCollectables jobs;
  jobs.insert(first);
  BKQScanJob wanted;
  wanted.setJobID(5);
  for (int i = 0; i < 2; ++i) {
    auto* job = new Counted<BKQMergeJob>(destroyed);
    job->setJobID(5);
    jobs.insert(job);
  }
  RWCollectable* second = jobs.at(2);
  jobs.removeAndDestroy(&wanted);
  EXPECT_EQ(destroyed, 1);
  ASSERT_EQ(jobs.entries(), 2u);
  EXPECT_EQ(jobs.at(0), first);
  EXPECT_EQ(jobs.at(1), second);
  wanted.setJobID(6);
  jobs.removeAndDestroy(&wanted);
  EXPECT_EQ(destroyed, 1);
  jobs.clearAndDestroy();

  destroyed = 0;
  auto* node = new Counted<BKQMacNode>(destroyed, "n");
  BKQMacNode sameName("n");
  BKQNodeCol nodes;
  nodes.insert(node);
  nodes.removeAndDestroy(&sameName);
  EXPECT_EQ(destroyed, 0);
  nodes.removeAndDestroy(node);
  EXPECT_EQ(destroyed, 1);
  EXPECT_TRUE(nodes.isEmpty());
}

TEST(Job, OnlyTheFaxIsMadeOnDemand) {
  BKQJob job;
  EXPECT_EQ(job.getEMailInfo(), nullptr);
  EXPECT_EQ(job.getPrintQueue(), nullptr);
  EXPECT_EQ(job.getSchedule(), nullptr);
  EXPECT_EQ(job.emailInfoExists(), 0);
  BKQFax* fax = job.getFaxInfo();
  ASSERT_NE(fax, nullptr);
  EXPECT_EQ(job.getFaxInfo(), fax);
  EXPECT_EQ(job.faxInfoExists(), 1);
}

TEST(Job, DestructorDeletesWhatItAdoptedButThePrintQueue) {
  int destroyed = 0;
  BKQPrintQueue queue;  // outlives the job
  {
    BKQJob job;
    job.setPrintQueue(queue);
    job.setFaxInfo(*new BKQFax);
    job.setEMailInfo(*new Counted<BKQInternetEMail>(destroyed));
    job.setSchedule(*new Counted<BKQRegularSchedule>(destroyed));
    EXPECT_EQ(job.getPrintQueue(), &queue);
    EXPECT_EQ(job.scheduleExists(), 1);
    EXPECT_EQ(job.emailInfoExists(), 1);
    EXPECT_EQ(job.printQueueExists(), 1);
  }
  EXPECT_EQ(destroyed, 2);
}

TEST(Job, SettersAbandonWhatTheyReplace) {
  int destroyed = 0;
  Counted<BKQRegularSchedule> schedule(destroyed);
  Counted<BKQInternetEMail> email(destroyed);
  {
    BKQJob job;
    job.setSchedule(schedule);
    job.setSchedule(*new BKQRegularSchedule);
    job.setEMailInfo(email);
    job.setEMailInfo(*new BKQMHSEMail);
    EXPECT_EQ(job.getEMailInfo()->emailType(), 1u);
    expectAbandoned<BKQFax>(job, &BKQJob::setFaxInfo, &BKQJob::getFaxInfo);
    expectAbandoned<BKQPrintQueue>(job, &BKQJob::setPrintQueue, &BKQJob::getPrintQueue);
    const std::unique_ptr<BKQPrintQueue> queue(job.getPrintQueue());
  }
  EXPECT_EQ(destroyed, 0);
}

TYPED_TEST(AnyJobTest, ClonesToItsOwnKind) {
  TypeParam& job = *this->job;
  job.setJobID(77);
  const std::unique_ptr<BKQJob> clone(static_cast<BKQJob&>(job).clone());
  // The root class has no clones.
  ASSERT_EQ(clone == nullptr, (std::is_same<TypeParam, BKQJob>::value));
  if (clone == nullptr) return;
  EXPECT_NE(dynamic_cast<TypeParam*>(clone.get()), nullptr);
  EXPECT_EQ(clone->jobType(), job.jobType());
  EXPECT_EQ(clone->getJobID(), 77u);
  EXPECT_EQ(clone->getJobName(), job.getJobName());
}

template <class Job, class Own, class Other>
void expectTypedSchedule(Job& job) {
  EXPECT_EQ(job.getSchedule(), nullptr);
  auto* own = new Own;
  job.setSchedule(*own);
  EXPECT_EQ(job.getSchedule(), own);
  auto* other = new Other;
  job.BKQJob::setSchedule(*other);
  EXPECT_EQ(job.getSchedule(), nullptr);
  EXPECT_EQ(job.BKQJob::getSchedule(), other);
  delete own;
}

// Its own class of schedule, and one that is none of them, which only the root class takes.
template <class Schedule>
struct OtherThan {
  using Type = BKQRegularSchedule;
};
template <>
struct OtherThan<BKQRegularSchedule> {
  using Type = UnclonedSchedule;
};
template <>
struct OtherThan<BKQCruiseSchedule> {
  using Type = BKQRotationSchedule;
};

TEST(Job, SchedulesByClass) {
#define BKOQ_EXPECT(kind, class_, code, word, schedule, ...)                \
  if constexpr (!std::is_same<schedule, BKQSchedule>::value) {              \
    const std::unique_ptr<class_> job = newObject<class_>();                \
    SCOPED_TRACE(#class_);                                                  \
    expectTypedSchedule<class_, schedule, OtherThan<schedule>::Type>(*job); \
  }
  BKOQ_JOB_KINDS(BKOQ_EXPECT)
#undef BKOQ_EXPECT
}

}  // namespace
}  // namespace bkoq::test
