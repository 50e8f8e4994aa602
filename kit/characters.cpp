#include "kit/characters.h"

#include <algorithm>
#include <iterator>

namespace bkoq::kit {
namespace {

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

// Controls, separators of lines, and what Unicode gives no shape of its own: it would hide, join or
// turn around the text beside it.
constexpr Range kUnprintable[] = {
    {0x0000, 0x001F},   {0x007F, 0x009F},   {0x00AD, 0x00AD},    {0x034F, 0x034F}, {0x061C, 0x061C},
    {0x115F, 0x1160},   {0x17B4, 0x17B5},   {0x180B, 0x180F},    {0x200B, 0x200F}, {0x2028, 0x202E},
    {0x2060, 0x206F},   {0x2800, 0x2800},   {0x3164, 0x3164},    {0xE000, 0xF8FF}, {0xFDD0, 0xFDEF},
    {0xFE00, 0xFE0F},   {0xFEFF, 0xFEFF},   {0xFFA0, 0xFFA0},    {0xFFF0, 0xFFFB}, {0xFFFE, 0xFFFF},
    {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0x10FFFF},
};

bool isPrintable(std::uint32_t code) {
  return std::none_of(std::begin(kUnprintable), std::end(kUnprintable), [code](const Range& range) {
    return code >= range.first && code <= range.last;
  });
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
