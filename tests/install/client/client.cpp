#include <bkoq/bkoq.h>
#include <stdlib.h>
#include <string.h>

/* As a client of an installed library: flattens a job without nodes. */
int main() {
  BKQBackupJob job("install test");
  void* out = 0;
  if (job.convertToBK2(out) != 1 || out == 0) return EXIT_FAILURE;
  const BKQJDATATRANSFER* record = static_cast<BKQJDATATRANSFER*>(out);
  if (record->pSourceNodes != 0 || record->pDestNodes != 0) return EXIT_FAILURE;
  /* The two libraries are one program: a type of the one is known to the other. */
  const RWCollectable* base = &job;
  return dynamic_cast<const BKQBackupJob*>(base) == &job ? EXIT_SUCCESS : EXIT_FAILURE;
}
