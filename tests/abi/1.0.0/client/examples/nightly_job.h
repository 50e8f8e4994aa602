#ifndef BKOQ_EXAMPLES_NIGHTLY_JOB_H_
#define BKOQ_EXAMPLES_NIGHTLY_JOB_H_

#include <bkoq/bkoq.h>

#include <memory>
#include <utility>
#include <vector>

/// What a client keeps beside its jobs: nodes, disks, tapes, items and filters are held by address
/// and never deleted by those that hold them.
class Keeper {
 public:
  template <class Object, class... Arguments>
  Object& make(Arguments&&... arguments) {
    auto* object = new Object(std::forward<Arguments>(arguments)...);
    objects_.emplace_back(object);
    return *object;
  }

 private:
  std::vector<std::unique_ptr<RWCollectable>> objects_;
};

/// A nightly backup of four machines to tape: a UNIX machine, a Windows NT machine, an NDS tree and
/// a Sybase server, with filters of every kind on the job, a node and a disk, on a media rotation,
/// with every kind of notification.
class NightlyBackup {
 public:
  NightlyBackup();
  ~NightlyBackup();

  BKQRotationBackupJob& job() { return *job_; }

 private:
  BKQUnixNode& defineUnixNode();
  BKQWinNTNode& defineWindowsNode();
  BKQNDSNode& defineNDSNode();
  BKQSybaseNode& defineDatabaseNode();
  BKQTapeNode& defineDestination();
  void attachSchedule();
  void attachNotifications();

  Keeper keeper_;
  // What is attached to a job must live on the heap; these two are not deleted with it.
  std::unique_ptr<BKQPrintQueue> printQueue_;
  std::unique_ptr<BKQOpenFileInfo> openFileInfo_;
  std::unique_ptr<BKQRotationBackupJob> job_;
};

#endif  // BKOQ_EXAMPLES_NIGHTLY_JOB_H_
