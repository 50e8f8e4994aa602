#include "tools/starter.h"

#include <algorithm>

namespace bkoq::tool {
namespace {

std::string indentOf(unsigned int level) { return std::string(2 * std::size_t{level}, ' '); }

std::string repeated(const std::string& element, std::size_t length) {
  std::string list = "[";
  for (std::size_t i = 0; i < length; ++i) list += (i == 0 ? "" : ", ") + element;
  return list + "]";
}

bool isNested(const Attribute& attribute) {
  return attribute.shape == Shape::kObject || attribute.shape == Shape::kObjects;
}

std::string member(const std::string& key, const std::string& value) {
  return "\"" + key + "\": " + value;
}

std::string plainValue(const Attribute& attribute);

// An object of the family on one line, with what is required.
std::string shortObject(const Family& family) {
  const ObjectClass& own = family.classes.front();
  std::string text;
  if (family.classes.size() > 1) text = member("kind", "\"" + own.kind + "\"");
  for (const Attribute& attribute : own.attributes) {
    if (!attribute.isRequired) continue;
    text += (text.empty() ? "" : ", ") + member(attribute.key, plainValue(attribute));
  }
  return "{" + text + "}";
}

// A value on one line that is valid for the attribute.
std::string plainValue(const Attribute& attribute) {
  if (!attribute.sample.empty() && !isNested(attribute)) return attribute.sample;
  const std::string number = std::to_string(std::max<std::int64_t>(attribute.least, 0));
  switch (attribute.shape) {
    case Shape::kText:
      return attribute.key.find("Filter") != std::string::npos ? "\"1-5\"" : "\"\"";
    case Shape::kTexts:
      return repeated("\"\"", std::max<std::size_t>(attribute.length, 1));
    case Shape::kFlag:
      return "false";
    case Shape::kNumber:
      return attribute.words != nullptr ? "\"" + std::string(attribute.words->front().name) + "\""
                                        : number;
    case Shape::kNumbers:
      return repeated(number, attribute.length);
    case Shape::kTime:
    case Shape::kSeconds:
      return "\"2004-03-01T21:00:00\"";
    case Shape::kTimes:
      return repeated("\"2004-03-01T21:00:00\"", attribute.length);
    case Shape::kObject:
      return shortObject(attribute.family());
    case Shape::kObjects:
      return "[" + shortObject(attribute.family()) + "]";
  }
  return "null";
}

std::string nameList(const std::vector<ObjectClass>& classes) {
  std::string names;
  for (const ObjectClass& each : classes) names += (names.empty() ? "" : ", ") + each.kind;
  return names;
}

std::string note(const Attribute& attribute) {
  std::string text = attribute.meaning;
  if (isNested(attribute) && attribute.family().classes.size() > 1) {
    text += "; kinds: " + nameList(attribute.family().classes);
  }
  return "  // " + text + "\n";
}

// The comments come first: a comma then stands behind each line but the last, whichever of the
// comments are taken in.
std::string object(const ObjectClass& own, bool isKindShown, unsigned int level);

std::string shownValue(const Attribute& attribute, unsigned int level) {
  if (!isNested(attribute)) return plainValue(attribute);
  const Family& family = attribute.family();
  const bool isList = attribute.shape == Shape::kObjects;
  std::string text =
      object(family.classes.front(), family.classes.size() > 1, level + (isList ? 1 : 0));
  if (!isList) return text;
  return "[\n" + indentOf(level + 1) + text + "\n" + indentOf(level) + "]";
}

std::string object(const ObjectClass& own, bool isKindShown, unsigned int level) {
  const std::string indent = indentOf(level + 1);
  std::string text = "{\n";
  if (isKindShown) text += indent + member("kind", "\"" + own.kind + "\"") + ",\n";
  std::vector<const Attribute*> shown;
  for (const Attribute& attribute : own.attributes) {
    if (attribute.isRequired || !attribute.sample.empty()) {
      shown.push_back(&attribute);
    } else {
      text += indent + "// " + member(attribute.key, plainValue(attribute)) + "," + note(attribute);
    }
  }
  for (const Attribute* attribute : shown) {
    const bool isLast = attribute == shown.back();
    if (isNested(*attribute)) {
      const std::string comment = note(*attribute);
      text += indent + comment.substr(2);
      text += indent + member(attribute->key, shownValue(*attribute, level + 1)) +
              (isLast ? "\n" : ",\n");
    } else {
      text += indent + member(attribute->key, plainValue(*attribute)) + (isLast ? "" : ",") +
              note(*attribute);
    }
  }
  return text + indentOf(level) + "}";
}

}  // namespace

std::string starterFile(const ObjectClass& kind) {
  return "// " + kind.meaning + "\n// Remove the \"//\" in front of an attribute to set it.\n" +
         object(kind, true, 0) + "\n";
}

}  // namespace bkoq::tool
