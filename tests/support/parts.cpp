#include "tests/support/parts.h"

#include <memory>

namespace bkoq::test {
namespace {

// Everything in a list, by the enumeration that hands it out.
template <class Collection, class Owner>
std::unique_ptr<Collection> all(Owner& owner, void (Owner::*reset)(),
                                unsigned int (Owner::*enumerate)(Collection*&, unsigned int)) {
  (owner.*reset)();
  Collection* elements = nullptr;
  (owner.*enumerate)(elements, 0);
  return std::unique_ptr<Collection>(elements);
}

class Parts {
 public:
  std::set<RWCollectable*> found;

  void addAll(const RWSlistCollectables& elements) {
    for (unsigned int i = 0; i < elements.entries(); ++i) found.insert(elements.at(i));
  }

  void addDisk(BKQDisk& disk) {
    if (!found.insert(&disk).second) return;
    addAll(*all(disk, &BKQDisk::resetFilters, &BKQDisk::enumFilters));
    addAll(*all(disk, &BKQDisk::resetDiskItems, &BKQDisk::enumDiskItems));
  }

  void addTape(BKQTape& tape) {
    if (!found.insert(&tape).second) return;
    tape.resetFilters();
    BKQFilterCol* filters = nullptr;
    tape.enumFilters(filters, tape.filterEntries());
    if (tape.filterEntries() != 0) addAll(*filters);
    delete filters;
    addAll(*all(tape, &BKQTape::resetTapeItems, &BKQTape::enumTapeItems));
    if (tape.tapeXtensionExists()) found.insert(tape.getTapeXtension());
  }

  // What hangs from a node, without the node.
  void addContents(BKQNode& node) {
    addAll(*all(node, &BKQNode::resetFilters, &BKQNode::enumFilters));
    if (auto* diskNode = dynamic_cast<BKQDiskNode*>(&node)) {
      const auto disks = all(*diskNode, &BKQDiskNode::resetDisks, &BKQDiskNode::enumDisks);
      for (unsigned int i = 0; i < disks->entries(); ++i) {
        addDisk(*static_cast<BKQDisk*>(disks->at(i)));
      }
    }
    if (auto* tapeNode = dynamic_cast<BKQTapeNode*>(&node)) {
      const auto tapes = all(*tapeNode, &BKQTapeNode::resetTapes, &BKQTapeNode::enumTapes);
      for (unsigned int i = 0; i < tapes->entries(); ++i) {
        addTape(*static_cast<BKQTape*>(tapes->at(i)));
      }
    }
  }

  void addNodes(const RWSlistCollectables& nodes) {
    for (unsigned int i = 0; i < nodes.entries(); ++i) {
      found.insert(nodes.at(i));
      addContents(*static_cast<BKQNode*>(nodes.at(i)));
    }
  }

  // A node that its job deletes: only what hangs from it.
  void addAdopted(BKQNode* node) {
    if (node != nullptr) addContents(*node);
  }

  void addSchedule(BKQSchedule* schedule) {
    auto* rotation = dynamic_cast<BKQRotationSchedule*>(schedule);
    if (rotation == nullptr) return;
    addAll(*all(*rotation, &BKQRotationSchedule::resetExceptionDays,
                &BKQRotationSchedule::enumExceptionDays));
    BKQJobMask* mask = rotation->getJobMask();
    if (mask != nullptr) addAll(*all(*mask, &BKQJobMask::resetJobUnits, &BKQJobMask::enumJobUnits));
  }
};

}  // namespace

std::set<RWCollectable*> partsOf(BKQJob& job) {
  Parts parts;
  parts.addSchedule(job.getSchedule());
  if (auto* backup = dynamic_cast<BKQBackupJob*>(&job)) {
    parts.addNodes(*all(*backup, &BKQBackupJob::resetSourceNodes, &BKQBackupJob::enumSourceNodes));
    parts.addAll(*all(*backup, &BKQBackupJob::resetFilters, &BKQBackupJob::enumFilters));
    parts.addAdopted(backup->getDestination());
  } else if (auto* restore = dynamic_cast<BKQRestoreJob*>(&job)) {
    parts.addNodes(
        *all(*restore, &BKQRestoreJob::resetSourceNodes, &BKQRestoreJob::enumSourceNodes));
    parts.addNodes(*all(*restore, &BKQRestoreJob::resetDestNodes, &BKQRestoreJob::enumDestNodes));
    parts.addAll(*all(*restore, &BKQRestoreJob::resetFilters, &BKQRestoreJob::enumFilters));
  } else if (auto* verify = dynamic_cast<BKQVerifyJob*>(&job)) {
    parts.addNodes(*all(*verify, &BKQVerifyJob::resetSourceNodes, &BKQVerifyJob::enumSourceNodes));
    auto* compare = dynamic_cast<BKQCompareJob*>(&job);
    if (compare != nullptr) parts.addAdopted(compare->getDestination());
  } else if (auto* merge = dynamic_cast<BKQMergeJob*>(&job)) {
    parts.addAdopted(merge->getSource());
    parts.addAdopted(merge->getDestination());
  } else if (auto* scan = dynamic_cast<BKQScanJob*>(&job)) {
    parts.addAdopted(scan->getSource());
  }
  return parts.found;
}

void deleteClone(BKQJob* clone, BKQJob& source) {
  const std::set<RWCollectable*> shared = partsOf(source);
  const std::set<RWCollectable*> parts = partsOf(*clone);
  const std::unique_ptr<BKQPrintQueue> printQueue(clone->getPrintQueue());
  std::unique_ptr<BKQOpenFileInfo> openFileInfo;
  auto* backup = dynamic_cast<BKQBackupJob*>(clone);
  if (backup != nullptr && backup->openFileInfoExists()) {
    openFileInfo.reset(backup->getOpenFileInfo());
  }
  delete clone;
  for (RWCollectable* part : parts) {
    if (shared.count(part) == 0) delete part;
  }
}

}  // namespace bkoq::test
