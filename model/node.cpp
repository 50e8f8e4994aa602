#include "bkoq/node.h"

#include "bkoq/filter.h"
#include "bkoq/tape.h"
#include "model/clone.h"
#include "model/copy_list.h"
#include "model/enumerate.h"

BKQNode::BKQNode() : BKQNode("localhost") {}

BKQNode::BKQNode(const char* name)
    : nodeOS_(0),
      nodeName_(name),
      priority_(255),
      storedNodeType_(0),
      options_(0),
      deviceType_(0),
      beforeNodeWait_(0),
      filterCursor_(0) {}

BKQNode::~BKQNode() = default;

BKQNode* BKQNode::clone() { return nullptr; }

const RWCollectableString& BKQNode::getBeforeNode() const { return beforeNode_; }

void BKQNode::setBeforeNode(const char* name) { beforeNode_ = name; }

const RWCollectableString& BKQNode::getAfterNode() const { return afterNode_; }

void BKQNode::setAfterNode(const char* name) { afterNode_ = name; }

unsigned int BKQNode::getNodeOS() const { return nodeOS_; }

void BKQNode::setNodeOS(unsigned int os) { nodeOS_ = os; }

const RWCollectableString& BKQNode::getNodeOSver() const { return nodeOSver_; }

void BKQNode::setNodeOSver(const char* version) { nodeOSver_ = version; }

const RWCollectableString& BKQNode::getNodeName() const { return nodeName_; }

void BKQNode::setNodeName(const char* name) { nodeName_ = name; }

const RWCollectableString& BKQNode::getNodeAddress() const { return nodeAddress_; }

void BKQNode::setNodeAddress(const char* address) { nodeAddress_ = address; }

const RWCollectableString& BKQNode::getNodeDomain() const { return nodeDomain_; }

void BKQNode::setNodeDomain(const char* domain) { nodeDomain_ = domain; }

const RWCollectableString& BKQNode::getUserName() const { return userName_; }

void BKQNode::setUserName(const char* name) { userName_ = name; }

const RWCollectableString& BKQNode::getPassword() const { return password_; }

void BKQNode::setPassword(const char* password) { password_ = password; }

unsigned short BKQNode::getPriority() const { return priority_; }

void BKQNode::setPriority(unsigned short priority) { priority_ = priority; }

unsigned int BKQNode::getNodeType() const { return storedNodeType_; }

void BKQNode::setNodeType(unsigned int type) { storedNodeType_ = type; }

unsigned int BKQNode::getOptions() const { return options_; }

void BKQNode::setOptions(unsigned int options) { options_ = options; }

unsigned short BKQNode::getDeviceType() const { return deviceType_; }

void BKQNode::setDeviceType(unsigned short type) { deviceType_ = type; }

unsigned short BKQNode::getBeforeNodeWait() const { return beforeNodeWait_; }

void BKQNode::setBeforeNodeWait(unsigned short wait) { beforeNodeWait_ = wait; }

RWCollectable* BKQNode::addFilter(BKQFilter& filter) { return filters_.insert(&filter); }

unsigned int BKQNode::filterEntries() const { return filters_.entries(); }

void BKQNode::resetFilters() { filterCursor_ = 0; }

unsigned int BKQNode::enumFilters(BKQFilterCol*& out, unsigned int n) {
  return bkoq::enumerate(filters_, filterCursor_, out, n);
}

void BKQNode::copyAttributes(const BKQNode& source) {
  beforeNode_ = source.beforeNode_;
  afterNode_ = source.afterNode_;
  nodeOS_ = source.nodeOS_;
  nodeOSver_ = source.nodeOSver_;
  nodeName_ = source.nodeName_;
  nodeAddress_ = source.nodeAddress_;
  nodeDomain_ = source.nodeDomain_;
  userName_ = source.userName_;
  password_ = source.password_;
  priority_ = source.priority_;
  storedNodeType_ = source.storedNodeType_;
  options_ = source.options_;
  deviceType_ = source.deviceType_;
  beforeNodeWait_ = source.beforeNodeWait_;
  filterCursor_ = source.filterCursor_;
}

