#include "transfer/layout.h"
#include "transfer/notify_steps.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

int BKQPrintQueue::convertToBK2(void*& block) { return Steps::printQueue(*this, block); }
