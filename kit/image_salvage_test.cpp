#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "kit/image.h"
#include "kit/test_trees.h"

namespace bkoq::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes imageOf(const CurrentTree& job) {
  std::string image;
  EXPECT_EQ(bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, appendToString, &image, nullptr),
            BKOQ_OK);
  return Bytes(image.begin(), image.end());
}

void seal(Bytes& image) {
  kit::storeWord(&image[kit::kChecksumAt], kit::imageChecksum(image.data(), image.size()));
}

std::string shown(const void* root, BkoqLayout layout, std::uint32_t doubtfulFrom = 0) {
  BkoqPrintOptions options{};
  options.hideReserved = 1;
  BkoqImagePlaces places{};
  places.doubtfulFrom = doubtfulFrom;
  std::string text;
  bkoqPrintImage(root, layout, nullptr, &options, &places, appendToString, &text);
  return text;
}

struct Salvaged {
  BkoqStatus status = BKOQ_OK;
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  BkoqSalvage salvage{};
  std::string doubts;
  std::string text;
};

Salvaged salvage(Bytes image) {
  Salvaged result;
  void* root = nullptr;
  const BkoqDoubtVisitor visitor = [](const BkoqImageError* error, void* user) {
    *static_cast<std::string*>(user) += std::string(error->text) + "\n";
  };
  const std::size_t size = image.size();
  image.resize(size + BKOQ_SALVAGE_ROOM, 0xA5);
  image.push_back(0xA5);
  result.status = bkoqSalvageImage(image.data(), size, &result.layout, &root, visitor,
                                   &result.doubts, &result.salvage);
  EXPECT_EQ(image.back(), 0xA5);
  if (root != nullptr) result.text = shown(root, result.layout, result.salvage.doubtfulFrom);
  EXPECT_EQ(
      static_cast<std::uint32_t>(std::count(result.doubts.begin(), result.doubts.end(), '\n')),
      result.salvage.doubts);
  return result;
}

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(Salvage, DoubtsNothingOfAGoodImage) {
  const CurrentTree job = currentBackup();
  const Salvaged result = salvage(imageOf(job));
  EXPECT_EQ(result.status, BKOQ_OK);
  EXPECT_EQ(result.doubts, "");
  EXPECT_EQ(result.salvage.doubtfulFrom, 0u);
  EXPECT_EQ(result.salvage.blocks, 29u);
  EXPECT_EQ(result.text, shown(job.get(), BKOQ_LAYOUT_CURRENT));
}

// What follows an array of none looks like its first record.
TEST(Salvage, DoubtsNothingOfAGoodImageThatLooksDamaged) {
  const CurrentTree job = currentJob(8);
  job->pSourceNodes = zeroed<BKNODE>();
  auto* node = give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
  node->pszNodeName = text("node");
  node->pszNodeAddress = text("address");
  const Salvaged result = salvage(imageOf(job));
  EXPECT_EQ(result.doubts, "");
  EXPECT_EQ(result.salvage.blocks, 5u);
  EXPECT_EQ(result.text, shown(job.get(), BKOQ_LAYOUT_CURRENT));
}

TEST(Salvage, ReadsACutImageUpToTheCut) {
  const CurrentTree job = currentBackup();
  Bytes image = imageOf(job);
  const std::string whole(image.begin(), image.end());
  image.resize(whole.find("payroll") + 4);
  const Salvaged result = salvage(image);
  EXPECT_TRUE(has(result.doubts, "cut short by ")) << result.doubts;
  EXPECT_TRUE(has(result.doubts, "cut off: what is left of the text is shown"));
  EXPECT_TRUE(has(result.text, "\"payr\"         doubtful")) << result.text;
  EXPECT_TRUE(has(result.text, "\"accounting\"\n"));
  EXPECT_TRUE(has(result.text, "pDestNodes        null          unfinished: the count is 1"));
  EXPECT_FALSE(has(result.text, "library1"));
}

