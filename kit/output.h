#ifndef BKOQ_KIT_OUTPUT_H_
#define BKOQ_KIT_OUTPUT_H_

#include <string>
#include <string_view>
#include <utility>

#include "bkoq/kit.h"

namespace bkoq::kit {

// Collects output and hands it to the sink in large pieces, so that what is printed never lies in
// memory as a whole. Once the sink has failed it is not called again.
class Output {
 public:
  Output(BkoqSink sink, void* user) : sink_(sink), user_(user) {}

  void put(std::string_view text) {
    if (pending_.size() + text.size() >= kPiece) {
      flush();
      if (text.size() >= kPiece) return give(text);
    }
    if (!failed_) pending_ += text;
  }
  // Hands over what is left; whether the sink took everything.
  bool flush() {
    give(pending_);
    pending_.clear();
    return !failed_;
  }
  bool failed() const { return failed_; }

 private:
  static constexpr std::size_t kPiece = 16384;

  void give(std::string_view text) {
    if (!failed_ && !text.empty()) failed_ = sink_(user_, text.data(), text.size()) != 0;
  }

  BkoqSink sink_;
  void* user_;
  std::string pending_;
  bool failed_ = false;
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
