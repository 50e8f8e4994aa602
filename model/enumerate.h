#ifndef BKOQ_MODEL_ENUMERATE_H_
#define BKOQ_MODEL_ENUMERATE_H_

#include <new>

#include "rw/slistcol.h"

namespace bkoq {

inline RWCollectable* theObject(RWCollectable* element) { return element; }
inline RWCollectable* aCopy(RWCollectable* element) { return element->copy(); }

// Hands out up to `n` elements of `list` from the cursor on, in a new collection that the caller
// owns. The cursor moves in its own width; without memory for an element, or for the collection
// itself, it stays there.
template <class Collection, class Cursor>
unsigned int enumerateUpTo(const RWSlistCollectables& list, Cursor& cursor, Collection*& out,
                           unsigned int n, RWCollectable* (*handOut)(RWCollectable*) = theObject) {
  out = new (std::nothrow) Collection;
  if (out == nullptr) return 0;
  unsigned int placed = 0;
  for (; placed < n && cursor < list.entries(); ++placed, ++cursor) {
    if (out->insert(handOut(list.at(cursor))) == nullptr) break;
  }
  return placed;
}

// As above, with 0 standing for as many as there are in all.
template <class Collection, class Cursor>
unsigned int enumerate(const RWSlistCollectables& list, Cursor& cursor, Collection*& out,
                       unsigned int n, RWCollectable* (*handOut)(RWCollectable*) = theObject) {
  return enumerateUpTo(list, cursor, out, n != 0 ? n : list.entries(), handOut);
}

}  // namespace bkoq

#endif  // BKOQ_MODEL_ENUMERATE_H_
