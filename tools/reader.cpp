#include "tools/reader.h"

#include <cerrno>
#include <cstdlib>

#include "tools/moment.h"

namespace bkoq::tool {

bool Reader::wrongType(const Value& value, const char* wanted) {
  problem(value, std::string(wanted) + " is expected, not " + nameOf(value.type));
  return false;
}

bool Reader::text(const Value& value, std::string& text) {
  if (value.type != Value::Type::kText) return wrongType(value, "a text");
  if (value.text.find('\0') != std::string::npos) {
    problem(value, "a text cannot hold the character \\u0000");
    return false;
  }
  text = value.text;
  return true;
}

bool Reader::flag(const Value& value, bool& flag) {
  if (value.type != Value::Type::kFlag) return wrongType(value, "true or false");
  flag = value.flag;
  return true;
}

bool Reader::number(const Value& value, std::int64_t least, std::int64_t most,
                    const std::vector<Word>* words, std::int64_t& number) {
  const char* wanted = words != nullptr ? "a word or a number" : "a number";
  std::string written = value.text;
  if (value.type == Value::Type::kInteger) {
    number = value.integer;
  } else if (value.type == Value::Type::kReal) {
    // Also what is too large for a whole number of the parser's.
    if (value.text.find_first_of(".eE") != std::string::npos) {
      problem(value, shortened(value.text) + " is no whole number");
      return false;
    }
    number = value.text[0] == '-' ? INT64_MIN : INT64_MAX;
  } else if (value.type == Value::Type::kText && value.text.compare(0, 2, "0x") == 0) {
    char* end = nullptr;
    errno = 0;
    const unsigned long long parsed = std::strtoull(value.text.c_str() + 2, &end, 16);
    if (value.text.size() == 2 || *end != '\0' || value.text[2] == '-' || value.text[2] == '+' ||
        end != value.text.c_str() + value.text.size()) {
      problem(value, inQuotes(value.text) + " is no hexadecimal number");
      return false;
    }
    number = errno != 0 || parsed > INT64_MAX ? INT64_MAX : static_cast<std::int64_t>(parsed);
  } else if (value.type == Value::Type::kText) {
    if (words == nullptr) {
      problem(value,
              "a number is expected, or a text such as \"0x1F\", not " + inQuotes(value.text));
      return false;
    }
    std::vector<std::string> names;
    std::string all;
    for (const Word& word : *words) {
      if (value.text == word.name) {
        number = word.number;
        return true;
      }
      names.emplace_back(word.name);
      all += (all.empty() ? "\"" : ", \"") + names.back() + "\"";
    }
    const std::string* nearest = nearestTo(value.text, names);
    std::string message = inQuotes(value.text) + " is none of " + all;
    if (nearest != nullptr) message += "; did you mean \"" + *nearest + "\"?";
    problem(value, message);
    return false;
  } else {
    return wrongType(value, wanted);
  }
  if (number >= least && number <= most) return true;
  problem(value, shortened(written) + " is out of range: " + std::to_string(least) + " to " +
                     std::to_string(most));
  return false;
}

bool Reader::time(const Value& value, unsigned long& seconds) {
  if (value.type != Value::Type::kText) return wrongType(value, "a time");
  std::int64_t moment = 0;
  const char* complaint = parseMoment(value.text, moment);
  if (complaint != nullptr) {
    problem(value, inQuotes(value.text) + " " + complaint);
    return false;
  }
  seconds = static_cast<unsigned long>(moment + kSecondsBefore1970);
  return true;
}

bool Reader::seconds(const Value& value, long& seconds) {
  std::int64_t number = 0;
  if (value.type == Value::Type::kText && value.text.compare(0, 2, "0x") != 0) {
    const char* complaint = parseMoment(value.text, number);
    if (complaint != nullptr) {
      problem(value, inQuotes(value.text) + " " + complaint);
      return false;
    }
  } else if (!this->number(value, INT32_MIN, INT32_MAX, nullptr, number)) {
    return false;
  }
  seconds = static_cast<long>(number);
  return true;
}

bool Reader::list(const Value& value, std::size_t length) {
  if (value.type != Value::Type::kList) return wrongType(value, "a list");
  if (length != 0 && value.elements.size() != length) {
    problem(value, "a list of " + std::to_string(length) + " is expected, not of " +
                       std::to_string(value.elements.size()));
    return false;
  }
  return true;
}

bool Reader::object(const Value& value) {
  return value.type == Value::Type::kObject || wrongType(value, "an object");
}

}  // namespace bkoq::tool
