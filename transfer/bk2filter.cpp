#include "transfer/filter_steps.h"
#include "transfer/layout.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

int BKQFilter::convertToBK2(void*& entry) { return Steps::filter(*this, entry); }

int BKQDirFilter::convertToBK2(void*& entry) {
  return Steps::patternFilter(*this, entry, "Directory Filter");
}

int BKQFileFilter::convertToBK2(void*& entry) {
  return Steps::patternFilter(*this, entry, "File Filter");
}

int BKQVolumeFilter::convertToBK2(void*& entry) {
  return Steps::patternFilter(*this, entry, "Volume Filter");
}

int BKQAttributeFilter::convertToBK2(void*& entry) { return Steps::attributeFilter(*this, entry); }

int BKQTimeFilter::convertToBK2(void*& entry) { return Steps::timeFilter(*this, entry); }

int BKQWithinTimeFilter::convertToBK2(void*& entry) {
  return Steps::withinTimeFilter(*this, entry);
}

int BKQBeforeTimeFilter::convertToBK2(void*& entry) {
  return Steps::boundTimeFilter(*this, entry, "Before Time Filter");
}

int BKQAfterTimeFilter::convertToBK2(void*& entry) {
  return Steps::boundTimeFilter(*this, entry, "After Time Filter");
}

int BKQBetweenTimeFilter::convertToBK2(void*& entry) {
  return Steps::betweenTimeFilter(*this, entry);
}
