#include <gtest/gtest.h>

#include "kit/test_trees.h"

namespace bkoq::test {
namespace {

TEST(Get, GivesANumberWithItsWord) {
  const CurrentTree job = currentBackup();
  BkoqValue value;
  ASSERT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT, "usJobType", &value), BKOQ_OK);
  EXPECT_EQ(value.kind, BKOQ_FIELD_NUMBER);
  EXPECT_STREQ(value.record, "BKQJDATATRANSFER");
  EXPECT_EQ(value.bytes, &job->usJobType);
  EXPECT_EQ(value.width, 2u);
  EXPECT_EQ(value.number, static_cast<std::uint32_t>(BKOQ_JOB_ROTATION_BACKUP));
  EXPECT_STREQ(value.word, "rotation backup");
  EXPECT_EQ(value.text, nullptr);
  EXPECT_EQ(value.target, nullptr);
  EXPECT_EQ(value.isSecret, 0);
}

TEST(Get, GivesTextsAndTheTextsOfAList) {
  const CurrentTree job = currentBackup();
  const auto get = [&](const char* path) {
    BkoqValue value;
    EXPECT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT, path, &value), BKOQ_OK) << path;
    return value;
  };
  EXPECT_STREQ(get("pszOwner").text, "operator");
  EXPECT_EQ(get("pszOwner").targetSize, 9u);
  EXPECT_EQ(get("pszReportFile").text, nullptr);
  const char* list = "pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList";
  EXPECT_EQ(get(list).kind, BKOQ_FIELD_TEXT_LIST);
  EXPECT_EQ(get(list).count, 2u);
  const BkoqValue second = get((std::string(list) + "[1]").c_str());
  EXPECT_EQ(second.kind, BKOQ_FIELD_TEXT);
  EXPECT_STREQ(second.text, "2004.db");
  EXPECT_EQ(second.width, 7u);
  EXPECT_EQ(second.bytes, second.text);
  EXPECT_STREQ(get("pSourceNodes[0].pszNodeName[1]").text, "extra");
  EXPECT_EQ(get("pSourceNodes[0].pMedia[0].pszDiskPW2").isSecret, 1);
}

// A pointer to something else than texts has none, nor has a list without any.
TEST(Get, GivesNoTextWhereThereIsNone) {
  const CurrentTree job = currentJob(1);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  auto& item = *give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, 1);
  item.pFileList = text("not counted");
  BkoqValue value;
  ASSERT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT, "pSourceNodes", &value), BKOQ_OK);
  EXPECT_EQ(value.target, job->pSourceNodes);
  EXPECT_EQ(value.text, nullptr);
  ASSERT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT,
                    "pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList", &value),
            BKOQ_OK);
  EXPECT_EQ(value.target, item.pFileList);
  EXPECT_EQ(value.text, nullptr);
}

TEST(Get, ReadsAnIndexOfSeveralDigits) {
  const CurrentTree job = currentJob(1);
  give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 124);
  for (const int index : {0, 9, 10, 12, 100, 123}) {
    const std::string path = "pSourceNodes[" + std::to_string(index) + "]";
    BkoqValue value;
    ASSERT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT, path.c_str(), &value), BKOQ_OK) << path;
    EXPECT_EQ(value.bytes, job->pSourceNodes + index) << path;
  }
}

TEST(Get, GivesRecords) {
  const CurrentTree job = currentBackup();
  BkoqValue value;
  ASSERT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT, "", &value), BKOQ_OK);
  EXPECT_EQ(value.bytes, job.get());
  EXPECT_EQ(value.width, sizeof(BKQJDATATRANSFER));
  ASSERT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT, "pSourceNodes[1]", &value), BKOQ_OK);
  EXPECT_EQ(value.kind, BKOQ_FIELD_RECORD);
  EXPECT_STREQ(value.record, "BKNODE");
  EXPECT_EQ(value.bytes, job->pSourceNodes + 1);
  ASSERT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT,
                    "pDestNodes[0].pMedia[0].pTapeX.lSessionEndTime", &value),
            BKOQ_OK);
  EXPECT_EQ(value.number, 1000u);
  ASSERT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT, "stFax.pszHostName", &value), BKOQ_OK);
  EXPECT_STREQ(value.text, "faxhost");
}

