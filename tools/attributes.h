#ifndef BKOQ_TOOLS_ATTRIBUTES_H_
#define BKOQ_TOOLS_ATTRIBUTES_H_

// What can be written in a job file: for each class of the library its attributes, one line each.
// Reading, the JSON Schema and the starter files all come from these tables. Attributes are set in
// the order of their table, whatever the order in the file.

#include <bkoq/bkoq.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tools/memory.h"
#include "tools/reader.h"

namespace bkoq::tool {

// What counts as now: one moment for everything that a command makes, so that what it makes twice
// is the same.
const RWCollectableTime& commandTime();

// A value as JSON.
std::string jsonText(const std::string& text);
std::string jsonTime(const RWTime& time);

struct Family;

enum class Shape : std::uint8_t {
  kText,
  kTexts,    // a list of texts; `length` of them unless that is 0
  kFlag,     // true or false
  kNumber,   // or one of `words`
  kNumbers,  // a list of `length` numbers
  kTime,
  kTimes,    // a list of `length` times
  kSeconds,  // a time, or a number of seconds
  kObject,
  kObjects
};

struct Attribute {
  std::string key;
  Shape shape;
  std::string meaning;
  std::int64_t least = 0;
  std::int64_t most = 0;
  const std::vector<Word>* words = nullptr;
  std::size_t length = 0;
  std::function<const Family&()> family;  // of a part; empty for everything else
  bool isRequired = false;
  std::string sample;  // as JSON, when starter files show the attribute as one that matters
  bool isNowUnlessGiven = false;
  std::array<const char*, 2> texts = {};  // that are taken, where not every one is
  // What the warnings need to know at once; a test checks it by experiment.
  bool isRecorded = true;
  const char* onlyIn = nullptr;   // the one layout that carries it
  std::int64_t recordedMost = 0;  // a larger number is cut in the current layout; 0 for none

  // The record field holds less than the accessor takes.
  Attribute& upTo(std::int64_t highest) {
    most = highest;
    return *this;
  }
  Attribute& named(const std::vector<Word>& codes) {
    words = &codes;
    return *this;
  }
  Attribute& required() {
    isRequired = true;
    return *this;
  }
  Attribute& unrecorded() {
    isRecorded = false;
    return *this;
  }
  Attribute& carriedOnlyIn(const char* layout) {
    onlyIn = layout;
    return *this;
  }
  Attribute& cutAbove(std::int64_t highest) {
    recordedMost = highest;
    return *this;
  }
  Attribute& suchAs(const char* one, const char* another) {
    texts = {one, another};
    return *this;
  }
  Attribute& shown(std::string json) {
    sample = std::move(json);
    return *this;
  }
};

// One class of a family, chosen by the word under "kind".
struct ObjectClass {
  std::string kind;  // empty when the family has one class only
  std::string name;  // of the class in the library
  std::string meaning;
  std::size_t size = 0;  // of an object, in bytes
  std::vector<Attribute> attributes;

  const Attribute* find(std::string_view key) const;
};

// What can stand in one place of a job file.
struct Family {
  std::string name;  // "node"
  std::vector<ObjectClass> classes;

  Family() = default;
  Family(Family&&) = default;
  virtual ~Family() = default;

  const ObjectClass* find(std::string_view kind) const;
  // The class that an object names, or the only one; null when there is none.
  const ObjectClass* classOf(const Value& object) const;

