#include <bkoq/bkoq.h>
#include <sys/mman.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "debugger/filled_new.h"
#include "debugger/tables.h"
#include "kit/record_table.h"
#include "tools/attributes.h"
#include "tools/moment.h"

namespace bkoq::debugger {
namespace {

using tool::Attribute;
using tool::Family;
using tool::ObjectClass;
using tool::Shape;
using tool::Value;

using Bytes = std::vector<unsigned char>;
constexpr std::size_t kWord = 4;

std::uint32_t wordAt(const void* memory, std::size_t offset) {
  std::uint32_t word = 0;
  std::memcpy(&word, static_cast<const unsigned char*>(memory) + offset, kWord);
  return word;
}
const unsigned char* pointerAt(const void* memory, std::size_t offset) {
  return reinterpret_cast<const unsigned char*>(wordAt(memory, offset));
}

// ---------------------------------------------------------------------- the classes of rw/

// Where the strings, times and lists keep what they hold.
struct Parts {
  std::size_t textInBlock = 0;
  std::size_t lengthInBlock = 0;
  std::size_t stringInCollectable = 0;
  std::size_t timeInCollectable = 0;
  std::size_t elementsInList = 0;
  std::size_t entriesInList = 0;
};

Parts findParts() {
  Parts parts;
  const char* const text = "a text of 21 letters.";
  const RWCString string(text);
  static_assert(sizeof string == kWord, "a string is the address of its block");
  const unsigned char* const block = pointerAt(&string, 0);
  parts.textInBlock =
      static_cast<std::size_t>(reinterpret_cast<const unsigned char*>(string.data()) - block);
  while (wordAt(block, parts.lengthInBlock) != std::strlen(text)) {
    parts.lengthInBlock += kWord;
    expect(parts.lengthInBlock < parts.textInBlock, "a string does not keep its length");
  }

  RWCollectableString collectable(text);
  const auto distance = [](const void* part, const void* whole) {
    return static_cast<std::size_t>(static_cast<const char*>(part) -
                                    static_cast<const char*>(whole));
  };
  parts.stringInCollectable = distance(static_cast<RWCString*>(&collectable), &collectable);
  RWCollectableTime time(0x12345678UL);
  static_assert(sizeof(RWTime) == kWord, "a time is its seconds");
  parts.timeInCollectable = distance(static_cast<RWTime*>(&time), &time);
  expect(wordAt(&time, parts.timeInCollectable) == 0x12345678, "a time is not its seconds");

  RWSlistCollectables list;
  for (int i = 0; i < 3; ++i) list.insert(&collectable);
  list.remove(&collectable);
  const auto element = static_cast<std::uint32_t>(
      reinterpret_cast<std::uintptr_t>(static_cast<RWCollectable*>(&collectable)));
  std::size_t found = 0;
  for (std::size_t offset = kWord; offset < sizeof list; offset += kWord) {
    if (wordAt(&list, offset) == 2) {
      parts.entriesInList = offset;
      ++found;
    } else if (wordAt(&list, offset) > 0x10000) {
      expect(wordAt(pointerAt(&list, offset), kWord) == element, "a list is no array of addresses");
      parts.elementsInList = offset;
      ++found;
    }
  }
  expect(found == 2, "a list does not keep its elements and their number");
  return parts;
}

// ---------------------------------------------------------------------- objects to look at

Value textValue(const std::string& text) {
  Value value;
  value.type = Value::Type::kText;
  value.text = text;
  return value;
}
Value numberValue(std::int64_t number) {
  Value value;
  value.type = Value::Type::kInteger;
  value.integer = number;
  value.text = std::to_string(number);
  return value;
}
Value flagValue(bool flag) {
  Value value;
  value.type = Value::Type::kFlag;
  value.flag = flag;
  return value;
}
Value listOf(std::vector<Value> elements) {
  Value value;
  value.type = Value::Type::kList;
  value.elements = std::move(elements);
  return value;
}

// Two values for each shape that differ wherever they can: in every byte of a number.
constexpr const char* kTexts[] = {"8-15", "16-23"};  // also ranges of sessions
constexpr const char* kMoments[] = {"2004-03-01T21:00:00Z", "2006-10-12T09:33:44Z"};
constexpr std::uint32_t kSeconds[] = {3255627600U, 3338098424U};  // since 1901
std::int64_t numberOf(const Attribute& attribute, int which) {
  const std::int64_t most = attribute.shape == Shape::kSeconds ? INT32_MAX : attribute.most;
  return most & (which == 0 ? 0x55555555 : 0x2AAAAAAA);
}
std::size_t widthOf(const Attribute& attribute) {
  if (attribute.shape == Shape::kSeconds || attribute.most > 0xFFFF) return 4;
  return attribute.most > 0xFF ? 2 : 1;
}

void give(Value& document, const Attribute& attribute, const Value& value) {
  for (tool::Member& member : document.members) {
    if (member.key != attribute.key) continue;
    member.value = value;
    return;
  }
  document.members.push_back({attribute.key, {}, value});
}

// An object of the class with what it must have.
Value documentOf(const ObjectClass& own) {
  Value value;
  value.type = Value::Type::kObject;
  if (!own.kind.empty()) value.members.push_back({"kind", {}, textValue(own.kind)});
  for (const Attribute& attribute : own.attributes) {
    if (!attribute.isRequired) continue;
    expect(attribute.shape == Shape::kText || attribute.shape == Shape::kObject,
           attribute.key + " is required, and of a shape that is not looked for");
    give(value, attribute,
         attribute.shape == Shape::kText ? textValue("required")
                                         : documentOf(attribute.family().classes.front()));
  }
  return value;
}

// The same with a number that is no default, one or the other.
Value numberedDocumentOf(const ObjectClass& own, int which) {
  Value value = documentOf(own);
  for (const Attribute& attribute : own.attributes) {
    if (attribute.shape != Shape::kNumber || attribute.words != nullptr) continue;
    give(value, attribute, numberValue(numberOf(attribute, which)));
    break;
  }
  return value;
}

using Maker = std::function<const void*(tool::Reader&, const Value&)>;

template <class Part>
void addMaker(std::map<const Family*, Maker>& makers, const tool::FamilyOf<Part>& family) {
  makers[&family] = [&family](tool::Reader& reader, const Value& value) -> const void* {
    return family.read(reader, value);
  };
}

// What makes an object of a family. One that is missing here is found out as soon as an attribute
// takes it.
const Maker& makerOf(const Family& family) {
  static const std::map<const Family*, Maker> makers = [] {
    std::map<const Family*, Maker> all;
    addMaker(all, tool::jobs());
    addMaker(all, tool::machines());
    addMaker(all, tool::tapeNodes());
    addMaker(all, tool::restoreNodes());
    addMaker(all, tool::disks());
    addMaker(all, tool::diskItems());
    addMaker(all, tool::tapes());
    addMaker(all, tool::tapeItems());
    addMaker(all, tool::tapeExtensions());
    addMaker(all, tool::filters());
    addMaker(all, tool::schedules());
    addMaker(all, tool::customSchedules());
    addMaker(all, tool::rotationSchedules());
    addMaker(all, tool::cruiseSchedules());
    addMaker(all, tool::jobMasks());
    addMaker(all, tool::jobUnits());
    addMaker(all, tool::exceptionDays());
    addMaker(all, tool::spans());
    addMaker(all, tool::grooms());
    addMaker(all, tool::faxes());
    addMaker(all, tool::emails());
    addMaker(all, tool::printQueues());
    addMaker(all, tool::openFileInfos());
    return all;
  }();
  const auto found = makers.find(&family);
  expect(found != makers.end(), "the objects of the family " + family.name + " cannot be made");
  return found->second;
}

// A new object, which lives as long as the program.
const void* make(const Family& family, const Value& document) {
  static tool::Kept kept;
  tool::Problems problems;
  tool::Reader reader(problems, kept);
  const void* object = makerOf(family)(reader, document);
  if (!problems.empty()) {
    const tool::Problem problem = problems.sorted().front();
    throw Mismatch(family.name + ": " + problem.path + ": " + problem.message);
  }
  return object;
}

// Whether a word is the address of something, so that it can be looked at.
bool isAddress(std::uint32_t word) {
  constexpr std::uint32_t kPage = 4096;
  return word != 0 && msync(reinterpret_cast<void*>(word / kPage * kPage), 2 * std::size_t{kPage},
                            MS_ASYNC) == 0;
}

// ---------------------------------------------------------------------- setting and looking

// Where an attribute is kept.
struct Place {
  std::vector<std::size_t> offsets;  // more than one for lists of fixed length
  std::size_t width = kWord;
  bool isEmbedded = false;  // an object inside the object, not behind an address
};

class Prober {
 public:
  Prober(const Family& family, const ObjectClass& own, const Parts& parts)
      : family_(family), own_(own), parts_(parts) {}

