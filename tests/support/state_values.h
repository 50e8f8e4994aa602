#ifndef BKOQ_TESTS_SUPPORT_STATE_VALUES_H_
#define BKOQ_TESTS_SUPPORT_STATE_VALUES_H_

#include <gtest/gtest.h>

#include <string>

#include "tests/catalog/layouts.h"

namespace bkoq::test {

// All variables of a layout, to be compared as a whole.
struct StateValues {
  unsigned int newTapeTimeout;
  unsigned int spanTapeTimeout;
  unsigned int newTapeMethod;
  unsigned int spanTapeMethod;
  const char* diskSessionPassword;
  const char* tapeSessionPassword;
  unsigned int diskEncryption;
  unsigned int diskCompression;
  unsigned int nodeNoEstimate;
  unsigned int currentNodeType;
  unsigned int unixOptions;
  std::string diskName;
};

template <class L>
StateValues stateOf() {
  return {L::newTapeTimeout(),  L::spanTapeTimeout(),     L::newTapeMethod(),
          L::spanTapeMethod(),  L::diskSessionPassword(), L::tapeSessionPassword(),
          L::diskEncryption(),  L::diskCompression(),     L::nodeNoEstimate(),
          L::currentNodeType(), L::unixOptions(),         L::diskName().data()};
}

inline std::string textOf(const char* text) { return text != nullptr ? text : "(null)"; }

inline void expectState(const StateValues& values, const StateValues& expected) {
  EXPECT_EQ(values.newTapeTimeout, expected.newTapeTimeout);
  EXPECT_EQ(values.spanTapeTimeout, expected.spanTapeTimeout);
  EXPECT_EQ(values.newTapeMethod, expected.newTapeMethod);
  EXPECT_EQ(values.spanTapeMethod, expected.spanTapeMethod);
  EXPECT_EQ(textOf(values.diskSessionPassword), textOf(expected.diskSessionPassword));
  EXPECT_EQ(textOf(values.tapeSessionPassword), textOf(expected.tapeSessionPassword));
  EXPECT_EQ(values.diskEncryption, expected.diskEncryption);
  EXPECT_EQ(values.diskCompression, expected.diskCompression);
  EXPECT_EQ(values.nodeNoEstimate, expected.nodeNoEstimate);
  EXPECT_EQ(values.currentNodeType, expected.currentNodeType);
  EXPECT_EQ(values.unixOptions, expected.unixOptions);
  EXPECT_EQ(values.diskName, expected.diskName);
}

static const StateValues kEmptyState = {0, 0, 0, 0, nullptr, nullptr, 0, 0, 0, 0, 0, ""};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_STATE_VALUES_H_
