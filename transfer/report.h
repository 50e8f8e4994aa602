#ifndef BKOQ_TRANSFER_REPORT_H_
#define BKOQ_TRANSFER_REPORT_H_

namespace bkoq {

// Writes a line to the standard error stream, both texts and nothing between them, in one write. It
// allocates nothing, so that it still works when memory has run out; a line that is longer than any
// of the library's own is cut.
void report(const char* start, const char* name);

// What each reports is its text and the name of the part, record or field. All return 0, the result
// of the conversion that failed.
inline int failedToConvert(const char* part) {
  report("Failed to convert ", part);
  return 0;
}
inline int failedInMalloc(const char* name) {
  report("Failed in malloc ", name);
  return 0;
}
inline int failedInRealloc(const char* name) {
  report("Failed in realloc ", name);
  return 0;
}
// For a client that hands over a null pointer.
inline int noRecord() {
  report("No record to convert into", "");
  return 0;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_REPORT_H_
