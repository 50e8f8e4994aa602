#ifndef BKOQ_TOOLS_ATTRIBUTE_CASES_H_
#define BKOQ_TOOLS_ATTRIBUTE_CASES_H_

// Every attribute of a job file reaches the setter that it names. For each class that a job file
// can hold there is a table here: how an attribute is written, and what the class then gives back
// for it. Each attribute has a value of its own, so that none can pass for another.

#include <bkoq/bkoq.h>

#include <cctype>
#include <cstdint>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "tools/attributes.h"
#include "tools/moment.h"

namespace bkoq::tool {

// ------------------------------------------------------------------- what getters give, as a text

inline std::string shownTime(const RWTime& time) {
  // Whatever is made without a time gets the present one, which differs from run to run.
  if (time >= commandTime()) return "now";
  const auto seconds = static_cast<std::time_t>(time.seconds() - kSecondsBefore1970);
  std::tm fields = {};
  gmtime_r(&seconds, &fields);
  char text[32] = "";
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &fields);
  return text;
}

template <class Value>
std::string shown(const Value& value) {
  if constexpr (std::is_base_of_v<RWCString, Value>) {
    return value.data();
  } else if constexpr (std::is_base_of_v<RWTime, Value>) {
    return shownTime(value);
  } else if constexpr (std::is_same_v<std::string, Value>) {
    return value;
  } else {
    return std::to_string(static_cast<std::int64_t>(value));
  }
}

template <class First, class... Others>
std::string list(const First& first, const Others&... others) {
  return (shown(first) + ... + (", " + shown(others)));
}

// One attribute of an object that may be missing.
template <class Object, class Get>
std::string of(Object* object, Get get) {
  return object == nullptr ? "" : shown(std::invoke(get, *object));
}

// What an object hands out by a cursor; nothing for a null object.
template <class Element, class Object, class Base, class Collection>
std::vector<Element*> elements(Object* object, void (Base::*reset)(),
                               unsigned int (Base::*enumerate)(Collection*&, unsigned int)) {
  constexpr unsigned int kAll = 100;
  std::vector<Element*> elements;
  if (object == nullptr) return elements;
  (object->*reset)();
  Collection* handedOut = nullptr;
  (object->*enumerate)(handedOut, kAll);
  const std::unique_ptr<Collection> collection(handedOut);
  for (unsigned int i = 0; i < collection->entries(); ++i) {
    elements.push_back(dynamic_cast<Element*>(collection->at(i)));
  }
  return elements;
}

template <class Element>
Element* first(const std::vector<Element*>& elements) {
  return elements.empty() ? nullptr : elements.front();
}

// The same attribute of each.
template <class Element, class Get>
std::string ofEach(const std::vector<Element*>& elements, Get get) {
  std::string all;
  for (Element* element : elements) all += (all.empty() ? "" : ", ") + of(element, get);
  return all;
}

struct Credentials {
  RWCollectableString user;
  RWCollectableString password;
};
// Either half of what a class hands out at once.
template <class Object, class Get>
auto halfOf(Get get, RWCollectableString Credentials::*half) {
  return [get, half](Object& object) {
    Credentials all;
    std::invoke(get, object, all.user, all.password);
    return all.*half;
  };
}

template <class Object, class Base>
std::string filtersOf(Object& object, void (Base::*reset)(),
                      unsigned int (Base::*enumerate)(BKQFilterCol*&, unsigned int)) {
  return ofEach(elements<BKQFileFilter>(&object, reset, enumerate),
                &BKQFileFilter::getFilterString);
}

constexpr const char* kTwoFilters =
    R"([{"kind": "file", "filterString": "*.c"}, {"kind": "file", "filterString": "*.h"}])";
constexpr const char* kTwoFiltersShown = "*.c, *.h";

// ------------------------------------------------------------------------------------- the tables

struct AttributeRow {
  std::string key;
  std::string json;       // the value, as it is written
  std::string otherwise;  // what is written when others are tested; mostly nothing
  std::string value;      // what the getter then gives
  std::function<std::string(void* object)> get;
  std::map<std::string, std::string> also;  // other attributes that change with it, and to what
  bool isFlag = false;
  bool isAlias = false;  // of an attribute that must not be written beside it
};

// Adds rows for a class; a getter is a member function, or a function that takes the object.
template <class Object>
class AttributeRows {
 public:
  explicit AttributeRows(std::vector<AttributeRow>& rows) : rows_(rows) {}

  template <class Get>
  AttributeRows& text(const char* key, Get get, const std::string& value) {
    return row(key, "\"" + value + "\"", get, value);
  }
  template <class Get>
  AttributeRows& number(const char* key, Get get, std::int64_t value) {
    return row(key, std::to_string(value), get, std::to_string(value));
  }
  template <class Get>
  AttributeRows& flag(const char* key, Get get) {
    row(key, "true", get, "1");
    rows_.back().isFlag = true;
    return *this;
  }
  template <class Get>
  AttributeRows& time(const char* key, Get get, const std::string& value) {
    return text(key, get, value);
  }
  // Anything, in JSON.
  template <class Get>
  AttributeRows& row(const char* key, const std::string& json, Get get, const std::string& value) {
    AttributeRow row;
    row.key = key;
    row.json = json;
    row.value = value;
    row.get = [get](void* object) {
      return shown(std::invoke(get, *static_cast<Object*>(object)));
    };
    rows_.push_back(std::move(row));
    return *this;
  }

