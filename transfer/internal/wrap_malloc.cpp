#include "transfer/internal/wrap_malloc.h"

#if defined(__SANITIZE_ADDRESS__)
#define BKOQ_HAVE_LSAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BKOQ_HAVE_LSAN 1
#endif
#endif
#ifdef BKOQ_HAVE_LSAN
#include <sanitizer/lsan_interface.h>
#endif

namespace {

bool watching = false;
std::size_t failingNumber = 0;
std::vector<Allocation> allocations;

// Whether this allocation is to succeed.
bool note(Allocation::Kind kind, std::size_t size) {
  if (!watching) return true;
  allocations.push_back({kind, size});
  return allocations.size() != failingNumber;
}

}  // namespace

extern "C" {

void* __real_malloc(std::size_t size);
void* __real_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size) {
  return note(Allocation::kMalloc, size) ? __real_malloc(size) : nullptr;
}

void* __wrap_realloc(void* block, std::size_t size) {
  return note(Allocation::kRealloc, size) ? __real_realloc(block, size) : nullptr;
}

}  // extern "C"

AllocationWatch::AllocationWatch(std::size_t failing) {
#ifdef BKOQ_HAVE_LSAN
  if (failing != 0) __lsan_disable();
#endif
  allocations.clear();
  allocations.reserve(4096);
  failingNumber = failing;
  watching = true;
}

AllocationWatch::~AllocationWatch() {
  watching = false;
#ifdef BKOQ_HAVE_LSAN
  if (failingNumber != 0) __lsan_enable();
#endif
}

const std::vector<Allocation>& AllocationWatch::seen() const { return allocations; }
