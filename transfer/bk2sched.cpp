#include "transfer/layout.h"
#include "transfer/sched_steps.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

namespace bkoq {

bool CurrentLayout::storeJobTypes(Rotation& /*record*/, const BKQJobUnitCol& /*units*/) {
  return false;
}

}  // namespace bkoq

int BKQSchedule::convertToBK2(void*& schedBlock, void*& /*rotationBlock*/) {
  return Steps::schedule(*this, schedBlock);
}

int BKQCustomSchedule::convertToBK2(void*& schedBlock, void*& /*rotationBlock*/) {
  return Steps::customSchedule(*this, schedBlock);
}

int BKQRotationSchedule::convertToBK2(void*& schedBlock, void*& rotationBlock) {
  return Steps::rotationSchedule(*this, schedBlock, rotationBlock);
}

int BKQCruiseSchedule::convertToBK2(void*& schedBlock, void*& rotationBlock) {
  return Steps::cruiseSchedule(*this, schedBlock, rotationBlock);
}
