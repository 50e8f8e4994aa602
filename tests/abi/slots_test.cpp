// The virtual operations stand in slots that clients compiled before know by number: each class
// adds its own after the thirteen that every collectable has. Called here as such a client calls
// them, through the table of a real object.

#include <gtest/gtest.h>

#if defined(__i386__)

#include <stdlib.h>
#include <string.h>

#include <functional>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "tests/catalog/kinds.h"
#include "tests/catalog/layouts.h"
#include "tests/support/counted.h"
#include "tests/support/foreign_attachments.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

// Where the operations of a collectable stand.
constexpr std::size_t kDestroy = 4;
constexpr std::size_t kCompareTo = 6;
constexpr std::size_t kIsEqual = 8;
constexpr std::size_t kClone = 13;
constexpr std::size_t kKind = 14;
constexpr std::size_t kConvert = 15;
constexpr std::size_t kConvertOld = 16;
constexpr std::size_t kTimeRange = 17;

// Calls what stands in a slot: a member function takes its object as the first argument. The type
// of the function is what the table cannot tell a sanitizer.
template <class Result, class... Arguments>
__attribute__((no_sanitize("undefined"))) Result callSlot(const void* object, std::size_t slot,
                                                          Arguments... arguments) {
  using Operation = Result (*)(const void*, Arguments...);
  const char* table;
  memcpy(&table, object, sizeof table);
  Operation operation;
  memcpy(&operation, table + slot * sizeof(void*), sizeof operation);
  return operation(object, arguments...);
}

template <class Object>
std::string classOf(const Object& object) {
  return typeid(object).name();
}

class Slots : public testing::Test {
 protected:
  void TearDown() override {
    if (!HasFailure()) return;
    ADD_FAILURE()
        << "a virtual function does not stand where clients that were compiled before call "
           "it: put new ones after those that are there, or give the library a new major "
           "version and these tests the new slots";
  }
};

// A family of classes whose clone() is the first slot of its own.
template <class Root>
struct Member {
  std::function<Root*()> make;
  unsigned int kind;
};

template <class Root>
void expectCloneAndKind(const Member<Root>& row) {
  const std::unique_ptr<Root> object(row.make());
  SCOPED_TRACE(classOf(*object));
  EXPECT_EQ(callSlot<unsigned int>(object.get(), kKind), row.kind);
  const std::unique_ptr<Root> clone(callSlot<Root*>(object.get(), kClone));
  ASSERT_NE(clone, nullptr);
  EXPECT_NE(clone, object);
  EXPECT_EQ(classOf(*clone), classOf(*object));
}

// Each kind of job by the catalogue; a compare job has its machine, without which there is nothing
// to compare with.
std::vector<Member<BKQJob>> allJobs() {
  std::vector<Member<BKQJob>> jobs;
  for (const JobKindLine& line : kJobKinds) {
    if (line.kind == JobClass::kBase) continue;  // clones to null
    jobs.push_back({[&line] {
                      BKQJob* job = line.make("n");
                      auto* compare = dynamic_cast<BKQCompareJob*>(job);
                      if (compare != nullptr) compare->setDestination(*new BKQMacNode("machine"));
                      return job;
                    },
                    line.code});
  }
  return jobs;
}

TEST_F(Slots, JobsCloneAndTellTheirKind) {
  for (const Member<BKQJob>& row : allJobs()) expectCloneAndKind(row);
  BKQJob job;
  EXPECT_EQ(callSlot<BKQJob*>(&job, kClone), nullptr);
  EXPECT_EQ(callSlot<unsigned int>(&job, kKind), 1u);
}

// The layout of a flattening is seen in whose variables it sets.
TEST_F(Slots, JobsConvert) {
  const auto expect = [](BKQJob& job) {
    SCOPED_TRACE(classOf(job));
    job.setNewTapeTimeout(77);
    void* out = nullptr;
    EXPECT_EQ(callSlot<int>(&job, kConvert, &out), 1);
    EXPECT_EQ(BK6_NEWTAPETIMEOUT, 77u);
    EXPECT_EQ(BK6_NEWTAPETIMEOUT_OLD, 0u);
    EXPECT_EQ(numberAt(out, 4, 2), job.jobType());
    freeJobRecord(static_cast<BKQJDATATRANSFER*>(out));
    BK6_NEWTAPETIMEOUT = 0;
    EXPECT_EQ(callSlot<int>(&job, kConvertOld, &out), 1);
    EXPECT_EQ(BK6_NEWTAPETIMEOUT, 0u);
    EXPECT_EQ(BK6_NEWTAPETIMEOUT_OLD, 77u);
    EXPECT_EQ(numberAt(out, 4, 2), job.jobType());
    freeJobRecord(static_cast<BKQJDATATRANSFER_OLD*>(out));
    BK6_NEWTAPETIMEOUT_OLD = 0;
  };
  for (const Member<BKQJob>& row : allJobs()) expect(*std::unique_ptr<BKQJob>(row.make()));
  BKQJob job;
  expect(job);
}

