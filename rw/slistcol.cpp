#include "rw/slistcol.h"

#include <limits.h>
#include <stdlib.h>
#include <string.h>

namespace {

constexpr size_t kSlot = sizeof(void*);

int compareAddresses(const void* left, const void* right) {
  const RWCollectable* first = *static_cast<RWCollectable* const*>(left);
  return first->RWCollectable::compareTo(*static_cast<RWCollectable* const*>(right));
}

}  // namespace

RWSlist::RWSlist(const RWSlist& other) noexcept : RWSlist() { RWSlist::operator=(other); }

RWSlist::~RWSlist() { free(elements_); }

RWSlist& RWSlist::operator=(const RWSlist& other) noexcept {
  if (this == &other) return *this;
  if (other.entries_ > capacity_) {
    auto* elements = static_cast<RWCollectable**>(malloc(other.entries_ * kSlot));
    if (elements == nullptr) return *this;
    free(elements_);
    elements_ = elements;
    capacity_ = other.entries_;
  }
  if (other.entries_ > 0) memcpy(elements_, other.elements_, other.entries_ * kSlot);
  entries_ = other.entries_;
  return *this;
}

RWSlistCollectables::~RWSlistCollectables() = default;

RWCollectable* RWSlistCollectables::insert(RWCollectable* element) noexcept {
  return insertAt(entries_, element);
}

RWCollectable* RWSlistCollectables::append(RWCollectable* element) noexcept {
  return insertAt(entries_, element);
}

RWCollectable* RWSlistCollectables::prepend(RWCollectable* element) noexcept {
  return insertAt(0, element);
}

RWCollectable* RWSlistCollectables::insertAt(unsigned int position,
                                             RWCollectable* element) noexcept {
  if (element == nullptr || position > entries_) return nullptr;
  if (entries_ == capacity_) {
    // Doubling keeps the average cost of an insertion constant.
    if (capacity_ > UINT_MAX / 2 / kSlot) return nullptr;
    const unsigned int capacity = capacity_ == 0 ? 4 : capacity_ * 2;
    auto* elements = static_cast<RWCollectable**>(realloc(elements_, capacity * kSlot));
    if (elements == nullptr) return nullptr;
    elements_ = elements;
    capacity_ = capacity;
  }
  RWCollectable** place = elements_ + position;
  // Most are added at the end, where there is nothing to move.
  if (position < entries_) memmove(place + 1, place, (entries_ - position) * kSlot);
  *place = element;
  ++entries_;
  return element;
}

RWCollectable* RWSlistCollectables::insertAfter(int position, RWCollectable* element) noexcept {
  if (position < -1) return nullptr;
  return insertAt(static_cast<unsigned int>(position) + 1, element);
}

void RWSlistCollectables::clear() noexcept {
  free(elements_);
  elements_ = nullptr;
  entries_ = 0;
  capacity_ = 0;
}

void RWSlistCollectables::clearAndDestroy() {
  RWCollectable** elements = elements_;
  const unsigned int entries = entries_;
  elements_ = nullptr;
  entries_ = 0;
  capacity_ = 0;
  // Sorted, an element that is listed more than once is beside itself.
  if (entries > 1) qsort(elements, entries, kSlot, compareAddresses);
  for (unsigned int i = 0; i < entries; ++i) {
    if (i + 1 == entries || elements[i] != elements[i + 1]) delete elements[i];
  }
  free(elements);
}

RWCollectable* RWSlistCollectables::remove(const RWCollectable* target) {
  const unsigned int position = index(target);
  if (position == RW_NPOS) return nullptr;
  RWCollectable** place = elements_ + position;
  RWCollectable* element = *place;
  --entries_;
  memmove(place, place + 1, (entries_ - position) * kSlot);
  return element;
}

void RWSlistCollectables::removeAndDestroy(const RWCollectable* target) { delete remove(target); }

RWBoolean RWSlistCollectables::contains(const RWCollectable* target) const {
  return index(target) != RW_NPOS;
}

RWCollectable* RWSlistCollectables::find(const RWCollectable* target) const {
  return at(index(target));
}

unsigned int RWSlistCollectables::index(const RWCollectable* target) const {
  if (target == nullptr) return RW_NPOS;
  for (unsigned int i = 0; i < entries_; ++i) {
    if (elements_[i]->isEqual(target) != 0) return i;
  }
  return RW_NPOS;
}

unsigned int RWSlistCollectables::occurrencesOf(const RWCollectable* target) const {
  unsigned int occurrences = 0;
  if (target == nullptr) return occurrences;
  for (unsigned int i = 0; i < entries_; ++i) {
    if (elements_[i]->isEqual(target) != 0) ++occurrences;
  }
  return occurrences;
}

void RWSlistCollectables::apply(void (*function)(RWCollectable*, void*), void* data) {
  if (function == nullptr) return;
  for (unsigned int i = 0; i < entries_; ++i) function(elements_[i], data);
}

RWSlistCollectablesIterator::RWSlistCollectablesIterator(RWSlistCollectables& list) noexcept
    : list_(&list), next_(0) {}

RWCollectable* RWSlistCollectablesIterator::operator()() noexcept {
  RWCollectable* element = list_->at(next_);
  if (element != nullptr) ++next_;
  return element;
}
