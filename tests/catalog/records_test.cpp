// Every attribute of every class by the catalogue: the fields of the records that it fills, and no
// others, in both layouts. Two jobs that differ in the one attribute are flattened and compared.

#include <bkoq/kit.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/catalog/attributes.h"
#include "tests/catalog/classes.h"
#include "tests/catalog/layouts.h"

namespace bkoq::test {
namespace {

// A fresh object of the class, in a job by which it reaches the records.
template <class Object>
class Carrier {
 public:
  Carrier() {
    if constexpr (std::is_base_of_v<BKQJob, Object>) {
      object_ = newNamed<Object>("job");
      job_.reset(object_);
      addMedia(*object_);
    } else if constexpr (std::is_base_of_v<BKQNode, Object>) {
      object_ = newNode<Object>();
      addNode(*object_);
    } else if constexpr (std::is_base_of_v<BKQSchedule, Object>) {
      object_ = new Object;
      addSchedule(*object_);
    } else if constexpr (std::is_same_v<BKQFax, Object> || std::is_base_of_v<BKQEMail, Object>) {
      object_ = new Object;
      job_ = std::make_unique<BKQJob>("job");
      attach(*object_);
    } else {
      object_ = keep<Object>();
      add(*object_);
    }
  }

  Object& object() { return *object_; }
  BKQJob& job() { return *job_; }

 private:
  template <class Part, class... Arguments>
  Part* keep(Arguments... arguments) {
    auto part = std::make_shared<Part>(arguments...);
    kept_.push_back(part);
    return part.get();
  }
  template <class Node>
  Node* newNode() {
    return keep<Node>("node");
  }
  BKQDiskNode& machine() {
    auto* node = keep<BKQWinNTNode>("machine");
    node->addDisk(*keep<BKQDisk>());
    return *node;
  }
  BKQTapeNode* fill(BKQTapeNode* node) {
    node->addTape(*keep<BKQTape>());
    return node;
  }

  void addMedia(BKQBackupJob& job) {
    job.addSourceNode(machine());
    job.setDestination(*fill(new BKQTapeNode("tapes")));
  }
  void addMedia(BKQRestoreJob& job) { job.addSourceNode(*fill(keep<BKQTapeNode>("tapes"))); }
  void addMedia(BKQVerifyJob& job) {
    job.addSourceNode(*fill(keep<BKQTapeNode>("tapes")));
    if constexpr (std::is_same_v<BKQCompareJob, Object>) {
      object_->setDestination(*new BKQWinNTNode("machine"));
    }
  }
  void addMedia(BKQMergeJob& job) { job.setSource(*fill(new BKQTapeNode("tapes"))); }
  void addMedia(BKQScanJob& job) { job.setSource(*fill(new BKQTapeNode("tapes"))); }
  void addMedia(BKQJob& /*job*/) {}

  template <class Job>
  Job& newJob() {
    auto* job = newNamed<Job>("job");
    job_.reset(job);
    return *job;
  }

  void addNode(BKQDiskNode& node) {
    node.addDisk(*keep<BKQDisk>());
    newJob<BKQBackupJob>().addSourceNode(node);
  }
  void addNode(BKQTapeNode& node) { newJob<BKQRestoreJob>().addSourceNode(*fill(&node)); }
  void addNode(BKQRestoreNode& node) { newJob<BKQRestoreJob>().addDestNode(node); }

  void addSchedule(BKQSchedule& schedule) { newJob<BKQJob>().setSchedule(schedule); }
  BKQRotationSchedule& rotation() {
    auto* schedule = new BKQRotationSchedule;
    addSchedule(*schedule);
    return *schedule;
  }
  BKQJobMask& mask() {
    auto* mask = new BKQJobMask;
    rotation().setJobMask(*mask);
    return *mask;
  }

  void attach(BKQFax& fax) { job_->setFaxInfo(fax); }
  void attach(BKQEMail& email) { job_->setEMailInfo(email); }

