#include "bkoq/groom.h"

#include "bkoq/filter.h"
#include "model/clone.h"
#include "model/copy_list.h"
#include "model/enumerate.h"

BKQGroom::BKQGroom() : months_(0), copies_(0), options_(2), filterCursor_(0) {}

BKQGroom::~BKQGroom() = default;

BKQGroom* BKQGroom::clone() { return bkoq::makeClone(this); }

unsigned short BKQGroom::getMonths() const { return months_; }

void BKQGroom::setMonths(unsigned short months) { months_ = months; }

unsigned short BKQGroom::getCopies() const { return copies_; }

void BKQGroom::setCopies(unsigned short copies) { copies_ = copies; }

unsigned int BKQGroom::getOptions() const { return options_; }

void BKQGroom::setOptions(unsigned int options) { options_ = options; }

RWCollectable* BKQGroom::addFilter(BKQFilter& filter) { return filters_.insert(&filter); }

unsigned int BKQGroom::filterEntries() const { return filters_.entries(); }

void BKQGroom::resetFilters() { filterCursor_ = 0; }

unsigned int BKQGroom::enumFilters(BKQFilterCol*& out, unsigned int n) {
  return bkoq::enumerate(filters_, filterCursor_, out, n);
}

void BKQGroom::mycopy(BKQGroom* source) {
  if (source == nullptr || source == this) return;
  months_ = source->months_;
  copies_ = source->copies_;
  options_ = source->options_;
  filterCursor_ = source->filterCursor_;
  bkoq::copyDoubled<BKQFilter>(filters_, source->filters_);
}
