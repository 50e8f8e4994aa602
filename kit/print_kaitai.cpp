#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

#include "kit/image.h"
#include "kit/print_records.h"
#include "kit/text.h"

namespace bkoq::kit {
namespace {

constexpr const char* kStart = R"(# Written by "bkoq layout --kaitai". Do not edit.
meta:
  id: bkoq_image
  title: Image of a backup job's record tree
  file-extension: image
  endian: le
doc: |
  A record tree as one block of bytes without addresses: pointers are offsets, 0 is null.
  Each pointer is read twice: `ofs_...` is the number, and the instance without `ofs_` is what it
  points to, absent for null. The keys `-orig-id` give the names that the records' documents use.
  Not checked here: the checksum (CRC-32 of the image with its own four bytes as zero), and that
  each block begins where the one before it ends.
seq:
  - id: magic
    contents: BKQIMAGE
  - id: version
    type: u4
    valid: VERSION
  - id: layout
    type: u4
    enum: layout
    valid:
      any-of: ['layout::current', 'layout::previous']
  - id: size
    type: u4
    valid: _io.size
  - id: ofs_job
    type: u4
    valid: HEADER
  - id: num_blocks
    type: u4
  - id: checksum
    type: u4
instances:
  job:
    pos: ofs_job
    type:
      switch-on: layout
      cases:
)";

constexpr const char* kTexts = R"(types:
  text:
    doc: A text of no declared encoding, most often UTF-8.
    seq:
      - id: bytes
        terminator: 0
    instances:
      value:
        value: bytes.to_s('UTF-8')
)";

// What a node is given by the job that holds it.
constexpr const char* kNodeParameters = R"(    params:
      - id: media
        type: u1
        enum: media
      - id: is_restore_destination
        type: bool
    instances:
      num_texts:
        value: 'us_node_type.to_i == UNIX and media == media::disks and not is_restore_destination ? 2 : 1'
)";

// An id of the language: lower case, words apart: "psz_node_os_ver", "us_2".
std::string idOf(const std::string& name) {
  std::string id;
  const auto isUpper = [](char c) { return std::isupper(static_cast<unsigned char>(c)) != 0; };
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (std::isalnum(static_cast<unsigned char>(name[i])) == 0) {
      if (!id.empty() && id.back() != '_') id += '_';
      continue;
    }
    const bool startsWord =
        i > 0 && isUpper(name[i]) &&
        (!isUpper(name[i - 1]) ||
         (i + 1 < name.size() && std::islower(static_cast<unsigned char>(name[i + 1])) != 0));
    if (startsWord && !id.empty() && id.back() != '_') id += '_';
    id += static_cast<char>(std::tolower(static_cast<unsigned char>(name[i])));
  }
  while (!id.empty() && id.back() == '_') id.pop_back();
  return id;
}

std::string quotedYaml(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
  return quoted + "'";
}

std::string joined(const std::vector<std::string>& parts, const char* between) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : between) + part;
  return text;
}

// ---- Which filters have a field

const FieldDef* fieldOf(const RecordDef& record, const char* name) {
  for (const FieldDef& field : record) {
    if (std::strcmp(field.name, name) == 0) return &field;
  }
  return nullptr;
}

// The condition for `variants`, from what the kit itself decides by. The range of a time is looked
// at only where the kind of the filter does not decide alone, since it may not have been read yet.
std::string conditionOf(const RecordDef& record, unsigned int variants) {
  const Word* types = fieldOf(record, "usFilterType")->words;
  const Word* ranges = fieldOf(record, "usTimeRange")->words;
  std::vector<std::string> terms;
  std::uint32_t unknownRange = 0;
  for (const Word* range = ranges; range->name != nullptr; ++range) {
    unknownRange = std::max(unknownRange, range->value + 1);
  }
  for (const Word* type = types; type->name != nullptr; ++type) {
    const std::string isType = "us_filter_type.to_i == " + std::to_string(type->value);
    std::vector<std::string> some;
    bool isAll = (filterVariant(type->value, unknownRange) & variants) != 0;
    if (isAll) some.push_back("us_time_range.to_i >= " + std::to_string(unknownRange));
    for (const Word* range = ranges; range->name != nullptr; ++range) {
      if ((filterVariant(type->value, range->value) & variants) != 0) {
        some.push_back("us_time_range.to_i == " + std::to_string(range->value));
      } else {
        isAll = false;
      }
    }
    if (isAll) {
      terms.push_back(isType);
    } else if (!some.empty()) {
      terms.push_back("(" + isType + " and (" + joined(some, " or ") + "))");
    }
  }
  if ((kUnknownFilter & variants) != 0) {
    std::vector<std::string> known;
    for (const Word* type = types; type->name != nullptr; ++type) {
      known.push_back("us_filter_type.to_i != " + std::to_string(type->value));
    }
    terms.push_back("(" + joined(known, " and ") + ")");
  }
  return joined(terms, " or ");
}

