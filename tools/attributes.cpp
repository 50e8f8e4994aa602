#include "tools/attributes.h"

#include <algorithm>
#include <set>

namespace bkoq::tool {
namespace {

// The class that the value's "kind" names; null when there is none.
const ObjectClass* classOf(Reader& reader, const Family& family, const Value& value) {
  const Value* kind = value.find("kind");
  if (family.classes.size() == 1 && (kind == nullptr || family.classes.front().kind.empty())) {
    return &family.classes.front();
  }
  std::vector<std::string> kinds;
  std::string all;
  for (const ObjectClass& candidate : family.classes) {
    kinds.push_back(candidate.kind);
    all += (all.empty() ? "" : ", ") + inQuotes(candidate.kind);
  }
  if (kind == nullptr) {
    reader.problem(value, "\"kind\" is missing; it is one of " + all);
    return nullptr;
  }
  const Reader::Within within(reader, "kind");
  std::string word;
  if (!reader.text(*kind, word)) return nullptr;
  for (const ObjectClass& candidate : family.classes) {
    if (candidate.kind == word) return &candidate;
  }
  const std::string* nearest = nearestTo(word, kinds);
  reader.problem(*kind, inQuotes(word) + " is no kind of " + family.name +
                            (nearest == nullptr ? "; it is one of " + all
                                                : "; did you mean " + inQuotes(*nearest) + "?"));
  // Its attributes are then most likely meant as those of the nearest, and read as such.
  return nearest == nullptr ? nullptr : &family.classes[nearest - kinds.data()];
}

void reportUnknown(Reader& reader, const Family& family, const ObjectClass& own,
                   const Member& member) {
  std::string others;
  for (const ObjectClass& other : family.classes) {
    if (&other == &own || other.find(member.key) == nullptr) continue;
    others += (others.empty() ? "" : ", ") + inQuotes(other.kind);
  }
  if (!others.empty()) {
    reader.problem(member.place, inQuotes(member.key) + " is no attribute of a " + family.name +
                                     " of kind " + inQuotes(own.kind) + ", only of " + others);
    return;
  }
  std::vector<std::string> keys;
  if (!own.kind.empty()) keys.emplace_back("kind");
  for (const Attribute& attribute : own.attributes) keys.push_back(attribute.key);
  const std::string* nearest = nearestTo(member.key, keys);
  reader.problem(member.place,
                 inQuotes(member.key) + " is no attribute of this " + family.name +
                     (nearest == nullptr ? "; \"bkoq new KIND\" shows those of each kind of job"
                                         : "; did you mean " + inQuotes(*nearest) + "?"));
}

}  // namespace

const RWCollectableTime& commandTime() {
  static const RWCollectableTime now;
  return now;
}

const Attribute* ObjectClass::find(const std::string& key) const {
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [&](const Attribute& a) { return a.key == key; });
  return found == attributes.end() ? nullptr : &*found;
}

WrittenObject takeApart(Reader& reader, const Family& family, const Value& value) {
  WrittenObject written;
  if (!reader.object(value)) return written;
  written.own = classOf(reader, family, value);
  if (written.own == nullptr) return written;

  const std::vector<Attribute>& attributes = written.own->attributes;
  written.given.resize(attributes.size());
  std::set<std::string> others;
  for (const Member& member : value.members) {
    const Attribute* attribute = written.own->find(member.key);
    bool isFirst = false;
    if (attribute != nullptr) {
      const Value*& given = written.given[static_cast<std::size_t>(attribute - attributes.data())];
      isFirst = given == nullptr;
      if (isFirst) given = &member.value;
    } else {
      isFirst = others.insert(member.key).second;
      if (isFirst && (written.own->kind.empty() || member.key != "kind")) {
        reportUnknown(reader, family, *written.own, member);
      }
    }
    if (!isFirst) reader.problem(member.place, inQuotes(member.key) + " is given twice");
  }
  return written;
}

void reportMissing(Reader& reader, const Attribute& attribute, const Value& value) {
  reader.problem(value, inQuotes(attribute.key) + " is missing");
}

const std::vector<const Family*>& families() {
  static const std::vector<const Family*> all = {&jobs(),
                                                 &machines(),
                                                 &tapeNodes(),
                                                 &restoreNodes(),
                                                 &disks(),
                                                 &diskItems(),
                                                 &tapes(),
                                                 &tapeItems(),
                                                 &tapeExtensions(),
                                                 &filters(),
                                                 &schedules(),
                                                 &customSchedules(),
                                                 &rotationSchedules(),
                                                 &cruiseSchedules(),
                                                 &jobMasks(),
                                                 &jobUnits(),
                                                 &exceptionDays(),
                                                 &spans(),
                                                 &grooms(),
                                                 &faxes(),
                                                 &emails(),
                                                 &printQueues(),
                                                 &openFileInfos()};
  return all;
}

}  // namespace bkoq::tool
