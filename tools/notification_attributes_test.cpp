#include "tools/attribute_cases.h"

namespace bkoq::tool {
namespace {

template <class Notification>
void describeHost(AttributeRows<Notification>& rows) {
  rows.text("hostName", &Notification::getHostName, "host")
      .text("userName", &Notification::getUserName, "user")
      .text("userPW", &Notification::getUserPW, "password");
}

}  // namespace

void addNotifications(std::vector<ClassCase>& cases) {
  cases.push_back(
      makeCase<BKQFax>(faxes, "", R"({"kind": "job", "jobName": "", "faxInfo": @})", faxOf,
                       [](AttributeRows<BKQFax>& rows) {
                         describeHost(rows);
                         rows.text("faxNumber", &BKQFax::getFaxNumber, "+49 30 1234")
                             .text("coverPageFile", &BKQFax::getCoverPageFile, "/etc/cover")
                             .text("receiverName", &BKQFax::getReceiverName, "receiver");
                       }));

  const std::string mailed = R"({"kind": "job", "jobName": "", "emailInfo": @})";
  const auto emailOf = [](BKQJob& job) { return job.getEMailInfo(); };
  cases.push_back(makeCase<BKQInternetEMail>(emails, "internet", mailed, emailOf,
                                             describeHost<BKQInternetEMail>));
  cases.push_back(
      makeCase<BKQMHSEMail>(emails, "mhs", mailed, emailOf, [](AttributeRows<BKQMHSEMail>& rows) {
        describeHost(rows);
        rows.text("mhsDir", &BKQMHSEMail::getMHSDir, "SYS:MHS")
            .text("mhsId", &BKQMHSEMail::getMHSId, "id")
            .text("mhsUserName", &BKQMHSEMail::getMHSUserName, "MHS user");
      }));

  cases.push_back(makeCase<BKQPrintQueue>(
      printQueues, "", R"({"kind": "job", "jobName": "", "printQueue": @})",
      [](BKQJob& job) { return job.getPrintQueue(); },
      [](AttributeRows<BKQPrintQueue>& rows) {
        describeHost(rows);
        rows.text("queueName", &BKQPrintQueue::getQueueName, "queue");
      }));
  cases.push_back(makeCase<BKQOpenFileInfo>(
      openFileInfos, "", R"({"kind": "backup", "jobName": "", "openFileInfo": @})", openFileInfoOf,
      [](AttributeRows<BKQOpenFileInfo>& rows) {
        rows.number("fActions", &BKQOpenFileInfo::getFActions, 70301)
            .number("fMethods", &BKQOpenFileInfo::getFMethods, 70302)
            .number("retryCount", &BKQOpenFileInfo::getRetryCount, 303)
            .number("retryInterval", &BKQOpenFileInfo::getRetryInterval, 304);
      }));
}

}  // namespace bkoq::tool