TEST(Salvage, ShowsTheRecordsThatTheCutLeaves) {
  const CurrentTree job = currentBackup();
  Bytes image = imageOf(job);
  image.resize(32 + 292 + 100 + 20);
  const Salvaged result = salvage(image);
  EXPECT_TRUE(has(result.doubts, "cut off: zeros are shown for what is missing"));
  EXPECT_TRUE(has(result.text, "BKNODE pSourceNodes[1]  #2+100  doubtful"));
  EXPECT_TRUE(has(result.text, "usNodeType        9             Windows NT"));
  image.resize(32 + 6);
  EXPECT_TRUE(has(salvage(image).text, "usJobType         20"));
  image.resize(32);
  EXPECT_EQ(salvage(image).status, BKOQ_BAD_IMAGE);
}

TEST(Salvage, ShowsAllOfAnImageWithAChangedByte) {
  const CurrentTree job = currentBackup();
  Bytes image = imageOf(job);
  image[std::string(image.begin(), image.end()).find("ledger")] = 'L';
  const Salvaged result = salvage(image);
  EXPECT_TRUE(has(result.doubts, "the checksum does not fit: bytes were changed"));
  EXPECT_TRUE(has(result.text, "\"Ledger\", \"extra\""));
  EXPECT_EQ(result.salvage.doubtfulFrom, 1u);
  EXPECT_EQ(result.salvage.blocks, 29u);
}

// The order of the blocks says where each is, so a damaged offset loses nothing.
TEST(Salvage, FindsABlockWithoutItsOffset) {
  const CurrentTree job = currentBackup();
  const Bytes good = imageOf(job);
  for (const std::uint32_t damaged : {7U, 36U, 0xFFFFFFF0U}) {
    Bytes image = good;
    kit::storeWord(&image[32 + 16], damaged);
    seal(image);
    const Salvaged result = salvage(image);
    EXPECT_EQ(result.salvage.blocks, 29u) << damaged;
    EXPECT_EQ(result.salvage.doubtfulFrom, 2u);
    EXPECT_TRUE(has(result.doubts, "read from where the block should be, not from its offset"));
    EXPECT_TRUE(has(result.text, "\"library1\""));
    EXPECT_TRUE(has(result.text, "\"NIGHTSET\""));
  }
}

TEST(Salvage, LosesNoMoreThanTheBlockThatNothingLeadsTo) {
  const CurrentTree job = currentBackup();
  Bytes image = imageOf(job);
  kit::storeWord(&image[32 + 292 + 8], 0);  // pSourceNodes[0].pszNodeName
  seal(image);
  const Salvaged result = salvage(image);
  EXPECT_EQ(result.salvage.blocks, 28u);
  EXPECT_TRUE(has(result.doubts, "read from the offset, not from where the block should be"));
  EXPECT_FALSE(has(result.text, "\"ledger\""));
  EXPECT_TRUE(has(result.text, "\"payroll\""));
  EXPECT_TRUE(has(result.text, "\"library1\""));
}

// One node "alpha" with one disk "bravo" with four items: blocks at 32, 324 (the node), 424
// "alpha", 432 (the disk), 484 "bravo", 492 (the items), 620 and so on their paths.
Bytes imageWithItems() {
  const CurrentTree job = currentJob(1);
  BKNODE* node = give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  node->pszNodeName = text("alpha");
  BKDDISK* disk = give<BKDDISK>(node->ulMediaCount, node->pMedia, 1);
  disk->pszDiskName = text("bravo");
  BKDISKITEM* items = give<BKDISKITEM>(disk->ulDiskItemCount, disk->pDiskItems, 4);
  for (const char* path : {"/charlie", "/delta", "/echo", "/foxtrot"}) {
    (items++)->pszPath = text(path);
  }
  return imageOf(job);
}

void expectItems(const Salvaged& result, const std::string& what) {
  for (const char* text : {"alpha", "bravo", "/charlie", "/delta", "/echo", "/foxtrot"}) {
    EXPECT_TRUE(has(result.text, "\"" + std::string(text) + "\"")) << what << text << result.doubts;
  }
  EXPECT_GT(result.salvage.doubts, 0u);
}

