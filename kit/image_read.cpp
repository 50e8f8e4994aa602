#include <cstdio>
#include <cstdlib>

#include "bkoq/kit.h"
#include "kit/guard.h"
#include "kit/image.h"
#include "kit/image_error.h"
#include "kit/path.h"
#include "kit/view.h"

namespace bkoq::kit {
namespace {

Words offsetWords(std::uint32_t offset) { return words("offset %u", unsigned{offset}); }

// Reads blocks in the one order in which an image may have them: each where the one before it
// ended. So no two can overlap, no byte is read twice, and the tree takes no more memory than the
// image does. How deep a tree goes is a matter of the record table, not of the image.
class ImageReader {
 public:
  enum class Mode {
    kCopy,   // into blocks of their own
    kCheck,  // nothing is made
    kPatch   // the image itself becomes the tree: its offsets become pointers
  };

  ImageReader(const std::uint8_t* image, std::uint32_t size, Mode mode, BkoqImageError& error)
      : image_(image), size_(size), mode_(mode), error_(error) {}

  // The tree as far as it could be read; see status().
  void* read(BkoqLayout layout) {
    RecordView job;
    job.def = recordDef(layout, RecordType::kJob);
    job.layout = layout;
    const std::uint32_t root = word(kRootAt);
    if (root != kHeaderSize) {
      fail(BKOQ_IMAGE_ROOT, kRootAt, offsetWords(kHeaderSize), offsetWords(root));
      return nullptr;
    }
    if (size_ - kHeaderSize < job.def->size) {
      fail(BKOQ_IMAGE_COUNT, kHeaderSize, words("the %u bytes of a job record", job.def->size),
           words("%u bytes", unsigned{size_ - kHeaderSize}));
      return nullptr;
    }
    void* tree = takeBlock(kHeaderSize, job.def->size);
    if (tree == nullptr) return nullptr;
    job.bytes = static_cast<std::uint8_t*>(tree);
    clearPointers(job);
    if (readRecord(job, kHeaderSize)) checkEnd();
    return tree;
  }

  BkoqStatus status() const { return status_; }

 private:
  std::uint32_t word(std::uint32_t position) const { return loadWord(image_ + position); }

  bool fail(BkoqImageProblem problem, std::uint32_t position, const Words& expected,
            const Words& found) {
    setImageError(error_, problem, path_.text(), position, expected.text, found.text);
    status_ = BKOQ_BAD_IMAGE;
    return false;
  }

  // Until they have been read, the pointers of a copied record are null.
  void clearPointers(const RecordView& record) {
    if (mode_ != Mode::kCopy) return;
    forEachField(record, [this](const FieldView& field) {
      if (field.def().isPointer()) store(field, nullptr);
      if (field.def().kind == FieldKind::kEmbedded) {
        clearPointers(field.elementAt(field.bytes()));
      }
      return true;
    });
  }
  // The records that are written to are the reader's own copies, or the image that it was given.
  void store(const FieldView& field, const void* pointer) {
    if (mode_ == Mode::kCheck) return;
    std::memcpy(const_cast<std::uint8_t*>(field.bytes()), &pointer, sizeof pointer);
  }

  // `place` is where the record lies in the image.
  bool readRecord(const RecordView& record, std::uint32_t place) {
    return forEachField(record, [&](const FieldView& field) {
      if (!field.def().isPointer() && field.def().kind != FieldKind::kEmbedded) return true;
      const Path::Mark mark = path_.append(field.def().name);
      const bool isRead = readField(field, place + field.def().offset);
      if (isRead) path_.cut(mark);
      return isRead;
    });
  }

  bool readField(const FieldView& field, std::uint32_t position) {
    if (field.def().kind == FieldKind::kEmbedded) {
      return readRecord(field.elementAt(field.bytes()), position);
    }
    const std::uint32_t offset = word(position);
    if (offset == 0) return true;
    if (!field.pointsSomewhere()) {
      return fail(BKOQ_IMAGE_UNKNOWN_MEDIA, position, words("null in a job of unknown kind"),
                  offsetWords(offset));
    }
    if (!checkOffset(offset, position)) return false;
    return field.target() != nullptr ? readElements(field, offset, position)
                                     : readTexts(field, offset);
  }

  bool checkOffset(std::uint32_t offset, std::uint32_t position) {
    if (offset < kHeaderSize || offset > size_) {
      return fail(BKOQ_IMAGE_OUTSIDE, position,
                  words("an offset from %u to %u", kHeaderSize, unsigned{size_}),
                  offsetWords(offset));
    }
    if (offset % kAlignment != 0) {
      return fail(BKOQ_IMAGE_UNALIGNED, position, words("a multiple of %u", kAlignment),
                  offsetWords(offset));
    }
    if (offset < next_) {
      return fail(BKOQ_IMAGE_OVERLAP, position, offsetWords(next_), offsetWords(offset));
    }
    if (offset > next_) {
      return fail(BKOQ_IMAGE_GAP, position, offsetWords(next_), offsetWords(offset));
    }
    return true;
  }

