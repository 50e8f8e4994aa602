#ifndef BKOQ_TESTS_SUPPORT_NIGHTLY_RECORDS_H_
#define BKOQ_TESTS_SUPPORT_NIGHTLY_RECORDS_H_

#include <bkoq/kit.h>

namespace bkoq::test {

// What the nightly backup of the examples must turn into, byte for byte, with TZ=EST5.

// Whether the job was filled by the client or is a clone: a clone holds its nodes and filters
// twice, first the source's own, then clones of them, which hold their parts twice in turn.
enum class Origin { kFilled, kCloned };

void checkNightlyRecords(const void* job, BkoqLayout layout, Origin origin);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_NIGHTLY_RECORDS_H_
