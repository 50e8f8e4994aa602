#include "rw/collstr.h"

#include <new>

static_assert(sizeof(RWCollectable) == sizeof(void*), "a collectable is its table pointer");
static_assert(sizeof(RWCollectableString) == 2 * sizeof(void*), "a collectable, then a string");

RWCollectableString::RWCollectableString(const char* text) noexcept : RWCString(text) {}

RWCollectableString::RWCollectableString(const RWCString& text) noexcept : RWCString(text) {}

RWCollectableString& RWCollectableString::operator=(const RWCString& text) noexcept {
  RWCString::operator=(text);
  return *this;
}

RWCollectableString& RWCollectableString::operator=(const char* text) noexcept {
  RWCString::operator=(text);
  return *this;
}

RWCollectable* RWCollectableString::newSpecies() const {
  return new (std::nothrow) RWCollectableString;
}

RWCollectable* RWCollectableString::copy() const {
  return new (std::nothrow) RWCollectableString(*this);
}

RWCollectableString::~RWCollectableString() = default;

int RWCollectableString::compareTo(const RWCollectable* other) const {
  return compareTo(static_cast<const RWCString&>(*static_cast<const RWCollectableString*>(other)));
}

unsigned int RWCollectableString::hash() const {
  // FNV-1a
  unsigned int value = 2166136261U;
  for (const char* byte = data(); *byte != '\0'; ++byte) {
    value = (value ^ static_cast<unsigned char>(*byte)) * 16777619U;
  }
  return value;
}

RWBoolean RWCollectableString::isEqual(const RWCollectable* other) const {
  const auto* text = dynamic_cast<const RWCollectableString*>(other);
  return text != nullptr && RWCString::compareTo(*text) == 0;
}
