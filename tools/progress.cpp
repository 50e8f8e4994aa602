#include "tools/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace bkoq::tool {
namespace {

std::size_t columns() {
  winsize size = {};
  const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
  return isKnown ? size.ws_col : 80;
}

// On a terminal that can go back to the beginning of a line, and clear it.
bool hasBar() {
  const char* terminal = std::getenv("TERM");
  return isatty(STDERR_FILENO) != 0 && terminal != nullptr && std::strcmp(terminal, "dumb") != 0;
}

}  // namespace

Progress::Progress(std::size_t total, Clock::time_point (*now)())
    : total_(total), isPossible_(hasBar()), now_(now) {}

Progress::~Progress() {
  if (isShown_) std::fputs("\r\033[K", stderr);
}

void Progress::at(std::size_t done) {
  constexpr auto kPatience = std::chrono::seconds(1);
  constexpr auto kPause = std::chrono::milliseconds(100);
  if (!isPossible_) return;
  const auto now = now_();
  if (now - begin_ < kPatience || now - last_ < kPause) return;
  last_ = now;
  isShown_ = true;
  constexpr std::size_t kMostBar = 40;
  const std::string count = "] " + std::to_string(done) + " of " + std::to_string(total_);
  const std::size_t room = columns() > count.size() + 2 ? columns() - count.size() - 2 : 0;
  const std::size_t bar = std::min(kMostBar, room);
  const std::size_t filled = total_ == 0 ? bar : bar * done / total_;
  std::fprintf(stderr, "\r[%s%s%s", std::string(filled, '#').c_str(),
               std::string(bar - filled, '.').c_str(), count.c_str());
}

}  // namespace bkoq::tool
