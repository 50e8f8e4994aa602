// What the tables of attributes promise, for every attribute.

#include "tools/attributes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/support/time_zone.h"
#include "tools/attribute_cases.h"
#include "tools/job_file.h"
#include "tools/moment.h"
#include "tools/problems.h"

namespace bkoq::tool {
namespace {

using test::kUtc;
using test::TimeZone;

const std::vector<ClassCase>& cases() {
  static const std::vector<ClassCase> all = [] {
    std::vector<ClassCase> all;
    addJobs(all);
    addNodes(all);
    addDisks(all);
    addTapes(all);
    addFilters(all);
    addSchedules(all);
    addNotifications(all);
    return all;
  }();
  return all;
}

const ObjectClass* classOf(const Family& family, const std::string& kind) {
  for (const ObjectClass& candidate : family.classes) {
    if (candidate.kind == kind) return &candidate;
  }
  return nullptr;
}

// A job that was read, and the object in it that is tested; null after a failure.
struct Read {
  LoadedJob loaded;
  void* object = nullptr;
};

LoadedJob readWithoutProblems(const std::string& text) {
  Problems problems;
  LoadedJob loaded = readJob(text, problems);
  for (const Problem& problem : problems.sorted()) {
    ADD_FAILURE() << lineOf(problem, "job") << "\nin " << text;
  }
  if (!problems.empty()) loaded.job.reset();
  return loaded;
}

// `jsonOf` gives what is written for a row, empty when it is left out.
Read read(const ClassCase& tested, const std::function<std::string(const AttributeRow&)>& jsonOf) {
  std::string object = tested.kind.empty() ? "" : R"("kind": ")" + tested.kind + "\"";
  for (const AttributeRow& row : tested.rows) {
    const std::string json = jsonOf(row);
    if (json.empty()) continue;
    object += (object.empty() ? "" : ", ") + ("\"" + row.key + "\": " + json);
  }
  std::string text = tested.job;
  text.replace(text.find('@'), 1, "{" + object + "}");

