#include "tools/explain.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "kit/pattern.h"
#include "tools/problems.h"
#include "tools/progress.h"
#include "tools/walk.h"

namespace bkoq::tool {
namespace {

bool isNumber(BkoqFieldKind kind) {
  return kind == BKOQ_FIELD_NUMBER || kind == BKOQ_FIELD_FLAGS || kind == BKOQ_FIELD_COUNT ||
         kind == BKOQ_FIELD_TIME || kind == BKOQ_FIELD_CLIENT_TIME;
}

// What a tree holds at a path.
struct Held {
  bool isThere = false;
  std::uint32_t number = 0;
  std::string text;

  bool operator==(const Held& other) const {
    return isThere == other.isThere && number == other.number && text == other.text;
  }
};

Held heldAt(const OwnedTree& tree, const std::string& path) {
  Held held;
  if (tree.root() == nullptr) return held;
  walk(tree.root(), tree.layout(), [&](const BkoqVisit& visit) {
    if (visit.event != BKOQ_FIELD || path != visit.path) return 0;
    held.isThere = true;
    held.number = visit.number;
    if (isText(visit.kind) && visit.target != 0) {
      held.text.assign(static_cast<const char*>(visit.targetBytes), visit.targetSize);
    } else if (visit.kind == BKOQ_FIELD_BYTE_LIST || visit.kind == BKOQ_FIELD_RESERVED) {
      held.text.assign(static_cast<const char*>(visit.bytes), visit.width);
    } else if (visit.target != 0) {
      held.text = std::to_string(visit.count);
    }
    return 1;
  });
  return held;
}

// Finds the attributes on which a field depends: a group that makes no difference is put aside
// as a whole.
class Search {
 public:
  Search(Experiment& experiment, std::string path, BkoqLayout layout)
      : experiment_(experiment),
        path_(std::move(path)),
        layout_(layout),
        written_(heldAt(experiment.asWritten(layout), path_)) {}
  // In the job without some attributes.
  Search(Experiment& experiment, std::string path, BkoqLayout layout,
         const std::vector<const GivenAttribute*>& absent)
      : Search(experiment, std::move(path), layout) {
    if (absent.empty()) return;
    written_ = without(absent);
    absent_ = leftOut(absent);
  }

  // What the field holds, as the job is written.
  const Held& written() const { return written_; }

  std::vector<const GivenAttribute*> deciding(const std::vector<const GivenAttribute*>& all,
                                              std::size_t most = SIZE_MAX) {
    found_.clear();
    most_ = most;
    if (!all.empty()) search(all.data(), all.size());
    return found_;
  }

  Held without(const std::vector<const GivenAttribute*>& group) { return heldWith(leftOut(group)); }
  Held with(const GivenAttribute& given, const Value* value) { return heldWith({{&given, value}}); }

 private:
  static std::vector<Experiment::Replacement> leftOut(
      const std::vector<const GivenAttribute*>& group) {
    std::vector<Experiment::Replacement> replacements;
    for (const GivenAttribute* given : group) {
      if (!given->attribute->isRequired) replacements.push_back({given, nullptr});
    }
    return replacements;
  }
  Held heldWith(std::vector<Experiment::Replacement> replacements) {
    replacements.insert(replacements.end(), absent_.begin(), absent_.end());
    const OwnedTree tree = experiment_.flattenWith(replacements, layout_);
    // A job that cannot be read so tells nothing.
    return tree.root() == nullptr ? written_ : heldAt(tree, path_);
  }

  bool makesDifference(const GivenAttribute* const* group, std::size_t count) {
    std::vector<Experiment::Replacement> changed;
    std::vector<const GivenAttribute*> all(group, group + count);
    for (const GivenAttribute* given : all) {
      const Value* other = experiment_.otherValue(*given);
      if (other != nullptr) changed.push_back({given, other});
    }
    return !(without(all) == written_) || (!changed.empty() && !(heldWith(changed) == written_));
  }

