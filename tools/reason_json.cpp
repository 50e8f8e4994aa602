#include "tools/reason_json.h"

#include "tools/source.h"

namespace bkoq::tool {

using Json = nlohmann::ordered_json;

Json placeJson(const Experiment& experiment, const GivenAttribute& given) {
  const Place place = experiment.placeOf(given);
  return {{"line", place.line},
          {"column", place.column},
          {"attribute", given.path},
          {"value", shownValue(given)}};
}

Json reasonJson(const Experiment& experiment, const FieldReason& why, BkoqLayout layout) {
  Json json = {{"layout", nameOf(layout)}, {"field", why.field->path}};
  if (!why.origin.empty()) json["origin"] = why.origin;
  json["decidedBy"] = Json::array();
  for (const Reason& reason : why.reasons) {
    Json each = placeJson(experiment, *reason.given);
    if (reason.fieldBits != 0) each["fieldBits"] = reason.fieldBits;
    if (reason.attributeBits != 0) each["attributeBits"] = reason.attributeBits;
    json["decidedBy"].push_back(each);
  }
  return json;
}

}  // namespace bkoq::tool
