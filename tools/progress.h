#ifndef BKOQ_TOOLS_PROGRESS_H_
#define BKOQ_TOOLS_PROGRESS_H_

#include <chrono>
#include <cstddef>

namespace bkoq::tool {

// A bar on the standard error stream, if that is a terminal and it takes longer than a second.
class Progress {
 public:
  using Clock = std::chrono::steady_clock;

  explicit Progress(std::size_t total, Clock::time_point (*now)() = Clock::now);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void at(std::size_t done);

 private:
  std::size_t total_;
  bool isPossible_;
  Clock::time_point (*now_)();
  Clock::time_point begin_ = now_();
  Clock::time_point last_ = begin_;
  bool isShown_ = false;
};

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_PROGRESS_H_
