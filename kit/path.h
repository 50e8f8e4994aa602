#ifndef BKOQ_KIT_PATH_H_
#define BKOQ_KIT_PATH_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace bkoq::kit {

// A path such as "pSourceNodes[2].pMedia[0].pszDiskName". Of fixed size, since the depth of a tree
// is: the longest path has four arrays with indices of ten digits. A walk comes by many more places
// than anyone asks the path of, so it is spelled out only when it is asked for.
class Path {
 public:
  using Mark = std::size_t;

  const char* text() const {
    spell();
    return text_;
  }
  bool isEmpty() const { return count_ == 0; }
  Mark mark() const { return count_; }
  void cut(Mark mark) {
    count_ = mark;
    if (spelled_ <= mark) return;
    spelled_ = mark;
    text_[starts_[mark]] = '\0';
  }
  // Both return where the path ended before.
  Mark append(const char* name) { return append(Part{name, 0}); }
  Mark appendIndex(std::uint32_t index) { return append(Part{nullptr, index}); }

  static constexpr std::size_t kSize = 160;

 private:
  struct Part {
    const char* name;  // null for an index
    std::uint32_t index;
  };
  static constexpr std::size_t kMostParts = 16;

  Mark append(const Part& part) {
    const Mark before = count_;
    if (count_ < kMostParts) parts_[count_++] = part;
    return before;
  }

  void spell() const {
    for (; spelled_ < count_; ++spelled_) {
      const Part& part = parts_[spelled_];
      std::size_t end = starts_[spelled_];
      if (part.name == nullptr) {
        end = putIndex(end, part.index);
      } else {
        if (end > 0) end = put(end, ".", 1);
        end = put(end, part.name, std::strlen(part.name));
      }
      text_[end] = '\0';
      starts_[spelled_ + 1] = end;
    }
  }
  std::size_t putIndex(std::size_t end, std::uint32_t index) const {
    char digits[12];
    char* first = digits + sizeof digits;
    *--first = ']';
    do {
      *--first = static_cast<char>('0' + index % 10);
      index /= 10;
    } while (index > 0);
    *--first = '[';
    return put(end, first, static_cast<std::size_t>(digits + sizeof digits - first));
  }
  std::size_t put(std::size_t end, const char* text, std::size_t size) const {
    if (size > kSize - 1 - end) size = kSize - 1 - end;
    std::memcpy(text_ + end, text, size);
    return end + size;
  }

  Part parts_[kMostParts] = {};
  std::size_t count_ = 0;
  // The parts that are in the text, and where each begins there, and the next one.
  mutable std::size_t spelled_ = 0;
  mutable std::size_t starts_[kMostParts + 1] = {};
  mutable char text_[kSize] = {};
};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_PATH_H_
