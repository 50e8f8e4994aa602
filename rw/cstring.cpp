#include "rw/cstring.h"

#include <limits.h>
#include <stdlib.h>
#include <string.h>

static_assert(sizeof(RWCString) == sizeof(void*), "a string is one pointer");

namespace {

const char* orEmpty(const char* text) { return text != nullptr ? text : ""; }

unsigned int lengthOf(const char* text) {
  return text != nullptr ? static_cast<unsigned int>(strlen(text)) : 0;
}

// Most texts are short: a few moves take less time than the call of memcpy().
void copyText(char* to, const char* from, unsigned int length) {
  if (length > 32) {
    memcpy(to, from, length);
  } else if (length >= 16) {
    memcpy(to, from, 16);
    memcpy(to + length - 16, from + length - 16, 16);
  } else if (length >= 8) {
    memcpy(to, from, 8);
    memcpy(to + length - 8, from + length - 8, 8);
  } else if (length >= 4) {
    memcpy(to, from, 4);
    memcpy(to + length - 4, from + length - 4, 4);
  } else if (length > 0) {
    to[0] = from[0];
    to[length / 2] = from[length / 2];
    to[length - 1] = from[length - 1];
  }
}

}  // namespace

// A block with the one text, then the other; null when both are empty or memory runs out.
RWCString::Block* RWCString::join(const char* left, unsigned int leftLength, const char* right,
                                  unsigned int rightLength) noexcept {
  const unsigned int most = UINT_MAX - sizeof(Block) - 1;
  if (leftLength > most || rightLength > most - leftLength) return nullptr;
  const unsigned int length = leftLength + rightLength;
  if (length == 0) return nullptr;
  auto* block = static_cast<Block*>(malloc(sizeof(Block) + length + 1));
  if (block == nullptr) return nullptr;
  block->holders = 1;
  block->length = length;
  char* text = reinterpret_cast<char*>(block + 1);
  copyText(text, left, leftLength);
  if (rightLength > 0) copyText(text + leftLength, right, rightLength);
  text[length] = '\0';
  return block;
}

void RWCString::hold(Block* block) noexcept {
  if (block != nullptr) __atomic_add_fetch(&block->holders, 1U, __ATOMIC_RELAXED);
}

void RWCString::release(Block* block) noexcept {
  if (block == nullptr) return;
  // Nobody else can come to hold what only this string holds, so most texts need no locked count.
  if (__atomic_load_n(&block->holders, __ATOMIC_ACQUIRE) == 1) {
    free(block);
    return;
  }
  // Whoever frees the block must come after everyone else's last look at it.
  if (__atomic_sub_fetch(&block->holders, 1U, __ATOMIC_ACQ_REL) == 0) free(block);
}

RWCString::RWCString(const char* text) noexcept : block_(join(text, lengthOf(text), nullptr, 0)) {}

RWCString::RWCString(const RWCString& other) noexcept : block_(other.block_) { hold(block_); }

RWCString::~RWCString() { release(block_); }

RWCString& RWCString::operator=(const RWCString& other) noexcept {
  if (this == &other) return *this;
  hold(other.block_);
  release(block_);
  block_ = other.block_;
  return *this;
}

RWCString& RWCString::operator=(const char* text) noexcept {
  // A string is mostly given its text once, when it is still empty.
  Block* former = block_;
  block_ = join(text, lengthOf(text), nullptr, 0);
  if (former != nullptr) release(former);
  return *this;
}

RWCString& RWCString::operator+=(const RWCString& other) noexcept {
  if (other.isNull()) return *this;
  if (isNull()) return *this = other;
  Block* block = join(data(), length(), other.data(), other.length());
  release(block_);
  block_ = block;
  return *this;
}

RWCString& RWCString::operator+=(const char* text) noexcept {
  const unsigned int textLength = lengthOf(text);
  if (textLength == 0) return *this;
  Block* block = join(data(), length(), text, textLength);
  release(block_);
  block_ = block;
  return *this;
}

int RWCString::compareTo(const RWCString& other) const noexcept {
  // Texts that share a block need no look at their bytes.
  return block_ == other.block_ ? 0 : compareTo(other.data());
}

int RWCString::compareTo(const char* text) const noexcept {
  const int order = strcmp(data(), orEmpty(text));
  return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

unsigned int RWCString::index(const char* pattern, unsigned int start) const noexcept {
  if (start > length()) return RW_NPOS;
  const char* found = strstr(data() + start, orEmpty(pattern));
  return found != nullptr ? static_cast<unsigned int>(found - data()) : RW_NPOS;
}

unsigned int RWCString::index(char character, unsigned int start) const noexcept {
  if (character == '\0' || start > length()) return RW_NPOS;
  const char* found = strchr(data() + start, character);
  return found != nullptr ? static_cast<unsigned int>(found - data()) : RW_NPOS;
}

RWCString operator+(const RWCString& left, const RWCString& right) noexcept {
  if (left.isNull()) return right;
  if (right.isNull()) return left;
  return RWCString(RWCString::join(left.data(), left.length(), right.data(), right.length()));
}

RWCString operator+(const RWCString& left, const char* right) noexcept {
  const unsigned int rightLength = lengthOf(right);
  if (rightLength == 0) return left;
  return RWCString(RWCString::join(left.data(), left.length(), right, rightLength));
}

RWCString operator+(const char* left, const RWCString& right) noexcept {
  const unsigned int leftLength = lengthOf(left);
  if (leftLength == 0) return right;
  return RWCString(RWCString::join(left, leftLength, right.data(), right.length()));
}
