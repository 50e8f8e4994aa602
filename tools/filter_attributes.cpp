#include "tools/attributes.h"

namespace bkoq::tool {
namespace {

const std::vector<Word>& selections() {
  static const std::vector<Word> words = {{"include", BKQFilter::Include},
                                          {"exclude", BKQFilter::Exclude}};
  return words;
}

void describeFilter(Table<BKQFilter> t) {
  t.number("inclExcl", &BKQFilter::setInclExcl, &BKQFilter::getInclExcl,
           "whether what it selects is taken")
      .upTo(0xFFFF)
      .named(selections())
      .shown("\"exclude\"");
}

template <class Filter>
void describePattern(Table<Filter> t) {
  describeFilter(t);
  t.text("filterString", &Filter::setFilterString, &Filter::getFilterString, "the pattern")
      .shown("\"*.tmp\"");
}

void describeTime(Table<BKQTimeFilter> t) {
  describeFilter(t);
  t.number("trAttribute", &BKQTimeFilter::setTRattribute, &BKQTimeFilter::getTRattribute,
           "the server's code of the time stamp tested")
      .upTo(0xFFFF);
}

// The constructor with an attribute also stores the kind of range.
template <class Filter>
Filter* makeTime(const Value& /*value*/) {
  return new Filter(BKQTimeFilter::BKQTimeAttrType{});
}

template <class Filter>
Filter* makePlain(const Value& /*value*/) {
  return new Filter;
}

}  // namespace

const FamilyOf<BKQFilter>& filters() {
  static const FamilyOf<BKQFilter> family = [] {
    FamilyOf<BKQFilter> filters("filter");
    filters.add<BKQDirFilter>("dir", "BKQDirFilter", "directories by a pattern",
                              makePlain<BKQDirFilter>, describePattern<BKQDirFilter>);
    filters.add<BKQFileFilter>("file", "BKQFileFilter", "files by a pattern",
                               makePlain<BKQFileFilter>, describePattern<BKQFileFilter>);
    filters.add<BKQVolumeFilter>("volume", "BKQVolumeFilter", "volumes by a pattern",
                                 makePlain<BKQVolumeFilter>, describePattern<BKQVolumeFilter>);
    filters.add<BKQAttributeFilter>(
        "attribute", "BKQAttributeFilter", "files by their attribute bits",
        makePlain<BKQAttributeFilter>, [](Table<BKQAttributeFilter> t) {
          describeFilter(t);
          t.number("attributes", &BKQAttributeFilter::setAttributes,
                   &BKQAttributeFilter::getAttributes, "the server's bits")
              .shown("\"0x1\"");
        });
    filters.add<BKQBeforeTimeFilter>(
        "beforeTime", "BKQBeforeTimeFilter", "files with a time stamp before a bound",
        makeTime<BKQBeforeTimeFilter>, [](Table<BKQBeforeTimeFilter> t) {
          describeTime(t);
          t.timeOrNow("time", &BKQBeforeTimeFilter::setTime, &BKQBeforeTimeFilter::getTime,
                      "the bound")
              .shown("\"2004-03-01T21:00:00\"");
        });
    filters.add<BKQAfterTimeFilter>("afterTime", "BKQAfterTimeFilter",
                                    "files with a time stamp after a bound",
                                    makeTime<BKQAfterTimeFilter>, [](Table<BKQAfterTimeFilter> t) {
                                      describeTime(t);
                                      t.timeOrNow("time", &BKQAfterTimeFilter::setTime,
                                                  &BKQAfterTimeFilter::getTime, "the bound")
                                          .shown("\"2004-03-01T21:00:00\"");
                                    });
    filters.add<BKQBetweenTimeFilter>(
        "betweenTime", "BKQBetweenTimeFilter", "files with a time stamp between bounds",
        makeTime<BKQBetweenTimeFilter>, [](Table<BKQBetweenTimeFilter> t) {
          describeTime(t);
          t.timeOrNow("startTime", &BKQBetweenTimeFilter::setStartTime,
                      &BKQBetweenTimeFilter::getStartTime, "the first bound")
              .shown("\"2004-02-01T00:00:00\"");
          t.timeOrNow("endTime", &BKQBetweenTimeFilter::setEndTime,
                      &BKQBetweenTimeFilter::getEndTime, "the second bound")
              .shown("\"2004-03-01T00:00:00\"");
        });
    filters.add<BKQWithinTimeFilter>(
        "withinTime", "BKQWithinTimeFilter", "files with a time stamp within a span",
        makeTime<BKQWithinTimeFilter>, [](Table<BKQWithinTimeFilter> t) {
          describeTime(t);
          t.number("timeUnits", &BKQWithinTimeFilter::setTimeUnits,
                   &BKQWithinTimeFilter::getTimeUnits, "length of the span")
              .shown("7");
          t.number("timeUnitType", &BKQWithinTimeFilter::setTimeUnitType,
                   &BKQWithinTimeFilter::getTimeUnitType, "the server's code of the unit")
              .upTo(0xFFFF);
        });
    return filters;
  }();
  return family;
}

const FamilyOf<BKQGroom>& grooms() {
  static const FamilyOf<BKQGroom> family = [] {
    FamilyOf<BKQGroom> grooms("groom");
    grooms.add<BKQGroom>(
        "", "BKQGroom", "how long files are kept", [](const Value&) { return new BKQGroom; },
        [](Table<BKQGroom> t) {
          t.number("months", &BKQGroom::setMonths, &BKQGroom::getMonths, "months to keep")
              .unrecorded();
          t.number("copies", &BKQGroom::setCopies, &BKQGroom::getCopies, "copies to keep")
              .unrecorded();
          t.number("options", &BKQGroom::setOptions, &BKQGroom::getOptions, "option bits")
              .unrecorded();
          t.parts("filters", filters, &BKQGroom::addFilter, "which files").unrecorded();
        });
    return grooms;
  }();
  return family;
}

}  // namespace bkoq::tool
