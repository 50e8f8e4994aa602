#ifndef BKOQ_TOOLS_EXPLAIN_H_
#define BKOQ_TOOLS_EXPLAIN_H_

#include <functional>
#include <string>
#include <vector>

#include "tools/experiment.h"

namespace bkoq::tool {

// What one line of a job file decides.
struct Decided {
  const GivenAttribute* given = nullptr;
  std::vector<std::string> fields[2];  // in each layout
  bool isDefault = false;              // leaving it out changes nothing
};

// One reason for what a field holds.
struct Reason {
  const GivenAttribute* given;
  std::uint32_t fieldBits = 0;      // of a flag word: the bits that it sets
  std::uint32_t attributeBits = 0;  // those of its own that do so; 0 when they are the same
};

// Why a field holds what it holds.
struct FieldReason {
  const RecordField* field;
  std::vector<Reason> reasons;
  std::string origin;  // "default of BKQUnixNode", "computed"; empty when all is decided
};

// An attribute whose value is not shown.
bool isSecret(const Attribute& attribute);
// What is written, as JSON on one line, shortened.
std::string shownValue(const GivenAttribute& given);

Decided whatItDecides(Experiment& experiment, const GivenAttribute& given,
                      const std::vector<BkoqLayout>& layouts);
// The same for many, with far fewer experiments; `progress` is told how many are done.
std::vector<Decided> whatTheyDecide(Experiment& experiment,
                                    const std::vector<const GivenAttribute*>& all,
                                    const std::vector<BkoqLayout>& layouts,
                                    const std::function<void(std::size_t)>& progress);

// The fields that a path or a pattern is about; of a record everything in it.
std::vector<const RecordField*> fieldsAt(Experiment& experiment, const std::string& path,
                                         BkoqLayout layout);
FieldReason whyFieldHolds(Experiment& experiment, const RecordField& field, BkoqLayout layout);
// The same for many, with far fewer experiments.
std::vector<FieldReason> whyFieldsHold(Experiment& experiment,
                                       const std::vector<const RecordField*>& fields,
                                       BkoqLayout layout);

// "pSourceNodes[0].ulNodeOptions 0x160: default 0x120 of BKQUnixNode; 0x40 because options has
// 0x100000 (nightly.json:16)"
std::string reasonText(const Experiment& experiment, const FieldReason& why,
                       const std::string& file);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_EXPLAIN_H_
