#include "kit/value.h"

#include "kit/text.h"

namespace bkoq::kit {
namespace {

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

Value pointerValue(const FieldView& field, const Block& block) {
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
  value.hasTexts = block.count > 0;
  return value;
}

}  // namespace

ShownText shownText(const FieldView& field, std::string_view text, std::uint32_t index,
                    bool showSecrets) {
  const Secret secret = field.def().secret;
  if (showSecrets || secret == Secret::kNone || text.empty()) return {text, false};
  if (secret == Secret::kCredentials && index == 0) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) return {text, false};
    return {text.substr(0, colon + 1), true};
  }
  return {{}, true};
}

bool isMasked(const FieldView& field, const Block& block, bool showSecrets) {
  if (showSecrets || field.def().secret == Secret::kNone) return false;
  bool isAnyMasked = false;
  forEachText(field, block, showSecrets, [&](const ShownText& shown, std::uint32_t) {
    isAnyMasked = shown.isMasked;
    return !isAnyMasked;
  });
  return isAnyMasked;
}

void putText(Output& out, const ShownText& shown) {
  if (shown.isBare()) return out.put(kMask);
  putQuoted(out, shown.kept, shown.isMasked ? kMask : "");
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

Value describe(const FieldView& field, const Block& block) {
  if (field.pointsSomewhere()) return pointerValue(field, block);
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

void putValue(Output& out, const Value& value, const FieldView& field, const Block& block,
              bool showSecrets) {
  out.put(value.lead);
  if (!value.hasTexts) return;
  forEachText(field, block, showSecrets, [&](const ShownText& shown, std::uint32_t index) {
    out.put(index > 0 ? ", " : value.lead.empty() ? "" : " ");
    putText(out, shown);
    return !out.failed();
  });
}

}  // namespace bkoq::kit
