#include "tests/random/check.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

#include "tests/random/attributes.h"
#include "tests/random/expect.h"

namespace bkoq::test {

namespace {

std::string shown(const Text& text) { return '"' + text + '"'; }
std::string shown(std::uint64_t number) { return std::to_string(number); }

class Checker {
 public:
  explicit Checker(Random& random) : random_(random) {}

  std::string problem;

  void job(BKQJob& job, const JobPlan& plan);
  // Whether lists must be found at their ends before they are walked.
  bool atEnd = false;

 private:
  // As a visitor of attributes.
  template <class Object>
  struct Getters {
    Checker& checker;
    Object& object;

    template <class Value, class Getter, class Setter>
    void operator()(const char* name, const Attribute<Value>& attribute, Getter getter,
                    Setter /*setter*/) {
      Visited::note(Visited::kChecked, name);
      if constexpr (std::is_same<Value, Text>::value) {
        checker.text(name, attribute.value, (object.*getter)());
      } else {
        checker.number(name, attribute.value, static_cast<Value>((object.*getter)()));
      }
    }
  };
  template <class Object>
  Getters<Object> gettersOf(Object& object) {
    return {*this, object};
  }

  void expect(const char* name, bool holds) {
    if (!holds && problem.empty()) problem = std::string(name) + " does not hold";
  }
  void text(const char* name, const Text& expected, const RWCString& got) {
    const Text value(got.data(), got.length());
    if (value != expected && problem.empty()) {
      problem = std::string(name) + ": expected " + shown(expected) + ", got " + shown(value);
    }
  }
  void number(const char* name, std::uint64_t expected, std::uint64_t got) {
    if (expected != got && problem.empty()) {
      problem = std::string(name) + ": expected " + shown(expected) + ", got " + shown(got);
    }
  }
  void time(const char* name, std::uint32_t expected, const RWTime& got) {
    number(name, expected, got.seconds());
  }

  // All that an owner hands out, in pages.
  template <class Owner, class Base, class Collection>
  std::vector<RWCollectable*> all(const char* name, std::size_t expected, unsigned int entries,
                                  Owner& owner, void (Base::*reset)(),
                                  unsigned int (Base::*enumerate)(Collection*&, unsigned int)) {
    number(name, expected, entries);
    std::vector<RWCollectable*> elements;
    if (atEnd && expected != 0) {
      Collection* rest = nullptr;
      number(name, 0, (owner.*enumerate)(rest, 0));
      delete rest;
    }
    (owner.*reset)();
    for (;;) {
      const unsigned int page = 1 + random_.below(4);
      Collection* collection = nullptr;
      const unsigned int count = (owner.*enumerate)(collection, page);
      expect(name, collection != nullptr && collection->entries() == count && count <= page);
      if (collection == nullptr) break;
      for (unsigned int i = 0; i < count; ++i) elements.push_back(collection->at(i));
      delete collection;
      if (count == 0) break;
      if (elements.size() > expected) break;
    }
    number(name, expected, elements.size());
    return elements;
  }

  template <class Owner, class Plan>
  void filters(Owner& owner, const Plan& plan) {
    const auto elements = all("filters", plan.filters.size(), owner.filterEntries(), owner,
                              &Owner::resetFilters, &Owner::enumFilters);
    if (!problem.empty()) return;
    for (std::size_t i = 0; i < elements.size(); ++i) {
      filter(*static_cast<BKQFilter*>(elements[i]), *plan.filters[i]);
    }
  }

  void filter(BKQFilter& filter, const FilterPlan& plan);
  void diskItem(BKQDiskItem& item, const DiskItemPlan& plan);
  void disk(BKQDisk& disk, const DiskPlan& plan);
  void tape(BKQTape& tape, const TapePlan& plan);
  void node(BKQNode& node, const NodePlan& plan);
  template <class Enumerated>
  void nodes(const Enumerated& elements, const List<NodePlan>& plans) {
    if (!problem.empty()) return;
    for (std::size_t i = 0; i < elements.size(); ++i) {
      node(*static_cast<BKQNode*>(elements[i]), *plans[i]);
    }
  }
  void schedule(BKQSchedule& schedule, const SchedulePlan& plan);
  void rotation(BKQRotationSchedule& schedule, const SchedulePlan& plan);
  template <class Job>
  void typedSchedule(BKQJob& job) {
    auto& typed = static_cast<Job&>(job);
    auto* got = typed.getSchedule();
    using Schedule = std::remove_pointer_t<decltype(got)>;
    expect("schedule by its class", got == dynamic_cast<Schedule*>(job.getSchedule()));
  }

