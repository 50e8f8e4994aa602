#include "tools/leftover.h"

#include <algorithm>
#include <cstdio>

namespace bkoq::tool {
namespace {

constexpr std::uint32_t kHeaderSize = 32;
constexpr std::uint32_t kAlignment = 4;
constexpr std::uint32_t kPerLine = 16;

// Which bytes of an image are in a block.
class Coverage {
 public:
  Coverage(const std::uint32_t* offsets, std::size_t size) : offsets_(offsets), isRead_(size) {
    add(0, kHeaderSize);
  }

  int visit(const BkoqVisit& visit) {
    if (visit.event == BKOQ_RECORD_BEGIN && visit.depth == 0) add(offsets_[0], visit.width);
    if (visit.event == BKOQ_FIELD && visit.target != 0) {
      add(offsets_[visit.target - 1], visit.targetSize);
    }
    return 0;
  }

  std::vector<ByteRange> rest(const std::string& image) const {
    std::vector<ByteRange> ranges;
    for (std::uint32_t i = 0; i < isRead_.size(); ++i) {
      if (isRead_[i] || isPadding(image, i)) continue;
      if (ranges.empty() || ranges.back().end != i) ranges.push_back({i, i});
      ranges.back().end = i + 1;
    }
    return ranges;
  }

 private:
  void add(std::uint32_t begin, std::uint32_t size) {
    const std::size_t end = std::min<std::size_t>(isRead_.size(), std::size_t{begin} + size);
    for (std::size_t i = begin; i < end; ++i) isRead_[i] = true;
  }
  bool isPadding(const std::string& image, std::uint32_t at) const {
    for (std::uint32_t i = at;; --i) {
      if (isRead_[i]) return true;
      if (image[i] != '\0' || i % kAlignment == 0) return false;
    }
  }

  const std::uint32_t* offsets_;
  std::vector<bool> isRead_;
};

std::string line(const std::string& image, std::uint32_t begin, std::uint32_t end) {
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

std::vector<ByteRange> leftovers(const void* root, BkoqLayout layout, const std::uint32_t* offsets,
                                 const std::string& image) {
  Coverage coverage(offsets, image.size());
  bkoqWalk(
      root, layout,
      [](const BkoqVisit* visit, void* self) {
        return static_cast<Coverage*>(self)->visit(*visit);
      },
      &coverage);
  return coverage.rest(image);
}

BkoqStatus printLeftovers(const std::vector<ByteRange>& ranges, const std::string& image,
                          bool showSecrets, BkoqSink sink, void* user) {
  std::size_t count = 0;
  for (const ByteRange& range : ranges) count += range.end - range.begin;
  if (count == 0) return BKOQ_OK;
  const std::string bytes = std::to_string(count) + (count == 1 ? " byte" : " bytes");
  if (!showSecrets) {
    const std::string text = "\nin no block: " + bytes +
                             "; --show-secrets prints them, since nothing says what they are\n";
    return put(sink, user, text) ? BKOQ_OK : BKOQ_SINK_FAILED;
  }
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
