#include <algorithm>
#include <cstdlib>
#include <vector>

#include "bkoq/kit.h"
#include "kit/guard.h"
#include "kit/image.h"
#include "kit/image_error.h"
#include "kit/path.h"
#include "kit/view.h"

namespace bkoq::kit {
namespace {

// Blocks may be read more than once where offsets are damaged, but not without end.
constexpr std::uint64_t kMostCopies = 3;

// Reads blocks where they must be, or where their offsets say when that is more likely; every block
// is a copy, so that none can harm another.
class Salvager {
 public:
  Salvager(const std::uint8_t* image, std::uint32_t size, BkoqDoubtVisitor visitor, void* user)
      : image_(image), size_(size), visitor_(visitor), user_(user) {}
  ~Salvager() { bkoqFree(tree_, layout_, nullptr); }
  Salvager(const Salvager&) = delete;
  Salvager& operator=(const Salvager&) = delete;

  void read(BkoqLayout layout) {
    layout_ = layout;
    RecordView job;
    job.def = recordDef(layout, RecordType::kJob);
    job.layout = layout;
    offsets_.push_back(kHeaderSize);
    auto* copy = static_cast<std::uint8_t*>(allocate(job.def->size));
    tree_ = copy;
    job.bytes = copy;
    take(copy, kHeaderSize, job.def->size);
    clearPointers(job);
    if (size_ - kHeaderSize < job.def->size) doubtCut(kHeaderSize, job.def->size);
    const std::uint32_t root = loadWord(image_ + kRootAt);
    if (root != kHeaderSize) {
      doubt(BKOQ_IMAGE_ROOT, thisBlock(), kRootAt, words("%u", kHeaderSize),
            words("%u", unsigned{root}), words("the job record is read from where it must be"));
    }
    readRecord(job, kHeaderSize);
    checkEnd();
  }

  void* release() {
    void* tree = tree_;
    tree_ = nullptr;
    return tree;
  }
  const std::vector<std::uint32_t>& offsets() const { return offsets_; }
  std::uint32_t doubts() const { return doubts_; }
  std::uint32_t doubtfulFrom() const { return doubtfulFrom_; }

 private:
  static void* allocate(std::size_t size) {
    void* block = std::calloc(1, std::max<std::size_t>(size, 1));
    if (block == nullptr) throw std::bad_alloc();
    return block;
  }

  std::uint32_t available(std::uint32_t offset) const {
    return offset < size_ ? size_ - offset : 0;
  }
  // A word of the image, zero where it is cut off.
  std::uint32_t word(std::uint32_t position) const {
    return available(position) >= 4 ? loadWord(image_ + position) : 0;
  }

  // The part of a block that is there; the rest is zero.
  void take(std::uint8_t* copy, std::uint32_t offset, std::uint64_t size) {
    const auto part = static_cast<std::uint32_t>(std::min<std::uint64_t>(size, available(offset)));
    if (part > 0) std::memcpy(copy, image_ + offset, part);
    moveOn(offset, part);
  }
  void moveOn(std::uint32_t offset, std::uint32_t size) {
    last_ = offset;
    next_ = (offset + size + kAlignment - 1) / kAlignment * kAlignment;
    copied_ += size;
    for (std::uint32_t i = offset + size; i < std::min(next_, size_); ++i) {
      if (image_[i] == 0) continue;
      doubt(BKOQ_IMAGE_PADDING, thisBlock(), i, words("zero"), words("0x%02x", image_[i]),
            words("bytes after the block were changed"));
      break;
    }
  }

