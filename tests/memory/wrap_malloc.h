#ifndef BKOQ_TESTS_MEMORY_WRAP_MALLOC_H_
#define BKOQ_TESTS_MEMORY_WRAP_MALLOC_H_

#include <cstddef>
#include <set>
#include <vector>

namespace bkoq::test {

// The library's own allocations, one by one: the linker sends each call of malloc() and realloc()
// in the library's objects here.

struct AllocationCall {
  bool isRealloc;
  std::size_t size;
};

// Notes every allocation between start() and stop(), and lets some fail. In the end it frees all
// the blocks that are not handed over.
class Allocations {
 public:
  // Fails the allocation of that number, counted from 0, and with `andAllAfter` all later ones.
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  explicit Allocations(std::size_t failing = kNone, bool andAllAfter = false)
      : failing_(failing), andAllAfter_(andAllAfter) {}
  ~Allocations();
  Allocations(const Allocations&) = delete;
  Allocations& operator=(const Allocations&) = delete;

  void start();
  static void stop();

  const std::vector<AllocationCall>& calls() const { return calls_; }

  // How many blocks there are, and the one that a failing realloc() was to lengthen: whoever called
  // it has forgotten it.
  std::size_t blocks() const { return blocks_.size(); }
  void* lost() const { return lost_; }
  // From now on the blocks are the caller's to free.
  void handOver() { blocks_.clear(); }

  // For the wrapped functions: whether this call, for a block or a new one, may succeed, and what
  // it gave.
  bool note(bool isRealloc, std::size_t size, void* block);
  void moved(void* from, void* to);

 private:
  std::size_t failing_;
  bool andAllAfter_;
  std::vector<AllocationCall> calls_;
  std::set<void*> blocks_;
  void* lost_ = nullptr;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_MEMORY_WRAP_MALLOC_H_
