#ifndef BKOQ_TESTS_RANDOM_ERROR_STREAM_H_
#define BKOQ_TESTS_RANDOM_ERROR_STREAM_H_

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "tests/support/sanitizers.h"
#ifdef BKOQ_WITH_ASAN
#include <sanitizer/common_interface_defs.h>
#endif

namespace bkoq::test {

// What a conversion writes to the standard error stream.
class ErrorStream {
 public:
  ErrorStream() : terminal_(dup(2)), file_(memfd_create("messages", 0)) {
    dup2(file_, 2);
#ifdef BKOQ_WITH_ASAN
    __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<std::intptr_t>(terminal_)));
#endif
  }
  ~ErrorStream() { dup2(terminal_, 2); }

  std::string take() {
    const off_t size = lseek(file_, 0, SEEK_END);
    if (size <= 0) return "";
    std::string text(static_cast<std::size_t>(size), '\0');
    const ssize_t got = pread(file_, &text[0], text.size(), 0);
    text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    if (ftruncate(file_, 0) != 0) std::abort();
    lseek(file_, 0, SEEK_SET);
    return text;
  }

 private:
  int terminal_;
  int file_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_ERROR_STREAM_H_
