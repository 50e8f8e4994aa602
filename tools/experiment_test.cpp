// What experiments find out about the attributes of job files.

#include "tools/experiment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tools/attributes.h"
#include "tools/explain.h"
#include "tools/reference.h"
#include "tools/starter.h"
#include "tools/walk.h"

namespace bkoq::tool {
namespace {

// The flags in the tables, which warnings are made from, say what the conversion does.
TEST(Experiments, AgreeWithTheTables) {
  std::string unknown;
  const auto document = nlohmann::json::parse(attributesJson({}, unknown));
  std::size_t count = 0;
  for (const auto& object : document["objects"]) {
    const Attribute* attribute = nullptr;
    for (const auto& row : object["attributes"]) {
      for (const Family* family : families()) {
        for (const ObjectClass& own : family->classes) {
          if (own.name == object["class"]) attribute = own.find(row["key"].get<std::string>());
        }
      }
      ASSERT_NE(attribute, nullptr) << row;
      // Orders objects, of which these jobs have one each.
      if (attribute->key == "priority") continue;
      ++count;
      const bool isInCurrent = !row["fields"]["current"].empty();
      const bool isInPrevious = !row["fields"]["previous"].empty();
      EXPECT_EQ(attribute->isRecorded, isInCurrent || isInPrevious) << object["class"] << row;
      const std::string only = attribute->onlyIn == nullptr ? "" : attribute->onlyIn;
      EXPECT_EQ(only == "current", isInCurrent && !isInPrevious) << object["class"] << row;
      EXPECT_EQ(only == "previous", !isInCurrent && isInPrevious) << object["class"] << row;
    }
  }
  EXPECT_GT(count, 400u);
}

// Parts in which nothing changes are taken from the job as it is written: that must not show.
TEST(Experiments, TakeUnchangedPartsWithoutADifference) {
  Problems problems;
  const LoadedJob loaded = readJob(starterFile(*jobs().find("restore"), true), problems);
  ASSERT_TRUE(problems.empty());
  const Selection all;
  Experiment experiment(loaded, all);
  ASSERT_GT(experiment.attributes().size(), 20u);
  for (const GivenAttribute& given : experiment.attributes()) {
    const Value* other = given.attribute->isRequired ? experiment.otherValue(given) : nullptr;
    const OwnedTree quick = experiment.flattenWith({{&given, other}}, BKOQ_LAYOUT_CURRENT);
    Changes changes;
    changes.replaced.emplace(given.value, other);
    Problems none;
    Kept kept;
    Reader reader(*loaded.document, none, kept);
    reader.setChanges(&changes);
    const std::unique_ptr<BKQJob> job(jobs().read(reader, loaded.document->root()));
    ASSERT_TRUE(none.empty()) << given.path;
    const Flattened whole = flatten(*job, all, BKOQ_LAYOUT_CURRENT);
    std::uint32_t count = 1;
    ASSERT_EQ(bkoqCompare(quick.root(), BKOQ_LAYOUT_CURRENT, whole.tree.root(), BKOQ_LAYOUT_CURRENT,
                          1, nullptr, nullptr, &count),
              BKOQ_OK)
        << given.path;
    EXPECT_EQ(count, 0u) << given.path;
  }
}

TEST(Secrets, AreAttributesOfTheseNames) {
  std::set<std::string> secrets;
  for (const Family* family : families()) {
    for (const ObjectClass& own : family->classes) {
      for (const Attribute& attribute : own.attributes) {
        if (isSecret(attribute)) secrets.insert(attribute.key);
      }
    }
  }
  const std::set<std::string> expected = {"dbPassword",
                                          "diskPW2",
                                          "encryptKey",
                                          "encryptionKey",
                                          "machinePassword",
                                          "password",
                                          "scriptUserPassword",
                                          "sessionPW",
                                          "sessionPassword",
                                          "setPW",
                                          "userPW"};
  EXPECT_EQ(secrets, expected);
}

std::ptrdiff_t countOfOpenFiles() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(Experiments, LeaveNoFileOpen) {
  Problems problems;
  const LoadedJob loaded = readJob(starterFile(*jobs().find("scan"), true), problems);
  const Selection all;
  Experiment experiment(loaded, all);
  const std::ptrdiff_t before = countOfOpenFiles();
  EXPECT_NE(experiment.flattenWith({}, BKOQ_LAYOUT_CURRENT).root(), nullptr);
  EXPECT_EQ(countOfOpenFiles(), before);
}

using Json = nlohmann::ordered_json;
using Random = std::mt19937;

// What a job of that kind can hold, all of it given.
Json wholeJob(const std::string& kind) {
  const std::string text = starterFile(*jobs().find(kind), true);
  const std::regex comment("^( *)// \"", std::regex::multiline);
  return Json::parse(std::regex_replace(text, comment, "$1\""), nullptr, true, true);
}

// Draws some of each list's objects, and leaves members out.
void thinOut(Json& value, Random& random) {
  if (value.is_array() && !value.empty() && value.front().is_object()) {
    const Json all = std::exchange(value, Json::array());
    for (std::size_t left = 1 + random() % 5; left > 0; --left) {
      value.push_back(all[random() % all.size()]);
      thinOut(value.back(), random);
    }
  } else if (value.is_object()) {
    for (auto member = value.begin(); member != value.end();) {
      const bool isKept = member.key() == "kind" || member.key() == "nodeName" ||
                          member.key() == "jobName" || random() % 6 == 0 ||
                          (member->is_structured() && random() % 2 == 0);
      member = isKept ? std::next(member) : value.erase(member);
    }
    for (Json& member : value) thinOut(member, random);
  }
}

Json otherLeaf(const Json& leaf, Random& random) {
  if (leaf.is_boolean()) return !leaf.get<bool>();
  if (leaf.is_string()) return leaf.get<std::string>() + static_cast<char>('a' + random() % 26);
  if (random() % 2 == 0) return random() >> random() % 32;  // of any length
  return leaf.get<std::int64_t>() ^ 1;
}

// Changes half of the values, as far as the job stays one.
LoadedJob varied(const std::string& kind, Random& random) {
  Json job = wholeJob(kind);
  thinOut(job, random);
  Problems problems;
  LoadedJob loaded = readJob(job.dump(), problems);
  const Json leaves = job.flatten();
  for (const auto& [path, leaf] : leaves.items()) {
    const bool isValue = leaf.is_boolean() || leaf.is_string() || leaf.is_number();
    if (!isValue || random() % 2 == 0) continue;
    const Json other = otherLeaf(leaf, random);
    job[Json::json_pointer(path)] = other;
    Problems found;
    LoadedJob changed = readJob(job.dump(), found);
    if (found.empty()) {
      loaded = std::move(changed);
    } else {
      job[Json::json_pointer(path)] = leaf;
    }
  }
  return loaded;
}

// Jobs of one kind, the same in every run.
class VariedJobs : public testing::TestWithParam<std::string> {
 protected:
  LoadedJob next() {
    LoadedJob loaded = varied(GetParam(), random_);
    EXPECT_NE(loaded.job, nullptr);
    return loaded;
  }