  commandTime();  // what counts as now begins before the job is made
  Read read;
  read.loaded = readWithoutProblems(text);
  if (read.loaded.job == nullptr) return read;
  read.object = tested.find(*read.loaded.job);
  if (read.object == nullptr) ADD_FAILURE() << "no object of the class is in " << text;
  return read;
}

// One attribute is written as given, the others are not.
Read readAlone(const ClassCase& tested, const AttributeRow& alone, const std::string& json) {
  return read(tested,
              [&](const AttributeRow& row) { return row.key == alone.key ? json : row.otherwise; });
}

class EveryAttribute : public testing::TestWithParam<ClassCase> {
  TimeZone zone_{kUtc};
};

INSTANTIATE_TEST_SUITE_P(Of, EveryAttribute, testing::ValuesIn(cases()),
                         [](const testing::TestParamInfo<ClassCase>& info) {
                           return info.param.name();
                         });

TEST_P(EveryAttribute, StandsInTheTablesHere) {
  const ClassCase& tested = GetParam();
  const ObjectClass* tables = classOf(*tested.family, tested.kind);
  ASSERT_NE(tables, nullptr) << "no such kind of " << tested.family->name;

  std::set<std::string> testedKeys;
  for (const AttributeRow& row : tested.rows) {
    EXPECT_TRUE(testedKeys.insert(row.key).second) << row.key << " has two rows here";
    EXPECT_NE(tables->find(row.key), nullptr) << row.key << " is no attribute of " << tables->name;
  }
  std::set<std::string> keys;
  for (const Attribute& attribute : tables->attributes) {
    EXPECT_TRUE(keys.insert(attribute.key).second) << attribute.key << " is described twice";
    EXPECT_EQ(testedKeys.count(attribute.key), 1u)
        << attribute.key << " of " << tables->name << " has no row here";
  }
}

TEST_P(EveryAttribute, HasAValueOfItsOwn) {
  const ClassCase& tested = GetParam();
  const Read plain = read(tested, [](const AttributeRow& row) { return row.otherwise; });
  ASSERT_NE(plain.object, nullptr);
  std::map<std::string, std::string> owners;
  for (const AttributeRow& row : tested.rows) {
    EXPECT_NE(row.get(plain.object), row.value) << row.key << " has that value by itself";
    // A flag has no second value to be told apart by: ChangesNothingElse does that.
    if (row.isFlag) continue;
    const auto [owner, isNew] = owners.emplace(row.value, row.key);
    EXPECT_TRUE(isNew) << row.key << " and " << owner->second << " have the same value";
  }
}

TEST_P(EveryAttribute, ReachesItsSetter) {
  const ClassCase& tested = GetParam();
  const Read all =
      read(tested, [](const AttributeRow& row) { return row.isAlias ? "" : row.json; });
  ASSERT_NE(all.object, nullptr);
  for (const AttributeRow& row : tested.rows) {
    if (row.isAlias) continue;
    EXPECT_EQ(row.get(all.object), row.value) << row.key;
  }
}

TEST_P(EveryAttribute, ChangesNothingElse) {
  const ClassCase& tested = GetParam();
  const Read plain = read(tested, [](const AttributeRow& row) { return row.otherwise; });
  ASSERT_NE(plain.object, nullptr);
  for (const AttributeRow& alone : tested.rows) {
    const Read set = readAlone(tested, alone, alone.json);
    ASSERT_NE(set.object, nullptr) << alone.key;
    for (const AttributeRow& row : tested.rows) {
      const auto change = alone.also.find(row.key);
      const std::string expected = row.key == alone.key         ? row.value
                                   : change != alone.also.end() ? change->second
                                                                : row.get(plain.object);
      EXPECT_EQ(row.get(set.object), expected) << row.key << ", when " << alone.key << " is set";
    }
  }
}

TEST_P(EveryAttribute, CanBeSwitchedOff) {
  const ClassCase& tested = GetParam();
  for (const AttributeRow& flag : tested.rows) {
    if (!flag.isFlag) continue;
    const Read off = readAlone(tested, flag, "false");
    ASSERT_NE(off.object, nullptr) << flag.key;
    EXPECT_EQ(flag.get(off.object), "0") << flag.key;
  }
}

// The setter of a number takes whatever the job file may hold.
TEST_P(EveryAttribute, TakesBothEndsOfItsRange) {
  const ClassCase& tested = GetParam();
  const ObjectClass* tables = classOf(*tested.family, tested.kind);
  ASSERT_NE(tables, nullptr);
  for (const AttributeRow& row : tested.rows) {
    const Attribute* attribute = tables->find(row.key);
    if (attribute == nullptr || attribute->shape != Shape::kNumber) continue;
    // An experiment changes the lowest bit of a number, and must stay within the range.
    EXPECT_EQ(attribute->least & 1, 0) << row.key;
    EXPECT_EQ(attribute->most & 1, 1) << row.key;
    for (const std::int64_t end : {attribute->least, attribute->most}) {
      const Read set = readAlone(tested, row, std::to_string(end));
      ASSERT_NE(set.object, nullptr) << row.key;
      EXPECT_EQ(row.get(set.object), std::to_string(end)) << row.key;
    }
  }
}

// All classes that can stand there in a job file, or in an object of them, have tables here.
void expectCases(const Family& family, std::set<const Family*>& seen) {
  if (!seen.insert(&family).second) return;
  for (const ObjectClass& own : family.classes) {
    int number = 0;
    for (const ClassCase& tested : cases()) {
      if (tested.family == &family && tested.kind == own.kind) ++number;
    }
    EXPECT_EQ(number, 1) << "tables for " << own.name << ", a " << family.name << " of kind \""
                         << own.kind << "\"";
    for (const Attribute& attribute : own.attributes) {
      if (attribute.family != nullptr) expectCases(attribute.family(), seen);
    }
  }
}

TEST(Attributes, EveryClassIsTested) {
  std::set<const Family*> seen;
  expectCases(jobs(), seen);
  for (const ClassCase& tested : cases()) {
    EXPECT_EQ(seen.count(tested.family), 1u) << "no job holds a " << tested.family->name;
  }
}

TEST(Attributes, TheInstanceIdReplacesTheJobNumber) {
  const LoadedJob loaded = readWithoutProblems(
      R"({"kind": "job", "jobName": "", "instanceID": 70003, "jobNumber": 70002})");
  ASSERT_NE(loaded.job, nullptr);
  EXPECT_EQ(loaded.job->getJobNumber(), 70003u);
  EXPECT_EQ(loaded.job->getInstanceID(), 70003u);
}

// The machine that is restored to is named by the same word as the machine that was backed up.
TEST(Attributes, ActualNodeTypeTakesTheKindsOfMachines) {
  for (const ObjectClass& machine : machines().classes) {
    const std::string kind = "\"" + machine.kind + "\"";
    const LoadedJob backup = readWithoutProblems(
        R"({"kind": "backup", "jobName": "", "sourceNodes": [{"nodeName": "", "kind": )" + kind +
        "}]}");
    const LoadedJob restore = readWithoutProblems(
        R"({"kind": "restore", "jobName": "", "destNodes": [{"kind": "machine", "nodeName": "",
            "actualNodeType": )" +
        kind + "}]}");
    ASSERT_TRUE(backup.job && restore.job) << kind;
    BKQDiskNode* from = machineOf(*backup.job);
    BKQRestoreNode* to = restoreNodeOf(*restore.job);
    ASSERT_TRUE(from != nullptr && to != nullptr) << kind;
    EXPECT_EQ(to->getActualNodeType(), from->nodeType()) << kind;
  }
  const Attribute* attribute = classOf(restoreNodes(), "machine")->find("actualNodeType");
  ASSERT_NE(attribute, nullptr);
  EXPECT_EQ(attribute->words->size(), machines().classes.size());
}

