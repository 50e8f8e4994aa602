#ifndef BKOQ_KIT_TEXT_H_
#define BKOQ_KIT_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bkoq::kit {

// Texts of records are bytes of no declared encoding, and come from anywhere. Nothing of them may
// reach a terminal that is not plainly visible: what is no printable UTF-8 is written as escapes.

bool isUtf8(std::string_view bytes);

// What each character is written as between quotes: itself, or an escape such as \n or \xfe, which
// always has two digits.
std::vector<std::string> printableCharacters(std::string_view bytes);
std::string quoted(std::string_view bytes);

// As a JSON string; only for valid UTF-8.
std::string jsonQuoted(std::string_view utf8);

// "0a ff".
std::string hexBytes(const std::uint8_t* bytes, std::size_t size);
// "0x0000002a", with `width` bytes.
std::string hexNumber(std::uint32_t value, std::uint32_t width);
// "2004-03-01 17:00:00" for seconds since 1970-01-01 00:00 on the same clock.
std::string clockDate(std::int32_t seconds);
// "1 text", "2 texts".
std::string counted(std::uint32_t count, const std::string& singular, const std::string& plural);
std::string padded(std::string text, std::size_t width);
std::string leftPadded(const std::string& text, std::size_t width);
// Columns that a text takes on a terminal, one for each character.
std::size_t columns(std::string_view utf8);

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_TEXT_H_
