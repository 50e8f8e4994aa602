#ifndef BKOQ_TESTS_CATALOG_FORMS_H_
#define BKOQ_TESTS_CATALOG_FORMS_H_

// Every form of the conversions of jobs and nodes, once: random jobs, fuzzing and the failure tests
// take them from here.

#include <bkoq/bkoq.h>

#include "tests/catalog/kinds.h"
#include "tests/catalog/layouts.h"

// X(class, parameters, arguments): an overload of convertToBK2() and of convertToBK2_old() of the
// class, by its parameters after `void*&`, and what an object of Arguments, `a`, gives it.
// clang-format off
#define BKOQ_BACKUP_FORMS(X) \
  X(BKQBackupJob, "", out) \
  X(BKQBackupJob, ", char const*", out, a.name) \
  X(BKQBackupJob, ", char const*, RWSlistCollectables&", out, a.name, *a.disks) \
  X(BKQBackupJob, ", char const*, int, char const*", out, a.name, a.unixKind, a.unixText) \
  X(BKQBackupJob, ", char const*, RWSlistCollectables&, int, char const*", out, a.name, *a.disks, a.unixKind, a.unixText)
#define BKOQ_PLAIN_FORMS(X) \
  X(BKQJob, "", out)
#define BKOQ_RESTORE_FORMS(X) \
  X(BKQRestoreJob, "", out) \
  X(BKQRestoreJob, ", char const*, unsigned short", out, a.name, a.session)
#define BKOQ_VERIFY_FORMS(X) \
  X(BKQVerifyJob, "", out) \
  X(BKQVerifyJob, ", char const*, unsigned short", out, a.name, a.session)
#define BKOQ_COMPARE_FORMS(X) \
  X(BKQCompareJob, "", out) \
  X(BKQCompareJob, ", char const*", out, a.overridePath) \
  X(BKQCompareJob, ", char const*, unsigned short", out, a.name, a.session) \
  X(BKQCompareJob, ", char const*, unsigned short, char const*", out, a.name, a.session, a.overridePath)
#define BKOQ_MERGE_FORMS(X) \
  X(BKQMergeJob, "", out) \
  X(BKQMergeJob, ", char const*, unsigned short", out, a.name, a.session)
#define BKOQ_SCAN_FORMS(X) \
  X(BKQScanJob, "", out) \
  X(BKQScanJob, ", char const*, unsigned short", out, a.name, a.session)
// clang-format on

// Nodes. A restore node is converted by the one form of its class.
// clang-format off
#define BKOQ_NODE_FORMS(X) \
  X(BKQNode, "", out) \
  X(BKQDiskNode, "", out) \
  X(BKQDiskNode, ", char const*", out, a.overridePath) \
  X(BKQDiskNode, ", RWSlistCollectables&", out, *a.disks) \
  X(BKQDiskNode, ", RWSlistCollectables&, char const*", out, *a.disks, a.overridePath) \
  X(BKQUnixNode, "", out) \
  X(BKQUnixNode, ", RWSlistCollectables&, int, char const*", out, *a.disks, a.unixKind, a.unixText) \
  X(BKQTapeNode, "", out) \
  X(BKQTapeNode, ", char const*, unsigned short", out, a.name, a.session) \
  X(BKQRestoreNode, "", out) \
  X(BKQDBRestoreNode, "", out)

#define BKOQ_FORMS(X) \
  BKOQ_PLAIN_FORMS(X) BKOQ_BACKUP_FORMS(X) BKOQ_RESTORE_FORMS(X) BKOQ_VERIFY_FORMS(X) \
  BKOQ_COMPARE_FORMS(X) BKOQ_MERGE_FORMS(X) BKOQ_SCAN_FORMS(X) BKOQ_NODE_FORMS(X)
// clang-format on

namespace bkoq::test {

// What the forms take; each takes what its own parameters are.
struct Arguments {
  const char* name = "";  // of the node that a backup takes, of the tape that the others read
  RWSlistCollectables* disks = nullptr;
  int unixKind = 0;
  const char* unixText = "";
  unsigned short session = 0;
  const char* overridePath = "";
};

struct FormLine {
  const char* className;
  const char* parameters;
};

constexpr FormLine kForms[] = {
#define BKOQ_LINE(class_, parameters, ...) {#class_, parameters},
    BKOQ_FORMS(BKOQ_LINE)
#undef BKOQ_LINE
};

// NOLINTBEGIN(bugprone-macro-parentheses,bugprone-branch-clone): a term each; lists may be as long
#define BKOQ_COUNT(...) +1
constexpr unsigned int formsOf(JobFamily family) {
  switch (family) {
    case JobFamily::kPlain:
      return 0 BKOQ_PLAIN_FORMS(BKOQ_COUNT);
    case JobFamily::kBackup:
      return 0 BKOQ_BACKUP_FORMS(BKOQ_COUNT);
    case JobFamily::kRestore:
      return 0 BKOQ_RESTORE_FORMS(BKOQ_COUNT);
    case JobFamily::kVerify:
      return 0 BKOQ_VERIFY_FORMS(BKOQ_COUNT);
    case JobFamily::kCompare:
      return 0 BKOQ_COMPARE_FORMS(BKOQ_COUNT);
    case JobFamily::kMerge:
      return 0 BKOQ_MERGE_FORMS(BKOQ_COUNT);
    case JobFamily::kScan:
      return 0 BKOQ_SCAN_FORMS(BKOQ_COUNT);
  }
  return 0;
}
#undef BKOQ_COUNT
// NOLINTEND(bugprone-macro-parentheses,bugprone-branch-clone)

// Flattens the job into layout L by the form of that number in its family's list.
template <class L>
int convertBy(unsigned int form, BKQJob& job, JobFamily family, const Arguments& a, void*& out) {
  unsigned int left = form;
#define BKOQ_TRY(class_, parameters, ...) \
  if (left-- == 0) return L::convert(static_cast<class_&>(job), __VA_ARGS__);
  switch (family) {
    case JobFamily::kPlain:
      BKOQ_PLAIN_FORMS(BKOQ_TRY)
      break;
    case JobFamily::kBackup:
      BKOQ_BACKUP_FORMS(BKOQ_TRY)
      break;
    case JobFamily::kRestore:
      BKOQ_RESTORE_FORMS(BKOQ_TRY)
      break;
    case JobFamily::kVerify:
      BKOQ_VERIFY_FORMS(BKOQ_TRY)
      break;
    case JobFamily::kCompare:
      BKOQ_COMPARE_FORMS(BKOQ_TRY)
      break;
    case JobFamily::kMerge:
      BKOQ_MERGE_FORMS(BKOQ_TRY)
      break;
    case JobFamily::kScan:
      BKOQ_SCAN_FORMS(BKOQ_TRY)
      break;
  }
#undef BKOQ_TRY
  return -1;
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_CATALOG_FORMS_H_
