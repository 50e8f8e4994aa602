#include <gtest/gtest.h>

#include <vector>

#include "kit/test_trees.h"

namespace bkoq::test {
namespace {

std::vector<std::string> walked(const void* root, BkoqLayout layout,
                                std::string (*describe)(const BkoqVisit&)) {
  struct Walk {
    std::vector<std::string> steps;
    std::string (*describe)(const BkoqVisit&);
  } walk{{}, describe};
  const BkoqStatus status = bkoqWalk(
      root, layout,
      [](const BkoqVisit* visit, void* user) {
        auto* all = static_cast<Walk*>(user);
        const std::string step = all->describe(*visit);
        if (!step.empty()) all->steps.push_back(step);
        return 0;
      },
      &walk);
  EXPECT_EQ(status, BKOQ_OK);
  return walk.steps;
}

std::string place(const BkoqVisit& visit) {
  return "#" + std::to_string(visit.block) + "+" + std::to_string(visit.offset);
}

TEST(Walk, VisitsRecordsInAFixedOrderWithTheirPlaces) {
  const CurrentTree job = currentBackup();
  const auto records =
      walked(job.get(), BKOQ_LAYOUT_CURRENT, [](const BkoqVisit& visit) -> std::string {
        if (visit.event == BKOQ_FIELD) return "";
        const std::string sign = visit.event == BKOQ_RECORD_BEGIN ? "{ " : "} ";
        return sign + std::to_string(visit.depth) + " " + visit.record + " " + visit.path + " " +
               place(visit);
      });
  const std::vector<std::string> expected = {
      "{ 0 BKQJDATATRANSFER  #1+0",
      "{ 1 BKNODE pSourceNodes[0] #2+0",
      "{ 2 BKFILTER_FILE pSourceNodes[0].pFilters[0] #6+0",
      "} 2 BKFILTER_FILE pSourceNodes[0].pFilters[0] #6+0",
      "{ 2 BKFILTER_FILE pSourceNodes[0].pFilters[1] #6+32",
      "} 2 BKFILTER_FILE pSourceNodes[0].pFilters[1] #6+32",
      "{ 2 BKFILTER_FILE pSourceNodes[0].pFilters[2] #6+64",
      "} 2 BKFILTER_FILE pSourceNodes[0].pFilters[2] #6+64",
      "{ 2 BKFILTER_FILE pSourceNodes[0].pFilters[3] #6+96",
      "} 2 BKFILTER_FILE pSourceNodes[0].pFilters[3] #6+96",
      "{ 2 BKFILTER_FILE pSourceNodes[0].pFilters[4] #6+128",
      "} 2 BKFILTER_FILE pSourceNodes[0].pFilters[4] #6+128",
      "{ 2 BKDDISK pSourceNodes[0].pMedia[0] #8+0",
      "{ 3 BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0] #10+0",
      "} 3 BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0] #10+0",
      "} 2 BKDDISK pSourceNodes[0].pMedia[0] #8+0",
      "} 1 BKNODE pSourceNodes[0] #2+0",
      "{ 1 BKNODE pSourceNodes[1] #2+100",
      "} 1 BKNODE pSourceNodes[1] #2+100",
      "{ 1 BKNODE pDestNodes[0] #17+0",
      "{ 2 BKDTAPE pDestNodes[0].pMedia[0] #19+0",
      "{ 3 BKTAPEITEM pDestNodes[0].pMedia[0].pTapeItems[0] #21+0",
      "} 3 BKTAPEITEM pDestNodes[0].pMedia[0].pTapeItems[0] #21+0",
      "{ 3 BKDTAPEX pDestNodes[0].pMedia[0].pTapeX #23+0",
      "} 3 BKDTAPEX pDestNodes[0].pMedia[0].pTapeX #23+0",
      "} 2 BKDTAPE pDestNodes[0].pMedia[0] #19+0",
      "} 1 BKNODE pDestNodes[0] #17+0",
      "{ 1 BKSCHEDINFO stSchedule #1+56",
      "} 1 BKSCHEDINFO stSchedule #1+56",
      "{ 1 BKOFINFO stOpenFile #1+104",
      "} 1 BKOFINFO stOpenFile #1+104",
      "{ 1 BKFAXINFO stFax #1+132",
      "} 1 BKFAXINFO stFax #1+132",
      "{ 1 BKEMAILINFO stEMail #1+156",
      "} 1 BKEMAILINFO stEMail #1+156",
      "{ 1 BKPRINTQ stPrintQueue #1+180",
      "} 1 BKPRINTQ stPrintQueue #1+180",
      "{ 1 BKROTATIONINFO stScheduleExt #1+196",
      "} 1 BKROTATIONINFO stScheduleExt #1+196",
      "} 0 BKQJDATATRANSFER  #1+0",
  };
  EXPECT_EQ(records, expected);
}

TEST(Walk, NumbersBlocksWhereTheirPointersStand) {
  const PreviousTree job = previousBackup();
  const auto blocks =
      walked(job.get(), BKOQ_LAYOUT_PREVIOUS, [](const BkoqVisit& visit) -> std::string {
        if (visit.event != BKOQ_FIELD || visit.target == 0) return "";
        return "#" + std::to_string(visit.target) + " " + visit.path + " " +
               std::to_string(visit.count) + ", " + std::to_string(visit.targetSize) +
               (visit.isSecret ? " secret" : "");
      });
  const std::vector<std::string> expected = {
      "#2 pSourceNodes 2, 200",
      "#3 pSourceNodes[0].pszNodeOSVer 2, 5",
      "#4 pSourceNodes[0].pszNodeName 2, 13",
      "#5 pSourceNodes[0].pszPassword 1, 10 secret",
      "#6 pSourceNodes[0].pFilters 5, 160",
      "#7 pSourceNodes[0].pFilters[0].pszFilter 1, 6",
      "#8 pSourceNodes[0].pMedia 1, 52",
      "#9 pSourceNodes[0].pMedia[0].pszDiskName 1, 6",
      "#10 pSourceNodes[0].pMedia[0].pDiskItems 1, 32",
      "#11 pSourceNodes[0].pMedia[0].pDiskItems[0].pszPath 1, 14",
      "#12 pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList 2, 16",
      "#13 pSourceNodes[0].pMedia[0].pszDiskPW2 2, 8 secret",
      "#14 pSourceNodes[0].pMedia[0].pszEncryptionKey 1, 9 secret",
      "#15 pSourceNodes[1].pszNodeName 1, 8",
      "#16 pDestNodes 1, 100",
      "#17 pDestNodes[0].pszNodeName 1, 9",
      "#18 pDestNodes[0].pMedia 1, 72",
      "#19 pDestNodes[0].pMedia[0].pszTapeName 1, 9",
      "#20 pDestNodes[0].pMedia[0].pTapeItems 1, 32",
      "#21 pDestNodes[0].pMedia[0].pTapeItems[0].pszFileOrDir 1, 12",
      "#22 pszOwner 1, 9",
      "#23 stFax.pszHostName 1, 8",
      "#24 stFax.pszUserPW 1, 4 secret",
      "#25 stFax.pszReceiverName 1, 12",
      "#26 stScheduleExt.pszSetName 1, 9",
  };
  EXPECT_EQ(blocks, expected);
}

TEST(Walk, GivesOffsetsNumbersAndWords) {
  const CurrentTree job = currentBackup();
  const auto fields =
      walked(job.get(), BKOQ_LAYOUT_CURRENT, [](const BkoqVisit& visit) -> std::string {
        if (visit.event != BKOQ_FIELD || std::strcmp(visit.record, "BKFILTER_FILE") != 0) return "";
        if (visit.kind == BKOQ_FIELD_RESERVED) {
          return std::string(visit.field) + " " + std::to_string(visit.fieldOffset) + "/" +
                 std::to_string(visit.width) + " reserved";
        }
        return std::string(visit.field) + " " + std::to_string(visit.fieldOffset) + "/" +
               std::to_string(visit.width) + " " + place(visit) + " = " +
               std::to_string(visit.number) + (visit.word ? std::string(" ") + visit.word : "");
      });
  const std::vector<std::string> expected = {
      "usFilterType 0/2 #6+0 = 2 file",
      "usInclExcl 2/2 #6+2 = 0 include",
      "ulFilterCount 4/4 #6+4 = 1",
      "pszFilter 8/4 #6+8 = 0",
      "usFilterLen 12/2 #6+12 = 6",
      "abUnused14 14/4 reserved",
      "abReserved18 18/14 reserved",
      "usFilterType 0/2 #6+32 = 5 attribute",
      "usInclExcl 2/2 #6+34 = 1 exclude",
      "ulAttributes 4/4 #6+36 = 2147483649",
      "abUnused8 8/10 reserved",
      "abReserved18 18/14 reserved",
      "usFilterType 0/2 #6+64 = 4 time",
      "usInclExcl 2/2 #6+66 = 0 include",
      "usTimeAttr 4/2 #6+68 = 0",
      "usTimeRange 6/2 #6+70 = 1 after",
      "lTime 8/4 #6+72 = 1078070400",
      "abUnused12 12/6 reserved",
      "abReserved18 18/14 reserved",
      "usFilterType 0/2 #6+96 = 4 time",
      "usInclExcl 2/2 #6+98 = 0 include",
      "usTimeAttr 4/2 #6+100 = 0",
      "usTimeRange 6/2 #6+102 = 2 between",
      "lStartTime 8/4 #6+104 = 1078070400",
      "lEndTime 12/4 #6+108 = 1078156800",
      "abUnused16 16/2 reserved",
      "abReserved18 18/14 reserved",
      "usFilterType 0/2 #6+128 = 4 time",
      "usInclExcl 2/2 #6+130 = 0 include",
      "usTimeAttr 4/2 #6+132 = 0",
      "usTimeRange 6/2 #6+134 = 3 within",
      "ulTimeUnits 8/4 #6+136 = 7",
      "abUnused12 12/4 reserved",
      "usTimeUnitType 16/2 #6+144 = 2",
      "abReserved18 18/14 reserved",
  };
  EXPECT_EQ(fields, expected);
}

// Whether the name of a node is one text or two depends on where the node stands, not only on its
// type.
TEST(Walk, ReadsTwoTextsOfUnixMachinesOnly) {
  struct Case {
    const char* what;
    std::uint16_t jobKind;
    bool isSource;
    std::uint16_t nodeType;
    std::uint32_t texts;
  };
  const Case cases[] = {
      {"UNIX machine, source of a backup", 20, true, 3, 2},
      {"Windows machine, source of a backup", 20, true, 9, 1},
      {"tape node, destination of a backup", 20, false, 3, 1},
      {"tape node, source of a restore", 7, true, 3, 1},
      {"UNIX destination of a restore", 7, false, 3, 1},
      {"UNIX destination of a database restore", 10, false, 3, 1},
      {"UNIX destination of a compare", 11, false, 3, 2},
      {"UNIX destination of a merge", 8, false, 3, 2},
      {"Macintosh destination of a merge", 8, false, 2, 1},
      {"tape node, source of a scan", 14, true, 3, 1},
      {"tape node, source of a verify", 29, true, 3, 1},
      {"node of an unknown kind of job", 99, true, 3, 1},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.what);
    const CurrentTree job = currentJob(each.jobKind);
    auto& node = each.isSource ? *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1)
                               : *give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
    node.usNodeType = each.nodeType;
    node.pszNodeOSVer = each.texts == 2 ? texts({"1", "2"}) : text("1");
    node.pszNodeName = each.texts == 2 ? texts({"1", "2"}) : text("1");
    const auto counts =
        walked(job.get(), BKOQ_LAYOUT_CURRENT, [](const BkoqVisit& visit) -> std::string {
          if (visit.event != BKOQ_FIELD || std::strcmp(visit.record, "BKNODE") != 0) return "";
          const bool isText = visit.target != 0;
          return isText ? std::string(visit.field) + " " + std::to_string(visit.count) : "";
        });
    const std::string number = std::to_string(each.texts);
    EXPECT_EQ(counts,
              (std::vector<std::string>{"pszNodeOSVer " + number, "pszNodeName " + number}));
  }
}

