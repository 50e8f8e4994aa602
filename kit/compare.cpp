#include <algorithm>
#include <vector>

#include "bkoq/kit.h"
#include "kit/guard.h"
#include "kit/json.h"
#include "kit/output.h"
#include "kit/path.h"
#include "kit/style.h"
#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

// A field on one side of a comparison; null where that side has none there.
using Side = const FieldView*;

struct Difference {
  const Path& path;
  const Path& otherPath;
  const char* record;
  std::uint32_t offset;
  Side first;  // both null for an element that only one tree has
  Side second;
  bool isInFirst;  // such an element
};

bool isNumber(FieldKind kind) {
  switch (kind) {
    case FieldKind::kNumber:
    case FieldKind::kCount:
    case FieldKind::kFlags:
    case FieldKind::kTime:
    case FieldKind::kClientTime:
      return true;
    default:
      return false;
  }
}

bool areBytesEqual(const FieldView& first, const FieldView& second) {
  const std::uint32_t width = std::max(first.def().width, second.def().width);
  for (std::uint32_t i = 0; i < width; ++i) {
    const std::uint8_t a = i < first.def().width ? first.bytes()[i] : 0;
    const std::uint8_t b = i < second.def().width ? second.bytes()[i] : 0;
    if (a != b) return false;
  }
  return true;
}

// Walks two trees side by side. `report(Difference)` returns whether to go on.
template <class Report>
class Comparer {
 public:
  explicit Comparer(const Report& report) : report_(report) {}

  // False when the report asked to stop.
  bool records(const RecordView& first, const RecordView& second) {
    const std::vector<FieldView> a = fieldsOf(first);
    const std::vector<FieldView> b = fieldsOf(second);
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
      const std::uint32_t atFirst = i < a.size() ? a[i].def().offset : first.def->size;
      const std::uint32_t atSecond = j < b.size() ? b[j].def().offset : second.def->size;
      const bool takesFirst = atFirst <= atSecond;
      const bool takesSecond = atSecond <= atFirst;
      if (!fields(takesFirst ? &a[i] : nullptr, takesSecond ? &b[j] : nullptr)) return false;
      if (takesFirst) ++i;
      if (takesSecond) ++j;
    }
    return true;
  }

 private:
  static std::vector<FieldView> fieldsOf(const RecordView& record) {
    std::vector<FieldView> fields;
    forEachField(record, [&](const FieldView& field) {
      fields.push_back(field);
      return true;
    });
    return fields;
  }

  bool fields(Side first, Side second) {
    const Side named = first != nullptr ? first : second;
    const Path::Mark mark = path_.append(named->def().name);
    const Path::Mark otherMark =
        otherPath_.append((second != nullptr ? second : first)->def().name);
    const bool goesOn = first != nullptr && second != nullptr ? both(*first, *second)
                        : named->isZero()                     ? true
                                                              : differ(first, second);
    path_.cut(mark);
    otherPath_.cut(otherMark);
    return goesOn;
  }

  bool both(const FieldView& first, const FieldView& second) {
    const RecordDef* a = first.target();
    const RecordDef* b = second.target();
    if (first.kind() == FieldKind::kEmbedded && second.kind() == FieldKind::kEmbedded) {
      return records(first.elementAt(first.bytes()), second.elementAt(second.bytes()));
    }
    const Block firstBlock = blockOf(first);
    const Block secondBlock = blockOf(second);
    if (firstBlock.bytes == nullptr || secondBlock.bytes == nullptr) {
      return areEqualWithoutBlocks(first, second) || differ(&first, &second);
    }
    if (a != nullptr && b != nullptr && a->type == b->type) {
      return elements(first, firstBlock, second, secondBlock);
    }
    const bool isSame = a == nullptr && b == nullptr && firstBlock.count == secondBlock.count &&
                        firstBlock.size == secondBlock.size &&
                        std::memcmp(firstBlock.bytes, secondBlock.bytes, firstBlock.size) == 0;
    return isSame || differ(&first, &second);
  }

  // At least one of the two points nowhere that can be followed.
  static bool areEqualWithoutBlocks(const FieldView& first, const FieldView& second) {
    if (isNumber(first.kind()) && isNumber(second.kind())) {
      return first.number() == second.number();
    }
    return areBytesEqual(first, second);
  }

  bool elements(const FieldView& first, const Block& firstBlock, const FieldView& second,
                const Block& secondBlock) {
    const bool isArray = first.def().kind == FieldKind::kArray;
    const std::uint32_t count = std::max(firstBlock.count, secondBlock.count);
    for (std::uint32_t i = 0; i < count; ++i) {
      Path::Mark mark = path_.mark();
      Path::Mark otherMark = otherPath_.mark();
      if (isArray) {
        mark = path_.appendIndex(i);
        otherMark = otherPath_.appendIndex(i);
      }
      const std::uint32_t size = first.target()->size;
      bool goesOn = true;
      if (i >= firstBlock.count || i >= secondBlock.count) {
        const bool isInFirst = i < firstBlock.count;
        const char* record = (isInFirst ? first : second).target()->name;
        goesOn =
            report_(Difference{path_, otherPath_, record, i * size, nullptr, nullptr, isInFirst});
      } else {
        goesOn = records(first.elementAt(firstBlock.bytes + i * size),
                         second.elementAt(secondBlock.bytes + i * size));
      }
      path_.cut(mark);
      otherPath_.cut(otherMark);
      if (!goesOn) return false;
    }
    return true;
  }

  bool differ(Side first, Side second) {
    const Side named = first != nullptr ? first : second;
    return report_(Difference{path_, otherPath_, named->record().def->name, named->def().offset,
                              first, second, false});
  }

  const Report& report_;
  Path path_;
  Path otherPath_;
};

