#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "kit/test_trees.h"

namespace bkoq::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes written(const void* root, BkoqLayout layout) {
  std::string image;
  BkoqImageError error;
  EXPECT_EQ(bkoqWriteImage(root, layout, appendToString, &image, &error), BKOQ_OK) << error.text;
  return Bytes(image.begin(), image.end());
}

void putWord(Bytes& image, std::size_t at, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) image.at(at + i) = static_cast<std::uint8_t>(value >> (8 * i));
}

std::uint32_t wordAt(const Bytes& image, std::size_t at) {
  std::uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = value << 8 | image.at(at + i);
  return value;
}

// Bit by bit, apart from the kit's own.
std::uint32_t crc32Of(const Bytes& bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    crc ^= byte;
    for (int i = 0; i < 8; ++i) crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320u : crc >> 1;
  }
  return ~crc;
}

void seal(Bytes& image) {
  if (image.size() < 32) return;
  putWord(image, 28, 0);
  putWord(image, 28, crc32Of(image));
}

// What came of reading an image: also of a bad one there is a tree, as far as it went.
struct Reading {
  ~Reading() { bkoqFree(root, layout, nullptr); }

  BkoqStatus status = BKOQ_OK;
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  void* root = nullptr;
  BkoqImageError error{};
};

void read(const Bytes& image, Reading& reading) {
  // A block of exactly this size, so that AddressSanitizer sees a step outside.
  const std::unique_ptr<std::uint8_t[]> exact(new std::uint8_t[image.size()]);
  std::memcpy(exact.get(), image.data(), image.size());
  reading.status =
      bkoqReadImage(exact.get(), image.size(), &reading.layout, &reading.root, &reading.error);
}

std::uint32_t differences(const void* first, BkoqLayout firstLayout, const void* second,
                          BkoqLayout secondLayout) {
  std::uint32_t count = 0;
  EXPECT_EQ(bkoqCompare(first, firstLayout, second, secondLayout, 1, nullptr, nullptr, &count),
            BKOQ_OK);
  return count;
}

// A job with a node, a filter, a disk, an item and its files. Its image, block by block:
//    0 header          32 job            324 node           424 "5.8", ""     432 filter
//  464 "*.tmp"        472 disk           524 "/home"        532 item          564 "/home"
//  572 "a", "bc"      580 "operator"     592 end
CurrentTree smallBackup() {
  CurrentTree job = currentJob(1);
  job->pszOwner = text("operator");
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  node.usNodeType = 3;
  node.pszNodeOSVer = texts({"5.8", ""});
  makePatternFilter(*give<BKFILTER_FILE>(node.ulFilterCount, node.pFilters, 1), 2, "*.tmp");
  auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  disk.pszDiskName = text("/home");
  auto& item = *give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, 1);
  item.pszPath = text("/home");
  item.ulFileCount = 2;
  item.pFileList = texts({"a", "bc"});
  return job;
}

TEST(Image, HasAHeaderAndItsBlocksInOrder) {
  const CurrentTree job = smallBackup();
  const Bytes image = written(job.get(), BKOQ_LAYOUT_CURRENT);
  ASSERT_EQ(image.size(), 592u);
  EXPECT_EQ(std::string(image.begin(), image.begin() + 8), "BKQIMAGE");
  struct Case {
    const char* what;
    std::size_t at;
    std::uint32_t value;
  };
  const Case cases[] = {
      {"version", 8, 1},
      {"layout", 12, 1},
      {"size", 16, 592},
      {"root", 20, 32},
      {"blocks", 24, 11},
      {"pSourceNodes", 32 + 16, 324},
      {"pDestNodes", 32 + 24, 0},
      {"pszNodeOSVer", 324 + 4, 424},
      {"pFilters", 324 + 28, 432},
      {"pszFilter", 432 + 8, 464},
      {"pMedia", 324 + 40, 472},
      {"pszDiskName", 472 + 0, 524},
      {"pDiskItems", 472 + 20, 532},
      {"pszPath", 532 + 0, 564},
      {"pFileList", 532 + 8, 572},
      {"pszOwner", 32 + 28, 580},
  };
  for (const Case& each : cases) EXPECT_EQ(wordAt(image, each.at), each.value) << each.what;
  EXPECT_EQ(std::string(image.begin() + 572, image.begin() + 592),
            std::string("a\0bc\0\0\0\0operator\0\0\0\0", 20));
  Bytes unsealed = image;
  putWord(unsealed, 28, 0);
  EXPECT_EQ(wordAt(image, 28), crc32Of(unsealed));
}

