#include "kit/characters.h"

#include <algorithm>
#include <iterator>

namespace bkoq::kit {
namespace {

// Controls, separators of lines, what is no character, and what Unicode gives no shape of its own:
// it would hide, join or turn around the text beside it. In order.
constexpr CharacterRange kUnprintable[] = {
    {0x0000, 0x001F},    {0x007F, 0x009F},   {0x00AD, 0x00AD},   {0x034F, 0x034F},
    {0x061C, 0x061C},    {0x115F, 0x1160},   {0x17B4, 0x17B5},   {0x180B, 0x180F},
    {0x200B, 0x200F},    {0x2028, 0x202E},   {0x2060, 0x206F},   {0x2800, 0x2800},
    {0x3164, 0x3164},    {0xD800, 0xF8FF},   {0xFDD0, 0xFDEF},   {0xFE00, 0xFE0F},
    {0xFEFF, 0xFEFF},    {0xFFA0, 0xFFA0},   {0xFFF0, 0xFFFB},   {0xFFFE, 0xFFFF},
    {0x13430, 0x1343F},  {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0x1FFFE, 0x1FFFF},
    {0x2FFFE, 0x2FFFF},  {0x3FFFE, 0x3FFFF}, {0x4FFFE, 0x4FFFF}, {0x5FFFE, 0x5FFFF},
    {0x6FFFE, 0x6FFFF},  {0x7FFFE, 0x7FFFF}, {0x8FFFE, 0x8FFFF}, {0x9FFFE, 0x9FFFF},
    {0xAFFFE, 0xAFFFF},  {0xBFFFE, 0xBFFFF}, {0xCFFFE, 0xCFFFF}, {0xDFFFE, 0xDFFFF},
    {0xE0000, 0x10FFFF},
};

bool isPrintable(std::uint32_t code) {
  const CharacterRange* range = std::lower_bound(
      std::begin(kUnprintable), std::end(kUnprintable), code,
      [](const CharacterRange& each, std::uint32_t wanted) { return each.last < wanted; });
  return range == std::end(kUnprintable) || code < range->first;
}

// How a first byte goes on, and the least code that may be written so.
struct Form {
  std::size_t size;
  std::uint32_t bits;
  std::uint32_t least;
};

Form formOf(unsigned int first) {
  if (first < 0x80) return {1, first, 0};
  if (first >= 0xC2 && first <= 0xDF) return {2, first & 0x1FU, 0x80};
  if (first >= 0xE0 && first <= 0xEF) return {3, first & 0x0FU, 0x800};
  if (first >= 0xF0 && first <= 0xF4) return {4, first & 0x07U, 0x10000};
  return {0, 0, 0};
}

}  // namespace

std::vector<CharacterRange> unprintableRanges() {
  return {std::begin(kUnprintable), std::end(kUnprintable)};
}

Character characterAt(std::string_view bytes, std::size_t index) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const Form form = formOf(byteAt(index));
  const Character invalid{byteAt(index), 1, false, false};
  if (form.size == 0 || form.size > bytes.size() - index) return invalid;
  std::uint32_t code = form.bits;
  for (std::size_t i = 1; i < form.size; ++i) {
    const unsigned int next = byteAt(index + i);
    if ((next & 0xC0U) != 0x80) return invalid;
    code = code << 6 | (next & 0x3FU);
  }
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < form.least || code > 0x10FFFF || isSurrogate) return invalid;
  return {code, form.size, true, isPrintable(code)};
}

}  // namespace bkoq::kit
