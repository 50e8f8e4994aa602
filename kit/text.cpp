#include "kit/text.h"

#include <algorithm>

#include "kit/characters.h"

namespace bkoq::kit {
namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

// As many hexadecimal digits as are asked for, after what begins the text.
Characters<10> hexAfter(std::string_view start, std::uint32_t value, unsigned int digits) {
  Characters<10> text;
  char* at = std::copy(start.begin(), start.end(), text.begin());
  while (digits-- > 0) *at++ = kHexDigits[value >> (4 * digits) & 15];
  text.endAt(at);
  return text;
}

char* putTwoDigits(char* to, unsigned int value) {
  *to++ = static_cast<char>('0' + value / 10);
  *to++ = static_cast<char>('0' + value % 10);
  return to;
}

}  // namespace

bool isUtf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const Character character = characterAt(bytes, i);
    if (!character.isValid) return false;
    i += character.size;
  }
  return true;
}

std::string escaped(const Character& character, std::string_view raw) {
  if (character.code == '"' || character.code == '\\') return "\\" + std::string(raw);
  if (character.code == '\n') return "\\n";
  if (character.code == '\t') return "\\t";
  std::string text;
  for (const char byte : raw) text += hexAfter("\\x", static_cast<unsigned char>(byte), 2);
  return text;
}

std::size_t writtenColumns(std::string_view bytes) {
  std::size_t taken = 0;
  forEachWritten(bytes, [&](std::string_view written) { taken += columns(written); });
  return taken;
}

void putQuoted(Output& out, std::string_view bytes, std::string_view rest) {
  const std::size_t plain = plainStart(bytes);
  out.put("\"", bytes.substr(0, plain));
  forEachWritten(bytes.substr(plain), [&](std::string_view written) { out.put(written); });
  out.put(rest, "\"");
}

std::string quoted(std::string_view bytes) {
  return printedBy([&](Output& out) { putQuoted(out, bytes); });
}

void putJsonText(Output& out, std::string_view bytes, std::string_view rest) {
  const std::size_t plain = plainStart(bytes);
  if (plain == bytes.size()) return out.put("\"", bytes, rest, "\"");
  if (!isUtf8(bytes.substr(plain))) {
    out.put("{\"hex\": \"");
    putHex(out, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    if (rest.empty()) return out.put("\"}");
    return out.put("\", \"rest\": \"", rest, "\"}");
  }
  out.put("\"", bytes.substr(0, plain));
  for (std::size_t i = plain; i < bytes.size();) {
    const std::size_t size = plainStart(bytes.substr(i));
    if (size > 0) {
      out.put(bytes.substr(i, size));
      i += size;
      continue;
    }
    const Character character = characterAt(bytes, i);
    const std::string_view raw = bytes.substr(i, character.size);
    i += character.size;
    if (character.code == '"' || character.code == '\\') {
      out.put("\\", raw);
    } else if (character.isPrintable) {
      out.put(raw);
    } else if (character.code < 0x10000) {
      out.put(hexAfter("\\u", character.code, 4));
    } else {
      const std::uint32_t above = character.code - 0x10000;
      out.put(hexAfter("\\u", 0xD800 + (above >> 10), 4),
              hexAfter("\\u", 0xDC00 + (above & 0x3FF), 4));
    }
  }
  out.put(rest, "\"");
}

std::string jsonQuoted(std::string_view utf8) {
  return printedBy([&](Output& out) { putJsonText(out, utf8); });
}

Characters<10> hexNumber(std::uint32_t value, std::uint32_t width) {
  return hexAfter("0x", value, width == 4 ? 8 : 4);
}

Characters<20> clockDate(std::int32_t seconds) {
  constexpr std::int32_t kDay = 86400;
  std::int32_t days = seconds / kDay;
  std::int32_t second = seconds % kDay;
  if (second < 0) {
    second += kDay;
    --days;
  }
  // Years begin on March 1, so that the day of a leap year is the last; eras have 400 years. The
  // seconds of 32 bits begin long after the first era does.
  const auto sinceEra = static_cast<std::uint32_t>(days + 719468);
  const std::uint32_t era = sinceEra / 146097;
  const std::uint32_t dayOfEra = sinceEra % 146097;
  const std::uint32_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::uint32_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::uint32_t monthFromMarch = (5 * dayOfYear + 2) / 153;
  const std::uint32_t dayOfMonth = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
  const std::uint32_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
  const std::uint32_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);  // 1901 to 2038
  const auto clock = static_cast<std::uint32_t>(second);
  Characters<20> text;
  char* at = putTwoDigits(text.begin(), year / 100);
  at = putTwoDigits(at, year % 100);
  *at++ = '-';
  at = putTwoDigits(at, month);
  *at++ = '-';
  at = putTwoDigits(at, dayOfMonth);
  *at++ = ' ';
  at = putTwoDigits(at, clock / 3600);
  *at++ = ':';
  at = putTwoDigits(at, clock / 60 % 60);
  *at++ = ':';
  text.endAt(putTwoDigits(at, clock % 60));
  return text;
}

std::string counted(std::uint32_t count, std::string_view singular, std::string_view plural) {
  return printedBy([&](Output& out) { putCounted(out, count, singular, plural); });
}

std::string padded(std::string text, std::size_t width) {
  const std::size_t taken = columns(text);
  if (taken < width) text.append(width - taken, ' ');
  return text;
}

std::string leftPadded(const std::string& text, std::size_t width) {
  const std::size_t taken = columns(text);
  return taken < width ? std::string(width - taken, ' ') + text : text;
}

std::size_t columns(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
  }));
}

}  // namespace bkoq::kit
