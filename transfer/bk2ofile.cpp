#include "transfer/layout.h"
#include "transfer/notify_steps.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

int BKQOpenFileInfo::convertToBK2(void*& rec) { return Steps::openFileInfo(*this, rec); }
