#include "bkoq/job.h"

#include <new>

#include "bkoq/email.h"
#include "bkoq/fax.h"
#include "bkoq/filter.h"
#include "bkoq/ofile.h"
#include "bkoq/print.h"
#include "model/clone.h"
#include "model/copy_list.h"
#include "model/enumerate.h"
#include "model/session_filter.h"

namespace {

// Fax, print queue and open-file information have no virtual destructor; a job holds objects of
// exactly these classes.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdelete-non-virtual-dtor"
template <class Object>
void deleteAttached(Object* object) {
  delete object;
}
#pragma GCC diagnostic pop

template <class Object>
Object* cloneOrNull(Object* object) {
  return object != nullptr ? object->clone() : nullptr;
}

// Puts `copy` in the place of what a job holds, which is deleted unless the source of the copy
// holds it as well.
template <class Object>
void replaceAttached(Object*& held, Object* sourceHolds, Object* copy) {
  if (held != sourceHolds) deleteAttached(held);
  held = copy;
}

}  // namespace

BKQJob::BKQJob() : BKQJob("testjob") {}

BKQJob::BKQJob(const char* name)
    : jobId_(0),
      scriptType_(0),
      reserved3_(1),
      options_(0),
      beforeJobWait_(0),
      jobName_(name),
      schedule_(nullptr),
      fax_(nullptr),
      email_(nullptr),
      printQueue_(nullptr),
      jobStatus_(static_cast<BKQJobStatus>(0)),
      reserved26_(0),
      jobNumber_(0),
      newTapeTimeout_(5),
      spanTapeTimeout_(9999),
      snmp_(0),
      ovix_(0),
      onExitCode_(0),
      reserved35_(0) {}

BKQJob::~BKQJob() {
  delete schedule_;
  deleteAttached(fax_);
  delete email_;
}

RWBoolean BKQJob::isEqual(const RWCollectable* other) const {
  return other != nullptr && static_cast<const BKQJob*>(other)->jobId_ == jobId_ ? 1 : 0;
}

BKQJob* BKQJob::clone() { return nullptr; }

unsigned int BKQJob::jobType() const { return 1; }

unsigned int BKQJob::getJobID() const { return jobId_; }

void BKQJob::setJobID(unsigned int id) { jobId_ = id; }

unsigned int BKQJob::getJobNumber() const { return jobNumber_; }

void BKQJob::setJobNumber(unsigned int number) { jobNumber_ = number; }

unsigned int BKQJob::getInstanceID() const { return jobNumber_; }

void BKQJob::setInstanceID(unsigned int id) { jobNumber_ = id; }

unsigned short BKQJob::getScriptType() const { return scriptType_; }

void BKQJob::setScriptType(unsigned short type) { scriptType_ = type; }

unsigned int BKQJob::getOptions() const { return options_; }

void BKQJob::setOptions(unsigned int options) { options_ = options; }

unsigned short BKQJob::getBeforeJobWait() const { return beforeJobWait_; }

void BKQJob::setBeforeJobWait(unsigned short wait) { beforeJobWait_ = wait; }

int BKQJob::getOnExitCode() { return onExitCode_; }

void BKQJob::setOnExitCode(int code) { onExitCode_ = code; }

unsigned short BKQJob::getNewTapeTimeout() const { return newTapeTimeout_; }

void BKQJob::setNewTapeTimeout(unsigned short timeout) { newTapeTimeout_ = timeout; }

unsigned short BKQJob::getSpanTapeTimeout() const { return spanTapeTimeout_; }

void BKQJob::setSpanTapeTimeout(unsigned short timeout) { spanTapeTimeout_ = timeout; }

const RWCollectableString& BKQJob::getJobName() const { return jobName_; }

const RWCollectableString& BKQJob::getJobVersion() const { return jobVersion_; }

void BKQJob::setJobVersion(const RWCollectableString& version) { jobVersion_ = version; }

const RWCollectableString& BKQJob::getHost() const { return host_; }

void BKQJob::setHost(const char* host) { host_ = host; }

const RWCollectableString& BKQJob::getOwner() const { return owner_; }

void BKQJob::setOwner(const char* owner) { owner_ = owner; }

