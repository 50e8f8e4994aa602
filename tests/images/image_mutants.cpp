// Hostile images that know what they are: made of good ones by changing fields, pointers, counts,
// texts and blocks where they lie, with the size and the checksum made right; and what is refused
// is repaired by what the reader complains of, step by step, so that the deeper rules are reached
// as well. Every image on the way is read in each way that the kit has, and what is taken is
// written again.
//
// Usage: image_mutants --seed N --count N [--keep FILE EVERY] IMAGE...
// Keeps one of EVERY images in FILE for other readers: size, number of lines (-1: refused), what
// was wrong (99: of the other layout), each in four bytes, then the image.
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "kit/image.h"
#include "tests/images/judge.h"

namespace bkoq::test {
namespace {

constexpr std::uint32_t kWordSize = 4;
constexpr int kOfOtherLayout = 99;

std::uint32_t wordAt(const std::string& image, std::size_t at) {
  return kit::loadWord(reinterpret_cast<const std::uint8_t*>(image.data()) + at);
}
void putWord(std::string& image, std::size_t at, std::uint32_t value) {
  if (at + kWordSize <= image.size()) {
    kit::storeWord(reinterpret_cast<std::uint8_t*>(&image[at]), value);
  }
}
void putSize(std::string& image) {
  putWord(image, kit::kSizeAt, static_cast<std::uint32_t>(image.size()));
}
void seal(std::string& image) {
  if (image.size() < kit::kHeaderSize) return;
  putWord(image, kit::kChecksumAt,
          kit::imageChecksum(reinterpret_cast<const std::uint8_t*>(image.data()), image.size()));
}

void flipBit(char& byte, std::uint32_t bit) {
  byte = static_cast<char>(static_cast<unsigned char>(byte) ^ 1U << bit);
}

struct Field {
  std::uint32_t at = 0;  // in the image
  std::uint32_t width = 0;
  BkoqFieldKind kind = BKOQ_FIELD_NUMBER;
  std::uint32_t block = 0;   // in which it lies, from 1
  std::uint32_t target = 0;  // the block to which it points; 0 for none
  std::uint32_t elementSize = 0;
  std::string name;

  bool isPointer() const {
    return kind == BKOQ_FIELD_TEXT || kind == BKOQ_FIELD_TWO_TEXTS ||
           kind == BKOQ_FIELD_TEXT_LIST || kind == BKOQ_FIELD_ARRAY || kind == BKOQ_FIELD_RECORD ||
           (kind == BKOQ_FIELD_OPAQUE && width == kWordSize);
  }
  bool hasTexts() const {
    return kind == BKOQ_FIELD_TEXT || kind == BKOQ_FIELD_TWO_TEXTS || kind == BKOQ_FIELD_TEXT_LIST;
  }
};

struct Extent {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;  // with its padding
  std::uint32_t parent = 0;
};

// Where everything lies in a good image, by what a walk tells.
class Map {
 public:
  explicit Map(std::string image) : image_(std::move(image)) {
    BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
    void* root = nullptr;
    if (bkoqUseImage(&image_[0], image_.size(), &layout, &root, nullptr) != BKOQ_OK) return;
    bkoqWalk(
        root, layout,
        [](const BkoqVisit* visit, void* self) {
          static_cast<Map*>(self)->visit(*visit);
          return 0;
        },
        this);
  }

  std::vector<Field> fields;
  std::vector<Extent> blocks;  // block 1 is the first

  // The block and all that only it leads to, which lie together.
  Extent subtree(std::uint32_t block) const {
    Extent whole = blocks[block - 1];
    for (std::uint32_t i = block; i < blocks.size() && blocks[i].parent >= block; ++i) {
      whole.end = blocks[i].end;
    }
    return whole;
  }
  std::uint32_t blocksIn(const Extent& extent) const {
    std::uint32_t count = 0;
    for (const Extent& each : blocks) {
      count += each.begin >= extent.begin && each.begin < extent.end ? 1 : 0;
    }
    return count;
  }