  Json table();

 private:
  [[noreturn]] void lost(const Attribute& attribute) const {
    throw Mismatch(own_.name + ": it is not found where the object keeps " + attribute.key);
  }

  Bytes bytesOf(const Value& document) const {
    const auto* object = static_cast<const unsigned char*>(make(family_, document));
    return {object, object + own_.size};
  }
  // Of an object in which one attribute is set.
  Bytes bytesWith(const Attribute& attribute, const Value& value) const {
    Value document = documentOf(own_);
    give(document, attribute, value);
    return bytesOf(document);
  }

  Value sampleOf(const Attribute& attribute, int which) const;
  Place find(const Attribute& attribute) const;
  std::optional<std::size_t> findOne(const Attribute& attribute, const Bytes& one,
                                     const Bytes& two) const;
  Place findEach(const Attribute& attribute, Shape shape) const;
  Place findList(const Attribute& attribute, const Value& element, std::uint32_t classWord) const;
  Place findPart(const Attribute& attribute) const;
  std::uint32_t numberAt(const Bytes& bytes, const Attribute& attribute) const;
  bool isChangedBy(const Attribute& other, const Attribute& attribute) const;
  std::uint32_t bitsThatStay(const Attribute& other, const Attribute& attribute) const;
  Json defaultOf(const Attribute& attribute, const Place& place) const;
  Json fixedBytes() const;

