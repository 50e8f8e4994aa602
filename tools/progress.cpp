#include "tools/progress.h"

#include <unistd.h>

#include <cstdio>
#include <string>

namespace bkoq::tool {

Progress::~Progress() {
  if (isShown_) std::fputs("\r\033[K", stderr);
}

void Progress::at(std::size_t done) {
  constexpr auto kPatience = std::chrono::seconds(1);
  constexpr auto kPause = std::chrono::milliseconds(100);
  if (isatty(STDERR_FILENO) == 0) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - begin_ < kPatience || now - last_ < kPause) return;
  last_ = now;
  isShown_ = true;
  constexpr std::size_t kBar = 40;
  const std::size_t filled = total_ == 0 ? kBar : kBar * done / total_;
  std::fprintf(stderr, "\r[%s%s] %zu of %zu", std::string(filled, '#').c_str(),
               std::string(kBar - filled, '.').c_str(), done, total_);
  std::fflush(stderr);
}

}  // namespace bkoq::tool