  void search(const GivenAttribute* const* group, std::size_t count) {
    if (found_.size() >= most_ || !makesDifference(group, count)) return;
    if (count == 1) {
      found_.push_back(*group);
      return;
    }
    search(group, count / 2);
    search(group + count / 2, count - count / 2);
  }

  Experiment& experiment_;
  std::string path_;
  BkoqLayout layout_;
  Held written_;
  std::vector<Experiment::Replacement> absent_;
  std::vector<const GivenAttribute*> found_;
  std::size_t most_ = SIZE_MAX;
};

std::string recordOf(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  return dot == std::string::npos ? "" : path.substr(0, dot + 1);
}

// Finds what decides the fields of one layout. Of many fields it is worth to find out first what
// every attribute decides.
class Deciders {
 public:
  Deciders(Experiment& experiment, BkoqLayout layout) : experiment_(experiment), layout_(layout) {
    for (const GivenAttribute& given : experiment.attributes()) {
      (given.isContainer() ? containers_ : plain_).push_back(&given);
    }
    for (const RecordField& field : experiment.fields(layout)) {
      siblings_[recordOf(field.path)].push_back(&field);
    }
  }

  void add(const Decided& decided) {
    isKnown_ = true;
    for (const std::string& path : decided.fields[indexOf(layout_)]) {
      known_[path].push_back(decided.given);
    }
  }

  std::vector<const GivenAttribute*> of(const std::string& path, std::size_t most = SIZE_MAX) {
    if (!isKnown_) return Search(experiment_, path, layout_).deciding(plain_, most);
    return knownOf(path, false);
  }

  // Those that set some of the bits when no other attribute is given. Of a bit that several set
  // none decides: leaving one out changes nothing.
  std::vector<const GivenAttribute*> setting(const std::string& path, std::uint32_t bits) {
    std::vector<const GivenAttribute*> found;
    const auto bare = bareFlags().find(path);
    // The bits of a record that only an attribute brings into being may well be defaults.
    if (bare == bareFlags().end()) return found;
    if (bits &= ~bare->second; bits != 0) addSetting(path, bits, 0, plain_.size(), found);
    return found;
  }

  // The lists or the object that a count or a pointer comes from: its own, not those around them. A
  // node's filters and the job's meet in one array.
  std::vector<const GivenAttribute*> containers(const std::string& path) {
    std::vector<const GivenAttribute*> all;
    if (isKnown_) {
      all = knownOf(path, true);
    } else {
      for (const GivenAttribute* given : Search(experiment_, path, layout_).deciding(containers_)) {
        if (isDecidedBy(path, *given)) all.push_back(given);
      }
    }
    std::vector<const GivenAttribute*> own;
    for (const GivenAttribute* given : all) {
      const auto isInside = [given](const GivenAttribute* other) {
        return isAround(*given, *other);
      };
      if (std::none_of(all.begin(), all.end(), isInside)) own.push_back(given);
    }
    return own;
  }

  // The class of the object that a record is made from: that of the innermost attribute that
  // decides one of its fields.
  const ObjectClass* classBehind(const RecordField& field) {
    const std::string record = recordOf(field.path);
    const auto [known, isNew] = classes_.emplace(record, nullptr);
    if (!isNew) return known->second;
    const auto levels = static_cast<unsigned int>(std::count(record.begin(), record.end(), '.'));
    const GivenAttribute* innermost = nullptr;
    for (const RecordField* sibling : siblings_[record]) {
      const bool isPlain = isNumber(sibling->kind) || sibling->kind == BKOQ_FIELD_TEXT ||
                           sibling->kind == BKOQ_FIELD_TWO_TEXTS;
      if (!isPlain) continue;
      // A name is what tells objects apart; the first that is decided inside will do.
      for (const GivenAttribute* given : of(sibling->path, 2)) {
        if (innermost == nullptr || depthOf(given) > depthOf(innermost)) innermost = given;
      }
      if (innermost != nullptr && depthOf(innermost) >= levels) break;
    }
    const ObjectClass* own = nullptr;
    if (innermost == nullptr || depthOf(innermost) < levels) own = classByHolder(record);
    if (own == nullptr) {
      const std::size_t object =
          innermost == nullptr ? 0 : static_cast<std::size_t>(innermost->object);
      own = experiment_.objects()[object].own;
    }
    return known->second = own;
  }

