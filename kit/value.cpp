#include "kit/value.h"

#include <cstring>

#include "kit/text.h"

namespace bkoq::kit {
namespace {

void mask(ShownText& shown, Secret secret, std::size_t index) {
  if (shown.text.empty()) return;
  std::size_t kept = 0;
  if (secret == Secret::kCredentials && index == 0) {
    const std::size_t colon = shown.text.find(':');
    if (colon == std::string::npos) return;
    kept = colon + 1;
  }
  shown.text.replace(kept, std::string::npos, kMask);
  shown.isMasked = true;
  shown.isBare = kept == 0;
}

std::string number(const FieldView& field) {
  switch (field.kind()) {
    case FieldKind::kTime:
    case FieldKind::kClientTime:
      return std::to_string(static_cast<std::int32_t>(field.number()));
    case FieldKind::kFlags:
    case FieldKind::kOpaque:
      return field.number() == 0 ? "0" : hexNumber(field.number(), field.def().width);
    default:
      return std::to_string(field.number());
  }
}

std::string numberComment(const FieldView& field) {
  const std::uint32_t value = field.number();
  switch (field.kind()) {
    case FieldKind::kTime:
      return value == 0 ? "" : clockDate(static_cast<std::int32_t>(value));
    case FieldKind::kClientTime:
      return value == 0 ? "" : clockDate(static_cast<std::int32_t>(value)) + " UTC";
    case FieldKind::kFlags: {
      if (value == 0) return "";
      const std::string names = bitNames(field);
      return std::to_string(value) + (names.empty() ? "" : ": " + names);
    }
    default:
      return field.word() != nullptr ? field.word() : "";
  }
}

Value pointerValue(const FieldView& field, const Block& block, bool showSecrets) {
  Value value;
  if (block.bytes == nullptr) {
    value.lead = "null";
    const bool isCounted =
        field.kind() == FieldKind::kArray || field.kind() == FieldKind::kTextList;
    if (isCounted && field.count() > 0) {
      value.comment = "unfinished: the count is " + std::to_string(field.count());
      value.isAlarming = true;
    }
    return value;
  }
  value.lead = "#" + std::to_string(block.label);
  if (field.target() != nullptr) {
    value.lead += "  " + contentName(field, block);
    value.comment = counted(block.size, "byte", "bytes");
    return value;
  }
  if (field.kind() == FieldKind::kTextList) value.lead += "  " + contentName(field, block) + ":";
  value.texts = shownTexts(field, block, showSecrets);
  return value;
}

}  // namespace

std::vector<ShownText> shownTexts(const FieldView& field, const Block& block, bool showSecrets) {
  std::vector<ShownText> texts;
  const char* next = reinterpret_cast<const char*>(block.bytes);
  for (std::uint32_t i = 0; i < block.count; ++i) {
    ShownText shown;
    shown.text = next;
    next += shown.text.size() + 1;
    if (!showSecrets && field.def().secret != Secret::kNone) mask(shown, field.def().secret, i);
    texts.push_back(std::move(shown));
  }
  return texts;
}

std::string bitNames(const FieldView& field) {
  std::string names;
  std::uint32_t rest = field.number();
  for (const Word* word = field.words(); word != nullptr && word->name != nullptr; ++word) {
    if ((rest & word->value) == 0) continue;
    rest &= ~word->value;
    names += (names.empty() ? "" : ", ") + std::string(word->name);
  }
  if (!names.empty() && rest != 0) names += ", " + hexNumber(rest, field.def().width);
  return names;
}

std::string contentName(const FieldView& field, const Block& block) {
  const RecordDef* target = field.target();
  if (target == nullptr) return counted(block.count, "text", "texts");
  return std::to_string(block.count) + " " + target->name;
}

std::string placeName(std::uint32_t block, std::uint32_t offset) {
  return "#" + std::to_string(block) + "+" + std::to_string(offset);
}

Value describe(const FieldView& field, const Block& block, bool showSecrets) {
  if (field.pointsSomewhere()) return pointerValue(field, block, showSecrets);
  Value value;
  switch (field.kind()) {
    case FieldKind::kReserved:
      if (field.isZero()) {
        value.lead = "zero";
        value.comment = counted(field.def().width, "byte", "bytes");
      } else {
        value.lead = hexBytes(field.bytes(), field.def().width);
        value.comment = "reserved, but not zero";
        value.isAlarming = true;
      }
      break;
    case FieldKind::kEmbedded:
      value.lead = field.target()->name;
      value.comment = counted(field.def().width, "byte", "bytes");
      break;
    case FieldKind::kByteList:
      for (std::uint32_t i = 0; i < field.def().width; ++i) {
        value.lead += (i > 0 ? " " : "") + std::to_string(field.bytes()[i]);
      }
      break;
    case FieldKind::kOpaque:
      if (field.def().isPointer()) {
        value.lead = field.pointer() == nullptr ? "null" : "not followed";
        if (field.pointer() != nullptr) {
          value.comment = "what the node holds depends on the kind of the job, which is unknown";
          value.isAlarming = true;
        }
        break;
      }
      value.lead = number(field);
      break;
    default:
      value.lead = number(field);
      value.comment = numberComment(field);
  }
  return value;
}

std::string oneLine(const Value& value) {
  std::string line = value.lead;
  for (std::size_t i = 0; i < value.texts.size(); ++i) {
    const ShownText& shown = value.texts[i];
    line += i > 0 ? ", " : line.empty() ? "" : " ";
    line += shown.isBare ? shown.text : quoted(shown.text);
  }
  return line;
}

}  // namespace bkoq::kit