template <class Report>
bool compare(const RecordView& first, const RecordView& second, const Report& report) {
  return Comparer<Report>(report).records(first, second);
}

bool isMaskedIn(Side side, bool showSecrets) {
  if (showSecrets || side == nullptr || side->def().secret == Secret::kNone) return false;
  const std::vector<ShownText> texts = shownTexts(*side, blockOf(*side), false);
  return std::any_of(texts.begin(), texts.end(),
                     [](const ShownText& shown) { return shown.isMasked; });
}

// Without the numbers of blocks, which are not the same in two trees that differ.
std::string wordsFor(Side side, bool showSecrets) {
  if (side == nullptr) return "absent";
  const Block block = blockOf(*side);
  if (block.bytes != nullptr && side->target() != nullptr) return contentName(*side, block);
  Value value = describe(*side, block, showSecrets);
  if (!value.texts.empty()) value.lead.clear();
  std::string words = oneLine(value);
  if (!value.comment.empty() && side->kind() != FieldKind::kReserved) {
    words += " (" + value.comment + ")";
  }
  return words;
}

std::string oldWords(const Difference& difference, bool showSecrets) {
  if (difference.first == nullptr && difference.second == nullptr) {
    return difference.isInFirst ? difference.record : "absent";
  }
  return wordsFor(difference.first, showSecrets);
}

std::string newWords(const Difference& difference, bool showSecrets) {
  if (difference.first == nullptr && difference.second == nullptr) {
    return difference.isInFirst ? "absent" : difference.record;
  }
  return wordsFor(difference.second, showSecrets);
}

bool isMasked(const Difference& difference, bool showSecrets) {
  return isMaskedIn(difference.first, showSecrets) || isMaskedIn(difference.second, showSecrets);
}

// The last part of a path.
std::string lastName(const Path& path) {
  const std::string text = path.text();
  return text.substr(text.rfind('.') + 1);
}

std::string textLine(const Difference& difference, bool showSecrets, const Style& style) {
  std::string line = style.name(difference.path.text());
  if (std::strcmp(difference.path.text(), difference.otherPath.text()) != 0) {
    line += " / " + style.name(lastName(difference.otherPath));
  }
  line += " " + style.faint("(" + std::string(difference.record) + "+" +
                            std::to_string(difference.offset) + ")");
  line += ": " + style.removed(oldWords(difference, showSecrets)) + " -> " +
          style.added(newWords(difference, showSecrets));
  if (isMasked(difference, showSecrets)) line += " " + style.faint("(masked)");
  return line + "\n";
}

std::string jsonSide(Side side, bool showSecrets) {
  if (side == nullptr) return "null";
  return "{" + jsonValue(*side, blockOf(*side), showSecrets) + "}";
}

