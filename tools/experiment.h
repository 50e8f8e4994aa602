#ifndef BKOQ_TOOLS_EXPERIMENT_H_
#define BKOQ_TOOLS_EXPERIMENT_H_

#include <bkoq/kit.h>

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "tools/attributes.h"
#include "tools/flattening.h"
#include "tools/job_file.h"

namespace bkoq::tool {

// An object of a job file.
struct GivenObject {
  std::string path;  // "sourceNodes[0]"; empty for the job
  const Value* value;
  const Value* list;  // that holds it; null when none does
  const Family* family;
  const ObjectClass* own;
  int holder;  // the object around it; -1 for the job
  unsigned int depth;
};

// An attribute that a job file gives.
struct GivenAttribute {
  std::string path;  // "sourceNodes[0].options"
  const Attribute* attribute;
  const Value* value;
  Offset at;  // of its key
  int object;

  bool isContainer() const { return static_cast<bool>(attribute->family); }
};

// A field of the records that a job turns into.
struct RecordField {
  std::string path;  // "pSourceNodes[0].ulNodeOptions"
  const char* record;
  const char* name;
  BkoqFieldKind kind;
  const char* filledBy;
  bool isZero;  // or null
  std::uint32_t number;
};

// Where arrays of two keep what belongs to a layout.
constexpr std::size_t indexOf(BkoqLayout layout) { return layout == BKOQ_LAYOUT_CURRENT ? 0 : 1; }

// A job file that is flattened as it is written, and again with something left out or changed: what
// differs then is what the change decides. No table says it, so it holds whatever the conversion
// does.
class Experiment {
 public:
  // The job must be free of mistakes, and outlive this.
  Experiment(const LoadedJob& loaded, const Selection& selection);
  ~Experiment();
  Experiment(const Experiment&) = delete;
  Experiment& operator=(const Experiment&) = delete;

  const std::vector<GivenObject>& objects() const { return objects_; }
  const std::vector<GivenAttribute>& attributes() const { return attributes_; }
  Place placeOf(const GivenAttribute& given) const { return loaded_.document->placeOf(given.at); }

  bool succeeded(BkoqLayout layout);
  const std::vector<RecordField>& fields(BkoqLayout layout);

  // What is read instead of a value: another one that is as valid. Null for an object that can be
  // left out instead.
  const Value* otherValue(const GivenAttribute& given);
  const Value* number(std::int64_t number);

  struct Replacement {
    const GivenAttribute* given;
    const Value* value;  // null when the attribute is left out
  };
  // Paths of the fields that differ with all these left out or changed; none when the job cannot be
  // read or flattened so. Of each layout; what is not asked for stays none.
  using Differences = std::array<std::optional<std::vector<std::string>>, 2>;
  Differences differences(const std::vector<Replacement>& replacements,
                          const std::vector<BkoqLayout>& layouts);

  // Of how many pairs of trees that was found out slowly, since they differ in more than values.
  std::size_t wholeComparisons() const { return wholeComparisons_; }

  // The tree with these left out or changed; null when there is none.
  OwnedTree flattenWith(const std::vector<Replacement>& replacements, BkoqLayout layout);
  const OwnedTree& asWritten(BkoqLayout layout);

 private:
  struct Base;
  Base& baseOf(BkoqLayout layout);
  std::unique_ptr<BKQJob> readWith(const std::vector<Replacement>& replacements, Kept& kept);
  OwnedTree flattened(BKQJob& job, BkoqLayout layout) const;
  const Value* otherObject(const Family& family, const Value& value);
  void collect(const Family& family, const Value& value, const Value* list, const std::string& path,
               int holder, unsigned int depth);

  const LoadedJob& loaded_;
  const Selection& selection_;
  std::vector<GivenObject> objects_;
  std::vector<GivenAttribute> attributes_;
  std::unique_ptr<BKQJob> job_;
  Kept kept_;
  MadeParts made_;
  std::unique_ptr<Base> bases_[2];
  std::size_t wholeComparisons_ = 0;
  std::deque<Value> values_;
  std::deque<std::string> texts_;
  std::deque<std::vector<Value>> lists_;
  std::deque<Document> documents_;
};

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_EXPERIMENT_H_