  bool readElements(const FieldView& field, std::uint32_t offset, std::uint32_t position) {
    const std::uint32_t count = field.count();
    const std::uint32_t elementSize = field.target()->size;
    const std::uint32_t rest = size_ - offset;
    if (count > rest / elementSize) {
      return fail(BKOQ_IMAGE_COUNT, position,
                  words("at most %u %s", unsigned{rest / elementSize}, field.target()->name),
                  words("%u", unsigned{count}));
    }
    const auto* elements = static_cast<const std::uint8_t*>(takeBlock(offset, count * elementSize));
    if (elements == nullptr) return false;
    for (std::uint32_t i = 0; i < count; ++i) {
      clearPointers(field.elementAt(elements + i * elementSize));
    }
    store(field, elements);
    for (std::uint32_t i = 0; i < count; ++i) {
      Path::Mark mark = path_.mark();
      if (field.def().kind == FieldKind::kArray) mark = path_.appendIndex(i);
      const std::uint32_t place = i * elementSize;
      if (!readRecord(field.elementAt(elements + place), offset + place)) return false;
      path_.cut(mark);
    }
    return true;
  }

  bool readTexts(const FieldView& field, std::uint32_t offset) {
    std::uint32_t count = 1;
    if (field.kind() == FieldKind::kTwoTexts) count = 2;
    if (field.kind() == FieldKind::kTextList) count = field.count();
    std::uint32_t end = offset;
    for (std::uint32_t i = 0; i < count; ++i) {
      // memchr() must not be given the end of the image as its place.
      const void* nul = end < size_ ? std::memchr(image_ + end, 0, size_ - end) : nullptr;
      if (nul == nullptr) {
        return fail(BKOQ_IMAGE_UNTERMINATED, end,
                    words("the NUL of text %u of %u", unsigned{i + 1}, unsigned{count}),
                    words("the end of the image at %u", unsigned{size_}));
      }
      end = static_cast<std::uint32_t>(static_cast<const std::uint8_t*>(nul) - image_) + 1;
    }
    const void* block = takeBlock(offset, end - offset);
    if (block == nullptr) return false;
    store(field, block);
    return true;
  }

  // A copy of a block that has been found to lie in the image; null after a failure.
  void* takeBlock(std::uint32_t offset, std::uint32_t size) {
    // An image's size is a multiple of the alignment, so the padding lies in it as well.
    const std::uint32_t end = offset + size;
    const std::uint32_t next = (end + kAlignment - 1) / kAlignment * kAlignment;
    for (std::uint32_t i = end; i < next; ++i) {
      if (image_[i] == 0) continue;
      fail(BKOQ_IMAGE_PADDING, i, words("zero between two blocks"), words("0x%02x", image_[i]));
      return nullptr;
    }
    void* block =
        mode_ == Mode::kCopy ? std::malloc(size) : const_cast<std::uint8_t*>(image_) + offset;
    if (block == nullptr) {
      status_ = BKOQ_NO_MEMORY;
      return nullptr;
    }
    if (mode_ == Mode::kCopy) std::memcpy(block, image_ + offset, size);
    next_ = next;
    ++blocks_;
    return block;
  }

  void checkEnd() {
    if (next_ != size_) {
      fail(BKOQ_IMAGE_TRAILING, next_, words("the end of the image"),
           words("%u bytes more", unsigned{size_ - next_}));
    } else if (blocks_ != word(kBlocksAt)) {
      fail(BKOQ_IMAGE_BLOCKS, kBlocksAt, words("%u blocks", unsigned{blocks_}),
           words("%u", unsigned{word(kBlocksAt)}));
    }
  }

