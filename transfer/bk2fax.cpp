#include "transfer/layout.h"
#include "transfer/notify_steps.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

namespace bkoq {

void CurrentLayout::storeReceiverName(Fax& /*record*/, const Text& /*name*/) {}

}  // namespace bkoq

int BKQFax::convertToBK2(void*& block) { return Steps::fax(*this, block); }
