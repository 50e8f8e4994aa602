#ifndef BKOQ_TRANSFER_INTERNAL_WRAP_MALLOC_H_
#define BKOQ_TRANSFER_INTERNAL_WRAP_MALLOC_H_

#include <cstddef>
#include <vector>

// The direct allocations of the library, as this test program sees them: the linker sends each call
// of malloc() and realloc() in the library's objects here.
struct Allocation {
  enum Kind { kMalloc, kRealloc };
  Kind kind;
  std::size_t size;
  bool operator==(const Allocation& other) const {
    return kind == other.kind && size == other.size;
  }
};

// While it lives, notes the allocations and fails the one of that number, counted from 1; 0 fails
// none. What a failure leaves lost, by contract, is no leak to LeakSanitizer.
class AllocationWatch {
 public:
  explicit AllocationWatch(std::size_t failing);
  ~AllocationWatch();
  AllocationWatch(const AllocationWatch&) = delete;
  AllocationWatch& operator=(const AllocationWatch&) = delete;

  const std::vector<Allocation>& seen() const;
};

#endif  // BKOQ_TRANSFER_INTERNAL_WRAP_MALLOC_H_
