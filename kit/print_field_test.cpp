#include <gtest/gtest.h>

#include "kit/test_print.h"

namespace bkoq::test {
namespace {

TEST(PrintField, GivesAValueAlone) {
  struct Case {
    const char* path;
    const char* text;
  };
  const Case cases[] = {
      {"usJobType", "20\n"},
      {"ulOptions", "0x00100008\n"},
      {"pszOwner", "\"operator\"\n"},
      {"pszHost", "null\n"},
      {"pDestNodes[0].pMedia[0].pszTapeName", "\"NIGHT-01\"\n"},
      {"pSourceNodes[0].pszNodeName", "\"ledger\", \"extra\"\n"},
      {"pSourceNodes[0].pMedia[0].pszDiskPW2", "\"ops\", ********\n"},
      {"pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList", "\"2003.db\", \"2004.db\"\n"},
      {"stSchedule.lExecTime", "-1\n"},
      {"abReserved6", "zero\n"},
      {"pSourceNodes[1].pMedia", "null\n"},
      {"stFax", R"(
BKFAXINFO stFax  #1+132
    0  pszHostName       #27  "faxhost"
    4  pszUserName       null
    8  pszUserPW         #28  ********
   12  pszFaxNumber      null
   16  pszCoverPageFile  null
   20  pszReceiverName   null
)"},
      {"pDestNodes[0].pMedia[0].pTapeX", R"(
BKDTAPEX pDestNodes[0].pMedia[0].pTapeX  #23+0
    0  pszDBUser        #24  "sa"
    4  pszDBPW          #25  ********
    8  lSessionEndTime  1000          1970-01-01 00:16:40 UTC
   12  abReserved12     zero          44 bytes
   56  ulOptions        0
   60  abReserved60     zero          4 bytes
)"},
      {"pSourceNodes[0].pMedia[0].pDiskItems", R"(
BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]  #10+0
    0  pszPath       #11  "/home/ledgers"
    4  ulFileCount   2
    8  pFileList     #12  2 texts: "2003.db", "2004.db"
   12  ulOptions     0
   16  abReserved16  zero          16 bytes
)"},
      {"pSourceNodes[0].pMedia[0].pDiskItems[0]", R"(
BKDISKITEM pSourceNodes[0].pMedia[0].pDiskItems[0]  #10+0
    0  pszPath       #11  "/home/ledgers"
    4  ulFileCount   2
    8  pFileList     #12  2 texts: "2003.db", "2004.db"
   12  ulOptions     0
   16  abReserved16  zero          16 bytes
)"},
  };
  const CurrentTree job = currentBackup();
  for (const Case& each : cases) {
    std::string text;
    EXPECT_EQ(
        bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, each.path, nullptr, appendToString, &text),
        BKOQ_OK)
        << each.path;
    EXPECT_EQ(text, each.text[0] == '\n' ? expected(each.text) : each.text) << each.path;
  }
}

TEST(PrintField, GivesTheWholeTreeForTheEmptyPath) {
  const CurrentTree job = currentBackup();
  std::string text;
  EXPECT_EQ(bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "", nullptr, appendToString, &text),
            BKOQ_OK);
  EXPECT_EQ(text, printed(job, BkoqPrintOptions{}));
}

