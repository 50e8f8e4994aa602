#ifndef BKOQ_TESTS_RANDOM_VARIABLES_H_
#define BKOQ_TESTS_RANDOM_VARIABLES_H_

#include <bkoq/state.h>

#include "tests/catalog/layouts.h"

namespace bkoq::test {

// The state variables of a layout, as the library exports them.
struct Variables {
  unsigned int& newTapeTimeout;
  unsigned int& spanTapeTimeout;
  unsigned int& newTapeMethod;
  unsigned int& spanTapeMethod;
  char*& diskPassword;
  char*& tapePassword;
  unsigned int& encryption;
  unsigned int& compression;
  unsigned int& noEstimate;
  unsigned int& nodeType;
  unsigned int& unixOptions;
  RWCollectableString& diskName;
};

template <class Layout>
Variables& variablesOf() {
  static Variables variables = {
      Layout::newTapeTimeout(),  Layout::spanTapeTimeout(),     Layout::newTapeMethod(),
      Layout::spanTapeMethod(),  Layout::diskSessionPassword(), Layout::tapeSessionPassword(),
      Layout::diskEncryption(),  Layout::diskCompression(),     Layout::nodeNoEstimate(),
      Layout::currentNodeType(), Layout::unixOptions(),         Layout::diskName()};
  return variables;
}
inline Variables& variables(BkoqLayout layout) {
  return visitLayout(layout,
                     [](auto traits) -> Variables& { return variablesOf<decltype(traits)>(); });
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_VARIABLES_H_