const RWCollectableString& BKQJob::getPassword() const { return password_; }

void BKQJob::setPassword(const char* password) { password_ = password; }

const RWCollectableString& BKQJob::getMachineName() const { return machineName_; }

void BKQJob::setMachineName(const char* name) { machineName_ = name; }

const RWCollectableString& BKQJob::getMachineUser() const { return machineUser_; }

void BKQJob::setMachineUser(const char* user) { machineUser_ = user; }

const RWCollectableString& BKQJob::getMachinePassword() const { return machinePassword_; }

void BKQJob::setMachinePassword(const char* password) { machinePassword_ = password; }

const RWCollectableString& BKQJob::getMachineAddress() const { return machineAddress_; }

void BKQJob::setMachineAddress(const char* address) { machineAddress_ = address; }

const RWCollectableString& BKQJob::getReportFile() const { return reportFile_; }

void BKQJob::setReportFile(const char* file) { reportFile_ = file; }

const RWCollectableString& BKQJob::getComments() const { return comments_; }

void BKQJob::setComments(const char* comments) { comments_ = comments; }

const RWCollectableString& BKQJob::getBeforeJob() const { return beforeJob_; }

void BKQJob::setBeforeJob(const char* command) { beforeJob_ = command; }

const RWCollectableString& BKQJob::getAfterJob() const { return afterJob_; }

void BKQJob::setAfterJob(const char* command) { afterJob_ = command; }

const RWCollectableString& BKQJob::getFileName() const { return fileName_; }

void BKQJob::setFileName(const char* name) { fileName_ = name; }

const RWCollectableString& BKQJob::getPoolName() const { return poolName_; }

void BKQJob::setPoolName(const char* name) { poolName_ = name; }

BKQJob::BKQJobStatus BKQJob::getJobStatus() const { return jobStatus_; }

void BKQJob::setJobStatus(BKQJobStatus status) { jobStatus_ = status; }

void BKQJob::setSNMPOn() { snmp_ = 1; }

void BKQJob::setSNMPOff() { snmp_ = 0; }

int BKQJob::SNMPOn() { return snmp_; }

void BKQJob::setOvixOn() { ovix_ = 1; }

void BKQJob::setOvixOff() { ovix_ = 0; }

int BKQJob::OvixOn() { return ovix_; }

void BKQJob::setScriptUserID(RWCollectableString userID, RWCollectableString password) {
  scriptUserId_ = userID;
  scriptUserPassword_ = password;
}

void BKQJob::getScriptUserID(RWCollectableString& userID, RWCollectableString& password) {
  userID = scriptUserId_;
  password = scriptUserPassword_;
}

int BKQJob::scheduleExists() { return schedule_ != nullptr ? 1 : 0; }

void BKQJob::setSchedule(const BKQSchedule& schedule) {
  schedule_ = const_cast<BKQSchedule*>(&schedule);
}

BKQSchedule* BKQJob::getSchedule() const { return schedule_; }

int BKQJob::printQueueExists() { return printQueue_ != nullptr ? 1 : 0; }

void BKQJob::setPrintQueue(const BKQPrintQueue& queue) {
  printQueue_ = const_cast<BKQPrintQueue*>(&queue);
}

BKQPrintQueue* BKQJob::getPrintQueue() { return printQueue_; }

int BKQJob::emailInfoExists() { return email_ != nullptr ? 1 : 0; }

void BKQJob::setEMailInfo(const BKQEMail& email) { email_ = const_cast<BKQEMail*>(&email); }

BKQEMail* BKQJob::getEMailInfo() { return email_; }

int BKQJob::faxInfoExists() { return fax_ != nullptr ? 1 : 0; }

void BKQJob::setFaxInfo(const BKQFax& fax) { fax_ = const_cast<BKQFax*>(&fax); }

BKQFax* BKQJob::getFaxInfo() {
  if (fax_ == nullptr) fax_ = new (std::nothrow) BKQFax;
  return fax_;
}

