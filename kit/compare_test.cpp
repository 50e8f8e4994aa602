#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>

#include "kit/test_trees.h"

namespace bkoq::test {
namespace {

template <class First, class Second>
std::string differences(const TreeOf<First>& first, const TreeOf<Second>& second,
                        const BkoqPrintOptions& options = {}) {
  std::string text;
  std::uint32_t count = 0;
  EXPECT_EQ(bkoqPrintDifferences(first.get(), LayoutOf<First>::kValue, second.get(),
                                 LayoutOf<Second>::kValue, &options, appendToString, &text, &count),
            BKOQ_OK);
  if (options.format == BKOQ_FORMAT_TEXT) {
    EXPECT_EQ(count, static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n')));
  }
  return text;
}

TEST(Compare, FindsNothingBetweenEqualTrees) {
  EXPECT_EQ(differences(currentBackup(), currentBackup()), "");
  EXPECT_EQ(differences(previousBackup(), previousBackup()), "");
  EXPECT_EQ(differences(currentJob(1), previousJob(1)), "");
}

// One change in a tree, and the line that tells it.
struct Case {
  const char* what;
  void (*change)(BKQJDATATRANSFER& job);
  const char* line;
};

BKDDISK& diskOf(BKQJDATATRANSFER& job) {
  return *static_cast<BKDDISK*>(job.pSourceNodes[0].pMedia);
}
BKDTAPE& tapeOf(BKQJDATATRANSFER& job) { return *static_cast<BKDTAPE*>(job.pDestNodes[0].pMedia); }

const Case kCases[] = {
    {"number", [](BKQJDATATRANSFER& job) { job.usJobType = 21; },
     "usJobType (BKQJDATATRANSFER+4): 20 (rotation backup) -> 21 (rotation makeup)\n"},
    {"flags", [](BKQJDATATRANSFER& job) { job.pSourceNodes[1].ulNodeOptions = 0x40; },
     "pSourceNodes[1].ulNodeOptions (BKNODE+56): 0 -> 0x00000040 (64: no estimate)\n"},
    {"time", [](BKQJDATATRANSFER& job) { job.stSchedule.lExecTime = 1078160400; },
     "stSchedule.lExecTime (BKSCHEDINFO+4): -1 (1969-12-31 23:59:59) -> 1078160400 "
     "(2004-03-01 17:00:00)\n"},
    {"reserved byte", [](BKQJDATATRANSFER& job) { job.pDestNodes[0].abReserved88[11] = 1; },
     "pDestNodes[0].abReserved88 (BKNODE+88): zero -> 00 00 00 00 00 00 00 00 00 00 00 01\n"},
    {"first reserved byte", [](BKQJDATATRANSFER& job) { job.pDestNodes[0].abReserved88[0] = 1; },
     "pDestNodes[0].abReserved88 (BKNODE+88): zero -> 01 00 00 00 00 00 00 00 00 00 00 00\n"},
    {"unused byte of a filter",
     [](BKQJDATATRANSFER& job) { job.pSourceNodes[0].pFilters[0].usTimeUnitType = 1; },
     "pSourceNodes[0].pFilters[0].abUnused14 (BKFILTER_FILE+14): zero -> 00 00 01 00\n"},
    {"text", [](BKQJDATATRANSFER& job) { diskOf(job).pDiskItems[0].pszPath[1] = 'H'; },
     "pSourceNodes[0].pMedia[0].pDiskItems[0].pszPath (BKDISKITEM+0): \"/home/ledgers\" -> "
     "\"/Home/ledgers\"\n"},
    {"text that is gone",
     [](BKQJDATATRANSFER& job) {
       std::free(job.pszOwner);
       job.pszOwner = nullptr;
     },
     "pszOwner (BKQJDATATRANSFER+28): \"operator\" -> null\n"},
    {"second text", [](BKQJDATATRANSFER& job) { job.pSourceNodes[0].pszNodeName[7] = 'E'; },
     "pSourceNodes[0].pszNodeName (BKNODE+8): \"ledger\", \"extra\" -> \"ledger\", \"Extra\"\n"},
    {"secret", [](BKQJDATATRANSFER& job) { diskOf(job).pszDiskPW2[4] = 'X'; },
     "pSourceNodes[0].pMedia[0].pszDiskPW2 (BKDDISK+36): \"ops\", ******** -> \"ops\", ******** "
     "(masked)\n"},
    {"secret that is new",
     [](BKQJDATATRANSFER& job) { job.pSourceNodes[1].pszPassword = text("n3w"); },
     "pSourceNodes[1].pszPassword (BKNODE+20): null -> ******** (masked)\n"},
    {"file of a list", [](BKQJDATATRANSFER& job) { diskOf(job).pDiskItems[0].pFileList[8] = '3'; },
     "pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList (BKDISKITEM+8): \"2003.db\", \"2004.db\" "
     "-> \"2003.db\", \"3004.db\"\n"},
    {"kind of a filter",
     [](BKQJDATATRANSFER& job) { job.pSourceNodes[0].pFilters[3].usTimeRange = 3; },
     "pSourceNodes[0].pFilters[3].usTimeRange (BKFILTER_FILE+6): 2 (between) -> 3 (within)\n"},
    {"kind of a filter whose bytes mean something else then",
     [](BKQJDATATRANSFER& job) {
       job.pSourceNodes[0].pFilters[4].usTimeRange = 1;
       job.pSourceNodes[0].pFilters[4].lTime = 1078160400;
     },
     "pSourceNodes[0].pFilters[4].usTimeRange (BKFILTER_FILE+6): 3 (within) -> 1 (after)\n"
     "pSourceNodes[0].pFilters[4].ulTimeUnits / lTime (BKFILTER_FILE+8): 7 -> 1078160400 "
     "(2004-03-01 17:00:00)\n"
     "pSourceNodes[0].pFilters[4].abUnused12 (BKFILTER_FILE+12): zero -> 00 00 00 00 02 00\n"
     "pSourceNodes[0].pFilters[4].usTimeUnitType (BKFILTER_FILE+16): 2 -> absent\n"},
    {"kind of a filter that has no use for the bytes of a number",
     [](BKQJDATATRANSFER& job) { job.pSourceNodes[0].pFilters[3].usTimeRange = 1; },
     "pSourceNodes[0].pFilters[3].usTimeRange (BKFILTER_FILE+6): 2 (between) -> 1 (after)\n"},
    {"field that the filter had no use for before",
     [](BKQJDATATRANSFER& job) { job.pSourceNodes[0].pFilters[2].lEndTime = 258; },
     "pSourceNodes[0].pFilters[2].abUnused12 (BKFILTER_FILE+12): zero -> 02 01 00 00 00 00\n"},
    {"record behind a pointer",
     [](BKQJDATATRANSFER& job) { tapeOf(job).pTapeX->lSessionEndTime = 0; },
     "pDestNodes[0].pMedia[0].pTapeX.lSessionEndTime (BKDTAPEX+8): 1000 "
     "(1970-01-01 00:16:40 UTC) -> 0\n"},
    {"element more",
     [](BKQJDATATRANSFER& job) {
       auto& disk = diskOf(job);
       disk.ulDiskItemCount = 2;
       disk.pDiskItems =
           static_cast<BKDISKITEM*>(std::realloc(disk.pDiskItems, 2 * sizeof(BKDISKITEM)));
       std::memset(disk.pDiskItems + 1, 0, sizeof(BKDISKITEM));
     },
     "pSourceNodes[0].pMedia[0].pDiskItems[1] (BKDISKITEM+32): absent -> BKDISKITEM\n"},
    {"array that is new",
     [](BKQJDATATRANSFER& job) {
       give<BKFILTER_FILE>(tapeOf(job).ulFilterCount, tapeOf(job).pFilters, 1);
     },
     "pDestNodes[0].pMedia[0].ulFilterCount (BKDTAPE+32): 0 -> 1\n"
     "pDestNodes[0].pMedia[0].pFilters (BKDTAPE+36): null -> 1 BKFILTER_FILE\n"},
    {"count over a null array", [](BKQJDATATRANSFER& job) { tapeOf(job).ulFilterCount = 2; },
     "pDestNodes[0].pMedia[0].ulFilterCount (BKDTAPE+32): 0 -> 2\n"},
};

TEST(Compare, TellsEachDifferenceByItsPath) {
  for (const Case& each : kCases) {
    SCOPED_TRACE(each.what);
    const CurrentTree first = currentBackup();
    const CurrentTree second = currentBackup();
    each.change(*second);
    EXPECT_EQ(differences(first, second), each.line);
  }
}

TEST(Compare, ShowsSecretsWhenAskedFor) {
  const CurrentTree first = currentBackup();
  const CurrentTree second = currentBackup();
  diskOf(*second).pszDiskPW2[4] = 'X';
  BkoqPrintOptions options{};
  options.showSecrets = 1;
  EXPECT_EQ(differences(first, second, options),
            "pSourceNodes[0].pMedia[0].pszDiskPW2 (BKDDISK+36): \"ops\", \"0ps\" -> \"ops\", "
            "\"Xps\"\n");
}

TEST(Compare, TellsWhatTheLayoutsDifferIn) {
  EXPECT_EQ(differences(currentBackup(), previousBackup()), std::string(R"(
pSourceNodes[0].pszNodeDomain / abReserved84 (BKNODE+84): "accounting" -> zero
pDestNodes[0].pMedia[0].usTapeID / ulTapeID (BKDTAPE+8): 9029 -> 74565
pDestNodes[0].pMedia[0].ulOptions (BKDTAPE+52): 0x08000000 (134217728: extension) -> 0
pDestNodes[0].pMedia[0].abReserved64 / lSessionEndTime (BKDTAPE+64): zero -> 1000 (1970-01-01 00:16:40 UTC)
pDestNodes[0].pMedia[0].pTapeX / abReserved68 (BKDTAPE+68): 1 BKDTAPEX -> zero
stFax.pszReceiverName (BKFAXINFO+20): null -> "night shift"
stScheduleExt.abReserved12 / abJobTypes (BKROTATIONINFO+12): zero -> 1 2 0 0 0 0 0 0
)")
                                                                .substr(1));
}

TEST(Compare, TellsReservedBytesThatOnlyOneLayoutNames) {
  const CurrentTree current = currentJob(1);
  give<BKNODE>(current->ulNumSourceNodes, current->pSourceNodes, 1)->abReserved88[0] = 5;
  const PreviousTree previous = previousJob(1);
  give<BKNODE_OLD>(previous->ulNumSourceNodes, previous->pSourceNodes, 1);
  EXPECT_EQ(differences(current, previous),
            "pSourceNodes[0].abReserved88 (BKNODE+88): 05 00 00 00 00 00 00 00 00 00 00 00 -> "
            "absent\n");
}

// The reserved bytes of the previous layout are more than the field that the current one has there.
TEST(Compare, TakesBytesThatOnlyTheFirstTreeHasForWhatTheyAre) {
  const PreviousTree previous = previousJob(1);
  give<BKNODE_OLD>(previous->ulNumSourceNodes, previous->pSourceNodes, 1);
  const CurrentTree current = currentJob(1);
  auto& node = *give<BKNODE>(current->ulNumSourceNodes, current->pSourceNodes, 1);
  EXPECT_EQ(differences(previous, current), "");
  node.abReserved88[0] = 5;
  EXPECT_EQ(differences(previous, current),
            "pSourceNodes[0].abReserved88 (BKNODE+88): absent -> 05 00 00 00 00 00 00 00 00 00 00 "
            "00\n");
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_JSON;
  EXPECT_EQ(differences(previous, current, options), std::string(R"(
{
  "format": "bkoq-differences",
  "version": 1,
  "layouts": ["previous", "current"],
  "differences": [
    {"change": "changed", "path": "pSourceNodes[0].abReserved88", "otherPath": "pSourceNodes[0].abReserved88", "record": "BKNODE", "offset": 88, "old": null, "new": {"kind": "reserved", "value": [5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0]}}
  ]
}
)")
                                                         .substr(1));
}

// A program may keep a copy of a record beside the one that it goes on with.
TEST(Compare, LooksIntoBlocksThatBothTreesShare) {
  const CurrentTree first = currentBackup();
  BKQJDATATRANSFER second = *first;
  second.ulNumSourceNodes = 1;
  const char* only[] = {"pSourceNodes[*].usNodeOS", nullptr};
  BkoqPaths paths{};
  for (const char* const* wanted : {static_cast<const char**>(nullptr), only}) {
    // An element that is gone is also about what lay in it.
    paths.only = wanted;
    std::string text;
    EXPECT_EQ(bkoqPrintChanges(first.get(), BKOQ_LAYOUT_CURRENT, &second, BKOQ_LAYOUT_CURRENT,
                               nullptr, &paths, appendToString, &text, nullptr),
              BKOQ_OK);
    EXPECT_EQ(text, "pSourceNodes[1] (BKNODE+100): BKNODE \"payroll\" -> absent\n");
  }
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_JSON;
  std::string json;
  EXPECT_EQ(bkoqPrintDifferences(first.get(), BKOQ_LAYOUT_CURRENT, &second, BKOQ_LAYOUT_CURRENT,
                                 &options, appendToString, &json, nullptr),
            BKOQ_OK);
  EXPECT_EQ(json, std::string(R"(
{
  "format": "bkoq-differences",
  "version": 1,
  "layouts": ["current", "current"],
  "differences": [
    {"change": "removed", "path": "pSourceNodes[1]", "otherPath": "pSourceNodes[1]", "record": "BKNODE", "offset": 100, "old": {"kind": "record", "value": "BKNODE", "name": "payroll"}, "new": null}
  ]
}
)")
                      .substr(1));
}

TEST(Compare, FindsAFieldByItsNameInEitherTree) {
  const CurrentTree first = currentBackup();
  const PreviousTree second = previousBackup();
  for (const char* name : {"**.usTapeID", "**.ulTapeID"}) {
    const char* only[] = {name, nullptr};
    BkoqPaths paths{};
    paths.only = only;
    std::string text;
    EXPECT_EQ(bkoqPrintChanges(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_PREVIOUS,
                               nullptr, &paths, appendToString, &text, nullptr),
              BKOQ_OK);
    EXPECT_EQ(text, "pDestNodes[0].pMedia[0].usTapeID / ulTapeID (BKDTAPE+8): 9029 -> 74565\n")
        << name;
  }
}

// A tape ID that fits 16 bits is the same in both layouts.
TEST(Compare, TakesNumbersOfAnotherWidthForWhatTheyAre) {
  const auto withTape = [](auto& job, auto* node, auto* tape) {
    using Node = std::remove_pointer_t<decltype(node)>;
    using Tape = std::remove_pointer_t<decltype(tape)>;
    auto& tapeNode = *give<Node>(job->ulNumDestNodes, job->pDestNodes, 1);
    return give<Tape>(tapeNode.ulMediaCount, tapeNode.pMedia, 1);
  };
  CurrentTree current = currentJob(1);
  PreviousTree previous = previousJob(1);
  auto* tape = withTape(current, static_cast<BKNODE*>(nullptr), static_cast<BKDTAPE*>(nullptr));
  auto* tapeOld =
      withTape(previous, static_cast<BKNODE_OLD*>(nullptr), static_cast<BKDTAPE_OLD*>(nullptr));
  tape->usTapeID = 0xFFFF;
  tapeOld->ulTapeID = 0xFFFF;
  EXPECT_EQ(differences(current, previous), "");
}

TEST(Compare, DoesNotFollowMediaOfAnotherKind) {
  const CurrentTree backup = currentJob(1);
  const CurrentTree restore = currentJob(7);
  auto& disks = *give<BKNODE>(backup->ulNumSourceNodes, backup->pSourceNodes, 1);
  give<BKDDISK>(disks.ulMediaCount, disks.pMedia, 1)->pszDiskName = text("/");
  auto& tapes = *give<BKNODE>(restore->ulNumSourceNodes, restore->pSourceNodes, 1);
  give<BKDTAPE>(tapes.ulMediaCount, tapes.pMedia, 1)->pszTapeName = text("tape");
  EXPECT_EQ(differences(backup, restore),
            "usJobType (BKQJDATATRANSFER+4): 1 (backup) -> 7 (restore)\n"
            "pSourceNodes[0].pMedia (BKNODE+40): 1 BKDDISK -> 1 BKDTAPE\n");
}

TEST(Compare, GivesJson) {
  const CurrentTree first = currentBackup();
  const CurrentTree second = currentBackup();
  second->usJobStatus = 3;
  diskOf(*second).pszDiskPW2[4] = 'X';
  auto& disk = diskOf(*second);
  disk.ulDiskItemCount = 2;
  disk.pDiskItems = static_cast<BKDISKITEM*>(std::realloc(disk.pDiskItems, 2 * sizeof(BKDISKITEM)));
  std::memset(disk.pDiskItems + 1, 0, sizeof(BKDISKITEM));
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_JSON;
  EXPECT_EQ(differences(first, second, options), std::string(R"(
{
  "format": "bkoq-differences",
  "version": 1,
  "layouts": ["current", "current"],
  "differences": [
    {"change": "changed", "path": "usJobStatus", "otherPath": "usJobStatus", "record": "BKQJDATATRANSFER", "offset": 8, "old": {"kind": "number", "value": 2, "hex": "0x0002"}, "new": {"kind": "number", "value": 3, "hex": "0x0003"}},
    {"change": "added", "path": "pSourceNodes[0].pMedia[0].pDiskItems[1]", "otherPath": "pSourceNodes[0].pMedia[0].pDiskItems[1]", "record": "BKDISKITEM", "offset": 32, "old": null, "new": {"kind": "record", "value": "BKDISKITEM"}},
    {"change": "changed", "path": "pSourceNodes[0].pMedia[0].pszDiskPW2", "otherPath": "pSourceNodes[0].pMedia[0].pszDiskPW2", "record": "BKDDISK", "offset": 36, "old": {"kind": "two texts", "value": ["ops", "********"], "masked": true}, "new": {"kind": "two texts", "value": ["ops", "********"], "masked": true}}
  ]
}
)")
                                                     .substr(1));
  EXPECT_EQ(differences(first, first, options), std::string(R"(
{
  "format": "bkoq-differences",
  "version": 1,
  "layouts": ["current", "current"],
  "differences": []
}
)")
                                                    .substr(1));
}

TEST(Compare, ColoursWhenAsked) {
  const CurrentTree first = currentJob(1);
  const CurrentTree second = currentJob(1);
  second->usJobStatus = 3;
  BkoqPrintOptions options{};
  options.colour = 1;
  EXPECT_EQ(differences(first, second, options),
            "\033[36musJobStatus\033[0m \033[2m(BKQJDATATRANSFER+8)\033[0m: \033[31m0\033[0m -> "
            "\033[32m3\033[0m\n");
}

TEST(Compare, HandsDifferencesToAVisitorUntilItStops) {
  const CurrentTree first = currentBackup();
  const PreviousTree second = previousBackup();
  struct Seen {
    std::string text;
    int left;
  };
  const BkoqDifferenceVisitor visitor = [](const BkoqDifference* difference, void* user) {
    auto* seen = static_cast<Seen*>(user);
    seen->text += std::string(difference->path) + "|" + difference->otherPath + "|" +
                  difference->record + "+" + std::to_string(difference->offset) + "|" +
                  difference->oldValue + "|" + difference->newValue + "|" +
                  std::to_string(difference->isMasked) + "\n";
    return --seen->left > 0 ? 0 : 1;
  };
  Seen seen{"", 2};
  std::uint32_t count = 0;
  EXPECT_EQ(bkoqCompare(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_PREVIOUS, 0,
                        visitor, &seen, &count),
            BKOQ_STOPPED);
  EXPECT_EQ(count, 2u);
  EXPECT_EQ(seen.text,
            "pSourceNodes[0].pszNodeDomain|pSourceNodes[0].abReserved84|BKNODE+84|\"accounting\"|"
            "zero|0\n"
            "pDestNodes[0].pMedia[0].usTapeID|pDestNodes[0].pMedia[0].ulTapeID|BKDTAPE+8|9029|"
            "74565|0\n");
  seen.left = 100;
  EXPECT_EQ(bkoqCompare(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_PREVIOUS, 0,
                        visitor, &seen, nullptr),
            BKOQ_OK);
}

TEST(Compare, StopsAlsoBetweenTreesOfOneLayout) {
  const CurrentTree first = currentBackup();
  const CurrentTree second = currentBackup();
  second->pSourceNodes[0].usNodeOS = 8;
  second->pSourceNodes[0].usDeviceType = 2;
  second->pSourceNodes[1].usNodeOS = 8;
  second->ulOptions = 0;
  const BkoqDifferenceVisitor visitor = [](const BkoqDifference*, void*) { return 1; };
  std::uint32_t count = 0;
  EXPECT_EQ(bkoqCompare(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_CURRENT, 0,
                        visitor, nullptr, &count),
            BKOQ_STOPPED);
  EXPECT_EQ(count, 1u);
}

TEST(Compare, HandsOnNoMoreThanTheBeginningOfALongValue) {
  const CurrentTree first = currentJob(1);
  const CurrentTree second = currentJob(1);
  std::string content = "ab";
  while (content.size() < std::size_t{2} << 20) content += "\u00e9";
  second->pszOwner = text(content.c_str());
  struct Seen {
    std::string oldValue;
    std::string newValue;
  } seen;
  const BkoqDifferenceVisitor visitor = [](const BkoqDifference* difference, void* user) {
    *static_cast<Seen*>(user) = {difference->oldValue, difference->newValue};
    return 0;
  };
  std::uint32_t count = 0;
  EXPECT_EQ(bkoqCompare(first.get(), BKOQ_LAYOUT_CURRENT, second.get(), BKOQ_LAYOUT_CURRENT, 0,
                        visitor, &seen, &count),
            BKOQ_OK);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(seen.oldValue, "null");
  // As much of 1 MiB as there are whole characters, after the quotation mark.
  const std::size_t whole = (std::size_t{1} << 20) - 1 - ((std::size_t{1} << 20) - 3) % 2;
  EXPECT_TRUE(seen.newValue == "\"" + content.substr(0, whole) + "...") << seen.newValue.size();
}

TEST(Compare, RefusesBadArguments) {
  const CurrentTree job = currentJob(1);
  const auto layout = static_cast<BkoqLayout>(2);
  const auto current = BKOQ_LAYOUT_CURRENT;
  std::string text;
  BkoqPrintOptions annotated{};
  annotated.format = BKOQ_FORMAT_ANNOTATED;
  struct Arguments {
    const void* first;
    BkoqLayout firstLayout;
    const void* second;
    BkoqLayout secondLayout;
  };
  const Arguments cases[] = {{nullptr, current, job.get(), current},
                             {job.get(), layout, job.get(), current},
                             {job.get(), current, nullptr, current},
                             {job.get(), current, job.get(), layout}};
  for (const Arguments& each : cases) {
    std::uint32_t count = 9;
    EXPECT_EQ(bkoqCompare(each.first, each.firstLayout, each.second, each.secondLayout, 0, nullptr,
                          nullptr, &count),
              BKOQ_BAD_ARGUMENT);
    EXPECT_EQ(count, 0u);
    count = 9;
    EXPECT_EQ(bkoqPrintDifferences(each.first, each.firstLayout, each.second, each.secondLayout,
                                   nullptr, appendToString, &text, &count),
              BKOQ_BAD_ARGUMENT);
    EXPECT_EQ(count, 0u);
  }
  EXPECT_EQ(bkoqPrintDifferences(job.get(), current, job.get(), current, nullptr, nullptr, &text,
                                 nullptr),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqPrintDifferences(job.get(), current, job.get(), current, &annotated, appendToString,
                                 &text, nullptr),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(text, "");
}

TEST(Compare, EndsWhenTheSinkFails) {
  const CurrentTree first = currentJob(1);
  const CurrentTree second = currentJob(3);
  const BkoqSink full = [](void*, const char*, std::size_t) { return 1; };
  EXPECT_EQ(bkoqPrintDifferences(first.get(), BKOQ_LAYOUT_CURRENT, second.get(),
                                 BKOQ_LAYOUT_CURRENT, nullptr, full, nullptr, nullptr),
            BKOQ_SINK_FAILED);
}

}  // namespace
}  // namespace bkoq::test
