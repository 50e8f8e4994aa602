#include "kit/print_records.h"

#include <algorithm>
#include <string>
#include <vector>

#include "bkoq/kit.h"
#include "kit/guard.h"
#include "kit/json.h"
#include "kit/output.h"
#include "kit/text.h"

namespace bkoq::kit {
namespace {

using Cells = std::vector<std::string>;

// Rows under a heading each, aligned for people or as Markdown.
struct Table {
  Cells headings;
  std::vector<Cells> rows;
  std::vector<bool> isNumeric;  // by column: numbers are aligned to the right
};

std::string textTable(const Table& table) {
  std::vector<std::size_t> widths;
  for (const std::string& heading : table.headings) widths.push_back(columns(heading));
  for (const Cells& row : table.rows) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], columns(row[i]));
  }
  const auto line = [&](const Cells& row) {
    std::string text;
    for (std::size_t i = 0; i < row.size(); ++i) {
      text += "  ";
      text += table.isNumeric[i] ? leftPadded(row[i], widths[i]) : padded(row[i], widths[i]);
    }
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text + "\n";
  };
  std::string text = line(table.headings);
  for (const Cells& row : table.rows) text += line(row);
  return text;
}

std::string markdownTable(const Table& table) {
  const auto line = [](const Cells& row) {
    std::string text = "|";
    for (const std::string& cell : row) {
      text += cell.empty() ? " |" : " " + cell + " |";
    }
    return text + "\n";
  };
  std::string text = line(table.headings) + "|";
  for (const bool isNumeric : table.isNumeric) text += isNumeric ? "---:|" : "---|";
  text += "\n";
  for (const Cells& row : table.rows) text += line(row);
  return text;
}

// A field that only some filters have is said to be theirs.
std::string meaningOf(const FieldDef& field) {
  const std::string filters = variantName(field.variants);
  return filters.empty() ? field.meaning : filters + ": " + field.meaning;
}

// The names of the records behind or in a field.
Cells targetsOf(const FieldDef& field, BkoqLayout layout) {
  if (field.target == RecordType::kMedia) {
    return {recordDef(layout, RecordType::kDisk)->name, recordDef(layout, RecordType::kTape)->name};
  }
  const RecordDef* target = recordDef(layout, field.target);
  return target != nullptr ? Cells{target->name} : Cells{};
}

std::string code(const std::string& text, bool isMarkdown) {
  return isMarkdown && !text.empty() ? "`" + text + "`" : text;
}

// "array of BKNODE".
std::string kindAndTarget(const FieldDef& field, BkoqLayout layout, bool isMarkdown) {
  std::string targets;
  for (const std::string& name : targetsOf(field, layout)) {
    targets += (targets.empty() ? "" : " or ") + code(name, isMarkdown);
  }
  std::string text = kindName(field.kind);
  if (field.kind == FieldKind::kArray) text = "array of " + targets;
  if (field.kind == FieldKind::kRecord) text = "pointer to " + targets;
  if (field.kind == FieldKind::kEmbedded) text = "embedded " + targets;
  return field.secret != Secret::kNone ? text + ", secret" : text;
}

Table tableOf(const RecordDef& record, BkoqLayout layout, bool isMarkdown) {
  Table table;
  table.headings = {"offset", "width", "field", "kind", "meaning", "filled by"};
  table.isNumeric = {true, true, false, false, false, false};
  for (const FieldDef& field : record) {
    table.rows.push_back({std::to_string(field.offset), std::to_string(field.width),
                          code(field.name, isMarkdown), kindAndTarget(field, layout, isMarkdown),
                          meaningOf(field), field.filledBy});
  }
  return table;
}

// The words of a field in any of its records: tape nodes have some of their own.
std::vector<Word> wordsOf(const FieldDef& field) {
  std::vector<Word> words;
  const auto add = [&](const Word* list) {
    for (; list->name != nullptr; ++list) {
      const auto isSame = [&](const Word& word) {
        return word.value == list->value && std::strcmp(word.name, list->name) == 0;
      };
      if (std::none_of(words.begin(), words.end(), isSame)) words.push_back(*list);
    }
  };
  if (field.words != nullptr) add(field.words);
  if (field.words == nodeTypes()) add(tapeNodeTypes());
  return words;
}

