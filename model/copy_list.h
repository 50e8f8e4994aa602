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

// Appends a clone of every element of `source` that can be cloned.
template <class Element>
void appendClones(RWSlistCollectables& list, const RWSlistCollectables& source) {
  const unsigned int count = source.entries();  // the two may be one list
  for (unsigned int i = 0; i < count; ++i) {
    list.insert(cloneOf(static_cast<Element*>(source.at(i))));
  }
}

// Deletes the elements of `list` that `kept` does not hold, each once; both lists stay as they are
// otherwise, so the caller must replace `list`.
void destroyUnlessHeld(RWSlistCollectables& list, const RWSlistCollectables& kept);

// Makes `list` hold the elements of `source`, then a clone of each. The clones are taken first, so
// that what is deleted of the former elements cannot be part of what is copied.
template <class Element>
void copyDoubled(RWSlistCollectables& list, const RWSlistCollectables& source) {
  RWSlistCollectables clones;
  appendClones<Element>(clones, source);
  destroyUnlessHeld(list, source);
  list = source;
  for (unsigned int i = 0; i < clones.entries(); ++i) list.insert(clones.at(i));
}

// Copies the list as a list of the same objects, then appends a clone of each; deletes nothing.
template <class Element>
void copySharedAndCloned(RWSlistCollectables& list, const RWSlistCollectables& source) {
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