  Random& random_;
};

void Checker::filter(BKQFilter& filter, const FilterPlan& plan) {
  number("include or exclude", plan.kind, filter.getInclExcl());
  number("includes", plan.kind == 0u, static_cast<unsigned int>(filter.isInclude()));
  number("excludes", plan.kind == 1u, static_cast<unsigned int>(filter.isExclude()));
  const auto pattern = [&](auto* own, unsigned int type) {
    expect("class of the filter", own != nullptr && filter.filterType() == type);
    if (own != nullptr) text("pattern", plan.pattern, own->getFilterString());
  };
  const auto range = [&](unsigned int type) {
    auto* own = dynamic_cast<BKQTimeFilter*>(&filter);
    expect("time filter", own != nullptr && filter.filterType() == 4);
    if (own == nullptr) return;
    number("time range", type, own->getTRtype());
    number("time attribute", plan.timeAttribute, own->getTRattribute());
  };
  switch (plan.filterClass) {
    case FilterClass::kDir:
      return pattern(dynamic_cast<BKQDirFilter*>(&filter), 3);
    case FilterClass::kFile:
      return pattern(dynamic_cast<BKQFileFilter*>(&filter), 2);
    case FilterClass::kVolume:
      return pattern(dynamic_cast<BKQVolumeFilter*>(&filter), 1);
    case FilterClass::kAttribute:
      expect("class of the filter", filter.filterType() == 5);
      return number("attributes", plan.attributes,
                    static_cast<BKQAttributeFilter&>(filter).getAttributes());
    case FilterClass::kWithin: {
      range(3);
      auto& own = static_cast<BKQWithinTimeFilter&>(filter);
      number("units", plan.units, own.getTimeUnits());
      return number("unit type", plan.unitType, own.getTimeUnitType());
    }
    case FilterClass::kBefore:
      range(0);
      return time("time", plan.time, static_cast<BKQBeforeTimeFilter&>(filter).getTime());
    case FilterClass::kAfter:
      range(1);
      return time("time", plan.time, static_cast<BKQAfterTimeFilter&>(filter).getTime());
    case FilterClass::kBetween: {
      range(2);
      auto& own = static_cast<BKQBetweenTimeFilter&>(filter);
      time("start", plan.time, own.getStartTime());
      return time("end", plan.endTime, own.getEndTime());
    }
    case FilterClass::kForeignTime:
      return range(2);
    case FilterClass::kFailing:
      return expect("class of the filter", filter.filterType() == 3);
  }
}

void Checker::diskItem(BKQDiskItem& item, const DiskItemPlan& plan) {
  text("item path", plan.path, item.getPath());
  number("item options", optionsOf(plan), item.getOptions());
  auto getters = gettersOf(item);
  eachOfDiskItem(plan, getters);
  number("files", plan.files.size(), item.fileEntries());
  BKQStringCol* files = nullptr;
  if (atEnd && !plan.files.empty()) {
    number("files left", 0, item.enumFiles(files, 0));
    files->clearAndDestroy();
    delete files;
  }
  item.resetFiles();
  const unsigned int count = item.enumFiles(files, 0);
  number("files", plan.files.size(), count);
  for (unsigned int i = 0; i < count && i < plan.files.size(); ++i) {
    text("file", plan.files[i], *static_cast<RWCollectableString*>(files->at(i)));
  }
  files->clearAndDestroy();
  delete files;
}

void Checker::disk(BKQDisk& disk, const DiskPlan& plan) {
  number("disk type", plan.type, disk.getDiskType());
  auto getters = gettersOf(disk);
  eachOfDisk(plan, getters);
  const auto items = all("disk items", plan.items.size(), disk.diskItemEntries(), disk,
                         &BKQDisk::resetDiskItems, &BKQDisk::enumDiskItems);
  if (!problem.empty()) return;
  for (std::size_t i = 0; i < items.size(); ++i) {
    diskItem(*static_cast<BKQDiskItem*>(items[i]), *plan.items[i]);
  }
  filters(disk, plan);
}

void Checker::tape(BKQTape& tape, const TapePlan& plan) {
  text("tape name", plan.name, tape.getTapeName());
  text("device group", plan.deviceGroup, tape.getDeviceGroup());
  number("tape options", optionsOf(plan), tape.getOptions());
  auto getters = gettersOf(tape);
  eachOfTape(plan, getters);
  number("extension", hasExtension(plan), static_cast<unsigned int>(tape.tapeXtensionExists()));
  if (tape.tapeXtensionExists() && plan.extension) {
    BKQTapeXtension& extension = *tape.getTapeXtension();
    auto getExtension = gettersOf(extension);
    eachOfTapeExtension(*plan.extension, getExtension);
    number("extension time", static_cast<std::uint32_t>(plan.extension->sessionEndTime.value),
           static_cast<std::uint32_t>(extension.getSessionEndTime()));
  }
  const auto items = all("tape items", plan.items.size(), tape.tapeItemEntries(), tape,
                         &BKQTape::resetTapeItems, &BKQTape::enumTapeItems);
  if (!problem.empty()) return;
  for (std::size_t i = 0; i < items.size(); ++i) {
    auto& item = *static_cast<BKQTapeItem*>(items[i]);
    const TapeItemPlan& itemPlan = *plan.items[i];
    auto getItem = gettersOf(item);
    eachOfTapeItem(itemPlan, getItem);
    number("chunk", itemPlan.chunkNumber, item.getChunkNum());
    number("chunk offset", itemPlan.chunkOffset & 0xffff, item.getChunkOffset());
  }
  filters(tape, plan);
  // All filters stand for as many as there are items.
  tape.resetFilters();
  BKQFilterCol* some = nullptr;
  const std::size_t limit = std::min(plan.items.size(), plan.filters.size());
  number("filters by number of items", limit, tape.enumFilters(some, 0));
  delete some;
  if (!plan.filters.empty()) {
    tape.enumFilters(some, tape.filterEntries());
    delete some;
  }
}

void Checker::node(BKQNode& node, const NodePlan& plan) {
  number("kind of node", nodeTypeOf(plan.nodeClass), node.nodeType());
  text("node name", plan.name, node.getNodeName());
  number("node OS", nodeOSOf(plan), node.getNodeOS());
  number("node options", optionsOf(plan), node.getOptions());
  number("device type", deviceTypeOf(plan), node.getDeviceType());
  auto getters = gettersOf(node);
  eachOfNode(plan, getters);
  filters(node, plan);
  if (!problem.empty()) return;
  switch (plan.nodeClass) {
#define BKOQ_CHECK(kind, class_, ...)                 \
  case NodeClass::k##kind: {                          \
    auto own = gettersOf(static_cast<class_&>(node)); \
    eachOwnOfNode<class_>(plan, own);                 \
    break;                                            \
  }
    BKOQ_NODE_KINDS(BKOQ_CHECK)
#undef BKOQ_CHECK
  }
  if (plan.nodeClass == NodeClass::kTape) {
    auto& tapeNode = static_cast<BKQTapeNode&>(node);
    const auto tapes = all("tapes", plan.tapes.size(), tapeNode.tapeEntries(), tapeNode,
                           &BKQTapeNode::resetTapes, &BKQTapeNode::enumTapes);
    if (!problem.empty()) return;
    for (std::size_t i = 0; i < tapes.size(); ++i) {
      tape(*static_cast<BKQTape*>(tapes[i]), *plan.tapes[i]);
    }
    return;
  }
  if (plan.nodeClass == NodeClass::kDBRestore) {
    RWCollectableString user;
    RWCollectableString password;
    static_cast<BKQDBRestoreNode&>(node).getDBuser(user, password);
    text("database user", plan.dbUser, user);
    text("database password", plan.dbPassword, password);
  }
  if (lineOf(plan.nodeClass).family == NodeFamily::kRestore) {
    auto& restoreNode = static_cast<BKQRestoreNode&>(node);
    number("actual node type", plan.actualType, restoreNode.getActualNodeType());
    text("restore disk", plan.diskName, restoreNode.getDiskName());
    return;
  }
  auto& diskNode = static_cast<BKQDiskNode&>(node);
  List<DiskPlan> disks = plan.disks;
  for (const Text& name : plan.removedDisks) {
    for (auto each = disks.begin(); each != disks.end(); ++each) {
      if ((*each)->name.value != name) continue;
      disks.erase(each);
      break;
    }
  }
  // The disks of an NDS tree are not converted; grooming never is.
  const bool wasAtEnd = atEnd;
  if (plan.nodeClass == NodeClass::kNDS) atEnd = false;
  const auto elements = all("disks", disks.size(), diskNode.diskEntries(), diskNode,
                            &BKQDiskNode::resetDisks, &BKQDiskNode::enumDisks);
  if (!problem.empty()) return;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    disk(*static_cast<BKQDisk*>(elements[i]), *disks[i]);
  }
  atEnd = false;
  number("groom information", plan.groom != nullptr,
         static_cast<unsigned int>(diskNode.groomInfoExists()));
  if (plan.groom && diskNode.getGroomInfo() != nullptr) {
    BKQGroom& groom = *diskNode.getGroomInfo();
    auto getGroom = gettersOf(groom);
    eachOfGroom(*plan.groom, getGroom);
    filters(groom, *plan.groom);
  }
  atEnd = wasAtEnd;
}

