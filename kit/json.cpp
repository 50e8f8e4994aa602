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

// The texts of a block: one, or a list.
void putTexts(Output& out, const FieldView& field, const Block& block, bool showSecrets) {
  const bool isList = field.kind() != FieldKind::kText;
  if (isList) out.put("[");
  forEachText(field, block, showSecrets, [&](const ShownText& shown, std::uint32_t index) {
    if (index > 0) out.put(", ");
    putJsonText(out, shown.kept, shown.isMasked ? kMask : "");
    return !out.failed();
  });
  if (isList) out.put("]");
}

void putTextMembers(Output& out, const FieldView& field, const Block& block, bool showSecrets) {
  const bool isAnyMasked = isMasked(field, block, showSecrets);
  out.put(labelMember(block));
  // The size would tell the length of what is masked.
  if (!isAnyMasked) out.put(sizeMember(block));
  out.put(", \"value\": ");
  putTexts(out, field, block, showSecrets);
  if (isAnyMasked) out.put(member("masked", "true"));
}

// Numbers and flags are told in both ways in which people write them.
bool hasHex(FieldKind kind) {
  return kind == FieldKind::kNumber || kind == FieldKind::kCount || kind == FieldKind::kFlags ||
         kind == FieldKind::kOpaque;
}

}  // namespace

std::string jsonStart(const char* format) {
  return std::string("{\n  \"format\": \"") + format +
         "\",\n  \"version\": " + std::to_string(kJsonVersion);
}

void putJsonValue(Output& out, const FieldView& field, const Block& block, bool showSecrets) {
  const FieldKind kind = field.kind();
  out.put(std::string("\"kind\": \"") + kindName(kind) + "\"");
  if (field.pointsSomewhere()) {
    if (block.bytes == nullptr) {
      if (field.count() > 0 && kind != FieldKind::kRecord) {
        out.put(member("count", std::to_string(field.count())));
      }
      return out.put(member("value", "null"));
    }
    if (field.target() != nullptr) {
      return out.put(labelMember(block) + sizeMember(block) +
                     member("count", std::to_string(block.count)));
    }
    return putTextMembers(out, field, block, showSecrets);
  }
  switch (kind) {
    case FieldKind::kEmbedded:
      return;
    case FieldKind::kReserved:
    case FieldKind::kByteList:
      return out.put(member("value", byteArray(field)));
    case FieldKind::kTime:
    case FieldKind::kClientTime: {
      const auto seconds = static_cast<std::int32_t>(field.number());
      out.put(member("value", std::to_string(seconds)));
      if (seconds != 0) out.put(member("date", "\"" + clockDate(seconds) + "\""));
      return;
    }
    case FieldKind::kOpaque:
      // An address means nothing to anyone else.
      if (field.def().isPointer()) {
        return out.put(member("value", field.pointer() == nullptr ? "null" : "\"not followed\""));
      }
      break;
    default:
      break;
  }
  out.put(member("value", std::to_string(field.number())));
  if (hasHex(kind)) {
    out.put(member("hex", "\"" + hexNumber(field.number(), field.def().width) + "\""));
  }
  const std::string names = kind == FieldKind::kFlags ? bitNames(field) : "";
  if (!names.empty()) out.put(member("word", jsonQuoted(names)));
  if (field.word() != nullptr) out.put(member("word", jsonQuoted(field.word())));
}

void putPlainValue(Output& out, const FieldView& field, const Block& block, bool showSecrets) {
  if (field.pointsSomewhere()) {
    if (block.bytes == nullptr) return out.put("null");
    if (field.target() == nullptr) putTexts(out, field, block, showSecrets);
    return;
  }
  switch (field.kind()) {
    case FieldKind::kEmbedded:
      return;
    case FieldKind::kReserved:
    case FieldKind::kByteList:
      return out.put(byteArray(field));
    case FieldKind::kTime:
    case FieldKind::kClientTime:
      return out.put(std::to_string(static_cast<std::int32_t>(field.number())));
    case FieldKind::kOpaque:
      if (field.def().isPointer()) return out.put("null");
      break;
    default:
      break;
  }
  out.put(std::to_string(field.number()));
}

}  // namespace bkoq::kit
