#ifndef BKOQ_TOOLS_DOCUMENT_H_
#define BKOQ_TOOLS_DOCUMENT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bkoq::tool {

// Where something stands in a text, both counted from 1; the column in characters.
struct Place {
  std::size_t line = 0;
  std::size_t column = 0;
};

struct Member;

// A JSON value that knows where it was written.
struct Value {
  enum class Type : std::uint8_t { kNull, kFlag, kInteger, kReal, kText, kList, kObject };

  Type type = Type::kNull;
  Place place;
  bool flag = false;
  std::int64_t integer = 0;
  std::string text;  // of a text; of a number as it was written
  std::vector<Value> elements;
  std::vector<Member> members;  // in the order of the text, each key as often as it was written

  const Value* find(const char* key) const;
};

struct Member {
  std::string key;
  Place place;  // of the key
  Value value;
};

// "a text", "a number", "a list" and so on.
const char* nameOf(Value::Type type);

struct SyntaxError {
  Place place;
  std::string message;
};

// Reads JSON in which comments may stand. False, with the error, when it is none.
bool parseDocument(const std::string& text, Value& root, SyntaxError& error);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_DOCUMENT_H_