void Checker::rotation(BKQRotationSchedule& schedule, const SchedulePlan& plan) {
  auto getters = gettersOf(schedule);
  eachOfRotationSchedule(plan, getters);
  time("makeup time", plan.makeupTime, schedule.getPreferedMakeupTime());
  unsigned char hour = 0;
  unsigned char minute = 0;
  schedule.getPreferedMakeupJobTime(hour, minute);
  number("makeup hour", plan.makeupHour, hour);
  number("makeup minute", plan.makeupMinute, minute);
  const auto days =
      all("exception days", plan.days.size(), schedule.exceptionDayEntries(), schedule,
          &BKQRotationSchedule::resetExceptionDays, &BKQRotationSchedule::enumExceptionDays);
  if (!problem.empty()) return;
  for (std::size_t i = 0; i < days.size(); ++i) {
    auto& day = *static_cast<BKQExceptionDay*>(days[i]);
    auto getDay = gettersOf(day);
    eachOfExceptionDay(*plan.days[i], getDay);
    time("exception day", plan.days[i]->time, day.getExceptionTime());
  }
  expect("job mask", (schedule.getJobMask() != nullptr) == (plan.mask != nullptr));
  if (!plan.mask || schedule.getJobMask() == nullptr) return;
  BKQJobMask& mask = *schedule.getJobMask();
  auto getMask = gettersOf(mask);
  eachOfJobMask(*plan.mask, getMask);
  number("prefix", plan.mask->prefix, mask.getTapeNamePrefix());
  number("interval", plan.mask->intervalValue, mask.getRepeatInterval().getValue());
  number("interval type", plan.mask->intervalType, mask.getRepeatInterval().getType());
  number("cycle", plan.mask->cycleValue, mask.getRepeatCycle().getValue());
  number("cycle type", plan.mask->cycleType, mask.getRepeatCycle().getType());
  const auto units = all("job units", plan.mask->units.size(), mask.jobUnitEntries(), mask,
                         &BKQJobMask::resetJobUnits, &BKQJobMask::enumJobUnits);
  if (!problem.empty()) return;
  for (std::size_t i = 0; i < units.size(); ++i) {
    auto& unit = *static_cast<BKQJobUnit*>(units[i]);
    auto getUnit = gettersOf(unit);
    eachOfJobUnit(*plan.mask->units[i], getUnit);
    time("unit time", plan.mask->units[i]->execTime, unit.getExecTime());
  }
}