  // What the attributes of an object of that class have got when it is written as JSON, each as
  // JSON: those that are left out show their default.
  virtual std::vector<std::string> valuesOf(const ObjectClass& own,
                                            const std::string& json) const = 0;
};

// What the setters of a class take: a base that it shares with those whose attributes it inherits.
template <class Object>
using RootOf =
    std::conditional_t<std::is_base_of_v<RWCollectable, Object>, RWCollectable,
                       std::conditional_t<std::is_base_of_v<BKQEMail, Object>, BKQEMail, Object>>;

// How one attribute of an object is set from a job file.
template <class Root>
struct Setter {
  std::function<void(Reader&, const Attribute&, Root&, const Value&)> read;
  std::function<void(Root&)> setDefault;   // what is set when it is not given; may be empty
  std::function<std::string(Root&)> show;  // what it has got, as JSON
};

template <class Object>
class Table;

// An object as it is written: its class, and where each attribute of that class is given.
struct WrittenObject {
  const ObjectClass* own = nullptr;   // null when not even the class is known
  std::vector<const Value*> given{};  // null for an attribute that is left out
};

// Finds out what is given, and reports what is no attribute of the class.
WrittenObject takeApart(Reader& reader, const Family& family, const Value& value);
// Reports an attribute that is required and missing.
void reportMissing(Reader& reader, const Attribute& attribute, const Value& value);

// A family whose classes derive from Part.
template <class Part>
class FamilyOf : public Family {
 public:
  explicit FamilyOf(const char* familyName) { name = familyName; }

  // Adds a class; `make` gives a new Object, `describe` fills its table.
  template <class Object, class Make, class Describe>
  void add(const char* kind, const char* className, const char* meaning, Make make,
           Describe describe) {
    ObjectClass added;
    added.kind = kind;
    added.name = className;
    added.meaning = meaning;
    added.size = sizeof(Object);
    Maker maker;
    maker.make = make;
    describe(Table<Object>(added.attributes, maker.setters));
    classes.push_back(std::move(added));
    makers_.push_back(std::move(maker));
  }

  // A new object, or null when not even its class is known.
  Part* read(Reader& reader, const Value& value) const {
    const WrittenObject written = takeApart(reader, *this, value);
    if (written.own == nullptr) return nullptr;
    const Maker& maker = makerOf(*written.own);
    std::unique_ptr<Part> part(maker.make(value));
    for (std::size_t i = 0; i < maker.setters.size(); ++i) {
      const Attribute& attribute = written.own->attributes[i];
      const Setter<Root>& setter = maker.setters[i];
      if (written.given[i] != nullptr) {
        const Reader::Within within(reader, attribute.key);
        setter.read(reader, attribute, *part, *written.given[i]);
        requireMemory();
      } else if (attribute.isRequired) {
        reportMissing(reader, attribute, value);
      } else if (setter.setDefault) {
        setter.setDefault(*part);
      }
    }
    requireMemory();
    return part.release();
  }
  // The same for a part that its holder does not delete.
  Part* readKept(Reader& reader, const Value& value) const {
    if (Part* before = reader.madeBefore<Part>(value)) return before;
    Part* part = read(reader, value);
    if (part != nullptr) reader.keep(value, part);
    return part;
  }

  std::vector<std::string> valuesOf(const ObjectClass& own,
                                    const std::string& json) const override {
    commandTime();  // what counts as now begins before the object is made
    Document document(json);
    SyntaxError error;
    document.parse(error);
    Problems problems;
    Kept kept;
    Reader reader(document, problems, kept);
    const std::unique_ptr<Part> part(read(reader, document.root()));
    std::vector<std::string> values;
    for (const Setter<Root>& setter : makerOf(own).setters) values.push_back(setter.show(*part));
    return values;
  }

 private:
  using Root = RootOf<Part>;
  struct Maker {
    std::function<Part*(const Value&)> make;
    std::vector<Setter<Root>> setters;
  };
  const Maker& makerOf(const ObjectClass& own) const {
    return makers_[static_cast<std::size_t>(&own - classes.data())];
  }

