#ifndef BKOQ_KIT_VIEW_H_
#define BKOQ_KIT_VIEW_H_

#include <cstdint>
#include <cstring>

#include "kit/record_table.h"

namespace bkoq::kit {

class FieldView;

// A record somewhere in memory, with what is needed to read it.
struct RecordView {
  const RecordDef* def = nullptr;
  const std::uint8_t* bytes = nullptr;
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  NodeRole role;  // nodes only

  std::uint32_t numberAt(std::uint32_t offset, std::uint32_t width) const {
    const std::uint8_t* first = bytes + offset;
    // No number has another width than these, which are a single move each.
    if (width == 4) {
      return first[0] | first[1] << 8 | first[2] << 16 | static_cast<std::uint32_t>(first[3]) << 24;
    }
    return width == 2 ? first[0] | static_cast<std::uint32_t>(first[1]) << 8 : first[0];
  }
  // Which rows of the table read this record.
  unsigned int variant() const {
    return def->type == RecordType::kFilter ? filterVariant(numberAt(0, 2), numberAt(6, 2))
                                            : kAlways;
  }
  static RecordView job(const void* root, BkoqLayout layout) {
    return {
        recordDef(layout, RecordType::kJob), static_cast<const std::uint8_t*>(root), layout, {}};
  }
};

// A field of a record, with everything that depends on where the record stands decided.
class FieldView {
 public:
  FieldView(const RecordView& record, const FieldDef& def) : record_(&record), def_(&def) {}

  const RecordView& record() const { return *record_; }
  const FieldDef& def() const { return *def_; }
  const std::uint8_t* bytes() const { return record_->bytes + def_->offset; }

  FieldKind kind() const {
    if (def_->kind == FieldKind::kNodeText) {
      const bool isUnixMachine = record_->role.media == Media::kDisks &&
                                 !record_->role.isRestoreDestination &&
                                 record_->numberAt(0, 2) == kUnixNodeType;
      return isUnixMachine ? FieldKind::kTwoTexts : FieldKind::kText;
    }
    // Without knowing what a node holds its media cannot be followed.
    if (def_->target == RecordType::kMedia && record_->role.media == Media::kUnknown) {
      return FieldKind::kOpaque;
    }
    return def_->kind;
  }
  bool pointsSomewhere() const { return kind() != FieldKind::kOpaque && def_->isPointer(); }

  // The records behind or inside the field; null for texts and numbers.
  const RecordDef* target() const {
    RecordType type = def_->target;
    if (type == RecordType::kMedia) {
      if (record_->role.media == Media::kUnknown) return nullptr;
      type = record_->role.media == Media::kDisks ? RecordType::kDisk : RecordType::kTape;
    }
    return type != RecordType::kNone ? recordDef(record_->layout, type) : nullptr;
  }

  std::uint32_t number() const { return def_->width <= 4 ? numberOf(def_->width) : 0; }
  bool isZero() const {
    for (std::uint32_t i = 0; i < def_->width; ++i) {
      if (bytes()[i] != 0) return false;
    }
    return true;
  }
  const std::uint8_t* pointer() const {
    const std::uint8_t* value = nullptr;
    std::memcpy(&value, bytes(), sizeof value);
    return value;
  }
  // Elements of an array, texts of a list; 1 for a single record; what the count says, also where
  // the pointer is null.
  std::uint32_t count() const {
    switch (def_->kind) {
      case FieldKind::kArray:
      case FieldKind::kTextList:
        return record_->numberAt(def_->countOffset, 4);
      case FieldKind::kRecord:
        return 1;
      default:
        return 0;
    }
  }
  // The record at `bytes`, as one that this field points to or embeds.
  RecordView elementAt(const std::uint8_t* bytes) const {
    RecordView element;
    element.def = target();
    element.bytes = bytes;
    element.layout = record_->layout;
    if (def_->nodes != NodeArray::kNone) {
      element.role = nodeRole(record_->numberAt(4, 2), def_->nodes);
    }
    return element;
  }

