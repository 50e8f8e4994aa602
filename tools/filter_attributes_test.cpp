#include "tools/attribute_cases.h"

namespace bkoq::tool {
namespace {

template <class Filter>
void describeFilter(AttributeRows<Filter>& rows) {
  rows.row("inclExcl", R"("exclude")", &BKQFilter::getInclExcl, std::to_string(BKQFilter::Exclude));
}

template <class Filter>
void describePattern(AttributeRows<Filter>& rows) {
  describeFilter(rows);
  rows.text("filterString", &Filter::getFilterString, "*.tmp");
}

template <class Filter>
void describeTime(AttributeRows<Filter>& rows) {
  describeFilter(rows);
  rows.number("trAttribute", &BKQTimeFilter::getTRattribute, 301);
}

template <class Filter>
void describeBound(AttributeRows<Filter>& rows) {
  describeTime(rows);
  rows.time("time", &Filter::getTime, "2004-03-01T21:00:00");
}

void describeBetween(AttributeRows<BKQBetweenTimeFilter>& rows) {
  describeTime(rows);
  rows.time("startTime", &BKQBetweenTimeFilter::getStartTime, "2004-02-01T00:00:01")
      .time("endTime", &BKQBetweenTimeFilter::getEndTime, "2004-03-01T00:00:02");
}

void describeWithin(AttributeRows<BKQWithinTimeFilter>& rows) {
  describeTime(rows);
  rows.number("timeUnits", &BKQWithinTimeFilter::getTimeUnits, 302)
      .number("timeUnitType", &BKQWithinTimeFilter::getTimeUnitType, 303);
}

template <class Filter, class Describe>
ClassCase filterCase(const char* kind, Describe describe) {
  return makeCase<Filter>(filters, kind, R"({"kind": "backup", "jobName": "", "filters": [@]})",
                          filterOf, describe);
}

}  // namespace

void addFilters(std::vector<ClassCase>& cases) {
  cases.push_back(filterCase<BKQDirFilter>("dir", describePattern<BKQDirFilter>));
  cases.push_back(filterCase<BKQFileFilter>("file", describePattern<BKQFileFilter>));
  cases.push_back(filterCase<BKQVolumeFilter>("volume", describePattern<BKQVolumeFilter>));
  cases.push_back(
      filterCase<BKQAttributeFilter>("attribute", [](AttributeRows<BKQAttributeFilter>& rows) {
        describeFilter(rows);
        rows.number("attributes", &BKQAttributeFilter::getAttributes, 70301);
      }));
  cases.push_back(
      filterCase<BKQBeforeTimeFilter>("beforeTime", describeBound<BKQBeforeTimeFilter>));
  cases.push_back(filterCase<BKQAfterTimeFilter>("afterTime", describeBound<BKQAfterTimeFilter>));
  cases.push_back(filterCase<BKQBetweenTimeFilter>("betweenTime", describeBetween));
  cases.push_back(filterCase<BKQWithinTimeFilter>("withinTime", describeWithin));

  cases.push_back(makeCase<BKQGroom>(
      grooms, "",
      R"({"kind": "backup", "jobName": "",
          "sourceNodes": [{"kind": "unix", "nodeName": "", "groomInfo": @}]})",
      [](BKQJob& job) -> BKQGroom* {
        BKQDiskNode* machine = machineOf(job);
        return machine == nullptr ? nullptr : machine->getGroomInfo();
      },
      [](AttributeRows<BKQGroom>& rows) {
        rows.number("months", &BKQGroom::getMonths, 301)
            .number("copies", &BKQGroom::getCopies, 302)
            .number("options", &BKQGroom::getOptions, 70303)
            .row(
                "filters", kTwoFilters,
                [](BKQGroom& groom) {
                  return filtersOf(groom, &BKQGroom::resetFilters, &BKQGroom::enumFilters);
                },
                kTwoFiltersShown);
      }));
}

}  // namespace bkoq::tool
