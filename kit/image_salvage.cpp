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

// Texts may be read more than once where offsets are damaged, but not without end.
constexpr std::uint64_t kMostReadings = 3;
// So many texts that run into what follows them are kept track of.
constexpr std::size_t kMostOpenTexts = 64;

// Reads blocks where they must be, or where their offsets say when that is more likely. Each block
// begins after the one before it began, so none but a text can lie over another; what is in records
// is read once, and the tree can be made in the image itself.
class Salvager {
 public:
  enum class Mode {
    kTry,    // nothing is changed
    kRepair  // offsets and counts become those that were found
  };

  // After `size` bytes there are BKOQ_SALVAGE_ROOM zeros.
  Salvager(std::uint8_t* image, std::uint32_t size, Mode mode, BkoqDoubtVisitor visitor, void* user)
      : image_(image), size_(size), mode_(mode), visitor_(visitor), user_(user) {}

  void read(BkoqLayout layout) {
    RecordView job;
    job.def = recordDef(layout, RecordType::kJob);
    job.layout = layout;
    job.bytes = image_ + kHeaderSize;
    blocks_ = 1;
    moveOn(kHeaderSize, std::min(job.def->size, available(kHeaderSize)));
    if (size_ - kHeaderSize < job.def->size) doubtCut(kHeaderSize, job.def->size);
    const std::uint32_t root = loadWord(image_ + kRootAt);
    if (root != kHeaderSize) {
      doubt(BKOQ_IMAGE_ROOT, thisBlock(), kRootAt, [&] {
        return Message{words("%u", kHeaderSize), words("%u", unsigned{root}),
                       words("the job record is read from where it must be")};
      });
    }
    readRecord(job, kHeaderSize);
    checkEnd();
  }

  std::uint32_t blocks() const { return blocks_; }
  std::uint32_t doubts() const { return doubts_; }
  std::uint32_t doubtfulFrom() const { return doubtfulFrom_; }

 private:
  std::uint32_t available(std::uint32_t offset) const {
    return offset < size_ ? size_ - offset : 0;
  }
  // A word of the image, zero where it is cut off.
  std::uint32_t word(std::uint32_t position) const {
    return available(position) >= 4 ? loadWord(image_ + position) : 0;
  }

  void moveOn(std::uint32_t offset, std::uint32_t size) {
    last_ = offset;
    next_ = (offset + size + kAlignment - 1) / kAlignment * kAlignment;
    read_ += size;
    for (std::uint32_t i = offset + size; i < std::min(next_, size_); ++i) {
      if (image_[i] == 0) continue;
      doubt(BKOQ_IMAGE_PADDING, thisBlock(), i, [&] {
        return Message{words("zero"), words("0x%02x", image_[i]),
                       words("bytes after the block were changed")};
      });
      break;
    }
  }

  struct Message {
    Words expected;
    Words found;
    Words what;
  };

  // `block` is the first block that may not be what was written. `message` is called when somebody
  // is to be told: of a layout that is only tried doubts are counted, and there may be many.
  template <class MakeMessage>
  void doubt(BkoqImageProblem problem, std::uint32_t block, std::uint32_t position,
             const MakeMessage& message) {
    if (doubtfulFrom_ == 0 || block < doubtfulFrom_) doubtfulFrom_ = block;
    ++doubts_;
    if (visitor_ == nullptr) return;
    const Message said = message();
    BkoqImageError error{};
    setImageError(error, problem, path_.text(), position, said.expected.text, said.found.text,
                  said.what.text);
    visitor_(&error, user_);
  }
  std::uint32_t thisBlock() const { return blocks_; }
  std::uint32_t nextBlock() const { return blocks_ + 1; }
  // Of the block that was taken last.
  void doubtCut(std::uint32_t offset, std::uint64_t size) {
    doubt(BKOQ_IMAGE_COUNT, thisBlock(), offset, [&] {
      return Message{words("%s", byteWords(size).text),
                     words("%s", byteWords(available(offset)).text),
                     words("cut off: zeros are shown for what is missing")};
    });
  }

