#ifndef BKOQ_TOOLS_OUTPUT_H_
#define BKOQ_TOOLS_OUTPUT_H_

#include <bkoq/kit.h>

#include <csignal>
#include <cstddef>
#include <optional>
#include <string>

namespace bkoq::tool {

// How a command ends: the exit status.
enum Status : int {
  kDone = 0,
  kDiffers = 1,  // there are differences or mistakes, or a conversion failed
  kFailed = 2    // bad usage, a bad file, output that cannot be written
};

// Prints "bkoq: " and the message on the standard error stream; gives kFailed.
Status fail(const std::string& message);

// What the standard output is.
void setColour(const std::string& when);  // "auto", "always" or "never"
bool hasColour();      // unless that was set: a terminal that has colours, without NO_COLOR
unsigned int width();  // columns of a terminal; 0 for anything else

// Prints on the standard output; lines that are longer than its terminal is wide are folded between
// words, unless they are for programs.
void print(const std::string& text);
void foldLines(bool isFolded);
// The same as a sink of the kit.
int outputSink(void* nothing, const char* text, size_t size);
// Lines of so many columns, where words allow it; what follows a line's beginning is indented.
std::string folded(const std::string& line, unsigned int columns);

// What has been printed has been written too; otherwise the reason is on the standard error stream.
Status finish(Status status);

// The most that is read of one file; addresses of 32 bits hold what is made of it.
constexpr std::size_t kMostInput = 256UL * 1024 * 1024;

// Reads a file, or the standard input for "-". False, after a message, when it cannot be read or is
// larger than that.
bool readFile(const std::string& path, std::string& content);

// Writes a file that only its owner can read, or the standard output for "-" unless that is a
// terminal. A file of that name is replaced when all has been written, and only then; until then
// what is written has no name, so nothing is left of it when this is interrupted. A symbolic link
// is followed, as every other program follows one; one that leads to nothing is refused, and so is
// a file that has been read.
Status writePrivateFile(const std::string& path, const std::string& content);

// The same piece by piece, for what is too large to be held at once.
class PrivateFile {
 public:
  explicit PrivateFile(const std::string& path);
  PrivateFile(const PrivateFile&) = delete;
  PrivateFile& operator=(const PrivateFile&) = delete;
  ~PrivateFile();  // what was not finished is not kept

  // A sink of the kit for such a file.
  static int sink(void* file, const char* text, size_t size);
  // The file is complete; fails, after a message, when something could not be written.
  Status finish();

 private:
  class SignalsHeld {
   public:
    SignalsHeld();
    ~SignalsHeld();
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

   private:
    sigset_t before_;
  };

  bool isFile() const { return !target_.empty(); }
  bool publish();
  void fail();

  std::string path_;
  std::string target_;     // the file that is replaced; empty for a device or the standard output
  std::string temporary_;  // a name beside it
  bool isNameless_ = false;
  bool isRead_ = false;              // the target is a file that has been read
  std::optional<SignalsHeld> held_;  // while there is a temporary name
  int file_ = -1;                    // none for the standard output
  int error_ = 0;
};

// A sink of the kit for a string.
int stringSink(void* string, const char* text, size_t size);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_OUTPUT_H_
