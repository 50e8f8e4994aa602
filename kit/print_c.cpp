#include <algorithm>
#include <string>
#include <utility>

#include "kit/print_records.h"
#include "kit/text.h"

namespace bkoq::kit {
namespace {

constexpr std::size_t kLineWidth = 100;

constexpr const char* kStart =
    R"(/* Written by "bkoq layout --c": the records of the LAYOUT layout, little-endian.

   Memory of a 32-bit program: pointers are pointers. Elsewhere, and for an image, in which a pointer
   is the offset of its block or 0, they are numbers of the same width; define BKOQ_POINTER before to
   choose. Every comment begins with the offset in the record. */
#include <stdint.h>

#ifndef BKOQ_POINTER
#if UINTPTR_MAX == 0xFFFFFFFFu
#define BKOQ_POINTER(type) type*
#else
#define BKOQ_POINTER(type) uint32_t
#endif
#endif
)";

struct FilterMember {
  std::uint8_t variant;
  const char* name;
};
// Those of which the fields are known.
constexpr FilterMember kFilterMembers[] = {{kPatternFilter, "pattern"},
                                           {kAttributeFilter, "attribute"},
                                           {kBoundFilter, "bound"},
                                           {kBetweenFilter, "between"},
                                           {kWithinFilter, "within"}};

// A declaration without its ";", and how the compiler would align it.
struct Declaration {
  std::string text;
  std::uint32_t alignment;
};

std::uint32_t alignmentOf(const RecordDef& record, BkoqLayout layout);

std::string numberType(const FieldDef& field) {
  if (field.kind == FieldKind::kTime || field.kind == FieldKind::kClientTime) return "int32_t";
  return "uint" + std::to_string(8 * field.width) + "_t";
}

Declaration declarationOf(const FieldDef& field, BkoqLayout layout) {
  const std::string name = field.name;
  const RecordDef* target = recordDef(layout, field.target);
  if (field.kind == FieldKind::kEmbedded) {
    return {std::string(target->name) + " " + name, alignmentOf(*target, layout)};
  }
  if (field.isPointer()) {
    std::string type = "char";
    if (field.target == RecordType::kMedia) type = "void";
    if (target != nullptr) type = std::string("struct ") + target->name;
    return {"BKOQ_POINTER(" + type + ") " + name, 4};
  }
  // Reserved bytes have no other width than their own; a few are a word.
  const bool isBytes = field.kind == FieldKind::kByteList ||
                       (field.kind == FieldKind::kReserved && name.compare(0, 2, "ab") == 0);
  if (isBytes) return {"uint8_t " + name + "[" + std::to_string(field.width) + "]", 1};
  return {numberType(field) + " " + name, field.width};
}

// Where what every filter has goes on after what only some have; 0 without such.
std::uint32_t endOfUnion(const RecordDef& record) {
  bool isAfterUnion = false;
  for (const FieldDef& field : record) {
    if (isAfterUnion && isCommon(field)) return field.offset;
    isAfterUnion |= !isCommon(field);
  }
  return 0;
}

std::uint32_t alignmentOf(const RecordDef& record, BkoqLayout layout) {
  std::uint32_t alignment = 1;
  for (const FieldDef& field : record) {
    alignment = std::max(alignment, declarationOf(field, layout).alignment);
  }
  // Neither the record nor the union in a filter may take more room than the table gives them.
  while (record.size % alignment != 0 || endOfUnion(record) % alignment != 0) alignment /= 2;
  return alignment;
}

bool isPacked(const RecordDef& record, BkoqLayout layout) {
  const std::uint32_t alignment = alignmentOf(record, layout);
  return std::any_of(record.begin(), record.end(), [&](const FieldDef& field) {
    return declarationOf(field, layout).alignment > alignment;
  });
}

using Line = std::pair<std::string, std::string>;  // code, comment

Line lineOf(const FieldDef& field, BkoqLayout layout, const std::string& indent) {
  return {indent + declarationOf(field, layout).text + ";",
          leftPadded(std::to_string(field.offset), 3) + "  " + field.meaning};
}

// The bytes of a filter that its kind says how to read.
void addUnion(const RecordDef& record, BkoqLayout layout, std::vector<Line>& lines) {
  lines.emplace_back("  union {", "");
  for (const FilterMember& member : kFilterMembers) {
    lines.emplace_back("    struct {", variantName(member.variant));
    for (const FieldDef& field : record) {
      if (!isCommon(field) && (field.variants & member.variant) != 0) {
        lines.push_back(lineOf(field, layout, "      "));
      }
    }
    lines.emplace_back(std::string("    } ") + member.name + ";", "");
  }
  lines.emplace_back("  } as;", "");
}

std::vector<Line> linesOf(const RecordDef& record, BkoqLayout layout) {
  std::vector<Line> lines;
  bool hasUnion = false;
  for (const FieldDef& field : record) {
    if (isCommon(field)) {
      lines.push_back(lineOf(field, layout, "  "));
    } else if (!hasUnion) {
      addUnion(record, layout, lines);
      hasUnion = true;
    }
  }
  return lines;
}

// "usInclExcl: 0 include, 1 exclude", broken into lines.
std::string codesOf(const FieldDef& field) {
  std::string text;
  std::string line = std::string("   ") + field.name + ":";
  for (const Word* word = field.words; word->name != nullptr; ++word) {
    const std::string value = field.kind == FieldKind::kFlags
                                  ? std::string(hexNumber(word->value, field.width))
                                  : std::to_string(word->value);
    const std::string next = " " + value + " " + word->name + (word[1].name != nullptr ? ";" : ".");
    if (line.size() + next.size() > kLineWidth - 3) {
      text += line + "\n";
      line = "    ";
    }
    line += next;
  }
  return text + line;
}

void printRecord(const RecordDef& record, BkoqLayout layout, Output& out) {
  out.put("\n/* " + std::string(record.name) + ", " + counted(record.size, "byte", "bytes") + ": " +
          record.meaning);
  for (const FieldDef& field : record) {
    if (field.words != nullptr) out.put("\n" + codesOf(field));
  }
  out.put(" */\n");
  const bool packed = isPacked(record, layout);
  if (packed) {
    out.put("#pragma pack(push, " + std::to_string(alignmentOf(record, layout)) + ")\n");
  }
  out.put("typedef struct " + std::string(record.name) + " {\n");
  const std::vector<Line> lines = linesOf(record, layout);
  std::size_t width = 0;
  for (const Line& line : lines) width = std::max(width, line.first.size());
  for (const Line& line : lines) {
    out.put(line.second.empty() ? line.first
                                : padded(line.first, width) + " /* " + line.second + " */");
    out.put("\n");
  }
  out.put("} " + std::string(record.name) + ";\n");
  if (packed) out.put("#pragma pack(pop)\n");
  out.put("typedef char " + std::string(record.name) + "_has_its_size[sizeof(" + record.name +
          ") == " + std::to_string(record.size) + " ? 1 : -1];\n");
}

}  // namespace

void printC(const std::vector<const RecordDef*>& records, BkoqLayout layout, Output& out) {
  std::string start = kStart;
  const std::string word = "LAYOUT";
  start.replace(start.find(word), word.size(), layoutName(layout));
  out.put(start);
  std::vector<const RecordDef*> printed;
  const auto print = [&](const RecordDef* record) {
    if (std::find(printed.begin(), printed.end(), record) != printed.end()) return;
    printed.push_back(record);
    printRecord(*record, layout, out);
  };
  for (auto record = records.rbegin(); record != records.rend(); ++record) {
    for (const FieldDef& field : **record) {
      if (field.kind == FieldKind::kEmbedded) print(recordDef(layout, field.target));
    }
    print(*record);
  }
}

}  // namespace bkoq::kit
