#ifndef BKOQ_MODEL_ENUMERATE_H_
#define BKOQ_MODEL_ENUMERATE_H_

#include <new>

#include "rw/slistcol.h"

namespace bkoq {

// What an enumeration hands out: the elements themselves, or copies of them. What finds no place is
// taken back.
struct HandOutElements {
  static RWCollectable* handOut(RWCollectable* element) { return element; }
  static void takeBack(RWCollectable* /*element*/) {}
};
struct HandOutCopies {
  static RWCollectable* handOut(RWCollectable* element) { return element->copy(); }
  static void takeBack(RWCollectable* copy) { delete copy; }
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
  for (; placed < n && cursor < list.entries(); ++placed, ++cursor) {
    RWCollectable* handed = Handing::handOut(list.at(cursor));
    if (out->insert(handed) == nullptr) {
      Handing::takeBack(handed);
      break;
    }
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
