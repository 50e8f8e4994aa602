#ifndef BKOQ_KIT_CHARACTERS_H_
#define BKOQ_KIT_CHARACTERS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace bkoq::kit {

// What of a text may reach a terminal. The kit and the command both ask here, and nowhere else; the
// command compiles this file into itself, since the library hides it.

struct Character {
  std::uint32_t code = 0;
  std::size_t size = 0;  // in bytes
  bool isValid = false;  // otherwise a byte that begins no character of UTF-8
  // It can be printed as it is: it shows, and leaves the text around it where it is.
  bool isPrintable = false;
};

// The character that begins at a byte, which must lie in the text. An overlong form, a surrogate
// and a sequence that is cut short are invalid bytes, one at a time.
Character characterAt(std::string_view bytes, std::size_t index);

struct CharacterRange {
  std::uint32_t first;
  std::uint32_t last;
};

// All that is not printable, in order: for programs in other languages, so that they decide alike.
std::vector<CharacterRange> unprintableRanges();

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_CHARACTERS_H_