  std::vector<Maker> makers_;  // one for each class
};

const FamilyOf<BKQJob>& jobs();
const FamilyOf<BKQDiskNode>& machines();
const FamilyOf<BKQTapeNode>& tapeNodes();
const FamilyOf<BKQRestoreNode>& restoreNodes();
const FamilyOf<BKQDisk>& disks();
const FamilyOf<BKQDiskItem>& diskItems();
const FamilyOf<BKQTape>& tapes();
const FamilyOf<BKQTapeItem>& tapeItems();
const FamilyOf<BKQTapeXtension>& tapeExtensions();
const FamilyOf<BKQFilter>& filters();
const FamilyOf<BKQRegularSchedule>& schedules();  // of every class
const FamilyOf<BKQCustomSchedule>& customSchedules();
const FamilyOf<BKQRotationSchedule>& rotationSchedules();  // and cruise schedules
const FamilyOf<BKQCruiseSchedule>& cruiseSchedules();
const FamilyOf<BKQJobMask>& jobMasks();
const FamilyOf<BKQJobUnit>& jobUnits();
const FamilyOf<BKQExceptionDay>& exceptionDays();
const FamilyOf<BKQTime>& spans();
const FamilyOf<BKQGroom>& grooms();
const FamilyOf<BKQFax>& faxes();
const FamilyOf<BKQEMail>& emails();
const FamilyOf<BKQPrintQueue>& printQueues();
const FamilyOf<BKQOpenFileInfo>& openFileInfos();

// All of them, each after those that can hold it.
const std::vector<const Family*>& families();

// ---------------------------------------------------------------------- writing down the tables

// A setter that adopts has a deleted form for temporaries: this is the other one.
template <class Object, class Part>
constexpr auto adopting(void (Object::*setter)(const Part&)) {
  return setter;
}

// Adds attributes of `Object` to a list. A setter is a member function, or a function that takes
// the object first. The table of a class can be filled as one of its base, so that attributes are
// compiled once, for the class that has them.
template <class Object>
class Table {
  using Root = RootOf<Object>;

 public:
  Table(std::vector<Attribute>& list, std::vector<Setter<Root>>& setters)
      : list_(list), setters_(setters) {}
  template <class Derived, class = std::enable_if_t<std::is_base_of_v<Object, Derived>>>
  Table(const Table<Derived>& table) : list_(table.list_), setters_(table.setters_) {}

  template <class Set, class Get>
  Attribute& text(const char* key, Set set, Get get, const char* meaning) {
    return add(
        key, Shape::kText, meaning,
        [set](Reader& reader, const Attribute&, Root& object, const Value& value) {
          std::string text;
          if (reader.text(value, text)) std::invoke(set, of(object), text.c_str());
        },
        showOf(get));
  }

  // The setter says whether it takes the text; an empty one is as good as none.
  template <class Set, class Get>
  Attribute& checkedText(const char* key, Set set, Get get, const char* complaint,
                         const char* meaning) {
    return add(
        key, Shape::kText, meaning,
        [set, complaint](Reader& reader, const Attribute&, Root& object, const Value& value) {
          std::string text;
          if (!reader.text(value, text) || text.empty()) return;
          if (std::invoke(set, of(object), text.c_str()) != 0) return;
          reader.problem(value, inQuotes(text) + " " + complaint);
        },
        showOf(get));
  }

  // Each text of the list is added by itself; a new object has none.
  template <class Add>
  Attribute& texts(const char* key, Add addOne, const char* meaning) {
    return add(
        key, Shape::kTexts, meaning,
        [addOne](Reader& reader, const Attribute&, Root& object, const Value& value) {
          for (const std::string& text : textsOf(reader, value, 0)) {
            std::invoke(addOne, of(object), text.c_str());
          }
        },
        [](Root&) { return std::string("[]"); });
  }

  // A list of so many texts is set at once.
  template <class Set, class Get>
  Attribute& texts(const char* key, std::size_t length, Set set, Get get, const char* meaning) {
    Attribute& attribute = add(
        key, Shape::kTexts, meaning,
        [set](Reader& reader, const Attribute& self, Root& object, const Value& value) {
          const std::vector<std::string> texts = textsOf(reader, value, self.length);
          if (texts.size() == self.length) set(of(object), texts);
        },
        showOf(get));
    attribute.length = length;
    return attribute;
  }

  template <class Set, class Get>
  Attribute& flag(const char* key, Set set, Get get, const char* meaning) {
    return add(
        key, Shape::kFlag, meaning,
        [set](Reader& reader, const Attribute&, Root& object, const Value& value) {
          bool flag = false;
          if (reader.flag(value, flag)) std::invoke(set, of(object), flag ? 1 : 0);
        },
        [get](Root& object) {
          return std::string(std::invoke(get, of(object)) != 0 ? "true" : "false");
        });
  }