// ---- Fields

class TypePrinter {
 public:
  TypePrinter(const RecordDef& record, BkoqLayout layout, Output& out)
      : record_(record), layout_(layout), out_(out) {}

  void print() {
    line(2, idOf(record_.name) + ":");
    line(4, "-orig-id: " + std::string(record_.name));
    line(4, "doc: " + quotedYaml(std::string(record_.meaning) + ", " +
                                 counted(record_.size, "byte", "bytes")));
    const bool isNode = record_.type == RecordType::kNode;
    if (isNode) {
      std::string parameters = kNodeParameters;
      const std::string word = "UNIX";
      parameters.replace(parameters.find(word), word.size(), std::to_string(kUnixNodeType));
      out_.put(parameters);
    } else if (hasInstances()) {
      line(4, "instances:");
    }
    if (record_.type == RecordType::kJob) printRoles();
    for (const FieldDef& field : record_) printInstances(field);
    line(4, "seq:");
    for (const FieldDef& field : record_) printField(field);
  }

 private:
  void line(std::size_t indent, const std::string& text) {
    out_.put(std::string(indent, ' ') + text + "\n");
  }

  bool hasInstances() const {
    return std::any_of(record_.begin(), record_.end(), [](const FieldDef& field) {
      return field.isPointer() || (field.kind == FieldKind::kFlags && field.words != nullptr);
    });
  }

  void printHead(const FieldDef& field, const std::string& id) {
    line(6, "- id: " + id);
    line(8, "-orig-id: " + std::string(field.name));
    if (!isCommon(field)) line(8, "if: " + conditionOf(record_, field.variants));
  }

  // Two filters may use one name for bytes of different width.
  std::string idOfField(const FieldDef& field) const {
    const bool isTaken = std::any_of(record_.begin(), &field, [&](const FieldDef& other) {
      return std::strcmp(other.name, field.name) == 0;
    });
    return idOf(field.name) + (isTaken ? "_" + std::to_string(field.width) : "");
  }

  void printField(const FieldDef& field) {
    const std::string id = idOfField(field);
    if (field.isPointer()) {
      printHead(field, "ofs_" + id);
      line(8, "type: u4");
      return;
    }
    printHead(field, id);
    line(8, "doc: " + quotedYaml(field.meaning));
    switch (field.kind) {
      case FieldKind::kEmbedded:
        line(8, "type: " + idOf(recordDef(layout_, field.target)->name));
        break;
      case FieldKind::kTime:
      case FieldKind::kClientTime:
        line(8, "type: s4");
        break;
      case FieldKind::kByteList:
        line(8, "type: u1");
        line(8, "repeat: expr");
        line(8, "repeat-expr: " + std::to_string(field.width));
        break;
      case FieldKind::kReserved:
        line(8, "size: " + std::to_string(field.width));
        break;
      default:
        line(8, "type: u" + std::to_string(field.width));
        if (field.kind == FieldKind::kNumber && field.words != nullptr) {
          line(8, "enum: " + id);
        }
    }
  }

  // A name for each bit, and what a pointer points to.
  void printInstances(const FieldDef& field) {
    const std::string id = idOf(field.name);
    if (field.kind == FieldKind::kFlags && field.words != nullptr) {
      for (const Word* word = field.words; word->name != nullptr; ++word) {
        line(6, id + "_" + idOf(word->name) + ":");
        line(8,
             "value: (" + id + " & " + std::string(hexNumber(word->value, field.width)) + ") != 0");
      }
    }
    if (!field.isPointer()) return;
    const std::string offset = "ofs_" + id;
    line(6, id + ":");
    line(8, "-orig-id: " + std::string(field.name));
    line(8, "doc: " + quotedYaml(std::string(field.meaning) +
                                 (field.secret != Secret::kNone ? " (secret)" : "")));
    line(8, "io: _root._io");
    line(8, "pos: " + offset);
    std::string condition = offset + " != 0";
    if (!isCommon(field))
      condition = "(" + conditionOf(record_, field.variants) + ") and " + condition;
    if (field.target == RecordType::kMedia) condition += " and media != media::unknown";
    line(8, "if: " + condition);
    printTarget(field);
  }