void BKQNode::copyAttributesAndFilters(const BKQNode& source) {
  copyAttributes(source);
  filters_ = source.filters_;
}

void BKQNode::mycopy(BKQNode* source) {
  if (source == nullptr || source == this) return;
  copyAttributes(*source);
  bkoq::copyCloned<BKQFilter>(filters_, source->filters_);
}

namespace {

constexpr unsigned int kDiskNodeOptions = 0x120;
constexpr unsigned short kNoPriority = 255;

}  // namespace

BKQDiskNode::BKQDiskNode() : BKQDiskNode("localhost") {}

BKQDiskNode::BKQDiskNode(const char* name) : BKQNode(name), diskCursor_(0), groom_(nullptr) {
  setOptions(kDiskNodeOptions);
}

BKQDiskNode::~BKQDiskNode() = default;

BKQDiskNode* BKQDiskNode::clone() { return nullptr; }

int BKQDiskNode::compareTo(const RWCollectable* other) const {
  if (other == nullptr) return -1;
  const unsigned short theirs = static_cast<const BKQDiskNode*>(other)->getPriority();
  if (theirs == kNoPriority) return -1;
  const auto left = static_cast<short>(getPriority());
  const auto right = static_cast<short>(theirs);
  return left == right ? 0 : left > right ? 1 : -1;
}

RWCollectable* BKQDiskNode::addDisk(BKQDisk& disk) { return disks_.insert(&disk); }

unsigned int BKQDiskNode::diskEntries() const { return disks_.entries(); }

void BKQDiskNode::resetDisks() { diskCursor_ = 0; }

unsigned int BKQDiskNode::enumDisks(BKQDiskCol*& out, unsigned int n) {
  return bkoq::enumerate(disks_, diskCursor_, out, n);
}

int BKQDiskNode::removeDisk(BKQDisk& disk) {
  for (unsigned int i = 0; i < disks_.entries(); ++i) {
    auto* held = static_cast<BKQDisk*>(disks_.at(i));
    if (held->getDiskName() == disk.getDiskName()) {
      disks_.remove(held);
      return 0;
    }
  }
  return -1;
}

void BKQDiskNode::clearDisks() { disks_.clear(); }

void BKQDiskNode::setGroomInfo(BKQGroom& groom) { groom_ = &groom; }

BKQGroom* BKQDiskNode::getGroomInfo() const { return groom_; }

int BKQDiskNode::groomInfoExists() { return groom_ != nullptr ? 1 : 0; }

void BKQDiskNode::mycopy(BKQDiskNode* source) {
  if (source == nullptr || source == this) return;
  copyAttributesAndFilters(*source);
  diskCursor_ = source->diskCursor_;
  groom_ = source->groom_;
  bkoq::copySharedAndCloned<BKQDisk>(disks_, source->disks_);
}

BKQMacNode::BKQMacNode(const char* name) : BKQDiskNode(name) { setNodeOS(7); }

BKQMacNode::~BKQMacNode() = default;

BKQMacNode* BKQMacNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQMacNode::nodeType() const { return MacNode; }

void BKQMacNode::mycopy(BKQMacNode* source) { BKQDiskNode::mycopy(source); }

BKQUnixNode::BKQUnixNode(const char* name) : BKQDiskNode(name), unixOptions_(0) { setNodeOS(6); }

BKQUnixNode::~BKQUnixNode() = default;

BKQUnixNode* BKQUnixNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQUnixNode::nodeType() const { return UnixNode; }

unsigned int BKQUnixNode::getUnixOptions() const { return unixOptions_; }

void BKQUnixNode::setUnixOptions(unsigned int options) { unixOptions_ = options; }

void BKQUnixNode::mycopy(BKQUnixNode* source) {
  if (source == nullptr || source == this) return;
  BKQDiskNode::mycopy(source);
  unixOptions_ = source->unixOptions_;
}

