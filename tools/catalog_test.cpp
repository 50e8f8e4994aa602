// The tables of the job file against the catalogue of the tests: a class, a kind of job or an
// attribute that a job file cannot give is named here, with the file where it is missing.

#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <map>
#include <string>
#include <type_traits>

#include "tests/catalog/attributes.h"
#include "tests/catalog/classes.h"
#include "tests/catalog/kinds.h"
#include "tools/attributes.h"

namespace bkoq::tool {
namespace {

// "tools/job_attributes.cpp" for a class of model/job.cpp.
std::string tableOf(const char* className) {
  static const std::map<std::string, std::string> kTables = {
      {"model/job.cpp", "job"},        {"model/node.cpp", "node"},
      {"model/disk.cpp", "disk"},      {"model/tape.cpp", "tape"},
      {"model/filter.cpp", "filter"},  {"model/groom.cpp", "filter"},
      {"model/sched.cpp", "schedule"}, {"model/cruise.cpp", "schedule"}};
  const test::ClassLine* line = test::findClass(className);
  if (std::strcmp(className, "BKQTapeXtension") == 0) return "tools/tape_attributes.cpp";
  const auto found = kTables.find(line->model);
  return "tools/" + (found == kTables.end() ? "notification" : found->second) + "_attributes.cpp";
}

const ObjectClass* findObjectClass(const std::string& name) {
  for (const Family* family : families()) {
    for (const ObjectClass& each : family->classes) {
      if (each.name == name) return &each;
    }
  }
  return nullptr;
}

void expectKey(const ObjectClass& table, const std::string& setter, const char* key) {
  EXPECT_NE(table.find(key), nullptr)
      << "\"" << key << "\", which gives " << setter << ", is not among the attributes of "
      << table.name << " in " << tableOf(table.name.c_str());
}

TEST(JobFile, GivesEveryAttribute) {
  test::eachConcreteClass([](auto type) {
    using Object = typename decltype(type)::Of;
    const char* name = test::nameOfClass<Object>();
    const ObjectClass* table = findObjectClass(name);
    ASSERT_NE(table, nullptr) << name << " is not in " << tableOf(name);
    test::eachAttribute<Object>(
        [&](const test::AttributeLine& line, auto*, auto, auto, const auto&) {
          // Where a class hides an attribute, its base's has another key.
          const bool isHidden =
              std::is_same_v<Object, BKQDBRestoreNode> && line.name() == "BKQNode::setOptions";
          expectKey(*table, line.name(), isHidden ? "nodeOptions" : line.key);
        });
#define BKOQ_EXPECT(class_, setter, key) \
  if (std::is_base_of_v<class_, Object>) expectKey(*table, #class_ "::" #setter, key);
    BKOQ_OTHER_SETTERS(BKOQ_EXPECT)
#undef BKOQ_EXPECT
  });
}

TEST(JobFile, HasEveryKindOfJob) {
  for (const test::JobKindLine& line : test::kJobKinds) {
    const ObjectClass* table = findObjectClass(line.className);
    ASSERT_NE(table, nullptr) << line.className << " is not in jobs(), tools/job_attributes.cpp";
    EXPECT_EQ(table->kind, line.word) << line.className << " in tools/job_attributes.cpp";
  }
  EXPECT_EQ(jobs().classes.size(), std::size(test::kJobKinds));
}

}  // namespace
}  // namespace bkoq::tool
