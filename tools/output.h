#ifndef BKOQ_TOOLS_OUTPUT_H_
#define BKOQ_TOOLS_OUTPUT_H_

#include <bkoq/kit.h>

#include <string>

namespace bkoq::tool {

// How a command ends: the exit status.
enum Status : int {
  kDone = 0,
  kDiffers = 1,  // or the conversion failed
  kFailed = 2    // bad usage, a bad file, output that cannot be written
};

// Prints "bkoq: " and the message on the standard error stream; gives kFailed.
Status fail(const std::string& message);

// What the standard output is.
bool hasColour();      // a terminal, unless NO_COLOR is set
unsigned int width();  // columns of a terminal; 0 for anything else

void print(const std::string& text);

// What has been printed has been written too; otherwise the reason is on the standard error stream.
Status finish(Status status);

// Reads a file, or the standard input for "-". False, after a message, when it cannot be read.
bool readFile(const std::string& path, std::string& content);

// Writes a file that only its owner can read, or the standard output for "-". A file of that name
// is replaced when all has been written, and only then.
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
  bool isFile() const { return !temporary_.empty(); }
  void fail();

  std::string path_;
  std::string temporary_;  // where a file is written until it is complete
  int file_ = -1;          // none for the standard output
  int error_ = 0;
};

// A sink of the kit for a string.
int stringSink(void* string, const char* text, size_t size);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_OUTPUT_H_
