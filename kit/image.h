#ifndef BKOQ_KIT_IMAGE_H_
#define BKOQ_KIT_IMAGE_H_

#include <cstddef>
#include <cstdint>

#include "bkoq/kit.h"

namespace bkoq::kit {

// The header of an image; every number is little-endian. docs/image-format.md tells the rest.
constexpr std::uint32_t kMagicSize = sizeof BKOQ_IMAGE_SIGNATURE - 1;
constexpr std::uint32_t kVersionAt = kMagicSize;
static_assert(kVersionAt == 8, "the header is of fixed size");
constexpr std::uint32_t kLayoutAt = 12;  // 1 current, 2 previous
constexpr std::uint32_t kSizeAt = 16;
constexpr std::uint32_t kRootAt = 20;
constexpr std::uint32_t kBlocksAt = 24;
constexpr std::uint32_t kChecksumAt = 28;
constexpr std::uint32_t kHeaderSize = 32;
constexpr std::uint32_t kAlignment = 4;

inline std::uint32_t loadWord(const std::uint8_t* bytes) {
  return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

inline void storeWord(std::uint8_t* bytes, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

// What a byte adds to a CRC-32 when 0 to 7 bytes follow it, so that eight can be taken at once.
struct ChecksumTable {
  std::uint32_t of[8][256] = {};

  constexpr ChecksumTable() {
    for (std::uint32_t i = 0; i < 256; ++i) {
      std::uint32_t value = i;
      for (int bit = 0; bit < 8; ++bit) value = value >> 1 ^ ((value & 1) != 0 ? 0xEDB88320u : 0);
      of[0][i] = value;
    }
    for (std::uint32_t i = 0; i < 256; ++i) {
      for (int after = 1; after < 8; ++after) {
        of[after][i] = of[after - 1][i] >> 8 ^ of[0][of[after - 1][i] & 0xFF];
      }
    }
  }
};
inline constexpr ChecksumTable kChecksums;

// The CRC-32 of an image (reflected polynomial 0xEDB88320, as in zip files), its own four bytes
// taken as zero.
//
// `layout` counts in place of the header's unless it is 0.
inline std::uint32_t imageChecksum(const std::uint8_t* image, std::size_t size,
                                   std::uint32_t layout = 0) {
  const auto& of = kChecksums.of;
  std::uint32_t crc = 0xFFFFFFFF;
  std::size_t i = 0;
  for (; i < size && i < kHeaderSize; ++i) {
    std::uint32_t byte = image[i];
    if (i >= kChecksumAt) byte = 0;
    if (layout != 0 && i >= kLayoutAt && i < kSizeAt) byte = layout >> (8 * (i - kLayoutAt)) & 0xFF;
    crc = crc >> 8 ^ of[0][(crc ^ byte) & 0xFF];
  }
  for (; size - i >= 8; i += 8) {
    const std::uint32_t first = crc ^ loadWord(image + i);
    const std::uint32_t second = loadWord(image + i + 4);
    crc = of[7][first & 0xFF] ^ of[6][first >> 8 & 0xFF] ^ of[5][first >> 16 & 0xFF] ^
          of[4][first >> 24] ^ of[3][second & 0xFF] ^ of[2][second >> 8 & 0xFF] ^
          of[1][second >> 16 & 0xFF] ^ of[0][second >> 24];
  }
  for (; i < size; ++i) crc = crc >> 8 ^ of[0][(crc ^ image[i]) & 0xFF];
  return ~crc;
}

// The header names a layout, 1 or 2, but the rest is of the other one.
void setMislabelled(BkoqImageError& error, std::uint32_t named);

// Whether all that the header says is so.
bool checkImageHeader(const std::uint8_t* image, std::size_t size, BkoqImageError& error);

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_IMAGE_H_