  // The range is that of the accessor's type.
  template <class Class, class Number, class Get>
  Attribute& number(const char* key, void (Class::*set)(Number), Get get, const char* meaning) {
    return number<Number>(
        key, [set](Object& object, Number number) { (object.*set)(number); }, get, meaning);
  }
  template <class Number, class Set, class Get>
  Attribute& number(const char* key, Set set, Get get, const char* meaning) {
    Attribute& attribute = add(
        key, Shape::kNumber, meaning,
        [set](Reader& reader, const Attribute& self, Root& object, const Value& value) {
          std::int64_t number = 0;
          if (reader.number(value, self.least, self.most, self.words, number)) {
            set(of(object), static_cast<Number>(number));
          }
        },
        showOf(get));
    setRange<Number>(attribute);
    return attribute;
  }

  // A list of so many numbers is set at once.
  template <class Number, class Set, class Get>
  Attribute& numbers(const char* key, std::size_t length, Set set, Get get, const char* meaning) {
    Attribute& attribute = add(
        key, Shape::kNumbers, meaning,
        [set](Reader& reader, const Attribute& self, Root& object, const Value& value) {
          const auto numbers = elements<Number>(
              reader, value, self.length, [&](const Value& element, Number& number) {
                std::int64_t wide = 0;
                if (!reader.number(element, self.least, self.most, self.words, wide)) return false;
                number = static_cast<Number>(wide);
                return true;
              });
          if (numbers.size() == self.length) set(of(object), numbers);
        },
        showOf(get));
    setRange<Number>(attribute);
    attribute.length = length;
    return attribute;
  }

  template <class Set, class Get>
  Attribute& time(const char* key, Set set, Get get, const char* meaning) {
    return add(
        key, Shape::kTime, meaning,
        [set](Reader& reader, const Attribute&, Root& object, const Value& value) {
          unsigned long seconds = 0;
          if (reader.time(value, seconds)) std::invoke(set, of(object), RWCollectableTime(seconds));
        },
        showOf(get));
  }

  // Now unless it is given.
  template <class Set, class Get>
  Attribute& timeOrNow(const char* key, Set set, Get get, const char* meaning) {
    Attribute& attribute = time(key, set, get, meaning);
    attribute.isNowUnlessGiven = true;
    setters_.back().setDefault = [set](Root& object) {
      std::invoke(set, of(object), commandTime());
    };
    return attribute;
  }

  // A list of so many times is set at once.
  template <class Set, class Get>
  Attribute& times(const char* key, std::size_t length, Set set, Get get, const char* meaning) {
    Attribute& attribute = add(
        key, Shape::kTimes, meaning,
        [set](Reader& reader, const Attribute& self, Root& object, const Value& value) {
          const auto times = elements<unsigned long>(
              reader, value, self.length, [&](const Value& element, unsigned long& seconds) {
                return reader.time(element, seconds);
              });
          if (times.size() == self.length) set(of(object), times);
        },
        showOf(get));
    attribute.length = length;
    return attribute;
  }

  template <class Set, class Get>
  Attribute& seconds(const char* key, Set set, Get get, const char* meaning) {
    return add(
        key, Shape::kSeconds, meaning,
        [set](Reader& reader, const Attribute&, Root& object, const Value& value) {
          long seconds = 0;
          if (reader.seconds(value, seconds)) std::invoke(set, of(object), seconds);
        },
        showOf(get));
  }

