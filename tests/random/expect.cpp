#include "tests/random/expect.h"

namespace bkoq::test {

namespace {

constexpr std::uint32_t kExtensionBit = 0x8000000;
constexpr std::uint32_t kFirst1970 = 2177452800u;  // seconds from 1901 to 1970

// User and second password as two texts in one block, or one of them.
void passwordPair(Record disk, const Text& user, const Text& password) {
  if (!user.empty() && !password.empty()) {
    disk.bytes(36, "pszDiskPW2", user + '\0' + password + '\0');
  } else if (!user.empty()) {
    disk.lastText(36, "pszDiskPW2", user);
  } else if (!password.empty()) {
    disk.bytes(36, "pszDiskPW2", '\0' + password + '\0');
  }
}

void joinedPassword(Record disk, const Text& user, const Text& password) {
  if (user.empty()) return;
  disk.lastText(36, "pszDiskPW2", password.empty() ? user : user + ":" + password);
}

}  // namespace

std::uint32_t optionsOf(const DiskItemPlan& item) {
  std::uint32_t options = 1;
  if (item.optionsBeforeFiles.isSet) options = item.optionsBeforeFiles;
  if (!item.files.empty()) options = 0;
  if (item.optionsAfterFiles.isSet) options = item.optionsAfterFiles;
  return options;
}

bool hasExtension(const TapePlan& tape) {
  return tape.extensionBy != ExtensionBy::kNothing ||
         (tape.optionsBeforeExtension.isSet && tape.optionsBeforeExtension == kExtensionBit) ||
         (tape.optionsAfterExtension.isSet && tape.optionsAfterExtension == kExtensionBit);
}

std::uint32_t optionsOf(const TapePlan& tape) {
  std::uint32_t options = 0;
  if (tape.optionsBeforeExtension.isSet) options = tape.optionsBeforeExtension;
  if (tape.extensionBy == ExtensionBy::kSetter) options |= kExtensionBit;
  if (tape.optionsAfterExtension.isSet) options = tape.optionsAfterExtension;
  return options;
}

std::uint32_t nodeTypeOf(NodeClass nodeClass) { return lineOf(nodeClass).code; }

std::uint32_t nodeOSOf(const NodePlan& node) {
  if (node.actualType.isSet && !(node.os.isSet && node.osAfterActualType)) {
    switch (node.actualType.value) {
      case 2:
        return 7;
      case 8:
      case 13:
        return 4;
      case 9:
        return 8;
      case 10:
        return 2;
      case 11:
      case 12:
        return 5;
      default:
        return 6;
    }
  }
  return node.os.isSet ? node.os.value : lineOf(node.nodeClass).os;
}

std::uint32_t optionsOf(const NodePlan& node) {
  if (node.options.isSet) return node.options;
  return lineOf(node.nodeClass).options;
}

std::uint16_t deviceTypeOf(const NodePlan& node) {
  if (node.deviceType.isSet) return node.deviceType;
  return static_cast<std::uint16_t>(lineOf(node.nodeClass).deviceType);
}

std::uint16_t jobTypeOf(JobClass jobClass) {
  return static_cast<std::uint16_t>(lineOf(jobClass).code);
}

std::uint32_t optionsOf(const JobPlan& job) {
  if (job.options.isSet) return job.options;
  return isRestore(job.jobClass) ? 0x6200000 : 0;
}

Record Expectation::start(std::uint32_t size) {
  Record record = tree_.start(size);
  for (const FilledArray& array : filled_) {
    for (std::uint32_t i = 0; i < array.count; ++i) {
      record.grow(array.countOffset, array.offset, array.field, array.size)
          .set16(array.markOffset, array.markOf(i));
    }
  }
  return record;
}

// A calendar time becomes what a clock showing standard time all year would read.
std::uint32_t Expectation::localTime(std::uint32_t seconds) const {
  return seconds - kFirst1970 + static_cast<std::uint32_t>(standardOffset_);
}

int Expectation::job(const JobPlan& plan, const Call& call) {
  Record job = start(292);
  base(plan, job);
  if (isBackup(plan.jobClass)) return backup(plan, call, job);
  if (isRestore(plan.jobClass)) return restore(plan, call, job);
  switch (plan.jobClass) {
    case JobClass::kVerify:
      return verify(plan, call, job);
    case JobClass::kCompare:
      return compare(plan, call, job);
    case JobClass::kMerge:
    case JobClass::kScan:
      return mergeOrScan(plan, call, job);
    default:
      return 1;
  }
}

void Expectation::base(const JobPlan& plan, Record job) {
  job.set16(4, jobTypeOf(plan.jobClass));
  job.set16(8, plan.status);
  job.set16(10, plan.scriptType);
  job.set16(48, plan.beforeJobWait);
  job.set32(256, optionsOf(plan));
  job.text(28, "pszOwner", plan.owner);
  job.text(32, "pszReportFile", plan.reportFile);
  job.text(36, "pszComments", plan.comments);
  job.text(40, "pszBeforeJob", plan.beforeJob);
  job.text(44, "pszAfterJob", plan.afterJob);
  job.text(260, "pszHost", plan.host);

  state_.newTapeTimeout = plan.newTapeTimeout;
  state_.spanTapeTimeout = plan.spanTapeTimeout;
  state_.newTapeMethod = 0;
  state_.spanTapeMethod = 0;
  state_.hasDiskPassword = false;
  state_.hasTapePassword = false;
  state_.encryption = 0;
  state_.compression = 0;
  state_.noEstimate = (optionsOf(plan) >> 20) & 1;

  if (plan.fax) {
    job.text(132, "stFax.pszHostName", plan.fax->host);
    job.text(136, "stFax.pszUserName", plan.fax->user);
    job.text(140, "stFax.pszUserPW", plan.fax->password);
    job.text(144, "stFax.pszFaxNumber", plan.fax->number);
    job.text(148, "stFax.pszCoverPageFile", plan.fax->coverPage);
    if (layout_ == PreviousLayout::kLayout)
      job.text(152, "stFax.pszReceiverName", plan.fax->receiver);
  }
  if (plan.email) {
    job.text(156, "stEMail.pszHostName", plan.email->host);
    job.text(160, "stEMail.pszUserName", plan.email->user);
    job.text(164, "stEMail.pszUserPW", plan.email->password);
    if (plan.email->isMHS) {
      job.text(168, "stEMail.pszMHSDir", plan.email->mhsDir);
      job.text(172, "stEMail.pszMHSId", plan.email->mhsId);
      job.text(176, "stEMail.pszMHSUserName", plan.email->mhsUserName);
    }
  }
  if (plan.printQueue) {
    job.text(180, "stPrintQueue.pszHostName", plan.printQueue->host);
    job.text(184, "stPrintQueue.pszUserName", plan.printQueue->user);
    job.text(188, "stPrintQueue.pszUserPW", plan.printQueue->password);
    job.text(192, "stPrintQueue.pszQueueName", plan.printQueue->queue);
  }
  if (plan.schedule) schedule(*plan.schedule, job);
}

void Expectation::schedule(const SchedulePlan& plan) { schedule(plan, start(292)); }

void Expectation::schedule(const SchedulePlan& plan, Record job) {
  job.set32(56, localTime(plan.submitTime));
  job.set32(60, localTime(plan.execTime));
  switch (plan.scheduleClass) {
    case ScheduleClass::kRegular:
      return;
    case ScheduleClass::kCustom:
      for (unsigned int i = 0; i < 4; ++i) job.set16(64 + 2 * i, plan.repeats[i]);
      job.set16(72, plan.skipWeekDay);
      return;
    case ScheduleClass::kRotation:
    case ScheduleClass::kCruise:
      break;
  }
  job.text(196, "stScheduleExt.pszSetName", plan.setName);
  if (layout_ == PreviousLayout::kLayout && plan.mask) {
    for (std::size_t i = 0; i < plan.mask->units.size() && i < 8; ++i) {
      job.set8(static_cast<std::uint32_t>(208 + i), plan.mask->units[i]->jobType);
    }
  }
  if (plan.scheduleClass == ScheduleClass::kRotation) return;
  job.set16(204, plan.method);
  job.set16(216, plan.saveMonthly);
  job.set16(218, plan.saveWeekly);
  job.set16(220, plan.saveDaily);
  job.set32(236, plan.cruiseOptions);
  job.set16(240, plan.months);
  job.set16(242, plan.copies);
}

int Expectation::backup(const JobPlan& plan, const Call& call, Record job) {
  state_.encryption = plan.encryption ? 1 : 0;
  state_.compression = plan.compression ? 1 : 0;
  state_.newTapeMethod = plan.tapeMethod;
  state_.spanTapeMethod = plan.spanMethod;
  state_.hasDiskPassword = !plan.sessionPassword.value.empty();
  state_.diskPassword = plan.sessionPassword;

  if (plan.openFile) {
    job.set32(104, plan.openFile->actions);
    job.set32(108, plan.openFile->methods);
    job.set16(112, plan.openFile->retryCount);
    job.set16(114, plan.openFile->retryInterval);
  }
  for (const auto& source : plan.sources) {
    if (!call.nodeName.empty() && call.nodeName != source->name.value) continue;
    Record node = job.grow(12, 16, "pSourceNodes", 100);
    if (source->nodeClass == NodeClass::kUnix) {
      if (!unixNode(*source, call.disks, call.unixKind, call.unixText, node)) {
        return fail("Failed to convert Unix Node");
      }
    } else if (!isDiskNode(source->nodeClass) || !diskNode(*source, call.disks, "", node)) {
      return fail("Failed to convert Node");
    }
  }
  if (!plan.destinations.empty() &&
      !tapeNode(*plan.destinations[0], "", 0, job.grow(20, 24, "pDestNodes", 100))) {
    return fail("Failed to convert Tape Node");
  }
  return jobFilters(plan, job);
}

bool Expectation::jobFilters(const JobPlan& plan, Record job) {
  for (const auto& entry : plan.filters) {
    for (std::uint32_t i = 0; i < job.get32(12); ++i) {
      Record node = job.element(16, i, 100);
      const bool converted = filter(*entry, node.grow(24, 28, "pFilters", 32));
      // A restore goes on without.
      if (!converted && !isRestore(plan.jobClass)) return fail("Failed to convert Filter");
    }
  }
  return true;
}

int Expectation::restore(const JobPlan& plan, const Call& call, Record job) {
  job.set16(52, plan.onConflict);
  state_.hasTapePassword = !plan.restorePassword.value.empty();
  state_.tapePassword = plan.restorePassword;
  if (!verify(plan, call, job)) return 0;
  for (const auto& destination : plan.destinations) {
    if (restoreNode(*destination, job.grow(20, 24, "pDestNodes", 100))) continue;
    return destination->nodeClass == NodeClass::kDBRestore
               ? fail("Failed to convert DB Restore Node")
               : fail("Failed to convert Restore Node");
  }
  return jobFilters(plan, job);
}

int Expectation::verify(const JobPlan& plan, const Call& call, Record job) {
  for (const auto& source : plan.sources) {
    Record node = job.grow(12, 16, "pSourceNodes", 100);
    if (!tapeNode(*source, call.tapeName, call.session, node)) {
      return fail("Failed to convert Tape Node");
    }
  }
  return 1;
}

int Expectation::compare(const JobPlan& plan, const Call& call, Record job) {
  if (!verify(plan, call, job)) return fail("Failed to convert Base BKQVerifyJob");
  Record node = job.grow(20, 24, "pDestNodes", 100);
  if (plan.destinations.empty() || !diskNode(*plan.destinations[0], {}, call.overridePath, node)) {
    return fail("Failed to convert Disk Node");
  }
  return 1;
}

int Expectation::mergeOrScan(const JobPlan& plan, const Call& call, Record job) {
  if (!verify(plan, call, job)) return 0;
  if (plan.jobClass == JobClass::kMerge && !plan.destinations.empty() &&
      !virtualNode(*plan.destinations[0], job.grow(20, 24, "pDestNodes", 100))) {
    return fail("Failed to convert Disk Node");
  }
  return 1;
}

int Expectation::node(const NodePlan& plan, NodeForm form, const Call& call) {
  Record node = start(100);
  switch (form) {
    case NodeForm::kVirtual:
      return virtualNode(plan, node);
    case NodeForm::kNames:
      return diskNode(plan, call.disks, "", node);
    case NodeForm::kOverride:
      return diskNode(plan, {}, call.overridePath, node);
    case NodeForm::kNamesOverride:
      return diskNode(plan, call.disks, call.overridePath, node);
    case NodeForm::kUnixLong:
      return unixNode(plan, call.disks, call.unixKind, call.unixText, node);
    case NodeForm::kTapeSelected:
      return tapeNode(plan, call.tapeName, call.session, node);
    case NodeForm::kBase:
      return baseNode(plan, node);
  }
  return 0;
}

bool Expectation::virtualNode(const NodePlan& plan, Record node) {
  if (plan.nodeClass == NodeClass::kUnix) return unixNode(plan, {}, 0, "", node);
  if (isDiskNode(plan.nodeClass)) return diskNode(plan, {}, "", node);
  if (plan.nodeClass == NodeClass::kTape) return tapeNode(plan, "", 0, node);
  return restoreNode(plan, node);
}

bool Expectation::baseNode(const NodePlan& plan, Record node) {
  const std::uint32_t kind = nodeTypeOf(plan.nodeClass);
  const bool isNDS = kind == 13;
  state_.nodeType = isNDS && layout_ == PreviousLayout::kLayout ? 6 : kind;
  node.set16(0, state_.nodeType);
  node.set16(2, nodeOSOf(plan));
  node.set16(32, deviceTypeOf(plan));
  node.set16(52, plan.beforeNodeWait);
  std::uint32_t options = optionsOf(plan);
  if (state_.noEstimate == 1) options |= 0x40;
  node.set32(56, options);

  // On UNIX machines these two may hold a second text, so a single one ends twice.
  if (kind == 3) {
    node.lastText(4, "pszNodeOSVer", plan.osVersion);
    node.lastText(8, "pszNodeName", plan.name);
  } else {
    node.text(4, "pszNodeOSVer", plan.osVersion);
    node.text(8, "pszNodeName", plan.name);
  }

  const Text& address = plan.address;
  const Text& domain = plan.domain;
  if (layout_ == PreviousLayout::kLayout) {
    node.text(12, "pszNodeAddress", isNDS ? domain : address);
  } else if (isNDS) {
    node.text(12, "pszNodeAddress", address.empty() ? domain : address);
    node.text(84, "pszNodeDomain", address);
  } else {
    node.text(12, "pszNodeAddress", address);
    node.text(84, "pszNodeDomain", domain);
  }
  node.text(16, "pszUserName", plan.userName);
  node.text(20, "pszPassword", plan.password);
  node.text(44, "pszBeforeNode", plan.beforeNode);
  node.text(48, "pszAfterNode", plan.afterNode);
  return filters(plan.filters, 24, 28, node);
}

bool Expectation::diskNode(const NodePlan& plan, const std::vector<Text>& names,
                           const Text& overridePath, Record node) {
  if (!baseNode(plan, node)) return fail("Failed to convert Base BKQNode");
  if (plan.nodeClass == NodeClass::kNDS) return true;

  List<DiskPlan> disks = plan.disks;
  for (const Text& name : plan.removedDisks) {
    for (std::size_t i = 0; i < disks.size(); ++i) {
      if (disks[i]->name.value != name) continue;
      disks.erase(disks.begin() + static_cast<std::ptrdiff_t>(i));
      break;
    }
  }
  if (names.empty()) {
    for (const auto& each : disks) {
      if (!disk(*each, overridePath, node.grow(36, 40, "pMedia", 52))) {
        return fail("Failed to convert Disk");
      }
    }
    return true;
  }
  for (const Text& name : names) {
    for (const auto& each : disks) {
      if (each->name.value != name) continue;
      if (!disk(*each, overridePath, node.grow(36, 40, "pMedia", 52))) {
        return fail("Failed to convert Disk");
      }
    }
  }
  return true;
}

bool Expectation::unixNode(const NodePlan& plan, const std::vector<Text>& names, int mode,
                           const Text& extra, Record node) {
  state_.unixOptions = plan.unixOptions;
  if (!diskNode(plan, names, "", node)) return fail("Failed to convert Base BKQDiskNode");
  if (extra.empty() || (mode != 1 && mode != 2)) return true;
  const std::uint32_t offset = mode == 1 ? 4 : 8;
  if (node.isNull(offset)) {
    node.bytes(offset, mode == 1 ? "pszNodeOSVer" : "pszNodeName", '\0' + extra + '\0');
  } else {
    node.append(offset, extra + '\0', 1);
  }
  node.set32(56, node.get32(56) | (mode == 1 ? 0x800 : 0x200));
  return true;
}

bool Expectation::tapeNode(const NodePlan& plan, const Text& name, std::uint16_t session,
                           Record node) {
  if (!baseNode(plan, node)) return fail("Failed to convert Base BKQNode");
  state_.nodeType = 3;
  node.set16(0, 3);
  for (const auto& each : plan.tapes) {
    if (!name.empty() && each->name.value != name) continue;
    if (session != 0 && each->sessionNumber.value != session) continue;
    if (!tape(*each, node.grow(36, 40, "pMedia", 72))) return false;
  }
  return true;
}

bool Expectation::restoreNode(const NodePlan& plan, Record node) {
  const bool isDatabase = plan.nodeClass == NodeClass::kDBRestore;
  if (!baseNode(plan, node)) {
    fail("Failed to convert Base BKQNode");
    return isDatabase ? fail("Failed to convert Base BKQRestoreNode") : false;
  }
  state_.nodeType = plan.actualType;
  node.set16(0, plan.actualType);
  Record disk = node.grow(36, 40, "pMedia", 52);
  disk.text(0, "pszDiskName", plan.diskName);
  Record item = disk.grow(16, 20, "pDiskItems", 32);

  const Text& name = plan.diskName;
  const Text& directory = plan.destinationDir;
  Text path = directory;
  if (!name.empty() && name[0] == '/' && name != "/") {
    path = name + directory;
  } else if (name == "/" && directory.empty()) {
    path = "/";
  } else if (!name.empty() && name[0] != '/' && directory.empty() && isDatabase) {
    path = name;
  }
  item.text(0, "pszPath", path);
  if (!isDatabase) return true;

  disk.set16(24, plan.fsType);
  disk.set32(28, plan.dbOptions);
  const std::uint32_t type = plan.fsType;
  if (type == 22 || type == 31 || (layout_ == PreviousLayout::kLayout && type == 11)) {
    joinedPassword(disk, plan.dbUser, plan.dbPassword);
  } else {
    passwordPair(disk, plan.dbUser, plan.dbPassword);
  }
  return true;
}

int Expectation::disk(const DiskPlan& plan, const Text& overridePath) {
  return disk(plan, overridePath, start(52));
}

bool Expectation::disk(const DiskPlan& plan, const Text& overridePath, Record disk) {
  state_.diskName = plan.name;
  const std::uint32_t type = plan.type;
  std::uint32_t recordType = type;
  if (type == 23) {
    recordType = 0;
  } else if (state_.nodeType == 9 && plan.name.value == "Registry") {
    recordType = 11;
  }
  disk.set16(24, recordType);
  std::uint32_t options = plan.options;
  if (state_.nodeType == 3) options |= state_.unixOptions;
  if (state_.encryption == 1) options |= 0x4000;
  if (state_.compression == 1) options |= 0x2000;
  disk.set32(28, options);
  disk.text(0, "pszDiskName", plan.name);
  disk.text(44, "pszEncryptionKey", plan.encryptionKey);
  if (!plan.password.value.empty()) {
    disk.text(4, "pszPassword", plan.password);
  } else if (state_.hasDiskPassword) {
    disk.bytes(4, "pszPassword", state_.diskPassword + '\0');
  }
  if (type == 11 || type == 22 || type == 31) {
    joinedPassword(disk, plan.user, plan.password2);
  } else {
    passwordPair(disk, plan.user, plan.password2);
  }
  for (const auto& item : plan.items) {
    if (overridePath.empty()) {
      diskItem(*item, disk.grow(16, 20, "pDiskItems", 32));
    } else if (disk.isNull(20)) {  // one for all, unless there is some already
      overriddenItem(*item, overridePath, disk.grow(16, 20, "pDiskItems", 32));
    }
  }
  return filters(plan.filters, 8, 12, disk);
}

void Expectation::diskItem(const DiskItemPlan& plan, bool hasOverride, const Text& overridePath) {
  Record item = start(32);
  if (hasOverride) {
    overriddenItem(plan, overridePath, item);
  } else {
    diskItem(plan, item);
  }
}

void Expectation::diskItem(const DiskItemPlan& plan, Record item) {
  Text path = plan.path;
  if (state_.nodeType == 3) {
    if (state_.diskName != "/") {
      path = state_.diskName + path;
    } else if (path.empty()) {
      path = "/";
    }
  }
  item.bytes(0, "pszPath", path + '\0');
  item.set32(12, optionsOf(plan));
  if (plan.files.empty()) return;
  Text names;
  for (const Text& file : plan.files) names += file + '\0';
  item.set32(4, static_cast<std::uint32_t>(plan.files.size()));
  item.bytes(8, "pFileList", names);
}

void Expectation::overriddenItem(const DiskItemPlan& plan, const Text& overridePath, Record item) {
  item.text(0, "pszPath", overridePath.empty() ? plan.path : overridePath);
  item.set32(12, optionsOf(plan));
}

int Expectation::tape(const TapePlan& plan) { return tape(plan, start(72)); }

bool Expectation::tape(const TapePlan& plan, Record tape) {
  tape.text(0, "pszDeviceGroup", plan.deviceGroup);
  tape.text(4, "pszTapeName", plan.name);
  if (layout_ == PreviousLayout::kLayout) {
    tape.set32(8, plan.id);
  } else {
    tape.set16(8, plan.id);
  }
  tape.set16(12, plan.sequence.value);
  tape.set16(14, plan.sessionNumber);
  tape.set32(16, plan.qfaBlockNumber);
  tape.set16(24, state_.newTapeMethod);
  tape.set16(26, state_.spanTapeMethod);
  tape.set16(28, state_.newTapeTimeout);
  tape.set16(30, state_.spanTapeTimeout);
  if (!plan.sessionPassword.value.empty()) {
    tape.text(20, "pszSessionPW", plan.sessionPassword);
  } else if (state_.hasTapePassword) {
    tape.bytes(20, "pszSessionPW", state_.tapePassword + '\0');
  }
  tape.set16(48, plan.fileSystem.value);
  std::uint32_t options = optionsOf(plan);
  tape.text(56, "pszPath", plan.path);
  tape.text(60, "pszLocation", plan.location);
  const bool extended = hasExtension(plan);
  if (layout_ == CurrentLayout::kLayout) {
    if (extended) tapeExtension(plan.extension.get(), tape.single(68, "pTapeX", 64));
  } else if (extended) {
    tape.set32(
        64, plan.extension ? static_cast<std::uint32_t>(plan.extension->sessionEndTime.value) : 0);
    options &= ~kExtensionBit;
  } else if (plan.sessionEndTime.value > 0) {
    tape.set32(64, static_cast<std::uint32_t>(plan.sessionEndTime.value));
  }
  tape.set32(52, options);
  for (const auto& item : plan.items) tapeItem(*item, tape.grow(40, 44, "pTapeItems", 32));
  return filters(plan.filters, 32, 36, tape);
}

void Expectation::tapeItem(const TapeItemPlan& plan) { tapeItem(plan, start(32)); }

void Expectation::tapeItem(const TapeItemPlan& plan, Record item) {
  item.set32(0, plan.chunkNumber);
  item.set16(4, plan.chunkOffset);
  item.set32(12, plan.options);
  const Text& name = plan.fileOrDir;
  if (name.empty()) return;
  item.text(8, "pszFileOrDir", name.compare(0, 2, "//") == 0 ? name : "/" + name);
}

void Expectation::tapeExtension(const TapeExtensionPlan& plan) { tapeExtension(&plan, start(64)); }

void Expectation::tapeExtension(const TapeExtensionPlan* plan, Record extension) {
  if (plan == nullptr) return;
  extension.text(0, "pszDBUser", plan->user);
  extension.text(4, "pszDBPW", plan->password);
  extension.set32(8, static_cast<std::uint32_t>(plan->sessionEndTime.value));
  extension.set32(56, plan->options);
}

bool Expectation::filters(const List<FilterPlan>& plans, std::uint32_t countOffset,
                          std::uint32_t offset, Record owner) {
  for (const auto& each : plans) {
    if (!filter(*each, owner.grow(countOffset, offset, "pFilters", 32))) {
      return fail("Failed to convert Filter");
    }
  }
  return true;
}

int Expectation::filter(const FilterPlan& plan) { return filter(plan, start(32)); }

bool Expectation::filter(const FilterPlan& plan, Record entry) {
  if (plan.filterClass == FilterClass::kFailing) return false;
  entry.set16(2, plan.kind);
  switch (plan.filterClass) {
    case FilterClass::kVolume:
      entry.set16(0, 1);
      break;
    case FilterClass::kFile:
      entry.set16(0, 2);
      break;
    case FilterClass::kDir:
      entry.set16(0, 3);
      break;
    case FilterClass::kAttribute:
      entry.set16(0, 5);
      entry.set32(4, plan.attributes);
      return true;
    default:
      entry.set16(0, 4);
      entry.set16(4, plan.timeAttribute);
      break;
  }
  switch (plan.filterClass) {
    case FilterClass::kBefore:
      entry.set16(6, 0);
      entry.set32(8, localTime(plan.time));
      return true;
    case FilterClass::kAfter:
      entry.set16(6, 1);
      entry.set32(8, localTime(plan.time));
      return true;
    case FilterClass::kBetween:
      entry.set16(6, 2);
      entry.set32(8, localTime(plan.time));
      entry.set32(12, localTime(plan.endTime));
      return true;
    case FilterClass::kWithin:
      entry.set16(6, 3);
      entry.set32(8, plan.units);
      entry.set16(16, plan.unitType);
      return true;
    case FilterClass::kForeignTime:
      entry.set16(6, plan.storedRange);
      return true;
    default:
      break;
  }
  if (plan.pattern.empty()) return true;
  entry.set32(4, 1);
  entry.set16(12, static_cast<std::uint32_t>(plan.pattern.size()) + 1);
  entry.text(8, "pszFilter", plan.pattern);
  return true;
}

}  // namespace bkoq::test