  bool isText(std::uint32_t block, const std::string& text) const {
    return isAddress(block) && text == reinterpret_cast<const char*>(block + parts_.textInBlock);
  }

  const Family& family_;
  const ObjectClass& own_;
  const Parts& parts_;
  std::map<std::string, Place> places_;
};

Value Prober::sampleOf(const Attribute& attribute, int which) const {
  switch (attribute.shape) {
    case Shape::kText:
    case Shape::kTexts:
      return textValue(kTexts[which]);
    case Shape::kFlag:
      return flagValue(which == 1);
    case Shape::kNumber:
    case Shape::kNumbers:
    case Shape::kSeconds:
      return numberValue(numberOf(attribute, which));
    case Shape::kTime:
    case Shape::kTimes:
      return textValue(kMoments[which]);
    case Shape::kObject:
      return numberedDocumentOf(attribute.family().classes.front(), which);
    case Shape::kObjects:
      return listOf({documentOf(attribute.family().classes.front())});
  }
  lost(attribute);
}

// Of two objects made with the first and the second sample: where they have these.
std::optional<std::size_t> Prober::findOne(const Attribute& attribute, const Bytes& one,
                                           const Bytes& two) const {
  const bool isNumber = attribute.shape == Shape::kNumber || attribute.shape == Shape::kNumbers ||
                        attribute.shape == Shape::kSeconds;
  const std::size_t width = isNumber ? widthOf(attribute) : kWord;
  for (std::size_t offset = 0; offset + width <= own_.size; offset += width) {
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    std::memcpy(&first, &one[offset], width);
    std::memcpy(&second, &two[offset], width);
    switch (attribute.shape) {
      case Shape::kText:
      case Shape::kTexts:
        if (isText(first, kTexts[0]) && isText(second, kTexts[1])) return offset;
        break;
      case Shape::kFlag:
        if (first == 0 && second == 1) return offset;
        break;
      case Shape::kTime:
      case Shape::kTimes:
        if (first == kSeconds[0] && second == kSeconds[1]) return offset;
        break;
      default:
        if (first == numberOf(attribute, 0) && second == numberOf(attribute, 1)) return offset;
    }
  }
  return std::nullopt;
}

// Element by element, of a list of fixed length.
Place Prober::findEach(const Attribute& attribute, Shape shape) const {
  Place place;
  for (std::size_t i = 0; i < attribute.length; ++i) {
    const auto document = [&](int which) {
      Value other = numberValue(attribute.least);
      if (shape == Shape::kTexts) other = textValue("other");
      if (shape == Shape::kTimes) other = textValue("1999-01-01T00:00:00Z");
      std::vector<Value> elements(attribute.length, other);
      elements[i] = sampleOf(attribute, which);
      return listOf(elements);
    };
    const auto found =
        findOne(attribute, bytesWith(attribute, document(0)), bytesWith(attribute, document(1)));
    if (!found.has_value()) lost(attribute);
    place.offsets.push_back(*found);
  }
  if (shape == Shape::kNumbers) place.width = widthOf(attribute);
  return place;
}

// `classWord` is what an element begins with.
Place Prober::findList(const Attribute& attribute, const Value& element,
                       std::uint32_t classWord) const {
  const Bytes one = bytesWith(attribute, listOf({element}));
  const Bytes two = bytesWith(attribute, listOf({element, element}));
  for (std::size_t list = 0; list + sizeof(RWSlistCollectables) <= own_.size; list += kWord) {
    if (wordAt(one.data(), list + parts_.entriesInList) != 1) continue;
    if (wordAt(two.data(), list + parts_.entriesInList) != 2) continue;
    const std::uint32_t elements = wordAt(one.data(), list + parts_.elementsInList);
    if (!isAddress(elements)) continue;
    const std::uint32_t first = wordAt(reinterpret_cast<const void*>(elements), 0);
    if (isAddress(first) && wordAt(reinterpret_cast<const void*>(first), 0) == classWord) {
      return {{list}, sizeof(RWSlistCollectables)};
    }
  }
  lost(attribute);
}

Place Prober::findPart(const Attribute& attribute) const {
  const Family& family = attribute.family();
  const ObjectClass& part = family.classes.front();
  const std::uint32_t classWord = wordAt(make(family, documentOf(part)), 0);
  const Bytes one = bytesWith(attribute, sampleOf(attribute, 0));
  const Bytes two = bytesWith(attribute, sampleOf(attribute, 1));
  const Bytes without = bytesOf(documentOf(own_));
  for (std::size_t offset = 0; offset < own_.size; offset += kWord) {
    const std::uint32_t word = wordAt(one.data(), offset);
    if (word == wordAt(without.data(), offset) || !isAddress(word)) continue;
    if (wordAt(reinterpret_cast<const void*>(word), 0) == classWord) return {{offset}};
  }
  for (std::size_t begin = 0; begin + part.size <= own_.size; begin += kWord) {
    if (wordAt(one.data(), begin) != classWord) continue;
    if (!std::equal(one.begin() + static_cast<std::ptrdiff_t>(begin),
                    one.begin() + static_cast<std::ptrdiff_t>(begin + part.size),
                    two.begin() + static_cast<std::ptrdiff_t>(begin))) {
      return {{begin}, part.size, true};
    }
  }
  lost(attribute);
}

Place Prober::find(const Attribute& attribute) const {
  switch (attribute.shape) {
    case Shape::kText:
    case Shape::kFlag:
    case Shape::kNumber:
    case Shape::kSeconds:
    case Shape::kTime: {
      const auto found = findOne(attribute, bytesWith(attribute, sampleOf(attribute, 0)),
                                 bytesWith(attribute, sampleOf(attribute, 1)));
      if (!found.has_value()) lost(attribute);
      const bool isNumber = attribute.shape == Shape::kNumber || attribute.shape == Shape::kSeconds;
      return {{*found}, isNumber ? widthOf(attribute) : kWord};
    }
    case Shape::kTexts: {
      if (attribute.length != 0) return findEach(attribute, attribute.shape);
      const RWCollectableString text;
      return findList(attribute, textValue(kTexts[0]), wordAt(&text, 0));
    }
    case Shape::kNumbers:
    case Shape::kTimes:
      return findEach(attribute, attribute.shape);
    case Shape::kObject:
      return findPart(attribute);
    case Shape::kObjects: {
      const Value element = documentOf(attribute.family().classes.front());
      return findList(attribute, element, wordAt(make(attribute.family(), element), 0));
    }
  }
  lost(attribute);
}

std::uint32_t Prober::numberAt(const Bytes& bytes, const Attribute& attribute) const {
  const Place& place = places_.at(attribute.key);
  std::uint32_t number = 0;
  std::memcpy(&number, &bytes[place.offsets.front()], std::min(place.width, kWord));
  return number;
}

// Whether setting the other one changes a number that is left out of a job file.
bool Prober::isChangedBy(const Attribute& other, const Attribute& attribute) const {
  const std::uint32_t before = numberAt(bytesOf(documentOf(own_)), attribute);
  std::vector<Value> values = {sampleOf(other, 1)};
  if (other.shape == Shape::kTexts && other.length == 0) values = {listOf({values.front()})};
  if (other.words != nullptr) {
    for (const tool::Word& word : *other.words) values.push_back(numberValue(word.number));
  }
  const bool isFixedList = other.shape == Shape::kNumbers || other.shape == Shape::kTimes ||
                           (other.shape == Shape::kTexts && other.length != 0);
  if (isFixedList) values = {listOf(std::vector<Value>(other.length, values.front()))};
  return std::any_of(values.begin(), values.end(), [&](const Value& value) {
    return numberAt(bytesWith(other, value), attribute) != before;
  });
}

// What a number of 0 becomes when the other one, which comes later, is set.
std::uint32_t Prober::bitsThatStay(const Attribute& other, const Attribute& attribute) const {
  Value document = documentOf(own_);
  give(document, attribute, numberValue(0));
  Value value = sampleOf(other, 1);
  if (other.shape == Shape::kTexts) value = listOf({value});
  give(document, other, value);
  return numberAt(bytesOf(document), attribute);
}

Json Prober::defaultOf(const Attribute& attribute, const Place& place) const {
  if (attribute.isRequired || place.offsets.size() != 1) return nullptr;
  const Bytes bytes = bytesOf(documentOf(own_));
  const std::size_t offset = place.offsets.front();
  switch (attribute.shape) {
    case Shape::kText: {
      const unsigned char* const block = pointerAt(bytes.data(), offset);
      if (block == nullptr) return "";
      return reinterpret_cast<const char*>(block + parts_.textInBlock);
    }
    case Shape::kFlag:
      return wordAt(bytes.data(), offset) != 0;
    case Shape::kNumber:
    case Shape::kSeconds: {
      const std::uint32_t number = numberAt(bytes, attribute);
      const bool isSigned = attribute.shape == Shape::kSeconds || attribute.least < 0;
      if (isSigned) return static_cast<std::int32_t>(number);
      return number;
    }
    default:
      return nullptr;
  }
}

// Words that the constructors set and no attribute names; another constructor may have set them
// otherwise, and then no job file makes such an object. Only of classes without lists, whose
// cursors would be among them.
Json Prober::fixedBytes() const {
  Json fixed = Json::array();
  for (const Attribute& attribute : own_.attributes) {
    if (attribute.shape == Shape::kObjects || attribute.shape == Shape::kTexts) return fixed;
  }
  newMemoryFill = 0;
  const Bytes one = bytesOf(documentOf(own_));
  newMemoryFill = 0xA5;
  const Bytes two = bytesOf(documentOf(own_));
  newMemoryFill = 0;
  std::set<std::size_t> covered;
  for (const auto& [key, place] : places_) {
    for (const std::size_t offset : place.offsets) {
      for (std::size_t i = 0; i < place.width; ++i) covered.insert((offset + i) / kWord * kWord);
    }
  }
  for (std::size_t word = 0; word < own_.size; word += kWord) {
    const std::uint32_t value = wordAt(one.data(), word);
    if (value != wordAt(two.data(), word) || isAddress(value) || covered.count(word) != 0) continue;
    fixed.push_back({word, value});
  }
  return fixed;
}

bool isSecret(const Attribute& attribute) {
  std::string key;
  for (const char c : attribute.key) {
    key += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  const bool soundsSecret = key.find("password") != std::string::npos ||
                            key.find("pw") != std::string::npos ||
                            key.find("key") != std::string::npos;
  return attribute.shape == Shape::kText && soundsSecret;
}

// An attribute is a secret by its name; what fills a secret field of a record must be one.
void checkSecret(const Attribute& attribute) {
  for (std::size_t i = 0; i < kit::kRecordTypeCount; ++i) {
    const kit::RecordDef* record =
        kit::recordDef(BKOQ_LAYOUT_CURRENT, static_cast<kit::RecordType>(i));
    for (const kit::FieldDef& field : *record) {
      if (field.secret != kit::Secret::kWhole) continue;
      if (attribute.meaning.find(field.name) == std::string::npos) continue;
      expect(isSecret(attribute), attribute.key + " fills a secret field, but is not masked");
    }
  }
}

const char* nameOf(Shape shape) {
  switch (shape) {
    case Shape::kText:
      return "text";
    case Shape::kTexts:
      return "texts";
    case Shape::kFlag:
      return "flag";
    case Shape::kNumber:
      return "number";
    case Shape::kNumbers:
      return "numbers";
    case Shape::kTime:
      return "time";
    case Shape::kTimes:
      return "times";
    case Shape::kSeconds:
      return "seconds";
    case Shape::kObject:
      return "object";
    case Shape::kObjects:
      return "objects";
  }
  return "";
}

Json Prober::table() {
  for (const Attribute& attribute : own_.attributes) {
    places_[attribute.key] = find(attribute);
    checkSecret(attribute);
  }
  Json list = Json::array();
  std::set<std::size_t> seen;
  for (const Attribute& attribute : own_.attributes) {
    const Place& place = places_[attribute.key];
    // Another name of an attribute that was there before.
    if (!seen.insert(place.offsets.front()).second) continue;
    Json json = {{"key", attribute.key},
                 {"shape", nameOf(attribute.shape)},
                 {"at", place.offsets},
                 {"width", place.width}};
    if (attribute.least < 0 || attribute.shape == Shape::kSeconds) json["signed"] = true;
    if (attribute.isRequired) json["required"] = true;
    if (attribute.length != 0) json["length"] = attribute.length;
    if (isSecret(attribute)) json["secret"] = true;
    if (place.isEmbedded) json["embedded"] = true;
    if (attribute.family != nullptr) json["family"] = attribute.family().name;
    if (attribute.words != nullptr) {
      json["words"] = Json::array();
      for (const tool::Word& word : *attribute.words) {
        json["words"].push_back({word.number, word.name});
      }
    }
    bool isTouched = false;
    for (const Attribute& other : own_.attributes) {
      if (attribute.shape != Shape::kNumber || &other == &attribute) continue;
      if (places_[other.key].offsets == place.offsets) continue;
      if (!isChangedBy(other, attribute)) continue;
      isTouched = true;
      // One that is set after it leaves its bits.
      const std::uint32_t bits = &other > &attribute ? bitsThatStay(other, attribute) : 0;
      if (bits != 0) {
        json["changedBy"] = other.key;
        json["changedBits"] = bits;
      }
    }
    // Without a default it is always written.
    const Json preset = isTouched ? Json() : defaultOf(attribute, place);
    if (!preset.is_null()) json["default"] = preset;
    list.push_back(json);
  }
  return {{"size", own_.size}, {"attributes", list}, {"fixed", fixedBytes()}};
}

// The first day that a job file can name, in seconds since 1970.
std::int64_t earliestTime() {
  for (int day = 1; day <= 31; ++day) {
    const std::string text = (day < 10 ? "1901-12-0" : "1901-12-") + std::to_string(day);
    std::int64_t seconds = 0;
    if (tool::parseMoment(text + "T00:00:00Z", seconds) == nullptr) return seconds;
  }
  throw Mismatch("no day of December 1901 is the first that a job file can name");
}

class Collector {
 public:
  explicit Collector(const Parts& parts) : parts_(parts) {}

  void add(const Family& family) {
    if (families_.contains(family.name)) return;
    Json& kinds = families_[family.name] = Json::object();
    for (const ObjectClass& own : family.classes) kinds[own.name] = own.kind;
    for (const ObjectClass& own : family.classes) {
      if (!classes_.contains(own.name)) classes_[own.name] = Prober(family, own, parts_).table();
      for (const Attribute& attribute : own.attributes) {
        if (attribute.family != nullptr) add(attribute.family());
      }
    }
  }
  Json table() const { return {{"families", families_}, {"classes", classes_}}; }

 private:
  const Parts& parts_;
  Json families_ = Json::object();
  Json classes_ = Json::object();
};

}  // namespace

Json attributeTables() {
  const Parts parts = findParts();
  Collector collector(parts);
  collector.add(tool::jobs());
  Json table = collector.table();
  table["secondsBefore1970"] = tool::kSecondsBefore1970;
  table["earliestTime"] = earliestTime();
  table["jobs"] = tool::jobs().name;
  table["rw"] = {{"textInBlock", parts.textInBlock},
                 {"lengthInBlock", parts.lengthInBlock},
                 {"stringInCollectable", parts.stringInCollectable},
                 {"timeInCollectable", parts.timeInCollectable},
                 {"elementsInList", parts.elementsInList},
                 {"entriesInList", parts.entriesInList}};
  return table;
}

}  // namespace bkoq::debugger