TEST(Salvage, TakesNoBlockFromTheOffsetThatLeadsToIt) {
  // pszNodeOSVer, which was null, in front of pszNodeName.
  for (const std::uint32_t damaged : {1U, 64U, 484U, 0xFFFFFFFFU}) {
    Bytes image = imageWithItems();
    ASSERT_EQ(kit::loadWord(&image[324 + 8]), 424u);
    kit::storeWord(&image[324 + 4], damaged);
    seal(image);
    const Salvaged result = salvage(image);
    expectItems(result, std::to_string(damaged));
    EXPECT_TRUE(has(result.doubts, "another offset leads to the block that comes here"));
    EXPECT_EQ(result.salvage.blocks, 10u);
  }
}

TEST(Salvage, BelievesNoFirstOffsetThatLaterOnesContradict) {
  for (const std::uint32_t more : {32U, 64U}) {
    Bytes image = imageWithItems();
    ASSERT_EQ(kit::loadWord(&image[492]), 620u);
    kit::storeWord(&image[492], 620 + more);
    seal(image);
    const Salvaged result = salvage(image);
    expectItems(result, std::to_string(more));
    EXPECT_FALSE(has(result.doubts, "there are")) << result.doubts;
  }
}

TEST(Salvage, FindsAnArrayByWhatItsElementsLeadTo) {
  Bytes image = imageWithItems();
  ASSERT_EQ(kit::loadWord(&image[432 + 20]), 492u);
  kit::storeWord(&image[432 + 20], 492 + 64);
  seal(image);
  expectItems(salvage(image), "");
}

TEST(Salvage, ReadsOnWhereBytesWereTakenOut) {
  // Of the node's reserved bytes and of the disk's; what follows is shown whole.
  for (const int place : {324 + 92, 432 + 48}) {
    Bytes image = imageWithItems();
    image.erase(image.begin() + place, image.begin() + place + 4);
    const Salvaged result = salvage(image);
    for (const char* text : {"/charlie", "/delta", "/echo", "/foxtrot"}) {
      EXPECT_TRUE(has(result.text, "\"" + std::string(text) + "\"")) << place << result.text;
    }
  }
}

TEST(Salvage, FindsOutHowManyRecordsThereAre) {
  const CurrentTree job = currentBackup();
  for (const std::uint32_t count : {1U, 3U, 0U, 0xFFFFFFFFU}) {
    Bytes image = imageOf(job);
    kit::storeWord(&image[32 + 12], count);
    seal(image);
    const Salvaged result = salvage(image);
    EXPECT_TRUE(has(result.text, "\"payroll\"")) << count << result.text;
    EXPECT_TRUE(has(result.text, "\"library1\"")) << count;
    EXPECT_TRUE(has(result.doubts, "there are 2")) << count;
  }
}

TEST(Salvage, TellsAMislabelledLayout) {
  const PreviousTree job = previousBackup();
  std::string text;
  bkoqWriteImage(job.get(), BKOQ_LAYOUT_PREVIOUS, appendToString, &text, nullptr);
  const Bytes good(text.begin(), text.end());
  Bytes image = good;
  image[kit::kLayoutAt] = 1;
  const Salvaged flipped = salvage(image);
  EXPECT_TRUE(has(flipped.doubts, "mislabelled: this is a tree of the previous layout"))
      << flipped.doubts;
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  void* root = nullptr;
  BkoqImageError error;
  EXPECT_EQ(bkoqReadImage(image.data(), image.size(), &layout, &root, &error), BKOQ_BAD_IMAGE);
  EXPECT_EQ(error.problem, BKOQ_IMAGE_LAYOUT);
  EXPECT_TRUE(has(error.text, "mislabelled: this is a tree of the previous layout"));
}

TEST(Salvage, TellsAMislabelledLayoutWithTheRightChecksum) {
  Bytes image = imageOf(currentBackup());
  image[kit::kLayoutAt] = 2;
  seal(image);
  const Salvaged result = salvage(image);
  EXPECT_EQ(result.layout, BKOQ_LAYOUT_CURRENT);
  EXPECT_TRUE(has(result.doubts, "mislabelled: this is a tree of the current layout"));
  EXPECT_TRUE(has(result.text, "\"accounting\""));
}

