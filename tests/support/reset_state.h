#ifndef BKOQ_TESTS_SUPPORT_RESET_STATE_H_
#define BKOQ_TESTS_SUPPORT_RESET_STATE_H_

namespace bkoq::test {

// The state variables outlive a flattening by design; this makes them as they are at load.
void resetState();

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_RESET_STATE_H_