 private:
  std::uint32_t offsetOf(const void* place) const {
    return static_cast<std::uint32_t>(static_cast<const char*>(place) - image_.data());
  }
  void add(std::uint32_t begin, std::uint32_t size, std::uint32_t parent) {
    blocks.push_back({begin, (begin + size + 3) / 4 * 4, parent});
  }
  void visit(const BkoqVisit& visit) {
    if (visit.event == BKOQ_RECORD_BEGIN && visit.depth == 0) {
      add(offsetOf(visit.bytes), visit.width, 0);
    }
    if (visit.event != BKOQ_FIELD || visit.kind == BKOQ_FIELD_EMBEDDED) return;
    Field field;
    field.at = offsetOf(visit.bytes);
    field.width = visit.width;
    field.kind = visit.kind;
    field.block = visit.block;
    field.target = visit.target;
    field.name = visit.field;
    if (visit.kind == BKOQ_FIELD_ARRAY && visit.target != 0 && visit.count > 0) {
      field.elementSize = visit.targetSize / visit.count;
    }
    if (visit.target != 0) add(offsetOf(visit.targetBytes), visit.targetSize, visit.block);
    fields.push_back(field);
  }

  std::string image_;
};

class Maker {
 public:
  explicit Maker(std::uint64_t seed) : random_(seed) {}

  std::uint32_t below(std::uint32_t most) {
    return most == 0 ? 0 : static_cast<std::uint32_t>(random_() % most);
  }
  bool oneOf(std::uint32_t count) { return below(count) == 0; }
  template <class List>
  const auto& from(const List& list) {
    return *(std::begin(list) + below(static_cast<std::uint32_t>(std::size(list))));
  }

  // Another image that follows all rules.
  std::string reshaped(const std::string& image) {
    const Map map(image);
    switch (below(7)) {
      case 0:
        return withOtherText(image, map);
      case 1:
        return withoutSubtree(image, map);
      case 2:
        return withElement(image, map);
      case 3:
        return withoutElement(image, map);
      case 4:
        return withText(image, map);
      default:
        return withOtherNumber(image, map);
    }
  }

