#include <gtest/gtest.h>

#include "kit/test_print.h"

namespace bkoq::test {
namespace {

TEST(PrintAt, SaysWhichFieldLiesThere) {
  struct Case {
    std::uint32_t block;
    std::uint32_t offset;
    const char* text;
  };
  const Case cases[] = {
      {1, 0,
       "#1+0: byte 0 of ulReserved0, BKQJDATATRANSFER+0, 4 bytes\nulReserved0: zero  4 "
       "bytes\nmeaning: reserved: zero\n"},
      {1, 5,
       "#1+5: byte 1 of usJobType, BKQJDATATRANSFER+4, 2 bytes\nusJobType: 20  rotation "
       "backup\nmeaning: job kind\n"},
      {1, 143,
       "#1+143: byte 3 of stFax.pszUserPW, BKFAXINFO+8, 4 bytes\npszUserPW: #28 ********\nmeaning: "
       "user password\n"},
      {2, 104,
       "#2+104: byte 0 of pSourceNodes[1].pszNodeOSVer, BKNODE+4, 4 bytes\npszNodeOSVer: "
       "null\nmeaning: operating-system version; UNIX: a second text after it\n"},
      {12, 7,
       "#12+7: the NUL of text 1 of 2 of pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList\ntext: "
       "\"2003.db\"\nmeaning: file names, back to back\n"},
      {12, 9,
       "#12+9: byte 1 of text 2 of 2 of pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList\ntext: "
       "\"2004.db\"\nmeaning: file names, back to back\n"},
      {14, 0,
       "#14+0: in or after what is masked of text 1 of 1 of "
       "pSourceNodes[0].pMedia[0].pszEncryptionKey\ntext: "
       "********\nmeaning: encryption key\n"},
  };
  const CurrentTree job = currentBackup();
  for (const Case& each : cases) {
    std::string text;
    EXPECT_EQ(bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, each.block, each.offset, nullptr,
                          appendToString, &text),
              BKOQ_OK);
    EXPECT_EQ(text, each.text);
  }
}

TEST(PrintAt, GivesJson) {
  const CurrentTree job = currentBackup();
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_JSON;
  std::string text;
  EXPECT_EQ(bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, 2, 5, &options, appendToString, &text),
            BKOQ_OK);
  EXPECT_EQ(text, expected(R"(
{
  "format": "bkoq-place",
  "version": 1,
  "block": 2,
  "offset": 5,
  "place": {"path": "pSourceNodes[0].pszNodeOSVer", "byte": 1, "record": "BKNODE", "fieldOffset": 4, "width": 4, "meaning": "operating-system version; UNIX: a second text after it", "kind": "two texts", "block": 3, "size": 5, "value": ["5.8", ""]}
}
)"));
  text.clear();
  EXPECT_EQ(bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, 13, 5, &options, appendToString, &text),
            BKOQ_OK);
  EXPECT_EQ(text, expected(R"(
{
  "format": "bkoq-place",
  "version": 1,
  "block": 13,
  "offset": 5,
  "place": {"path": "pSourceNodes[0].pMedia[0].pszDiskPW2", "text": 2, "texts": 2, "value": "********", "masked": true, "meaning": "user and second password: two texts; types 11, 22, 31 (restore: 22, 31) joined by \":\""}
}
)"));
}

TEST(PrintAt, SaysWhenThereIsNoSuchPlace) {
  const CurrentTree job = currentBackup();
  const std::pair<std::uint32_t, std::uint32_t> cases[] = {{0, 0},   {30, 0},  {1, 292},
                                                           {2, 200}, {12, 16}, {12, 0xFFFFFFFF}};
  for (const auto& each : cases) {
    std::string text;
    EXPECT_EQ(bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, each.first, each.second, nullptr,
                          appendToString, &text),
              BKOQ_NOT_FOUND);
    EXPECT_EQ(text, "");
  }
}

}  // namespace
}  // namespace bkoq::test