void BKQJob::mycopy(BKQJob* source) {
  if (source == nullptr || source == this) return;
  BKQFax* fax = cloneOrNull(source->fax_);
  BKQEMail* email = cloneOrNull(source->email_);
  BKQPrintQueue* printQueue = cloneOrNull(source->printQueue_);
  BKQSchedule* schedule = cloneOrNull(source->schedule_);
  replaceAttached(fax_, source->fax_, fax);
  replaceAttached(email_, source->email_, email);
  replaceAttached(printQueue_, source->printQueue_, printQueue);
  replaceAttached(schedule_, source->schedule_, schedule);

  jobId_ = source->jobId_;
  scriptType_ = source->scriptType_;
  reserved3_ = source->reserved3_;
  options_ = source->options_;
  beforeJobWait_ = source->beforeJobWait_;
  host_ = source->host_;
  jobName_ = source->jobName_;
  reportFile_ = source->reportFile_;
  beforeJob_ = source->beforeJob_;
  afterJob_ = source->afterJob_;
  machineName_ = source->machineName_;
  machineUser_ = source->machineUser_;
  machinePassword_ = source->machinePassword_;
  machineAddress_ = source->machineAddress_;
  comments_ = source->comments_;
  owner_ = source->owner_;
  password_ = source->password_;
  fileName_ = source->fileName_;
  poolName_ = source->poolName_;
  jobVersion_ = source->jobVersion_;
  jobStatus_ = source->jobStatus_;
  reserved26_ = source->reserved26_;
  scriptUserId_ = source->scriptUserId_;
  scriptUserPassword_ = source->scriptUserPassword_;
  jobNumber_ = source->jobNumber_;
  newTapeTimeout_ = source->newTapeTimeout_;
  spanTapeTimeout_ = source->spanTapeTimeout_;
  snmp_ = source->snmp_;
  ovix_ = source->ovix_;
  onExitCode_ = source->onExitCode_;
  reserved35_ = source->reserved35_;
}

BKQBackupJob::BKQBackupJob() : BKQBackupJob("testjob") {}

BKQBackupJob::BKQBackupJob(const char* name)
    : BKQJob(name),
      destination_(nullptr),
      sourceNodeCursor_(0),
      openFileInfo_(nullptr),
      filterCursor_(0),
      maxThreads_(0),
      reserved8_(0),
      encryption_(0),
      compression_(0),
      tapeMethod_(static_cast<BKQTapeMethodType>(0)),
      spanMethod_(static_cast<BKQSpanMethodType>(0)) {}

BKQBackupJob::~BKQBackupJob() { delete destination_; }

BKQBackupJob* BKQBackupJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQBackupJob::jobType() const { return 1; }

RWCollectable* BKQBackupJob::addSourceNode(BKQNode& node) { return sourceNodes_.insert(&node); }

unsigned int BKQBackupJob::sourceNodeEntries() const { return sourceNodes_.entries(); }

void BKQBackupJob::resetSourceNodes() { sourceNodeCursor_ = 0; }

unsigned int BKQBackupJob::enumSourceNodes(BKQNodeCol*& out, unsigned int n) {
  return bkoq::enumerate(sourceNodes_, sourceNodeCursor_, out, n);
}

int BKQBackupJob::removeSourceNode(BKQNode& node) {
  for (unsigned int i = 0; i < sourceNodes_.entries(); ++i) {
    auto* held = static_cast<BKQNode*>(sourceNodes_.at(i));
    if (held->getNodeName() != node.getNodeName()) continue;
    const RWCollectable* found = sourceNodes_.find(held);
    if (bkoq::holdsTwice(sourceNodes_, found)) {
      sourceNodes_.remove(held);
    } else {
      if (found == destination_) destination_ = nullptr;
      sourceNodes_.removeAndDestroy(held);
    }
    return 0;
  }
  return -1;
}

void BKQBackupJob::clearSourceNodes() {
  if (bkoq::holds(sourceNodes_, destination_)) destination_ = nullptr;
  sourceNodes_.clearAndDestroy();
}

int BKQBackupJob::destinationExists() { return destination_ != nullptr ? 1 : 0; }

void BKQBackupJob::setDestination(BKQTapeNode& node) { destination_ = &node; }

BKQTapeNode* BKQBackupJob::getDestination() const { return destination_; }

int BKQBackupJob::openFileInfoExists() { return openFileInfo_ != nullptr ? 1 : 0; }

