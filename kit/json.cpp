#include "kit/json.h"

#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

std::string member(const char* name, const std::string& value) {
  return std::string(", \"") + name + "\": " + value;
}

std::string byteArray(const FieldView& field) {
  std::string array = "[";
  for (std::uint32_t i = 0; i < field.def().width; ++i) {
    array += (i > 0 ? ", " : "") + std::to_string(field.bytes()[i]);
  }
  return array + "]";
}

// A comparison looks at blocks outside a walk, where they have no number.
std::string labelMember(const Block& block) {
  return block.label != 0 ? member("block", std::to_string(block.label)) : "";
}

std::string sizeMember(const Block& block) { return member("size", std::to_string(block.size)); }

std::string textMembers(const FieldView& field, const Block& block, bool showSecrets) {
  bool isMasked = false;
  std::string value;
  for (const ShownText& shown : shownTexts(field, block, showSecrets)) {
    value += (value.empty() ? "" : ", ") + jsonText(shown.text);
    isMasked |= shown.isMasked;
  }
  if (field.kind() != FieldKind::kText) value = "[" + value + "]";
  std::string members = labelMember(block);
  // The size would tell the length of what is masked.
  if (!isMasked) members += sizeMember(block);
  members += member("value", value);
  return isMasked ? members + member("masked", "true") : members;
}

}  // namespace

std::string jsonStart(const char* format) {
  return std::string("{\n  \"format\": \"") + format +
         "\",\n  \"version\": " + std::to_string(kJsonVersion);
}

const char* kindName(FieldKind kind) {
  switch (kind) {
    case FieldKind::kNumber:
      return "number";
    case FieldKind::kCount:
      return "count";
    case FieldKind::kFlags:
      return "flags";
    case FieldKind::kTime:
      return "time";
    case FieldKind::kClientTime:
      return "client time";
    case FieldKind::kByteList:
      return "byte list";
    case FieldKind::kText:
      return "text";
    case FieldKind::kTwoTexts:
      return "two texts";
    case FieldKind::kNodeText:
      return "text, or two texts";
    case FieldKind::kTextList:
      return "text list";
    case FieldKind::kArray:
      return "array";
    case FieldKind::kRecord:
      return "record";
    case FieldKind::kEmbedded:
      return "embedded";
    case FieldKind::kReserved:
      return "reserved";
    case FieldKind::kOpaque:
      break;
  }
  return "opaque";
}

std::string jsonText(const std::string& text) {
  if (isUtf8(text)) return jsonQuoted(text);
  return "{\"hex\": \"" +
         hexBytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()) + "\"}";
}

std::string jsonValue(const FieldView& field, const Block& block, bool showSecrets) {
  const FieldKind kind = field.kind();
  std::string members = std::string("\"kind\": \"") + kindName(kind) + "\"";
  if (field.pointsSomewhere()) {
    if (block.bytes == nullptr) {
      if (field.count() > 0 && kind != FieldKind::kRecord) {
        members += member("count", std::to_string(field.count()));
      }
      return members + member("value", "null");
    }
    if (field.target() != nullptr) {
      return members + labelMember(block) + sizeMember(block) +
             member("count", std::to_string(block.count));
    }
    return members + textMembers(field, block, showSecrets);
  }
  switch (kind) {
    case FieldKind::kEmbedded:
      return members;
    case FieldKind::kReserved:
    case FieldKind::kByteList:
      return members + member("value", byteArray(field));
    case FieldKind::kTime:
    case FieldKind::kClientTime: {
      const auto seconds = static_cast<std::int32_t>(field.number());
      members += member("value", std::to_string(seconds));
      return seconds == 0 ? members : members + member("date", "\"" + clockDate(seconds) + "\"");
    }
    case FieldKind::kOpaque:
      // An address means nothing to anyone else.
      if (field.def().isPointer()) {
        return members + member("value", field.pointer() == nullptr ? "null" : "\"not followed\"");
      }
      break;
    default:
      break;
  }
  members += member("value", std::to_string(field.number()));
  const std::string names = kind == FieldKind::kFlags ? bitNames(field) : "";
  if (!names.empty()) members += member("word", jsonQuoted(names));
  if (field.word() != nullptr) members += member("word", jsonQuoted(field.word()));
  return members;
}

}  // namespace bkoq::kit
