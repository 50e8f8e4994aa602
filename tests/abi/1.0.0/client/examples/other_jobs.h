#ifndef BKOQ_EXAMPLES_OTHER_JOBS_H_
#define BKOQ_EXAMPLES_OTHER_JOBS_H_

#include "examples/nightly_job.h"

/// Restores what the nightly backup wrote: from a tape node with the tapes of two sessions to a
/// UNIX machine and to a database server. Flattened with a tape name and a session it reads that
/// session only.
void defineRestore(BKQRestoreJob& job, Keeper& keeper);

/// Merges the sessions of a tape into the database of a Windows NT machine. The job adopts its
/// source and destination.
void defineMerge(BKQMergeJob& job, Keeper& keeper);

#endif  // BKOQ_EXAMPLES_OTHER_JOBS_H_
