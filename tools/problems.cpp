#include "tools/problems.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <tuple>

namespace bkoq::tool {
namespace {

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

// Insertions, deletions and replacements that lead from one to the other; case counts for nothing.
std::size_t distance(const std::string& from, const std::string& to) {
  std::vector<std::size_t> row(to.size() + 1);
  for (std::size_t i = 0; i <= to.size(); ++i) row[i] = i;
  for (std::size_t i = 1; i <= from.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const std::size_t replaced = diagonal + (lower(from[i - 1]) == lower(to[j - 1]) ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
    }
  }
  return row[to.size()];
}

}  // namespace

std::vector<Problem> Problems::sorted() const {
  std::vector<Problem> sorted = list_;
  std::stable_sort(sorted.begin(), sorted.end(), [](const Problem& a, const Problem& b) {
    return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
  });
  return sorted;
}

std::string lineOf(const Problem& problem, const std::string& file) {
  std::string line = file + ":" + std::to_string(problem.place.line) + ":" +
                     std::to_string(problem.place.column) + ": ";
  if (!problem.path.empty()) line += problem.path + ": ";
  return line + problem.message;
}

const std::string* nearestTo(const std::string& word, const std::vector<std::string>& words) {
  // A file may hold a "word" of any length.
  constexpr std::size_t kLongest = 40;
  if (word.size() > kLongest) return nullptr;
  const std::string* nearest = nullptr;
  std::size_t least = std::max<std::size_t>(word.size() / 3, 1) + 1;
  for (const std::string& candidate : words) {
    const std::size_t steps = distance(word, candidate);
    if (steps < least) {
      least = steps;
      nearest = &candidate;
    }
  }
  return nearest;
}

}  // namespace bkoq::tool
