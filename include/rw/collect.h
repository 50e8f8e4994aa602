#ifndef RW_COLLECT_H_
#define RW_COLLECT_H_

#include "rw/defs.h"
#include "rw/export.h"

// A list compares, and a flattening asks, its elements by their class at run time; the client's own
// classes must be able to answer.
#if defined(__GNUC__) && !defined(__GXX_RTTI)
#include "libbkoq asks objects for their class: compile without -fno-rtti"
#endif

class RWFile;
class RWvistream;
class RWvostream;

/// Base of everything that a list can hold. The order of the virtual operations is part of the
/// binary interface.
class RW_API RWCollectable {
 public:
  constexpr RWCollectable() noexcept {}
  RWCollectable(const RWCollectable&) = default;
  RWCollectable& operator=(const RWCollectable&) = default;

  /// A new default object of the same class, the caller's; null where a class does not say how, or
  /// when memory runs out.
  virtual RWCollectable* newSpecies() const;
  /// A new object equal to this one, the caller's; null as for newSpecies().
  virtual RWCollectable* copy() const;
  /// The number of the class; 0 where a class has none.
  virtual RWClassID isA() const;
  virtual ~RWCollectable();
  /// How many bytes saveGuts() writes; the base writes none.
  virtual unsigned int binaryStoreSize() const;
  /// Negative, 0 or positive; the base orders by address. The argument must not be null.
  virtual int compareTo(const RWCollectable* other) const;
  /// Equal objects have equal hashes; the base's comes from the address.
  virtual unsigned int hash() const;
  /// Whether a list takes the two for the same; in the base, whether they are one object.
  virtual RWBoolean isEqual(const RWCollectable* other) const;
  /// The four stores of the base read and write nothing.
  virtual void restoreGuts(RWFile& file);
  virtual void restoreGuts(RWvistream& stream);
  virtual void saveGuts(RWFile& file) const;        ///< writes nothing, as the next
  virtual void saveGuts(RWvostream& stream) const;  ///< writes nothing
};

#endif  // RW_COLLECT_H_