 private:
  Random random_{12};  // NOLINT(cert-msc51-cpp)
};

std::vector<std::string> kindsOfJobs() {
  std::vector<std::string> kinds;
  for (const ObjectClass& kind : jobs().classes) kinds.push_back(kind.kind);
  return kinds;
}
INSTANTIATE_TEST_SUITE_P(EveryKind, VariedJobs, testing::ValuesIn(kindsOfJobs()),
                         [](const auto& kind) { return kind.param; });

const std::vector<BkoqLayout> kLayouts = {BKOQ_LAYOUT_CURRENT, BKOQ_LAYOUT_PREVIOUS};

// What each field of a tree holds, by its path.
std::map<std::string, std::string> contentOf(const OwnedTree& tree) {
  std::map<std::string, std::string> content;
  if (tree.root() == nullptr) return content;
  walk(tree.root(), tree.layout(), [&](const BkoqVisit& visit) {
    if (visit.event != BKOQ_FIELD) return 0;
    std::string& held = content[visit.path];
    const auto* bytes = static_cast<const char*>(visit.bytes);
    if (!isPointer(visit.kind)) {
      held.assign(bytes, visit.width);
    } else if (isText(visit.kind) && visit.target != 0) {
      held = "text " + std::string(static_cast<const char*>(visit.targetBytes), visit.targetSize);
    } else if (visit.target != 0) {
      held = "a record";
    }
    return 0;
  });
  return content;
}

// What differs between two trees, as an experiment tells it, found by the kit's comparison alone.
std::vector<std::string> differingFields(Experiment& experiment, const OwnedTree& other,
                                         BkoqLayout layout) {
  std::vector<std::string> paths;
  const auto add = [&paths](const std::string& path) {
    if (std::find(paths.begin(), paths.end(), path) == paths.end()) paths.push_back(path);
  };
  const std::vector<RecordField>& fields = experiment.fields(layout);
  compareTrees(experiment.asWritten(layout).root(), layout, other.root(), layout, true, nullptr,
               [&](const BkoqDifference& difference, BkoqChange change) {
                 std::string path = difference.path;
                 if (change != BKOQ_CHANGED) path.resize(path.rfind('['));
                 const auto isAt = [&](const RecordField& field) { return field.path == path; };
                 const auto found = std::find_if(fields.begin(), fields.end(), isAt);
                 // Of an array with other elements the count too, which stands before it.
                 if (change != BKOQ_CHANGED && std::prev(found)->kind == BKOQ_FIELD_COUNT) {
                   add(std::prev(found)->path);
                 }
                 add(path);
                 return 0;
               });
  return paths;
}

bool hasSameContent(const Value& one, const Value& two) {
  if (one.type() != two.type()) return false;
  if (one.type() == Value::Type::kFlag) return one.isTrue() == two.isTrue();
  if (one.type() == Value::Type::kText || one.type() == Value::Type::kNumber) {
    return one.text() == two.text();
  }
  const auto members = one.members();
  const auto otherMembers = two.members();
  const auto elements = one.elements();
  const auto otherElements = two.elements();
  const auto isSameMember = [](const Member& a, const Member& b) {
    return a.key == b.key && hasSameContent(a.value, b.value);
  };
  return std::equal(members.begin(), members.end(), otherMembers.begin(), otherMembers.end(),
                    isSameMember) &&
         std::equal(elements.begin(), elements.end(), otherElements.begin(), otherElements.end(),
                    hasSameContent);
}

// What differs between them, place by place, as long as nothing leads elsewhere.
std::vector<std::string> fieldsOfOtherContent(Experiment& experiment, const OwnedTree& other,
                                              BkoqLayout layout) {
  std::vector<std::string> paths;
  const auto before = contentOf(experiment.asWritten(layout));
  const auto after = contentOf(other);
  for (const RecordField& field : experiment.fields(layout)) {
    const auto now = after.find(field.path);  // what a record held is gone with it
    if (now != after.end() && now->second != before.at(field.path)) paths.push_back(field.path);
  }
  return paths;
}

// What leads elsewhere has another type, or another count.
bool isInMoreThanValues(const std::vector<RecordField>& fields,
                        const std::vector<std::string>& paths) {
  return std::any_of(fields.begin(), fields.end(), [&](const RecordField& field) {
    return (field.kind == BKOQ_FIELD_COUNT || std::strstr(field.name, "Type") != nullptr) &&
           std::find(paths.begin(), paths.end(), field.path) != paths.end();
  });
}

// How many layouts of how many experiments there were, each told as a whole comparison tells it.
std::size_t expectWholeDifferences(Experiment& experiment,
                                   const std::vector<Experiment::Replacement>& replaced) {
  std::size_t tried = 0;
  const std::size_t wholeBefore = experiment.wholeComparisons();
  const Experiment::Differences found = experiment.differences(replaced, kLayouts);
  std::size_t whole = experiment.wholeComparisons() - wholeBefore;
  for (const BkoqLayout layout : kLayouts) {
    const OwnedTree tree = experiment.flattenWith(replaced, layout);
    const auto& paths = found[indexOf(layout)];
    EXPECT_EQ(paths.has_value(), tree.root() != nullptr) << replaced[0].given->path;
    if (!paths.has_value() || tree.root() == nullptr) continue;
    const bool isWhole = isInMoreThanValues(experiment.fields(layout), *paths);
    const std::vector<std::string> expected = isWhole
                                                  ? differingFields(experiment, tree, layout)
                                                  : fieldsOfOtherContent(experiment, tree, layout);
    EXPECT_EQ(*paths, expected) << replaced[0].given->path;
    whole -= isWhole ? 1 : 0;
    ++tried;
  }
  EXPECT_EQ(whole, 0u) << replaced[0].given->path;
  return tried;
}

TEST_P(VariedJobs, DifferWhereAWholeComparisonSaysSo) {
  std::size_t tried = 0;
  for (int i = 0; i < 2; ++i) {
    const LoadedJob loaded = next();
    const Selection everything;
    Experiment experiment(loaded, everything);
    for (const GivenAttribute& given : experiment.attributes()) {
      for (const Value* other :
           {static_cast<const Value*>(nullptr), experiment.otherValue(given)}) {
        tried += expectWholeDifferences(experiment, {{&given, other}});
      }
    }
  }
  EXPECT_GT(tried, 50u);
}

TEST_P(VariedJobs, DifferInAllThatSeveralAttributesChange) {
  std::size_t tried = 0;
  Random random(5);  // NOLINT(cert-msc51-cpp)
  for (int i = 0; i < 2; ++i) {
    const LoadedJob loaded = next();
    const Selection everything;
    Experiment experiment(loaded, everything);
    for (int j = 0; j < 30; ++j) {
      std::vector<Experiment::Replacement> replaced;
      for (const GivenAttribute& given : experiment.attributes()) {
        if (given.attribute->isRequired || random() % 3 != 0) continue;
        replaced.push_back({&given, random() % 2 != 0 ? experiment.otherValue(given) : nullptr});
      }
      if (!replaced.empty()) tried += expectWholeDifferences(experiment, replaced);
    }
  }
  EXPECT_GT(tried, 50u);
}

// A value that an attribute has not got, and can have; after that again one.
TEST_P(VariedJobs, TryOtherValuesThatCanBeRead) {
  Problems problems;
  const LoadedJob loaded = readJob(wholeJob(GetParam()).dump(), problems);
  ASSERT_TRUE(problems.empty());
  const Selection everything;
  Experiment experiment(loaded, everything);
  std::size_t tried = 0;
  for (const GivenAttribute& given : experiment.attributes()) {
    GivenAttribute at = given;
    for (int i = 0; i < 3; ++i) {
      const Value* other = experiment.otherValue(at);
      ASSERT_EQ(other == nullptr, given.isContainer() && !given.attribute->isRequired)
          << given.path;
      if (other == nullptr) break;
      EXPECT_NE(experiment.flattenWith({{&given, other}}, BKOQ_LAYOUT_CURRENT).root(), nullptr)
          << given.path;
      EXPECT_FALSE(hasSameContent(*other, *at.value)) << given.path;
      at.value = other;
      ++tried;
    }
  }
  EXPECT_GT(tried, 5u);
}

TEST(Experiments, TryOtherTimesAtBothEndsOfTheRange) {
  for (const std::string time : {"1901-12-17T00:00:00Z", "2037-02-06T06:28:15Z"}) {
    Problems problems;
    const LoadedJob loaded = readJob(
        R"({"kind": "verify", "jobName": "j", "schedule": {"kind": "regular", "execTime": ")" +
            time + "\"}}",
        problems);
    ASSERT_TRUE(problems.empty()) << time;
    const Selection everything;
    Experiment experiment(loaded, everything);
    const GivenAttribute& given = experiment.attributes().back();
    ASSERT_EQ(given.path, "schedule.execTime");
    const auto differences =
        experiment.differences({{&given, experiment.otherValue(given)}}, {BKOQ_LAYOUT_CURRENT});
    const std::vector<std::string> expected = {"stSchedule.lExecTime"};
    EXPECT_EQ(differences[indexOf(BKOQ_LAYOUT_CURRENT)], expected) << time;
  }
}

// The attributes of many objects are tried together: each must be found to decide what it decides
// when it is changed alone.
TEST_P(VariedJobs, TellTogetherWhatTheyTellOneByOne) {
  for (int i = 0; i < 2; ++i) {
    const LoadedJob loaded = next();
    const Selection everything;
    Experiment experiment(loaded, everything);
    std::vector<const GivenAttribute*> all;
    for (const GivenAttribute& given : experiment.attributes()) all.push_back(&given);
    EXPECT_GT(all.size(), 1u);
    const std::vector<Decided> together =
        whatTheyDecide(experiment, all, kLayouts, [](std::size_t) {});
    ASSERT_EQ(together.size(), all.size());
    for (std::size_t a = 0; a < all.size(); ++a) {
      const Decided alone = whatItDecides(experiment, *all[a], kLayouts);
      EXPECT_EQ(together[a].given, all[a]);
      EXPECT_EQ(together[a].isDefault, alone.isDefault) << all[a]->path;
      for (const BkoqLayout layout : kLayouts) {
        auto found = together[a].fields[indexOf(layout)];
        auto expected = alone.fields[indexOf(layout)];
        std::sort(found.begin(), found.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(found, expected) << i << " " << all[a]->path;
      }
    }
  }
}

// So must what decides a field, whether it is asked about alone or with others.
TEST_P(VariedJobs, GiveOneFieldTheReasonsThatItHasAmongMany) {
  const LoadedJob loaded = next();
  const Selection everything;
  Experiment experiment(loaded, everything);
  for (const BkoqLayout layout : kLayouts) {
    const std::vector<const RecordField*> fields = fieldsAt(experiment, "**", layout);
    ASSERT_EQ(fields.size() > 30, experiment.succeeded(layout));
    const std::vector<FieldReason> among = whyFieldsHold(experiment, fields, layout);
    ASSERT_EQ(among.size(), fields.size());
    for (std::size_t f = 0; f < fields.size(); f += 3) {
      const FieldReason alone = whyFieldHolds(experiment, *fields[f], layout);
      EXPECT_EQ(reasonText(experiment, among[f], ""), reasonText(experiment, alone, ""));
    }
  }
}

std::uint32_t numberAt(const OwnedTree& tree, const std::string& path) {
  const std::string bytes = contentOf(tree)[path];
  std::uint32_t number = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) {
    number = number << 8U | static_cast<unsigned char>(bytes[i - 1]);
  }
  return number;
}

// A number or text is decided by the attributes without which, or with other values of which, it
// is another one: those and no others.
TEST_P(VariedJobs, NameAllAttributesThatDecideAField) {
  const LoadedJob loaded = next();
  const Selection everything;
  Experiment experiment(loaded, everything);
  for (const BkoqLayout layout : kLayouts) {
    const auto written = contentOf(experiment.asWritten(layout));
    std::map<std::string, std::set<std::string>> deciding;  // by field
    for (const GivenAttribute& given : experiment.attributes()) {
      if (given.isContainer()) continue;
      std::vector<const Value*> others = {experiment.otherValue(given)};
      if (!given.attribute->isRequired) others.push_back(nullptr);
      for (const Value* other : others) {
        const auto changed = contentOf(experiment.flattenWith({{&given, other}}, layout));
        if (changed.empty()) continue;
        for (const auto& [path, held] : written) {
          const auto now = changed.find(path);
          if (now == changed.end() || now->second != held) deciding[path].insert(given.path);
        }
      }
    }
    const std::vector<RecordField>& fields = experiment.fields(layout);
    for (std::size_t f = 0; f < fields.size(); f += 3) {
      const RecordField& field = fields[f];
      const bool isValue = field.kind <= BKOQ_FIELD_TEXT_LIST && field.kind != BKOQ_FIELD_COUNT;
      if (!isValue) continue;
      std::set<std::string> named;
      for (const Reason& reason : whyFieldHolds(experiment, field, layout).reasons) {
        named.insert(reason.given->path);
      }
      EXPECT_EQ(named, deciding[field.path]) << field.path;
    }
  }
}

// What is told of the bits of one flag word.
class ToldBits {
 public:
  ToldBits(const LoadedJob& loaded, Experiment& experiment, const RecordField& field,
           BkoqLayout layout)
      : document_(*loaded.document), experiment_(experiment), field_(field), layout_(layout) {}

