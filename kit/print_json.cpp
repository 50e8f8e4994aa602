#include <vector>

#include "kit/json.h"
#include "kit/print.h"
#include "kit/text.h"

namespace bkoq {
namespace {

constexpr std::size_t kIndent = 4;

class JsonPrinter : public WalkHandler {
 public:
  JsonPrinter(const BkoqPrintOptions& options, const RecordDef* only, Output& out)
      : options_(options), only_(only), out_(out) {}

  bool beginRecord(const RecordView& record, const Position& at) {
    levels_.resize(at.depth + 1);
    Level& level = levels_[at.depth];
    level = Level{};
    level.isShown = isRecordShown(record, at);
    if (!level.isShown) return true;
    if (only_ != nullptr) {
      out_.put(isAnythingShown_ ? ",\n" : "\n");
      out_.put(indentOf(at));
    } else if (at.depth > 0 && levels_[at.depth - 1].open == Open::kArray) {
      out_.put(levels_[at.depth - 1].hasElements ? ",\n" : "\n");
      out_.put(indentOf(at));
      levels_[at.depth - 1].hasElements = true;
    }
    isAnythingShown_ = true;
    out_.put("{\"record\": \"" + std::string(record.def->name) + "\"");
    if (only_ != nullptr) out_.put(", \"path\": \"" + std::string(at.path.text()) + "\"");
    out_.put(", \"block\": " + std::to_string(at.block) +
             ", \"offset\": " + std::to_string(at.blockOffset) +
             ", \"size\": " + std::to_string(record.def->size) + ", \"fields\": {");
    return !out_.failed();
  }

  bool field(const FieldView& field, const Block& block, const Position& at) {
    Level& level = levels_[at.depth];
    level.open = Open::kNothing;
    if (!level.isShown || isHidden(field, options_)) return true;
    out_.put(std::string(level.hasFields ? "," : "") + "\n" + indentOf(at) + "  \"" +
             field.def().name + "\": {\"offset\": " + std::to_string(field.def().offset) +
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
    const Level& level = levels_[at.depth];
    if (level.isShown && level.open == Open::kArray) out_.put("]}");
    if (level.isShown && level.open == Open::kRecord) out_.put("}");
  }

  bool endRecord(const RecordView&, const Position& at) {
    const Level& level = levels_[at.depth];
    if (!level.isShown) return true;
    out_.put(level.hasFields ? "\n" + indentOf(at) + "}}" : "}}");
    // An embedded record is no block, so nothing else ends its field.
    const bool endsField = at.depth > 0 && levels_[at.depth - 1].open == Open::kEmbedded;
    if (only_ == nullptr && endsField) out_.put("}");
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
    if (only_ != nullptr) return record.def == only_;
    if (at.depth == 0) return true;
    const Level& outer = levels_[at.depth - 1];
    return outer.isShown && outer.open != Open::kNothing;
  }
  bool areElementsShown(const Position& at) const {
    return only_ == nullptr && (options_.depth == 0 || at.depth + 1 < options_.depth);
  }
  std::string indentOf(const Position& at) const {
    return std::string(only_ != nullptr ? kIndent : 2 + at.depth * kIndent, ' ');
  }

  const BkoqPrintOptions& options_;
  const RecordDef* only_;
  Output& out_;
  std::vector<Level> levels_;  // by depth
  bool isAnythingShown_ = false;
};

}  // namespace

bool printJson(const RecordView& job, const BkoqPrintOptions& options, const RecordDef* only,
               Output& out) {
  out.put(jsonStart(only != nullptr ? "bkoq-records" : "bkoq-tree"));
  out.put(std::string(",\n  \"layout\": \"") + layoutName(job.layout) + "\",\n  ");
  out.put(only != nullptr ? "\"records\": [" : "\"job\": ");
  JsonPrinter printer(options, only, out);
  Walker<JsonPrinter>(printer).walk(job);
  out.put(only != nullptr ? "\n  ]\n}\n" : "\n}\n");
  return printer.isAnythingShown();
}

}  // namespace bkoq