  // `block` is the first block that may not be what was written.
  void doubt(BkoqImageProblem problem, std::size_t block, std::uint32_t position,
             const Words& expected, const Words& found, const Words& what) {
    const auto label = static_cast<std::uint32_t>(block);
    if (doubtfulFrom_ == 0 || label < doubtfulFrom_) doubtfulFrom_ = label;
    ++doubts_;
    if (visitor_ == nullptr) return;
    BkoqImageError error{};
    setImageError(error, problem, path_.text(), position, expected.text, found.text, what.text);
    visitor_(&error, user_);
  }
  std::size_t thisBlock() const { return offsets_.size(); }
  std::size_t nextBlock() const { return offsets_.size() + 1; }
  // Of the block that was taken last.
  void doubtCut(std::uint32_t offset, std::uint64_t size) {
    doubt(BKOQ_IMAGE_COUNT, thisBlock(), offset, words("%s", byteWords(size).text),
          words("%s", byteWords(available(offset)).text),
          words("cut off: zeros are shown for what is missing"));
  }

  static void clearPointers(const RecordView& record) {
    forEachField(record, [](const FieldView& field) {
      if (field.def().isPointer()) store(field, nullptr);
      if (field.def().kind == FieldKind::kEmbedded) clearPointers(field.elementAt(field.bytes()));
      return true;
    });
  }
  static void store(const FieldView& field, const void* pointer) {
    std::memcpy(const_cast<std::uint8_t*>(field.bytes()), &pointer, sizeof pointer);
  }
  static void storeCount(const FieldView& field, std::uint32_t count) {
    auto* record = const_cast<std::uint8_t*>(field.record().bytes);
    storeWord(record + field.def().countOffset, count);
  }

  void readRecord(const RecordView& record, std::uint32_t place) {
    forEachField(record, [&](const FieldView& field) {
      const Path::Mark mark = path_.append(field.def().name);
      readField(field, place + field.def().offset);
      path_.cut(mark);
      return true;
    });
  }

  void readField(const FieldView& field, std::uint32_t position) {
    if (field.def().kind == FieldKind::kEmbedded) {
      return readRecord(field.elementAt(field.bytes()), position);
    }
    if (!field.def().isPointer()) return;
    const std::uint32_t offset = word(position);
    if (offset == 0) return;
    if (!field.pointsSomewhere()) {
      return doubt(BKOQ_IMAGE_UNKNOWN_MEDIA, nextBlock(), position, words("null"),
                   words("offset %u", offset),
                   words("not read, since the kind of the job is not known"));
    }
    if (copied_ > kMostCopies * size_) {
      return doubt(BKOQ_IMAGE_OVERLAP, nextBlock(), position,
                   words("blocks that take the image once"), words("more"),
                   words("not read: too much leads to the same bytes"));
    }
    if (isTakenLater(offset, position)) {
      return doubt(BKOQ_IMAGE_OVERLAP, nextBlock(), position, words("null"),
                   words("offset %u", unsigned{offset}),
                   words("not read: another offset leads to the block that comes here"));
    }
    const std::uint32_t start = std::min(startOf(field, offset, position), size_);
    const bool isCounted =
        field.def().kind == FieldKind::kArray || field.def().kind == FieldKind::kTextList;
    if (start >= size_ && !(isCounted && field.count() == 0)) {
      return skipCut(offset, position);
    }
    offsets_.push_back(start);
    lastHasTexts_ = field.target() == nullptr;
    if (field.target() != nullptr) {
      readElements(field, start, position);
    } else {
      readTexts(field, start);
    }
  }

  // Nothing of the block is there. Its count stays, and tells how many there were.
  void skipCut(std::uint32_t offset, std::uint32_t position) {
    doubt(BKOQ_IMAGE_OUTSIDE, nextBlock(), position, words("less than %u", unsigned{size_}),
          words("offset %u", unsigned{offset}), words("cut off: nothing of it is left"));
  }

  // Whether an offset was none: a later one in the same record leads to the very block that must
  // come now.
  bool isTakenLater(std::uint32_t offset, std::uint32_t position) const {
    constexpr std::uint32_t kWords = 24;
    if (offset == next_) return false;
    for (std::uint32_t i = 1; i <= kWords; ++i) {
      if (word(position + 4 * i) == next_) return true;
    }
    return false;
  }

