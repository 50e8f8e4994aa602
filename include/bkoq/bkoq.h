#ifndef BKOQ_BKOQ_H_
#define BKOQ_BKOQ_H_

/// Everything public of the library: describe a job with these classes, call its convertToBK2() or
/// convertToBK2_old(), and hand the record tree on.

#include "bkoq/bktime.h"
#include "bkoq/collections.h"
#include "bkoq/cruise.h"
#include "bkoq/disk.h"
#include "bkoq/email.h"
#include "bkoq/fax.h"
#include "bkoq/filter.h"
#include "bkoq/groom.h"
#include "bkoq/job.h"
#include "bkoq/node.h"
#include "bkoq/ofile.h"
#include "bkoq/print.h"
#include "bkoq/records.h"
#include "bkoq/records_old.h"
#include "bkoq/sched.h"
#include "bkoq/state.h"
#include "bkoq/tape.h"
#include "bkoq/unixtime.h"
#include "bkoq/version.h"

#endif  // BKOQ_BKOQ_H_
