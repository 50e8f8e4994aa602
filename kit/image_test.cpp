#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <vector>

#include "kit/test_trees.h"
#include "tests/support/sanitizers.h"

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

// The bytes that are changed in the good image of smallBackup(). The checksum is made good again.
struct Change {
  std::size_t at;
  Bytes bytes;
};

struct BadImage {
  const char* what;
  std::vector<Change> changes;
  std::size_t size;  // cut or lengthened with zeros to this
  BkoqImageProblem problem;
  const char* says;  // what the line for a user begins with
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
     "cut short: not even the header is whole",
     "",
     0,
     "the 32 bytes of the header",
     "31 bytes",
     0},
    {"nothing at all",
     {},
     0,
     BKOQ_IMAGE_SHORT,
     "cut short: not even the header is whole",
     "",
     0,
     "the 32 bytes of the header",
     "0 bytes",
     0},
    {"another magic",
     {{0, {'b'}}},
     592,
     BKOQ_IMAGE_MAGIC,
     "this is no image of a job",
     "",
     0,
     "\"BKQIMAGE\"",
     "62 4b 51 49 4d 41 47 45",
     0},
    {"a later version",
     {{8, {2}}},
     592,
     BKOQ_IMAGE_VERSION,
     "written in a version of the format that is not known here",
     "",
     8,
     "version 1",
     "version 2",
     0},
    {"no layout",
     {{12, {0}}},
     592,
     BKOQ_IMAGE_LAYOUT,
     "the header names no layout: bytes were changed",
     "",
     12,
     "1 (current) or 2 (previous)",
     "0",
     0},
    {"a third layout",
     {{12, {3}}},
     592,
     BKOQ_IMAGE_LAYOUT,
     "the header names no layout: bytes were changed",
     "",
     12,
     "1 (current) or 2 (previous)",
     "3",
     0},
    {"the end cut off",
     {},
     588,
     BKOQ_IMAGE_SIZE,
     "cut short by 4 bytes",
     "",
     16,
     "the image's own 588 bytes",
     "592",
     0},
    {"one byte cut off",
     {},
     591,
     BKOQ_IMAGE_SIZE,
     "cut short by 1 byte",
     "",
     16,
     "the image's own 591 bytes",
     "592",
     0},
    {"a hundred bytes cut off",
     {},
     492,
     BKOQ_IMAGE_SIZE,
     "cut short by 100 bytes",
     "",
     16,
     "the image's own 492 bytes",
     "592",
     0},
    {"more than a thousand bytes cut off",
     {{16, {0x4C, 6}}},
     592,
     BKOQ_IMAGE_SIZE,
     "cut short by 1,020 bytes",
     "",
     16,
     "the image's own 592 bytes",
     "1612",
     0},
    {"more than a million bytes cut off",
     {{16, {0xD7, 0xD8, 0x12}}},
     592,
     BKOQ_IMAGE_SIZE,
     "cut short by 1,234,567 bytes",
     "",
     16,
     "the image's own 592 bytes",
     "1235159",
     0},
    {"one byte added",
     {},
     593,
     BKOQ_IMAGE_SIZE,
     "1 byte too long: something was added",
     "",
     16,
     "the image's own 593 bytes",
     "592",
     0},
    {"two bytes added",
     {},
     594,
     BKOQ_IMAGE_SIZE,
     "2 bytes too long: something was added",
     "",
     16,
     "the image's own 594 bytes",
     "592",
     0},
    {"an odd size",
     {{16, {81, 2}}},
     593,
     BKOQ_IMAGE_SIZE,
     "the size does not fit",
     "",
     16,
     "a multiple of 4",
     "593",
     0},
    {"the root elsewhere",
     {{20, {36}}},
     592,
     BKOQ_IMAGE_ROOT,
     "the job record is not where it must be",
     "",
     20,
     "offset 32",
     "offset 36",
     0},
    {"no room for the root",
     {{16, {0x40, 1}}},
     320,
     BKOQ_IMAGE_COUNT,
     "the records do not fit into the image",
     "",
     32,
     "the 292 bytes of a job record",
     "288 bytes",
     0},
    {"an offset into the header",
     {{48, {4, 0}}},
     592,
     BKOQ_IMAGE_OUTSIDE,
     "an offset leads out of the image",
     "pSourceNodes",
     48,
     "an offset from 32 to 592",
     "offset 4",
     1},
    {"an offset after the end",
     {{60, {0, 0, 0, 0x80}}},
     592,
     BKOQ_IMAGE_OUTSIDE,
     "an offset leads out of the image",
     "pszOwner",
     60,
     "an offset from 32 to 592",
     "offset 2147483648",
     10},
    {"an offset between two words",
     {{48, {0x46, 1}}},
     592,
     BKOQ_IMAGE_UNALIGNED,
     "an offset leads between two blocks",
     "pSourceNodes",
     48,
     "a multiple of 4",
     "offset 326",
     1},
    {"an offset to the job record itself",
     {{48, {0x20, 0}}},
     592,
     BKOQ_IMAGE_OVERLAP,
     "two blocks overlap",
     "pSourceNodes",
     48,
     "offset 324",
     "offset 32",
     1},
    {"a block over the one before it",
     {{352, {0xA8, 1}}},
     592,
     BKOQ_IMAGE_OVERLAP,
     "two blocks overlap",
     "pSourceNodes[0].pFilters",
     352,
     "offset 432",
     "offset 424",
     3},
    {"a node that holds itself",
     {{364, {0x44, 1}}},
     592,
     BKOQ_IMAGE_OVERLAP,
     "two blocks overlap",
     "pSourceNodes[0].pMedia",
     364,
     "offset 472",
     "offset 324",
     5},
    {"two owners of one block",
     {{64, {0x44, 2}}},
     592,
     BKOQ_IMAGE_OVERLAP,
     "two blocks overlap",
     "pszReportFile",
     64,
     "offset 592",
     "offset 580",
     11},
    {"a gap between two blocks",
     {{352, {0xB4, 1}}},
     592,
     BKOQ_IMAGE_GAP,
     "bytes between two blocks belong to neither",
     "pSourceNodes[0].pFilters",
     352,
     "offset 432",
     "offset 436",
     3},
    {"a text that ends after the end",
     {{588, {'x', 'x', 'x', 'x'}}},
     592,
     BKOQ_IMAGE_UNTERMINATED,
     "a text has no end",
     "pszOwner",
     580,
     "the NUL of text 1 of 1",
     "the end of the image at 592",
     10},
    {"more nodes than there is room for",
     {{44, {3}}},
     592,
     BKOQ_IMAGE_COUNT,
     "the records do not fit into the image",
     "pSourceNodes",
     48,
     "at most 2 BKNODE",
     "3",
     1},
    {"a count whose bytes are few modulo 2^32",
     {{44, {0, 0, 0, 0x40}}},
     592,
     BKOQ_IMAGE_COUNT,
     "the records do not fit into the image",
     "pSourceNodes",
     48,
     "at most 2 BKNODE",
     "1073741824",
     1},
    {"more files than texts",
     {{536, {0xFF, 0xFF, 0xFF, 0xFF}}},
     592,
     BKOQ_IMAGE_UNTERMINATED,
     "a text has no end",
     "pSourceNodes[0].pMedia[0].pDiskItems[0].pFileList",
     592,
     "the NUL of text 10 of 4294967295",
     "the end of the image at 592",
     9},
    {"something between two blocks",
     {{429, {1}}},
     592,
     BKOQ_IMAGE_PADDING,
     "bytes between two blocks were changed",
     "pSourceNodes[0].pszNodeOSVer",
     429,
     "zero between two blocks",
     "0x01",
     2},
    {"something after the last block",
     {{16, {0x54, 2}}},
     596,
     BKOQ_IMAGE_TRAILING,
     "bytes after the last block belong to nothing",
     "",
     592,
     "the end of the image",
     "4 bytes more",
     11},
    {"a block more in the header",
     {{24, {12}}},
     592,
     BKOQ_IMAGE_BLOCKS,
     "the number of blocks does not fit",
     "",
     24,
     "11 blocks",
     "12",
     11},
    {"an unknown kind of job",
     {{36, {99}}, {427, {'x'}}},
     592,
     BKOQ_IMAGE_UNKNOWN_MEDIA,
     "a node holds something, but the kind of the job is not known",
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
    seal(image);

    Reading reading;
    read(image, reading);
    EXPECT_EQ(reading.status, BKOQ_BAD_IMAGE);
    EXPECT_EQ(reading.error.problem, each.problem);
    EXPECT_STREQ(reading.error.path, each.path);
    EXPECT_EQ(reading.error.position, each.position);
    EXPECT_STREQ(reading.error.expected, each.expected);
    EXPECT_STREQ(reading.error.found, each.found);
    const std::string place = *each.path != '\0' ? std::string(", ") + each.path : "";
    EXPECT_EQ(reading.error.text, std::string(each.says) + " (byte " +
                                      std::to_string(each.position) + place + ": expected " +
                                      each.expected + ", found " + each.found + ")");
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

TEST(Image, TellsBothChecksums) {
  const CurrentTree job = smallBackup();
  Bytes image = written(job.get(), BKOQ_LAYOUT_CURRENT);
  image[588] = 's';
  Bytes unsealed = image;
  putWord(unsealed, 28, 0);
  char line[200];
  std::snprintf(line, sizeof line,
                "the checksum does not fit: bytes were changed (byte 28: expected 0x%08x for these "
                "bytes, found 0x%08x)",
                static_cast<unsigned int>(crc32Of(unsealed)),
                static_cast<unsigned int>(wordAt(image, 28)));
  Reading reading;
  read(image, reading);
  EXPECT_EQ(reading.status, BKOQ_BAD_IMAGE);
  EXPECT_EQ(reading.error.problem, BKOQ_IMAGE_CHECKSUM);
  EXPECT_EQ(reading.error.position, 28u);
  EXPECT_STREQ(reading.error.path, "");
  EXPECT_STREQ(reading.error.text, line);
  EXPECT_EQ(reading.root, nullptr);
}

// Byte 32, the first after the header, is one of them.
TEST(Image, CountsEveryByteInItsChecksum) {
  const CurrentTree job = smallBackup();
  const Bytes good = written(job.get(), BKOQ_LAYOUT_CURRENT);
  for (std::size_t i = 32; i < good.size(); ++i) {
    Bytes image = good;
    image[i] ^= 0x10;
    Reading reading;
    read(image, reading);
    EXPECT_EQ(reading.error.problem, BKOQ_IMAGE_CHECKSUM) << "byte " << i;
  }
}

// Both by the checksum, which fits with the other layout, and by the tree, which does.
TEST(Image, TellsAMislabelledLayout) {
  const CurrentTree current = currentBackup();
  const PreviousTree previous = previousBackup();
  // Nothing to its own layout; to the current one an offset, of a node's domain.
  previous->pSourceNodes[0].abReserved84[0] = 1;
  struct Case {
    const void* root;
    BkoqLayout layout;
    std::uint8_t named;
    const char* line;
  };
  const Case cases[] = {{current.get(), BKOQ_LAYOUT_CURRENT, 2,
                         "mislabelled: this is a tree of the current layout (byte 12: expected 1, "
                         "found 2)"},
                        {previous.get(), BKOQ_LAYOUT_PREVIOUS, 1,
                         "mislabelled: this is a tree of the previous layout (byte 12: expected 2, "
                         "found 1)"}};
  for (const Case& each : cases) {
    for (const bool isSealed : {false, true}) {
      SCOPED_TRACE(std::string(each.line) + (isSealed ? ", sealed" : ""));
      Bytes image = written(each.root, each.layout);
      image[12] = each.named;
      if (isSealed) seal(image);
      Reading reading;
      read(image, reading);
      EXPECT_EQ(reading.status, BKOQ_BAD_IMAGE);
      EXPECT_EQ(reading.error.problem, BKOQ_IMAGE_LAYOUT);
      EXPECT_STREQ(reading.error.path, "");
      EXPECT_STREQ(reading.error.text, each.line);

      BkoqLayout layout;
      void* root = nullptr;
      BkoqImageError error;
      EXPECT_EQ(bkoqUseImage(image.data(), image.size(), &layout, &root, &error), BKOQ_BAD_IMAGE);
      EXPECT_EQ(error.problem, BKOQ_IMAGE_LAYOUT);
      EXPECT_STREQ(error.text, each.line);
    }
  }
}

TEST(Image, TellsNothingOfAnEarlierError) {
  const CurrentTree job = smallBackup();
  Bytes good = written(job.get(), BKOQ_LAYOUT_CURRENT);
  BkoqLayout layout;
  void* root = nullptr;
  BkoqImageError error;
  ASSERT_EQ(bkoqReadImage("", 0, &layout, &root, &error), BKOQ_BAD_IMAGE);
  const BkoqImageError earlier = error;
  ASSERT_STRNE(earlier.text, "");
  {
    Reading reading;
    reading.error = earlier;
    read(good, reading);
    EXPECT_EQ(reading.status, BKOQ_OK);
    EXPECT_EQ(reading.error.problem, BKOQ_IMAGE_GOOD);
    EXPECT_STREQ(reading.error.expected, "");
    EXPECT_STREQ(reading.error.text, "");
  }
  EXPECT_EQ(bkoqUseImage(good.data(), good.size(), &layout, &root, &error), BKOQ_OK);
  EXPECT_EQ(error.problem, BKOQ_IMAGE_GOOD);
  EXPECT_STREQ(error.expected, "");
  EXPECT_STREQ(error.text, "");
  error = earlier;
  std::string image;
  EXPECT_EQ(bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, appendToString, &image, &error),
            BKOQ_OK);
  EXPECT_EQ(error.problem, BKOQ_IMAGE_GOOD);
  EXPECT_STREQ(error.text, "");
}