BKQNetwareNode::BKQNetwareNode(const char* name) : BKQDiskNode(name), value_(0) { setNodeOS(4); }

BKQNetwareNode::~BKQNetwareNode() = default;

BKQNetwareNode* BKQNetwareNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQNetwareNode::nodeType() const { return NetwareNode; }

void BKQNetwareNode::mycopy(BKQNetwareNode* source) {
  if (source == nullptr || source == this) return;
  BKQDiskNode::mycopy(source);
  list_ = source->list_;
  value_ = source->value_;
}

BKQWinNTNode::BKQWinNTNode(const char* name) : BKQDiskNode(name) { setNodeOS(8); }

BKQWinNTNode::~BKQWinNTNode() = default;

BKQWinNTNode* BKQWinNTNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQWinNTNode::nodeType() const { return WinNTNode; }

void BKQWinNTNode::mycopy(BKQWinNTNode* source) { BKQDiskNode::mycopy(source); }

BKQOS2Node::BKQOS2Node(const char* name) : BKQDiskNode(name) { setNodeOS(2); }

BKQOS2Node::~BKQOS2Node() = default;

BKQOS2Node* BKQOS2Node::clone() { return bkoq::makeClone(this); }

unsigned int BKQOS2Node::nodeType() const { return OS2Node; }

void BKQOS2Node::mycopy(BKQOS2Node* source) { BKQDiskNode::mycopy(source); }

BKQWin95Node::BKQWin95Node(const char* name) : BKQDiskNode(name) { setNodeOS(5); }

BKQWin95Node::~BKQWin95Node() = default;

BKQWin95Node* BKQWin95Node::clone() { return bkoq::makeClone(this); }

unsigned int BKQWin95Node::nodeType() const { return Win95Node; }

void BKQWin95Node::mycopy(BKQWin95Node* source) { BKQDiskNode::mycopy(source); }

BKQWindowsNode::BKQWindowsNode(const char* name) : BKQDiskNode(name) { setNodeOS(5); }

BKQWindowsNode::~BKQWindowsNode() = default;

BKQWindowsNode* BKQWindowsNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQWindowsNode::nodeType() const { return WindowsNode; }

void BKQWindowsNode::mycopy(BKQWindowsNode* source) { BKQDiskNode::mycopy(source); }

BKQNDSNode::BKQNDSNode(const char* name) : BKQDiskNode(name) { setNodeOS(4); }

BKQNDSNode::~BKQNDSNode() = default;

BKQNDSNode* BKQNDSNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQNDSNode::nodeType() const { return NDSNode; }

void BKQNDSNode::mycopy(BKQNDSNode* source) { BKQDiskNode::mycopy(source); }

BKQFTPNode::BKQFTPNode(const char* name) : BKQDiskNode(name) { setNodeOS(6); }

BKQFTPNode::~BKQFTPNode() = default;

BKQFTPNode* BKQFTPNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQFTPNode::nodeType() const { return FTPNode; }

void BKQFTPNode::mycopy(BKQFTPNode* source) { BKQDiskNode::mycopy(source); }

BKQSybaseNode::BKQSybaseNode(const char* name)
    : BKQDiskNode(name), sybaseOptions_(static_cast<BKQSybaseNodeOptions>(0)) {
  setNodeOS(6);
}

BKQSybaseNode::~BKQSybaseNode() = default;

BKQSybaseNode* BKQSybaseNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQSybaseNode::nodeType() const { return SybaseNode; }

BKQSybaseNode::BKQSybaseNodeOptions BKQSybaseNode::getSybaseOptions() const {
  return sybaseOptions_;
}

void BKQSybaseNode::setSybaseOptions(BKQSybaseNodeOptions options) { sybaseOptions_ = options; }

const RWCollectableString& BKQSybaseNode::getEncryptKey() const { return encryptKey_; }

void BKQSybaseNode::setEncryptKey(const char* key) { encryptKey_ = key; }

const RWCollectableString& BKQSybaseNode::getDumpFile() const { return dumpFile_; }

