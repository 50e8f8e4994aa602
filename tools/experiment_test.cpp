// What experiments find out about the attributes of job files.

#include "tools/experiment.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "tools/attributes.h"
#include "tools/reference.h"
#include "tools/starter.h"

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

}  // namespace
}  // namespace bkoq::tool
