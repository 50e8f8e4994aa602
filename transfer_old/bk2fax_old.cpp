#include "transfer/notify_steps.h"
#include "transfer_old/layout_old.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::PreviousLayout>;

}  // namespace

namespace bkoq {

void PreviousLayout::storeReceiverName(Fax& record, const Text& name) {
  storeText(record.pszReceiverName, name);
}

}  // namespace bkoq

int BKQFax::convertToBK2_old(void*& block) { return Steps::fax(*this, block); }
