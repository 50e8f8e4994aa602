#include <algorithm>
#include <vector>

#include "kit/print.h"
#include "kit/style.h"
#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

constexpr std::uint32_t kBytesPerLine = 8;
constexpr std::size_t kHexColumns = kBytesPerLine * 3 - 1;
constexpr std::size_t kNameColumns = 30;
constexpr std::size_t kValueColumns = 24;

// Writes a block in the order of its bytes. The walk goes from a field into what it points to, so a
// block's text is put together piece by piece, and blocks are written once all are known.
class Annotator : public WalkHandler {
 public:
  Annotator(const BkoqPrintOptions& options, const Scope& scope)
      : options_(options), scope_(scope), style_(options.colour != 0) {}

  bool beginRecord(const RecordView& record, const Position& at) {
    if (at.depth == 0) {
      begin(at.block,
            std::string(record.def->name) + ", " + counted(record.def->size, "byte", "bytes"));
    } else if (isEmbedded_) {
      // An embedded record is read on as part of the job.
      prefix_ = std::string(at.path.text()) + ".";
    } else if (isShown(record)) {
      blocks_[at.block - 1].lines += std::string(at.path.text()) + "\n";
    }
    isEmbedded_ = false;
    return true;
  }

  bool endRecord(const RecordView&, const Position&) {
    prefix_.clear();
    return true;
  }

  bool field(const FieldView& field, const Block& block, const Position& at) {
    isEmbedded_ = field.def().kind == FieldKind::kEmbedded;
    if (block.label != 0) beginBlock(field, block, at);
    if (isEmbedded_ || !isShown(field.record())) return true;
    std::string& lines = blocks_[at.block - 1].lines;
    blocks_[at.block - 1].isShown = true;
    const Value value = describe(field, block, options_.showSecrets != 0);
    const std::string shown = value.texts.empty() ? value.lead : "#" + std::to_string(block.label);
    std::string meaning = field.def().meaning;
    if (field.kind() == FieldKind::kReserved && value.isAlarming) {
      meaning = "reserved, but NOT ZERO";
    } else if (field.kind() == FieldKind::kFlags) {
      if (!bitNames(field).empty()) meaning += " (" + bitNames(field) + ")";
    } else if (!value.comment.empty() && (value.isAlarming || !field.pointsSomewhere()) &&
               field.kind() != FieldKind::kReserved) {
      meaning += " (" + value.comment + ")";
    }
    const std::string name = prefix_ + field.def().name;
    addBytes(lines, at.blockOffset + field.def().offset, hexOf(field), name,
             decimalAndHex(field, shown), meaning, value.isAlarming);
    return true;
  }

  bool print(Output& out) const {
    bool isAnythingShown = false;
    for (const BlockText& block : blocks_) {
      if (!block.isShown) continue;
      if (isAnythingShown) out.put("\n");
      isAnythingShown = true;
      out.put(style_.heading(block.heading) + "\n" + block.lines);
    }
    return isAnythingShown;
  }

 private:
  struct BlockText {
    std::string heading;
    std::string lines;
    bool isShown = false;
  };

  bool isShown(const RecordView& record) const {
    return scope_.only == nullptr || record.def == scope_.only;
  }

  void begin(std::uint32_t label, const std::string& what) {
    blocks_.resize(label);
    blocks_[label - 1].heading = "#" + std::to_string(label) + "  " + what;
  }

  void beginBlock(const FieldView& field, const Block& block, const Position& at) {
    begin(block.label, std::string(at.path.text()) + ": " + contentName(field, block) + ", " +
                           counted(block.size, "byte", "bytes"));
    if (field.target() != nullptr || scope_.only != nullptr) return;
    BlockText& text = blocks_.back();
    text.isShown = true;
    const std::vector<ShownText> shown = shownTexts(field, block, options_.showSecrets != 0);
    std::uint32_t offset = 0;
    for (std::uint32_t i = 0; i < block.count; ++i) addText(text.lines, block, offset, i, shown);
  }