  // Of the row before: an attribute that cannot be left out is written so when it is not tested.
  AttributeRows& otherwise(const char* json) {
    rows_.back().otherwise = json;
    return *this;
  }
  // The row before changes another attribute, too, when that is not given.
  AttributeRows& also(const char* key, const std::string& value) {
    rows_.back().also[key] = value;
    return *this;
  }
  // The row before is another name of this attribute.
  AttributeRows& aliasOf(const char* key) {
    rows_.back().isAlias = true;
    return also(key, rows_.back().value);
  }

 private:
  std::vector<AttributeRow>& rows_;
};

// A class, and where a job holds an object of it.
struct ClassCase {
  const Family* family;
  std::string kind;
  std::string job;                     // a job file, with @ in place of the object
  std::function<void*(BKQJob&)> find;  // the object in the loaded job; null unless of the class
  std::vector<AttributeRow> rows;

  std::string name() const {
    std::string name = family->name + (kind.empty() ? "" : "_" + kind);
    for (char& c : name) {
      if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    }
    return name;
  }
};

inline std::ostream& operator<<(std::ostream& out, const ClassCase& tested) {
  return out << tested.name();
}

template <class Object, class Part, class Find, class Describe>
ClassCase makeCase(const FamilyOf<Part>& (*family)(), const char* kind, const std::string& job,
                   Find find, Describe describe) {
  ClassCase made;
  made.family = &family();
  made.kind = kind;
  made.job = job;
  made.find = [find](BKQJob& job) -> void* {
    auto* part = find(job);
    // A class that derives from it would not do.
    if (part == nullptr || typeid(*part) != typeid(Object)) return nullptr;
    return dynamic_cast<Object*>(part);
  };
  AttributeRows<Object> rows(made.rows);
  describe(rows);
  return made;
}

// ---------------------------------------------------------------------- the way to a part of a job

inline BKQDiskNode* machineOf(BKQJob& job) {
  return first(elements<BKQDiskNode>(dynamic_cast<BKQBackupJob*>(&job),
                                     &BKQBackupJob::resetSourceNodes,
                                     &BKQBackupJob::enumSourceNodes));
}

inline BKQDisk* diskOf(BKQJob& job) {
  return first(
      elements<BKQDisk>(machineOf(job), &BKQDiskNode::resetDisks, &BKQDiskNode::enumDisks));
}

inline BKQDiskItem* diskItemOf(BKQJob& job) {
  return first(
      elements<BKQDiskItem>(diskOf(job), &BKQDisk::resetDiskItems, &BKQDisk::enumDiskItems));
}

inline BKQTapeNode* tapeNodeOf(BKQJob& job) {
  return first(elements<BKQTapeNode>(dynamic_cast<BKQRestoreJob*>(&job),
                                     &BKQRestoreJob::resetSourceNodes,
                                     &BKQRestoreJob::enumSourceNodes));
}

inline BKQTape* tapeOf(BKQJob& job) {
  return first(
      elements<BKQTape>(tapeNodeOf(job), &BKQTapeNode::resetTapes, &BKQTapeNode::enumTapes));
}

inline BKQTapeItem* tapeItemOf(BKQJob& job) {
  return first(
      elements<BKQTapeItem>(tapeOf(job), &BKQTape::resetTapeItems, &BKQTape::enumTapeItems));
}

// Makes no extension, as the tape itself would.
inline BKQTapeXtension* extensionOf(BKQTape* tape) {
  return tape == nullptr || tape->tapeXtensionExists() == 0 ? nullptr : tape->getTapeXtension();
}

inline BKQRestoreNode* restoreNodeOf(BKQJob& job) {
  return first(elements<BKQRestoreNode>(dynamic_cast<BKQRestoreJob*>(&job),
                                        &BKQRestoreJob::resetDestNodes,
                                        &BKQRestoreJob::enumDestNodes));
}

inline BKQFilter* filterOf(BKQJob& job) {
  return first(elements<BKQFilter>(dynamic_cast<BKQBackupJob*>(&job), &BKQBackupJob::resetFilters,
                                   &BKQBackupJob::enumFilters));
}

inline BKQRotationSchedule* rotationOf(BKQJob& job) {
  return dynamic_cast<BKQRotationSchedule*>(job.getSchedule());
}

inline BKQJobMask* jobMaskOf(BKQJob& job) {
  BKQRotationSchedule* rotation = rotationOf(job);
  return rotation == nullptr ? nullptr : rotation->getJobMask();
}

inline BKQJobUnit* jobUnitOf(BKQJob& job) {
  return first(
      elements<BKQJobUnit>(jobMaskOf(job), &BKQJobMask::resetJobUnits, &BKQJobMask::enumJobUnits));
}

// Makes no fax, as the job itself would.
inline BKQFax* faxOf(BKQJob& job) { return job.faxInfoExists() == 0 ? nullptr : job.getFaxInfo(); }

// Makes none, as the job itself would.
inline BKQOpenFileInfo* openFileInfoOf(BKQJob& job) {
  auto* backup = dynamic_cast<BKQBackupJob*>(&job);
  return backup == nullptr || backup->openFileInfoExists() == 0 ? nullptr
                                                                : backup->getOpenFileInfo();
}

// ------------------------------------------------------------------------- the tables, by subject

void addJobs(std::vector<ClassCase>& cases);
void addNodes(std::vector<ClassCase>& cases);
void addDisks(std::vector<ClassCase>& cases);
void addTapes(std::vector<ClassCase>& cases);
void addFilters(std::vector<ClassCase>& cases);
void addSchedules(std::vector<ClassCase>& cases);
void addNotifications(std::vector<ClassCase>& cases);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_ATTRIBUTE_CASES_H_
