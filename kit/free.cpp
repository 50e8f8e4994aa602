#include <cstdlib>

#include "bkoq/kit.h"
#include "kit/guard.h"
#include "kit/layout_check.h"
#include "kit/walker.h"

namespace bkoq::kit {
namespace {

class Freer : public WalkHandler {
 public:
  bool field(const FieldView& field, const Block&, const Position&) {
    const bool isUnknownMedia = field.kind() == FieldKind::kOpaque && field.def().isPointer();
    if (isUnknownMedia && field.pointer() != nullptr) ++freed_.notFreed;
    const FieldDef* other = fieldOfOtherLayout(field);
    if (other != nullptr) {
      isOtherLayout_ = true;
      if (other->isPointer()) ++freed_.notFreed;
    }
    return true;
  }
  void endBlock(const FieldView&, const Block& block, const Position&) {
    release(block.bytes, block.size);
  }
  void release(const void* block, std::uint32_t size) {
    std::free(const_cast<void*>(block));
    ++freed_.blocks;
    freed_.bytes += size;
  }
  const BkoqFreed& freed() const { return freed_; }
  bool isOtherLayout() const { return isOtherLayout_; }

 private:
  BkoqFreed freed_{};
  bool isOtherLayout_ = false;
};

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqCheckLayout(const void* root, BkoqLayout layout) {
  using namespace bkoq::kit;
  if (root == nullptr || !isLayout(layout)) return BKOQ_BAD_ARGUMENT;
  return checkLayout(RecordView::job(root, layout)) == nullptr ? BKOQ_OK : BKOQ_OTHER_LAYOUT;
}

BkoqStatus bkoqFree(void* root, BkoqLayout layout, BkoqFreed* freed) {
  using namespace bkoq::kit;
  if (freed != nullptr) *freed = BkoqFreed{};
  if (!isLayout(layout)) return BKOQ_BAD_ARGUMENT;
  if (root == nullptr) return BKOQ_OK;
  const RecordView job = RecordView::job(root, layout);
  Freer freer;
  Walker<Freer>(freer).walk(job);
  freer.release(root, job.def->size);
  if (freed != nullptr) *freed = freer.freed();
  return freer.isOtherLayout() ? BKOQ_OTHER_LAYOUT : BKOQ_OK;
}