  void expectRight() {
    const FieldReason why = whyFieldHolds(experiment_, field_, layout_);
    std::uint32_t rest = field_.number;
    std::vector<Experiment::Replacement> none;
    for (const Reason& reason : why.reasons) {
      expectRight(reason, othersOf(reason, why.reasons));
      rest &= ~reason.fieldBits;
      none.push_back({reason.given, nullptr});
    }
    if (!none.empty()) rest &= ~lostWith(none, {});
    std::ostringstream begin;
    begin << "default 0x" << std::hex << std::uppercase << rest << " of ";
    if (none.empty()) begin.str("default of ");
    const bool isOrigin = none.empty() || rest != 0;
    EXPECT_EQ(why.origin.substr(0, begin.str().size()), isOrigin ? begin.str() : "") << field_.path;
  }

 private:
  using Replacements = std::vector<Experiment::Replacement>;

  // What several attributes set shows where the others are not given.
  static Replacements othersOf(const Reason& reason, const std::vector<Reason>& all) {
    Replacements others;
    for (const Reason& other : all) {
      const bool areShared = (other.fieldBits & reason.fieldBits) != 0;
      if (other.given != reason.given && areShared) others.push_back({other.given, nullptr});
    }
    return others;
  }

  std::uint32_t numberWith(const Replacements& replaced) {
    return numberAt(experiment_.flattenWith(replaced, layout_), field_.path);
  }
  std::uint32_t lostWith(Replacements replaced, const Replacements& others) {
    replaced.insert(replaced.end(), others.begin(), others.end());
    return numberWith(others) & ~numberWith(replaced);
  }

