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
  std::string places;
};

// What of a tree is pointed to, with block and place: "#3 at 424 pszNodeName alpha".
std::string pointedTo(const std::uint8_t* image, const void* root, BkoqLayout layout) {
  struct Listing {
    const std::uint8_t* image;
    std::string text;
    std::uint32_t count;
  } listing{image, "", 0};
  const BkoqVisitor visitor = [](const BkoqVisit* visit, void* user) {
    auto& self = *static_cast<Listing*>(user);
    if (visit->event != BKOQ_FIELD) return 0;
    const std::string field = visit->field;
    const auto* bytes = static_cast<const std::uint8_t*>(visit->targetBytes);
    if (visit->target != 0) {
      self.text += "#" + std::to_string(visit->target) + " at " +
                   std::to_string(bytes - self.image) + " " + field + " ";
    }
    const bool isArray = visit->kind == BKOQ_FIELD_ARRAY;
    const bool isText = visit->kind == BKOQ_FIELD_TEXT || visit->kind == BKOQ_FIELD_TWO_TEXTS ||
                        visit->kind == BKOQ_FIELD_TEXT_LIST;
    if (visit->target == 0) {
      const bool isCounted = isArray || visit->kind == BKOQ_FIELD_TEXT_LIST;
      if (isCounted && self.count != 0) {
        self.text += field + " null of " + std::to_string(self.count) + "\n";
      }
    } else if (isText) {
      std::string all(bytes, bytes + visit->targetSize);
      std::replace(all.begin(), all.end(), '\0', '|');
      self.text += all + "\n";
    } else {
      self.text += "of " + std::to_string(visit->count) + "\n";
    }
    self.count = visit->kind == BKOQ_FIELD_COUNT ? visit->number : 0;
    return 0;
  };
  bkoqWalk(root, layout, visitor, &listing);
  return listing.text;
}

Salvaged salvage(Bytes image) {
  Salvaged result;
  void* root = nullptr;
  const BkoqDoubtVisitor visitor = [](const BkoqImageError* error, void* user) {
    *static_cast<std::string*>(user) += std::string(error->text) + "\n";
  };
  const std::size_t size = image.size();
  const Bytes start(image.begin(), image.begin() + kit::kSizeAt);
  image.resize(size + BKOQ_SALVAGE_ROOM, 0xA5);
  image.push_back(0xA5);
  result.status = bkoqSalvageImage(image.data(), size, &result.layout, &root, visitor,
                                   &result.doubts, &result.salvage);
  EXPECT_EQ(image.back(), 0xA5);
  // Of the header only the size is changed, to that of the image.
  if (root != nullptr) {
    EXPECT_EQ(Bytes(image.begin(), image.begin() + kit::kSizeAt), start);
    EXPECT_EQ(kit::loadWord(&image[kit::kSizeAt]), size);
    result.places = pointedTo(image.data(), root, result.layout);
  }
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
  EXPECT_EQ(count(result.doubts, "not read: too much leads to the same bytes (byte "), 70 - 28);
  EXPECT_EQ(count(result.doubts, ": expected blocks that take the image once, found more)\n"),
            70 - 28);
  EXPECT_EQ(count(result.text, "pszPath       null"), 70 - 28);
  EXPECT_EQ(result.salvage.blocks, 4u + 28u);
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

// One node with a disk of two items: blocks at 324 (the node), 424 (the disk), 476 (the items), 540
// and 552 (their lists), 556 (the destination) and 656; a fax and an e-mail from 676 on.
Bytes imageWithLists() {
  const CurrentTree job = currentJob(1);
  BKNODE* node = give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  BKDDISK* disk = give<BKDDISK>(node->ulMediaCount, node->pMedia, 1);
  BKDISKITEM* items = give<BKDISKITEM>(disk->ulDiskItemCount, disk->pDiskItems, 2);
  items[0].pFileList = texts({"one", "two", ""});
  items[0].ulFileCount = 3;
  items[1].pFileList = texts({"x"});
  items[1].ulFileCount = 1;
  node = give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
  node->pszNodeName = text("after");
  node->pszPassword = text("secret12");
  job->stFax.pszHostName = text("fax");
  job->stFax.pszUserName = text("user");
  job->stFax.pszUserPW = text("passw0rd");
  job->stFax.pszFaxNumber = text("12345");
  job->stEMail.pszUserPW = text("em41l");
  job->stEMail.pszMHSDir = text("dir");
  return imageOf(job);
}

// Two nodes at 324, the first with two texts in a block at 524 and with two disks at 540, the first
// with two secrets in a block at 644, the second with two filters at 660; texts from 724 on.
Bytes imageWithTwoTexts() {
  const CurrentTree job = currentJob(1);
  BKNODE* node = give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 2);
  node[0].usNodeType = 3;
  node[0].pszNodeName = texts({"ledger", "ab"});
  node[0].pszPassword = text("pw1");
  BKDDISK* disk = give<BKDDISK>(node->ulMediaCount, node->pMedia, 2);
  disk[0].pszDiskPW2 = texts({"ops", "0ps"});
  disk[1].pszDiskName = text("second");
  auto* filters = give<BKFILTER_FILE>(disk[1].ulFilterCount, disk[1].pFilters, 2);
  makePatternFilter(filters[0], 2, "*.tmp");
  makePatternFilter(filters[1], 2, "*.o");
  node[1].pszNodeName = text("n2");
  job->pszOwner = text("own");
  job->pszHost = text("host");
  return imageOf(job);
}

