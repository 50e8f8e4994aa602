#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "kit/test_trees.h"

namespace bkoq::test {
namespace {

CurrentTree jobWithNodes(const std::vector<std::string>& names) {
  CurrentTree job = currentJob(1);
  BKNODE* nodes = give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes,
                               static_cast<std::uint32_t>(names.size()));
  for (std::size_t i = 0; i < names.size(); ++i) {
    nodes[i].usNodeType = 9;
    nodes[i].pszNodeName = text(names[i].c_str());
    nodes[i].ulNodeOptions = static_cast<std::uint32_t>(names[i].size());
  }
  return job;
}

std::string differences(const CurrentTree& first, const CurrentTree& second,
                        const BkoqPaths& paths = {}) {
  std::string text;
  bkoqPrintChanges(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_CURRENT, nullptr,
                   &paths, appendToString, &text, nullptr);
  return text;
}
std::string differences(const std::vector<std::string>& first,
                        const std::vector<std::string>& second) {
  return differences(jobWithNodes(first), jobWithNodes(second));
}

TEST(Alignment, TellsANodeInFrontInOneLine) {
  EXPECT_EQ(differences({"a", "b", "c"}, {"new", "a", "b", "c"}),
            "pSourceNodes[0] (BKNODE+0): absent -> BKNODE \"new\"\n");
  EXPECT_EQ(differences({"old", "a", "b", "c"}, {"a", "b", "c"}),
            "pSourceNodes[0] (BKNODE+0): BKNODE \"old\" -> absent\n");
  EXPECT_EQ(differences({"a", "b", "c"}, {"a", "new", "b", "c"}),
            "pSourceNodes[1] (BKNODE+100): absent -> BKNODE \"new\"\n");
  EXPECT_EQ(differences({"a", "b"}, {"a", "b", "new", "newer"}),
            "pSourceNodes[2] (BKNODE+200): absent -> BKNODE \"new\"\n"
            "pSourceNodes[3] (BKNODE+300): absent -> BKNODE \"newer\"\n");
}

TEST(Alignment, SaysWhatHasMoved) {
  EXPECT_EQ(differences({"a", "b", "c", "d"}, {"d", "a", "b", "c"}),
            "pSourceNodes[3] (BKNODE+300): BKNODE \"d\" moved to pSourceNodes[0]\n");
  EXPECT_EQ(differences({"a", "b", "c", "d"}, {"b", "c", "d", "a"}),
            "pSourceNodes[0] (BKNODE+0): BKNODE \"a\" moved to pSourceNodes[3]\n");
}

TEST(Alignment, TellsAChangeOfWhatHasMovedWithBothPaths) {
  const CurrentTree first = jobWithNodes({"a", "b", "c"});
  const CurrentTree second = jobWithNodes({"c", "a", "b"});
  second->pSourceNodes[0].usNodeOS = 6;
  second->pSourceNodes[1].usNodeOS = 8;
  EXPECT_EQ(differences(first, second),
            "pSourceNodes[2] (BKNODE+200): BKNODE \"c\" moved to pSourceNodes[0]\n"
            "pSourceNodes[2].usNodeOS / pSourceNodes[0].usNodeOS (BKNODE+2): 0 -> 6 (UNIX)\n"
            "pSourceNodes[0].usNodeOS / pSourceNodes[1].usNodeOS (BKNODE+2): 0 -> 8 (Windows "
            "NT)\n");
}

TEST(Alignment, PairsWhatWasRenamedByItsPlace) {
  EXPECT_EQ(differences({"a", "old", "c"}, {"a", "new", "c"}),
            "pSourceNodes[1].pszNodeName (BKNODE+8): \"old\" -> \"new\"\n");
  EXPECT_EQ(differences({"a", "old", "c"}, {"new", "c", "a"}),
            "pSourceNodes[0] (BKNODE+0): absent -> BKNODE \"new\"\n"
            "pSourceNodes[2] (BKNODE+200): BKNODE \"c\" moved to pSourceNodes[1]\n"
            "pSourceNodes[1] (BKNODE+100): BKNODE \"old\" -> absent\n");
}

TEST(Alignment, KeepsTheOrderOfElementsWithTheSameName) {
  EXPECT_EQ(differences({"a", "a", "b"}, {"a", "a", "a", "b"}),
            "pSourceNodes[2] (BKNODE+200): absent -> BKNODE \"a\"\n");
}

TEST(Alignment, TellsFiltersByAllOfThem) {
  const auto jobWithFilters = [](const std::vector<const char*>& patterns) {
    CurrentTree job = jobWithNodes({"a"});
    BKNODE& node = job->pSourceNodes[0];
    auto* filters = give<BKFILTER_FILE>(node.ulFilterCount, node.pFilters,
                                        static_cast<std::uint32_t>(patterns.size()));
    for (std::size_t i = 0; i < patterns.size(); ++i) makePatternFilter(filters[i], 2, patterns[i]);
    return job;
  };
  EXPECT_EQ(differences(jobWithFilters({"*.a", "*.b"}), jobWithFilters({"*.x", "*.a", "*.b"})),
            "pSourceNodes[0].pFilters[0] (BKFILTER_FILE+0): absent -> BKFILTER_FILE\n");
  EXPECT_EQ(differences(jobWithFilters({"*.a", "*.b"}), jobWithFilters({"*.a", "*.c"})),
            "pSourceNodes[0].pFilters[1].pszFilter (BKFILTER_FILE+8): \"*.b\" -> \"*.c\"\n");
}

TEST(Alignment, GivesTheSameEventsToPrograms) {
  const CurrentTree first = jobWithNodes({"gone", "a", "b", "c"});
  const CurrentTree second = jobWithNodes({"c", "a", "b", "new"});
  std::string events;
  const BkoqChangeVisitor visitor = [](const BkoqDifference* difference, BkoqChange change,
                                       void* user) {
    *static_cast<std::string*>(user) += std::to_string(change) + " " + difference->path + " " +
                                        difference->otherPath + " " + difference->oldValue + " " +
                                        difference->newValue + "\n";
    return 0;
  };
  std::uint32_t count = 0;
  EXPECT_EQ(bkoqCompareChanges(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_CURRENT,
                               0, nullptr, visitor, &events, &count),
            BKOQ_OK);
  EXPECT_EQ(count, 3u);
  EXPECT_EQ(events,
            "3 pSourceNodes[3] pSourceNodes[0] BKNODE \"c\" BKNODE \"c\"\n"
            "2 pSourceNodes[0] pSourceNodes[0] BKNODE \"gone\" absent\n"
            "1 pSourceNodes[3] pSourceNodes[3] absent BKNODE \"new\"\n");
}

TEST(Alignment, ShowsWhatIsAskedForOnly) {
  const CurrentTree first = jobWithNodes({"a", "b"});
  const CurrentTree second = jobWithNodes({"a", "b", "new"});
  second->usJobStatus = 3;
  second->pSourceNodes[0].usNodeOS = 6;
  second->stFax.pszUserName = text("user");
  const auto shown = [&](const std::vector<const char*>& only,
                         const std::vector<const char*>& ignored) {
    std::vector<const char*> onlyList = only;
    std::vector<const char*> ignoredList = ignored;
    onlyList.push_back(nullptr);
    ignoredList.push_back(nullptr);
    BkoqPaths wanted{};
    wanted.only = only.empty() ? nullptr : onlyList.data();
    wanted.ignored = ignoredList.data();
    const std::string text = differences(first, second, wanted);
    std::uint32_t count = 0;
    bkoqCompareChanges(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_CURRENT, 0,
                       &wanted, nullptr, nullptr, &count);
    EXPECT_EQ(count, static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n')));
    std::string paths;
    for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
      paths += text.substr(at, text.find(' ', at) - at) + " ";
    }
    return paths;
  };
  EXPECT_EQ(shown({}, {}),
            "usJobStatus pSourceNodes[0].usNodeOS pSourceNodes[2] stFax.pszUserName ");
  EXPECT_EQ(shown({"pSourceNodes[*].usNodeOS"}, {}), "pSourceNodes[0].usNodeOS pSourceNodes[2] ");
  EXPECT_EQ(shown({"stFax", "usJobStatus"}, {}), "usJobStatus stFax.pszUserName ");
  EXPECT_EQ(shown({}, {"pSourceNodes", "**.pszUserName"}), "usJobStatus ");
  EXPECT_EQ(shown({"pSourceNodes"}, {"pSourceNodes[2]"}), "pSourceNodes[0].usNodeOS ");
}

// With arrays too long to keep a note of every element, places count.
TEST(Alignment, TakesArraysOfAnyLength) {
  const auto longJob = [](std::uint32_t first, std::uint32_t count) {
    CurrentTree job = currentJob(1);
    BKNODE* nodes = give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
    auto* filters = give<BKFILTER_FILE>(nodes->ulFilterCount, nodes->pFilters, count);
    for (std::uint32_t i = 0; i < count; ++i) {
      filters[i].usFilterType = 5;
      filters[i].ulAttributes = first + i;
    }
    return job;
  };
  const auto count = [](const CurrentTree& first, const CurrentTree& second) {
    std::uint32_t found = 0;
    bkoqCompare(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_CURRENT, 0, nullptr,
                nullptr, &found);
    return found;
  };
  EXPECT_EQ(count(longJob(1, 500000), longJob(0, 500001)), 1u);
  EXPECT_EQ(count(longJob(0, 100000), longJob(5, 100000)), 10u);
  EXPECT_EQ(count(longJob(0, 500000), longJob(1000000, 500001)), 500001u);
}

}  // namespace
}  // namespace bkoq::test
