#include <gtest/gtest.h>

#include <utility>

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
      {12, 15,
       "#12+15: the NUL of text 2 of 2 of pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList\ntext: "
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

// The image of a tree, which then is the tree.
struct Image {
  explicit Image(const CurrentTree& job) {
    EXPECT_EQ(bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, appendToString, &bytes, nullptr),
              BKOQ_OK);
    void* tree = nullptr;
    EXPECT_EQ(bkoqUseImage(&bytes[0], bytes.size(), &layout, &tree, nullptr), BKOQ_OK);
    root = static_cast<BKQJDATATRANSFER*>(tree);
  }
  std::uint32_t offsetOf(const void* place) const {
    return static_cast<std::uint32_t>(static_cast<const char*>(place) - bytes.data());
  }
  std::string at(std::uint32_t offset, const BkoqPrintOptions& options = {}) const {
    BkoqImagePlaces places{};
    places.image = bytes.data();
    std::string text;
    const BkoqStatus status =
        bkoqPrintAtFile(root, layout, offset, &options, &places, appendToString, &text);
    return status == BKOQ_OK ? text : bkoqStatusText(status);
  }

  std::string bytes;
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  BKQJDATATRANSFER* root = nullptr;
};

// In a damaged image a pointer may lead back, past a block that another one leads to, or nowhere.
TEST(PrintAtFile, FindsBlocksInAnyOrder) {
  const CurrentTree job = currentJob(1);
  job->pszOwner = text("seven c");
  job->pszReportFile = text("report");
  job->pszComments = text("comments");
  const Image image(job);
  std::swap(image.root->pszOwner, image.root->pszReportFile);
  const std::string owner = "of text 1 of 1 of pszOwner\ntext: \"report\"\nmeaning: owner\n";
  const std::string report =
      "of text 1 of 1 of pszReportFile\ntext: \"seven c\"\nmeaning: report file\n";
  const std::string comments =
      "of text 1 of 1 of pszComments\ntext: \"comments\"\nmeaning: comments\n";
  EXPECT_EQ(image.at(image.offsetOf(image.root->pszReportFile)), "#3+0: byte 0 " + report);
  EXPECT_EQ(image.at(image.offsetOf(image.root->pszOwner)), "#2+0: byte 0 " + owner);
  EXPECT_EQ(image.at(image.offsetOf(image.root->pszComments)), "#4+0: byte 0 " + comments);
}

// A block of no bytes begins where the next one does.
TEST(PrintAtFile, FindsWhatIsWhereABlockOfNoBytesIs) {
  const CurrentTree job = currentJob(1);
  give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  job->ulNumSourceNodes = 0;
  job->pszOwner = text("operator");
  const Image image(job);
  EXPECT_EQ(image.at(image.offsetOf(image.root->pszOwner)),
            "#3+0: byte 0 of text 1 of 1 of pszOwner\ntext: \"operator\"\nmeaning: owner\n");
}

TEST(PrintAtFile, TellsPaddingFromWhatIsInNoBlock) {
  const CurrentTree job = currentJob(1);
  job->pszOwner = text("seven c");
  job->pszReportFile = text("report");
  job->pszComments = text("comments");
  const Image image(job);
  const std::uint32_t lost = image.offsetOf(image.root->pszReportFile);
  const std::uint32_t end = image.offsetOf(image.root->pszComments) + 9;
  image.root->pszReportFile = nullptr;
  const auto place = [](std::uint32_t offset) { return "file:" + std::to_string(offset) + ": "; };
  // The block before it ends there without padding.
  EXPECT_EQ(image.at(lost), place(lost) + "in no block, after #2\n");
  EXPECT_EQ(image.at(end), place(end) + "padding after block #3\n");
  EXPECT_EQ(image.at(end + 2), place(end + 2) + "padding after block #3\n");
  EXPECT_EQ(image.at(end + 3), "not found");
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_JSON;
  const auto json = [](std::uint32_t offset, const std::string& meaning) {
    return "{\n  \"format\": \"bkoq-place\",\n  \"version\": 1,\n  \"fileOffset\": " +
           std::to_string(offset) + ",\n  \"place\": {\"meaning\": \"" + meaning + "\"}\n}\n";
  };
  EXPECT_EQ(image.at(8, options), json(8, "header, version of the format"));
  EXPECT_EQ(image.at(lost, options), json(lost, "in no block, after #2"));
}

// Where a block begins that follows something masked would tell how long that is.
TEST(PrintAtFile, TellsNothingAfterSomethingMaskedUnlessAskedFor) {
  const CurrentTree job = currentJob(1);
  job->stFax.pszUserPW = text("f4x");
  job->stFax.pszFaxNumber = text("12");
  const Image image(job);
  const std::uint32_t offset = image.offsetOf(image.root->stFax.pszFaxNumber);
  BkoqPrintOptions options{};
  options.hideReserved = 1;
  EXPECT_EQ(image.at(offset, options),
            "#2+4: in or after what is masked of text 1 of 1 of stFax.pszUserPW\ntext: "
            "********\nmeaning: user password\n");
  options.hideReserved = 0;
  options.showSecrets = 1;
  EXPECT_EQ(image.at(offset, options),
            "#3+0: byte 0 of text 1 of 1 of stFax.pszFaxNumber\ntext: \"12\"\nmeaning: fax "
            "number\n");
}

}  // namespace
}  // namespace bkoq::test
