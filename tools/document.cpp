#include "tools/document.h"

#include <rapidjson/reader.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "kit/characters.h"

namespace bkoq::tool {
namespace {

// Deeper than any job is; it bounds the stack that a hostile file can use.
constexpr std::size_t kMostLevels = 64;
constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// The first byte that no text in UTF-8 can have there; the size when there is none.
std::size_t firstBadByte(const std::string& text) {
  std::size_t at = 0;
  while (at < text.size()) {
    if (static_cast<signed char>(text[at]) > 0) {
      ++at;
      continue;
    }
    const kit::Character character = kit::characterAt(text, at);
    if (text[at] == '\0' || !character.isValid) return at;
    at += character.size;
  }
  return at;
}

std::size_t skipBlanks(const std::string& text, std::size_t at) {
  while (at < text.size() && std::strchr(" \t\r\n", text[at]) != nullptr) ++at;
  return at;
}

// The last character before `at` that is no blank; a NUL when there is none.
char lastBefore(const std::string& text, std::size_t at) {
  while (at > 0 && std::strchr(" \t\r\n", text[at - 1]) != nullptr) --at;
  return at == 0 ? '\0' : text[at - 1];
}

bool isOfWord(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// The first letter of the word that goes on at `at`.
std::size_t beginOfWord(const std::string& text, std::size_t at) {
  while (at > 0 && isOfWord(text[at - 1])) --at;
  return at;
}

// What people write for one of JSON's words; null when it is none of these.
const char* wordMeant(const std::string& text, std::size_t at) {
  const struct {
    std::string_view written;
    const char* meant;
  } words[] = {{"True", "true"}, {"TRUE", "true"}, {"False", "false"}, {"FALSE", "false"},
               {"yes", "true"},  {"Yes", "true"},  {"no", "false"},    {"No", "false"},
               {"None", "null"}, {"NULL", "null"}, {"Null", "null"},   {"nil", "null"}};
  std::size_t end = at;
  while (end < text.size() && isOfWord(text[end])) ++end;
  const std::string_view found(text.data() + at, end - at);
  for (const auto& word : words) {
    if (word.written == found) return word.meant;
  }
  return nullptr;
}

// Where the comment begins in which a file ends; npos when it ends in none. The reader has put a
// NUL in the place of the quote that closes a text.
std::size_t openComment(const std::string& text) {
  std::size_t at = 0;
  while (at < text.size()) {
    if (text[at] == '"') {
      for (++at; at < text.size() && text[at] != '"' && text[at] != '\0'; ++at) {
        if (text[at] == '\\') ++at;
      }
      ++at;
    } else if (text.compare(at, 2, "//") == 0) {
      at = std::min(text.find('\n', at), text.size());
    } else if (text.compare(at, 2, "/*") == 0) {
      const std::size_t end = text.find("*/", at + 2);
      if (end == std::string::npos) return at;
      at = end + 2;
    } else {
      ++at;
    }
  }
  return std::string::npos;
}

bool isTypographicQuote(const std::string& text, std::size_t at) {
  for (const char* quote : {"\xE2\x80\x9C", "\xE2\x80\x9D", "\xE2\x80\x9E", "\xE2\x80\x98",
                            "\xE2\x80\x99", "\xE2\x80\x9A", "\xC2\xAB", "\xC2\xBB"}) {
    if (text.compare(at, std::strlen(quote), quote) == 0) return true;
  }
  return false;
}

}  // namespace

class Document::Builder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Builder> {
 public:
  using Size = rapidjson::SizeType;

  Builder(Document& document, const rapidjson::InsituStringStream& stream)
      : document_(document), stream_(stream) {}

  bool Null() { return add(Value(Value::Type::kNull, here() - 4)); }
  bool Bool(bool flag) {
    return add(Value(Value::Type::kFlag, here() - (flag ? 4 : 5), nullptr, flag ? 1 : 0));
  }
  // The reader moves on only when it has told of the number.
  bool RawNumber(const char* /*text*/, Size size, bool /*copy*/) {
    return add(Value(Value::Type::kNumber, here(), document_.text_.data() + here(), size));
  }
  bool String(const char* text, Size size, bool /*copy*/) {
    return add(Value(Value::Type::kText, startOf(text), text, size));
  }
  bool Key(const char* text, Size size, bool /*copy*/) {
    members_.push_back({std::string_view(text, size), startOf(text), Value()});
    return true;
  }
  bool StartObject() { return open(true); }
  bool StartArray() { return open(false); }
  bool EndObject(Size count) {
    const Member* first = document_.keep(members_, count);
    return close(Value(Value::Type::kObject, open_.back(), first, count));
  }
  bool EndArray(Size count) {
    const Value* first = document_.keep(elements_, count);
    return close(Value(Value::Type::kList, open_.back(), first, count));
  }

