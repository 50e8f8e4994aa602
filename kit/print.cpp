#include "kit/print.h"

#include <cstdio>

#include "bkoq/kit.h"
#include "kit/guard.h"
#include "kit/image.h"
#include "kit/json.h"
#include "kit/layout_check.h"
#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

Options optionsOf(const BkoqPrintOptions* options, const BkoqImagePlaces* places) {
  Options chosen{};
  if (options != nullptr) static_cast<BkoqPrintOptions&>(chosen) = *options;
  if (places != nullptr) chosen.places = *places;
  return chosen;
}

BkoqStatus print(const RecordView& job, const Options& options, const Scope& scope, BkoqSink sink,
                 void* user) {
  Output out(sink, user);
  bool isAnythingShown = false;
  switch (options.format) {
    case BKOQ_FORMAT_TEXT:
      isAnythingShown = printText(job, options, scope, out);
      break;
    case BKOQ_FORMAT_JSON:
    case BKOQ_FORMAT_PLAIN_JSON:
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
    isFound_ |= record.def == scope_.only || scope_.isExactly(at.path);
    return !isFound_;
  }
  bool field(const FieldView&, const Block&, const Position& at) {
    isFound_ |= scope_.isExactly(at.path);
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

// Looks for the field, or the text, that lies at a byte of a block, and prints what it finds.
class PlacePrinter : public WalkHandler {
 public:
  PlacePrinter(std::uint32_t block, std::uint32_t offset, const Options& options, Output& out)
      : block_(block),
        offset_(offset),
        out_(out),
        isJson_(options.format == BKOQ_FORMAT_JSON),
        showSecrets_(options.showSecrets != 0) {}

  bool field(const FieldView& field, const Block& block, const Position& at) {
    if (block.label == block_ && field.target() == nullptr) {
      putTextPlace(field, block, at);
      return false;
    }
    const std::uint32_t begin = at.blockOffset + field.def().offset;
    const bool isHere =
        at.block == block_ && offset_ >= begin && offset_ - begin < field.def().width;
    if (!isHere || field.def().kind == FieldKind::kEmbedded) return true;
    putFieldPlace(field, block, at, offset_ - begin);
    return false;
  }

  bool isFound() const { return isFound_; }

 private:
  void putFieldPlace(const FieldView& field, const Block& block, const Position& at,
                     std::uint32_t byte) {
    const FieldDef& def = field.def();
    isFound_ = true;
    if (isJson_) {
      putJsonStart(at);
      out_.put(", \"byte\": ", decimal(byte), ", \"record\": \"", field.record().def->name,
               "\", \"fieldOffset\": ", decimal(def.offset), ", \"width\": ", decimal(def.width),
               ", \"meaning\": ");
      putJsonText(out_, def.meaning);
      out_.put(", ");
      putJsonValue(out_, field, block, showSecrets_);
      return out_.put("}\n}\n");
    }
    Value value;
    describe(field, block, value);
    out_.put(placeName(block_, offset_), ": byte ", decimal(byte), " of ", at.path.text(), ", ",
             field.record().def->name, "+", decimal(def.offset), ", ");
    putCounted(out_, def.width, "byte", "bytes");
    out_.put("\n", def.name, ": ");
    putValue(out_, value, field, block, showSecrets_);
    if (!value.comment.isEmpty()) out_.put("  ", value.comment);
    out_.put("\nmeaning: ", def.meaning, "\n");
  }

  void putTextPlace(const FieldView& field, const Block& block, const Position& at) {
    std::uint32_t begin = 0;
    forEachText(field, block, true, [&](const ShownText& whole, std::uint32_t index) {
      const auto size = static_cast<std::uint32_t>(whole.kept.size()) + 1;
      const ShownText shown = shownText(field, whole.kept, index, showSecrets_);
      // Where something masked ends is not told, so all that follows it counts as part of it.
      const bool isHidden = shown.isMasked && offset_ - begin >= shown.kept.size();
      if (isHidden || offset_ - begin < size) {
        putText(field, block, at, shown, index, isHidden, offset_ - begin == size - 1);
        isFound_ = true;
        return false;
      }
      begin += size;
      byte_ = begin;
      return true;
    });
  }

  void putText(const FieldView& field, const Block& block, const Position& at,
               const ShownText& shown, std::uint32_t index, bool isHidden, bool isNul) {
    const Characters<11> byte = decimal(offset_ - byte_);
    if (isJson_) {
      putJsonStart(at);
      if (!isHidden) out_.put(", \"byte\": ", byte);
      out_.put(", \"text\": ", decimal(index + 1), ", \"texts\": ", decimal(block.count),
               ", \"value\": ");
      putJsonText(out_, shown.kept, shown.isMasked ? kMask : "");
      if (shown.isMasked) out_.put(", \"masked\": true");
      out_.put(", \"meaning\": ");
      putJsonText(out_, field.def().meaning);
      return out_.put("}\n}\n");
    }
    out_.put(placeName(block_, offset_), ": ");
    if (isHidden || isNul) {
      out_.put(isHidden ? "in or after what is masked" : "the NUL");
    } else {
      out_.put("byte ", byte);
    }
    out_.put(" of text ", decimal(index + 1), " of ", decimal(block.count), " of ", at.path.text(),
             "\ntext: ");
    kit::putText(out_, shown);
    out_.put("\nmeaning: ", field.def().meaning, "\n");
  }

  void putJsonStart(const Position& at) {
    out_.put(jsonStart("bkoq-place"), ",\n  \"block\": ", decimal(block_),
             ",\n  \"offset\": ", decimal(offset_), ",\n  \"place\": {\"path\": \"", at.path.text(),
             "\"");
  }

  std::uint32_t block_;
  std::uint32_t offset_;
  std::uint32_t byte_ = 0;  // where the text begins in the block
  Output& out_;
  bool isJson_;
  bool showSecrets_;
  bool isFound_ = false;
};

bool isPlaceFormat(const Options& options) {
  return options.format == BKOQ_FORMAT_TEXT || options.format == BKOQ_FORMAT_JSON;
}

BkoqStatus printAt(const RecordView& job, std::uint32_t block, std::uint32_t offset,
                   const Options& options, BkoqSink sink, void* user) {
  if (!isPlaceFormat(options)) return BKOQ_BAD_ARGUMENT;
  Output out(sink, user);
  PlacePrinter printer(block, offset, options, out);
  Walker<PlacePrinter>(printer).walk(job);
  if (!printer.isFound()) return BKOQ_NOT_FOUND;
  return out.flush() ? BKOQ_OK : BKOQ_SINK_FAILED;
}

// Looks for the last block that begins at or before a byte of the image, and no further than the
// first masked text: where the next block begins would tell how long it is.
class BlockFinder : public WalkHandler {
 public:
  BlockFinder(std::uint32_t offset, const Options& options) : offset_(offset), options_(options) {}

  bool beginRecord(const RecordView& record, const Position& at) {
    if (at.depth > 0) return true;
    Block job;
    job.label = 1;
    job.bytes = record.bytes;
    job.size = record.def->size;
    return take(job, nullptr);
  }
  bool field(const FieldView& field, const Block& block, const Position&) {
    return block.bytes == nullptr || take(block, &field);
  }

  bool isFound() const { return block_.label != 0; }
  const Block& block() const { return block_; }
  std::uint32_t begin() const { return begin_; }
  bool isMasked() const { return isMasked_; }

 private:
  bool take(const Block& block, const FieldView* field) {
    const std::uint32_t begin = imageOffset(block, options_);
    // Blocks of no bytes begin where the next one does.
    if (begin > offset_) return true;
    if (isFound() && begin < begin_) return true;
    block_ = block;
    begin_ = begin;
    isMasked_ = field != nullptr && field->target() == nullptr &&
                kit::isMasked(*field, block, options_.showSecrets != 0);
    return !isMasked_;
  }

  std::uint32_t offset_;
  const Options& options_;
  Block block_;
  std::uint32_t begin_ = 0;
  bool isMasked_ = false;
};

struct HeaderWord {
  std::uint32_t offset;
  const char* meaning;
};
constexpr HeaderWord kHeaderWords[] = {{0, "what every image begins with"},
                                       {kVersionAt, "version of the format"},
                                       {kLayoutAt, "layout of the records: 1 current, 2 previous"},
                                       {kSizeAt, "size of the image in bytes"},
                                       {kRootAt, "offset of the job record"},
                                       {kBlocksAt, "number of blocks"},
                                       {kChecksumAt, "checksum"}};

// What belongs to no block: the header, or what follows a block.
BkoqStatus printOutside(std::uint32_t offset, const std::string& meaning, const Options& options,
                        BkoqSink sink, void* user) {
  Output out(sink, user);
  if (options.format == BKOQ_FORMAT_JSON) {
    out.put(jsonStart("bkoq-place") + ",\n  \"fileOffset\": " + std::to_string(offset) +
            ",\n  \"place\": {\"meaning\": " + jsonQuoted(meaning) + "}\n}\n");
  } else {
    out.put("file:" + std::to_string(offset) + ": " + meaning + "\n");
  }
  return out.flush() ? BKOQ_OK : BKOQ_SINK_FAILED;
}

BkoqStatus printAtFile(const RecordView& job, std::uint32_t offset, const Options& options,
                       BkoqSink sink, void* user) {
  if (!isPlaceFormat(options)) return BKOQ_BAD_ARGUMENT;
  if (offset < kHeaderSize) {
    const HeaderWord* word = kHeaderWords;
    for (const HeaderWord& each : kHeaderWords) {
      if (each.offset <= offset) word = &each;
    }
    return printOutside(offset, std::string("header, ") + word->meaning, options, sink, user);
  }
  const auto* image = static_cast<const std::uint8_t*>(options.places.image);
  if (offset >= loadWord(image + kSizeAt)) return BKOQ_NOT_FOUND;
  BlockFinder finder(offset, options);
  Walker<BlockFinder>(finder).walk(job);
  if (!finder.isFound()) return BKOQ_NOT_FOUND;
  const std::uint32_t inBlock = offset - finder.begin();
  if (finder.isMasked() || inBlock < finder.block().size) {
    return printAt(job, finder.block().label, inBlock, options, sink, user);
  }
  const std::uint32_t end = finder.begin() + finder.block().size;
  const bool isPadding = offset < (end + kAlignment - 1) / kAlignment * kAlignment;
  const std::string label = "#" + std::to_string(finder.block().label);
  return printOutside(offset,
                      isPadding ? "padding after block " + label : "in no block, after " + label,
                      options, sink, user);
}

// A tree of the other layout is printed as far as this one can, but not without a word.
std::string layoutNote(const RecordView& job) {
  Path path;
  const FieldDef* other = checkLayout(job, &path);
  if (other == nullptr) return "";
  return std::string("this looks like a tree of the ") + layoutName(otherLayout(job.layout)) +
         " layout: " + path.text() + " is not zero, where that layout has " + other->name;
}

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqPrintImage(const void* root, BkoqLayout layout, const char* path,
                          const BkoqPrintOptions* options, const BkoqImagePlaces* places,
                          BkoqSink sink, void* user) {
  using namespace bkoq::kit;
  if (root == nullptr || sink == nullptr || !isLayout(layout)) return BKOQ_BAD_ARGUMENT;
  return guarded([&] {
    const Options chosen = optionsOf(options, places);
    const RecordView job = RecordView::job(root, layout);
    Scope scope;
    std::string note;
    if (path != nullptr) {
      if (chosen.format == BKOQ_FORMAT_ANNOTATED) return BKOQ_BAD_ARGUMENT;
      scope.path = path;
      scope.isPattern = isPattern(path);
      return holds(job, scope) ? print(job, chosen, scope, sink, user) : BKOQ_NOT_FOUND;
    }
    if (chosen.onlyRecord != nullptr) {
      scope.only = findRecordDef(job.layout, chosen.onlyRecord);
      if (scope.only == nullptr || !holds(job, scope)) return BKOQ_NOT_FOUND;
    }
    note = layoutNote(job);
    scope.note = note.c_str();
    return print(job, chosen, scope, sink, user);
  });
}

BkoqStatus bkoqPrint(const void* root, BkoqLayout layout, const BkoqPrintOptions* options,
                     BkoqSink sink, void* user) {
  return bkoqPrintImage(root, layout, nullptr, options, nullptr, sink, user);
}

BkoqStatus bkoqPrintField(const void* root, BkoqLayout layout, const char* path,
                          const BkoqPrintOptions* options, BkoqSink sink, void* user) {
  if (path == nullptr) return BKOQ_BAD_ARGUMENT;
  return bkoqPrintImage(root, layout, path, options, nullptr, sink, user);
}

BkoqStatus bkoqPrintAt(const void* root, BkoqLayout layout, uint32_t block, uint32_t offset,
                       const BkoqPrintOptions* options, BkoqSink sink, void* user) {
  using namespace bkoq::kit;
  if (root == nullptr || sink == nullptr || !isLayout(layout)) return BKOQ_BAD_ARGUMENT;
  return guarded([&] {
    return printAt(RecordView::job(root, layout), block, offset, optionsOf(options, nullptr), sink,
                   user);
  });
}

BkoqStatus bkoqPrintAtFile(const void* root, BkoqLayout layout, uint32_t offset,
                           const BkoqPrintOptions* options, const BkoqImagePlaces* places,
                           BkoqSink sink, void* user) {
  using namespace bkoq::kit;
  const bool hasImage = places != nullptr && places->image != nullptr;
  if (root == nullptr || sink == nullptr || !isLayout(layout) || !hasImage) {
    return BKOQ_BAD_ARGUMENT;
  }
  return guarded([&] {
    return printAtFile(RecordView::job(root, layout), offset, optionsOf(options, places), sink,
                       user);
  });
}

int bkoqFileSink(void* file, const char* text, size_t size) {
  return std::fwrite(text, 1, size, static_cast<FILE*>(file)) == size ? 0 : 1;
}
