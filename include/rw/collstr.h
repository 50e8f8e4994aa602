#ifndef RW_COLLSTR_H_
#define RW_COLLSTR_H_

#include "rw/collect.h"
#include "rw/cstring.h"
#include "rw/export.h"

/// A text that a list can hold. Comparison, equality, hash and copies go by the text.
class RW_API RWCollectableString : public RWCollectable, public RWCString {
 public:
  constexpr RWCollectableString() noexcept {}
  RWCollectableString(const char* text) noexcept;       ///< null is the empty text
  RWCollectableString(const RWCString& text) noexcept;  ///< that text
  RWCollectableString(const RWCollectableString&) = default;

  RWCollectableString& operator=(const RWCollectableString&) = default;
  RWCollectableString& operator=(const RWCString& text) noexcept;
  RWCollectableString& operator=(const char* text) noexcept;

  RWCollectable* newSpecies() const override;
  RWCollectable* copy() const override;
  ~RWCollectableString() override;
  using RWCString::compareTo;
  /// The argument must be an RWCollectableString.
  int compareTo(const RWCollectable* other) const override;
  unsigned int hash() const override;
  /// 0 for anything but an RWCollectableString.
  RWBoolean isEqual(const RWCollectable* other) const override;
};

#endif  // RW_COLLSTR_H_
