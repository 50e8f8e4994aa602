#ifndef BKOQ_TESTS_SUPPORT_FREE_RECORDS_H_
#define BKOQ_TESTS_SUPPORT_FREE_RECORDS_H_

#include <bkoq/records.h>
#include <bkoq/records_old.h>

#include "tests/catalog/kinds.h"

namespace bkoq::test {

// What the owner of a record tree does with it in the end. Each takes what a failed conversion left
// behind as well: a raised count over a null array, a partly filled record.
void freeFilters(BKFILTER_FILE* filters, uint32_t count);
void freeDisk(BKDDISK& disk);
void freeDisks(void* disks, uint32_t count);
void freeTapes(BKDTAPE* tapes, uint32_t count);
void freeTapes(BKDTAPE_OLD* tapes, uint32_t count);
void freeJobRecord(BKQJDATATRANSFER* job);
void freeJobRecord(BKQJDATATRANSFER_OLD* job);

// What hangs from the record of a node of that family; the record itself stays.
void freeNodeContents(BKNODE& node, NodeFamily family);
void freeNodeContents(BKNODE_OLD& node, NodeFamily family);

// Frees the copies that the flattenings left to the readers of the state variables, so that a test
// leaves no block behind. Each further flattening abandons the copy before it.
void freeSessionPasswords();

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_FREE_RECORDS_H_
