// The reader of images: whatever the bytes, it refuses them or gives a tree that can be walked,
// printed, compared, written as the same image again, and freed.

#include <bkoq/kit.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "tests/fuzz/require.h"
#include "tests/support/sanitizers.h"

#ifdef BKOQ_WITH_ASAN
#include <sanitizer/asan_interface.h>
#endif

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kHeader = 32;

void putWord(Bytes& bytes, std::size_t offset, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

// As images have it, by a table of its own.
FUZZ_UNSEEN std::uint32_t checksumOf(const Bytes& bytes) {
  static const auto table = [] {
    std::array<std::uint32_t, 256> all{};
    for (std::uint32_t i = 0; i < all.size(); ++i) {
      all[i] = i;
      for (int bit = 0; bit < 8; ++bit) all[i] = all[i] >> 1 ^ ((all[i] & 1) * 0xEDB88320u);
    }
    return all;
  }();
  const std::uint8_t* data = bytes.data();
  const std::uint32_t* of = table.data();
  std::uint32_t crc = 0xFFFFFFFF;
  for (std::size_t i = 0, size = bytes.size(); i < size; ++i) {
    const std::uint8_t byte = i >= 28 && i < 32 ? 0 : data[i];
    crc = crc >> 8 ^ of[(crc ^ byte) & 0xFF];
  }
  return ~crc;
}

// Reads all of the bytes, which must be there, and gives a number that depends on each.
FUZZ_UNSEEN std::size_t sumOf(const void* bytes, std::size_t size) {
#ifdef BKOQ_WITH_ASAN
  FUZZ_REQUIRE(__asan_region_is_poisoned(const_cast<void*>(bytes), size) == nullptr);
#endif
  const auto* data = static_cast<const unsigned char*>(bytes);
  std::size_t sum = 0;
  for (std::size_t i = 0; i < size; ++i) sum += data[i];
  return sum;
}

// Makes the header good, so that what comes after it is reached, which no one could seal by chance.
// The layout and the number of blocks stay as they are.
Bytes sealed(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, data + size);
  if (bytes.size() < kHeader) bytes.resize(kHeader);
  bytes.resize((bytes.size() + 3) / 4 * 4);
  std::memcpy(bytes.data(), "BKQIMAGE", 8);
  putWord(bytes, 8, 1);
  putWord(bytes, 12, 1 + (bytes[12] & 1));
  putWord(bytes, 16, static_cast<std::uint32_t>(bytes.size()));
  putWord(bytes, 20, 32);
  putWord(bytes, 28, checksumOf(bytes));
  return bytes;
}

int drop(void* user, const char* text, std::size_t size) {
  *static_cast<std::size_t*>(user) += sumOf(text, size);
  return 0;
}

int keep(void* user, const char* text, std::size_t size) {
  Bytes& bytes = *static_cast<Bytes*>(user);
  bytes.insert(bytes.end(), text, text + size);
  return 0;
}

int countVisit(const BkoqVisit* visit, void* user) {
  std::size_t& sum = *static_cast<std::size_t*>(user);
  sum += std::strlen(visit->path) + std::strlen(visit->record) + visit->width;
  sum += sumOf(visit->bytes, visit->width);
  if (visit->targetBytes != nullptr) sum += sumOf(visit->targetBytes, visit->targetSize);
  return 0;
}

void print(void* root, BkoqLayout layout, std::size_t way) {
  static const BkoqFormat kFormats[] = {BKOQ_FORMAT_TEXT, BKOQ_FORMAT_JSON, BKOQ_FORMAT_ANNOTATED,
                                        BKOQ_FORMAT_PLAIN_JSON};
  BkoqPrintOptions options = {};
  options.format = kFormats[way % 4];
  options.showSecrets = static_cast<int>(way & 1);
  options.hideZero = static_cast<int>(way >> 1 & 1);
  std::size_t sum = 0;
  FUZZ_REQUIRE(bkoqPrint(root, layout, &options, drop, &sum) == BKOQ_OK);
}

void compare(void* root, BkoqLayout layout) {
  std::uint32_t differences = 1;
  FUZZ_REQUIRE(bkoqCompare(root, layout, root, layout, 0, nullptr, nullptr, &differences) ==
               BKOQ_OK);
  FUZZ_REQUIRE(differences == 0);
}

