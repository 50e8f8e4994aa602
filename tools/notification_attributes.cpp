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

const Family& faxes() {
  static const Family family = [] {
    Family faxes{"fax", {}};
    addClass<BKQFax, BKQFax>(
        faxes, "", "BKQFax", "a notification by fax; stFax",
        [](const Value&) { return new BKQFax; },
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

const Family& emails() {
  static const Family family = [] {
    Family emails{"e-mail", {}};
    addClass<BKQEMail, BKQInternetEMail>(
        emails, "internet", "BKQInternetEMail", "a notification by Internet e-mail; stEMail",
        [](const Value&) { return new BKQInternetEMail; }, describeHost<BKQInternetEMail>);
    addClass<BKQEMail, BKQMHSEMail>(
        emails, "mhs", "BKQMHSEMail", "a notification by MHS e-mail; stEMail",
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

const Family& printQueues() {
  static const Family family = [] {
    Family queues{"print queue", {}};
    addClass<BKQPrintQueue, BKQPrintQueue>(
        queues, "", "BKQPrintQueue", "a report to a print queue; stPrintQueue",
        [](const Value&) { return new BKQPrintQueue; },
        [](Table<BKQPrintQueue>& t) {
          describeHost(t);
          t.text("queueName", &BKQPrintQueue::setQueueName, "pszQueueName");
        });
    return queues;
  }();
  return family;
}

const Family& openFileInfos() {
  static const Family family = [] {
    Family infos{"open-file option", {}};
    addClass<BKQOpenFileInfo, BKQOpenFileInfo>(
        infos, "", "BKQOpenFileInfo", "what is done about open files; stOpenFile",
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
