// Random jobs of every kind, flattened in both layouts before and after copying, against records
// computed from their plans.
//
//   random_jobs [--seed S] [--count N] [--seconds T] [--random-seed]
//
// Job k is drawn from seed S + k, so --seed with the seed of a failure and --count 1 repeats it.

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <random>
#include <set>
#include <string>

#include "tests/random/build.h"
#include "tests/random/check.h"
#include "tests/random/copy_plan.h"
#include "tests/random/draw.h"
#include "tests/random/expect.h"
#include "tests/random/plan.h"
#include "tests/random/tree.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/common_interface_defs.h>
#define __SANITIZE_ADDRESS__ 1
#endif
#endif

namespace bkoq::test {

namespace {

struct Zone {
  const char* rule;
  std::int32_t standardOffset;
};

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

// What a conversion writes to the standard error stream.
class ErrorStream {
 public:
  ErrorStream() : terminal_(dup(2)), file_(memfd_create("messages", 0)) {
    dup2(file_, 2);
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<std::intptr_t>(terminal_)));
#endif
  }
  ~ErrorStream() { dup2(terminal_, 2); }

  std::string take() {
    const off_t size = lseek(file_, 0, SEEK_END);
    if (size <= 0) return "";
    std::string text(static_cast<std::size_t>(size), '\0');
    const ssize_t got = pread(file_, &text[0], text.size(), 0);
    text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    if (ftruncate(file_, 0) != 0) std::abort();
    lseek(file_, 0, SEEK_SET);
    return text;
  }

 private:
  int terminal_;
  int file_;
};

// The state variables of a layout, as the library exports them.
struct Variables {
  unsigned int& newTapeTimeout;
  unsigned int& spanTapeTimeout;
  unsigned int& newTapeMethod;
  unsigned int& spanTapeMethod;
  char*& diskPassword;
  char*& tapePassword;
  unsigned int& encryption;
  unsigned int& compression;
  unsigned int& noEstimate;
  unsigned int& nodeType;
  unsigned int& unixOptions;
  RWCollectableString& diskName;
};

Variables& variables(bool previous) {
  static Variables current = {BK6_NEWTAPETIMEOUT, BK6_SPANTAPETIMEOUT, BK6_NEWTAPEMETHOD,
                              BK6_SPANTAPEMETHOD, BK6_DISKSESSIONPW,   BK6_TAPESESSIONPW,
                              DISK_ENCRYPTION,    DISK_COMPRESSION,    NODE_NOESTIMATE,
                              CURRENT_NODETYPE,   UNIX_OPTIONS,        DISK_DISKNAME};
  static Variables old = {BK6_NEWTAPETIMEOUT_OLD, BK6_SPANTAPETIMEOUT_OLD, BK6_NEWTAPEMETHOD_OLD,
                          BK6_SPANTAPEMETHOD_OLD, BK6_DISKSESSIONPW_OLD,   BK6_TAPESESSIONPW_OLD,
                          DISK_ENCRYPTION_OLD,    DISK_COMPRESSION_OLD,    NODE_NOESTIMATE_OLD,
                          CURRENT_NODETYPE_OLD,   UNIX_OPTIONS_OLD,        DISK_DISKNAME_OLD};
  return previous ? old : current;
}

const char* layoutName(bool previous) { return previous ? "previous" : "current"; }

// One job: everything that is done with it follows from its seed.
class Run {
 public:
  Run(std::uint64_t seed, ErrorStream& errors)
      : seed_(seed), random_(seed), drawer_(random_), errors_(errors), builder_(random_) {}
  ~Run() {
    for (const bool previous : {false, true}) {
      variables(previous).diskPassword = nullptr;
      variables(previous).tapePassword = nullptr;
    }
    for (char* password : passwords_) std::free(password);
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  // Whether all was as expected.
  bool run() {
    setZone();
    plan_ = drawer_.job(static_cast<JobClass>(random_.below(kJobClasses)));
    BKQJob* job = builder_.job(*plan_);
    for (const bool previous : {false, true}) setState(previous);

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
      if (!flatten(*second, *secondPlan, random_.chance(1, 2), "copy of the copy")) return false;
    }
    if (!flatten(*job, *plan_, random_.chance(1, 2), "source after the copy")) return false;
    if (checks && !checkValues(*job, *plan_, "source after the copy")) return false;
    return convertParts();
  }

