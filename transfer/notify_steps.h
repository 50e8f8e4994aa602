#ifndef BKOQ_TRANSFER_NOTIFY_STEPS_H_
#define BKOQ_TRANSFER_NOTIFY_STEPS_H_

#include "transfer/flatten.h"

namespace bkoq {

template <class Layout>
int Flatten<Layout>::fax(BKQFax& fax, void*& block) {
  auto& record = *static_cast<typename Layout::Fax*>(block);
  record.pszHostName = copyText(fax.hostName_);
  record.pszUserName = copyText(fax.userName_);
  record.pszUserPW = copyText(fax.userPW_);
  record.pszFaxNumber = copyText(fax.faxNumber_);
  record.pszCoverPageFile = copyText(fax.coverPageFile_);
  Layout::storeReceiverName(record, fax.receiverName_);
  return 1;
}

template <class Layout>
int Flatten<Layout>::printQueue(BKQPrintQueue& queue, void*& block) {
  auto& record = *static_cast<typename Layout::PrintQueue*>(block);
  record.pszHostName = copyText(queue.hostName_);
  record.pszUserName = copyText(queue.userName_);
  record.pszUserPW = copyText(queue.userPW_);
  record.pszQueueName = copyText(queue.queueName_);
  return 1;
}

template <class Layout>
int Flatten<Layout>::email(BKQEMail& email, void*& block) {
  auto& record = *static_cast<typename Layout::EMail*>(block);
  record.pszHostName = copyText(email.hostName_);
  record.pszUserName = copyText(email.userName_);
  record.pszUserPW = copyText(email.userPW_);
  return 1;
}

template <class Layout>
int Flatten<Layout>::mhsEMail(BKQMHSEMail& email, void*& block) {
  if (!Flatten::email(email, block)) return failedToConvert("Email");
  auto& record = *static_cast<typename Layout::EMail*>(block);
  record.pszMHSDir = copyText(email.mhsDir_);
  record.pszMHSId = copyText(email.mhsId_);
  record.pszMHSUserName = copyText(email.mhsUserName_);
  return 1;
}

template <class Layout>
int Flatten<Layout>::openFileInfo(BKQOpenFileInfo& info, void*& rec) {
  auto& record = *static_cast<typename Layout::OpenFile*>(rec);
  record.ulFActions = info.fileActions_;
  record.ulFMethods = info.fileMethods_;
  record.usRetryCount = info.retryCount_;
  record.usRetryInterval = info.retryInterval_;
  return 1;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_NOTIFY_STEPS_H_
