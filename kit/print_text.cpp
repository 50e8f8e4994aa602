#include <algorithm>
#include <cstring>
#include <string_view>

#include "kit/print.h"
#include "kit/style.h"
#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

constexpr std::size_t kIndent = 4;
constexpr std::size_t kOffsetColumns = 3;
constexpr std::size_t kValueColumns = 12;  // numbers are padded to this, so that comments align
constexpr std::size_t kLeastWidth = 40;
constexpr std::size_t kLeastPiece = 16;  // of a text that is broken into lines

class TextPrinter : public WalkHandler {
 public:
  TextPrinter(const Options& options, const Scope& scope, Output& out)
      : options_(options), scope_(scope), out_(out), style_(options.colour != 0) {
    if (options.width > 0) width_ = std::max<std::size_t>(options.width, kLeastWidth);
  }

  bool beginRecord(const RecordView& record, const Position& at) {
    const bool isStart = scope_.path != nullptr && !isInScope_ && scope_.holds(at.path);
    if (isStart) {
      isInScope_ = true;
      firstDepth_ = at.depth;
    }
    const bool isShownHere = isShown(*record.def, at);
    isAnythingShown_ |= isShownHere;
    // The rows of an embedded record follow the row that embeds it; every other one has a heading.
    if (isShownHere && (!isEmbedded_ || scope_.only != nullptr || isStart)) {
      out_.put(indentOf(at), ' ');
      out_.put(style_.headingStart(), record.def->name);
      if (!at.path.isEmpty()) out_.put(" ", at.path.text());
      out_.put(style_.end(), "  ", style_.faintStart(), placeName(at.block, at.blockOffset),
               style_.end());
      if (isDoubtful(at.block, options_)) {
        out_.put("  ", style_.alarmStart(), "doubtful", style_.end());
      }
      out_.put("\n");
    }
    isEmbedded_ = false;
    return !out_.failed();
  }

  bool endRecord(const RecordView&, const Position& at) {
    if (at.depth == firstDepth_) isInScope_ = false;
    return true;
  }

  bool field(const FieldView& field, const Block& block, const Position& at) {
    isEmbedded_ = field.def().kind == FieldKind::kEmbedded;
    if (!isInScope_ && scope_.isExactly(at.path)) printAlone(field, block, at);
    if (!isShown(*field.record().def, at) || isHidden(field, options_)) return !out_.failed();
    Value& value = value_;
    describe(field, block, value);
    const std::size_t indent = indentOf(at) + kIndent / 2;
    const std::size_t nameColumns = columnsOfNames(*field.record().def);
    const Characters<11> offset = decimal(field.def().offset);
    const std::string_view name = field.def().nameText();
    const std::size_t offsetColumns = std::max(std::string_view(offset).size(), kOffsetColumns);
    column_ = indent + offsetColumns + 2 + nameColumns + 2;

    out_.put(indent, ' ');
    out_.put(style_.faintStart());
    putRight(out_, offset, offsetColumns);
    out_.put(style_.end(), "  ", style_.nameStart());
    putLeft(out_, name, nameColumns);
    out_.put(style_.end());
    used_ = column_ - 2;
    gap_ = 2;
    if (value.isAlarming) {
      putPiece(style_.alarmStart(), value.lead);
    } else {
      putPiece({}, value.lead);
    }
    if (value.hasTexts) putTexts(value, field, block);
    completeComment(field, block, value, at);
    putComment(value);
    out_.put("\n");
    return !out_.failed();
  }

  bool isAnythingShown() const { return isAnythingShown_; }

 private:
  bool isShown(const RecordDef& def, const Position& at) const {
    if (scope_.only != nullptr) return &def == scope_.only;
    if (scope_.path != nullptr && !isInScope_) return false;
    return options_.depth == 0 || at.depth - firstDepth_ < options_.depth;
  }
  std::size_t indentOf(const Position& at) const {
    return scope_.only != nullptr ? 0 : (at.depth - firstDepth_) * kIndent;
  }

  // The field that was asked for: its value, without the number of its block. What holds records is
  // printed as them.
  void printAlone(const FieldView& field, const Block& block, const Position& at) {
    isAnythingShown_ = true;  // an array may be empty
    if (scope_.isPattern && isHidden(field, options_)) return;
    if (field.target() != nullptr && (block.bytes != nullptr || isEmbedded_)) return;
    Value& value = value_;
    describe(field, block, value);
    if (value.hasTexts) value.lead.clear();
    if (scope_.isPattern) out_.put(style_.nameStart(), at.path.text(), style_.end(), ": ");
    putValue(out_, value, field, block, options_.showSecrets != 0);
    out_.put("\n");
  }

  // The longest name of a record decides. It is measured once.
  std::size_t columnsOfNames(const RecordDef& record) {
    std::size_t& known = nameColumns_[static_cast<std::size_t>(record.type)];
    if (known == 0) {
      for (const FieldDef& def : record) known = std::max(known, def.nameText().size());
    }
    return known;
  }

