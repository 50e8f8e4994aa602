#ifndef BKOQ_TOOLS_DOCUMENT_H_
#define BKOQ_TOOLS_DOCUMENT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bkoq::tool {

// A place in a text, both counted from 1; the column in characters.
struct Place {
  std::size_t line = 0;
  std::size_t column = 0;
};

// A byte of a text, counted from 0.
using Offset = std::uint32_t;

struct Member;

// What lies one after the other in memory.
template <class Element>
class Sequence {
 public:
  Sequence(const Element* first, std::size_t size) : first_(first), size_(size) {}
  const Element* begin() const { return first_; }
  const Element* end() const { return first_ + size_; }
  std::size_t size() const { return size_; }
  const Element& operator[](std::size_t i) const { return first_[i]; }

 private:
  const Element* first_;
  std::size_t size_;
};

// A JSON value that knows where it was written. Small and without a destructor: a large file holds
// millions of them. Everything lives as long as the document.
class Value {
 public:
  enum class Type : std::uint8_t { kNull, kFlag, kNumber, kText, kList, kObject };

  Value() = default;
  Value(Type type, Offset at) : type_(type), at_(at) {}
  Value(Type type, Offset at, const void* data, std::size_t size)
      : type_(type), size_(static_cast<std::uint32_t>(size)), data_(data), at_(at) {}

  Type type() const { return type_; }
  Offset at() const { return at_; }
  bool isTrue() const { return size_ != 0; }
  // Of a text; of a number as it was written.
  std::string_view text() const {
    const bool hasText = type_ == Type::kText || type_ == Type::kNumber;
    return hasText ? std::string_view(static_cast<const char*>(data_), size_) : std::string_view();
  }
  Sequence<Value> elements() const {
    return {static_cast<const Value*>(data_), type_ == Type::kList ? size_ : 0};
  }
  // In the order of the text, each key as often as it was written.
  Sequence<Member> members() const;

  // Null unless this is an object with such a member.
  const Value* find(std::string_view key) const;

 private:
  Type type_ = Type::kNull;
  std::uint32_t size_ = 0;
  const void* data_ = nullptr;
  Offset at_ = 0;
};

struct Member {
  std::string_view key;
  Offset at = 0;  // of the key
  Value value;
};

inline Sequence<Member> Value::members() const {
  return {static_cast<const Member*>(data_), type_ == Type::kObject ? size_ : 0};
}

// "a text", "a number", "a list" and so on.
const char* nameOf(Value::Type type);

struct SyntaxError {
  Offset at = 0;
  std::string message;
};

// A text of JSON in which comments may stand.
class Document {
 public:
  explicit Document(std::string text);
  ~Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  // False, with the error, when the text is no JSON. To be called once.
  bool parse(SyntaxError& error);

  const Value& root() const { return root_; }
  Place placeOf(Offset at) const;

 private:
  class Builder;

  // Takes the last `count` of them, which stay where they are from now on.
  template <class Element>
  const Element* keep(std::vector<Element>& all, std::size_t count);

  // The text as it was given: parsing decodes texts where they lie.
  const std::string& original() const { return copy_.empty() ? text_ : copy_; }
  SyntaxError errorAt(Offset at, int code, const std::vector<Offset>& open) const;
  std::string where(Offset at) const;

  std::string text_;
  std::string copy_;  // empty when decoding changes nothing that is looked for
  Value root_;
  std::vector<std::unique_ptr<char[]>> blocks_;  // of elements and members
  char* free_ = nullptr;
  std::size_t freeSize_ = 0;
  // Places are mostly asked for in the order of the text.
  mutable Offset seen_ = 0;
  mutable Place seenPlace_{1, 1};
};

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_DOCUMENT_H_