// "usInclExcl: 0 include, 1 exclude", for each field of a record that has codes or bits.
std::string codesOf(const RecordDef& record, bool isMarkdown) {
  std::string text;
  for (const FieldDef& field : record) {
    std::string codes;
    for (const Word& word : wordsOf(field)) {
      const std::string value = field.kind == FieldKind::kFlags
                                    ? std::string(hexNumber(word.value, field.width))
                                    : std::to_string(word.value);
      codes += (codes.empty() ? "" : "; ") + value + " " + word.name;
    }
    if (codes.empty()) continue;
    const char* what = field.kind == FieldKind::kFlags ? "bits" : "codes";
    text += isMarkdown ? "- " + code(field.name, true) + ", " + what + ": " + codes + "\n"
                       : "  " + std::string(field.name) + ", " + what + ": " + codes + "\n";
  }
  return text;
}

std::string headingOf(const RecordDef& record, bool isMarkdown) {
  const std::string size = counted(record.size, "byte", "bytes");
  if (isMarkdown) {
    return "## " + code(record.name, true) + "\n\n" + size + ": " + record.meaning + ".\n\n";
  }
  return std::string(record.name) + ", " + size + ": " + record.meaning + "\n";
}

std::string jsonWords(const Word* words) {
  std::string text = "{";
  for (const Word* word = words; word->name != nullptr; ++word) {
    text += (word == words ? "\"" : ", \"") + std::to_string(word->value) +
            "\": " + jsonQuoted(word->name);
  }
  return text + "}";
}

std::string jsonField(const FieldDef& field, BkoqLayout layout) {
  std::string text = "{\"name\": \"" + std::string(field.name) +
                     "\", \"offset\": " + std::to_string(field.offset) +
                     ", \"width\": " + std::to_string(field.width) + ", \"kind\": \"" +
                     kindName(field.kind) + "\"";
  std::string targets;
  for (const std::string& name : targetsOf(field, layout)) {
    targets += (targets.empty() ? "\"" : ", \"") + name + "\"";
  }
  if (!targets.empty()) text += ", \"records\": [" + targets + "]";
  if (field.kind == FieldKind::kArray || field.kind == FieldKind::kTextList) {
    text += ", \"countOffset\": " + std::to_string(field.countOffset);
  }
  if (field.secret != Secret::kNone) text += ", \"secret\": true";
  if (field.variants != kAlways) {
    text += ", \"filters\": " + jsonQuoted(variantName(field.variants));
  }
  if (field.words != nullptr) {
    text += field.kind == FieldKind::kFlags ? ", \"bits\": " : ", \"values\": ";
    text += jsonWords(field.words);
  }
  text += ", \"meaning\": " + jsonQuoted(field.meaning);
  if (field.filledBy[0] != '\0') text += ", \"filledBy\": " + jsonQuoted(field.filledBy);
  return text + "}";
}

std::string jsonRecord(const RecordDef& record, BkoqLayout layout) {
  std::string text = "{\"record\": \"" + std::string(record.name) +
                     "\", \"size\": " + std::to_string(record.size) +
                     ", \"meaning\": " + jsonQuoted(record.meaning) + ", \"fields\": [";
  bool isFirst = true;
  for (const FieldDef& field : record) {
    text += (isFirst ? "\n      " : ",\n      ") + jsonField(field, layout);
    isFirst = false;
  }
  return text + "\n    ]}";
}

// The record asked for, or all of the layout.
std::vector<const RecordDef*> recordsNamed(const char* name, BkoqLayout layout) {
  std::vector<const RecordDef*> records;
  if (name != nullptr) {
    const RecordDef* record = findRecordDef(layout, name);
    if (record != nullptr) records.push_back(record);
    return records;
  }
  for (std::size_t i = 0; i < kRecordTypeCount; ++i) {
    const RecordDef* record = recordDef(layout, static_cast<RecordType>(i));
    if (record != nullptr) records.push_back(record);
  }
  return records;
}

