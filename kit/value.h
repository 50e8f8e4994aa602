#ifndef BKOQ_KIT_VALUE_H_
#define BKOQ_KIT_VALUE_H_

#include <string>
#include <string_view>

#include "kit/output.h"
#include "kit/text.h"
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
    // How long the last one is, the size of the block tells.
    const std::string_view text =
        block.count == 1 ? std::string_view(next, block.size - 1) : std::string_view(next);
    next += text.size() + 1;
    if (!use(shownText(field, text, i, showSecrets), i)) return;
  }
}
// Whether anything in the block is masked.
bool isMasked(const FieldView& field, const Block& block, bool showSecrets);
void putText(Output& out, const ShownText& shown);

// A value for people, without its texts.
struct Value {
  Phrase lead;  // the value, or what precedes the texts
  bool hasTexts = false;
  Phrase comment;           // what it means
  bool isAlarming = false;  // a reserved byte that is not zero, a count over a null array
};

void describe(const FieldView& field, const Block& block, Value& value);
// On one line: the texts after what precedes them, without the comment.
void putValue(Output& out, const Value& value, const FieldView& field, const Block& block,
              bool showSecrets);

// "#12+32".
Characters<24> placeName(std::uint32_t block, std::uint32_t offset);

// The following write into an Output or a Phrase.

// "2 BKNODE", or "3 texts".
template <class To>
void putContentName(To& to, const FieldView& field, const Block& block) {
  const RecordDef* target = field.target();
  if (target == nullptr) return putCounted(to, block.count, "text", "texts");
  to.put(decimal(block.count), " ", target->name);
}

// The names of the bits that are set, and what is left of the word: "no estimate, 0x00000008".
// Nothing when none of them has a name; otherwise `before` comes first. Whether there is any.
template <class To>
bool putBitNames(To& to, const FieldView& field, std::string_view before = {}) {
  bool isAny = false;
  std::uint32_t rest = field.number();
  if (rest == 0) return false;
  for (const Word* word = field.words(); word != nullptr && word->name != nullptr; ++word) {
    if ((rest & word->value) == 0) continue;
    rest &= ~word->value;
    to.put(isAny ? ", " : before, word->name);
    isAny = true;
  }
  if (isAny && rest != 0) to.put(", ", hexNumber(rest, field.def().width));
  return isAny;
}

// "1 2 3", or with commas.
template <class To>
void putByteList(To& to, const FieldView& field, std::string_view between) {
  for (std::uint32_t i = 0; i < field.def().width; ++i) {
    to.put(i > 0 ? between : std::string_view(), decimal(unsigned{field.bytes()[i]}));
  }
}

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_VALUE_H_
