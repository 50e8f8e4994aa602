#ifndef BKOQ_TRANSFER_REPORT_H_
#define BKOQ_TRANSFER_REPORT_H_

namespace bkoq {

// Each is one write of one line to the standard error stream and allocates nothing, so that it
// still works when memory has run out. All return 0, the result of the conversion that failed.

// "Failed to convert " and the part's name.
int failedToConvert(const char* part);
// "Failed in malloc " or "Failed in realloc " and the name of the record or field.
int failedInMalloc(const char* name);
int failedInRealloc(const char* name);
// "No record to convert into", for a client that hands over a null pointer.
int noRecord();

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_REPORT_H_