// The example in docs/image-format.md.
TEST(Image, IsWhatThePageShows) {
  const CurrentTree job = currentJob(29);
  job->pszOwner = text("op");
  Bytes example(328);
  std::memcpy(example.data(), "BKQIMAGE", 8);
  putWord(example, 8, 1);
  putWord(example, 12, 1);
  putWord(example, 16, 0x148);
  putWord(example, 20, 0x20);
  putWord(example, 24, 2);
  putWord(example, 28, 0x6e3671e7);
  example[36] = 0x1d;
  putWord(example, 60, 0x144);
  example[324] = 'o';
  example[325] = 'p';
  EXPECT_EQ(written(job.get(), BKOQ_LAYOUT_CURRENT), example);
}

TEST(Image, GivesBackTheSameTree) {
  const CurrentTree current = currentBackup();
  const PreviousTree previous = previousBackup();
  const CurrentTree plain = currentJob(29);
  struct Case {
    const void* root;
    BkoqLayout layout;
  };
  const Case cases[] = {{current.get(), BKOQ_LAYOUT_CURRENT},
                        {previous.get(), BKOQ_LAYOUT_PREVIOUS},
                        {plain.get(), BKOQ_LAYOUT_CURRENT}};
  for (const Case& each : cases) {
    const Bytes image = written(each.root, each.layout);
    Reading reading;
    read(image, reading);
    EXPECT_EQ(reading.status, BKOQ_OK) << reading.error.text;
    EXPECT_EQ(reading.layout, each.layout);
    EXPECT_EQ(differences(each.root, each.layout, reading.root, reading.layout), 0u);
    EXPECT_EQ(written(reading.root, reading.layout), image);
  }
}

TEST(Image, KeepsWhatAFailedConversionLeft) {
  const CurrentTree job = currentJob(1);
  job->ulNumDestNodes = 1;
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 2);
  node.ulFilterCount = 3;
  job->abReserved264[5] = 7;
  Reading reading;
  read(written(job.get(), BKOQ_LAYOUT_CURRENT), reading);
  EXPECT_EQ(reading.status, BKOQ_OK) << reading.error.text;
  EXPECT_EQ(differences(job.get(), BKOQ_LAYOUT_CURRENT, reading.root, reading.layout), 0u);
}

TEST(Image, KeepsAnArrayAndAListWithoutElements) {
  const CurrentTree job = currentJob(1);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  auto& item = *give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, 1);
  item.pFileList = static_cast<char*>(std::malloc(1));
  job->pDestNodes = zeroed<BKNODE>();
  Reading reading;
  read(written(job.get(), BKOQ_LAYOUT_CURRENT), reading);
  EXPECT_EQ(reading.status, BKOQ_OK) << reading.error.text;
  EXPECT_NE(static_cast<BKQJDATATRANSFER*>(reading.root)->pDestNodes, nullptr);
  EXPECT_EQ(differences(job.get(), BKOQ_LAYOUT_CURRENT, reading.root, reading.layout), 0u);
}

TEST(Image, CannotBeMadeOfWhatCannotBeTold) {
  const CurrentTree job = currentJob(99);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  int somewhere = 0;
  node.pMedia = &somewhere;
  std::string image;
  BkoqImageError error;
  EXPECT_EQ(bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, appendToString, &image, &error),
            BKOQ_BAD_TREE);
  EXPECT_EQ(error.problem, BKOQ_IMAGE_UNKNOWN_MEDIA);
  EXPECT_STREQ(error.text,
               "a node holds something, but the kind of the job is not known (byte 364, "
               "pSourceNodes[0].pMedia: expected null in a job of unknown kind, found a pointer)");
  EXPECT_EQ(image, "");
}

// The bytes that are changed in the good image of smallBackup(). The checksum is made good again
// unless it is what is wrong.
struct Change {
  std::size_t at;
  Bytes bytes;
};

struct BadImage {
  const char* what;
  std::vector<Change> changes;
  std::size_t size;  // cut or lengthened with zeros to this
  BkoqImageProblem problem;
  const char* path;
  std::uint32_t position;
  const char* expected;
  const char* found;
  std::uint32_t blocksRead;  // of the tree that is given back
};