void BKQBackupJob::setOpenFileInfo(const BKQOpenFileInfo& info) {
  openFileInfo_ = const_cast<BKQOpenFileInfo*>(&info);
}

BKQOpenFileInfo* BKQBackupJob::getOpenFileInfo() {
  if (openFileInfo_ == nullptr) openFileInfo_ = new (std::nothrow) BKQOpenFileInfo;
  return openFileInfo_;
}

RWCollectable* BKQBackupJob::addFilter(BKQFilter& filter) { return filters_.insert(&filter); }

unsigned int BKQBackupJob::filterEntries() const { return filters_.entries(); }

void BKQBackupJob::resetFilters() { filterCursor_ = 0; }

unsigned int BKQBackupJob::enumFilters(BKQFilterCol*& out, unsigned int n) {
  return bkoq::enumerate(filters_, filterCursor_, out, n);
}

unsigned short BKQBackupJob::getMaxThreads() const { return maxThreads_; }

void BKQBackupJob::setMaxThreads(unsigned short threads) { maxThreads_ = threads; }

const RWCollectableString& BKQBackupJob::getSessionPassword() { return sessionPassword_; }

void BKQBackupJob::setSessionPassword(const char* password) { sessionPassword_ = password; }

void BKQBackupJob::setEncryptionOn() { encryption_ = 1; }

void BKQBackupJob::setEncryptionOff() { encryption_ = 0; }

int BKQBackupJob::encryptionOn() { return encryption_; }

void BKQBackupJob::setCompressionOn() { compression_ = 1; }

void BKQBackupJob::setCompressionOff() { compression_ = 0; }

int BKQBackupJob::compressionOn() { return compression_; }

BKQBackupJob::BKQTapeMethodType BKQBackupJob::getTapeMethod() const { return tapeMethod_; }

void BKQBackupJob::setTapeMethod(BKQTapeMethodType method) { tapeMethod_ = method; }

BKQBackupJob::BKQSpanMethodType BKQBackupJob::getSpanMethod() const { return spanMethod_; }

void BKQBackupJob::setSpanMethod(BKQSpanMethodType method) { spanMethod_ = method; }

void BKQBackupJob::mycopy(BKQBackupJob* source) {
  if (source == nullptr || source == this) return;
  // Every clone is taken before anything is deleted, those of the base job by its own copy.
  BKQTapeNode* destination = cloneOrNull(source->destination_);
  BKQOpenFileInfo* openFileInfo = cloneOrNull(source->openFileInfo_);
  const bkoq::DoubledCopy<BKQNode> nodes(source->sourceNodes_);
  const bkoq::DoubledCopy<BKQFilter> filters(source->filters_);
  BKQJob::mycopy(source);
  // A tape node may be the destination of one job and among the source nodes of the other, or both
  // in this one, where it then goes with the source nodes.
  if (bkoq::holds(source->sourceNodes_, destination_) || bkoq::holds(sourceNodes_, destination_)) {
    destination_ = nullptr;
  }
  replaceAttached(destination_, source->destination_, destination);
  replaceAttached(openFileInfo_, source->openFileInfo_, openFileInfo);
  nodes.replace(sourceNodes_, source->destination_);
  filters.replace(filters_);

  sourceNodeCursor_ = source->sourceNodeCursor_;
  filterCursor_ = source->filterCursor_;
  maxThreads_ = source->maxThreads_;
  reserved8_ = source->reserved8_;
  sessionPassword_ = source->sessionPassword_;
  encryption_ = source->encryption_;
  compression_ = source->compression_;
  tapeMethod_ = source->tapeMethod_;
  spanMethod_ = source->spanMethod_;
}

BKQCruiseBackupJob::BKQCruiseBackupJob() = default;

BKQCruiseBackupJob::BKQCruiseBackupJob(const char* name) : BKQBackupJob(name) {}

BKQCruiseBackupJob::~BKQCruiseBackupJob() = default;

BKQCruiseBackupJob* BKQCruiseBackupJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQCruiseBackupJob::jobType() const { return 3; }

void BKQCruiseBackupJob::setSchedule(const BKQCruiseSchedule& schedule) {
  BKQJob::setSchedule(schedule);
}

