#include "tools/reference.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <unordered_map>
#include <utility>

#include "tools/experiment.h"
#include "tools/explain.h"

namespace bkoq::tool {
namespace {

struct Described {
  const Family* family;
  const ObjectClass* own;
};

std::string nameOf(const Described& object) {
  return object.own->kind.empty() ? object.family->name : object.own->kind;
}

// In which record fields an attribute was found, in each layout.
using Fields = std::map<std::string, std::set<std::string>[2]>;

std::string member(const std::string& key, const std::string& value) {
  return "\"" + key + "\": " + value;
}

// How much is given in a job that an attribute is tried in. None of them shows all: what one
// attribute decides may be hidden by another that is given too, or needs another.
enum class Given : std::uint8_t { kAll, kWantedObject, kWantedAttribute };

class Surroundings {
 public:
  Surroundings(const Described& wanted, Given given, const Attribute* attribute)
      : wanted_(wanted), given_(given), attribute_(attribute) {}

  std::string object(const Family& family, const ObjectClass& own, int level) const {
    std::string members;
    const auto add = [&](const std::string& each) {
      members += (members.empty() ? "" : ", ") + each;
    };
    if (!own.kind.empty()) add(member("kind", "\"" + own.kind + "\""));
    const std::vector<std::string> defaults = defaultsOf(family, own);
    for (std::size_t i = 0; i < own.attributes.size(); ++i) {
      const Attribute& attribute = own.attributes[i];
      if (isGiven(own, attribute)) add(member(attribute.key, value(attribute, defaults[i], level)));
    }
    return "{" + members + "}";
  }

 private:
  bool isGiven(const ObjectClass& own, const Attribute& attribute) const {
    if (attribute.isRequired) return true;
    if (attribute.key == "instanceID" && attribute_ != &attribute) {
      return false;  // another name of jobNumber
    }
    if (given_ == Given::kAll) return true;
    if (&own != wanted_.own) return static_cast<bool>(attribute.family);
    return given_ == Given::kWantedObject || attribute_ == &attribute;
  }

  std::string value(const Attribute& attribute, const std::string& byItself, int level) const {
    if (attribute.family) {
      const Family& inner = attribute.family();
      const ObjectClass& chosen = &inner == wanted_.family ? *wanted_.own : inner.classes.front();
      const std::string text = object(inner, chosen, level + 1);
      return attribute.shape == Shape::kObjects ? "[" + text + "]" : text;
    }
    if (!attribute.sample.empty()) return attribute.sample;
    const bool isAnyText = attribute.shape == Shape::kText && attribute.texts[0] == nullptr;
    if (isAnyText && byItself == "\"\"") return "\"x\"";
    // Two that meet in one field are to be told apart.
    if (attribute.shape == Shape::kSeconds) return std::to_string(86400 - level);
    return byItself;
  }

