#include "transfer/report.h"

#include <stdio.h>
#include <string.h>

namespace bkoq {

void report(const char* start, const char* name) {
  // Longer than the longest line of the library's own: only a name from elsewhere may be cut.
  char line[96];
  const size_t room = sizeof line - 1;
  const size_t startLength = strnlen(start, room);
  const size_t nameLength = strnlen(name, room - startLength);
  // A line ends with its newline and has no NUL. NOLINTBEGIN(bugprone-not-null-terminated-result)
  memcpy(line, start, startLength);
  memcpy(line + startLength, name, nameLength);
  // NOLINTEND(bugprone-not-null-terminated-result)
  line[startLength + nameLength] = '\n';
  fwrite(line, 1, startLength + nameLength + 1, stderr);
}

}  // namespace bkoq
