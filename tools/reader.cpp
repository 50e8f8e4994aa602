#include "tools/reader.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "tools/moment.h"

namespace bkoq::tool {
namespace {

constexpr const char* kNow = "now";

// A whole number as JSON writes it, "5" or "5.0"; what no integer can hold is the largest or the
// smallest.
bool parseWhole(std::string_view text, std::int64_t& number) {
  if (text.find_first_of(".eE") == std::string_view::npos) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
      number = text[0] == '-' ? INT64_MIN : INT64_MAX;
    }
    return true;
  }
  const double real = std::strtod(std::string(text).c_str(), nullptr);
  if (real != std::floor(real)) return false;
  constexpr double kMost = 1e18;
  number = real > kMost ? INT64_MAX : real < -kMost ? INT64_MIN : static_cast<std::int64_t>(real);
  return true;
}

bool parseHexadecimal(std::string_view text, std::int64_t& number) {
  if (text.size() < 3 || text.find_first_not_of("0123456789abcdefABCDEF", 2) != text.npos) {
    return false;
  }
  const auto result = std::from_chars(text.data() + 2, text.data() + text.size(), number, 16);
  if (result.ec == std::errc::result_out_of_range) number = INT64_MAX;
  return true;
}

bool isHexadecimal(std::string_view text) { return text.substr(0, 2) == "0x"; }

}  // namespace

bool Reader::wrongType(const Value& value, const char* wanted) {
  problem(value, std::string(wanted) + " is expected, not " + nameOf(value.type()));
  return false;
}

bool Reader::text(const Value& value, std::string& text) {
  if (value.type() != Value::Type::kText) return wrongType(value, "a text");
  if (value.text().find('\0') != std::string_view::npos) {
    problem(value, "a text cannot hold the character \\u0000");
    return false;
  }
  text.assign(value.text());
  return true;
}

bool Reader::flag(const Value& value, bool& flag) {
  if (value.type() != Value::Type::kFlag) return wrongType(value, "true or false");
  flag = value.isTrue();
  return true;
}

bool Reader::number(const Value& value, std::int64_t least, std::int64_t most,
                    const std::vector<Word>* words, std::int64_t& number) {
  const std::string_view text = value.text();
  if (value.type() == Value::Type::kNumber) {
    if (!parseWhole(text, number)) {
      problem(value, shortened(std::string(text)) + " is no whole number");
      return false;
    }
  } else if (value.type() != Value::Type::kText) {
    return wrongType(value, words != nullptr ? "a word or a number" : "a number");
  } else if (isHexadecimal(text)) {
    if (!parseHexadecimal(text, number)) {
      problem(value, inQuotes(std::string(text)) + " is no hexadecimal number");
      return false;
    }
  } else {
    if (words == nullptr) {
      problem(value, "a number is expected, or a text such as \"0x1F\", not " +
                         inQuotes(std::string(text)));
      return false;
    }
    std::vector<std::string> names;
    std::string all;
    for (const Word& word : *words) {
      if (text == word.name) {
        number = word.number;
        return true;
      }
      names.emplace_back(word.name);
      all += (all.empty() ? "\"" : ", \"") + names.back() + "\"";
    }
    const std::string* nearest = isAdvised() ? nearestTo(std::string(text), names) : nullptr;
    std::string message = inQuotes(std::string(text)) + " is none of " + all;
    if (nearest != nullptr) message += "; did you mean \"" + *nearest + "\"?";
    problem(value, message);
    return false;
  }
  if (number >= least && number <= most) return true;
  problem(value, shortened(std::string(text)) + " is out of range: " + std::to_string(least) +
                     " to " + std::to_string(most));
  return false;
}

bool Reader::moment(const Value& value, std::int64_t& seconds) {
  if (value.text() == kNow) {
    seconds = commandMoment();
    return true;
  }
  const char* complaint = parseMoment(std::string(value.text()), seconds);
  if (complaint == nullptr) return true;
  problem(value, inQuotes(std::string(value.text())) + " " + complaint);
  return false;
}

bool Reader::time(const Value& value, unsigned long& seconds) {
  if (value.type() != Value::Type::kText) return wrongType(value, "a time");
  std::int64_t since1970 = 0;
  if (!moment(value, since1970)) return false;
  seconds = static_cast<unsigned long>(since1970 + kSecondsBefore1970);
  return true;
}

bool Reader::seconds(const Value& value, long& seconds) {
  std::int64_t number = 0;
  if (value.type() == Value::Type::kText && !isHexadecimal(value.text())) {
    if (!moment(value, number)) return false;
  } else if (!this->number(value, INT32_MIN, INT32_MAX, nullptr, number)) {
    return false;
  }
  seconds = static_cast<long>(number);
  return true;
}

bool Reader::list(const Value& value, std::size_t length) {
  if (value.type() != Value::Type::kList) return wrongType(value, "a list");
  if (length != 0 && value.elements().size() != length) {
    problem(value, "a list of " + std::to_string(length) + " is expected, not of " +
                       std::to_string(value.elements().size()));
    return false;
  }
  return true;
}

bool Reader::object(const Value& value) {
  return value.type() == Value::Type::kObject || wrongType(value, "an object");
}

}  // namespace bkoq::tool
