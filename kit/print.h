#ifndef BKOQ_KIT_PRINT_H_
#define BKOQ_KIT_PRINT_H_

#include <cstring>

#include "bkoq/kit.h"
#include "kit/output.h"
#include "kit/walker.h"

namespace bkoq::kit {

// Which part of a tree is printed: all of it; or the records of one type; or what stands at a path.
struct Scope {
  const RecordDef* only = nullptr;
  const char* path = nullptr;

  // Whether a path is the one asked for, or leads further into what stands there.
  bool holds(const char* other) const {
    const std::size_t length = std::strlen(path);
    if (std::strncmp(other, path, length) != 0) return false;
    return length == 0 || other[length] == '\0' || other[length] == '.' || other[length] == '[';
  }
  bool isExactly(const char* other) const {
    return path != nullptr && std::strcmp(other, path) == 0;
  }
};

// Each prints a tree in one form and returns whether anything was printed.
bool printText(const RecordView& job, const BkoqPrintOptions& options, const Scope& scope,
               Output& out);
bool printJson(const RecordView& job, const BkoqPrintOptions& options, const Scope& scope,
               Output& out);
bool printAnnotated(const RecordView& job, const BkoqPrintOptions& options, const Scope& scope,
                    Output& out);

// Whether the options leave the field out.
inline bool isHidden(const FieldView& field, const BkoqPrintOptions& options) {
  if (!field.isZero()) return false;
  return options.hideZero != 0 ||
         (options.hideReserved != 0 && field.def().kind == FieldKind::kReserved);
}

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_PRINT_H_