// Every path of a walk can be got, and says the same.
TEST(Get, AgreesWithAWalk) {
  const CurrentTree job = currentBackup();
  struct Check {
    const void* root;
    int fields;
  } check{job.get(), 0};
  const BkoqVisitor visitor = [](const BkoqVisit* visit, void* user) {
    auto& self = *static_cast<Check*>(user);
    if (visit->event != BKOQ_FIELD) return 0;
    BkoqValue value;
    EXPECT_EQ(bkoqGet(self.root, BKOQ_LAYOUT_CURRENT, visit->path, &value), BKOQ_OK) << visit->path;
    EXPECT_EQ(value.bytes, visit->bytes);
    EXPECT_EQ(value.kind, visit->kind);
    EXPECT_EQ(value.number, visit->number);
    EXPECT_EQ(value.word, visit->word);
    EXPECT_EQ(value.target, visit->targetBytes);
    EXPECT_EQ(value.targetSize, visit->targetSize);
    EXPECT_EQ(value.count, visit->count);
    ++self.fields;
    return 0;
  };
  bkoqWalk(job.get(), BKOQ_LAYOUT_CURRENT, visitor, &check);
  EXPECT_GT(check.fields, 200);
}

TEST(Explain, SaysWhichPartOfAPathFailsAndWhatIsThere) {
  const CurrentTree job = currentBackup();
  const std::pair<const char*, const char*> rows[] = {
      {"pSourceNodes[2]", "pSourceNodes has 2 elements"},
      {"pSourceNodes[4294967297].pszNodeName", "pSourceNodes has 2 elements"},
      {"pDestNodes[1].x", "pDestNodes has 1 element"},
      {"pSourceNodes[0].pszNodeNam",
       "BKNODE has no field \"pszNodeNam\"; did you mean pszNodeName?"},
      {"zzz", "BKQJDATATRANSFER has no field \"zzz\""},
      {"pSourceNodes.pszNodeName",
       "pSourceNodes is an array of 2 elements; give one of them as pSourceNodes[0].pszNodeName"},
      // NOLINTBEGIN(misc-misleading-bidirectional): that is what it is about
      {"pSourceNodes.\033[1m\xe2\x80\xae\xff",
       "pSourceNodes is an array of 2 elements; give one of them as pSourceNodes[0].\\x1b"},
      {"pSourceNodes.\xe2\x80\xae\xc3\xa9\xff",
       "pSourceNodes is an array of 2 elements; give one of them as "
       "pSourceNodes[0].\\xe2\\x80\\xae\xc3\xa9\\xff"},
      // NOLINTEND(misc-misleading-bidirectional)
      {"pSourceNodes..x",
       "pSourceNodes is an array of 2 elements; give one of them as pSourceNodes[0]."},
      {"pSourceNodes[1].pMedia.x",
       "pSourceNodes[1].pMedia is an array; write pSourceNodes[1].pMedia[0].x"},
      {"pszOwner[0]", "pszOwner is no array"},
      {"stFax[0]", "stFax is no array"},
      {"pDestNodes[0].pMedia[0].pTapeX[0]", "pDestNodes[0].pMedia[0].pTapeX is no array"},
      {"stFax.zzz", "BKFAXINFO has no field \"zzz\""},
      {"pszOwner.x", "pszOwner has no fields"},
      {"pSourceNodes[1].pMedia[0]", "pSourceNodes[1].pMedia is null"},
      {"pSourceNodes[0].pszNodeName[2]", "pSourceNodes[0].pszNodeName has 2 texts"},
      {"pSourceNodes[10]", "pSourceNodes has 2 elements"},
      {"pSourceNodes[]", "\"[]\" after \"pSourceNodes\" is not part of a path"},
      {"pSourceNodes[0", "\"[0\" after \"pSourceNodes\" is not part of a path"},
      {"pSourceNodes[0x", "\"[0x\" after \"pSourceNodes\" is not part of a path"},
      {"pSourceNodes[.x", "\"[\" after \"pSourceNodes\" is not part of a path"},
      {"pSourceNodes[01]", "\"[01]\" after \"pSourceNodes\" is not part of a path"},
      {"pSourceNodes[42949672960]",
       "\"[42949672960]\" after \"pSourceNodes\" is not part of a path"},
      {"pSourceNodes[x]", "\"[x]\" after \"pSourceNodes\" is not part of a path"},
      {"pSourceNodes[0]]", "\"]\" after \"pSourceNodes[0]\" is not part of a path"},
      {"pSourceNodes[00]", "\"[00]\" after \"pSourceNodes\" is not part of a path"},
      {"\033[1m", "BKQJDATATRANSFER has no field \"\\x1b\""},
      {"%d%%", "BKQJDATATRANSFER has no field \"%d%%\""},
      {"pSourceNodes[*].zzz", "nothing is at a path like \"pSourceNodes[*].zzz\""},
  };
  for (const auto& row : rows) {
    char text[200];
    EXPECT_EQ(bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, row.first, text, sizeof text),
              BKOQ_NOT_FOUND);
    EXPECT_STREQ(text, row.second) << row.first;
    BkoqValue value;
    EXPECT_EQ(bkoqGet(job.get(), BKOQ_LAYOUT_CURRENT, row.first, &value), BKOQ_NOT_FOUND);
  }
  char text[10] = "x";
  EXPECT_EQ(bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, "pszOwner", text, sizeof text),
            BKOQ_OK);
  EXPECT_STREQ(text, "");
  bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, "pSourceNodes[2]", text, sizeof text);
  EXPECT_STREQ(text, "pSourceNo");
  // Cut before a character, never within it.
  char shorter[35];
  for (const std::size_t size : {33, 34}) {
    bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, "z\xc3\xa9", shorter, size);
    EXPECT_STREQ(shorter, "BKQJDATATRANSFER has no field \"z");
  }
  bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, "z\xc3\xa9", shorter, sizeof shorter);
  EXPECT_STREQ(shorter, "BKQJDATATRANSFER has no field \"z\xc3\xa9");
  // Nor when only the NUL has no room.
  const std::string whole =
      "pSourceNodes is an array of 2 elements; give one of them as pSourceNodes[0].\xc3\xa9";
  char longer[200];
  bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, "pSourceNodes.\xc3\xa9", longer, whole.size());
  EXPECT_EQ(longer, whole.substr(0, whole.size() - 2));
  bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, "pSourceNodes.\xc3\xa9", longer,
                  whole.size() + 1);
  EXPECT_EQ(longer, whole);
}

