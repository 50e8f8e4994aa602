// The life of a job of every class: construct, fill, clone, flatten in both layouts, destroy. With
// LeakSanitizer nothing may be left but what tests/support/leaks.cpp names.

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <typeinfo>

#include "examples/nightly_job.h"
#include "tests/support/free_records.h"
#include "tests/support/parts.h"
#include "tests/support/rows.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

// How often each part is found in the records of a filled job, and in those of its clone.
struct Counts {
  unsigned int sources;       // ulNumSourceNodes
  unsigned int destinations;  // ulNumDestNodes
  unsigned int filters;       // ulFilterCount of the first source
  unsigned int media;         // ulMediaCount of the last source
  unsigned int destMedia;     // ulMediaCount of the first destination
};

class Life;

struct Kind {
  const char* name;
  unsigned int jobType;
  BKQJob* (*make)(Life& life);  // a new job of the class, filled
  Counts filled;
  Counts cloned;
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

// What a job refers to and does not delete.
class Life : public testing::TestWithParam<Kind> {
 public:
  // What every job has: texts, and all four attachments, which a copy needs.
  template <class Job, class Schedule>
  Job* fillBase(Job* job, Schedule* schedule) {
    job->setOwner("owner");
    job->setHost("host");
    job->setComments("comments");
    job->setOptions(0x00100000);
    auto* fax = new BKQFax;
    fax->setReceiverName("receiver");
    job->setFaxInfo(*fax);
    auto* email = new BKQMHSEMail;
    email->setMHSDir("dir");
    job->setEMailInfo(*email);
    printQueue_.setQueueName("queue");
    job->setPrintQueue(printQueue_);
    schedule->setSubmitTime(storedTime(kJanuary));
    schedule->setExecTime(storedTime(kJuly));
    job->setSchedule(*schedule);
    return job;
  }

  template <class Rotation>
  Rotation* rotation() {
    auto* mask = new BKQJobMask;
    mask->addJobUnit(keeper_.make<BKQJobUnit>());
    auto* schedule = new Rotation;
    schedule->setSetName("set");
    schedule->setJobMask(*mask);
    schedule->addExceptionDay(keeper_.make<BKQExceptionDay>());
    return schedule;
  }

  template <class Job, class Schedule>
  Job* backup(Job* job, Schedule* schedule) {
    fillBase(job, schedule);
    auto& unixNode = keeper_.make<BKQUnixNode>("unix");
    unixNode.addDisk(disk());
    unixNode.addFilter(keeper_.make<BKQDirFilter>(BKQFilter::Exclude, "/tmp"));
    job->addSourceNode(unixNode);
    auto& winNT = keeper_.make<BKQWinNTNode>("winnt");
    winNT.addDisk(disk());
    job->addSourceNode(winNT);
    job->addFilter(keeper_.make<BKQFileFilter>(BKQFilter::Exclude, "*.o"));
    job->setDestination(fillTapes(new BKQTapeNode("library")));
    job->setOpenFileInfo(openFileInfo_);
    job->setSessionPassword("secret");
    return job;
  }

  template <class Job>
  Job* restore(Job* job) {
    fillBase(job, new BKQRegularSchedule);
    job->addSourceNode(fillTapes(&keeper_.make<BKQTapeNode>("library")));
    job->addDestNode(keeper_.make<BKQRestoreNode>("machine", "/usr"));
    auto& database = keeper_.make<BKQDBRestoreNode>("database", "accounts");
    database.setDBuser("sa", "pw");
    job->addDestNode(database);
    job->addFilter(keeper_.make<BKQFileFilter>(BKQFilter::Include, "*.c"));
    job->setSessionPassword("secret");
    return job;
  }

  template <class Job>
  Job* verify(Job* job) {
    fillBase(job, new BKQRegularSchedule);
    job->addSourceNode(fillTapes(&keeper_.make<BKQTapeNode>("library")));
    return job;
  }

  BKQDiskNode& machine() {
    auto* node = new BKQWinNTNode("machine");
    node->addDisk(disk());
    return *node;
  }

  BKQTapeNode& fillTapes(BKQTapeNode* node) {
    auto& tape = keeper_.make<BKQTape>("group", "tape");
    auto& item = keeper_.make<BKQTapeItem>(1u, static_cast<unsigned short>(2));
    item.setFileOrDir("etc");
    tape.addTapeItem(item);
    tape.addFilter(keeper_.make<BKQVolumeFilter>(BKQFilter::Include, "vol"));
    auto& extension = keeper_.make<BKQTapeXtension>(1000L);
    extension.setDBuser("sa");
    tape.setTapeXtension(extension);
    node->addTape(tape);
    node->addFilter(keeper_.make<BKQAttributeFilter>(BKQFilter::Include, 1u));
    return *node;
  }

 protected:
  ~Life() override { freeSessionPasswords(); }

