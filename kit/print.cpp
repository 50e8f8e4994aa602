#include "kit/print.h"

#include <cstdio>

#include "bkoq/kit.h"
#include "kit/guard.h"
#include "kit/json.h"
#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

BkoqStatus print(const RecordView& job, const BkoqPrintOptions& options, const Scope& scope,
                 BkoqSink sink, void* user) {
  Output out(sink, user);
  bool isAnythingShown = false;
  switch (options.format) {
    case BKOQ_FORMAT_TEXT:
      isAnythingShown = printText(job, options, scope, out);
      break;
    case BKOQ_FORMAT_JSON:
      isAnythingShown = printJson(job, options, scope, out);
      break;
    case BKOQ_FORMAT_ANNOTATED:
      isAnythingShown = printAnnotated(job, options, scope, out);
      break;
    default:
      return BKOQ_BAD_ARGUMENT;
  }
  return out.flush() ? (isAnythingShown ? BKOQ_OK : BKOQ_NOT_FOUND) : BKOQ_SINK_FAILED;
}

// Nothing is printed for what a tree does not hold.
class Finder : public WalkHandler {
 public:
  Finder(const Scope& scope) : scope_(scope) {}

  bool beginRecord(const RecordView& record, const Position& at) {
    isFound_ |= record.def == scope_.only || scope_.isExactly(at.path.text());
    return !isFound_;
  }
  bool field(const FieldView&, const Block&, const Position& at) {
    isFound_ |= scope_.isExactly(at.path.text());
    return !isFound_;
  }
  bool isFound() const { return isFound_; }

 private:
  const Scope& scope_;
  bool isFound_ = false;
};

bool holds(const RecordView& job, const Scope& scope) {
  Finder finder(scope);
  Walker<Finder>(finder).walk(job);
  return finder.isFound();
}

// Looks for the field, or the text, that lies at a byte of a block.
class PlaceFinder : public WalkHandler {
 public:
  PlaceFinder(std::uint32_t block, std::uint32_t offset, const BkoqPrintOptions& options)
      : block_(block), offset_(offset), options_(options) {}

  bool field(const FieldView& field, const Block& block, const Position& at) {
    if (block.label == block_ && field.target() == nullptr) {
      if (offset_ < block.size) describeText(field, block, at);
      return false;
    }
    const std::uint32_t begin = at.blockOffset + field.def().offset;
    const bool isHere =
        at.block == block_ && offset_ >= begin && offset_ - begin < field.def().width;
    if (!isHere || field.def().kind == FieldKind::kEmbedded) return true;
    const Value value = describe(field, block, options_.showSecrets != 0);
    const std::uint32_t byte = offset_ - begin;
    text_ = placeName(block_, offset_) + ": byte " + std::to_string(byte) + " of " +
            at.path.text() + ", " + field.record().def->name + "+" +
            std::to_string(field.def().offset) + ", " +
            counted(field.def().width, "byte", "bytes") + "\n" + field.def().name + ": " +
            oneLine(value) + (value.comment.empty() ? "" : "  " + value.comment) + "\n" +
            "meaning: " + field.def().meaning + "\n";
    json_ = start(at, byte) + ", \"record\": \"" + field.record().def->name +
            "\", \"fieldOffset\": " + std::to_string(field.def().offset) +
            ", \"width\": " + std::to_string(field.def().width) +
            ", \"meaning\": " + jsonQuoted(field.def().meaning) + ", " +
            jsonValue(field, block, options_.showSecrets != 0) + "}\n}\n";
    return false;
  }

  bool isFound() const { return !text_.empty(); }
  const std::string& text() const { return text_; }
  const std::string& json() const { return json_; }

