#ifndef BKOQ_TRANSFER_SCHED_STEPS_H_
#define BKOQ_TRANSFER_SCHED_STEPS_H_

#include "transfer/flatten.h"
#include "transfer/record_time.h"

namespace bkoq {

template <class Layout>
int Flattening::Into<Layout>::schedule(BKQSchedule& schedule, void*& schedBlock) {
  if (schedBlock == nullptr) return noRecord();
  auto& block = *static_cast<typename Layout::Schedule*>(schedBlock);
  block.lSubmitTime = recordTime(schedule.submitTime_);
  block.lExecTime = recordTime(schedule.execTime_);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::customSchedule(BKQCustomSchedule& schedule, void*& schedBlock) {
  if (!Into::schedule(schedule, schedBlock)) return failedToConvert("Custom Schedule");
  auto& block = *static_cast<typename Layout::Schedule*>(schedBlock);
  block.usRepeat1 = schedule.repeats_[0];
  block.usRepeat2 = schedule.repeats_[1];
  block.usRepeat3 = schedule.repeats_[2];
  block.usRepeat4 = schedule.repeats_[3];
  block.usSkipWeekDay = schedule.skipWeekDay_;
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::rotationSchedule(BKQRotationSchedule& schedule, void*& schedBlock,
                                               void*& rotationBlock) {
  if (!Into::schedule(schedule, schedBlock)) return failedToConvert("Rotation Schedule");
  if (rotationBlock == nullptr) return noRecord();
  auto& block = *static_cast<typename Layout::Rotation*>(rotationBlock);
  storeText(block.pszSetName, schedule.setName_);
  // No mask counts as a mask without units.
  BKQJobMask* mask = schedule.mask_;
  if (mask != nullptr && Layout::storeJobTypes(block, mask->units_)) {
    moveCursorToEnd(mask->units_, mask->unitCursor_);
  }
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::cruiseSchedule(BKQCruiseSchedule& schedule, void*& schedBlock,
                                             void*& rotationBlock) {
  if (!rotationSchedule(schedule, schedBlock, rotationBlock)) {
    return failedToConvert("GFS Rotation Schedule");
  }
  auto& block = *static_cast<typename Layout::Rotation*>(rotationBlock);
  block.usCruiseMethod = static_cast<uint16_t>(schedule.method_);
  block.usSaveMonthly = schedule.saveMonthly_;
  block.usSaveWeekly = schedule.saveWeekly_;
  block.usSaveDaily = schedule.saveDaily_;
  block.ulCruiseOptions = schedule.options_;
  block.usMonths = schedule.months_;
  block.usCopies = schedule.copies_;
  return 1;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_SCHED_STEPS_H_