 private:
  // The flag words of the job without all that can be left out but lists and objects.
  const std::unordered_map<std::string, std::uint32_t>& bareFlags() {
    if (bareFlags_) return *bareFlags_;
    std::unordered_map<std::string, std::uint32_t>& flags = bareFlags_.emplace();
    const OwnedTree bare = treeOfOnly(0, 0);
    if (bare.root() == nullptr) return flags;
    walk(bare.root(), layout_, [&flags](const BkoqVisit& visit) {
      const bool isFlags = visit.event == BKOQ_FIELD && visit.kind == BKOQ_FIELD_FLAGS;
      if (isFlags) flags.emplace(visit.path, visit.number);
      return 0;
    });
    return flags;
  }
  // With none of the plain attributes but those from `first` up to `end`.
  OwnedTree treeOfOnly(std::size_t first, std::size_t end) {
    std::vector<Experiment::Replacement> others;
    for (std::size_t i = 0; i < plain_.size(); ++i) {
      const bool isIn = i >= first && i < end;
      if (!isIn && !plain_[i]->attribute->isRequired) others.push_back({plain_[i], nullptr});
    }
    return experiment_.flattenWith(others, layout_);
  }
  void addSetting(const std::string& path, std::uint32_t bits, std::size_t first, std::size_t end,
                  std::vector<const GivenAttribute*>& found) {
    if (first == end || (heldAt(treeOfOnly(first, end), path).number & bits) == 0) return;
    if (end - first == 1) {
      found.push_back(plain_[first]);
      return;
    }
    const std::size_t middle = first + (end - first) / 2;
    addSetting(path, bits, first, middle, found);
    addSetting(path, bits, middle, end, found);
  }

  bool isDecidedBy(const std::string& path, const GivenAttribute& given) {
    const std::vector<BkoqLayout> layouts = {layout_};
    const Decided decided = whatItDecides(experiment_, given, layouts);
    const std::vector<std::string>& fields = decided.fields[indexOf(layout_)];
    return std::find(fields.begin(), fields.end(), path) != fields.end();
  }

  static bool isAround(const GivenAttribute& given, const GivenAttribute& other) {
    const std::size_t size = given.path.size();
    return other.path.size() > size && other.path.compare(0, size, given.path) == 0 &&
           (other.path[size] == '.' || other.path[size] == '[');
  }

  unsigned int depthOf(const GivenAttribute* given) const {
    return experiment_.objects()[static_cast<std::size_t>(given->object)].depth;
  }

  // Of an object of which nothing is given; null when what holds it does not tell.
  const ObjectClass* classByHolder(std::string record) {
    if (!record.empty()) record.pop_back();
    const bool isElement = !record.empty() && record.back() == ']';
    const std::size_t bracket = isElement ? record.rfind('[') : record.size();
    std::vector<const GivenAttribute*> holders = containers(record.substr(0, bracket));
    // An embedded record is always there: it is its fields that an object fills.
    if (!isElement) {
      for (const RecordField* field : siblings_[record + "."]) {
        if (!holders.empty()) break;
        holders = containers(field->path);
      }
    }
    // Of several lists, the elements of the innermost come first.
    std::stable_sort(holders.begin(), holders.end(),
                     [this](const GivenAttribute* a, const GivenAttribute* b) {
                       return depthOf(a) > depthOf(b);
                     });
    std::size_t index = isElement ? std::strtoul(record.c_str() + bracket + 1, nullptr, 10) : 0;
    for (const GivenAttribute* holder : holders) {
      const Family& family = holder->attribute->family();
      if (!isElement) return family.classOf(*holder->value);
      const auto elements = holder->value->elements();
      if (index < elements.size()) return family.classOf(elements[index]);
      index -= elements.size();
    }
    return nullptr;
  }

