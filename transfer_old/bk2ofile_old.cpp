#include "transfer/notify_steps.h"
#include "transfer_old/layout_old.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::PreviousLayout>;

}  // namespace

int BKQOpenFileInfo::convertToBK2_old(void*& rec) { return Steps::openFileInfo(*this, rec); }