TEST(Explain, SaysWhatIsMissingInATreeWithLittleInIt) {
  const CurrentTree job = currentJob(1);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  auto& item = *give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, 1);
  item.ulFileCount = 1;
  item.pFileList = text("only.db");
  auto& tapes = *give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
  give<BKDTAPE>(tapes.ulMediaCount, tapes.pMedia, 1);
  const std::pair<const char*, const char*> rows[] = {
      {"pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList[1]",
       "pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList has 1 text"},
      {"pDestNodes[0].pMedia[0].pTapeX.pszDBUser", "pDestNodes[0].pMedia[0].pTapeX is null"},
  };
  for (const auto& row : rows) {
    char text[200];
    EXPECT_EQ(bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, row.first, text, sizeof text),
              BKOQ_NOT_FOUND);
    EXPECT_STREQ(text, row.second) << row.first;
  }
}

// No room is left alone, and room for the NUL alone gets it.
TEST(Explain, KeepsToTheRoomThatItIsGiven) {
  const CurrentTree job = currentJob(1);
  char text[] = "xx";
  EXPECT_EQ(bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, "zzz", text, 0), BKOQ_BAD_ARGUMENT);
  EXPECT_STREQ(text, "xx");
  EXPECT_EQ(bkoqExplainPath(job.get(), BKOQ_LAYOUT_CURRENT, "pszOwner", text, 1), BKOQ_OK);
  EXPECT_EQ(std::string(text, 2), std::string("\0x", 2));
}

