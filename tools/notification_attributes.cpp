#include "tools/attributes.h"

namespace bkoq::tool {
namespace {

template <class Notification>
void describeHost(Table<Notification> t) {
  t.text("hostName", &Notification::setHostName, &Notification::getHostName,
         "machine that sends it")
      .shown("\"host\"");
  t.text("userName", &Notification::setUserName, &Notification::getUserName, "account");
  t.text("userPW", &Notification::setUserPW, &Notification::getUserPW, "password of the account");
}

}  // namespace

const FamilyOf<BKQFax>& faxes() {
  static const FamilyOf<BKQFax> family = [] {
    FamilyOf<BKQFax> faxes("fax");
    faxes.add<BKQFax>(
        "", "BKQFax", "a notification by fax", [](const Value&) { return new BKQFax; },
        [](Table<BKQFax> t) {
          describeHost(t);
          t.text("faxNumber", &BKQFax::setFaxNumber, &BKQFax::getFaxNumber, "number to call");
          t.text("coverPageFile", &BKQFax::setCoverPageFile, &BKQFax::getCoverPageFile,
                 "file of the cover page");
          t.text("receiverName", &BKQFax::setReceiverName, &BKQFax::getReceiverName,
                 "name of the receiver")
              .carriedOnlyIn("previous");
        });
    return faxes;
  }();
  return family;
}

const FamilyOf<BKQEMail>& emails() {
  static const FamilyOf<BKQEMail> family = [] {
    FamilyOf<BKQEMail> emails("e-mail");
    emails.add<BKQInternetEMail>(
        "internet", "BKQInternetEMail", "a notification by Internet e-mail",
        [](const Value&) { return new BKQInternetEMail; }, describeHost<BKQInternetEMail>);
    emails.add<BKQMHSEMail>(
        "mhs", "BKQMHSEMail", "a notification by MHS e-mail",
        [](const Value&) { return new BKQMHSEMail; },
        [](Table<BKQMHSEMail> t) {
          describeHost(t);
          t.text("mhsDir", &BKQMHSEMail::setMHSDir, &BKQMHSEMail::getMHSDir, "directory of MHS");
          t.text("mhsId", &BKQMHSEMail::setMHSId, &BKQMHSEMail::getMHSId, "identification for MHS");
          t.text("mhsUserName", &BKQMHSEMail::setMHSUserName, &BKQMHSEMail::getMHSUserName,
                 "account of MHS");
        });
    return emails;
  }();
  return family;
}

const FamilyOf<BKQPrintQueue>& printQueues() {
  static const FamilyOf<BKQPrintQueue> family = [] {
    FamilyOf<BKQPrintQueue> queues("print queue");
    queues.add<BKQPrintQueue>(
        "", "BKQPrintQueue", "a report to a print queue",
        [](const Value&) { return new BKQPrintQueue; },
        [](Table<BKQPrintQueue> t) {
          describeHost(t);
          t.text("queueName", &BKQPrintQueue::setQueueName, &BKQPrintQueue::getQueueName,
                 "name of the queue");
        });
    return queues;
  }();
  return family;
}

const FamilyOf<BKQOpenFileInfo>& openFileInfos() {
  static const FamilyOf<BKQOpenFileInfo> family = [] {
    FamilyOf<BKQOpenFileInfo> infos("open-file option");
    infos.add<BKQOpenFileInfo>(
        "", "BKQOpenFileInfo", "what is done about open files",
        [](const Value&) { return new BKQOpenFileInfo; },
        [](Table<BKQOpenFileInfo> t) {
          t.number("fActions", &BKQOpenFileInfo::setFActions, &BKQOpenFileInfo::getFActions,
                   "action bits");
          t.number("fMethods", &BKQOpenFileInfo::setFMethods, &BKQOpenFileInfo::getFMethods,
                   "method bits");
          t.number("retryCount", &BKQOpenFileInfo::setRetryCount, &BKQOpenFileInfo::getRetryCount,
                   "retries on an open file")
              .shown("5");
          t.number("retryInterval", &BKQOpenFileInfo::setRetryInterval,
                   &BKQOpenFileInfo::getRetryInterval, "interval between retries");
        });
    return infos;
  }();
  return family;
}

}  // namespace bkoq::tool