  const std::uint8_t* image_;
  std::uint32_t size_;
  Mode mode_;
  BkoqImageError& error_;
  BkoqStatus status_ = BKOQ_OK;
  Path path_;
  std::uint32_t next_ = kHeaderSize;  // where the next block must begin
  std::uint32_t blocks_ = 0;
};

BkoqLayout layoutOf(std::uint32_t code) {
  return code == 1 ? BKOQ_LAYOUT_CURRENT : BKOQ_LAYOUT_PREVIOUS;
}

}  // namespace

void setMislabelled(BkoqImageError& error, std::uint32_t named) {
  setImageError(
      error, BKOQ_IMAGE_LAYOUT, "", kLayoutAt, words("%u", unsigned{3 - named}).text,
      words("%u", unsigned{named}).text,
      words("mislabelled: this is a tree of the %s layout", layoutName(layoutOf(3 - named))).text);
}

bool checkImageHeader(const std::uint8_t* image, std::size_t size, BkoqImageError& error) {
  const auto fail = [&](BkoqImageProblem problem, std::uint32_t position, const Words& expected,
                        const Words& found, const char* what = "") {
    setImageError(error, problem, "", position, expected.text, found.text, what);
    return false;
  };
  const auto total = static_cast<unsigned int>(size);
  if (size < kHeaderSize) {
    return fail(BKOQ_IMAGE_SHORT, 0, words("the %u bytes of the header", kHeaderSize),
                words("%u bytes", total));
  }
  if (std::memcmp(image, BKOQ_IMAGE_SIGNATURE, kMagicSize) != 0) {
    char hex[kMagicSize * 3];
    for (std::size_t i = 0; i < kMagicSize; ++i) {
      std::snprintf(hex + 3 * i, sizeof hex - 3 * i, i + 1 < kMagicSize ? "%02x " : "%02x",
                    image[i]);
    }
    return fail(BKOQ_IMAGE_MAGIC, 0, words("\"%s\"", BKOQ_IMAGE_SIGNATURE), words("%s", hex));
  }
  const std::uint32_t version = loadWord(image + kVersionAt);
  if (version != BKOQ_IMAGE_FORMAT_VERSION) {
    return fail(BKOQ_IMAGE_VERSION, kVersionAt, words("version %u", BKOQ_IMAGE_FORMAT_VERSION),
                words("version %u", unsigned{version}));
  }
  const std::uint32_t layout = loadWord(image + kLayoutAt);
  if (layout != 1 && layout != 2) {
    return fail(BKOQ_IMAGE_LAYOUT, kLayoutAt, words("1 (current) or 2 (previous)"),
                words("%u", unsigned{layout}));
  }
  const std::uint32_t said = loadWord(image + kSizeAt);
  if (said != size) {
    const Words what = said > size
                           ? words("cut short by %s", byteWords(said - size).text)
                           : words("%s too long: something was added", byteWords(size - said).text);
    return fail(BKOQ_IMAGE_SIZE, kSizeAt, words("the image's own %u bytes", total),
                words("%u", unsigned{said}), what.text);
  }
  if (size % kAlignment != 0) {
    return fail(BKOQ_IMAGE_SIZE, kSizeAt, words("a multiple of %u", kAlignment),
                words("%u", total));
  }
  const std::uint32_t checksum = imageChecksum(image, size);
  if (loadWord(image + kChecksumAt) != checksum) {
    if (imageChecksum(image, size, 3 - layout) == loadWord(image + kChecksumAt)) {
      setMislabelled(error, layout);
      return false;
    }
    return fail(BKOQ_IMAGE_CHECKSUM, kChecksumAt,
                words("0x%08x for these bytes", unsigned{checksum}),
                words("0x%08x", unsigned{loadWord(image + kChecksumAt)}));
  }
  return true;
}

namespace {

// A good checksum, but a tree that breaks a rule: the label may be the wrong one.
void explainByLayout(const std::uint8_t* bytes, std::size_t size, BkoqImageError& error) {
  const std::uint32_t named = loadWord(bytes + kLayoutAt);
  BkoqImageError ignored{};
  ImageReader reader(bytes, static_cast<std::uint32_t>(size), ImageReader::Mode::kCheck, ignored);
  reader.read(layoutOf(3 - named));
  if (reader.status() == BKOQ_OK) setMislabelled(error, named);
}

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqReadImage(const void* image, size_t size, BkoqLayout* layout, void** root,
                         BkoqImageError* error) {
  using namespace bkoq::kit;
  BkoqImageError ignored;
  BkoqImageError& report = error != nullptr ? *error : ignored;
  report = BkoqImageError{};
  if (root != nullptr) *root = nullptr;
  if (image == nullptr || layout == nullptr || root == nullptr) return BKOQ_BAD_ARGUMENT;
  const auto* bytes = static_cast<const std::uint8_t*>(image);
  if (!checkImageHeader(bytes, size, report)) return BKOQ_BAD_IMAGE;
  *layout = layoutOf(loadWord(bytes + kLayoutAt));
  ImageReader reader(bytes, static_cast<std::uint32_t>(size), ImageReader::Mode::kCopy, report);
  *root = reader.read(*layout);
  if (reader.status() == BKOQ_BAD_IMAGE) explainByLayout(bytes, size, report);
  return reader.status();
}

BkoqStatus bkoqUseImage(void* image, size_t size, BkoqLayout* layout, void** root,
                        BkoqImageError* error) {
  using namespace bkoq::kit;
  BkoqImageError ignored;
  BkoqImageError& report = error != nullptr ? *error : ignored;
  report = BkoqImageError{};
  if (root != nullptr) *root = nullptr;
  const bool isAligned = reinterpret_cast<std::uintptr_t>(image) % kAlignment == 0;
  if (image == nullptr || layout == nullptr || root == nullptr || !isAligned) {
    return BKOQ_BAD_ARGUMENT;
  }
  auto* bytes = static_cast<std::uint8_t*>(image);
  if (!checkImageHeader(bytes, size, report)) return BKOQ_BAD_IMAGE;
  *layout = layoutOf(loadWord(bytes + kLayoutAt));
  const auto total = static_cast<std::uint32_t>(size);
  ImageReader checker(bytes, total, ImageReader::Mode::kCheck, report);
  checker.read(*layout);
  if (checker.status() != BKOQ_OK) {
    explainByLayout(bytes, size, report);
    return checker.status();
  }
  ImageReader patcher(bytes, total, ImageReader::Mode::kPatch, report);
  *root = patcher.read(*layout);
  return patcher.status();
}