  // Whether the records of an array point to what comes right after them, or by `shift` from there.
  bool leadsOn(const FieldView& field, std::uint32_t start, std::uint32_t shift = 0) const {
    if (field.def().kind != FieldKind::kArray) return false;
    const std::uint32_t count = std::max(field.count(), 1U);
    const std::uint64_t end = start + std::uint64_t{count} * field.target()->size;
    const std::uint32_t first = firstOffset(field, start, count);
    return first != 0 && first + shift == end;
  }

  // An offset only repeats what the order of the blocks says. Where the two disagree, an offset
  // that leads on, or into a text that has lost its end, is believed; any other is not, such as one
  // into the middle of a text, or one that is wrong by as much as the one before: there bytes were
  // taken out or put in.
  std::uint32_t startOf(const FieldView& field, std::uint32_t offset, std::uint32_t position) {
    if (offset == next_) {
      shift_ = 0;
      return offset;
    }
    const bool isCutOff = offset >= size_ && loadWord(image_ + kSizeAt) > size_ &&
                          offset < loadWord(image_ + kSizeAt);
    if (isCutOff && next_ >= size_) return size_;
    const std::uint32_t least = lastHasTexts_ ? last_ + 1 : next_;
    const bool isPossible =
        offset % kAlignment == 0 && offset >= least && (offset < size_ || isCutOff);
    const std::uint32_t following = word(position + 4);
    const bool isContradicted = following > next_ && following < offset && following % 4 == 0;
    const bool isShifted = shift_ != 0 && offset + shift_ == next_;
    const bool isInText =
        field.target() == nullptr && offset > next_ && offset < size_ && image_[offset - 1] != 0;
    const bool isNext = leadsOn(field, next_) || leadsOn(field, next_, next_ - offset);
    const bool isBelieved = isPossible && !isShifted && !isInText &&
                            !(offset > next_ && isContradicted) &&
                            !(isNext && !leadsOn(field, offset));
    shift_ = isBelieved ? 0 : next_ - offset;
    doubt(offset > next_ ? BKOQ_IMAGE_GAP : BKOQ_IMAGE_OVERLAP, nextBlock(), position,
          words("offset %u", unsigned{next_}), words("offset %u", unsigned{offset}),
          isBelieved ? words("read from the offset, not from where the block should be")
                     : words("read from where the block should be, not from its offset"));
    return isBelieved ? std::min(offset, size_) : next_;
  }

  // The first block after an array is the first to which its elements point. 0 when none does, or
  // when the offset after it does not lead further on.
  std::uint32_t firstOffset(const FieldView& field, std::uint32_t start,
                            std::uint32_t count) const {
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    const std::uint32_t size = field.target()->size;
    for (std::uint32_t i = 0; i < count && second == 0; ++i) {
      const std::uint32_t place = start + i * size;
      if (available(place) < size) break;
      forEachField(field.elementAt(image_ + place), [&](const FieldView& inner) {
        if (inner.def().isPointer())
          (first == 0 ? first : second) = word(place + inner.def().offset);
        return second == 0;
      });
    }
    return second != 0 && second <= first ? 0 : first;
  }

