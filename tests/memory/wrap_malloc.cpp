#include "tests/memory/wrap_malloc.h"

#include <stdlib.h>

namespace bkoq::test {
namespace {
Allocations* active = nullptr;
}

Allocations::~Allocations() {
  for (void* block : blocks_) free(block);
}

void Allocations::start() { active = this; }
void Allocations::stop() { active = nullptr; }

bool Allocations::note(bool isRealloc, std::size_t size, void* block) {
  const std::size_t number = calls_.size();
  calls_.push_back({isRealloc, size});
  const bool fails = number == failing_ || (andAllAfter_ && number > failing_);
  if (fails && block != nullptr) lost_ = block;
  return !fails;
}

void Allocations::moved(void* from, void* to) {
  blocks_.erase(from);
  blocks_.insert(to);
}

}  // namespace bkoq::test

using bkoq::test::active;

// Visible, since the linker also wraps what the sanitizers' libraries refer to.
#pragma GCC visibility push(default)
extern "C" {

void* __real_malloc(std::size_t size);
void* __real_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size) {
  if (active == nullptr) return __real_malloc(size);
  if (!active->note(false, size, nullptr)) return nullptr;
  void* block = __real_malloc(size);
  active->moved(nullptr, block);
  return block;
}

void* __wrap_realloc(void* block, std::size_t size) {
  if (active == nullptr) return __real_realloc(block, size);
  if (!active->note(true, size, block)) return nullptr;
  void* moved = __real_realloc(block, size);
  active->moved(block, moved);
  return moved;
}

}  // extern "C"
#pragma GCC visibility pop
