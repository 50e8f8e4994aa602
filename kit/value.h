#ifndef BKOQ_KIT_VALUE_H_
#define BKOQ_KIT_VALUE_H_

#include <string>
#include <vector>

#include "kit/view.h"

namespace bkoq::kit {

// What stands for a password or key; it does not tell the length.
constexpr const char* kMask = "********";

// One text of a block, as it may be shown.
struct ShownText {
  std::string text;       // with the mask in place of what is secret
  bool isMasked = false;  // wholly or in part
  bool isBare = false;    // nothing but the mask: printed without quotes
};

// The texts of a block, secrets masked unless asked for. What stands behind ":" in the first of two
// texts counts as secret: a joined pair is not marked as such.
std::vector<ShownText> shownTexts(const FieldView& field, const Block& block, bool showSecrets);

// A value for people: what is said, and in `comment` what it means. Texts come apart, so that they
// can be broken into lines.
struct Value {
  std::string lead;  // the value, or what stands before the texts
  std::vector<ShownText> texts;
  std::string comment;
  bool isAlarming = false;  // a reserved byte that is not zero, a count over a null array
};

Value describe(const FieldView& field, const Block& block, bool showSecrets);
// On one line, without the comment.
std::string oneLine(const Value& value);

// "#12+32".
std::string placeName(std::uint32_t block, std::uint32_t offset);
// "2 BKNODE", or "3 texts".
std::string contentName(const FieldView& field, const Block& block);
// The names of the bits that are set, and what is left of the word: "no estimate, 0x00000008".
std::string bitNames(const FieldView& field);

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_VALUE_H_
