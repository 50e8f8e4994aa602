#ifndef BKOQ_TRANSFER_JOB_STEPS_H_
#define BKOQ_TRANSFER_JOB_STEPS_H_

#include <typeinfo>

#include "transfer/flatten.h"
#include "transfer/record_time.h"

namespace bkoq {

constexpr unsigned int kJobOptionNoEstimate = 0x00100000;

template <class Layout>
int Flattening::Into<Layout>::job(BKQJob& job, void*& out) {
  auto* record = allocateRecord<typename Layout::Job>(Layout::kJob);
  if (record == nullptr) return 0;

  record->usJobType = static_cast<uint16_t>(job.jobType());
  record->usJobStatus = static_cast<uint16_t>(job.jobStatus_);
  record->usScriptType = job.scriptType_;
  record->usBeforeJobWait = job.beforeJobWait_;
  record->ulOptions = job.options_;
  storeText(record->pszOwner, job.owner_);
  storeText(record->pszReportFile, job.reportFile_);
  storeText(record->pszComments, job.comments_);
  storeText(record->pszBeforeJob, job.beforeJob_);
  storeText(record->pszAfterJob, job.afterJob_);
  storeText(record->pszHost, job.host_);

  // Nothing may survive from the last flattening. Whoever reads the passwords owns the copies, so
  // the last ones are not freed here.
  Layout::newTapeTimeout() = job.newTapeTimeout_;
  Layout::spanTapeTimeout() = job.spanTapeTimeout_;
  Layout::newTapeMethod() = 0;
  Layout::spanTapeMethod() = 0;
  Layout::diskSessionPassword() = nullptr;
  Layout::tapeSessionPassword() = nullptr;
  Layout::diskEncryption() = 0;
  Layout::diskCompression() = 0;
  Layout::nodeNoEstimate() = (job.options_ & kJobOptionNoEstimate) != 0 ? 1 : 0;

  if (job.fax_ != nullptr) {
    void* block = &record->stFax;
    if (!Layout::convertDirectly(*job.fax_, block)) return failedToConvert("FaxInfo");
  }
  if (job.email_ != nullptr) {
    void* block = &record->stEMail;
    if (!Layout::convertVirtually(*job.email_, block)) return failedToConvert("EmailInfo");
  }
  if (job.printQueue_ != nullptr) {
    void* block = &record->stPrintQueue;
    if (!Layout::convertDirectly(*job.printQueue_, block)) return failedToConvert("PrintQ");
  }
  if (job.schedule_ != nullptr) {
    void* schedBlock = &record->stSchedule;
    void* rotationBlock = &record->stScheduleExt;
    // A schedule reports for itself.
    if (!Layout::convertVirtually(*job.schedule_, schedBlock, rotationBlock)) return 0;
  }
  out = record;
  return 1;
}

template <class Layout>
void* Flattening::Into<Layout>::addNode(uint32_t& count, typename Layout::Node*& nodes) {
  return appendRecord(count, nodes, Layout::kNode);
}

template <class Layout>
void* Flattening::Into<Layout>::firstNode(typename Layout::Node*& nodes) {
  if (nodes == nullptr) nodes = allocateRecord<typename Layout::Node>(Layout::kNode);
  return nodes;
}

template <class... Classes>
bool isOneOf(const std::type_info& nodeClass) {
  return ((&nodeClass == &typeid(Classes)) || ...);
}

// The classes that a node mostly is of when it is wanted as this one. One that is missing here is
// found by the cast.
template <class Wanted>
bool isKnownAs(const std::type_info& nodeClass) {
  return isOneOf<Wanted>(nodeClass);
}
template <>
inline bool isKnownAs<BKQDiskNode>(const std::type_info& nodeClass) {
  return isOneOf<BKQWinNTNode, BKQNetwareNode, BKQMacNode, BKQOS2Node, BKQWin95Node, BKQWindowsNode,
                 BKQNDSNode, BKQFTPNode, BKQSybaseNode, BKQOracleNode, BKQInformixNode,
                 BKQSnapShotNode>(nodeClass);
}

// dynamic_cast for the nodes of one list, one after the other. Most are of the class of the one
// before, which is asked once: the cast is a fifteenth of what a node costs. Of a class that is
// known it is not asked at all: three casts are a twentieth of the instructions of a typical job.
template <class Wanted>
class ListCast {
 public:
  Wanted* operator()(BKQNode& node) {
    const std::type_info& nodeClass = typeid(node);
    if (&nodeClass != lastClass_) {
      isWanted_ = isKnownAs<Wanted>(nodeClass) || dynamic_cast<Wanted*>(&node) != nullptr;
      lastClass_ = &nodeClass;
    }
    return isWanted_ ? static_cast<Wanted*>(&node) : nullptr;
  }