  // `attach` hands the new part to the object, which adopts it: the object deletes it.
  template <class Part, class Attach>
  Attribute& adopted(const char* key, const FamilyOf<Part>& (*family)(), Attach attach,
                     const char* meaning) {
    return part(key, family, attach, meaning,
                [](const FamilyOf<Part>& parts, Reader& reader, const Value& value) {
                  return parts.read(reader, value);
                });
  }
  // The same for a part that the object does not delete.
  template <class Part, class Attach>
  Attribute& kept(const char* key, const FamilyOf<Part>& (*family)(), Attach attach,
                  const char* meaning) {
    return part(key, family, attach, meaning,
                [](const FamilyOf<Part>& parts, Reader& reader, const Value& value) {
                  return parts.readKept(reader, value);
                });
  }
  // A list of parts that the object does not delete.
  template <class Part, class Attach>
  Attribute& parts(const char* key, const FamilyOf<Part>& (*family)(), Attach attach,
                   const char* meaning) {
    Attribute& attribute = add(
        key, Shape::kObjects, meaning,
        [attach, family](Reader& reader, const Attribute&, Root& object, const Value& value) {
          if (!reader.list(value, 0)) return;
          for (std::size_t i = 0; i < value.elements().size(); ++i) {
            const Reader::Within within(reader, i);
            Part* part = family().readKept(reader, value.elements()[i]);
            if (part != nullptr) std::invoke(attach, of(object), *part);
          }
        },
        [](Root&) { return std::string("[]"); });
    attribute.family = [family]() -> const Family& { return family(); };
    return attribute;
  }

 private:
  template <class Derived>
  friend class Table;

  static Object& of(Root& object) { return static_cast<Object&>(object); }

  template <class Read, class Show>
  Attribute& add(const char* key, Shape shape, const char* meaning, Read read, Show show) {
    Attribute attribute;
    attribute.key = key;
    attribute.shape = shape;
    attribute.meaning = meaning;
    setters_.push_back({std::move(read), {}, std::move(show)});
    list_.push_back(std::move(attribute));
    return list_.back();
  }

  // An object is not there when it is written as null; `read` makes the part.
  template <class Part, class Attach, class Read>
  Attribute& part(const char* key, const FamilyOf<Part>& (*family)(), Attach attach,
                  const char* meaning, Read read) {
    Attribute& attribute = add(
        key, Shape::kObject, meaning,
        [attach, read, family](Reader& reader, const Attribute& self, Root& object,
                               const Value& value) {
          if (value.type() == Value::Type::kNull && !self.isRequired) return;
          Part* part = read(family(), reader, value);
          if (part != nullptr) std::invoke(attach, of(object), *part);
        },
        [](Root&) { return std::string("null"); });
    attribute.family = [family]() -> const Family& { return family(); };
    return attribute;
  }

  template <class Get>
  static auto showOf(Get get) {
    return [get](Root& object) { return json(std::invoke(get, of(object))); };
  }
  template <class Shown>
  static std::string json(const Shown& shown) {
    if constexpr (std::is_base_of_v<RWCString, Shown>) {
      return jsonText(shown.data());
    } else if constexpr (std::is_base_of_v<RWTime, Shown>) {
      return jsonTime(shown);
    } else if constexpr (std::is_arithmetic_v<Shown> || std::is_enum_v<Shown>) {
      return std::to_string(static_cast<std::int64_t>(shown));
    } else {
      std::string list;
      for (const auto& each : shown) list += (list.empty() ? "" : ", ") + json(each);
      return "[" + list + "]";
    }
  }

  template <class Number>
  static void setRange(Attribute& attribute) {
    using Plain = typename std::conditional_t<std::is_enum_v<Number>, std::underlying_type<Number>,
                                              std::common_type<Number>>::type;
    attribute.least = std::numeric_limits<Plain>::min();
    attribute.most = std::numeric_limits<Plain>::max();
  }

  static std::vector<std::string> textsOf(Reader& reader, const Value& value, std::size_t length) {
    return elements<std::string>(
        reader, value, length,
        [&](const Value& element, std::string& text) { return reader.text(element, text); });
  }

  // Those elements of a list that are what they should be; none when their number is wrong.
  template <class Element, class Read>
  static std::vector<Element> elements(Reader& reader, const Value& value, std::size_t length,
                                       Read read) {
    std::vector<Element> elements;
    if (!reader.list(value, length)) return elements;
    for (std::size_t i = 0; i < value.elements().size(); ++i) {
      const Reader::Within within(reader, i);
      Element element{};
      if (read(value.elements()[i], element)) elements.push_back(std::move(element));
    }
    return elements;
  }

  std::vector<Attribute>& list_;
  std::vector<Setter<Root>>& setters_;
};

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_ATTRIBUTES_H_
