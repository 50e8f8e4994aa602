#ifndef BKOQ_TOOLS_READER_H_
#define BKOQ_TOOLS_READER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tools/document.h"
#include "tools/problems.h"

namespace bkoq::tool {

// A number that has a name.
struct Word {
  const char* name;
  std::int64_t number;
};

// What stands for a job beside it: the objects that no job deletes.
using Kept = std::vector<std::shared_ptr<void>>;

// Takes values out of a job file. Each function returns whether the value is what is wanted and
// notes a problem otherwise.
class Reader {
 public:
  Reader(Problems& problems, Kept& kept) : problems_(problems), kept_(kept) {}

  void problem(const Value& at, const std::string& message) { problem(at.place, message); }
  void problem(Place at, const std::string& message) { problems_.add(at, path_, message); }

  bool text(const Value& value, std::string& text);
  bool flag(const Value& value, bool& flag);
  // `words` may be null.
  bool number(const Value& value, std::int64_t least, std::int64_t most,
              const std::vector<Word>* words, std::int64_t& number);
  // Seconds since 1901.
  bool time(const Value& value, unsigned long& seconds);
  // A time, or a number: signed seconds since 1970.
  bool seconds(const Value& value, long& seconds);
  // A list, of `length` elements unless that is 0.
  bool list(const Value& value, std::size_t length);
  bool object(const Value& value);

  // Deletes the part when the job goes, after the job.
  template <class Part>
  void keep(Part* part) {
    kept_.push_back(std::shared_ptr<Part>(part));
  }

  // Adds ".key" or "[index]" to the path of problems while it lives.
  class Within {
   public:
    Within(Reader& reader, const std::string& key) : Within(reader) {
      if (!reader.path_.empty()) reader.path_ += '.';
      reader.path_ += key;
    }
    Within(Reader& reader, std::size_t index) : Within(reader) {
      reader.path_ += "[" + std::to_string(index) + "]";
    }
    ~Within() { reader_.path_.resize(length_); }
    Within(const Within&) = delete;
    Within& operator=(const Within&) = delete;

   private:
    explicit Within(Reader& reader) : reader_(reader), length_(reader.path_.size()) {}
    Reader& reader_;
    std::size_t length_;
  };

 private:
  bool wrongType(const Value& value, const char* wanted);

  Problems& problems_;
  Kept& kept_;
  std::string path_;
};

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_READER_H_
