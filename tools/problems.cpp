#include "tools/problems.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdio>
#include <tuple>

#include "kit/characters.h"

namespace bkoq::tool {
namespace {

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

// Insertions, deletions, replacements and swaps of neighbours that lead from one to the other; case
// counts for nothing.
std::size_t distance(const std::string& from, const std::string& to) {
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

bool Problems::empty() const {
  return std::all_of(list_.begin(), list_.end(), [](const Problem& p) { return p.isWarning; });
}

std::vector<Problem> Problems::sorted() const {
  std::vector<Problem> sorted = list_;
  std::stable_sort(sorted.begin(), sorted.end(), [](const Problem& a, const Problem& b) {
    return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
  });
  return sorted;
}

std::string shortened(const std::string& text) {
  constexpr std::size_t kMost = 80;
  if (text.size() <= kMost) return text;
  std::size_t end = kMost;
  while (end > 0 && isContinuation(text[end])) --end;
  return text.substr(0, end) + "...";
}

std::string inQuotes(const std::string& text) { return "\"" + shortened(text) + "\""; }

std::string printable(const std::string& text) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    const kit::Character character = kit::characterAt(text, at);
    if (character.isPrintable) {
      out.append(text, at, character.size);
    } else {
      char escaped[16];
      const char* format = !character.isValid         ? "\\x%02X"
                           : character.code < 0x10000 ? "\\u%04X"
                                                      : "\\U%08X";
      std::snprintf(escaped, sizeof escaped, format, static_cast<unsigned>(character.code));
      out += escaped;
    }
    at += character.size;
  }
  return out;
}

std::string lineOf(const Problem& problem, const std::string& file) {
  std::string line = file + ":" + std::to_string(problem.place.line) + ":" +
                     std::to_string(problem.place.column) + ": ";
  if (!problem.path.empty()) line += problem.path + ": ";
  if (problem.isWarning) line += "warning: ";
  return printable(line + problem.message);
}

const std::string* nearestTo(const std::string& word, const std::vector<std::string>& words) {
  // A file may hold a "word" of any length.
  constexpr std::size_t kLongest = 40;
  if (word.size() > kLongest) return nullptr;
  const std::string* nearest = nullptr;
  std::size_t least = std::max<std::size_t>(word.size() / 3, 1) + 1;
  for (const std::string& candidate : words) {
    const std::size_t longer = std::max(word.size(), candidate.size());
    if (longer - std::min(word.size(), candidate.size()) >= least) continue;
    const std::size_t steps = distance(word, candidate);
    if (steps < least) {
      least = steps;
      nearest = &candidate;
    }
  }
  return nearest;
}

}  // namespace bkoq::tool