std::string jsonDifference(const Difference& difference, bool showSecrets) {
  std::string text = "{\"path\": " + jsonQuoted(difference.path.text()) +
                     ", \"otherPath\": " + jsonQuoted(difference.otherPath.text()) +
                     ", \"record\": \"" + difference.record +
                     "\", \"offset\": " + std::to_string(difference.offset);
  if (difference.first == nullptr && difference.second == nullptr) {
    const std::string element =
        "{\"kind\": \"record\", \"value\": \"" + std::string(difference.record) + "\"}";
    text += ", \"old\": " + (difference.isInFirst ? element : "null");
    text += ", \"new\": " + (difference.isInFirst ? "null" : element);
  } else {
    text += ", \"old\": " + jsonSide(difference.first, showSecrets);
    text += ", \"new\": " + jsonSide(difference.second, showSecrets);
  }
  return text + "}";
}

BkoqStatus printDifferences(const RecordView& first, const RecordView& second,
                            const BkoqPrintOptions& options, BkoqSink sink, void* user,
                            std::uint32_t& count) {
  const bool showSecrets = options.showSecrets != 0;
  const bool isJson = options.format == BKOQ_FORMAT_JSON;
  if (!isJson && options.format != BKOQ_FORMAT_TEXT) return BKOQ_BAD_ARGUMENT;
  const Style style(options.colour != 0);
  Output out(sink, user);
  if (isJson) {
    out.put(jsonStart("bkoq-differences") + ",\n  \"layouts\": [\"" + layoutName(first.layout) +
            "\", \"" + layoutName(second.layout) + "\"],\n  \"differences\": [");
  }
  compare(first, second, [&](const Difference& difference) {
    if (isJson) {
      out.put(count > 0 ? ",\n    " : "\n    ");
      out.put(jsonDifference(difference, showSecrets));
    } else {
      out.put(textLine(difference, showSecrets, style));
    }
    ++count;
    return !out.failed();
  });
  if (isJson) out.put(count > 0 ? "\n  ]\n}\n" : "]\n}\n");
  return out.flush() ? BKOQ_OK : BKOQ_SINK_FAILED;
}

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqCompare(const void* first, BkoqLayout firstLayout, const void* second,
                       BkoqLayout secondLayout, int showSecrets, BkoqDifferenceVisitor visitor,
                       void* user, uint32_t* count) {
  using namespace bkoq::kit;
  std::uint32_t found = 0;
  if (count != nullptr) *count = 0;
  if (first == nullptr || second == nullptr || !isLayout(firstLayout) || !isLayout(secondLayout)) {
    return BKOQ_BAD_ARGUMENT;
  }
  const BkoqStatus status = guarded([&] {
    const auto report = [&](const Difference& difference) {
      ++found;
      if (visitor == nullptr) return true;
      const std::string oldValue = oldWords(difference, showSecrets != 0);
      const std::string newValue = newWords(difference, showSecrets != 0);
      const BkoqDifference visit = {difference.path.text(),
                                    difference.otherPath.text(),
                                    difference.record,
                                    difference.offset,
                                    oldValue.c_str(),
                                    newValue.c_str(),
                                    isMasked(difference, showSecrets != 0) ? 1 : 0};
      return visitor(&visit, user) == 0;
    };
    return compare(RecordView::job(first, firstLayout), RecordView::job(second, secondLayout),
                   report)
               ? BKOQ_OK
               : BKOQ_STOPPED;
  });
  if (count != nullptr) *count = found;
  return status;
}

BkoqStatus bkoqPrintDifferences(const void* first, BkoqLayout firstLayout, const void* second,
                                BkoqLayout secondLayout, const BkoqPrintOptions* options,
                                BkoqSink sink, void* user, uint32_t* count) {
  using namespace bkoq::kit;
  std::uint32_t found = 0;
  if (count != nullptr) *count = 0;
  if (first == nullptr || second == nullptr || sink == nullptr || !isLayout(firstLayout) ||
      !isLayout(secondLayout)) {
    return BKOQ_BAD_ARGUMENT;
  }
  const BkoqStatus status = guarded([&] {
    return printDifferences(RecordView::job(first, firstLayout),
                            RecordView::job(second, secondLayout),
                            options != nullptr ? *options : BkoqPrintOptions{}, sink, user, found);
  });
  if (count != nullptr) *count = found;
  return status;
}
