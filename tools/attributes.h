#ifndef BKOQ_TOOLS_ATTRIBUTES_H_
#define BKOQ_TOOLS_ATTRIBUTES_H_

// What can be written in a job file: for each class of the library its attributes, one line each.
// Reading, the JSON Schema and the starter files all come from these tables. Attributes are set in
// the order of their table, whatever the order in the file.

#include <bkoq/bkoq.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tools/reader.h"

namespace bkoq::tool {

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
  const Family& (*family)() = nullptr;
  bool isRequired = false;
  std::string sample;  // as JSON, when starter files show the attribute as one that matters
  std::function<void(Reader&, const Attribute&, void* object, const Value&)> read;
  std::function<void(void* object)> setDefault;  // what is set when it is not given; may be empty

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
  Attribute& shown(const char* json) {
    sample = json;
    return *this;
  }
};

// A new object: itself, and as the family's base class.
struct Made {
  void* object;
  void* part;
};

// One class of a family, chosen by the word under "kind".
struct ObjectClass {
  std::string kind;  // empty when the family has one class only
  std::string name;  // of the class in the library
  std::string meaning;
  std::vector<Attribute> attributes;
  std::function<Made(const Value&)> make;

  const Attribute* find(const std::string& key) const;
};

// What can stand in one place of a job file.
struct Family {
  std::string name;  // "node"
  std::vector<ObjectClass> classes;
};

const Family& jobs();
const Family& machines();
const Family& tapeNodes();
const Family& restoreNodes();
const Family& disks();
const Family& diskItems();
const Family& tapes();
const Family& tapeItems();
const Family& tapeExtensions();
const Family& filters();
const Family& schedules();          // of every class
const Family& customSchedules();    // BKQCustomSchedule
const Family& rotationSchedules();  // BKQRotationSchedule and what derives from it
const Family& cruiseSchedules();    // BKQCruiseSchedule
const Family& jobMasks();
const Family& jobUnits();
const Family& exceptionDays();
const Family& spans();
const Family& grooms();
const Family& faxes();
const Family& emails();
const Family& printQueues();
const Family& openFileInfos();

// Reads `value` as an object of the family: a new one, or null when not even its class is known.
void* readObject(Reader& reader, const Family& family, const Value& value);
// The same for a list; calls `take` for each new object.
void readObjects(Reader& reader, const Family& family, const Value& value,
                 const std::function<void(void* part)>& take);

// When the first of these was asked for.
const RWCollectableTime& commandTime();

// ---------------------------------------------------------------------- writing down the tables

// Adds attributes of `Object` to a list. A setter is a member function, or a function that takes
// the object first.
template <class Object>
class Table {
 public:
  explicit Table(std::vector<Attribute>& list) : list_(list) {}

  template <class Set>
  Attribute& text(const char* key, Set set, const char* meaning) {
    return add(key, Shape::kText, meaning,
               [set](Reader& reader, const Attribute&, Object& object, const Value& value) {
                 std::string text;
                 if (reader.text(value, text)) std::invoke(set, object, text.c_str());
               });
  }

  // The setter says whether it takes the text.
  template <class Set>
  Attribute& checkedText(const char* key, Set set, const char* complaint, const char* meaning) {
    return add(
        key, Shape::kText, meaning,
        [set, complaint](Reader& reader, const Attribute&, Object& object, const Value& value) {
          std::string text;
          if (!reader.text(value, text)) return;
          if (std::invoke(set, object, text.c_str()) != 0) return;
          reader.problem(value, inQuotes(text) + " " + complaint);
        });
  }

  // Each text of the list is added by itself.
  template <class Add>
  Attribute& texts(const char* key, Add addOne, const char* meaning) {
    return add(key, Shape::kTexts, meaning,
               [addOne](Reader& reader, const Attribute&, Object& object, const Value& value) {
                 for (const std::string& text : textsOf(reader, value, 0)) {
                   std::invoke(addOne, object, text.c_str());
                 }
               });
  }

  // A list of so many texts is set at once.
  template <class Set>
  Attribute& texts(const char* key, std::size_t length, Set set, const char* meaning) {
    Attribute& attribute =
        add(key, Shape::kTexts, meaning,
            [set](Reader& reader, const Attribute& self, Object& object, const Value& value) {
              const std::vector<std::string> texts = textsOf(reader, value, self.length);
              if (texts.size() == self.length) set(object, texts);
            });
    attribute.length = length;
    return attribute;
  }

  template <class Set>
  Attribute& flag(const char* key, Set set, const char* meaning) {
    return add(key, Shape::kFlag, meaning,
               [set](Reader& reader, const Attribute&, Object& object, const Value& value) {
                 bool flag = false;
                 if (reader.flag(value, flag)) std::invoke(set, object, flag ? 1 : 0);
               });
  }

  // The range is that of the accessor's type.
  template <class Class, class Number>
  Attribute& number(const char* key, void (Class::*set)(Number), const char* meaning) {
    return number<Number>(
        key, [set](Object& object, Number number) { (object.*set)(number); }, meaning);
  }
  template <class Number, class Set>
  Attribute& number(const char* key, Set set, const char* meaning) {
    Attribute& attribute =
        add(key, Shape::kNumber, meaning,
            [set](Reader& reader, const Attribute& self, Object& object, const Value& value) {
              std::int64_t number = 0;
              if (reader.number(value, self.least, self.most, self.words, number)) {
                set(object, static_cast<Number>(number));
              }
            });
    setRange<Number>(attribute);
    return attribute;
  }

