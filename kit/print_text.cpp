#include <algorithm>

#include "kit/print.h"
#include "kit/style.h"
#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

constexpr std::size_t kIndent = 4;
constexpr std::size_t kValueColumns = 12;  // numbers are padded to this, so that comments align
constexpr std::size_t kLeastWidth = 40;
constexpr std::size_t kLeastPiece = 16;  // of a text that is broken into lines

class TextPrinter : public WalkHandler {
 public:
  TextPrinter(const BkoqPrintOptions& options, const Scope& scope, Output& out)
      : options_(options), scope_(scope), out_(out), style_(options.colour != 0) {
    if (options.width > 0) width_ = std::max<std::size_t>(options.width, kLeastWidth);
  }

  bool beginRecord(const RecordView& record, const Position& at) {
    const bool isStart = scope_.path != nullptr && !isInScope_ && scope_.holds(at.path.text());
    if (isStart) {
      isInScope_ = true;
      firstDepth_ = at.depth;
    }
    const bool isShownHere = isShown(*record.def, at);
    isAnythingShown_ |= isShownHere;
    // The rows of an embedded record follow the row that embeds it; every other one has a heading.
    if (isShownHere && (!isEmbedded_ || scope_.only != nullptr || isStart)) {
      std::string heading = record.def->name;
      if (at.path.length() > 0) heading += std::string(" ") + at.path.text();
      line(indentOf(at),
           style_.heading(heading) + "  " + style_.faint(placeName(at.block, at.blockOffset)));
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
    if (!isInScope_ && scope_.isExactly(at.path.text())) printAlone(field, block);
    if (!isShown(*field.record().def, at) || isHidden(field, options_)) return true;
    const Value value = describe(field, block, options_.showSecrets != 0);
    const std::size_t indent = indentOf(at) + kIndent / 2;
    const std::string offset = leftPadded(std::to_string(field.def().offset), 3);
    const std::string name = padded(field.def().name, nameColumns(field.record()));
    const std::size_t column = indent + offset.size() + 2 + columns(name) + 2;

    std::string row = style_.faint(offset) + "  " + style_.name(name) + "  ";
    std::size_t used = column;
    addValue(value, column, row, used);
    addComment(value, commentOf(field, value, at), column, row, used);
    line(indent, row);
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
  void printAlone(const FieldView& field, const Block& block) {
    if (field.target() != nullptr && (block.bytes != nullptr || isEmbedded_)) {
      isAnythingShown_ = true;  // an array may be empty
      return;
    }
    Value value = describe(field, block, options_.showSecrets != 0);
    if (!value.texts.empty()) value.lead.clear();
    line(0, oneLine(value));
    isAnythingShown_ = true;
  }

  static std::size_t nameColumns(const RecordView& record) {
    std::size_t longest = 0;
    for (const FieldDef& def : *record.def) longest = std::max(longest, std::strlen(def.name));
    return longest;
  }

  std::string commentOf(const FieldView& field, const Value& value, const Position& at) const {
    const bool holdsRecords = field.target() != nullptr && value.lead != "null";
    const bool isCut = options_.depth > 0 && at.depth - firstDepth_ + 1 >= options_.depth;
    if (holdsRecords && scope_.only == nullptr && isCut) return value.comment + ", not shown";
    return value.comment;
  }

  void addValue(const Value& value, std::size_t column, std::string& row, std::size_t& used) const {
    row += value.isAlarming ? style_.alarm(value.lead) : value.lead;
    used += columns(value.lead);
    for (std::size_t i = 0; i < value.texts.size(); ++i) {
      const bool isLast = i + 1 == value.texts.size();
      if (i > 0) {
        row += " ";
        ++used;
      } else if (!value.lead.empty()) {
        row += value.lead.back() == ':' ? " " : "  ";
        used += value.lead.back() == ':' ? 1 : 2;
      }
      addText(value.texts[i], isLast ? "" : ",", column, row, used);
    }
  }

  // A text that does not fit is broken into pieces, one a line, each in quotes of its own.
  void addText(const ShownText& shown, const char* comma, std::size_t column, std::string& row,
               std::size_t& used) const {
    const std::string whole = (shown.isBare ? shown.text : quoted(shown.text)) + comma;
    if (width_ == 0 || used + columns(whole) <= width_) {
      row += style_.text(whole);
      used += columns(whole);
      return;
    }
    if (used > column) breakLine(column, row, used);
    if (shown.isBare || used + columns(whole) <= width_) {
      row += style_.text(whole);
      used += columns(whole);
      return;
    }
    const std::size_t room = width_ > column + 2 + kLeastPiece ? width_ - column - 2 : kLeastPiece;
    std::string piece;
    std::size_t taken = 0;
    for (const std::string& character : printableCharacters(shown.text)) {
      const std::size_t width = columns(character);
      if (taken + width > room) {
        row += style_.text("\"" + piece + "\"");
        breakLine(column, row, used);
        piece.clear();
        taken = 0;
      }
      piece += character;
      taken += width;
    }
    row += style_.text("\"" + piece + "\"" + comma);
    used += taken + 2 + std::strlen(comma);
  }

  void addComment(const Value& value, const std::string& comment, std::size_t column,
                  std::string& row, std::size_t& used) const {
    if (comment.empty()) return;
    const std::size_t valueEnd = column + kValueColumns;
    std::size_t gap = used < valueEnd ? valueEnd - used + 2 : 2;
    // A narrow line gives up the alignment before it gives up being one line.
    if (width_ > 0 && used + gap + columns(comment) > width_) gap = 2;
    const std::string shown = value.isAlarming ? style_.alarm(comment) : style_.faint(comment);
    if (width_ == 0 || used + gap + columns(comment) <= width_) {
      row += std::string(gap, ' ') + shown;
      return;
    }
    if (used > column) breakLine(column, row, used);
    row += shown;
  }

  static void breakLine(std::size_t column, std::string& row, std::size_t& used) {
    while (!row.empty() && row.back() == ' ') row.pop_back();
    row += "\n" + std::string(column, ' ');
    used = column;
  }

  void line(std::size_t indent, const std::string& text) {
    out_.put(std::string(indent, ' '));
    out_.put(text);
    out_.put("\n");
  }

  const BkoqPrintOptions& options_;
  const Scope& scope_;
  Output& out_;
  Style style_;
  std::size_t width_ = 0;
  bool isEmbedded_ = false;
  bool isAnythingShown_ = false;
  bool isInScope_ = false;
  unsigned int firstDepth_ = 0;  // of what stands at the path
};

}  // namespace

bool printText(const RecordView& job, const BkoqPrintOptions& options, const Scope& scope,
               Output& out) {
  TextPrinter printer(options, scope, out);
  Walker<TextPrinter>(printer).walk(job);
  return printer.isAnythingShown();
}

}  // namespace bkoq::kit