void BKQSybaseNode::setDumpFile(const char* file) { dumpFile_ = file; }

void BKQSybaseNode::mycopy(BKQSybaseNode* source) {
  if (source == nullptr || source == this) return;
  BKQDiskNode::mycopy(source);
  sybaseOptions_ = source->sybaseOptions_;
  encryptKey_ = source->encryptKey_;
  dumpFile_ = source->dumpFile_;
  for (int i = 0; i < 3; ++i) lists_[i] = source->lists_[i];
}

BKQOracleNode::BKQOracleNode(const char* name)
    : BKQDiskNode(name), oracleOptions_(static_cast<BKQOracleNodeOptions>(0)) {
  setNodeOS(6);
}

BKQOracleNode::~BKQOracleNode() = default;

BKQOracleNode* BKQOracleNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQOracleNode::nodeType() const { return OracleNode; }

BKQOracleNode::BKQOracleNodeOptions BKQOracleNode::getOracleOptions() const {
  return oracleOptions_;
}

void BKQOracleNode::setOracleOptions(BKQOracleNodeOptions options) { oracleOptions_ = options; }

void BKQOracleNode::mycopy(BKQOracleNode* source) {
  if (source == nullptr || source == this) return;
  BKQDiskNode::mycopy(source);
  oracleOptions_ = source->oracleOptions_;
}

BKQInformixNode::BKQInformixNode(const char* name)
    : BKQDiskNode(name), informixOptions_(static_cast<BKQInformixNodeOptions>(0)) {
  setNodeOS(6);
}

BKQInformixNode::~BKQInformixNode() = default;

BKQInformixNode* BKQInformixNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQInformixNode::nodeType() const { return InformixNode; }

BKQInformixNode::BKQInformixNodeOptions BKQInformixNode::getInformixOptions() const {
  return informixOptions_;
}

void BKQInformixNode::setInformixOptions(BKQInformixNodeOptions options) {
  informixOptions_ = options;
}

void BKQInformixNode::mycopy(BKQInformixNode* source) {
  if (source == nullptr || source == this) return;
  BKQDiskNode::mycopy(source);
  informixOptions_ = source->informixOptions_;
}

BKQSnapShotNode::BKQSnapShotNode(const char* name)
    : BKQDiskNode(name), snapShotOptions_(static_cast<BKQSnapShotOptions>(0)) {
  setNodeOS(6);
}

BKQSnapShotNode::~BKQSnapShotNode() = default;

BKQSnapShotNode* BKQSnapShotNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQSnapShotNode::nodeType() const { return SnapShotNode; }

BKQSnapShotNode::BKQSnapShotOptions BKQSnapShotNode::getSnapShotOptions() const {
  return snapShotOptions_;
}

void BKQSnapShotNode::setSnapShotOptions(BKQSnapShotOptions options) { snapShotOptions_ = options; }

void BKQSnapShotNode::mycopy(BKQSnapShotNode* source) {
  if (source == nullptr || source == this) return;
  BKQDiskNode::mycopy(source);
  snapShotOptions_ = source->snapShotOptions_;
}

BKQTapeNode::BKQTapeNode() : BKQTapeNode("localhost") {}

BKQTapeNode::BKQTapeNode(const char* name) : BKQNode(name), tapeCursor_(0) {
  setDeviceType(1);
  setNodeOS(6);
}

BKQTapeNode::~BKQTapeNode() = default;

BKQTapeNode* BKQTapeNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQTapeNode::nodeType() const { return TapeNode; }

RWCollectable* BKQTapeNode::addTape(BKQTape& tape) { return tapes_.insert(&tape); }

unsigned int BKQTapeNode::tapeEntries() const { return tapes_.entries(); }

void BKQTapeNode::resetTapes() { tapeCursor_ = 0; }

unsigned int BKQTapeNode::enumTapes(BKQTapeCol*& out, unsigned int n) {
  return bkoq::enumerate(tapes_, tapeCursor_, out, n);
}

