// What a bar says, on a terminal whose width is known and by a clock that the test sets.

#include "tools/progress.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

namespace bkoq::tool {
namespace {

using std::chrono::milliseconds;

Progress::Clock::time_point clockTime;
Progress::Clock::time_point readClock() { return clockTime; }

// A terminal in the place of the standard error stream, for as long as it lives.
class Terminal {
 public:
  Terminal() : before_(dup(STDERR_FILENO)) {
    int terminal = -1;
    EXPECT_EQ(openpty(&program_, &terminal, nullptr, nullptr, nullptr), 0);
    termios modes = {};
    tcgetattr(terminal, &modes);
    cfmakeraw(&modes);
    tcsetattr(terminal, TCSANOW, &modes);
    dup2(terminal, STDERR_FILENO);
    close(terminal);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() {
    dup2(before_, STDERR_FILENO);
    close(before_);
    close(program_);
  }

  void setColumns(unsigned short columns) {
    const winsize size = {24, columns, 0, 0};
    EXPECT_EQ(ioctl(program_, TIOCSWINSZ, &size), 0);
  }
  // What it was given since the last time.
  std::string given() {
    std::fputs("\x04", stderr);
    std::fflush(stderr);
    std::string text;
    for (char byte = 0; read(program_, &byte, 1) == 1 && byte != '\x04';) text += byte;
    return text;
  }

 private:
  int before_;
  int program_ = -1;
};

// What TERM says, for as long as it lives; none for null.
class TerminalName {
 public:
  explicit TerminalName(const char* name) {
    if (const char* before = std::getenv("TERM")) before_ = before;
    set(name);
  }
  TerminalName(const TerminalName&) = delete;
  TerminalName& operator=(const TerminalName&) = delete;
  ~TerminalName() { set(before_.has_value() ? before_->c_str() : nullptr); }

 private:
  static void set(const char* name) {
    name != nullptr ? setenv("TERM", name, 1) : unsetenv("TERM");
  }
  std::optional<std::string> before_;
};

TEST(Progress, IsABarThatFitsIntoTheLine) {
  const TerminalName name("xterm");
  Terminal terminal;
  const struct {
    unsigned short columns;
    std::size_t done;
    std::size_t total;
    std::string line;
  } rows[] = {
      {80, 0, 10, "[" + std::string(40, '.') + "] 0 of 10"},
      {80, 5, 10, "[" + std::string(20, '#') + std::string(20, '.') + "] 5 of 10"},
      {80, 3, 7, "[" + std::string(17, '#') + std::string(23, '.') + "] 3 of 7"},
      {80, 10, 10, "[" + std::string(40, '#') + "] 10 of 10"},
      {80, 0, 0, "[" + std::string(40, '#') + "] 0 of 0"},
      {0, 1, 2, "[" + std::string(20, '#') + std::string(20, '.') + "] 1 of 2"},
      // One column is left free: some terminals go on to the next line when the last is written.
      {51, 1, 1, "[" + std::string(40, '#') + "] 1 of 1"},
      {50, 1, 1, "[" + std::string(40, '#') + "] 1 of 1"},
      {49, 1, 1, "[" + std::string(39, '#') + "] 1 of 1"},
      {12, 1, 2, "[#.] 1 of 2"},
      {11, 1, 1, "[#] 1 of 1"},
      {10, 1, 1, "[] 1 of 1"},
      {9, 1, 1, "[] 1 of 1"},
      {1, 1, 1, "[] 1 of 1"},
  };
  for (const auto& row : rows) {
    terminal.setColumns(row.columns);
    {
      clockTime = {};
      Progress progress(row.total, readClock);
      clockTime += milliseconds(1000);
      progress.at(row.done);
      EXPECT_EQ(terminal.given(), "\r" + row.line) << row.columns;
    }
    EXPECT_EQ(terminal.given(), "\r\033[K") << "the line is cleared";
  }
}

TEST(Progress, IsShownAfterASecondAndThenTenTimesASecond) {
  const TerminalName name("xterm");
  Terminal terminal;
  terminal.setColumns(1);
  {
    clockTime = {};
    Progress progress(9, readClock);
    const auto shownAfter = [&](milliseconds since, std::size_t done) {
      clockTime = Progress::Clock::time_point() + since;
      progress.at(done);
      return terminal.given();
    };
    EXPECT_EQ(shownAfter(milliseconds(0), 1), "");
    EXPECT_EQ(shownAfter(milliseconds(999), 2), "");
    EXPECT_EQ(shownAfter(milliseconds(1000), 3), "\r[] 3 of 9");
    EXPECT_EQ(shownAfter(milliseconds(1099), 4), "");
    EXPECT_EQ(shownAfter(milliseconds(1100), 5), "\r[] 5 of 9");
    EXPECT_EQ(shownAfter(milliseconds(1199), 6), "");
    EXPECT_EQ(shownAfter(milliseconds(3000), 7), "\r[] 7 of 9");
  }
  EXPECT_EQ(terminal.given(), "\r\033[K");
  {
    clockTime = {};
    Progress progress(9, readClock);
    clockTime += milliseconds(999);
    progress.at(8);
  }
  EXPECT_EQ(terminal.given(), "") << "what was not shown needs not be cleared";
}

TEST(Progress, NeedsATerminalThatCanGoBack) {
  const auto shownOn = [](Terminal& terminal) {
    clockTime = {};
    {
      Progress progress(9, readClock);
      clockTime += milliseconds(1000);
      progress.at(3);
    }
    return terminal.given();
  };
  Terminal terminal;
  terminal.setColumns(1);
  for (const char* dumb : {static_cast<const char*>(nullptr), "dumb"}) {
    const TerminalName name(dumb);
    EXPECT_EQ(shownOn(terminal), "") << (dumb != nullptr ? dumb : "none");
  }
  for (const char* able : {"", "xterm", "dumber", "vt100"}) {
    const TerminalName name(able);
    EXPECT_EQ(shownOn(terminal), "\r[] 3 of 9\r\033[K") << able;
  }
}

TEST(Progress, IsNotWrittenToAFile) {
  const TerminalName name("xterm");
  testing::internal::CaptureStderr();
  {
    clockTime = {};
    Progress progress(9, readClock);
    clockTime += milliseconds(1000);
    progress.at(3);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace bkoq::tool
