#include "tools/output.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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

}  // namespace

Status fail(const std::string& message) {
  std::fflush(stdout);  // so that both streams stay in order on a terminal
  std::fprintf(stderr, "bkoq: %s\n", printable(message).c_str());
  return kFailed;
}

bool hasColour() {
  const char* noColour = std::getenv("NO_COLOR");
  return isatty(STDOUT_FILENO) != 0 && (noColour == nullptr || *noColour == '\0');
}

unsigned int width() {
  winsize size = {};
  if (isatty(STDOUT_FILENO) == 0 || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return 0;
  return size.ws_col >= kLeastWidth ? size.ws_col : 0;
}

void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

Status finish(Status status) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  return fail(std::string("cannot write the output: ") + std::strerror(errno));
}

bool readFile(const std::string& path, std::string& content) {
  std::FILE* file = path == "-" ? stdin : std::fopen(path.c_str(), "rb");
  if (file != nullptr) {
    // A text that grows piece by piece would take twice the memory.
    struct stat existing = {};
    if (fstat(fileno(file), &existing) == 0 && S_ISREG(existing.st_mode)) {
      content.reserve(static_cast<std::size_t>(existing.st_size));
    }
    char piece[16384];
    std::size_t count = 0;
    while ((count = std::fread(piece, 1, sizeof(piece), file)) != 0) content.append(piece, count);
  }
  const bool failed = file == nullptr || std::ferror(file) != 0;
  if (failed) {
    fail("cannot read " + (path == "-" ? "standard input" : path) + ": " + std::strerror(errno));
  }
  if (file != nullptr && file != stdin) std::fclose(file);
  return !failed;
}

Status writePrivateFile(const std::string& path, const std::string& content) {
  PrivateFile file(path);
  PrivateFile::sink(&file, content.data(), content.size());
  return file.finish();
}

PrivateFile::PrivateFile(const std::string& path) : path_(path) {
  if (path == "-") return;
  struct stat existing = {};
  if (stat(path.c_str(), &existing) == 0 && !S_ISREG(existing.st_mode)) {
    // A device or a pipe cannot be replaced.
    file_ = open(path.c_str(), O_WRONLY);
  } else {
    temporary_ = path + ".XXXXXX";
    file_ = mkstemp(&temporary_[0]);  // readable by its owner alone
    if (file_ < 0) {
      fail();
      temporary_.clear();
    }
  }
  if (file_ < 0) fail();
}

PrivateFile::~PrivateFile() {
  if (file_ >= 0) close(file_);
  if (isFile()) unlink(temporary_.c_str());
}

void PrivateFile::fail() {
  if (error_ == 0) error_ = errno;
}

int PrivateFile::sink(void* file, const char* text, size_t size) {
  auto& self = *static_cast<PrivateFile*>(file);
  if (self.path_ == "-") return bkoqFileSink(stdout, text, size);
  if (self.error_ == 0 && !writeAll(self.file_, text, size)) self.fail();
  return self.error_ == 0 ? 0 : 1;
}

Status PrivateFile::finish() {
  if (path_ == "-") return kDone;  // finish() of the output says what is wrong with it
  if (error_ == 0 && isFile() && fsync(file_) != 0) fail();
  if (file_ >= 0 && close(file_) != 0) fail();
  file_ = -1;
  if (error_ == 0 && isFile()) {
    if (rename(temporary_.c_str(), path_.c_str()) == 0) {
      temporary_.clear();
    } else {
      fail();
    }
  }
  if (error_ == 0) return kDone;
  return tool::fail("cannot write " + path_ + ": " + std::strerror(error_));
}

int stringSink(void* string, const char* text, size_t size) {
  static_cast<std::string*>(string)->append(text, size);
  return 0;
}

}  // namespace bkoq::tool
