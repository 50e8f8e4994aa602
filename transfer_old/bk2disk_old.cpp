#include "transfer/disk_steps.h"
#include "transfer_old/layout_old.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::PreviousLayout>;

}  // namespace

int BKQDisk::convertToBK2_old(void*& rec, const char* overridePath) {
  return Steps::disk(*this, rec, overridePath);
}

int BKQDiskItem::convertToBK2_old(void*& rec) { return Steps::diskItem(*this, rec); }

int BKQDiskItem::convertToBK2_old(void*& rec, const char* overridePath) {
  return Steps::diskItem(*this, rec, overridePath);
}
