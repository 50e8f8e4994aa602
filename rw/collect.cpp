#include "rw/collect.h"

#include <stdint.h>

RWCollectable* RWCollectable::newSpecies() const { return nullptr; }

RWCollectable* RWCollectable::copy() const { return nullptr; }

RWClassID RWCollectable::isA() const { return 0; }

RWCollectable::~RWCollectable() = default;

unsigned int RWCollectable::binaryStoreSize() const { return 0; }

int RWCollectable::compareTo(const RWCollectable* other) const {
  const auto mine = reinterpret_cast<uintptr_t>(this);
  const auto its = reinterpret_cast<uintptr_t>(other);
  return mine < its ? -1 : (mine > its ? 1 : 0);
}

unsigned int RWCollectable::hash() const {
  // Objects are aligned, so that the lowest bits would be the same in all hashes.
  return static_cast<unsigned int>(reinterpret_cast<uintptr_t>(this) / sizeof(void*));
}

RWBoolean RWCollectable::isEqual(const RWCollectable* other) const { return this == other; }

void RWCollectable::restoreGuts(RWFile& /*file*/) {}

void RWCollectable::restoreGuts(RWvistream& /*stream*/) {}

void RWCollectable::saveGuts(RWFile& /*file*/) const {}

void RWCollectable::saveGuts(RWvostream& /*stream*/) const {}