 private:
  const std::type_info* lastClass_ = nullptr;
  bool isWanted_ = false;
};

template <class Layout>
int Flattening::Into<Layout>::backupJob(BKQBackupJob& job, void*& out, const char* nodeName,
                                        RWSlistCollectables& disks, int unixKind,
                                        const char* unixText) {
  const KeptTimes keptTimes;
  if (!Into::job(job, out)) return failedToConvert("Base BKQJob");
  const ArgumentText<Layout> heldName(nodeName);
  const ArgumentText<Layout> heldText(unixText);
  const Text wantedName(heldName);
  auto& record = *static_cast<typename Layout::Job*>(out);

  Layout::diskEncryption() = static_cast<unsigned int>(job.encryption_);
  Layout::diskCompression() = static_cast<unsigned int>(job.compression_);
  Layout::newTapeMethod() = job.tapeMethod_;
  Layout::spanTapeMethod() = job.spanMethod_;
  Layout::diskSessionPassword() = copyText(job.sessionPassword_);

  if (job.openFileInfo_ != nullptr) {
    void* block = &record.stOpenFile;
    if (!Layout::convertDirectly(*job.openFileInfo_, block))
      return failedToConvert("Open File Info");
  }

  if (!job.sourceNodes_.isEmpty()) moveCursorToEnd(job.sourceNodes_, job.sourceNodeCursor_);
  ListCast<BKQUnixNode> asUnixNode;
  ListCast<BKQDiskNode> asDiskNode;
  for (unsigned int i = 0; i < job.sourceNodes_.entries(); ++i) {
    auto* node = static_cast<BKQNode*>(job.sourceNodes_.at(i));
    if (!wantedName.isEmpty() && !wantedName.equals(node->nodeName_)) continue;
    void* element = addNode(record.ulNumSourceNodes, record.pSourceNodes);
    if (element == nullptr) return 0;
    // A client's own class may answer any node type: its class decides what it can be asked for.
    if (node->nodeType() == BKQNode::UnixNode) {
      auto* unixNode = asUnixNode(*node);
      if (unixNode == nullptr ||
          !Layout::convertDirectly(*unixNode, element, disks, unixKind, heldText)) {
        return failedToConvert("Unix Node");
      }
    } else {
      auto* diskNode = asDiskNode(*node);
      if (diskNode == nullptr || !Layout::convertDirectly(*diskNode, element, disks)) {
        return failedToConvert("Node");
      }
    }
  }

  if (job.destination_ != nullptr) {
    ++record.ulNumDestNodes;
    record.pDestNodes = allocateRecord<typename Layout::Node>(Layout::kNode);
    if (record.pDestNodes == nullptr) return 0;
    void* element = record.pDestNodes;
    if (!Layout::convertVirtually(*job.destination_, element)) return failedToConvert("Tape Node");
  }

  if (!job.filters_.isEmpty()) moveCursorToEnd(job.filters_, job.filterCursor_);
  for (unsigned int i = 0; i < job.filters_.entries(); ++i) {
    for (uint32_t n = 0; n < record.ulNumSourceNodes; ++n) {
      auto& node = record.pSourceNodes[n];
      if (!addFilter(node.ulFilterCount, node.pFilters, Layout::kFilter, job.filters_.at(i))) {
        return 0;
      }
    }
  }
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::tapeSources(RWSlistCollectables& sources,
                                          typename Layout::Job& record, const char* tapeName,
                                          unsigned short sessionNumber) {
  for (unsigned int i = 0; i < sources.entries(); ++i) {
    void* element = addNode(record.ulNumSourceNodes, record.pSourceNodes);
    if (element == nullptr) return 0;
    auto* node = static_cast<BKQTapeNode*>(sources.at(i));
    if (!Layout::convertDirectly(*node, element, tapeName, sessionNumber)) {
      return failedToConvert("Tape Node");
    }
  }
  return 1;
}

// The record is fresh, but its arrays may already be filled: the base step handed places inside it
// to the job's e-mail object and schedule, whose classes may be the client's. What such a class has
// put there stays, and the node is counted all the same.
template <class Layout>
int Flattening::Into<Layout>::tapeSource(BKQTapeNode* source, typename Layout::Job& record,
                                         const char* tapeName, unsigned short sessionNumber) {
  if (source == nullptr) return 1;
  ++record.ulNumSourceNodes;
  if (record.pSourceNodes != nullptr) return 1;
  void* element = firstNode(record.pSourceNodes);
  if (element == nullptr) return 0;
  if (!Layout::convertDirectly(*source, element, tapeName, sessionNumber)) {
    return failedToConvert("Tape Node");
  }
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::restoreJob(BKQRestoreJob& job, void*& out, const char* tapeName,
                                         unsigned short sessionNumber) {
  const KeptTimes keptTimes;
  if (!Into::job(job, out)) return failedToConvert("Base BKQJob");
  auto& record = *static_cast<typename Layout::Job*>(out);

  record.usOnConflict = static_cast<uint16_t>(job.onConflict_);
  Layout::tapeSessionPassword() = copyText(job.sessionPassword_);

  if (!job.sourceNodes_.isEmpty()) moveCursorToEnd(job.sourceNodes_, job.sourceNodeCursor_);
  if (!tapeSources(job.sourceNodes_, record, tapeName, sessionNumber)) return 0;

  moveCursorToEnd(job.destNodes_, job.destNodeCursor_);
  for (unsigned int i = 0; i < job.destNodes_.entries(); ++i) {
    void* element = addNode(record.ulNumDestNodes, record.pDestNodes);
    if (element == nullptr) return 0;
    auto* node = static_cast<BKQRestoreNode*>(job.destNodes_.at(i));
    const bool isDatabase = node->nodeType() == BKQNode::DBRestoreNode;
    if (!Layout::convertVirtually(*node, element)) {
      return failedToConvert(isDatabase ? "DB Restore Node" : "Restore Node");
    }
  }

  if (!job.filters_.isEmpty()) moveCursorToEnd(job.filters_, job.filterCursor_);
  for (unsigned int i = 0; i < job.filters_.entries(); ++i) {
    for (uint32_t n = 0; n < record.ulNumSourceNodes; ++n) {
      auto& node = record.pSourceNodes[n];
      void* entry = appendRecord(node.ulFilterCount, node.pFilters, Layout::kFilter);
      if (entry == nullptr) return 0;
      // The server takes a restore's filter entry as the filter left it, also after a failure.
      Layout::convertVirtually(*static_cast<BKQFilter*>(job.filters_.at(i)), entry);
    }
  }
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::verifyJob(BKQVerifyJob& job, void*& out, const char* tapeName,
                                        unsigned short sessionNumber) {
  if (!Into::job(job, out)) return 0;
  if (job.sourceNodes_.isEmpty()) return 1;
  moveCursorToEnd(job.sourceNodes_, job.sourceNodeCursor_);
  return tapeSources(job.sourceNodes_, *static_cast<typename Layout::Job*>(out), tapeName,
                     sessionNumber);
}

template <class Layout>
int Flattening::Into<Layout>::compareJob(BKQCompareJob& job, void*& out, const char* tapeName,
                                         unsigned short sessionNumber, const char* overridePath) {
  const ArgumentText<Layout> path(overridePath);
  if (!verifyJob(job, out, tapeName, sessionNumber)) return failedToConvert("Base BKQVerifyJob");
  auto& record = *static_cast<typename Layout::Job*>(out);

  // Always into the first node, also of an array that a client's class has filled.
  ++record.ulNumDestNodes;
  void* element = firstNode(record.pDestNodes);
  if (element == nullptr) return 0;
  if (job.destination_ == nullptr || !Layout::convertDirectly(*job.destination_, element, path)) {
    return failedToConvert("Disk Node");
  }
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::mergeJob(BKQMergeJob& job, void*& out, const char* tapeName,
                                       unsigned short sessionNumber) {
  if (!Into::job(job, out)) return failedToConvert("Base BKQJob");
  auto& record = *static_cast<typename Layout::Job*>(out);

  if (!tapeSource(job.source_, record, tapeName, sessionNumber)) return 0;

  if (job.destination_ == nullptr) return 1;
  ++record.ulNumDestNodes;
  if (record.pDestNodes != nullptr) return 1;  // counted, but filled: as in tapeSource()
  void* element = firstNode(record.pDestNodes);
  if (element == nullptr) return 0;
  if (!Layout::convertVirtually(*job.destination_, element)) return failedToConvert("Disk Node");
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::scanJob(BKQScanJob& job, void*& out, const char* tapeName,
                                      unsigned short sessionNumber) {
  if (!Into::job(job, out)) return failedToConvert("Base BKQJob");
  return tapeSource(job.source_, *static_cast<typename Layout::Job*>(out), tapeName, sessionNumber);
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_JOB_STEPS_H_
