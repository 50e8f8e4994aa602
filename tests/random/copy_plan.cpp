#include "tests/random/copy_plan.h"

namespace bkoq::test {

namespace {

std::shared_ptr<FilterPlan> copyOf(const FilterPlan& filter) {
  return std::make_shared<FilterPlan>(filter);
}

std::shared_ptr<TapeItemPlan> copyOf(const TapeItemPlan& item) {
  return std::make_shared<TapeItemPlan>(item);
}

std::shared_ptr<JobUnitPlan> copyOf(const JobUnitPlan& unit) {
  return std::make_shared<JobUnitPlan>(unit);
}

std::shared_ptr<ExceptionDayPlan> copyOf(const ExceptionDayPlan& day) {
  return std::make_shared<ExceptionDayPlan>(day);
}

std::shared_ptr<DiskItemPlan> copyOf(const DiskItemPlan& item);
std::shared_ptr<DiskPlan> copyOf(const DiskPlan& disk);
std::shared_ptr<TapePlan> copyOf(const TapePlan& tape);

// The source's elements, then copies of them.
template <class Plan>
void doubleList(List<Plan>& list) {
  const std::size_t count = list.size();
  for (std::size_t i = 0; i < count; ++i) list.push_back(copyOf(*list[i]));
}

template <class Plan>
void replaceByCopies(List<Plan>& list) {
  for (auto& element : list) element = copyOf(*element);
}

std::shared_ptr<DiskItemPlan> copyOf(const DiskItemPlan& item) {
  auto copy = std::make_shared<DiskItemPlan>(item);
  copy->files.insert(copy->files.end(), item.files.begin(), item.files.end());
  return copy;
}

std::shared_ptr<DiskPlan> copyOf(const DiskPlan& disk) {
  auto copy = std::make_shared<DiskPlan>(disk);
  doubleList(copy->items);
  doubleList(copy->filters);
  return copy;
}

std::shared_ptr<TapePlan> copyOf(const TapePlan& tape) {
  auto copy = std::make_shared<TapePlan>(tape);  // the extension is shared
  doubleList(copy->items);
  doubleList(copy->filters);
  return copy;
}

std::shared_ptr<JobMaskPlan> copyOf(const JobMaskPlan& mask) {
  auto copy = std::make_shared<JobMaskPlan>(mask);
  doubleList(copy->units);
  return copy;
}

void removeDisks(NodePlan& node) {
  for (const Text& name : node.removedDisks) {
    for (auto disk = node.disks.begin(); disk != node.disks.end(); ++disk) {
      if ((*disk)->name.value != name) continue;
      node.disks.erase(disk);
      break;
    }
  }
  node.removedDisks.clear();
}

}  // namespace

std::shared_ptr<NodePlan> copyOf(const NodePlan& node) {
  auto copy = std::make_shared<NodePlan>(node);  // filters and groom information are shared
  removeDisks(*copy);
  doubleList(copy->disks);
  doubleList(copy->tapes);
  return copy;
}

std::shared_ptr<SchedulePlan> copyOf(const SchedulePlan& schedule) {
  auto copy = std::make_shared<SchedulePlan>(schedule);
  // A copied cruise shares its mask and days.
  if (schedule.scheduleClass == ScheduleClass::kRotation) {
    if (schedule.mask) copy->mask = copyOf(*schedule.mask);
    doubleList(copy->days);
  }
  return copy;
}

std::shared_ptr<JobPlan> copyOf(const JobPlan& job) {
  auto copy = std::make_shared<JobPlan>(job);
  if (job.fax) copy->fax = std::make_shared<FaxPlan>(*job.fax);
  if (job.email) copy->email = std::make_shared<EMailPlan>(*job.email);
  if (job.printQueue) copy->printQueue = std::make_shared<PrintQueuePlan>(*job.printQueue);
  if (job.schedule) copy->schedule = copyOf(*job.schedule);
  if (job.openFile) copy->openFile = std::make_shared<OpenFilePlan>(*job.openFile);
  replaceByCopies(copy->destinations);
  if (isBackup(job.jobClass)) {
    doubleList(copy->sources);
    doubleList(copy->filters);
  } else {
    replaceByCopies(copy->sources);
    replaceByCopies(copy->filters);
  }
  return copy;
}

}  // namespace bkoq::test