  const std::vector<Offset>& open() const { return open_; }
  bool isTooDeep() const { return isTooDeep_; }

 private:
  Offset here() const { return static_cast<Offset>(stream_.src_ - document_.text_.data()); }
  Offset startOf(const char* text) const {
    return static_cast<Offset>(text - document_.text_.data()) - 1;
  }

  bool open(bool isObject) {
    open_.push_back(here() - 1);
    areObjects_.push_back(isObject);
    isTooDeep_ = open_.size() > kMostLevels;
    return !isTooDeep_;
  }
  bool close(const Value& value) {
    open_.pop_back();
    areObjects_.pop_back();
    return add(value);
  }
  bool add(const Value& value) {
    if (open_.empty()) {
      document_.root_ = value;
    } else if (areObjects_.back()) {
      members_.back().value = value;
    } else {
      elements_.push_back(value);
    }
    return true;
  }

  Document& document_;
  const rapidjson::InsituStringStream& stream_;
  std::vector<Offset> open_;  // the brackets that are not closed yet
  std::vector<bool> areObjects_;
  // Of all that is open, one after the other.
  std::vector<Value> elements_;
  std::vector<Member> members_;
  bool isTooDeep_ = false;
};

Document::Document(std::string text) : text_(std::move(text)) {
  // No editor counts it as a column.
  if (text_.compare(0, 3, kByteOrderMark) == 0) text_.erase(0, 3);
}
Document::~Document() = default;

template <class Element>
const Element* Document::keep(std::vector<Element>& all, std::size_t count) {
  constexpr std::size_t kBlockSize = 64 * 1024;
  const std::size_t size = count * sizeof(Element);
  if (size > freeSize_) {
    freeSize_ = size > kBlockSize ? size : kBlockSize;
    blocks_.push_back(std::make_unique<char[]>(freeSize_));
    free_ = blocks_.back().get();
  }
  auto* kept = reinterpret_cast<Element*>(free_);
  std::uninitialized_copy(all.end() - static_cast<std::ptrdiff_t>(count), all.end(), kept);
  all.resize(all.size() - count);
  free_ += size;
  freeSize_ -= size;
  return kept;
}

bool Document::parse(SyntaxError& error) {
  const std::size_t bad = firstBadByte(text_);
  if (bad < text_.size()) {
    error.at = static_cast<Offset>(bad);
    if (text_[bad] == '\0') {
      error.message = "a NUL byte, which no text holds";
    } else {
      char byte[8] = "";
      std::snprintf(byte, sizeof byte, "0x%02X",
                    static_cast<unsigned>(static_cast<unsigned char>(text_[bad])));
      error.message = std::string("the byte ") + byte +
                      " is no UTF-8; if the file is in Latin-1, convert it: "
                      "iconv -f LATIN1 -t UTF-8";
    }
    return false;
  }
  if (text_.find('\\') != std::string::npos) copy_ = text_;

  rapidjson::InsituStringStream stream(text_.data());
  Builder builder(*this, stream);
  rapidjson::Reader reader;
  constexpr unsigned int kFlags = rapidjson::kParseInsituFlag | rapidjson::kParseCommentsFlag |
                                  rapidjson::kParseNumbersAsStringsFlag;
  const rapidjson::ParseResult result = reader.Parse<kFlags>(stream, builder);
  if (!result.IsError()) return true;
  if (builder.isTooDeep()) {
    error = {builder.open().back(), "nested too deeply"};
  } else {
    error = errorAt(static_cast<Offset>(result.Offset()), result.Code(), builder.open());
  }
  return false;
}

std::string Document::where(Offset at) const {
  const Place place = placeOf(at);
  return "line " + std::to_string(place.line) + ", column " + std::to_string(place.column);
}

// In the user's words, with the usual cause. The text itself is not shown: it may be a password.
SyntaxError Document::errorAt(Offset at, int code, const std::vector<Offset>& open) const {
  const std::string& text = original();
  std::size_t place = skipBlanks(text, at);
  const auto error = [&](std::string message) {
    return SyntaxError{static_cast<Offset>(place), std::move(message)};
  };
  const bool isAtEnd = place >= text.size();
  const char found = isAtEnd ? '\0' : text[place];
  switch (code) {
    case rapidjson::kParseErrorDocumentEmpty:
      return error("the file is empty; \"bkoq new\" prints one to start from");
    case rapidjson::kParseErrorDocumentRootNotSingular:
      return error("the job ends before this; one file holds one job");
    case rapidjson::kParseErrorStringEscapeInvalid:
    case rapidjson::kParseErrorStringInvalidEncoding:
      place = at;
      // The library reports a control character so too.
      if (static_cast<unsigned char>(text[place]) >= 0x20) {
        return error("this is no escape of JSON; a \\ in a text is written as \\\\");
      }
      return error(
          "a line break or another control character inside a text: is the closing "
          "quote missing? In a text it is written as \\n, \\t or \\u0000");
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
    case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
      return error("a character is written as \\u and four hexadecimal digits, or as two such");
    case rapidjson::kParseErrorStringMissQuotationMark:
      place = text.size();
      return error("the file ends inside a text: its closing quote is missing");
    case rapidjson::kParseErrorNumberTooBig:
      return error("the number is too large for any attribute");
    case rapidjson::kParseErrorNumberMissFraction:
      return error("digits are missing after the decimal point");
    case rapidjson::kParseErrorNumberMissExponent:
      return error("digits are missing in the exponent");
    default:
      break;
  }
  if (code == rapidjson::kParseErrorUnspecificSyntaxError) {
    place = isAtEnd ? openComment(text) : std::string::npos;
    if (place != std::string::npos) return error("this comment is not closed with \"*/\"");
    place = at - 1;
    return error("a comment is \"// to the end of the line\" or \"/* ... */\"");
  }
  if (isAtEnd && !open.empty()) {
    place = text.size();
    return error(std::string("the file ends before the \"") + text[open.back()] + "\" of " +
                 where(open.back()) + " is closed");
  }
  if (found == '\'' || isTypographicQuote(text, place)) {
    return error("texts and names are written in straight double quotes: \"...\"");
  }
  if ((found == '}' || found == ']') && lastBefore(text, place) == ',') {
    return error(std::string("a comma before the closing \"") + found + "\": remove it");
  }
  if ((found == 'x' || found == 'X') && beginOfWord(text, place) + 1 == place &&
      text[place - 1] == '0') {
    --place;
    return error("a hexadecimal number is written in quotes: \"0x1F\"");
  }
  if (found >= '0' && found <= '9' && place > 0 && text[place - 1] == '0') {
    --place;
    return error("a number does not begin with 0");
  }
  if (code == rapidjson::kParseErrorValueInvalid) {
    // The reader may have taken the first letters for those of a word of JSON.
    place = beginOfWord(text, at);
    const char* meant = wordMeant(text, place);
    if (meant != nullptr) return error(std::string("this word is written as ") + meant);
  }
  switch (code) {
    case rapidjson::kParseErrorObjectMissName:
      return error("the name of an attribute in double quotes is expected");
    case rapidjson::kParseErrorObjectMissColon:
      return error("a \":\" is expected after the name of an attribute");
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
      return error(found == ']' ? "\"]\" does not close the \"{\" of " + where(open.back())
                                : "\",\" or \"}\" is expected");
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
      return error(found == '}' ? "\"}\" does not close the \"[\" of " + where(open.back())
                                : "\",\" or \"]\" is expected");
    default:
      return error(
          "a value is expected: a text in double quotes, a number, true, false, null, "
          "a list or an object");
  }
}

Place Document::placeOf(Offset at) const {
  const std::string& text = original();
  const Offset end = at < text.size() ? at : static_cast<Offset>(text.size());
  if (end < seen_) {
    bool isSameLine = true;
    for (Offset back = seen_; back > end; --back) {
      if (text[back - 1] == '\n') {
        isSameLine = false;
        --seenPlace_.line;
      } else if (isSameLine && !isContinuation(text[back - 1])) {
        --seenPlace_.column;
      }
    }
    seen_ = end;
    if (!isSameLine) {
      // Counted forwards again from the beginning of its line; the column has come down to 1.
      while (seen_ > 0 && text[seen_ - 1] != '\n') --seen_;
    }
  }
  for (; seen_ < end; ++seen_) {
    if (text[seen_] == '\n') {
      ++seenPlace_.line;
      seenPlace_.column = 1;
    } else if (!isContinuation(text[seen_])) {
      ++seenPlace_.column;  // continuation bytes belong to the character before them
    }
  }
  return seenPlace_;
}

const Value* Value::find(std::string_view key) const {
  for (const Member& member : members()) {
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
    case Value::Type::kNumber:
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

}  // namespace bkoq::tool
