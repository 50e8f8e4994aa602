#include "tests/random/source.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <map>
#include <set>
#include <vector>

#include "tests/random/attributes.h"
#include "tests/random/expect.h"

namespace bkoq::test {

namespace {

// `escape` writes a byte that does not stand for itself: those of `special`, and what is not
// printed.
template <class Escape>
std::string quoted(const Text& text, const char* special, const Escape& escape) {
  std::string all = "\"";
  for (const char c : text) {
    const bool isPlain = c >= ' ' && c <= '~' && std::strchr(special, c) == nullptr;
    char escaped[8];
    escape(escaped, sizeof escaped, static_cast<unsigned char>(c));
    all += isPlain ? std::string(1, c) : escaped;
  }
  return all + "\"";
}

}  // namespace

// In octal, so that no digit after it counts; "?" as well, of which two begin a trigraph.
std::string literal(const Text& text) {
  return quoted(text, "\"\\?", [](char* to, std::size_t size, unsigned int byte) {
    std::snprintf(to, size, "\\%03o", byte);
  });
}

namespace {

// What is written to make an object: its class, the arguments of its constructor and the calls of
// its setters, each with the key and the value that say the same in a job file.
struct Written {
  struct Call {
    std::string setter;     // "BKQNode::setPriority", or "addDisk"
    std::string arguments;  // in C++; of a part its variable
    std::string key;        // empty when a job file says it elsewhere, or not at all
    std::string json;
    std::vector<Written> parts;  // in place of a value
    bool isList = false;
    bool isEnumeration = false;  // or a number: the setter's type has to be asked for
  };
  const void* plan = nullptr;  // a part that is in two places is made once
  std::string className;
  std::string kind;
  std::string constructor;
  std::vector<Call> calls;
};

std::string jsonOf(const Text& text) {
  return quoted(text, "\"\\", [](char* to, std::size_t size, unsigned int byte) {
    std::snprintf(to, size, "\\u%04x", byte);
  });
}

std::string timeLiteral(std::uint32_t time) {
  return "RWCollectableTime(" + std::to_string(time) + "ul)";
}

std::string jsonTimeOf(std::uint32_t time) {
  const auto seconds = static_cast<std::time_t>(std::int64_t{time} - RW_SECONDS_TO_1970);
  char text[40];
  std::strftime(text, sizeof text, "\"%Y-%m-%dT%H:%M:%SZ\"", std::gmtime(&seconds));
  return text;
}

// The key of an attribute of the catalogue.
const std::string& keyOf(const std::string& setter) {
  static const auto keys = [] {
    std::map<std::string, std::string> all;
#define BKOQ_KEY(class_, member, getter, setter, value, first, key, fields) \
  all[#class_ "::" #setter] = key;
    BKOQ_ATTRIBUTES(BKOQ_KEY, BKOQ_KEY)
#undef BKOQ_KEY
    return all;
  }();
  return keys.at(setter);
}

bool isFlag(const std::string& key) {
  static const std::set<std::string> flags = {"runJobNow", "doMakeup", "detailedMerge",
                                              "detailedScan"};
  return flags.count(key) == 1;
}

// Writes down the attributes that a plan sets.
class Attributes {
 public:
  explicit Attributes(Written& object) : object_(object) {}

  template <class Value, class Getter, class Setter>
  void operator()(const char* name, const Attribute<Value>& attribute, Getter /*getter*/,
                  Setter /*setter*/) {
    add(name, attribute);
  }
  template <class Value>
  void add(const std::string& setter, const Attribute<Value>& attribute, bool isInFile = true) {
    if (attribute.isSet) value(setter, attribute.value, isInFile);
  }
  void value(const std::string& setter, const Text& text, bool isInFile = true) {
    add(setter, literal(text), isInFile ? keyOf(setter) : "", jsonOf(text), false);
  }
  template <class Number>
  void value(const std::string& setter, Number number, bool isInFile = true) {
    const std::string key = isInFile ? keyOf(setter) : "";
    const std::string digits = std::to_string(number);
    const std::string json = isFlag(key) ? (number != 0 ? "true" : "false") : digits;
    add(setter, digits + (number < 0 ? "" : "u"), key, json, true);
  }
  void time(const std::string& setter, std::uint32_t time) {
    add(setter, timeLiteral(time), keyOf(setter), jsonTimeOf(time), false);
  }
  void call(const std::string& setter, const std::string& arguments, const std::string& key = "",
            const std::string& json = "") {
    add(setter, arguments, key, json, false);
  }

 private:
  void add(const std::string& setter, const std::string& arguments, const std::string& key,
           const std::string& json, bool isEnumeration) {
    object_.calls.push_back({setter, arguments, key, json, {}, false, isEnumeration});
  }
  Written& object_;
};

class Writer {
 public:
  Written job(const JobPlan& plan);

  // What a job file cannot say, a line each.
  std::vector<std::string> missing;

 private:
  void miss(const std::string& what) {
    if (std::find(missing.begin(), missing.end(), what) == missing.end()) missing.push_back(what);
  }
  static Written named(const void* plan, const std::string& className, const std::string& kind) {
    Written object;
    object.plan = plan;
    object.className = className;
    object.kind = kind;
    return object;
  }
  void add(Written& owner, const std::string& setter, const std::string& key, Written part,
           bool isList) {
    const bool isNew = !isList || owner.calls.empty() || owner.calls.back().setter != setter;
    if (isNew) owner.calls.push_back({setter, "", key, "", {}, isList, false});
    owner.calls.back().parts.push_back(std::move(part));
  }
  void filters(Written& owner, const List<FilterPlan>& all) {
    for (const auto& each : all) add(owner, "addFilter", "filters", filter(*each), true);
  }
  Written filter(const FilterPlan& plan);
  Written disk(const DiskPlan& plan);
  Written tape(const TapePlan& plan);
  Written node(const NodePlan& plan);
  Written mask(const JobMaskPlan& plan);
  Written schedule(const SchedulePlan& plan);
  void rotation(Written& object, const SchedulePlan& plan);
  void attachments(Written& object, const JobPlan& plan);
};

Written Writer::filter(const FilterPlan& plan) {
  static const char* const kNames[][2] = {{"BKQDirFilter", "dir"},
                                          {"BKQFileFilter", "file"},
                                          {"BKQVolumeFilter", "volume"},
                                          {"BKQAttributeFilter", "attribute"},
                                          {"BKQWithinTimeFilter", "withinTime"},
                                          {"BKQBeforeTimeFilter", "beforeTime"},
                                          {"BKQAfterTimeFilter", "afterTime"},
                                          {"BKQBetweenTimeFilter", "betweenTime"},
                                          {"ForeignTimeFilter", ""},
                                          {"FailingFilter", ""}};
  const auto& names = kNames[static_cast<unsigned int>(plan.filterClass)];
  Written object = named(&plan, names[0], names[1]);
  if (object.kind.empty()) miss("a filter of a client's own class");
  Attributes set(object);
  const std::string attribute =
      "BKQTimeFilter::BKQTimeAttrType(" + std::to_string(plan.timeAttribute) + "u)";
  bool isTime = false;
  switch (plan.filterClass) {
    case FilterClass::kDir:
    case FilterClass::kFile:
    case FilterClass::kVolume:
      set.value(std::string(names[0]) + "::setFilterString", plan.pattern);
      break;
    case FilterClass::kAttribute:
      set.value("BKQAttributeFilter::setAttributes", plan.attributes);
      break;
    case FilterClass::kWithin:
      set.value("BKQWithinTimeFilter::setTimeUnits", plan.units);
      set.value("BKQWithinTimeFilter::setTimeUnitType", plan.unitType);
      isTime = true;
      break;
    case FilterClass::kBefore:
    case FilterClass::kAfter:
      set.time(std::string(names[0]) + "::setTime", plan.time);
      isTime = true;
      break;
    case FilterClass::kBetween:
      set.time("BKQBetweenTimeFilter::setStartTime", plan.time);
      set.time("BKQBetweenTimeFilter::setEndTime", plan.endTime);
      isTime = true;
      break;
    case FilterClass::kForeignTime:
      isTime = true;
      break;
    case FilterClass::kFailing:
      break;
  }
  if (isTime) {
    const bool isForeign = plan.filterClass == FilterClass::kForeignTime;
    if (plan.constructor != 0) {
      object.constructor = isForeign ? "BKQTimeFilter::BKQTimeRangeType(" +
                                           std::to_string(plan.storedRange) + "u), " + attribute
                                     : attribute;
    }
    set.value("BKQTimeFilter::setTRattribute", plan.timeAttribute);
  }
  set.add("BKQFilter::setInclExcl", plan.kind);
  return object;
}

Written Writer::disk(const DiskPlan& plan) {
  Written object = named(&plan, "BKQDisk", "");
  Attributes set(object);
  set.add("BKQDisk::setDiskType", plan.type);
  eachOfDisk(plan, set);
  for (const auto& each : plan.items) {
    Written item = named(each.get(), "BKQDiskItem", "");
    Attributes setItem(item);
    setItem.value("BKQDiskItem::setPath", each->path);
    const bool isLast = each->files.empty() && !each->optionsAfterFiles.isSet;
    setItem.add("BKQDiskItem::setOptions", each->optionsBeforeFiles, isLast);
    std::string names;
    for (const Text& file : each->files) names += (names.empty() ? "" : ", ") + jsonOf(file);
    for (const Text& file : each->files) {
      const bool isFirst = &file == &each->files.front();
      setItem.call("addFile", literal(file), isFirst ? "files" : "", "[" + names + "]");
    }
    setItem.add("BKQDiskItem::setOptions", each->optionsAfterFiles);
    eachOfDiskItem(*each, setItem);
    add(object, "addDiskItem", "diskItems", std::move(item), true);
  }
  filters(object, plan.filters);
  return object;
}

Written Writer::tape(const TapePlan& plan) {
  Written object = named(&plan, "BKQTape", "");
  Attributes set(object);
  set.add("BKQTape::setDeviceGroup", plan.deviceGroup);
  set.add("BKQTape::setTapeName", plan.name);
  eachOfTape(plan, set);
  set.add("BKQTape::setOptions", plan.optionsBeforeExtension, !plan.optionsAfterExtension.isSet);
  if (plan.extensionBy == ExtensionBy::kSetter) {
    // What is set of it comes after the options, which may make another.
    set.call("setTapeXtension", "*new BKQTapeXtension");
  } else if (plan.extensionBy == ExtensionBy::kGetter) {
    set.call("getTapeXtension", "");
  }
  set.add("BKQTape::setOptions", plan.optionsAfterExtension);
  if (plan.extension) {
    if ((optionsOf(plan) & 0x8000000) == 0) {
      miss("a tape's extension without its bit in the options");
    }
    Written extension = named(plan.extension.get(), "BKQTapeXtension", "");
    Attributes setExtension(extension);
    eachOfTapeExtension(*plan.extension, setExtension);
    setExtension.add("BKQTapeXtension::setSessionEndTime", plan.extension->sessionEndTime);
    object.calls.push_back({"getTapeXtension", "", "tapeXtension", "", {}, false, false});
    object.calls.back().parts.push_back(std::move(extension));
  }
  for (const auto& each : plan.items) {
    Written item = named(each.get(), "BKQTapeItem", "");
    Attributes setItem(item);
    setItem.add("BKQTapeItem::setChunkNum", each->chunkNumber);
    setItem.add("BKQTapeItem::setChunkOffset", each->chunkOffset);
    eachOfTapeItem(*each, setItem);
    add(object, "addTapeItem", "tapeItems", std::move(item), true);
  }
  filters(object, plan.filters);
  return object;
}

// The word of a kind of machine: "unix", "winNT", "os2".
std::string wordOf(const NodeKindLine& line) {
  std::string word = line.name;
  const bool isShort =
      std::none_of(word.begin(), word.end(), [](char c) { return std::islower(c); });
  for (char& c : word) {
    if (isShort || &c == &word[0]) c = static_cast<char>(std::tolower(c));
  }
  return word;
}

Written Writer::node(const NodePlan& plan) {
  const NodeKindLine& line = lineOf(plan.nodeClass);
  const bool isRestore = line.family == NodeFamily::kRestore;
  Written object = named(&plan, line.className, wordOf(line));
  if (line.family == NodeFamily::kTape) object.kind = "";
  if (isRestore) object.kind = plan.nodeClass == NodeClass::kRestore ? "machine" : "database";
  Attributes set(object);
  const bool takesName = plan.nameByConstructor || line.family == NodeFamily::kDisk;
  object.constructor = takesName ? literal(plan.name) : "";
  // A job file always gives the name.
  set.value("BKQNode::setNodeName", plan.name.value);
  switch (plan.nodeClass) {
#define BKOQ_OWN(kind, class_, ...)   \
  case NodeClass::k##kind:            \
    eachOwnOfNode<class_>(plan, set); \
    break;
    BKOQ_NODE_KINDS(BKOQ_OWN)
#undef BKOQ_OWN
  }
  if (plan.nodeClass == NodeClass::kDBRestore) {
    if (plan.dbUserSet) {
      set.call("setDBuser", literal(plan.dbUser) + ", " + literal(plan.dbPassword), "dbUser",
               jsonOf(plan.dbUser));
      object.calls.push_back({"", "", "dbPassword", jsonOf(plan.dbPassword), {}, false, false});
    }
  }
  const bool isOSLast = plan.osAfterActualType || !isRestore;
  if (!isOSLast) set.add("BKQNode::setNodeOS", plan.os, !plan.actualType.isSet);
  if (isRestore) set.add("BKQRestoreNode::setActualNodeType", plan.actualType);
  if (isOSLast) set.add("BKQNode::setNodeOS", plan.os);
  if (isRestore) set.add("BKQRestoreNode::setDiskName", plan.diskName);
  if (plan.options.isSet) {
    set.value("BKQNode::setOptions", plan.options.value);
    if (plan.nodeClass == NodeClass::kDBRestore) object.calls.back().key = "nodeOptions";
  }
  set.add("BKQNode::setDeviceType", plan.deviceType);
  eachOfNode(plan, set);
  filters(object, plan.filters);
  if (line.family == NodeFamily::kDisk) {
    for (const auto& each : plan.disks) add(object, "addDisk", "disks", disk(*each), true);
    if (!plan.removedDisks.empty()) {
      miss("a disk that is removed");
      for (const Text& name : plan.removedDisks) {
        set.call("removeDisk", "named<BKQDisk>(&BKQDisk::setDiskName, " + literal(name) + ")");
      }
    }
    if (plan.groom) {
      Written groom = named(plan.groom.get(), "BKQGroom", "");
      Attributes setGroom(groom);
      eachOfGroom(*plan.groom, setGroom);
      filters(groom, plan.groom->filters);
      add(object, "setGroomInfo", "groomInfo", std::move(groom), false);
    }
  }
  for (const auto& each : plan.tapes) add(object, "addTape", "tapes", tape(*each), true);
  return object;
}

Written Writer::mask(const JobMaskPlan& plan) {
  Written object = named(&plan, "BKQJobMask", "");
  Attributes set(object);
  set.add("BKQJobMask::setTapeNamePrefix", plan.prefix);
  eachOfJobMask(plan, set);
  const auto span = [&](const char* setter, const char* key, std::uint32_t value,
                        std::uint32_t type) {
    const std::string digits[] = {std::to_string(value), std::to_string(type)};
    set.call(setter, "BKQTime(" + digits[0] + "u, BKQTime::BKQTimeType(" + digits[1] + "u))", key,
             "{\"value\": " + digits[0] + ", \"type\": " + digits[1] + "}");
  };
  span("setRepeatInterval", "repeatInterval", plan.intervalValue, plan.intervalType);
  span("setRepeatCycle", "repeatCycle", plan.cycleValue, plan.cycleType);
  for (const auto& each : plan.units) {
    Written unit = named(each.get(), "BKQJobUnit", "");
    Attributes setUnit(unit);
    eachOfJobUnit(*each, setUnit);
    setUnit.time("BKQJobUnit::setExecTime", each->execTime);
    add(object, "addJobUnit", "jobUnits", std::move(unit), true);
  }
  return object;
}

void Writer::rotation(Written& object, const SchedulePlan& plan) {
  Attributes set(object);
  eachOfRotationSchedule(plan, set);
  set.time("BKQRotationSchedule::setPreferedMakeupTime", plan.makeupTime);
  const std::string hour = std::to_string(plan.makeupHour);
  const std::string minute = std::to_string(plan.makeupMinute);
  set.call("setPreferedMakeupJobTime", hour + ", " + minute, "preferedMakeupJobTime",
           "[" + hour + ", " + minute + "]");
  if (plan.mask) add(object, "setJobMask", "jobMask", mask(*plan.mask), false);
  for (const auto& each : plan.days) {
    Written day = named(each.get(), "BKQExceptionDay", "");
    Attributes setDay(day);
    eachOfExceptionDay(*each, setDay);
    setDay.time("BKQExceptionDay::setExceptionTime", each->time);
    add(object, "addExceptionDay", "exceptionDays", std::move(day), true);
  }
}

Written Writer::schedule(const SchedulePlan& plan) {
  static const char* const kNames[][2] = {{"BKQRegularSchedule", "regular"},
                                          {"BKQCustomSchedule", "custom"},
                                          {"BKQRotationSchedule", "rotation"},
                                          {"BKQCruiseSchedule", "cruise"}};
  const auto& names = kNames[static_cast<unsigned int>(plan.scheduleClass)];
  Written object = named(&plan, names[0], names[1]);
  Attributes set(object);
  if (plan.scheduleClass == ScheduleClass::kCustom) {
    std::string list;
    for (const std::uint16_t each : plan.repeats) {
      list += (list.empty() ? "" : ", ") + std::to_string(each);
    }
    set.call("setRepeat", list, "repeat", "[" + list + "]");
    eachOfCustomSchedule(plan, set);
  } else if (plan.scheduleClass != ScheduleClass::kRegular) {
    rotation(object, plan);
  }
  if (plan.scheduleClass == ScheduleClass::kCruise) {
    eachOfCruiseSchedule(plan, set);
    std::string texts;
    std::string list;
    for (const Text& each : plan.poolNames) {
      texts += (texts.empty() ? "" : ", ") + literal(each);
      list += (list.empty() ? "" : ", ") + jsonOf(each);
    }
    set.call("setGFSPoolNames", texts, "gfsPoolNames", "[" + list + "]");
  }
  set.time("BKQSchedule::setSubmitTime", plan.submitTime);
  set.time("BKQSchedule::setExecTime", plan.execTime);
  set.call("setScheduleWindow", timeLiteral(plan.windowStart) + ", " + timeLiteral(plan.windowEnd),
           "scheduleWindow",
           "[" + jsonTimeOf(plan.windowStart) + ", " + jsonTimeOf(plan.windowEnd) + "]");
  eachOfSchedule(plan, set);
  return object;
}

template <class Wanted>
bool isOf(ScheduleClass schedule) {
  const bool isCruise = schedule == ScheduleClass::kCruise;
  if (std::is_same_v<Wanted, BKQCustomSchedule>) return schedule == ScheduleClass::kCustom;
  if (std::is_same_v<Wanted, BKQCruiseSchedule>) return isCruise;
  if (std::is_same_v<Wanted, BKQRotationSchedule>) {
    return isCruise || schedule == ScheduleClass::kRotation;
  }
  return true;
}

void Writer::attachments(Written& object, const JobPlan& plan) {
  if (plan.fax) {
    Written fax = named(plan.fax.get(), "BKQFax", "");
    Attributes set(fax);
    eachOfFax(*plan.fax, set);
    add(object, "setFaxInfo", "faxInfo", std::move(fax), false);
  }
  if (plan.email) {
    Written email = named(plan.email.get(), plan.email->isMHS ? "BKQMHSEMail" : "BKQInternetEMail",
                          plan.email->isMHS ? "mhs" : "internet");
    Attributes set(email);
    if (plan.email->isMHS) eachOfMHSEMail(*plan.email, set);
    eachOfEMail(*plan.email, set);
    add(object, "setEMailInfo", "emailInfo", std::move(email), false);
  }
  if (plan.printQueue) {
    Written queue = named(plan.printQueue.get(), "BKQPrintQueue", "");
    Attributes set(queue);
    eachOfPrintQueue(*plan.printQueue, set);
    add(object, "setPrintQueue", "printQueue", std::move(queue), false);
  }
  if (!plan.schedule) return;
  static constexpr bool (*kIsOwn[])(ScheduleClass) = {
#define BKOQ_OWN(kind, class_, code, word, scheduleOf, ...) isOf<scheduleOf>,
      BKOQ_JOB_KINDS(BKOQ_OWN)
#undef BKOQ_OWN
  };
  const auto kind = static_cast<unsigned int>(plan.jobClass);
  const bool isOwn = kIsOwn[kind](plan.schedule->scheduleClass);
  if (!isOwn) miss("a schedule that does not suit the kind of job");
  add(object, isOwn ? "setSchedule" : "BKQJob::setSchedule", "schedule", schedule(*plan.schedule),
      false);
}

Written Writer::job(const JobPlan& plan) {
  const JobKindLine& line = lineOf(plan.jobClass);
  Written object = named(&plan, line.className, line.word);
  Attributes set(object);
  if (line.names != JobNames::kNone) {
    const bool isGiven = plan.name.isSet || line.names == JobNames::kName;
    object.constructor = isGiven ? literal(plan.name) : "";
    object.calls.push_back({"", "", "jobName", jsonOf(plan.name), {}, false, false});
  }
  eachOfJob(plan, set);
  set.add("BKQJob::setJobNumber", plan.number);
  set.add("BKQJob::setOptions", plan.options);
  const auto flag = [&](const Attribute<bool>& on, const std::string& name, const char* key) {
    if (on.isSet) set.call(name + (on ? "On" : "Off"), "", key, on ? "true" : "false");
  };
  flag(plan.snmp, "setSNMP", "snmp");
  flag(plan.ovix, "setOvix", "ovix");
  set.call("setScriptUserID", literal(plan.scriptUser) + ", " + literal(plan.scriptUserPassword),
           "scriptUserID", jsonOf(plan.scriptUser));
  object.calls.push_back(
      {"", "", "scriptUserPassword", jsonOf(plan.scriptUserPassword), {}, false, false});
  attachments(object, plan);

  const auto sources = [&] {
    for (const auto& each : plan.sources) {
      add(object, "addSourceNode", "sourceNodes", node(*each), true);
    }
  };
  const std::string first = std::to_string(plan.rangeStart);
  const std::string last = std::to_string(plan.rangeEnd);
  const std::string range = first + ", " + last;
  switch (line.family) {
    case JobFamily::kPlain:
      break;
    case JobFamily::kBackup:
      for (const auto& each : plan.removedSources) {
        add(object, "addSourceNode", "sourceNodes", node(*each), true);
      }
      sources();
      if (!plan.removedSources.empty()) miss("a source node that is removed");
      for (const auto& each : plan.removedSources) {
        set.call("removeSourceNode", "*new BKQMacNode(" + literal(each->name) + ")");
      }
      for (const auto& each : plan.sources) {
        if (!isDiskNode(each->nodeClass)) miss("a source node without disks");
      }
      filters(object, plan.filters);
      eachOfBackup(plan, set);
      flag(plan.encryption, "setEncryption", "encryption");
      flag(plan.compression, "setCompression", "compression");
      if (plan.openFile) {
        Written file = named(plan.openFile.get(), "BKQOpenFileInfo", "");
        Attributes setFile(file);
        eachOfOpenFile(*plan.openFile, setFile);
        add(object, "setOpenFileInfo", "openFileInfo", std::move(file), false);
      }
      break;
    case JobFamily::kRestore:
      sources();
      filters(object, plan.filters);
      eachOfRestore(plan, set);
      for (const auto& each : plan.destinations) {
        add(object, "addDestNode", "destNodes", node(*each), true);
      }
      return object;
    case JobFamily::kVerify:
    case JobFamily::kCompare:
      sources();
      break;
    case JobFamily::kMerge:
      set.call("setMergeRange", range, "mergeRange", "[" + range + "]");
      set.call("setMergeFilter", literal(plan.filterText), "mergeFilter", jsonOf(plan.filterText));
      eachOfMerge(plan, set);
      break;
    case JobFamily::kScan:
      set.call("setScanRange", range, "scanRange", "[" + range + "]");
      set.call("setScanFilter", literal(plan.filterText), "scanFilter", jsonOf(plan.filterText));
      eachOfScan(plan, set);
      break;
  }
  const bool hasSource = line.family == JobFamily::kMerge || line.family == JobFamily::kScan;
  if (hasSource && !plan.sources.empty()) {
    add(object, "setSource", "source", node(*plan.sources[0]), false);
  }
  if (!plan.destinations.empty()) {
    add(object, "setDestination", "destination", node(*plan.destinations[0]), false);
  } else if (line.family == JobFamily::kCompare) {
    miss("a compare job without a destination");
  }
  return object;
}

// Parts come before the objects that hold them.
class Source {
 public:
  explicit Source(std::string& text) : text_(text) {}

  std::string make(const Written& object) {
    const auto found = variables_.find(object.plan);
    if (found != variables_.end()) return found->second;
    std::string variable = "o" + std::to_string(variables_.size());
    variables_[object.plan] = variable;
    line("auto& " + variable + " = *new " + object.className +
         (object.constructor.empty() ? "" : "(" + object.constructor + ")") + ";");
    fill(variable, object);
    return variable;
  }

 private:
  void fill(const std::string& variable, const Written& object) {
    for (const Written::Call& call : object.calls) {
      if (call.setter.empty()) continue;
      if (call.setter == "getTapeXtension" && !call.parts.empty()) {
        const std::string part = "x" + std::to_string(++extensions_);
        line(std::string("auto& ").append(part).append(" = *").append(variable) +
             ".getTapeXtension();");
        fill(part, call.parts[0]);
        continue;
      }
      if (call.isEnumeration) {
        line("set(" + variable + ", &" + call.setter + ", " + call.arguments + ");");
        continue;
      }
      const std::string head = variable + "." + call.setter + "(";
      if (call.parts.empty()) line(head + call.arguments + ");");
      for (const Written& part : call.parts) {
        const std::string name = make(part);
        line(head + name + ");");
      }
    }
  }
  void line(const std::string& content) { text_ += "  " + content + "\n"; }

  std::string& text_;
  std::map<const void*, std::string> variables_;
  unsigned int extensions_ = 0;
};

constexpr const char* kPrelude = R"(#include <bkoq/bkoq.h>

// Sets a number or an enumeration, whose type the setter knows.
template <class Object, class Class, class Value, class Given>
void set(Object& object, void (Class::*setter)(Value), Given given) {
  (object.*setter)(static_cast<Value>(given));
}
// An object that says by its name which one is meant.
template <class Object, class Class>
Object& named(void (Class::*setter)(const char*), const char* name) {
  auto& object = *new Object;
  (object.*setter)(name);
  return object;
}
// A client's own filters: one that converts as its base class does, and one that no record can hold.
class ForeignTimeFilter : public BKQTimeFilter {
 public:
  ForeignTimeFilter() = default;
  ForeignTimeFilter(BKQTimeRangeType range, BKQTimeAttrType attribute)
      : BKQTimeFilter(range, attribute) {}
  BKQTimeRangeType getTRtype() const override { return Between; }
};
class FailingFilter : public BKQFilter {
 public:
  unsigned int filterType() const override { return 3; }
  int convertToBK2(void*& /*entry*/) override { return 0; }
  int convertToBK2_old(void*& /*entry*/) override { return 0; }
};

)";

void putObject(std::string& text, const Written& object, std::size_t depth) {
  const std::string indent(2 * depth + 2, ' ');
  std::vector<std::string> members;
  if (!object.kind.empty()) members.push_back("\"kind\": \"" + object.kind + "\"");
  for (const Written::Call& call : object.calls) {
    if (call.key.empty()) continue;
    std::string value = call.json;
    if (!call.parts.empty()) {
      value = call.isList ? "[" : "";
      for (const Written& part : call.parts) {
        if (&part != &call.parts.front()) value += ", ";
        putObject(value, part, depth + 1);
      }
      value += call.isList ? "]" : "";
    }
    members.push_back("\"" + call.key + "\": " + value);
  }
  text += "{\n";
  for (std::size_t i = 0; i < members.size(); ++i) {
    text += indent + members[i] + (i + 1 < members.size() ? ",\n" : "\n");
  }
  text += std::string(2 * depth, ' ') + "}";
}

}  // namespace

std::string asSource(const JobPlan& plan) {
  std::string body;
  Source source(body);
  const std::string job = source.make(Writer().job(plan));
  return kPrelude + ("BKQJob* makeJob() {\n" + body) + "  return &" + job + ";\n}\n";
}

JobFile asJobFile(const JobPlan& plan) {
  Writer writer;
  std::string object;
  putObject(object, writer.job(plan), 0);
  JobFile file;
  for (const char high : {'8', '9', 'a', 'b', 'c', 'd', 'e', 'f'}) {
    if (object.find(std::string("\\u00") + high) == std::string::npos) continue;
    writer.missing.emplace_back("a byte that is no ASCII, which would be two in UTF-8");
    break;
  }
  for (const std::string& each : writer.missing) {
    file.text += "// A job file cannot say this: " + each + ".\n";
  }
  file.isWhole = writer.missing.empty();
  file.text += object + "\n";
  return file;
}

}  // namespace bkoq::test