std::vector<Member<BKQNode>> allNodes() {
  std::vector<Member<BKQNode>> nodes;
  for (const NodeKindLine& line : kNodeKinds) {
    nodes.push_back({[&line] { return line.make("n"); }, line.code});
  }
  return nodes;
}

TEST_F(Slots, NodesCloneAndTellTheirKind) {
  for (const Member<BKQNode>& row : allNodes()) expectCloneAndKind(row);
}

TEST_F(Slots, NodesConvert) {
  for (const Member<BKQNode>& row : allNodes()) {
    const std::unique_ptr<BKQNode> node(row.make());
    SCOPED_TRACE(classOf(*node));
    // What is set last in the variable: a restore node has no actual type yet.
    const bool isRestore = row.kind == 25 || row.kind == 27;
    const unsigned int type = row.kind == 24 ? 3 : isRestore ? 0 : row.kind;
    CURRENT_NODETYPE = CURRENT_NODETYPE_OLD = 99;
    BKNODE record{};
    void* rec = &record;
    EXPECT_EQ(callSlot<int>(node.get(), kConvert, &rec), 1);
    EXPECT_STREQ(record.pszNodeName, "n");
    EXPECT_EQ(CURRENT_NODETYPE, type);
    EXPECT_EQ(CURRENT_NODETYPE_OLD, 99u);
    freeNodeContents(record, NodeFamily::kDisk);
    CURRENT_NODETYPE = 99;
    BKNODE_OLD recordOld{};
    rec = &recordOld;
    EXPECT_EQ(callSlot<int>(node.get(), kConvertOld, &rec), 1);
    EXPECT_STREQ(recordOld.pszNodeName, "n");
    EXPECT_EQ(CURRENT_NODETYPE, 99u);
    EXPECT_EQ(CURRENT_NODETYPE_OLD, row.kind == 13 ? 6 : type);
    freeNodeContents(recordOld, NodeFamily::kDisk);
  }
}

constexpr auto kAttribute = static_cast<BKQTimeFilter::BKQTimeAttrType>(2);

const Member<BKQFilter> kFilters[] = {
    {[] { return new BKQVolumeFilter; }, 1},
    {[] { return new BKQFileFilter; }, 2},
    {[] { return new BKQDirFilter; }, 3},
    {[] { return new BKQAttributeFilter; }, 5},
    {[] { return new BKQBeforeTimeFilter(kAttribute); }, 4},
    {[] { return new BKQAfterTimeFilter(kAttribute); }, 4},
    {[] { return new BKQBetweenTimeFilter(kAttribute); }, 4},
    {[] { return new BKQWithinTimeFilter(kAttribute); }, 4},
};

TEST_F(Slots, FiltersCloneAndTellTheirKind) {
  for (const Member<BKQFilter>& row : kFilters) expectCloneAndKind(row);
}

TEST_F(Slots, FiltersConvert) {
  for (const Member<BKQFilter>& row : kFilters) {
    const std::unique_ptr<BKQFilter> filter(row.make());
    SCOPED_TRACE(classOf(*filter));
    for (const std::size_t slot : {kConvert, kConvertOld}) {
      BKFILTER_FILE record{};
      void* rec = &record;
      EXPECT_EQ(callSlot<int>(filter.get(), slot, &rec), 1);
      EXPECT_EQ(record.usFilterType, row.kind);
    }
  }
  // One class whose entries tell the layouts apart.
  ForeignFilter foreign(7);
  BKFILTER_FILE record{};
  void* rec = &record;
  EXPECT_EQ(callSlot<int>(&foreign, kConvert, &rec), 7);
  EXPECT_EQ(record.usFilterType, ForeignFilter::kCurrentMark);
  EXPECT_EQ(callSlot<int>(&foreign, kConvertOld, &rec), 7);
  EXPECT_EQ(record.usFilterType, ForeignFilter::kPreviousMark);
}