// An array of none and a node at 324, texts at 424 and 432.
Bytes imageWithAnEmptyArray() {
  const CurrentTree job = currentJob(8);
  job->pSourceNodes = zeroed<BKNODE>();
  BKNODE* node = give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
  node->pszNodeName = text("node");
  node->pszNodeAddress = text("address");
  return imageOf(job);
}

// A node without texts at 324; a fax's at 424, 432, 440 (the password), 444 and 452.
Bytes imageWithAFax() {
  const CurrentTree job = currentJob(1);
  give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  job->stFax.pszHostName = text("machine");
  job->stFax.pszUserName = text("user");
  job->stFax.pszUserPW = text("pw");
  job->stFax.pszFaxNumber = text("1234567");
  job->stFax.pszCoverPageFile = text("page");
  return imageOf(job);
}

Bytes imageOfABackup() { return imageOf(currentBackup()); }

struct Damage {
  std::uint32_t position;
  std::uint32_t word;
};

struct DamagedImage {
  const char* what;
  Bytes (*make)();
  std::vector<Damage> damages;
  std::size_t size;  // 0 for all of it
  const char* expected;
};

// The lines of the whole tree that are not left, and those that are left and were not there.
std::string changed(const std::string& whole, const std::string& left) {
  const auto linesWithout = [](const std::string& all, const std::string& others, char mark) {
    std::string lines;
    for (std::size_t at = 0, end; (end = all.find('\n', at)) != std::string::npos; at = end + 1) {
      const std::string line = all.substr(at, end + 1 - at);
      if (("\n" + others).find("\n" + line) == std::string::npos) lines += mark + line;
    }
    return lines;
  };
  return linesWithout(whole, left, '-') + linesWithout(left, whole, '+');
}

