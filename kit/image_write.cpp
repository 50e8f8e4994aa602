#include <vector>

#include "bkoq/kit.h"
#include "kit/guard.h"
#include "kit/image.h"
#include "kit/image_error.h"
#include "kit/walker.h"

namespace bkoq::kit {
namespace {

// Puts the blocks one after the other in the order of the walk and makes their pointers offsets.
class ImageWriter : public WalkHandler {
 public:
  explicit ImageWriter(BkoqImageError& error) : error_(error), image_(kHeaderSize) {}

  bool beginRecord(const RecordView& record, const Position& at) {
    if (at.depth == 0) addBlock(record.bytes, record.def->size);
    return true;
  }

  bool field(const FieldView& field, const Block& block, const Position& at) {
    const std::uint32_t position = places_[at.block - 1] + at.blockOffset + field.def().offset;
    const bool isUnknownMedia = field.kind() == FieldKind::kOpaque && field.def().isPointer();
    if (isUnknownMedia && field.pointer() != nullptr) {
      setImageError(error_, BKOQ_IMAGE_UNKNOWN_MEDIA, at.path.text(), position,
                    "null in a job of unknown kind", "a pointer");
      return false;
    }
    if (block.bytes == nullptr) return true;
    addBlock(block.bytes, block.size);
    storeWord(&image_[position], places_.back());
    return true;
  }

  const std::vector<std::uint8_t>& finish(BkoqLayout layout) {
    std::memcpy(image_.data(), BKOQ_IMAGE_SIGNATURE, kMagicSize);
    put(kVersionAt, BKOQ_IMAGE_FORMAT_VERSION);
    put(kLayoutAt, layout == BKOQ_LAYOUT_CURRENT ? 1 : 2);
    put(kSizeAt, static_cast<std::uint32_t>(image_.size()));
    put(kRootAt, kHeaderSize);
    put(kBlocksAt, static_cast<std::uint32_t>(places_.size()));
    put(kChecksumAt, imageChecksum(image_.data(), image_.size()));
    return image_;
  }

 private:
  void put(std::uint32_t position, std::uint32_t value) { storeWord(&image_[position], value); }

  void addBlock(const std::uint8_t* bytes, std::uint32_t size) {
    places_.push_back(static_cast<std::uint32_t>(image_.size()));
    image_.insert(image_.end(), bytes, bytes + size);
    while (image_.size() % kAlignment != 0) image_.push_back(0);
  }

  BkoqImageError& error_;
  std::vector<std::uint8_t> image_;
  std::vector<std::uint32_t> places_;  // of the blocks, by label
};

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqWriteImage(const void* root, BkoqLayout layout, BkoqSink sink, void* user,
                          BkoqImageError* error) {
  using namespace bkoq::kit;
  BkoqImageError ignored;
  BkoqImageError& report = error != nullptr ? *error : ignored;
  report = BkoqImageError{};
  if (root == nullptr || sink == nullptr || !isLayout(layout)) return BKOQ_BAD_ARGUMENT;
  return guarded([&] {
    ImageWriter writer(report);
    if (!Walker<ImageWriter>(writer).walk(RecordView::job(root, layout))) {
      return BKOQ_BAD_TREE;
    }
    const std::vector<std::uint8_t>& image = writer.finish(layout);
    const int failed = sink(user, reinterpret_cast<const char*>(image.data()), image.size());
    return failed == 0 ? BKOQ_OK : BKOQ_SINK_FAILED;
  });
}
