#include "tools/flattening.h"

#include <cstdlib>
#include <utility>

namespace bkoq::tool {
namespace {

template <class Job, class... Arguments>
int convert(Job& job, BkoqLayout layout, void*& out, Arguments&&... arguments) {
  return layout == BKOQ_LAYOUT_CURRENT
             ? job.convertToBK2(out, std::forward<Arguments>(arguments)...)
             : job.convertToBK2_old(out, std::forward<Arguments>(arguments)...);
}

// A list of names; its texts live as long as it does.
class NameList {
 public:
  explicit NameList(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
      texts_.push_back(std::make_unique<RWCollectableString>(name.c_str()));
      list_.insert(texts_.back().get());
    }
  }
  RWSlistCollectables& list() { return list_; }

 private:
  std::vector<std::unique_ptr<RWCollectableString>> texts_;
  RWSlistCollectables list_;
};

int convertBackup(BKQBackupJob& job, const Selection& selection, BkoqLayout layout, void*& out) {
  const std::string node = selection.node.value_or("");
  NameList disks(selection.disks);
  if (selection.unixKind.has_value()) {
    const std::string text = selection.unixText.value_or("");
    if (selection.disks.empty()) {
      return convert(job, layout, out, node.c_str(), *selection.unixKind, text.c_str());
    }
    return convert(job, layout, out, node.c_str(), disks.list(), *selection.unixKind, text.c_str());
  }
  if (!selection.disks.empty()) return convert(job, layout, out, node.c_str(), disks.list());
  if (selection.node.has_value()) return convert(job, layout, out, node.c_str());
  return convert(job, layout, out);
}

template <class Job>
int convertTapes(Job& job, const Selection& selection, BkoqLayout layout, void*& out) {
  if (!selection.tape.has_value() && !selection.session.has_value()) {
    return convert(job, layout, out);
  }
  return convert(job, layout, out, selection.tape.value_or("").c_str(),
                 selection.session.value_or(0));
}

int convertCompare(BKQCompareJob& job, const Selection& selection, BkoqLayout layout, void*& out) {
  if (!selection.overridePath.has_value()) return convertTapes(job, selection, layout, out);
  if (!selection.tape.has_value() && !selection.session.has_value()) {
    return convert(job, layout, out, selection.overridePath->c_str());
  }
  return convert(job, layout, out, selection.tape.value_or("").c_str(),
                 selection.session.value_or(0), selection.overridePath->c_str());
}

int convertJob(BKQJob& job, const Selection& selection, BkoqLayout layout, void*& out) {
  if (auto* backup = dynamic_cast<BKQBackupJob*>(&job)) {
    return convertBackup(*backup, selection, layout, out);
  }
  if (auto* compare = dynamic_cast<BKQCompareJob*>(&job)) {
    return convertCompare(*compare, selection, layout, out);
  }
  if (auto* restore = dynamic_cast<BKQRestoreJob*>(&job)) {
    return convertTapes(*restore, selection, layout, out);
  }
  if (auto* verify = dynamic_cast<BKQVerifyJob*>(&job)) {
    return convertTapes(*verify, selection, layout, out);
  }
  if (auto* merge = dynamic_cast<BKQMergeJob*>(&job)) {
    return convertTapes(*merge, selection, layout, out);
  }
  if (auto* scan = dynamic_cast<BKQScanJob*>(&job)) {
    return convertTapes(*scan, selection, layout, out);
  }
  return convert(job, layout, out);
}

// The copies of session passwords in the state variables belong to those who read them.
void freeSessionPasswords() {
  for (char** password :
       {&BK6_DISKSESSIONPW, &BK6_TAPESESSIONPW, &BK6_DISKSESSIONPW_OLD, &BK6_TAPESESSIONPW_OLD}) {
    std::free(*password);
    *password = nullptr;
  }
}

}  // namespace

std::string misfitOf(const BKQJob& job, const Selection& selection) {
  const bool isBackup = dynamic_cast<const BKQBackupJob*>(&job) != nullptr;
  const bool isCompare = dynamic_cast<const BKQCompareJob*>(&job) != nullptr;
  const bool readsTapes = dynamic_cast<const BKQRestoreJob*>(&job) != nullptr ||
                          dynamic_cast<const BKQVerifyJob*>(&job) != nullptr ||
                          dynamic_cast<const BKQMergeJob*>(&job) != nullptr ||
                          dynamic_cast<const BKQScanJob*>(&job) != nullptr;
  if (!isBackup) {
    if (selection.node.has_value()) return "--node";
    if (!selection.disks.empty()) return "--disk";
    if (selection.unixKind.has_value()) return "--unix-kind";
  }
  if (!readsTapes) {
    if (selection.tape.has_value()) return "--tape";
    if (selection.session.has_value()) return "--session";
  }
  return !isCompare && selection.overridePath.has_value() ? "--override-path" : "";
}

Flattened flatten(BKQJob& job, const Selection& selection, BkoqLayout layout) {
  void* out = nullptr;
  const int result = convertJob(job, selection, layout, out);
  freeSessionPasswords();
  return {result == 1, OwnedTree(out, layout)};
}

}  // namespace bkoq::tool