TEST_F(Slots, TimeFiltersTellTheirRange) {
  BKQBeforeTimeFilter before;
  BKQAfterTimeFilter after;
  BKQBetweenTimeFilter between;
  BKQWithinTimeFilter within;
  EXPECT_EQ(callSlot<unsigned int>(&before, kTimeRange), 0u);
  EXPECT_EQ(callSlot<unsigned int>(&after, kTimeRange), 1u);
  EXPECT_EQ(callSlot<unsigned int>(&between, kTimeRange), 2u);
  EXPECT_EQ(callSlot<unsigned int>(&within, kTimeRange), 3u);
}

const Member<BKQSchedule> kSchedules[] = {
    {[] { return new BKQCustomSchedule; }, 0},
    {[] { return new BKQCruiseSchedule; }, 1},
    {[] { return new BKQRotationSchedule; }, 2},
    {[] { return new BKQRegularSchedule; }, 3},
};

TEST_F(Slots, SchedulesCloneAndTellTheirKind) {
  for (const Member<BKQSchedule>& row : kSchedules) expectCloneAndKind(row);
}

TEST_F(Slots, SchedulesConvert) {
  for (const Member<BKQSchedule>& row : kSchedules) {
    const std::unique_ptr<BKQSchedule> schedule(row.make());
    SCOPED_TRACE(classOf(*schedule));
    schedule->setSubmitTime(RWCollectableTime(3255627600UL));
    for (const std::size_t slot : {kConvert, kConvertOld}) {
      BKSCHEDINFO record{};
      BKROTATIONINFO rotation{};
      void* schedBlock = &record;
      void* rotationBlock = &rotation;
      EXPECT_EQ(callSlot<int>(schedule.get(), slot, &schedBlock, &rotationBlock), 1);
      EXPECT_NE(record.lSubmitTime, 0);
    }
  }
  BkoqLayout converted = BKOQ_LAYOUT_WIDEST;
  ForeignSchedule foreign([&](void* /*block*/, BkoqLayout layout) {
    converted = layout;
    return 7;
  });
  void* schedBlock = nullptr;
  char rotation = 0;
  void* rotationBlock = &rotation;
  EXPECT_EQ(callSlot<int>(&foreign, kConvertOld, &schedBlock, &rotationBlock), 7);
  EXPECT_EQ(converted, BKOQ_LAYOUT_PREVIOUS);
  EXPECT_EQ(callSlot<int>(&foreign, kConvert, &schedBlock, &rotationBlock), 7);
  EXPECT_EQ(converted, BKOQ_LAYOUT_CURRENT);
  EXPECT_EQ(foreign.rotationBlock(), &rotation);
}

// Classes whose clone() is the only slot of their own.
TEST_F(Slots, PartsClone) {
  const std::unique_ptr<RWCollectable> parts[] = {
      std::make_unique<BKQDisk>(),         std::make_unique<BKQDiskItem>(),
      std::make_unique<BKQTape>(),         std::make_unique<BKQTapeItem>(),
      std::make_unique<BKQGroom>(),        std::make_unique<BKQTime>(),
      std::make_unique<BKQJobMask>(),      std::make_unique<BKQJobUnit>(),
      std::make_unique<BKQExceptionDay>(),
  };
  for (const std::unique_ptr<RWCollectable>& part : parts) {
    SCOPED_TRACE(classOf(*part));
    const std::unique_ptr<RWCollectable> clone(callSlot<RWCollectable*>(part.get(), kClone));
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(classOf(*clone), classOf(*part));
  }
}

// The classes that compare in a way of their own: jobs by ID, machines by priority, texts and times
// by value.
TEST_F(Slots, CollectablesCompareThroughTheirs) {
  const auto isEqual = [](const RWCollectable& left, const RWCollectable& right) {
    return callSlot<RWBoolean, const RWCollectable*>(&left, kIsEqual, &right) != 0;
  };
  const auto compare = [](const RWCollectable& left, const RWCollectable& right) {
    return callSlot<int, const RWCollectable*>(&left, kCompareTo, &right);
  };
  BKQBackupJob job("a");
  BKQScanJob sameID;
  EXPECT_TRUE(isEqual(job, sameID));
  sameID.setJobID(7);
  EXPECT_FALSE(isEqual(job, sameID));
  BKQMacNode first("a");
  BKQMacNode second("b");
  first.setPriority(1);
  second.setPriority(2);
  EXPECT_EQ(compare(first, second), -1);
  EXPECT_EQ(compare(second, first), 1);
  EXPECT_FALSE(isEqual(first, second));
  EXPECT_TRUE(isEqual(RWCollectableString("x"), RWCollectableString("x")));
  EXPECT_FALSE(isEqual(RWCollectableString("x"), RWCollectableString("y")));
  EXPECT_LT(compare(RWCollectableString("x"), RWCollectableString("y")), 0);
  EXPECT_TRUE(isEqual(RWCollectableTime(5), RWCollectableTime(5)));
  EXPECT_GT(compare(RWCollectableTime(6), RWCollectableTime(5)), 0);
}

