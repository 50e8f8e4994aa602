#ifndef BKOQ_TRANSFER_NODE_STEPS_H_
#define BKOQ_TRANSFER_NODE_STEPS_H_

#include "transfer/flatten.h"

namespace bkoq {

constexpr uint32_t kNodeOptionNoEstimate = 0x40;
constexpr uint32_t kNodeOptionExtraName = 0x200;
constexpr uint32_t kNodeOptionExtraOSVersion = 0x800;

template <class Layout>
int Flattening::Into<Layout>::node(BKQNode& node, void*& rec) {
  if (rec == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::Node*>(rec);
  const unsigned int type = node.nodeType();
  Layout::currentNodeType() = Layout::recordedNodeType(type);
  record.usNodeType = static_cast<uint16_t>(Layout::currentNodeType());
  record.usNodeOS = static_cast<uint16_t>(node.nodeOS_);
  record.usDeviceType = node.deviceType_;
  record.usBeforeNodeWait = node.beforeNodeWait_;
  record.ulNodeOptions = node.options_;

  // A UNIX machine may get a second text after either of these.
  if (type == BKQNode::UnixNode) {
    storeFirstText(record.pszNodeOSVer, node.nodeOSver_);
    storeFirstText(record.pszNodeName, node.nodeName_);
  } else {
    storeText(record.pszNodeOSVer, node.nodeOSver_);
    storeText(record.pszNodeName, node.nodeName_);
  }
  Layout::storeDomainAndAddress(record, type, node.nodeDomain_, node.nodeAddress_);
  storeText(record.pszUserName, node.userName_);
  storeText(record.pszPassword, node.password_);
  storeText(record.pszBeforeNode, node.beforeNode_);
  storeText(record.pszAfterNode, node.afterNode_);
  if (Layout::nodeNoEstimate() == 1) record.ulNodeOptions |= kNodeOptionNoEstimate;

  // The previous layout's nodes report under the current name of the record as well.
  return addOwnFilters(record.ulFilterCount, record.pFilters, "BKFILTER_FILE", node.filters_,
                       node.filterCursor_);
}

template <class Layout>
int Flattening::Into<Layout>::addDisk(BKQDisk& disk, typename Layout::Node& record,
                                      const char* overridePath) {
  auto* disks = static_cast<typename Layout::Disk*>(record.pMedia);
  void* element = appendRecord(record.ulMediaCount, disks, Layout::kDisk);
  record.pMedia = disks;
  if (element == nullptr) return 0;
  if (!Layout::convertDirectly(disk, element, overridePath)) return failedToConvert("Disk");
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::diskNode(BKQDiskNode& node, void*& rec, RWSlistCollectables& names,
                                       const char* overridePath) {
  const ArgumentText<Layout> path(overridePath);
  if (!Into::node(node, rec)) return failedToConvert("Base BKQNode");
  // An NDS tree has no disks of its own to flatten.
  if (node.disks_.isEmpty() || node.nodeType() == BKQNode::NDSNode) return 1;
  auto& record = *static_cast<typename Layout::Node*>(rec);

  moveCursorToEnd(node.disks_, node.diskCursor_);
  if (names.isEmpty()) {
    for (unsigned int i = 0; i < node.disks_.entries(); ++i) {
      if (!addDisk(*static_cast<BKQDisk*>(node.disks_.at(i)), record, path)) return 0;
    }
    return 1;
  }
  for (unsigned int n = 0; n < names.entries(); ++n) {
    const auto* name = dynamic_cast<const RWCollectableString*>(names.at(n));
    if (name == nullptr) continue;
    const RWCString held(*name);
    const Text wantedName(held);
    for (unsigned int i = 0; i < node.disks_.entries(); ++i) {
      auto* disk = static_cast<BKQDisk*>(node.disks_.at(i));
      if (wantedName.equals(disk->name_) && !addDisk(*disk, record, path)) return 0;
    }
  }
  return 1;
}

// Puts a second text after the NUL of the first; an absent first text counts as an empty one.
inline int appendSecondText(char*& field, const Text& extra, const char* fieldName) {
  const size_t firstLength = field != nullptr ? strlen(field) : 0;
  const size_t size = firstLength + 1 + extra.length + 1;
  if (field == nullptr) {
    field = static_cast<char*>(malloc(size));
    if (field == nullptr) return failedInMalloc(fieldName);
    field[0] = '\0';
  } else {
    field = static_cast<char*>(realloc(field, size));
    if (field == nullptr) return failedInRealloc(fieldName);
  }
  copyBytes(field + firstLength + 1, extra.data, extra.length + 1);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::unixNode(BKQUnixNode& node, void*& rec) {
  RWSlistCollectables allDisks;
  return unixNode(node, rec, allDisks, 0, notGiven);
}

template <class Layout>
int Flattening::Into<Layout>::unixNode(BKQUnixNode& node, void*& rec, RWSlistCollectables& names,
                                       int mode, const char* extra) {
  if (rec != nullptr) Layout::unixOptions() = node.unixOptions_;
  const ArgumentText<Layout> held(extra);
  if (!diskNode(node, rec, names, notGiven)) return failedToConvert("Base BKQDiskNode");
  const Text extraText(held);
  if (extraText.isEmpty()) return 1;
  auto& record = *static_cast<typename Layout::Node*>(rec);

  if (mode == 1) {
    if (!appendSecondText(record.pszNodeOSVer, extraText, "pszNodeOSVer")) return 0;
    record.ulNodeOptions |= kNodeOptionExtraOSVersion;
  } else if (mode == 2) {
    if (!appendSecondText(record.pszNodeName, extraText, "pszNodeName")) return 0;
    record.ulNodeOptions |= kNodeOptionExtraName;
  }
  return 1;
}

// The path of a restore destination's item; null when there is nothing to say.
inline char* restorePath(const Text& diskName, const Text& directory, bool isDatabase) {
  const Text root("/");
  const bool isAbsolute = !diskName.isEmpty() && diskName.data[0] == '/';
  if (isAbsolute && !diskName.equals(root)) return joinTexts(diskName, directory, 1);
  if (!directory.isEmpty()) return duplicate(directory);
  if (isAbsolute) return duplicate(root);
  return isDatabase ? copyText(diskName) : nullptr;
}

template <class Layout>
int Flattening::Into<Layout>::restoreNode(BKQRestoreNode& node, void*& rec) {
  if (!Into::node(node, rec)) return failedToConvert("Base BKQNode");
  auto& record = *static_cast<typename Layout::Node*>(rec);
  Layout::currentNodeType() = node.actualNodeType_;
  record.usNodeType = static_cast<uint16_t>(node.actualNodeType_);

  ++record.ulMediaCount;
  auto* disk = allocateRecord<typename Layout::Disk>(Layout::kDisk);
  record.pMedia = disk;
  if (disk == nullptr) return 0;
  storeText(disk->pszDiskName, node.diskName_);
  ++disk->ulDiskItemCount;
  disk->pDiskItems = allocateRecord<typename Layout::DiskItem>(Layout::kDiskItem);
  if (disk->pDiskItems == nullptr) return 0;
  disk->pDiskItems->pszPath =
      restorePath(node.diskName_, node.destinationDir_, node.nodeType() == BKQNode::DBRestoreNode);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::dbRestoreNode(BKQDBRestoreNode& node, void*& rec) {
  if (!restoreNode(node, rec)) return failedToConvert("Base BKQRestoreNode");
  auto* disk =
      static_cast<typename Layout::Disk*>(static_cast<typename Layout::Node*>(rec)->pMedia);
  disk->usDiskType = static_cast<uint16_t>(node.fsType_);
  disk->ulOptions = node.dbOptions_;

  const bool joined = Layout::joinsRestoreCredentials(node.fsType_);
  if (!hasCredentials(joined, node.dbUser_, node.dbPassword_)) return 1;
  disk->pszDiskPW2 = copyCredentials(joined, node.dbUser_, node.dbPassword_);
  return disk->pszDiskPW2 != nullptr ? 1 : failedInMalloc("pszDiskPW2");
}

template <class Layout>
int Flattening::Into<Layout>::tapeNode(BKQTapeNode& node, void*& rec, const char* tapeName,
                                       unsigned short sessionNumber) {
  if (!Into::node(node, rec)) return failedToConvert("Base BKQNode");
  auto& record = *static_cast<typename Layout::Node*>(rec);
  // Meant so: the server has no type for tape nodes and takes them for UNIX machines.
  Layout::currentNodeType() = BKQNode::UnixNode;
  record.usNodeType = BKQNode::UnixNode;

  const Text wantedName(tapeName);
  moveCursorToEnd(node.tapes_, node.tapeCursor_);
  for (unsigned int i = 0; i < node.tapes_.entries(); ++i) {
    auto* tape = static_cast<BKQTape*>(node.tapes_.at(i));
    if (!wantedName.isEmpty() && !wantedName.equals(tape->tapeName_)) continue;
    if (sessionNumber != 0 && sessionNumber != tape->sessionNumber_) continue;
    auto* tapes = static_cast<typename Layout::Tape*>(record.pMedia);
    void* element = appendRecord(record.ulMediaCount, tapes, Layout::kTape);
    record.pMedia = tapes;
    if (element == nullptr) return 0;
    // A tape reports for itself.
    if (!Layout::convertDirectly(*tape, element)) return 0;
  }
  return 1;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_NODE_STEPS_H_
