#ifndef BKOQ_KIT_GUARD_H_
#define BKOQ_KIT_GUARD_H_

#include "bkoq/kit.h"

namespace bkoq::kit {

// No exception crosses the C interface. The kit itself throws none, so what arrives here is the
// library's word for memory that ran out, or for a text longer than there can be memory for.
template <class Operation>
BkoqStatus guarded(const Operation& operation) noexcept {
  try {
    return operation();
  } catch (...) {
    return BKOQ_NO_MEMORY;
  }
}

inline bool isLayout(BkoqLayout layout) {
  return layout == BKOQ_LAYOUT_CURRENT || layout == BKOQ_LAYOUT_PREVIOUS;
}

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_GUARD_H_
