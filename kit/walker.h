#ifndef BKOQ_KIT_WALKER_H_
#define BKOQ_KIT_WALKER_H_

#include "kit/path.h"
#include "kit/view.h"

namespace bkoq::kit {

// Where a walk is. The same for a record and for its fields, except for the path.
struct Position {
  Path path;
  std::uint32_t block = 0;
  std::uint32_t blockOffset = 0;  // of the record
  unsigned int depth = 0;
};

// What a handler of a walk may leave out: all but field(). The calls, in this order:
//   beginRecord(record, at); for each field: field(field, block, at), then what the field embeds or
//   points to, then, if there is a block, endBlock(field, block, at); endRecord(record, at).
// `at.path` names the record, or the field; `block` is what the field points to, its label 0 when
// it points nowhere. beginRecord() and field() return whether to go on. After endBlock() the walk
// never looks at the block again.
struct WalkHandler {
  bool beginRecord(const RecordView&, const Position&) { return true; }
  void endBlock(const FieldView&, const Block&, const Position&) {}
  bool endRecord(const RecordView&, const Position&) { return true; }
};

// The walk on which everything else is built. Needs no memory of its own: records nest to a depth
// that the record table fixes, whatever the tree holds.
template <class Handler>
class Walker {
 public:
  explicit Walker(Handler& handler) : handler_(&handler) {}

  // False when the handler asked to stop.
  bool walk(const RecordView& root) {
    Position at;
    at.block = ++labels_;
    return record(root, at);
  }

 private:
  bool record(const RecordView& record, Position& at) {
    if (!handler_->beginRecord(record, at)) return false;
    const bool goesOn =
        forEachField(record, [&](const FieldView& field) { return this->field(field, at); });
    return goesOn && handler_->endRecord(record, at);
  }

  bool field(const FieldView& field, Position& at) {
    const Path::Mark mark = at.path.append(field.def().name);
    Block block = blockOf(field);
    if (block.bytes != nullptr) block.label = ++labels_;
    bool goesOn = handler_->field(field, block, at);
    if (goesOn && field.def().kind == FieldKind::kEmbedded) goesOn = embedded(field, at);
    if (goesOn && block.bytes != nullptr) {
      if (field.target() != nullptr) goesOn = elements(field, block, at);
      if (goesOn) handler_->endBlock(field, block, at);
    }
    at.path.cut(mark);
    return goesOn;
  }

  bool embedded(const FieldView& field, Position& at) {
    const std::uint32_t offset = at.blockOffset;
    at.blockOffset += field.def().offset;
    ++at.depth;
    const bool goesOn = record(field.elementAt(field.bytes()), at);
    --at.depth;
    at.blockOffset = offset;
    return goesOn;
  }

  bool elements(const FieldView& field, const Block& block, Position& at) {
    const std::uint32_t outerBlock = at.block;
    const std::uint32_t outerOffset = at.blockOffset;
    const std::uint32_t size = field.target()->size;
    at.block = block.label;
    ++at.depth;
    bool goesOn = true;
    for (std::uint32_t i = 0; goesOn && i < block.count; ++i) {
      at.blockOffset = i * size;
      Path::Mark mark = at.path.mark();
      if (field.def().kind == FieldKind::kArray) mark = at.path.appendIndex(i);
      goesOn = record(field.elementAt(block.bytes + at.blockOffset), at);
      at.path.cut(mark);
    }
    --at.depth;
    at.block = outerBlock;
    at.blockOffset = outerOffset;
    return goesOn;
  }

  Handler* handler_;
  std::uint32_t labels_ = 0;
};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_WALKER_H_
