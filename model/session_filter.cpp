#include "model/session_filter.h"

#include <stdlib.h>

#include "rw/ctoken.h"
#include "rw/defs.h"

namespace bkoq {
namespace {

// What the text begins with as a decimal number, 0 when it is none; strtol() saturates, so that a
// number that is too large is out of every range.
long leadingNumber(const RWCString& text) { return strtol(text.data(), nullptr, 10); }

bool isSession(long number) { return number >= 1 && number <= 5000; }

}  // namespace

bool isSessionFilter(const RWCString& text) {
  if (text.index("-") == RW_NPOS) return isSession(leadingNumber(text));

  RWCTokenizer nextToken(text);
  long lower = 0;
  int count = 0;
  for (RWCString token = nextToken("-"); !token.isNull(); token = nextToken("-")) {
    const long number = leadingNumber(token);
    if (++count > 2 || number < lower || !isSession(number)) return false;
    lower = number;
  }
  return true;
}

}  // namespace bkoq
