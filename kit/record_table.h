#ifndef BKOQ_KIT_RECORD_TABLE_H_
#define BKOQ_KIT_RECORD_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "bkoq/kit.h"

namespace bkoq::kit {

// The one description of the transfer records. Everything in the kit that knows what a record looks
// like reads it from here; the table itself is checked against the record headers at compile time.

constexpr std::size_t kLayoutCount = 2;

enum class RecordType : std::uint8_t {
  kJob,
  kSchedule,
  kOpenFile,
  kFax,
  kEMail,
  kPrintQueue,
  kRotation,
  kNode,
  kFilter,
  kDisk,
  kDiskItem,
  kTape,
  kTapeItem,
  kTapeExtension,
  kMedia,  // disks or tapes: what a node holds depends on the job's kind and the node's array
  kNone
};
constexpr std::size_t kRecordTypeCount = static_cast<std::size_t>(RecordType::kMedia);

enum class FieldKind : std::uint8_t {
  kNumber,
  kCount,       // a number that counts the elements of an array or the texts of a list
  kFlags,       // a number whose bits have meanings of their own
  kTime,        // signed, seconds as the local clock counts them
  kClientTime,  // signed, seconds as the client gave them
  kByteList,    // one number a byte
  kText,        // pointer to a block with one text
  kTwoTexts,    // pointer to a block with two texts, each with its NUL
  kNodeText,    // two texts for a UNIX machine, one for every other node
  kTextList,    // pointer to a block with as many texts back to back as the count says
  kArray,       // pointer to a block with as many records as the count says
  kRecord,      // pointer to a block with one record
  kEmbedded,    // a record inside this one
  kReserved,    // zero
  kOpaque       // bytes of which nothing is known, not even whether they are a pointer
};

enum class Secret : std::uint8_t {
  kNone,
  kWhole,
  kCredentials  // the second text, and in the first what comes after ":"
};

// How the bytes of a filter from 4 on are read; one bit each, so that a row can name several.
enum Variant : std::uint8_t {
  kPatternFilter = 1,
  kAttributeFilter = 2,
  kBoundFilter = 4,  // before, after
  kBetweenFilter = 8,
  kWithinFilter = 16,
  kUnknownTimeFilter = 32,
  kUnknownFilter = 64,
  kTimeFilter = kBoundFilter | kBetweenFilter | kWithinFilter | kUnknownTimeFilter,
  kAlways = 127
};

enum class NodeArray : std::uint8_t { kNone, kSources, kDestinations };

// What a number, or a bit of a flag word, is called. A list ends with a null name.
struct Word {
  std::uint32_t value;
  const char* name;
};

struct FieldDef {
  const char* name;
  std::uint16_t offset;
  std::uint16_t width;
  FieldKind kind;
  const char* meaning;
  const char* filledBy;  // the attribute that fills it; "" when the conversion does, or nothing
  RecordType target = RecordType::kNone;
  std::uint16_t countOffset = 0;  // arrays and lists: where their count stands
  NodeArray nodes = NodeArray::kNone;
  Secret secret = Secret::kNone;
  std::uint8_t variants = kAlways;
  const Word* words = nullptr;
  // Names are written far more often than the table is read.
  std::uint8_t nameSize = name == nullptr ? 0 : std::string_view(name).size();

  constexpr std::string_view nameText() const { return {name, nameSize}; }

  constexpr FieldDef of(RecordType type) const {
    FieldDef row = *this;
    row.target = type;
    return row;
  }
  constexpr FieldDef countedAt(std::size_t offsetOfCount) const {
    FieldDef row = *this;
    row.countOffset = static_cast<std::uint16_t>(offsetOfCount);
    return row;
  }
  constexpr FieldDef holding(NodeArray array) const {
    FieldDef row = *this;
    row.nodes = array;
    return row;
  }
  constexpr FieldDef hidden(Secret what = Secret::kWhole) const {
    FieldDef row = *this;
    row.secret = what;
    return row;
  }
  constexpr FieldDef when(unsigned int filters) const {
    FieldDef row = *this;
    row.variants = static_cast<std::uint8_t>(filters);
    return row;
  }
  constexpr FieldDef called(const Word* list) const {
    FieldDef row = *this;
    row.words = list;
    return row;
  }

  constexpr bool isPointer() const {
    return kind == FieldKind::kText || kind == FieldKind::kTwoTexts ||
           kind == FieldKind::kNodeText || kind == FieldKind::kTextList ||
           kind == FieldKind::kArray || kind == FieldKind::kRecord;
  }
};

struct RecordDef {
  RecordType type;
  const char* name;
  const char* meaning;
  std::uint32_t size;
  const FieldDef* fields;
  std::size_t fieldCount;

  const FieldDef* begin() const { return fields; }
  const FieldDef* end() const { return fields + fieldCount; }
};

enum class Media : std::uint8_t { kUnknown, kDisks, kTapes };

// What the nodes of one array of a job are.
struct NodeRole {
  Media media = Media::kUnknown;
  // Restore destinations carry the type of the machine but are no such machines: their name and
  // version are plain texts.
  bool isRestoreDestination = false;
};

struct JobKind {
  std::uint32_t code;
  const char* name;
  NodeRole sources;
  NodeRole destinations;
};

// Null when the layout has no such record: the previous one knows no tape extension.
const RecordDef* recordDef(BkoqLayout layout, RecordType type);
// By name, with or without the suffix of the previous layout; null when there is none.
const RecordDef* findRecordDef(BkoqLayout layout, const char* name);
const char* layoutName(BkoqLayout layout);
// "number", "text list": the kind of a field for programs and documents.
const char* kindName(FieldKind kind);

// The kinds of job, ending with a null name.
const JobKind* jobKinds();
// Null for a kind that the library does not know.
const JobKind* findJobKind(std::uint32_t code);
NodeRole nodeRole(std::uint32_t jobKind, NodeArray array);

// The words of a node's type when it is a tape node: tape nodes carry the number of UNIX machines.
const Word* tapeNodeTypes();
const Word* nodeTypes();

Variant filterVariant(std::uint32_t filterType, std::uint32_t timeRange);
// In words, for pages about the records; "" for kAlways.
const char* variantName(std::uint8_t variants);

constexpr std::uint32_t kUnixNodeType = BKOQ_NODE_UNIX;

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_RECORD_TABLE_H_
