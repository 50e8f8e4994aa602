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

bool writeAll(int file, const std::string& content) {
  for (std::size_t written = 0; written < content.size();) {
    const ssize_t count = write(file, content.data() + written, content.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    written += static_cast<std::size_t>(count);
  }
  return true;
}

Status cannotWrite(const std::string& path) {
  return fail("cannot write " + path + ": " + std::strerror(errno));
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
  if (path == "-") {
    print(content);
    return kDone;
  }
  struct stat existing = {};
  if (stat(path.c_str(), &existing) == 0 && !S_ISREG(existing.st_mode)) {
    // A device or a pipe cannot be replaced.
    const int file = open(path.c_str(), O_WRONLY);
    if (file < 0) return cannotWrite(path);
    const bool isWritten = writeAll(file, content);
    const Status status = isWritten ? kDone : cannotWrite(path);
    close(file);
    return status;
  }
  std::string temporary = path + ".XXXXXX";
  const int file = mkstemp(&temporary[0]);  // readable by its owner alone
  if (file < 0) return cannotWrite(path);
  bool isWritten = writeAll(file, content) && fsync(file) == 0;
  isWritten = close(file) == 0 && isWritten;
  if (isWritten && rename(temporary.c_str(), path.c_str()) == 0) return kDone;
  const Status status = cannotWrite(path);
  unlink(temporary.c_str());
  return status;
}

int stringSink(void* string, const char* text, size_t size) {
  static_cast<std::string*>(string)->append(text, size);
  return 0;
}

}  // namespace bkoq::tool
