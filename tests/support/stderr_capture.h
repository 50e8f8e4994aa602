#ifndef BKOQ_TESTS_SUPPORT_STDERR_CAPTURE_H_
#define BKOQ_TESTS_SUPPORT_STDERR_CAPTURE_H_

#include <gtest/gtest.h>
#include <stdio.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <utility>
#include <vector>

namespace bkoq::test {

// What `action` writes to the standard error stream.
template <class Action>
std::string standardErrorOf(Action&& action) {
  testing::internal::CaptureStderr();
  std::forward<Action>(action)();
  return testing::internal::GetCapturedStderr();
}

// The same, one element for each write of its own: in its place stands a socket that keeps them
// apart.
template <class Action>
std::vector<std::string> standardErrorWritesOf(Action&& action) {
  std::vector<std::string> writes;
  int ends[2];
  fflush(stderr);
  const int standardError = dup(STDERR_FILENO);
  if (standardError < 0 || socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0) {
    ADD_FAILURE() << "no socket in the place of the standard error stream";
    return writes;
  }
  dup2(ends[0], STDERR_FILENO);
  std::forward<Action>(action)();
  fflush(stderr);
  dup2(standardError, STDERR_FILENO);
  close(standardError);
  close(ends[0]);
  char buffer[4096];
  for (ssize_t size; (size = recv(ends[1], buffer, sizeof buffer, 0)) > 0;) {
    writes.emplace_back(buffer, static_cast<std::size_t>(size));
  }
  close(ends[1]);
  return writes;
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_STDERR_CAPTURE_H_
