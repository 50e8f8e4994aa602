#include "kit/text.h"

#include <algorithm>
#include <cstdio>

#include "kit/characters.h"

namespace bkoq::kit {
namespace {

std::string formatted(const char* format, unsigned int value) {
  char text[16];
  std::snprintf(text, sizeof text, format, value);
  return text;
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
  for (const char byte : raw) text += formatted("\\x%02x", static_cast<unsigned char>(byte));
  return text;
}

std::size_t writtenColumns(std::string_view bytes) {
  std::size_t taken = 0;
  forEachWritten(bytes, [&](std::string_view written) { taken += columns(written); });
  return taken;
}

void putQuoted(Output& out, std::string_view bytes, std::string_view rest) {
  out.put("\"");
  forEachWritten(bytes, [&](std::string_view written) { out.put(written); });
  out.put(rest);
  out.put("\"");
}

std::string quoted(std::string_view bytes) {
  return printedBy([&](Output& out) { putQuoted(out, bytes); });
}

void putJsonText(Output& out, std::string_view bytes, std::string_view rest) {
  if (!isUtf8(bytes)) {
    out.put("{\"hex\": \"");
    putHex(out, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    out.put(rest.empty() ? "\"}" : "\", \"rest\": \"" + std::string(rest) + "\"}");
    return;
  }
  out.put("\"");
  for (std::size_t i = 0; i < bytes.size();) {
    const Character character = characterAt(bytes, i);
    const std::string_view raw = bytes.substr(i, character.size);
    i += character.size;
    if (character.code == '"' || character.code == '\\') {
      out.put("\\");
      out.put(raw);
    } else if (character.isPrintable) {
      out.put(raw);
    } else if (character.code < 0x10000) {
      out.put(formatted("\\u%04x", character.code));
    } else {
      const std::uint32_t above = character.code - 0x10000;
      out.put(formatted("\\u%04x", 0xD800 + (above >> 10)));
      out.put(formatted("\\u%04x", 0xDC00 + (above & 0x3FF)));
    }
  }
  out.put(rest);
  out.put("\"");
}

std::string jsonQuoted(std::string_view utf8) {
  return printedBy([&](Output& out) { putJsonText(out, utf8); });
}

void putHex(Output& out, const std::uint8_t* bytes, std::size_t size) {
  constexpr char kDigits[] = "0123456789abcdef";
  for (std::size_t i = 0; i < size; ++i) {
    const char digits[] = {' ', kDigits[bytes[i] >> 4], kDigits[bytes[i] & 15]};
    out.put(i > 0 ? std::string_view(digits, 3) : std::string_view(digits + 1, 2));
  }
}

std::string hexBytes(const std::uint8_t* bytes, std::size_t size) {
  return printedBy([&](Output& out) { putHex(out, bytes, size); });
}

std::string hexNumber(std::uint32_t value, std::uint32_t width) {
  return formatted(width == 4 ? "0x%08x" : "0x%04x", value);
}

std::string clockDate(std::int32_t seconds) {
  const std::int64_t day = 86400;
  std::int64_t days = seconds / day;
  std::int64_t second = seconds % day;
  if (second < 0) {
    second += day;
    --days;
  }
  // Years begin on March 1, so that the day of a leap year is the last; eras have 400 years.
  const std::int64_t sinceEra = days + 719468;
  const std::int64_t era = (sinceEra >= 0 ? sinceEra : sinceEra - 146096) / 146097;
  const std::int64_t dayOfEra = sinceEra - era * 146097;
  const std::int64_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
  const std::int64_t dayOfMonth = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
  const std::int64_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
  const std::int64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", static_cast<int>(year),
                static_cast<int>(month), static_cast<int>(dayOfMonth),
                static_cast<int>(second / 3600), static_cast<int>(second / 60 % 60),
                static_cast<int>(second % 60));
  return text;
}

std::string counted(std::uint32_t count, const std::string& singular, const std::string& plural) {
  return std::to_string(count) + " " + (count == 1 ? singular : plural);
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
