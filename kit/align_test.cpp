#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
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

// Every kind of element that has a name, and which field it is.
TEST(Alignment, TellsElementsByTheirNames) {
  using Names = std::vector<const char*>;
  const auto disks = [](const Names& names) {
    CurrentTree job = jobWithNodes({"a"});
    BKNODE& node = job->pSourceNodes[0];
    const auto count = static_cast<std::uint32_t>(names.size());
    auto* elements = give<BKDDISK>(node.ulMediaCount, node.pMedia, count);
    for (std::uint32_t i = 0; i < count; ++i) {
      if (names[i] != nullptr) elements[i].pszDiskName = text(names[i]);
    }
    return job;
  };
  const auto items = [&](const Names& names) {
    CurrentTree job = disks({"C:"});
    auto& disk = *static_cast<BKDDISK*>(job->pSourceNodes[0].pMedia);
    const auto count = static_cast<std::uint32_t>(names.size());
    auto* elements = give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, count);
    for (std::uint32_t i = 0; i < count; ++i) {
      if (names[i] != nullptr) elements[i].pszPath = text(names[i]);
    }
    return job;
  };
  const auto tapes = [](const Names& names) {
    CurrentTree job = currentJob(29);
    BKNODE& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
    const auto count = static_cast<std::uint32_t>(names.size());
    auto* elements = give<BKDTAPE>(node.ulMediaCount, node.pMedia, count);
    for (std::uint32_t i = 0; i < count; ++i) {
      if (names[i] != nullptr) elements[i].pszTapeName = text(names[i]);
    }
    return job;
  };
  const auto tapeItems = [&](const Names& names) {
    CurrentTree job = tapes({"T"});
    auto& tape = *static_cast<BKDTAPE*>(job->pSourceNodes[0].pMedia);
    const auto count = static_cast<std::uint32_t>(names.size());
    auto* elements = give<BKTAPEITEM>(tape.ulTapeItemCount, tape.pTapeItems, count);
    for (std::uint32_t i = 0; i < count; ++i) {
      if (names[i] != nullptr) elements[i].pszFileOrDir = text(names[i]);
    }
    return job;
  };
  const struct {
    std::function<CurrentTree(const Names&)> jobWith;
    std::string array;
    std::string record;
    std::size_t size;
  } rows[] = {
      {disks, "pSourceNodes[0].pMedia", "BKDDISK", sizeof(BKDDISK)},
      {items, "pSourceNodes[0].pMedia[0].pDiskItems", "BKDISKITEM", sizeof(BKDISKITEM)},
      {tapes, "pSourceNodes[0].pMedia", "BKDTAPE", sizeof(BKDTAPE)},
      {tapeItems, "pSourceNodes[0].pMedia[0].pTapeItems", "BKTAPEITEM", sizeof(BKTAPEITEM)},
  };
  for (const auto& row : rows) {
    const std::string first = row.array + "[0] (" + row.record + "+0): ";
    EXPECT_EQ(differences(row.jobWith({"a", "b"}), row.jobWith({"new", "a", "b"})),
              first + "absent -> " + row.record + " \"new\"\n");
    // What has no name is like another without one, and like nothing else.
    EXPECT_EQ(differences(row.jobWith({nullptr, "b"}), row.jobWith({"new", nullptr, "b"})),
              first + "absent -> " + row.record + " \"new\"\n");
    EXPECT_EQ(differences(row.jobWith({"old", nullptr, "b"}), row.jobWith({nullptr, "b"})),
              first + row.record + " \"old\" -> absent\n");
    EXPECT_EQ(differences(row.jobWith({nullptr}), row.jobWith({nullptr, "b"})),
              row.array + "[1] (" + row.record + "+" + std::to_string(row.size) + "): absent -> " +
                  row.record + " \"b\"\n");
  }
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

