#include "tools/problems.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <tuple>

#include "kit/characters.h"
#include "kit/nearest.h"

namespace bkoq::tool {
namespace {

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

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
    std::size_t plain = at;
    while (plain < text.size() && text[plain] >= ' ' && text[plain] <= '~') ++plain;
    out.append(text, at, plain - at);
    at = plain;
    if (at == text.size()) break;
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

std::string printableJson(const std::string& json) {
  std::string out;
  const auto escape = [&out](std::uint32_t unit) {
    char escaped[16];
    std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(unit));
    out += escaped;
  };
  for (std::size_t at = 0; at < json.size();) {
    const kit::Character character = kit::characterAt(json, at);
    if (character.isPrintable || character.code == '\n') {
      out.append(json, at, character.size);
    } else if (!character.isValid) {
      escape(0xFFFD);
    } else if (character.code < 0x10000) {
      escape(character.code);
    } else {
      escape(0xD800 + ((character.code - 0x10000) >> 10));
      escape(0xDC00 + (character.code & 0x3FF));
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
  const std::size_t nearest = kit::nearestOf(word, {words.begin(), words.end()});
  return nearest < words.size() ? &words[nearest] : nullptr;
}

}  // namespace bkoq::tool
