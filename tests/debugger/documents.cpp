#include "tests/debugger/documents.h"

#include <algorithm>
#include <string>
#include <utility>

namespace bkoq::test {
namespace {

using tool::Attribute;
using tool::ObjectClass;
using tool::Shape;
using Value = WrittenValue;

class Filler {
 public:
  Filler(unsigned int seed, std::size_t secretLength)
      : seed_(seed), next_(seed), secretLength_(secretLength) {}

  Value object(const ObjectClass& own) {
    Value value;
    value.type = Value::Type::kObject;
    if (!own.kind.empty()) value.members.push_back({"kind", text(own.kind)});
    for (const Attribute& attribute : own.attributes) {
      value.members.push_back({attribute.key, valueOf(attribute)});
    }
    return value;
  }

 private:
  static Value text(const std::string& text) {
    Value value;
    value.type = Value::Type::kText;
    value.text = text;
    return value;
  }

  Value uniqueText(const Attribute& attribute) {
    ++next_;
    // Merge and scan filters are ranges of sessions.
    if (attribute.key.find("Filter") != std::string::npos) {
      return text(std::to_string(next_ % 100 + 1) + "-" + std::to_string(next_ % 100 + 9));
    }
    if (isSecret(attribute.key)) return text(secret());
    return text(attribute.key + " " + std::to_string(next_));
  }

  static bool isSecret(const std::string& key) {
    for (const char* part : {"assword", "PW", "encryptKey", "encryptionKey"}) {
      if (key.find(part) != std::string::npos) return true;
    }
    return false;
  }

  // Its pieces, between all that gives texts apart, are known by their beginning.
  std::string secret() const {
    const std::string number = std::to_string(next_);
    return "Sa" + number + ":Sb" + number + "\"Sc" + number + "\nSd" + number + "\\Se" + number +
           ": " + std::string(secretLength_, 'z');
  }

  Value number(const Attribute& attribute) {
    Value value;
    value.type = Value::Type::kInteger;
    if (attribute.words != nullptr) {
      value.integer = (*attribute.words)[++next_ % attribute.words->size()].number;
    } else {
      // Odd, so that it is never 0, whatever bits the attribute has.
      ++next_;
      value.integer = (std::int64_t{next_} * 0x9E3779B1 | 1) & (attribute.most | 1);
      value.integer = std::min(value.integer, attribute.most);
    }
    return value;
  }

  Value seconds() {
    Value value;
    value.type = Value::Type::kInteger;
    value.integer = -static_cast<std::int64_t>(++next_ * 86399);
    return value;
  }

  Value time() {
    ++next_;
    const auto twoDigits = [](unsigned int number) {
      return std::string(number < 10 ? "0" : "") + std::to_string(number);
    };
    return text(std::to_string(1950 + next_ % 80) + "-" + twoDigits(next_ % 12 + 1) + "-" +
                twoDigits(next_ % 28 + 1) + "T" + twoDigits(next_ % 24) + ":" +
                twoDigits(next_ % 60) + ":" + twoDigits((next_ * 7) % 60) + "Z");
  }

  template <class Make>
  static Value list(std::size_t length, Make make) {
    Value value;
    value.type = Value::Type::kList;
    for (std::size_t i = 0; i < length; ++i) value.elements.push_back(make(i));
    return value;
  }

  Value valueOf(const Attribute& attribute) {
    switch (attribute.shape) {
      case Shape::kText:
        return uniqueText(attribute);
      case Shape::kTexts:
        return list(attribute.length != 0 ? attribute.length : 3,
                    [&](std::size_t) { return uniqueText(attribute); });
      case Shape::kFlag: {
        Value value;
        value.type = Value::Type::kFlag;
        value.flag = seed_ % 2 == 0;
        return value;
      }
      case Shape::kNumber:
        return number(attribute);
      case Shape::kNumbers:
        return list(attribute.length, [&](std::size_t) { return number(attribute); });
      case Shape::kTime:
        return time();
      case Shape::kTimes:
        return list(attribute.length, [&](std::size_t) { return time(); });
      case Shape::kSeconds:
        return seconds();
      case Shape::kObject: {
        const auto& classes = attribute.family().classes;
        return object(classes[seed_ % classes.size()]);
      }
      case Shape::kObjects: {
        const auto& classes = attribute.family().classes;
        return list(classes.size(), [&](std::size_t i) { return object(classes[i]); });
      }
    }
    return {};
  }

  unsigned int seed_;
  unsigned int next_;
  std::size_t secretLength_;
};

}  // namespace

WrittenValue everyAttribute(const ObjectClass& own, unsigned int seed, std::size_t secretLength) {
  return Filler(seed, secretLength).object(own);
}

}  // namespace bkoq::test