TEST(Nearest, NamesTheRecordThatWasMeant) {
  EXPECT_STREQ(bkoqNearestRecord("BKTAPE", BKOQ_LAYOUT_CURRENT), "BKDTAPE");
  EXPECT_STREQ(bkoqNearestRecord("bknode", BKOQ_LAYOUT_CURRENT), "BKNODE");
  EXPECT_STREQ(bkoqNearestRecord("BKQJDATATRANSFR", BKOQ_LAYOUT_CURRENT), "BKQJDATATRANSFER");
  EXPECT_STREQ(bkoqNearestRecord("BKNOD_OLD", BKOQ_LAYOUT_PREVIOUS), "BKNODE_OLD");
  EXPECT_EQ(bkoqNearestRecord("something else", BKOQ_LAYOUT_CURRENT), nullptr);
  EXPECT_EQ(bkoqNearestRecord(nullptr, BKOQ_LAYOUT_CURRENT), nullptr);
}

TEST(Get, RefusesBadArguments) {
  const CurrentTree job = currentJob(1);
  const auto layout = static_cast<BkoqLayout>(2);
  const auto current = BKOQ_LAYOUT_CURRENT;
  BkoqValue value;
  char text[10];
  EXPECT_EQ(bkoqGet(nullptr, current, "", &value), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqGet(job.get(), layout, "", &value), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqGet(job.get(), current, nullptr, &value), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqGet(job.get(), current, "", nullptr), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqExplainPath(nullptr, current, "", text, 10), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqExplainPath(job.get(), layout, "", text, 10), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqExplainPath(job.get(), current, nullptr, text, 10), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqExplainPath(job.get(), current, "", nullptr, 10), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqExplainPath(job.get(), current, "", text, 0), BKOQ_BAD_ARGUMENT);
}

// ---- A tree of the other layout

TEST(OtherLayout, IsNoticedByWhatOnlyItHas) {
  const CurrentTree current = currentBackup();
  const PreviousTree previous = previousBackup();
  EXPECT_EQ(bkoqCheckLayout(current.get(), BKOQ_LAYOUT_CURRENT), BKOQ_OK);
  EXPECT_EQ(bkoqCheckLayout(previous.get(), BKOQ_LAYOUT_PREVIOUS), BKOQ_OK);
  EXPECT_EQ(bkoqCheckLayout(current.get(), BKOQ_LAYOUT_PREVIOUS), BKOQ_OTHER_LAYOUT);
  EXPECT_EQ(bkoqCheckLayout(previous.get(), BKOQ_LAYOUT_CURRENT), BKOQ_OTHER_LAYOUT);
  EXPECT_EQ(bkoqCheckLayout(nullptr, BKOQ_LAYOUT_CURRENT), BKOQ_BAD_ARGUMENT);
}

TEST(OtherLayout, IsPrintedWithAWordAboutIt) {
  const CurrentTree current = currentBackup();
  const std::string words =
      "this looks like a tree of the current layout: pSourceNodes[0].abReserved84 is not zero, "
      "where that layout has pszNodeDomain";
  for (const BkoqFormat format :
       {BKOQ_FORMAT_TEXT, BKOQ_FORMAT_JSON, BKOQ_FORMAT_PLAIN_JSON, BKOQ_FORMAT_ANNOTATED}) {
    BkoqPrintOptions options{};
    options.format = format;
    std::string text;
    EXPECT_EQ(bkoqPrint(current.get(), BKOQ_LAYOUT_PREVIOUS, &options, appendToString, &text),
              BKOQ_OK);
    EXPECT_NE(text.find(words), std::string::npos);
    text.clear();
    EXPECT_EQ(bkoqPrint(current.get(), BKOQ_LAYOUT_CURRENT, &options, appendToString, &text),
              BKOQ_OK);
    EXPECT_EQ(text.find("this looks like"), std::string::npos);
  }
}

TEST(OtherLayout, IsFreedAsFarAsThisOneKnows) {
  CurrentTree current = currentBackup();
  // What only the current layout has is left, so it is freed here.
  char* domain = current->pSourceNodes[0].pszNodeDomain;
  BKDTAPEX* extension = static_cast<BKDTAPE*>(current->pDestNodes[0].pMedia)->pTapeX;
  BkoqFreed freed;
  EXPECT_EQ(bkoqFree(current.release(), BKOQ_LAYOUT_PREVIOUS, &freed), BKOQ_OTHER_LAYOUT);
  EXPECT_EQ(freed.notFreed, 2u);
  std::free(domain);
  std::free(extension->pszDBUser);
  std::free(extension->pszDBPW);
  std::free(extension);
}

}  // namespace
}  // namespace bkoq::test
