#ifndef BKOQ_TESTS_RANDOM_RANDOM_H_
#define BKOQ_TESTS_RANDOM_RANDOM_H_

#include <cstdint>

namespace bkoq::test {

// A generator whose numbers depend on the seed alone, on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    std::uint64_t z = (state_ += 0x9e3779b97f4a7c15u);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
    return z ^ (z >> 31);
  }

  // 0 to bound - 1.
  std::uint32_t below(std::uint32_t bound) {
    return static_cast<std::uint32_t>(((next() >> 32) * bound) >> 32);
  }

  // True `in` times of `of`.
  bool chance(std::uint32_t in, std::uint32_t of) { return below(of) < in; }

 private:
  std::uint64_t state_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_RANDOM_H_
