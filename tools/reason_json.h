#ifndef BKOQ_TOOLS_REASON_JSON_H_
#define BKOQ_TOOLS_REASON_JSON_H_

#include <nlohmann/json.hpp>

#include "tools/explain.h"

namespace bkoq::tool {

// Where an attribute is given, and what it says.
nlohmann::ordered_json placeJson(const Experiment& experiment, const GivenAttribute& given);
// Why a field holds what it holds.
nlohmann::ordered_json reasonJson(const Experiment& experiment, const FieldReason& why,
                                  BkoqLayout layout);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_REASON_JSON_H_
