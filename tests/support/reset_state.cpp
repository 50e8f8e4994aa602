#include "tests/support/reset_state.h"

#include "tests/catalog/layouts.h"

namespace bkoq::test {
namespace {

template <class Variable>
void reset(Variable& variable) {
  variable = Variable();
}

template <class L>
void resetStateOf() {
#define BKOQ_RESET(type, name, variable) reset(L::name());
  BKOQ_STATE_VARIABLES(BKOQ_RESET)
#undef BKOQ_RESET
}

}  // namespace

void resetState() {
  resetStateOf<CurrentLayout>();
  resetStateOf<PreviousLayout>();
}

}  // namespace bkoq::test