  // One text: its bytes, a line for each few of them, then its NUL.
  void addText(std::string& lines, const Block& block, std::uint32_t& offset, std::uint32_t index,
               const std::vector<ShownText>& all) const {
    const auto* text = block.bytes + offset;
    const auto length =
        static_cast<std::uint32_t>(std::strlen(reinterpret_cast<const char*>(text)));
    const ShownText& shown = all[index];
    // What is masked begins where the shown text stops being the text itself.
    const std::uint32_t open =
        shown.isMasked ? static_cast<std::uint32_t>(shown.text.size() - std::strlen(kMask))
                       : length;
    const std::string name = block.count > 1 ? "text " + std::to_string(index + 1) : "text";
    for (std::uint32_t i = 0; i < length; i += kBytesPerLine) {
      const std::uint32_t size = std::min(kBytesPerLine, length - i);
      const std::uint32_t plain = i >= open ? 0 : std::min(size, open - i);
      std::string hex = hexBytes(text + i, plain);
      for (std::uint32_t j = plain; j < size; ++j) hex += hex.empty() ? "**" : " **";
      const std::string piece(reinterpret_cast<const char*>(text) + i, plain);
      const std::string value = plain == size ? quoted(piece)
                                : plain == 0  ? kMask
                                              : quoted(piece) + " " + kMask;
      addLine(lines, offset + i, hex, i == 0 ? name : "", value, "");
    }
    const char* meaning = length == 0 ? "end of an empty text" : "end of the text";
    addLine(lines, offset + length, "00", "NUL", "", meaning);
    offset += length + 1;
  }

  // Addresses differ from run to run, so the bytes of a pointer are not shown.
  static std::string hexOf(const FieldView& field) {
    const bool isAddress = field.def().isPointer() && field.pointer() != nullptr;
    return isAddress ? "pp pp pp pp" : hexBytes(field.bytes(), field.def().width);
  }

  static std::string decimalAndHex(const FieldView& field, const std::string& shown) {
    switch (field.kind()) {
      case FieldKind::kNumber:
      case FieldKind::kCount:
      case FieldKind::kFlags:
      case FieldKind::kTime:
      case FieldKind::kClientTime: {
        const bool isSigned =
            field.kind() == FieldKind::kTime || field.kind() == FieldKind::kClientTime;
        const std::uint32_t value = field.number();
        return (isSigned ? std::to_string(static_cast<std::int32_t>(value))
                         : std::to_string(value)) +
               " = " + hexNumber(value, field.def().width);
      }
      case FieldKind::kReserved:
        return "";
      default:
        return shown;
    }
  }

  // Long fields take several lines; what they mean stands on the first.
  void addBytes(std::string& lines, std::uint32_t offset, const std::string& hex,
                const std::string& name, const std::string& value, const std::string& meaning,
                bool isAlarming) const {
    const std::size_t step = kBytesPerLine * 3;
    for (std::size_t i = 0; i < hex.size(); i += step) {
      const std::string part = hex.substr(i, step - 1);
      const auto at = offset + static_cast<std::uint32_t>(i / 3);
      if (i == 0) {
        addLine(lines, at, part, name, value, isAlarming ? style_.alarm(meaning) : meaning);
      } else {
        addLine(lines, at, part, "", "", "");
      }
    }
  }

  void addLine(std::string& lines, std::uint32_t offset, const std::string& hex,
               const std::string& name, const std::string& value,
               const std::string& meaning) const {
    std::string line = style_.faint(leftPadded(std::to_string(offset), 7)) + "  " +
                       padded(hex, kHexColumns) + "  " + style_.name(padded(name, kNameColumns)) +
                       "  " + padded(value, kValueColumns) + "  " + meaning;
    while (line.back() == ' ') line.pop_back();
    lines += line + "\n";
  }

  const BkoqPrintOptions& options_;
  const Scope& scope_;
  Style style_;
  std::vector<BlockText> blocks_;  // by label
  bool isEmbedded_ = false;
  std::string prefix_;  // of the fields of an embedded record
};

}  // namespace

bool printAnnotated(const RecordView& job, const BkoqPrintOptions& options, const Scope& scope,
                    Output& out) {
  Annotator annotator(options, scope);
  Walker<Annotator>(annotator).walk(job);
  return annotator.print(out);
}

}  // namespace bkoq::kit
