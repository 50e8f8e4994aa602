#ifndef BKOQ_TOOLS_READER_H_
#define BKOQ_TOOLS_READER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "tools/document.h"
#include "tools/memory.h"
#include "tools/problems.h"

namespace bkoq::tool {

// A number that has a name.
struct Word {
  const char* name;
  std::int64_t number;
};

// What a job refers to and does not delete. The newest goes first, since it may hold older ones.
class Kept {
 public:
  Kept() = default;
  Kept(Kept&&) = default;
  Kept& operator=(Kept&& other) noexcept {
    clear();
    parts_ = std::move(other.parts_);
    return *this;
  }
  ~Kept() { clear(); }

  template <class Part>
  void add(Part* part) {
    parts_.push_back(
        {part, [](void* kept) { std::default_delete<Part>()(static_cast<Part*>(kept)); }});
  }

 private:
  struct Any {
    void* part;
    void (*free)(void*);
  };
  void clear() {
    for (; !parts_.empty(); parts_.pop_back()) parts_.back().free(parts_.back().part);
  }
  std::vector<Any> parts_;
};

// A job file read otherwise than it is written, as an experiment.
struct Changes {
  // What is read in place of a value; null when it is left out.
  std::unordered_map<const Value*, const Value*> replaced;
  // The objects and lists that hold a replaced value.
  std::unordered_set<const Value*> touched;
};

// The parts that were made from a file, by the values that they were made from: an experiment takes
// those in which nothing changes.
using MadeParts = std::unordered_map<const Value*, void*>;

// Takes values out of a job file. Each function returns whether the value is what is wanted and
// notes a problem otherwise.
class Reader {
 public:
  Reader(const Document& document, Problems& problems, Kept& kept)
      : document_(document), problems_(problems), kept_(kept) {
    expectMemory();
  }

  void setChanges(const Changes* changes) { changes_ = changes; }
  // Parts are noted there, or taken from there when there are changes.
  void setMadeParts(MadeParts* parts) { made_ = parts; }

  void problem(const Value& at, const std::string& message) { problem(at.at(), message); }
  void problem(Offset at, const std::string& message) {
    problems_.add(document_.placeOf(at), path_, message);
  }

  // Looking for what was probably meant takes time; of very many mistakes it is left out.
  bool isAdvised() const { return !problems_.areMany(); }

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

  // What is to be read in place of a value; null when it is left out.
  const Value* given(const Value& value) const {
    if (changes_ == nullptr) return &value;
    const auto found = changes_->replaced.find(&value);
    return found == changes_->replaced.end() ? &value : found->second;
  }

  // The part goes with the job, after it.
  template <class Part>
  void keep(const Value& value, Part* part) {
    kept_.add(part);
    if (made_ != nullptr && changes_ == nullptr) made_->emplace(&value, part);
  }
  // The part that was made of the value before, if nothing in it changes; null otherwise.
  template <class Part>
  Part* madeBefore(const Value& value) const {
    if (made_ == nullptr || changes_ == nullptr || changes_->touched.count(&value) != 0) {
      return nullptr;
    }
    const auto found = made_->find(&value);
    return found == made_->end() ? nullptr : static_cast<Part*>(found->second);
  }

  // Adds ".key" or "[index]" to the path of problems while it lives.
  class Within {
   public:
    Within(Reader& reader, const std::string& key) : Within(reader) {
      if (!reader.path_.empty()) reader.path_ += '.';
      reader.path_ += key;
    }
    Within(Reader& reader, std::size_t index) : Within(reader) {
      reader.path_ += '[';
      reader.path_ += std::to_string(index);
      reader.path_ += ']';
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
  bool moment(const Value& value, std::int64_t& seconds);

  const Document& document_;
  Problems& problems_;
  Kept& kept_;
  const Changes* changes_ = nullptr;
  MadeParts* made_ = nullptr;
  std::string path_;
};

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_READER_H_
