#ifndef BKOQ_MODEL_COPY_LIST_H_
#define BKOQ_MODEL_COPY_LIST_H_

#include "rw/collstr.h"
#include "rw/slistcol.h"

namespace bkoq {

inline RWCollectable* cloneOf(RWCollectableString* string) { return string->copy(); }
template <class Element>
RWCollectable* cloneOf(Element* element) {
  return element->clone();
}

// Without memory for its place in the list a clone is not kept.
inline void addClone(RWSlistCollectables& list, RWCollectable* clone) {
  if (list.insert(clone) == nullptr) delete clone;
}

// Appends a clone of every element of `source`, another list, that can be cloned.
template <class Element>
void appendClones(RWSlistCollectables& list, const RWSlistCollectables& source) {
  for (unsigned int i = 0; i < source.entries(); ++i) {
    addClone(list, cloneOf(static_cast<Element*>(source.at(i))));
  }
}

// Whether the list holds this very object, whatever its class calls equal.
bool holds(const RWSlistCollectables& list, const RWCollectable* object);
bool holdsTwice(const RWSlistCollectables& list, const RWCollectable* object);

// Makes `list` hold the elements of `source`, then `clones`. Of its former elements those that
// `source` does not hold are deleted, each once, but for `alsoKept`.
void replaceDoubled(RWSlistCollectables& list, const RWSlistCollectables& source,
                    const RWSlistCollectables& clones, const RWCollectable* alsoKept);

// The copy of a list that is to hold the elements of `source`, then a clone of each. It takes the
// clones when it is made, so that an object with several lists can take all of its clones before
// any replacement deletes something that may be part of what is copied.
template <class Element>
class DoubledCopy {
 public:
  explicit DoubledCopy(const RWSlistCollectables& source) : source_(source) {
    appendClones<Element>(clones_, source);
  }
  DoubledCopy(const DoubledCopy&) = delete;
  DoubledCopy& operator=(const DoubledCopy&) = delete;

  void replace(RWSlistCollectables& list, const RWCollectable* alsoKept = nullptr) const {
    replaceDoubled(list, source_, clones_, alsoKept);
  }

 private:
  const RWSlistCollectables& source_;
  RWSlistCollectables clones_;
};

template <class Element>
void copyDoubled(RWSlistCollectables& list, const RWSlistCollectables& source) {
  DoubledCopy<Element>(source).replace(list);
}

// Copies the list as a list of the same objects, then appends a clone of each; deletes nothing.
template <class Element>
void copySharedAndCloned(RWSlistCollectables& list, const RWSlistCollectables& source) {
  list.clear();
  list = source;
  appendClones<Element>(list, source);
}

// Replaces the elements, which are unlinked and not deleted, by clones.
template <class Element>
void copyCloned(RWSlistCollectables& list, const RWSlistCollectables& source) {
  list.clear();
  appendClones<Element>(list, source);
}

}  // namespace bkoq

#endif  // BKOQ_MODEL_COPY_LIST_H_
