#include "tools/schema.h"

#include <nlohmann/json.hpp>

#include "tools/attributes.h"
#include "tools/reference.h"

namespace bkoq::tool {
namespace {

using Json = nlohmann::ordered_json;

// Hexadecimal digits of a number up to that one; all such limits are a power of two less one.
std::string hexadecimalPattern(std::int64_t most) {
  unsigned int bits = 0;
  for (auto rest = static_cast<std::uint64_t>(most); rest != 0; rest /= 2) ++bits;
  const unsigned int digits = bits / 4;
  if (bits % 4 == 0) return "^0x0*[0-9A-Fa-f]{1," + std::to_string(digits) + "}$";
  const std::string high = "[0-" + std::to_string((1U << (bits % 4)) - 1) + "]";
  const std::string low = std::to_string(digits);
  return "^0x0*([0-9A-Fa-f]{1," + low + "}|" + high + "[0-9A-Fa-f]{" + low + "})$";
}

Json hexadecimalSchema(std::int64_t most) {
  return {{"type", "string"}, {"pattern", hexadecimalPattern(most)}};
}

Json numberSchema(const Attribute& attribute) {
  Json choices = Json::array();
  if (attribute.words != nullptr) {
    Json names = Json::array();
    for (const Word& word : *attribute.words) names.push_back(word.name);
    choices.push_back({{"enum", names}});
  }
  choices.push_back(
      {{"type", "integer"}, {"minimum", attribute.least}, {"maximum", attribute.most}});
  choices.push_back(hexadecimalSchema(attribute.most));
  return {{"anyOf", choices}};
}

// A day that exists, but for February 29th; the years are those of the command.
const char* const kTimePattern =
    "^(now|(190[1-9]|19[1-9][0-9]|20[0-2][0-9]|203[0-7])-"
    "((0[13578]|1[02])-(0[1-9]|[12][0-9]|3[01])|(0[469]|11)-(0[1-9]|[12][0-9]|30)|"
    "02-(0[1-9]|[12][0-9]))"
    "([T ]([01][0-9]|2[0-3]):[0-5][0-9](:[0-5][0-9])?"
    "(Z|[+-]([01][0-9]|2[0-3]):[0-5][0-9])?)?)$";

Json timeSchema() { return {{"type", "string"}, {"pattern", kTimePattern}}; }

Json textSchema() { return {{"type", "string"}, {"pattern", "^[^\\u0000]*$"}}; }

Json listSchema(const Json& element, std::size_t length) {
  Json list = {{"type", "array"}, {"items", element}};
  if (length != 0) {
    list["minItems"] = length;
    list["maxItems"] = length;
  }
  return list;
}

// The families in the order in which they are met.
class Definitions {
 public:
  Json referenceTo(const Family& family) {
    if (!definitions_.contains(family.name)) {
      definitions_[family.name] = nullptr;  // keeps the place while its own parts are defined
      const Json definition = familySchema(family);
      definitions_[family.name] = definition;
    }
    return {{"$ref", "#/$defs/" + family.name}};
  }

  const Json& all() const { return definitions_; }

 private:
  Json familySchema(const Family& family) {
    if (family.classes.size() == 1) {
      return classSchema(family, family.classes.front(), false);
    }
    // Told by the kind, so that an editor complains about the attribute that is wrong and not
    // about every kind that it might have been.
    Json kinds = Json::array();
    Json rules = Json::array();
    for (const ObjectClass& each : family.classes) {
      kinds.push_back(each.kind);
      rules.push_back({{"if", {{"properties", {{"kind", {{"const", each.kind}}}}}}},
                       {"then", classSchema(family, each, true)}});
    }
    return {{"type", "object"},
            {"required", {"kind"}},
            {"properties", {{"kind", {{"enum", kinds}}}}},
            {"allOf", rules}};
  }

  Json classSchema(const Family& family, const ObjectClass& own, bool isKindRequired) {
    const std::vector<std::string> defaults = defaultsOf(family, own);
    Json properties = Json::object();
    if (&family == &jobs()) properties["$schema"] = {{"type", "string"}};
    Json required = Json::array();
    if (!own.kind.empty()) properties["kind"] = {{"const", own.kind}};
    if (isKindRequired) required.push_back("kind");
    for (const Attribute& attribute : own.attributes) {
      Json schema = attributeSchema(attribute);
      schema["description"] = attribute.meaning;
      if (!attribute.isRequired) {
        schema["default"] = Json::parse(defaults[&attribute - own.attributes.data()]);
      }
      properties[attribute.key] = schema;
      if (attribute.isRequired) required.push_back(attribute.key);
    }
    Json schema = {{"type", "object"}, {"description", own.meaning}, {"properties", properties}};
    if (!required.empty()) schema["required"] = required;
    schema["additionalProperties"] = false;
    return schema;
  }

  Json attributeSchema(const Attribute& attribute) {
    switch (attribute.shape) {
      case Shape::kText:
        return textSchema();
      case Shape::kTexts:
        return listSchema(textSchema(), attribute.length);
      case Shape::kFlag:
        return {{"type", "boolean"}};
      case Shape::kNumber:
        return numberSchema(attribute);
      case Shape::kNumbers:
        return listSchema(numberSchema(attribute), attribute.length);
      case Shape::kTime:
        return timeSchema();
      case Shape::kTimes:
        return listSchema(timeSchema(), attribute.length);
      case Shape::kSeconds:
        return {{"anyOf",
                 {timeSchema(),
                  {{"type", "integer"}, {"minimum", INT32_MIN}, {"maximum", INT32_MAX}},
                  hexadecimalSchema(INT32_MAX)}}};
      case Shape::kObject:
        if (attribute.isRequired) return referenceTo(attribute.family());
        return {{"anyOf", {referenceTo(attribute.family()), {{"type", "null"}}}}};
      case Shape::kObjects:
        return listSchema(referenceTo(attribute.family()), 0);
    }
    return {};
  }

  Json definitions_ = Json::object();
};

}  // namespace

std::string jobSchema() {
  Definitions definitions;
  Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                 {"title", "bkoq job file"}};
  const Json job = definitions.referenceTo(jobs());
  schema["$ref"] = job["$ref"];
  schema["$defs"] = definitions.all();
  return schema.dump(2) + "\n";
}

}  // namespace bkoq::tool
