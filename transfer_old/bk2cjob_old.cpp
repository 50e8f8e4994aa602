#include "transfer/job_steps.h"
#include "transfer_old/layout_old.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::PreviousLayout>;

}  // namespace

int BKQJob::convertToBK2_old(void*& out) { return Steps::job(*this, out); }

int BKQBackupJob::convertToBK2_old(void*& out) { return convertToBK2_old(out, bkoq::notGiven); }

int BKQBackupJob::convertToBK2_old(void*& out, const char* nodeName) {
  return convertToBK2_old(out, nodeName, 0, bkoq::notGiven);
}

int BKQBackupJob::convertToBK2_old(void*& out, const char* nodeName, RWSlistCollectables& disks) {
  return convertToBK2_old(out, nodeName, disks, 0, bkoq::notGiven);
}

int BKQBackupJob::convertToBK2_old(void*& out, const char* nodeName, int unixKind,
                                   const char* unixText) {
  RWSlistCollectables allDisks;
  return convertToBK2_old(out, nodeName, allDisks, unixKind, unixText);
}

int BKQBackupJob::convertToBK2_old(void*& out, const char* nodeName, RWSlistCollectables& disks,
                                   int unixKind, const char* unixText) {
  return Steps::backupJob(*this, out, nodeName, disks, unixKind, unixText);
}

int BKQRestoreJob::convertToBK2_old(void*& out) { return convertToBK2_old(out, bkoq::notGiven, 0); }

int BKQRestoreJob::convertToBK2_old(void*& out, const char* tapeName,
                                    unsigned short sessionNumber) {
  return Steps::restoreJob(*this, out, tapeName, sessionNumber);
}

int BKQVerifyJob::convertToBK2_old(void*& out) { return convertToBK2_old(out, bkoq::notGiven, 0); }

int BKQVerifyJob::convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber) {
  return Steps::verifyJob(*this, out, tapeName, sessionNumber);
}

int BKQCompareJob::convertToBK2_old(void*& out) {
  return convertToBK2_old(out, bkoq::notGiven, 0, bkoq::notGiven);
}

int BKQCompareJob::convertToBK2_old(void*& out, const char* overridePath) {
  return convertToBK2_old(out, bkoq::notGiven, 0, overridePath);
}

int BKQCompareJob::convertToBK2_old(void*& out, const char* tapeName,
                                    unsigned short sessionNumber) {
  return convertToBK2_old(out, tapeName, sessionNumber, bkoq::notGiven);
}

int BKQCompareJob::convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber,
                                    const char* overridePath) {
  return Steps::compareJob(*this, out, tapeName, sessionNumber, overridePath);
}

int BKQMergeJob::convertToBK2_old(void*& out) { return convertToBK2_old(out, bkoq::notGiven, 0); }

int BKQMergeJob::convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber) {
  return Steps::mergeJob(*this, out, tapeName, sessionNumber);
}

int BKQScanJob::convertToBK2_old(void*& out) { return convertToBK2_old(out, bkoq::notGiven, 0); }

int BKQScanJob::convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber) {
  return Steps::scanJob(*this, out, tapeName, sessionNumber);
}