  static std::uint64_t blocksCompared;
  static std::uint64_t flattenings;

 private:
  void setZone() {
    zone_ = &kZones[random_.below(sizeof kZones / sizeof *kZones)];
    setenv("TZ", zone_->rule, 1);
    tzset();
  }

  char* passwordOf(const Text& text) {
    char* copy = strdup(text.c_str());
    passwords_.insert(copy);
    return copy;
  }

  void setState(bool previous) {
    State& state = states_[previous];
    state = drawer_.state();
    Variables& v = variables(previous);
    v.newTapeTimeout = state.newTapeTimeout;
    v.spanTapeTimeout = state.spanTapeTimeout;
    v.newTapeMethod = state.newTapeMethod;
    v.spanTapeMethod = state.spanTapeMethod;
    v.diskPassword = state.hasDiskPassword ? passwordOf(state.diskPassword) : nullptr;
    v.tapePassword = state.hasTapePassword ? passwordOf(state.tapePassword) : nullptr;
    v.encryption = state.encryption;
    v.compression = state.compression;
    v.noEstimate = state.noEstimate;
    v.nodeType = state.nodeType;
    v.unixOptions = state.unixOptions;
    v.diskName = state.diskName.c_str();
  }

  void report(const char* what, bool previous, const Mismatch& mismatch) {
    std::printf("FAILED: seed %" PRIu64
                ", %s, %s, TZ=%s, %s layout%s%s\n  at %s, byte %u\n"
                "  expected %s\n  got      %s\n",
                seed_, plan_ ? kJobClassNames[static_cast<unsigned int>(plan_->jobClass)] : "?",
                what, zone_->rule, layoutName(previous), call_.empty() ? "" : ", ", call_.c_str(),
                mismatch.path.empty() ? "the record" : mismatch.path.c_str(), mismatch.offset,
                mismatch.expected.c_str(), mismatch.got.c_str());
    std::fflush(stdout);
  }

  bool checkValues(BKQJob& job, const JobPlan& plan, const char* what) {
    call_ = "attributes";
    const std::string problem = check(job, plan, random_);
    if (problem.empty()) return true;
    report(what, false, {"an attribute", 0, "", problem});
    return false;
  }

  bool checkWord(const char* name, std::uint32_t expected, std::uint32_t got) {
    if (expected == got) return true;
    stateMismatch_ = {name, 0, std::to_string(expected), std::to_string(got)};
    return false;
  }

  bool checkPassword(const char* name, bool expected, const Text& text, char* got) {
    if (got != nullptr) passwords_.insert(got);
    if (expected == (got != nullptr) && (!expected || text == got)) return true;
    stateMismatch_ = {name, 0, expected ? text : "null", got != nullptr ? got : "null"};
    return false;
  }

  bool checkState(bool previous) {
    const State& s = states_[previous];
    Variables& v = variables(previous);
    if (!(checkWord("new-tape time-out variable", s.newTapeTimeout, v.newTapeTimeout) &&
          checkWord("span-tape time-out variable", s.spanTapeTimeout, v.spanTapeTimeout) &&
          checkWord("new-tape method variable", s.newTapeMethod, v.newTapeMethod) &&
          checkWord("span-tape method variable", s.spanTapeMethod, v.spanTapeMethod) &&
          checkPassword("disk password variable", s.hasDiskPassword, s.diskPassword,
                        v.diskPassword) &&
          checkPassword("tape password variable", s.hasTapePassword, s.tapePassword,
                        v.tapePassword) &&
          checkWord("encryption variable", s.encryption, v.encryption) &&
          checkWord("compression variable", s.compression, v.compression) &&
          checkWord("no-estimate variable", s.noEstimate, v.noEstimate) &&
          checkWord("node type variable", s.nodeType, v.nodeType) &&
          checkWord("UNIX options variable", s.unixOptions, v.unixOptions))) {
      return false;
    }
    const Text name(v.diskName.data(), v.diskName.length());
    if (name == s.diskName) return true;
    stateMismatch_ = {"disk name variable", 0, s.diskName, name};
    return false;
  }

