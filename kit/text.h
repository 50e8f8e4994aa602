#ifndef BKOQ_KIT_TEXT_H_
#define BKOQ_KIT_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "kit/characters.h"
#include "kit/output.h"

namespace bkoq::kit {

// Texts of records are bytes of no declared encoding, and come from anywhere. Nothing of them may
// reach a terminal that is not plainly visible: what is no printable UTF-8 is written as escapes.

bool isUtf8(std::string_view bytes);

// A character as it is written between quotes: itself, or an escape such as \n or \xfe, which
// always has two digits. Calls `use(piece)` with the piece of text for each.
template <class Use>
void forEachWritten(std::string_view bytes, const Use& use);

// Columns that the characters take between quotes, one for each that is written.
std::size_t writtenColumns(std::string_view bytes);

// Between quotes; with `rest`, which is written as it is, at the end.
void putQuoted(Output& out, std::string_view bytes, std::string_view rest = {});
std::string quoted(std::string_view bytes);

// As a JSON string, {"hex": "ff fe"} when the bytes are no UTF-8; with `rest` as above.
void putJsonText(Output& out, std::string_view bytes, std::string_view rest = {});
// Only for valid UTF-8.
std::string jsonQuoted(std::string_view utf8);

// "0a ff", into an Output or a Phrase.
template <class To>
void putHex(To& to, const std::uint8_t* bytes, std::size_t size);
// "0x0000002a", with `width` bytes.
Characters<10> hexNumber(std::uint32_t value, std::uint32_t width);
// "2004-03-01 17:00:00" for seconds since 1970-01-01 00:00 on the same clock.
Characters<20> clockDate(std::int32_t seconds);
// "1 text", "2 texts", into an Output or a Phrase.
template <class To>
void putCounted(To& to, std::uint32_t count, std::string_view singular, std::string_view plural) {
  to.put(decimal(count), " ", count == 1 ? singular : plural);
}
std::string counted(std::uint32_t count, std::string_view singular, std::string_view plural);
// With spaces after or before a text of ASCII, so that it takes as many columns.
template <class To>
void putLeft(To& to, std::string_view text, std::size_t width) {
  to.put(text);
  if (text.size() < width) to.put(width - text.size(), ' ');
}
template <class To>
void putRight(To& to, std::string_view text, std::size_t width) {
  if (text.size() < width) to.put(width - text.size(), ' ');
  to.put(text);
}
std::string padded(std::string text, std::size_t width);
std::string leftPadded(const std::string& text, std::size_t width);
// Columns that a text takes on a terminal, one for each character.
std::size_t columns(std::string_view utf8);

// ---- Implementation

// Whether a byte is a character of its own that is written as it is, also between quotes.
inline bool isPlain(char byte) {
  return byte >= ' ' && byte < '\x7F' && byte != '"' && byte != '\\';
}

// How many such bytes a text begins with: all of most texts.
inline std::size_t plainStart(std::string_view bytes) {
  std::size_t size = 0;
  while (size < bytes.size() && isPlain(bytes[size])) ++size;
  return size;
}

template <class To>
void putHex(To& to, const std::uint8_t* bytes, std::size_t size) {
  constexpr char kDigits[] = "0123456789abcdef";
  for (std::size_t i = 0; i < size; ++i) {
    const char digits[] = {' ', kDigits[bytes[i] >> 4], kDigits[bytes[i] & 15]};
    to.put(i > 0 ? std::string_view(digits, 3) : std::string_view(digits + 1, 2));
  }
}

// The escape of a character that cannot be written as it is: one for each byte unless it has a
// name.
std::string escaped(const Character& character, std::string_view raw);

template <class Use>
void forEachWritten(std::string_view bytes, const Use& use) {
  for (std::size_t i = 0; i < bytes.size();) {
    if (isPlain(bytes[i])) {
      use(bytes.substr(i++, 1));
      continue;
    }
    const Character character = characterAt(bytes, i);
    const std::string_view raw = bytes.substr(i, character.size);
    i += character.size;
    if (character.isPrintable && character.code != '"' && character.code != '\\') {
      use(raw);
    } else {
      use(std::string_view(escaped(character, raw)));
    }
  }
}

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_TEXT_H_
