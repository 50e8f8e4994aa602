#include "tools/flattening.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_set>
#include <utility>

#include "tools/memory.h"

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

std::string selectsNothing(const Value& job, const Selection& selection) {
  std::vector<std::string> nodes;
  std::vector<std::string> disks;
  std::vector<std::string> tapes;
  std::vector<std::string> sessions;
  const auto note = [](std::vector<std::string>& names, const Value& object, const char* key) {
    const Value* name = object.find(key);
    names.emplace_back(name == nullptr ? "" : std::string(name->text()));
  };
  const auto elementsOf = [](const Value& object, const char* key) {
    const Value* list = object.find(key);
    return list == nullptr ? Sequence<Value>(nullptr, 0) : list->elements();
  };
  const auto look = [&](const Value& node) {
    note(nodes, node, "nodeName");
    const bool isWanted =
        !selection.node.has_value() || selection.node->empty() || nodes.back() == *selection.node;
    for (const Value& disk : elementsOf(node, "disks")) {
      if (isWanted) note(disks, disk, "diskName");
    }
    for (const Value& tape : elementsOf(node, "tapes")) {
      note(tapes, tape, "tapeName");
      note(sessions, tape, "sessionNumber");
      if (sessions.back().empty()) sessions.back() = "0";
    }
  };
  for (const Value& node : elementsOf(job, "sourceNodes")) look(node);
  if (const Value* source = job.find("source")) look(*source);

  const auto missing = [](const std::vector<std::string>& all, const std::string& name,
                          const char* what) -> std::string {
    if (name.empty() || std::find(all.begin(), all.end(), name) != all.end()) return "";
    std::string list;
    std::unordered_set<std::string> seen;
    for (const std::string& each : all) {
      if (!seen.insert(each).second) continue;
      constexpr std::size_t kMost = 20;
      if (seen.size() > kMost) {
        list += " and others";
        break;
      }
      list += (list.empty() ? "\"" : ", \"") + each + "\"";
    }
    return std::string("no ") + what + " is \"" + name + "\"; there " +
           (list.empty() ? "is none" : (seen.size() == 1 ? "is " : "are ") + list);
  };
  std::string text = missing(nodes, selection.node.value_or(""), "source node");
  for (const std::string& disk : selection.disks) {
    if (text.empty()) text = missing(disks, disk, "disk");
  }
  if (text.empty()) text = missing(tapes, selection.tape.value_or(""), "tape");
  if (text.empty() && selection.session.has_value() && *selection.session != 0) {
    text = missing(sessions, std::to_string(*selection.session), "tape's session");
  }
  return text;
}

Flattened flatten(BKQJob& job, const Selection& selection, BkoqLayout layout) {
  void* out = nullptr;
  expectMemory();
  const int result = convertJob(job, selection, layout, out);
  Flattened flattened = {result == 1, OwnedTree(out, layout)};
  requireMemory();
  freeSessionPasswords();
  return flattened;
}

}  // namespace bkoq::tool
