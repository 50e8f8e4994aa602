#include <algorithm>
#include <vector>

#include "bkoq/kit.h"
#include "kit/align.h"
#include "kit/guard.h"
#include "kit/json.h"
#include "kit/output.h"
#include "kit/path.h"
#include "kit/pattern.h"
#include "kit/style.h"
#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

// What a visitor is given of a value at most, in bytes.
constexpr std::size_t kMostValue = std::size_t{1} << 20;

// A field on one side of a comparison; null where that side has none there.
using Side = const FieldView*;

struct Difference {
  const Path& path;
  const Path& otherPath;
  const char* record;
  std::uint32_t offset;
  BkoqChange change;
  Side first;  // both null for an element
  Side second;
  const char* name;  // of an element; null without one
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
    const unsigned int variant = first.variant();
    if (first.def != second.def || variant != second.variant()) {
      return recordsOfOtherFields(first, second);
    }
    for (const FieldDef& def : *first.def) {
      if ((def.variants & variant) == 0) continue;
      const FieldView a(first, def);
      const FieldView b(second, def);
      // Most fields are equal, and lead nowhere.
      const bool leadsOn =
          def.kind == FieldKind::kEmbedded || (def.isPointer() && a.pointer() != nullptr);
      if (!leadsOn && std::memcmp(a.bytes(), b.bytes(), def.width) == 0) continue;
      if (!fields(&a, &b)) return false;
    }
    return true;
  }

 private:
  bool recordsOfOtherFields(const RecordView& first, const RecordView& second) {
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

  static std::vector<FieldView> fieldsOf(const RecordView& record) {
    std::vector<FieldView> fields;
    forEachField(record, [&](const FieldView& field) {
      fields.push_back(field);
      return true;
    });
    return fields;
  }

  // The array that a field counts when both records have one: its elements tell the rest.
  static bool countsArray(const FieldView& count) {
    if (count.def().kind != FieldKind::kCount) return false;
    return !forEachField(count.record(), [&](const FieldView& field) {
      return field.kind() != FieldKind::kArray || field.def().countOffset != count.def().offset ||
             field.pointer() == nullptr;
    });
  }

  bool fields(Side first, Side second) {
    const Side named = first != nullptr ? first : second;
    if (first != nullptr && second != nullptr && countsArray(*first) && countsArray(*second)) {
      return true;
    }
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
    if (first.def().kind != FieldKind::kArray) {
      return records(first.elementAt(firstBlock.bytes), second.elementAt(secondBlock.bytes));
    }
    const Alignment alignment(first, firstBlock, second, secondBlock);
    return alignment.forEachPair([&](const ElementPair& pair) {
      const bool isInFirst = pair.first != kNoElement;
      const bool isInSecond = pair.second != kNoElement;
      const Path::Mark mark = path_.appendIndex(isInFirst ? pair.first : pair.second);
      const Path::Mark otherMark = otherPath_.appendIndex(isInSecond ? pair.second : pair.first);
      const auto inFirst = [&] {
        return first.elementAt(firstBlock.bytes + pair.first * first.target()->size);
      };
      const auto inSecond = [&] {
        return second.elementAt(secondBlock.bytes + pair.second * second.target()->size);
      };
      bool goesOn = true;
      if (!isInFirst) {
        goesOn = element(BKOQ_ADDED, inSecond(), pair.second);
      } else if (!isInSecond) {
        goesOn = element(BKOQ_REMOVED, inFirst(), pair.first);
      } else {
        goesOn = (!pair.hasMoved || element(BKOQ_MOVED, inFirst(), pair.first)) &&
                 records(inFirst(), inSecond());
      }
      path_.cut(mark);
      otherPath_.cut(otherMark);
      return goesOn;
    });
  }

  bool element(BkoqChange change, const RecordView& element, std::uint32_t index) {
    return report_(Difference{path_, otherPath_, element.def->name, index * element.def->size,
                              change, nullptr, nullptr, elementName(element)});
  }

  bool differ(Side first, Side second) {
    const Side named = first != nullptr ? first : second;
    return report_(Difference{path_, otherPath_, named->record().def->name, named->def().offset,
                              BKOQ_CHANGED, first, second, nullptr});
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
  return side != nullptr && side->def().secret != Secret::kNone &&
         isMasked(*side, blockOf(*side), showSecrets);
}

bool isMasked(const Difference& difference, bool showSecrets) {
  return isMaskedIn(difference.first, showSecrets) || isMaskedIn(difference.second, showSecrets);
}

// Without the numbers of blocks, which are not the same in two trees that differ.
void putSide(Output& out, Side side, bool showSecrets) {
  if (side == nullptr) return out.put("absent");
  const Block block = blockOf(*side);
  if (block.bytes != nullptr && side->target() != nullptr) {
    return putContentName(out, *side, block);
  }
  Value value;
  describe(*side, block, value);
  if (value.hasTexts) value.lead.clear();
  putValue(out, value, *side, block, showSecrets);
  if (!value.comment.isEmpty() && side->kind() != FieldKind::kReserved) {
    out.put(" (", value.comment, ")");
  }
}

// "BKNODE "ledger"".
void putElement(Output& out, const Difference& difference) {
  out.put(difference.record);
  if (difference.name == nullptr) return;
  out.put(" ");
  putQuoted(out, difference.name);
}

void putOld(Output& out, const Difference& difference, bool showSecrets) {
  if (difference.change == BKOQ_CHANGED) return putSide(out, difference.first, showSecrets);
  if (difference.change == BKOQ_ADDED) return out.put("absent");
  putElement(out, difference);
}

void putNew(Output& out, const Difference& difference, bool showSecrets) {
  if (difference.change == BKOQ_CHANGED) return putSide(out, difference.second, showSecrets);
  if (difference.change == BKOQ_REMOVED) return out.put("absent");
  putElement(out, difference);
}

// What of the path in the second tree is another: its last name, or all of it.
std::string otherName(const Difference& difference) {
  const std::string path = difference.path.text();
  const std::string other = difference.otherPath.text();
  const std::size_t last = other.rfind('.') + 1;
  return path.compare(0, last, other, 0, last) == 0 && other.back() != ']' ? other.substr(last)
                                                                           : other;
}

void putTextLine(Output& out, const Difference& difference, bool showSecrets, const Style& style) {
  out.put(style.nameStart(), difference.path.text(), style.end());
  const bool isElsewhere = std::strcmp(difference.path.text(), difference.otherPath.text()) != 0;
  if (isElsewhere && difference.change != BKOQ_MOVED) {
    out.put(" / ", style.nameStart(), otherName(difference), style.end());
  }
  out.put(" ", style.faintStart(), "(", difference.record, "+", decimal(difference.offset), ")",
          style.end(), ": ");
  if (difference.change == BKOQ_MOVED) {
    putElement(out, difference);
    return out.put(" moved to ", style.nameStart(), difference.otherPath.text(), style.end(), "\n");
  }
  out.put(style.removedStart());
  putOld(out, difference, showSecrets);
  out.put(style.end());
  out.put(" -> ");
  out.put(style.textStart());
  putNew(out, difference, showSecrets);
  out.put(style.end());
  if (isMasked(difference, showSecrets)) {
    out.put(" ", style.faintStart(), "(masked)", style.end());
  }
  out.put("\n");
}

void putJsonSide(Output& out, Side side, bool showSecrets) {
  if (side == nullptr) return out.put("null");
  out.put("{");
  putJsonValue(out, *side, blockOf(*side), showSecrets);
  out.put("}");
}

void putJsonElement(Output& out, const Difference& difference, bool isThere) {
  if (!isThere) return out.put("null");
  out.put("{\"kind\": \"record\", \"value\": \"", difference.record, "\"");
  if (difference.name != nullptr) {
    out.put(", \"name\": ");
    putJsonText(out, difference.name);
  }
  out.put("}");
}

const char* changeName(BkoqChange change) {
  switch (change) {
    case BKOQ_ADDED:
      return "added";
    case BKOQ_REMOVED:
      return "removed";
    case BKOQ_MOVED:
      return "moved";
    default:
      return "changed";
  }
}

void putJsonDifference(Output& out, const Difference& difference, bool showSecrets) {
  out.put("{\"change\": \"", changeName(difference.change), "\", \"path\": ");
  putJsonText(out, difference.path.text());
  out.put(", \"otherPath\": ");
  putJsonText(out, difference.otherPath.text());
  out.put(", \"record\": \"", difference.record, "\", \"offset\": ", decimal(difference.offset),
          ", \"old\": ");
  if (difference.change == BKOQ_CHANGED) {
    putJsonSide(out, difference.first, showSecrets);
    out.put(", \"new\": ");
    putJsonSide(out, difference.second, showSecrets);
  } else {
    putJsonElement(out, difference, difference.change != BKOQ_ADDED);
    out.put(", \"new\": ");
    putJsonElement(out, difference, difference.change != BKOQ_REMOVED);
  }
  out.put("}");
}

// Whether a difference is at a path that was asked for. An element that only one tree has is also
// about all that lies in it.
bool isWanted(const Difference& difference, const BkoqPaths& paths) {
  const auto isAbout = [&](const char* const* patterns, bool withInner) {
    for (; *patterns != nullptr; ++patterns) {
      for (const Path* path : {&difference.path, &difference.otherPath}) {
        if (covers(*patterns, path->text())) return true;
        if (withInner && leadsTo(*patterns, path->text())) return true;
      }
    }
    return false;
  };
  const bool isElement = difference.change == BKOQ_ADDED || difference.change == BKOQ_REMOVED;
  if (paths.ignored != nullptr && isAbout(paths.ignored, false)) return false;
  return paths.only == nullptr || isAbout(paths.only, isElement);
}

BkoqStatus printDifferences(const RecordView& first, const RecordView& second,
                            const BkoqPrintOptions& options, const BkoqPaths& paths, BkoqSink sink,
                            void* user, std::uint32_t& count) {
  const bool showSecrets = options.showSecrets != 0;
  const bool isJson = options.format == BKOQ_FORMAT_JSON;
  if (!isJson && options.format != BKOQ_FORMAT_TEXT) return BKOQ_BAD_ARGUMENT;
  const Style style(options.colour != 0);
  Output out(sink, user);
  if (isJson) {
    out.put(jsonStart("bkoq-differences"), ",\n  \"layouts\": [\"", layoutName(first.layout),
            "\", \"", layoutName(second.layout), "\"],\n  \"differences\": [");
  }
  compare(first, second, [&](const Difference& difference) {
    if (!isWanted(difference, paths)) return !out.failed();
    if (isJson) {
      out.put(count > 0 ? ",\n    " : "\n    ");
      putJsonDifference(out, difference, showSecrets);
    } else {
      putTextLine(out, difference, showSecrets, style);
    }
    ++count;
    return !out.failed();
  });
  if (isJson) out.put(count > 0 ? "\n  ]\n}\n" : "]\n}\n");
  return out.flush() ? BKOQ_OK : BKOQ_SINK_FAILED;
}

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqCompareChanges(const void* first, BkoqLayout firstLayout, const void* second,
                              BkoqLayout secondLayout, int showSecrets, const BkoqPaths* paths,
                              BkoqChangeVisitor visitor, void* user, uint32_t* count) {
  using namespace bkoq::kit;
  std::uint32_t found = 0;
  if (count != nullptr) *count = 0;
  if (first == nullptr || second == nullptr || !isLayout(firstLayout) || !isLayout(secondLayout)) {
    return BKOQ_BAD_ARGUMENT;
  }
  const BkoqPaths wanted = paths != nullptr ? *paths : BkoqPaths{};
  const BkoqStatus status = guarded([&] {
    const auto report = [&](const Difference& difference) {
      if (!isWanted(difference, wanted)) return true;
      ++found;
      if (visitor == nullptr) return true;
      const std::string oldValue =
          printedBy([&](Output& out) { putOld(out, difference, showSecrets != 0); }, kMostValue);
      const std::string newValue =
          printedBy([&](Output& out) { putNew(out, difference, showSecrets != 0); }, kMostValue);
      const BkoqDifference visit = {difference.path.text(),
                                    difference.otherPath.text(),
                                    difference.record,
                                    difference.offset,
                                    oldValue.c_str(),
                                    newValue.c_str(),
                                    isMasked(difference, showSecrets != 0) ? 1 : 0};
      return visitor(&visit, difference.change, user) == 0;
    };
    return compare(RecordView::job(first, firstLayout), RecordView::job(second, secondLayout),
                   report)
               ? BKOQ_OK
               : BKOQ_STOPPED;
  });
  if (count != nullptr) *count = found;
  return status;
}

BkoqStatus bkoqCompare(const void* first, BkoqLayout firstLayout, const void* second,
                       BkoqLayout secondLayout, int showSecrets, BkoqDifferenceVisitor visitor,
                       void* user, uint32_t* count) {
  struct Inner {
    BkoqDifferenceVisitor visitor;
    void* user;
  } inner{visitor, user};
  const BkoqChangeVisitor visit = [](const BkoqDifference* difference, BkoqChange, void* outer) {
    const auto& inner = *static_cast<const Inner*>(outer);
    return inner.visitor(difference, inner.user);
  };
  return bkoqCompareChanges(first, firstLayout, second, secondLayout, showSecrets, nullptr,
                            visitor != nullptr ? visit : nullptr, &inner, count);
}

BkoqStatus bkoqPrintChanges(const void* first, BkoqLayout firstLayout, const void* second,
                            BkoqLayout secondLayout, const BkoqPrintOptions* options,
                            const BkoqPaths* paths, BkoqSink sink, void* user, uint32_t* count) {
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
                            options != nullptr ? *options : BkoqPrintOptions{},
                            paths != nullptr ? *paths : BkoqPaths{}, sink, user, found);
  });
  if (count != nullptr) *count = found;
  return status;
}

BkoqStatus bkoqPrintDifferences(const void* first, BkoqLayout firstLayout, const void* second,
                                BkoqLayout secondLayout, const BkoqPrintOptions* options,
                                BkoqSink sink, void* user, uint32_t* count) {
  return bkoqPrintChanges(first, firstLayout, second, secondLayout, options, nullptr, sink, user,
                          count);
}
