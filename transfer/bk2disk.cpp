#include "transfer/disk_steps.h"
#include "transfer/layout.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

int BKQDisk::convertToBK2(void*& rec, const char* overridePath) {
  return Steps::disk(*this, rec, overridePath);
}

int BKQDiskItem::convertToBK2(void*& rec) { return Steps::diskItem(*this, rec); }

int BKQDiskItem::convertToBK2(void*& rec, const char* overridePath) {
  return Steps::diskItem(*this, rec, overridePath);
}
