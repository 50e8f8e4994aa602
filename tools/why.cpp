#include "tools/why.h"

#include <nlohmann/json.hpp>
#include <sstream>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "tools/problems.h"
#include "tools/reason_json.h"
#include "tools/source.h"
#include "tools/walk.h"

namespace bkoq::tool {

using Json = nlohmann::ordered_json;

namespace {

std::string inLines(const Json& json) {
  // The name of a file may be anything.
  return printableJson(json.dump(2, ' ', false, Json::error_handler_t::replace)) + "\n";
}

}  // namespace

Why::Why(const std::string& content, const std::string& file, const Selection& selection)
    : selection_(selection), file_(shownName(file)) {
  Problems problems;
  loaded_ = readJob(content, problems);
  experiment_ = std::make_unique<Experiment>(loaded_, selection_);
}

std::vector<FieldReason> Why::ofPath(const std::string& path, BkoqLayout layout) {
  return whyFieldsHold(*experiment_, fieldsAt(*experiment_, path, layout), layout);
}

std::vector<std::optional<FieldReason>> Why::ofDifferences(const std::vector<std::string>& paths,
                                                           BkoqLayout layout) {
  std::unordered_map<std::string_view, const RecordField*> named;
  std::unordered_map<std::string_view, const RecordField*> firstTexts;
  for (const RecordField& field : experiment_->fields(layout)) {
    const std::string_view path = field.path;
    named.emplace(path, &field);
    const bool isText = field.kind == BKOQ_FIELD_TEXT || field.kind == BKOQ_FIELD_TWO_TEXTS;
    if (isText) firstTexts.emplace(path.substr(0, path.rfind('.')), &field);
  }
  std::vector<const RecordField*> fields;
  std::vector<bool> areThere;
  areThere.reserve(paths.size());
  for (const std::string& path : paths) {
    auto found = named.find(path);
    if (found == named.end()) {
      found = firstTexts.find(path);
      if (found == firstTexts.end()) found = named.end();
    }
    areThere.push_back(found != named.end());
    if (areThere.back()) fields.push_back(found->second);
  }
  const std::vector<FieldReason> reasons = whyFieldsHold(*experiment_, fields, layout);
  std::vector<std::optional<FieldReason>> all;
  all.reserve(paths.size());
  std::size_t next = 0;
  for (const bool isThere : areThere) {
    all.push_back(isThere ? std::optional<FieldReason>(reasons[next++]) : std::nullopt);
  }
  return all;
}

std::string Why::text(const FieldReason& why) const {
  return printable(reasonText(*experiment_, why, file_));
}

Json Why::json(const FieldReason& why, BkoqLayout layout) const {
  Json json = {{"file", file_}};
  json.update(reasonJson(*experiment_, why, layout));
  return json;
}

std::string Why::pathAt(unsigned int block, unsigned int offset, BkoqLayout layout) {
  std::string path;
  walk(experiment_->asWritten(layout).root(), layout, [&](const BkoqVisit& visit) {
    if (visit.event != BKOQ_FIELD || visit.kind == BKOQ_FIELD_EMBEDDED) return 0;
    const bool isHere =
        visit.block == block && offset >= visit.offset && offset - visit.offset < visit.width;
    if (!isHere && !(isText(visit.kind) && visit.target == block)) return 0;
    path = visit.path;
    return 1;
  });
  return path;
}

std::string withReasons(const Differing& differing, Why* const (&whys)[2],
                        const BkoqLayout (&layouts)[2], bool isJson) {
  std::vector<std::optional<FieldReason>> reasons[2];
  for (std::size_t side = 0; side < 2; ++side) {
    reasons[side].resize(differing.paths[side].size());
    if (whys[side] == nullptr) continue;
    reasons[side] = whys[side]->ofDifferences(differing.paths[side], layouts[side]);
  }
  if (isJson) {
    Json document = Json::parse(differing.printed);
    std::size_t i = 0;
    for (Json& each : document["differences"]) {
      Json& why = each["why"];
      for (std::size_t side = 0; side < 2; ++side) {
        const std::optional<FieldReason>& reason = reasons[side][i];
        const bool isKnown = whys[side] != nullptr && reason.has_value();
        why[side == 0 ? "old" : "new"] =
            isKnown ? whys[side]->json(*reason, layouts[side]) : Json();
      }
      ++i;
    }
    return inLines(document);
  }
  std::string text;
  std::istringstream printed(differing.printed);
  std::string line;
  for (std::size_t i = 0; std::getline(printed, line); ++i) {
    text += line + "\n";
    std::string before;
    for (std::size_t side = 0; side < 2 && i < reasons[side].size(); ++side) {
      if (whys[side] == nullptr || !reasons[side][i]) continue;
      const std::string why = whys[side]->text(*reasons[side][i]);
      if (why != before) text += "    " + why + "\n";
      before = why;
    }
  }
  return text;
}

std::string withReasons(const std::string& document, const Why& why,
                        const std::vector<FieldReason>& reasons, BkoqLayout layout) {
  Json json = Json::parse(document);
  json["why"] = Json::array();
  for (const FieldReason& reason : reasons) json["why"].push_back(why.json(reason, layout));
  return inLines(json);
}

}  // namespace bkoq::tool