TEST(PrintField, GivesJson) {
  const CurrentTree job = currentBackup();
  BkoqPrintOptions options = withoutZeros();
  options.format = BKOQ_FORMAT_JSON;
  const std::pair<const char*, const char*> cases[] = {
      {"usJobType", R"(
{
  "format": "bkoq-field",
  "version": 1,
  "layout": "current",
  "path": "usJobType",
  "field": {"name": "usJobType", "offset": 4, "width": 2, "kind": "number", "value": 20, "hex": "0x0014", "word": "rotation backup"}
}
)"},
      {"stOpenFile", R"(
{
  "format": "bkoq-field",
  "version": 1,
  "layout": "current",
  "path": "stOpenFile",
  "field": {"name": "stOpenFile", "offset": 104, "width": 12, "kind": "embedded", "value": {"record": "BKOFINFO", "block": 1, "offset": 104, "size": 12, "fields": {
        "ulFActions": {"offset": 0, "width": 4, "kind": "flags", "value": 3, "hex": "0x00000003"}
      }}}
}
)"},
      {"pSourceNodes[0].pMedia[0].pDiskItems", R"(
{
  "format": "bkoq-field",
  "version": 1,
  "layout": "current",
  "path": "pSourceNodes[0].pMedia[0].pDiskItems",
  "field": {"name": "pDiskItems", "offset": 20, "width": 4, "kind": "array", "block": 10, "size": 32, "count": 1, "value": [
      {"record": "BKDISKITEM", "block": 10, "offset": 0, "size": 32, "fields": {
        "pszPath": {"offset": 0, "width": 4, "kind": "text", "block": 11, "size": 14, "value": "/home/ledgers"},
        "ulFileCount": {"offset": 4, "width": 4, "kind": "count", "value": 2, "hex": "0x00000002"},
        "pFileList": {"offset": 8, "width": 4, "kind": "text list", "block": 12, "size": 16, "value": ["2003.db", "2004.db"]}
      }}]}
}
)"},
      {"pDestNodes[0].pMedia[0].pTapeItems[0]", R"(
{
  "format": "bkoq-field",
  "version": 1,
  "layout": "current",
  "path": "pDestNodes[0].pMedia[0].pTapeItems[0]",
  "record": {"record": "BKTAPEITEM", "block": 21, "offset": 0, "size": 32, "fields": {
    "ulChunkNum": {"offset": 0, "width": 4, "kind": "number", "value": 7, "hex": "0x00000007"},
    "pszFileOrDir": {"offset": 8, "width": 4, "kind": "text", "block": 22, "size": 12, "value": "/etc/passwd"}
  }}
}
)"},
  };
  for (const auto& each : cases) {
    std::string text;
    EXPECT_EQ(
        bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, each.first, &options, appendToString, &text),
        BKOQ_OK);
    EXPECT_EQ(text, expected(each.second));
  }
}

TEST(PrintField, LeavesOutWhatIsZeroOfAPattern) {
  const CurrentTree job = currentBackup();
  const auto print = [&](const char* path, BkoqFormat format) {
    BkoqPrintOptions options = {};
    options.format = format;
    options.hideZero = 1;
    std::string text;
    EXPECT_EQ(bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, path, &options, appendToString, &text),
              BKOQ_OK)
        << path;
    return text;
  };
  const char* item = "pSourceNodes[0].pMedia[0].pDiskItems[0].*";
  EXPECT_EQ(print(item, BKOQ_FORMAT_TEXT), expected(R"(
pSourceNodes[0].pMedia[0].pDiskItems[0].pszPath: "/home/ledgers"
pSourceNodes[0].pMedia[0].pDiskItems[0].ulFileCount: 2
pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList: "2003.db", "2004.db"
)"));
  EXPECT_EQ(print(item, BKOQ_FORMAT_PLAIN_JSON), expected(R"(
{
  "format": "bkoq-values",
  "version": 1,
  "layout": "current",
  "pattern": "pSourceNodes[0].pMedia[0].pDiskItems[0].*",
  "matches": [
    {"path": "pSourceNodes[0].pMedia[0].pDiskItems[0].pszPath", "value": "/home/ledgers"},
    {"path": "pSourceNodes[0].pMedia[0].pDiskItems[0].ulFileCount", "value": 2},
    {"path": "pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList", "value": ["2003.db", "2004.db"]}
  ]
}
)"));
  // All of it is zero: there is such a field, and nothing to show.
  EXPECT_EQ(print("pSourceNodes[0].pMedia[0].pDiskItems[0].ulOption*", BKOQ_FORMAT_TEXT), "");
  EXPECT_EQ(print("pSourceNodes[0].pMedia[0].pDiskItems[0].ulOption*", BKOQ_FORMAT_PLAIN_JSON),
            expected(R"(
{
  "format": "bkoq-values",
  "version": 1,
  "layout": "current",
  "pattern": "pSourceNodes[0].pMedia[0].pDiskItems[0].ulOption*",
  "matches": [
  ]
}
)"));
  // What is asked for by its own path is shown.
  EXPECT_EQ(print("pSourceNodes[0].pMedia[0].pDiskItems[0].ulOptions", BKOQ_FORMAT_TEXT), "0\n");
}

TEST(PrintField, SaysWhenThereIsNoSuchPath) {
  const CurrentTree job = currentBackup();
  for (const char* path : {"pszowner", "pSourceNodes[2]", "pSourceNodes[0].pMedia[0].",
                           "pszOwner.x", "pSourceNodes[00]", "[0]"}) {
    std::string text;
    EXPECT_EQ(bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, path, nullptr, appendToString, &text),
              BKOQ_NOT_FOUND)
        << path;
    EXPECT_EQ(text, "");
  }
}

}  // namespace
}  // namespace bkoq::test