TEST(Salvage, MakesTheTreeInPlace) {
  const CurrentTree job = currentBackup();
  const Bytes image = imageOf(job);
  Bytes repaired = image;
  repaired.resize(image.size() + BKOQ_SALVAGE_ROOM);
  BkoqLayout layout;
  void* root = nullptr;
  ASSERT_EQ(
      bkoqSalvageImage(repaired.data(), image.size(), &layout, &root, nullptr, nullptr, nullptr),
      BKOQ_OK);
  EXPECT_EQ(root, repaired.data() + 32);
  struct Check {
    const Bytes& image;
    const Bytes& repaired;
    int texts;
  } check{image, repaired, 0};
  const BkoqVisitor visitor = [](const BkoqVisit* visit, void* user) {
    auto& self = *static_cast<Check*>(user);
    const bool isText = visit->kind == BKOQ_FIELD_TEXT && visit->target != 0;
    if (visit->event != BKOQ_FIELD || !isText) return 0;
    const auto offset = static_cast<const std::uint8_t*>(visit->targetBytes) - &self.repaired[0];
    EXPECT_EQ(std::memcmp(&self.image[static_cast<std::size_t>(offset)], visit->targetBytes,
                          visit->targetSize),
              0);
    ++self.texts;
    return 0;
  };
  bkoqWalk(root, layout, visitor, &check);
  EXPECT_GT(check.texts, 10);
  EXPECT_EQ(bkoqSalvageImage(repaired.data() + 1, image.size() - 1, &layout, &root, nullptr,
                             nullptr, nullptr),
            BKOQ_BAD_ARGUMENT);
}

// A text without its end would reach into the records after it, which are made into a tree there.
TEST(Salvage, EndsATextBeforeTheRecordsThatItRunsInto) {
  Bytes image = imageWithItems();
  const auto all = std::string(image.begin(), image.end());
  const std::size_t bravo = all.find("bravo");
  ASSERT_EQ(bravo, 484u);
  std::fill(image.begin() + 489, image.begin() + 492, 'o');
  seal(image);
  const Salvaged result = salvage(image);
  EXPECT_TRUE(has(result.text, "\"bravooo\" ")) << result.text;
  EXPECT_TRUE(has(result.doubts, "cut off: the text runs into what comes here"));
  for (const char* text : {"alpha", "/charlie", "/delta", "/echo", "/foxtrot"}) {
    EXPECT_TRUE(has(result.text, "\"" + std::string(text) + "\"")) << text << result.doubts;
  }
}

// A count that takes a list over all that follows it.
TEST(Salvage, EndsAListBeforeTheRecordsThatItRunsInto) {
  CurrentTree job = currentJob(1);
  BKNODE* node = give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  BKDDISK* disk = give<BKDDISK>(node->ulMediaCount, node->pMedia, 1);
  BKDISKITEM* items = give<BKDISKITEM>(disk->ulDiskItemCount, disk->pDiskItems, 1);
  items->pFileList = texts({"one", "two"});
  items->ulFileCount = 2;
  node = give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
  node->pszNodeName = text("after");
  Bytes image = imageOf(job);
  for (const std::uint32_t count : {3U, 7U, 0x80000000U}) {
    kit::storeWord(&image[32 + 292 + 100 + 52 + 4], count);
    seal(image);
    const Salvaged result = salvage(image);
    EXPECT_TRUE(has(result.text, "\"one\", \"two\"")) << count << result.text << result.doubts;
    EXPECT_TRUE(has(result.text, "\"after\"")) << count << result.text << result.doubts;
  }
}

// Texts that have all lost their ends would each be read up to the end of the last one.
TEST(Salvage, DoesNotReadTheSameBytesWithoutEnd) {
  CurrentTree job = currentJob(1);
  BKNODE* node = give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  BKDDISK* disk = give<BKDDISK>(node->ulMediaCount, node->pMedia, 1);
  BKDISKITEM* items = give<BKDISKITEM>(disk->ulDiskItemCount, disk->pDiskItems, 70);
  for (int i = 0; i < 70; ++i) items[i].pszPath = text("abc");
  Bytes image = imageOf(job);
  for (std::size_t end = image.size() - 5; end > image.size() - 70 * 4; end -= 4) image[end] = 'd';
  seal(image);
  const Salvaged result = salvage(image);
  const auto count = [](const std::string& all, const std::string& part) {
    int found = 0;
    for (std::size_t at = 0; (at = all.find(part, at)) != std::string::npos; ++at) ++found;
    return found;
  };
  // The records take 2,716 bytes of 2,996, and 28 texts of 280, 276, ... bytes what is left of
  // three readings.
  EXPECT_EQ(count(result.text, "\"abc"), 28);
  EXPECT_EQ(count(result.doubts, "not read: too much leads to the same bytes"), 70 - 28);
}