void printRecords(const std::vector<const RecordDef*>& records, BkoqLayout layout,
                  BkoqFormat format, Output& out) {
  if (format == BKOQ_FORMAT_C) return printC(records, layout, out);
  if (format == BKOQ_FORMAT_MAGIC) return printMagic(out);
  if (format == BKOQ_FORMAT_KAITAI) return printKaitai(out);
  if (format == BKOQ_FORMAT_JSON) {
    out.put(jsonStart("bkoq-layout") + ",\n  \"layout\": \"" + layoutName(layout) +
            "\",\n  \"records\": [");
    for (const RecordDef* record : records) {
      out.put((record == records.front() ? "\n    " : ",\n    ") + jsonRecord(*record, layout));
    }
    out.put("\n  ]\n}\n");
    return;
  }
  const bool isMarkdown = format == BKOQ_FORMAT_MARKDOWN;
  for (const RecordDef* record : records) {
    if (record != records.front()) out.put("\n");
    const Table table = tableOf(*record, layout, isMarkdown);
    out.put(headingOf(*record, isMarkdown));
    out.put(isMarkdown ? markdownTable(table) : textTable(table));
    const std::string codes = codesOf(*record, isMarkdown);
    if (!codes.empty()) out.put("\n" + codes);
  }
}

// ---- What differs between the layouts

// Fields that begin at the same byte; null where one layout has none there.
struct FieldPair {
  const FieldDef* current;
  const FieldDef* previous;
};

bool isSame(const FieldDef& a, const FieldDef& b) {
  return a.width == b.width && a.kind == b.kind && a.variants == b.variants &&
         std::strcmp(a.name, b.name) == 0 && std::strcmp(a.meaning, b.meaning) == 0 &&
         std::strcmp(a.filledBy, b.filledBy) == 0;
}

std::vector<FieldPair> differingFields(const RecordDef& current, const RecordDef& previous) {
  std::vector<FieldPair> pairs;
  // Where the rows are the same ones, nothing can differ; the rows of a filter overlap.
  if (current.fields == previous.fields) return pairs;
  const FieldDef* a = current.begin();
  const FieldDef* b = previous.begin();
  while (a != current.end() || b != previous.end()) {
    // NOLINTBEGIN(clang-analyzer-core.NullDereference): no record is without fields
    const std::uint32_t atA = a != current.end() ? a->offset : current.size;
    const std::uint32_t atB = b != previous.end() ? b->offset : previous.size;
    // NOLINTEND(clang-analyzer-core.NullDereference)
    const FieldDef* inCurrent = atA <= atB ? a++ : nullptr;
    const FieldDef* inPrevious = atB <= atA ? b++ : nullptr;
    const bool isInBoth = inCurrent != nullptr && inPrevious != nullptr;
    if (!isInBoth || !isSame(*inCurrent, *inPrevious)) pairs.push_back({inCurrent, inPrevious});
  }
  return pairs;
}

std::string described(const FieldDef* field, bool isMarkdown) {
  if (field == nullptr) return "part of the field before";
  return code(field->name, isMarkdown) + ", " + counted(field->width, "byte", "bytes") + ": " +
         field->meaning;
}

Table differencesOf(const std::vector<FieldPair>& pairs, bool isMarkdown) {
  Table table;
  table.headings = {"offset", "current", "previous"};
  table.isNumeric = {true, false, false};
  for (const FieldPair& pair : pairs) {
    const FieldDef& named = pair.current != nullptr ? *pair.current : *pair.previous;
    table.rows.push_back({std::to_string(named.offset), described(pair.current, isMarkdown),
                          described(pair.previous, isMarkdown)});
  }
  return table;
}

