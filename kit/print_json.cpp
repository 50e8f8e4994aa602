#include <vector>

#include "kit/json.h"
#include "kit/print.h"
#include "kit/text.h"

namespace bkoq::kit {
namespace {

constexpr std::size_t kIndent = 4;

class JsonPrinter : public WalkHandler {
 public:
  JsonPrinter(const Options& options, const Scope& scope, Output& out)
      : options_(options),
        scope_(scope),
        out_(out),
        isPlain_(options.format == BKOQ_FORMAT_PLAIN_JSON) {}

  bool beginRecord(const RecordView& record, const Position& at) {
    levels_.resize(at.depth + 1);
    Level& level = levels_[at.depth];
    level = Level{};
    const bool isStart = startsMatch(at) && !isOfField(at);
    level.isShown = isStart || isRecordShown(record, at);
    if (!level.isShown) return !out_.failed();
    if (scope_.only != nullptr) {
      putLine(isAnythingShown_ ? "," : "", at);
    } else if (at.depth > 0 && levels_[at.depth - 1].open == Open::kArray) {
      putLine(levels_[at.depth - 1].hasElements ? "," : "", at);
      levels_[at.depth - 1].hasElements = true;
    }
    if (isStart) beginMatch(at, isPlain_ ? "\"value\": " : "\"record\": ", false);
    isAnythingShown_ = true;
    if (isPlain_) {
      out_.put("{");
      return !out_.failed();
    }
    out_.put("{\"record\": \"", record.def->name, "\"");
    if (scope_.only != nullptr) out_.put(", \"path\": \"", at.path.text(), "\"");
    out_.put(", \"block\": ", decimal(at.block), ", \"offset\": ", decimal(at.blockOffset),
             ", \"size\": ", decimal(record.def->size));
    if (isDoubtful(at.block, options_)) out_.put(", \"doubtful\": true");
    out_.put(", \"fields\": {");
    return !out_.failed();
  }

  bool field(const FieldView& field, const Block& block, const Position& at) {
    Level& level = levels_[at.depth];
    level.open = Open::kNothing;
    const bool isStart = startsMatch(at);
    isAnythingFound_ |= isStart;
    const bool isAskedFor = isStart && !scope_.isPattern;  // by itself, so it is shown
    if (!isAskedFor && ((!isStart && !level.isShown) || isHidden(field, options_))) {
      return !out_.failed();
    }
    if (isStart) {
      beginMatch(at, "", true);
      if (isPlain_) {
        out_.put("\"value\": ");
      } else {
        out_.put("\"field\": {\"name\": \"", field.def().nameText(), "\", ");
      }
    } else {
      putLine(level.hasFields ? "," : "", at);
      out_.put("  \"", field.def().nameText(), "\": ");
      if (!isPlain_) out_.put("{");
    }
    level.hasFields = true;
    const bool isEmbedded = field.def().kind == FieldKind::kEmbedded;
    const bool holdsRecords = field.target() != nullptr && (block.bytes != nullptr || isEmbedded);
    // Whoever asks for the field of one record asks for the record: it is no level deeper.
    const bool isOneRecord = holdsRecords && field.def().kind != FieldKind::kArray;
    const bool isOpened = holdsRecords && (areElementsShown(at) || (isStart && isOneRecord));
    putField(field, block, at, holdsRecords);
    if (!isOpened) {
      out_.put(isPlain_ ? (holdsRecords ? "null" : "") : "}");
      if (isStart) endMatch();
    } else if (field.def().kind == FieldKind::kArray) {
      out_.put(isPlain_ ? "[" : ", \"value\": [");
      level.open = Open::kArray;
      level.hasElements = false;
    } else {
      out_.put(isPlain_ ? "" : ", \"value\": ");
      level.open = isEmbedded ? Open::kEmbedded : Open::kRecord;
    }
    return !out_.failed();
  }

  void endBlock(const FieldView&, const Block&, const Position& at) {
    Level& level = levels_[at.depth];
    if (level.open == Open::kArray) out_.put("]");
    const bool wasOpen = level.open != Open::kNothing;
    level.open = Open::kNothing;
    if (wasOpen) endField(at.depth);
  }

  bool endRecord(const RecordView&, const Position& at) {
    const Level& level = levels_[at.depth];
    if (!level.isShown) return !out_.failed();
    if (level.hasFields) putLine("", at);
    out_.put(isPlain_ ? "}" : "}}");
    // An embedded record is no block, so nothing else ends its field.
    if (at.depth > 0 && levels_[at.depth - 1].open == Open::kEmbedded) {
      levels_[at.depth - 1].open = Open::kNothing;
      endField(at.depth - 1);
    } else if (isInMatch_ && !isFieldMatched_ && at.depth == firstDepth_) {
      endMatch();
    }
    return !out_.failed();
  }