  // The result, the messages, the records and the variables of a conversion.
  bool compare(const char* what, bool previous, int result, int expectedResult,
               const std::string& expectedMessages, const void* root) {
    ++flattenings;
    const std::string messages = errors_.take();
    if (messages != expectedMessages) {
      report(what, previous, {"the error stream", 0, expectedMessages, messages});
      return false;
    }
    if (result != expectedResult) {
      report(what, previous,
             {"the result", 0, std::to_string(expectedResult), std::to_string(result)});
      return false;
    }
    Mismatch mismatch;
    if (!tree().equals(root, mismatch)) {
      report(what, previous, mismatch);
      return false;
    }
    blocksCompared += tree().blocks();
    for (const bool each : {false, true}) {
      if (checkState(each)) continue;
      report(what, previous, stateMismatch_);
      return false;
    }
    return true;
  }

  static Tree& tree() {
    static Tree tree;  // keeps its memory from job to job
    return tree;
  }

  bool flattenBoth(BKQJob& job, const JobPlan& plan, const char* what) {
    const bool first = random_.chance(1, 2);
    return flatten(job, plan, first, what) && flatten(job, plan, !first, what);
  }

  bool flatten(BKQJob& job, const JobPlan& plan, bool previous, const char* what) {
    const Call call = drawer_.call(plan, previous);
    call_ = "overload " + std::to_string(call.arguments);
    Expectation expectation(tree(), states_[previous], previous, zone_->standardOffset);
    const int expected = expectation.job(plan, call);
    void* root = nullptr;
    const int result = convert(job, plan.jobClass, call, root);
    if (!compare(what, previous, result, expected, expectation.messages(), root)) return false;
    if (expected == 1 && call.arguments == 0 && random_.chance(1, 12)) {
      const std::string problem = checkAllHandedOut(job, plan, random_);
      if (!problem.empty()) {
        report(what, previous, {"lists after it", 0, "", problem});
        return false;
      }
    }
    if (random_.chance(1, 16) && !throughImage(root, previous, what)) return false;
    if (random_.chance(1, 2)) {
      tree().freeFound(true);
      return true;
    }
    BkoqFreed freed = {};
    const BkoqStatus status =
        bkoqFree(root, previous ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT, &freed);
    if (status == BKOQ_OK && freed.blocks == tree().blocks() && freed.notFreed == 0) return true;
    report(what, previous,
           {"blocks freed", 0, std::to_string(tree().blocks()), std::to_string(freed.blocks)});
    return false;
  }

  static int keepImage(void* image, const char* bytes, size_t size) {
    static_cast<std::string*>(image)->append(bytes, size);
    return 0;
  }

  // A tree that was stored and read again is still the expected one.
  bool throughImage(void* root, bool previous, const char* what) {
    std::string image;
    BkoqLayout layout = previous ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT;
    BkoqImageError error = {};
    const bool written = bkoqWriteImage(root, layout, keepImage, &image, &error) == BKOQ_OK;
    void* again = nullptr;
    if (!written || bkoqReadImage(image.data(), image.size(), &layout, &again, &error) != BKOQ_OK ||
        (layout == BKOQ_LAYOUT_PREVIOUS) != previous) {
      report(what, previous, {"its image", 0, "", error.text});
      return false;
    }
    Mismatch mismatch;
    if (!tree().equals(again, mismatch)) {
      mismatch.path = "its image > " + mismatch.path;
      report(what, previous, mismatch);
      return false;
    }
    std::uint32_t differences = 1;
    if (bkoqCompare(root, layout, again, layout, 1, nullptr, nullptr, &differences) != BKOQ_OK ||
        differences != 0) {
      report(what, previous, {"its image", 0, "0 differences", std::to_string(differences)});
      return false;
    }
    bkoqFree(again, layout, nullptr);
    return tree().equals(root, mismatch);
  }

