#ifndef BKOQ_KIT_ALIGN_H_
#define BKOQ_KIT_ALIGN_H_

#include <cstdint>
#include <vector>

#include "kit/view.h"

namespace bkoq::kit {

constexpr std::uint32_t kNoElement = 0xFFFFFFFF;

// Elements of two arrays that belong together; one side is kNoElement where only the other has it.
struct ElementPair {
  std::uint32_t first;
  std::uint32_t second;
  bool hasMoved;
};

// The text that names an element: of a node, disk, tape or item. Null for others and for unnamed
// ones.
const char* elementName(const RecordView& element);

// Finds out which elements of two arrays of the same records belong together: those of the same
// name, filters of the same content; of what is left, those in the same place between others. Calls
// `use(ElementPair)` in the order of the second array, elements of the first alone where they were,
// until one call gives false; false then.
class Alignment {
 public:
  Alignment(const FieldView& first, const Block& firstBlock, const FieldView& second,
            const Block& secondBlock);

  template <class Use>
  bool forEachPair(const Use& use) const {
    for (std::uint32_t i = 0; i < start_; ++i) {
      if (!use(ElementPair{i, i, false})) return false;
    }
    for (const ElementPair& pair : middle_) {
      if (!use(pair)) return false;
    }
    for (std::uint32_t i = 0; i < end_; ++i) {
      if (!use(ElementPair{firstCount_ - end_ + i, secondCount_ - end_ + i, false})) return false;
    }
    return true;
  }

 private:
  // Equal elements at the start and at the end need no memory.
  std::uint32_t firstCount_;
  std::uint32_t secondCount_;
  std::uint32_t start_ = 0;
  std::uint32_t end_ = 0;
  std::vector<ElementPair> middle_;
};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_ALIGN_H_