  // What is found may all be zero, and so be left out.
  bool isAnythingFound() const { return isAnythingFound_ || isAnythingShown_; }

 private:
  // The value of a field that is being written.
  enum class Open { kNothing, kArray, kRecord, kEmbedded };
  struct Level {
    bool isShown = false;
    bool hasFields = false;
    bool hasElements = false;
    Open open = Open::kNothing;
  };

  bool startsMatch(const Position& at) const { return !isInMatch_ && scope_.isExactly(at.path); }
  // A record that is neither the job nor an element has the path of its field, which is what is
  // found.
  static bool isOfField(const Position& at) {
    return at.depth > 0 && std::string_view(at.path.text()).back() != ']';
  }
  void beginMatch(const Position& at, const char* start, bool isField) {
    if (scope_.isPattern) {
      out_.put(isAnythingShown_ ? ",\n    " : "\n    ");
      out_.put("{\"path\": \"", at.path.text(), "\", ");
    }
    out_.put(start);
    isAnythingShown_ = true;
    isInMatch_ = true;
    isFieldMatched_ = isField;
    firstDepth_ = at.depth;
  }
  void endMatch() {
    isInMatch_ = false;
    if (scope_.isPattern) out_.put("}");
  }
  void endField(unsigned int depth) {
    if (!isPlain_) out_.put("}");
    if (isInMatch_ && isFieldMatched_ && depth == firstDepth_) endMatch();
  }

  void putField(const FieldView& field, const Block& block, const Position&, bool holdsRecords) {
    const bool showSecrets = options_.showSecrets != 0;
    if (isPlain_) {
      if (!holdsRecords) putPlainValue(out_, field, block, showSecrets);
      return;
    }
    out_.put("\"offset\": ", decimal(field.def().offset),
             ", \"width\": ", decimal(field.def().width), ", ");
    putJsonValue(out_, field, block, showSecrets);
    if (block.label != 0 && isDoubtful(block.label, options_)) out_.put(", \"doubtful\": true");
  }

  bool isRecordShown(const RecordView& record, const Position& at) const {
    if (scope_.only != nullptr) return record.def == scope_.only;
    if (at.depth == 0) return scope_.path == nullptr;
    return levels_[at.depth - 1].open != Open::kNothing;
  }
  bool areElementsShown(const Position& at) const {
    return scope_.only == nullptr &&
           (options_.depth == 0 || at.depth - firstDepth_ + 1 < options_.depth);
  }
  // Ends a line and begins the next one.
  void putLine(std::string_view end, const Position& at) {
    out_.put(end, "\n");
    std::size_t indent = 2 + (at.depth - firstDepth_) * kIndent;
    if (scope_.only != nullptr) indent = kIndent;
    if (scope_.isPattern) indent = kIndent + (at.depth - firstDepth_) * kIndent;
    out_.put(indent, ' ');
  }

  const Options& options_;
  const Scope& scope_;
  Output& out_;
  bool isPlain_;
  std::vector<Level> levels_;  // by depth
  bool isAnythingFound_ = false;
  bool isAnythingShown_ = false;
  // What is at a path that was asked for is being written, beginning with a field or a record.
  bool isInMatch_ = false;
  bool isFieldMatched_ = false;
  unsigned int firstDepth_ = 0;  // of what is at the path
};

const char* formatOf(const Scope& scope, bool isPlain) {
  if (isPlain) return "bkoq-values";
  if (scope.only != nullptr) return "bkoq-records";
  if (scope.path == nullptr) return "bkoq-tree";
  return scope.isPattern ? "bkoq-fields" : "bkoq-field";
}

}  // namespace

bool printJson(const RecordView& job, const Options& options, const Scope& scope, Output& out) {
  out.put(jsonStart(formatOf(scope, options.format == BKOQ_FORMAT_PLAIN_JSON)));
  out.put(std::string(",\n  \"layout\": \"") + layoutName(job.layout) + "\",\n  ");
  if (*scope.note != '\0') out.put("\"note\": " + jsonQuoted(scope.note) + ",\n  ");
  bool isList = scope.only != nullptr;
  if (scope.isPattern) {
    out.put("\"pattern\": ");
    putJsonText(out, scope.path);
    out.put(",\n  \"matches\": [");
    isList = true;
  } else if (scope.path != nullptr) {
    out.put("\"path\": ");
    putJsonText(out, scope.path);
    out.put(",\n  ");
  } else {
    out.put(isList ? "\"records\": [" : "\"job\": ");
  }
  JsonPrinter printer(options, scope, out);
  Walker<JsonPrinter>(printer).walk(job);
  out.put(isList ? "\n  ]\n}\n" : "\n}\n");
  return printer.isAnythingFound();
}

}  // namespace bkoq::kit
