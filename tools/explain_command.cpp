#include <algorithm>
#include <cctype>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>

#include "kit/pattern.h"
#include "tools/commands.h"
#include "tools/explain.h"
#include "tools/problems.h"
#include "tools/progress.h"
#include "tools/reason_json.h"
#include "tools/source.h"

namespace bkoq::tool {
namespace {

using Json = nlohmann::ordered_json;

// "pSourceNodes[0].x" and "pSourceNodes[1].x" are two of "pSourceNodes[*].x".
std::string withoutIndexes(const std::string& path) {
  std::string pattern;
  for (std::size_t i = 0; i < path.size(); ++i) {
    pattern += path[i];
    if (path[i] != '[') continue;
    pattern += '*';
    while (i + 1 < path.size() && path[i + 1] != ']') ++i;
  }
  return pattern;
}

std::string listed(const std::vector<std::string>& paths) {
  constexpr std::size_t kFew = 3;
  std::vector<std::string> order;
  std::map<std::string, std::vector<std::string>> alike;
  for (const std::string& path : paths) {
    std::vector<std::string>& group = alike[withoutIndexes(path)];
    if (group.empty()) order.push_back(withoutIndexes(path));
    group.push_back(path);
  }
  std::string text;
  for (const std::string& pattern : order) {
    const std::vector<std::string>& group = alike[pattern];
    if (group.size() > kFew) {
      text += (text.empty() ? "" : ", ") + pattern + " (" + std::to_string(group.size()) + ")";
      continue;
    }
    for (const std::string& path : group) text += (text.empty() ? "" : ", ") + path;
  }
  return text;
}

std::string decidedText(const Decided& decided, const std::vector<BkoqLayout>& layouts) {
  std::string text;
  const std::string current = listed(decided.fields[0]);
  const std::string previous = listed(decided.fields[1]);
  if (current.empty() && previous.empty()) {
    text = layouts.size() == 1 ? "reaches no record of this layout" : "reaches no record";
  } else if (layouts.size() == 1 || current == previous) {
    text = current.empty() ? previous : current;
  } else if (current.empty()) {
    text = "only in the previous layout: " + previous;
  } else if (previous.empty()) {
    text = "only in the current layout: " + current;
  } else {
    text = current + "; in the previous layout: " + previous;
  }
  return decided.isDefault ? text + "; same as the default" : text;
}

Status explainField(Experiment& experiment, const Request& request,
                    const std::vector<BkoqLayout>& layouts, const std::string& file) {
  Json document = {{"format", "bkoq-explain"}, {"version", 1}, {"fields", Json::array()}};
  std::string text;
  bool isFound = false;
  for (const BkoqLayout layout : layouts) {
    const std::vector<const RecordField*> fields = fieldsAt(experiment, request.field, layout);
    isFound = isFound || !fields.empty();
    for (const FieldReason& why : whyFieldsHold(experiment, fields, layout)) {
      if (request.json) {
        document["fields"].push_back(reasonJson(experiment, why, layout));
      } else {
        text += (layouts.size() > 1 ? std::string(nameOf(layout)) + " layout: " : "") +
                printable(reasonText(experiment, why, file)) + "\n";
      }
    }
  }
  if (!isFound)
    return fail("there is no field \"" + request.field + "\" in the records of " + file);
  print(request.json ? printableJson(document.dump(2)) + "\n" : text);
  return kDone;
}

std::vector<std::string> pathsOf(const Experiment& experiment) {
  std::vector<std::string> paths;
  for (const GivenAttribute& given : experiment.attributes()) paths.push_back(given.path);
  return paths;
}

Status explainAttributes(Experiment& experiment, const Request& request,
                         const std::vector<BkoqLayout>& layouts, const std::string& file) {
  std::vector<const GivenAttribute*> wanted;
  if (request.attribute.empty()) {
    for (const GivenAttribute& given : experiment.attributes()) wanted.push_back(&given);
  } else {
    for (const GivenAttribute& given : experiment.attributes()) {
      if (kit::matches(request.attribute.c_str(), given.path.c_str())) wanted.push_back(&given);
    }
  }
  if (wanted.empty() && !request.attribute.empty()) {
    const std::vector<std::string> paths = pathsOf(experiment);
    const std::string* nearest = nearestTo(request.attribute, paths);
    return fail(file + " gives no attribute \"" + request.attribute + "\"" +
                (nearest == nullptr ? "" : "; did you mean \"" + *nearest + "\"?"));
  }
  std::stable_sort(wanted.begin(), wanted.end(),
                   [](const GivenAttribute* a, const GivenAttribute* b) { return a->at < b->at; });
  Json document = {{"format", "bkoq-explain"}, {"version", 1}, {"attributes", Json::array()}};
  Progress progress(wanted.size());
  std::string text;
  const std::vector<Decided> all = whatTheyDecide(
      experiment, wanted, layouts, [&progress](std::size_t done) { progress.at(done); });
  for (const Decided& decided : all) {
    const GivenAttribute& given = *decided.given;
    if (request.json) {
      Json each = placeJson(experiment, given);
      for (const BkoqLayout layout : layouts) {
        each["fields"][nameOf(layout)] = decided.fields[indexOf(layout)];
      }
      each["sameAsDefault"] = decided.isDefault;
      document["attributes"].push_back(each);
    } else {
      text +=
          printable(file + ":" + std::to_string(experiment.placeOf(given).line) + ": " +
                    given.path + " " + shownValue(given) + ": " + decidedText(decided, layouts)) +
          "\n";
    }
  }
  print(request.json ? printableJson(document.dump(2)) + "\n" : text);
  return kDone;
}

}  // namespace

Status explainCommand(const Request& request) {
  const std::string& file = request.files.front();
  std::string content;
  if (!readFile(file, content)) return kFailed;
  const LoadedJob loaded = loadJob(content, file);
  if (loaded.job == nullptr) return kFailed;
  const std::vector<BkoqLayout> layouts = layoutsOf(!request.layout.empty()  ? request.layout
                                                    : !request.field.empty() ? "current"
                                                                             : "both");
  const Selection all;
  Experiment experiment(loaded, all);
  for (const BkoqLayout layout : layouts) {
    if (experiment.succeeded(layout)) continue;
    fail(shownName(file) + ": the conversion to the " + nameOf(layout) + " layout failed");
    return kDiffers;
  }
  return request.field.empty() ? explainAttributes(experiment, request, layouts, shownName(file))
                               : explainField(experiment, request, layouts, shownName(file));
}

}  // namespace bkoq::tool
