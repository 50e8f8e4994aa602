#include "tools/attributes.h"

namespace bkoq::tool {
namespace {

const std::vector<Word>& machineKinds() {
  static const std::vector<Word> words = {
      {"mac", BKQNode::MacNode},           {"unix", BKQNode::UnixNode},
      {"netware", BKQNode::NetwareNode},   {"winNT", BKQNode::WinNTNode},
      {"os2", BKQNode::OS2Node},           {"win95", BKQNode::Win95Node},
      {"windows", BKQNode::WindowsNode},   {"nds", BKQNode::NDSNode},
      {"ftp", BKQNode::FTPNode},           {"sybase", BKQNode::SybaseNode},
      {"oracle", BKQNode::OracleNode},     {"informix", BKQNode::InformixNode},
      {"snapShot", BKQNode::SnapShotNode},
  };
  return words;
}

template <class Node>
void describeNode(Table<Node>& t) {
  t.text("nodeName", &BKQNode::setNodeName, "name of the machine; pszNodeName")
      .required()
      .shown("\"machine\"");
  t.text("beforeNode", &BKQNode::setBeforeNode, "pszBeforeNode");
  t.text("afterNode", &BKQNode::setAfterNode, "pszAfterNode");
  t.number("beforeNodeWait", &BKQNode::setBeforeNodeWait, "usBeforeNodeWait");
  t.text("nodeOSver", &BKQNode::setNodeOSver, "version of the operating system; pszNodeOSVer");
  t.text("nodeAddress", &BKQNode::setNodeAddress, "pszNodeAddress");
  t.text("nodeDomain", &BKQNode::setNodeDomain, "pszNodeDomain");
  t.text("userName", &BKQNode::setUserName, "pszUserName");
  t.text("password", &BKQNode::setPassword, "pszPassword");
  t.number("priority", &BKQNode::setPriority, "255: none; orders machines, in no record");
  t.number("nodeType", &BKQNode::setNodeType,
           "a word of its own, in no record; the kind decides usNodeType");
  t.number("deviceType", &BKQNode::setDeviceType, "usDeviceType");
}

// The node's own word; a database restore node has another of that name.
template <class Node>
void describeNodeOptions(Table<Node>& t, const char* key) {
  t.template number<unsigned int>(
      key, [](Node& node, unsigned int bits) { node.BKQNode::setOptions(bits); },
      "option bits; ulNodeOptions");
}

template <class Node>
void describeNodeOS(Table<Node>& t) {
  t.number("nodeOS", &BKQNode::setNodeOS,
           "operating-system code, by the kind unless given; usNodeOS")
      .upTo(0xFFFF);
}

template <class Node>
void describeFilters(Table<Node>& t) {
  t.parts("filters", filters, &BKQNode::addFilter, "pFilters of the node");
}

template <class Node>
void describeMachine(Table<Node>& t) {
  describeNode(t);
  describeNodeOS(t);
  describeNodeOptions(t, "options");
  describeFilters(t);
  t.kept("groomInfo", grooms, &BKQDiskNode::setGroomInfo, "in no record");
  t.parts("disks", disks, &BKQDiskNode::addDisk, "pMedia").shown("[]");
}

template <class Node>
Node* makeNode(const Value& /*value*/) {
  return new Node("");
}

template <class Node, class Describe>
void addMachine(FamilyOf<BKQDiskNode>& family, const char* kind, const char* name,
                const char* meaning, Describe describe) {
  family.template add<Node>(kind, name, meaning, makeNode<Node>, [describe](Table<Node>& t) {
    describeMachine(t);
    describe(t);
  });
}

template <class Node>
void addMachine(FamilyOf<BKQDiskNode>& family, const char* kind, const char* name,
                const char* meaning) {
  addMachine<Node>(family, kind, name, meaning, [](Table<Node>&) {});
}

template <class Node>
void describeRestoreNode(Table<Node>& t) {
  describeNode(t);
  // Also sets the operating-system code, so that comes behind.
  t.number("actualNodeType", &BKQRestoreNode::setActualNodeType,
           "kind of the machine, also sets nodeOS; usNodeType")
      .upTo(0xFFFF)
      .named(machineKinds())
      .shown("\"unix\"");
  describeNodeOS(t);
  describeFilters(t);
  t.text("diskName", &BKQRestoreNode::setDiskName, "pszDiskName of its disk").shown("\"/\"");
  t.text("destinationDir", &BKQRestoreNode::setDestinationDir,
         "directory on the disk; pszPath of its item");
}

}  // namespace

const FamilyOf<BKQDiskNode>& machines() {
  static const FamilyOf<BKQDiskNode> family = [] {
    FamilyOf<BKQDiskNode> machines("node");
    addMachine<BKQUnixNode>(machines, "unix", "BKQUnixNode", "a UNIX machine",
                            [](Table<BKQUnixNode>& t) {
                              t.number("unixOptions", &BKQUnixNode::setUnixOptions,
                                       "bits added to the options of every disk");
                            });
    addMachine<BKQMacNode>(machines, "mac", "BKQMacNode", "a Macintosh");
    addMachine<BKQNetwareNode>(machines, "netware", "BKQNetwareNode", "a NetWare server");
    addMachine<BKQWinNTNode>(machines, "winNT", "BKQWinNTNode", "a Windows NT machine");
    addMachine<BKQOS2Node>(machines, "os2", "BKQOS2Node", "an OS/2 machine");
    addMachine<BKQWin95Node>(machines, "win95", "BKQWin95Node", "a Windows 95 machine");
    addMachine<BKQWindowsNode>(machines, "windows", "BKQWindowsNode", "a Windows machine");
    addMachine<BKQNDSNode>(machines, "nds", "BKQNDSNode",
                           "an NDS tree; its disks are in no record");
    addMachine<BKQFTPNode>(machines, "ftp", "BKQFTPNode", "an FTP server");
    addMachine<BKQSybaseNode>(
        machines, "sybase", "BKQSybaseNode", "a Sybase server", [](Table<BKQSybaseNode>& t) {
          t.number("sybaseOptions", &BKQSybaseNode::setSybaseOptions, "in no record");
          t.text("encryptKey", &BKQSybaseNode::setEncryptKey, "in no record");
          t.text("dumpFile", &BKQSybaseNode::setDumpFile, "in no record");
        });
    addMachine<BKQOracleNode>(
        machines, "oracle", "BKQOracleNode", "an Oracle server", [](Table<BKQOracleNode>& t) {
          t.number("oracleOptions", &BKQOracleNode::setOracleOptions, "in no record");
        });
    addMachine<BKQInformixNode>(machines, "informix", "BKQInformixNode", "an Informix server",
                                [](Table<BKQInformixNode>& t) {
                                  t.number("informixOptions", &BKQInformixNode::setInformixOptions,
                                           "in no record");
                                });
    addMachine<BKQSnapShotNode>(machines, "snapShot", "BKQSnapShotNode",
                                "a machine read through a snapshot", [](Table<BKQSnapShotNode>& t) {
                                  t.number("snapShotOptions", &BKQSnapShotNode::setSnapShotOptions,
                                           "in no record");
                                });
    return machines;
  }();
  return family;
}

const FamilyOf<BKQTapeNode>& tapeNodes() {
  static const FamilyOf<BKQTapeNode> family = [] {
    FamilyOf<BKQTapeNode> nodes("tape node");
    nodes.add<BKQTapeNode>("", "BKQTapeNode", "tapes to read, or to write to",
                           makeNode<BKQTapeNode>, [](Table<BKQTapeNode>& t) {
                             describeNode(t);
                             describeNodeOS(t);
                             describeNodeOptions(t, "options");
                             describeFilters(t);
                             t.parts("tapes", tapes, &BKQTapeNode::addTape, "pMedia").shown("[]");
                           });
    return nodes;
  }();
  return family;
}

const FamilyOf<BKQRestoreNode>& restoreNodes() {
  static const FamilyOf<BKQRestoreNode> family = [] {
    FamilyOf<BKQRestoreNode> nodes("restore node");
    nodes.add<BKQRestoreNode>("machine", "BKQRestoreNode", "a machine to restore to",
                              makeNode<BKQRestoreNode>, [](Table<BKQRestoreNode>& t) {
                                describeRestoreNode(t);
                                describeNodeOptions(t, "options");
                              });
    nodes.add<BKQDBRestoreNode>(
        "database", "BKQDBRestoreNode", "a database to restore to", makeNode<BKQDBRestoreNode>,
        [](Table<BKQDBRestoreNode>& t) {
          describeRestoreNode(t);
          describeNodeOptions(t, "nodeOptions");
          t.number("options", &BKQDBRestoreNode::setOptions, "option bits; ulOptions of its disk");
          t.number("fsType", &BKQDBRestoreNode::setFStype,
                   "the server's code of the database; usDiskType of its disk")
              .upTo(0xFFFF);
          t.text(
              "dbUser",
              [](BKQDBRestoreNode& node, const char* text) {
                RWCollectableString user;
                RWCollectableString password;
                node.getDBuser(user, password);
                node.setDBuser(text, password);
              },
              "account; in pszDiskPW2 of its disk");
          t.text(
              "dbPassword",
              [](BKQDBRestoreNode& node, const char* text) {
                RWCollectableString user;
                RWCollectableString password;
                node.getDBuser(user, password);
                node.setDBuser(user, text);
              },
              "in pszDiskPW2 of its disk");
        });
    return nodes;
  }();
  return family;
}

}  // namespace bkoq::tool