  std::vector<const GivenAttribute*> knownOf(const std::string& path, bool areContainers) const {
    std::vector<const GivenAttribute*> found;
    const auto known = known_.find(path);
    if (known == known_.end()) return found;
    for (const GivenAttribute* given : known->second) {
      if (given->isContainer() == areContainers) found.push_back(given);
    }
    return found;
  }

  Experiment& experiment_;
  BkoqLayout layout_;
  std::vector<const GivenAttribute*> plain_;
  std::optional<std::unordered_map<std::string, std::uint32_t>> bareFlags_;
  std::vector<const GivenAttribute*> containers_;
  std::unordered_map<std::string, std::vector<const RecordField*>> siblings_;  // by their record
  std::unordered_map<std::string, const ObjectClass*> classes_;
  std::unordered_map<std::string, std::vector<const GivenAttribute*>> known_;
  bool isKnown_ = false;
};

std::string hexadecimal(std::uint32_t number) {
  char text[16] = "";
  std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(number));
  return text;
}

// Which bits of the field an attribute sets, and which of its own do so.
void addBits(Experiment& experiment, Search& search, const GivenAttribute& given,
             std::vector<Reason>& reasons) {
  const std::uint32_t written = search.written().number;
  const Attribute& attribute = *given.attribute;
  std::int64_t value = 0;
  Problems problems;
  Kept kept;
  const Document none("");
  const bool isNumber =
      attribute.shape == Shape::kNumber &&
      Reader(none, problems, kept)
          .number(*given.value, attribute.least, attribute.most, attribute.words, value);
  const std::uint32_t all = written & ~search.without({&given}).number;
  if (!isNumber) {
    reasons.push_back({&given, all, 0});
    return;
  }
  Reason same = {&given, 0, 0};
  std::vector<Reason> translated;
  for (std::uint32_t bit = 1; bit != 0; bit <<= 1U) {
    if ((value & bit) == 0) continue;
    const Held held = search.with(given, experiment.number(value & ~std::int64_t{bit}));
    const std::uint32_t set = written & ~held.number;
    if (set == 0) continue;
    if (set == bit) {
      same.fieldBits |= bit;
    } else {
      translated.push_back({&given, set, bit});
    }
  }
  if (same.fieldBits != 0) reasons.push_back(same);
  reasons.insert(reasons.end(), translated.begin(), translated.end());
  if (same.fieldBits == 0 && translated.empty()) reasons.push_back({&given, all, 0});
}

// What experiments have shown about an attribute so far.
struct Evidence {
  explicit Evidence(const GivenAttribute& attribute)
      : given(&attribute), canGo(!attribute.attribute->isRequired), isMissed(!canGo) {}

  void add(const Experiment::Differences& differences, const std::vector<BkoqLayout>& layouts) {
    for (const BkoqLayout layout : layouts) {
      const auto& paths = differences[indexOf(layout)];
      if (!paths) {
        isMissed = true;
        continue;
      }
      for (const std::string& path : *paths) add(path, layout);
    }
  }
  void add(const std::string& path, BkoqLayout layout) {
    if (seen[indexOf(layout)].insert(path).second) fields[indexOf(layout)].push_back(path);
  }
  // All that leaving it out shows has been added.
  void endOfRemoval() { isMissed = isMissed || !fields[0].empty() || !fields[1].empty(); }
  Decided decided() const {
    const bool reachesAny = !fields[0].empty() || !fields[1].empty();
    return {given, {fields[0], fields[1]}, !isMissed && reachesAny};
  }

