// Putting objects together, taking them apart and enumerating them.

#include "tests/fuzz/session.h"

namespace bkoq::test {

// Adds something to something.
void Session::join() {
  constexpr unsigned int kMostEntries = 16;
  switch (input_.below(10)) {
    case 0: {
      auto* disk = pick(disks_);
      auto* item = pick(items_);
      if (disk == nullptr || item == nullptr || disk->diskItemEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(disk->addDiskItem(*item) == item);
      return;
    }
    case 1: {
      auto* disk = pick(disks_);
      auto* filter = pick(filters_);
      if (disk == nullptr || filter == nullptr || disk->filterEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(disk->addFilter(*filter) == filter);
      return;
    }
    case 2: {
      auto* tape = pick(tapes_);
      auto* item = pick(tapeItems_);
      if (tape == nullptr || item == nullptr || tape->tapeItemEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(tape->addTapeItem(*item) == item);
      return;
    }
    case 3: {
      auto* tape = pick(tapes_);
      auto* filter = pick(filters_);
      if (tape == nullptr || filter == nullptr || tape->filterEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(tape->addFilter(*filter) == filter);
      return;
    }
    case 4: {
      auto* node = pick(diskNodes_);
      auto* disk = pick(disks_);
      if (node == nullptr || disk == nullptr || node->diskEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(node->addDisk(*disk) == disk);
      return;
    }
    case 5: {
      auto* node = pick(tapeNodes_);
      auto* tape = pick(tapes_);
      if (node == nullptr || tape == nullptr || node->tapeEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(node->addTape(*tape) == tape);
      return;
    }
    case 6: {
      BKQNode* node = nullptr;
      switch (input_.below(3)) {
        case 0:
          node = pick(diskNodes_);
          break;
        case 1:
          node = pick(tapeNodes_);
          break;
        default:
          node = pick(restoreNodes_);
          break;
      }
      auto* filter = pick(filters_);
      if (node == nullptr || filter == nullptr || node->filterEntries() >= kMostEntries) return;
      FUZZ_REQUIRE(node->addFilter(*filter) == filter);
      return;
    }
    default:
      break;
  }
  if (jobs_.empty()) return;
  Job& job = *jobs_[input_.below(static_cast<unsigned int>(jobs_.size()))];
  auto* filter = pick(filters_);
  const bool addsFilter = input_.below(4) == 0;
  if (job.backup != nullptr) {
    if (addsFilter) {
      if (filter != nullptr && job.backup->filterEntries() < kMostEntries) {
        job.backup->addFilter(*filter);
      }
      return;
    }
    // Mostly machines; a tape node makes the conversion fail.
    BKQNode* node = pick(diskNodes_);
    if (input_.below(16) == 15) node = pick(tapeNodes_);
    if (node == nullptr || job.backup->sourceNodeEntries() >= kMostEntries) return;
    FUZZ_REQUIRE(job.backup->addSourceNode(*node) == node);
    ++uses_[node];
  } else if (job.restore != nullptr) {
    if (addsFilter) {
      if (filter != nullptr && job.restore->filterEntries() < kMostEntries) {
        job.restore->addFilter(*filter);
      }
    } else if (input_.below(2) == 0) {
      auto* node = pick(tapeNodes_);
      if (node != nullptr && job.restore->sourceNodeEntries() < kMostEntries) {
        job.restore->addSourceNode(*node);
        ++uses_[node];
      }
    } else {
      auto* node = pick(restoreNodes_);
      if (node != nullptr && job.restore->destNodeEntries() < kMostEntries) {
        job.restore->addDestNode(*node);
        ++uses_[node];
      }
    }
  } else if (job.verify != nullptr) {
    auto* node = pick(tapeNodes_);
    if (node != nullptr && job.verify->sourceNodeEntries() < kMostEntries) {
      job.verify->addSourceNode(*node);
      ++uses_[node];
    }
  }
}

void Session::takeApart() {
  if (input_.below(2) == 0) {
    auto* node = pick(diskNodes_);
    auto* disk = pick(disks_);
    if (node == nullptr || disk == nullptr) return;
    const unsigned int before = node->diskEntries();
    if (input_.below(8) == 0) {
      node->clearDisks();
      FUZZ_REQUIRE(node->diskEntries() == 0);
    } else {
      const int result = node->removeDisk(*disk);
      FUZZ_REQUIRE(result == 0 || result == -1);
      FUZZ_REQUIRE(node->diskEntries() == (result == 0 ? before - 1 : before));
    }
    return;
  }
  if (jobs_.empty()) return;
  Job& job = *jobs_[input_.below(static_cast<unsigned int>(jobs_.size()))];
  auto* pattern = pick(diskNodes_);
  if (job.backup == nullptr || pattern == nullptr || job.isCopied) return;
  // The node that will be found is deleted: it may stand in no other list.
  BKQNodeCol* nodes = nullptr;
  job.backup->resetSourceNodes();
  job.backup->enumSourceNodes(nodes, 0);
  BKQNode* found = nullptr;
  for (unsigned int i = 0; i < nodes->entries() && found == nullptr; ++i) {
    auto* node = static_cast<BKQNode*>(nodes->at(i));
    if (std::strcmp(node->getNodeName(), pattern->getNodeName()) == 0) found = node;
  }
  delete nodes;
  if (found != nullptr && uses_[found] != 1) return;
  const int result = job.backup->removeSourceNode(*pattern);
  FUZZ_REQUIRE(result == (found != nullptr ? 0 : -1));
  if (found == nullptr) return;
  uses_.erase(found);
  kept_.erase(found);
  const auto forget = [&](auto& nodes) {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (nodes[i] == found) {
        nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(i));
        return;
      }
    }
  };
  forget(diskNodes_);
  forget(tapeNodes_);
}

void Session::enumerate() {
  switch (input_.below(7)) {
    case 0:
      if (auto* disk = pick(disks_)) {
        page(*disk, &BKQDisk::resetDiskItems, &BKQDisk::enumDiskItems, disk->diskItemEntries());
        page(*disk, &BKQDisk::resetFilters, &BKQDisk::enumFilters, disk->filterEntries());
      }
      return;
    case 1:
      if (auto* tape = pick(tapes_)) {
        page(*tape, &BKQTape::resetTapeItems, &BKQTape::enumTapeItems, tape->tapeItemEntries());
        page(*tape, &BKQTape::resetFilters, &BKQTape::enumFilters, tape->filterEntries());
      }
      return;
    case 2:
      if (auto* item = pick(items_)) {
        page(*item, &BKQDiskItem::resetFiles, &BKQDiskItem::enumFiles, item->fileEntries());
      }
      return;
    case 3:
      if (auto* node = pick(diskNodes_)) {
        page(*node, &BKQDiskNode::resetDisks, &BKQDiskNode::enumDisks, node->diskEntries());
      }
      return;
    case 4:
      if (auto* node = pick(tapeNodes_)) {
        page(*node, &BKQTapeNode::resetTapes, &BKQTapeNode::enumTapes, node->tapeEntries());
      }
      return;
    default:
      break;
  }
  if (jobs_.empty()) return;
  Job& job = *jobs_[input_.below(static_cast<unsigned int>(jobs_.size()))];
  if (job.backup != nullptr) {
    page(*job.backup, &BKQBackupJob::resetSourceNodes, &BKQBackupJob::enumSourceNodes,
         job.backup->sourceNodeEntries());
    page(*job.backup, &BKQBackupJob::resetFilters, &BKQBackupJob::enumFilters,
         job.backup->filterEntries());
  } else if (job.restore != nullptr) {
    page(*job.restore, &BKQRestoreJob::resetSourceNodes, &BKQRestoreJob::enumSourceNodes,
         job.restore->sourceNodeEntries());
    page(*job.restore, &BKQRestoreJob::resetDestNodes, &BKQRestoreJob::enumDestNodes,
         job.restore->destNodeEntries());
  } else if (job.verify != nullptr) {
    page(*job.verify, &BKQVerifyJob::resetSourceNodes, &BKQVerifyJob::enumSourceNodes,
         job.verify->sourceNodeEntries());
  }
}

}  // namespace bkoq::test
