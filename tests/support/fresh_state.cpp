#include <gtest/gtest.h>

#include "tests/support/reset_state.h"

namespace bkoq::test {

// Every test finds the state variables as they are at load.

namespace {

class FreshState : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& /*test*/) override { resetState(); }
};

const bool kRegistered = [] {
  testing::UnitTest::GetInstance()->listeners().Append(new FreshState);
  return true;
}();

}  // namespace

}  // namespace bkoq::test