// An error in the second of two nodes: the path names that one, and no pointer of the tree, not
// even one of a record inside another, is left as the offset that it was.
TEST(Image, GivesBackWhatCameBeforeAnErrorInAnElement) {
  const CurrentTree job = currentBackup();
  Bytes image = written(job.get(), BKOQ_LAYOUT_CURRENT);
  const std::size_t name = wordAt(image, 32 + offsetof(BKQJDATATRANSFER, pSourceNodes)) +
                           sizeof(BKNODE) + offsetof(BKNODE, pszNodeName);
  putWord(image, name, 4);
  seal(image);
  Reading reading;
  read(image, reading);
  EXPECT_EQ(reading.status, BKOQ_BAD_IMAGE);
  EXPECT_EQ(reading.error.problem, BKOQ_IMAGE_OUTSIDE);
  EXPECT_EQ(reading.error.position, name);
  EXPECT_STREQ(reading.error.path, "pSourceNodes[1].pszNodeName");

  const auto& tree = *static_cast<const BKQJDATATRANSFER*>(reading.root);
  EXPECT_STREQ(tree.pSourceNodes[0].pszNodeDomain, "accounting");
  EXPECT_EQ(tree.pSourceNodes[1].pszNodeName, nullptr);
  EXPECT_EQ(tree.pDestNodes, nullptr);
  EXPECT_NE(wordAt(image, 32 + offsetof(BKQJDATATRANSFER, stFax)), 0u);
  EXPECT_EQ(tree.stFax.pszHostName, nullptr);
  EXPECT_EQ(tree.stScheduleExt.pszSetName, nullptr);
}