// What is doubted, in full, and what of the tree is not left as it was.
TEST(Salvage, SaysExactlyWhatIsDoubtfulAndLeavesExactlyTheRest) {
  const DamagedImage images[] = {
      {"two texts, the second of which runs up to a secret",
       imageWithTwoTexts,
       {{532, 0x41414163U}},
       0,
       R"(cut off: the text runs into what comes here (byte 524, pSourceNodes[0].pszPassword: expected an end before 536, found 540)
13 blocks, doubtful from #3, current
-#3 at 524 pszNodeName ledger|ab|
+#3 at 524 pszNodeName ledger|acA|
)"},
      {"a list that is said to run over the next one into records",
       imageWithLists,
       {{480, 10}},
       0,
       R"(read from the offset, not from where the block should be (byte 516, pSourceNodes[0].pMedia[0].pDiskItems[1].pFileList: expected offset 560, found offset 552)
cut off: the text runs into what comes here (byte 540, pDestNodes: expected an end before 556, found 557)
15 blocks, doubtful from #5, current
-#5 at 540 pFileList one|two||
+#5 at 540 pFileList one|two|||||x|
)"},
      {"an offset into the end of another text",
       imageWithLists,
       {{168, 716}},
       0,
       R"(read from where the block should be, not from its offset (byte 168, stFax.pszUserName: expected offset 680, found offset 716)
15 blocks, doubtful from #11, current
)"},
      {"an offset from nowhere in front of secrets, and one into a secret",
       imageWithTwoTexts,
       {{552, 1}, {576, 648}},
       0,
       R"(read from where the block should be, not from its offset (byte 552, pSourceNodes[0].pMedia[0].pFilters: expected offset 644, found offset 1)
read from the offset, not from where the block should be (byte 576, pSourceNodes[0].pMedia[0].pszDiskPW2: expected offset 644, found offset 648)
not read: it leads into a secret (byte 592, pSourceNodes[0].pMedia[1].pszDiskName: expected offset 660, found offset 652)
13 blocks, doubtful from #6, current
-#6 at 644 pszDiskPW2 ops|0ps|
-#7 at 652 pszDiskName second|
+#6 at 644 pFilters of 0
+#7 at 648 pszDiskPW2 0ps|second|
)"},
      {"an offset to an array of none at the end",
       imageWithItems,
       {{56, 660}},
       0,
       R"(not as many blocks as the header says (byte 24: expected 11 blocks, found 10)
11 blocks, doubtful from #1, current
+#11 at 660 pDestNodes of 0
)"},
      {"an empty text in place of the last",
       imageWithItems,
       {{648, 0}},
       0,
       R"(bytes at the end belong to nothing that was found (byte 652: expected the end of the image, found 8 bytes more)
10 blocks, doubtful from #1, current
-#10 at 648 pszPath /foxtrot|
+#10 at 648 pszPath |
)"},
      {"bytes where only the previous layout has a field",
       imageWithLists,
       {{640, 1}},
       0,
       R"(mislabelled: this is a tree of the previous layout (byte 12: expected 2, found 1)
15 blocks, doubtful from #0, previous
)"},
      {"a text cut before its NUL, and an offset between two blocks",
       imageWithItems,
       {{332, 423}},
       656,
       R"(cut short by 4 bytes (byte 16: expected the image's own 656 bytes, found 660)
read from where the block should be, not from its offset (byte 332, pSourceNodes[0].pszNodeName: expected offset 424, found offset 423)
cut off: what is left of the text is shown (byte 648, pSourceNodes[0].pMedia[0].pDiskItems[3].pszPath: expected 1 texts with their NULs, found the end of the image at 656)
10 blocks, doubtful from #3, current
)"},
      {"an offset back to the text before",
       imageWithLists,
       {{200, 708}},
       0,
       R"(read from where the block should be, not from its offset (byte 200, stEMail.pszMHSDir: expected offset 716, found offset 708)
15 blocks, doubtful from #15, current
)"},
      {"a cut between two records",
       imageWithItems,
       {},
       524,
       R"(cut short by 136 bytes (byte 16: expected the image's own 524 bytes, found 660)
of 4 there is 1 (byte 452, pSourceNodes[0].pMedia[0].pDiskItems: expected 1 BKDISKITEM, found 4)
cut off: nothing of it is left (byte 492, pSourceNodes[0].pMedia[0].pDiskItems[0].pszPath: expected less than 524, found offset 620)
not as many blocks as the header says (byte 24: expected 6 blocks, found 10)
6 blocks, doubtful from #6, current
-#6 at 492 pDiskItems of 4
-#7 at 620 pszPath /charlie|
-#8 at 632 pszPath /delta|
-#9 at 640 pszPath /echo|
-#10 at 648 pszPath /foxtrot|
+#6 at 492 pDiskItems of 1
)"},
      {"an offset into records, which are read as one text",
       imageWithItems,
       {{432, 516}},
       0,
       R"(read from the offset, not from where the block should be (byte 432, pSourceNodes[0].pMedia[0].pszDiskName: expected offset 484, found offset 516)
read from where the block should be, not from its offset (byte 452, pSourceNodes[0].pMedia[0].pDiskItems: expected offset 520, found offset 492)
read from where the block should be, not from its offset (byte 624, pSourceNodes[0].pMedia[0].pDiskItems[3].pFileList: expected offset 648, found offset 1701407858)
cut off: what is left of the text is shown (byte 648, pSourceNodes[0].pMedia[0].pDiskItems[3].pFileList: expected 1634231087 texts with their NULs, found the end of the image at 660)
not as many blocks as the header says (byte 24: expected 7 blocks, found 10)
7 blocks, doubtful from #5, current
-#5 at 484 pszDiskName bravo|
-#6 at 492 pDiskItems of 4
-#7 at 620 pszPath /charlie|
-#8 at 632 pszPath /delta|
-#9 at 640 pszPath /echo|
-#10 at 648 pszPath /foxtrot|
+#5 at 516 pszDiskName |
+#6 at 520 pDiskItems of 4
+pFileList null of 632
+pFileList null of 640
+pFileList null of 648
+#7 at 648 pFileList /foxtrot||||
)"},
      {"an offset to the block of the next field, a secret",
       imageWithLists,
       {{168, 688}},
       0,
       R"(read from where the block should be, not from its offset (byte 168, stFax.pszUserName: expected offset 680, found offset 688)
15 blocks, doubtful from #11, current
)"},
      {"an offset to a text that a later one leads to",
       imageWithLists,
       {{68, 664}},
       0,
       R"(not read: another offset leads to the block that comes here (byte 68, pszComments: expected null, found offset 664)
15 blocks, doubtful from #10, current
)"},
      {"not even a byte of the job",
       imageWithItems,
       {},
       32,
       R"(cut short by 628 bytes (byte 16: expected the image's own 32 bytes, found 660)
0 blocks, doubtful from #0, current
-#2 at 324 pSourceNodes of 1
-#3 at 424 pszNodeName alpha|
-#4 at 432 pMedia of 1
-#5 at 484 pszDiskName bravo|
-#6 at 492 pDiskItems of 4
-#7 at 620 pszPath /charlie|
-#8 at 632 pszPath /delta|
-#9 at 640 pszPath /echo|
-#10 at 648 pszPath /foxtrot|
)"},
      {"an offset far back, after which each field takes the text of the next",
       imageWithTwoTexts,
       {{292, 748}, {628, 524}},
       0,
       R"(read from where the block should be, not from its offset (byte 628, pSourceNodes[0].pMedia[1].pszDiskPW2: expected offset 736, found offset 524)
read from where the block should be, not from its offset (byte 432, pSourceNodes[1].pszNodeName: expected offset 740, found offset 736)
read from where the block should be, not from its offset (byte 60, pszOwner: expected offset 744, found offset 740)
read from where the block should be, not from its offset (byte 292, pszHost: expected offset 752, found offset 748)
cut off: nothing of it is left (byte 292, pszHost: expected less than 752, found offset 748)
13 blocks, doubtful from #11, current
-#11 at 736 pszNodeName n2|
-#12 at 740 pszOwner own|
-#13 at 744 pszHost host|
+#11 at 736 pszDiskPW2 n2||
+#12 at 740 pszNodeName own|
+#13 at 744 pszOwner host|
)"},
      {"a cut in the last field of the job",
       imageWithTwoTexts,
       {},
       296,
       R"(cut short by 456 bytes (byte 16: expected the image's own 296 bytes, found 752)
cut off: zeros are shown for what is missing (byte 32: expected 292 bytes, found 264 bytes)
cut off: nothing of it is left (byte 48, pSourceNodes: expected less than 296, found offset 324)
cut off: nothing of it is left (byte 60, pszOwner: expected less than 296, found offset 740)
cut off: nothing of it is left (byte 292, pszHost: expected less than 296, found offset 744)
not as many blocks as the header says (byte 24: expected 1 blocks, found 13)
1 blocks, doubtful from #1, current
-#2 at 324 pSourceNodes of 2
-#3 at 524 pszNodeName ledger|ab|
-#4 at 536 pszPassword pw1|
-#5 at 540 pMedia of 2
-#6 at 644 pszDiskPW2 ops|0ps|
-#7 at 652 pszDiskName second|
-#8 at 660 pFilters of 2
-#9 at 724 pszFilter *.tmp|
-#10 at 732 pszFilter *.o|
-#11 at 736 pszNodeName n2|
-#12 at 740 pszOwner own|
-#13 at 744 pszHost host|
+pSourceNodes null of 2
)"},
      {"an unknown kind of job",
       imageWithItems,
       {{36, 99}},
       0,
       R"(not read, since the kind of the job is not known (byte 364, pSourceNodes[0].pMedia: expected null, found offset 432)
bytes at the end belong to nothing that was found (byte 432: expected the end of the image, found 228 bytes more)
not as many blocks as the header says (byte 24: expected 3 blocks, found 10)
3 blocks, doubtful from #4, current
-#4 at 432 pMedia of 1
-#5 at 484 pszDiskName bravo|
-#6 at 492 pDiskItems of 4
-#7 at 620 pszPath /charlie|
-#8 at 632 pszPath /delta|
-#9 at 640 pszPath /echo|
-#10 at 648 pszPath /foxtrot|
)"},
      {"an offset to the array before it, and one to the end",
       imageWithLists,
       {{200, 720}, {428, 424}},
       0,
       R"(not read: another offset leads to the block that comes here (byte 428, pSourceNodes[0].pMedia[0].pszPassword: expected null, found offset 424)
read from where the block should be, not from its offset (byte 200, stEMail.pszMHSDir: expected offset 716, found offset 720)
15 blocks, doubtful from #4, current
)"},
      {"a cut in a record",
       imageWithItems,
       {},
       495,
       R"(cut short by 165 bytes (byte 16: expected the image's own 495 bytes, found 660)
of 4 there is 1 (byte 452, pSourceNodes[0].pMedia[0].pDiskItems: expected 1 BKDISKITEM, found 4)
cut off: zeros are shown for what is missing (byte 492, pSourceNodes[0].pMedia[0].pDiskItems: expected 32 bytes, found 3 bytes)
not as many blocks as the header says (byte 24: expected 6 blocks, found 10)
6 blocks, doubtful from #6, current
-#6 at 492 pDiskItems of 4
-#7 at 620 pszPath /charlie|
-#8 at 632 pszPath /delta|
-#9 at 640 pszPath /echo|
-#10 at 648 pszPath /foxtrot|
+#6 at 492 pDiskItems of 1
)"},
      {"no count",
       imageWithLists,
       {{360, 0}},
       0,
       R"(of 0 there is 1 (byte 364, pSourceNodes[0].pMedia: expected 1 BKDDISK, found 0)
15 blocks, doubtful from #3, current
)"},
      {"the first offset and the next back into the job",
       imageWithItems,
       {{48, 268}, {328, 268}},
       0,
       R"(read from where the block should be, not from its offset (byte 48, pSourceNodes: expected offset 324, found offset 268)
not read: another offset leads to the block that comes here (byte 328, pSourceNodes[0].pszNodeOSVer: expected null, found offset 268)
10 blocks, doubtful from #2, current
)"},
      {"an offset one word too early",
       imageWithTwoTexts,
       {{604, 656}},
       0,
       R"(read from where the block should be, not from its offset (byte 604, pSourceNodes[0].pMedia[1].pFilters: expected offset 660, found offset 656)
13 blocks, doubtful from #8, current
)"},
      {"a cut in a list",
       imageWithLists,
       {},
       541,
       R"(cut short by 179 bytes (byte 16: expected the image's own 541 bytes, found 720)
cut off: what is left of the text is shown (byte 540, pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList: expected 3 texts with their NULs, found the end of the image at 541)
cut off: nothing of it is left (byte 516, pSourceNodes[0].pMedia[0].pDiskItems[1].pFileList: expected less than 541, found offset 552)
cut off: nothing of it is left (byte 56, pDestNodes: expected less than 541, found offset 556)
cut off: nothing of it is left (byte 164, stFax.pszHostName: expected less than 541, found offset 676)
cut off: nothing of it is left (byte 168, stFax.pszUserName: expected less than 541, found offset 680)
cut off: nothing of it is left (byte 172, stFax.pszUserPW: expected less than 541, found offset 688)
cut off: nothing of it is left (byte 176, stFax.pszFaxNumber: expected less than 541, found offset 700)
cut off: nothing of it is left (byte 196, stEMail.pszUserPW: expected less than 541, found offset 708)
cut off: nothing of it is left (byte 200, stEMail.pszMHSDir: expected less than 541, found offset 716)
not as many blocks as the header says (byte 24: expected 5 blocks, found 15)
5 blocks, doubtful from #5, current
-#5 at 540 pFileList one|two||
-#6 at 552 pFileList x|
-#7 at 556 pDestNodes of 1
-#8 at 656 pszNodeName after|
-#9 at 664 pszPassword secret12|
-#10 at 676 pszHostName fax|
-#11 at 680 pszUserName user|
-#12 at 688 pszUserPW passw0rd|
-#13 at 700 pszFaxNumber 12345|
-#14 at 708 pszUserPW em41l|
-#15 at 716 pszMHSDir dir|
+#5 at 540 pFileList o|
+pFileList null of 1
+pDestNodes null of 1
)"},
      {"offsets beyond a cut in padding, and a changed text",
       imageWithItems,
       {{332, 660}, {644, 115}},
       657,
       R"(cut short by 3 bytes (byte 16: expected the image's own 657 bytes, found 660)
read from where the block should be, not from its offset (byte 332, pSourceNodes[0].pszNodeName: expected offset 424, found offset 660)
10 blocks, doubtful from #3, current
-#9 at 640 pszPath /echo|
+#9 at 640 pszPath /echs|
)"},
      {"an offset to beyond the end, so that the block is taken from the next one",
       imageWithLists,
       {{64, 720}},
       0,
       R"(read from where the block should be, not from its offset (byte 64, pszReportFile: expected offset 676, found offset 720)
not read: another offset leads to the block that comes here (byte 164, stFax.pszHostName: expected null, found offset 676)
15 blocks, doubtful from #10, current
-#10 at 676 pszHostName fax|
+#10 at 676 pszReportFile fax|
)"},
      {"offsets beyond a cut right after a text",
       imageWithItems,
       {{280, 64}, {556, 644}},
       644,
       R"(cut short by 16 bytes (byte 16: expected the image's own 644 bytes, found 660)
read from the offset, not from where the block should be (byte 556, pSourceNodes[0].pMedia[0].pDiskItems[2].pszPath: expected offset 640, found offset 644)
cut off: nothing of it is left (byte 556, pSourceNodes[0].pMedia[0].pDiskItems[2].pszPath: expected less than 644, found offset 644)
read from the offset, not from where the block should be (byte 588, pSourceNodes[0].pMedia[0].pDiskItems[3].pszPath: expected offset 640, found offset 648)
cut off: nothing of it is left (byte 588, pSourceNodes[0].pMedia[0].pDiskItems[3].pszPath: expected less than 644, found offset 648)
bytes at the end belong to nothing that was found (byte 640: expected the end of the image, found 4 bytes more)
not as many blocks as the header says (byte 24: expected 8 blocks, found 10)
8 blocks, doubtful from #9, current
-#9 at 640 pszPath /echo|
-#10 at 648 pszPath /foxtrot|
)"},
      {"a cut right after the job",
       imageWithItems,
       {},
       324,
       R"(cut short by 336 bytes (byte 16: expected the image's own 324 bytes, found 660)
cut off: nothing of it is left (byte 48, pSourceNodes: expected less than 324, found offset 324)
not as many blocks as the header says (byte 24: expected 1 blocks, found 10)
1 blocks, doubtful from #2, current
-#2 at 324 pSourceNodes of 1
-#3 at 424 pszNodeName alpha|
-#4 at 432 pMedia of 1
-#5 at 484 pszDiskName bravo|
-#6 at 492 pDiskItems of 4
-#7 at 620 pszPath /charlie|
-#8 at 632 pszPath /delta|
-#9 at 640 pszPath /echo|
-#10 at 648 pszPath /foxtrot|
+pSourceNodes null of 1
)"},
      {"a wrong offset, and a text that became empty with bytes behind it",
       imageWithTwoTexts,
       {{48, 328}, {652, 0x80000000U}},
       0,
       R"(read from where the block should be, not from its offset (byte 48, pSourceNodes: expected offset 324, found offset 328)
bytes after the block were changed (byte 655, pSourceNodes[0].pMedia[1].pszDiskName: expected zero, found 0x80)
read from the offset, not from where the block should be (byte 604, pSourceNodes[0].pMedia[1].pFilters: expected offset 656, found offset 660)
13 blocks, doubtful from #2, current
-#7 at 652 pszDiskName second|
+#7 at 652 pszDiskName |
)"},
      {"an offset back to the text before",
       imageWithAnEmptyArray,
       {{336, 424}},
       0,
       R"(read from where the block should be, not from its offset (byte 336, pDestNodes[0].pszNodeAddress: expected offset 432, found offset 424)
5 blocks, doubtful from #5, current
)"},
      {"a cut after a record whose reserved bytes look like offsets",
       imageWithAnEmptyArray,
       {{384, 424}, {416, 4}},
       424,
       R"(cut short by 16 bytes (byte 16: expected the image's own 424 bytes, found 440)
cut off: nothing of it is left (byte 332, pDestNodes[0].pszNodeName: expected less than 424, found offset 424)
not read: another offset leads to the block that comes here (byte 336, pDestNodes[0].pszNodeAddress: expected null, found offset 432)
not as many blocks as the header says (byte 24: expected 3 blocks, found 5)
3 blocks, doubtful from #4, current
-#4 at 424 pszNodeName node|
-#5 at 432 pszNodeAddress address|
)"},
      {"another layout, and an offset",
       imageOfABackup,
       {{12, 2}, {48, 332}},
       0,
       R"(read from where the block should be, not from its offset (byte 48, pSourceNodes: expected offset 324, found offset 332)
read from the offset, not from where the block should be (byte 432, pSourceNodes[1].pszNodeName: expected offset 872, found offset 884)
read from the offset, not from where the block should be (byte 60, pszOwner: expected offset 1132, found offset 1208)
not as many blocks as the header says (byte 24: expected 25 blocks, found 29)
25 blocks, doubtful from #2, previous
-#15 at 872 pszNodeDomain accounting|
-#16 at 884 pszNodeName payroll|
-#17 at 892 pDestNodes of 1
-#18 at 992 pszNodeName library1|
-#19 at 1004 pMedia of 1
-#20 at 1076 pszTapeName NIGHT-01|
-#21 at 1088 pTapeItems of 1
-#22 at 1120 pszFileOrDir /etc/passwd|
-#23 at 1132 pTapeX of 1
-#24 at 1196 pszDBUser sa|
-#25 at 1200 pszDBPW syb4se|
-#26 at 1208 pszOwner operator|
-#27 at 1220 pszHostName faxhost|
-#28 at 1228 pszUserPW f4x|
-#29 at 1232 pszSetName NIGHTSET|
+#15 at 884 pszNodeName payroll|
+#16 at 892 pDestNodes of 1
+#17 at 992 pszNodeName library1|
+#18 at 1004 pMedia of 1
+#19 at 1076 pszTapeName NIGHT-01|
+#20 at 1088 pTapeItems of 1
+#21 at 1120 pszFileOrDir /etc/passwd|
+#22 at 1208 pszOwner operator|
+#23 at 1220 pszHostName faxhost|
+#24 at 1228 pszUserPW f4x|
+#25 at 1232 pszSetName NIGHTSET|
)"},
      {"an offset back to the text of a record",
       imageWithLists,
       {{168, 656}},
       0,
       R"(read from where the block should be, not from its offset (byte 168, stFax.pszUserName: expected offset 680, found offset 656)
15 blocks, doubtful from #11, current
)"},
      {"a count that would take the texts for records",
       imageWithItems,
       {{44, 7}},
       0,
       R"(of 7 there is 1 (byte 48, pSourceNodes: expected 1 BKNODE, found 7)
10 blocks, doubtful from #2, current
)"},
      {"a cut right after a record, whose offset leads into it",
       imageWithItems,
       {{48, 388}},
       424,
       R"(cut short by 236 bytes (byte 16: expected the image's own 424 bytes, found 660)
read from where the block should be, not from its offset (byte 48, pSourceNodes: expected offset 324, found offset 388)
cut off: nothing of it is left (byte 332, pSourceNodes[0].pszNodeName: expected less than 424, found offset 424)
cut off: nothing of it is left (byte 364, pSourceNodes[0].pMedia: expected less than 424, found offset 432)
not as many blocks as the header says (byte 24: expected 2 blocks, found 10)
2 blocks, doubtful from #2, current
-#3 at 424 pszNodeName alpha|
-#4 at 432 pMedia of 1
-#5 at 484 pszDiskName bravo|
-#6 at 492 pDiskItems of 4
-#7 at 620 pszPath /charlie|
-#8 at 632 pszPath /delta|
-#9 at 640 pszPath /echo|
-#10 at 648 pszPath /foxtrot|
+pMedia null of 1
)"},
      {"no count, and an offset into the record",
       imageWithItems,
       {{44, 0}, {48, 388}},
       0,
       R"(read from where the block should be, not from its offset (byte 48, pSourceNodes: expected offset 324, found offset 388)
of 0 there is 1 (byte 48, pSourceNodes: expected 1 BKNODE, found 0)
10 blocks, doubtful from #2, current
)"},
      {"an offset of nothing below what is said to be the size",
       imageWithAFax,
       {{48, 0xFFFFFF9CU}, {16, 0xFFFFFFFFU}},
       0,
       R"(cut short by 4,294,966,835 bytes (byte 16: expected the image's own 460 bytes, found 4294967295)
read from the offset, not from where the block should be (byte 48, pSourceNodes: expected offset 324, found offset 4294967196)
cut off: nothing of it is left (byte 48, pSourceNodes: expected less than 460, found offset 4294967196)
read from the offset, not from where the block should be (byte 164, stFax.pszHostName: expected offset 324, found offset 424)
not as many blocks as the header says (byte 24: expected 6 blocks, found 7)
6 blocks, doubtful from #2, current
-#2 at 324 pSourceNodes of 1
-#3 at 424 pszHostName machine|
-#4 at 432 pszUserName user|
-#5 at 440 pszUserPW pw|
-#6 at 444 pszFaxNumber 1234567|
-#7 at 452 pszCoverPageFile page|
+pSourceNodes null of 1
+#2 at 424 pszHostName machine|
+#3 at 432 pszUserName user|
+#4 at 440 pszUserPW pw|
+#5 at 444 pszFaxNumber 1234567|
+#6 at 452 pszCoverPageFile page|
)"},
      {"an offset right after a secret as wrong as one before it",
       imageWithAFax,
       {{168, 440}, {436, 0x6F6F6F6FU}, {176, 452}, {180, 0}},
       0,
       R"(read from where the block should be, not from its offset (byte 168, stFax.pszUserName: expected offset 432, found offset 440)
cut off: the text runs into what comes here (byte 432, stFax.pszUserPW: expected an end before 440, found 443)
read from the offset, not from where the block should be (byte 176, stFax.pszFaxNumber: expected offset 444, found offset 452)
not as many blocks as the header says (byte 24: expected 6 blocks, found 7)
6 blocks, doubtful from #4, current
-#4 at 432 pszUserName user|
-#6 at 444 pszFaxNumber 1234567|
-#7 at 452 pszCoverPageFile page|
+#4 at 432 pszUserName userooo|
+#6 at 452 pszFaxNumber page|
)"},
      {"a list of empty texts without its end",
       imageWithLists,
       {{480, 99}, {512, 0}, {516, 0}, {552, 0}},
       0,
       R"(read from the offset, not from where the block should be (byte 56, pDestNodes: expected offset 652, found offset 556)
cut off: the text runs into what comes here (byte 540, pDestNodes: expected an end before 556, found 649)
not as many blocks as the header says (byte 24: expected 14 blocks, found 15)
14 blocks, doubtful from #5, current
-#5 at 540 pFileList one|two||
-#6 at 552 pFileList x|
-#7 at 556 pDestNodes of 1
-#8 at 656 pszNodeName after|
-#9 at 664 pszPassword secret12|
-#10 at 676 pszHostName fax|
-#11 at 680 pszUserName user|
-#12 at 688 pszUserPW passw0rd|
-#13 at 700 pszFaxNumber 12345|
-#14 at 708 pszUserPW em41l|
-#15 at 716 pszMHSDir dir|
+#5 at 540 pFileList one|two||||||
+#6 at 556 pDestNodes of 1
+#7 at 656 pszNodeName after|
+#8 at 664 pszPassword secret12|
+#9 at 676 pszHostName fax|
+#10 at 680 pszUserName user|
+#11 at 688 pszUserPW passw0rd|
+#12 at 700 pszFaxNumber 12345|
+#13 at 708 pszUserPW em41l|
+#14 at 716 pszMHSDir dir|
)"},
      {"a list that is said to be longer than its block",
       imageWithLists,
       {{512, 7}, {552, 0x620061U}},
       0,
       R"(read from the offset, not from where the block should be (byte 56, pDestNodes: expected offset 564, found offset 556)
cut off: the text runs into what comes here (byte 552, pDestNodes: expected an end before 556, found 561)
15 blocks, doubtful from #6, current
-#6 at 552 pFileList x|
+#6 at 552 pFileList a|b|
)"},
      {"a list that is said to run over two arrays",
       imageWithLists,
       {{512, 105}, {584, 676}},
       0,
       R"(read from the offset, not from where the block should be (byte 56, pDestNodes: expected offset 680, found offset 556)
cut off: the text runs into what comes here (byte 552, pDestNodes: expected an end before 556, found 680)
not as many blocks as the header says (byte 24: expected 16 blocks, found 15)
16 blocks, doubtful from #6, current
-#10 at 676 pszHostName fax|
-#11 at 680 pszUserName user|
-#12 at 688 pszUserPW passw0rd|
-#13 at 700 pszFaxNumber 12345|
-#14 at 708 pszUserPW em41l|
-#15 at 716 pszMHSDir dir|
+#10 at 676 pFilters of 0
+#11 at 676 pszHostName fax|
+#12 at 680 pszUserName user|
+#13 at 688 pszUserPW passw0rd|
+#14 at 700 pszFaxNumber 12345|
+#15 at 708 pszUserPW em41l|
+#16 at 716 pszMHSDir dir|
)"},
  };
  for (const DamagedImage& each : images) {
    Bytes image = each.make();
    for (const Damage& damage : each.damages) kit::storeWord(&image[damage.position], damage.word);
    if (each.size != 0) image.resize(each.size);
    seal(image);
    const Salvaged result = salvage(image);
    const BkoqSalvage& told = result.salvage;
    const char* layout = result.layout == BKOQ_LAYOUT_CURRENT ? "current" : "previous";
    EXPECT_EQ(result.doubts + std::to_string(told.blocks) + " blocks, doubtful from #" +
                  std::to_string(told.doubtfulFrom) + ", " + layout + "\n" +
                  changed(salvage(each.make()).places, result.places),
              each.expected)
        << each.what;
  }
}