  // A list of so many numbers is set at once.
  template <class Number, class Set>
  Attribute& numbers(const char* key, std::size_t length, Set set, const char* meaning) {
    Attribute& attribute =
        add(key, Shape::kNumbers, meaning,
            [set](Reader& reader, const Attribute& self, Object& object, const Value& value) {
              const auto numbers = elements<Number>(
                  reader, value, self.length, [&](const Value& element, Number& number) {
                    std::int64_t wide = 0;
                    if (!reader.number(element, self.least, self.most, self.words, wide)) {
                      return false;
                    }
                    number = static_cast<Number>(wide);
                    return true;
                  });
              if (numbers.size() == self.length) set(object, numbers);
            });
    setRange<Number>(attribute);
    attribute.length = length;
    return attribute;
  }

  template <class Set>
  Attribute& time(const char* key, Set set, const char* meaning) {
    return add(key, Shape::kTime, meaning,
               [set](Reader& reader, const Attribute&, Object& object, const Value& value) {
                 unsigned long seconds = 0;
                 if (reader.time(value, seconds)) {
                   std::invoke(set, object, RWCollectableTime(seconds));
                 }
               });
  }

  // Now unless it is given: one moment for everything that a command makes, so that what it makes
  // twice is the same.
  template <class Set>
  Attribute& timeOrNow(const char* key, Set set, const char* meaning) {
    Attribute& attribute = time(key, set, meaning);
    attribute.setDefault = [set](void* object) {
      std::invoke(set, *static_cast<Object*>(object), commandTime());
    };
    return attribute;
  }

  // A list of so many times is set at once.
  template <class Set>
  Attribute& times(const char* key, std::size_t length, Set set, const char* meaning) {
    Attribute& attribute =
        add(key, Shape::kTimes, meaning,
            [set](Reader& reader, const Attribute& self, Object& object, const Value& value) {
              const auto times = elements<unsigned long>(
                  reader, value, self.length, [&](const Value& element, unsigned long& seconds) {
                    return reader.time(element, seconds);
                  });
              if (times.size() == self.length) set(object, times);
            });
    attribute.length = length;
    return attribute;
  }

  template <class Set>
  Attribute& seconds(const char* key, Set set, const char* meaning) {
    return add(key, Shape::kSeconds, meaning,
               [set](Reader& reader, const Attribute&, Object& object, const Value& value) {
                 long seconds = 0;
                 if (reader.seconds(value, seconds)) std::invoke(set, object, seconds);
               });
  }

  // `attach` hands the new part to the object, which adopts it: the object deletes it.
  template <class Part, class Attach>
  Attribute& adopted(const char* key, const Family& (*family)(), Attach attach,
                     const char* meaning) {
    return part<Part>(key, family, attach, meaning, [](Reader&, Part*) {});
  }
  // The same for a part that the object does not delete.
  template <class Part, class Attach>
  Attribute& kept(const char* key, const Family& (*family)(), Attach attach, const char* meaning) {
    return part<Part>(key, family, attach, meaning,
                      [](Reader& reader, Part* part) { reader.keep(part); });
  }
  // A list of parts that the object does not delete.
  template <class Part, class Attach>
  Attribute& parts(const char* key, const Family& (*family)(), Attach attach, const char* meaning) {
    Attribute& attribute =
        add(key, Shape::kObjects, meaning,
            [attach](Reader& reader, const Attribute& self, Object& object, const Value& value) {
              readObjects(reader, self.family(), value, [&](void* made) {
                Part* part = static_cast<Part*>(made);
                reader.keep(part);
                std::invoke(attach, object, *part);
              });
            });
    attribute.family = family;
    return attribute;
  }

 private:
  template <class Read>
  Attribute& add(const char* key, Shape shape, const char* meaning, Read read) {
    Attribute attribute;
    attribute.key = key;
    attribute.shape = shape;
    attribute.meaning = meaning;
    attribute.read = [read](Reader& reader, const Attribute& self, void* object,
                            const Value& value) {
      read(reader, self, *static_cast<Object*>(object), value);
    };
    list_.push_back(std::move(attribute));
    return list_.back();
  }

  template <class Part, class Attach, class Keep>
  Attribute& part(const char* key, const Family& (*family)(), Attach attach, const char* meaning,
                  Keep keep) {
    Attribute& attribute = add(
        key, Shape::kObject, meaning,
        [attach, keep](Reader& reader, const Attribute& self, Object& object, const Value& value) {
          void* made = readObject(reader, self.family(), value);
          if (made == nullptr) return;
          Part* part = static_cast<Part*>(made);
          keep(reader, part);
          std::invoke(attach, object, *part);
        });
    attribute.family = family;
    return attribute;
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
    for (std::size_t i = 0; i < value.elements.size(); ++i) {
      const Reader::Within within(reader, i);
      Element element{};
      if (read(value.elements[i], element)) elements.push_back(std::move(element));
    }
    return elements;
  }

  std::vector<Attribute>& list_;
};

// Adds a class to a family, which can then be made from what `make` gives: a new Object.
template <class Part, class Object, class Make, class Describe>
void addClass(Family& family, const char* kind, const char* name, const char* meaning, Make make,
              Describe describe) {
  ObjectClass added;
  added.kind = kind;
  added.name = name;
  added.meaning = meaning;
  added.make = [make](const Value& value) {
    Object* object = make(value);
    return Made{object, static_cast<Part*>(object)};
  };
  Table<Object> table(added.attributes);
  describe(table);
  family.classes.push_back(std::move(added));
}

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_ATTRIBUTES_H_
