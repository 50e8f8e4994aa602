#include "tools/schema.h"

#include <nlohmann/json.hpp>

#include "tools/attributes.h"

namespace bkoq::tool {
namespace {

using Json = nlohmann::ordered_json;

Json numberSchema(const Attribute& attribute) {
  Json choices = Json::array();
  if (attribute.words != nullptr) {
    Json names = Json::array();
    for (const Word& word : *attribute.words) names.push_back(word.name);
    choices.push_back({{"enum", names}});
  }
  choices.push_back(
      {{"type", "integer"}, {"minimum", attribute.least}, {"maximum", attribute.most}});
  choices.push_back({{"type", "string"}, {"pattern", "^0x[0-9A-Fa-f]+$"}});
  return {{"anyOf", choices}};
}

const char* const kTimePattern =
    "^[0-9]{4}-[0-9]{2}-[0-9]{2}([T ][0-9]{2}:[0-9]{2}(:[0-9]{2})?(Z|[+-][0-9]{2}:[0-9]{2})?)?$";

Json timeSchema() { return {{"type", "string"}, {"pattern", kTimePattern}}; }

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
    if (family.classes.size() == 1) return classSchema(family.classes.front(), false);
    // Told by the kind, so that an editor complains about the attribute that is wrong and not
    // about every kind that it might have been.
    Json kinds = Json::array();
    Json rules = Json::array();
    for (const ObjectClass& each : family.classes) {
      kinds.push_back(each.kind);
      rules.push_back({{"if", {{"properties", {{"kind", {{"const", each.kind}}}}}}},
                       {"then", classSchema(each, true)}});
    }
    return {{"type", "object"},
            {"required", {"kind"}},
            {"properties", {{"kind", {{"enum", kinds}}}}},
            {"allOf", rules}};
  }

  Json classSchema(const ObjectClass& own, bool isKindRequired) {
    Json properties = Json::object();
    Json required = Json::array();
    if (!own.kind.empty()) properties["kind"] = {{"const", own.kind}};
    if (isKindRequired) required.push_back("kind");
    for (const Attribute& attribute : own.attributes) {
      Json schema = attributeSchema(attribute);
      schema["description"] = attribute.meaning;
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
        return {{"type", "string"}};
      case Shape::kTexts:
        return listSchema({{"type", "string"}}, attribute.length);
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
                  {{"type", "string"}, {"pattern", "^0x[0-9A-Fa-f]+$"}}}}};
      case Shape::kObject:
        return referenceTo(attribute.family());
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
