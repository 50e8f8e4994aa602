#ifndef BKOQ_KIT_PRINT_H_
#define BKOQ_KIT_PRINT_H_

#include "bkoq/kit.h"
#include "kit/output.h"
#include "kit/tree.h"

namespace bkoq {

// Each prints a whole tree in one form and returns whether anything was printed. `only` is null, or
// the type of the records to print.
bool printText(const RecordView& job, const BkoqPrintOptions& options, const RecordDef* only,
               Output& out);
bool printJson(const RecordView& job, const BkoqPrintOptions& options, const RecordDef* only,
               Output& out);
bool printAnnotated(const RecordView& job, const BkoqPrintOptions& options, const RecordDef* only,
                    Output& out);

// Whether the options leave the field out.
inline bool isHidden(const FieldView& field, const BkoqPrintOptions& options) {
  if (!field.isZero()) return false;
  return options.hideZero != 0 ||
         (options.hideReserved != 0 && field.def().kind == FieldKind::kReserved);
}

}  // namespace bkoq

#endif  // BKOQ_KIT_PRINT_H_
