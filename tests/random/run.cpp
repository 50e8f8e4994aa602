#include "tests/random/run.h"

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>

#include "tests/catalog/forms.h"
#include "tests/random/check.h"
#include "tests/random/copy_plan.h"
#include "tests/random/source.h"
#include "tests/random/variables.h"

namespace bkoq::test {
namespace {

// As rules, so that no run depends on the zones that a system has installed.
const Zone kZones[] = {{"UTC0", 0},
                       {"CET-1CEST,M3.5.0,M10.5.0/3", 3600},
                       {"EST5EDT,M3.2.0,M11.1.0", -18000},
                       {"IST-5:30", 19800},
                       {"<+1345>-13:45", 49500},
                       {"<+1245>-12:45<+1345>,M9.5.0/2:45,M4.1.0/3:45", 45900},
                       {"AEST-10AEDT,M10.1.0,M4.1.0/3", 36000},
                       {"NST3:30NDT,M3.2.0,M11.1.0", -12600},
                       {"<-12>12", -43200}};

}  // namespace

Run::~Run() {
  for (const BkoqLayout layout : kLayouts) {
    variables(layout).diskSessionPassword = nullptr;
    variables(layout).tapeSessionPassword = nullptr;
  }
  for (char* password : passwords_) std::free(password);
}

void Run::draw() {
  setZone();
  plan_ = drawer_.job(kJobKinds[random_.below(std::size(kJobKinds))].kind);
  parts_ = test::leaveOut(*plan_, leftOut_);
}

bool Run::write(const std::string& folder) {
  draw();
  setenv("TZ", "UTC0", 1);
  tzset();
  std::ofstream(folder + "/job.cpp") << asSource(*plan_);
  std::ofstream(folder + "/job.json") << asJobFile(*plan_).text;
  BKQJob* job = builder_.job(*plan_);
  bool isWritten = true;
  for (const BkoqLayout layout : kLayouts) {
    void* root = nullptr;
    if (convertTo(layout, *job, root) != 1) continue;
    std::string image;
    isWritten = bkoqWriteImage(root, layout, keepImage, &image, nullptr) == BKOQ_OK && isWritten;
    std::ofstream(folder + "/" + layoutName(layout) + ".image", std::ios::binary) << image;
    bkoqFree(root, layout, nullptr);
  }
  return isWritten;
}

bool Run::run() {
  draw();
  BKQJob* job = builder_.job(*plan_);
  for (const BkoqLayout layout : kLayouts) setState(layout);

  const bool checks = random_.chance(1, 8);
  if (checks && !checkValues(*job, *plan_, "source")) return false;
  if (!flattenBoth(*job, *plan_, "source")) return false;

  const auto copyPlan = copyOf(*plan_);
  BKQJob* copy = builder_.copy(*job, *plan_);
  if (random_.chance(1, 4)) setZone();
  if (random_.chance(1, 4)) change(*job);
  if (checks && !checkValues(*copy, *copyPlan, "copy")) return false;
  if (!flattenBoth(*copy, *copyPlan, "copy")) return false;
  if (random_.chance(1, 40)) {
    const auto secondPlan = copyOf(*copyPlan);
    BKQJob* second = builder_.copy(*copy, *copyPlan);
    if (!flatten(*second, *secondPlan, drawer_.layout(), "copy of the copy")) return false;
  }
  if (!flatten(*job, *plan_, drawer_.layout(), "source after the copy")) return false;
  if (checks && !checkValues(*job, *plan_, "source after the copy")) return false;
  if (!convertParts()) return false;
  return !random_.chance(1, 4) || copyIntoFilled(*job);
}

bool Run::copyIntoFilled(BKQJob& job) {
  const auto formerPlan = drawer_.job(plan_->jobClass);
  Builder former(random_);
  former.job(*formerPlan);
  BKQJob* target = builder_.copyInto(former, *formerPlan, job);
  const auto copyPlan = copyOf(*plan_);
  return checkValues(*target, *copyPlan, "copy into a filled job") &&
         flattenBoth(*target, *copyPlan, "copy into a filled job");
}

void Run::setZone() {
  zone_ = &kZones[random_.below(sizeof kZones / sizeof *kZones)];
  setenv("TZ", zone_->rule, 1);
  tzset();
}

char* Run::passwordOf(const Text& text) {
  char* copy = strdup(text.c_str());
  passwords_.insert(copy);
  return copy;
}

void Run::setState(BkoqLayout layout) {
  State& state = states_[layout];
  state = drawer_.state();
  Variables& v = variables(layout);
  v.newTapeTimeout = state.newTapeTimeout;
  v.spanTapeTimeout = state.spanTapeTimeout;
  v.newTapeMethod = state.newTapeMethod;
  v.spanTapeMethod = state.spanTapeMethod;
  v.diskSessionPassword = state.hasDiskPassword ? passwordOf(state.diskPassword) : nullptr;
  v.tapeSessionPassword = state.hasTapePassword ? passwordOf(state.tapePassword) : nullptr;
  v.diskEncryption = state.encryption;
  v.diskCompression = state.compression;
  v.nodeNoEstimate = state.noEstimate;
  v.currentNodeType = state.nodeType;
  v.unixOptions = state.unixOptions;
  v.diskName = state.diskName.c_str();
}

void Run::report(const char* what, BkoqLayout layout, const Mismatch& mismatch) {
  if (isSilent) return;
  std::printf("FAILED: seed %" PRIu64
              ", %s, %s, TZ=%s, %s layout%s%s\n  at %s, byte %u\n"
              "  expected %s\n  got      %s\n",
              seed_, plan_ ? lineOf(plan_->jobClass).className : "?", what, zone_->rule,
              layoutName(layout), call_.empty() ? "" : ", ", call_.c_str(),
              mismatch.path.empty() ? "the record" : mismatch.path.c_str(), mismatch.offset,
              mismatch.expected.c_str(), mismatch.got.c_str());
  std::fflush(stdout);
}

bool Run::checkValues(BKQJob& job, const JobPlan& plan, const char* what) {
  call_ = "attributes";
  const std::string problem = check(job, plan, random_);
  if (problem.empty()) return true;
  report(what, CurrentLayout::kLayout, {"an attribute", 0, "", problem});
  return false;
}

bool Run::checkWord(const char* name, std::uint32_t expected, std::uint32_t got) {
  if (expected == got) return true;
  stateMismatch_ = {name, 0, std::to_string(expected), std::to_string(got)};
  return false;
}

bool Run::checkPassword(const char* name, bool expected, const Text& text, char* got) {
  if (got != nullptr) passwords_.insert(got);
  if (expected == (got != nullptr) && (!expected || text == got)) return true;
  stateMismatch_ = {name, 0, expected ? text : "null", got != nullptr ? got : "null"};
  return false;
}

bool Run::checkState(BkoqLayout layout) {
  const State& s = states_[layout];
  Variables& v = variables(layout);
  if (!(checkWord("new-tape time-out variable", s.newTapeTimeout, v.newTapeTimeout) &&
        checkWord("span-tape time-out variable", s.spanTapeTimeout, v.spanTapeTimeout) &&
        checkWord("new-tape method variable", s.newTapeMethod, v.newTapeMethod) &&
        checkWord("span-tape method variable", s.spanTapeMethod, v.spanTapeMethod) &&
        checkPassword("disk password variable", s.hasDiskPassword, s.diskPassword,
                      v.diskSessionPassword) &&
        checkPassword("tape password variable", s.hasTapePassword, s.tapePassword,
                      v.tapeSessionPassword) &&
        checkWord("encryption variable", s.encryption, v.diskEncryption) &&
        checkWord("compression variable", s.compression, v.diskCompression) &&
        checkWord("no-estimate variable", s.noEstimate, v.nodeNoEstimate) &&
        checkWord("node type variable", s.nodeType, v.currentNodeType) &&
        checkWord("UNIX options variable", s.unixOptions, v.unixOptions))) {
    return false;
  }
  const Text name(v.diskName.data(), v.diskName.length());
  if (name == s.diskName) return true;
  stateMismatch_ = {"disk name variable", 0, s.diskName, name};
  return false;
}

bool Run::compare(const char* what, BkoqLayout layout, int result, int expectedResult,
                  const std::string& expectedMessages, const void* root) {
  ++flattenings;
  const std::string messages = errors_.take();
  if (messages != expectedMessages) {
    report(what, layout, {"the error stream", 0, expectedMessages, messages});
    return false;
  }
  if (result != expectedResult) {
    report(what, layout, {"the result", 0, std::to_string(expectedResult), std::to_string(result)});
    return false;
  }
  Mismatch mismatch;
  if (!tree().equals(root, mismatch)) {
    report(what, layout, mismatch);
    return false;
  }
  blocksCompared += tree().blocks();
  for (const BkoqLayout each : kLayouts) {
    if (checkState(each)) continue;
    report(what, layout, stateMismatch_);
    return false;
  }
  return true;
}

ExpectedTree& Run::tree() {
  static ExpectedTree tree;  // keeps its memory from job to job
  return tree;
}

bool Run::flattenBoth(BKQJob& job, const JobPlan& plan, const char* what) {
  const BkoqLayout first = drawer_.layout();
  const BkoqLayout second = kLayouts[first == kLayouts[0]];
  return flatten(job, plan, first, what) && flatten(job, plan, second, what);
}

bool Run::flatten(BKQJob& job, const JobPlan& plan, BkoqLayout layout, const char* what) {
  Call call = drawer_.call(plan, layout);
  if (random_.chance(1, 8)) {
    call.liesInVariable = true;
    for (Text* text : {&call.nodeName, &call.unixText, &call.tapeName, &call.overridePath}) {
      if (!text->empty()) *text = states_[layout].diskName;
    }
  }
  call_ = "overload " + std::to_string(call.form);
  for (const auto& source : plan.sources) {
    for (const auto& disk : source->disks) {
      if (!hasFault || disk->name.value.compare(0, 1, "/") != 0) continue;
      report(what, layout, {"a disk", 0, "no slash", disk->name.value});
      return false;
    }
  }
  Expectation expectation(tree(), states_[layout], layout, zone_->standardOffset);
  const int expected = expectation.job(plan, call);
  void* root = nullptr;
  const int result = convert(job, plan.jobClass, call, root);
  if (!compare(what, layout, result, expected, expectation.messages(), root)) return false;
  if (expected == 1 && call.form == 0 && random_.chance(1, 12)) {
    const std::string problem = checkAllHandedOut(job, plan, random_);
    if (!problem.empty()) {
      report(what, layout, {"lists after it", 0, "", problem});
      return false;
    }
  }
  if (random_.chance(1, 16) && !throughImage(root, layout, what)) return false;
  if (random_.chance(1, 2)) {
    tree().freeFound(true);
    return true;
  }
  BkoqFreed freed = {};
  const BkoqStatus status = bkoqFree(root, layout, &freed);
  if (status == BKOQ_OK && freed.blocks == tree().blocks() && freed.notFreed == 0) return true;
  report(what, layout,
         {"blocks freed", 0, std::to_string(tree().blocks()), std::to_string(freed.blocks)});
  return false;
}

int Run::keepImage(void* image, const char* bytes, size_t size) {
  static_cast<std::string*>(image)->append(bytes, size);
  return 0;
}

bool Run::throughImage(void* root, BkoqLayout layout, const char* what) {
  std::string image;
  BkoqLayout readAs = BKOQ_LAYOUT_CURRENT;
  BkoqImageError error = {};
  const bool written = bkoqWriteImage(root, layout, keepImage, &image, &error) == BKOQ_OK;
  void* again = nullptr;
  if (!written || bkoqReadImage(image.data(), image.size(), &readAs, &again, &error) != BKOQ_OK ||
      readAs != layout) {
    report(what, layout, {"its image", 0, "", error.text});
    return false;
  }
  Mismatch mismatch;
  if (!tree().equals(again, mismatch)) {
    mismatch.path = "its image > " + mismatch.path;
    report(what, layout, mismatch);
    return false;
  }
  std::uint32_t differences = 1;
  if (bkoqCompare(root, layout, again, layout, 1, nullptr, nullptr, &differences) != BKOQ_OK ||
      differences != 0) {
    report(what, layout, {"its image", 0, "0 differences", std::to_string(differences)});
    return false;
  }
  bkoqFree(again, layout, nullptr);
  return tree().equals(root, mismatch);
}

void Run::change(BKQJob& job) {
  const auto set = [&](Attribute<Text>& attribute) {
    attribute.isSet = true;
    attribute.value = drawer_.text();
    return attribute.value.c_str();
  };
  const auto often = [&] { return random_.chance(1, 3); };
  job.setComments(set(plan_->comments));
  if (plan_->fax) job.getFaxInfo()->setUserName(set(plan_->fax->user));
  if (plan_->email) job.getEMailInfo()->setUserName(set(plan_->email->user));
  if (plan_->printQueue) job.getPrintQueue()->setUserName(set(plan_->printQueue->user));
  if (plan_->schedule && plan_->schedule->mask) {
    for (const auto& unit : plan_->schedule->mask->units) {
      const auto found = builder_.find<BKQJobUnit>(*unit);
      if (found == nullptr || !often()) continue;
      unit->jobType = random_.below(300);
      unit->jobType.isSet = true;
      found->setJobType(static_cast<BKQJobUnit::BKQCruiseJobType>(unit->jobType.value));
    }
  }
  const auto changeFilters = [&](const List<FilterPlan>& filters) {
    for (const auto& filter : filters) {
      if (!often()) continue;
      filter->kind = random_.below(3);
      filter->kind.isSet = true;
      builder_.made<BKQFilter>(*filter).setInclExcl(
          static_cast<BKQFilter::BKQInclExclType>(filter->kind.value));
    }
  };
  changeFilters(plan_->filters);
  for (const auto* nodes : {&plan_->sources, &plan_->destinations}) {
    for (const auto& node : *nodes) {
      if (often()) builder_.made<BKQNode>(*node).setNodeOSver(set(node->osVersion));
      changeFilters(node->filters);
      for (const auto& disk : node->disks) {
        if (often()) builder_.made<BKQDisk>(*disk).setPassword(set(disk->password));
        changeFilters(disk->filters);
        for (const auto& item : disk->items) {
          if (!often()) continue;
          item->path = drawer_.text();
          builder_.made<BKQDiskItem>(*item).setPath(item->path.c_str());
        }
      }
      for (const auto& tape : node->tapes) {
        if (often()) builder_.made<BKQTape>(*tape).setPath(set(tape->path));
        changeFilters(tape->filters);
        if (tape->extension && often()) {
          builder_.made<BKQTapeXtension>(*tape->extension).setDBuser(set(tape->extension->user));
        }
        for (const auto& item : tape->items) {
          if (!often()) continue;
          builder_.made<BKQTapeItem>(*item).setFileOrDir(set(item->fileOrDir));
        }
      }
    }
  }
}

int Run::convert(BKQJob& job, JobClass jobClass, const Call& call, void*& root) {
  RWSlistCollectables disks;
  std::vector<std::unique_ptr<RWCollectableString>> names;
  for (const Text& name : call.disks) {
    names.emplace_back(new RWCollectableString(name.c_str()));
    disks.insert(names.back().get());
  }
  const JobFamily family = lineOf(jobClass).family;
  const auto given = [&](const Text& text) {
    const RWCString& variable = variables(call.layout).diskName;
    const bool isThere = call.liesInVariable && text == variable.data();
    return isThere ? variable.data() : builder_.text(text);
  };
  Arguments arguments;
  arguments.name = given(isBackup(jobClass) ? call.nodeName : call.tapeName);
  arguments.disks = &disks;
  arguments.unixKind = call.unixKind;
  arguments.unixText = given(call.unixText);
  arguments.session = call.session;
  arguments.overridePath = given(call.overridePath);
  return visitLayout(call.layout, [&](auto traits) {
    return convertBy<decltype(traits)>(call.form, job, family, arguments, root);
  });
}

bool Run::isSilent = false;
bool Run::hasFault = false;
std::uint64_t Run::blocksCompared = 0;
std::uint64_t Run::flattenings = 0;

}  // namespace bkoq::test
