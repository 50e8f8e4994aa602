// Making objects and setting their attributes.

#include <iterator>

#include "tests/fuzz/session.h"

namespace bkoq::test {

void Session::makeFilter() {
  if (filters_.size() >= kMostObjects) return;
  const auto kind = static_cast<BKQFilter::BKQInclExclType>(input_.below(3));
  const auto attribute = static_cast<BKQTimeFilter::BKQTimeAttrType>(input_.number());
  switch (input_.below(8)) {
    case 0:
      return add<BKQFilter>(filters_, new BKQDirFilter(kind, input_.text().c_str()));
    case 1:
      return add<BKQFilter>(filters_, new BKQFileFilter(kind, input_.text().c_str()));
    case 2:
      return add<BKQFilter>(filters_, new BKQVolumeFilter(kind, input_.text().c_str()));
    case 3:
      return add<BKQFilter>(filters_, new BKQAttributeFilter(kind, input_.number()));
    case 4:
      return add<BKQFilter>(filters_, new BKQWithinTimeFilter(attribute));
    case 5:
      return add<BKQFilter>(filters_, new BKQBeforeTimeFilter(attribute, time()));
    case 6:
      return add<BKQFilter>(filters_, new BKQAfterTimeFilter(attribute, time()));
    default:
      return add<BKQFilter>(filters_, new BKQBetweenTimeFilter(attribute, time(), time()));
  }
}

void Session::makeNode() {
  const unsigned int kind = input_.below(20);
  const std::string text = input_.text();
  const char* name = text.c_str();
  if (kind >= 16) {
    if (tapeNodes_.size() < kMostObjects) add(tapeNodes_, new BKQTapeNode(name));
    return;
  }
  if (kind >= 13) {
    if (restoreNodes_.size() >= kMostObjects) return;
    const std::string disk = input_.text();
    BKQRestoreNode* node = kind == 13 ? new BKQRestoreNode(name, disk.c_str())
                                      : new BKQDBRestoreNode(name, disk.c_str());
    add(restoreNodes_, node);
    node->setActualNodeType(static_cast<BKQNode::BKQNodeType>(input_.number()));
    return;
  }
  if (diskNodes_.size() >= kMostObjects) return;
  auto* node = static_cast<BKQDiskNode*>(kNodeKinds[kind % kDiskNodeKinds].make(name));
  if (auto* unixNode = dynamic_cast<BKQUnixNode*>(node)) {
    unixNode->setUnixOptions(input_.number());
  }
  add(diskNodes_, node);
}

void Session::addJob(BKQJob* job) {
  auto entry = std::make_unique<Job>();
  entry->job = job;
  entry->backup = dynamic_cast<BKQBackupJob*>(job);
  entry->restore = dynamic_cast<BKQRestoreJob*>(job);
  entry->verify = dynamic_cast<BKQVerifyJob*>(job);
  entry->compare = dynamic_cast<BKQCompareJob*>(job);
  entry->merge = dynamic_cast<BKQMergeJob*>(job);
  entry->scan = dynamic_cast<BKQScanJob*>(job);
  jobs_.push_back(std::move(entry));
}

void Session::makeJob() {
  if (jobs_.size() >= 4) return;
  const std::string text = input_.text();
  addJob(kJobKinds[input_.below(std::size(kJobKinds))].make(text.c_str()));
}

void Session::setAttribute() {
  switch (input_.below(9)) {
    case 0:
      if (auto* disk = pick(disks_)) {
        set<DiskPlan>(*disk, [](auto& plan, auto& visit) { eachOfDisk(plan, visit); });
      }
      return;
    case 1:
      if (auto* tape = pick(tapes_)) {
        if (input_.below(4) == 0) {
          const bool had = tape->tapeXtensionExists() != 0;
          tape->setOptions(input_.below(2) == 0 ? 0x8000000 : input_.number());
          if (!had && tape->tapeXtensionExists() != 0) kept_.insert(tape->getTapeXtension());
          return;
        }
        set<TapePlan>(*tape, [](auto& plan, auto& visit) { eachOfTape(plan, visit); });
      }
      return;
    case 2:
      if (auto* item = pick(tapeItems_)) {
        set<TapeItemPlan>(*item, [](auto& plan, auto& visit) { eachOfTapeItem(plan, visit); });
      }
      return;
    case 3:
      if (auto* item = pick(items_)) {
        const std::string text = input_.text();
        switch (input_.below(3)) {
          case 0:
            if (item->fileEntries() < 64) item->addFile(text.c_str());
            FUZZ_REQUIRE(item->getOptions() == 0 || item->fileEntries() == 64);
            return;
          case 1:
            return item->setPath(text.c_str());
          default:
            return item->setOptions(input_.number());
        }
      }
      return;
    case 4:
      if (auto* node = pick(diskNodes_)) {
        set<NodePlan>(*node, [](auto& plan, auto& visit) { eachOfNode(plan, visit); });
      }
      return;
    case 5:
      if (auto* node = pick(tapeNodes_)) {
        set<NodePlan>(*node, [](auto& plan, auto& visit) { eachOfNode(plan, visit); });
      }
      return;
    case 6:
      if (auto* node = pick(restoreNodes_)) {
        auto* database = dynamic_cast<BKQDBRestoreNode*>(node);
        if (database != nullptr && input_.below(2) == 0) {
          database->setFStype(static_cast<BKQDisk::BKQDiskType>(input_.number()));
          database->setDBuser(input_.text().c_str(), input_.text().c_str());
          return;
        }
        if (input_.below(2) == 0) return node->setDestinationDir(input_.text().c_str());
        set<NodePlan>(*node, [](auto& plan, auto& visit) { eachOfNode(plan, visit); });
      }
      return;
    default:
      break;
  }
  if (jobs_.empty()) return;
  Job& job = *jobs_[input_.below(static_cast<unsigned int>(jobs_.size()))];
  const unsigned int part = input_.below(3);
  if (part == 0 && job.backup != nullptr) {
    set<JobPlan>(*job.backup, [](auto& plan, auto& visit) { eachOfBackup(plan, visit); });
    if (input_.below(2) == 0) job.backup->setEncryptionOn();
    if (input_.below(2) == 0) job.backup->setCompressionOn();
  } else if (part == 0 && job.restore != nullptr) {
    set<JobPlan>(*job.restore, [](auto& plan, auto& visit) { eachOfRestore(plan, visit); });
  } else if (part == 0 && job.merge != nullptr) {
    const std::string before(job.merge->getMergeFilter().data());
    const std::string text = input_.text();
    const int accepted = job.merge->setMergeFilter(text.c_str());
    FUZZ_REQUIRE((accepted != 0 ? text : before) == job.merge->getMergeFilter().data());
  } else if (part == 1) {
    job.job->setOptions(input_.number() << 20);
  } else {
    set<JobPlan>(*job.job, [](auto& plan, auto& visit) { eachOfJob(plan, visit); });
  }
}

void Session::makeSchedule(Job& job) {
  BKQSchedule* schedule = nullptr;
  switch (input_.below(4)) {
    case 0:
      schedule = new BKQRegularSchedule;
      break;
    case 1: {
      auto* custom = new BKQCustomSchedule(1, 2, 3, static_cast<unsigned short>(input_.number()));
      set<SchedulePlan>(*custom, [](auto& p, auto& visit) { eachOfCustomSchedule(p, visit); });
      schedule = custom;
      break;
    }
    default: {
      BKQRotationSchedule* rotation;
      if (input_.below(2) == 0) {
        rotation = new BKQRotationSchedule;
      } else {
        auto* cruise = new BKQCruiseSchedule;
        set<SchedulePlan>(*cruise, [](auto& p, auto& visit) { eachOfCruiseSchedule(p, visit); });
        rotation = cruise;
      }
      rotation->setSetName(input_.text().c_str());
      if (input_.below(8) != 0) {
        auto* mask = new BKQJobMask;
        for (unsigned int i = input_.below(12); i > 0; --i) {
          auto* unit = new BKQJobUnit;
          kept_.insert(unit);
          unit->setJobType(static_cast<BKQJobUnit::BKQCruiseJobType>(input_.number()));
          mask->addJobUnit(*unit);
        }
        rotation->setJobMask(*mask);
      }
      if (input_.below(2) == 0) {
        auto* day = new BKQExceptionDay;
        kept_.insert(day);
        rotation->addExceptionDay(*day);
      }
      schedule = rotation;
      break;
    }
  }
  schedule->setSubmitTime(time());
  schedule->setExecTime(time());
  if (BKQSchedule* former = job.job->getSchedule()) {
    // Its parts outlive it, also those that a copy shares.
    auto* rotation = dynamic_cast<BKQRotationSchedule*>(former);
    BKQExceptionDayCol* days = nullptr;
    if (rotation != nullptr) {
      rotation->resetExceptionDays();
      rotation->enumExceptionDays(days, 0);
      for (unsigned int i = 0; i < days->entries(); ++i) kept_.insert(days->at(i));
      delete days;
      if (BKQJobMask* mask = rotation->getJobMask()) {
        BKQJobUnitCol* units = nullptr;
        mask->resetJobUnits();
        mask->enumJobUnits(units, 0);
        for (unsigned int i = 0; i < units->entries(); ++i) kept_.insert(units->at(i));
        delete units;
      }
    }
    abandoned_.push_back(former);
  }
  job.job->setSchedule(*schedule);
}

void Session::attach(Job& job) {
  switch (input_.below(7)) {
    case 0:
      return makeSchedule(job);
    case 1:
      if (job.job->faxInfoExists() == 0 || input_.below(2) == 0) {
        if (job.job->faxInfoExists() != 0) abandonedFaxes_.emplace_back(job.job->getFaxInfo());
        job.job->setFaxInfo(*new BKQFax);
      }
      return set<FaxPlan>(*job.job->getFaxInfo(),
                          [](auto& plan, auto& visit) { eachOfFax(plan, visit); });
    case 2: {
      if (job.job->emailInfoExists() != 0) abandonedEMails_.emplace_back(job.job->getEMailInfo());
      if (input_.below(2) == 0) {
        job.job->setEMailInfo(*new BKQInternetEMail);
      } else {
        auto* email = new BKQMHSEMail;
        set<EMailPlan>(*email, [](auto& plan, auto& visit) { eachOfMHSEMail(plan, visit); });
        job.job->setEMailInfo(*email);
      }
      return set<EMailPlan>(*job.job->getEMailInfo(),
                            [](auto& plan, auto& visit) { eachOfEMail(plan, visit); });
    }
    case 3:
      printQueues_.emplace_back(new BKQPrintQueue);
      set<PrintQueuePlan>(*printQueues_.back(),
                          [](auto& plan, auto& visit) { eachOfPrintQueue(plan, visit); });
      return job.job->setPrintQueue(*printQueues_.back());
    case 4:
      if (job.backup == nullptr) return;
      openFiles_.emplace_back(new BKQOpenFileInfo);
      set<OpenFilePlan>(*openFiles_.back(),
                        [](auto& plan, auto& visit) { eachOfOpenFile(plan, visit); });
      return job.backup->setOpenFileInfo(*openFiles_.back());
    default:
      break;
  }
  // A destination or source of its own, which the job deletes; what it replaces is abandoned.
  const auto newTapeNode = [&] {
    auto* node = new BKQTapeNode(input_.text().c_str());
    if (auto* tape = pick(tapes_)) node->addTape(*tape);
    return node;
  };
  const auto newMachine = [&] {
    BKQDiskNode* node;
    if (input_.below(2) == 0) {
      auto* unixNode = new BKQUnixNode(input_.text().c_str());
      unixNode->setUnixOptions(input_.number());
      node = unixNode;
    } else {
      node = new BKQWinNTNode(input_.text().c_str());
    }
    if (auto* disk = pick(disks_)) node->addDisk(*disk);
    return node;
  };
  const auto abandon = [&](BKQNode* node) {
    if (node != nullptr) kept_.insert(node);
  };
  if (job.backup != nullptr) {
    abandon(job.backup->getDestination());
    job.backup->setDestination(*newTapeNode());
  } else if (job.compare != nullptr) {
    abandon(job.compare->getDestination());
    job.compare->setDestination(*newMachine());
  } else if (job.merge != nullptr) {
    if (input_.below(2) == 0) {
      abandon(job.merge->getSource());
      job.merge->setSource(*newTapeNode());
    } else {
      abandon(job.merge->getDestination());
      job.merge->setDestination(*newMachine());
    }
  } else if (job.scan != nullptr) {
    abandon(job.scan->getSource());
    job.scan->setSource(*newTapeNode());
  }
}

}  // namespace bkoq::test
