#include "kit/json.h"

#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

// A comparison looks at blocks outside a walk, where they have no number.
void putLabelMember(Output& out, const Block& block) {
  if (block.label != 0) out.put(", \"block\": ", decimal(block.label));
}

void putSizeMember(Output& out, const Block& block) {
  out.put(", \"size\": ", decimal(block.size));
}

void putWordMember(Output& out, std::string_view word) {
  out.put(", \"word\": ");
  putJsonText(out, word);
}

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
  putLabelMember(out, block);
  // The size would tell the length of what is masked.
  if (!isAnyMasked) putSizeMember(out, block);
  out.put(", \"value\": ");
  putTexts(out, field, block, showSecrets);
  if (isAnyMasked) out.put(", \"masked\": true");
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
  out.put("\"kind\": \"", kindName(kind), "\"");
  if (field.pointsSomewhere()) {
    if (block.bytes == nullptr) {
      if (field.count() > 0 && kind != FieldKind::kRecord) {
        out.put(", \"count\": ", decimal(field.count()));
      }
      return out.put(", \"value\": null");
    }
    if (field.target() != nullptr) {
      putLabelMember(out, block);
      putSizeMember(out, block);
      return out.put(", \"count\": ", decimal(block.count));
    }
    return putTextMembers(out, field, block, showSecrets);
  }
  switch (kind) {
    case FieldKind::kEmbedded:
      return;
    case FieldKind::kReserved:
    case FieldKind::kByteList:
      out.put(", \"value\": [");
      putByteList(out, field, ", ");
      return out.put("]");
    case FieldKind::kTime:
    case FieldKind::kClientTime: {
      const auto seconds = static_cast<std::int32_t>(field.number());
      out.put(", \"value\": ", decimal(seconds));
      if (seconds != 0) out.put(", \"date\": \"", clockDate(seconds), "\"");
      return;
    }
    case FieldKind::kOpaque:
      // An address means nothing to anyone else.
      if (field.def().isPointer()) {
        return out.put(field.pointer() == nullptr ? ", \"value\": null"
                                                  : ", \"value\": \"not followed\"");
      }
      break;
    default:
      break;
  }
  const std::uint32_t number = field.number();
  out.put(", \"value\": ", decimal(number));
  if (hasHex(kind)) out.put(", \"hex\": \"", hexNumber(number, field.def().width), "\"");
  if (kind == FieldKind::kFlags) {
    // None of the names needs an escape.
    if (putBitNames(out, field, ", \"word\": \"")) out.put("\"");
  } else if (const char* word = field.word()) {
    putWordMember(out, word);
  }
}

void putPlainValue(Output& out, const FieldView& field, const Block& block, bool showSecrets) {
  if (field.pointsSomewhere()) {
    if (block.bytes == nullptr) return out.put("null");
    if (field.target() == nullptr) putTexts(out, field, block, showSecrets);
    return;
  }
  switch (field.kind()) {
    case FieldKind::kReserved:
    case FieldKind::kByteList:
      out.put("[");
      putByteList(out, field, ", ");
      return out.put("]");
    case FieldKind::kTime:
    case FieldKind::kClientTime:
      return out.put(decimal(static_cast<std::int32_t>(field.number())));
    case FieldKind::kOpaque:
      if (field.def().isPointer()) return out.put("null");
      break;
    default:
      break;
  }
  out.put(decimal(field.number()));
}

}  // namespace bkoq::kit
