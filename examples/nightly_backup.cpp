// A client of the library: describes a nightly backup, a restore and a merge, flattens each and
// prints what it turned into.

#include <bkoq/kit.h>

#include <cstdio>
#include <cstdlib>

#include "examples/nightly_job.h"
#include "examples/other_jobs.h"

namespace {

// Prints a record tree and frees it. Passwords are masked.
void show(const char* title, void* record, BkoqLayout layout) {
  BkoqPrintOptions options = {};
  options.hideReserved = 1;
  std::printf("== %s\n", title);
  bkoqPrint(record, layout, &options, bkoqFileSink, stdout);
  std::putchar('\n');
  bkoqFree(record, layout, nullptr);
}

// The copies of session passwords that a flattening leaves in the state variables belong to those
// who read them.
void freeSessionPasswords() {
  std::free(BK6_DISKSESSIONPW);
  std::free(BK6_TAPESESSIONPW);
  std::free(BK6_DISKSESSIONPW_OLD);
  std::free(BK6_TAPESESSIONPW_OLD);
  BK6_DISKSESSIONPW = BK6_TAPESESSIONPW = BK6_DISKSESSIONPW_OLD = BK6_TAPESESSIONPW_OLD = nullptr;
}

}  // namespace

int main() {
  Keeper keeper;
  NightlyBackup nightly;
  BKQRestoreJob restore("restore ledgers");
  defineRestore(restore, keeper);
  BKQMergeJob merge;
  defineMerge(merge, keeper);

  void* record = nullptr;
  if (!nightly.job().convertToBK2(record)) return EXIT_FAILURE;
  show("Nightly backup, current layout", record, BKOQ_LAYOUT_CURRENT);
  if (!nightly.job().convertToBK2_old(record)) return EXIT_FAILURE;
  show("Nightly backup, previous layout", record, BKOQ_LAYOUT_PREVIOUS);

  // Of the restore's tapes only NIGHT-01, session 17.
  if (!restore.convertToBK2(record, "NIGHT-01", 17)) return EXIT_FAILURE;
  show("Restore from NIGHT-01, session 17, current layout", record, BKOQ_LAYOUT_CURRENT);
  if (!restore.convertToBK2_old(record, "NIGHT-01", 17)) return EXIT_FAILURE;
  show("Restore from NIGHT-01, session 17, previous layout", record, BKOQ_LAYOUT_PREVIOUS);

  if (!merge.convertToBK2(record)) return EXIT_FAILURE;
  show("Merge, current layout", record, BKOQ_LAYOUT_CURRENT);
  if (!merge.convertToBK2_old(record)) return EXIT_FAILURE;
  show("Merge, previous layout", record, BKOQ_LAYOUT_PREVIOUS);

  freeSessionPasswords();
  return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
