// What goes through many files, in one process or in several.

#include "tools/many_files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/stderr_capture.h"

namespace bkoq::tool {
namespace {

using test::standardErrorOf;

std::size_t openFiles() {
  return static_cast<std::size_t>(std::distance(
      std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator()));
}

void printLines(std::size_t file, std::size_t lines) {
  for (std::size_t i = 0; i < lines; ++i) std::printf("%zu.%zu\n", file, i);
}

struct Outcome {
  Tally tally;
  std::string printed;
  std::string messages;
};

Outcome runOf(std::size_t files, unsigned int processes,
              const std::function<Status(std::size_t)>& one) {
  Outcome run;
  testing::internal::CaptureStdout();
  run.messages = standardErrorOf([&] { run.tally = forEachFile(files, processes, one); });
  run.printed = testing::internal::GetCapturedStdout();
  return run;
}

std::string ended(const Tally& tally) {
  return std::to_string(tally.ended[kDone]) + " done, " + std::to_string(tally.ended[kDiffers]) +
         " differ, " + std::to_string(tally.ended[kFailed]) + " failed";
}

TEST(ManyFiles, PrintInTheirOrder) {
  const auto one = [](std::size_t file) {
    // The first ones take longest.
    usleep(static_cast<unsigned int>(10000 / (file + 1)));
    printLines(file, 2);
    return file == 3 ? kFailed : file % 2 == 1 ? kDiffers : kDone;
  };
  for (const unsigned int processes : {0, 1, 2, 3, 5, 6, 7, 100}) {
    const Outcome run = runOf(6, processes, one);
    EXPECT_EQ(ended(run.tally), "3 done, 2 differ, 1 failed") << processes;
    EXPECT_EQ(run.printed, "0.0\n0.1\n1.0\n1.1\n2.0\n2.1\n3.0\n3.1\n4.0\n4.1\n5.0\n5.1\n")
        << processes;
    EXPECT_EQ(run.messages, "") << processes;
  }
  EXPECT_EQ(ended(runOf(0, 2, one).tally), "0 done, 0 differ, 0 failed");
}

TEST(ManyFiles, AreSharedOutEvenly) {
  for (const std::size_t files : {2, 3, 7, 8}) {
    const Outcome run = runOf(files, 3, [](std::size_t) {
      std::printf("%d\n", static_cast<int>(getpid()));
      return kDone;
    });
    // Each process has its files one after the other.
    std::vector<std::size_t> shares;
    std::string before;
    for (std::size_t at = 0; at < run.printed.size(); at = run.printed.find('\n', at) + 1) {
      const std::string process = run.printed.substr(at, run.printed.find('\n', at) - at);
      if (process != before) shares.push_back(0);
      ++shares.back();
      before = process;
    }
    ASSERT_EQ(shares.size(), std::min<std::size_t>(files, 3));
    for (const std::size_t share : shares) {
      EXPECT_TRUE(share == files / shares.size() || share == files / shares.size() + 1) << files;
    }
  }
}

TEST(ManyFiles, OfOneProcessAreInThisOne) {
  const pid_t self = getpid();
  for (const unsigned int processes : {0u, 1u, 8u}) {
    bool isHere = false;
    forEachFile(1, processes, [&](std::size_t) {
      isHere = getpid() == self;
      return kDone;
    });
    EXPECT_TRUE(isHere) << processes << " for one file";
  }
}

TEST(ManyFiles, PrintMoreThanAPipeHolds) {
  const Outcome run = runOf(2, 2, [](std::size_t file) {
    printLines(file, 30000);
    return kDone;
  });
  std::string expected;
  for (const char* file : {"0.", "1."}) {
    for (int i = 0; i < 30000; ++i) expected += file + std::to_string(i) + "\n";
  }
  EXPECT_TRUE(run.printed == expected);
}

TEST(ManyFiles, PrintOnceWhatWasPending) {
  testing::internal::CaptureStdout();
  std::printf("pending ");
  forEachFile(2, 2, [](std::size_t file) {
    printLines(file, 1);
    return kDone;
  });
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "pending 0.0\n1.0\n");
}

TEST(ManyFiles, LeaveNothingOpen) {
  const std::size_t before = openFiles();
  const Outcome run = runOf(2, 2, [](std::size_t) {
    std::printf("%zu\n", openFiles());
    return kDone;
  });
  EXPECT_EQ(openFiles(), before);
  // Beside what captures the two streams each process has the pipe's end that it writes to, its own
  // file, and those of the processes before it.
  const std::size_t captures = 2;
  EXPECT_EQ(run.printed, std::to_string(before + captures + 2) + "\n" +
                             std::to_string(before + captures + 3) + "\n");
}

TEST(ManyFiles, CountAsTroubleWhereAProcessEnds) {
  const Outcome killed = runOf(6, 2, [](std::size_t file) {
    printLines(file, 1);
    if (file == 1) std::raise(SIGKILL);
    return kDone;
  });
  EXPECT_EQ(ended(killed.tally), "4 done, 0 differ, 2 failed");
  EXPECT_EQ(killed.printed, "0.0\n3.0\n4.0\n5.0\n");
  EXPECT_EQ(killed.messages, "bkoq: a process was ended by the signal Killed\n");

  const Outcome left = runOf(6, 2, [](std::size_t file) {
    if (file == 4) _exit(0);
    return kDone;
  });
  EXPECT_EQ(ended(left.tally), "4 done, 0 differ, 2 failed");
  EXPECT_EQ(left.messages, "");
}

TEST(ManyFiles, WaitForTheirProcesses) {
  const Tally tally = forEachFile(2, 2, [](std::size_t file) {
    if (file == 1) {
      for (int open = 3; open < 50; ++open) close(open);  // as if it had ended
      usleep(50000);
      _exit(0);
    }
    return kDone;
  });
  EXPECT_EQ(ended(tally), "1 done, 0 differ, 1 failed");
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "none is left";
}

TEST(ManyFiles, AreDoneThoughSignalsComeIn) {
  struct sigaction before = {};
  struct sigaction ignored = {};
  ignored.sa_handler = [](int) {};
  sigaction(SIGALRM, &ignored, &before);  // what is interrupted is not begun again
  const itimerval often = {{0, 2000}, {0, 2000}};
  const itimerval never = {};
  setitimer(ITIMER_REAL, &often, nullptr);
  const Tally tally = forEachFile(4, 2, [](std::size_t) {
    usleep(30000);  // a timer is not passed on to a new process
    return kDiffers;
  });
  setitimer(ITIMER_REAL, &never, nullptr);
  sigaction(SIGALRM, &before, nullptr);
  EXPECT_EQ(ended(tally), "0 done, 4 differ, 0 failed");
}

TEST(ManyFiles, AreAllToldOfWhereNoProcessCanStart) {
  rlimit before = {};
  getrlimit(RLIMIT_NOFILE, &before);
  const struct {
    unsigned int left;  // files that can be opened
    const char* messages;
  } rows[] = {
      {0, "bkoq: cannot start processes: Too many open files\n"},
      {1, "bkoq: cannot start processes: Too many open files\n"},
      {2,
       "bkoq: cannot start a process: Too many open files\n"
       "bkoq: cannot start a process: Too many open files\n"
       "bkoq: cannot start a process: Too many open files\n"},
  };
  for (const auto& row : rows) {
    Tally tally;
    const std::string messages = standardErrorOf([&] {
      const int next = dup(STDERR_FILENO);
      close(next);
      const rlimit few = {static_cast<rlim_t>(next) + row.left, before.rlim_max};
      setrlimit(RLIMIT_NOFILE, &few);
      tally = forEachFile(5, 3, [](std::size_t) { return kDone; });
      setrlimit(RLIMIT_NOFILE, &before);
    });
    EXPECT_EQ(messages, row.messages) << row.left;
    EXPECT_EQ(ended(tally), "0 done, 0 differ, 5 failed") << row.left;
  }
}

TEST(ManyFiles, AreDoneByThoseThatCouldStart) {
  rlimit before = {};
  getrlimit(RLIMIT_NOFILE, &before);
  Tally tally;
  const std::string messages = standardErrorOf([&] {
    const int next = dup(STDERR_FILENO);
    close(next);
    // The pipe, and the file of one process.
    const rlimit few = {static_cast<rlim_t>(next) + 3, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    tally = forEachFile(5, 2, [](std::size_t) { return kDone; });
    setrlimit(RLIMIT_NOFILE, &before);
  });
  EXPECT_EQ(messages, "bkoq: cannot start a process: Too many open files\n");
  EXPECT_EQ(ended(tally), "2 done, 0 differ, 3 failed");
}

}  // namespace
}  // namespace bkoq::tool