BKQCruiseSchedule* BKQCruiseBackupJob::getSchedule() const {
  return dynamic_cast<BKQCruiseSchedule*>(BKQJob::getSchedule());
}

void BKQCruiseBackupJob::mycopy(BKQCruiseBackupJob* source) { BKQBackupJob::mycopy(source); }

BKQRotationBackupJob::BKQRotationBackupJob() = default;

BKQRotationBackupJob::BKQRotationBackupJob(const char* name) : BKQBackupJob(name) {}

BKQRotationBackupJob::~BKQRotationBackupJob() = default;

BKQRotationBackupJob* BKQRotationBackupJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQRotationBackupJob::jobType() const { return 20; }

void BKQRotationBackupJob::setSchedule(const BKQRotationSchedule& schedule) {
  BKQJob::setSchedule(schedule);
}

BKQRotationSchedule* BKQRotationBackupJob::getSchedule() const {
  return dynamic_cast<BKQRotationSchedule*>(BKQJob::getSchedule());
}

void BKQRotationBackupJob::mycopy(BKQRotationBackupJob* source) { BKQBackupJob::mycopy(source); }

BKQCruiseMakeupJob::BKQCruiseMakeupJob() = default;

BKQCruiseMakeupJob::BKQCruiseMakeupJob(const char* name) : BKQBackupJob(name) {}

BKQCruiseMakeupJob::~BKQCruiseMakeupJob() = default;

BKQCruiseMakeupJob* BKQCruiseMakeupJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQCruiseMakeupJob::jobType() const { return 5; }

void BKQCruiseMakeupJob::setSchedule(const BKQCruiseSchedule& schedule) {
  BKQJob::setSchedule(schedule);
}

BKQCruiseSchedule* BKQCruiseMakeupJob::getSchedule() const {
  return dynamic_cast<BKQCruiseSchedule*>(BKQJob::getSchedule());
}

void BKQCruiseMakeupJob::mycopy(BKQCruiseMakeupJob* source) { BKQBackupJob::mycopy(source); }

BKQRotationMakeupJob::BKQRotationMakeupJob() = default;

BKQRotationMakeupJob::BKQRotationMakeupJob(const char* name) : BKQBackupJob(name) {}

BKQRotationMakeupJob::~BKQRotationMakeupJob() = default;

BKQRotationMakeupJob* BKQRotationMakeupJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQRotationMakeupJob::jobType() const { return 21; }

void BKQRotationMakeupJob::setSchedule(const BKQRotationSchedule& schedule) {
  BKQJob::setSchedule(schedule);
}

BKQRotationSchedule* BKQRotationMakeupJob::getSchedule() const {
  return dynamic_cast<BKQRotationSchedule*>(BKQJob::getSchedule());
}

void BKQRotationMakeupJob::mycopy(BKQRotationMakeupJob* source) { BKQBackupJob::mycopy(source); }

BKQCustomBackupJob::BKQCustomBackupJob() = default;

BKQCustomBackupJob::BKQCustomBackupJob(const char* name) : BKQBackupJob(name) {}

BKQCustomBackupJob::~BKQCustomBackupJob() = default;

BKQCustomBackupJob* BKQCustomBackupJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQCustomBackupJob::jobType() const { return 1; }

void BKQCustomBackupJob::setSchedule(const BKQCustomSchedule& schedule) {
  BKQJob::setSchedule(schedule);
}

BKQCustomSchedule* BKQCustomBackupJob::getSchedule() const {
  return dynamic_cast<BKQCustomSchedule*>(BKQJob::getSchedule());
}

void BKQCustomBackupJob::mycopy(BKQCustomBackupJob* source) { BKQBackupJob::mycopy(source); }

BKQDatabaseBackupJob::BKQDatabaseBackupJob(const char* name) : BKQBackupJob(name) {}

BKQDatabaseBackupJob::~BKQDatabaseBackupJob() = default;

BKQDatabaseBackupJob* BKQDatabaseBackupJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQDatabaseBackupJob::jobType() const { return 9; }

void BKQDatabaseBackupJob::setSchedule(const BKQRegularSchedule& schedule) {
  BKQJob::setSchedule(schedule);
}

