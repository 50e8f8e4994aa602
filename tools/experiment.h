#ifndef BKOQ_TOOLS_EXPERIMENT_H_
#define BKOQ_TOOLS_EXPERIMENT_H_

#include <bkoq/kit.h>

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
  bool isSecret;
  std::uint32_t number;
};

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
  // Null when there is no such path.
  const GivenAttribute* find(const std::string& path) const;
  Place placeOf(const GivenAttribute& given) const { return loaded_.document->placeOf(given.at); }

  bool succeeded(BkoqLayout layout);
  const std::vector<RecordField>& fields(BkoqLayout layout);

  // What is read instead of a value: another one that is as valid. Empty for objects.
  std::vector<const Value*> otherValues(const GivenAttribute& given);
  const Value* number(std::int64_t number);

  // Paths of the fields that differ when the attribute is left out (a null replacement) or has
  // another value; none when the job cannot be read or flattened so.
  std::optional<std::vector<std::string>> differences(const GivenAttribute& given,
                                                      const Value* replacement, BkoqLayout layout);

  // The tree with all these attributes left out, or changed; null when there is none.
  struct Replacement {
    const GivenAttribute* given;
    const Value* value;
  };
  OwnedTree flattenWith(const std::vector<Replacement>& replacements, BkoqLayout layout);
  const OwnedTree& asWritten(BkoqLayout layout);

 private:
  struct Base;
  Base& baseOf(BkoqLayout layout);
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
  std::deque<Value> values_;
  std::deque<std::string> texts_;
  std::deque<std::vector<Value>> lists_;
};

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_EXPERIMENT_H_
