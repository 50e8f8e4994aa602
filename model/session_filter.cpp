#include "model/session_filter.h"

#include <stdlib.h>
#include <string.h>

namespace bkoq {
namespace {

// What the text begins with as a decimal number, 0 when it is none; strtol() saturates, so that a
// number that is too large is out of every range.
long leadingNumber(const char* text) { return strtol(text, nullptr, 10); }

bool isSession(long number) { return number >= 1 && number <= 5000; }

}  // namespace

bool isSessionFilter(const RWCString& text) {
  const char* rest = text.data();
  if (strchr(rest, '-') == nullptr) return isSession(leadingNumber(rest));

  // Taken apart in place: a copy of a part that memory has no room for would pass for the
  // end of the text. A number ends at the next "-"; where white space is before that, the "-"
  // is read as a sign, and a negative number is no session, just as white space alone is none.
  long lower = 0;
  int count = 0;
  for (rest += strspn(rest, "-"); *rest != '\0'; rest += strspn(rest, "-")) {
    const long number = leadingNumber(rest);
    if (++count > 2 || number < lower || !isSession(number)) return false;
    lower = number;
    rest += strcspn(rest, "-");
  }
  return true;
}

}  // namespace bkoq
