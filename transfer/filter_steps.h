#ifndef BKOQ_TRANSFER_FILTER_STEPS_H_
#define BKOQ_TRANSFER_FILTER_STEPS_H_

#include "transfer/flatten.h"
#include "transfer/record_time.h"

namespace bkoq {

constexpr uint16_t kFilterTypeTime = 4;
constexpr uint16_t kFilterTypeAttribute = 5;

template <class Layout>
int Flattening::Into<Layout>::filter(BKQFilter& filter, void*& entry) {
  if (entry == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::Filter*>(entry);
  record.usInclExcl = static_cast<uint16_t>(filter.mode_);
  return 1;
}

template <class Layout>
template <class PatternFilter>
int Flattening::Into<Layout>::patternFilter(PatternFilter& filter, void*& entry, const char* part) {
  if (!Into::filter(filter, entry)) return failedToConvert(part);
  auto& record = *static_cast<typename Layout::Filter*>(entry);
  record.usFilterType = static_cast<uint16_t>(filter.filterType());
  const Text pattern(filter.pattern_);
  if (pattern.isEmpty()) return 1;
  ++record.ulFilterCount;
  record.usFilterLen = static_cast<uint16_t>(pattern.length + 1);
  record.pszFilter = duplicate(pattern);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::attributeFilter(BKQAttributeFilter& filter, void*& entry) {
  if (!Into::filter(filter, entry)) return failedToConvert("Attribute Filter");
  auto& record = *static_cast<typename Layout::Filter*>(entry);
  record.usFilterType = kFilterTypeAttribute;
  record.ulAttributes = filter.attributes_;
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::timeFilter(BKQTimeFilter& filter, void*& entry) {
  if (!Into::filter(filter, entry)) return failedToConvert("Time Filter");
  auto& record = *static_cast<typename Layout::Filter*>(entry);
  record.usFilterType = kFilterTypeTime;
  record.usTimeRange = static_cast<uint16_t>(filter.range_);
  record.usTimeAttr = static_cast<uint16_t>(filter.attribute_);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::withinTimeFilter(BKQWithinTimeFilter& filter, void*& entry) {
  if (!timeFilter(filter, entry)) return failedToConvert("Within Time Filter");
  auto& record = *static_cast<typename Layout::Filter*>(entry);
  record.usTimeRange = static_cast<uint16_t>(filter.getTRtype());
  record.ulTimeUnits = filter.units_;
  record.usTimeUnitType = static_cast<uint16_t>(filter.unitType_);
  return 1;
}

template <class Layout>
template <class BoundFilter>
int Flattening::Into<Layout>::boundTimeFilter(BoundFilter& filter, void*& entry, const char* part) {
  if (!timeFilter(filter, entry)) return failedToConvert(part);
  auto& record = *static_cast<typename Layout::Filter*>(entry);
  record.usTimeRange = static_cast<uint16_t>(filter.getTRtype());
  record.lTime = recordTime(filter.time_);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::betweenTimeFilter(BKQBetweenTimeFilter& filter, void*& entry) {
  if (!timeFilter(filter, entry)) return failedToConvert("Between Time Filter");
  auto& record = *static_cast<typename Layout::Filter*>(entry);
  record.usTimeRange = static_cast<uint16_t>(filter.getTRtype());
  record.lStartTime = recordTime(filter.start_);
  record.lEndTime = recordTime(filter.end_);
  return 1;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_FILTER_STEPS_H_