  void add(BKQPrintQueue& queue) { newJob<BKQJob>().setPrintQueue(queue); }
  void add(BKQOpenFileInfo& info) { newJob<BKQBackupJob>().setOpenFileInfo(info); }
  void add(BKQDisk& disk) {
    auto* node = keep<BKQWinNTNode>("machine");
    node->addDisk(disk);
    newJob<BKQBackupJob>().addSourceNode(*node);
  }
  void add(BKQDiskItem& item) {
    auto* disk = keep<BKQDisk>();
    disk->addDiskItem(item);
    add(*disk);
  }
  void add(BKQTape& tape) {
    auto* node = keep<BKQTapeNode>("tapes");
    node->addTape(tape);
    newJob<BKQRestoreJob>().addSourceNode(*node);
  }
  void add(BKQTapeItem& item) {
    auto* tape = keep<BKQTape>();
    tape->addTapeItem(item);
    add(*tape);
  }
  void add(BKQTapeXtension& extension) {
    auto* tape = keep<BKQTape>();
    tape->setTapeXtension(extension);
    add(*tape);
  }
  void add(BKQGroom& groom) {
    BKQDiskNode& node = machine();
    node.setGroomInfo(groom);
    newJob<BKQBackupJob>().addSourceNode(node);
  }
  void add(BKQFilter& filter) {
    auto& job = newJob<BKQBackupJob>();
    job.addSourceNode(machine());
    job.addFilter(filter);
  }
  void add(BKQTime& time) { mask().setRepeatCycle(time); }
  void add(BKQJobUnit& unit) { mask().addJobUnit(unit); }
  void add(BKQExceptionDay& day) { rotation().addExceptionDay(day); }
  void add(BKQJobMask& /*mask*/) {}

  std::vector<std::shared_ptr<void>> kept_;
  std::unique_ptr<BKQJob> job_;
  Object* object_ = nullptr;
};

// A mask is deleted by its schedule.
template <>
Carrier<BKQJobMask>::Carrier() {
  object_ = &mask();
}

class Records {
 public:
  Records(BKQJob& job, BkoqLayout layout) : layout_(layout) {
    const int result = layout == BKOQ_LAYOUT_CURRENT ? CurrentLayout::convert(job, root_)
                                                     : PreviousLayout::convert(job, root_);
    EXPECT_EQ(result, 1);
    for (char** password :
         {&BK6_DISKSESSIONPW, &BK6_TAPESESSIONPW, &BK6_DISKSESSIONPW_OLD, &BK6_TAPESESSIONPW_OLD}) {
      std::free(*password);
      *password = nullptr;
    }
    DISK_DISKNAME = DISK_DISKNAME_OLD = "";
    CURRENT_NODETYPE = CURRENT_NODETYPE_OLD = UNIX_OPTIONS = UNIX_OPTIONS_OLD = 0;
  }
  ~Records() { bkoqFree(root_, layout_, nullptr); }
  Records(const Records&) = delete;
  Records& operator=(const Records&) = delete;

  const void* root() const { return root_; }

