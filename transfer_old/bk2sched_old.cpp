#include "transfer/sched_steps.h"
#include "transfer_old/layout_old.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::PreviousLayout>;

}  // namespace

namespace bkoq {

bool PreviousLayout::storeJobTypes(Rotation& record, const BKQJobUnitCol& units) {
  const unsigned int places = sizeof(record.abJobTypes);
  for (unsigned int i = 0; i < units.entries() && i < places; ++i) {
    auto* unit = static_cast<BKQJobUnit*>(units.at(i));
    record.abJobTypes[i] = static_cast<uint8_t>(unit->getJobType());
  }
  return !units.isEmpty();
}

}  // namespace bkoq

int BKQSchedule::convertToBK2_old(void*& schedBlock, void*& /*rotationBlock*/) {
  return Steps::schedule(*this, schedBlock);
}

int BKQCustomSchedule::convertToBK2_old(void*& schedBlock, void*& /*rotationBlock*/) {
  return Steps::customSchedule(*this, schedBlock);
}

int BKQRotationSchedule::convertToBK2_old(void*& schedBlock, void*& rotationBlock) {
  return Steps::rotationSchedule(*this, schedBlock, rotationBlock);
}

int BKQCruiseSchedule::convertToBK2_old(void*& schedBlock, void*& rotationBlock) {
  return Steps::cruiseSchedule(*this, schedBlock, rotationBlock);
}