  void readElements(const FieldView& field, std::uint32_t start, std::uint32_t position) {
    const std::uint32_t size = field.target()->size;
    const std::uint32_t said = field.count();
    const std::uint32_t most = available(start) / size + (available(start) % size != 0 ? 1 : 0);
    std::uint32_t count = std::min(said, most);
    if (field.def().kind == FieldKind::kArray) {
      const std::uint32_t first = firstOffset(field, start, std::max(count, 1U));
      const bool endsThere = first > start && first < size_ && (first - start) % size == 0;
      if (endsThere && (first - start) / size != said) count = (first - start) / size;
    }
    auto* elements = static_cast<std::uint8_t*>(allocate(std::size_t{count} * size));
    for (std::uint32_t i = 0; i < count; ++i) {
      const std::uint32_t place = start + i * size;
      const std::uint32_t part = std::min(size, available(place));
      std::memcpy(elements + i * size, image_ + place, part);
    }
    moveOn(start, std::min(count * size, available(start)));
    store(field, elements);
    for (std::uint32_t i = 0; i < count; ++i) clearPointers(field.elementAt(elements + i * size));
    if (count != said) {
      storeCount(field, count);
      doubt(BKOQ_IMAGE_COUNT, thisBlock(), position,
            words("%u %s", unsigned{count}, field.target()->name), words("%u", unsigned{said}),
            words("of %u there %s %u", unsigned{said}, count == 1 ? "is" : "are", unsigned{count}));
    }
    const std::uint64_t whole = std::uint64_t{count} * size;
    if (whole > available(start)) doubtCut(start, whole);
    for (std::uint32_t i = 0; i < count; ++i) {
      Path::Mark mark = path_.mark();
      if (field.def().kind == FieldKind::kArray) mark = path_.appendIndex(i);
      readRecord(field.elementAt(elements + i * size), start + i * size);
      path_.cut(mark);
    }
  }

  void readTexts(const FieldView& field, std::uint32_t start) {
    std::uint32_t count = 1;
    if (field.kind() == FieldKind::kTwoTexts) count = 2;
    if (field.kind() == FieldKind::kTextList) count = field.count();
    std::uint32_t end = start;
    std::uint32_t whole = 0;
    while (whole < count && end < size_) {
      const void* nul = std::memchr(image_ + end, 0, size_ - end);
      if (nul == nullptr) break;
      end = static_cast<std::uint32_t>(static_cast<const std::uint8_t*>(nul) - image_) + 1;
      ++whole;
    }
    const bool isCut = whole < count;
    std::uint32_t kept = count;
    if (isCut) {
      // What is left of a text counts as one; of two texts the second may be empty.
      const bool hasRest = end < size_;
      end = size_;
      if (field.kind() == FieldKind::kTextList) kept = whole + (hasRest ? 1 : 0);
    }
    const std::uint32_t size = end - start;
    auto* texts = static_cast<std::uint8_t*>(allocate(std::size_t{size} + 2));
    if (size > 0) std::memcpy(texts, image_ + start, size);
    moveOn(start, size);
    store(field, texts);
    if (!isCut) return;
    if (kept != count) storeCount(field, kept);
    doubt(BKOQ_IMAGE_UNTERMINATED, thisBlock(), start,
          words("%u texts with their NULs", unsigned{count}),
          words("the end of the image at %u", unsigned{size_}),
          words("cut off: what is left of the text is shown"));
  }

  void checkEnd() {
    if (next_ < size_) {
      doubt(BKOQ_IMAGE_TRAILING, doubtfulFrom_ != 0 ? doubtfulFrom_ : 1, next_,
            words("the end of the image"), words("%s more", byteWords(size_ - next_).text),
            words("bytes at the end belong to nothing that was found"));
    }
    const std::uint32_t said = loadWord(image_ + kBlocksAt);
    const auto found = static_cast<std::uint32_t>(offsets_.size());
    if (found != said) {
      doubt(BKOQ_IMAGE_BLOCKS, doubtfulFrom_ != 0 ? doubtfulFrom_ : 1, kBlocksAt,
            words("%u blocks", unsigned{found}), words("%u", unsigned{said}),
            words("not as many blocks as the header says"));
    }
  }