const BadImage kBadImages[] = {
    {"not even a header",
     {},
     31,
     BKOQ_IMAGE_SHORT,
     "",
     0,
     "the 32 bytes of the header",
     "31 bytes",
     0},
    {"nothing at all", {}, 0, BKOQ_IMAGE_SHORT, "", 0, "the 32 bytes of the header", "0 bytes", 0},
    {"another magic",
     {{0, {'b'}}},
     592,
     BKOQ_IMAGE_MAGIC,
     "",
     0,
     "\"BKQIMAGE\"",
     "62 4b 51 49 4d 41 47 45",
     0},
    {"a later version", {{8, {2}}}, 592, BKOQ_IMAGE_VERSION, "", 8, "version 1", "version 2", 0},
    {"no layout",
     {{12, {0}}},
     592,
     BKOQ_IMAGE_LAYOUT,
     "",
     12,
     "1 (current) or 2 (previous)",
     "0",
     0},
    {"a third layout",
     {{12, {3}}},
     592,
     BKOQ_IMAGE_LAYOUT,
     "",
     12,
     "1 (current) or 2 (previous)",
     "3",
     0},
    {"the end cut off", {}, 588, BKOQ_IMAGE_SIZE, "", 16, "the image's own 588 bytes", "592", 0},
    {"an odd size", {{16, {81, 2}}}, 593, BKOQ_IMAGE_SIZE, "", 16, "a multiple of 4", "593", 0},
    {"a byte that was not written",
     {{588, {'s'}}},
     592,
     BKOQ_IMAGE_CHECKSUM,
     "",
     28,
     nullptr,
     nullptr,
     0},
    {"the root elsewhere", {{20, {36}}}, 592, BKOQ_IMAGE_ROOT, "", 20, "offset 32", "offset 36", 0},
    {"no room for the root",
     {{16, {0x40, 1}}},
     320,
     BKOQ_IMAGE_COUNT,
     "",
     32,
     "the 292 bytes of a job record",
     "288 bytes",
     0},
    {"an offset into the header",
     {{48, {4, 0}}},
     592,
     BKOQ_IMAGE_OUTSIDE,
     "pSourceNodes",
     48,
     "an offset from 32 to 592",
     "offset 4",
     1},
    {"an offset after the end",
     {{60, {0, 0, 0, 0x80}}},
     592,
     BKOQ_IMAGE_OUTSIDE,
     "pszOwner",
     60,
     "an offset from 32 to 592",
     "offset 2147483648",
     10},
    {"an offset between two words",
     {{48, {0x46, 1}}},
     592,
     BKOQ_IMAGE_UNALIGNED,
     "pSourceNodes",
     48,
     "a multiple of 4",
     "offset 326",
     1},
    {"a block over the one before it",
     {{352, {0xA8, 1}}},
     592,
     BKOQ_IMAGE_OVERLAP,
     "pSourceNodes[0].pFilters",
     352,
     "offset 432",
     "offset 424",
     3},
    {"a node that holds itself",
     {{364, {0x44, 1}}},
     592,
     BKOQ_IMAGE_OVERLAP,
     "pSourceNodes[0].pMedia",
     364,
     "offset 472",
     "offset 324",
     5},
    {"two owners of one block",
     {{64, {0x44, 2}}},
     592,
     BKOQ_IMAGE_OVERLAP,
     "pszReportFile",
     64,
     "offset 592",
     "offset 580",
     11},
    {"a gap between two blocks",
     {{352, {0xB4, 1}}},
     592,
     BKOQ_IMAGE_GAP,
     "pSourceNodes[0].pFilters",
     352,
     "offset 432",
     "offset 436",
     3},
    {"a text that ends after the end",
     {{588, {'x', 'x', 'x', 'x'}}},
     592,
     BKOQ_IMAGE_UNTERMINATED,
     "pszOwner",
     580,
     "the NUL of text 1 of 1",
     "the end of the image at 592",
     10},
    {"more nodes than there is room for",
     {{44, {3}}},
     592,
     BKOQ_IMAGE_COUNT,
     "pSourceNodes",
     48,
     "at most 2 BKNODE",
     "3",
     1},
    {"a count whose bytes are few modulo 2^32",
     {{44, {0, 0, 0, 0x40}}},
     592,
     BKOQ_IMAGE_COUNT,
     "pSourceNodes",
     48,
     "at most 2 BKNODE",
     "1073741824",
     1},
    {"more files than texts",
     {{536, {0xFF, 0xFF, 0xFF, 0xFF}}},
     592,
     BKOQ_IMAGE_UNTERMINATED,
     "pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList",
     592,
     "the NUL of text 10 of 4294967295",
     "the end of the image at 592",
     9},
    {"something between two blocks",
     {{429, {1}}},
     592,
     BKOQ_IMAGE_PADDING,
     "pSourceNodes[0].pszNodeOSVer",
     429,
     "zero between two blocks",
     "0x01",
     2},
    {"something after the last block",
     {{16, {0x54, 2}}},
     596,
     BKOQ_IMAGE_TRAILING,
     "",
     592,
     "the end of the image",
     "4 bytes more",
     11},
    {"a block more in the header",
     {{24, {12}}},
     592,
     BKOQ_IMAGE_BLOCKS,
     "",
     24,
     "11 blocks",
     "12",
     11},
    {"an unknown kind of job",
     {{36, {99}}, {427, {'x'}}},
     592,
     BKOQ_IMAGE_UNKNOWN_MEDIA,
     "pSourceNodes[0].pMedia",
     364,
     "null in a job of unknown kind",
     "offset 472",
     5},
};

