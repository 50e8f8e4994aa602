#ifndef BKOQ_TESTS_SUPPORT_STATE_VALUES_H_
#define BKOQ_TESTS_SUPPORT_STATE_VALUES_H_

#include <gtest/gtest.h>

#include <string>

#include "tests/catalog/layouts.h"

namespace bkoq::test {

// What a variable held, kept apart from it.
inline unsigned int kept(unsigned int word) { return word; }
inline const char* kept(const char* password) { return password; }
inline std::string kept(const RWCollectableString& text) { return text.data(); }

// All variables of a layout, to be compared as a whole.
struct StateValues {
// NOLINTNEXTLINE(bugprone-macro-parentheses): what is declared takes none
#define BKOQ_MEMBER(type, name, variable) decltype(kept(CurrentLayout::name())) name;
  BKOQ_STATE_VARIABLES(BKOQ_MEMBER)
#undef BKOQ_MEMBER
};

template <class L>
StateValues stateOf() {
#define BKOQ_VALUE(type, name, variable) kept(L::name()),
  return {BKOQ_STATE_VARIABLES(BKOQ_VALUE)};
#undef BKOQ_VALUE
}

inline unsigned int shown(unsigned int word) { return word; }
inline std::string shown(const char* text) { return text != nullptr ? text : "(null)"; }
inline std::string shown(const std::string& text) { return text; }

inline void expectState(const StateValues& values, const StateValues& expected) {
#define BKOQ_EXPECT(type, name, variable) \
  EXPECT_EQ(shown(values.name), shown(expected.name)) << #variable;
  BKOQ_STATE_VARIABLES(BKOQ_EXPECT)
#undef BKOQ_EXPECT
}

static const StateValues kEmptyState = {0, 0, 0, 0, nullptr, nullptr, 0, 0, 0, 0, 0, ""};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_STATE_VALUES_H_
