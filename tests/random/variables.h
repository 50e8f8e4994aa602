#ifndef BKOQ_TESTS_RANDOM_VARIABLES_H_
#define BKOQ_TESTS_RANDOM_VARIABLES_H_

#include <bkoq/state.h>

#include "tests/catalog/layouts.h"

namespace bkoq::test {

// The state variables of a layout, as the library exports them.
struct Variables {
#define BKOQ_MEMBER(type, name, variable) type& name;
  BKOQ_STATE_VARIABLES(BKOQ_MEMBER)
#undef BKOQ_MEMBER
};

template <class Layout>
Variables& variablesOf() {
#define BKOQ_VALUE(type, name, variable) Layout::name(),
  static Variables variables = {BKOQ_STATE_VARIABLES(BKOQ_VALUE)};
#undef BKOQ_VALUE
  return variables;
}
inline Variables& variables(BkoqLayout layout) {
  return visitLayout(layout,
                     [](auto traits) -> Variables& { return variablesOf<decltype(traits)>(); });
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_VARIABLES_H_
