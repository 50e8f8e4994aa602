#include "tools/document.h"

#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace bkoq::tool {
namespace {

// Deeper than any job is; it bounds the stack that a hostile file can use.
constexpr std::size_t kMostLevels = 64;

// The text, with a note of how much of it has been read: the parser tells of a value when it has
// read it, but not where it was.
class CountingIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CountingIterator(const char* at, std::size_t* read) : at_(at), read_(read) {}
  reference operator*() const { return *at_; }
  CountingIterator& operator++() {
    ++at_;
    ++*read_;
    return *this;
  }
  CountingIterator operator++(int) {
    CountingIterator before = *this;
    ++*this;
    return before;
  }
  bool operator==(const CountingIterator& other) const { return at_ == other.at_; }
  bool operator!=(const CountingIterator& other) const { return at_ != other.at_; }

 private:
  const char* at_;
  std::size_t* read_;
};

class Builder : public nlohmann::json_sax<nlohmann::json> {
 public:
  Builder(const std::string& text, const std::size_t& read, Value& root, SyntaxError& error)
      : text_(text), read_(read), root_(root), error_(error) {}

  bool null() override { return add({}); }
  bool boolean(bool flag) override {
    Value value;
    value.type = Value::Type::kFlag;
    value.flag = flag;
    return add(std::move(value));
  }
  bool number_integer(number_integer_t number) override { return addInteger(number); }
  bool number_unsigned(number_unsigned_t number) override {
    // What is too large for any attribute may as well be the largest.
    constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
    return addInteger(
        number > static_cast<number_unsigned_t>(kMost) ? kMost : static_cast<std::int64_t>(number));
  }
  bool number_float(number_float_t /*number*/, const string_t& written) override {
    Value value;
    value.type = Value::Type::kReal;
    value.text = written;
    return add(std::move(value));
  }
  bool string(string_t& text) override {
    Value value;
    value.type = Value::Type::kText;
    value.text = std::move(text);
    return add(std::move(value));
  }
  bool binary(binary_t& /*bytes*/) override { return false; }  // is no JSON

  bool key(string_t& key) override {
    key_ = std::move(key);
    keyPlace_ = placeOf(startOfToken());
    end_ = read_;
    return true;
  }
  bool start_object(std::size_t /*size*/) override { return open(Value::Type::kObject); }
  bool start_array(std::size_t /*size*/) override { return open(Value::Type::kList); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }

  bool parse_error(std::size_t /*position*/, const std::string& /*lastToken*/,
                   const nlohmann::json::exception& problem) override {
    constexpr int kNumberOverflow = 406;
    if (problem.id == kNumberOverflow) {
      error_ = {placeOf(startOfToken()), "the number is too large for any attribute"};
      return false;
    }
    if (startOfToken() == text_.size() && levels_.empty()) {
      error_ = {placeOf(text_.size()), "the file is empty; \"bkoq new\" prints one to start from"};
      return false;
    }
    // "[json.exception...] parse error at line 1, column 2: syntax error while ...; last read: 'x'"
    std::string message = problem.what();
    const std::size_t place = message.find("column ");
    const std::size_t start = place == std::string::npos ? place : message.find(": ", place);
    if (start != std::string::npos) message.erase(0, start + 2);
    // What was read may be a password.
    error_.message = message.substr(0, message.find("; last read: "));
    // The last character read is the wrong one, unless the text ended.
    error_.place = placeOf(read_ == 0 || read_ >= text_.size() ? read_ : read_ - 1);
    return false;
  }

 private:
  struct Level {
    Value value;
    std::string key;
    Place keyPlace;
  };

  bool addInteger(std::int64_t number) {
    Value value;
    value.type = Value::Type::kInteger;
    value.integer = number;
    return add(std::move(value));
  }