  void expectRight(const Reason& reason, const Replacements& others) {
    const GivenAttribute& given = *reason.given;
    const Attribute& attribute = *given.attribute;
    if (attribute.shape != Shape::kNumber) {
      EXPECT_EQ(reason.attributeBits, 0u) << given.path;
      EXPECT_EQ(reason.fieldBits, lostWith({{&given, nullptr}}, others)) << given.path;
      return;
    }
    Problems problems;
    Kept kept;
    std::int64_t value = 0;
    ASSERT_TRUE(Reader(document_, problems, kept)
                    .number(*given.value, attribute.least, attribute.most, attribute.words, value));
    const auto lostWithout = [&](std::int64_t bits) {
      return lostWith({{&given, experiment_.number(value & ~bits)}}, others);
    };
    if (reason.attributeBits != 0) {
      EXPECT_EQ(reason.attributeBits & (reason.attributeBits - 1), 0u) << given.path;
      EXPECT_NE(reason.fieldBits, reason.attributeBits) << given.path;
      EXPECT_EQ(lostWithout(reason.attributeBits), reason.fieldBits) << given.path;
    } else {
      for (std::uint32_t bit = 1; bit != 0; bit <<= 1U) {
        EXPECT_TRUE((reason.fieldBits & bit) == 0 || lostWithout(bit) == bit) << given.path;
      }
    }
  }

  const Document& document_;
  Experiment& experiment_;
  const RecordField& field_;
  BkoqLayout layout_;
};

// Bits of a flag word that are put down to an attribute's are gone without these, and what is put
// down to none is there without all of them.
TEST_P(VariedJobs, PutBitsDownToThoseThatSetThem) {
  const LoadedJob loaded = next();
  const Selection everything;
  Experiment experiment(loaded, everything);
  for (const BkoqLayout layout : kLayouts) {
    for (const RecordField& field : experiment.fields(layout)) {
      if (field.kind != BKOQ_FIELD_FLAGS) continue;
      ToldBits(loaded, experiment, field, layout).expectRight();
    }
  }
}

}  // namespace
}  // namespace bkoq::tool