BKQRegularSchedule* BKQDatabaseBackupJob::getSchedule() const {
  return dynamic_cast<BKQRegularSchedule*>(BKQJob::getSchedule());
}

void BKQDatabaseBackupJob::mycopy(BKQDatabaseBackupJob* source) { BKQBackupJob::mycopy(source); }

namespace {

constexpr unsigned int kRestoreOptions = 0x6200000;

}  // namespace

BKQRestoreJob::BKQRestoreJob(const char* name)
    : BKQJob(name),
      sourceNodeCursor_(0),
      destNodeCursor_(0),
      onConflict_(static_cast<BKQConflictType>(3)),
      restoreView_(static_cast<BKQRestoreViewType>(1)),
      filterCursor_(0) {
  setOptions(kRestoreOptions);
}

BKQRestoreJob::~BKQRestoreJob() = default;

BKQRestoreJob* BKQRestoreJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQRestoreJob::jobType() const { return 7; }

RWCollectable* BKQRestoreJob::addSourceNode(BKQTapeNode& node) {
  return sourceNodes_.insert(&node);
}

unsigned int BKQRestoreJob::sourceNodeEntries() const { return sourceNodes_.entries(); }

void BKQRestoreJob::resetSourceNodes() { sourceNodeCursor_ = 0; }

unsigned int BKQRestoreJob::enumSourceNodes(BKQTapeNodeCol*& out, unsigned int n) {
  return bkoq::enumerate(sourceNodes_, sourceNodeCursor_, out, n);
}

RWCollectable* BKQRestoreJob::addDestNode(BKQRestoreNode& node) { return destNodes_.insert(&node); }

unsigned int BKQRestoreJob::destNodeEntries() const { return destNodes_.entries(); }

void BKQRestoreJob::resetDestNodes() { destNodeCursor_ = 0; }

unsigned int BKQRestoreJob::enumDestNodes(BKQRestoreNodeCol*& out, unsigned int n) {
  return bkoq::enumerate(destNodes_, destNodeCursor_, out, n);
}

RWCollectable* BKQRestoreJob::addFilter(BKQFilter& filter) { return filters_.insert(&filter); }

unsigned int BKQRestoreJob::filterEntries() const { return filters_.entries(); }

void BKQRestoreJob::resetFilters() { filterCursor_ = 0; }

unsigned int BKQRestoreJob::enumFilters(BKQFilterCol*& out, unsigned int n) {
  return bkoq::enumerate(filters_, filterCursor_, out, n);
}

BKQRestoreJob::BKQConflictType BKQRestoreJob::getOnConflict() const { return onConflict_; }

void BKQRestoreJob::setOnConflict(BKQConflictType type) { onConflict_ = type; }

BKQRestoreJob::BKQRestoreViewType BKQRestoreJob::getRestoreView() const { return restoreView_; }

void BKQRestoreJob::setRestoreView(BKQRestoreViewType view) { restoreView_ = view; }

const RWCollectableString& BKQRestoreJob::getSessionPassword() const { return sessionPassword_; }

void BKQRestoreJob::setSessionPassword(const char* password) { sessionPassword_ = password; }

void BKQRestoreJob::setSchedule(const BKQRegularSchedule& schedule) {
  BKQJob::setSchedule(schedule);
}

BKQRegularSchedule* BKQRestoreJob::getSchedule() const {
  return dynamic_cast<BKQRegularSchedule*>(BKQJob::getSchedule());
}

void BKQRestoreJob::mycopy(BKQRestoreJob* source) {
  if (source == nullptr || source == this) return;
  BKQJob::mycopy(source);
  bkoq::copyCloned<BKQTapeNode>(sourceNodes_, source->sourceNodes_);
  bkoq::copyCloned<BKQRestoreNode>(destNodes_, source->destNodes_);
  bkoq::copyCloned<BKQFilter>(filters_, source->filters_);
  sourceNodeCursor_ = source->sourceNodeCursor_;
  destNodeCursor_ = source->destNodeCursor_;
  onConflict_ = source->onConflict_;
  restoreView_ = source->restoreView_;
  sessionPassword_ = source->sessionPassword_;
  filterCursor_ = source->filterCursor_;
}

