#include <algorithm>
#include <string>

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

// Counts the blocks that a field leads to, its own included.
std::uint32_t countBlocks(const FieldView& field, const Block& block);

std::uint32_t countBlocks(const RecordView& record) {
  std::uint32_t count = 0;
  forEachField(record, [&](const FieldView& field) {
    const bool hasRecords = field.target() != nullptr;
    if (hasRecords && field.def().kind == FieldKind::kEmbedded) {
      count += countBlocks(field.elementAt(field.bytes()));
    } else if (field.pointsSomewhere() && field.pointer() != nullptr) {
      // How long a text is makes no difference to how many blocks there are.
      count += hasRecords ? countBlocks(field, blockOf(field)) : 1;
    }
    return true;
  });
  return count;
}

std::uint32_t countBlocks(const FieldView& field, const Block& block) {
  std::uint32_t count = 1;
  for (std::uint32_t i = 0; i < block.count; ++i) {
    count += countBlocks(field.elementAt(block.bytes + i * field.target()->size));
  }
  return count;
}

// Writes one block after the other, each in the order of its bytes. The number of a block depends
// on how many lie in those before it; these are counted again at each level, of which there are
// few, so that nothing has to be kept.
class Annotator {
 public:
  Annotator(const Options& options, const Scope& scope, Output& out)
      : options_(options), scope_(scope), out_(out), style_(options.colour != 0) {}

  bool print(const RecordView& job) {
    Block block;
    block.label = 1;
    block.bytes = job.bytes;
    block.size = job.def->size;
    const bool isPrinted = isShown(job);
    if (isPrinted || hasShownEmbedded(job)) {
      beginBlock(block,
                 std::string(job.def->name) + ", " + counted(job.def->size, "byte", "bytes"));
    }
    std::uint32_t label = 1;
    putRecord(job, 0, "", label);
    label = 1;
    descend(job, label);
    return isAnythingShown_;
  }

 private:
  bool isShown(const RecordView& record) const {
    return scope_.only == nullptr || record.def == scope_.only;
  }
  bool hasShownEmbedded(const RecordView& record) const {
    return !forEachField(record, [&](const FieldView& field) {
      return field.def().kind != FieldKind::kEmbedded || !isShown(field.elementAt(field.bytes()));
    });
  }

  // The lines of a record; `label` is the number of the last block before those that it leads to,
  // and moves on past them.
  void putRecord(const RecordView& record, std::uint32_t offset, const std::string& prefix,
                 std::uint32_t& label) {
    forEachField(record, [&](const FieldView& field) {
      if (field.def().kind == FieldKind::kEmbedded) {
        // An embedded record is read on as part of the job.
        putRecord(field.elementAt(field.bytes()), offset + field.def().offset,
                  path_.text() + std::string(field.def().name) + ".", label);
        return true;
      }
      Block block = blockWithoutTexts(field);
      if (block.bytes != nullptr) block.label = label + 1;
      if (isShown(record)) putField(field, block, offset, prefix);
      if (block.bytes != nullptr) {
        label += field.target() != nullptr ? countBlocks(field, block) : 1;
      }
      return !out_.failed();
    });
  }

  // Long texts need not be measured where only their number is shown.
  static Block blockWithoutTexts(const FieldView& field) {
    if (!field.pointsSomewhere() || field.target() != nullptr) return blockOf(field);
    Block block;
    block.bytes = field.pointer();
    return block;
  }

  // The blocks that a record leads to, in their order.
  bool descend(const RecordView& record, std::uint32_t& label) {
    return forEachField(record, [&](const FieldView& field) {
      const Path::Mark mark = path_.append(field.def().name);
      bool goesOn = true;
      if (field.def().kind == FieldKind::kEmbedded) {
        goesOn = descend(field.elementAt(field.bytes()), label);
      } else {
        Block block = blockOf(field);
        if (block.bytes != nullptr) {
          block.label = ++label;
          goesOn = putBlock(field, block, label);
        }
      }
      path_.cut(mark);
      return goesOn && !out_.failed();
    });
  }

  bool putBlock(const FieldView& field, const Block& block, std::uint32_t& label) {
    if (field.target() == nullptr) {
      if (scope_.only == nullptr) putTexts(field, block);
      isAnythingMasked_ |= isMasked(field, block, options_.showSecrets != 0);
      return true;
    }
    const std::uint32_t size = field.target()->size;
    std::uint32_t last = label;
    const bool isPrinted = scope_.only == nullptr || field.target() == scope_.only;
    if (isPrinted && (block.count > 0)) {
      beginBlock(block, headingOf(field, block) + ", " + counted(block.size, "byte", "bytes"));
      for (std::uint32_t i = 0; i < block.count && !out_.failed(); ++i) {
        const Path::Mark mark = markElement(field, i);
        out_.put(path_.text());
        out_.put("\n");
        path_.cut(mark);
        putRecord(field.elementAt(block.bytes + i * size), i * size, "", last);
      }
    }
    for (std::uint32_t i = 0; i < block.count && !out_.failed(); ++i) {
      const Path::Mark mark = markElement(field, i);
      descend(field.elementAt(block.bytes + i * size), label);
      path_.cut(mark);
    }
    return !out_.failed();
  }

  Path::Mark markElement(const FieldView& field, std::uint32_t index) {
    if (field.def().kind == FieldKind::kArray) return path_.appendIndex(index);
    return path_.mark();
  }