void Checker::schedule(BKQSchedule& schedule, const SchedulePlan& plan) {
  static const unsigned int kTypes[] = {3, 0, 2, 1};
  const unsigned int type = kTypes[static_cast<unsigned int>(plan.scheduleClass)];
  number("kind of schedule", type, schedule.getType());
  if (!problem.empty()) return;
  time("submit time", plan.submitTime, schedule.getSubmitTime());
  time("execution time", plan.execTime, schedule.getExecTime());
  RWCollectableTime start;
  RWCollectableTime end;
  schedule.getScheduleWindow(start, end);
  time("window start", plan.windowStart, start);
  time("window end", plan.windowEnd, end);
  auto getters = gettersOf(schedule);
  eachOfSchedule(plan, getters);
  if (type == 0) {
    auto& custom = static_cast<BKQCustomSchedule&>(schedule);
    auto getCustom = gettersOf(custom);
    eachOfCustomSchedule(plan, getCustom);
    unsigned short r[4] = {};
    custom.getRepeat(r[0], r[1], r[2], r[3]);
    unsigned short s[4] = {};
    custom.getRepeat(&s[0], &s[1], &s[2], &s[3]);
    for (unsigned int i = 0; i < 4; ++i) {
      number("repeat", plan.repeats[i], r[i]);
      number("repeat", plan.repeats[i], s[i]);
    }
  } else if (type != 3) {
    rotation(static_cast<BKQRotationSchedule&>(schedule), plan);
  }
  if (type != 1) return;
  auto& cruise = static_cast<BKQCruiseSchedule&>(schedule);
  auto getCruise = gettersOf(cruise);
  eachOfCruiseSchedule(plan, getCruise);
  RWCollectableString pools[3];
  cruise.getGFSPoolNames(pools[0], pools[1], pools[2]);
  for (unsigned int i = 0; i < 3; ++i) text("GFS pool", plan.poolNames[i], pools[i]);
}

