#include "tests/random/build.h"

#include <algorithm>
#include <set>
#include <type_traits>

#include "tests/random/attributes.h"
#include "tests/support/parts.h"
#include "tests/support/private_member.h"

namespace bkoq::test {

// The names of a disk item, which nothing else deletes.
struct ItemFiles {
  using Type = BKQStringCol BKQDiskItem::*;
  friend constexpr Type privateMember(ItemFiles);
};
template struct PrivateMember<ItemFiles, &BKQDiskItem::files_>;

namespace {

// Calls the setter of every attribute that the plan sets.
template <class Object>
class Setter {
 public:
  Setter(Builder& builder, Object& object) : builder_(builder), object_(object) {}

  template <class Value, class Getter, class Class, class Parameter>
  void operator()(const char* name, const Attribute<Value>& attribute, Getter /*getter*/,
                  void (Class::*setter)(Parameter)) {
    Visited::note(Visited::kSet, name);
    if (!attribute.isSet) return;
    if constexpr (std::is_same<Value, Text>::value) {
      (object_.*setter)(builder_.text(attribute.value));
    } else {
      (object_.*setter)(static_cast<Parameter>(attribute.value));
    }
  }

 private:
  Builder& builder_;
  Object& object_;
};

template <class Object>
Setter<Object> setting(Builder& builder, Object& object) {
  return Setter<Object>(builder, object);
}

template <class Enumeration>
Enumeration as(std::uint32_t value) {
  return static_cast<Enumeration>(value);
}

RWCollectableTime stored(std::uint32_t seconds) {
  return RWCollectableTime(static_cast<unsigned long>(seconds));
}

}  // namespace

Builder::~Builder() {
  // Everything that a copy holds and its source does not is its own; names are shared by items.
  std::set<RWCollectable*> parts;
  if (job_ != nullptr && !copies_.empty()) {
    for (BKQJob* copy : copies_) {
      const std::set<RWCollectable*> ofCopy = partsOf(*copy);
      parts.insert(ofCopy.begin(), ofCopy.end());
      if (copy->printQueueExists()) printQueues_.emplace_back(copy->getPrintQueue());
      auto* backup = dynamic_cast<BKQBackupJob*>(copy);
      if (backup != nullptr && backup->openFileInfoExists()) {
        openFiles_.emplace_back(backup->getOpenFileInfo());
      }
    }
    for (BKQJob* copy : copies_) delete copy;
  }
  delete job_;
  parts.insert(kept_.begin(), kept_.end());
  std::set<RWCollectable*> names;
  for (RWCollectable* part : parts) {
    auto* item = dynamic_cast<BKQDiskItem*>(part);
    if (item == nullptr) continue;
    const BKQStringCol& files = item->*privateMember(ItemFiles());
    for (unsigned int i = 0; i < files.entries(); ++i) names.insert(files.at(i));
  }
  for (RWCollectable* part : parts) delete part;
  for (RWCollectable* name : names) delete name;
}

template <class Object, class Plan, class Make>
Object& Builder::once(const Plan& plan, Make make) {
  const auto found = made_.find(&plan);
  if (found != made_.end()) return *static_cast<Object*>(found->second);
  Object* object = make();
  made_[&plan] = object;
  return keep(object);
}

template <class Object>
Object& Builder::keep(Object* object) {
  kept_.push_back(object);
  return *object;
}

template <class Object, class Plan>
void Builder::addFilters(Object& object, const Plan& plan) {
  for (const auto& each : plan.filters) {
    object.addFilter(once<BKQFilter>(*each, [&] { return newFilter(*each); }));
  }
}

BKQFilter* Builder::newFilter(const FilterPlan& plan) {
  using Time = BKQTimeFilter;
  const auto kind = as<BKQFilter::BKQInclExclType>(plan.kind);
  const auto attribute = as<Time::BKQTimeAttrType>(plan.timeAttribute);
  const auto pattern = [&](auto* filter) {
    filter->setFilterString(text(plan.pattern));
    return filter;
  };
  BKQFilter* filter = nullptr;
  Time* timeFilter = nullptr;
  const bool whole = plan.constructor == 2;
  switch (plan.filterClass) {
    case FilterClass::kDir:
      filter = whole ? make<BKQDirFilter>(kind, text(plan.pattern)) : pattern(make<BKQDirFilter>());
      break;
    case FilterClass::kFile:
      filter =
          whole ? make<BKQFileFilter>(kind, text(plan.pattern)) : pattern(make<BKQFileFilter>());
      break;
    case FilterClass::kVolume:
      filter = whole ? make<BKQVolumeFilter>(kind, text(plan.pattern))
                     : pattern(make<BKQVolumeFilter>());
      break;
    case FilterClass::kAttribute:
      if (whole) {
        filter = make<BKQAttributeFilter>(kind, plan.attributes);
      } else {
        auto* made = make<BKQAttributeFilter>();
        made->setAttributes(plan.attributes);
        filter = made;
      }
      break;
    case FilterClass::kWithin: {
      const auto unitType = as<Time::BKQTimeUnitType>(plan.unitType);
      if (whole) {
        timeFilter = make<BKQWithinTimeFilter>(attribute, plan.units, unitType);
        break;
      }
      auto* made = plan.constructor == 0 ? make<BKQWithinTimeFilter>()
                                         : make<BKQWithinTimeFilter>(attribute);
      made->setTimeUnits(plan.units);
      made->setTimeUnitType(unitType);
      timeFilter = made;
      break;
    }
    case FilterClass::kBefore: {
      auto* made = whole                   ? make<BKQBeforeTimeFilter>(attribute, stored(plan.time))
                   : plan.constructor == 0 ? make<BKQBeforeTimeFilter>()
                                           : make<BKQBeforeTimeFilter>(attribute);
      if (!whole) made->setTime(stored(plan.time));
      timeFilter = made;
      break;
    }
    case FilterClass::kAfter: {
      auto* made = whole                   ? make<BKQAfterTimeFilter>(attribute, stored(plan.time))
                   : plan.constructor == 0 ? make<BKQAfterTimeFilter>()
                                           : make<BKQAfterTimeFilter>(attribute);
      if (!whole) made->setTime(stored(plan.time));
      timeFilter = made;
      break;
    }
    case FilterClass::kBetween: {
      auto* made =
          whole ? make<BKQBetweenTimeFilter>(attribute, stored(plan.time), stored(plan.endTime))
          : plan.constructor == 0 ? make<BKQBetweenTimeFilter>()
                                  : make<BKQBetweenTimeFilter>(attribute);
      if (!whole) {
        made->setStartTime(stored(plan.time));
        made->setEndTime(stored(plan.endTime));
      }
      timeFilter = made;
      break;
    }
    case FilterClass::kFailing:
      filter = new FailingFilter;
      break;
    case FilterClass::kForeignTime:
      timeFilter =
          plan.constructor == 0
              ? new ForeignTimeFilter
              : new ForeignTimeFilter(as<Time::BKQTimeRangeType>(plan.storedRange), attribute);
      break;
  }
  if (timeFilter != nullptr) {
    if (plan.constructor == 0) timeFilter->setTRattribute(attribute);
    filter = timeFilter;
  }
  if (plan.kind.isSet) filter->setInclExcl(kind);
  return filter;
}

BKQDiskItem* Builder::newDiskItem(const DiskItemPlan& plan) {
  auto* item = plan.pathByConstructor ? new BKQDiskItem(text(plan.path)) : new BKQDiskItem;
  if (!plan.pathByConstructor) item->setPath(text(plan.path));
  if (plan.optionsBeforeFiles.isSet) item->setOptions(plan.optionsBeforeFiles);
  for (const Text& file : plan.files) item->addFile(text(file));
  if (plan.optionsAfterFiles.isSet) item->setOptions(plan.optionsAfterFiles);
  auto set = setting(*this, *item);
  eachOfDiskItem(plan, set);
  return item;
}

BKQDisk* Builder::newDisk(const DiskPlan& plan) {
  const auto type = as<BKQDisk::BKQDiskType>(plan.type);
  auto* disk = plan.type.isSet && plan.typeByConstructor ? new BKQDisk(type) : new BKQDisk;
  if (plan.type.isSet && !plan.typeByConstructor) disk->setDiskType(type);
  auto set = setting(*this, *disk);
  eachOfDisk(plan, set);
  for (const auto& item : plan.items) {
    disk->addDiskItem(once<BKQDiskItem>(*item, [&] { return newDiskItem(*item); }));
  }
  addFilters(*disk, plan);
  return disk;
}

BKQTapeItem* Builder::newTapeItem(const TapeItemPlan& plan) {
  BKQTapeItem* item;
  if (plan.byConstructor) {
    item = new BKQTapeItem(plan.chunkNumber, static_cast<unsigned short>(plan.chunkOffset));
  } else {
    item = new BKQTapeItem;
    if (plan.chunkNumber.isSet) item->setChunkNum(plan.chunkNumber);
    if (plan.chunkOffset.isSet) item->setChunkOffset(plan.chunkOffset);
  }
  auto set = setting(*this, *item);
  eachOfTapeItem(plan, set);
  return item;
}

BKQTape* Builder::newTape(const TapePlan& plan) {
  BKQTape* tape;
  if (plan.byConstructor) {
    tape = new BKQTape(text(plan.deviceGroup), text(plan.name));
  } else {
    tape = new BKQTape;
    if (plan.deviceGroup.isSet) tape->setDeviceGroup(text(plan.deviceGroup));
    if (plan.name.isSet) tape->setTapeName(text(plan.name));
  }
  auto set = setting(*this, *tape);
  eachOfTape(plan, set);
  if (plan.optionsBeforeExtension.isSet) tape->setOptions(plan.optionsBeforeExtension);
  if (tape->tapeXtensionExists()) keep(tape->getTapeXtension());
  if (plan.extensionBy == ExtensionBy::kSetter) {
    const bool byConstructor =
        plan.extension->timeByConstructor && plan.extension->sessionEndTime.isSet;
    tape->setTapeXtension(keep(byConstructor ? new BKQTapeXtension(plan.extension->sessionEndTime)
                                             : new BKQTapeXtension));
  } else if (plan.extensionBy == ExtensionBy::kGetter) {
    const bool isNew = !tape->tapeXtensionExists();
    BKQTapeXtension* extension = tape->getTapeXtension();
    if (isNew) keep(extension);
  }
  const bool hadExtension = tape->tapeXtensionExists();
  if (plan.optionsAfterExtension.isSet) tape->setOptions(plan.optionsAfterExtension);
  if (tape->tapeXtensionExists()) {
    BKQTapeXtension* extension = tape->getTapeXtension();
    if (!hadExtension) keep(extension);
    made_[plan.extension.get()] = extension;
    auto setExtension = setting(*this, *extension);
    eachOfTapeExtension(*plan.extension, setExtension);
    if (plan.extension->sessionEndTime.isSet) {
      extension->setSessionEndTime(plan.extension->sessionEndTime);
    }
  }
  for (const auto& item : plan.items) {
    tape->addTapeItem(once<BKQTapeItem>(*item, [&] { return newTapeItem(*item); }));
  }
  addFilters(*tape, plan);
  return tape;
}

template <class Node>
Node* Builder::named(const NodePlan& plan) {
  if (!plan.nameByConstructor) {
    if constexpr (std::is_default_constructible<Node>::value) return make<Node>();
  }
  return make<Node>(plan.nameByConstructor ? text(plan.name) : "former name");
}

void Builder::fillDiskNode(BKQDiskNode& node, const NodePlan& plan) {
  for (const auto& each : plan.disks) {
    node.addDisk(once<BKQDisk>(*each, [&] { return newDisk(*each); }));
  }
  for (const Text& name : plan.removedDisks) {
    BKQDisk pattern;
    pattern.setDiskName(name.c_str());
    node.removeDisk(pattern);
  }
  if (plan.groom) {
    node.setGroomInfo(once<BKQGroom>(*plan.groom, [&] {
      auto* groom = new BKQGroom;
      auto set = setting(*this, *groom);
      eachOfGroom(*plan.groom, set);
      addFilters(*groom, *plan.groom);
      return groom;
    }));
  }
}

template <class Node>
Node* Builder::newNodeOf(const NodePlan& plan) {
  Node* node;
  if constexpr (std::is_base_of_v<BKQRestoreNode, Node>) {
    node = plan.diskNameByConstructor ? make<Node>(text(plan.name), text(plan.diskName))
                                      : named<Node>(plan);
    if (plan.diskName.isSet && !plan.diskNameByConstructor) node->setDiskName(text(plan.diskName));
  } else {
    node = named<Node>(plan);
  }
  auto set = setting(*this, *node);
  eachOwnOfNode<Node>(plan, set);
  if constexpr (std::is_base_of_v<BKQTapeNode, Node>) {
    for (const auto& each : plan.tapes) {
      node->addTape(once<BKQTape>(*each, [&] { return newTape(*each); }));
    }
  }
  if constexpr (std::is_base_of_v<BKQDBRestoreNode, Node>) {
    if (plan.dbUserSet) node->setDBuser(plan.dbUser.c_str(), plan.dbPassword.c_str());
  }
  return node;
}

BKQNode* Builder::newNode(const NodePlan& plan) {
  BKQNode* node = nullptr;
  switch (plan.nodeClass) {
#define BKOQ_MAKE(kind, class_, ...) \
  case NodeClass::k##kind:           \
    node = newNodeOf<class_>(plan);  \
    break;
    BKOQ_NODE_KINDS(BKOQ_MAKE)
#undef BKOQ_MAKE
  }
  if (plan.name.isSet && !plan.nameByConstructor) node->setNodeName(text(plan.name));
  if (plan.os.isSet && !plan.osAfterActualType) node->setNodeOS(plan.os);
  if (!isDiskNode(plan.nodeClass) && plan.nodeClass != NodeClass::kTape && plan.actualType.isSet) {
    static_cast<BKQRestoreNode*>(node)->setActualNodeType(
        as<BKQNode::BKQNodeType>(plan.actualType));
  }
  if (plan.os.isSet && plan.osAfterActualType) node->setNodeOS(plan.os);
  if (plan.options.isSet) node->setOptions(plan.options);
  if (plan.deviceType.isSet) node->setDeviceType(plan.deviceType);
  auto set = setting(*this, *node);
  eachOfNode(plan, set);
  addFilters(*node, plan);
  if (isDiskNode(plan.nodeClass)) fillDiskNode(static_cast<BKQDiskNode&>(*node), plan);
  return node;
}

BKQJobMask* Builder::newMask(const JobMaskPlan& plan) {
  const auto prefix = as<BKQJobMask::BKQTapePrefixType>(plan.prefix);
  const bool byConstructor = plan.prefix.isSet && plan.prefixByConstructor;
  auto* mask = byConstructor ? new BKQJobMask(prefix) : new BKQJobMask;
  if (plan.prefix.isSet && !byConstructor) mask->setTapeNamePrefix(prefix);
  auto set = setting(*this, *mask);
  eachOfJobMask(plan, set);
  mask->setRepeatInterval(BKQTime(plan.intervalValue, as<BKQTime::BKQTimeType>(plan.intervalType)));
  BKQTime cycle;
  cycle.setValue(plan.cycleValue);
  cycle.setType(as<BKQTime::BKQTimeType>(plan.cycleType));
  mask->setRepeatCycle(cycle);
  for (const auto& each : plan.units) {
    mask->addJobUnit(once<BKQJobUnit>(*each, [&] {
      auto* unit = new BKQJobUnit;
      auto setUnit = setting(*this, *unit);
      eachOfJobUnit(*each, setUnit);
      unit->setExecTime(stored(each->execTime));
      return unit;
    }));
  }
  return mask;
}

void Builder::fillRotation(BKQRotationSchedule& schedule, const SchedulePlan& plan) {
  auto set = setting(*this, schedule);
  eachOfRotationSchedule(plan, set);
  schedule.setPreferedMakeupTime(stored(plan.makeupTime));
  schedule.setPreferedMakeupJobTime(plan.makeupHour, plan.makeupMinute);
  if (plan.mask) schedule.setJobMask(*newMask(*plan.mask));
  for (const auto& each : plan.days) {
    schedule.addExceptionDay(once<BKQExceptionDay>(*each, [&] {
      auto* day = new BKQExceptionDay;
      auto setDay = setting(*this, *day);
      eachOfExceptionDay(*each, setDay);
      day->setExceptionTime(stored(each->time));
      return day;
    }));
  }
}

BKQSchedule* Builder::newSchedule(const SchedulePlan& plan) {
  BKQSchedule* schedule = nullptr;
  switch (plan.scheduleClass) {
    case ScheduleClass::kRegular:
      schedule = make<BKQRegularSchedule>();
      break;
    case ScheduleClass::kCustom: {
      const auto& r = plan.repeats;
      auto* custom = plan.repeatsByConstructor ? make<BKQCustomSchedule>(r[0], r[1], r[2], r[3])
                                               : make<BKQCustomSchedule>();
      if (!plan.repeatsByConstructor) custom->setRepeat(r[0], r[1], r[2], r[3]);
      auto set = setting(*this, *custom);
      eachOfCustomSchedule(plan, set);
      schedule = custom;
      break;
    }
    case ScheduleClass::kRotation: {
      auto* rotation = make<BKQRotationSchedule>();
      fillRotation(*rotation, plan);
      schedule = rotation;
      break;
    }
    case ScheduleClass::kCruise: {
      auto* cruise =
          random_.chance(1, 2) ? make<BKQCruiseSchedule>("one", "two") : make<BKQCruiseSchedule>();
      fillRotation(*cruise, plan);
      auto set = setting(*this, *cruise);
      eachOfCruiseSchedule(plan, set);
      const auto& p = plan.poolNames;
      if (random_.chance(1, 2)) {
        cruise->setGFSPoolNames(text(p[0]), text(p[1]), text(p[2]));
      } else {
        cruise->setGFSPoolNames(RWCollectableString(p[0].c_str()),
                                RWCollectableString(p[1].c_str()),
                                RWCollectableString(p[2].c_str()));
      }
      schedule = cruise;
      break;
    }
  }
  schedule->setSubmitTime(stored(plan.submitTime));
  schedule->setExecTime(stored(plan.execTime));
  schedule->setScheduleWindow(stored(plan.windowStart), stored(plan.windowEnd));
  auto set = setting(*this, *schedule);
  eachOfSchedule(plan, set);
  return schedule;
}

BKQJob* Builder::newJob(const JobPlan& plan) {
  const JobKindLine& line = lineOf(plan.jobClass);
  const char* name = text(plan.name);
  return plan.name.isSet || line.names == JobNames::kName ? line.make(name) : line.makeFresh();
}

template <class Job>
void Builder::setTypedSchedule(BKQJob& job, BKQSchedule& schedule) {
  auto& typed = static_cast<Job&>(job);
  using Schedule = std::remove_pointer_t<decltype(typed.getSchedule())>;
  auto* own = dynamic_cast<Schedule*>(&schedule);
  if (own != nullptr) {
    typed.setSchedule(*own);
  } else {
    typed.BKQJob::setSchedule(schedule);
  }
}

void Builder::attach(BKQJob& job, const JobPlan& plan) {
  if (plan.fax) {
    if (!plan.faxByGetter) job.setFaxInfo(*new BKQFax);
    auto set = setting(*this, *job.getFaxInfo());
    eachOfFax(*plan.fax, set);
  }
  if (plan.email) {
    BKQEMail* email;
    if (plan.email->isMHS) {
      auto* mhs = make<BKQMHSEMail>();
      auto set = setting(*this, *mhs);
      eachOfMHSEMail(*plan.email, set);
      email = mhs;
    } else {
      email = make<BKQInternetEMail>();
    }
    auto set = setting(*this, *email);
    eachOfEMail(*plan.email, set);
    job.setEMailInfo(*email);
  }
  if (plan.printQueue) {
    printQueues_.emplace_back(new BKQPrintQueue);
    auto set = setting(*this, *printQueues_.back());
    eachOfPrintQueue(*plan.printQueue, set);
    job.setPrintQueue(*printQueues_.back());
  }
  if (!plan.schedule) return;
  BKQSchedule& schedule = *newSchedule(*plan.schedule);
  switch (plan.jobClass) {
#define BKOQ_SET(kind, class_, ...)          \
  case JobClass::k##kind:                    \
    setTypedSchedule<class_>(job, schedule); \
    break;
    BKOQ_JOB_KINDS(BKOQ_SET)
#undef BKOQ_SET
  }
}

void Builder::fillBackup(BKQBackupJob& job, const JobPlan& plan) {
  // They are the first of their names, so it is these that are removed, and deleted with it.
  for (const auto& each : plan.removedSources) job.addSourceNode(*newNode(*each));
  for (const auto& each : plan.sources) {
    job.addSourceNode(once<BKQNode>(*each, [&] { return newNode(*each); }));
  }
  for (const auto& each : plan.removedSources) {
    BKQMacNode wanted(each->name.value.c_str());
    job.removeSourceNode(wanted);
  }
  addFilters(job, plan);
  if (!plan.destinations.empty()) {
    auto* destination = static_cast<BKQTapeNode*>(newNode(*plan.destinations[0]));
    made_[plan.destinations[0].get()] = destination;
    job.setDestination(*destination);
  }
  auto set = setting(*this, job);
  eachOfBackup(plan, set);
  if (plan.encryption.isSet) {
    if (plan.encryption) {
      job.setEncryptionOn();
    } else {
      job.setEncryptionOff();
    }
  }
  if (plan.compression.isSet) {
    if (plan.compression) {
      job.setCompressionOn();
    } else {
      job.setCompressionOff();
    }
  }
  if (!plan.openFile) return;
  if (plan.openFileByGetter) {
    openFiles_.emplace_back(job.getOpenFileInfo());
  } else {
    openFiles_.emplace_back(new BKQOpenFileInfo);
    job.setOpenFileInfo(*openFiles_.back());
  }
  auto setOpenFile = setting(*this, *openFiles_.back());
  eachOfOpenFile(*plan.openFile, setOpenFile);
}

BKQJob* Builder::job(const JobPlan& plan) {
  job_ = newJob(plan);
  auto set = setting(*this, *job_);
  eachOfJob(plan, set);
  if (plan.number.isSet) {
    if (random_.chance(1, 2)) {
      job_->setJobNumber(plan.number);
    } else {
      job_->setInstanceID(plan.number);
    }
  }
  if (plan.options.isSet) job_->setOptions(plan.options);
  if (plan.snmp.isSet) {
    if (plan.snmp) {
      job_->setSNMPOn();
    } else {
      job_->setSNMPOff();
    }
  }
  if (plan.ovix.isSet) {
    if (plan.ovix) {
      job_->setOvixOn();
    } else {
      job_->setOvixOff();
    }
  }
  job_->setScriptUserID(plan.scriptUser.c_str(), plan.scriptUserPassword.c_str());
  attach(*job_, plan);

  // Jobs other than backups: what they delete is not kept.
  const auto destination = [&] {
    BKQNode* node = newNode(*plan.destinations[0]);
    made_[plan.destinations[0].get()] = node;
    return static_cast<BKQDiskNode*>(node);
  };
  const auto source = [&] {
    BKQNode* node = newNode(*plan.sources[0]);
    made_[plan.sources[0].get()] = node;
    return static_cast<BKQTapeNode*>(node);
  };
  const auto keptNode = [&](const NodePlan& node) -> BKQNode& {
    return once<BKQNode>(node, [&] { return newNode(node); });
  };
  if (isBackup(plan.jobClass)) {
    fillBackup(static_cast<BKQBackupJob&>(*job_), plan);
  } else if (isRestore(plan.jobClass)) {
    auto& restore = static_cast<BKQRestoreJob&>(*job_);
    for (const auto& each : plan.sources) {
      restore.addSourceNode(static_cast<BKQTapeNode&>(keptNode(*each)));
    }
    for (const auto& each : plan.destinations) {
      restore.addDestNode(static_cast<BKQRestoreNode&>(keptNode(*each)));
    }
    addFilters(restore, plan);
    auto setRestore = setting(*this, restore);
    eachOfRestore(plan, setRestore);
  } else if (isVerify(plan.jobClass)) {
    auto& verify = static_cast<BKQVerifyJob&>(*job_);
    for (const auto& each : plan.sources) {
      verify.addSourceNode(static_cast<BKQTapeNode&>(keptNode(*each)));
    }
    if (!plan.destinations.empty()) {
      static_cast<BKQCompareJob&>(verify).setDestination(*destination());
    }
  } else if (plan.jobClass == JobClass::kMerge) {
    auto& merge = static_cast<BKQMergeJob&>(*job_);
    if (!plan.sources.empty()) merge.setSource(*source());
    if (!plan.destinations.empty()) merge.setDestination(*destination());
    merge.setMergeRange(plan.rangeStart, plan.rangeEnd);
    merge.setMergeFilter(plan.filterText.c_str());
    auto setMerge = setting(*this, merge);
    eachOfMerge(plan, setMerge);
  } else if (plan.jobClass == JobClass::kScan) {
    auto& scan = static_cast<BKQScanJob&>(*job_);
    if (!plan.sources.empty()) scan.setSource(*source());
    scan.setScanRange(plan.rangeStart, plan.rangeEnd);
    scan.setScanFilter(plan.filterText.c_str());
    auto setScan = setting(*this, scan);
    eachOfScan(plan, setScan);
  }
  return job_;
}

BKQJob* Builder::copy(BKQJob& source, const JobPlan& plan) {
  BKQJob* copy;
  if (plan.jobClass == JobClass::kBase) {
    copy = new BKQJob;
    copy->mycopy(&source);
  } else {
    copy = source.clone();
  }
  copies_.push_back(copy);
  return copy;
}

// What a job deletes when its attachments and lists are replaced.
void Builder::forgetReplaced(const JobPlan& plan) {
  for (auto& each : printQueues_) static_cast<void>(each.release());
  for (auto& each : openFiles_) static_cast<void>(each.release());
  if (!isBackup(plan.jobClass)) return;
  std::set<RWCollectable*> deleted;
  for (const auto& each : plan.sources) deleted.insert(made_.at(each.get()));
  for (const auto& each : plan.filters) deleted.insert(made_.at(each.get()));
  kept_.erase(std::remove_if(kept_.begin(), kept_.end(),
                             [&](RWCollectable* part) { return deleted.count(part) != 0; }),
              kept_.end());
}

BKQJob* Builder::copyInto(Builder& other, const JobPlan& plan, BKQJob& source) {
  BKQJob* target = other.job_;
  switch (plan.jobClass) {
#define BKOQ_COPY(kind, class_, ...)                                     \
  case JobClass::k##kind:                                                \
    static_cast<class_&>(*target).mycopy(&static_cast<class_&>(source)); \
    break;
    BKOQ_JOB_KINDS(BKOQ_COPY)
#undef BKOQ_COPY
  }
  other.forgetReplaced(plan);
  other.job_ = nullptr;
  copies_.push_back(target);
  return target;
}

}  // namespace bkoq::test
