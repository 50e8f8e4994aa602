#include <algorithm>
#include <cstring>

#include "debugger/tables.h"
#include "kit/characters.h"
#include "kit/image.h"
#include "kit/record_table.h"
#include "kit/value.h"

namespace bkoq::debugger {
namespace {

using namespace bkoq::kit;

const char* nameOf(Secret secret) {
  switch (secret) {
    case Secret::kNone:
      return "";
    case Secret::kWhole:
      return "whole";
    case Secret::kCredentials:
      return "credentials";
  }
  return "";
}

const char* nameOf(NodeArray array) {
  switch (array) {
    case NodeArray::kNone:
      return "";
    case NodeArray::kSources:
      return "sources";
    case NodeArray::kDestinations:
      return "destinations";
  }
  return "";
}

// The record that a node holds, or "" when the kind of the job does not say.
std::string nameOf(Media media, BkoqLayout layout) {
  switch (media) {
    case Media::kUnknown:
      return "";
    case Media::kDisks:
      return recordDef(layout, RecordType::kDisk)->name;
    case Media::kTapes:
      return recordDef(layout, RecordType::kTape)->name;
  }
  return "";
}

Json wordsOf(const Word* words) {
  Json list = Json::array();
  for (; words != nullptr && words->name != nullptr; ++words) {
    list.push_back({words->value, words->name});
  }
  return list;
}

Json fieldOf(const FieldDef& field, BkoqLayout layout) {
  Json json = {{"name", field.name},           {"offset", field.offset},
               {"width", field.width},         {"kind", kindName(field.kind)},
               {"pointer", field.isPointer()}, {"variants", field.variants}};
  const RecordDef* target = recordDef(layout, field.target);
  if (target != nullptr) json["target"] = target->name;
  if (field.target == RecordType::kMedia) json["media"] = true;
  if (field.kind == FieldKind::kArray || field.kind == FieldKind::kTextList) {
    json["countOffset"] = field.countOffset;
  }
  if (field.nodes != NodeArray::kNone) json["nodes"] = nameOf(field.nodes);
  if (field.secret != Secret::kNone) json["secret"] = nameOf(field.secret);
  if (field.words != nullptr) json["words"] = wordsOf(field.words);
  if (field.words == nodeTypes()) json["tapeNodeWords"] = wordsOf(tapeNodeTypes());
  return json;
}

// Where a record keeps what decides how other fields are read.
std::uint32_t offsetOf(const RecordDef& record, const char* name, std::uint32_t width) {
  for (const FieldDef& field : record) {
    if (std::strcmp(field.name, name) != 0) continue;
    expect(field.width == width, std::string(name) + " has another width");
    return field.offset;
  }
  throw Mismatch(std::string(record.name) + " has no " + name);
}

Json layoutOf(BkoqLayout layout, int number) {
  Json records = Json::object();
  for (std::size_t i = 0; i < kRecordTypeCount; ++i) {
    const RecordDef* record = recordDef(layout, static_cast<RecordType>(i));
    if (record == nullptr) continue;
    Json fields = Json::array();
    for (const FieldDef& field : *record) fields.push_back(fieldOf(field, layout));
    records[record->name] = {{"size", record->size}, {"fields", fields}};
  }
  const RecordDef& job = *recordDef(layout, RecordType::kJob);
  const RecordDef& node = *recordDef(layout, RecordType::kNode);
  const RecordDef& filter = *recordDef(layout, RecordType::kFilter);
  Json kinds = Json::object();
  for (const JobKind* kind = jobKinds(); kind->name != nullptr; ++kind) {
    const auto role = [&](const NodeRole& nodes) {
      return Json{{"media", nameOf(nodes.media, layout)},
                  {"isRestoreDestination", nodes.isRestoreDestination},
                  {"isTapes", nodes.media == Media::kTapes}};
    };
    kinds[std::to_string(kind->code)] = {{"sources", role(kind->sources)},
                                         {"destinations", role(kind->destinations)}};
  }
  return {{"number", number},
          {"job", job.name},
          {"node", node.name},
          {"filter", filter.name},
          {"jobKindAt", offsetOf(job, "usJobType", 2)},
          {"nodeKindAt", offsetOf(node, "usNodeType", 2)},
          {"filterKindAt", offsetOf(filter, "usFilterType", 2)},
          {"timeRangeAt", offsetOf(filter, "usTimeRange", 2)},
          {"jobKinds", kinds},
          {"records", records}};
}

// How a filter is read, by its kind and its range. The last of a row, and the last row, are for all
// that follow.
Json filterVariants() {
  constexpr std::uint32_t kKinds = 8;
  constexpr std::uint32_t kRanges = 8;
  for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
    for (std::uint32_t kind = 0; kind <= kKinds; ++kind) {
      expect(filterVariant(kind, code) == filterVariant(kind, std::min(code, kRanges - 1)),
             "a filter's range above those that are looked at");
    }
    expect(filterVariant(code, 0) == filterVariant(std::min(code, kKinds - 1), 0),
           "a filter's kind above those that are looked at");
  }
  Json rows = Json::array();
  for (std::uint32_t kind = 0; kind < kKinds; ++kind) {
    Json row = Json::array();
    for (std::uint32_t range = 0; range < kRanges; ++range) {
      row.push_back(static_cast<unsigned int>(filterVariant(kind, range)));
    }
    rows.push_back(row);
  }
  return rows;
}

// What may not reach a terminal as it is, as pairs of first and last character.
Json unprintable() {
  Json ranges = Json::array();
  for (const CharacterRange& range : unprintableRanges()) {
    ranges.push_back({range.first, range.last});
  }
  return ranges;
}

}  // namespace

Json recordTables() {
  return {{"always", static_cast<unsigned int>(kAlways)},
          {"mask", kMask},
          {"unprintable", unprintable()},
          {"unixNodeKind", kUnixNodeType},
          {"filterVariants", filterVariants()},
          {"image",
           {{"magic", BKOQ_IMAGE_SIGNATURE},
            {"version", BKOQ_IMAGE_FORMAT_VERSION},
            {"versionAt", kVersionAt},
            {"layoutAt", kLayoutAt},
            {"sizeAt", kSizeAt},
            {"rootAt", kRootAt},
            {"blocksAt", kBlocksAt},
            {"checksumAt", kChecksumAt},
            {"headerSize", kHeaderSize},
            {"alignment", kAlignment}}},
          {"layouts",
           {{"current", layoutOf(BKOQ_LAYOUT_CURRENT, 1)},
            {"previous", layoutOf(BKOQ_LAYOUT_PREVIOUS, 2)}}}};
}

}  // namespace bkoq::debugger
