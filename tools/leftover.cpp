#include "tools/leftover.h"

#include <algorithm>
#include <cstdio>

#include "tools/walk.h"

namespace bkoq::tool {
namespace {

constexpr std::uint32_t kHeaderSize = 32;
constexpr std::uint32_t kAlignment = 4;
constexpr std::uint32_t kPerLine = 16;

// Which bytes of an image are in a block.
class Coverage {
 public:
  explicit Coverage(std::string_view image) : image_(image), isRead_(image.size()) {
    addRange(0, kHeaderSize);
  }

  int visit(const BkoqVisit& visit) {
    if (visit.event == BKOQ_RECORD_BEGIN && visit.depth == 0) add(visit.bytes, visit.width);
    if (visit.event == BKOQ_FIELD && visit.target != 0) {
      add(visit.targetBytes, visit.targetSize);
    }
    return 0;
  }

  std::vector<ByteRange> rest() const {
    std::vector<ByteRange> ranges;
    for (std::uint32_t i = 0; i < isRead_.size(); ++i) {
      if (isRead_[i] || isPadding(i)) continue;
      if (ranges.empty() || ranges.back().end != i) ranges.push_back({i, i});
      ranges.back().end = i + 1;
    }
    return ranges;
  }

 private:
  void addRange(std::uint32_t begin, std::uint32_t size) {
    const std::size_t end = std::min<std::size_t>(isRead_.size(), std::size_t{begin} + size);
    for (std::size_t i = begin; i < end; ++i) isRead_[i] = true;
  }
  void add(const void* bytes, std::uint32_t size) {
    addRange(static_cast<std::uint32_t>(static_cast<const char*>(bytes) - image_.data()), size);
  }
  bool isPadding(std::uint32_t at) const {
    for (std::uint32_t i = at;; --i) {
      if (isRead_[i]) return true;
      if (image_[i] != '\0' || i % kAlignment == 0) return false;
    }
  }

  std::string_view image_;
  std::vector<bool> isRead_;
};

std::string line(std::string_view image, std::uint32_t begin, std::uint32_t end) {
  char text[16];
  std::snprintf(text, sizeof text, "%7u ", unsigned{begin});
  std::string hex = text;
  std::string characters;
  for (std::uint32_t i = begin; i < end; ++i) {
    const auto byte = static_cast<unsigned char>(image[i]);
    std::snprintf(text, sizeof text, " %02x", unsigned{byte});
    hex += text;
    characters += byte >= ' ' && byte <= '~' ? static_cast<char>(byte) : '.';
  }
  hex.append((kPerLine - (end - begin)) * 3, ' ');
  return hex + "  " + characters + "\n";
}

bool put(BkoqSink sink, void* user, const std::string& text) {
  return sink(user, text.data(), text.size()) == 0;
}

}  // namespace

std::vector<ByteRange> leftovers(const void* root, BkoqLayout layout, std::string_view image) {
  Coverage coverage(image);
  walk(root, layout, [&coverage](const BkoqVisit& visit) { return coverage.visit(visit); });
  return coverage.rest();
}

BkoqStatus printLeftovers(const std::vector<ByteRange>& ranges, std::string_view image,
                          bool showSecrets, BkoqSink sink, void* user) {
  std::size_t count = 0;
  for (const ByteRange& range : ranges) count += range.end - range.begin;
  if (count == 0) return BKOQ_OK;
  if (!showSecrets) {
    const std::string text =
        "\nin no block: more bytes; --show-secrets prints them, since nothing says what they are\n";
    return put(sink, user, text) ? BKOQ_OK : BKOQ_SINK_FAILED;
  }
  const std::string bytes = std::to_string(count) + (count == 1 ? " byte" : " bytes");
  if (!put(sink, user, "\nin no block: " + bytes + "\n")) return BKOQ_SINK_FAILED;
  for (const ByteRange& range : ranges) {
    for (std::uint32_t at = range.begin; at < range.end; at += kPerLine) {
      const std::uint32_t end = std::min(range.end, at + kPerLine);
      if (!put(sink, user, line(image, at, end))) return BKOQ_SINK_FAILED;
    }
  }
  return BKOQ_OK;
}

}  // namespace bkoq::tool
