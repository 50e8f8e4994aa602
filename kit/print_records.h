#ifndef BKOQ_KIT_PRINT_RECORDS_H_
#define BKOQ_KIT_PRINT_RECORDS_H_

#include <vector>

#include "kit/output.h"
#include "kit/record_table.h"

namespace bkoq::kit {

// The record table in the words of other languages and tools.

// Plain C structs, each after those that it embeds.
void printC(const std::vector<const RecordDef*>& records, BkoqLayout layout, Output& out);

// An entry for file(1) that recognises images.
void printMagic(Output& out);

// A Kaitai Struct description of images of both layouts.
void printKaitai(Output& out);

// Whether a field belongs to every filter; of a record that is no filter, every field does.
inline bool isCommon(const FieldDef& field) { return field.variants == kAlways; }

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_PRINT_RECORDS_H_
