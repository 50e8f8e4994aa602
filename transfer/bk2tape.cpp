#include "transfer/layout.h"
#include "transfer/tape_steps.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

namespace bkoq {

void CurrentLayout::storeTapeId(Tape& record, unsigned int id) {
  record.usTapeID = static_cast<uint16_t>(id);
}

int CurrentLayout::storeExtension(Tape& record, BKQTapeXtension* extension,
                                  long /*sessionEndTime*/) {
  if (extension == nullptr) return 1;
  record.pTapeX = allocateRecord<BKDTAPEX>("BKDTAPEX");
  if (record.pTapeX == nullptr) return 0;
  void* element = record.pTapeX;
  return extension->convertToBK2(element) ? 1 : failedToConvert("TapeXtension");
}

}  // namespace bkoq

int BKQTape::convertToBK2(void*& rec) { return Steps::tape(*this, rec); }

int BKQTapeItem::convertToBK2(void*& rec) { return Steps::tapeItem(*this, rec); }

int BKQTapeXtension::convertToBK2(void*& rec) { return Steps::tapeExtension(*this, rec); }