// Tells the slot that deletes an object from the one before it, which destroys it only.
unsigned int deleted = 0;
template <class Object>
class Deleted : public Counted<Object> {
 public:
  using Counted<Object>::Counted;
  static void* operator new(std::size_t size) { return ::operator new(size); }
  static void operator delete(void* object) {
    ++deleted;
    ::operator delete(object);
  }
};

TEST_F(Slots, CollectablesAreDeletedThroughTheirs) {
  int destroyed = 0;
  deleted = 0;
  callSlot<void>(new Deleted<BKQJob>(destroyed), kDestroy);
  callSlot<void>(new Deleted<BKQUnixNode>(destroyed, "n"), kDestroy);
  callSlot<void>(new Deleted<BKQDirFilter>(destroyed), kDestroy);
  callSlot<void>(new Deleted<BKQRegularSchedule>(destroyed), kDestroy);
  callSlot<void>(new Deleted<BKQDisk>(destroyed), kDestroy);
  callSlot<void>(new Deleted<BKQDiskItem>(destroyed), kDestroy);
  callSlot<void>(new Deleted<BKQTape>(destroyed), kDestroy);
  callSlot<void>(new Deleted<BKQTapeItem>(destroyed), kDestroy);
  callSlot<void>(new Deleted<BKQTapeXtension>(destroyed), kDestroy);
  callSlot<void>(new Deleted<BKQNodeCol>(destroyed), kDestroy);
  EXPECT_EQ(destroyed, 10);
  EXPECT_EQ(deleted, 10u);
}

// What is no collectable begins at slot 0; the destructor of the e-mail classes comes after the
// operations.

TEST_F(Slots, EMail) {
  BKQInternetEMail internet;
  BKQMHSEMail mhs;
  BKQEMail* const objects[] = {&internet, &mhs};
  for (unsigned int type = 0; type < 2; ++type) {
    BKQEMail* email = objects[type];
    email->setHostName("host");
    const std::unique_ptr<BKQEMail> clone(callSlot<BKQEMail*>(email, 0));
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(classOf(*clone), classOf(*email));
    EXPECT_EQ(callSlot<unsigned int>(email, 1), type);
    for (const std::size_t slot : {2, 3}) {
      BKEMAILINFO record{};
      void* block = &record;
      EXPECT_EQ(callSlot<int>(email, slot, &block), 1);
      EXPECT_STREQ(record.pszHostName, "host");
      free(record.pszHostName);
    }
  }
  BkoqLayout converted = BKOQ_LAYOUT_WIDEST;
  ForeignEMail foreign([&](void* /*block*/, BkoqLayout layout) {
    converted = layout;
    return 7;
  });
  void* block = nullptr;
  EXPECT_EQ(callSlot<int>(&foreign, 2, &block), 7);
  EXPECT_EQ(converted, BKOQ_LAYOUT_CURRENT);
  EXPECT_EQ(callSlot<int>(&foreign, 3, &block), 7);
  EXPECT_EQ(converted, BKOQ_LAYOUT_PREVIOUS);

  int destroyed = 0;
  deleted = 0;
  callSlot<void>(new Deleted<BKQMHSEMail>(destroyed), 5);
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(deleted, 1u);
}

template <class Object>
void expectClone(Object& object) {
  const std::unique_ptr<Object> clone(callSlot<Object*>(&object, 0));
  ASSERT_NE(clone, nullptr);
  EXPECT_NE(clone.get(), &object);
  EXPECT_EQ(classOf(*clone), classOf(object));
}

TEST_F(Slots, FaxPrintQueueAndOpenFileInfoClone) {
  BKQFax fax;
  expectClone(fax);
  BKQPrintQueue queue;
  expectClone(queue);
  BKQOpenFileInfo info;
  expectClone(info);
}

}  // namespace

#endif

}  // namespace bkoq::test