  bool add(Value value) {
    const std::size_t start = startOfToken();
    value.place = placeOf(start);
    end_ = read_;
    if (value.type == Value::Type::kInteger || value.type == Value::Type::kReal) {
      // The parser has read one character more than the number.
      end_ = text_.find_first_not_of("+-.0123456789eE", start);
      if (end_ == std::string::npos) end_ = text_.size();
      value.text = text_.substr(start, end_ - start);
    }
    put(std::move(value), std::move(key_), keyPlace_);
    return true;
  }

  bool open(Value::Type type) {
    Level level;
    level.value.type = type;
    level.value.place = placeOf(startOfToken());
    level.key = std::move(key_);
    level.keyPlace = keyPlace_;
    end_ = read_;
    if (levels_.size() == kMostLevels) {
      error_ = {level.value.place, "nested too deeply"};
      return false;
    }
    levels_.push_back(std::move(level));
    return true;
  }

  bool close() {
    end_ = read_;
    Level level = std::move(levels_.back());
    levels_.pop_back();
    put(std::move(level.value), std::move(level.key), level.keyPlace);
    return true;
  }

  void put(Value value, std::string key, Place keyPlace) {
    if (levels_.empty()) {
      root_ = std::move(value);
    } else if (levels_.back().value.type == Value::Type::kList) {
      levels_.back().value.elements.push_back(std::move(value));
    } else {
      levels_.back().value.members.push_back({std::move(key), keyPlace, std::move(value)});
    }
  }

  // Where the token begins that has just been read: behind the one before it.
  std::size_t startOfToken() const {
    std::size_t at = end_;
    if (at == 0 && text_.compare(0, 3, "\xEF\xBB\xBF") == 0) at = 3;
    while (at < text_.size()) {
      if (text_.compare(at, 2, "//") == 0) {
        at = text_.find('\n', at);
      } else if (text_.compare(at, 2, "/*") == 0) {
        at = text_.find("*/", at + 2);
        if (at != std::string::npos) at += 2;
      } else if (std::string(" \t\r\n,:").find(text_[at]) != std::string::npos) {
        ++at;
      } else {
        break;
      }
    }
    return at < text_.size() ? at : text_.size();
  }

  // Asked for in the order of the text: each character is looked at once.
  Place placeOf(std::size_t at) {
    if (at < seen_) {
      seen_ = 0;
      place_ = {1, 1};
    }
    for (; seen_ < at && seen_ < text_.size(); ++seen_) {
      if (text_[seen_] == '\n') {
        ++place_.line;
        place_.column = 1;
      } else if ((static_cast<unsigned char>(text_[seen_]) & 0xC0U) != 0x80U) {
        ++place_.column;  // continuation bytes belong to the character before them
      }
    }
    return place_;
  }

  const std::string& text_;
  const std::size_t& read_;
  Value& root_;
  SyntaxError& error_;
  std::vector<Level> levels_;
  std::string key_;
  Place keyPlace_;
  std::size_t end_ = 0;  // of the last token
  std::size_t seen_ = 0;
  Place place_{1, 1};
};

}  // namespace

const Value* Value::find(const char* key) const {
  for (const Member& member : members) {
    if (member.key == key) return &member.value;
  }
  return nullptr;
}

const char* nameOf(Value::Type type) {
  switch (type) {
    case Value::Type::kNull:
      return "null";
    case Value::Type::kFlag:
      return "true or false";
    case Value::Type::kInteger:
    case Value::Type::kReal:
      return "a number";
    case Value::Type::kText:
      return "a text";
    case Value::Type::kList:
      return "a list";
    case Value::Type::kObject:
      return "an object";
  }
  return "";
}

bool parseDocument(const std::string& text, Value& root, SyntaxError& error) {
  std::size_t read = 0;
  Builder builder(text, read, root, error);
  const char* data = text.data();
  return nlohmann::json::sax_parse(CountingIterator(data, &read),
                                   CountingIterator(data + text.size(), &read), &builder,
                                   nlohmann::json::input_format_t::json, true, true);
}

}  // namespace bkoq::tool
