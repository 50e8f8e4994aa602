// What the command does with lines that are folded for a terminal, and with files.

#include "tools/output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include "tests/support/stderr_capture.h"

namespace bkoq::tool {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;
using test::standardErrorOf;

// Another file in the place of the standard output, for as long as it lives.
class StandardOutput {
 public:
  explicit StandardOutput(int file) : before_(dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    dup2(file, STDOUT_FILENO);
  }
  StandardOutput(const StandardOutput&) = delete;
  StandardOutput& operator=(const StandardOutput&) = delete;
  ~StandardOutput() {
    std::fflush(stdout);
    dup2(before_, STDOUT_FILENO);
    close(before_);
  }

 private:
  int before_;
};

// The number that the next file gets that is opened: the same again when all have been closed.
int nextFile() {
  const int file = dup(STDERR_FILENO);
  close(file);
  return file;
}

bool isOpen(int file) { return fcntl(file, F_GETFD) != -1; }

Names namesIn(const fs::path& folder) {
  Names names;
  for (const auto& each : fs::directory_iterator(folder)) names.insert(each.path().filename());
  return names;
}

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void makeFile(const fs::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

// A folder in which the test works.
class Files : public testing::Test {
 protected:
  void SetUp() override {
    before_ = fs::current_path();
    folder_ = fs::path(testing::TempDir()) / ("bkoq-output-" + std::to_string(getpid()));
    fs::create_directory(folder_);
    fs::current_path(folder_);
    const int nameless = open(".", O_TMPFILE | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    hasNameless_ = nameless >= 0;
    if (hasNameless_) close(nameless);
  }
  void TearDown() override {
    fs::current_path(before_);
    fs::remove_all(folder_);
  }

  fs::path before_;
  fs::path folder_;
  bool hasNameless_ = false;  // whether the file system has files without a name
};

TEST(Folded, BreaksBetweenWordsAndIndents) {
  const struct {
    const char* line;
    unsigned int columns;
    const char* result;
  } cases[] = {
      {"", 10, ""},
      {"one two three", 0, "one two three"},
      {"one ", 0, "one "},
      {"one two three", 13, "one two three"},
      {"one two three", 12, "one two\n    three"},
      {"one two three", 9, "one two\n    three"},
      {"  one two three", 12, "  one two\n      three"},
      // A word that fits in no line stays where it is.
      {"one two three", 8, "one two three"},
      {"one abcdefghijkl two", 10, "one abcdefghijkl\n    two"},
      // The indentation takes half of a line at most, and the first word stays after its own.
      {"        one two", 10, "        one\n     two"},
      // What takes no column: the bytes of a character after the first, and colours.
      {"\xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9", 9,
       "\xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9"},
      {"\xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9", 8,
       "\xC3\xA9\xC3\xA9\xC3\xA9 \xC3\xA9\xC3\xA9\xC3\xA9\n    \xC3\xA9"},
      {"\033[1mone\033[0m \033[31mtwo\033[0m six", 11, "\033[1mone\033[0m \033[31mtwo\033[0m six"},
      {"\033[1mone\033[0m \033[31mtwo\033[0m six", 10,
       "\033[1mone\033[0m \033[31mtwo\033[0m\n    six"},
      // Blanks at a break are left out, others are kept.
      {"one   two   three", 10, "one   two\n    three"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(folded(each.line, each.columns), each.result) << each.columns << ": " << each.line;
  }
}

TEST(Output, IsFoldedOnTerminalsOfFortyColumnsAndMore) {
  const int primary = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (primary < 0 || grantpt(primary) != 0 || unlockpt(primary) != 0) {
    GTEST_SKIP() << "this system has no terminals to give";
  }
  const int terminal = open(ptsname(primary), O_RDWR | O_NOCTTY | O_CLOEXEC);
  const auto widthAt = [&](unsigned short columns) {
    const winsize size = {24, columns, 0, 0};
    ioctl(terminal, TIOCSWINSZ, &size);
    const StandardOutput output(terminal);
    return width();
  };
  EXPECT_EQ(widthAt(0), 0U);
  EXPECT_EQ(widthAt(39), 0U);
  EXPECT_EQ(widthAt(40), 40U);
  int sunk = -1;
  Status first = kFailed;
  Status second = kFailed;
  {
    const StandardOutput output(terminal);
    foldLines(true);
    sunk = outputSink(nullptr, "one line", 8);
    print(" that is longer than its terminal is wide\nrest");
    first = finish(kDiffers);
    second = finish(kDone);  // nothing is left
    foldLines(false);
  }
  EXPECT_EQ(sunk, 0);
  EXPECT_EQ(first, kDiffers);
  EXPECT_EQ(second, kDone);
  char text[1000];
  fcntl(primary, F_SETFL, O_NONBLOCK);
  std::string printed;
  for (ssize_t size; (size = read(primary, text, sizeof text)) > 0;) {
    printed.append(text, static_cast<std::size_t>(size));
  }
  EXPECT_EQ(printed, "one line that is longer than its\r\n    terminal is wide\r\nrest");
  close(terminal);
  close(primary);
}

TEST(Output, ThatIsNoTerminalIsPrintedAsItComes) {
  testing::internal::CaptureStdout();
  const unsigned int columns = width();
  foldLines(true);
  print("begun");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "begun");
  EXPECT_EQ(columns, 0U);
}

// As when a file system was full, and has room again.
TEST(Output, ThatWasLostIsToldAtTheEnd) {
  const int unwritable = open("/dev/null", O_RDONLY | O_CLOEXEC);
  const int writable = open("/dev/null", O_WRONLY | O_CLOEXEC);
  Status status = kDone;
  const std::string message = standardErrorOf([&] {
    const StandardOutput output(unwritable);
    print("lost");
    std::fflush(stdout);
    dup2(writable, STDOUT_FILENO);
    status = finish(kDone);
    std::clearerr(stdout);
  });
  EXPECT_EQ(status, kFailed);
  EXPECT_EQ(message.rfind("bkoq: cannot write the output: ", 0), 0U) << message;
  close(writable);
  close(unwritable);
}

// Files are read in processes of their own: one that has been read is not written, and the number
// by which it is known is given to another when it has been removed.
TEST_F(Files, AreReadWhole) {
  makeFile("short", "x");
  const auto isRight = [] {
    const int next = nextFile();
    std::string content;
    return readFile("short", content) && content == "x" && nextFile() == next;
  };
  EXPECT_EXIT(_exit(isRight() ? 0 : 1), testing::ExitedWithCode(0), "^$");
}

TEST_F(Files, OfTheMostSizeAreRead) {
  makeFile("most", "");
  fs::resize_file("most", kMostInput);  // a hole, which takes no room
  const auto isRight = [] {
    std::string content;
    return readFile("most", content) && content.size() == kMostInput;
  };
  EXPECT_EXIT(_exit(isRight() ? 0 : 1), testing::ExitedWithCode(0), "^$");
}

TEST_F(Files, LargerThanAnyStringAreRefused) {
  makeFile("large", "");
  fs::resize_file("large", 0x7FFFFFFF);
  const auto isRight = [] {
    const int next = nextFile();
    std::string content;
    content.reserve(kMostInput + (1UL << 20));
    return !readFile("large", content) && nextFile() == next;
  };
  EXPECT_EXIT(_exit(isRight() ? 0 : 1), testing::ExitedWithCode(0),
              "^bkoq: large is larger than 256 MiB, the most that is read\n$");
}

TEST_F(Files, LeaveTheStandardInputOpen) {
  makeFile("input", "text");
  const auto isRight = [] {
    close(STDIN_FILENO);
    std::string content;
    return open("input", O_RDONLY) == STDIN_FILENO && readFile("-", content) && content == "text" &&
           isOpen(STDIN_FILENO);
  };
  EXPECT_EXIT(_exit(isRight() ? 0 : 1), testing::ExitedWithCode(0), "^$");
}

// Signals that end a wait, and nothing else.
class Interrupting {
 public:
  Interrupting() {
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, &before_);
  }
  Interrupting(const Interrupting&) = delete;
  Interrupting& operator=(const Interrupting&) = delete;
  ~Interrupting() { sigaction(SIGUSR1, &before_, nullptr); }

  void interrupt() const {
    for (int i = 0; i < 20; ++i) {
      pthread_kill(waiting_, SIGUSR1);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }

 private:
  pthread_t waiting_ = pthread_self();
  struct sigaction before_ = {};
};

TEST_F(Files, AreReadOnAfterASignal) {
  ASSERT_EQ(mkfifo("pipe", S_IRUSR | S_IWUSR), 0);
  const Interrupting signals;
  std::thread writer([&] {
    const int pipe = open("pipe", O_WRONLY | O_CLOEXEC);  // waits for the reader
    signals.interrupt();
    EXPECT_EQ(write(pipe, "text", 4), 4);
    close(pipe);
  });
  std::string content;
  EXPECT_TRUE(readFile("pipe", content));
  writer.join();
  EXPECT_EQ(content, "text");
}

TEST_F(Files, AreWrittenOnAfterASignal) {
  ASSERT_EQ(mkfifo("pipe", S_IRUSR | S_IWUSR), 0);
  const int pipe = open("pipe", O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  std::string text;
  for (int i = 0; i < 50000; ++i) text += std::to_string(i);
  const Interrupting signals;
  std::string got;
  std::thread reader([&] {
    // As much as it holds has been written by then, and the writer waits.
    for (int i = 0, held = 0; i < 2000 && held < fcntl(pipe, F_GETPIPE_SZ); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      ioctl(pipe, FIONREAD, &held);
    }
    signals.interrupt();
    fcntl(pipe, F_SETFL, 0);
    char piece[4096];
    for (ssize_t size; (size = read(pipe, piece, sizeof piece)) > 0;) {
      got.append(piece, static_cast<std::size_t>(size));
    }
  });
  EXPECT_EQ(writePrivateFile("pipe", text), kDone);
  reader.join();
  EXPECT_TRUE(got == text) << got.size();
  close(pipe);
}

TEST_F(Files, HaveNoNameUntilTheyAreComplete) {
  for (const bool isNew : {true, false}) {
    const int next = nextFile();
    const Names before = namesIn(".");
    std::optional<PrivateFile> file("target");
    EXPECT_EQ(PrivateFile::sink(&*file, "n", 1), 0);
    EXPECT_EQ(PrivateFile::sink(&*file, "ew", 2), 0);
    if (hasNameless_) {
      EXPECT_EQ(namesIn("."), before);
    }
    EXPECT_EQ(contentOf("target"), isNew ? "" : "new");
    EXPECT_EQ(file->finish(), kDone);
    EXPECT_EQ(namesIn("."), Names{"target"});
    EXPECT_EQ(contentOf("target"), "new");
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGTERM), 0);
    // It is closed once, and nothing else is.
    EXPECT_EQ(nextFile(), next);
    const int other = open("target", O_RDONLY | O_CLOEXEC);
    file.reset();
    EXPECT_TRUE(isOpen(other));
    EXPECT_TRUE(isOpen(STDIN_FILENO));
    close(other);
  }
}

// A file cannot be given a name in another file system: here that is one where none can be made.
TEST_F(Files, AreMadeInTheFolderOfTheirTarget) {
  fs::create_symlink("/proc/self", "self");
  EXPECT_EQ(writePrivateFile("self/cwd/below", "text"), kDone);
  EXPECT_EQ(contentOf("below"), "text");
  fs::current_path("/proc");
  EXPECT_EQ(writePrivateFile(folder_ / "beside", "text"), kDone);
  EXPECT_EQ(contentOf(folder_ / "beside"), "text");
}

TEST_F(Files, AreNotOpenedForTheStandardOutput) {
  const int next = nextFile();
  const PrivateFile file("-");
  EXPECT_EQ(nextFile(), next);
}

TEST_F(Files, ThatCannotBeWrittenAreNamed) {
  const auto messageOf = [](const std::string& path) {
    return standardErrorOf([&] { EXPECT_EQ(writePrivateFile(path, "text"), kFailed) << path; });
  };
  EXPECT_EQ(messageOf("."), "bkoq: cannot write .: Is a directory\n");

  // It is at no path any more, even if another is at the one that the system tells.
  const int gone = open("gone", O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
  fs::remove("gone");
  const std::string path = "/proc/self/fd/" + std::to_string(gone);
  const int next = nextFile();
  for (const bool hasOther : {false, true}) {
    if (hasOther) makeFile("gone (deleted)", "other");
    EXPECT_EQ(messageOf(path),
              "bkoq: cannot write " + path + ": Resource temporarily unavailable\n");
    EXPECT_EQ(namesIn("."), hasOther ? Names{"gone (deleted)"} : Names{});
  }
  EXPECT_EQ(contentOf("gone (deleted)"), "other");
  EXPECT_EQ(nextFile(), next);
  close(gone);

  // It fails when it is closed, here since it is closed already.
  ASSERT_EQ(mkfifo("pipe", S_IRUSR | S_IWUSR), 0);
  const int pipe = open("pipe", O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  EXPECT_EQ(standardErrorOf([&] {
              const int number = nextFile();
              PrivateFile file("pipe");
              close(number);
              EXPECT_EQ(file.finish(), kFailed);
            }),
            "bkoq: cannot write pipe: Bad file descriptor\n");
  close(pipe);
}

// Without a standard input the first file that is opened has its number.
TEST_F(Files, MayHaveTheNumberOfTheStandardInput) {
  makeFile("target", "old");
  fs::create_symlink("target", "link");
  const auto isWritten = [&] {
    close(STDIN_FILENO);
    PrivateFile file("link");
    PrivateFile::sink(&file, "new", 3);
    const bool isHidden = !hasNameless_ || namesIn(".") == Names{"link", "target"};
    return isHidden && file.finish() == kDone && nextFile() == STDIN_FILENO;
  };
  EXPECT_EXIT(_exit(isWritten() ? 0 : 1), testing::ExitedWithCode(0), "^$");
  EXPECT_EQ(contentOf("target"), "new");
  EXPECT_TRUE(fs::is_symlink("link"));
}

// Without /proc a new file can be written, but of one that is there nobody can tell the path.
TEST_F(Files, AreWrittenWithoutProc) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can take it away";
  const auto isRight = [] {
    if (chroot(".") != 0) return false;
    close(STDIN_FILENO);
    return writePrivateFile("target", "new") == kDone && nextFile() == STDIN_FILENO &&
           writePrivateFile("target", "other") == kFailed && nextFile() == STDIN_FILENO;
  };
  EXPECT_EXIT(_exit(isRight() ? 0 : 1), testing::ExitedWithCode(0),
              "^bkoq: cannot write target: Resource temporarily unavailable\n$");
  EXPECT_EQ(namesIn("."), Names{"target"});
  EXPECT_EQ(contentOf("target"), "new");
}

}  // namespace
}  // namespace bkoq::tool