 private:
  BkoqLayout layout_;
  void* root_ = nullptr;
};

using Fields = std::set<std::string>;

// "pSourceNodes[0].pMedia[0].pszPath" is "pszPath", "stFax.pszUserPW" stays.
std::string fieldOf(const std::string& path) {
  return path.rfind("st", 0) == 0 ? path : path.substr(path.rfind('.') + 1);
}

Fields differences(const Records& without, const Records& with, BkoqLayout layout) {
  Fields fields;
  const auto note = [](const BkoqDifference* difference, void* user) {
    static_cast<Fields*>(user)->insert(fieldOf(difference->path));
    return 0;
  };
  EXPECT_NE(bkoqCompare(without.root(), layout, with.root(), layout, 1, note, &fields, nullptr),
            BKOQ_BAD_ARGUMENT);
  return fields;
}

// Those of the catalogue's fields that the layout has.
Fields fieldsIn(const AttributeLine& line, BkoqLayout layout) {
  Fields fields;
  std::istringstream list(line.fields);
  for (std::string field; std::getline(list, field, ',');) {
    const std::size_t colon = field.find(':');
    const std::string only = colon == std::string::npos ? "" : field.substr(0, colon);
    if (only == (layout == BKOQ_LAYOUT_CURRENT ? "previous" : "current")) continue;
    fields.insert(only.empty() ? field : field.substr(colon + 1));
  }
  return fields;
}

// What the kit's table says of the setter: the fields that name it.
struct Filled {
  std::string setter;
  Fields fields;
};
int noteFilled(const BkoqVisit* visit, void* user) {
  auto* filled = static_cast<Filled*>(user);
  if (visit->event == BKOQ_FIELD &&
      std::string(visit->filledBy).find(filled->setter) != std::string::npos) {
    filled->fields.insert(fieldOf(visit->path));
  }
  return 0;
}

// A plain job has no tapes that could carry its time-outs, and the address and domain of an NDS
// tree change places, which transfer/bk2node_test.cpp shows.
template <class Object>
bool isToldElsewhere(const std::string& attribute) {
  if (std::is_same_v<Object, BKQJob>) {
    return attribute == "BKQJob::setNewTapeTimeout" || attribute == "BKQJob::setSpanTapeTimeout";
  }
  if (std::is_same_v<Object, BKQDBRestoreNode>) return attribute == "BKQRestoreNode::setDiskName";
  return std::is_same_v<Object, BKQNDSNode> &&
         (attribute == "BKQNode::setNodeAddress" || attribute == "BKQNode::setNodeDomain");
}

template <class Class, class Parameter>
Parameter parameterOf(void (Class::*)(Parameter));

template <class Value, class Object, class Setter>
void give(Object& object, Setter set) {
  if constexpr (std::is_same_v<Value, Text>) {
    (object.*set)("some text");
  } else if constexpr (std::is_same_v<Value, Time>) {
    (object.*set)(RWCollectableTime(3255627600UL));
  } else {
    // In every width, and no bit that a conversion knows.
    (object.*set)(static_cast<decltype(parameterOf(set))>(0x51));
  }
}

TEST(Records, EveryAttributeFillsItsFields) {
  for (const BkoqLayout layout : {BKOQ_LAYOUT_CURRENT, BKOQ_LAYOUT_PREVIOUS}) {
    SCOPED_TRACE(layout == BKOQ_LAYOUT_CURRENT ? "current layout" : "previous layout");
    eachConcreteClass([&](auto type) {
      using Object = typename decltype(type)::Of;
      eachAttribute<Object>(
          [&](const AttributeLine& line, auto* value, auto /*get*/, auto set, auto /*first*/) {
            if (isToldElsewhere<Object>(line.name())) return;
            Carrier<Object> without;
            Carrier<Object> with;
            give<std::remove_pointer_t<decltype(value)>>(with.object(), set);
            const Records plain(without.job(), layout);
            const Records filled(with.job(), layout);
            const Fields found = differences(plain, filled, layout);
            const Fields expected = fieldsIn(line, layout);
            const std::string who = line.name() + " of a " + nameOfClass<Object>();
            const char* steps = findClass(line.owner)->steps;
            for (const std::string& field : expected) {
              EXPECT_EQ(found.count(field), 1u)
                  << who << " does not reach " << field << ": see the steps in " << steps;
            }
            for (const std::string& field : found) {
              EXPECT_EQ(expected.count(field), 1u)
                  << who << " changes " << field
                  << ", which its line in tests/catalog/attributes.h does not name";
            }
            if (expected.empty()) return;
            Filled named{line.setter, {}};
            EXPECT_EQ(bkoqWalk(filled.root(), layout, noteFilled, &named), BKOQ_OK);
            EXPECT_TRUE(std::any_of(
                expected.begin(), expected.end(),
                [&](const std::string& field) { return named.fields.count(field) == 1; }))
                << line.name() << " fills " << line.fields
                << ", and no row of the kit's record table says so";
          });
    });
  }
}

// The kit names every kind of job, and knows of each what its nodes hold.
TEST(Records, KitKnowsEveryKindOfJob) {
  for (const JobKindLine& line : kJobKinds) {
    const std::unique_ptr<BKQJob> job(line.make("job"));
    // A comparison without a destination is not flattened.
    if (auto* compare = dynamic_cast<BKQCompareJob*>(job.get())) {
      compare->setDestination(*new BKQUnixNode("target"));
    }
    const Records records(*job, BKOQ_LAYOUT_CURRENT);
    std::string word;
    const auto note = [](const BkoqVisit* visit, void* user) {
      if (visit->event != BKOQ_FIELD || std::strcmp(visit->field, "usJobType") != 0) return 0;
      if (visit->word != nullptr) *static_cast<std::string*>(user) = visit->word;
      return 1;
    };
    bkoqWalk(records.root(), BKOQ_LAYOUT_CURRENT, note, &word);
    EXPECT_NE(word, "") << "job kind " << line.code << " of " << line.className
                        << " is not in kJobKinds, kit/record_words.h";
  }
}

}  // namespace
}  // namespace bkoq::test
