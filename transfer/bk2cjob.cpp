#include "transfer/job_steps.h"
#include "transfer/layout.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

int BKQJob::convertToBK2(void*& out) { return Steps::job(*this, out); }

int BKQBackupJob::convertToBK2(void*& out) { return convertToBK2(out, bkoq::notGiven); }

int BKQBackupJob::convertToBK2(void*& out, const char* nodeName) {
  return convertToBK2(out, nodeName, 0, bkoq::notGiven);
}

int BKQBackupJob::convertToBK2(void*& out, const char* nodeName, RWSlistCollectables& disks) {
  return convertToBK2(out, nodeName, disks, 0, bkoq::notGiven);
}

int BKQBackupJob::convertToBK2(void*& out, const char* nodeName, int unixKind,
                               const char* unixText) {
  RWSlistCollectables allDisks;
  return convertToBK2(out, nodeName, allDisks, unixKind, unixText);
}

int BKQBackupJob::convertToBK2(void*& out, const char* nodeName, RWSlistCollectables& disks,
                               int unixKind, const char* unixText) {
  return Steps::backupJob(*this, out, nodeName, disks, unixKind, unixText);
}

int BKQRestoreJob::convertToBK2(void*& out) { return convertToBK2(out, bkoq::notGiven, 0); }

int BKQRestoreJob::convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber) {
  return Steps::restoreJob(*this, out, tapeName, sessionNumber);
}

int BKQVerifyJob::convertToBK2(void*& out) { return convertToBK2(out, bkoq::notGiven, 0); }

int BKQVerifyJob::convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber) {
  return Steps::verifyJob(*this, out, tapeName, sessionNumber);
}

int BKQCompareJob::convertToBK2(void*& out) {
  return convertToBK2(out, bkoq::notGiven, 0, bkoq::notGiven);
}

int BKQCompareJob::convertToBK2(void*& out, const char* overridePath) {
  return convertToBK2(out, bkoq::notGiven, 0, overridePath);
}

int BKQCompareJob::convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber) {
  return convertToBK2(out, tapeName, sessionNumber, bkoq::notGiven);
}

int BKQCompareJob::convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber,
                                const char* overridePath) {
  return Steps::compareJob(*this, out, tapeName, sessionNumber, overridePath);
}

int BKQMergeJob::convertToBK2(void*& out) { return convertToBK2(out, bkoq::notGiven, 0); }

int BKQMergeJob::convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber) {
  return Steps::mergeJob(*this, out, tapeName, sessionNumber);
}

int BKQScanJob::convertToBK2(void*& out) { return convertToBK2(out, bkoq::notGiven, 0); }

int BKQScanJob::convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber) {
  return Steps::scanJob(*this, out, tapeName, sessionNumber);
}
