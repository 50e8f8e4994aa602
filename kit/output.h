#ifndef BKOQ_KIT_OUTPUT_H_
#define BKOQ_KIT_OUTPUT_H_

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "bkoq/kit.h"

namespace bkoq::kit {

// A few characters, made where they are needed without any memory: a number, a date.
template <std::size_t most>
class Characters {
 public:
  operator std::string_view() const { return {text_, size_}; }
  char* begin() { return text_; }
  char* limit() { return text_ + most; }
  void endAt(const char* end) { size_ = static_cast<std::size_t>(end - text_); }

 private:
  char text_[most];
  std::size_t size_ = 0;
};

template <class Number>
Characters<11> decimal(Number number) {
  Characters<11> digits;
  if (number >= 0 && number < 10) {
    *digits.begin() = static_cast<char>('0' + number);
    digits.endAt(digits.begin() + 1);
  } else {
    digits.endAt(std::to_chars(digits.begin(), digits.limit(), number).ptr);
  }
  return digits;
}

// Most of what is printed are short pieces, of which the call of memcpy() costs several times the
// copy. Not inline: there are hundreds of callers.
__attribute__((noinline)) inline void copyShort(char* to, const char* from, std::size_t size) {
  if (size > 32) {
    std::memcpy(to, from, size);
  } else if (size >= 16) {
    std::memcpy(to, from, 16);
    std::memcpy(to + size - 16, from + size - 16, 16);
  } else if (size >= 8) {
    std::memcpy(to, from, 8);
    std::memcpy(to + size - 8, from + size - 8, 8);
  } else if (size >= 4) {
    std::memcpy(to, from, 4);
    std::memcpy(to + size - 4, from + size - 4, 4);
  } else if (size > 0) {
    to[0] = from[0];
    to[size / 2] = from[size / 2];
    to[size - 1] = from[size - 1];
  }
}

// Collects output and hands it to the sink in large pieces, so that what is printed never lies in
// memory as a whole. Once the sink has failed it is not called again.
class Output {
 public:
  Output(BkoqSink sink, void* user) : sink_(sink), user_(user) {}

  void put(std::string_view text) {
    if (text.size() > kPiece - size_) return putBeyond(text);
    copyShort(pending_ + size_, text.data(), text.size());
    size_ += text.size();
  }
  template <class... Rest>
  void put(std::string_view first, std::string_view second, const Rest&... rest) {
    put(first);
    put(second, rest...);
  }
  void put(std::size_t count, char character) {
    if (count > kPiece - size_) {
      for (; count > 0; --count) put(std::string_view(&character, 1));
      return;
    }
    std::memset(pending_ + size_, character, count);
    size_ += count;
  }

  // Hands over what is left; whether the sink took everything.
  bool flush() {
    give({pending_, size_});
    size_ = 0;
    return !failed_;
  }
  bool failed() const { return failed_; }

 private:
  static constexpr std::size_t kPiece = 16384;

  // Out of line, which keeps the usual way short.
  __attribute__((noinline)) void putBeyond(std::string_view text) {
    flush();
    for (; text.size() >= kPiece; text.remove_prefix(kPiece)) give(text.substr(0, kPiece));
    std::memcpy(pending_, text.data(), text.size());
    size_ = text.size();
  }
  void give(std::string_view text) {
    if (!failed_ && !text.empty()) failed_ = sink_(user_, text.data(), text.size()) != 0;
  }

  BkoqSink sink_;
  void* user_;
  bool failed_ = false;
  std::size_t size_ = 0;
  char pending_[kPiece];
};

// A text that is put together before it is printed. Only a long one takes memory.
class Phrase {
 public:
  Phrase() = default;
  Phrase(const Phrase&) = delete;
  Phrase& operator=(const Phrase&) = delete;

  operator std::string_view() const {
    return long_.empty() ? std::string_view(short_, size_) : std::string_view(long_);
  }
  bool isEmpty() const { return size_ == 0 && long_.empty(); }
  void clear() {
    size_ = 0;
    long_.clear();
  }
  void put(std::string_view text) {
    if (!long_.empty() || text.size() > sizeof short_ - size_) return putBeyond(text);
    copyShort(short_ + size_, text.data(), text.size());
    size_ += text.size();
  }
  template <class... Rest>
  void put(std::string_view first, std::string_view second, const Rest&... rest) {
    put(first);
    put(second, rest...);
  }

 private:
  __attribute__((noinline)) void putBeyond(std::string_view text) {
    if (long_.empty()) long_.assign(short_, size_);
    long_.append(text);
  }

  std::size_t size_ = 0;  // of what is short
  char short_[72];
  std::string long_;
};

// What `print(Output&)` prints, as a string; of more than `most` bytes the first, and "...".
template <class Print>
std::string printedBy(const Print& print, std::size_t most = std::string::npos) {
  struct Bounded {
    std::string text;
    std::size_t most;
  } bounded{{}, most};
  const BkoqSink append = [](void* user, const char* piece, std::size_t size) {
    auto& all = *static_cast<Bounded*>(user);
    const std::size_t room = all.most - all.text.size();
    all.text.append(piece, size < room ? size : room);
    return size <= room ? 0 : 1;
  };
  Output out(append, &bounded);
  print(out);
  if (out.flush()) return std::move(bounded.text);
  // Without the part of a character.
  std::string& text = bounded.text;
  while (!text.empty() && (text.back() & 0xC0) == 0x80) text.pop_back();
  if (!text.empty() && (text.back() & 0x80) != 0) text.pop_back();
  return text + "...";
}

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_OUTPUT_H_