  const std::uint8_t* image_;
  std::uint32_t size_;
  BkoqDoubtVisitor visitor_;
  void* user_;
  BkoqLayout layout_ = BKOQ_LAYOUT_CURRENT;
  void* tree_ = nullptr;
  Path path_;
  std::vector<std::uint32_t> offsets_;  // of the blocks, by number - 1
  std::uint32_t last_ = 0;              // where the last block began
  bool lastHasTexts_ = false;
  std::uint32_t next_ = kHeaderSize;  // where the next one must begin
  std::uint32_t shift_ = 0;           // what an offset that was not believed lacked
  std::uint64_t copied_ = 0;
  std::uint32_t doubts_ = 0;
  std::uint32_t doubtfulFrom_ = 0;
};

// The layout that the header names, unless the tree is wholly of the other one; without such a name
// the one in which there is less to doubt.
BkoqLayout likelyLayout(const std::uint8_t* image, std::uint32_t size) {
  const std::uint32_t named = loadWord(image + kLayoutAt);
  const BkoqLayout first = named == 2 ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT;
  const BkoqLayout second = named == 2 ? BKOQ_LAYOUT_CURRENT : BKOQ_LAYOUT_PREVIOUS;
  Salvager asNamed(image, size, nullptr, nullptr);
  asNamed.read(first);
  if (asNamed.doubts() == 0) return first;
  Salvager asOther(image, size, nullptr, nullptr);
  asOther.read(second);
  const bool isNamed = named == 1 || named == 2;
  return asOther.doubts() < (isNamed ? 1 : asNamed.doubts()) ? second : first;
}

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqSalvageImage(const void* image, size_t size, BkoqLayout* layout, void** root,
                            BkoqDoubtVisitor visitor, void* user, BkoqSalvage* salvage) {
  using namespace bkoq::kit;
  if (root != nullptr) *root = nullptr;
  if (salvage != nullptr) *salvage = BkoqSalvage{};
  if (image == nullptr || layout == nullptr || root == nullptr) return BKOQ_BAD_ARGUMENT;
  return guarded([&] {
    const auto* bytes = static_cast<const std::uint8_t*>(image);
    BkoqImageError error{};
    const bool isHeaderGood = checkImageHeader(bytes, size, error);
    const bool isChecksumBad = error.problem == BKOQ_IMAGE_CHECKSUM;
    if (!isHeaderGood && visitor != nullptr) visitor(&error, user);
    if (salvage != nullptr) salvage->doubts = isHeaderGood ? 0 : 1;
    if (size <= kHeaderSize) return BKOQ_BAD_IMAGE;
    // An offset has 32 bits, so nothing beyond can be reached.
    const auto total = static_cast<std::uint32_t>(std::min<std::size_t>(size, 0xFFFFFFF0U));
    *layout = likelyLayout(bytes, total);
    const std::uint32_t named = loadWord(bytes + kLayoutAt);
    const bool isMislabelled = error.problem != BKOQ_IMAGE_LAYOUT && (named == 1 || named == 2) &&
                               (named == 2) != (*layout == BKOQ_LAYOUT_PREVIOUS);
    if (isMislabelled) {
      setMislabelled(error, named);
      if (visitor != nullptr) visitor(&error, user);
    }
    Salvager salvager(bytes, total, visitor, user);
    salvager.read(*layout);
    if (salvage != nullptr) {
      const std::vector<std::uint32_t>& offsets = salvager.offsets();
      salvage->offsets = static_cast<std::uint32_t*>(std::malloc(offsets.size() * 4));
      if (salvage->offsets == nullptr) return BKOQ_NO_MEMORY;
      std::copy(offsets.begin(), offsets.end(), salvage->offsets);
      salvage->blocks = static_cast<std::uint32_t>(offsets.size());
      salvage->doubts = salvager.doubts() + (isHeaderGood ? 0 : 1) + (isMislabelled ? 1 : 0);
      salvage->doubtfulFrom = salvager.doubtfulFrom();
      // Bytes were changed, and nothing tells which.
      if (isChecksumBad) salvage->doubtfulFrom = 1;
    }
    *root = salvager.release();
    return BKOQ_OK;
  });
}
