#ifndef BKOQ_KIT_LAYOUT_CHECK_H_
#define BKOQ_KIT_LAYOUT_CHECK_H_

#include "kit/walker.h"

namespace bkoq::kit {

inline BkoqLayout otherLayout(BkoqLayout layout) {
  return layout == BKOQ_LAYOUT_CURRENT ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT;
}

// The field that the other layout has where this one has reserved bytes that are not zero; null for
// all other fields. A conversion leaves reserved bytes zero.
inline const FieldDef* fieldOfOtherLayout(const FieldView& field) {
  if (field.def().kind != FieldKind::kReserved || field.isZero()) return nullptr;
  const RecordView& record = field.record();
  const RecordDef* other = recordDef(otherLayout(record.layout), record.def->type);
  if (other == nullptr || other->type == RecordType::kFilter) return nullptr;
  for (const FieldDef& def : *other) {
    const bool isInside =
        def.offset >= field.def().offset && def.offset < field.def().offset + field.def().width;
    if (!isInside || def.kind == FieldKind::kReserved) continue;
    for (std::uint32_t i = 0; i < def.width; ++i) {
      if (record.bytes[def.offset + i] != 0) return &def;
    }
  }
  return nullptr;
}

// Looks for the first such field of a tree.
class LayoutCheck : public WalkHandler {
 public:
  bool field(const FieldView& field, const Block&, const Position& at) {
    const FieldDef* other = fieldOfOtherLayout(field);
    if (other == nullptr) return true;
    other_ = other;
    path_ = at.path;
    return false;
  }
  const FieldDef* other() const { return other_; }
  const Path& path() const { return path_; }

 private:
  const FieldDef* other_ = nullptr;
  Path path_;
};

// Null when nothing speaks against the layout.
inline const FieldDef* checkLayout(const RecordView& job, Path* path = nullptr) {
  LayoutCheck check;
  Walker<LayoutCheck>(check).walk(job);
  if (path != nullptr) *path = check.path();
  return check.other();
}

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_LAYOUT_CHECK_H_