  void printTarget(const FieldDef& field) {
    std::string number;
    switch (field.kind) {
      case FieldKind::kTwoTexts:
        number = "2";
        break;
      case FieldKind::kNodeText:
        number = "num_texts";
        break;
      case FieldKind::kTextList:
      case FieldKind::kArray:
        for (const FieldDef& other : record_) {
          const bool isCount = other.kind == FieldKind::kCount && other.offset == field.countOffset;
          if (isCount) number = idOf(other.name);
        }
        break;
      default:
        break;
    }
    if (field.target == RecordType::kMedia) {
      line(8, "type:");
      line(10, "switch-on: media");
      line(10, "cases:");
      line(12, "'media::disks': " + idOf(recordDef(layout_, RecordType::kDisk)->name));
      line(12, "'media::tapes': " + idOf(recordDef(layout_, RecordType::kTape)->name));
    } else {
      const RecordDef* target = recordDef(layout_, field.target);
      std::string type = target != nullptr ? idOf(target->name) : "text";
      if (field.nodes != NodeArray::kNone) {
        const std::string array = field.nodes == NodeArray::kSources ? "source" : "destination";
        type += "(" + array + "_media, " + array + "_is_restored_to)";
      }
      line(8, "type: " + type);
    }
    if (!number.empty()) {
      line(8, "repeat: expr");
      line(8, "repeat-expr: " + number);
    }
  }

  // What the nodes of either array are, by the kind of the job.
  void printRoles() {
    for (const NodeArray array : {NodeArray::kSources, NodeArray::kDestinations}) {
      const std::string name = array == NodeArray::kSources ? "source" : "destination";
      std::vector<std::string> disks;
      std::vector<std::string> tapes;
      std::vector<std::string> restored;
      for (const JobKind* kind = jobKinds(); kind->name != nullptr; ++kind) {
        const NodeRole role = nodeRole(kind->code, array);
        const std::string test = "us_job_type.to_i == " + std::to_string(kind->code);
        if (role.media == Media::kDisks) disks.push_back(test);
        if (role.media == Media::kTapes) tapes.push_back(test);
        if (role.isRestoreDestination) restored.push_back(test);
      }
      line(6, name + "_media:");
      line(8, "value: '(" + joined(disks, " or ") + ") ? media::disks : (" + joined(tapes, " or ") +
                  ") ? media::tapes : media::unknown'");
      line(6, name + "_is_restored_to:");
      line(8, "value: " + (restored.empty() ? "false" : joined(restored, " or ")));
    }
  }

  const RecordDef& record_;
  BkoqLayout layout_;
  Output& out_;
};

// Names of codes; two codes of the same name are told apart by their numbers.
void printEnum(const FieldDef& field, Output& out) {
  out.put("  " + idOf(field.name) + ":\n");
  for (const Word* word = field.words; word->name != nullptr; ++word) {
    const bool isTaken = std::any_of(
        field.words, word, [&](const Word& other) { return idOf(other.name) == idOf(word->name); });
    out.put("    " + std::to_string(word->value) + ":\n      id: " + idOf(word->name) +
            (isTaken ? "_" + std::to_string(word->value) : "") +
            "\n      -orig-id: " + quotedYaml(word->name) + "\n");
  }
}

std::vector<const RecordDef*> recordsOf(BkoqLayout layout) {
  std::vector<const RecordDef*> records;
  for (std::size_t i = 0; i < kRecordTypeCount; ++i) {
    const RecordDef* record = recordDef(layout, static_cast<RecordType>(i));
    if (record != nullptr) records.push_back(record);
  }
  return records;
}

void replace(std::string& text, const std::string& word, const std::string& by) {
  text.replace(text.find(word), word.size(), by);
}

}  // namespace

void printKaitai(Output& out) {
  std::string start = kStart;
  replace(start, "VERSION", std::to_string(BKOQ_IMAGE_FORMAT_VERSION));
  replace(start, "HEADER", std::to_string(kHeaderSize));
  out.put(start);
  constexpr BkoqLayout kLayouts[] = {BKOQ_LAYOUT_CURRENT, BKOQ_LAYOUT_PREVIOUS};
  for (const BkoqLayout layout : kLayouts) {
    out.put(std::string("        'layout::") + layoutName(layout) +
            "': " + idOf(recordDef(layout, RecordType::kJob)->name) + "\n");
  }
  out.put(
      "enums:\n  layout:\n    1: current\n    2: previous\n"
      "  media:\n    0: unknown\n    1: disks\n    2: tapes\n");
  std::vector<const Word*> printed;
  for (const BkoqLayout layout : kLayouts) {
    for (const RecordDef* record : recordsOf(layout)) {
      for (const FieldDef& field : *record) {
        const bool isEnum = field.words != nullptr && field.kind == FieldKind::kNumber;
        if (!isEnum || std::find(printed.begin(), printed.end(), field.words) != printed.end()) {
          continue;
        }
        printed.push_back(field.words);
        printEnum(field, out);
      }
    }
  }
  out.put(kTexts);
  for (const BkoqLayout layout : kLayouts) {
    for (const RecordDef* record : recordsOf(layout)) TypePrinter(*record, layout, out).print();
  }
}

}  // namespace bkoq::kit
