#include "tools/experiment.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include "tools/moment.h"
#include "tools/reference.h"
#include "tools/walk.h"

namespace bkoq::tool {
namespace {

// A conversion that fails says so on the standard error stream, which is no news in an experiment.
class Silence {
 public:
  Silence() : before_(dup(STDERR_FILENO)) {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0) {
      dup2(nowhere, STDERR_FILENO);
      close(nowhere);
    }
  }
  ~Silence() {
    if (before_ < 0) return;
    dup2(before_, STDERR_FILENO);
    close(before_);
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;

 private:
  int before_;
};

}  // namespace

// The tree of the job as it is written, in a form that another tree is quickly compared with.
struct Experiment::Base {
  struct Field {
    std::uint32_t offset;  // in its block
    std::uint32_t width;
    BkoqFieldKind kind;
    std::uint32_t target;  // number of a block; 0 for none
  };
  struct Block {
    const char* bytes = nullptr;
    std::uint32_t size = 0;
    std::vector<std::uint32_t> fields;
  };

  bool succeeded = false;
  OwnedTree tree;
  std::vector<RecordField> shown;
  std::vector<Field> fields;
  std::vector<Block> blocks;

  void note(const BkoqVisit& visit) {
    if (visit.event != BKOQ_FIELD || visit.kind == BKOQ_FIELD_EMBEDDED) return;
    const auto index = static_cast<std::uint32_t>(fields.size());
    if (blocks.size() <= visit.block) blocks.resize(visit.block + 1);
    Block& block = blocks[visit.block];
    block.bytes = static_cast<const char*>(visit.bytes) - visit.offset;
    block.fields.push_back(index);
    if (visit.target != 0) {
      if (blocks.size() <= visit.target) blocks.resize(visit.target + 1);
      blocks[visit.target].bytes = static_cast<const char*>(visit.targetBytes);
      blocks[visit.target].size = visit.targetSize;
    }
    fields.push_back({visit.offset, visit.width, visit.kind, visit.target});
    const bool isZero =
        visit.target == 0 && visit.number == 0 && visit.kind != BKOQ_FIELD_BYTE_LIST;
    shown.push_back(
        {visit.path, visit.record, visit.field, visit.kind, visit.filledBy, isZero, visit.number});
  }

  // Of an array that has other elements, the array and its count, once.
  void noteArray(const std::string& path, std::vector<std::string>& paths) const {
    if (std::find(paths.begin(), paths.end(), path) != paths.end()) return;
    const auto array = std::find_if(shown.begin(), shown.end(),
                                    [&](const RecordField& field) { return field.path == path; });
    if (array != shown.begin() && array != shown.end() && (array - 1)->kind == BKOQ_FIELD_COUNT) {
      paths.push_back((array - 1)->path);
    }
    paths.push_back(path);
  }

  // False when the trees differ in more than values, so that they cannot be compared so.
  bool compare(std::uint32_t number, const char* other, std::vector<std::uint32_t>& changed) const {
    const Block& block = blocks[number];
    for (const std::uint32_t index : block.fields) {
      const Field& field = fields[index];
      if (isPointer(field.kind)) continue;
      if (std::memcmp(block.bytes + field.offset, other + field.offset, field.width) == 0) continue;
      changed.push_back(index);
      // What pointers lead to depends on types and counts.
      const bool isType = std::strstr(shown[index].name, "Type") != nullptr;
      if (isType || field.kind == BKOQ_FIELD_COUNT) return false;
    }
    for (const std::uint32_t index : block.fields) {
      const Field& field = fields[index];
      if (!isPointer(field.kind)) continue;
      const char* target = nullptr;
      std::memcpy(&target, other + field.offset, sizeof target);
      if ((target == nullptr) != (field.target == 0)) {
        changed.push_back(index);
      } else if (target != nullptr && !compareTarget(field, index, target, changed)) {
        return false;
      }
    }
    return true;
  }

