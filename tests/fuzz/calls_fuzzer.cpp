// Bytes as a sequence of calls of the public classes: objects of a pool are made, set, put
// together, taken apart, copied and flattened in both layouts, in any order that the rules of
// ownership allow. Each byte pair chooses a call and its objects; what a getter must give back is
// checked, a flattening must give the same records twice, and all that is handed out is freed.

#include "tests/fuzz/session.h"
#include "tests/support/private_member.h"

namespace bkoq::test {

// The names of a disk item, which nothing else deletes.
struct FuzzedFiles {
  using Type = BKQStringCol BKQDiskItem::*;
  friend constexpr Type privateMember(FuzzedFiles);
};
template struct PrivateMember<FuzzedFiles, &BKQDiskItem::files_>;

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

JobFamily Session::familyOf(const Job& job) {
  for (const JobKindLine& line : kJobKinds) {
    if (line.makes(*job.job)) return line.family;
  }
  return JobFamily::kPlain;
}

namespace {

int touch(const BkoqVisit* visit, void* user) {
  *static_cast<std::size_t*>(user) += visit->width;
  return 0;
}

int append(void* user, const char* text, std::size_t size) {
  static_cast<std::string*>(user)->append(text, size);
  return 0;
}

// An image of the tree gives back the same tree. Of how many blocks.
std::uint32_t expectKept(void* root, BkoqLayout layout) {
  std::size_t sum = 0;
  FUZZ_REQUIRE(bkoqWalk(root, layout, touch, &sum) == BKOQ_OK);
  std::string image;
  void* read = nullptr;
  BkoqLayout readLayout = BKOQ_LAYOUT_WIDEST;
  std::uint32_t differences = 1;
  FUZZ_REQUIRE(bkoqWriteImage(root, layout, append, &image, nullptr) == BKOQ_OK);
  FUZZ_REQUIRE(bkoqReadImage(image.data(), image.size(), &readLayout, &read, nullptr) == BKOQ_OK);
  FUZZ_REQUIRE(bkoqCompare(root, layout, read, readLayout, 1, nullptr, nullptr, &differences) ==
               BKOQ_OK);
  FUZZ_REQUIRE(readLayout == layout && differences == 0);
  BkoqFreed freed = {};
  bkoqFree(read, layout, &freed);
  FUZZ_REQUIRE(freed.notFreed == 0);
  return freed.blocks;
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

}  // namespace

void Session::flatten(Job& job) {
  unsigned int form = input_.below(6);
  const std::string text = input_.text();
  const unsigned int number = input_.below(4);
  const JobFamily family = familyOf(job);
  std::vector<std::unique_ptr<RWCollectableString>> texts;
  RWSlistCollectables names;
  for (unsigned int i = input_.below(4); i > 0; --i) {
    texts.emplace_back(new RWCollectableString(input_.text().c_str()));
    names.insert(texts.back().get());
  }
  Arguments arguments;
  arguments.name = arguments.unixText = arguments.overridePath = text.c_str();
  arguments.disks = &names;
  arguments.unixKind = static_cast<int>(number);
  arguments.session = static_cast<unsigned short>(number & 3);
  if (form >= formsOf(family)) form = 0;
  for (const BkoqLayout layout : {BKOQ_LAYOUT_CURRENT, BKOQ_LAYOUT_PREVIOUS}) {
    const bool isCurrent = layout == BKOQ_LAYOUT_CURRENT;
    if (!takesAll(isCurrent == ((text.size() + number + form) % 2 == 0))) continue;
    void* roots[2] = {};
    int results[2] = {};
    for (int i = 0; i < 2; ++i) {
      clearState();
      results[i] = isCurrent
                       ? convertBy<CurrentLayout>(form, *job.job, family, arguments, roots[i])
                       : convertBy<PreviousLayout>(form, *job.job, family, arguments, roots[i]);
    }
    clearState();
    FUZZ_REQUIRE(results[0] == results[1] && (results[0] == 0 || results[0] == 1));
    FUZZ_REQUIRE(roots[0] != nullptr && roots[1] != nullptr && roots[0] != roots[1]);
    std::uint32_t differences = 1;
    FUZZ_REQUIRE(bkoqCompare(roots[0], layout, roots[1], layout, 1, nullptr, nullptr,
                             &differences) == BKOQ_OK);
    FUZZ_REQUIRE(differences == 0);

    // What images keep of a tree is the subject of another target.
    const bool isKept = takesAll((text.size() + number) % 16 == 5);
    const std::uint32_t kept = isKept ? expectKept(roots[0], layout) : 0;

    BkoqFreed freed[2] = {};
    bkoqFree(roots[0], layout, &freed[0]);
    bkoqFree(roots[1], layout, &freed[1]);
    for (const BkoqFreed& each : freed) {
      FUZZ_REQUIRE(each.notFreed == 0 && each.blocks == freed[0].blocks);
    }
    FUZZ_REQUIRE(!isKept || kept == freed[0].blocks);
  }
}

}  // namespace bkoq::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  bkoq::test::Session session(data, size);
  session.run();
  return 0;
}
