#ifndef BKOQ_TRANSFER_BLOCKS_H_
#define BKOQ_TRANSFER_BLOCKS_H_

#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include "rw/cstring.h"
#include "transfer/report.h"

namespace bkoq {

// An empty text, for one that is not given. It lies among the variables, in a page that has been
// written since the library was loaded. Constants are in pages that a flattening does not read
// otherwise, and the first access to one costs the first flattening of a process a tenth.
inline char notGiven[] = "";

// A text of known length, with a NUL after it. Conversions take null for an empty text.
struct Text {
  Text(const RWCString& string) : data(string.data()), length(string.length()) {}
  Text(const char* string) : data(string != nullptr ? string : notGiven), length(strlen(data)) {}

  bool isEmpty() const { return length == 0; }
  bool equals(const Text& other) const {
    return length == other.length && memcmp(data, other.data, length) == 0;
  }

  const char* data;
  size_t length;
};

// memcpy() for texts, most of which are so short that its call costs more than the copy: a tenth of
// a flattening. Two moves that overlap copy any length up to twice theirs.
inline void copyBytes(char* to, const char* from, size_t count) {
  if (count > 32) {
    memcpy(to, from, count);
  } else if (count >= 16) {
    memcpy(to, from, 16);
    memcpy(to + count - 16, from + count - 16, 16);
  } else if (count >= 8) {
    memcpy(to, from, 8);
    memcpy(to + count - 8, from + count - 8, 8);
  } else if (count >= 4) {
    memcpy(to, from, 4);
    memcpy(to + count - 4, from + count - 4, 4);
  } else if (count > 0) {
    to[0] = from[0];
    to[count / 2] = from[count / 2];
    to[count - 1] = from[count - 1];
  }
}

// A block with the first text, the second right after it and `nuls` NULs at the end; null when
// memory runs out.
inline char* joinTexts(const Text& first, const Text& second, size_t nuls) {
  const size_t length = first.length + second.length;
  char* block = static_cast<char*>(malloc(length + nuls));
  if (block == nullptr) return nullptr;
  copyBytes(block, first.data, first.length);
  copyBytes(block + first.length, second.data, second.length);
  memset(block + length, 0, nuls);
  return block;
}

// The block that strdup() would give, whatever the length of the text.
inline char* duplicate(const Text& text) {
  char* block = static_cast<char*>(malloc(text.length + 1));
  if (block == nullptr) return nullptr;
  copyBytes(block, text.data, text.length + 1);
  return block;
}

// A copy of a non-empty text, null for an empty one.
inline char* copyText(const Text& text) { return text.isEmpty() ? nullptr : duplicate(text); }

// A field takes a copy of a non-empty text; an empty one leaves it as it is.
inline void storeText(char*& field, const Text& text) {
  if (!text.isEmpty()) field = duplicate(text);
}

// For fields that may hold two texts: the block ends with one NUL more, so that a reader that goes
// on after the text finds an empty second one and never leaves the block.
inline char* duplicateFirst(const Text& text) { return joinTexts(text, "", 2); }

inline void storeFirstText(char*& field, const Text& text) {
  if (!text.isEmpty()) field = duplicateFirst(text);
}

// Two texts in a row, each with its NUL; either may be empty.
inline char* packTexts(const Text& first, const Text& second) {
  char* block = static_cast<char*>(malloc(first.length + second.length + 2));
  if (block == nullptr) return nullptr;
  copyBytes(block, first.data, first.length + 1);
  copyBytes(block + first.length + 1, second.data, second.length + 1);
  return block;
}

// The user and the second password of a disk, as one field: joined by a colon, or two texts in a
// row. A joined field needs a user; the other form needs either of the two.
inline bool hasCredentials(bool joined, const Text& user, const Text& password) {
  return !user.isEmpty() || (!joined && !password.isEmpty());
}

inline char* copyCredentials(bool joined, const Text& user, const Text& password) {
  if (password.isEmpty()) return duplicateFirst(user);
  if (!joined) return packTexts(user, password);
  const size_t length = user.length + 1 + password.length;
  char* block = static_cast<char*>(malloc(length + 2));
  if (block == nullptr) return nullptr;
  copyBytes(block, user.data, user.length);
  block[user.length] = ':';
  copyBytes(block + user.length + 1, password.data, password.length);
  memset(block + length, 0, 2);
  return block;
}

// A new zeroed record, or null after a line that names it.
template <class Record>
Record* allocateRecord(const char* name) {
  Record* record = static_cast<Record*>(malloc(sizeof(Record)));
  if (record == nullptr) {
    failedInMalloc(name);
    return nullptr;
  }
  memset(record, 0, sizeof(Record));
  return record;
}

// Lengthens an array inside a record by exactly one zeroed element, which it returns. The reader of
// the records counts on the count being raised first: after a failure, reported by a line that
// names the record, the count is one too high, the array is null and the old one is lost.
template <class Record>
Record* appendRecord(uint32_t& count, Record*& array, const char* name) {
  ++count;
  if (array == nullptr) {
    array = allocateRecord<Record>(name);
    return array;
  }
  array = static_cast<Record*>(realloc(array, count * sizeof(Record)));
  if (array == nullptr) {
    failedInRealloc(name);
    return nullptr;
  }
  Record* last = array + (count - 1);
  memset(last, 0, sizeof(Record));
  return last;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_BLOCKS_H_
