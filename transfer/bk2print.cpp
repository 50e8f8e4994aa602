#include "transfer/layout.h"
#include "transfer/notify_steps.h"

namespace {

using Steps = bkoq::Flatten<bkoq::CurrentLayout>;

}  // namespace

int BKQPrintQueue::convertToBK2(void*& block) { return Steps::printQueue(*this, block); }