 private:
  bool compareTarget(const Field& field, std::uint32_t index, const char* target,
                     std::vector<std::uint32_t>& changed) const {
    const Block& block = blocks[field.target];
    bool isSame = true;
    const char* text = block.bytes;
    switch (field.kind) {
      case BKOQ_FIELD_TEXT:
        isSame = std::strcmp(text, target) == 0;
        break;
      case BKOQ_FIELD_TWO_TEXTS:
      case BKOQ_FIELD_TEXT_LIST:
        // As many texts as in the other: the counts are the same.
        while (isSame && text < block.bytes + block.size) {
          isSame = std::strcmp(text, target) == 0;
          target += std::strlen(target) + 1;
          text += std::strlen(text) + 1;
        }
        break;
      default:
        return compare(field.target, target, changed);
    }
    if (!isSame) changed.push_back(index);
    return true;
  }
};

Experiment::Experiment(const LoadedJob& loaded, const Selection& selection)
    : loaded_(loaded), selection_(selection) {
  collect(jobs(), loaded.document->root(), nullptr, "", -1, 0);
  Problems problems;
  Reader reader(*loaded.document, problems, kept_);
  reader.setMadeParts(&made_);
  job_.reset(jobs().read(reader, loaded.document->root()));
}

Experiment::~Experiment() = default;

void Experiment::collect(const Family& family, const Value& value, const Value* list,
                         const std::string& path, int holder, unsigned int depth) {
  const ObjectClass* own = family.classOf(value);
  const int object = static_cast<int>(objects_.size());
  objects_.push_back({path, &value, list, &family, own, holder, depth});
  const std::string prefix = path.empty() ? "" : path + ".";
  for (const Member& member : value.members()) {
    const Attribute* attribute = own->find(member.key);
    if (attribute == nullptr) continue;  // the kind
    const std::string memberPath = prefix + std::string(member.key);
    attributes_.push_back({memberPath, attribute, &member.value, member.at, object});
    if (!attribute->family) continue;
    const Family& inner = attribute->family();
    if (member.value.type() == Value::Type::kObject) {
      collect(inner, member.value, nullptr, memberPath, object, depth + 1);
    }
    const auto elements = member.value.elements();
    for (std::size_t i = 0; i < elements.size(); ++i) {
      collect(inner, elements[i], &member.value, memberPath + "[" + std::to_string(i) + "]", object,
              depth + 1);
    }
  }
}

Experiment::Base& Experiment::baseOf(BkoqLayout layout) {
  std::unique_ptr<Base>& base = bases_[indexOf(layout)];
  if (base == nullptr) {
    base = std::make_unique<Base>();
    base->tree = flattened(*job_, layout);
    base->succeeded = base->tree.root() != nullptr;
    if (base->succeeded) {
      walk(base->tree.root(), layout, [&base](const BkoqVisit& visit) {
        base->note(visit);
        return 0;
      });
    }
  }
  return *base;
}

const OwnedTree& Experiment::asWritten(BkoqLayout layout) { return baseOf(layout).tree; }
bool Experiment::succeeded(BkoqLayout layout) { return baseOf(layout).succeeded; }
const std::vector<RecordField>& Experiment::fields(BkoqLayout layout) {
  return baseOf(layout).shown;
}

std::unique_ptr<BKQJob> Experiment::readWith(const std::vector<Replacement>& replacements,
                                             Kept& kept) {
  Changes changes;
  for (const Replacement& each : replacements) {
    changes.replaced.emplace(each.given->value, each.value);
    for (int object = each.given->object; object >= 0; object = objects_[object].holder) {
      if (!changes.touched.insert(objects_[object].value).second) break;
    }
  }
  Problems problems;
  Reader reader(*loaded_.document, problems, kept);
  reader.setChanges(&changes);
  reader.setMadeParts(&made_);
  std::unique_ptr<BKQJob> job(jobs().read(reader, loaded_.document->root()));
  return problems.empty() ? std::move(job) : nullptr;
}

OwnedTree Experiment::flattened(BKQJob& job, BkoqLayout layout) const {
  const Silence silence;
  Flattened flattened = flatten(job, selection_, layout);
  return flattened.succeeded ? std::move(flattened.tree) : OwnedTree();
}

OwnedTree Experiment::flattenWith(const std::vector<Replacement>& replacements, BkoqLayout layout) {
  Kept kept;
  const std::unique_ptr<BKQJob> job = readWith(replacements, kept);
  return job == nullptr ? OwnedTree() : flattened(*job, layout);
}

Experiment::Differences Experiment::differences(const std::vector<Replacement>& replacements,
                                                const std::vector<BkoqLayout>& layouts) {
  Differences all;
  Kept kept;
  const std::unique_ptr<BKQJob> job = readWith(replacements, kept);
  if (job == nullptr) return all;
  for (const BkoqLayout layout : layouts) {
    const Base& base = baseOf(layout);
    const OwnedTree other = flattened(*job, layout);
    if (other.root() == nullptr || !base.succeeded) continue;
    std::vector<std::string>& paths = all[indexOf(layout)].emplace();
    std::vector<std::uint32_t> changed;
    if (base.compare(1, static_cast<const char*>(other.root()), changed)) {
      std::sort(changed.begin(), changed.end());  // as in the tree
      for (const std::uint32_t index : changed) paths.push_back(base.shown[index].path);
      continue;
    }
    ++wholeComparisons_;
    compareTrees(base.tree.root(), layout, other.root(), layout, true, nullptr,
                 [&](const BkoqDifference& difference, BkoqChange change) {
                   const std::string path = difference.path;
                   if (change == BKOQ_CHANGED) {
                     paths.push_back(path);
                   } else {
                     base.noteArray(path.substr(0, path.rfind('[')), paths);
                   }
                   return 0;
                 });
  }
  return all;
}

// An object of another class where there is one.
const Value* Experiment::otherObject(const Family& family, const Value& value) {
  const ObjectClass* own = family.classOf(value);
  const bool isFirst = own == &family.classes.front();
  const ObjectClass& other = isFirst ? family.classes.back() : family.classes.front();
  documents_.emplace_back(objectText(other, ""));
  SyntaxError error;
  documents_.back().parse(error);
  return &documents_.back().root();
}

const Value* Experiment::number(std::int64_t number) {
  texts_.push_back(std::to_string(number));
  values_.emplace_back(Value::Type::kNumber, 0, texts_.back().data(), texts_.back().size());
  return &values_.back();
}

const Value* Experiment::otherValue(const GivenAttribute& given) {
  const Attribute& attribute = *given.attribute;
  if (given.isContainer()) {
    return attribute.isRequired ? otherObject(attribute.family(), *given.value) : nullptr;
  }
  const auto text = [&](std::string other) {
    texts_.push_back(std::move(other));
    return Value(Value::Type::kText, 0, texts_.back().data(), texts_.back().size());
  };
  const auto otherNumber = [&](const Value& value) {
    std::int64_t now = attribute.least;
    Problems problems;
    Kept kept;
    Reader(*loaded_.document, problems, kept)
        .number(value, attribute.least, attribute.most, attribute.words, now);
    // Every range begins with an even number and ends with an odd one.
    texts_.push_back(std::to_string(now ^ 1));
    return Value(Value::Type::kNumber, 0, texts_.back().data(), texts_.back().size());
  };
  const auto otherTime = [&](const Value& value) {
    constexpr std::int64_t kDay = 86400;
    std::int64_t now = commandMoment();
    parseMoment(std::string(value.text()), now);
    return text(momentText(now > 0 ? now - kDay : now + kDay));
  };
  const auto other = [&](const Value& value) -> Value {
    switch (attribute.shape) {
      case Shape::kText:
      case Shape::kTexts:
        if (const auto [one, another] = attribute.texts; one != nullptr) {
          return text(value.text() == one ? another : one);
        }
        return text(std::string(value.text()) + "~");
      case Shape::kFlag:
        return {Value::Type::kFlag, 0, nullptr, value.isTrue() ? 0U : 1U};
      case Shape::kNumber:
      case Shape::kNumbers:
        return otherNumber(value);
      case Shape::kSeconds:
        texts_.emplace_back(value.text() == "86399" ? "86398" : "86399");
        return {Value::Type::kNumber, 0, texts_.back().data(), texts_.back().size()};
      default:
        return otherTime(value);
    }
  };
  if (given.value->type() != Value::Type::kList) {
    values_.push_back(other(*given.value));
    return &values_.back();
  }
  lists_.emplace_back();
  std::vector<Value>& elements = lists_.back();
  for (const Value& element : given.value->elements()) elements.push_back(other(element));
  if (elements.empty()) elements.push_back(text("~"));
  values_.emplace_back(Value::Type::kList, 0, elements.data(), elements.size());
  return &values_.back();
}

}  // namespace bkoq::tool
