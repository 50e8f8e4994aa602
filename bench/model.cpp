#include "bench/model.h"

namespace bkoq::bench {
namespace {

// Attributes without a value are left as they are, as a client would.
template <class Object>
void set(Object& object, void (Object::*setter)(const char*), const std::string& text) {
  if (!text.empty()) (object.*setter)(text.c_str());
}

BKQFilter* newTimeFilter(const Filter& content) {
  const auto attribute = static_cast<BKQTimeFilter::BKQTimeAttrType>(content.timeAttribute);
  const RWCollectableTime start(content.bounds[0]);
  switch (content.timeRange) {
    case BKQTimeFilter::Before:
      return new BKQBeforeTimeFilter(attribute, start);
    case BKQTimeFilter::After:
      return new BKQAfterTimeFilter(attribute, start);
    default:
      return new BKQBetweenTimeFilter(attribute, start, RWCollectableTime(content.bounds[1]));
  }
}

BKQFilter* newFilter(const Filter& content) {
  const auto kind = static_cast<BKQFilter::BKQInclExclType>(content.inclExcl);
  switch (content.type) {
    case 1:
      return new BKQVolumeFilter(kind, content.pattern.c_str());
    case 2:
      return new BKQFileFilter(kind, content.pattern.c_str());
    case 3:
      return new BKQDirFilter(kind, content.pattern.c_str());
    case 5:
      return new BKQAttributeFilter(kind, content.attributes);
    default:
      return newTimeFilter(content);
  }
}

BKQDiskNode* newDiskNode(const Node& content) {
  switch (content.type) {
    case BKQNode::WinNTNode:
      return new BKQWinNTNode(content.name.c_str());
    case BKQNode::NetwareNode:
      return new BKQNetwareNode(content.name.c_str());
    default:
      auto* node = new BKQUnixNode(content.name.c_str());
      node->setUnixOptions(content.unixOptions);
      return node;
  }
}

}  // namespace

Model::Model(const Job& content) : job_(new BKQBackupJob("nightly")) {
  BKQBackupJob& job = *job_;
  job.setOwner(content.owner.c_str());
  job.setHost(content.host.c_str());
  job.setReportFile(content.reportFile.c_str());
  job.setComments(content.comments.c_str());
  job.setBeforeJob(content.beforeJob.c_str());
  job.setAfterJob(content.afterJob.c_str());
  job.setJobStatus(static_cast<BKQJob::BKQJobStatus>(content.status));
  job.setScriptType(content.scriptType);
  job.setBeforeJobWait(content.beforeJobWait);
  job.setOptions(content.options);
  job.setNewTapeTimeout(content.newTapeTimeout);
  job.setSpanTapeTimeout(content.spanTapeTimeout);
  job.setTapeMethod(static_cast<BKQBackupJob::BKQTapeMethodType>(content.newTapeMethod));
  job.setSpanMethod(static_cast<BKQBackupJob::BKQSpanMethodType>(content.spanTapeMethod));
  if (content.isEncrypted) job.setEncryptionOn();
  if (content.isCompressed) job.setCompressionOn();
  for (const Node& node : content.nodes) job.addSourceNode(makeNode(node));
  // The job adopts its destination.
  auto* destination = new BKQTapeNode(content.destination.c_str());
  for (const Tape& tape : content.tapes) destination->addTape(makeTape(tape));
  job.setDestination(*destination);
  for (const Filter& filter : content.filters) job.addFilter(makeFilter(filter));
}

Model::~Model() = default;

void* Model::flatten() {
  void* record = nullptr;
  return job_->convertToBK2(record) != 0 ? record : nullptr;
}

BKQNode& Model::makeNode(const Node& content) {
  BKQDiskNode& node = keep(newDiskNode(content));
  node.setNodeOS(content.os);
  node.setOptions(content.options);
  node.setDeviceType(content.deviceType);
  node.setBeforeNodeWait(content.beforeNodeWait);
  set<BKQNode>(node, &BKQNode::setNodeOSver, content.osVersion);
  set<BKQNode>(node, &BKQNode::setNodeDomain, content.domain);
  set<BKQNode>(node, &BKQNode::setNodeAddress, content.address);
  set<BKQNode>(node, &BKQNode::setUserName, content.user);
  set<BKQNode>(node, &BKQNode::setPassword, content.password);
  set<BKQNode>(node, &BKQNode::setBeforeNode, content.beforeNode);
  set<BKQNode>(node, &BKQNode::setAfterNode, content.afterNode);
  for (const Disk& disk : content.disks) node.addDisk(makeDisk(disk));
  for (const Filter& filter : content.filters) node.addFilter(makeFilter(filter));
  return node;
}

BKQDisk& Model::makeDisk(const Disk& content) {
  BKQDisk& disk = keep(new BKQDisk(static_cast<BKQDisk::BKQDiskType>(content.type)));
  disk.setOptions(content.options);
  set(disk, &BKQDisk::setDiskName, content.name);
  set(disk, &BKQDisk::setPassword, content.password);
  set(disk, &BKQDisk::setUser, content.user);
  set(disk, &BKQDisk::setDiskPW2, content.password2);
  set(disk, &BKQDisk::setEncryptionKey, content.encryptionKey);
  for (const DiskItem& itemContent : content.items) {
    BKQDiskItem& item = keep(new BKQDiskItem(itemContent.path.c_str()));
    for (const std::string& file : itemContent.files) item.addFile(file.c_str());
    item.setOptions(itemContent.options);
    disk.addDiskItem(item);
  }
  for (const Filter& filter : content.filters) disk.addFilter(makeFilter(filter));
  return disk;
}

BKQTape& Model::makeTape(const Tape& content) {
  BKQTape& tape = keep(new BKQTape(content.deviceGroup.c_str(), content.name.c_str()));
  set(tape, &BKQTape::setSessionPW, content.sessionPassword);
  set(tape, &BKQTape::setPath, content.path);
  set(tape, &BKQTape::setLocation, content.location);
  tape.setTapeID(content.id);
  tape.setTapeSeq(content.sequence);
  tape.setSessionNumber(content.session);
  tape.setQFABlockNumber(content.qfaBlock);
  tape.setFileSystem(content.fileSystem);
  tape.setOptions(content.options);
  for (const TapeItem& itemContent : content.items) {
    BKQTapeItem& item = keep(new BKQTapeItem(itemContent.chunk, itemContent.chunkOffset));
    item.setOptions(itemContent.options);
    item.setFileOrDir(itemContent.fileOrDir.c_str());
    tape.addTapeItem(item);
  }
  for (const Filter& filter : content.filters) tape.addFilter(makeFilter(filter));
  return tape;
}

BKQFilter& Model::makeFilter(const Filter& content) { return keep(newFilter(content)); }

}  // namespace bkoq::bench
