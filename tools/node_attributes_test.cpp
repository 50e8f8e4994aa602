#include "tools/attribute_cases.h"

namespace bkoq::tool {
namespace {

template <class Node>
void describeNode(AttributeRows<Node>& rows) {
  rows.text("nodeName", &BKQNode::getNodeName, "machine")
      .otherwise(R"("")")
      .text("beforeNode", &BKQNode::getBeforeNode, "/bin/before")
      .text("afterNode", &BKQNode::getAfterNode, "/bin/after")
      .number("beforeNodeWait", &BKQNode::getBeforeNodeWait, 501)
      .text("nodeOSver", &BKQNode::getNodeOSver, "5.8")
      .text("nodeAddress", &BKQNode::getNodeAddress, "10.0.0.2")
      .text("nodeDomain", &BKQNode::getNodeDomain, "DOMAIN")
      .text("userName", &BKQNode::getUserName, "root")
      .text("password", &BKQNode::getPassword, "root's password")
      .number("priority", &BKQNode::getPriority, 502)
      .number("nodeType", &BKQNode::getNodeType, 70503)
      .number("deviceType", &BKQNode::getDeviceType, 504)
      .number("nodeOS", &BKQNode::getNodeOS, 505)
      .row(
          "filters", kTwoFilters,
          [](BKQNode& node) {
            return filtersOf(node, &BKQNode::resetFilters, &BKQNode::enumFilters);
          },
          kTwoFiltersShown);
}

template <class Node>
void describeMachine(AttributeRows<Node>& rows) {
  describeNode(rows);
  rows.number("options", &BKQNode::getOptions, 70506)
      .row(
          "groomInfo", R"({"months": 507})",
          [](BKQDiskNode& node) { return of(node.getGroomInfo(), &BKQGroom::getMonths); }, "507")
      .row(
          "disks", R"([{"diskName": "C:"}, {"diskName": "D:"}])",
          [](BKQDiskNode& node) {
            return ofEach(
                elements<BKQDisk>(&node, &BKQDiskNode::resetDisks, &BKQDiskNode::enumDisks),
                &BKQDisk::getDiskName);
          },
          "C:, D:");
}

template <class Node, class Describe>
ClassCase machineCase(const char* kind, Describe describe) {
  return makeCase<Node>(machines, kind, R"({"kind": "backup", "jobName": "", "sourceNodes": [@]})",
                        machineOf, [describe](AttributeRows<Node>& rows) {
                          describeMachine(rows);
                          describe(rows);
                        });
}

template <class Node>
ClassCase machineCase(const char* kind) {
  return machineCase<Node>(kind, [](AttributeRows<Node>&) {});
}

void describeTapeNode(AttributeRows<BKQTapeNode>& rows) {
  describeNode(rows);
  rows.number("options", &BKQNode::getOptions, 70506)
      .row(
          "tapes", R"([{"tapeName": "TAPE-01"}, {"tapeName": "TAPE-02"}])",
          [](BKQTapeNode& node) {
            return ofEach(
                elements<BKQTape>(&node, &BKQTapeNode::resetTapes, &BKQTapeNode::enumTapes),
                &BKQTape::getTapeName);
          },
          "TAPE-01, TAPE-02");
}

template <class Node>
void describeRestoreNode(AttributeRows<Node>& rows) {
  describeNode(rows);
  rows.row("actualNodeType", R"("winNT")", &BKQRestoreNode::getActualNodeType,
           std::to_string(BKQNode::WinNTNode))
      .also("nodeOS", "8")
      .text("diskName", &BKQRestoreNode::getDiskName, "E:")
      .text("destinationDir", &BKQRestoreNode::getDestinationDir, "/restored");
}

void describeDatabaseRestoreNode(AttributeRows<BKQDBRestoreNode>& rows) {
  describeRestoreNode(rows);
  // The class has two words of options: that of the node, and its own.
  rows.number("nodeOptions", &BKQNode::getOptions, 70506)
      .number("options", &BKQDBRestoreNode::getOptions, 70508)
      .number("fsType", &BKQDBRestoreNode::getFStype, 509)
      .text("dbUser", halfOf<BKQDBRestoreNode>(&BKQDBRestoreNode::getDBuser, &Credentials::user),
            "database's user")
      .text("dbPassword",
            halfOf<BKQDBRestoreNode>(&BKQDBRestoreNode::getDBuser, &Credentials::password),
            "database's password");
}

}  // namespace

void addNodes(std::vector<ClassCase>& cases) {
  cases.push_back(machineCase<BKQUnixNode>("unix", [](AttributeRows<BKQUnixNode>& rows) {
    rows.number("unixOptions", &BKQUnixNode::getUnixOptions, 70601);
  }));
  cases.push_back(machineCase<BKQMacNode>("mac"));
  cases.push_back(machineCase<BKQNetwareNode>("netware"));
  cases.push_back(machineCase<BKQWinNTNode>("winNT"));
  cases.push_back(machineCase<BKQOS2Node>("os2"));
  cases.push_back(machineCase<BKQWin95Node>("win95"));
  cases.push_back(machineCase<BKQWindowsNode>("windows"));
  cases.push_back(machineCase<BKQNDSNode>("nds"));
  cases.push_back(machineCase<BKQFTPNode>("ftp"));
  cases.push_back(machineCase<BKQSybaseNode>("sybase", [](AttributeRows<BKQSybaseNode>& rows) {
    rows.number("sybaseOptions", &BKQSybaseNode::getSybaseOptions, 70602)
        .text("encryptKey", &BKQSybaseNode::getEncryptKey, "key")
        .text("dumpFile", &BKQSybaseNode::getDumpFile, "/var/dump");
  }));
  cases.push_back(machineCase<BKQOracleNode>("oracle", [](AttributeRows<BKQOracleNode>& rows) {
    rows.number("oracleOptions", &BKQOracleNode::getOracleOptions, 70603);
  }));
  cases.push_back(
      machineCase<BKQInformixNode>("informix", [](AttributeRows<BKQInformixNode>& rows) {
        rows.number("informixOptions", &BKQInformixNode::getInformixOptions, 70604);
      }));
  cases.push_back(
      machineCase<BKQSnapShotNode>("snapShot", [](AttributeRows<BKQSnapShotNode>& rows) {
        rows.number("snapShotOptions", &BKQSnapShotNode::getSnapShotOptions, 70605);
      }));

  cases.push_back(makeCase<BKQTapeNode>(tapeNodes, "",
                                        R"({"kind": "restore", "jobName": "", "sourceNodes": [@]})",
                                        tapeNodeOf, describeTapeNode));

  const std::string restored = R"({"kind": "restore", "jobName": "", "destNodes": [@]})";
  cases.push_back(makeCase<BKQRestoreNode>(restoreNodes, "machine", restored, restoreNodeOf,
                                           [](AttributeRows<BKQRestoreNode>& rows) {
                                             describeRestoreNode(rows);
                                             rows.number("options", &BKQNode::getOptions, 70506);
                                           }));
  cases.push_back(makeCase<BKQDBRestoreNode>(restoreNodes, "database", restored, restoreNodeOf,
                                             describeDatabaseRestoreNode));
}

}  // namespace bkoq::tool
