#ifndef BKOQ_TESTING_STDERR_CAPTURE_H_
#define BKOQ_TESTING_STDERR_CAPTURE_H_

#include <gtest/gtest.h>

#include <string>
#include <utility>

// What `action` writes to the standard error stream.
template <class Action>
std::string standardErrorOf(Action&& action) {
  testing::internal::CaptureStderr();
  std::forward<Action>(action)();
  return testing::internal::GetCapturedStderr();
}

#endif  // BKOQ_TESTING_STDERR_CAPTURE_H_
