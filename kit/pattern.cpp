#include "kit/pattern.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace bkoq::kit {
namespace {

bool isBoundary(char character) {
  return character == '\0' || character == '.' || character == '[';
}

// Runs through a path with every place of the pattern that can be reached at once, so that no
// pattern takes longer than its length times that of the path. A place is a bit; few are set.
class Matcher {
 public:
  explicit Matcher(const char* pattern)
      : pattern_(pattern),
        size_(std::strlen(pattern)),
        places_(size_ / kBits + 1),
        next_(size_ / kBits + 1) {
    reach(places_, 0);
    // "**.name" is also about a name at the very start.
    if (std::strncmp(pattern_, "**.", 3) == 0) reach(places_, 3);
  }

  // False when nothing that begins like this can fit.
  bool take(char character) {
    std::fill(next_.begin(), next_.end(), 0);
    bool isAnywhere = false;
    for (std::size_t word = 0; word < places_.size(); ++word) {
      for (std::uint64_t bits = places_[word]; bits != 0; bits &= bits - 1) {
        const std::size_t place = word * kBits + static_cast<std::size_t>(__builtin_ctzll(bits));
        isAnywhere |= takeAt(place, character);
      }
    }
    places_.swap(next_);
    return isAnywhere;
  }

  bool isAtEnd() const { return isReached(places_, size_); }

 private:
  static constexpr std::size_t kBits = 64;
  using Places = std::vector<std::uint64_t>;

  bool takeAt(std::size_t place, char character) {
    if (place == size_) return false;
    if (pattern_[place] != '*') {
      if (pattern_[place] != character) return false;
      reach(next_, place + 1);
      return true;
    }
    const bool isAnything = pattern_[place + 1] == '*';
    if (!isAnything && (character == '.' || character == '[' || character == ']')) return false;
    reach(next_, place);
    return true;
  }

  static bool isReached(const Places& places, std::size_t place) {
    return (places[place / kBits] >> place % kBits & 1) != 0;
  }

  // A star may stand for nothing.
  void reach(Places& places, std::size_t place) const {
    for (;;) {
      places[place / kBits] |= std::uint64_t{1} << place % kBits;
      if (place >= size_ || pattern_[place] != '*') return;
      place += pattern_[place + 1] == '*' ? 2 : 1;
    }
  }

  const char* pattern_;
  std::size_t size_;
  Places places_;
  Places next_;
};

}  // namespace

bool isPattern(const char* path) { return std::strchr(path, '*') != nullptr; }

bool matches(const char* pattern, const char* path) {
  if (!isPattern(pattern)) return std::strcmp(pattern, path) == 0;
  Matcher matcher(pattern);
  for (; *path != '\0'; ++path) {
    if (!matcher.take(*path)) return false;
  }
  return matcher.isAtEnd();
}

bool covers(const char* pattern, const char* path) {
  if (!isPattern(pattern)) {
    const std::size_t length = std::strlen(pattern);
    return length == 0 || (std::strncmp(path, pattern, length) == 0 && isBoundary(path[length]));
  }
  Matcher matcher(pattern);
  for (;; ++path) {
    if (isBoundary(*path) && matcher.isAtEnd()) return true;
    if (*path == '\0') return false;
    if (!matcher.take(*path)) return false;
  }
}

bool leadsTo(const char* pattern, const char* path) {
  if (*path == '\0') return true;
  if (!isPattern(pattern)) {
    const std::size_t length = std::strlen(path);
    return std::strncmp(pattern, path, length) == 0 && isBoundary(pattern[length]);
  }
  Matcher matcher(pattern);
  for (; *path != '\0'; ++path) {
    if (!matcher.take(*path)) return false;
  }
  return true;
}

}  // namespace bkoq::kit
