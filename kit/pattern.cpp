#include "kit/pattern.h"

#include <cstring>
#include <vector>

namespace bkoq::kit {
namespace {

bool isBoundary(char character) {
  return character == '\0' || character == '.' || character == '[';
}

// Runs through a path with every place of the pattern that can be reached at once, so that no
// pattern takes longer than its length times that of the path.
class Matcher {
 public:
  explicit Matcher(const char* pattern)
      : pattern_(pattern), size_(std::strlen(pattern)), places_(size_ + 1) {
    reach(places_, 0);
    // "**.name" is also about a name at the very start.
    if (std::strncmp(pattern_, "**.", 3) == 0) reach(places_, 3);
  }

  void take(char character) {
    std::vector<bool> next(size_ + 1);
    for (std::size_t i = 0; i < size_; ++i) {
      if (!places_[i]) continue;
      if (pattern_[i] != '*') {
        if (pattern_[i] == character) reach(next, i + 1);
      } else if (pattern_[i + 1] == '*') {
        reach(next, i);
      } else if (character != '.' && character != '[' && character != ']') {
        reach(next, i);
      }
    }
    places_ = next;
  }

  bool isAtEnd() const { return places_[size_]; }
  bool isAnywhere() const {
    for (const bool isReached : places_) {
      if (isReached) return true;
    }
    return false;
  }

 private:
  // A star may stand for nothing.
  void reach(std::vector<bool>& places, std::size_t place) const {
    for (;;) {
      places[place] = true;
      if (place >= size_ || pattern_[place] != '*') return;
      place += pattern_[place + 1] == '*' ? 2 : 1;
    }
  }

  const char* pattern_;
  std::size_t size_;
  std::vector<bool> places_;
};

}  // namespace

bool isPattern(const char* path) { return std::strchr(path, '*') != nullptr; }

bool matches(const char* pattern, const char* path) {
  if (!isPattern(pattern)) return std::strcmp(pattern, path) == 0;
  Matcher matcher(pattern);
  for (; *path != '\0'; ++path) matcher.take(*path);
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
    matcher.take(*path);
  }
}

bool leadsTo(const char* pattern, const char* path) {
  if (*path == '\0') return true;
  if (!isPattern(pattern)) {
    const std::size_t length = std::strlen(path);
    return std::strncmp(pattern, path, length) == 0 && isBoundary(pattern[length]);
  }
  Matcher matcher(pattern);
  for (; *path != '\0'; ++path) matcher.take(*path);
  return matcher.isAnywhere();
}

}  // namespace bkoq::kit