  // Changes of the source and its parts after the copy: the copy sees those of shared parts.
  void change(BKQJob& job) {
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

  template <class Object, class... Arguments>
  static int convertTo(bool previous, Object& object, void*& record, Arguments&&... arguments) {
    return previous ? object.convertToBK2_old(record, arguments...)
                    : object.convertToBK2(record, arguments...);
  }

  int convert(BKQJob& job, JobClass jobClass, const Call& call, void*& root) {
    const bool previous = call.previous;
    if (call.arguments == 0) return convertTo(previous, job, root);
    RWSlistCollectables disks;
    std::vector<std::unique_ptr<RWCollectableString>> names;
    for (const Text& name : call.disks) {
      names.emplace_back(new RWCollectableString(name.c_str()));
      disks.insert(names.back().get());
    }
    if (isBackup(jobClass)) {
      auto& backup = static_cast<BKQBackupJob&>(job);
      const char* nodeName = builder_.text(call.nodeName);
      const char* unixText = builder_.text(call.unixText);
      switch (call.arguments) {
        case 1:
          return convertTo(previous, backup, root, nodeName);
        case 2:
          return convertTo(previous, backup, root, nodeName, disks);
        case 3:
          return convertTo(previous, backup, root, nodeName, call.unixKind, unixText);
        default:
          return convertTo(previous, backup, root, nodeName, disks, call.unixKind, unixText);
      }
    }
    const char* tapeName = builder_.text(call.tapeName);
    const unsigned short session = call.session;
    if (jobClass == JobClass::kCompare) {
      auto& compare = static_cast<BKQCompareJob&>(job);
      const char* overridePath = builder_.text(call.overridePath);
      switch (call.arguments) {
        case 1:
          return convertTo(previous, compare, root, overridePath);
        case 2:
          return convertTo(previous, compare, root, tapeName, session);
        default:
          return convertTo(previous, compare, root, tapeName, session, overridePath);
      }
    }
    if (isRestore(jobClass)) {
      return convertTo(previous, static_cast<BKQRestoreJob&>(job), root, tapeName, session);
    }
    if (jobClass == JobClass::kVerify) {
      return convertTo(previous, static_cast<BKQVerifyJob&>(job), root, tapeName, session);
    }
    if (jobClass == JobClass::kMerge) {
      return convertTo(previous, static_cast<BKQMergeJob&>(job), root, tapeName, session);
    }
    return convertTo(previous, static_cast<BKQScanJob&>(job), root, tapeName, session);
  }

  // Parts converted on their own, with whatever the variables hold.
  bool convertParts() {
    for (const auto* nodes : {&plan_->sources, &plan_->destinations}) {
      for (const auto& each : *nodes) {
        if (random_.chance(1, 3) && !convertNode(*each)) return false;
        for (const auto& disk : each->disks) {
          if (random_.chance(1, 6) && !convertDisk(*disk)) return false;
        }
        for (const auto& tape : each->tapes) {
          if (random_.chance(1, 6) && !convertTape(*tape)) return false;
        }
      }
    }
    if (plan_->schedule && random_.chance(1, 4) && !convertSchedule()) return false;
    for (const auto& each : plan_->filters) {
      if (!random_.chance(1, 6)) continue;
      const FilterPlan& filter = *each;
      if (!convertPart(
              "a filter", 32, [&](Expectation& expected) { return expected.filter(filter); },
              [&](bool previous, void* record) {
                return convertTo(previous, builder_.made<BKQFilter>(filter), record);
              })) {
        return false;
      }
    }
    return true;
  }

  bool convertSchedule() {
    call_ = "";
    return convertPart(
        "a schedule", 292,
        [&](Expectation& expected) { return expected.schedule(*plan_->schedule), 1; },
        [&](bool previous, void* record) {
          void* schedule = static_cast<char*>(record) + 56;
          void* rotation = static_cast<char*>(record) + 196;
          BKQSchedule& object = *builder_.source()->getSchedule();
          return previous ? object.convertToBK2_old(schedule, rotation)
                          : object.convertToBK2(schedule, rotation);
        });
  }

  template <class Expect, class Convert>
  bool convertPart(const char* what, std::size_t size, Expect expect, Convert convert,
                   int layout = -1) {
    const bool previous = layout >= 0 ? layout == 1 : random_.chance(1, 2);
    if (random_.chance(2, 3)) setState(previous);
    Expectation expectation(tree(), states_[previous], previous, zone_->standardOffset);
    const int expected = expect(expectation);
    void* const record = std::calloc(1, size);
    const int result = convert(previous, record);
    if (!compare(what, previous, result, expected, expectation.messages(), record)) return false;
    tree().freeFound(true);
    return true;
  }

  bool convertNode(const NodePlan& plan) {
    Call call;
    NodeForm form = NodeForm::kVirtual;
    if (isDiskNode(plan.nodeClass)) {
      const std::uint32_t forms = plan.nodeClass == NodeClass::kUnix ? 5 : 4;
      form = static_cast<NodeForm>(random_.below(forms));
      for (std::uint32_t i = random_.below(4); i > 0; --i) {
        call.disks.push_back(
            plan.disks.empty() || random_.chance(1, 3)
                ? drawer_.text()
                : plan.disks[random_.below(static_cast<std::uint32_t>(plan.disks.size()))]
                      ->name.value);
      }
      call.overridePath = drawer_.text();
      call.unixKind = static_cast<std::int32_t>(random_.below(4));
      call.unixText = drawer_.text();
    } else if (plan.nodeClass == NodeClass::kTape && random_.chance(1, 2)) {
      form = NodeForm::kTapeSelected;
      call.session = static_cast<std::uint16_t>(random_.below(3));
      call.tapeName =
          plan.tapes.empty() || random_.chance(1, 2) ? drawer_.text() : plan.tapes[0]->name.value;
    }
    if (random_.chance(1, 8)) form = NodeForm::kBase;
    call_ = "form " + std::to_string(static_cast<unsigned int>(form));
    RWSlistCollectables disks;
    std::vector<std::unique_ptr<RWCollectableString>> names;
    for (const Text& name : call.disks) {
      names.emplace_back(new RWCollectableString(name.c_str()));
      disks.insert(names.back().get());
    }
    auto& node = builder_.made<BKQNode>(plan);
    return convertPart(
        "a node", 100, [&](Expectation& expected) { return expected.node(plan, form, call); },
        [&](bool previous, void* record) {
          const char* overridePath = builder_.text(call.overridePath);
          switch (form) {
            case NodeForm::kVirtual:
              return convertTo(previous, node, record);
            case NodeForm::kNames:
              return convertTo(previous, static_cast<BKQDiskNode&>(node), record, disks);
            case NodeForm::kOverride:
              return convertTo(previous, static_cast<BKQDiskNode&>(node), record, overridePath);
            case NodeForm::kNamesOverride:
              return convertTo(previous, static_cast<BKQDiskNode&>(node), record, disks,
                               overridePath);
            case NodeForm::kUnixLong:
              return convertTo(previous, static_cast<BKQUnixNode&>(node), record, disks,
                               call.unixKind, builder_.text(call.unixText));
            case NodeForm::kTapeSelected:
              return convertTo(previous, static_cast<BKQTapeNode&>(node), record,
                               builder_.text(call.tapeName), call.session);
            case NodeForm::kBase:
              return previous ? node.BKQNode::convertToBK2_old(record)
                              : node.BKQNode::convertToBK2(record);
          }
          return 0;
        });
  }

  bool convertDisk(const DiskPlan& plan) {
    const Text overridePath = drawer_.text();
    call_ = "";
    if (!convertPart(
            "a disk", 52, [&](Expectation& expected) { return expected.disk(plan, overridePath); },
            [&](bool previous, void* record) {
              return convertTo(previous, builder_.made<BKQDisk>(plan), record,
                               builder_.text(overridePath));
            })) {
      return false;
    }
    for (const auto& each : plan.items) {
      const DiskItemPlan& item = *each;
      if (!random_.chance(1, 3)) continue;
      const bool hasOverride = random_.chance(1, 2);
      if (!convertPart(
              "a disk item", 32,
              [&](Expectation& expected) {
                expected.diskItem(item, hasOverride, overridePath);
                return 1;
              },
              [&](bool previous, void* record) {
                auto& object = builder_.made<BKQDiskItem>(item);
                return hasOverride
                           ? convertTo(previous, object, record, builder_.text(overridePath))
                           : convertTo(previous, object, record);
              })) {
        return false;
      }
    }
    return true;
  }

  bool convertTape(const TapePlan& plan) {
    call_ = "";
    if (!convertPart(
            "a tape", 72, [&](Expectation& expected) { return expected.tape(plan); },
            [&](bool previous, void* record) {
              return convertTo(previous, builder_.made<BKQTape>(plan), record);
            })) {
      return false;
    }
    for (const auto& each : plan.items) {
      const TapeItemPlan& item = *each;
      if (!random_.chance(1, 3)) continue;
      if (!convertPart(
              "a tape item", 32, [&](Expectation& expected) { return expected.tapeItem(item), 1; },
              [&](bool previous, void* record) {
                return convertTo(previous, builder_.made<BKQTapeItem>(item), record);
              })) {
        return false;
      }
    }
    if (!plan.extension) return true;
    return convertPart(
        "a tape extension", 64,
        [&](Expectation& expected) { return expected.tapeExtension(*plan.extension), 1; },
        [&](bool, void* record) {
          return builder_.made<BKQTapeXtension>(*plan.extension).convertToBK2(record);
        },
        0);
  }

  std::uint64_t seed_;
  Random random_;
  Drawer drawer_;
  ErrorStream& errors_;
  const Zone* zone_ = kZones;
  std::shared_ptr<JobPlan> plan_;
  State states_[2];
  std::set<char*> passwords_;
  std::string call_;
  Mismatch stateMismatch_;
  Builder builder_;
};

std::uint64_t Run::blocksCompared = 0;
std::uint64_t Run::flattenings = 0;

[[noreturn]] void usage() {
  std::printf("usage: random_jobs [--seed S | --random-seed] [--count N] [--seconds T]\n");
  std::exit(2);
}

int runAll(int argc, char** argv) {
  std::uint64_t seed = 1;
  std::uint64_t count = 0;
  double seconds = 0;
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    if (option == "--random-seed") {
      std::random_device device;
      seed = device();
      continue;
    }
    if (i + 1 == argc) usage();
    char* end = nullptr;
    const char* value = argv[++i];
    if (option == "--seed") {
      seed = std::strtoull(value, &end, 10);
    } else if (option == "--count") {
      count = std::strtoull(value, &end, 10);
    } else if (option == "--seconds") {
      seconds = std::strtod(value, &end);
    } else {
      usage();
    }
    if (end == value || *end != '\0') usage();
  }
  if (count == 0 && seconds == 0) count = 1000;

  std::printf("random_jobs --seed %" PRIu64 "\n", seed);
  std::fflush(stdout);
  ErrorStream errors;
  const auto start = std::chrono::steady_clock::now();
  const auto elapsed = [&] {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  std::uint64_t done = 0;
  while ((count == 0 || done < count) && (seconds == 0 || done % 16 != 0 || elapsed() < seconds)) {
    Run run(seed + done, errors);
    if (!run.run()) {
      std::printf("again: random_jobs --seed %" PRIu64 " --count 1\n", seed + done);
      std::fflush(stdout);
      std::_Exit(1);
    }
    ++done;
  }
  std::printf("%" PRIu64 " jobs, %" PRIu64 " flattenings, %" PRIu64 " blocks, %.0f jobs a second\n",
              done, Run::flattenings, Run::blocksCompared, static_cast<double>(done) / elapsed());
  return 0;
}

}  // namespace

}  // namespace bkoq::test

int main(int argc, char** argv) { return bkoq::test::runAll(argc, argv); }