// There is nothing of the job, so there is nothing to doubt.
TEST(Salvage, ReadsNothingOfAHeaderAlone) {
  Bytes image = imageWithItems();
  image.resize(32);
  kit::storeWord(&image[kit::kSizeAt], 32);
  seal(image);
  const Salvaged result = salvage(image);
  EXPECT_EQ(result.status, BKOQ_BAD_IMAGE);
  EXPECT_EQ(result.doubts, "");
  EXPECT_EQ(result.salvage.blocks, 0u);
}

TEST(Salvage, RefusesBadArguments) {
  Bytes image = imageWithItems();
  const std::size_t size = image.size();
  image.resize(size + BKOQ_SALVAGE_ROOM);
  const Bytes before = image;
  BkoqLayout layout;
  void* root = &layout;
  BkoqSalvage told{1, 1, 1};
  EXPECT_EQ(bkoqSalvageImage(nullptr, size, &layout, &root, nullptr, nullptr, &told),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(root, nullptr);
  EXPECT_EQ(told.blocks + told.doubts + told.doubtfulFrom, 0u);
  EXPECT_EQ(bkoqSalvageImage(image.data(), size, nullptr, &root, nullptr, nullptr, nullptr),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqSalvageImage(image.data(), size, &layout, nullptr, nullptr, nullptr, nullptr),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(image, before);
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
