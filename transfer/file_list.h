#ifndef BKOQ_TRANSFER_FILE_LIST_H_
#define BKOQ_TRANSFER_FILE_LIST_H_

#include <string.h>

namespace bkoq {

// The offset in a list of texts back to back at which the text after the first `n` begins; 0 when
// `n` is not positive or there is no list.
inline unsigned int listLength(const char* list, int n) {
  unsigned int offset = 0;
  if (list == nullptr) return offset;
  for (int i = 1; i <= n; ++i) offset += static_cast<unsigned int>(strlen(list + offset)) + 1;
  return offset;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_FILE_LIST_H_
