#include "tools/starter.h"

#include <set>
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

// The same text as a comment that shows no single attribute, but what could be there instead.
std::string asComment(const std::string& text, const std::string& indent) {
  std::string comment;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = text.find('\n', begin) + 1;
    comment += indent + "//   " + text.substr(begin + indent.size(), end - begin - indent.size());
    begin = end;
  }
  return comment;
}

// The comments come first: a comma is then after each line but the last, whichever of the comments
// are taken in.
class Starter {
 public:
  explicit Starter(bool hasAll) : hasAll_(hasAll) {}

  // What is in each kind of a list is shown within the first.
  std::string object(const Family& family, const ObjectClass& own, bool isFirst,
                     unsigned int level) {
    const std::string indent = indentOf(level + 1);
    std::string text = "{\n";
    if (!own.kind.empty()) text += indent + member("kind", "\"" + own.kind + "\"") + ",\n";
    // What is shown may decide what the rest is by itself.
    std::string given;
    std::vector<const Attribute*> shown;
    for (const Attribute& attribute : own.attributes) {
      if (!isShown(attribute, isFirst)) continue;
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
      if (isShown(attribute, isFirst)) continue;
      const bool isLast = isLastPlain && i + 1 == values.size();
      text += indent + (isLast ? "" : "// ") + member(attribute.key, values[i]) +
              (isLast ? "" : ",") + note(attribute);
    }
    for (const Attribute* attribute : shown) {
      const bool isLast = attribute == shown.back();
      if (isNested(*attribute)) {
        text += indent + note(*attribute).substr(2);
        const std::string end = isLast ? "\n" : ",\n";
        const std::vector<std::string> kinds = nested(*attribute, level + 1);
        for (const std::string& kind : kinds) {
          std::string line = indent;
          line.append(member(attribute->key, kind)).append(end);
          if (&kind == &kinds.front()) {
            text += line;
          } else {
            text.append(indent).append("// or\n").append(asComment(line, indent));
          }
        }
      } else {
        text += indent + member(attribute->key, attribute->sample) + (isLast ? "" : ",") +
                note(*attribute);
      }
    }
    return text + indentOf(level) + "}";
  }

 private:
  bool isShown(const Attribute& attribute, bool isFirst) const {
    if (!isFirst && isNested(attribute) && met_.count(&attribute.family()) != 0) return false;
    return attribute.isRequired || !attribute.sample.empty() || (hasAll_ && isNested(attribute));
  }

  // Of what all objects are wanted, each kind is shown once, where the first of its family is met:
  // a list has one of each, and of a single object the others are alternatives.
  std::vector<std::string> nested(const Attribute& attribute, unsigned int level) {
    const Family& family = attribute.family();
    const bool isList = attribute.shape == Shape::kObjects;
    const bool isEachShown = hasAll_ && met_.insert(&family).second;
    std::vector<std::string> kinds;
    for (const ObjectClass& each : family.classes) {
      kinds.push_back(object(family, each, kinds.empty(), level + (isList ? 1 : 0)));
      if (!isEachShown) break;
    }
    if (!isList) return kinds;
    const std::string indent = indentOf(level + 1);
    std::string list;
    for (const std::string& kind : kinds) {
      list.append(list.empty() ? "" : ",\n").append(indent).append(kind);
    }
    return {"[\n" + list + "\n" + indentOf(level) + "]"};
  }

  bool hasAll_;
  std::set<const Family*> met_{};
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
