#include "transfer/notify_steps.h"
#include "transfer_old/layout_old.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::PreviousLayout>;

}  // namespace

int BKQPrintQueue::convertToBK2_old(void*& block) { return Steps::printQueue(*this, block); }
