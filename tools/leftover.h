#ifndef BKOQ_TOOLS_LEFTOVER_H_
#define BKOQ_TOOLS_LEFTOVER_H_

#include <bkoq/kit.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bkoq::tool {

// Bytes of an image from `begin` up to `end`.
struct ByteRange {
  std::uint32_t begin;
  std::uint32_t end;
};

// The bytes of a damaged image that are in no block that could be read: nothing leads to them any
// more. The tree lies in the image. Zeros after a block are none.
std::vector<ByteRange> leftovers(const void* root, BkoqLayout layout, std::string_view image);

// Prints them for people, since they may be what was looked for. They may be secret as well: unless
// secrets are to be shown, it is only said that there are some.
BkoqStatus printLeftovers(const std::vector<ByteRange>& ranges, std::string_view image,
                          bool showSecrets, BkoqSink sink, void* user);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_LEFTOVER_H_