 private:
  void describeText(const FieldView& field, const Block& block, const Position& at) {
    std::uint32_t index = 0;
    std::uint32_t begin = 0;
    for (std::uint32_t size = sizeOfTexts(block.bytes, 1); offset_ - begin >= size; ++index) {
      begin += size;
      size = sizeOfTexts(block.bytes + begin, 1);
    }
    const std::vector<ShownText> shown = shownTexts(field, block, options_.showSecrets != 0);
    const std::uint32_t byte = offset_ - begin;
    const bool isNul = block.bytes[offset_] == 0;
    text_ = placeName(block_, offset_) + ": " +
            (isNul ? "the NUL" : "byte " + std::to_string(byte)) + " of text " +
            std::to_string(index + 1) + " of " + std::to_string(block.count) + " of " +
            at.path.text() + "\n" +
            "text: " + (shown[index].isBare ? shown[index].text : quoted(shown[index].text)) +
            "\n" + "meaning: " + field.def().meaning + "\n";
    json_ = start(at, byte) + ", \"text\": " + std::to_string(index + 1) +
            ", \"texts\": " + std::to_string(block.count) +
            ", \"value\": " + jsonText(shown[index].text) +
            (shown[index].isMasked ? ", \"masked\": true" : "") +
            ", \"meaning\": " + jsonQuoted(field.def().meaning) + "}\n}\n";
  }

  std::string start(const Position& at, std::uint32_t byte) const {
    return jsonStart("bkoq-place") + ",\n  \"block\": " + std::to_string(block_) +
           ",\n  \"offset\": " + std::to_string(offset_) + ",\n  \"place\": {\"path\": \"" +
           at.path.text() + "\", \"byte\": " + std::to_string(byte);
  }

  std::uint32_t block_;
  std::uint32_t offset_;
  const BkoqPrintOptions& options_;
  std::string text_;
  std::string json_;
};

BkoqStatus printAt(const RecordView& job, std::uint32_t block, std::uint32_t offset,
                   const BkoqPrintOptions& options, BkoqSink sink, void* user) {
  if (options.format != BKOQ_FORMAT_TEXT && options.format != BKOQ_FORMAT_JSON) {
    return BKOQ_BAD_ARGUMENT;
  }
  PlaceFinder finder(block, offset, options);
  Walker<PlaceFinder>(finder).walk(job);
  if (!finder.isFound()) return BKOQ_NOT_FOUND;
  Output out(sink, user);
  out.put(options.format == BKOQ_FORMAT_JSON ? finder.json() : finder.text());
  return out.flush() ? BKOQ_OK : BKOQ_SINK_FAILED;
}

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqPrint(const void* root, BkoqLayout layout, const BkoqPrintOptions* options,
                     BkoqSink sink, void* user) {
  using namespace bkoq::kit;
  if (root == nullptr || sink == nullptr || !isLayout(layout)) return BKOQ_BAD_ARGUMENT;
  return guarded([&] {
    const BkoqPrintOptions chosen = options != nullptr ? *options : BkoqPrintOptions{};
    const RecordView job = RecordView::job(root, layout);
    Scope scope;
    if (chosen.onlyRecord != nullptr) {
      scope.only = findRecordDef(job.layout, chosen.onlyRecord);
      if (scope.only == nullptr || !holds(job, scope)) return BKOQ_NOT_FOUND;
    }
    return print(job, chosen, scope, sink, user);
  });
}

BkoqStatus bkoqPrintField(const void* root, BkoqLayout layout, const char* path,
                          const BkoqPrintOptions* options, BkoqSink sink, void* user) {
  using namespace bkoq::kit;
  if (root == nullptr || path == nullptr || sink == nullptr || !isLayout(layout)) {
    return BKOQ_BAD_ARGUMENT;
  }
  return guarded([&] {
    const BkoqPrintOptions chosen = options != nullptr ? *options : BkoqPrintOptions{};
    if (chosen.format == BKOQ_FORMAT_ANNOTATED) return BKOQ_BAD_ARGUMENT;
    const RecordView job = RecordView::job(root, layout);
    Scope scope;
    scope.path = path;
    return holds(job, scope) ? print(job, chosen, scope, sink, user) : BKOQ_NOT_FOUND;
  });
}

BkoqStatus bkoqPrintAt(const void* root, BkoqLayout layout, uint32_t block, uint32_t offset,
                       const BkoqPrintOptions* options, BkoqSink sink, void* user) {
  using namespace bkoq::kit;
  if (root == nullptr || sink == nullptr || !isLayout(layout)) return BKOQ_BAD_ARGUMENT;
  return guarded([&] {
    return printAt(RecordView::job(root, layout), block, offset,
                   options != nullptr ? *options : BkoqPrintOptions{}, sink, user);
  });
}

int bkoqFileSink(void* file, const char* text, size_t size) {
  return std::fwrite(text, 1, size, static_cast<FILE*>(file)) == size ? 0 : 1;
}
