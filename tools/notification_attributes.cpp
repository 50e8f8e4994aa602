#include "tools/attributes.h"

namespace bkoq::tool {
namespace {

template <class Notification>
void describeHost(Table<Notification>& t) {
  t.text("hostName", &Notification::setHostName, "pszHostName").shown("\"host\"");
  t.text("userName", &Notification::setUserName, "pszUserName");
  t.text("userPW", &Notification::setUserPW, "pszUserPW");
}

}  // namespace

const FamilyOf<BKQFax>& faxes() {
  static const FamilyOf<BKQFax> family = [] {
    FamilyOf<BKQFax> faxes("fax");
    faxes.add<BKQFax>(
        "", "BKQFax", "a notification by fax; stFax", [](const Value&) { return new BKQFax; },
        [](Table<BKQFax>& t) {
          describeHost(t);
          t.text("faxNumber", &BKQFax::setFaxNumber, "pszFaxNumber");
          t.text("coverPageFile", &BKQFax::setCoverPageFile, "pszCoverPageFile");
          t.text("receiverName", &BKQFax::setReceiverName,
                 "pszReceiverName of the previous layout");
        });
    return faxes;
  }();
  return family;
}

const FamilyOf<BKQEMail>& emails() {
  static const FamilyOf<BKQEMail> family = [] {
    FamilyOf<BKQEMail> emails("e-mail");
    emails.add<BKQInternetEMail>(
        "internet", "BKQInternetEMail", "a notification by Internet e-mail; stEMail",
        [](const Value&) { return new BKQInternetEMail; }, describeHost<BKQInternetEMail>);
    emails.add<BKQMHSEMail>(
        "mhs", "BKQMHSEMail", "a notification by MHS e-mail; stEMail",
        [](const Value&) { return new BKQMHSEMail; },
        [](Table<BKQMHSEMail>& t) {
          describeHost(t);
          t.text("mhsDir", &BKQMHSEMail::setMHSDir, "pszMHSDir");
          t.text("mhsId", &BKQMHSEMail::setMHSId, "pszMHSId");
          t.text("mhsUserName", &BKQMHSEMail::setMHSUserName, "pszMHSUserName");
        });
    return emails;
  }();
  return family;
}

const FamilyOf<BKQPrintQueue>& printQueues() {
  static const FamilyOf<BKQPrintQueue> family = [] {
    FamilyOf<BKQPrintQueue> queues("print queue");
    queues.add<BKQPrintQueue>(
        "", "BKQPrintQueue", "a report to a print queue; stPrintQueue",
        [](const Value&) { return new BKQPrintQueue; },
        [](Table<BKQPrintQueue>& t) {
          describeHost(t);
          t.text("queueName", &BKQPrintQueue::setQueueName, "pszQueueName");
        });
    return queues;
  }();
  return family;
}

const FamilyOf<BKQOpenFileInfo>& openFileInfos() {
  static const FamilyOf<BKQOpenFileInfo> family = [] {
    FamilyOf<BKQOpenFileInfo> infos("open-file option");
    infos.add<BKQOpenFileInfo>(
        "", "BKQOpenFileInfo", "what is done about open files; stOpenFile",
        [](const Value&) { return new BKQOpenFileInfo; },
        [](Table<BKQOpenFileInfo>& t) {
          t.number("fActions", &BKQOpenFileInfo::setFActions,
                   "action bits, 1 unless given; ulFActions");
          t.number("fMethods", &BKQOpenFileInfo::setFMethods, "method bits; ulFMethods");
          t.number("retryCount", &BKQOpenFileInfo::setRetryCount,
                   "retries, 5 unless given; usRetryCount")
              .shown("5");
          t.number("retryInterval", &BKQOpenFileInfo::setRetryInterval,
                   "interval between them, 5 unless given; usRetryInterval");
        });
    return infos;
  }();
  return family;
}

}  // namespace bkoq::tool
