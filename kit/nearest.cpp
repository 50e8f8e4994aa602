#include "kit/nearest.h"

#include <algorithm>
#include <cctype>

namespace bkoq::kit {
namespace {

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

// Insertions, deletions, replacements and swaps of neighbours that lead from one to the other; case
// counts for nothing.
std::size_t distance(std::string_view from, std::string_view to) {
  const std::size_t width = to.size() + 1;
  std::vector<std::size_t> steps((from.size() + 1) * width);
  const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& {
    return steps[i * width + j];
  };
  for (std::size_t j = 0; j < width; ++j) at(0, j) = j;
  for (std::size_t i = 1; i <= from.size(); ++i) {
    at(i, 0) = i;
    for (std::size_t j = 1; j < width; ++j) {
      const bool isSame = lower(from[i - 1]) == lower(to[j - 1]);
      at(i, j) =
          std::min({at(i - 1, j) + 1, at(i, j - 1) + 1, at(i - 1, j - 1) + (isSame ? 0 : 1)});
      if (i > 1 && j > 1 && lower(from[i - 1]) == lower(to[j - 2]) &&
          lower(from[i - 2]) == lower(to[j - 1])) {
        at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
      }
    }
  }
  return steps.back();
}

}  // namespace

std::size_t nearestOf(std::string_view word, const std::vector<std::string_view>& words) {
  // A "word" may be of any length.
  constexpr std::size_t kLongest = 40;
  if (word.size() > kLongest) return words.size();
  std::size_t nearest = words.size();
  std::size_t least = std::max<std::size_t>(word.size() / 3, 1) + 1;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::size_t longer = std::max(word.size(), words[i].size());
    // Each character more takes a step.
    if (longer - std::min(word.size(), words[i].size()) >= least) continue;
    const std::size_t steps = distance(word, words[i]);
    if (steps < least) {
      least = steps;
      nearest = i;
    }
  }
  return nearest;
}

}  // namespace bkoq::kit