  // One that probably breaks some.
  std::string broken(std::string image, const Map& map) {
    const auto size = static_cast<std::uint32_t>(image.size());
    const std::vector<const Field*> pointers =
        fieldsWith(map, [](const Field& field) { return field.isPointer(); });
    const std::vector<const Field*> counts =
        fieldsWith(map, [](const Field& field) { return field.kind == BKOQ_FIELD_COUNT; });
    const std::vector<const Field*> used =
        fieldsWith(map, [](const Field& field) { return field.target != 0; });
    switch (below(13)) {
      case 0: {
        const std::uint32_t at = from(pointers)->at;
        const std::uint32_t other = wordAt(image, from(pointers)->at);
        const std::uint32_t values[] = {
            0,  other,    1,    4,        28,         31,         32,         33,
            36, size - 4, size, size + 4, 0x7FFFFFFC, 0x80000000, 0xFFFFFFFC, 0xFFFFFFFF};
        putWord(image, at, from(values));
        break;
      }
      case 1: {
        const std::uint32_t at = from(used.empty() ? pointers : used)->at;
        const int steps[] = {-100, -32, -8, -4, -2, -1, 1, 2, 3, 4, 8, 16, 32, 100};
        putWord(image, at, wordAt(image, at) + static_cast<std::uint32_t>(from(steps)));
        break;
      }
      case 2: {
        const std::uint32_t first = from(pointers)->at;
        const std::uint32_t second = from(pointers)->at;
        const std::uint32_t kept = wordAt(image, first);
        putWord(image, first, wordAt(image, second));
        putWord(image, second, kept);
        break;
      }
      case 3:
      case 4: {
        const std::uint32_t at = from(counts)->at;
        const std::uint32_t now = wordAt(image, at);
        const std::uint32_t values[] = {0,          1,          2,          now - 1,    now + 1,
                                        now * 2,    0x10000,    0x028F5C29, 0x04EC4EC5, 0x08000001,
                                        0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        putWord(image, at, from(values));
        break;
      }
      case 5: {
        // What says how the rest is read.
        const std::vector<const Field*> kinds = fieldsWith(map, [](const Field& field) {
          return field.name == "usJobType" || field.name == "usNodeType" ||
                 field.name == "usFilterType" || field.name == "usTimeRange";
        });
        const std::uint16_t values[] = {0, 1,  2,  3,  4,  5,  6,  7,    8,
                                        9, 10, 11, 14, 20, 21, 29, 0x103};
        const std::uint32_t at = from(kinds)->at;
        const std::uint16_t value = from(values);
        image[at] = static_cast<char>(value);
        image[at + 1] = static_cast<char>(value >> 8);
        break;
      }
      case 6: {
        if (used.empty()) break;
        // An end of a text within it, or none at its end.
        const Extent& extent = map.blocks[from(used)->target - 1];
        if (oneOf(2)) {
          image[extent.begin + below(extent.end - extent.begin)] = '\0';
        } else {
          for (std::uint32_t i = extent.end - 1 - below(4); i < extent.end; ++i) image[i] = 'x';
        }
        break;
      }
      case 7: {
        // Two blocks in each other's place, with or without what points to them.
        if (used.size() < 2) break;
        const Field& first = *from(used);
        const Field& second = *from(used);
        const Extent one = map.blocks[first.target - 1];
        const Extent other = map.blocks[second.target - 1];
        if (one.end > other.begin) break;
        const std::string bytes = image.substr(one.begin, one.end - one.begin);
        const std::string otherBytes = image.substr(other.begin, other.end - other.begin);
        image.replace(other.begin, otherBytes.size(), bytes);
        image.replace(one.begin, bytes.size(), otherBytes);
        break;
      }
      case 8: {
        const std::uint32_t at = 32 + 4 * below((size - 32) / 4);
        if (oneOf(2)) {
          image.insert(at, 4 * (1 + below(8)), oneOf(2) ? '\0' : '\x20');
        } else {
          image.erase(at, 4 * (1 + below(8)));
        }
        break;
      }
      case 9:
        if (oneOf(2)) {
          image.resize(below(oneOf(4) ? 33 : size + 1));
        } else {
          image.append(1 + below(12), static_cast<char>(below(2)));
        }
        break;
      case 10: {
        const std::uint32_t headers[] = {0, 4, 8, 12, 16, 20, 24, 28};
        const std::uint32_t at = from(headers);
        const std::uint32_t values[] = {
            0, 1, 2, 3, 32, 36, wordAt(image, at) + 1, wordAt(image, at) - 1, 0xFFFFFFFF};
        putWord(image, at, from(values));
        isHeaderKept_ = true;
        break;
      }
      case 11: {
        if (used.empty()) break;
        const Extent whole = map.subtree(from(used)->target);
        image.erase(whole.begin, whole.end - whole.begin);
        break;
      }
      default:
        flipBit(image[32 + below(size - 32)], below(8));
        break;
    }
    return image;
  }

  // The size and the checksum made right, most of the time.
  void finish(std::string& image) {
    if (!isHeaderKept_ && !oneOf(20)) putSize(image);
    isHeaderKept_ = false;
    if (!oneOf(20)) seal(image);
  }

  // Follows a complaint; whether there was anything to follow.
  bool repair(std::string& image, const BkoqImageError& error) {
    const std::uint32_t at = error.position;
    switch (error.problem) {
      case BKOQ_IMAGE_MAGIC:
        image.replace(0, kit::kMagicSize, BKOQ_IMAGE_SIGNATURE);
        break;
      case BKOQ_IMAGE_VERSION:
        putWord(image, kit::kVersionAt, BKOQ_IMAGE_FORMAT_VERSION);
        break;
      case BKOQ_IMAGE_LAYOUT:
        putWord(image, kit::kLayoutAt, wordAt(image, kit::kLayoutAt) == 1 ? 2 : 1);
        break;
      case BKOQ_IMAGE_SIZE:
        image.resize((image.size() + 3) / 4 * 4);
        putSize(image);
        break;
      case BKOQ_IMAGE_CHECKSUM:
        break;
      case BKOQ_IMAGE_ROOT:
        putWord(image, kit::kRootAt, kit::kHeaderSize);
        break;
      case BKOQ_IMAGE_OVERLAP:
      case BKOQ_IMAGE_GAP:
        putWord(image, at, oneOf(4) ? 0 : numberIn(error.expected));
        break;
      case BKOQ_IMAGE_OUTSIDE:
      case BKOQ_IMAGE_UNALIGNED:
        putWord(image, at, oneOf(3) ? 0 : wordAt(image, at) / 4 * 4 % (4 + image.size()));
        break;
      case BKOQ_IMAGE_UNKNOWN_MEDIA:
        putWord(image, at, 0);
        break;
      case BKOQ_IMAGE_COUNT: {
        const std::uint32_t most = numberIn(error.expected);
        if (std::strncmp(error.expected, "at most", 7) != 0) {
          image.append(292, '\0');
          putSize(image);
        } else {
          putWord(image, at - kWordSize, below(std::min(most, 3U) + 1));  // it is before its array
        }
        break;
      }
      case BKOQ_IMAGE_UNTERMINATED:
        image.append(4, '\0');
        putSize(image);
        break;
      case BKOQ_IMAGE_PADDING:
        image[at] = '\0';
        break;
      case BKOQ_IMAGE_TRAILING:
        image.resize(at);
        putSize(image);
        break;
      case BKOQ_IMAGE_BLOCKS:
        putWord(image, kit::kBlocksAt, numberIn(error.expected));
        break;
      default:
        return false;
    }
    seal(image);
    return true;
  }

 private:
  template <class Which>
  static std::vector<const Field*> fieldsWith(const Map& map, const Which& which) {
    std::vector<const Field*> fields;
    for (const Field& field : map.fields) {
      if (which(field)) fields.push_back(&field);
    }
    return fields;
  }

  // The first number in "offset 332", "at most 3 BKNODE".
  static std::uint32_t numberIn(const char* words) {
    words += std::strcspn(words, "0123456789");
    return static_cast<std::uint32_t>(std::strtoul(words, nullptr, 10));
  }

  // Puts bytes in place of others, and moves what points behind them.
  static std::string spliced(const std::string& image, const Map& map, std::uint32_t at,
                             std::uint32_t removed, const std::string& bytes, int blocks) {
    std::string result = image;
    for (const Field& field : map.fields) {
      const std::uint32_t offset = wordAt(image, field.at);
      if (!field.isPointer() || offset == 0 || offset < at + removed) continue;
      if (removed == 0 && bytes.empty()) continue;
      putWord(result, field.at, offset - removed + static_cast<std::uint32_t>(bytes.size()));
    }
    result.replace(at, removed, bytes);
    putWord(result, kit::kBlocksAt,
            wordAt(image, kit::kBlocksAt) + static_cast<std::uint32_t>(blocks));
    putSize(result);
    seal(result);
    return result;
  }

  std::string text() {
    // NOLINTBEGIN(misc-misleading-bidirectional): that is what it is about
    static const char* const kPieces[] = {"",
                                          "a",
                                          "node",
                                          "C:\\data",
                                          "\x1b[2J",
                                          "\xff\xfe",
                                          "\xe2\x80\xae",
                                          "caf\xc3\xa9",
                                          "user:password",
                                          "\""};
    // NOLINTEND(misc-misleading-bidirectional)
    std::string text = from(kPieces);
    if (oneOf(4)) text.append(below(300), 'y');
    return text;
  }
  static std::string padded(std::string bytes) {
    bytes.resize((bytes.size() + 3) / 4 * 4);
    return bytes;
  }

  std::string withOtherText(const std::string& image, const Map& map) {
    const auto fields =
        fieldsWith(map, [](const Field& field) { return field.hasTexts() && field.target != 0; });
    if (fields.empty()) return image;
    const Field& field = *from(fields);
    const Extent& extent = map.blocks[field.target - 1];
    const std::string old = image.substr(extent.begin, extent.end - extent.begin);
    std::string bytes;
    const std::size_t count = field.kind == BKOQ_FIELD_TEXT ? 1
                              : field.kind == BKOQ_FIELD_TWO_TEXTS
                                  ? 2
                                  : wordAt(image, field.at - kWordSize);
    for (std::size_t i = 0; i < count; ++i) bytes += text() + '\0';
    return spliced(image, map, extent.begin, extent.end - extent.begin, padded(bytes), 0);
  }

  std::string withoutSubtree(const std::string& image, const Map& map) {
    const auto fields = fieldsWith(map, [](const Field& field) { return field.target != 0; });
    if (fields.empty()) return image;
    const Field& field = *from(fields);
    const Extent whole = map.subtree(field.target);
    std::string cut = image;
    putWord(cut, field.at, 0);
    // An array without elements may still have a count: it is an unfinished one.
    const bool isCounted = field.kind == BKOQ_FIELD_ARRAY || field.kind == BKOQ_FIELD_TEXT_LIST;
    if (isCounted && oneOf(2)) putWord(cut, field.at - kWordSize, 0);
    return spliced(cut, map, whole.begin, whole.end - whole.begin, "",
                   -static_cast<int>(map.blocksIn(whole)));
  }

  std::string withElement(const std::string& image, const Map& map) {
    const auto fields = fieldsWith(map, [](const Field& field) { return field.elementSize != 0; });
    if (fields.empty()) return image;
    const Field& field = *from(fields);
    std::string more = image;
    putWord(more, field.at - kWordSize, wordAt(image, field.at - kWordSize) + 1);
    return spliced(more, map, map.blocks[field.target - 1].end, 0,
                   std::string(field.elementSize, '\0'), 0);
  }

  // The last element, if nothing is in it.
  std::string withoutElement(const std::string& image, const Map& map) {
    const auto fields = fieldsWith(map, [&](const Field& field) {
      if (field.elementSize == 0) return false;
      const std::uint32_t end = map.blocks[field.target - 1].end;
      for (const Field& each : map.fields) {
        if (each.target != 0 && each.at < end && each.at >= end - field.elementSize) return false;
      }
      return true;
    });
    if (fields.empty()) return image;
    const Field& field = *from(fields);
    std::string less = image;
    putWord(less, field.at - kWordSize, wordAt(image, field.at - kWordSize) - 1);
    const std::uint32_t end = map.blocks[field.target - 1].end;
    return spliced(less, map, end - field.elementSize, field.elementSize, "", 0);
  }

  // A text where there is none.
  std::string withText(const std::string& image, const Map& map) {
    const auto fields = fieldsWith(
        map, [](const Field& field) { return field.kind == BKOQ_FIELD_TEXT && field.target == 0; });
    if (fields.empty()) return image;
    const Field& field = *from(fields);
    // Before the block of whatever points somewhere next.
    auto at = static_cast<std::uint32_t>(image.size());
    bool isAfter = false;
    for (const Field& each : map.fields) {
      if (isAfter && each.target != 0) {
        at = map.blocks[each.target - 1].begin;
        break;
      }
      isAfter = isAfter || &each == &field;
    }
    std::string more = spliced(image, map, at, 0, padded(text() + '\0'), 1);
    putWord(more,
            field.at < at ? field.at
                          : field.at + (static_cast<std::uint32_t>(more.size() - image.size())),
            at);
    seal(more);
    return more;
  }

  std::string withOtherNumber(const std::string& image, const Map& map) {
    const auto fields = fieldsWith(map, [](const Field& field) {
      return !field.isPointer() && field.kind != BKOQ_FIELD_COUNT;
    });
    const Field& field = *from(fields);
    std::string changed = image;
    const std::uint32_t values[] = {0, 1, 2, 3, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    const std::uint32_t value = from(values);
    for (std::uint32_t i = 0; i < field.width; ++i) {
      changed[field.at + i] = static_cast<char>(i < kWordSize ? value >> (8 * i) : value);
    }
    seal(changed);
    return changed;
  }

  std::mt19937_64 random_;
  bool isHeaderKept_ = false;
};

struct Totals {
  std::uint64_t images = 0;
  std::uint64_t taken = 0;
  std::uint64_t repaired = 0;
  std::map<int, std::uint64_t> problems;
};

class Keeper {
 public:
  void open(const char* path, std::uint32_t every) {
    file_.open(path, std::ios::binary);
    every_ = every;
  }
  void keep(const std::string& image, const Verdict& verdict, std::uint64_t number) {
    if (!file_.is_open() || number % every_ != 0) return;
    word(static_cast<std::uint32_t>(image.size()));
    word(verdict.isTaken ? verdict.lines : 0xFFFFFFFF);
    const bool isMislabelled = std::strncmp(verdict.error.text, "mislabelled", 11) == 0;
    word(isMislabelled ? kOfOtherLayout : static_cast<std::uint32_t>(verdict.error.problem));
    file_.write(image.data(), static_cast<std::streamsize>(image.size()));
  }

 private:
  void word(std::uint32_t value) {
    std::uint8_t bytes[kWordSize];
    kit::storeWord(bytes, value);
    file_.write(reinterpret_cast<const char*>(bytes), sizeof bytes);
  }
  std::ofstream file_;
  std::uint32_t every_ = 1;
};

Verdict judged(const std::string& image, Totals& totals, Keeper& keeper) {
  const Verdict verdict = judge(image);
  keeper.keep(image, verdict, totals.images);
  ++totals.images;
  ++totals.problems[verdict.error.problem];
  totals.taken += verdict.isTaken ? 1 : 0;
  return verdict;
}

int run(std::uint64_t seed, std::uint64_t count, const std::vector<std::string>& good,
        Keeper& keeper) {
  constexpr int kMostRepairs = 40;
  constexpr std::size_t kMostSize = 20000;
  Totals totals;
  for (std::uint64_t i = 0; totals.images < count; ++i) {
    Maker maker(seed + i);
    std::string image = maker.from(good);
    for (std::uint32_t steps = maker.below(4); steps > 0; --steps) {
      image = maker.reshaped(image);
      const Verdict verdict = judged(image, totals, keeper);
      // Another kind of job, node or filter is read by other rules, and so is what it holds.
      if (!verdict.isTaken) break;
    }
    const Map map(image);
    if (map.blocks.empty()) continue;
    for (std::uint32_t steps = 1 + maker.below(3); steps > 0; --steps) {
      if (image.size() < kit::kHeaderSize + 300) break;
      std::string next = maker.broken(image, map);
      // What lies elsewhere now is broken by the map of before, which is as good.
      const bool isSameSize = next.size() == image.size();
      image = std::move(next);
      if (!isSameSize) break;
    }
    maker.finish(image);
    Verdict verdict = judged(image, totals, keeper);
    for (int repairs = 0; !verdict.isTaken && repairs < kMostRepairs; ++repairs) {
      if (image.size() > kMostSize || !maker.repair(image, verdict.error)) break;
      verdict = judged(image, totals, keeper);
      totals.repaired += verdict.isTaken ? 1 : 0;
    }
  }
  std::cout << totals.images << " images, " << totals.taken << " taken and written again, "
            << totals.repaired << " of them repaired\n";
  for (const auto& [problem, times] : totals.problems) {
    std::cout << "  problem " << problem << ": " << times << "\n";
  }
  // All ways of being wrong were tried.
  for (int problem = BKOQ_IMAGE_SHORT; problem <= BKOQ_IMAGE_UNKNOWN_MEDIA; ++problem) {
    if (totals.problems.count(problem) == 0) {
      std::cerr << "no image had problem " << problem << "\n";
      return 1;
    }
  }
  return totals.taken > count / 10 && totals.repaired > count / 100 ? 0 : 1;
}

}  // namespace
}  // namespace bkoq::test

int main(int argc, char** argv) {
  using namespace bkoq::test;
  std::uint64_t seed = 1;
  std::uint64_t count = 1000;
  std::vector<std::string> good;
  Keeper keeper;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--seed" && i + 1 < argc) {
      seed = std::stoull(argv[++i]);
    } else if (argument == "--count" && i + 1 < argc) {
      count = std::stoull(argv[++i]);
    } else if (argument == "--keep" && i + 2 < argc) {
      keeper.open(argv[i + 1], static_cast<std::uint32_t>(std::stoul(argv[i + 2])));
      i += 2;
    } else {
      std::ifstream file(argument, std::ios::binary);
      good.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
      if (good.back().empty()) return 2;
    }
  }
  if (good.empty()) return 2;
  return run(seed, count, good, keeper);
}
