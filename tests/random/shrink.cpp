#include "tests/random/shrink.h"

#include <algorithm>
#include <type_traits>

#include "tests/random/attributes.h"
#include "tests/random/source.h"

namespace bkoq::test {
namespace {

// Goes through a plan: calls `part` with each object that may be missing and with each attribute
// that is set; which may drop it. Parts that are in the plan twice are visited once.
template <class Visitor>
class PlanWalk {
 public:
  explicit PlanWalk(Visitor& visitor) : visitor_(visitor) {}

  void job(JobPlan& plan) {
    eachOfJob(plan, visitor_);
    eachOfBackup(plan, visitor_);
    eachOfRestore(plan, visitor_);
    eachOfMerge(plan, visitor_);
    eachOfScan(plan, visitor_);
    one("fax", plan.fax, [&](FaxPlan& fax) { eachOfFax(fax, visitor_); });
    one("email", plan.email, [&](EMailPlan& email) {
      eachOfEMail(email, visitor_);
      eachOfMHSEMail(email, visitor_);
    });
    one("print queue", plan.printQueue,
        [&](PrintQueuePlan& queue) { eachOfPrintQueue(queue, visitor_); });
    one("open files", plan.openFile, [&](OpenFilePlan& file) { eachOfOpenFile(file, visitor_); });
    one("schedule", plan.schedule, [&](SchedulePlan& each) { schedule(each); });
    list("removed source", plan.removedSources, [&](NodePlan& each) { node(each); });
    list("source", plan.sources, [&](NodePlan& each) { node(each); });
    list("destination", plan.destinations, [&](NodePlan& each) { node(each); });
    filters(plan.filters);
  }

 private:
  template <class Plan, class Inside>
  void one(const char* what, std::shared_ptr<Plan>& plan, const Inside& inside) {
    if (!plan) return;
    const bool isKept = visitor_.begin(what);
    if (seen_.insert(plan.get()).second) inside(*plan);
    visitor_.end();
    if (!isKept) plan.reset();
  }
  template <class Plan, class Inside>
  void list(const char* what, List<Plan>& all, const Inside& inside) {
    for (auto& each : all) one(what, each, inside);
    all.erase(std::remove(all.begin(), all.end(), nullptr), all.end());
  }
  void filters(List<FilterPlan>& all) {
    list("filter", all, [](FilterPlan&) {});
  }
  void node(NodePlan& plan) {
    visitor_.name(lineOf(plan.nodeClass).className, plan.name.value);
    eachOfNode(plan, visitor_);
    eachOfUnixNode(plan, visitor_);
    eachOfSybaseNode(plan, visitor_);
    eachOfOracleNode(plan, visitor_);
    eachOfInformixNode(plan, visitor_);
    eachOfSnapShotNode(plan, visitor_);
    eachOfRestoreNode(plan, visitor_);
    eachOfDBRestoreNode(plan, visitor_);
    filters(plan.filters);
    list("disk", plan.disks, [&](DiskPlan& disk) {
      visitor_.name("BKQDisk", disk.name.value);
      eachOfDisk(disk, visitor_);
      list("item", disk.items, [&](DiskItemPlan& item) {
        visitor_.name("BKQDiskItem", item.path);
        eachOfDiskItem(item, visitor_);
      });
      filters(disk.filters);
    });
    list("tape", plan.tapes, [&](TapePlan& tape) {
      visitor_.name("BKQTape", tape.name.value);
      eachOfTape(tape, visitor_);
      list("item", tape.items, [&](TapeItemPlan& item) { eachOfTapeItem(item, visitor_); });
      filters(tape.filters);
    });
    one("groom", plan.groom, [&](GroomPlan& groom) {
      eachOfGroom(groom, visitor_);
      filters(groom.filters);
    });
  }
  void schedule(SchedulePlan& plan) {
    eachOfSchedule(plan, visitor_);
    eachOfCustomSchedule(plan, visitor_);
    eachOfRotationSchedule(plan, visitor_);
    eachOfCruiseSchedule(plan, visitor_);
    one("job mask", plan.mask, [&](JobMaskPlan& mask) {
      eachOfJobMask(mask, visitor_);
      list("job unit", mask.units, [&](JobUnitPlan& unit) { eachOfJobUnit(unit, visitor_); });
    });
    list("exception day", plan.days,
         [&](ExceptionDayPlan& day) { eachOfExceptionDay(day, visitor_); });
  }

  Visitor& visitor_;
  std::set<const void*> seen_;
};

class LeavingOut {
 public:
  explicit LeavingOut(const PartNumbers& parts) : parts_(parts) {}

  bool begin(const char* /*what*/) { return isKept(); }
  void end() {}
  void name(const char* /*className*/, const Text& /*name*/) {}

  template <class Value, class Getter, class Setter>
  void operator()(const char* /*name*/, Attribute<Value>& attribute, Getter /*getter*/,
                  Setter /*setter*/) {
    if (attribute.isSet && !isKept()) attribute = attribute.first;
  }

  std::uint32_t count() const { return next_; }

 private:
  bool isKept() { return parts_.count(next_++) == 0; }

  const PartNumbers& parts_;
  std::uint32_t next_ = 0;
};

std::string shown(const Text& text) {
  constexpr std::size_t kMost = 60;
  return literal(text.substr(0, kMost)) + (text.size() > kMost ? "..." : "");
}

class Outline {
 public:
  bool begin(const char* what) {
    line(what);
    ++depth_;
    return true;
  }
  void end() { --depth_; }
  void name(const char* className, const Text& name) {
    line(std::string(className) + " " + shown(name));
  }
  template <class Value, class Getter, class Setter>
  void operator()(const char* name, Attribute<Value>& attribute, Getter /*getter*/,
                  Setter /*setter*/) {
    if (!attribute.isSet) return;
    if constexpr (std::is_same_v<Value, Text>) {
      line(std::string(name) + "(" + shown(attribute.value) + ");");
    } else {
      line(std::string(name) + "(" + std::to_string(attribute.value) + ");");
    }
  }

  std::string text;

 private:
  void line(const std::string& content) {
    text += std::string(2 * depth_ + 2, ' ') + content + "\n";
  }
  std::size_t depth_ = 0;
};

}  // namespace

std::uint32_t leaveOut(JobPlan& plan, const PartNumbers& parts) {
  LeavingOut leaving(parts);
  PlanWalk<LeavingOut>(leaving).job(plan);
  return leaving.count();
}

PartNumbers shrunk(std::uint32_t parts, const std::function<bool(const PartNumbers&)>& stillFails) {
  PartNumbers left;
  // Halves of what is there first, then less and less at once.
  for (std::uint32_t step = std::max(1U, parts / 2);; step /= 2) {
    for (std::uint32_t begin = 0; begin < parts; begin += step) {
      PartNumbers more = left;
      for (std::uint32_t i = begin; i < std::min(parts, begin + step); ++i) more.insert(i);
      if (more.size() > left.size() && stillFails(more)) left = std::move(more);
    }
    if (step == 1) return left;
  }
}

std::string outline(JobPlan& plan) {
  Outline outline;
  PlanWalk<Outline>(outline).job(plan);
  return std::string(lineOf(plan.jobClass).className) + "\n" + outline.text;
}

}  // namespace bkoq::test