TEST(Walk, DoesNotFollowWhatItCannotTell) {
  const CurrentTree job = currentJob(99);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto& filter = *give<BKFILTER_FILE>(node.ulFilterCount, node.pFilters, 1);
  filter.usFilterType = 4;
  filter.usTimeRange = 9;
  filter.ulTimeUnits = 1;
  int somewhere = 0;
  node.ulMediaCount = 1;
  node.pMedia = &somewhere;
  const auto opaque =
      walked(job.get(), BKOQ_LAYOUT_CURRENT, [](const BkoqVisit& visit) -> std::string {
        if (visit.event != BKOQ_FIELD || visit.kind != BKOQ_FIELD_OPAQUE) return "";
        return std::string(visit.path) + " " + std::to_string(visit.target);
      });
  EXPECT_EQ(opaque, (std::vector<std::string>{"pSourceNodes[0].pFilters[0].ulOpaque8 0",
                                              "pSourceNodes[0].pFilters[0].ulOpaque12 0",
                                              "pSourceNodes[0].pFilters[0].usOpaque16 0",
                                              "pSourceNodes[0].pMedia 0"}));
}

TEST(Walk, StopsWhenTheVisitorSaysSo) {
  const CurrentTree job = currentJob(1);
  for (int stopAt : {1, 2, 30, 69}) {
    int left = stopAt;
    const auto countDown = [](const BkoqVisit*, void* user) {
      return --*static_cast<int*>(user) == 0 ? 1 : 0;
    };
    EXPECT_EQ(bkoqWalk(job.get(), BKOQ_LAYOUT_CURRENT, countDown, &left), BKOQ_STOPPED);
    EXPECT_EQ(left, 0);
  }
}

