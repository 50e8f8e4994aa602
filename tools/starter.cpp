#include "tools/starter.h"

#include <vector>

#include "tools/reference.h"

namespace bkoq::tool {
namespace {

std::string indentOf(unsigned int level) { return std::string(2 * std::size_t{level}, ' '); }

bool isNested(const Attribute& attribute) { return static_cast<bool>(attribute.family); }

std::string member(const std::string& key, const std::string& value) {
  return "\"" + key + "\": " + value;
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

// The comments come first: a comma is then after each line but the last, whichever of the comments
// are taken in.
class Starter {
 public:
  explicit Starter(bool hasAll) : hasAll_(hasAll) {}

  std::string object(const Family& family, const ObjectClass& own, bool isKindShown,
                     unsigned int level) const {
    const std::string indent = indentOf(level + 1);
    std::string text = "{\n";
    if (isKindShown) text += indent + member("kind", "\"" + own.kind + "\"") + ",\n";
    // What is shown may decide what the rest is by itself.
    std::string given;
    std::vector<const Attribute*> shown;
    for (const Attribute& attribute : own.attributes) {
      if (!isShown(attribute)) continue;
      shown.push_back(&attribute);
      if (!isNested(attribute)) {
        given += (given.empty() ? "" : ", ") + member(attribute.key, attribute.sample);
      }
    }
    const std::vector<std::string> values = family.valuesOf(own, objectText(own, given));
    // The last line has no comma and must be there.
    const bool isLastPlain = shown.empty();
    for (std::size_t i = 0; i < values.size(); ++i) {
      const Attribute& attribute = own.attributes[i];
      if (isShown(attribute)) continue;
      const bool isLast = isLastPlain && i + 1 == values.size();
      text += indent + (isLast ? "" : "// ") + member(attribute.key, values[i]) +
              (isLast ? "" : ",") + note(attribute);
    }
    for (const Attribute* attribute : shown) {
      const bool isLast = attribute == shown.back();
      if (isNested(*attribute)) {
        text += indent + note(*attribute).substr(2);
        text += indent + member(attribute->key, nested(*attribute, level + 1)) +
                (isLast ? "\n" : ",\n");
      } else {
        text += indent + member(attribute->key, attribute->sample) + (isLast ? "" : ",") +
                note(*attribute);
      }
    }
    return text + indentOf(level) + "}";
  }

 private:
  bool isShown(const Attribute& attribute) const {
    return attribute.isRequired || !attribute.sample.empty() || (hasAll_ && isNested(attribute));
  }

  std::string nested(const Attribute& attribute, unsigned int level) const {
    const Family& family = attribute.family();
    const bool isList = attribute.shape == Shape::kObjects;
    std::string text = object(family, family.classes.front(), !family.classes.front().kind.empty(),
                              level + (isList ? 1 : 0));
    if (!isList) return text;
    return "[\n" + indentOf(level + 1) + text + "\n" + indentOf(level) + "]";
  }

  bool hasAll_;
};

}  // namespace

std::string starterFile(const ObjectClass& kind, bool hasAll) {
  return "// " + kind.meaning +
         "\n// A line after \"//\" shows what an attribute is by itself: remove the \"//\" to "
         "change "
         "it.\n// What each means, and which record fields it reaches: bkoq attributes.\n" +
         Starter(hasAll).object(jobs(), kind, true, 0) + "\n";
}

}  // namespace bkoq::tool
