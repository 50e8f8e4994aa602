#include "kit/find.h"

#include <cstdio>
#include <vector>

#include "kit/guard.h"
#include "kit/nearest.h"
#include "kit/path.h"
#include "kit/pattern.h"
#include "kit/text.h"
#include "kit/value.h"

namespace bkoq::kit {
namespace {

std::size_t endOfName(const char* path, std::size_t at) {
  return at + std::strcspn(path + at, ".[");
}

const char* textOf(const Block& block, std::uint32_t index) {
  const char* text = reinterpret_cast<const char*>(block.bytes);
  for (; index > 0; --index) text += std::strlen(text) + 1;
  return text;
}

// Without quotes.
std::string written(std::string_view part) {
  std::string text;
  forEachWritten(part, [&](std::string_view piece) { text += piece; });
  return text;
}

bool holdsTexts(FieldKind kind) {
  return kind == FieldKind::kTwoTexts || kind == FieldKind::kTextList;
}

}  // namespace

bool Finding::find(const RecordView& job, const char* path) {
  record_ = job;
  field_ = nullptr;
  text_ = nullptr;
  std::size_t at = 0;
  if (path[0] == '\0') return true;
  for (;;) {
    if (!takeField(path, at)) return false;
    if (path[at] == '[' && !takeIndex(path, at)) return false;
    if (path[at] == '\0') return true;
    if (path[at] != '.') return fail(Failure::kSpelling, at, at + std::strlen(path + at));
    if (field_ != nullptr) {
      const FieldView field(record_, *field_);
      const std::size_t end = endOfName(path, at + 1);
      if (text_ != nullptr || field.target() == nullptr) return fail(Failure::kNoFields, at, end);
      if (field.def().kind == FieldKind::kArray) return fail(Failure::kNoIndex, at, end);
      const bool isEmbedded = field.def().kind == FieldKind::kEmbedded;
      const std::uint8_t* inner = isEmbedded ? field.bytes() : field.pointer();
      if (inner == nullptr) return fail(Failure::kNull, at, end);
      record_ = field.elementAt(inner);
      field_ = nullptr;
    }
    ++at;
  }
}

bool Finding::takeField(const char* path, std::size_t& at) {
  const std::size_t end = endOfName(path, at);
  forEachField(record_, [&](const FieldView& field) {
    const char* name = field.def().name;
    const bool isNamed =
        std::strlen(name) == end - at && std::strncmp(name, path + at, end - at) == 0;
    if (isNamed) field_ = &field.def();
    return !isNamed;
  });
  if (field_ == nullptr) return fail(Failure::kNoField, at, end);
  at = end;
  return true;
}

bool Finding::takeIndex(const char* path, std::size_t& at) {
  const std::size_t digits = std::strspn(path + at + 1, "0123456789");
  const std::size_t end = at + 1 + digits + 1;
  const bool isLong = digits > 10 || (digits > 1 && path[at + 1] == '0');
  if (digits == 0 || path[end - 1] != ']' || isLong) {
    return fail(Failure::kSpelling, at, endOfName(path, at + 1));
  }
  const FieldView field(record_, *field_);
  const bool isOfTexts = holdsTexts(field.kind());
  const bool isArray = field.def().kind == FieldKind::kArray && field.target() != nullptr;
  if (!isArray && !isOfTexts) return fail(Failure::kNotAnArray, at, end);
  const Block block = blockOf(field);
  if (block.bytes == nullptr) return fail(Failure::kNull, at, end);
  std::uint64_t index = 0;
  for (std::size_t i = 0; i < digits; ++i) index = index * 10 + (path[at + 1 + i] - '0');
  if (index >= block.count) return fail(Failure::kNoElement, at, end);
  const auto place = static_cast<std::uint32_t>(index);
  if (isOfTexts) {
    text_ = textOf(block, place);
  } else {
    record_ = field.elementAt(block.bytes + place * field.target()->size);
    field_ = nullptr;
  }
  at = end;
  return true;
}

std::string Finding::words(const char* path) const {
  const std::string good(path, good_);
  const std::string part(path + good_, end_ - good_);
  if (failure_ == Failure::kSpelling) {
    return quoted(part) + (good.empty() ? "" : " after " + quoted(good)) + " is not part of a path";
  }
  if (failure_ == Failure::kNoField) {
    std::vector<std::string_view> names;
    forEachField(record_, [&](const FieldView& field) {
      names.emplace_back(field.def().name);
      return true;
    });
    const std::size_t nearest = nearestOf(part, names);
    std::string words = std::string(record_.def->name) + " has no field " + quoted(part);
    if (nearest < names.size()) words += "; did you mean " + std::string(names[nearest]) + "?";
    return words;
  }
  const FieldView field(record_, *field_);
  const Block block = blockOf(field);
  const bool isOfTexts = holdsTexts(field.kind());
  const std::string elements = isOfTexts ? counted(block.count, "text", "texts")
                                         : counted(block.count, "element", "elements");
  switch (failure_) {
    case Failure::kNoElement:
      return good + " has " + elements;
    case Failure::kNoIndex:
      return good + " is an array" +
             (block.bytes != nullptr ? " of " + elements + "; give one of them as " : "; write ") +
             good + "[0]" + written(part);
    case Failure::kNotAnArray:
      return good + " is no array";
    case Failure::kNull:
      return good + " is null";
    default:
      return good + " has no fields";
  }
}

}  // namespace bkoq::kit

