#ifndef BKOQ_TOOLS_FLATTENING_H_
#define BKOQ_TOOLS_FLATTENING_H_

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/document.h"

namespace bkoq::tool {

// A record tree, freed with this unless it lies in an image.
class OwnedTree {
 public:
  OwnedTree() : OwnedTree(nullptr, BKOQ_LAYOUT_CURRENT) {}
  OwnedTree(void* root, BkoqLayout layout, bool isInImage = false)
      : root_(root, Free{layout, isInImage}) {}

  const void* root() const { return root_.get(); }
  BkoqLayout layout() const { return root_.get_deleter().layout; }

 private:
  struct Free {
    BkoqLayout layout;
    bool isInImage;
    void operator()(void* root) const {
      if (!isInImage) bkoqFree(root, layout, nullptr);
    }
  };
  std::unique_ptr<void, Free> root_;
};

// What of a job is wanted; what is not set is all.
struct Selection {
  std::optional<std::string> node;
  std::vector<std::string> disks;
  std::optional<std::string> tape;
  std::optional<unsigned short> session;
  std::optional<std::string> overridePath;
  std::optional<int> unixKind;
  std::optional<std::string> unixText;

  bool isAll() const {
    return !node && disks.empty() && !tape && !session && !overridePath && !unixKind && !unixText;
  }
};

// Names the first option that no conversion of the job's class takes; empty when all fit.
std::string misfitOf(const BKQJob& job, const Selection& selection);

// Says that one of the options selects nothing of a job, and what there is; empty when each selects
// something. The job must have been read without mistakes.
std::string selectsNothing(const Value& job, const Selection& selection);

struct Flattened {
  bool succeeded;
  OwnedTree tree;  // also of a failed conversion, as far as it came
};

// Calls the conversion that the selection asks for. A failing one says why on the standard error
// stream.
Flattened flatten(BKQJob& job, const Selection& selection, BkoqLayout layout);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_FLATTENING_H_
