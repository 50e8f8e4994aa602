// The life of a job of every class: construct, fill, clone, flatten in both layouts, destroy. With
// LeakSanitizer nothing may be left but what tests/support/leaks.cpp names.

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "examples/nightly_job.h"
#include "tests/catalog/kinds.h"
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

// What a family's jobs show, and what their clones show: a cloned backup has its nodes and filters
// twice, cloned nodes and a cloned destination have their media twice.
struct Expected {
  Counts filled;
  Counts cloned;
};
constexpr Expected expectedOf(JobFamily family) {
  switch (family) {
    case JobFamily::kPlain:
      return {{0, 0, 0, 0, 0}, {0, 0, 0, 0, 0}};
    case JobFamily::kBackup:
      return {{2, 1, 2, 1, 1}, {4, 1, 3, 2, 2}};
    case JobFamily::kRestore:
      return {{1, 2, 2, 1, 1}, {1, 2, 2, 2, 1}};
    case JobFamily::kVerify:
    case JobFamily::kScan:
      return {{1, 0, 1, 1, 0}, {1, 0, 1, 2, 0}};
    case JobFamily::kCompare:
    case JobFamily::kMerge:
      return {{1, 1, 1, 1, 1}, {1, 1, 1, 2, 2}};
  }
  return {};
}

template <class Schedule>
auto newSchedule(Life& life) {
  if constexpr (std::is_same_v<Schedule, BKQCustomSchedule>) {
    return new BKQCustomSchedule(1, 2, 3, 4);
  } else if constexpr (std::is_base_of_v<BKQRotationSchedule, Schedule>) {
    return life.rotation<Schedule>();
  } else {
    return new BKQRegularSchedule;  // what the root class takes as well
  }
}

// A new job of the class, filled.
template <class Job, class Schedule, JobFamily family>
BKQJob* newFilled(Life& life) {
  auto* job = newNamed<Job>("n");
  if constexpr (family == JobFamily::kBackup) {
    return life.backup(job, newSchedule<Schedule>(life));
  } else if constexpr (family == JobFamily::kRestore) {
    return life.restore(job);
  } else if constexpr (family == JobFamily::kVerify || family == JobFamily::kCompare) {
    life.verify(job);
    if constexpr (family == JobFamily::kCompare) job->setDestination(life.machine());
    return job;
  } else {
    life.fillBase(job, new BKQRegularSchedule);
    if constexpr (family != JobFamily::kPlain) {
      job->setSource(life.fillTapes(new BKQTapeNode("library")));
    }
    if constexpr (family == JobFamily::kMerge) job->setDestination(life.machine());
    return job;
  }
}

const Kind kKinds[] = {
#define BKOQ_LINE(kind, class_, code, word, schedule, family, names) \
  {#kind, code, newFilled<class_, schedule, JobFamily::k##family>,   \
   expectedOf(JobFamily::k##family).filled, expectedOf(JobFamily::k##family).cloned},
    BKOQ_JOB_KINDS(BKOQ_LINE)
#undef BKOQ_LINE
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