// Every changed byte and every cut: it ends, stays in the image, and shows at least the job.
TEST(Salvage, SurvivesEveryChangedByteAndEveryCut) {
  const Bytes good = imageOf(currentBackup());
  for (std::size_t i = 32; i < good.size(); ++i) {
    for (const int change : {0x01, 0x80, 0xFF}) {
      // A copy of its own size, so that a look beyond the end is noticed.
      Bytes image = good;
      image[i] = static_cast<std::uint8_t>(image[i] ^ change);
      seal(image);
      const Salvaged result = salvage(image);
      ASSERT_EQ(result.status, BKOQ_OK);
      ASSERT_LE(result.salvage.blocks, 200u);
    }
  }
  for (std::size_t size = 33; size < good.size(); ++size) {
    const Salvaged result = salvage(Bytes(good.begin(), good.begin() + static_cast<long>(size)));
    ASSERT_EQ(result.status, BKOQ_OK) << size;
    ASSERT_GT(result.salvage.doubts, 0u);
  }
}

TEST(UseImage, MakesTheTreeInPlace) {
  const CurrentTree job = currentBackup();
  Bytes image = imageOf(job);
  BkoqLayout layout;
  void* root = nullptr;
  ASSERT_EQ(bkoqUseImage(image.data(), image.size(), &layout, &root, nullptr), BKOQ_OK);
  EXPECT_EQ(layout, BKOQ_LAYOUT_CURRENT);
  EXPECT_EQ(root, image.data() + 32);
  EXPECT_EQ(shown(root, layout), shown(job.get(), BKOQ_LAYOUT_CURRENT));
}

TEST(UseImage, LeavesABadImageAsItWas) {
  Bytes image = imageOf(currentBackup());
  kit::storeWord(&image[32 + 260], 4);  // pszHost, the last pointer
  seal(image);
  const Bytes before = image;
  BkoqLayout layout;
  void* root = &layout;
  BkoqImageError error;
  EXPECT_EQ(bkoqUseImage(image.data(), image.size(), &layout, &root, &error), BKOQ_BAD_IMAGE);
  EXPECT_EQ(root, nullptr);
  EXPECT_EQ(error.problem, BKOQ_IMAGE_OUTSIDE);
  EXPECT_EQ(image, before);
  EXPECT_EQ(bkoqUseImage(image.data() + 1, image.size() - 1, &layout, &root, nullptr),
            BKOQ_BAD_ARGUMENT);
}

std::string atFile(const Bytes& good, std::uint32_t offset, bool showSecrets = false) {
  Bytes image = good;
  BkoqLayout layout;
  void* root = nullptr;
  EXPECT_EQ(bkoqUseImage(image.data(), image.size(), &layout, &root, nullptr), BKOQ_OK);
  BkoqPrintOptions options{};
  options.showSecrets = showSecrets ? 1 : 0;
  BkoqImagePlaces places{};
  places.image = image.data();
  std::string text;
  const BkoqStatus status =
      bkoqPrintAtFile(root, layout, offset, &options, &places, appendToString, &text);
  return status == BKOQ_OK ? text : bkoqStatusText(status);
}