  std::string headingOf(const FieldView& field, const Block& block) const {
    return std::string(path_.text()) + ": " + contentName(field, block);
  }

  void beginBlock(const Block& block, const std::string& what) {
    if (isAnythingShown_) out_.put("\n");
    isAnythingShown_ = true;
    std::string heading = "#" + std::to_string(block.label) + "  " + what;
    const std::string place = filePlace(block);
    if (!place.empty()) heading += ", file " + place;
    out_.put(style_.heading(heading));
    if (isDoubtful(block.label, options_)) out_.put("  " + style_.alarm("doubtful"));
    out_.put("\n");
  }

  // Where the block lies in its image. After a masked text this would tell how long the text is.
  std::string filePlace(const Block& block) const {
    if (options_.places.image == nullptr) return "";
    if (isAnythingMasked_) return "? (--show-secrets)";
    return std::to_string(imageOffset(block, options_));
  }

  void putTexts(const FieldView& field, const Block& block) {
    const bool showSecrets = options_.showSecrets != 0;
    const bool isAnyMasked = isMasked(field, block, showSecrets);
    beginBlock(block, headingOf(field, block) + ", " +
                          (isAnyMasked ? "masked" : counted(block.size, "byte", "bytes")));
    bool isPlaceKnown = true;
    std::uint32_t offset = 0;
    forEachText(field, block, showSecrets, [&](const ShownText& shown, std::uint32_t index) {
      const std::string name = block.count > 1 ? "text " + std::to_string(index + 1) : "text";
      putText(name, shown, isPlaceKnown, offset);
      isPlaceKnown = isPlaceKnown && !shown.isMasked;
      return !out_.failed();
    });
  }

  // One text: its bytes, a line for each few of them, then its NUL. Of what is masked, and of what
  // follows it in the block, no line tells where it ends.
  void putText(const std::string& name, const ShownText& shown, bool isPlaceKnown,
               std::uint32_t& offset) {
    const auto length = static_cast<std::uint32_t>(shown.kept.size());
    const auto place = [&](std::uint32_t at) {
      return isPlaceKnown ? std::to_string(offset + at) : std::string("?");
    };
    for (std::uint32_t i = 0; i < length && !out_.failed(); i += kBytesPerLine) {
      const std::string_view piece = shown.kept.substr(i, kBytesPerLine);
      const auto* bytes = reinterpret_cast<const std::uint8_t*>(piece.data());
      putLine(place(i), hexBytes(bytes, piece.size()), i == 0 ? name : "", quoted(piece), "");
    }
    if (shown.isMasked) {
      putLine(place(length), "**", length == 0 ? name : "", kMask, "not shown");
    } else {
      const char* meaning = length == 0 ? "end of an empty text" : "end of the text";
      putLine(place(length), "00", "NUL", "", meaning);
    }
    offset += length + 1;
  }

  void putField(const FieldView& field, const Block& block, std::uint32_t recordOffset,
                const std::string& prefix) {
    const Value value = describe(field, block);
    const std::string shown = block.label != 0 && field.target() == nullptr
                                  ? "#" + std::to_string(block.label)
                                  : value.lead;
    std::string meaning = field.def().meaning;
    if (field.kind() == FieldKind::kReserved && value.isAlarming) {
      meaning = "reserved, but NOT ZERO";
    } else if (field.kind() == FieldKind::kFlags) {
      if (!bitNames(field).empty()) meaning += " (" + bitNames(field) + ")";
    } else if (!value.comment.empty() && (value.isAlarming || !field.pointsSomewhere()) &&
               field.kind() != FieldKind::kReserved) {
      meaning += " (" + value.comment + ")";
    }
    putBytes(recordOffset + field.def().offset, hexOf(field), prefix + field.def().name,
             decimalAndHex(field, shown), meaning, value.isAlarming);
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

  // Long fields take several lines; what they mean is on the first.
  void putBytes(std::uint32_t offset, const std::string& hex, const std::string& name,
                const std::string& value, const std::string& meaning, bool isAlarming) {
    const std::size_t step = kBytesPerLine * 3;
    for (std::size_t i = 0; i < hex.size(); i += step) {
      const std::string part = hex.substr(i, step - 1);
      const std::string at = std::to_string(offset + static_cast<std::uint32_t>(i / 3));
      if (i == 0) {
        putLine(at, part, name, value, isAlarming ? style_.alarm(meaning) : meaning);
      } else {
        putLine(at, part, "", "", "");
      }
    }
  }

  void putLine(const std::string& offset, const std::string& hex, const std::string& name,
               const std::string& value, const std::string& meaning) {
    std::string line = style_.faint(leftPadded(offset, 7)) + "  " + padded(hex, kHexColumns) +
                       "  " + style_.name(padded(name, kNameColumns)) + "  " +
                       padded(value, kValueColumns) + "  " + meaning;
    while (line.back() == ' ') line.pop_back();
    out_.put(line);
    out_.put("\n");
  }

  const Options& options_;
  const Scope& scope_;
  Output& out_;
  Style style_;
  Path path_;
  bool isAnythingShown_ = false;
  bool isAnythingMasked_ = false;
};

}  // namespace

bool printAnnotated(const RecordView& job, const Options& options, const Scope& scope,
                    Output& out) {
  if (*scope.note != '\0') {
    out.put(Style(options.colour != 0).alarm(scope.note));
    out.put("\n");
  }
  return Annotator(options, scope, out).print(job);
}

}  // namespace bkoq::kit
