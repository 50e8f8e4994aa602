#include "rw/ctoken.h"

#include <string.h>

RWCTokenizer::RWCTokenizer(const RWCString& text) noexcept : text_(text), next_(0) {}

RWCTokenizer::~RWCTokenizer() = default;

RWCString RWCTokenizer::operator()(const char* delimiters) noexcept {
  if (delimiters == nullptr) delimiters = "";
  const char* rest = text_.data() + next_;
  const size_t gap = strspn(rest, delimiters);
  const size_t length = strcspn(rest + gap, delimiters);
  next_ += gap + length;
  return RWCString(RWCString::join(rest + gap, length, nullptr, 0));
}
