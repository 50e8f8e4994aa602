#include "bkoq/print.h"

#include "model/clone.h"

BKQPrintQueue::BKQPrintQueue() = default;

BKQPrintQueue::~BKQPrintQueue() = default;

BKQPrintQueue* BKQPrintQueue::clone() { return bkoq::makeClone(this); }

const RWCollectableString& BKQPrintQueue::getHostName() const { return hostName_; }

void BKQPrintQueue::setHostName(const char* text) { hostName_ = text; }

const RWCollectableString& BKQPrintQueue::getUserName() const { return userName_; }

void BKQPrintQueue::setUserName(const char* text) { userName_ = text; }

const RWCollectableString& BKQPrintQueue::getUserPW() const { return userPW_; }

void BKQPrintQueue::setUserPW(const char* text) { userPW_ = text; }

const RWCollectableString& BKQPrintQueue::getQueueName() const { return queueName_; }

void BKQPrintQueue::setQueueName(const char* text) { queueName_ = text; }

void BKQPrintQueue::mycopy(BKQPrintQueue* source) {
  if (source == nullptr || source == this) return;
  hostName_ = source->hostName_;
  userName_ = source->userName_;
  userPW_ = source->userPW_;
  queueName_ = source->queueName_;
}