  const Described& wanted_;
  Given given_;
  const Attribute* attribute_;
};

bool holds(const Family& family, const Family& wanted) {
  if (&family == &wanted) return true;
  for (const ObjectClass& own : family.classes) {
    for (const Attribute& attribute : own.attributes) {
      if (attribute.family && holds(attribute.family(), wanted)) return true;
    }
  }
  return false;
}

void tryJob(const ObjectClass& job, const Described& wanted, Given variant,
            const Attribute* attribute, Fields& found) {
  Problems problems;
  const LoadedJob loaded =
      readJob(Surroundings(wanted, variant, attribute).object(jobs(), job, 0), problems);
  if (!problems.empty()) return;
  const Selection all;
  Experiment experiment(loaded, all);
  const std::vector<BkoqLayout> layouts = {BKOQ_LAYOUT_CURRENT, BKOQ_LAYOUT_PREVIOUS};
  std::unordered_map<std::string, std::string> names[2];
  for (const BkoqLayout layout : layouts) {
    for (const RecordField& field : experiment.fields(layout)) {
      names[indexOf(layout)][field.path] = std::string(field.record) + "." + field.name;
    }
  }
  for (const GivenAttribute& given : experiment.attributes()) {
    const GivenObject& object = experiment.objects()[static_cast<std::size_t>(given.object)];
    if (object.own != wanted.own) continue;
    if (attribute != nullptr && given.attribute != attribute) continue;
    const Decided decided = whatItDecides(experiment, given, layouts);
    for (const BkoqLayout layout : layouts) {
      for (const std::string& path : decided.fields[indexOf(layout)]) {
        const auto name = names[indexOf(layout)].find(path);
        if (name == names[indexOf(layout)].end()) continue;
        found[given.attribute->key][indexOf(layout)].insert(name->second);
      }
    }
  }
}

void tryJob(const ObjectClass& job, const Described& wanted, Fields& found) {
  tryJob(job, wanted, Given::kAll, nullptr, found);
  tryJob(job, wanted, Given::kWantedObject, nullptr, found);
  for (const Attribute& attribute : wanted.own->attributes) {
    tryJob(job, wanted, Given::kWantedAttribute, &attribute, found);
  }
}

Fields fieldsOf(const Described& wanted) {
  Fields found;
  // One job of each that can hold the object, as far as they differ in where they hold it.
  std::set<std::string> seen;
  for (const ObjectClass& job : jobs().classes) {
    std::string places;
    for (const Attribute& attribute : job.attributes) {
      if (attribute.family && holds(attribute.family(), *wanted.family)) {
        places += attribute.key + "=" + attribute.family().name + " ";
      }
    }
    const bool isMeant = wanted.family == &jobs() ? &job == wanted.own : !places.empty();
    if (isMeant && seen.insert(places).second) tryJob(job, wanted, found);
  }
  return found;
}

std::vector<Described> describedBy(const std::vector<std::string>& objects, std::string& unknown) {
  std::vector<Described> all;
  std::set<const Family*> seen;
  std::set<std::string> names;
  for (const Family* family : families()) {
    for (const ObjectClass& own : family->classes) {
      // A class that several places take is described once.
      const Described object = {family, &own};
      if (names.insert(own.name).second) all.push_back(object);
    }
  }
  if (objects.empty()) return all;
  std::vector<Described> chosen;
  for (const std::string& name : objects) {
    const std::size_t before = chosen.size();
    for (const Described& object : all) {
      if (name == nameOf(object) || name == object.family->name || name == object.own->name) {
        chosen.push_back(object);
      }
    }
    if (chosen.size() == before) unknown = name;
  }
  return chosen;
}

std::string typeOf(const Attribute& attribute) {
  const std::string length = attribute.length == 0 ? "" : std::to_string(attribute.length) + " ";
  switch (attribute.shape) {
    case Shape::kText:
      return "text";
    case Shape::kTexts:
      return "list of " + length + "texts";
    case Shape::kFlag:
      return "true or false";
    case Shape::kNumber:
      return "number";
    case Shape::kNumbers:
      return "list of " + length + "numbers";
    case Shape::kTime:
      return "time";
    case Shape::kTimes:
      return "list of " + length + "times";
    case Shape::kSeconds:
      return "time or seconds";
    case Shape::kObject:
      return attribute.family().name;
    case Shape::kObjects:
      return "list of " + attribute.family().name + "s";
  }
  return "";
}

bool hasRange(const Attribute& attribute) {
  return attribute.shape == Shape::kNumber || attribute.shape == Shape::kNumbers;
}

std::string rangeOf(const Attribute& attribute) {
  if (!hasRange(attribute)) return "";
  std::string words;
  if (attribute.words != nullptr) {
    for (const Word& word : *attribute.words) words += std::string(word.name) + ", ";
    words += "or ";
  }
  return words + std::to_string(attribute.least) + " to " + std::to_string(attribute.most);
}

std::string listed(const std::set<std::string>& words) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : ", ") + word;
  return all;
}

// "BKNODE.pszNodeName", and of the previous layout what is called otherwise or differs.
std::string fieldsText(const std::set<std::string> (&fields)[2]) {
  if (fields[0].empty() && fields[1].empty()) return "in no record";
  std::set<std::string> renamed;
  for (std::string name : fields[1]) {
    const std::size_t suffix = name.find("_OLD.");
    if (suffix != std::string::npos) name.erase(suffix, 4);
    renamed.insert(name);
  }
  if (renamed == fields[0]) return listed(fields[0]);
  return (fields[0].empty() ? "in no record" : listed(fields[0])) +
         "; previous layout: " + (fields[1].empty() ? "in no record" : listed(fields[1]));
}

std::string folded(const std::string& text, std::size_t indent, unsigned int width) {
  std::string out;
  std::size_t column = indent;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    const std::string word = text.substr(at, end - at);
    if (column > indent && column + 1 + word.size() > width) {
      out += "\n" + std::string(indent, ' ');
      column = indent;
    } else if (column > indent) {
      out += ' ';
      ++column;
    }
    out += word;
    column += word.size();
    at = end + 1;
  }
  return out;
}

}  // namespace

