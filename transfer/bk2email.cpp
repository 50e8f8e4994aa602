#include "transfer/layout.h"
#include "transfer/notify_steps.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

int BKQEMail::convertToBK2(void*& block) { return Steps::email(*this, block); }

int BKQMHSEMail::convertToBK2(void*& block) { return Steps::mhsEMail(*this, block); }
