#include "kit/value.h"

#include <charconv>

namespace bkoq::kit {
namespace {

void putNumber(Phrase& to, const FieldView& field) {
  const std::uint32_t value = field.number();
  switch (field.kind()) {
    case FieldKind::kTime:
    case FieldKind::kClientTime:
      return to.put(decimal(static_cast<std::int32_t>(value)));
    case FieldKind::kFlags:
    case FieldKind::kOpaque:
      if (value == 0) return to.put("0");
      return to.put(hexNumber(value, field.def().width));
    default:
      to.put(decimal(value));
  }
}

void putNumberComment(Phrase& to, const FieldView& field) {
  const std::uint32_t value = field.number();
  switch (field.kind()) {
    case FieldKind::kTime:
    case FieldKind::kClientTime:
      if (value == 0) return;
      to.put(clockDate(static_cast<std::int32_t>(value)));
      if (field.kind() == FieldKind::kClientTime) to.put(" UTC");
      return;
    case FieldKind::kFlags:
      if (value == 0) return;
      to.put(decimal(value));
      putBitNames(to, field, ": ");
      return;
    default:
      if (const char* word = field.word()) to.put(word);
  }
}

void describePointer(const FieldView& field, const Block& block, Value& value) {
  if (block.bytes == nullptr) {
    value.lead.put("null");
    const bool isCounted =
        field.kind() == FieldKind::kArray || field.kind() == FieldKind::kTextList;
    if (isCounted && field.count() > 0) {
      value.comment.put("unfinished: the count is ", decimal(field.count()));
      value.isAlarming = true;
    }
    return;
  }
  value.lead.put("#", decimal(block.label));
  if (field.target() != nullptr) {
    value.lead.put("  ");
    putContentName(value.lead, field, block);
    return putCounted(value.comment, block.size, "byte", "bytes");
  }
  if (field.kind() == FieldKind::kTextList) {
    value.lead.put("  ");
    putContentName(value.lead, field, block);
    value.lead.put(":");
  }
  value.hasTexts = block.count > 0;
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

Characters<24> placeName(std::uint32_t block, std::uint32_t offset) {
  Characters<24> text;
  char* at = text.begin();
  *at++ = '#';
  at = std::to_chars(at, text.limit(), block).ptr;
  *at++ = '+';
  text.endAt(std::to_chars(at, text.limit(), offset).ptr);
  return text;
}

void describe(const FieldView& field, const Block& block, Value& value) {
  value.lead.clear();
  value.comment.clear();
  value.hasTexts = false;
  value.isAlarming = false;
  if (field.pointsSomewhere()) return describePointer(field, block, value);
  switch (field.kind()) {
    case FieldKind::kReserved:
      if (field.isZero()) {
        value.lead.put("zero");
        putCounted(value.comment, field.def().width, "byte", "bytes");
      } else {
        putHex(value.lead, field.bytes(), field.def().width);
        value.comment.put("reserved, but not zero");
        value.isAlarming = true;
      }
      break;
    case FieldKind::kEmbedded:
      value.lead.put(field.target()->name);
      putCounted(value.comment, field.def().width, "byte", "bytes");
      break;
    case FieldKind::kByteList:
      putByteList(value.lead, field, " ");
      break;
    case FieldKind::kOpaque:
      if (field.def().isPointer()) {
        value.lead.put(field.pointer() == nullptr ? "null" : "not followed");
        if (field.pointer() != nullptr) {
          value.comment.put("what the node holds depends on the kind of the job, which is unknown");
          value.isAlarming = true;
        }
        break;
      }
      putNumber(value.lead, field);
      break;
    default:
      putNumber(value.lead, field);
      putNumberComment(value.comment, field);
  }
}

void putValue(Output& out, const Value& value, const FieldView& field, const Block& block,
              bool showSecrets) {
  out.put(value.lead);
  if (!value.hasTexts) return;
  forEachText(field, block, showSecrets, [&](const ShownText& shown, std::uint32_t index) {
    out.put(index > 0 ? ", " : value.lead.isEmpty() ? "" : " ");
    putText(out, shown);
    return !out.failed();
  });
}

}  // namespace bkoq::kit
