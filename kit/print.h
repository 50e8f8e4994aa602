#ifndef BKOQ_KIT_PRINT_H_
#define BKOQ_KIT_PRINT_H_

#include "bkoq/kit.h"
#include "kit/output.h"
#include "kit/pattern.h"
#include "kit/walker.h"

namespace bkoq::kit {

struct Options : BkoqPrintOptions {
  BkoqImagePlaces places;
};

// Which part of a tree is printed: all of it; or the records of one type; or what is at a path, or
// at each path that a pattern is about.
struct Scope {
  const RecordDef* only = nullptr;
  const char* path = nullptr;
  bool isPattern = false;
  const char* note = "";  // what is to be said first

  // Whether a path is one that was asked for, or leads further into what is there.
  bool holds(const Path& other) const { return covers(path, other.text()); }
  bool isExactly(const Path& other) const { return path != nullptr && matches(path, other.text()); }
};

// Each prints a tree in one form and returns whether there was anything to print.
bool printText(const RecordView& job, const Options& options, const Scope& scope, Output& out);
bool printJson(const RecordView& job, const Options& options, const Scope& scope, Output& out);
bool printAnnotated(const RecordView& job, const Options& options, const Scope& scope, Output& out);

// Whether the options leave the field out.
inline bool isHidden(const FieldView& field, const Options& options) {
  if (!field.isZero()) return false;
  return options.hideZero != 0 ||
         (options.hideReserved != 0 && field.def().kind == FieldKind::kReserved);
}

// Whether what a block holds may not be what was written: a salvaged image is doubtful from a block
// on.
inline bool isDoubtful(std::uint32_t block, const Options& options) {
  return options.places.doubtfulFrom != 0 && block >= options.places.doubtfulFrom;
}

// Where a block lies in its image.
inline std::uint32_t imageOffset(const Block& block, const Options& options) {
  return static_cast<std::uint32_t>(block.bytes -
                                    static_cast<const std::uint8_t*>(options.places.image));
}

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_PRINT_H_