TEST(Image, IsReadAsHostileInput) {
  const CurrentTree job = smallBackup();
  const Bytes good = written(job.get(), BKOQ_LAYOUT_CURRENT);
  for (const BadImage& each : kBadImages) {
    SCOPED_TRACE(each.what);
    Bytes image = good;
    image.resize(each.size);
    for (const Change& change : each.changes) {
      std::copy(change.bytes.begin(), change.bytes.end(), image.data() + change.at);
    }
    if (each.problem != BKOQ_IMAGE_CHECKSUM) seal(image);

    Reading reading;
    read(image, reading);
    EXPECT_EQ(reading.status, BKOQ_BAD_IMAGE);
    EXPECT_EQ(reading.error.problem, each.problem);
    EXPECT_STREQ(reading.error.path, each.path);
    EXPECT_EQ(reading.error.position, each.position);
    if (each.expected != nullptr) {
      EXPECT_STREQ(reading.error.expected, each.expected);
      EXPECT_STREQ(reading.error.found, each.found);
    }
    // What could be read is a tree like any other.
    if (reading.root != nullptr) {
      std::string printed;
      EXPECT_EQ(bkoqPrint(reading.root, reading.layout, nullptr, appendToString, &printed),
                BKOQ_OK);
    }
    BkoqFreed freed;
    bkoqFree(reading.root, reading.layout, &freed);
    reading.root = nullptr;
    EXPECT_EQ(freed.blocks, each.blocksRead);
  }
}

TEST(Image, TellsWhatIsWrongInOneLine) {
  const CurrentTree job = smallBackup();
  Bytes image = written(job.get(), BKOQ_LAYOUT_CURRENT);
  image[352] = 0xB4;
  Reading sealed;
  read(image, sealed);
  EXPECT_EQ(std::string(sealed.error.text)
                .find("the checksum does not fit: bytes were changed (byte 28: expected 0x"),
            0u);
  seal(image);
  Reading reading;
  read(image, reading);
  EXPECT_STREQ(reading.error.text,
               "bytes between two blocks belong to neither (byte 352, pSourceNodes[0].pFilters: "
               "expected offset 432, found offset 436)");
}

// Whatever byte is changed, and to whatever value: reading ends, and stays in the image.
TEST(Image, SurvivesEveryChangedByteAndEveryCut) {
  const CurrentTree small = smallBackup();
  const CurrentTree large = currentBackup();
  for (const void* root :
       {static_cast<const void*>(small.get()), static_cast<const void*>(large.get())}) {
    const Bytes good = written(root, BKOQ_LAYOUT_CURRENT);
    std::size_t refused = 0;
    for (std::size_t i = 0; i < good.size(); ++i) {
      for (const unsigned int value : {0x00, 0x01, 0x03, 0x04, 0x7F, 0x80, 0xFF}) {
        Bytes image = good;
        image[i] = static_cast<std::uint8_t>(value);
        if (i < 28 || i > 31) seal(image);
        Reading reading;
        read(image, reading);
        if (reading.status == BKOQ_BAD_IMAGE) ++refused;
        if (reading.status != BKOQ_OK) continue;
        // What is taken is taken whole.
        EXPECT_EQ(written(reading.root, reading.layout), image) << "byte " << i;
      }
      Bytes cut(good.data(), good.data() + i / 4 * 4);
      if (cut.size() < 32) continue;
      putWord(cut, 16, static_cast<std::uint32_t>(cut.size()));
      seal(cut);
      Reading reading;
      read(cut, reading);
      EXPECT_EQ(reading.status, BKOQ_BAD_IMAGE) << "cut at " << cut.size();
    }
    EXPECT_GT(refused, 100u);
  }
}

TEST(Image, RefusesBadArguments) {
  const CurrentTree job = currentJob(1);
  std::string image;
  EXPECT_EQ(bkoqWriteImage(nullptr, BKOQ_LAYOUT_CURRENT, appendToString, &image, nullptr),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, nullptr, &image, nullptr),
            BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqWriteImage(job.get(), static_cast<BkoqLayout>(2), appendToString, &image, nullptr),
            BKOQ_BAD_ARGUMENT);
  BkoqLayout layout;
  void* root = job.get();
  EXPECT_EQ(bkoqReadImage(nullptr, 0, &layout, &root, nullptr), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(root, nullptr);
  EXPECT_EQ(bkoqReadImage("", 0, nullptr, &root, nullptr), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqReadImage("", 0, &layout, nullptr, nullptr), BKOQ_BAD_ARGUMENT);
}

TEST(Image, EndsWhenTheSinkFails) {
  const CurrentTree job = currentJob(1);
  const BkoqSink full = [](void*, const char*, std::size_t) { return 1; };
  EXPECT_EQ(bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, full, nullptr, nullptr),
            BKOQ_SINK_FAILED);
}

}  // namespace
}  // namespace bkoq::test