TEST(Attributes, AFilterIncludesOrExcludes) {
  const struct {
    const char* word;
    BKQFilter::BKQInclExclType kind;
  } rows[] = {{"include", BKQFilter::Include}, {"exclude", BKQFilter::Exclude}};
  for (const auto& row : rows) {
    const LoadedJob loaded =
        readWithoutProblems(std::string(R"({"kind": "backup", "jobName": "", "filters": [)") +
                            R"({"kind": "file", "inclExcl": ")" + row.word + R"("}]})");
    ASSERT_NE(loaded.job, nullptr);
    BKQFilter* filter = filterOf(*loaded.job);
    ASSERT_NE(filter, nullptr);
    EXPECT_EQ(filter->getInclExcl(), row.kind) << row.word;
  }
}

// Advice on each of so many would take longer than anybody reads.
TEST(Attributes, AfterAThousandMistakesAdviceIsLeftOut) {
  std::string text = R"({"kind": "job", "jobName": "")";
  for (int i = 0; i < 1002; ++i) text += R"(, "unknown": 0)";
  text += R"(, "onwer": 0, "jobname": 0})";
  Problems problems;
  readJob(text, problems);
  const std::vector<Problem> all = problems.sorted();
  ASSERT_EQ(all.size(), 1004u);
  EXPECT_EQ(all[0].message,
            R"("unknown" is no attribute of this job; "bkoq attributes job" lists them)");
  EXPECT_EQ(all[1002].message, R"("onwer" is no attribute of this job)");
  EXPECT_EQ(all[1003].message, R"("jobname" is no attribute of this job)");
}

TEST(Attributes, ATextAsJsonIsReadBackAsIt) {
  const struct {
    std::string text;
    const char* json;
  } rows[] = {
      {"", R"("")"},
      {R"(say "C:\data")", R"("say \"C:\\data\"")"},
      {std::string("\0\n\x10\x1F !", 6), R"("\u0000\u000A\u0010\u001F !")"},
      {"09:? @~\x7F\xC2\x80", "\"09:? @~\\u007F\xC2\x80\""},
  };
  for (const auto& row : rows) EXPECT_EQ(jsonText(row.text), row.json);
}

TEST(Attributes, ATimeAsJsonIsAMomentOrNow) {
  const std::int64_t now = commandMoment() + kSecondsBefore1970;
  const struct {
    std::int64_t seconds;  // since 1901
    std::string json;
  } rows[] = {
      {kSecondsBefore1970 - 1, R"("1969-12-31T23:59:59Z")"},
      {kSecondsBefore1970 + 1078174800, R"("2004-03-01T21:00:00Z")"},
      {now - 1, "\"" + momentText(commandMoment() - 1) + "\""},
      {now, R"("now")"},
      {now + 1, R"("now")"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(jsonTime(RWTime(static_cast<unsigned long>(row.seconds))), row.json);
  }
}

}  // namespace
}  // namespace bkoq::tool
