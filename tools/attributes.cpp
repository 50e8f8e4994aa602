#include "tools/attributes.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <unordered_set>

#include "tools/moment.h"

namespace bkoq::tool {
namespace {

constexpr const char* kKind = "kind";
constexpr std::size_t kFew = 12;

std::string listed(const std::vector<std::string>& words) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : ", ") + inQuotes(word);
  return all;
}

// The class that the value's "kind" names; null when there is none.
const ObjectClass* classFor(Reader& reader, const Family& family, const Value& value) {
  const Value* kind = value.find(kKind);
  if (family.classes.size() == 1 && (kind == nullptr || family.classes.front().kind.empty())) {
    return &family.classes.front();
  }
  std::vector<std::string> kinds;
  for (const ObjectClass& candidate : family.classes) {
    if (kind != nullptr && kind->text() == candidate.kind) return &candidate;
    kinds.push_back(candidate.kind);
  }
  if (kind == nullptr) {
    reader.problem(value, "\"kind\" is missing; it is one of " + listed(kinds));
    return nullptr;
  }
  const Reader::Within within(reader, kKind);
  std::string word;
  if (!reader.text(*kind, word)) return nullptr;
  const std::string* nearest = reader.isAdvised() ? nearestTo(word, kinds) : nullptr;
  reader.problem(*kind, inQuotes(word) + " is no kind of " + family.name +
                            (nearest == nullptr ? "; it is one of " + listed(kinds)
                                                : "; did you mean " + inQuotes(*nearest) + "?"));
  // Its attributes are then most likely meant as those of the nearest, and read as such.
  return nearest == nullptr ? nullptr : &family.classes[nearest - kinds.data()];
}

std::string attributesCommand(const Family& family, const ObjectClass& own) {
  const std::string& object = own.kind.empty() ? family.name : own.kind;
  const bool needsQuotes = object.find(' ') != std::string::npos;
  return needsQuotes ? "bkoq attributes '" + object + "'" : "bkoq attributes " + object;
}

void reportUnknown(Reader& reader, const Family& family, const ObjectClass& own,
                   const Member& member) {
  const std::string key(member.key);
  const std::string noAttribute = inQuotes(key) + " is no attribute of ";
  if (!reader.isAdvised()) {
    reader.problem(member.at, noAttribute + "this " + family.name);
    return;
  }
  std::vector<std::string> others;
  for (const ObjectClass& other : family.classes) {
    if (&other != &own && other.find(member.key) != nullptr) others.push_back(other.kind);
  }
  if (!others.empty()) {
    reader.problem(member.at, noAttribute + "a " + family.name + " of kind " + inQuotes(own.kind) +
                                  ", only of " + listed(others));
    return;
  }
  std::vector<std::string> keys;
  if (!own.kind.empty()) keys.emplace_back(kKind);
  for (const Attribute& attribute : own.attributes) keys.push_back(attribute.key);
  std::string help;
  if (const std::string* nearest = nearestTo(key, keys)) {
    help = "did you mean " + inQuotes(*nearest) + "?";
  } else if (keys.size() <= kFew) {
    help = "it has " + listed(keys);
  } else {
    help = "\"" + attributesCommand(family, own) + "\" lists them";
  }
  reader.problem(member.at, noAttribute + "this " + family.name + "; " + help);
}

}  // namespace

const RWCollectableTime& commandTime() {
  static const RWCollectableTime now(
      static_cast<unsigned long>(commandMoment() + kSecondsBefore1970));
  return now;
}

std::string jsonText(const std::string& text) {
  std::string json = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (byte < 0x20 || byte == 0x7F) {
      char escaped[8] = "";
      std::snprintf(escaped, sizeof escaped, "\\u%04X", static_cast<unsigned>(byte));
      json += escaped;
    } else {
      json += c;
    }
  }
  return json + '"';
}

std::string jsonTime(const RWTime& time) {
  // A class takes the present time for what it is not told.
  if (time >= commandTime()) return "\"now\"";
  return "\"" + momentText(static_cast<std::int64_t>(time.seconds()) - kSecondsBefore1970) + "\"";
}

const Attribute* ObjectClass::find(std::string_view key) const {
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [&](const Attribute& a) { return a.key == key; });
  return found == attributes.end() ? nullptr : &*found;
}

const ObjectClass* Family::find(std::string_view kind) const {
  const auto found = std::find_if(classes.begin(), classes.end(),
                                  [&](const ObjectClass& own) { return own.kind == kind; });
  return found == classes.end() ? nullptr : &*found;
}

const ObjectClass* Family::classOf(const Value& object) const {
  if (classes.size() == 1) return &classes.front();
  const Value* kind = object.find(kKind);
  return kind == nullptr ? nullptr : find(kind->text());
}

WrittenObject takeApart(Reader& reader, const Family& family, const Value& value) {
  WrittenObject written;
  if (!reader.object(value)) return written;
  written.own = classFor(reader, family, value);
  if (written.own == nullptr) return written;

  const std::vector<Attribute>& attributes = written.own->attributes;
  written.given.resize(attributes.size());
  std::vector<bool> seen(attributes.size());
  std::unordered_set<std::string_view> others;
  std::size_t next = 0;  // attributes are mostly written in the order of the table
  for (const Member& member : value.members()) {
    const Attribute* attribute = next < attributes.size() && attributes[next].key == member.key
                                     ? &attributes[next]
                                     : written.own->find(member.key);
    bool isFirst = false;
    if (attribute != nullptr) {
      const auto index = static_cast<std::size_t>(attribute - attributes.data());
      next = index + 1;
      isFirst = !seen[index];
      seen[index] = true;
      if (isFirst) written.given[index] = reader.given(member.value);
    } else {
      isFirst = others.insert(member.key).second;
      const bool isKind = !written.own->kind.empty() && member.key == kKind;
      // Editors look there for the schema.
      const bool isSchema = &family == &jobs() && member.key == "$schema";
      if (isFirst && isSchema) {
        std::string ignored;
        reader.text(member.value, ignored);
      } else if (isFirst && !isKind) {
        reportUnknown(reader, family, *written.own, member);
      }
    }
    if (!isFirst) {
      reader.problem(member.at, inQuotes(std::string(member.key)) + " is given twice");
    }
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
