#ifndef BKOQ_KIT_TEST_CHARACTERS_H_
#define BKOQ_KIT_TEST_CHARACTERS_H_

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace bkoq::test {

// Also of a surrogate, which UTF-8 does not have.
inline std::string utf8(std::uint32_t code) {
  std::string bytes;
  const auto add = [&](std::uint32_t byte) { bytes += static_cast<char>(byte); };
  if (code < 0x80) {
    add(code);
  } else if (code < 0x800) {
    add(0xC0 | code >> 6);
  } else if (code < 0x10000) {
    add(0xE0 | code >> 12);
    add(0x80 | (code >> 6 & 0x3F));
  } else {
    add(0xF0 | code >> 18);
    add(0x80 | (code >> 12 & 0x3F));
    add(0x80 | (code >> 6 & 0x3F));
  }
  if (code >= 0x80) add(0x80 | (code & 0x3F));
  return bytes;
}

// All characters that Unicode has given a meaning, and the first and last of the other planes: so
// many in a text. Surrogates are left out.
inline std::vector<std::string> allCharacters() {
  constexpr std::uint32_t kPerText = 256;
  std::vector<std::string> texts;
  for (std::uint32_t begin = 0; begin <= 0x10FFFF; begin += kPerText) {
    if (begin >= 0xD800 && begin < 0xE000) continue;
    const std::uint32_t inPlane = begin & 0xFFFF;
    if (begin >= 0x40000 && inPlane > 0x200 && inPlane < 0xFF00) continue;
    std::string text;
    for (std::uint32_t code = begin; code < begin + kPerText; ++code) text += utf8(code);
    texts.push_back(text);
  }
  return texts;
}

// What must not reach a terminal, named apart from the table that decides it.
struct Harm {
  const char* what;
  std::uint32_t first;
  std::uint32_t last;
};

inline const std::vector<Harm>& harms() {
  static const std::vector<Harm> all = [] {
    std::vector<Harm> list = {
        {"a control character", 0x00, 0x1F},
        {"delete, and the controls of the upper half", 0x7F, 0x9F},
        {"a hyphen that is not shown", 0xAD, 0xAD},
        {"a joiner of graphemes", 0x34F, 0x34F},
        {"the mark of Arabic letters", 0x61C, 0x61C},
        {"fillers of Hangul", 0x115F, 0x1160},
        {"vowels of Khmer that are not shown", 0x17B4, 0x17B5},
        {"selectors of Mongolian variants", 0x180B, 0x180F},
        {"spaces and joiners of no width, marks of direction", 0x200B, 0x200F},
        {"separators of lines and paragraphs", 0x2028, 0x2029},
        {"embeddings and overrides of direction", 0x202A, 0x202E},
        {"operators that are not shown", 0x2060, 0x2065},
        {"isolates of direction", 0x2066, 0x2069},
        {"deprecated formats", 0x206A, 0x206F},
        {"the blank of Braille", 0x2800, 0x2800},
        {"a filler of Hangul", 0x3164, 0x3164},
        {"surrogates", 0xD800, 0xDFFF},
        {"private use, which terminals draw with", 0xE000, 0xF8FF},
        {"no characters", 0xFDD0, 0xFDEF},
        {"selectors of variants", 0xFE00, 0xFE0F},
        {"the byte order mark", 0xFEFF, 0xFEFF},
        {"a filler of narrow Hangul", 0xFFA0, 0xFFA0},
        {"reserved for what is not shown", 0xFFF0, 0xFFF8},
        {"annotations", 0xFFF9, 0xFFFB},
        {"formats of hieroglyphs", 0x13430, 0x1343F},
        {"formats of shorthand", 0x1BCA0, 0x1BCA3},
        {"formats of music", 0x1D173, 0x1D17A},
        {"tags, more selectors of variants, and the rest of their plane", 0xE0000, 0xEFFFF},
        {"more private use", 0xF0000, 0x10FFFF},
    };
    for (std::uint32_t plane = 0; plane <= 0x10; ++plane) {
      list.push_back({"no characters", plane << 16 | 0xFFFE, plane << 16 | 0xFFFF});
    }
    return list;
  }();
  return all;
}

// What is no UTF-8, and why.
inline const std::vector<std::pair<const char*, std::string>>& invalidSequences() {
  static const std::vector<std::pair<const char*, std::string>> all = {
      {"overlong NUL", std::string("\xC0\x80")},
      {"overlong DEL", "\xC1\xBF"},
      {"overlong escape of two bytes", "\xC0\x9B"},
      {"overlong escape of three bytes", "\xE0\x80\x9B"},
      {"overlong escape of four bytes", "\xF0\x80\x80\x9B"},
      {"overlong escape of five bytes", "\xF8\x80\x80\x80\x9B"},
      {"overlong escape of six bytes", "\xFC\x80\x80\x80\x80\x9B"},
      {"the last overlong of three bytes", "\xE0\x9F\xBF"},
      {"the last overlong of four bytes", "\xF0\x8F\xBF\xBF"},
      {"the first surrogate", "\xED\xA0\x80"},
      {"the last surrogate", "\xED\xBF\xBF"},
      {"a pair of surrogates", "\xED\xA0\xBD\xED\xB8\x80"},
      {"after the last character", "\xF4\x90\x80\x80"},
      {"far after it", "\xF5\x80\x80\x80"},
      {"a control of the upper half, alone", "\x9B"},
      {"a byte that goes on", "\xBF"},
      {"a byte of Latin-1", "\xE9"},
      {"bytes that begin nothing", "\xFE\xFF"},
      {"two bytes, cut short", "\xC2"},
      {"three bytes, cut short", "\xE2\x80"},
      {"four bytes, cut short", "\xF0\x9F\x98"},
      {"an escape where a character should go on", "\xC2\x1B"},
      {"an escape within a character", "\xE2\x80\x1B[2J"},
  };
  return all;
}

}  // namespace bkoq::test

#endif  // BKOQ_KIT_TEST_CHARACTERS_H_