// Whoever uses a tree walks it; what else is done the content chooses.
void use(void* root, BkoqLayout layout) {
  std::size_t sum = 0;
  FUZZ_REQUIRE(bkoqWalk(root, layout, countVisit, &sum) == BKOQ_OK);
  for (std::size_t way = 0; way < 4; ++way) {
    if (takesAll(way == sum % 8)) print(root, layout, way);
  }
  if (takesAll(sum % 8 == 4)) compare(root, layout);
}

// All is freed, unless the bytes look like a tree of the other layout.
void release(void* root, BkoqLayout layout) {
  const BkoqStatus fits = bkoqCheckLayout(root, layout);
  BkoqFreed freed = {};
  FUZZ_REQUIRE(bkoqFree(root, layout, &freed) == fits);
  FUZZ_REQUIRE(freed.notFreed == 0 || fits == BKOQ_OTHER_LAYOUT);
}

void hearDoubt(const BkoqImageError* doubt, void* user) {
  FUZZ_REQUIRE(std::memchr(doubt->text, 0, sizeof doubt->text) != nullptr &&
               doubt->text[0] != '\0');
  ++*static_cast<std::uint32_t*>(user);
}

// Whatever a reader makes of an image, salvaging makes as much of it, and doubts what it refuses.
void salvage(const Bytes& image, BkoqStatus read) {
  const std::size_t size = image.size();
  Bytes bytes = image;
  bytes.resize(size + BKOQ_SALVAGE_ROOM);
  BkoqLayout layout = BKOQ_LAYOUT_WIDEST;
  void* root = nullptr;
  BkoqSalvage salvage = {};
  std::uint32_t heard = 0;
  const bool isHeard = takesAll(size % 8 == 0);
  const BkoqStatus status = bkoqSalvageImage(bytes.data(), size, &layout, &root,
                                             isHeard ? hearDoubt : nullptr, &heard, &salvage);
  FUZZ_REQUIRE(heard == (isHeard ? salvage.doubts : 0) || status == BKOQ_NO_MEMORY);
  FUZZ_REQUIRE(status == BKOQ_OK || status == BKOQ_NO_MEMORY ||
               (status == BKOQ_BAD_IMAGE && size <= kHeader));
  if (status == BKOQ_OK) {
    FUZZ_REQUIRE((read == BKOQ_OK) == (salvage.doubts == 0) || read == BKOQ_NO_MEMORY);
    // The tree of a good image is used as it was read.
    if (takesAll(read != BKOQ_OK)) use(root, layout);
  }
}

void readImage(const Bytes& image) {
  static const std::uint8_t kNothing = 0;
  const std::uint8_t* bytes = image.empty() ? &kNothing : image.data();
  BkoqLayout layout = BKOQ_LAYOUT_WIDEST;
  void* root = nullptr;
  BkoqImageError error = {};
  const BkoqStatus status = bkoqReadImage(bytes, image.size(), &layout, &root, &error);
  FUZZ_REQUIRE(status == BKOQ_OK || status == BKOQ_BAD_IMAGE || status == BKOQ_NO_MEMORY);
  FUZZ_REQUIRE((status == BKOQ_BAD_IMAGE) == (error.problem != BKOQ_IMAGE_GOOD));
  if (status == BKOQ_BAD_IMAGE) {
    FUZZ_REQUIRE(std::memchr(error.text, 0, sizeof error.text) != nullptr && error.text[0] != '\0');
    FUZZ_REQUIRE(std::memchr(error.path, 0, sizeof error.path) != nullptr);
  }
  salvage(image, status);
  if (root == nullptr) {
    FUZZ_REQUIRE(status != BKOQ_OK);
    return;
  }
  use(root, layout);
  if (status == BKOQ_OK) {
    Bytes again;
    FUZZ_REQUIRE(bkoqWriteImage(root, layout, keep, &again, nullptr) == BKOQ_OK);
    FUZZ_REQUIRE(again == image);
  }
  release(root, layout);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // As it is, an image is mostly refused for its header, whatever comes after it.
  const bool isSealed = sumOf(data, size) % 8 != 0;
  if (takesAll(!isSealed)) readImage(Bytes(data, data + size));
  if (takesAll(isSealed)) readImage(sealed(data, size));
  return 0;
}
