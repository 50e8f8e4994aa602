#ifndef BKOQ_TESTS_SUPPORT_PARTS_H_
#define BKOQ_TESTS_SUPPORT_PARTS_H_

#include <bkoq/bkoq.h>

#include <set>

namespace bkoq::test {

// The objects that a job refers to and does not delete with itself: nodes, disks, tapes, items,
// filters, job units, exception days. Whoever made them must delete them; a clone's are
// its own, apart from those that it shares with its source.
std::set<RWCollectable*> partsOf(BKQJob& job);

// Deletes a clone with all that is its own and not part of `source`.
void deleteClone(BKQJob* clone, BKQJob& source);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_PARTS_H_