  // A number of the image is replaced by the one that was found.
  void store(std::uint32_t position, std::uint32_t value) {
    if (mode_ == Mode::kRepair) storeWord(image_ + position, value);
  }
  void storeCount(const FieldView& field, std::uint32_t count) {
    const auto place = static_cast<std::uint32_t>(field.record().bytes - image_);
    store(place + field.def().countOffset, count);
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
    const std::uint32_t start = findBlock(field, position);
    store(position, start);
    if (start == 0) return;
    ++blocks_;
    lastHasTexts_ = field.target() == nullptr;
    lastIsSecret_ = lastHasTexts_ && field.def().secret != Secret::kNone;
    if (field.target() != nullptr) {
      endTexts(start);
      readElements(field, start, position);
    } else {
      readTexts(field, start);
    }
  }

  // Where the block of a pointer begins; 0 for none.
  std::uint32_t findBlock(const FieldView& field, std::uint32_t position) {
    const std::uint32_t offset = word(position);
    if (offset == 0) return 0;
    if (!field.pointsSomewhere()) {
      doubt(BKOQ_IMAGE_UNKNOWN_MEDIA, nextBlock(), position, [&] {
        return Message{words("null"), words("offset %u", offset),
                       words("not read, since the kind of the job is not known")};
      });
      return 0;
    }
    if (read_ > kMostReadings * size_ || openTexts_.size() >= kMostOpenTexts) {
      doubt(BKOQ_IMAGE_OVERLAP, nextBlock(), position, [&] {
        return Message{words("blocks that take the image once"), words("more"),
                       words("not read: too much leads to the same bytes")};
      });
      return 0;
    }
    // Texts that run into one another: what is secret is to be found in no other text.
    const bool isInTextBefore =
        lastHasTexts_ && offset > last_ && offset < next_ && offset % kAlignment == 0;
    const bool isSecret = field.def().secret != Secret::kNone;
    if (isInTextBefore && lastIsSecret_ && !leadsOn(field, offset)) {
      doubt(BKOQ_IMAGE_OVERLAP, nextBlock(), position, [&] {
        return Message{words("offset %u", unsigned{next_}), words("offset %u", unsigned{offset}),
                       words("not read: it leads into a secret")};
      });
      return 0;
    }
    if (isInTextBefore && isSecret && !lastIsSecret_) {
      endTexts(offset);
      shift_ = 0;
      return offset;
    }
    if (isTakenLater(offset, position)) {
      doubt(BKOQ_IMAGE_OVERLAP, nextBlock(), position, [&] {
        return Message{words("null"), words("offset %u", unsigned{offset}),
                       words("not read: another offset leads to the block that comes here")};
      });
      return 0;
    }
    const std::uint32_t start = std::min(startOf(field, offset, position), size_);
    const bool isCounted =
        field.def().kind == FieldKind::kArray || field.def().kind == FieldKind::kTextList;
    if (start >= size_ && !(isCounted && field.count() == 0)) {
      // Nothing of the block is there. Its count stays, and tells how many there were.
      doubt(BKOQ_IMAGE_OUTSIDE, nextBlock(), position, [&] {
        return Message{words("less than %u", unsigned{size_}), words("offset %u", unsigned{offset}),
                       words("cut off: nothing of it is left")};
      });
      return 0;
    }
    return start;
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
    const bool isContradicted = following > next_ && following <= offset && following % 4 == 0;
    const bool isShifted = shift_ != 0 && offset + shift_ == next_;
    const bool isInText =
        field.target() == nullptr && offset > next_ && offset < size_ && image_[offset - 1] != 0;
    const bool isNext = leadsOn(field, next_) || leadsOn(field, next_, next_ - offset);
    const bool isBelieved = isPossible && !isShifted && !isInText &&
                            !(offset > next_ && isContradicted) &&
                            !(isNext && !leadsOn(field, offset));
    shift_ = isBelieved ? 0 : next_ - offset;
    doubt(offset > next_ ? BKOQ_IMAGE_GAP : BKOQ_IMAGE_OVERLAP, nextBlock(), position, [&] {
      return Message{words("offset %u", unsigned{next_}), words("offset %u", unsigned{offset}),
                     isBelieved
                         ? words("read from the offset, not from where the block should be")
                         : words("read from where the block should be, not from its offset")};
    });
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
    moveOn(start, std::min(count * size, available(start)));
    if (count != said) {
      storeCount(field, count);
      doubt(BKOQ_IMAGE_COUNT, thisBlock(), position, [&] {
        return Message{
            words("%u %s", unsigned{count}, field.target()->name), words("%u", unsigned{said}),
            words("of %u there %s %u", unsigned{said}, count == 1 ? "is" : "are", unsigned{count})};
      });
    }
    const std::uint64_t whole = std::uint64_t{count} * size;
    if (whole > available(start)) doubtCut(start, whole);
    for (std::uint32_t i = 0; i < count; ++i) {
      Path::Mark mark = path_.mark();
      if (field.def().kind == FieldKind::kArray) mark = path_.appendIndex(i);
      readRecord(field.elementAt(image_ + start + i * size), start + i * size);
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
    moveOn(start, size);
    addOpenText(field, start, end);
    if (!isCut) return;
    if (kept != count) storeCount(field, kept);
    doubt(BKOQ_IMAGE_UNTERMINATED, thisBlock(), start, [&] {
      return Message{words("%u texts with their NULs", unsigned{count}),
                     words("the end of the image at %u", unsigned{size_}),
                     words("cut off: what is left of the text is shown")};
    });
  }

  // Remembers a text until it is known whether it runs into records.
  void addOpenText(const FieldView& field, std::uint32_t start, std::uint32_t end) {
    const auto isOver = [start](const OpenText& text) { return text.end <= start; };
    openTexts_.erase(std::remove_if(openTexts_.begin(), openTexts_.end(), isOver),
                     openTexts_.end());
    const auto record = static_cast<std::uint32_t>(field.record().bytes - image_);
    const bool isList = field.kind() == FieldKind::kTextList;
    openTexts_.push_back({start, end, thisBlock(), isList ? record + field.def().countOffset : 0,
                          field.kind() == FieldKind::kTwoTexts});
  }

  // Records or a secret begin at `start`: whatever text runs into them has lost its end, and ends
  // before them.
  void endTexts(std::uint32_t start) {
    for (const OpenText& text : openTexts_) {
      if (text.end <= start) continue;
      doubt(BKOQ_IMAGE_OVERLAP, text.block, text.start, [&] {
        return Message{words("an end before %u", unsigned{start}), words("%u", unsigned{text.end}),
                       words("cut off: the text runs into what comes here")};
      });
      const std::uint32_t end = start - 1;
      if (mode_ == Mode::kRepair) image_[end] = 0;
      if (text.areTwo && mode_ == Mode::kRepair) image_[end - 1] = 0;
      if (text.countAt == 0) continue;
      // What is left of a list, without the padding after it.
      std::uint32_t last = end;
      while (last > text.start && start - last < kAlignment && image_[last - 1] == 0) --last;
      const auto nuls = std::count(image_ + text.start, image_ + last, std::uint8_t{0});
      store(text.countAt, static_cast<std::uint32_t>(nuls) + 1);
    }
    openTexts_.clear();
  }

  void checkEnd() {
    if (next_ < size_) {
      doubt(BKOQ_IMAGE_TRAILING, doubtfulFrom_ != 0 ? doubtfulFrom_ : 1, next_, [&] {
        return Message{words("the end of the image"),
                       words("%s more", byteWords(size_ - next_).text),
                       words("bytes at the end belong to nothing that was found")};
      });
    }
    const std::uint32_t said = loadWord(image_ + kBlocksAt);
    if (blocks_ != said) {
      doubt(BKOQ_IMAGE_BLOCKS, doubtfulFrom_ != 0 ? doubtfulFrom_ : 1, kBlocksAt, [&] {
        return Message{words("%u blocks", unsigned{blocks_}), words("%u", unsigned{said}),
                       words("not as many blocks as the header says")};
      });
    }
  }

  // A block of texts, which reaches up to `end` unless it is cut.
  struct OpenText {
    std::uint32_t start;
    std::uint32_t end;
    std::uint32_t block;
    std::uint32_t countAt;  // of a list
    bool areTwo;
  };

  std::uint8_t* image_;
  std::uint32_t size_;
  Mode mode_;
  BkoqDoubtVisitor visitor_;
  void* user_;
  Path path_;
  std::vector<OpenText> openTexts_;
  std::uint32_t blocks_ = 0;
  std::uint32_t last_ = 0;  // where the last block began
  bool lastHasTexts_ = false;
  bool lastIsSecret_ = false;
  std::uint32_t next_ = kHeaderSize;  // where the next one must begin
  std::uint32_t shift_ = 0;           // what an offset that was not believed lacked
  std::uint64_t read_ = 0;
  std::uint32_t doubts_ = 0;
  std::uint32_t doubtfulFrom_ = 0;
};

// The layout that the header names, unless the tree is wholly of the other one; without such a name
// the one in which there is less to doubt.
BkoqLayout likelyLayout(std::uint8_t* image, std::uint32_t size) {
  const std::uint32_t named = loadWord(image + kLayoutAt);
  const BkoqLayout first = named == 2 ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT;
  const BkoqLayout second = named == 2 ? BKOQ_LAYOUT_CURRENT : BKOQ_LAYOUT_PREVIOUS;
  const auto doubtsAs = [&](BkoqLayout layout) {
    Salvager salvager(image, size, Salvager::Mode::kTry, nullptr, nullptr);
    salvager.read(layout);
    return salvager.doubts();
  };
  const std::uint32_t asNamed = doubtsAs(first);
  if (asNamed == 0) return first;
  const bool isNamed = named == 1 || named == 2;
  return doubtsAs(second) < (isNamed ? 1 : asNamed) ? second : first;
}

// Makes pointers of the offsets of a repaired image.
void makePointers(std::uint8_t* image, const RecordView& record) {
  forEachField(record, [image](const FieldView& field) {
    auto* bytes = const_cast<std::uint8_t*>(field.bytes());
    if (field.def().kind == FieldKind::kEmbedded) makePointers(image, field.elementAt(bytes));
    if (!field.def().isPointer() || loadWord(bytes) == 0) return true;
    std::uint8_t* block = image + loadWord(bytes);
    std::memcpy(bytes, &block, sizeof block);
    if (field.target() == nullptr) return true;
    const std::uint32_t count = field.count();
    for (std::uint32_t i = 0; i < count; ++i) {
      makePointers(image, field.elementAt(block + i * field.target()->size));
    }
    return true;
  });
}

}  // namespace
}  // namespace bkoq::kit

