#include "bkoq/kit.h"
#include "kit/guard.h"
#include "kit/walker.h"

namespace bkoq::kit {
namespace {

class Visitor : public WalkHandler {
 public:
  Visitor(BkoqVisitor visitor, void* user) : visitor_(visitor), user_(user) {}

  bool beginRecord(const RecordView& record, const Position& at) {
    return visit(recordVisit(BKOQ_RECORD_BEGIN, record, at));
  }
  bool field(const FieldView& field, const Block& block, const Position& at) {
    BkoqVisit visit = recordVisit(BKOQ_FIELD, field.record(), at);
    visit.offset += field.def().offset;
    visit.width = field.def().width;
    visit.bytes = field.bytes();
    visit.field = field.def().name;
    visit.kind = publicKind(field.kind());
    visit.fieldOffset = field.def().offset;
    visit.meaning = field.def().meaning;
    visit.filledBy = field.def().filledBy;
    visit.isSecret = field.def().secret != Secret::kNone ? 1 : 0;
    if (visit.kind <= BKOQ_FIELD_CLIENT_TIME) visit.number = field.number();
    if (visit.kind == BKOQ_FIELD_NUMBER) visit.word = field.word();
    visit.target = block.label;
    visit.targetBytes = block.bytes;
    visit.targetSize = block.size;
    visit.count = block.count;
    return this->visit(visit);
  }
  bool endRecord(const RecordView& record, const Position& at) {
    return visit(recordVisit(BKOQ_RECORD_END, record, at));
  }

 private:
  static BkoqVisit recordVisit(BkoqEvent event, const RecordView& record, const Position& at) {
    BkoqVisit visit{};
    visit.event = event;
    visit.path = at.path.text();
    visit.record = record.def->name;
    visit.block = at.block;
    visit.offset = at.blockOffset;
    visit.width = record.def->size;
    visit.bytes = record.bytes;
    visit.depth = at.depth;
    return visit;
  }
  bool visit(const BkoqVisit& visit) const { return visitor_(&visit, user_) == 0; }

  BkoqVisitor visitor_;
  void* user_;
};

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqWalk(const void* root, BkoqLayout layout, BkoqVisitor visitor, void* user) {
  using namespace bkoq::kit;
  if (root == nullptr || visitor == nullptr || !isLayout(layout)) return BKOQ_BAD_ARGUMENT;
  Visitor handler(visitor, user);
  const RecordView job = RecordView::job(root, layout);
  return Walker<Visitor>(handler).walk(job) ? BKOQ_OK : BKOQ_STOPPED;
}

const char* bkoqStatusText(BkoqStatus status) {
  switch (status) {
    case BKOQ_OK:
      return "done";
    case BKOQ_STOPPED:
      return "stopped by the visitor";
    case BKOQ_SINK_FAILED:
      return "the output could not be written";
    case BKOQ_NO_MEMORY:
      return "memory ran out";
    case BKOQ_BAD_ARGUMENT:
      return "a bad argument";
    case BKOQ_NOT_FOUND:
      return "not found";
    case BKOQ_BAD_IMAGE:
      return "the image is damaged";
    case BKOQ_BAD_TREE:
      return "the tree holds what cannot be told";
    case BKOQ_OTHER_LAYOUT:
      return "the tree looks like one of the other layout";
  }
  return "an unknown status";
}