void BKQTapeNode::mycopy(BKQTapeNode* source) {
  if (source == nullptr || source == this) return;
  copyAttributesAndFilters(*source);
  tapeCursor_ = source->tapeCursor_;
  bkoq::copySharedAndCloned<BKQTape>(tapes_, source->tapes_);
}

BKQRestoreNode::BKQRestoreNode() : BKQRestoreNode("localhost") {}

BKQRestoreNode::BKQRestoreNode(const char* name) : BKQRestoreNode(name, "") {}

BKQRestoreNode::BKQRestoreNode(const char* name, const char* diskName)
    : BKQNode(name), actualNodeType_(static_cast<BKQNodeType>(0)), diskName_(diskName) {
  setNodeOS(6);
}

BKQRestoreNode::~BKQRestoreNode() = default;

BKQRestoreNode* BKQRestoreNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQRestoreNode::nodeType() const { return RestoreNode; }

BKQNode::BKQNodeType BKQRestoreNode::getActualNodeType() const { return actualNodeType_; }

void BKQRestoreNode::setActualNodeType(BKQNodeType type) {
  actualNodeType_ = type;
  switch (type) {
    case MacNode:
      setNodeOS(7);
      break;
    case NetwareNode:
    case NDSNode:
      setNodeOS(4);
      break;
    case WinNTNode:
      setNodeOS(8);
      break;
    case OS2Node:
      setNodeOS(2);
      break;
    case Win95Node:
    case WindowsNode:
      setNodeOS(5);
      break;
    default:
      setNodeOS(6);
      break;
  }
}

const RWCollectableString& BKQRestoreNode::getDestinationDir() const { return destinationDir_; }

void BKQRestoreNode::setDestinationDir(const char* directory) { destinationDir_ = directory; }

const RWCollectableString& BKQRestoreNode::getDiskName() const { return diskName_; }

void BKQRestoreNode::setDiskName(const char* name) { diskName_ = name; }

void BKQRestoreNode::mycopy(BKQRestoreNode* source) {
  if (source == nullptr || source == this) return;
  copyAttributesAndFilters(*source);
  actualNodeType_ = source->actualNodeType_;
  destinationDir_ = source->destinationDir_;
  diskName_ = source->diskName_;
}

BKQDBRestoreNode::BKQDBRestoreNode() : BKQDBRestoreNode("localhost") {}

BKQDBRestoreNode::BKQDBRestoreNode(const char* name) : BKQDBRestoreNode(name, "") {}

BKQDBRestoreNode::BKQDBRestoreNode(const char* name, const char* diskName)
    : BKQRestoreNode(name, diskName),
      fsType_(static_cast<BKQDisk::BKQDiskType>(0)),
      dbOptions_(0) {}

BKQDBRestoreNode::~BKQDBRestoreNode() = default;

BKQDBRestoreNode* BKQDBRestoreNode::clone() { return bkoq::makeClone(this); }

unsigned int BKQDBRestoreNode::nodeType() const { return DBRestoreNode; }

void BKQDBRestoreNode::getDBuser(RWCollectableString& user, RWCollectableString& password) const {
  user = dbUser_;
  password = dbPassword_;
}

void BKQDBRestoreNode::setDBuser(const RWCollectableString& user,
                                 const RWCollectableString& password) {
  dbUser_ = user;
  dbPassword_ = password;
}

BKQDisk::BKQDiskType BKQDBRestoreNode::getFStype() const { return fsType_; }

void BKQDBRestoreNode::setFStype(BKQDisk::BKQDiskType type) { fsType_ = type; }

unsigned int BKQDBRestoreNode::getOptions() const { return dbOptions_; }

void BKQDBRestoreNode::setOptions(unsigned int options) { dbOptions_ = options; }

void BKQDBRestoreNode::mycopy(BKQDBRestoreNode* source) {
  if (source == nullptr || source == this) return;
  BKQRestoreNode::mycopy(source);
  dbUser_ = source->dbUser_;
  dbPassword_ = source->dbPassword_;
  fsType_ = source->fsType_;
  dbOptions_ = source->dbOptions_;
}
