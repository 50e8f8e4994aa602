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
constexpr std::size_t kOffsetColumns = 7;
constexpr std::size_t kNameColumns = 30;
constexpr std::size_t kValueColumns = 24;

// Counts the blocks that a field leads to, its own included.
std::uint32_t countBlocks(const FieldView& field, const Block& block);

std::uint32_t countBlocks(const RecordView& record) {
  std::uint32_t count = 0;
  forEachField(record, [&](const FieldView& field) {
    // Only the job embeds records, and it is in no other block.
    if (field.pointsSomewhere() && field.pointer() != nullptr) {
      // How long a text is makes no difference to how many blocks there are.
      count += field.target() != nullptr ? countBlocks(field, blockOf(field)) : 1;
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
      beginHeading(block);
      out_.put(job.def->name, ", ");
      putCounted(out_, job.def->size, "byte", "bytes");
      endHeading(block);
    }
    std::uint32_t label = 1;
    putRecord(job, 0, {}, label);
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
  void putRecord(const RecordView& record, std::uint32_t offset, std::string_view prefix,
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
      beginHeading(block);
      putHeading(field, block);
      putCounted(out_, block.size, "byte", "bytes");
      endHeading(block);
      for (std::uint32_t i = 0; i < block.count && !out_.failed(); ++i) {
        const Path::Mark mark = markElement(field, i);
        out_.put(path_.text());
        out_.put("\n");
        path_.cut(mark);
        putRecord(field.elementAt(block.bytes + i * size), i * size, {}, last);
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

  // A heading is what comes between these two.
  void beginHeading(const Block& block) {
    if (isAnythingShown_) out_.put("\n");
    isAnythingShown_ = true;
    out_.put(style_.headingStart(), "#", decimal(block.label), "  ");
  }
  void endHeading(const Block& block) {
    putFilePlace(block);
    out_.put(style_.end());
    if (isDoubtful(block.label, options_)) {
      out_.put("  ", style_.alarmStart(), "doubtful", style_.end());
    }
    out_.put("\n");
  }
  void putHeading(const FieldView& field, const Block& block) {
    out_.put(path_.text(), ": ");
    putContentName(out_, field, block);
    out_.put(", ");
  }

  // Where the block lies in its image. After a masked text this would tell how long the text is.
  void putFilePlace(const Block& block) {
    if (options_.places.image == nullptr) return;
    if (isAnythingMasked_) return out_.put(", file ? (--show-secrets)");
    out_.put(", file ", decimal(imageOffset(block, options_)));
  }

  void putTexts(const FieldView& field, const Block& block) {
    const bool showSecrets = options_.showSecrets != 0;
    const bool isAnyMasked = isMasked(field, block, showSecrets);
    beginHeading(block);
    putHeading(field, block);
    if (isAnyMasked) {
      out_.put("masked");
    } else {
      putCounted(out_, block.size, "byte", "bytes");
    }
    endHeading(block);
    bool isPlaceKnown = true;
    std::uint32_t offset = 0;
    forEachText(field, block, showSecrets, [&](const ShownText& shown, std::uint32_t index) {
      Phrase name;
      name.put("text");
      if (block.count > 1) name.put(" ", decimal(index + 1));
      putText(name, shown, isPlaceKnown, offset);
      isPlaceKnown = isPlaceKnown && !shown.isMasked;
      return !out_.failed();
    });
  }

  // One text: its bytes, a line for each few of them, then its NUL. Of what is masked, and of what
  // follows it in the block, no line tells where it ends.
  void putText(std::string_view name, const ShownText& shown, bool isPlaceKnown,
               std::uint32_t& offset) {
    const auto length = static_cast<std::uint32_t>(shown.kept.size());
    const auto putPlace = [&](std::uint32_t at) {
      if (isPlaceKnown) {
        putOffset(decimal(offset + at));
      } else {
        putOffset("?");
      }
    };
    for (std::uint32_t i = 0; i < length && !out_.failed(); i += kBytesPerLine) {
      const std::string_view piece = shown.kept.substr(i, kBytesPerLine);
      putPlace(i);
      putBytes(reinterpret_cast<const std::uint8_t*>(piece.data()), piece.size());
      putName(i == 0 ? name : std::string_view());
      if (plainStart(piece) == piece.size()) {
        putGap();
        out_.put("\"", piece, "\"");
      } else {
        putPiece(quoted(piece));
      }
      endLine();
    }
    putPlace(length);
    if (shown.isMasked) {
      putCells("**", length == 0 ? name : std::string_view(), kMask, "not shown");
    } else {
      putCells("00", "NUL", "", length == 0 ? "end of an empty text" : "end of the text");
    }
    offset += length + 1;
  }

  void putField(const FieldView& field, const Block& block, std::uint32_t recordOffset,
                std::string_view prefix) {
    Value& value = value_;
    describe(field, block, value);
    const FieldDef& def = field.def();
    // Addresses differ from run to run, so the bytes of a pointer are not shown.
    const bool isAddress = def.isPointer() && field.pointer() != nullptr;
    std::uint32_t size = std::min<std::uint32_t>(def.width, kBytesPerLine);
    putOffset(decimal(recordOffset + def.offset));
    if (isAddress) {
      putPiece("pp pp pp pp");
      gap_ = kHexColumns - 11 + 2;
    } else {
      putBytes(field.bytes(), size);
    }
    if (prefix.empty()) {
      putName(def.nameText());
    } else {
      putName(std::string(prefix) + def.name);
    }
    putCell(field, block, value);
    putMeaning(field, value);
    endLine();
    // Long fields take several lines; what they mean is on the first.
    for (std::uint32_t at = size; at < def.width; at += size) {
      size = std::min<std::uint32_t>(def.width - at, kBytesPerLine);
      putOffset(decimal(recordOffset + def.offset + at));
      putBytes(field.bytes() + at, size);
      putName({});
      endLine();
    }
  }

  // The value, in decimal and hex where it is a number.
  void putCell(const FieldView& field, const Block& block, const Value& value) {
    const std::uint32_t number = field.number();
    Phrase cell;
    switch (field.kind()) {
      case FieldKind::kNumber:
      case FieldKind::kCount:
      case FieldKind::kFlags:
        cell.put(decimal(number), " = ", hexNumber(number, field.def().width));
        break;
      case FieldKind::kTime:
      case FieldKind::kClientTime:
        cell.put(decimal(static_cast<std::int32_t>(number)), " = ",
                 hexNumber(number, field.def().width));
        break;
      case FieldKind::kReserved:
        break;
      default:
        if (block.label != 0 && field.target() == nullptr) {
          cell.put("#", decimal(block.label));
        } else {
          return putPadded(value.lead, kValueColumns);
        }
    }
    putPadded(cell, kValueColumns);
  }

  void putMeaning(const FieldView& field, const Value& value) {
    const FieldKind kind = field.kind();
    putGap();
    if (value.isAlarming) out_.put(style_.alarmStart());
    if (kind == FieldKind::kReserved && value.isAlarming) {
      out_.put("reserved, but NOT ZERO");
    } else {
      out_.put(field.def().meaning);
      if (kind == FieldKind::kFlags) {
        if (putBitNames(out_, field, " (")) out_.put(")");
      } else if (!value.comment.isEmpty() && (value.isAlarming || !field.pointsSomewhere()) &&
                 kind != FieldKind::kReserved) {
        out_.put(" (", value.comment, ")");
      }
    }
    if (value.isAlarming) out_.put(style_.end());
  }

  // A line is put together from cells. The spaces after a cell are written when another one comes,
  // so that no line ends with any.
  void putOffset(std::string_view offset) {
    out_.put(style_.faintStart());
    putRight(out_, offset, kOffsetColumns);
    out_.put(style_.end());
    gap_ = 2;
  }
  void putBytes(const std::uint8_t* bytes, std::size_t size) {
    putGap();
    putHex(out_, bytes, size);
    gap_ = kHexColumns + 1 - 3 * size + 2;
  }
  void putName(std::string_view name) {
    if (style_.nameStart().empty()) return putPadded(name, kNameColumns);
    // The colour reaches as far as the spaces.
    putGap();
    out_.put(style_.nameStart());
    putLeft(out_, name, kNameColumns);
    out_.put(style_.end());
    gap_ = 2;
  }
  void putCells(std::string_view hex, std::string_view name, std::string_view value,
                std::string_view meaning) {
    putPadded(hex, kHexColumns);
    putName(name);
    putPadded(value, kValueColumns);
    putPiece(meaning);
    endLine();
  }
  void putPadded(std::string_view text, std::size_t width) {
    if (!text.empty()) putPiece(text);
    gap_ += (text.size() < width ? width - text.size() : 0) + 2;
  }
  void putPiece(std::string_view text) {
    putGap();
    out_.put(text);
  }
  void putGap() {
    out_.put(gap_, ' ');
    gap_ = 0;
  }
  void endLine() {
    out_.put("\n");
    gap_ = 0;
  }

  const Options& options_;
  const Scope& scope_;
  Output& out_;
  Style style_;
  Path path_;
  Value value_;          // of the line
  std::size_t gap_ = 0;  // spaces before the next cell
  bool isAnythingShown_ = false;
  bool isAnythingMasked_ = false;
};

}  // namespace

bool printAnnotated(const RecordView& job, const Options& options, const Scope& scope,
                    Output& out) {
  if (*scope.note != '\0') {
    const Style style(options.colour != 0);
    out.put(style.alarmStart(), scope.note, style.end(), "\n");
  }
  return Annotator(options, scope, out).print(job);
}

}  // namespace bkoq::kit
