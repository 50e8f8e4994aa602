#ifndef BKOQ_KIT_JSON_H_
#define BKOQ_KIT_JSON_H_

#include <string>

#include "kit/output.h"
#include "kit/view.h"

namespace bkoq::kit {

constexpr int kJsonVersion = 1;

// What stands first in every JSON document of the kit: "{" and the members that say what follows.
std::string jsonStart(const char* format);

// The members that tell a field's value: "kind", "value" and what belongs to it. Arrays and records
// give their "block", "size" and "count" only.
void putJsonValue(Output& out, const FieldView& field, const Block& block, bool showSecrets);

// The value alone: a number, a text, a list of either, null. Nothing for what holds records.
void putPlainValue(Output& out, const FieldView& field, const Block& block, bool showSecrets);

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_JSON_H_