  BKQDisk& disk() {
    auto& disk = keeper_.make<BKQDisk>(static_cast<BKQDisk::BKQDiskType>(22));
    disk.setDiskName("/usr");
    disk.setUser("user");
    disk.setDiskPW2("second");
    auto& item = keeper_.make<BKQDiskItem>("/lib");
    item.addFile("a");
    item.addFile("bc");
    disk.addDiskItem(item);
    disk.addFilter(keeper_.make<BKQDirFilter>(BKQFilter::Include, "/usr"));
    return disk;
  }

  static void flatten(BKQJob& job, const Counts& counts) {
    void* out = nullptr;
    ASSERT_EQ(job.convertToBK2(out), 1);
    expectRecord(static_cast<BKQJDATATRANSFER*>(out), counts, false);
    ASSERT_EQ(job.convertToBK2_old(out), 1);
    expectRecord(static_cast<BKQJDATATRANSFER_OLD*>(out), counts, true);
    freeSessionPasswords();
  }

 private:
  template <class Job>
  static void expectRecord(Job* record, const Counts& counts, bool isPrevious) {
    std::unique_ptr<Job, void (*)(Job*)> owner(record, freeJobRecord);
    EXPECT_EQ(record->usJobType, GetParam().jobType);
    EXPECT_STREQ(record->pszOwner, "owner");
    EXPECT_STREQ(record->pszHost, "host");
    EXPECT_EQ(record->ulOptions, 0x00100000u);
    EXPECT_EQ(record->stSchedule.lSubmitTime, 1705302000);
    EXPECT_EQ(record->stSchedule.lExecTime, 1721026800);
    EXPECT_STREQ(record->stFax.pszReceiverName, isPrevious ? "receiver" : nullptr);
    EXPECT_STREQ(record->stEMail.pszMHSDir, "dir");
    EXPECT_STREQ(record->stPrintQueue.pszQueueName, "queue");
    ASSERT_EQ(record->ulNumSourceNodes, counts.sources);
    if (counts.sources != 0) {
      EXPECT_EQ(record->pSourceNodes[0].ulFilterCount, counts.filters);
      EXPECT_EQ(record->pSourceNodes[counts.sources - 1].ulMediaCount, counts.media);
    }
    ASSERT_EQ(record->ulNumDestNodes, counts.destinations);
    if (counts.destinations != 0) {
      EXPECT_EQ(record->pDestNodes[0].ulMediaCount, counts.destMedia);
    }
  }

