#include "tools/attributes.h"
#include "tools/credentials.h"

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

// An NDS tree is found by its domain, in both layouts.
enum class FoundBy : bool { kAddress, kDomain };

void describeNode(Table<BKQNode> t, const std::string& sampleName = "machine",
                  FoundBy foundBy = FoundBy::kAddress) {
  t.text("nodeName", &BKQNode::setNodeName, &BKQNode::getNodeName, "name of the machine")
      .required()
      .shown(jsonText(sampleName));
  t.text("beforeNode", &BKQNode::setBeforeNode, &BKQNode::getBeforeNode,
         "command run before the node");
  t.text("afterNode", &BKQNode::setAfterNode, &BKQNode::getAfterNode, "command run after the node");
  t.number("beforeNodeWait", &BKQNode::setBeforeNodeWait, &BKQNode::getBeforeNodeWait,
           "wait after the command run before");
  t.text("nodeOSver", &BKQNode::setNodeOSver, &BKQNode::getNodeOSver,
         "version of the operating system");
  Attribute& address =
      t.text("nodeAddress", &BKQNode::setNodeAddress, &BKQNode::getNodeAddress, "address");
  if (foundBy == FoundBy::kDomain) address.carriedOnlyIn("current");
  Attribute& domain =
      t.text("nodeDomain", &BKQNode::setNodeDomain, &BKQNode::getNodeDomain, "domain");
  if (foundBy == FoundBy::kAddress) domain.carriedOnlyIn("current");
  t.text("userName", &BKQNode::setUserName, &BKQNode::getUserName, "account");
  t.text("password", &BKQNode::setPassword, &BKQNode::getPassword, "password");
  t.number("priority", &BKQNode::setPriority, &BKQNode::getPriority,
           "place in the order of the machines; 255: none");
  t.number("nodeType", &BKQNode::setNodeType, &BKQNode::getNodeType,
           "a word of its own; what the record says depends on the kind")
      .unrecorded();
  t.number("deviceType", &BKQNode::setDeviceType, &BKQNode::getDeviceType,
           "the server's code of the device");
}

// The node's own word; a database restore node has another of that name.
void describeNodeOptions(Table<BKQNode> t, const char* key) {
  t.number(key, &BKQNode::setOptions, &BKQNode::getOptions, "option bits");
}

void describeNodeOS(Table<BKQNode> t) {
  t.number("nodeOS", &BKQNode::setNodeOS, &BKQNode::getNodeOS,
           "operating-system code; its default depends on the kind")
      .upTo(0xFFFF);
}

void describeFilters(Table<BKQNode> t) {
  t.parts("filters", filters, &BKQNode::addFilter, "filters of this node");
}

void describeMachine(Table<BKQDiskNode> t, const std::string& sampleName, FoundBy foundBy) {
  describeNode(t, sampleName, foundBy);
  describeNodeOS(t);
  describeNodeOptions(t, "options");
  describeFilters(t);
  t.kept("groomInfo", grooms, &BKQDiskNode::setGroomInfo, "how long files are kept").unrecorded();
  Attribute& own = t.parts("disks", disks, &BKQDiskNode::addDisk, "its disks").shown("[]");
  if (foundBy == FoundBy::kDomain) own.unrecorded();
}

template <class Node>
Node* makeNode(const Value& /*value*/) {
  return new Node("");
}

template <class Node, class Describe>
void addMachine(FamilyOf<BKQDiskNode>& family, const char* kind, const char* name,
                const char* meaning, Describe describe) {
  family.template add<Node>(kind, name, meaning, makeNode<Node>, [kind, describe](Table<Node> t) {
    describeMachine(t, std::string(kind) + "1",
                    std::is_same_v<Node, BKQNDSNode> ? FoundBy::kDomain : FoundBy::kAddress);
    describe(t);
  });
}

template <class Node>
void addMachine(FamilyOf<BKQDiskNode>& family, const char* kind, const char* name,
                const char* meaning) {
  addMachine<Node>(family, kind, name, meaning, [](Table<Node>) {});
}

void describeRestoreNode(Table<BKQRestoreNode> t) {
  describeNode(t);
  // Also sets the operating-system code, so that comes after it.
  t.number("actualNodeType", &BKQRestoreNode::setActualNodeType, &BKQRestoreNode::getActualNodeType,
           "kind of the machine; also sets nodeOS")
      .upTo(0xFFFF)
      .named(machineKinds())
      .shown("\"unix\"");
  describeNodeOS(t);
  describeFilters(t);
  t.text("diskName", &BKQRestoreNode::setDiskName, &BKQRestoreNode::getDiskName,
         "disk to restore to")
      .shown("\"/\"");
  t.text("destinationDir", &BKQRestoreNode::setDestinationDir, &BKQRestoreNode::getDestinationDir,
         "directory on the disk");
}

}  // namespace

