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
#include "tests/support/parts.h"
#include "tests/support/private_member.h"

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
struct BackupReserved8 {
  using Type = unsigned int BKQBackupJob::*;
  friend constexpr Type privateMember(BackupReserved8);
};

template struct PrivateMember<Reserved3, &BKQJob::reserved3_>;
template struct PrivateMember<Reserved26, &BKQJob::reserved26_>;
template struct PrivateMember<Reserved35, &BKQJob::reserved35_>;
template struct PrivateMember<BackupReserved8, &BKQBackupJob::reserved8_>;

namespace {

// What every job has. A plain job, and each class of its own copy rule.
template <class Job>
class AnyJobTest : public testing::Test {
 protected:
  // What the job holds at its end may note there.
  std::string log;
  int destroyed = 0;
  std::unique_ptr<Job> job = newObject<Job>();

  template <class Get, class Set>
  void expectText(Get get, Set set) {
    ::expectText(*job, get, set);
  }
  template <class Get, class Set>
  void expectNumber(Get get, Set set, unsigned long first) {
    ::expectNumber(*job, get, set, first);
  }
};
using AnyJob = testing::Types<BKQJob, BKQBackupJob, BKQCruiseBackupJob, BKQRotationBackupJob,
                              BKQCruiseMakeupJob, BKQRotationMakeupJob, BKQCustomBackupJob,
                              BKQDatabaseBackupJob, BKQRestoreJob, BKQDatabaseRestoreJob,
                              BKQVerifyJob, BKQCompareJob, BKQMergeJob, BKQScanJob>;
TYPED_TEST_SUITE(AnyJobTest, AnyJob, );

TYPED_TEST(AnyJobTest, Attributes) {
  const bool isRestore = std::is_base_of<BKQRestoreJob, TypeParam>::value;
  this->expectNumber(&BKQJob::getJobID, &BKQJob::setJobID, 0);
  this->expectNumber(&BKQJob::getJobNumber, &BKQJob::setJobNumber, 0);
  this->expectNumber(&BKQJob::getScriptType, &BKQJob::setScriptType, 0);
  this->expectNumber(&BKQJob::getJobStatus, &BKQJob::setJobStatus, 0);
  this->expectNumber(&BKQJob::getOptions, &BKQJob::setOptions, isRestore ? 0x6200000 : 0);
  this->expectNumber(&BKQJob::getBeforeJobWait, &BKQJob::setBeforeJobWait, 0);
  this->expectNumber(&BKQJob::getNewTapeTimeout, &BKQJob::setNewTapeTimeout, 5);
  this->expectNumber(&BKQJob::getSpanTapeTimeout, &BKQJob::setSpanTapeTimeout, 9999);
  this->expectText(&BKQJob::getHost, &BKQJob::setHost);
  this->expectText(&BKQJob::getOwner, &BKQJob::setOwner);
  this->expectText(&BKQJob::getPassword, &BKQJob::setPassword);
  this->expectText(&BKQJob::getMachineName, &BKQJob::setMachineName);
  this->expectText(&BKQJob::getMachineUser, &BKQJob::setMachineUser);
  this->expectText(&BKQJob::getMachinePassword, &BKQJob::setMachinePassword);
  this->expectText(&BKQJob::getMachineAddress, &BKQJob::setMachineAddress);
  this->expectText(&BKQJob::getReportFile, &BKQJob::setReportFile);
  this->expectText(&BKQJob::getComments, &BKQJob::setComments);
  this->expectText(&BKQJob::getBeforeJob, &BKQJob::setBeforeJob);
  this->expectText(&BKQJob::getAfterJob, &BKQJob::setAfterJob);
  this->expectText(&BKQJob::getFileName, &BKQJob::setFileName);
  this->expectText(&BKQJob::getPoolName, &BKQJob::setPoolName);
}

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
template <class Job, bool isDefault, bool isNamed>
constexpr bool kIsConstructible =
    std::is_default_constructible<Job>::value ==
    isDefault&& std::is_constructible<Job, const char*>::value == isNamed;
static_assert(kIsConstructible<BKQJob, true, true>, "");
static_assert(kIsConstructible<BKQBackupJob, true, true>, "");
static_assert(kIsConstructible<BKQCruiseBackupJob, true, true>, "");
static_assert(kIsConstructible<BKQRotationBackupJob, true, true>, "");
static_assert(kIsConstructible<BKQCruiseMakeupJob, true, true>, "");
static_assert(kIsConstructible<BKQRotationMakeupJob, true, true>, "");
static_assert(kIsConstructible<BKQCustomBackupJob, true, true>, "");
static_assert(kIsConstructible<BKQDatabaseBackupJob, false, true>, "");
static_assert(kIsConstructible<BKQRestoreJob, false, true>, "");
static_assert(kIsConstructible<BKQDatabaseRestoreJob, false, true>, "");
static_assert(kIsConstructible<BKQVerifyJob, false, true>, "");
static_assert(kIsConstructible<BKQCompareJob, false, true>, "");
static_assert(kIsConstructible<BKQMergeJob, true, false>, "");
static_assert(kIsConstructible<BKQScanJob, true, false>, "");

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

// Attaches an object of the test's, then another in its place, which is handed over.
template <class Object, class Job, class Argument>
void expectAbandoned(Job& job, void (Job::*set)(Argument&), Object* (Job::*get)()) {
  const std::unique_ptr<Object> former(new Object);
  const BlockWatch watch(former.get());
  (job.*set)(*former);
  auto* object = new Object;
  (job.*set)(*object);
  EXPECT_EQ((job.*get)(), object);
  EXPECT_FALSE(watch.isFreed());
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

template <class Job>
void expectKind(Job& job, unsigned int type) {
  EXPECT_EQ(job.jobType(), type);
  job.setJobID(77);
  std::unique_ptr<BKQJob> clone(static_cast<BKQJob&>(job).clone());
  EXPECT_NE(dynamic_cast<Job*>(clone.get()), nullptr);
  EXPECT_EQ(clone->jobType(), type);
  EXPECT_EQ(clone->getJobID(), 77u);
  EXPECT_EQ(clone->getJobName(), job.getJobName());
}

TEST(Job, KindsAndTheirClones) {
  EXPECT_EQ(BKQJob().jobType(), 1u);
  BKQBackupJob backup("n");
  expectKind(backup, 1);
  BKQCustomBackupJob custom("n");
  expectKind(custom, 1);
  BKQCruiseBackupJob cruise("n");
  expectKind(cruise, 3);
  BKQCruiseMakeupJob cruiseMakeup("n");
  expectKind(cruiseMakeup, 5);
  BKQRestoreJob restore("n");
  expectKind(restore, 7);
  BKQMergeJob merge;
  expectKind(merge, 8);
  BKQDatabaseBackupJob database("n");
  expectKind(database, 9);
  BKQDatabaseRestoreJob databaseRestore("n");
  expectKind(databaseRestore, 10);
  BKQCompareJob compare("n");
  expectKind(compare, 11);
  BKQScanJob scan;
  expectKind(scan, 14);
  BKQRotationBackupJob rotation("n");
  expectKind(rotation, 20);
  BKQRotationMakeupJob rotationMakeup("n");
  expectKind(rotationMakeup, 21);
  BKQVerifyJob verify("n");
  expectKind(verify, 29);
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

class ForeignSchedule : public BKQSchedule {
 public:
  unsigned int getType() const override { return 3; }
};

TEST(Job, SchedulesByClass) {
  BKQCruiseBackupJob cruise;
  expectTypedSchedule<BKQCruiseBackupJob, BKQCruiseSchedule, BKQRotationSchedule>(cruise);
  BKQCruiseMakeupJob cruiseMakeup;
  expectTypedSchedule<BKQCruiseMakeupJob, BKQCruiseSchedule, BKQRotationSchedule>(cruiseMakeup);
  BKQRotationBackupJob rotation;
  expectTypedSchedule<BKQRotationBackupJob, BKQRotationSchedule, BKQRegularSchedule>(rotation);
  BKQRotationMakeupJob makeup;
  expectTypedSchedule<BKQRotationMakeupJob, BKQRotationSchedule, BKQCustomSchedule>(makeup);
  BKQCustomBackupJob custom;
  expectTypedSchedule<BKQCustomBackupJob, BKQCustomSchedule, BKQRegularSchedule>(custom);
  BKQDatabaseBackupJob database("n");
  expectTypedSchedule<BKQDatabaseBackupJob, BKQRegularSchedule, ForeignSchedule>(database);
  BKQRestoreJob restore("n");
  expectTypedSchedule<BKQRestoreJob, BKQRegularSchedule, ForeignSchedule>(restore);
  BKQVerifyJob verify("n");
  expectTypedSchedule<BKQVerifyJob, BKQRegularSchedule, ForeignSchedule>(verify);
  BKQMergeJob merge;
  expectTypedSchedule<BKQMergeJob, BKQRegularSchedule, ForeignSchedule>(merge);
  BKQScanJob scan;
  expectTypedSchedule<BKQScanJob, BKQRegularSchedule, ForeignSchedule>(scan);
}

TEST(BackupJob, Attributes) {
  BKQBackupJob object;
  expectNumber(object, &BKQBackupJob::getMaxThreads, &BKQBackupJob::setMaxThreads, 0);
  expectNumber(object, &BKQBackupJob::getTapeMethod, &BKQBackupJob::setTapeMethod, 0);
  expectNumber(object, &BKQBackupJob::getSpanMethod, &BKQBackupJob::setSpanMethod, 0);
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
using BackupJobs =
    testing::Types<BKQBackupJob, BKQCruiseBackupJob, BKQRotationBackupJob, BKQCruiseMakeupJob,
                   BKQRotationMakeupJob, BKQCustomBackupJob, BKQDatabaseBackupJob>;
TYPED_TEST_SUITE(BackupJobTest, BackupJobs, );

TYPED_TEST(BackupJobTest, CopyHasTheAttributes) {
  const std::unique_ptr<TypeParam> owner = newObject<TypeParam>();
  TypeParam& object = *owner;
  expectNumber(object, &BKQBackupJob::getMaxThreads, &BKQBackupJob::setMaxThreads, 0);
  expectNumber(object, &BKQBackupJob::getTapeMethod, &BKQBackupJob::setTapeMethod, 0);
  expectNumber(object, &BKQBackupJob::getSpanMethod, &BKQBackupJob::setSpanMethod, 0);
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

// Whichever allocation fails, alone or with all behind it, a clone is null or can be used and
// deleted, and its source stays as it was.
void expectClonesInScarceMemory(BKQJob& job) {
  const std::size_t parts = partsOf(job).size();
  for (FailingNew::Mode mode : {FailingNew::kOnce, FailingNew::kFromThenOn}) {
    bool hasFailed = true;
    unsigned int nth = 0;
    while (hasFailed) {
      BKQJob* clone = nullptr;
      {
        const FailingNew scarceMemory(++nth, mode);
        clone = job.clone();
        hasFailed = scarceMemory.hasFailed();
      }
      EXPECT_EQ(clone == nullptr, nth == 1);
      if (clone != nullptr) deleteClone(clone, job);
      EXPECT_EQ(partsOf(job).size(), parts);
    }
    EXPECT_GT(nth, 5u);
  }
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

// A client's class that inherits clone() from a root class.
TEST(RestoreJob, PartsThatCloneToNullAreMissingFromACopy) {
  ForeignFilter filter(1);
  BKQFileFilter own(BKQFilter::Include, "*");
  BKQRestoreJob job("n");
  job.addFilter(filter);
  job.addFilter(own);
  job.BKQJob::setSchedule(*new ForeignSchedule);
  job.setEMailInfo(*new ForeignEMail([](void*, bool) { return 1; }));
  const std::unique_ptr<BKQRestoreJob> clone(job.clone());
  EXPECT_EQ(clone->filterEntries(), 1u);
  EXPECT_EQ(clone->scheduleExists(), 0);
  EXPECT_EQ(clone->emailInfoExists(), 0);
  BKQFilterCol* filters = nullptr;
  ASSERT_EQ(clone->enumFilters(filters, 1), 1u);
  delete filters->at(0);
  delete filters;
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

TEST(RestoreJob, ClonesInScarceMemory) {
  Keeper keeper;
  BKQRestoreJob job("restore");
  defineRestore(job, keeper);
  expectClonesInScarceMemory(job);
}

TEST(MergeJob, ClonesInScarceMemory) {
  Keeper keeper;
  BKQMergeJob job;
  defineMerge(job, keeper);
  expectClonesInScarceMemory(job);
}

TEST(RestoreJob, Attributes) {
  BKQRestoreJob object("n");
  expectNumber(object, &BKQRestoreJob::getOnConflict, &BKQRestoreJob::setOnConflict, 3);
  expectNumber(object, &BKQRestoreJob::getRestoreView, &BKQRestoreJob::setRestoreView, 1);
  expectText(object, &BKQRestoreJob::getSessionPassword, &BKQRestoreJob::setSessionPassword);
  BKQDatabaseRestoreJob database("n");
  expectNumber(database, &BKQRestoreJob::getOnConflict, &BKQRestoreJob::setOnConflict, 3);
  expectNumber(database, &BKQRestoreJob::getRestoreView, &BKQRestoreJob::setRestoreView, 1);
  expectText(database, &BKQRestoreJob::getSessionPassword, &BKQRestoreJob::setSessionPassword);
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
  static void expectNumbers(Job& job) {
    expectNumber(job, &Job::getMergeType, &Job::setMergeType, 0);
    expectNumber(job, &Job::getDetailedMerge, &Job::setDetailedMerge, 0);
  }
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
  static void expectNumbers(Job& job) {
    expectNumber(job, &Job::getScanType, &Job::setScanType, 0);
    expectNumber(job, &Job::getDetailedScan, &Job::setDetailedScan, 0);
  }
};

template <class Kind>
class MergeAndScanTest : public testing::Test {};
using MergeAndScan = testing::Types<Merge, Scan>;
TYPED_TEST_SUITE(MergeAndScanTest, MergeAndScan, );

TYPED_TEST(MergeAndScanTest, RangeAndNumbers) {
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
  TypeParam::expectNumbers(job);
}

TYPED_TEST(MergeAndScanTest, FilterIsASessionOrARange) {
  const struct {
    const char* text;
    int accepted;
  } rows[] = {
      {"12", 1},  {"1", 1},      {"5000", 1},   {"0", 0},     {"5001", 0},
      {"-1", 1},  {"", 0},       {"abc", 0},    {"12abc", 1}, {"99999999999999999999", 0},
      {"3-7", 1}, {"7-7", 1},    {"7-3", 0},    {"9-4", 0},   {"1-2-3", 0},
      {"0-5", 0}, {"1-5001", 0}, {"5-", 1},     {"-5", 1},    {"3--7", 1},
      {"-", 1},   {"--", 1},     {"1-5000", 1}, {"4-5-", 1},  {"1-99999999999999999999", 0},
      {"x-5", 0}, {" 7", 1},     {" -5", 0},    {"5- -7", 0}, {"5- 7", 1},
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
