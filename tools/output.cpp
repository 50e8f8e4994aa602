#include "tools/output.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <set>
#include <utility>

#include "tools/problems.h"

namespace bkoq::tool {
namespace {

constexpr unsigned int kLeastWidth = 40;

bool writeAll(int file, const char* text, std::size_t size) {
  for (std::size_t written = 0; written < size;) {
    const ssize_t count = write(file, text + written, size - written);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    written += static_cast<std::size_t>(count);
  }
  return true;
}

std::string& colourMode() {
  static std::string mode = "auto";
  return mode;
}

using FileId = std::pair<dev_t, ino_t>;

// The files that have been read.
std::set<FileId>& filesRead() {
  static std::set<FileId> files;
  return files;
}

std::string nameOfOpen(int file) { return "/proc/self/fd/" + std::to_string(file); }

// The path of an open file; empty when it cannot be told.
std::string pathOf(int file, const struct stat& known) {
  char path[PATH_MAX];
  const ssize_t size = readlink(nameOfOpen(file).c_str(), path, sizeof path);
  if (size <= 0 || size == sizeof path) return "";
  std::string name(path, static_cast<std::size_t>(size));
  struct stat there = {};
  const bool isSame = lstat(name.c_str(), &there) == 0 && there.st_dev == known.st_dev &&
                      there.st_ino == known.st_ino;
  return isSame ? name : "";
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

// Calls `make` with names in the folder of a path until one is free. They are not as long as a name
// may be.
template <class Make>
int withFreeName(const std::string& path, std::string& name, const Make& make) {
  constexpr int kTries = 100;
  std::random_device random;
  int result = -1;
  for (int i = 0; i < kTries; ++i) {
    char end[32];
    std::snprintf(end, sizeof end, ".bkoq-%08x%08x", random(), random());
    name = folderOf(path) + end;
    result = make(name.c_str());
    if (result >= 0 || errno != EEXIST) break;
  }
  return result;
}

unsigned int widthOf(int file) {
  winsize size = {};
  if (isatty(file) == 0 || ioctl(file, TIOCGWINSZ, &size) != 0) return 0;
  return size.ws_col >= kLeastWidth ? size.ws_col : 0;
}

// How many columns a part of a line takes; colours take none.
std::size_t columnsOf(const std::string& line, std::size_t at, std::size_t end) {
  std::size_t columns = 0;
  for (; at < end; ++at) {
    if (line[at] == '\033') {
      at = std::min(line.find('m', at), end);
    } else if ((static_cast<unsigned char>(line[at]) & 0xC0U) != 0x80) {
      ++columns;
    }
  }
  return columns;
}

// The line that is being printed on a terminal.
struct Lines {
  unsigned int columns = 0;  // 0: lines are not folded
  std::string begun;
};

Lines& lines() {
  static Lines lines;
  return lines;
}

bool failTooLarge(const std::string& name) {
  fail(name + " is larger than " + std::to_string(kMostInput / 1024 / 1024) +
       " MiB, the most that is read");
  return false;
}

}  // namespace

Status fail(const std::string& message) {
  std::fflush(stdout);  // so that both streams stay in order on a terminal
  const std::string line = folded("bkoq: " + printable(message), widthOf(STDERR_FILENO));
  std::fprintf(stderr, "%s\n", line.c_str());
  return kFailed;
}

void setColour(const std::string& when) { colourMode() = when; }

bool hasColour() {
  if (colourMode() == "always") return true;
  const char* noColour = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return colourMode() != "never" && isatty(STDOUT_FILENO) != 0 &&
         (noColour == nullptr || *noColour == '\0') &&
         (terminal == nullptr || std::strcmp(terminal, "dumb") != 0);
}

unsigned int width() { return widthOf(STDOUT_FILENO); }

std::string folded(const std::string& line, unsigned int columns) {
  if (columns == 0 || line.size() <= columns) return line;
  const std::size_t begin = std::min(line.find_first_not_of(' '), line.size());
  const std::string indent(std::min<std::size_t>(begin + 4, columns / 2), ' ');
  std::string text;
  std::size_t column = 0;
  for (std::size_t at = 0; at < line.size();) {
    // Blanks and the word after them.
    std::size_t word = std::min(line.find_first_not_of(' ', at), line.size());
    const std::size_t end = std::min(line.find(' ', word), line.size());
    const std::size_t size = columnsOf(line, word, end);
    if (at != 0 && column + (word - at) + size > columns && size <= columns - indent.size()) {
      text += '\n' + indent;
      column = indent.size();
    } else {
      text.append(line, at, word - at);
      column += word - at;
    }
    text.append(line, word, end - word);
    column += size;
    at = end;
  }
  return text;
}

void foldLines(bool isFolded) { lines().columns = isFolded ? width() : 0; }

int outputSink(void* /*nothing*/, const char* text, size_t size) {
  Lines& lines = tool::lines();
  if (lines.columns == 0) return bkoqFileSink(stdout, text, size);
  for (const char* end = text + size; text != end;) {
    const auto* newline = static_cast<const char*>(std::memchr(text, '\n', end - text));
    lines.begun.append(text, (newline == nullptr ? end : newline) - text);
    if (newline == nullptr) return 0;
    const std::string line = folded(lines.begun, lines.columns) + "\n";
    lines.begun.clear();
    if (bkoqFileSink(stdout, line.data(), line.size()) != 0) return 1;
    text = newline + 1;
  }
  return 0;
}

void print(const std::string& text) { outputSink(nullptr, text.data(), text.size()); }

Status finish(Status status) {
  const std::string rest = std::exchange(lines().begun, "");
  std::fwrite(rest.data(), 1, rest.size(), stdout);
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  return fail(std::string("cannot write the output: ") + std::strerror(errno));
}

bool readFile(const std::string& path, std::string& content) {
  const std::string name = path == "-" ? "standard input" : path.empty() ? "\"\"" : path;
  const int file = path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC);
  bool isRead = file >= 0;
  struct stat known = {};
  if (isRead && fstat(file, &known) == 0 && S_ISREG(known.st_mode)) {
    filesRead().emplace(known.st_dev, known.st_ino);
    if (known.st_size > 0 && static_cast<std::size_t>(known.st_size) <= kMostInput) {
      // A damaged image is read in place, with room after it.
      content.reserve(static_cast<std::size_t>(known.st_size) + BKOQ_SALVAGE_ROOM);
    }
  }
  constexpr std::size_t kPiece = 256UL * 1024;
  std::string piece(kPiece, '\0');
  while (isRead) {
    const ssize_t count = read(file, &piece[0], piece.size());
    if (count < 0 && errno == EINTR) continue;
    isRead = count >= 0;
    if (count <= 0) break;
    content.append(piece, 0, static_cast<std::size_t>(count));
    if (content.size() > kMostInput) {
      if (file != STDIN_FILENO) close(file);
      content.clear();
      return failTooLarge(name);
    }
  }
  // A program of 32 bits cannot even open a file of 2 GiB.
  if (file < 0 && errno == EOVERFLOW) return failTooLarge(name);
  if (!isRead) fail("cannot read " + name + ": " + std::strerror(errno));
  if (file > STDIN_FILENO) close(file);
  return isRead;
}

Status writePrivateFile(const std::string& path, const std::string& content) {
  if (path == "-" && isatty(STDOUT_FILENO) != 0) {
    return fail("an image is not written to a terminal");
  }
  PrivateFile file(path);
  PrivateFile::sink(&file, content.data(), content.size());
  return file.finish();
}

// Some file systems have no files without a name: a signal must not leave one behind.
PrivateFile::SignalsHeld::SignalsHeld() {
  sigset_t all;
  sigfillset(&all);
  sigprocmask(SIG_BLOCK, &all, &before_);
}

PrivateFile::SignalsHeld::~SignalsHeld() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

PrivateFile::PrivateFile(const std::string& path) : path_(path) {
  if (path == "-") return;
  // What is opened is looked at, so that it cannot become another in between.
  const int existing = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  struct stat known = {};
  const bool isNew = existing < 0 && errno == ENOENT && lstat(path.c_str(), &known) != 0;
  if (existing < 0 && !isNew) {
    // Also of a link to nothing, which would be replaced.
    if (S_ISLNK(known.st_mode)) errno = ENOENT;
    fail();
    return;
  }
  target_ = path;
  if (existing >= 0) {
    if (fstat(existing, &known) != 0 || !S_ISREG(known.st_mode)) {
      target_.clear();
      file_ = existing;  // a device or a pipe cannot be replaced
      return;
    }
    isRead_ = filesRead().count({known.st_dev, known.st_ino}) != 0;
    target_ = pathOf(existing, known);
    // Without /proc, or when it was moved in this moment.
    if (target_.empty() && !isRead_) {
      errno = EAGAIN;
      fail();
    }
    close(existing);
    if (target_.empty() || isRead_) return;
  }

  file_ = open(folderOf(target_).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
  isNameless_ = file_ >= 0 && access(nameOfOpen(file_).c_str(), F_OK) == 0;
  if (isNameless_) return;
  if (file_ >= 0) close(file_);
  held_.emplace();
  file_ = withFreeName(target_, temporary_, [](const char* name) {
    return open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  });
  if (file_ < 0) fail();
}

PrivateFile::~PrivateFile() {
  if (file_ < 0) return;
  if (isFile() && !isNameless_) unlink(temporary_.c_str());
  close(file_);
}

void PrivateFile::fail() {
  if (error_ == 0) error_ = errno;
}

int PrivateFile::sink(void* file, const char* text, size_t size) {
  auto& self = *static_cast<PrivateFile*>(file);
  if (self.path_ == "-") return bkoqFileSink(stdout, text, size);
  if (self.isRead_) return 1;
  if (self.error_ == 0 && !writeAll(self.file_, text, size)) self.fail();
  return self.error_ == 0 ? 0 : 1;
}

// Gives the complete file its name.
bool PrivateFile::publish() {
  if (fsync(file_) != 0) return false;
  if (isNameless_) {
    held_.emplace();
    const int linked = withFreeName(target_, temporary_, [this](const char* name) {
      return linkat(AT_FDCWD, nameOfOpen(file_).c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW);
    });
    if (linked != 0) return false;
    isNameless_ = false;  // from here on there is a name to take away
  }
  return rename(temporary_.c_str(), target_.c_str()) == 0;
}

Status PrivateFile::finish() {
  if (path_ == "-") return kDone;  // finish() of the output says what is wrong with it
  if (isRead_) return tool::fail(path_ + " is read here, and cannot be written as well");
  if (error_ == 0 && isFile() && !publish()) fail();
  if (error_ != 0) return tool::fail("cannot write " + path_ + ": " + std::strerror(error_));
  const int file = file_;
  file_ = -1;
  held_.reset();
  if (close(file) != 0) return tool::fail("cannot write " + path_ + ": " + std::strerror(errno));
  return kDone;
}

int stringSink(void* string, const char* text, size_t size) {
  static_cast<std::string*>(string)->append(text, size);
  return 0;
}

}  // namespace bkoq::tool