  void completeComment(const FieldView& field, const Block& block, Value& value,
                       const Position& at) const {
    const bool isCut = options_.depth > 0 && at.depth - firstDepth_ + 1 >= options_.depth;
    if (isCut && scope_.only == nullptr && field.target() != nullptr &&
        std::string_view(value.lead) != "null") {
      value.comment.put(", not shown");
    }
    if (value.hasTexts && isDoubtful(block.label, options_)) value.comment.put("doubtful");
  }

  // Whether so many columns more fit on the line.
  bool fits(std::size_t width) const { return width_ == 0 || used_ + gap_ + width <= width_; }

  void putGap() {
    out_.put(gap_, ' ');
    used_ += gap_;
    gap_ = 0;
  }
  void putPiece(std::string_view start, std::string_view text) {
    if (text.empty()) return;
    putGap();
    out_.put(start, text);
    if (!start.empty()) out_.put(style_.end());
    used_ += text.size();  // all that comes here is ASCII
  }

  void putTexts(const Value& value, const FieldView& field, const Block& block) {
    forEachText(field, block, options_.showSecrets != 0,
                [&](const ShownText& shown, std::uint32_t index) {
                  if (index > 0) {
                    gap_ = 1;
                  } else if (const std::string_view lead = value.lead; !lead.empty()) {
                    gap_ = lead.back() == ':' ? 1 : 2;
                  }
                  putShown(shown, index + 1 == block.count ? "" : ",");
                  return !out_.failed();
                });
  }

  // A text that does not fit is broken into pieces, one a line, each in quotes of its own.
  void putShown(const ShownText& shown, const char* comma) {
    const std::size_t width = width_ == 0 ? 0 : columnsOf(shown) + std::strlen(comma);
    if (!fits(width) && used_ + gap_ > column_) breakLine();
    if (shown.isBare() || fits(width)) {
      putGap();
      out_.put(style_.textStart());
      putText(out_, shown);
      out_.put(comma);
      out_.put(style_.end());
      used_ += width;
      return;
    }
    const std::size_t room =
        width_ > column_ + 2 + kLeastPiece ? width_ - column_ - 2 : kLeastPiece;
    std::size_t taken = 0;
    putGap();
    out_.put(style_.textStart());
    out_.put("\"");
    const auto putWritten = [&](std::string_view written) {
      const std::size_t more = columns(written);
      if (taken + more > room) {
        out_.put("\"");
        out_.put(style_.end());
        breakLine();
        putGap();
        out_.put(style_.textStart());
        out_.put("\"");
        taken = 0;
      }
      out_.put(written);
      taken += more;
    };
    forEachWritten(shown.kept, putWritten);
    if (shown.isMasked) forEachWritten(kMask, putWritten);
    out_.put("\"");
    out_.put(comma);
    out_.put(style_.end());
    used_ = column_ + taken + 2 + std::strlen(comma);
  }

  static std::size_t columnsOf(const ShownText& shown) {
    if (shown.isBare()) return std::strlen(kMask);
    return writtenColumns(shown.kept) + 2 + (shown.isMasked ? std::strlen(kMask) : 0);
  }

  void putComment(const Value& value) {
    const std::string_view comment = value.comment;
    if (comment.empty()) return;
    const std::size_t valueEnd = column_ + kValueColumns;
    gap_ = used_ < valueEnd ? valueEnd - used_ + 2 : 2;
    // A narrow line gives up the alignment before it gives up being one line.
    if (!fits(comment.size())) gap_ = 2;
    if (!fits(comment.size()) && used_ > column_) breakLine();
    putPiece(value.isAlarming ? style_.alarmStart() : style_.faintStart(), comment);
  }

  void breakLine() {
    out_.put("\n");
    used_ = 0;
    gap_ = column_;
  }

  const Options& options_;
  const Scope& scope_;
  Output& out_;
  Style style_;
  std::size_t width_ = 0;
  // Of the row that is being written: where its value begins, columns used, spaces that come next.
  std::size_t column_ = 0;
  std::size_t used_ = 0;
  std::size_t gap_ = 0;
  bool isEmbedded_ = false;
  bool isAnythingShown_ = false;
  bool isInScope_ = false;
  unsigned int firstDepth_ = 0;  // of what stands at the path
  Value value_;                  // of the row
  std::size_t nameColumns_[kRecordTypeCount] = {};
};

}  // namespace

bool printText(const RecordView& job, const Options& options, const Scope& scope, Output& out) {
  if (*scope.note != '\0') {
    const Style style(options.colour != 0);
    out.put(style.alarmStart(), scope.note, style.end(), "\n");
  }
  TextPrinter printer(options, scope, out);
  Walker<TextPrinter>(printer).walk(job);
  return printer.isAnythingShown();
}

}  // namespace bkoq::kit