  const GivenAttribute* given;
  bool canGo;     // can be left out
  bool isMissed;  // leaving it out shows
  std::vector<std::string> fields[2];
  std::unordered_set<std::string> seen[2];
};

// Tries many attributes of one name at once. Each has a word of its own with equally many bits set,
// and takes part in the experiments that these stand for. The experiments in which a field differs
// then spell the word of the one attribute that decides it; of two, more bits are set.
class Together {
 public:
  Together(Experiment& experiment, const std::vector<BkoqLayout>& layouts)
      : experiment_(experiment), layouts_(layouts) {}

  // False when that does not tell what each decides.
  bool find(std::vector<Evidence>& all) {
    constexpr std::size_t kFew = 4;
    if (all.size() <= kFew) return false;
    chooseWords(all.size());
    if (!run(all, false)) return false;
    for (Evidence& each : all) each.endOfRemoval();
    return run(all, true);
  }

 private:
  void chooseWords(std::size_t count) {
    for (bits_ = 2; words_.size() < count; ++bits_) {
      words_.clear();
      for (std::uint32_t word = 0; word < 1U << bits_ && words_.size() < count; ++word) {
        if (bitsSet(word) == bits_ / 2) words_.push_back(word);
      }
      if (words_.size() == count) break;
    }
  }
  static unsigned int bitsSet(std::uint32_t word) {
    unsigned int count = 0;
    for (; word != 0; word &= word - 1) ++count;
    return count;
  }

  bool run(std::vector<Evidence>& all, bool isChange) {
    std::unordered_map<std::string, std::uint32_t> spelt[2];
    std::vector<const std::string*> order[2];  // in which each attribute's paths are as in the tree
    std::unordered_map<std::uint32_t, Evidence*> takePart;
    std::vector<const Value*> values(all.size(), nullptr);
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (isChange) values[i] = experiment_.otherValue(*all[i].given);
      const bool isIn = isChange ? values[i] != nullptr : all[i].canGo;
      if (isIn) takePart.emplace(words_[i], &all[i]);
    }
    if (takePart.empty()) return true;
    for (unsigned int bit = 0; bit < bits_; ++bit) {
      std::vector<Experiment::Replacement> replacements;
      for (std::size_t i = 0; i < all.size(); ++i) {
        const bool isIn = (words_[i] >> bit & 1U) != 0 && takePart.count(words_[i]) != 0;
        if (isIn) replacements.push_back({all[i].given, values[i]});
      }
      if (replacements.empty()) continue;
      const Experiment::Differences found = experiment_.differences(replacements, layouts_);
      for (const BkoqLayout layout : layouts_) {
        if (!found[indexOf(layout)]) return false;
        for (const std::string& path : *found[indexOf(layout)]) {
          const auto [known, isNew] = spelt[indexOf(layout)].emplace(path, 0);
          known->second |= 1U << bit;
          if (isNew) order[indexOf(layout)].push_back(&known->first);
        }
      }
    }
    for (const BkoqLayout layout : layouts_) {
      for (const std::string* path : order[indexOf(layout)]) {
        const auto decider = takePart.find(spelt[indexOf(layout)][*path]);
        if (decider == takePart.end()) return false;
        decider->second->add(*path, layout);
      }
    }
    return true;
  }

  Experiment& experiment_;
  const std::vector<BkoqLayout>& layouts_;
  std::vector<std::uint32_t> words_;
  unsigned int bits_ = 0;
};

}  // namespace

bool isSecret(const Attribute& attribute) {
  for (const char* word : {"password", "Password", "PW", "encryptionKey", "encryptKey"}) {
    if (attribute.key.find(word) != std::string::npos) return true;
  }
  return false;
}