BkoqStatus bkoqSalvageImage(void* image, size_t size, BkoqLayout* layout, void** root,
                            BkoqDoubtVisitor visitor, void* user, BkoqSalvage* salvage) {
  using namespace bkoq::kit;
  if (root != nullptr) *root = nullptr;
  if (salvage != nullptr) *salvage = BkoqSalvage{};
  const bool isAligned = reinterpret_cast<std::uintptr_t>(image) % kAlignment == 0;
  if (image == nullptr || layout == nullptr || root == nullptr || !isAligned) {
    return BKOQ_BAD_ARGUMENT;
  }
  return guarded([&] {
    auto* bytes = static_cast<std::uint8_t*>(image);
    BkoqImageError error{};
    const bool isHeaderGood = checkImageHeader(bytes, size, error);
    // Nothing of a good image is doubtful, however unlikely it looks.
    if (isHeaderGood && bkoqUseImage(image, size, layout, root, nullptr) == BKOQ_OK) {
      if (salvage != nullptr) salvage->blocks = loadWord(bytes + kBlocksAt);
      return BKOQ_OK;
    }
    const bool isChecksumBad = error.problem == BKOQ_IMAGE_CHECKSUM;
    if (!isHeaderGood && visitor != nullptr) visitor(&error, user);
    if (salvage != nullptr) salvage->doubts = isHeaderGood ? 0 : 1;
    if (size <= kHeaderSize) return BKOQ_BAD_IMAGE;
    std::memset(bytes + size, 0, BKOQ_SALVAGE_ROOM);
    const auto total = static_cast<std::uint32_t>(size);
    *layout = likelyLayout(bytes, total);
    const std::uint32_t named = loadWord(bytes + kLayoutAt);
    const bool isMislabelled = error.problem != BKOQ_IMAGE_LAYOUT && (named == 1 || named == 2) &&
                               (named == 2) != (*layout == BKOQ_LAYOUT_PREVIOUS);
    if (isMislabelled) {
      setMislabelled(error, named);
      if (visitor != nullptr) visitor(&error, user);
    }
    Salvager salvager(bytes, total, Salvager::Mode::kRepair, visitor, user);
    salvager.read(*layout);
    makePointers(bytes, RecordView::job(bytes + kHeaderSize, *layout));
    storeWord(bytes + kSizeAt, total);
    if (salvage != nullptr) {
      salvage->blocks = salvager.blocks();
      salvage->doubts = salvager.doubts() + (isHeaderGood ? 0 : 1) + (isMislabelled ? 1 : 0);
      salvage->doubtfulFrom = salvager.doubtfulFrom();
      // Bytes were changed, and nothing tells which.
      if (isChecksumBad) salvage->doubtfulFrom = 1;
    }
    *root = bytes + kHeaderSize;
    return BKOQ_OK;
  });
}
