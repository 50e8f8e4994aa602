#include "tests/random/draw.h"

#include "tests/catalog/forms.h"
#include "tests/random/attributes.h"

namespace bkoq::test {

namespace {

template <class Schedule>
constexpr ScheduleClass kScheduleOf = ScheduleClass::kRegular;
template <>
constexpr ScheduleClass kScheduleOf<BKQCustomSchedule> = ScheduleClass::kCustom;
template <>
constexpr ScheduleClass kScheduleOf<BKQRotationSchedule> = ScheduleClass::kRotation;
template <>
constexpr ScheduleClass kScheduleOf<BKQCruiseSchedule> = ScheduleClass::kCruise;

// Few enough that names meet their likes.
const char* const kTexts[] = {
    "A",         "b",       "/",        "//", "/usr", "/a/b", "//srv/x", "Registry",     "registry",
    "Registry ", "C:",      "*.o",      ":",  "a:b",  "-",    "/etc",    "\x80\xff\xfe", "\x01\n\t",
    " ",         "testjob", "localhost"};
constexpr std::uint32_t kTextCount = sizeof kTexts / sizeof *kTexts;

}  // namespace

Text Drawer::text() {
  Text text = anyText();
  for (char& c : text) {
    if (isPlain_ && static_cast<unsigned char>(c) >= 0x80) c = 'x';
  }
  return text;
}

Text Drawer::anyText() {
  const std::uint32_t way = random_.below(64);
  if (way < 16) return "";
  if (way < 50) return kTexts[random_.below(kTextCount)];
  if (way < 56) return Text(kTexts[random_.below(kTextCount)]) + kTexts[random_.below(kTextCount)];
  std::uint32_t length = 1 + random_.below(24);
  if (way == 63 && chance(1, 8)) length = 200 + random_.below(800);
  // 65,535 bytes and their NUL are more than 16 bits can count.
  if (way == 62 && chance(1, 400)) length = 65530 + random_.below(10);
  Text result(length, 'x');
  for (char& c : result) c = static_cast<char>(1 + random_.below(255));
  return result;
}

std::uint32_t Drawer::number() { return isPlain_ ? anyNumber() & 0xFF : anyNumber(); }

std::uint32_t Drawer::anyNumber() {
  switch (random_.below(8)) {
    case 0:
      return 0;
    case 1:
    case 2:
      return random_.below(4);
    case 3:
      return random_.below(40);
    case 4:
      return (1u << random_.below(32)) - random_.below(2);
    case 5:
      return 0u - random_.below(3);
    case 6:
      return random_.below(0x10000);
    default:
      return static_cast<std::uint32_t>(random_.next());
  }
}

std::uint32_t Drawer::time() {
  constexpr std::uint32_t kFirst1970 = 2177452800u;
  switch (isPlain_ ? 2 : random_.below(4)) {
    case 0:  // as far back and ahead as calendar times go, give or take the zones
      return kFirst1970 - 0x7ff00000u + static_cast<std::uint32_t>(random_.next() % 0xfdf00000u);
    case 1:  // an hour of the days on which zones change, 2004
      return kFirst1970 + (chance(1, 2) ? 1080432000u : 1099094400u) + random_.below(4 * 86400);
    default:
      return kFirst1970 + 631152000u + random_.below(30u * 365 * 86400);
  }
}

std::uint32_t Drawer::diskType() {
  static const std::uint32_t kTypes[] = {0,  5,       11,      22,      23,      31,
                                         11, 0x1000b, 0x10017, 0x10016, 0x2001f, 22};
  const std::uint32_t type =
      chance(3, 4) ? kTypes[random_.below(sizeof kTypes / sizeof *kTypes)] : number();
  return isPlain_ ? type & 0xFF : type;
}

std::uint32_t Drawer::options() {
  static const std::uint32_t kBits[] = {0x8000000, 0x8000001, 0, 0x48000040};
  return chance(1, 2) ? kBits[random_.below(4)] : number();
}

unsigned int Drawer::few() {
  const std::uint32_t way = random_.below(16);
  return way < 3 ? 0 : way < 9 ? 1 : way < 13 ? 2 : 3;
}

unsigned int Drawer::some() { return chance(1, 200) ? 8 + random_.below(40) : few(); }

template <class Plan, class Make>
std::shared_ptr<Plan> Drawer::oldOrNew(List<Plan>& drawn, unsigned int oneOf, Make make) {
  if (!drawn.empty() && chance(1, oneOf)) {
    return drawn[random_.below(static_cast<std::uint32_t>(drawn.size()))];
  }
  drawn.push_back(make());
  return drawn.back();
}

std::shared_ptr<FilterPlan> Drawer::filter() {
  auto plan = std::make_shared<FilterPlan>();
  plan->filterClass = static_cast<FilterClass>(random_.below(kFilterClasses));
  if (mayFail_ && chance(1, 8)) plan->filterClass = FilterClass::kFailing;
  plan->constructor = random_.below(3);
  if (chance(2, 3)) setTo(plan->kind, chance(7, 8) ? random_.below(2) : number());
  plan->pattern = text();
  plan->attributes = number();
  plan->timeAttribute = number();
  plan->units = static_cast<std::uint16_t>(number());
  plan->unitType = number();
  plan->time = time();
  plan->endTime = time();
  // A default constructor leaves no range, the others that of the class.
  if (plan->filterClass == FilterClass::kForeignTime) {
    plan->storedRange = plan->constructor == 0 ? 0 : number();
  }
  return plan;
}

void Drawer::filters(List<FilterPlan>& list) {
  for (unsigned int i = some(); i > 0; --i) {
    list.push_back(oldOrNew(filtersDrawn_, 10, [this] { return filter(); }));
  }
}

std::shared_ptr<DiskItemPlan> Drawer::diskItem() {
  auto plan = std::make_shared<DiskItemPlan>();
  plan->pathByConstructor = chance(1, 2);
  plan->path = text();
  if (chance(1, 4)) set(plan->optionsBeforeFiles);
  for (unsigned int i = some(); i > 0; --i) plan->files.push_back(text());
  if (chance(1, 4)) set(plan->optionsAfterFiles);
  eachOfDiskItem(*plan, *this);
  return plan;
}

std::shared_ptr<DiskPlan> Drawer::disk() {
  auto plan = std::make_shared<DiskPlan>();
  eachOfDisk(*plan, *this);
  plan->typeByConstructor = chance(1, 2);
  if (chance(7, 8)) setTo(plan->type, diskType());
  if (chance(1, 6)) setTo(plan->name, Text("Registry"));
  if (chance(1, 8)) setTo(plan->name, Text("/"));
  for (unsigned int i = some(); i > 0; --i) plan->items.push_back(diskItem());
  filters(plan->filters);
  return plan;
}

std::shared_ptr<TapeItemPlan> Drawer::tapeItem() {
  auto plan = std::make_shared<TapeItemPlan>();
  eachOfTapeItem(*plan, *this);
  plan->byConstructor = chance(1, 2);
  if (plan->byConstructor || chance(3, 4)) set(plan->chunkNumber);
  if (plan->byConstructor || chance(3, 4)) set(plan->chunkOffset);
  return plan;
}

std::shared_ptr<TapePlan> Drawer::tape() {
  auto plan = std::make_shared<TapePlan>();
  eachOfTape(*plan, *this);
  plan->byConstructor = chance(1, 2);
  if (plan->byConstructor || chance(3, 4)) set(plan->name);
  if (plan->byConstructor || chance(3, 4)) set(plan->deviceGroup);
  if (chance(1, 2)) setTo(plan->sessionNumber, random_.below(4));
  if (chance(1, 2)) setTo(plan->optionsBeforeExtension, options());
  plan->extensionBy = static_cast<ExtensionBy>(random_.below(3));
  if (chance(1, 3)) setTo(plan->optionsAfterExtension, options());
  if (hasExtension(*plan)) {
    plan->extension = std::make_shared<TapeExtensionPlan>();
    eachOfTapeExtension(*plan->extension, *this);
    plan->extension->timeByConstructor = chance(1, 2);
    if (chance(2, 3)) set(plan->extension->sessionEndTime);
  }
  for (unsigned int i = some(); i > 0; --i) plan->items.push_back(tapeItem());
  filters(plan->filters);
  return plan;
}

NodeClass Drawer::diskNodeClass() {
  switch (random_.below(4)) {
    case 0:
      return NodeClass::kUnix;
    case 1:
      return chance(1, 2) ? NodeClass::kWinNT : NodeClass::kNDS;
    default:
      return kNodeKinds[random_.below(kDiskNodeKinds)].kind;
  }
}

std::shared_ptr<NodePlan> Drawer::node(NodeClass nodeClass) {
  auto plan = std::make_shared<NodePlan>();
  plan->nodeClass = nodeClass;
  eachOfNode(*plan, *this);
  plan->nameByConstructor = chance(1, 2);
  const bool hasDefault = !isDiskNode(nodeClass);
  if (hasDefault && chance(1, 4)) {
    plan->name.value = "localhost";
    plan->nameByConstructor = false;
  } else {
    set(plan->name);
  }
  if (chance(1, 2)) set(plan->os);
  if (chance(1, 2)) set(plan->options);
  if (chance(1, 2)) set(plan->deviceType);
  filters(plan->filters);

  if (isDiskNode(nodeClass)) {
    for (unsigned int i = few(); i > 0; --i) {
      plan->disks.push_back(oldOrNew(disksDrawn_, 12, [this] { return disk(); }));
    }
    if (chance(1, 12)) plan->removedDisks.push_back(text());
    if (chance(1, 16) && !plan->disks.empty()) {
      plan->removedDisks.push_back(
          plan->disks[random_.below(static_cast<std::uint32_t>(plan->disks.size()))]->name);
    }
    if (chance(1, 4)) {
      plan->groom = std::make_shared<GroomPlan>();
      eachOfGroom(*plan->groom, *this);
      filters(plan->groom->filters);
    }
    eachOfUnixNode(*plan, *this);
    eachOfSybaseNode(*plan, *this);
    eachOfOracleNode(*plan, *this);
    eachOfInformixNode(*plan, *this);
    eachOfSnapShotNode(*plan, *this);
  } else if (nodeClass == NodeClass::kTape) {
    for (unsigned int i = few(); i > 0; --i) {
      plan->tapes.push_back(oldOrNew(tapesDrawn_, 12, [this] { return tape(); }));
    }
  } else {
    eachOfRestoreNode(*plan, *this);
    eachOfDBRestoreNode(*plan, *this);
    static const std::uint32_t kTypes[] = {2, 3, 8, 9, 10, 11, 12, 13, 20, 21, 25, 27, 0, 0x1000d};
    if (chance(3, 4)) {
      setTo(plan->actualType,
            chance(7, 8) ? kTypes[random_.below(sizeof kTypes / sizeof *kTypes)] : number());
    }
    plan->osAfterActualType = chance(1, 2);
    plan->diskNameByConstructor = plan->nameByConstructor && chance(1, 2);
    if (plan->diskNameByConstructor || chance(3, 4)) set(plan->diskName);
    if (chance(1, 2)) setTo(plan->fsType, diskType());
    plan->dbUserSet = chance(7, 8);
    if (plan->dbUserSet) {
      plan->dbUser = text();
      plan->dbPassword = text();
    }
  }
  return plan;
}

std::shared_ptr<SchedulePlan> Drawer::schedule(ScheduleClass scheduleClass) {
  auto plan = std::make_shared<SchedulePlan>();
  plan->scheduleClass = scheduleClass;
  plan->submitTime = time();
  plan->execTime = time();
  plan->windowStart = time();
  plan->windowEnd = time();
  eachOfSchedule(*plan, *this);
  plan->repeatsByConstructor = chance(1, 2);
  for (std::uint16_t& repeat : plan->repeats) repeat = static_cast<std::uint16_t>(number());
  eachOfCustomSchedule(*plan, *this);
  eachOfRotationSchedule(*plan, *this);
  plan->makeupTime = time();
  plan->makeupHour = static_cast<std::uint8_t>(number());
  plan->makeupMinute = static_cast<std::uint8_t>(number());
  if (chance(7, 8)) {
    plan->mask = std::make_shared<JobMaskPlan>();
    eachOfJobMask(*plan->mask, *this);
    plan->mask->prefixByConstructor = chance(1, 2);
    if (chance(1, 2)) set(plan->mask->prefix);
    if (chance(1, 2)) {
      plan->mask->intervalValue = number();
      plan->mask->intervalType = number();
      plan->mask->cycleValue = number();
      plan->mask->cycleType = number();
    }
    for (unsigned int i = chance(1, 4) ? 4 + random_.below(9) : few(); i > 0; --i) {
      auto unit = std::make_shared<JobUnitPlan>();
      eachOfJobUnit(*unit, *this);
      unit->execTime = time();
      plan->mask->units.push_back(unit);
    }
  }
  for (unsigned int i = few(); i > 0; --i) {
    auto day = std::make_shared<ExceptionDayPlan>();
    eachOfExceptionDay(*day, *this);
    day->time = time();
    plan->days.push_back(day);
  }
  eachOfCruiseSchedule(*plan, *this);
  for (Text& name : plan->poolNames) name = text();
  return plan;
}

void Drawer::attachments(JobPlan& job) {
  if (chance(5, 6)) {
    job.fax = std::make_shared<FaxPlan>();
    eachOfFax(*job.fax, *this);
    job.faxByGetter = chance(1, 3);
  }
  if (chance(5, 6)) {
    job.email = std::make_shared<EMailPlan>();
    job.email->isMHS = chance(1, 2);
    eachOfEMail(*job.email, *this);
    if (job.email->isMHS) eachOfMHSEMail(*job.email, *this);
  }
  if (chance(5, 6)) {
    job.printQueue = std::make_shared<PrintQueuePlan>();
    eachOfPrintQueue(*job.printQueue, *this);
  }
  if (chance(5, 6)) {
    ScheduleClass scheduleClass = static_cast<ScheduleClass>(random_.below(4));
    // Mostly what the setter of the class takes; the base job's takes any.
    if (chance(7, 8)) {
      static constexpr ScheduleClass kOwn[] = {
#define BKOQ_OWN(kind, class_, code, word, schedule, ...) kScheduleOf<schedule>,
          BKOQ_JOB_KINDS(BKOQ_OWN)
#undef BKOQ_OWN
      };
      const ScheduleClass own = kOwn[static_cast<unsigned int>(job.jobClass)];
      if (own != ScheduleClass::kRegular) scheduleClass = own;
      // A cruise schedule is a rotation, too.
      if (own == ScheduleClass::kRotation && chance(1, 4)) scheduleClass = ScheduleClass::kCruise;
    }
    job.schedule = schedule(scheduleClass);
  }
}

void Drawer::backup(JobPlan& job) {
  for (unsigned int i = few(); i > 0; --i) {
    // Now and then a machine stands in the list twice, or a node that holds no disks.
    if (!job.sources.empty() && chance(1, 16)) {
      job.sources.push_back(
          job.sources[random_.below(static_cast<std::uint32_t>(job.sources.size()))]);
    } else if (chance(1, 100)) {
      job.sources.push_back(node(chance(1, 2) ? NodeClass::kTape : NodeClass::kRestore));
    } else {
      job.sources.push_back(node(diskNodeClass()));
    }
  }
  for (unsigned int i = chance(1, 8) ? 1 + random_.below(3) : 0; i > 0; --i) {
    job.removedSources.push_back(node(diskNodeClass()));
    // Now and then of the name of one that stays.
    if (job.sources.empty() || !chance(1, 2)) continue;
    setTo(job.removedSources.back()->name, job.sources.front()->name.value);
  }
  if (chance(3, 4)) job.destinations.push_back(node(NodeClass::kTape));
  filters(job.filters);
  if (chance(3, 4)) {
    job.openFile = std::make_shared<OpenFilePlan>();
    eachOfOpenFile(*job.openFile, *this);
    job.openFileByGetter = chance(1, 3);
  }
  if (chance(1, 2)) set(job.encryption);
  if (chance(1, 2)) set(job.compression);
  eachOfBackup(job, *this);
}

std::shared_ptr<JobPlan> Drawer::job(JobClass jobClass) {
  mayFail_ = chance(1, 12);
  filtersDrawn_.clear();
  disksDrawn_.clear();
  tapesDrawn_.clear();
  auto job = std::make_shared<JobPlan>();
  job->jobClass = jobClass;
  const bool hasNamed = lineOf(jobClass).names != JobNames::kNone;
  const bool hasDefault = lineOf(jobClass).names != JobNames::kName;
  if (hasNamed && (!hasDefault || chance(3, 4))) set(job->name);
  eachOfJob(*job, *this);
  if (chance(3, 4)) set(job->number);
  if (chance(3, 4)) setTo(job->options, chance(1, 3) ? number() | 0x100000 : number());
  if (chance(1, 2)) set(job->snmp);
  if (chance(1, 2)) set(job->ovix);
  job->scriptUser = text();
  job->scriptUserPassword = text();
  attachments(*job);

  if (isBackup(jobClass)) {
    backup(*job);
  } else if (isRestore(jobClass)) {
    for (unsigned int i = few(); i > 0; --i) job->sources.push_back(node(NodeClass::kTape));
    for (unsigned int i = few(); i > 0; --i) {
      job->destinations.push_back(node(chance(1, 2) ? NodeClass::kRestore : NodeClass::kDBRestore));
    }
    filters(job->filters);
    eachOfRestore(*job, *this);
  } else if (isVerify(jobClass)) {
    for (unsigned int i = few(); i > 0; --i) job->sources.push_back(node(NodeClass::kTape));
    if (jobClass == JobClass::kCompare && chance(15, 16)) {
      job->destinations.push_back(node(diskNodeClass()));
    }
  } else if (!hasNamed) {
    if (chance(7, 8)) job->sources.push_back(node(NodeClass::kTape));
    if (jobClass == JobClass::kMerge && chance(7, 8)) {
      job->destinations.push_back(node(diskNodeClass()));
    }
    job->rangeStart = static_cast<std::uint16_t>(number());
    job->rangeEnd = static_cast<std::uint16_t>(number());
    static const char* const kAccepted[] = {"", "12", "3-7", "7-7", "5-", "5000", "-"};
    job->filterText = kAccepted[random_.below(7)];
    eachOfMerge(*job, *this);
    eachOfScan(*job, *this);
  }
  return job;
}

// Which arguments a form takes is told by its number.
static_assert(formsOf(JobFamily::kBackup) == 5 && formsOf(JobFamily::kRestore) == 2 &&
                  formsOf(JobFamily::kVerify) == 2 && formsOf(JobFamily::kMerge) == 2 &&
                  formsOf(JobFamily::kScan) == 2 && formsOf(JobFamily::kCompare) == 4,
              "draw what each form takes, and expect it in tests/random/expect.cpp");
Call Drawer::call(const JobPlan& job, BkoqLayout layout) {
  Call call;
  call.layout = layout;
  const auto nodeName = [&] {
    if (job.sources.empty() || chance(1, 4)) return text();
    return job.sources[random_.below(static_cast<std::uint32_t>(job.sources.size()))]->name.value;
  };
  const auto tapeName = [&] {
    if (tapesDrawn_.empty() || chance(1, 2)) return text();
    return tapesDrawn_[random_.below(static_cast<std::uint32_t>(tapesDrawn_.size()))]->name.value;
  };
  if (isBackup(job.jobClass)) {
    call.form = random_.below(formsOf(JobFamily::kBackup));
    if (call.form >= 1 && chance(2, 3)) call.nodeName = nodeName();
    if (call.form == 2 || call.form == 4) {
      for (unsigned int i = few(); i > 0; --i) {
        call.disks.push_back(
            disksDrawn_.empty() || chance(1, 4)
                ? text()
                : disksDrawn_[random_.below(static_cast<std::uint32_t>(disksDrawn_.size()))]
                      ->name.value);
      }
    }
    if (call.form >= 3) {
      call.unixKind = chance(7, 8) ? static_cast<std::int32_t>(random_.below(4))
                                   : static_cast<std::int32_t>(number());
      call.unixText = text();
    }
    return call;
  }
  if (job.jobClass == JobClass::kBase) return call;
  call.form = random_.below(formsOf(lineOf(job.jobClass).family));
  // A compare job's overloads: override path; name and session; all three.
  const bool selects = job.jobClass == JobClass::kCompare ? call.form >= 2 : call.form == 1;
  if (selects) {
    if (chance(2, 3)) call.tapeName = tapeName();
    call.session = chance(1, 2) ? 0 : static_cast<std::uint16_t>(random_.below(4));
  }
  if (job.jobClass == JobClass::kCompare && (call.form == 1 || call.form == 3)) {
    call.overridePath = text();
  }
  return call;
}

State Drawer::state() {
  State state;
  if (chance(1, 4)) return state;  // as at load
  state.newTapeTimeout = number();
  state.spanTapeTimeout = number();
  state.newTapeMethod = number();
  state.spanTapeMethod = number();
  state.hasDiskPassword = chance(1, 2);
  if (state.hasDiskPassword) state.diskPassword = text();
  state.hasTapePassword = chance(1, 2);
  if (state.hasTapePassword) state.tapePassword = text();
  state.encryption = random_.below(3);
  state.compression = random_.below(3);
  state.noEstimate = random_.below(3);
  static const std::uint32_t kTypes[] = {0, 3, 3, 6, 9, 9, 13, 24, 0x10003};
  state.nodeType = kTypes[random_.below(sizeof kTypes / sizeof *kTypes)];
  state.unixOptions = number();
  state.diskName = text();
  return state;
}

}  // namespace bkoq::test
