#ifndef BKOQ_KIT_PATH_H_
#define BKOQ_KIT_PATH_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace bkoq::kit {

// A path such as "pSourceNodes[2].pMedia[0].pszDiskName". Of fixed size, since the depth of a tree
// is: the longest path has four arrays with indices of ten digits.
class Path {
 public:
  using Mark = std::size_t;

  const char* text() const { return text_; }
  std::size_t length() const { return length_; }
  Mark mark() const { return length_; }
  void cut(Mark mark) {
    length_ = mark;
    text_[length_] = '\0';
  }
  // Both return where the path ended before.
  Mark append(const char* name) {
    const Mark before = length_;
    if (length_ > 0) put(".", 1);
    put(name, std::strlen(name));
    return before;
  }
  Mark appendIndex(std::uint32_t index) {
    const Mark before = length_;
    char digits[12];
    char* first = digits + sizeof digits;
    *--first = ']';
    do {
      *--first = static_cast<char>('0' + index % 10);
      index /= 10;
    } while (index > 0);
    *--first = '[';
    put(first, static_cast<std::size_t>(digits + sizeof digits - first));
    return before;
  }

  static constexpr std::size_t kSize = 160;

 private:
  void put(const char* text, std::size_t size) {
    if (size > kSize - 1 - length_) size = kSize - 1 - length_;
    std::memcpy(text_ + length_, text, size);
    length_ += size;
    text_[length_] = '\0';
  }

  char text_[kSize] = {};
  std::size_t length_ = 0;
};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_PATH_H_
