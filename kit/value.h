#ifndef BKOQ_KIT_VALUE_H_
#define BKOQ_KIT_VALUE_H_

#include <string>
#include <string_view>

#include "kit/output.h"
#include "kit/view.h"

namespace bkoq::kit {

// What is written in place of a password or key; it does not tell the length.
constexpr const char* kMask = "********";

// One text of a block, as it may be shown. It stays where it is: a text may be as long as memory.
struct ShownText {
  std::string_view kept;  // what may be shown of it; all unless it is masked
  bool isMasked = false;  // what follows is not shown

  // Nothing but the mask: printed without quotes.
  bool isBare() const { return isMasked && kept.empty(); }
};

// A text as it may be shown, secrets masked unless asked for. What follows ":" in the first of two
// texts counts as secret: a joined pair is not marked as such. `index` is its place in the block.
ShownText shownText(const FieldView& field, std::string_view text, std::uint32_t index,
                    bool showSecrets);

// Calls `use(ShownText, index)` for each text of a block until one call gives false.
template <class Use>
void forEachText(const FieldView& field, const Block& block, bool showSecrets, const Use& use) {
  const char* next = reinterpret_cast<const char*>(block.bytes);
  for (std::uint32_t i = 0; i < block.count; ++i) {
    const std::string_view text = next;
    next += text.size() + 1;
    if (!use(shownText(field, text, i, showSecrets), i)) return;
  }
}
// Whether anything in the block is masked.
bool isMasked(const FieldView& field, const Block& block, bool showSecrets);
void putText(Output& out, const ShownText& shown);

// A value for people, without its texts.
struct Value {
  std::string lead;  // the value, or what precedes the texts
  bool hasTexts = false;
  std::string comment;      // what it means
  bool isAlarming = false;  // a reserved byte that is not zero, a count over a null array
};

Value describe(const FieldView& field, const Block& block);
// On one line: the texts after what precedes them, without the comment.
void putValue(Output& out, const Value& value, const FieldView& field, const Block& block,
              bool showSecrets);

// "#12+32".
std::string placeName(std::uint32_t block, std::uint32_t offset);
// "2 BKNODE", or "3 texts".
std::string contentName(const FieldView& field, const Block& block);
// The names of the bits that are set, and what is left of the word: "no estimate, 0x00000008".
std::string bitNames(const FieldView& field);

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_VALUE_H_