BKQDatabaseRestoreJob::BKQDatabaseRestoreJob(const char* name) : BKQRestoreJob(name) {}

BKQDatabaseRestoreJob::~BKQDatabaseRestoreJob() = default;

BKQDatabaseRestoreJob* BKQDatabaseRestoreJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQDatabaseRestoreJob::jobType() const { return 10; }

void BKQDatabaseRestoreJob::mycopy(BKQDatabaseRestoreJob* source) { BKQRestoreJob::mycopy(source); }

BKQVerifyJob::BKQVerifyJob(const char* name) : BKQJob(name), sourceNodeCursor_(0) {}

BKQVerifyJob::~BKQVerifyJob() = default;

BKQVerifyJob* BKQVerifyJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQVerifyJob::jobType() const { return 29; }

RWCollectable* BKQVerifyJob::addSourceNode(BKQTapeNode& node) { return sourceNodes_.insert(&node); }

unsigned int BKQVerifyJob::sourceNodeEntries() const { return sourceNodes_.entries(); }

void BKQVerifyJob::resetSourceNodes() { sourceNodeCursor_ = 0; }

unsigned int BKQVerifyJob::enumSourceNodes(BKQTapeNodeCol*& out, unsigned int n) {
  return bkoq::enumerate(sourceNodes_, sourceNodeCursor_, out, n);
}

void BKQVerifyJob::setSchedule(const BKQRegularSchedule& schedule) {
  BKQJob::setSchedule(schedule);
}

BKQRegularSchedule* BKQVerifyJob::getSchedule() const {
  return dynamic_cast<BKQRegularSchedule*>(BKQJob::getSchedule());
}

void BKQVerifyJob::mycopy(BKQVerifyJob* source) {
  if (source == nullptr || source == this) return;
  BKQJob::mycopy(source);
  bkoq::copyCloned<BKQTapeNode>(sourceNodes_, source->sourceNodes_);
  sourceNodeCursor_ = source->sourceNodeCursor_;
}

BKQCompareJob::BKQCompareJob(const char* name) : BKQVerifyJob(name), destination_(nullptr) {}

BKQCompareJob::~BKQCompareJob() { delete destination_; }

BKQCompareJob* BKQCompareJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQCompareJob::jobType() const { return 11; }

void BKQCompareJob::setDestination(BKQDiskNode& node) { destination_ = &node; }

BKQDiskNode* BKQCompareJob::getDestination() const { return destination_; }

void BKQCompareJob::mycopy(BKQCompareJob* source) {
  if (source == nullptr || source == this) return;
  BKQVerifyJob::mycopy(source);
  replaceAttached(destination_, source->destination_, cloneOrNull(source->destination_));
}

namespace {

// Merge and scan jobs choose their sessions alike, but each has the members of it: a class between
// them and BKQJob would change both.
int takesAllSessions(unsigned short start, unsigned short end) {
  return start == 0 && end == 0 ? 1 : 0;
}

int setSessionFilter(RWCollectableString& held, const RWCollectableString& filter) {
  if (!bkoq::isSessionFilter(filter)) return 0;
  held = filter;
  return 1;
}

}  // namespace

BKQMergeJob::BKQMergeJob()
    : source_(nullptr),
      destination_(nullptr),
      rangeStart_(0),
      rangeEnd_(0),
      type_(static_cast<BKQMergeScanType>(0)),
      detailed_(0) {}

BKQMergeJob::~BKQMergeJob() {
  delete source_;
  delete destination_;
}

BKQMergeJob* BKQMergeJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQMergeJob::jobType() const { return 8; }

int BKQMergeJob::sourceExists() { return source_ != nullptr ? 1 : 0; }

void BKQMergeJob::setSource(const BKQTapeNode& node) { source_ = const_cast<BKQTapeNode*>(&node); }

BKQTapeNode* BKQMergeJob::getSource() const { return source_; }

int BKQMergeJob::destinationExists() { return destination_ != nullptr ? 1 : 0; }

void BKQMergeJob::setDestination(BKQDiskNode& node) { destination_ = &node; }

BKQDiskNode* BKQMergeJob::getDestination() const { return destination_; }

