#include "model/copy_list.h"

#include <stdlib.h>

namespace bkoq {
namespace {

int compareAddresses(const void* left, const void* right) {
  const auto a = reinterpret_cast<size_t>(*static_cast<RWCollectable* const*>(left));
  const auto b = reinterpret_cast<size_t>(*static_cast<RWCollectable* const*>(right));
  return a < b ? -1 : a > b;
}

// The addresses of a list in order, so that a long list is searched fast.
class SortedAddresses {
 public:
  explicit SortedAddresses(const RWSlistCollectables& list)
      : list_(list),
        addresses_(static_cast<RWCollectable**>(malloc(list.entries() * sizeof(RWCollectable*)))) {
    if (addresses_ == nullptr) return;
    for (unsigned int i = 0; i < list.entries(); ++i) addresses_[i] = list.at(i);
    qsort(addresses_, list.entries(), sizeof(RWCollectable*), compareAddresses);
  }
  ~SortedAddresses() { free(addresses_); }
  SortedAddresses(const SortedAddresses&) = delete;
  SortedAddresses& operator=(const SortedAddresses&) = delete;

  bool contains(RWCollectable* address) const {
    if (addresses_ != nullptr) {
      return bsearch(&address, addresses_, list_.entries(), sizeof(RWCollectable*),
                     compareAddresses) != nullptr;
    }
    return holds(list_, address);
  }

 private:
  const RWSlistCollectables& list_;
  RWCollectable** addresses_;  // null when memory ran out
};

void destroyUnlessHeld(const RWSlistCollectables& list, const RWSlistCollectables& kept,
                       const RWCollectable* alsoKept) {
  if (list.isEmpty()) return;
  const SortedAddresses held(kept);
  RWSlistCollectables doomed;
  for (unsigned int i = 0; i < list.entries(); ++i) {
    if (list.at(i) != alsoKept && !held.contains(list.at(i))) doomed.insert(list.at(i));
  }
  doomed.clearAndDestroy();
}

unsigned int countOf(const RWSlistCollectables& list, const RWCollectable* object) {
  unsigned int count = 0;
  for (unsigned int i = 0; i < list.entries(); ++i) count += list.at(i) == object ? 1 : 0;
  return count;
}

}  // namespace

bool holds(const RWSlistCollectables& list, const RWCollectable* object) {
  return countOf(list, object) > 0;
}

bool holdsTwice(const RWSlistCollectables& list, const RWCollectable* object) {
  return countOf(list, object) > 1;
}

void replaceDoubled(RWSlistCollectables& list, const RWSlistCollectables& source,
                    const RWSlistCollectables& clones, const RWCollectable* alsoKept) {
  RWSlistCollectables former;
  former = list;
  list.clear();  // without memory for the new elements it must not hold the deleted ones
  list = source;
  for (unsigned int i = 0; i < clones.entries(); ++i) addClone(list, clones.at(i));
  destroyUnlessHeld(former, source, alsoKept);
}

}  // namespace bkoq
