#include <vector>

#include "kit/json.h"
#include "kit/print.h"
#include "kit/text.h"

namespace bkoq::kit {
namespace {

constexpr std::size_t kIndent = 4;

class JsonPrinter : public WalkHandler {
 public:
  JsonPrinter(const BkoqPrintOptions& options, const Scope& scope, Output& out)
      : options_(options), scope_(scope), out_(out) {}

  bool beginRecord(const RecordView& record, const Position& at) {
    levels_.resize(at.depth + 1);
    Level& level = levels_[at.depth];
    level = Level{};
    const bool isStart = !isAnythingShown_ && scope_.isExactly(at.path.text());
    if (isStart) firstDepth_ = at.depth;
    level.isShown = isStart || isRecordShown(record, at);
    if (!level.isShown) return true;
    if (scope_.only != nullptr) {
      out_.put(isAnythingShown_ ? ",\n" : "\n");
      out_.put(indentOf(at));
    } else if (at.depth > 0 && levels_[at.depth - 1].open == Open::kArray) {
      out_.put(levels_[at.depth - 1].hasElements ? ",\n" : "\n");
      out_.put(indentOf(at));
      levels_[at.depth - 1].hasElements = true;
    }
    if (isStart) out_.put("\"record\": ");
    isAnythingShown_ = true;
    out_.put("{\"record\": \"" + std::string(record.def->name) + "\"");
    if (scope_.only != nullptr) out_.put(", \"path\": \"" + std::string(at.path.text()) + "\"");
    out_.put(", \"block\": " + std::to_string(at.block) +
             ", \"offset\": " + std::to_string(at.blockOffset) +
             ", \"size\": " + std::to_string(record.def->size) + ", \"fields\": {");
    return !out_.failed();
  }

  bool field(const FieldView& field, const Block& block, const Position& at) {
    Level& level = levels_[at.depth];
    level.open = Open::kNothing;
    const bool isStart = !isAnythingShown_ && scope_.isExactly(at.path.text());
    if (!isStart && (!level.isShown || isHidden(field, options_))) return true;
    if (isStart) {
      firstDepth_ = at.depth;
      isAnythingShown_ = true;
      out_.put(std::string("\"field\": {\"name\": \"") + field.def().name + "\", ");
    } else {
      out_.put(std::string(level.hasFields ? "," : "") + "\n" + indentOf(at) + "  \"" +
               field.def().name + "\": {");
    }
    out_.put("\"offset\": " + std::to_string(field.def().offset) +
             ", \"width\": " + std::to_string(field.def().width) + ", " +
             jsonValue(field, block, options_.showSecrets != 0));
    level.hasFields = true;
    const bool isEmbedded = field.def().kind == FieldKind::kEmbedded;
    const bool holdsRecords = field.target() != nullptr && (block.bytes != nullptr || isEmbedded);
    if (!holdsRecords || !areElementsShown(at)) {
      out_.put("}");
    } else if (field.def().kind == FieldKind::kArray) {
      out_.put(", \"value\": [");
      level.open = Open::kArray;
      level.hasElements = false;
    } else {
      out_.put(", \"value\": ");
      level.open = isEmbedded ? Open::kEmbedded : Open::kRecord;
    }
    return !out_.failed();
  }

  void endBlock(const FieldView&, const Block&, const Position& at) {
    Level& level = levels_[at.depth];
    if (level.open == Open::kArray) out_.put("]}");
    if (level.open == Open::kRecord) out_.put("}");
    level.open = Open::kNothing;
  }

  bool endRecord(const RecordView&, const Position& at) {
    const Level& level = levels_[at.depth];
    if (!level.isShown) return true;
    out_.put(level.hasFields ? "\n" + indentOf(at) + "}}" : "}}");
    // An embedded record is no block, so nothing else ends its field.
    if (at.depth > 0 && levels_[at.depth - 1].open == Open::kEmbedded) {
      out_.put("}");
      levels_[at.depth - 1].open = Open::kNothing;
    }
    return !out_.failed();
  }

  bool isAnythingShown() const { return isAnythingShown_; }

 private:
  // The value of a field that is being written.
  enum class Open { kNothing, kArray, kRecord, kEmbedded };
  struct Level {
    bool isShown = false;
    bool hasFields = false;
    bool hasElements = false;
    Open open = Open::kNothing;
  };

  bool isRecordShown(const RecordView& record, const Position& at) const {
    if (scope_.only != nullptr) return record.def == scope_.only;
    if (at.depth == 0) return scope_.path == nullptr;
    return levels_[at.depth - 1].open != Open::kNothing;
  }
  bool areElementsShown(const Position& at) const {
    return scope_.only == nullptr &&
           (options_.depth == 0 || at.depth - firstDepth_ + 1 < options_.depth);
  }
  std::string indentOf(const Position& at) const {
    return std::string(scope_.only != nullptr ? kIndent : 2 + (at.depth - firstDepth_) * kIndent,
                       ' ');
  }

  const BkoqPrintOptions& options_;
  const Scope& scope_;
  Output& out_;
  std::vector<Level> levels_;  // by depth
  bool isAnythingShown_ = false;
  unsigned int firstDepth_ = 0;  // of what stands at the path
};

}  // namespace

bool printJson(const RecordView& job, const BkoqPrintOptions& options, const Scope& scope,
               Output& out) {
  const bool isList = scope.only != nullptr;
  out.put(jsonStart(isList ? "bkoq-records" : scope.path != nullptr ? "bkoq-field" : "bkoq-tree"));
  out.put(std::string(",\n  \"layout\": \"") + layoutName(job.layout) + "\",\n  ");
  if (scope.path != nullptr) {
    out.put("\"path\": " + jsonText(scope.path) + ",\n  ");
  } else {
    out.put(isList ? "\"records\": [" : "\"job\": ");
  }
  JsonPrinter printer(options, scope, out);
  Walker<JsonPrinter>(printer).walk(job);
  out.put(isList ? "\n  ]\n}\n" : "\n}\n");
  return printer.isAnythingShown();
}

}  // namespace bkoq::kit