void Checker::job(BKQJob& job, const JobPlan& plan) {
  number("kind of job", jobTypeOf(plan.jobClass), job.jobType());
  text("job name", plan.name, job.getJobName());
  auto getters = gettersOf(job);
  eachOfJob(plan, getters);
  number("job number", plan.number, job.getJobNumber());
  number("instance ID", plan.number, job.getInstanceID());
  number("job options", optionsOf(plan), job.getOptions());
  number("SNMP", plan.snmp, static_cast<unsigned int>(job.SNMPOn()));
  number("Ovix", plan.ovix, static_cast<unsigned int>(job.OvixOn()));
  RWCollectableString user;
  RWCollectableString password;
  job.getScriptUserID(user, password);
  text("script user", plan.scriptUser, user);
  text("script user password", plan.scriptUserPassword, password);

  number("fax", plan.fax != nullptr, static_cast<unsigned int>(job.faxInfoExists()));
  number("e-mail", plan.email != nullptr, static_cast<unsigned int>(job.emailInfoExists()));
  number("print queue", plan.printQueue != nullptr,
         static_cast<unsigned int>(job.printQueueExists()));
  number("schedule", plan.schedule != nullptr, static_cast<unsigned int>(job.scheduleExists()));
  if (!problem.empty()) return;
  if (plan.fax) {
    auto get = gettersOf(*job.getFaxInfo());
    eachOfFax(*plan.fax, get);
  }
  expect("no e-mail", plan.email || job.getEMailInfo() == nullptr);
  if (plan.email) {
    BKQEMail& email = *job.getEMailInfo();
    number("kind of e-mail", plan.email->isMHS, email.emailType());
    auto get = gettersOf(email);
    eachOfEMail(*plan.email, get);
    auto* mhs = dynamic_cast<BKQMHSEMail*>(&email);
    expect("MHS e-mail", (mhs != nullptr) == plan.email->isMHS);
    if (mhs != nullptr) {
      auto getMHS = gettersOf(*mhs);
      eachOfMHSEMail(*plan.email, getMHS);
    }
  }
  expect("no print queue", plan.printQueue || job.getPrintQueue() == nullptr);
  if (plan.printQueue) {
    auto get = gettersOf(*job.getPrintQueue());
    eachOfPrintQueue(*plan.printQueue, get);
  }
  expect("no schedule", plan.schedule || job.getSchedule() == nullptr);
  // Only one layout walks job units, and none walks exception days.
  const bool wasAtEnd = atEnd;
  atEnd = false;
  if (plan.schedule) schedule(*job.getSchedule(), *plan.schedule);
  atEnd = wasAtEnd;

  switch (plan.jobClass) {
#define BKOQ_CHECK(kind, class_, ...) \
  case JobClass::k##kind:             \
    typedSchedule<class_>(job);       \
    break;
    BKOQ_JOB_KINDS(BKOQ_CHECK)
#undef BKOQ_CHECK
  }
  if (!problem.empty()) return;

  if (isBackup(plan.jobClass)) {
    auto& backup = static_cast<BKQBackupJob&>(job);
    auto get = gettersOf(backup);
    eachOfBackup(plan, get);
    number("encryption", plan.encryption, static_cast<unsigned int>(backup.encryptionOn()));
    number("compression", plan.compression, static_cast<unsigned int>(backup.compressionOn()));
    nodes(all("source nodes", plan.sources.size(), backup.sourceNodeEntries(), backup,
              &BKQBackupJob::resetSourceNodes, &BKQBackupJob::enumSourceNodes),
          plan.sources);
    filters(backup, plan);
    expect("destination", (backup.destinationExists() == 1) == !plan.destinations.empty() &&
                              (backup.getDestination() != nullptr) == !plan.destinations.empty());
    if (!problem.empty()) return;
    if (!plan.destinations.empty()) node(*backup.getDestination(), *plan.destinations[0]);
    number("open-file information", plan.openFile != nullptr,
           static_cast<unsigned int>(backup.openFileInfoExists()));
    if (!problem.empty() || !plan.openFile) return;
    auto getOpenFile = gettersOf(*backup.getOpenFileInfo());
    eachOfOpenFile(*plan.openFile, getOpenFile);
  } else if (isRestore(plan.jobClass)) {
    auto& restore = static_cast<BKQRestoreJob&>(job);
    auto get = gettersOf(restore);
    eachOfRestore(plan, get);
    nodes(all("source nodes", plan.sources.size(), restore.sourceNodeEntries(), restore,
              &BKQRestoreJob::resetSourceNodes, &BKQRestoreJob::enumSourceNodes),
          plan.sources);
    nodes(all("destination nodes", plan.destinations.size(), restore.destNodeEntries(), restore,
              &BKQRestoreJob::resetDestNodes, &BKQRestoreJob::enumDestNodes),
          plan.destinations);
    filters(restore, plan);
  } else if (isVerify(plan.jobClass)) {
    auto& verify = static_cast<BKQVerifyJob&>(job);
    nodes(all("source nodes", plan.sources.size(), verify.sourceNodeEntries(), verify,
              &BKQVerifyJob::resetSourceNodes, &BKQVerifyJob::enumSourceNodes),
          plan.sources);
    if (plan.jobClass != JobClass::kCompare) return;
    BKQDiskNode* destination = static_cast<BKQCompareJob&>(verify).getDestination();
    expect("destination", (destination != nullptr) == !plan.destinations.empty());
    if (problem.empty() && destination != nullptr) node(*destination, *plan.destinations[0]);
  } else if (plan.jobClass == JobClass::kMerge) {
    auto& merge = static_cast<BKQMergeJob&>(job);
    auto get = gettersOf(merge);
    eachOfMerge(plan, get);
    unsigned short start = 0;
    unsigned short end = 0;
    merge.getMergeRange(start, end);
    number("range start", plan.rangeStart, start);
    number("range end", plan.rangeEnd, end);
    number("merge all", plan.rangeStart == 0 && plan.rangeEnd == 0,
           static_cast<unsigned int>(merge.mergeAll()));
    text("merge filter", plan.filterText, merge.getMergeFilter());
    expect("source", (merge.getSource() != nullptr) == !plan.sources.empty() &&
                         (merge.sourceExists() == 1) == !plan.sources.empty());
    expect("destination", (merge.getDestination() != nullptr) == !plan.destinations.empty() &&
                              (merge.destinationExists() == 1) == !plan.destinations.empty());
    if (!problem.empty()) return;
    if (!plan.sources.empty()) node(*merge.getSource(), *plan.sources[0]);
    if (!plan.destinations.empty()) node(*merge.getDestination(), *plan.destinations[0]);
  } else if (plan.jobClass == JobClass::kScan) {
    auto& scan = static_cast<BKQScanJob&>(job);
    auto get = gettersOf(scan);
    eachOfScan(plan, get);
    unsigned short start = 0;
    unsigned short end = 0;
    scan.getScanRange(start, end);
    number("range start", plan.rangeStart, start);
    number("range end", plan.rangeEnd, end);
    number("scan all", plan.rangeStart == 0 && plan.rangeEnd == 0,
           static_cast<unsigned int>(scan.scanAll()));
    text("scan filter", plan.filterText, scan.getScanFilter());
    expect("source", (scan.getSource() != nullptr) == !plan.sources.empty() &&
                         (scan.sourceExists() == 1) == !plan.sources.empty());
    if (problem.empty() && !plan.sources.empty()) node(*scan.getSource(), *plan.sources[0]);
  }
}

}  // namespace

std::string check(BKQJob& job, const JobPlan& plan, Random& random) {
  Checker checker(random);
  checker.job(job, plan);
  return checker.problem;
}

std::string checkAllHandedOut(BKQJob& job, const JobPlan& plan, Random& random) {
  Checker checker(random);
  checker.atEnd = true;
  checker.job(job, plan);
  return checker.problem;
}

}  // namespace bkoq::test
