#ifndef BKOQ_RW_INLINE_H_
#define BKOQ_RW_INLINE_H_

// What the libraries themselves compile in place of the smallest operations of strings and lists. A
// model class has up to twenty strings, most of them empty, and each would cost a call into the
// other library when the object is made, filled and deleted: a fifth of all that a client waits
// for. The operations are still exported as functions, which is all that clients see: gnu_inline
// makes no second copy of any.
//
// Not public, so that a fix in here never needs a client to be compiled again.

#include <stdlib.h>

#include "rw/collstr.h"
#include "rw/slistcol.h"

#define RW_INLINE inline __attribute__((gnu_inline))

#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wgnu-inline-cpp-without-extern"  // members cannot say extern
#endif

RW_INLINE RWCollectable::~RWCollectable() {}

RW_INLINE void RWCString::hold(Block* block) noexcept {
  if (block != nullptr) __atomic_add_fetch(&block->holders, 1U, __ATOMIC_RELAXED);
}

RW_INLINE RWCString::RWCString(const RWCString& other) noexcept : block_(other.block_) {
  hold(block_);
}

RW_INLINE RWCString::~RWCString() {
  if (block_ != nullptr) release(block_);
}

RW_INLINE RWCollectableString::~RWCollectableString() {}

RW_INLINE RWSlist::~RWSlist() {
  if (elements_ != nullptr) free(elements_);
}

#ifndef __clang__  // which would make and export the class's virtual table in each library
RW_INLINE RWSlistCollectables::~RWSlistCollectables() {}
#endif

#ifdef __clang__
#pragma clang diagnostic pop
#endif
#undef RW_INLINE

#endif  // BKOQ_RW_INLINE_H_