void BKQMergeJob::getMergeRange(unsigned short& start, unsigned short& end) const {
  start = rangeStart_;
  end = rangeEnd_;
}

void BKQMergeJob::setMergeRange(unsigned short start, unsigned short end) {
  rangeStart_ = start;
  rangeEnd_ = end;
}

int BKQMergeJob::mergeAll() const { return takesAllSessions(rangeStart_, rangeEnd_); }

BKQJob::BKQMergeScanType BKQMergeJob::getMergeType() const { return type_; }

void BKQMergeJob::setMergeType(BKQMergeScanType type) { type_ = type; }

const RWCollectableString& BKQMergeJob::getMergeFilter() const { return filter_; }

int BKQMergeJob::setMergeFilter(const RWCollectableString& filter) {
  return setSessionFilter(filter_, filter);
}

int BKQMergeJob::getDetailedMerge() const { return detailed_; }

void BKQMergeJob::setDetailedMerge(int detailed) { detailed_ = detailed; }

void BKQMergeJob::setSchedule(const BKQRegularSchedule& schedule) { BKQJob::setSchedule(schedule); }

BKQRegularSchedule* BKQMergeJob::getSchedule() const {
  return dynamic_cast<BKQRegularSchedule*>(BKQJob::getSchedule());
}

void BKQMergeJob::mycopy(BKQMergeJob* source) {
  if (source == nullptr || source == this) return;
  BKQJob::mycopy(source);
  replaceAttached(source_, source->source_, cloneOrNull(source->source_));
  replaceAttached(destination_, source->destination_, cloneOrNull(source->destination_));
  rangeStart_ = source->rangeStart_;
  rangeEnd_ = source->rangeEnd_;
  type_ = source->type_;
  filter_ = source->filter_;
  detailed_ = source->detailed_;
}

BKQScanJob::BKQScanJob()
    : source_(nullptr),
      rangeStart_(0),
      rangeEnd_(0),
      type_(static_cast<BKQMergeScanType>(0)),
      detailed_(0) {}

BKQScanJob::~BKQScanJob() { delete source_; }

BKQScanJob* BKQScanJob::clone() { return bkoq::makeClone(this); }

unsigned int BKQScanJob::jobType() const { return 14; }

int BKQScanJob::sourceExists() { return source_ != nullptr ? 1 : 0; }

void BKQScanJob::setSource(const BKQTapeNode& node) { source_ = const_cast<BKQTapeNode*>(&node); }

BKQTapeNode* BKQScanJob::getSource() const { return source_; }

void BKQScanJob::getScanRange(unsigned short& start, unsigned short& end) const {
  start = rangeStart_;
  end = rangeEnd_;
}

void BKQScanJob::setScanRange(unsigned short start, unsigned short end) {
  rangeStart_ = start;
  rangeEnd_ = end;
}

int BKQScanJob::scanAll() const { return takesAllSessions(rangeStart_, rangeEnd_); }

BKQJob::BKQMergeScanType BKQScanJob::getScanType() const { return type_; }

void BKQScanJob::setScanType(BKQMergeScanType type) { type_ = type; }

const RWCollectableString& BKQScanJob::getScanFilter() const { return filter_; }

int BKQScanJob::setScanFilter(const RWCollectableString& filter) {
  return setSessionFilter(filter_, filter);
}

int BKQScanJob::getDetailedScan() const { return detailed_; }

void BKQScanJob::setDetailedScan(int detailed) { detailed_ = detailed; }

void BKQScanJob::setSchedule(const BKQRegularSchedule& schedule) { BKQJob::setSchedule(schedule); }

BKQRegularSchedule* BKQScanJob::getSchedule() const {
  return dynamic_cast<BKQRegularSchedule*>(BKQJob::getSchedule());
}

void BKQScanJob::mycopy(BKQScanJob* source) {
  if (source == nullptr || source == this) return;
  BKQJob::mycopy(source);
  replaceAttached(source_, source->source_, cloneOrNull(source->source_));
  rangeStart_ = source->rangeStart_;
  rangeEnd_ = source->rangeEnd_;
  type_ = source->type_;
  filter_ = source->filter_;
  detailed_ = source->detailed_;
}
