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

void* readObject(Reader& reader, const Family& family, const Value& value) {
  if (!reader.object(value)) return nullptr;
  const ObjectClass* own = classOf(reader, family, value);
  if (own == nullptr) return nullptr;

  std::set<std::string> seen;
  for (const Member& member : value.members) {
    if (!seen.insert(member.key).second) {
      reader.problem(member.place, inQuotes(member.key) + " is given twice");
    } else if (own->find(member.key) == nullptr && (own->kind.empty() || member.key != "kind")) {
      reportUnknown(reader, family, *own, member);
    }
  }

  const Made made = own->make(value);
  for (const Attribute& attribute : own->attributes) {
    const Value* given = value.find(attribute.key.c_str());
    if (given != nullptr) {
      const Reader::Within within(reader, attribute.key);
      attribute.read(reader, attribute, made.object, *given);
    } else if (attribute.isRequired) {
      reader.problem(value, inQuotes(attribute.key) + " is missing");
    } else if (attribute.setDefault) {
      attribute.setDefault(made.object);
    }
  }
  return made.part;
}

void readObjects(Reader& reader, const Family& family, const Value& value,
                 const std::function<void(void* part)>& take) {
  if (!reader.list(value, 0)) return;
  for (std::size_t i = 0; i < value.elements.size(); ++i) {
    const Reader::Within within(reader, i);
    void* part = readObject(reader, family, value.elements[i]);
    if (part != nullptr) take(part);
  }
}

}  // namespace bkoq::tool
