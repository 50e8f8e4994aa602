#ifndef BKOQ_DEBUGGER_WRITTEN_VALUE_H_
#define BKOQ_DEBUGGER_WRITTEN_VALUE_H_

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tools/document.h"

namespace bkoq {

// A value that is put together before it is written down as a job file and read like any other.
struct WrittenValue {
  enum class Type : std::uint8_t { kText, kInteger, kFlag, kList, kObject };
  struct Member;

  Type type = Type::kObject;
  std::string text;
  std::int64_t integer = 0;
  bool flag = false;
  std::vector<WrittenValue> elements;
  std::vector<Member> members;

  std::string written() const;
};

struct WrittenValue::Member {
  std::string key;
  WrittenValue value;
};

inline std::string WrittenValue::written() const {
  std::string line;
  const auto add = [&line](const std::string& part) {
    if (line.size() > 1) line += ',';
    line += part;
  };
  switch (type) {
    case Type::kText:
      return nlohmann::json(text).dump();
    case Type::kInteger:
      return std::to_string(integer);
    case Type::kFlag:
      return flag ? "true" : "false";
    case Type::kList:
      line = "[";
      for (const WrittenValue& element : elements) add(element.written());
      return line + ']';
    case Type::kObject:
      line = "{";
      for (const Member& member : members) add('"' + member.key + "\":" + member.value.written());
      return line + '}';
  }
  return line;
}

inline std::unique_ptr<tool::Document> parsed(const WrittenValue& value) {
  auto document = std::make_unique<tool::Document>(value.written());
  tool::SyntaxError error;
  if (!document->parse(error)) throw std::logic_error(error.message);
  return document;
}

}  // namespace bkoq

#endif  // BKOQ_DEBUGGER_WRITTEN_VALUE_H_
