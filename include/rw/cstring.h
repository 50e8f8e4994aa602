#ifndef RW_CSTRING_H_
#define RW_CSTRING_H_

#include "rw/defs.h"
#include "rw/export.h"

/// A text, by value. Copies share one immutable block, so that copying and assigning a string takes
/// constant time, allocates nothing and cannot fail; separate strings may be used on separate
/// threads at the same time. A text holds no NUL: its length is that of its NUL-terminated form.
///
/// Wherever a `const char*` is taken, null is the empty text. An operation that makes a new text
/// gives the empty one when memory runs out. Nothing throws.
class RW_API RWCString {
 public:
  /// The empty text.
  constexpr RWCString() noexcept : block_(nullptr) {}
  RWCString(const char* text) noexcept;
  RWCString(const RWCString& other) noexcept;
  ~RWCString();

  RWCString& operator=(const RWCString& other) noexcept;  ///< shares the text
  /// The argument may lie inside this string's own text.
  RWCString& operator=(const char* text) noexcept;
  /// Appends; the argument may be, or lie inside, this string's own text.
  RWCString& operator+=(const RWCString& other) noexcept;
  RWCString& operator+=(const char* text) noexcept;

  /// Negative, 0 or positive: compares byte by byte as unsigned numbers, case-sensitively.
  int compareTo(const RWCString& other) const noexcept;
  int compareTo(const char* text) const noexcept;

  /// Where `pattern` first is at or after `start`, or RW_NPOS. An empty pattern is everywhere in
  /// the text, at its end too.
  unsigned int index(const char* pattern, unsigned int start = 0) const noexcept;
  /// The same for one character; a NUL is nowhere.
  unsigned int index(char character, unsigned int start = 0) const noexcept;

  /// In bytes, without the final NUL.
  unsigned int length() const noexcept { return block_ != nullptr ? block_->length : 0; }
  /// Whether the text is empty.
  RWBoolean isNull() const noexcept { return block_ == nullptr; }
  /// The NUL-terminated text, never null; valid until this string is changed or destroyed.
  const char* data() const noexcept {
    return block_ != nullptr ? reinterpret_cast<const char*>(block_ + 1) : "";
  }
  /// As data().
  operator const char*() const noexcept { return data(); }

 private:
  friend class RWCTokenizer;
  friend RW_API RWCString operator+(const RWCString& left, const RWCString& right) noexcept;
  friend RW_API RWCString operator+(const RWCString& left, const char* right) noexcept;
  friend RW_API RWCString operator+(const char* left, const RWCString& right) noexcept;

  // Stands before a text and counts the strings that share it.
  struct Block {
    unsigned int holders;
    unsigned int length;
  };

  explicit RWCString(Block* block) noexcept : block_(block) {}
  static Block* join(const char* left, unsigned int leftLength, const char* right,
                     unsigned int rightLength) noexcept;
  static void hold(Block* block) noexcept;
  static void release(Block* block) noexcept;

  Block* block_;  // null for the empty text
};

/// Concatenation.
RW_API RWCString operator+(const RWCString& left, const RWCString& right) noexcept;
RW_API RWCString operator+(const RWCString& left, const char* right) noexcept;
RW_API RWCString operator+(const char* left, const RWCString& right) noexcept;

/// Comparisons, in the order of RWCString::compareTo().
inline bool operator==(const RWCString& left, const RWCString& right) noexcept {
  return left.compareTo(right) == 0;
}
inline bool operator!=(const RWCString& left, const RWCString& right) noexcept {
  return left.compareTo(right) != 0;
}
inline bool operator<(const RWCString& left, const RWCString& right) noexcept {
  return left.compareTo(right) < 0;
}
inline bool operator>(const RWCString& left, const RWCString& right) noexcept {
  return left.compareTo(right) > 0;
}
inline bool operator<=(const RWCString& left, const RWCString& right) noexcept {
  return left.compareTo(right) <= 0;
}
inline bool operator>=(const RWCString& left, const RWCString& right) noexcept {
  return left.compareTo(right) >= 0;
}
inline bool operator==(const RWCString& left, const char* right) noexcept {
  return left.compareTo(right) == 0;
}
inline bool operator!=(const RWCString& left, const char* right) noexcept {
  return left.compareTo(right) != 0;
}
inline bool operator<(const RWCString& left, const char* right) noexcept {
  return left.compareTo(right) < 0;
}
inline bool operator>(const RWCString& left, const char* right) noexcept {
  return left.compareTo(right) > 0;
}
inline bool operator<=(const RWCString& left, const char* right) noexcept {
  return left.compareTo(right) <= 0;
}
inline bool operator>=(const RWCString& left, const char* right) noexcept {
  return left.compareTo(right) >= 0;
}
inline bool operator==(const char* left, const RWCString& right) noexcept {
  return right.compareTo(left) == 0;
}
inline bool operator!=(const char* left, const RWCString& right) noexcept {
  return right.compareTo(left) != 0;
}
inline bool operator<(const char* left, const RWCString& right) noexcept {
  return right.compareTo(left) > 0;
}
inline bool operator>(const char* left, const RWCString& right) noexcept {
  return right.compareTo(left) < 0;
}
inline bool operator<=(const char* left, const RWCString& right) noexcept {
  return right.compareTo(left) >= 0;
}
inline bool operator>=(const char* left, const RWCString& right) noexcept {
  return right.compareTo(left) <= 0;
}

#endif  // RW_CSTRING_H_