std::vector<std::string> objectNames() {
  std::string unknown;
  std::vector<std::string> names;
  for (const Described& object : describedBy({}, unknown)) names.push_back(nameOf(object));
  return names;
}

std::vector<std::string> defaultsOf(const Family& family, const ObjectClass& own) {
  return family.valuesOf(own, objectText(own, ""));
}

std::string objectText(const ObjectClass& own, const std::string& members) {
  std::string text;
  const auto add = [&](const std::string& each) { text += (text.empty() ? "" : ", ") + each; };
  if (!own.kind.empty()) add(member("kind", "\"" + own.kind + "\""));
  for (const Attribute& attribute : own.attributes) {
    const bool isGiven = members.find("\"" + attribute.key + "\":") != std::string::npos;
    if (attribute.isRequired && !isGiven) add(member(attribute.key, sampleOf(attribute)));
  }
  if (!members.empty()) add(members);
  return "{" + text + "}";
}

std::string sampleOf(const Attribute& attribute) {
  if (!attribute.family) return attribute.sample;
  const std::string object = objectText(attribute.family().classes.front(), "");
  return attribute.shape == Shape::kObjects ? "[" + object + "]" : object;
}

std::string attributesText(const std::vector<std::string>& objects, unsigned int width,
                           std::string& unknown) {
  constexpr unsigned int kUsualWidth = 100;
  constexpr std::size_t kIndent = 6;
  if (width == 0) width = kUsualWidth;
  std::string text;
  for (const Described& object : describedBy(objects, unknown)) {
    const Fields fields = fieldsOf(object);
    const std::vector<std::string> defaults = defaultsOf(*object.family, *object.own);
    text += (text.empty() ? "" : "\n") + object.family->name +
            (object.own->kind.empty() ? "" : " \"" + object.own->kind + "\"") + ": " +
            object.own->meaning + " (" + object.own->name + ")\n";
    for (std::size_t i = 0; i < defaults.size(); ++i) {
      const Attribute& attribute = object.own->attributes[i];
      std::string first = typeOf(attribute);
      if (hasRange(attribute)) first += ", " + rangeOf(attribute);
      first += attribute.isRequired ? "; required" : "; default " + defaults[i];
      text += "  " + attribute.key + "\n" + std::string(kIndent, ' ') +
              folded(first, kIndent, width) + "\n" + std::string(kIndent, ' ') +
              folded(attribute.meaning, kIndent, width) + "\n";
      static const std::set<std::string> nowhere[2];
      const auto found = fields.find(attribute.key);
      text += std::string(kIndent, ' ') +
              folded(found == fields.end() ? fieldsText(nowhere) : fieldsText(found->second),
                     kIndent, width) +
              "\n";
    }
  }
  return text;
}

std::string attributesJson(const std::vector<std::string>& objects, std::string& unknown) {
  using Json = nlohmann::ordered_json;
  Json document = {{"format", "bkoq-attributes"}, {"version", 1}, {"objects", Json::array()}};
  for (const Described& object : describedBy(objects, unknown)) {
    Fields fields = fieldsOf(object);
    const std::vector<std::string> defaults = defaultsOf(*object.family, *object.own);
    Json attributes = Json::array();
    for (std::size_t i = 0; i < defaults.size(); ++i) {
      const Attribute& attribute = object.own->attributes[i];
      Json row = {{"key", attribute.key}, {"type", typeOf(attribute)}};
      if (hasRange(attribute)) {
        row["least"] = attribute.least;
        row["most"] = attribute.most;
      }
      if (attribute.words != nullptr) {
        for (const Word& word : *attribute.words) row["words"].push_back(word.name);
      }
      row["required"] = attribute.isRequired;
      if (!attribute.isRequired) row["default"] = Json::parse(defaults[i]);
      row["meaning"] = attribute.meaning;
      row["fields"] = {{"current", fields[attribute.key][0]},
                       {"previous", fields[attribute.key][1]}};
      attributes.push_back(row);
    }
    document["objects"].push_back({{"family", object.family->name},
                                   {"kind", object.own->kind},
                                   {"class", object.own->name},
                                   {"meaning", object.own->meaning},
                                   {"attributes", attributes}});
  }
  return document.dump(2) + "\n";
}

}  // namespace bkoq::tool