TEST(PrintAtFile, SaysWhatLiesAtAByteOfTheImage) {
  const Bytes image = imageOf(currentBackup());
  EXPECT_EQ(atFile(image, 0), "file:0: header, what every image begins with\n");
  EXPECT_EQ(atFile(image, 19), "file:19: header, size of the image in bytes\n");
  EXPECT_EQ(atFile(image, 31), "file:31: header, checksum\n");
  EXPECT_EQ(atFile(image, 36).substr(0, 43), "#1+4: byte 0 of usJobType, BKQJDATATRANSFER");
  EXPECT_EQ(atFile(image, 32 + 292 + 104).substr(0, 47),
            "#2+104: byte 0 of pSourceNodes[1].pszNodeOSVer,");
  EXPECT_EQ(atFile(image, 32 + 292 + 200),
            "#3+0: byte 0 of text 1 of 2 of "
            "pSourceNodes[0].pszNodeOSVer\ntext: \"5.8\"\n"
            "meaning: operating-system version; UNIX: a second "
            "text after it\n");
  EXPECT_EQ(atFile(image, 32 + 292 + 205), "file:529: padding after block #3\n");
  EXPECT_EQ(atFile(image, static_cast<std::uint32_t>(image.size())), "not found");
}

TEST(PrintAtFile, RefusesBadArguments) {
  const CurrentTree job = currentJob(1);
  const BkoqImagePlaces here{job.get(), 0};
  const BkoqImagePlaces nowhere{};
  struct Case {
    const void* root;
    BkoqLayout layout;
    const BkoqImagePlaces* places;
    BkoqSink sink;
  };
  const Case cases[] = {{nullptr, BKOQ_LAYOUT_CURRENT, &here, appendToString},
                        {job.get(), static_cast<BkoqLayout>(2), &here, appendToString},
                        {job.get(), BKOQ_LAYOUT_CURRENT, nullptr, appendToString},
                        {job.get(), BKOQ_LAYOUT_CURRENT, &nowhere, appendToString},
                        {job.get(), BKOQ_LAYOUT_CURRENT, &here, nullptr}};
  for (const Case& each : cases) {
    std::string text;
    EXPECT_EQ(bkoqPrintAtFile(each.root, each.layout, 0, nullptr, each.places, each.sink, &text),
              BKOQ_BAD_ARGUMENT);
    EXPECT_EQ(text, "");
  }
}

TEST(PrintAtFile, DoesNotTellTheLengthOfASecret) {
  const Bytes image = imageOf(currentBackup());
  const auto at =
      static_cast<std::uint32_t>(std::string(image.begin(), image.end()).find("tr0ub4dor"));
  const std::string hidden = atFile(image, at);
  EXPECT_EQ(hidden.substr(0, 5), "#5+0:");
  EXPECT_TRUE(has(hidden, "in or after what is masked"));
  // Neither the NUL, nor the padding, nor any block after it is told from the secret.
  for (const std::uint32_t i : {9, 11, 12, 13, 200, 400}) {
    EXPECT_TRUE(has(atFile(image, at + i), "in or after what is masked")) << i;
  }
  EXPECT_TRUE(has(atFile(image, at + 9, true), "the NUL"));
}

TEST(Annotated, GivesFileOffsetsUpToTheFirstMaskedText) {
  Bytes image = imageOf(currentBackup());
  BkoqLayout layout;
  void* root = nullptr;
  ASSERT_EQ(bkoqUseImage(image.data(), image.size(), &layout, &root, nullptr), BKOQ_OK);
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_ANNOTATED;
  BkoqImagePlaces places{};
  places.image = image.data();
  std::string text;
  EXPECT_EQ(bkoqPrintImage(root, layout, nullptr, &options, &places, appendToString, &text),
            BKOQ_OK);
  EXPECT_TRUE(has(text, "#1  BKQJDATATRANSFER, 292 bytes, file 32\n"));
  EXPECT_TRUE(has(text, "#2  pSourceNodes: 2 BKNODE, 200 bytes, file 324\n"));
  EXPECT_TRUE(has(text, "#5  pSourceNodes[0].pszPassword: 1 text, masked, file 548\n")) << text;
  EXPECT_TRUE(has(text, "pFilters: 5 BKFILTER_FILE, 160 bytes, file ? (--show-secrets)\n"));
  text.clear();
  options.showSecrets = 1;
  EXPECT_EQ(bkoqPrintImage(root, layout, nullptr, &options, &places, appendToString, &text),
            BKOQ_OK);
  EXPECT_FALSE(has(text, "file ?"));
}

}  // namespace
}  // namespace bkoq::test