// At the start of an array, between its start and its end, at its end, and after it.
TEST(Alignment, StopsWhenTheProgramSaysSo) {
  const CurrentTree first = jobWithNodes({"start", "old", "end"});
  const CurrentTree second = jobWithNodes({"start", "new", "end"});
  second->pSourceNodes[0].usNodeOS = 6;
  second->pSourceNodes[2].usNodeOS = 6;
  second->pszOwner = text("operator");
  const std::vector<std::string> paths = {"pSourceNodes[0].usNodeOS", "pSourceNodes[1].pszNodeName",
                                          "pSourceNodes[2].usNodeOS", "pszOwner"};
  struct Told {
    std::vector<std::string> paths;
    std::size_t enough;
  };
  for (std::size_t enough = 1; enough <= paths.size(); ++enough) {
    Told told{{}, enough};
    const BkoqDifferenceVisitor visitor = [](const BkoqDifference* difference, void* user) {
      auto& all = *static_cast<Told*>(user);
      all.paths.emplace_back(difference->path);
      return all.paths.size() < all.enough ? 0 : 1;
    };
    EXPECT_EQ(bkoqCompare(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_CURRENT, 0,
                          visitor, &told, nullptr),
              BKOQ_STOPPED);
    EXPECT_EQ(told.paths, std::vector<std::string>(paths.begin(), paths.begin() + enough));
  }
}

using Names = std::vector<std::string>;

// All rows of the names a, b and c that are up to so long.
std::vector<Names> rowsUpTo(std::size_t length) {
  std::vector<Names> rows{{}};
  for (std::size_t at = 0; at < rows.size() && rows[at].size() < length; ++at) {
    for (const char* name : {"a", "b", "c"}) {
      rows.push_back(rows[at]);
      rows.back().emplace_back(name);
    }
  }
  rows.erase(rows.begin());
  return rows;
}

// What a comparison should tell when the partners in `kept` are those that have not moved.
std::string told(const std::vector<int>& partner, std::size_t firstCount, unsigned int kept,
                 std::size_t start) {
  std::vector<bool> hasPartner(firstCount);
  for (const int place : partner) {
    if (place >= 0) hasPartner[place] = true;
  }
  std::string text;
  std::size_t i = 0;
  const auto tell = [&](const char* what, std::size_t first, std::size_t second) {
    text += what + std::to_string(start + first) + ">" + std::to_string(start + second) + " ";
  };
  const auto tellGone = [&](std::size_t end) {
    for (; i < end; ++i) {
      if (!hasPartner[i]) tell("gone ", i, i);
    }
  };
  for (std::size_t j = 0; j < partner.size(); ++j) {
    if (partner[j] >= 0 && (kept >> j & 1U) != 0) {
      tellGone(partner[j]);
      i = partner[j] + 1;
    } else if (partner[j] >= 0) {
      tell("moved ", partner[j], j);
    } else {
      std::size_t end = firstCount;
      for (std::size_t next = partner.size(); next-- > j;) {
        if ((kept >> next & 1U) != 0) end = partner[next];
      }
      while (i < end && hasPartner[i]) ++i;
      if (i < end) {
        tell("renamed ", i, j);
        ++i;
      } else {
        tell("new ", j, j);
      }
    }
  }
  tellGone(firstCount);
  return text;
}

// All that a comparison may tell: of several choices of what has not moved, any of the largest.
std::vector<std::string> expectedOf(Names first, Names second) {
  std::size_t start = 0;
  while (!first.empty() && !second.empty() && first.front() == second.front()) {
    first.erase(first.begin());
    second.erase(second.begin());
    ++start;
  }
  while (!first.empty() && !second.empty() && first.back() == second.back()) {
    first.pop_back();
    second.pop_back();
  }
  std::vector<int> partner(second.size(), -1);
  std::vector<bool> isTaken(first.size());
  for (std::size_t j = 0; j < second.size(); ++j) {
    for (std::size_t i = 0; i < first.size() && partner[j] < 0; ++i) {
      if (isTaken[i] || first[i] != second[j]) continue;
      partner[j] = static_cast<int>(i);
      isTaken[i] = true;
    }
  }
  std::vector<std::string> found;
  int most = 0;
  for (unsigned int kept = 0; kept < 1U << second.size(); ++kept) {
    int last = -1;
    int count = 0;
    for (std::size_t j = 0; j < second.size() && count >= 0; ++j) {
      if ((kept >> j & 1U) == 0) continue;
      count = partner[j] > last ? count + 1 : -1;
      last = partner[j];
    }
    if (count < most) continue;
    if (count > most) found.clear();
    most = count;
    found.push_back(told(partner, first.size(), kept, start));
  }
  return found;
}