BkoqStatus bkoqGet(const void* root, BkoqLayout layout, const char* path, BkoqValue* value) {
  using namespace bkoq::kit;
  if (value != nullptr) *value = BkoqValue{};
  if (root == nullptr || path == nullptr || value == nullptr || !isLayout(layout)) {
    return BKOQ_BAD_ARGUMENT;
  }
  Finding finding;
  if (!finding.find(RecordView::job(root, layout), path)) return BKOQ_NOT_FOUND;
  const RecordView& record = finding.record();
  value->record = record.def->name;
  if (finding.field() == nullptr) {
    value->kind = BKOQ_FIELD_RECORD;
    value->bytes = record.bytes;
    value->width = record.def->size;
    return BKOQ_OK;
  }
  const FieldView field(record, *finding.field());
  value->isSecret = field.def().secret != Secret::kNone ? 1 : 0;
  if (finding.text() != nullptr) {
    value->kind = BKOQ_FIELD_TEXT;
    value->bytes = finding.text();
    value->width = static_cast<std::uint32_t>(std::strlen(finding.text()));
    value->text = finding.text();
    return BKOQ_OK;
  }
  const Block block = blockOf(field);
  value->kind = publicKind(field.kind());
  value->bytes = field.bytes();
  value->width = field.def().width;
  if (value->kind <= BKOQ_FIELD_CLIENT_TIME) value->number = field.number();
  if (value->kind == BKOQ_FIELD_NUMBER) value->word = field.word();
  value->target = block.bytes;
  value->targetSize = block.size;
  value->count = block.count;
  if (block.bytes != nullptr && field.target() == nullptr && block.count > 0) {
    value->text = reinterpret_cast<const char*>(block.bytes);
  }
  return BKOQ_OK;
}

BkoqStatus bkoqExplainPath(const void* root, BkoqLayout layout, const char* path, char* text,
                           size_t size) {
  using namespace bkoq::kit;
  if (text != nullptr && size > 0) text[0] = '\0';
  if (root == nullptr || path == nullptr || text == nullptr || size == 0 || !isLayout(layout)) {
    return BKOQ_BAD_ARGUMENT;
  }
  return guarded([&] {
    Finding finding;
    std::string words;
    if (isPattern(path)) {
      words = "nothing is at a path like " + quoted(path);
    } else if (finding.find(RecordView::job(root, layout), path)) {
      return BKOQ_OK;
    } else {
      words = finding.words(path);
    }
    if (words.size() >= size) {
      std::size_t end = size - 1;
      while (end > 0 && (static_cast<unsigned char>(words[end]) & 0xC0) == 0x80) --end;
      words.resize(end);  // not within a character
    }
    std::snprintf(text, size, "%s", words.c_str());
    return BKOQ_NOT_FOUND;
  });
}

const char* bkoqNearestRecord(const char* name, BkoqLayout layout) {
  using namespace bkoq::kit;
  if (name == nullptr || !isLayout(layout)) return nullptr;
  const char* nearest = nullptr;
  guarded([&] {
    std::vector<std::string_view> names;
    for (std::size_t i = 0; i < kRecordTypeCount; ++i) {
      const RecordDef* record = recordDef(layout, static_cast<RecordType>(i));
      if (record != nullptr) names.emplace_back(record->name);
    }
    const std::size_t place = nearestOf(name, names);
    if (place < names.size()) nearest = names[place].data();
    return BKOQ_OK;
  });
  return nearest;
}