  TimeZone zone_{kFiveHoursWest};
  Keeper keeper_;
  BKQPrintQueue printQueue_;
  BKQOpenFileInfo openFileInfo_;
};

const Counts kBackup = {2, 1, 2, 1, 1};
// Nodes and filters twice; the cloned nodes and the cloned destination hold their media twice.
const Counts kBackupClone = {4, 1, 3, 2, 2};
const Counts kRestore = {1, 2, 2, 1, 1};
const Counts kRestoreClone = {1, 2, 2, 2, 1};

const Kind kKinds[] = {
    {"Job",
     1,
     [](Life& life) { return life.fillBase(new BKQJob("n"), new BKQRegularSchedule); },
     {0, 0, 0, 0, 0},
     {0, 0, 0, 0, 0}},
    {"Backup", 1,
     [](Life& life) -> BKQJob* {
       return life.backup(new BKQBackupJob("n"), new BKQRegularSchedule);
     },
     kBackup, kBackupClone},
    {"CruiseBackup", 3,
     [](Life& life) -> BKQJob* {
       return life.backup(new BKQCruiseBackupJob("n"), life.rotation<BKQCruiseSchedule>());
     },
     kBackup, kBackupClone},
    {"RotationBackup", 20,
     [](Life& life) -> BKQJob* {
       return life.backup(new BKQRotationBackupJob("n"), life.rotation<BKQRotationSchedule>());
     },
     kBackup, kBackupClone},
    {"CruiseMakeup", 5,
     [](Life& life) -> BKQJob* {
       return life.backup(new BKQCruiseMakeupJob("n"), life.rotation<BKQCruiseSchedule>());
     },
     kBackup, kBackupClone},
    {"RotationMakeup", 21,
     [](Life& life) -> BKQJob* {
       return life.backup(new BKQRotationMakeupJob("n"), life.rotation<BKQRotationSchedule>());
     },
     kBackup, kBackupClone},
    {"CustomBackup", 1,
     [](Life& life) -> BKQJob* {
       return life.backup(new BKQCustomBackupJob("n"), new BKQCustomSchedule(1, 2, 3, 4));
     },
     kBackup, kBackupClone},
    {"DatabaseBackup", 9,
     [](Life& life) -> BKQJob* {
       return life.backup(new BKQDatabaseBackupJob("n"), new BKQRegularSchedule);
     },
     kBackup, kBackupClone},
    {"Restore", 7, [](Life& life) -> BKQJob* { return life.restore(new BKQRestoreJob("n")); },
     kRestore, kRestoreClone},
    {"DatabaseRestore", 10,
     [](Life& life) -> BKQJob* { return life.restore(new BKQDatabaseRestoreJob("n")); }, kRestore,
     kRestoreClone},
    {"Verify",
     29,
     [](Life& life) -> BKQJob* { return life.verify(new BKQVerifyJob("n")); },
     {1, 0, 1, 1, 0},
     {1, 0, 1, 2, 0}},
    {"Compare",
     11,
     [](Life& life) -> BKQJob* {
       auto* job = life.verify(new BKQCompareJob("n"));
       job->setDestination(life.machine());
       return job;
     },
     {1, 1, 1, 1, 1},
     {1, 1, 1, 2, 2}},
    {"Merge",
     8,
     [](Life& life) -> BKQJob* {
       auto* job = life.fillBase(new BKQMergeJob, new BKQRegularSchedule);
       job->setSource(life.fillTapes(new BKQTapeNode("library")));
       job->setDestination(life.machine());
       return job;
     },
     {1, 1, 1, 1, 1},
     {1, 1, 1, 2, 2}},
    {"Scan",
     14,
     [](Life& life) -> BKQJob* {
       auto* job = life.fillBase(new BKQScanJob, new BKQRegularSchedule);
       job->setSource(life.fillTapes(new BKQTapeNode("library")));
       return job;
     },
     {1, 0, 1, 1, 0},
     {1, 0, 1, 2, 0}},
};

// A plain job has no clone; a client copies it into one of its own.
BKQJob* copyOf(BKQJob& job) {
  BKQJob* copy = job.clone();
  if (copy != nullptr || typeid(job) != typeid(BKQJob)) return copy;
  copy = new BKQJob("copy");
  copy->mycopy(&job);
  return copy;
}

TEST_P(Life, FilledAndFlattened) {
  const std::unique_ptr<BKQJob> job(GetParam().make(*this));
  flatten(*job, GetParam().filled);
  flatten(*job, GetParam().filled);
}

TEST_P(Life, ConstructedAndDestroyed) {
  const std::unique_ptr<BKQJob> job(GetParam().make(*this));
  EXPECT_EQ(job->jobType(), GetParam().jobType);
}

TEST_P(Life, CloneIsDestroyedFirst) {
  const std::unique_ptr<BKQJob> job(GetParam().make(*this));
  BKQJob* clone = copyOf(*job);
  ASSERT_NE(clone, nullptr);
  const BKQJob& source = *job;
  EXPECT_TRUE(typeid(*clone) == typeid(source));
  EXPECT_STREQ(clone->getJobName(), job->getJobName());
  flatten(*clone, GetParam().cloned);
  flatten(*job, GetParam().filled);
  deleteClone(clone, *job);
  flatten(*job, GetParam().filled);
}

TEST_P(Life, CloneOfACloneIsDestroyedFirst) {
  const std::unique_ptr<BKQJob> job(GetParam().make(*this));
  BKQJob* clone = copyOf(*job);
  ASSERT_NE(clone, nullptr);
  BKQJob* second = copyOf(*clone);
  ASSERT_NE(second, nullptr);
  deleteClone(second, *clone);
  flatten(*clone, GetParam().cloned);
  deleteClone(clone, *job);
  flatten(*job, GetParam().filled);
}

// For classes without a virtual destructor, of objects of exactly that class.
template <class Object>
void deleteExactly(Object* object) {
  if (object == nullptr) return;
  object->Object::~Object();
  ::operator delete(object);
}

TEST_P(Life, CloneOutlivesItsSource) {
  std::unique_ptr<BKQJob> job(GetParam().make(*this));
  const std::set<RWCollectable*> shared = partsOf(*job);
  BKQJob* clone = copyOf(*job);
  ASSERT_NE(clone, nullptr);
  job.reset();
  flatten(*clone, GetParam().cloned);

  const std::set<RWCollectable*> parts = partsOf(*clone);
  BKQPrintQueue* printQueue = clone->getPrintQueue();
  auto* backup = dynamic_cast<BKQBackupJob*>(clone);
  BKQOpenFileInfo* openFileInfo = backup != nullptr ? backup->getOpenFileInfo() : nullptr;
  delete clone;
  deleteExactly(printQueue);
  deleteExactly(openFileInfo);
  for (RWCollectable* part : parts) {
    if (shared.count(part) == 0) delete part;
  }
}

INSTANTIATE_TEST_SUITE_P(EveryClass, Life, testing::ValuesIn(kKinds),
                         [](const testing::TestParamInfo<Kind>& info) {
                           return std::string(info.param.name);
                         });

}  // namespace
}  // namespace bkoq::test