// Where a path is in the array, "pSourceNodes[7].pszNodeName".
std::string placeOf(const char* path) {
  const std::string text(path);
  const std::size_t start = text.find('[') + 1;
  return text.substr(start, text.find(']') - start);
}

std::string toldOf(const Names& first, const Names& second) {
  std::string events;
  const BkoqChangeVisitor visitor = [](const BkoqDifference* difference, BkoqChange change,
                                       void* user) {
    // The counts of the nodes are told as well.
    if (std::string(difference->path).find('[') == std::string::npos) return 0;
    const char* const words[] = {"renamed ", "new ", "gone ", "moved "};
    *static_cast<std::string*>(user) +=
        words[change] + placeOf(difference->path) + ">" + placeOf(difference->otherPath) + " ";
    return 0;
  };
  EXPECT_EQ(
      bkoqCompareChanges(jobWithNodes(first).get(), BKOQ_LAYOUT_CURRENT, jobWithNodes(second).get(),
                         BKOQ_LAYOUT_CURRENT, 0, nullptr, visitor, &events, nullptr),
      BKOQ_OK);
  return events;
}

TEST(Alignment, TellsTheLeastOfAllShortRows) {
  unsigned int tried = 0;
  for (const Names& first : rowsUpTo(3)) {
    for (const Names& second : rowsUpTo(4)) {
      const std::vector<std::string> expected = expectedOf(first, second);
      const std::string found = toldOf(first, second);
      ASSERT_NE(std::find(expected.begin(), expected.end(), found), expected.end())
          << testing::PrintToString(first) << " and " << testing::PrintToString(second) << ": \""
          << found << "\" and none of " << testing::PrintToString(expected);
      ++tried;
    }
  }
  EXPECT_EQ(tried, 39u * 120u);
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
  // So many that differ are too many, on either side.
  EXPECT_EQ(count(longJob(0, 400000), longJob(1, 400000)), 2u);
  EXPECT_EQ(count(longJob(0, 400001), longJob(1, 400001)), 400001u);
  EXPECT_EQ(count(longJob(100, 10), longJob(0, 400000)), 399990u);
  EXPECT_EQ(count(longJob(100, 10), longJob(0, 400001)), 400001u);
  EXPECT_EQ(count(longJob(0, 400000), longJob(100, 10)), 399990u);
  EXPECT_EQ(count(longJob(0, 400001), longJob(100, 10)), 400001u);
}

// Places count then also for elements of the same name at both ends.
TEST(Alignment, TakesLongArraysByTheirPlaces) {
  const auto longJob = [](std::uint32_t options, const char* between, std::uint32_t count) {
    CurrentTree job = jobWithNodes({"a"});
    auto* disks = give<BKDDISK>(job->pSourceNodes->ulMediaCount, job->pSourceNodes->pMedia, 1);
    auto* items = give<BKDISKITEM>(disks->ulDiskItemCount, disks->pDiskItems, count);
    for (std::uint32_t i = 0; i < count; ++i) {
      items[i].pszPath = text(i == 0 || i == count - 1 ? "end" : between);
    }
    items[0].ulOptions = items[count - 1].ulOptions = options;
    return job;
  };
  const auto told = [](const CurrentTree& first, const CurrentTree& second) {
    std::vector<std::uint32_t> found(4);  // changed, added, removed, moved
    const auto count = [](const BkoqDifference*, BkoqChange change, void* counts) {
      ++(*static_cast<std::vector<std::uint32_t>*>(counts))[change];
      return 0;
    };
    bkoqCompareChanges(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_CURRENT, 0,
                       nullptr, count, &found, nullptr);
    return found;
  };
  using Counts = std::vector<std::uint32_t>;
  EXPECT_EQ(told(longJob(0, "x", 400003), longJob(1, "y", 400003)), (Counts{400003, 0, 0, 0}));
  EXPECT_EQ(told(longJob(0, "x", 400003), longJob(1, "y", 400004)), (Counts{400003, 1, 0, 0}));
  EXPECT_EQ(told(longJob(0, "x", 400004), longJob(1, "y", 400003)), (Counts{400004, 0, 1, 0}));
}

}  // namespace
}  // namespace bkoq::test