TEST(Walk, NamesElementsByNumbersOfAnyLength) {
  const CurrentTree job = currentJob(20);
  give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1101);
  struct Search {
    std::uint32_t next = 0;
    static int visit(const BkoqVisit* visit, void* user) {
      std::uint32_t& next = static_cast<Search*>(user)->next;
      if (visit->event != BKOQ_RECORD_BEGIN || visit->depth != 1) return 0;
      if (std::string(visit->path).compare(0, 12, "pSourceNodes") != 0) return 0;
      EXPECT_EQ(visit->path, "pSourceNodes[" + std::to_string(next) + "]");
      ++next;
      return 0;
    }
  } search;
  EXPECT_EQ(bkoqWalk(job.get(), BKOQ_LAYOUT_CURRENT, Search::visit, &search), BKOQ_OK);
  EXPECT_EQ(search.next, 1101u);
}

TEST(Walk, RefusesBadArguments) {
  const CurrentTree job = currentJob(1);
  const BkoqVisitor visitor = [](const BkoqVisit*, void*) { return 0; };
  EXPECT_EQ(bkoqWalk(nullptr, BKOQ_LAYOUT_CURRENT, visitor, nullptr), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqWalk(job.get(), BKOQ_LAYOUT_CURRENT, nullptr, nullptr), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqWalk(job.get(), static_cast<BkoqLayout>(2), visitor, nullptr), BKOQ_BAD_ARGUMENT);
}

TEST(Status, HasAText) {
  const std::pair<BkoqStatus, const char*> cases[] = {
      {BKOQ_OK, "done"},
      {BKOQ_STOPPED, "stopped by the visitor"},
      {BKOQ_SINK_FAILED, "the output could not be written"},
      {BKOQ_NO_MEMORY, "memory ran out"},
      {BKOQ_BAD_ARGUMENT, "a bad argument"},
      {BKOQ_NOT_FOUND, "not found"},
      {BKOQ_BAD_IMAGE, "the image is damaged"},
      {BKOQ_BAD_TREE, "the tree holds what cannot be told"},
      {BKOQ_OTHER_LAYOUT, "the tree looks like one of the other layout"},
      {static_cast<BkoqStatus>(9), "an unknown status"},
  };
  for (const auto& each : cases) EXPECT_STREQ(bkoqStatusText(each.first), each.second);
}

}  // namespace
}  // namespace bkoq::test
