#ifndef RW_SLISTCOL_H_
#define RW_SLISTCOL_H_

#include "rw/collect.h"
#include "rw/export.h"

/// The list of element addresses under RWSlistCollectables. It never deletes an element.
class RW_API RWSlist {
 public:
  /// Makes this list hold the same elements, not copies of them. When memory runs out this list
  /// stays as it was.
  RWSlist& operator=(const RWSlist& other) noexcept;

  /// How many elements are listed.
  unsigned int entries() const noexcept { return entries_; }
  /// Whether none is.
  RWBoolean isEmpty() const noexcept { return entries_ == 0; }

 protected:
  constexpr RWSlist() noexcept : elements_(nullptr), entries_(0), capacity_(0) {}
  // Empty when memory runs out.
  RWSlist(const RWSlist& other) noexcept;
  ~RWSlist();

  RWCollectable** elements_;  ///< their addresses in order, or null
  unsigned int entries_;      ///< how many there are
  unsigned int capacity_;     ///< how many fit before the list grows
};

/// A list of collectables; at(), entries() and insert() take constant time. It holds the addresses
/// of its elements, which stay their owner's: only clearAndDestroy() and removeAndDestroy() delete
/// any. An element may be listed more than once.
///
/// Positions count from 0. "Equal" means that the element's isEqual() says so of the argument. No
/// list holds null: adding it is refused, and nothing is equal to it. What adds an element returns
/// it, or null when it was refused or memory ran out; the list is then as it was.
class RW_API RWSlistCollectables : public RWCollectable, public RWSlist {
 public:
  /// An empty list.
  constexpr RWSlistCollectables() noexcept {}
  /// A list of the same elements, empty when memory runs out.
  RWSlistCollectables(const RWSlistCollectables&) = default;
  RWSlistCollectables& operator=(const RWSlistCollectables&) = default;
  /// Deletes no element.
  ~RWSlistCollectables() override;

  /// Adds at the end; both are the same.
  RWCollectable* insert(RWCollectable* element) noexcept;
  RWCollectable* append(RWCollectable* element) noexcept;  ///< as insert()
  /// Adds at the front.
  RWCollectable* prepend(RWCollectable* element) noexcept;
  /// Adds so that the element is at `position`; refused when that is beyond entries().
  RWCollectable* insertAt(unsigned int position, RWCollectable* element) noexcept;
  /// Adds after the element at `position`, -1 meaning at the front; refused when there is none.
  RWCollectable* insertAfter(int position, RWCollectable* element) noexcept;

  /// The element at `position`, or null.
  RWCollectable* at(unsigned int position) const noexcept {
    return position < entries_ ? elements_[position] : nullptr;
  }
  /// The first element, or null.
  RWCollectable* first() const noexcept { return at(0); }
  /// The last element, or null.
  RWCollectable* last() const noexcept { return at(entries_ - 1); }

  /// Unlinks all elements and frees the list's memory.
  void clear() noexcept;
  /// Unlinks all elements, then deletes each, once even if it was listed more often, in no
  /// particular order. Their destructors find the list empty.
  void clearAndDestroy();
  /// Unlinks the first equal element and returns it, null when there is none.
  RWCollectable* remove(const RWCollectable* target);
  /// Unlinks the first equal element and deletes it; the argument may be that element.
  void removeAndDestroy(const RWCollectable* target);

  /// Whether there is an equal element.
  RWBoolean contains(const RWCollectable* target) const;
  /// The first equal element, or null.
  RWCollectable* find(const RWCollectable* target) const;
  /// The position of the first equal element, or RW_NPOS.
  unsigned int index(const RWCollectable* target) const;
  /// How many elements are equal.
  unsigned int occurrencesOf(const RWCollectable* target) const;
  /// Calls `function`, unless it is null, with each element in turn and with `data`.
  void apply(void (*function)(RWCollectable* element, void* data), void* data);
};

/// A walk through a list, which must outlive it. Elements that are appended during the walk are
/// still visited; after other changes of the list the walk may skip or repeat some.
class RW_API RWSlistCollectablesIterator {
 public:
  /// Stands before the first element.
  explicit RWSlistCollectablesIterator(RWSlistCollectables& list) noexcept;

  /// The next element, or null at the end.
  RWCollectable* operator()() noexcept;

 private:
  RWSlistCollectables* list_;
  unsigned int next_;
};

#endif  // RW_SLISTCOL_H_
