#include "bkoq/ofile.h"

#include "model/clone.h"

BKQOpenFileInfo::BKQOpenFileInfo()
    : fileActions_(1), fileMethods_(0), retryCount_(5), retryInterval_(5) {}

BKQOpenFileInfo::~BKQOpenFileInfo() = default;

BKQOpenFileInfo* BKQOpenFileInfo::clone() { return bkoq::makeClone(this); }

unsigned int BKQOpenFileInfo::getFActions() const { return fileActions_; }

void BKQOpenFileInfo::setFActions(unsigned int actions) { fileActions_ = actions; }

unsigned int BKQOpenFileInfo::getFMethods() const { return fileMethods_; }

void BKQOpenFileInfo::setFMethods(unsigned int methods) { fileMethods_ = methods; }

unsigned short BKQOpenFileInfo::getRetryCount() const { return retryCount_; }

void BKQOpenFileInfo::setRetryCount(unsigned short count) { retryCount_ = count; }

unsigned short BKQOpenFileInfo::getRetryInterval() const { return retryInterval_; }

void BKQOpenFileInfo::setRetryInterval(unsigned short interval) { retryInterval_ = interval; }

void BKQOpenFileInfo::mycopy(BKQOpenFileInfo* source) {
  if (source == nullptr || source == this) return;
  fileActions_ = source->fileActions_;
  fileMethods_ = source->fileMethods_;
  retryCount_ = source->retryCount_;
  retryInterval_ = source->retryInterval_;
}