const FamilyOf<BKQDiskNode>& machines() {
  static const FamilyOf<BKQDiskNode> family = [] {
    FamilyOf<BKQDiskNode> machines("node");
    addMachine<BKQUnixNode>(
        machines, "unix", "BKQUnixNode", "a UNIX machine", [](Table<BKQUnixNode> t) {
          t.number("unixOptions", &BKQUnixNode::setUnixOptions, &BKQUnixNode::getUnixOptions,
                   "bits added to the options of every disk");
        });
    addMachine<BKQMacNode>(machines, "mac", "BKQMacNode", "a Macintosh");
    addMachine<BKQNetwareNode>(machines, "netware", "BKQNetwareNode", "a NetWare server");
    addMachine<BKQWinNTNode>(machines, "winNT", "BKQWinNTNode", "a Windows NT machine");
    addMachine<BKQOS2Node>(machines, "os2", "BKQOS2Node", "an OS/2 machine");
    addMachine<BKQWin95Node>(machines, "win95", "BKQWin95Node", "a Windows 95 machine");
    addMachine<BKQWindowsNode>(machines, "windows", "BKQWindowsNode", "a Windows machine");
    addMachine<BKQNDSNode>(machines, "nds", "BKQNDSNode",
                           "an NDS tree, whose disks are not recorded");
    addMachine<BKQFTPNode>(machines, "ftp", "BKQFTPNode", "an FTP server");
    addMachine<BKQSybaseNode>(machines, "sybase", "BKQSybaseNode", "a Sybase server",
                              [](Table<BKQSybaseNode> t) {
                                t.number("sybaseOptions", &BKQSybaseNode::setSybaseOptions,
                                         &BKQSybaseNode::getSybaseOptions, "option bits")
                                    .unrecorded();
                                t.text("encryptKey", &BKQSybaseNode::setEncryptKey,
                                       &BKQSybaseNode::getEncryptKey, "key for encryption")
                                    .unrecorded();
                                t.text("dumpFile", &BKQSybaseNode::setDumpFile,
                                       &BKQSybaseNode::getDumpFile, "file for the dump")
                                    .unrecorded();
                              });
    addMachine<BKQOracleNode>(machines, "oracle", "BKQOracleNode", "an Oracle server",
                              [](Table<BKQOracleNode> t) {
                                t.number("oracleOptions", &BKQOracleNode::setOracleOptions,
                                         &BKQOracleNode::getOracleOptions, "option bits")
                                    .unrecorded();
                              });
    addMachine<BKQInformixNode>(machines, "informix", "BKQInformixNode", "an Informix server",
                                [](Table<BKQInformixNode> t) {
                                  t.number("informixOptions", &BKQInformixNode::setInformixOptions,
                                           &BKQInformixNode::getInformixOptions, "option bits")
                                      .unrecorded();
                                });
    addMachine<BKQSnapShotNode>(machines, "snapShot", "BKQSnapShotNode",
                                "a machine read through a snapshot", [](Table<BKQSnapShotNode> t) {
                                  t.number("snapShotOptions", &BKQSnapShotNode::setSnapShotOptions,
                                           &BKQSnapShotNode::getSnapShotOptions, "option bits")
                                      .unrecorded();
                                });
    return machines;
  }();
  return family;
}

const FamilyOf<BKQTapeNode>& tapeNodes() {
  static const FamilyOf<BKQTapeNode> family = [] {
    FamilyOf<BKQTapeNode> nodes("tape node");
    nodes.add<BKQTapeNode>(
        "", "BKQTapeNode", "tapes to read, or to write to", makeNode<BKQTapeNode>,
        [](Table<BKQTapeNode> t) {
          describeNode(t);
          describeNodeOS(t);
          describeNodeOptions(t, "options");
          describeFilters(t);
          t.parts("tapes", tapes, &BKQTapeNode::addTape, "its tapes").shown("[]");
        });
    return nodes;
  }();
  return family;
}

const FamilyOf<BKQRestoreNode>& restoreNodes() {
  static const FamilyOf<BKQRestoreNode> family = [] {
    FamilyOf<BKQRestoreNode> nodes("restore node");
    nodes.add<BKQRestoreNode>("machine", "BKQRestoreNode", "a machine to restore to",
                              makeNode<BKQRestoreNode>, [](Table<BKQRestoreNode> t) {
                                describeRestoreNode(t);
                                describeNodeOptions(t, "options");
                              });
    nodes.add<BKQDBRestoreNode>(
        "database", "BKQDBRestoreNode", "a database to restore to", makeNode<BKQDBRestoreNode>,
        [](Table<BKQDBRestoreNode> t) {
          describeRestoreNode(t);
          describeNodeOptions(t, "nodeOptions");
          t.number("options", &BKQDBRestoreNode::setOptions, &BKQDBRestoreNode::getOptions,
                   "option bits of its disk");
          t.number("fsType", &BKQDBRestoreNode::setFStype, &BKQDBRestoreNode::getFStype,
                   "the server's code of the database")
              .upTo(0xFFFF);
          t.text("dbUser",
                 settingCredential<Credential::kUser>(&BKQDBRestoreNode::getDBuser,
                                                      &BKQDBRestoreNode::setDBuser),
                 gettingCredential<Credential::kUser>(&BKQDBRestoreNode::getDBuser),
                 "account of the database");
          t.text("dbPassword",
                 settingCredential<Credential::kPassword>(&BKQDBRestoreNode::getDBuser,
                                                          &BKQDBRestoreNode::setDBuser),
                 gettingCredential<Credential::kPassword>(&BKQDBRestoreNode::getDBuser),
                 "password of that account");
        });
    return nodes;
  }();
  return family;
}

}  // namespace bkoq::tool
