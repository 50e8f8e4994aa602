#ifndef BKOQ_MODEL_ENUMERATE_H_
#define BKOQ_MODEL_ENUMERATE_H_

#include <new>

#include "rw/slistcol.h"

namespace bkoq {

// What an enumeration hands out: the elements themselves, or copies of them. A copy that finds no
// place is deleted, since nobody else could.
struct HandOutElements {
  static bool place(RWSlistCollectables& out, RWCollectable* element) {
    return out.insert(element) != nullptr;
  }
};
struct HandOutCopies {
  static bool place(RWSlistCollectables& out, RWCollectable* element) {
    RWCollectable* copy = element->copy();
    if (out.insert(copy) != nullptr) return true;
    delete copy;
    return false;
  }
};

// Hands out up to `n` elements of `list` from the cursor on, in a new collection that the caller
// owns. The cursor moves in its own width; without memory for an element, or for the collection
// itself, it stays there.
template <class Handing = HandOutElements, class Collection, class Cursor>
unsigned int enumerateUpTo(const RWSlistCollectables& list, Cursor& cursor, Collection*& out,
                           unsigned int n) {
  out = new (std::nothrow) Collection;
  if (out == nullptr) return 0;
  unsigned int placed = 0;
  while (placed < n && cursor < list.entries() && Handing::place(*out, list.at(cursor))) {
    ++placed;
    ++cursor;
  }
  return placed;
}

// As above, where 0 means as many as there are in all.
template <class Handing = HandOutElements, class Collection, class Cursor>
unsigned int enumerate(const RWSlistCollectables& list, Cursor& cursor, Collection*& out,
                       unsigned int n) {
  return enumerateUpTo<Handing>(list, cursor, out, n != 0 ? n : list.entries());
}

}  // namespace bkoq

#endif  // BKOQ_MODEL_ENUMERATE_H_
