// Bytes as a sequence of calls of the public classes: objects of a pool are made, set, put
// together, taken apart, copied and flattened in both layouts, in any order that the rules of
// ownership allow. Each byte pair chooses a call and its objects; what a getter must give back is
// checked, a flattening must give the same records twice, and all that is handed out is freed.

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/fuzz/require.h"
#include "tests/random/attributes.h"
#include "tests/support/parts.h"
#include "tests/support/private_member.h"

namespace bkoq::test {

// The names of a disk item, which nothing else deletes.
struct FuzzedFiles {
  using Type = BKQStringCol BKQDiskItem::*;
  friend constexpr Type privateMember(FuzzedFiles);
};
template struct PrivateMember<FuzzedFiles, &BKQDiskItem::files_>;

namespace {

// Enough for every pair of calls to meet, little enough to be quick.
constexpr unsigned int kMostCalls = 300;
constexpr unsigned int kMostObjects = 12;  // of a kind
constexpr unsigned int kMostCopies = 2;    // each doubles lists three levels deep

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  bool isEmpty() const { return at_ >= size_; }
  std::uint8_t byte() { return at_ < size_ ? data_[at_++] : 0; }
  unsigned int below(unsigned int bound) { return bound == 0 ? 0 : byte() % bound; }
  std::uint32_t number() {
    const std::uint8_t first = byte();
    if (first < 0xf0) return first;
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | byte();
    return value;
  }
  std::string text() {
    static const char* const kTexts[] = {"", "/", "//", "/usr", "A", "Registry", "a:b", "//x"};
    const std::uint8_t first = byte();
    if (first < 0xc0) return kTexts[first % 8];
    std::string result;
    for (int left = first & 0x1f; left > 0; --left) {
      const char c = static_cast<char>(byte());
      if (c == '\0') break;
      result += c;
    }
    if (first == 0xff) result.append(1000, 'x');
    return result;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

// Sets the attribute of this number, if the class has so many, and asks for it.
template <class Object>
class OneAttribute {
 public:
  OneAttribute(Input& input, Object& object, unsigned int number)
      : input_(input), object_(object), left_(number) {}

  template <class Value, class Getter, class Class, class Parameter>
  void operator()(const char* /*name*/, Attribute<Value>& /*attribute*/, Getter getter,
                  void (Class::*setter)(Parameter)) {
    if (left_-- != 0) return;
    if constexpr (std::is_same<Value, Text>::value) {
      const std::string text = input_.text();
      (object_.*setter)(text.empty() ? nullptr : text.c_str());
      const RWCString& got = (object_.*getter)();
      FUZZ_REQUIRE(got.length() == text.size() && text == got.data());
    } else {
      const auto value = static_cast<Parameter>(input_.number());
      (object_.*setter)(value);
      FUZZ_REQUIRE((object_.*getter)() == value);
    }
  }

 private:
  Input& input_;
  Object& object_;
  unsigned int left_;
};

enum class Kind { kFilter, kItem, kDisk, kTapeItem, kTape, kDiskNode, kTapeNode, kRestoreNode };

class Session {
 public:
  Session(const std::uint8_t* data, std::size_t size) : input_(data, size) {}
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void run() {
    for (unsigned int calls = 0; calls < kMostCalls && !input_.isEmpty(); ++calls) step();
    for (const auto& each : jobs_) flatten(*each);
  }

 private:
  struct Job {
    BKQJob* job = nullptr;
    BKQBackupJob* backup = nullptr;
    BKQRestoreJob* restore = nullptr;
    BKQVerifyJob* verify = nullptr;
    BKQCompareJob* compare = nullptr;
    BKQMergeJob* merge = nullptr;
    BKQScanJob* scan = nullptr;
    bool isCopied = false;  // or a copy: it shares nodes
  };

  template <class Object>
  Object* pick(std::vector<Object*>& objects) {
    return objects.empty() ? nullptr
                           : objects[input_.below(static_cast<unsigned int>(objects.size()))];
  }
  template <class Object>
  void add(std::vector<Object*>& objects, Object* object) {
    objects.push_back(object);
    kept_.insert(object);
  }
  template <class Plan, class Object, class Each>
  void set(Object& object, Each each) {
    Plan plan;
    OneAttribute<Object> visitor(input_, object, input_.below(24));
    each(plan, visitor);
  }
  template <class Collection, class Owner, class Base>
  void page(Owner& owner, void (Base::*reset)(),
            unsigned int (Base::*enumerate)(Collection*&, unsigned int), unsigned int entries) {
    if (input_.below(2) == 0) (owner.*reset)();
    const unsigned int n = input_.below(4);
    Collection* collection = nullptr;
    const unsigned int count = (owner.*enumerate)(collection, n);
    FUZZ_REQUIRE(collection != nullptr && collection->entries() == count && count <= entries);
    if constexpr (std::is_same<Owner, BKQDiskItem>::value) collection->clearAndDestroy();
    delete collection;
  }

  RWCollectableTime time() {
    return RWCollectableTime(2177452800ul +
                             static_cast<unsigned long>(input_.number() & 0x7ffffff));
  }

  void step();
  void makeFilter();
  void makeNode();
  void makeJob();
  void makeSchedule(Job& job);
  void setAttribute();
  void join();
  void takeApart();
  void enumerate();
  void attach(Job& job);
  void copy(Job& job);
  void flatten(Job& job);
  int convert(Job& job, bool previous, unsigned int form, const std::string& text,
              RWSlistCollectables& names, unsigned int number, void*& root);
  void addJob(BKQJob* job);
  bool isInOneListOnce(BKQNode* node);

  Input input_;
  std::vector<BKQFilter*> filters_;
  std::vector<BKQDiskItem*> items_;
  std::vector<BKQDisk*> disks_;
  std::vector<BKQTapeItem*> tapeItems_;
  std::vector<BKQTape*> tapes_;
  std::vector<BKQDiskNode*> diskNodes_;
  std::vector<BKQTapeNode*> tapeNodes_;
  std::vector<BKQRestoreNode*> restoreNodes_;
  std::vector<std::unique_ptr<Job>> jobs_;
  std::set<RWCollectable*> kept_;
  std::vector<BKQSchedule*> abandoned_;
  std::vector<std::unique_ptr<BKQEMail>> abandonedEMails_;
  std::vector<std::unique_ptr<BKQFax>> abandonedFaxes_;
  std::vector<std::unique_ptr<BKQPrintQueue>> printQueues_;
  std::vector<std::unique_ptr<BKQOpenFileInfo>> openFiles_;
  std::map<BKQNode*, unsigned int> uses_;  // entries of a node in lists of jobs
  unsigned int copies_ = 0;
};

Session::~Session() {
  std::set<RWCollectable*> parts = kept_;
  for (const auto& each : jobs_) {
    const std::set<RWCollectable*> ofJob = partsOf(*each->job);
    parts.insert(ofJob.begin(), ofJob.end());
  }
  for (const auto& each : jobs_) delete each->job;
  for (BKQSchedule* schedule : abandoned_) delete schedule;
  std::set<RWCollectable*> names;
  for (RWCollectable* part : parts) {
    auto* item = dynamic_cast<BKQDiskItem*>(part);
    if (item == nullptr) continue;
    const BKQStringCol& files = item->*privateMember(FuzzedFiles());
    for (unsigned int i = 0; i < files.entries(); ++i) names.insert(files.at(i));
  }
  for (RWCollectable* part : parts) delete part;
  for (RWCollectable* name : names) delete name;
}

void Session::step() {
  switch (input_.below(16)) {
    case 0:
      return makeFilter();
    case 1:
      if (items_.size() < kMostObjects) add(items_, new BKQDiskItem(input_.text().c_str()));
      return;
    case 2:
      if (disks_.size() < kMostObjects) {
        add(disks_, new BKQDisk(static_cast<BKQDisk::BKQDiskType>(input_.number())));
      }
      return;
    case 3:
      if (tapeItems_.size() < kMostObjects) add(tapeItems_, new BKQTapeItem(input_.number(), 7));
      return;
    case 4:
      if (tapes_.size() < kMostObjects) {
        add(tapes_, new BKQTape(input_.text().c_str(), input_.text().c_str()));
      }
      return;
    case 5:
      return makeNode();
    case 6:
      return makeJob();
    case 7:
    case 8:
      return setAttribute();
    case 9:
    case 10:
    case 11:
      return join();
    case 12:
      return takeApart();
    case 13:
      return enumerate();
    default:
      break;
  }
  if (jobs_.empty()) return;
  Job& job = *jobs_[input_.below(static_cast<unsigned int>(jobs_.size()))];
  switch (input_.below(4)) {
    case 0:
      return copy(job);
    case 1:
      return flatten(job);
    default:
      return attach(job);
  }
}

void Session::makeFilter() {
  if (filters_.size() >= kMostObjects) return;
  const auto kind = static_cast<BKQFilter::BKQInclExclType>(input_.below(3));
  const auto attribute = static_cast<BKQTimeFilter::BKQTimeAttrType>(input_.number());
  switch (input_.below(8)) {
    case 0:
      return add<BKQFilter>(filters_, new BKQDirFilter(kind, input_.text().c_str()));
    case 1:
      return add<BKQFilter>(filters_, new BKQFileFilter(kind, input_.text().c_str()));
    case 2:
      return add<BKQFilter>(filters_, new BKQVolumeFilter(kind, input_.text().c_str()));
    case 3:
      return add<BKQFilter>(filters_, new BKQAttributeFilter(kind, input_.number()));
    case 4:
      return add<BKQFilter>(filters_, new BKQWithinTimeFilter(attribute));
    case 5:
      return add<BKQFilter>(filters_, new BKQBeforeTimeFilter(attribute, time()));
    case 6:
      return add<BKQFilter>(filters_, new BKQAfterTimeFilter(attribute, time()));
    default:
      return add<BKQFilter>(filters_, new BKQBetweenTimeFilter(attribute, time(), time()));
  }
}

void Session::makeNode() {
  const unsigned int kind = input_.below(20);
  const std::string text = input_.text();
  const char* name = text.c_str();
  if (kind >= 16) {
    if (tapeNodes_.size() < kMostObjects) add(tapeNodes_, new BKQTapeNode(name));
    return;
  }
  if (kind >= 13) {
    if (restoreNodes_.size() >= kMostObjects) return;
    const std::string disk = input_.text();
    BKQRestoreNode* node = kind == 13 ? new BKQRestoreNode(name, disk.c_str())
                                      : new BKQDBRestoreNode(name, disk.c_str());
    add(restoreNodes_, node);
    node->setActualNodeType(static_cast<BKQNode::BKQNodeType>(input_.number()));
    return;
  }
  if (diskNodes_.size() >= kMostObjects) return;
  BKQDiskNode* node = nullptr;
  switch (kind) {
    case 0:
      node = new BKQMacNode(name);
      break;
    case 1:
      node = new BKQNetwareNode(name);
      break;
    case 2:
      node = new BKQWinNTNode(name);
      break;
    case 3:
      node = new BKQOS2Node(name);
      break;
    case 4:
      node = new BKQWin95Node(name);
      break;
    case 5:
      node = new BKQWindowsNode(name);
      break;
    case 6:
      node = new BKQNDSNode(name);
      break;
    case 7:
      node = new BKQFTPNode(name);
      break;
    case 8:
      node = new BKQSybaseNode(name);
      break;
    case 9:
      node = new BKQOracleNode(name);
      break;
    case 10:
      node = new BKQInformixNode(name);
      break;
    case 11:
      node = new BKQSnapShotNode(name);
      break;
    default: {
      auto* unixNode = new BKQUnixNode(name);
      unixNode->setUnixOptions(input_.number());
      node = unixNode;
      break;
    }
  }
  add(diskNodes_, node);
}

void Session::addJob(BKQJob* job) {
  auto entry = std::make_unique<Job>();
  entry->job = job;
  entry->backup = dynamic_cast<BKQBackupJob*>(job);
  entry->restore = dynamic_cast<BKQRestoreJob*>(job);
  entry->verify = dynamic_cast<BKQVerifyJob*>(job);
  entry->compare = dynamic_cast<BKQCompareJob*>(job);
  entry->merge = dynamic_cast<BKQMergeJob*>(job);
  entry->scan = dynamic_cast<BKQScanJob*>(job);
  jobs_.push_back(std::move(entry));
}

void Session::makeJob() {
  if (jobs_.size() >= 4) return;
  const std::string text = input_.text();
  const char* name = text.c_str();
  switch (input_.below(14)) {
    case 0:
      return addJob(new BKQJob(name));
    case 1:
      return addJob(new BKQBackupJob(name));
    case 2:
      return addJob(new BKQCustomBackupJob(name));
    case 3:
      return addJob(new BKQCruiseBackupJob(name));
    case 4:
      return addJob(new BKQCruiseMakeupJob(name));
    case 5:
      return addJob(new BKQRotationBackupJob(name));
    case 6:
      return addJob(new BKQRotationMakeupJob(name));
    case 7:
      return addJob(new BKQDatabaseBackupJob(name));
    case 8:
      return addJob(new BKQRestoreJob(name));
    case 9:
      return addJob(new BKQDatabaseRestoreJob(name));
    case 10:
      return addJob(new BKQVerifyJob(name));
    case 11:
      return addJob(new BKQCompareJob(name));
    case 12:
      return addJob(new BKQMergeJob);
    default:
      return addJob(new BKQScanJob);
  }
}

void Session::setAttribute() {
  switch (input_.below(9)) {
    case 0:
      if (auto* disk = pick(disks_)) {
        set<DiskPlan>(*disk, [](auto& plan, auto& visit) { eachOfDisk(plan, visit); });
      }
      return;
    case 1:
      if (auto* tape = pick(tapes_)) {
        if (input_.below(4) == 0) {
          const bool had = tape->tapeXtensionExists() != 0;
          tape->setOptions(input_.below(2) == 0 ? 0x8000000 : input_.number());
          if (!had && tape->tapeXtensionExists() != 0) kept_.insert(tape->getTapeXtension());
          return;
        }
        set<TapePlan>(*tape, [](auto& plan, auto& visit) { eachOfTape(plan, visit); });
      }
      return;
    case 2:
      if (auto* item = pick(tapeItems_)) {
        set<TapeItemPlan>(*item, [](auto& plan, auto& visit) { eachOfTapeItem(plan, visit); });
      }
      return;
    case 3:
      if (auto* item = pick(items_)) {
        const std::string text = input_.text();
        switch (input_.below(3)) {
          case 0:
            if (item->fileEntries() < 64) item->addFile(text.c_str());
            FUZZ_REQUIRE(item->getOptions() == 0 || item->fileEntries() == 64);
            return;
          case 1:
            return item->setPath(text.c_str());
          default:
            return item->setOptions(input_.number());
        }
      }
      return;
    case 4:
      if (auto* node = pick(diskNodes_)) {
        set<NodePlan>(*node, [](auto& plan, auto& visit) { eachOfNode(plan, visit); });
      }
      return;
    case 5:
      if (auto* node = pick(tapeNodes_)) {
        set<NodePlan>(*node, [](auto& plan, auto& visit) { eachOfNode(plan, visit); });
      }
      return;
    case 6:
      if (auto* node = pick(restoreNodes_)) {
        auto* database = dynamic_cast<BKQDBRestoreNode*>(node);
        if (database != nullptr && input_.below(2) == 0) {
          database->setFStype(static_cast<BKQDisk::BKQDiskType>(input_.number()));
          database->setDBuser(input_.text().c_str(), input_.text().c_str());
          return;
        }
        if (input_.below(2) == 0) return node->setDestinationDir(input_.text().c_str());
        set<NodePlan>(*node, [](auto& plan, auto& visit) { eachOfNode(plan, visit); });
      }
      return;
    default:
      break;
  }
  if (jobs_.empty()) return;
  Job& job = *jobs_[input_.below(static_cast<unsigned int>(jobs_.size()))];
  const unsigned int part = input_.below(3);
  if (part == 0 && job.backup != nullptr) {
    set<JobPlan>(*job.backup, [](auto& plan, auto& visit) { eachOfBackup(plan, visit); });
    if (input_.below(2) == 0) job.backup->setEncryptionOn();
    if (input_.below(2) == 0) job.backup->setCompressionOn();
  } else if (part == 0 && job.restore != nullptr) {
    set<JobPlan>(*job.restore, [](auto& plan, auto& visit) { eachOfRestore(plan, visit); });
  } else if (part == 0 && job.merge != nullptr) {
    const std::string before(job.merge->getMergeFilter().data());
    const std::string text = input_.text();
    const int accepted = job.merge->setMergeFilter(text.c_str());
    FUZZ_REQUIRE((accepted != 0 ? text : before) == job.merge->getMergeFilter().data());
  } else if (part == 1) {
    job.job->setOptions(input_.number() << 20);
  } else {
    set<JobPlan>(*job.job, [](auto& plan, auto& visit) { eachOfJob(plan, visit); });
  }
}

// Adds something to something.
void Session::join() {
  constexpr unsigned int kMostEntries = 16;
  switch (input_.below(10)) {
    case 0: {
      auto* disk = pick(disks_);
      auto* item = pick(items_);
      if (disk == nullptr || item == nullptr || disk->diskItemEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(disk->addDiskItem(*item) == item);
      return;
    }
    case 1: {
      auto* disk = pick(disks_);
      auto* filter = pick(filters_);
      if (disk == nullptr || filter == nullptr || disk->filterEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(disk->addFilter(*filter) == filter);
      return;
    }
    case 2: {
      auto* tape = pick(tapes_);
      auto* item = pick(tapeItems_);
      if (tape == nullptr || item == nullptr || tape->tapeItemEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(tape->addTapeItem(*item) == item);
      return;
    }
    case 3: {
      auto* tape = pick(tapes_);
      auto* filter = pick(filters_);
      if (tape == nullptr || filter == nullptr || tape->filterEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(tape->addFilter(*filter) == filter);
      return;
    }
    case 4: {
      auto* node = pick(diskNodes_);
      auto* disk = pick(disks_);
      if (node == nullptr || disk == nullptr || node->diskEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(node->addDisk(*disk) == disk);
      return;
    }
    case 5: {
      auto* node = pick(tapeNodes_);
      auto* tape = pick(tapes_);
      if (node == nullptr || tape == nullptr || node->tapeEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(node->addTape(*tape) == tape);
      return;
    }
    case 6: {
      BKQNode* node = nullptr;
      switch (input_.below(3)) {
        case 0:
          node = pick(diskNodes_);
          break;
        case 1:
          node = pick(tapeNodes_);
          break;
        default:
          node = pick(restoreNodes_);
          break;
      }
      auto* filter = pick(filters_);
      if (node == nullptr || filter == nullptr || node->filterEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(node->addFilter(*filter) == filter);
      return;
    }
    default:
      break;
  }
  if (jobs_.empty()) return;
  Job& job = *jobs_[input_.below(static_cast<unsigned int>(jobs_.size()))];
  auto* filter = pick(filters_);
  const bool addsFilter = input_.below(4) == 0;
  if (job.backup != nullptr) {
    if (addsFilter) {
      if (filter != nullptr && job.backup->filterEntries() < kMostEntries) {
        job.backup->addFilter(*filter);
      }
      return;
    }
    // Mostly machines; a tape node makes the conversion fail.
    BKQNode* node = pick(diskNodes_);
    if (input_.below(16) == 15) node = pick(tapeNodes_);
    if (node == nullptr || job.backup->sourceNodeEntries() >= kMostEntries) return;
    FUZZ_REQUIRE(job.backup->addSourceNode(*node) == node);
    ++uses_[node];
  } else if (job.restore != nullptr) {
    if (addsFilter) {
      if (filter != nullptr && job.restore->filterEntries() < kMostEntries) {
        job.restore->addFilter(*filter);
      }
    } else if (input_.below(2) == 0) {
      auto* node = pick(tapeNodes_);
      if (node != nullptr && job.restore->sourceNodeEntries() < kMostEntries) {
        job.restore->addSourceNode(*node);
        ++uses_[node];
      }
    } else {
      auto* node = pick(restoreNodes_);
      if (node != nullptr && job.restore->destNodeEntries() < kMostEntries) {
        job.restore->addDestNode(*node);
        ++uses_[node];
      }
    }
  } else if (job.verify != nullptr) {
    auto* node = pick(tapeNodes_);
    if (node != nullptr && job.verify->sourceNodeEntries() < kMostEntries) {
      job.verify->addSourceNode(*node);
      ++uses_[node];
    }
  }
}

void Session::takeApart() {
  if (input_.below(2) == 0) {
    auto* node = pick(diskNodes_);
    auto* disk = pick(disks_);
    if (node == nullptr || disk == nullptr) return;
    const unsigned int before = node->diskEntries();
    if (input_.below(8) == 0) {
      node->clearDisks();
      FUZZ_REQUIRE(node->diskEntries() == 0);
    } else {
      const int result = node->removeDisk(*disk);
      FUZZ_REQUIRE(result == 0 || result == -1);
      FUZZ_REQUIRE(node->diskEntries() == (result == 0 ? before - 1 : before));
    }
    return;
  }
  if (jobs_.empty()) return;
  Job& job = *jobs_[input_.below(static_cast<unsigned int>(jobs_.size()))];
  auto* pattern = pick(diskNodes_);
  if (job.backup == nullptr || pattern == nullptr || job.isCopied) return;
  // The node that will be found is deleted: it may stand in no other list.
  BKQNodeCol* nodes = nullptr;
  job.backup->resetSourceNodes();
  job.backup->enumSourceNodes(nodes, 0);
  BKQNode* found = nullptr;
  for (unsigned int i = 0; i < nodes->entries() && found == nullptr; ++i) {
    auto* node = static_cast<BKQNode*>(nodes->at(i));
    if (std::strcmp(node->getNodeName(), pattern->getNodeName()) == 0) found = node;
  }
  delete nodes;
  if (found != nullptr && uses_[found] != 1) return;
  const int result = job.backup->removeSourceNode(*pattern);
  FUZZ_REQUIRE(result == (found != nullptr ? 0 : -1));
  if (found == nullptr) return;
  uses_.erase(found);
  kept_.erase(found);
  const auto forget = [&](auto& nodes) {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (nodes[i] == found) {
        nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(i));
        return;
      }
    }
  };
  forget(diskNodes_);
  forget(tapeNodes_);
}

void Session::enumerate() {
  switch (input_.below(7)) {
    case 0:
      if (auto* disk = pick(disks_)) {
        page(*disk, &BKQDisk::resetDiskItems, &BKQDisk::enumDiskItems, disk->diskItemEntries());
        page(*disk, &BKQDisk::resetFilters, &BKQDisk::enumFilters, disk->filterEntries());
      }
      return;
    case 1:
      if (auto* tape = pick(tapes_)) {
        page(*tape, &BKQTape::resetTapeItems, &BKQTape::enumTapeItems, tape->tapeItemEntries());
        page(*tape, &BKQTape::resetFilters, &BKQTape::enumFilters, tape->filterEntries());
      }
      return;
    case 2:
      if (auto* item = pick(items_)) {
        page(*item, &BKQDiskItem::resetFiles, &BKQDiskItem::enumFiles, item->fileEntries());
      }
      return;
    case 3:
      if (auto* node = pick(diskNodes_)) {
        page(*node, &BKQDiskNode::resetDisks, &BKQDiskNode::enumDisks, node->diskEntries());
      }
      return;
    case 4:
      if (auto* node = pick(tapeNodes_)) {
        page(*node, &BKQTapeNode::resetTapes, &BKQTapeNode::enumTapes, node->tapeEntries());
      }
      return;
    default:
      break;
  }
  if (jobs_.empty()) return;
  Job& job = *jobs_[input_.below(static_cast<unsigned int>(jobs_.size()))];
  if (job.backup != nullptr) {
    page(*job.backup, &BKQBackupJob::resetSourceNodes, &BKQBackupJob::enumSourceNodes,
         job.backup->sourceNodeEntries());
    page(*job.backup, &BKQBackupJob::resetFilters, &BKQBackupJob::enumFilters,
         job.backup->filterEntries());
  } else if (job.restore != nullptr) {
    page(*job.restore, &BKQRestoreJob::resetSourceNodes, &BKQRestoreJob::enumSourceNodes,
         job.restore->sourceNodeEntries());
    page(*job.restore, &BKQRestoreJob::resetDestNodes, &BKQRestoreJob::enumDestNodes,
         job.restore->destNodeEntries());
  } else if (job.verify != nullptr) {
    page(*job.verify, &BKQVerifyJob::resetSourceNodes, &BKQVerifyJob::enumSourceNodes,
         job.verify->sourceNodeEntries());
  }
}

void Session::makeSchedule(Job& job) {
  BKQSchedule* schedule = nullptr;
  switch (input_.below(4)) {
    case 0:
      schedule = new BKQRegularSchedule;
      break;
    case 1: {
      auto* custom = new BKQCustomSchedule(1, 2, 3, static_cast<unsigned short>(input_.number()));
      set<SchedulePlan>(*custom, [](auto& p, auto& visit) { eachOfCustomSchedule(p, visit); });
      schedule = custom;
      break;
    }
    default: {
      BKQRotationSchedule* rotation;
      if (input_.below(2) == 0) {
        rotation = new BKQRotationSchedule;
      } else {
        auto* cruise = new BKQCruiseSchedule;
        set<SchedulePlan>(*cruise, [](auto& p, auto& visit) { eachOfCruiseSchedule(p, visit); });
        rotation = cruise;
      }
      rotation->setSetName(input_.text().c_str());
      if (input_.below(8) != 0) {
        auto* mask = new BKQJobMask;
        for (unsigned int i = input_.below(12); i > 0; --i) {
          auto* unit = new BKQJobUnit;
          kept_.insert(unit);
          unit->setJobType(static_cast<BKQJobUnit::BKQCruiseJobType>(input_.number()));
          mask->addJobUnit(*unit);
        }
        rotation->setJobMask(*mask);
      }
      if (input_.below(2) == 0) {
        auto* day = new BKQExceptionDay;
        kept_.insert(day);
        rotation->addExceptionDay(*day);
      }
      schedule = rotation;
      break;
    }
  }
  schedule->setSubmitTime(time());
  schedule->setExecTime(time());
  if (BKQSchedule* former = job.job->getSchedule()) {
    // Its parts outlive it, also those that a copy shares.
    auto* rotation = dynamic_cast<BKQRotationSchedule*>(former);
    BKQExceptionDayCol* days = nullptr;
    if (rotation != nullptr) {
      rotation->resetExceptionDays();
      rotation->enumExceptionDays(days, 0);
      for (unsigned int i = 0; i < days->entries(); ++i) kept_.insert(days->at(i));
      delete days;
      if (BKQJobMask* mask = rotation->getJobMask()) {
        BKQJobUnitCol* units = nullptr;
        mask->resetJobUnits();
        mask->enumJobUnits(units, 0);
        for (unsigned int i = 0; i < units->entries(); ++i) kept_.insert(units->at(i));
        delete units;
      }
    }
    abandoned_.push_back(former);
  }
  job.job->setSchedule(*schedule);
}

void Session::attach(Job& job) {
  switch (input_.below(7)) {
    case 0:
      return makeSchedule(job);
    case 1:
      if (job.job->faxInfoExists() == 0 || input_.below(2) == 0) {
        if (job.job->faxInfoExists() != 0) abandonedFaxes_.emplace_back(job.job->getFaxInfo());
        job.job->setFaxInfo(*new BKQFax);
      }
      return set<FaxPlan>(*job.job->getFaxInfo(),
                          [](auto& plan, auto& visit) { eachOfFax(plan, visit); });
    case 2: {
      if (job.job->emailInfoExists() != 0) abandonedEMails_.emplace_back(job.job->getEMailInfo());
      if (input_.below(2) == 0) {
        job.job->setEMailInfo(*new BKQInternetEMail);
      } else {
        auto* email = new BKQMHSEMail;
        set<EMailPlan>(*email, [](auto& plan, auto& visit) { eachOfMHSEMail(plan, visit); });
        job.job->setEMailInfo(*email);
      }
      return set<EMailPlan>(*job.job->getEMailInfo(),
                            [](auto& plan, auto& visit) { eachOfEMail(plan, visit); });
    }
    case 3:
      printQueues_.emplace_back(new BKQPrintQueue);
      set<PrintQueuePlan>(*printQueues_.back(),
                          [](auto& plan, auto& visit) { eachOfPrintQueue(plan, visit); });
      return job.job->setPrintQueue(*printQueues_.back());
    case 4:
      if (job.backup == nullptr) return;
      openFiles_.emplace_back(new BKQOpenFileInfo);
      set<OpenFilePlan>(*openFiles_.back(),
                        [](auto& plan, auto& visit) { eachOfOpenFile(plan, visit); });
      return job.backup->setOpenFileInfo(*openFiles_.back());
    default:
      break;
  }
  // A destination or source of its own, which the job deletes; what it replaces is abandoned.
  const auto newTapeNode = [&] {
    auto* node = new BKQTapeNode(input_.text().c_str());
    if (auto* tape = pick(tapes_)) node->addTape(*tape);
    return node;
  };
  const auto newMachine = [&] {
    BKQDiskNode* node;
    if (input_.below(2) == 0) {
      auto* unixNode = new BKQUnixNode(input_.text().c_str());
      unixNode->setUnixOptions(input_.number());
      node = unixNode;
    } else {
      node = new BKQWinNTNode(input_.text().c_str());
    }
    if (auto* disk = pick(disks_)) node->addDisk(*disk);
    return node;
  };
  const auto abandon = [&](BKQNode* node) {
    if (node != nullptr) kept_.insert(node);
  };
  if (job.backup != nullptr) {
    abandon(job.backup->getDestination());
    job.backup->setDestination(*newTapeNode());
  } else if (job.compare != nullptr) {
    abandon(job.compare->getDestination());
    job.compare->setDestination(*newMachine());
  } else if (job.merge != nullptr) {
    if (input_.below(2) == 0) {
      abandon(job.merge->getSource());
      job.merge->setSource(*newTapeNode());
    } else {
      abandon(job.merge->getDestination());
      job.merge->setDestination(*newMachine());
    }
  } else if (job.scan != nullptr) {
    abandon(job.scan->getSource());
    job.scan->setSource(*newTapeNode());
  }
}

void Session::copy(Job& job) {
  if (copies_ >= kMostCopies) return;
  ++copies_;
  BKQJob* copy = job.job->clone();
  if (copy == nullptr) {
    copy = new BKQJob;
    copy->mycopy(job.job);
  }
  job.isCopied = true;
  addJob(copy);
  jobs_.back()->isCopied = true;
  if (copy->printQueueExists() != 0) printQueues_.emplace_back(copy->getPrintQueue());
  if (jobs_.back()->backup != nullptr && jobs_.back()->backup->openFileInfoExists() != 0) {
    openFiles_.emplace_back(jobs_.back()->backup->getOpenFileInfo());
  }
  // What a later change of the copy may abandon is known now.
  for (RWCollectable* part : partsOf(*copy)) kept_.insert(part);
}

int Session::convert(Job& job, bool previous, unsigned int form, const std::string& text,
                     RWSlistCollectables& names, unsigned int number, void*& root) {
  const auto call = [&](auto& object, auto&&... arguments) {
    return previous ? object.convertToBK2_old(root, arguments...)
                    : object.convertToBK2(root, arguments...);
  };
  const char* name = text.c_str();
  const auto session = static_cast<unsigned short>(number & 3);
  if (job.backup != nullptr) {
    switch (form) {
      case 1:
        return call(*job.backup, name);
      case 2:
        return call(*job.backup, name, names);
      case 3:
        return call(*job.backup, "", static_cast<int>(number), name);
      case 4:
        return call(*job.backup, "", names, static_cast<int>(number), name);
      default:
        break;
    }
  } else if (job.compare != nullptr) {
    switch (form) {
      case 1:
        return call(*job.compare, name);
      case 2:
        return call(*job.compare, name, session);
      case 3:
        return call(*job.compare, "", session, name);
      default:
        break;
    }
  } else if (form != 0 && job.restore != nullptr) {
    return call(*job.restore, name, session);
  } else if (form != 0 && job.verify != nullptr) {
    return call(*job.verify, name, session);
  } else if (form != 0 && job.merge != nullptr) {
    return call(*job.merge, name, session);
  } else if (form != 0 && job.scan != nullptr) {
    return call(*job.scan, name, session);
  }
  return call(*job.job);
}

int touch(const BkoqVisit* visit, void* user) {
  *static_cast<std::size_t*>(user) += visit->width;
  return 0;
}

int append(void* user, const char* text, std::size_t size) {
  static_cast<std::string*>(user)->append(text, size);
  return 0;
}

void clearState() {
  for (char** password :
       {&BK6_DISKSESSIONPW, &BK6_TAPESESSIONPW, &BK6_DISKSESSIONPW_OLD, &BK6_TAPESESSIONPW_OLD}) {
    std::free(*password);
    *password = nullptr;
  }
  // What one flattening leaves and the next reads.
  CURRENT_NODETYPE = CURRENT_NODETYPE_OLD = 0;
  UNIX_OPTIONS = UNIX_OPTIONS_OLD = 0;
  DISK_DISKNAME = DISK_DISKNAME_OLD = "";
}

void Session::flatten(Job& job) {
  const unsigned int form = input_.below(6);
  const std::string text = input_.text();
  const unsigned int number = input_.below(4);
  std::vector<std::unique_ptr<RWCollectableString>> texts;
  RWSlistCollectables names;
  for (unsigned int i = input_.below(4); i > 0; --i) {
    texts.emplace_back(new RWCollectableString(input_.text().c_str()));
    names.insert(texts.back().get());
  }
  for (const bool previous : {false, true}) {
    const BkoqLayout layout = previous ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT;
    void* roots[2] = {};
    int results[2] = {};
    for (int i = 0; i < 2; ++i) {
      clearState();
      results[i] = convert(job, previous, form, text, names, number, roots[i]);
    }
    clearState();
    FUZZ_REQUIRE(results[0] == results[1] && (results[0] == 0 || results[0] == 1));
    FUZZ_REQUIRE(roots[0] != nullptr && roots[1] != nullptr && roots[0] != roots[1]);
    std::size_t sum = 0;
    FUZZ_REQUIRE(bkoqWalk(roots[0], layout, touch, &sum) == BKOQ_OK);
    std::uint32_t differences = 1;
    FUZZ_REQUIRE(bkoqCompare(roots[0], layout, roots[1], layout, 1, nullptr, nullptr,
                             &differences) == BKOQ_OK);
    FUZZ_REQUIRE(differences == 0);

    std::string image;
    void* read = nullptr;
    BkoqLayout readLayout = BKOQ_LAYOUT_WIDEST;
    FUZZ_REQUIRE(bkoqWriteImage(roots[0], layout, append, &image, nullptr) == BKOQ_OK);
    FUZZ_REQUIRE(bkoqReadImage(image.data(), image.size(), &readLayout, &read, nullptr) == BKOQ_OK);
    FUZZ_REQUIRE(bkoqCompare(roots[0], layout, read, readLayout, 1, nullptr, nullptr,
                             &differences) == BKOQ_OK);
    FUZZ_REQUIRE(readLayout == layout && differences == 0);

    BkoqFreed freed[3] = {};
    bkoqFree(roots[0], layout, &freed[0]);
    bkoqFree(roots[1], layout, &freed[1]);
    bkoqFree(read, layout, &freed[2]);
    for (const BkoqFreed& each : freed) {
      FUZZ_REQUIRE(each.notFreed == 0 && each.blocks == freed[0].blocks);
    }
  }
}

}  // namespace
}  // namespace bkoq::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  bkoq::test::Session session(data, size);
  session.run();
  return 0;
}