  const Word* words() const {
    if (def_->words == nodeTypes() && record_->role.media == Media::kTapes) {
      return tapeNodeTypes();
    }
    return def_->words;
  }
  // What a number is called; null without a name, and for flags, whose bits have the names.
  const char* word() const {
    if (words() == nullptr || def_->kind == FieldKind::kFlags) return nullptr;
    for (const Word* word = words(); word->name != nullptr; ++word) {
      if (word->value == number()) return word->name;
    }
    return nullptr;
  }

 private:
  std::uint32_t numberOf(std::uint32_t width) const {
    return record_->numberAt(def_->offset, width);
  }

  const RecordView* record_;
  const FieldDef* def_;
};

// Calls `use(FieldView)` for each field in the order of the offsets until one call gives false;
// false then.
template <class Use>
bool forEachField(const RecordView& record, const Use& use) {
  const unsigned int variant = record.variant();
  for (const FieldDef& def : *record.def) {
    if ((def.variants & variant) != 0 && !use(FieldView(record, def))) return false;
  }
  return true;
}

// A block: the records or texts behind one pointer.
struct Block {
  std::uint32_t label = 0;  // from 1 on, in the order of the walk
  const std::uint8_t* bytes = nullptr;
  std::uint32_t size = 0;  // as far as records and texts take it
  std::uint32_t count = 0;
};

// Bytes of `count` texts back to back, their NULs included.
inline std::uint32_t sizeOfTexts(const std::uint8_t* texts, std::uint32_t count) {
  std::uint32_t size = 0;
  for (; count > 0; --count) {
    size +=
        static_cast<std::uint32_t>(std::strlen(reinterpret_cast<const char*>(texts) + size)) + 1;
  }
  return size;
}

inline Block blockOf(const FieldView& field) {
  Block block;
  if (!field.pointsSomewhere()) return block;
  block.bytes = field.pointer();
  if (block.bytes == nullptr) return block;
  switch (field.kind()) {
    case FieldKind::kText:
      block.count = 1;
      break;
    case FieldKind::kTwoTexts:
      block.count = 2;
      break;
    default:
      block.count = field.count();
  }
  const RecordDef* target = field.target();
  block.size =
      target != nullptr ? block.count * target->size : sizeOfTexts(block.bytes, block.count);
  return block;
}

// The kind of a field as the interface tells it.
inline BkoqFieldKind publicKind(FieldKind kind) {
  switch (kind) {
    case FieldKind::kNumber:
      return BKOQ_FIELD_NUMBER;
    case FieldKind::kCount:
      return BKOQ_FIELD_COUNT;
    case FieldKind::kFlags:
      return BKOQ_FIELD_FLAGS;
    case FieldKind::kTime:
      return BKOQ_FIELD_TIME;
    case FieldKind::kClientTime:
      return BKOQ_FIELD_CLIENT_TIME;
    case FieldKind::kByteList:
      return BKOQ_FIELD_BYTE_LIST;
    case FieldKind::kText:
      return BKOQ_FIELD_TEXT;
    case FieldKind::kTwoTexts:
    case FieldKind::kNodeText:
      return BKOQ_FIELD_TWO_TEXTS;
    case FieldKind::kTextList:
      return BKOQ_FIELD_TEXT_LIST;
    case FieldKind::kArray:
      return BKOQ_FIELD_ARRAY;
    case FieldKind::kRecord:
      return BKOQ_FIELD_RECORD;
    case FieldKind::kEmbedded:
      return BKOQ_FIELD_EMBEDDED;
    case FieldKind::kReserved:
      return BKOQ_FIELD_RESERVED;
    case FieldKind::kOpaque:
      break;
  }
  return BKOQ_FIELD_OPAQUE;
}

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_VIEW_H_
