#include "bkoq/fax.h"

#include "model/clone.h"

BKQFax::BKQFax() = default;

BKQFax::~BKQFax() = default;

BKQFax* BKQFax::clone() { return bkoq::makeClone(this); }

const RWCollectableString& BKQFax::getHostName() const { return hostName_; }

void BKQFax::setHostName(const char* text) { hostName_ = text; }

const RWCollectableString& BKQFax::getUserName() const { return userName_; }

void BKQFax::setUserName(const char* text) { userName_ = text; }

const RWCollectableString& BKQFax::getUserPW() const { return userPW_; }

void BKQFax::setUserPW(const char* text) { userPW_ = text; }

const RWCollectableString& BKQFax::getFaxNumber() const { return faxNumber_; }

void BKQFax::setFaxNumber(const char* text) { faxNumber_ = text; }

const RWCollectableString& BKQFax::getCoverPageFile() const { return coverPageFile_; }

void BKQFax::setCoverPageFile(const char* text) { coverPageFile_ = text; }

const RWCollectableString& BKQFax::getReceiverName() const { return receiverName_; }

void BKQFax::setReceiverName(const char* text) { receiverName_ = text; }

void BKQFax::mycopy(BKQFax* source) {
  if (source == nullptr || source == this) return;
  hostName_ = source->hostName_;
  userName_ = source->userName_;
  userPW_ = source->userPW_;
  faxNumber_ = source->faxNumber_;
  coverPageFile_ = source->coverPageFile_;
  receiverName_ = source->receiverName_;
}
