#include "transfer/notify_steps.h"
#include "transfer_old/layout_old.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::PreviousLayout>;

}  // namespace

int BKQEMail::convertToBK2_old(void*& block) { return Steps::email(*this, block); }

int BKQMHSEMail::convertToBK2_old(void*& block) { return Steps::mhsEMail(*this, block); }
