#ifndef BKOQ_TRANSFER_NOTIFY_STEPS_H_
#define BKOQ_TRANSFER_NOTIFY_STEPS_H_

#include "transfer/flatten.h"

namespace bkoq {

template <class Layout>
int Flattening::Into<Layout>::fax(BKQFax& fax, void*& block) {
  if (block == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::Fax*>(block);
  storeText(record.pszHostName, fax.hostName_);
  storeText(record.pszUserName, fax.userName_);
  storeText(record.pszUserPW, fax.userPW_);
  storeText(record.pszFaxNumber, fax.faxNumber_);
  storeText(record.pszCoverPageFile, fax.coverPageFile_);
  Layout::storeReceiverName(record, fax.receiverName_);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::printQueue(BKQPrintQueue& queue, void*& block) {
  if (block == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::PrintQueue*>(block);
  storeText(record.pszHostName, queue.hostName_);
  storeText(record.pszUserName, queue.userName_);
  storeText(record.pszUserPW, queue.userPW_);
  storeText(record.pszQueueName, queue.queueName_);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::email(BKQEMail& email, void*& block) {
  if (block == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::EMail*>(block);
  storeText(record.pszHostName, email.hostName_);
  storeText(record.pszUserName, email.userName_);
  storeText(record.pszUserPW, email.userPW_);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::mhsEMail(BKQMHSEMail& email, void*& block) {
  if (!Into::email(email, block)) return failedToConvert("Email");
  auto& record = *static_cast<typename Layout::EMail*>(block);
  storeText(record.pszMHSDir, email.mhsDir_);
  storeText(record.pszMHSId, email.mhsId_);
  storeText(record.pszMHSUserName, email.mhsUserName_);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::openFileInfo(BKQOpenFileInfo& info, void*& rec) {
  if (rec == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::OpenFile*>(rec);
  record.ulFActions = info.fileActions_;
  record.ulFMethods = info.fileMethods_;
  record.usRetryCount = info.retryCount_;
  record.usRetryInterval = info.retryInterval_;
  return 1;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_NOTIFY_STEPS_H_