#ifndef BKOQ_WITH_ASAN  // whose allocator ends the process
// While one of these lives, the process can take no more than so much memory in addition.
class LittleMemory {
 public:
  explicit LittleMemory(std::size_t most) {
    unsigned long pages = 0;
    std::FILE* file = std::fopen("/proc/self/statm", "r");
    isKnown_ = file != nullptr && std::fscanf(file, "%lu", &pages) == 1;
    if (file != nullptr) std::fclose(file);
    getrlimit(RLIMIT_AS, &before_);
    rlimit limit = before_;
    limit.rlim_cur = pages * static_cast<unsigned long>(sysconf(_SC_PAGESIZE)) + most;
    if (isKnown_) isKnown_ = setrlimit(RLIMIT_AS, &limit) == 0;
  }
  ~LittleMemory() { setrlimit(RLIMIT_AS, &before_); }
  LittleMemory(const LittleMemory&) = delete;
  LittleMemory& operator=(const LittleMemory&) = delete;

  bool isKnown() const { return isKnown_; }

 private:
  rlimit before_{};
  bool isKnown_ = false;
};

// A good image: that there is no room for its nodes is not to be taken for an error in it.
TEST(Image, TellsThatMemoryRanOut) {
  const CurrentTree job = currentJob(1);
  give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 80000);
  job->pszOwner = text("operator");
  const Bytes image = written(job.get(), BKOQ_LAYOUT_CURRENT);
  Reading reading;
  {
    const LittleMemory memory(1 << 20);
    if (!memory.isKnown()) GTEST_SKIP();
    reading.status =
        bkoqReadImage(image.data(), image.size(), &reading.layout, &reading.root, &reading.error);
  }
  EXPECT_EQ(reading.status, BKOQ_NO_MEMORY);
  EXPECT_EQ(reading.error.problem, BKOQ_IMAGE_GOOD);
  EXPECT_STREQ(reading.error.text, "");
  ASSERT_NE(reading.root, nullptr);
  const auto& tree = *static_cast<const BKQJDATATRANSFER*>(reading.root);
  EXPECT_EQ(tree.ulNumSourceNodes, 80000u);
  EXPECT_EQ(tree.pSourceNodes, nullptr);
  EXPECT_EQ(tree.pszOwner, nullptr);
}
#endif

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
  alignas(4) std::uint8_t bytes[8] = {};
  root = bytes;
  EXPECT_EQ(bkoqUseImage(nullptr, 0, &layout, &root, nullptr), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(root, nullptr);
  EXPECT_EQ(bkoqUseImage(bytes, 0, nullptr, &root, nullptr), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqUseImage(bytes, 0, &layout, nullptr, nullptr), BKOQ_BAD_ARGUMENT);
  EXPECT_EQ(bkoqUseImage(bytes + 1, 0, &layout, &root, nullptr), BKOQ_BAD_ARGUMENT);
}

TEST(Image, EndsWhenTheSinkFails) {
  const CurrentTree job = currentJob(1);
  const BkoqSink full = [](void*, const char*, std::size_t) { return 1; };
  EXPECT_EQ(bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, full, nullptr, nullptr),
            BKOQ_SINK_FAILED);
}

}  // namespace
}  // namespace bkoq::test