std::string shownValue(const GivenAttribute& given) {
  if (isSecret(*given.attribute)) return "********";
  const auto shown = [](const Value& value) -> std::string {
    switch (value.type()) {
      case Value::Type::kText:
        return jsonText(shortened(std::string(value.text())));
      case Value::Type::kNumber:
        return shortened(std::string(value.text()));
      case Value::Type::kFlag:
        return value.isTrue() ? "true" : "false";
      case Value::Type::kNull:
        return "null";
      case Value::Type::kList:
        return "[...]";
      case Value::Type::kObject:
        return "{...}";
    }
    return "";
  };
  if (given.isContainer() || given.value->type() != Value::Type::kList) {
    const auto count = given.value->elements().size();
    if (given.value->type() == Value::Type::kList) {
      return count == 0 ? "[]" : "[" + std::to_string(count) + " of them]";
    }
    return shown(*given.value);
  }
  std::string list;
  for (const Value& element : given.value->elements()) {
    list += (list.empty() ? "" : ", ") + shown(element);
  }
  return "[" + shortened(list) + "]";
}

Decided whatItDecides(Experiment& experiment, const GivenAttribute& given,
                      const std::vector<BkoqLayout>& layouts) {
  Evidence evidence(given);
  if (evidence.canGo) evidence.add(experiment.differences({{&given, nullptr}}, layouts), layouts);
  evidence.endOfRemoval();
  // Where leaving it out shows in some fields, another value may show in more.
  const Value* other = experiment.otherValue(given);
  if (other != nullptr) evidence.add(experiment.differences({{&given, other}}, layouts), layouts);
  return evidence.decided();
}

std::vector<Decided> whatTheyDecide(Experiment& experiment,
                                    const std::vector<const GivenAttribute*>& all,
                                    const std::vector<BkoqLayout>& layouts,
                                    const std::function<void(std::size_t)>& progress) {
  // No field depends on two attributes of one name but in few cases, which show themselves.
  std::map<std::pair<const Family*, std::string_view>, std::vector<std::size_t>> groups;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const GivenObject& object = experiment.objects()[static_cast<std::size_t>(all[i]->object)];
    groups[{object.family, all[i]->attribute->key}].push_back(i);
  }
  std::vector<Decided> decided(all.size());
  std::size_t done = 0;
  for (const auto& [name, members] : groups) {
    std::vector<Evidence> evidence;
    for (const std::size_t i : members) evidence.emplace_back(*all[i]);
    const bool isTold = Together(experiment, layouts).find(evidence);
    for (std::size_t i = 0; i < members.size(); ++i) {
      decided[members[i]] =
          isTold ? evidence[i].decided() : whatItDecides(experiment, *all[members[i]], layouts);
      progress(++done);
    }
  }
  return decided;
}

namespace {

FieldReason reasonOf(Experiment& experiment, Deciders& deciders, const RecordField& field,
                     BkoqLayout layout) {
  FieldReason why = {&field, {}, ""};
  std::vector<const GivenAttribute*> deciding = deciders.of(field.path);
  std::uint32_t rest = 0;
  std::vector<const GivenAttribute*> setting;
  if (field.kind == BKOQ_FIELD_FLAGS && field.number != 0) {
    rest = field.number;
    if (!deciding.empty()) rest &= Search(experiment, field.path, layout).without(deciding).number;
    if (rest != 0) setting = deciders.setting(field.path, rest);
    for (const GivenAttribute* given : setting) {
      const bool isNew = std::find(deciding.begin(), deciding.end(), given) == deciding.end();
      if (isNew) deciding.push_back(given);
    }
    std::sort(deciding.begin(), deciding.end());  // as they are written
  }
  if (deciding.empty()) {
    const bool isMade = field.kind == BKOQ_FIELD_COUNT || field.kind == BKOQ_FIELD_ARRAY ||
                        field.kind == BKOQ_FIELD_RECORD;
    if (isMade) {
      for (const GivenAttribute* given : deciders.containers(field.path)) {
        why.reasons.push_back({given, 0, 0});
      }
    }
    if (why.reasons.empty()) {
      why.origin = *field.filledBy == '\0' && !isMade
                       ? "computed"
                       : "default of " + deciders.classBehind(field)->name;
    }
    return why;
  }
  if (field.kind != BKOQ_FIELD_FLAGS) {
    for (const GivenAttribute* given : deciding) why.reasons.push_back({given, 0, 0});
    return why;
  }
  for (const GivenAttribute* given : deciding) {
    // What several set shows where the others are not given.
    std::vector<const GivenAttribute*> others = setting;
    const auto own = std::find(others.begin(), others.end(), given);
    if (own == others.end()) {
      others.clear();
    } else {
      others.erase(own);
    }
    Search search(experiment, field.path, layout, others);
    addBits(experiment, search, *given, why.reasons);
  }
  for (const Reason& reason : why.reasons) rest &= ~reason.fieldBits;
  if (rest != 0) {
    why.origin = "default " + hexadecimal(rest) + " of " + deciders.classBehind(field)->name;
  }
  return why;
}

}  // namespace

