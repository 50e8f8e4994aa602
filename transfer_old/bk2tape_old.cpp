#include "transfer/tape_steps.h"
#include "transfer_old/layout_old.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::PreviousLayout>;

}  // namespace

namespace bkoq {

void PreviousLayout::storeTapeId(Tape& record, unsigned int id) { record.ulTapeID = id; }

// This layout has no record for an extension: its end time takes the place of the tape's, and its
// mark is taken out of the options.
int PreviousLayout::storeExtension(Tape& record, BKQTapeXtension* extension, long sessionEndTime) {
  if (extension != nullptr) {
    record.lSessionEndTime = extension->getSessionEndTime();
    record.ulOptions &= ~kTapeOptionExtension;
  } else if (sessionEndTime > 0) {
    record.lSessionEndTime = sessionEndTime;
  }
  return 1;
}

}  // namespace bkoq

int BKQTape::convertToBK2_old(void*& rec) { return Steps::tape(*this, rec); }

int BKQTapeItem::convertToBK2_old(void*& rec) { return Steps::tapeItem(*this, rec); }
