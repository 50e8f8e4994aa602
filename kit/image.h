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

// The CRC-32 of an image (reflected polynomial 0xEDB88320, as in zip files), its own four bytes
// taken as zero.
//
// `layout` counts in place of the header's unless it is 0.
inline std::uint32_t imageChecksum(const std::uint8_t* image, std::size_t size,
                                   std::uint32_t layout = 0) {
  std::uint32_t table[256];
  for (std::uint32_t i = 0; i < 256; ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit) value = value >> 1 ^ ((value & 1) != 0 ? 0xEDB88320u : 0);
    table[i] = value;
  }
  std::uint32_t crc = 0xFFFFFFFF;
  for (std::size_t i = 0; i < size; ++i) {
    std::uint32_t byte = image[i];
    if (i >= kChecksumAt && i < kHeaderSize) byte = 0;
    if (layout != 0 && i >= kLayoutAt && i < kSizeAt) byte = layout >> (8 * (i - kLayoutAt)) & 0xFF;
    crc = crc >> 8 ^ table[(crc ^ byte) & 0xFF];
  }
  return ~crc;
}

inline std::uint32_t loadWord(const std::uint8_t* bytes) {
  return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

inline void storeWord(std::uint8_t* bytes, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

// The header names a layout, 1 or 2, but the rest is of the other one.
void setMislabelled(BkoqImageError& error, std::uint32_t named);

// Whether all that the header says is so.
bool checkImageHeader(const std::uint8_t* image, std::size_t size, BkoqImageError& error);

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_IMAGE_H_