std::vector<const RecordField*> fieldsAt(Experiment& experiment, const std::string& path,
                                         BkoqLayout layout) {
  std::vector<const RecordField*> at;
  std::vector<const RecordField*> inside;
  for (const RecordField& field : experiment.fields(layout)) {
    if (field.kind == BKOQ_FIELD_RESERVED) continue;
    if (kit::matches(path.c_str(), field.path.c_str())) at.push_back(&field);
    if (kit::covers(path.c_str(), field.path.c_str())) inside.push_back(&field);
  }
  return at.empty() ? inside : at;
}

FieldReason whyFieldHolds(Experiment& experiment, const RecordField& field, BkoqLayout layout) {
  Deciders deciders(experiment, layout);
  return reasonOf(experiment, deciders, field, layout);
}

std::vector<FieldReason> whyFieldsHold(Experiment& experiment,
                                       const std::vector<const RecordField*>& fields,
                                       BkoqLayout layout) {
  constexpr std::size_t kFew = 4;
  std::vector<const GivenAttribute*> attributes;
  if (fields.size() > kFew) {
    for (const GivenAttribute& given : experiment.attributes()) attributes.push_back(&given);
  }
  Progress progress(attributes.size() + fields.size());
  Deciders deciders(experiment, layout);
  const std::vector<Decided> all = whatTheyDecide(
      experiment, attributes, {layout}, [&progress](std::size_t done) { progress.at(done); });
  for (const Decided& decided : all) deciders.add(decided);
  std::vector<FieldReason> reasons;
  for (const RecordField* field : fields) {
    reasons.push_back(reasonOf(experiment, deciders, *field, layout));
    progress.at(attributes.size() + reasons.size());
  }
  return reasons;
}

std::string reasonText(const Experiment& experiment, const FieldReason& why,
                       const std::string& file) {
  std::string text = why.field->path;
  const bool isFlags = why.field->kind == BKOQ_FIELD_FLAGS;
  if (isFlags) {
    text += " " + hexadecimal(why.field->number);
  } else if (isNumber(why.field->kind)) {
    text += " " + std::to_string(static_cast<std::int32_t>(why.field->number));
  }
  std::string parts = why.origin;
  for (const Reason& reason : why.reasons) {
    if (!parts.empty()) parts += "; ";
    if (isFlags && reason.fieldBits != 0) {
      parts += hexadecimal(reason.fieldBits) + " because " + reason.given->path;
      parts += reason.attributeBits != 0 ? " has " + hexadecimal(reason.attributeBits)
                                         : " is " + shownValue(*reason.given);
    } else {
      parts += reason.given->path + " is " + shownValue(*reason.given);
    }
    parts += " (" + file + ":" + std::to_string(experiment.placeOf(*reason.given).line) + ")";
  }
  return text + ": " + parts;
}

}  // namespace bkoq::tool
