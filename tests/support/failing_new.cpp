#include "tests/support/failing_new.h"

#include <cstddef>
#include <new>

namespace bkoq::test {
namespace {

unsigned int failsAt = 0;  // 0: never
unsigned int allocations = 0;
FailingNew::Mode failsHow = FailingNew::kOnce;

bool failsNow() {
  if (failsAt == 0) return false;
  ++allocations;
  return allocations == failsAt || (allocations > failsAt && failsHow == FailingNew::kFromThenOn);
}

}  // namespace

FailingNew::FailingNew(unsigned int nth, Mode mode) {
  allocations = 0;
  failsAt = nth;
  failsHow = mode;
}

FailingNew::~FailingNew() { failsAt = 0; }

bool FailingNew::hasFailed() const { return allocations >= failsAt; }

}  // namespace bkoq::test

// Takes the place of the standard one in the whole process, the library included.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  if (bkoq::test::failsNow()) return nullptr;
  try {
    return ::operator new(size);
  } catch (...) {
    return nullptr;
  }
}
