#include "bkoq/email.h"

#include "model/clone.h"

BKQEMail::BKQEMail() = default;

BKQEMail::~BKQEMail() = default;

BKQEMail* BKQEMail::clone() { return nullptr; }

const RWCollectableString& BKQEMail::getHostName() const { return hostName_; }

void BKQEMail::setHostName(const char* text) { hostName_ = text; }

const RWCollectableString& BKQEMail::getUserName() const { return userName_; }

void BKQEMail::setUserName(const char* text) { userName_ = text; }

const RWCollectableString& BKQEMail::getUserPW() const { return userPW_; }

void BKQEMail::setUserPW(const char* text) { userPW_ = text; }

void BKQEMail::mycopy(BKQEMail* source) {
  if (source == nullptr || source == this) return;
  hostName_ = source->hostName_;
  userName_ = source->userName_;
  userPW_ = source->userPW_;
}

BKQInternetEMail::BKQInternetEMail() = default;

BKQInternetEMail::~BKQInternetEMail() = default;

BKQInternetEMail* BKQInternetEMail::clone() { return bkoq::makeClone(this); }

unsigned int BKQInternetEMail::emailType() const { return 0; }

void BKQInternetEMail::mycopy(BKQInternetEMail* source) {
  if (source == nullptr || source == this) return;
  BKQEMail::mycopy(source);
}

BKQMHSEMail::BKQMHSEMail() = default;

BKQMHSEMail::~BKQMHSEMail() = default;

BKQMHSEMail* BKQMHSEMail::clone() { return bkoq::makeClone(this); }

unsigned int BKQMHSEMail::emailType() const { return 1; }

const RWCollectableString& BKQMHSEMail::getMHSDir() const { return mhsDir_; }

void BKQMHSEMail::setMHSDir(const char* text) { mhsDir_ = text; }

const RWCollectableString& BKQMHSEMail::getMHSId() const { return mhsId_; }

void BKQMHSEMail::setMHSId(const char* text) { mhsId_ = text; }

const RWCollectableString& BKQMHSEMail::getMHSUserName() const { return mhsUserName_; }

void BKQMHSEMail::setMHSUserName(const char* text) { mhsUserName_ = text; }

void BKQMHSEMail::mycopy(BKQMHSEMail* source) {
  if (source == nullptr || source == this) return;
  mhsDir_ = source->mhsDir_;
  mhsId_ = source->mhsId_;
  mhsUserName_ = source->mhsUserName_;
  BKQEMail::mycopy(source);
}
