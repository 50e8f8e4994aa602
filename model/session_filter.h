#ifndef BKOQ_MODEL_SESSION_FILTER_H_
#define BKOQ_MODEL_SESSION_FILTER_H_

#include "rw/cstring.h"

namespace bkoq {

// Whether a text names a session, or a range of sessions, that a merge or scan job may take:
// numbers from 1 to 5000. With a "-" in it the text is taken apart there: at most two numbers, the
// second not below the first.
bool isSessionFilter(const RWCString& text);

}  // namespace bkoq

#endif  // BKOQ_MODEL_SESSION_FILTER_H_
