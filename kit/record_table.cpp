#include "kit/record_table.h"

#include <cstring>

#include "kit/record_rows.h"

namespace bkoq::kit {
namespace {

// The rows of every reading of a record follow one another from its first byte to its last.
template <std::size_t n>
constexpr bool tiles(const std::array<FieldDef, n>& rows, std::size_t size) {
  for (unsigned int variant = 1; variant < kAlways; variant *= 2) {
    std::size_t next = 0;
    for (const FieldDef& row : rows) {
      if ((row.variants & variant) == 0) continue;
      if (row.offset != next || row.width == 0) return false;
      next += row.width;
    }
    if (next != size) return false;
  }
  return true;
}

constexpr std::size_t sizeOf(RecordType type) {
  switch (type) {
    case RecordType::kSchedule:
      return sizeof(BKSCHEDINFO);
    case RecordType::kOpenFile:
      return sizeof(BKOFINFO);
    case RecordType::kFax:
      return sizeof(BKFAXINFO);
    case RecordType::kEMail:
      return sizeof(BKEMAILINFO);
    case RecordType::kPrintQueue:
      return sizeof(BKPRINTQ);
    case RecordType::kRotation:
      return sizeof(BKROTATIONINFO);
    default:
      return 0;
  }
}

// Widths fit the kinds, counts stand where arrays and lists look for them.
template <std::size_t n>
constexpr bool isSound(const std::array<FieldDef, n>& rows) {
  for (const FieldDef& row : rows) {
    const bool isNumber = row.kind == FieldKind::kNumber || row.kind == FieldKind::kOpaque;
    const bool isWord = row.isPointer() || row.kind == FieldKind::kCount ||
                        row.kind == FieldKind::kFlags || row.kind == FieldKind::kTime ||
                        row.kind == FieldKind::kClientTime;
    if (isNumber && row.width != 2 && row.width != 4) return false;
    if (isWord && row.width != 4) return false;
    if (row.kind == FieldKind::kEmbedded && row.width != sizeOf(row.target)) return false;
    const bool hasTarget = row.kind == FieldKind::kArray || row.kind == FieldKind::kRecord ||
                           row.kind == FieldKind::kEmbedded;
    if (hasTarget != (row.target != RecordType::kNone)) return false;
    if ((row.target == RecordType::kNode) != (row.nodes != NodeArray::kNone)) return false;
    if (row.kind == FieldKind::kArray || row.kind == FieldKind::kTextList) {
      bool isCounted = false;
      for (const FieldDef& other : rows) {
        isCounted |= other.kind == FieldKind::kCount && other.offset == row.countOffset;
      }
      if (!isCounted) return false;
    }
    if (row.secret != Secret::kNone && row.kind != FieldKind::kText &&
        row.kind != FieldKind::kTwoTexts) {
      return false;
    }
  }
  return true;
}

#define BKOQ_CHECK_RECORD(rows, record)                                                \
  static_assert(tiles(rows, sizeof(record)), #record ": rows leave a gap or overlap"); \
  static_assert(isSound(rows), #record ": a row has the wrong width, count or target")

BKOQ_CHECK_RECORD(kJob, BKQJDATATRANSFER);
BKOQ_CHECK_RECORD(kJobOld, BKQJDATATRANSFER_OLD);
BKOQ_CHECK_RECORD(kSchedule, BKSCHEDINFO);
BKOQ_CHECK_RECORD(kOpenFile, BKOFINFO);
BKOQ_CHECK_RECORD(kFax, BKFAXINFO);
BKOQ_CHECK_RECORD(kFaxOld, BKFAXINFO_OLD);
BKOQ_CHECK_RECORD(kEMail, BKEMAILINFO);
BKOQ_CHECK_RECORD(kPrintQueue, BKPRINTQ);
BKOQ_CHECK_RECORD(kRotation, BKROTATIONINFO);
BKOQ_CHECK_RECORD(kRotationOld, BKROTATIONINFO_OLD);
BKOQ_CHECK_RECORD(kNode, BKNODE);
BKOQ_CHECK_RECORD(kNodeOld, BKNODE_OLD);
BKOQ_CHECK_RECORD(kFilter, BKFILTER_FILE);
BKOQ_CHECK_RECORD(kDisk, BKDDISK);
BKOQ_CHECK_RECORD(kDiskOld, BKDDISK_OLD);
BKOQ_CHECK_RECORD(kDiskItem, BKDISKITEM);
BKOQ_CHECK_RECORD(kTape, BKDTAPE);
BKOQ_CHECK_RECORD(kTapeOld, BKDTAPE_OLD);
BKOQ_CHECK_RECORD(kTapeItem, BKTAPEITEM);
BKOQ_CHECK_RECORD(kTapeExtension, BKDTAPEX);
#undef BKOQ_CHECK_RECORD

template <std::size_t n>
constexpr RecordDef record(RecordType type, const char* name, const char* meaning, std::size_t size,
                           const std::array<FieldDef, n>& rows) {
  return RecordDef{type, name, meaning, static_cast<std::uint32_t>(size), rows.data(), n};
}

constexpr const char* kJobMeaning = "one job, the root of the tree";
constexpr const char* kScheduleMeaning = "times and repeats of the schedule";
constexpr const char* kOpenFileMeaning = "open-file options of a backup job";
constexpr const char* kFaxMeaning = "fax notification";
constexpr const char* kEMailMeaning = "e-mail notification";
constexpr const char* kPrintQueueMeaning = "print-queue notification";
constexpr const char* kRotationMeaning = "media rotation of the schedule";
constexpr const char* kNodeMeaning = "one node: a machine, a tape node or a restore destination";
constexpr const char* kFilterMeaning = "one filter";
constexpr const char* kDiskMeaning = "one disk of a machine or of a restore destination";
constexpr const char* kDiskItemMeaning = "one item of a disk";
constexpr const char* kTapeMeaning = "one tape";
constexpr const char* kTapeItemMeaning = "one item of a tape";
constexpr const char* kTapeExtensionMeaning = "database credentials and session end of a tape";

// In the order of RecordType.
constexpr RecordDef kRecords[kLayoutCount][kRecordTypeCount] = {
    {record(RecordType::kJob, "BKQJDATATRANSFER", kJobMeaning, sizeof(BKQJDATATRANSFER), kJob),
     record(RecordType::kSchedule, "BKSCHEDINFO", kScheduleMeaning, sizeof(BKSCHEDINFO), kSchedule),
     record(RecordType::kOpenFile, "BKOFINFO", kOpenFileMeaning, sizeof(BKOFINFO), kOpenFile),
     record(RecordType::kFax, "BKFAXINFO", kFaxMeaning, sizeof(BKFAXINFO), kFax),
     record(RecordType::kEMail, "BKEMAILINFO", kEMailMeaning, sizeof(BKEMAILINFO), kEMail),
     record(RecordType::kPrintQueue, "BKPRINTQ", kPrintQueueMeaning, sizeof(BKPRINTQ), kPrintQueue),
     record(RecordType::kRotation, "BKROTATIONINFO", kRotationMeaning, sizeof(BKROTATIONINFO),
            kRotation),
     record(RecordType::kNode, "BKNODE", kNodeMeaning, sizeof(BKNODE), kNode),
     record(RecordType::kFilter, "BKFILTER_FILE", kFilterMeaning, sizeof(BKFILTER_FILE), kFilter),
     record(RecordType::kDisk, "BKDDISK", kDiskMeaning, sizeof(BKDDISK), kDisk),
     record(RecordType::kDiskItem, "BKDISKITEM", kDiskItemMeaning, sizeof(BKDISKITEM), kDiskItem),
     record(RecordType::kTape, "BKDTAPE", kTapeMeaning, sizeof(BKDTAPE), kTape),
     record(RecordType::kTapeItem, "BKTAPEITEM", kTapeItemMeaning, sizeof(BKTAPEITEM), kTapeItem),
     record(RecordType::kTapeExtension, "BKDTAPEX", kTapeExtensionMeaning, sizeof(BKDTAPEX),
            kTapeExtension)},
    {record(RecordType::kJob, "BKQJDATATRANSFER_OLD", kJobMeaning, sizeof(BKQJDATATRANSFER_OLD),
            kJobOld),
     record(RecordType::kSchedule, "BKSCHEDINFO_OLD", kScheduleMeaning, sizeof(BKSCHEDINFO_OLD),
            kSchedule),
     record(RecordType::kOpenFile, "BKOFINFO_OLD", kOpenFileMeaning, sizeof(BKOFINFO_OLD),
            kOpenFile),
     record(RecordType::kFax, "BKFAXINFO_OLD", kFaxMeaning, sizeof(BKFAXINFO_OLD), kFaxOld),
     record(RecordType::kEMail, "BKEMAILINFO_OLD", kEMailMeaning, sizeof(BKEMAILINFO_OLD), kEMail),
     record(RecordType::kPrintQueue, "BKPRINTQ_OLD", kPrintQueueMeaning, sizeof(BKPRINTQ_OLD),
            kPrintQueue),
     record(RecordType::kRotation, "BKROTATIONINFO_OLD", kRotationMeaning,
            sizeof(BKROTATIONINFO_OLD), kRotationOld),
     record(RecordType::kNode, "BKNODE_OLD", kNodeMeaning, sizeof(BKNODE_OLD), kNodeOld),
     record(RecordType::kFilter, "BKFILTER_FILE_OLD", kFilterMeaning, sizeof(BKFILTER_FILE_OLD),
            kFilter),
     record(RecordType::kDisk, "BKDDISK_OLD", kDiskMeaning, sizeof(BKDDISK_OLD), kDiskOld),
     record(RecordType::kDiskItem, "BKDISKITEM_OLD", kDiskItemMeaning, sizeof(BKDISKITEM_OLD),
            kDiskItem),
     record(RecordType::kTape, "BKDTAPE_OLD", kTapeMeaning, sizeof(BKDTAPE_OLD), kTapeOld),
     record(RecordType::kTapeItem, "BKTAPEITEM_OLD", kTapeItemMeaning, sizeof(BKTAPEITEM_OLD),
            kTapeItem),
     RecordDef{RecordType::kNone, nullptr, nullptr, 0, nullptr, 0}}};

constexpr bool standInOrder() {
  for (const auto& layout : kRecords) {
    for (std::size_t i = 0; i < kRecordTypeCount; ++i) {
      if (layout[i].name != nullptr && layout[i].type != static_cast<RecordType>(i)) return false;
    }
  }
  return true;
}
static_assert(standInOrder(), "records are looked up by their type");

// Whether the name asked for is this record's, the suffix of the previous layout left out or not.
bool isNamed(const char* recordName, const char* name) {
  const std::size_t length = std::strlen(name);
  if (std::strncmp(recordName, name, length) != 0) return false;
  return recordName[length] == '\0' || std::strcmp(recordName + length, "_OLD") == 0;
}

}  // namespace

const RecordDef* recordDef(BkoqLayout layout, RecordType type) {
  const auto index = static_cast<std::size_t>(type);
  if (index >= kRecordTypeCount) return nullptr;
  const RecordDef& def = kRecords[static_cast<std::size_t>(layout)][index];
  return def.name != nullptr ? &def : nullptr;
}

const RecordDef* findRecordDef(BkoqLayout layout, const char* name) {
  for (const RecordDef& def : kRecords[static_cast<std::size_t>(layout)]) {
    if (def.name != nullptr && isNamed(def.name, name)) return &def;
  }
  return nullptr;
}

const char* kindName(FieldKind kind) {
  switch (kind) {
    case FieldKind::kNumber:
      return "number";
    case FieldKind::kCount:
      return "count";
    case FieldKind::kFlags:
      return "flags";
    case FieldKind::kTime:
      return "time";
    case FieldKind::kClientTime:
      return "client time";
    case FieldKind::kByteList:
      return "byte list";
    case FieldKind::kText:
      return "text";
    case FieldKind::kTwoTexts:
      return "two texts";
    case FieldKind::kNodeText:
      return "text, or two texts";
    case FieldKind::kTextList:
      return "text list";
    case FieldKind::kArray:
      return "array";
    case FieldKind::kRecord:
      return "record";
    case FieldKind::kEmbedded:
      return "embedded";
    case FieldKind::kReserved:
      return "reserved";
    case FieldKind::kOpaque:
      break;
  }
  return "opaque";
}

const char* layoutName(BkoqLayout layout) {
  return layout == BKOQ_LAYOUT_CURRENT ? "current" : "previous";
}

const JobKind* jobKinds() { return kJobKinds; }

const JobKind* findJobKind(std::uint32_t code) {
  for (const JobKind* kind = kJobKinds; kind->name != nullptr; ++kind) {
    if (kind->code == code) return kind;
  }
  return nullptr;
}

NodeRole nodeRole(std::uint32_t jobKind, NodeArray array) {
  const JobKind* kind = findJobKind(jobKind);
  if (kind == nullptr || array == NodeArray::kNone) return {};
  return array == NodeArray::kSources ? kind->sources : kind->destinations;
}

const Word* tapeNodeTypes() { return kTapeNodeTypes; }

const Word* nodeTypes() { return kNodeTypes; }

Variant filterVariant(std::uint32_t filterType, std::uint32_t timeRange) {
  switch (filterType) {
    case BKOQ_FILTER_VOLUME:
    case BKOQ_FILTER_FILE:
    case BKOQ_FILTER_DIRECTORY:
      return kPatternFilter;
    case BKOQ_FILTER_TIME:
      break;
    case BKOQ_FILTER_ATTRIBUTE:
      return kAttributeFilter;
    default:
      return kUnknownFilter;
  }
  switch (timeRange) {
    case BKOQ_RANGE_BEFORE:
    case BKOQ_RANGE_AFTER:
      return kBoundFilter;
    case BKOQ_RANGE_BETWEEN:
      return kBetweenFilter;
    case BKOQ_RANGE_WITHIN:
      return kWithinFilter;
    default:
      return kUnknownTimeFilter;
  }
}

const char* variantName(std::uint8_t variants) {
  switch (variants) {
    case kAlways:
      return "";
    case kPatternFilter:
      return "volume, file, directory";
    case kAttributeFilter:
      return "attribute";
    case kBoundFilter:
      return "time before, after";
    case kBetweenFilter:
      return "time between";
    case kWithinFilter:
      return "time within";
    case kTimeFilter:
      return "time";
    case kUnknownFilter:
      return "unknown kind";
    case kUnknownFilter | kUnknownTimeFilter:
      return "unknown kind or range";
    default:
      return "other";
  }
}

}  // namespace bkoq::kit
