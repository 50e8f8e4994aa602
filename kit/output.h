#ifndef BKOQ_KIT_OUTPUT_H_
#define BKOQ_KIT_OUTPUT_H_

#include <string>
#include <string_view>

#include "bkoq/kit.h"

namespace bkoq::kit {

// Collects output and hands it to the sink in large pieces. Once the sink has failed it is not
// called again.
class Output {
 public:
  Output(BkoqSink sink, void* user) : sink_(sink), user_(user) {}

  void put(std::string_view text) {
    pending_ += text;
    if (pending_.size() >= kPiece) flush();
  }
  // Hands over what is left; whether the sink took everything.
  bool flush() {
    if (!failed_ && !pending_.empty()) {
      failed_ = sink_(user_, pending_.data(), pending_.size()) != 0;
    }
    pending_.clear();
    return !failed_;
  }
  bool failed() const { return failed_; }

 private:
  static constexpr std::size_t kPiece = 16384;

  BkoqSink sink_;
  void* user_;
  std::string pending_;
  bool failed_ = false;
};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_OUTPUT_H_