std::string jsonPair(const FieldPair& pair) {
  const FieldDef& named = pair.current != nullptr ? *pair.current : *pair.previous;
  std::string text = "{\"offset\": " + std::to_string(named.offset) + ", \"current\": ";
  text += pair.current != nullptr ? jsonField(*pair.current, BKOQ_LAYOUT_CURRENT) : "null";
  text += ", \"previous\": ";
  text += pair.previous != nullptr ? jsonField(*pair.previous, BKOQ_LAYOUT_PREVIOUS) : "null";
  return text + "}";
}

void printLayoutDifferences(const std::vector<const RecordDef*>& records, BkoqFormat format,
                            Output& out) {
  const bool isJson = format == BKOQ_FORMAT_JSON;
  const bool isMarkdown = format == BKOQ_FORMAT_MARKDOWN;
  if (isJson) out.put(jsonStart("bkoq-layout-differences") + ",\n  \"records\": [");
  bool isFirst = true;
  for (const RecordDef* current : records) {
    const RecordDef* previous = recordDef(BKOQ_LAYOUT_PREVIOUS, current->type);
    std::vector<FieldPair> pairs;
    if (previous != nullptr) pairs = differingFields(*current, *previous);
    if (previous != nullptr && pairs.empty()) continue;
    if (isJson) {
      out.put(std::string(isFirst ? "\n    " : ",\n    ") + "{\"current\": \"" + current->name +
              "\", \"previous\": " +
              (previous != nullptr ? "\"" + std::string(previous->name) + "\"" : "null") +
              ", \"fields\": [");
      for (std::size_t i = 0; i < pairs.size(); ++i) {
        out.put((i == 0 ? "\n      " : ",\n      ") + jsonPair(pairs[i]));
      }
      out.put(pairs.empty() ? "]}" : "\n    ]}");
    } else {
      if (!isFirst) out.put("\n");
      std::string heading = code(current->name, isMarkdown);
      heading += previous != nullptr ? " and " + code(previous->name, isMarkdown)
                                     : ": not in the previous layout";
      out.put((isMarkdown ? "## " : "") + heading + (isMarkdown ? "\n\n" : "\n"));
      const Table table = differencesOf(pairs, isMarkdown);
      if (!pairs.empty()) out.put(isMarkdown ? markdownTable(table) : textTable(table));
    }
    isFirst = false;
  }
  if (isJson) {
    out.put(isFirst ? "]\n}\n" : "\n  ]\n}\n");
  } else if (isFirst) {
    out.put("No difference between the layouts.\n");
  }
}

bool isTableFormat(BkoqFormat format) {
  return format == BKOQ_FORMAT_TEXT || format == BKOQ_FORMAT_JSON || format == BKOQ_FORMAT_MARKDOWN;
}

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqPrintRecords(const char* record, BkoqLayout layout, BkoqFormat format, BkoqSink sink,
                            void* user) {
  using namespace bkoq::kit;
  const bool isOfImages = format == BKOQ_FORMAT_MAGIC || format == BKOQ_FORMAT_KAITAI;
  const bool isKnown =
      isTableFormat(format) || format == BKOQ_FORMAT_C || (isOfImages && record == nullptr);
  if (sink == nullptr || !isLayout(layout) || !isKnown) return BKOQ_BAD_ARGUMENT;
  return guarded([&] {
    const std::vector<const RecordDef*> records = recordsNamed(record, layout);
    if (records.empty()) return BKOQ_NOT_FOUND;
    Output out(sink, user);
    printRecords(records, layout, format, out);
    return out.flush() ? BKOQ_OK : BKOQ_SINK_FAILED;
  });
}

BkoqStatus bkoqPrintLayoutDifferences(const char* record, BkoqFormat format, BkoqSink sink,
                                      void* user) {
  using namespace bkoq::kit;
  if (sink == nullptr || !isTableFormat(format)) return BKOQ_BAD_ARGUMENT;
  return guarded([&] {
    const std::vector<const RecordDef*> records = recordsNamed(record, BKOQ_LAYOUT_CURRENT);
    if (records.empty()) return BKOQ_NOT_FOUND;
    Output out(sink, user);
    printLayoutDifferences(records, format, out);
    return out.flush() ? BKOQ_OK : BKOQ_SINK_FAILED;
  });
}
