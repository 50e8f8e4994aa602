#include "transfer/layout.h"
#include "transfer/node_steps.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::CurrentLayout>;

}  // namespace

namespace bkoq {

// Meant so: servers look for the domain, by which an NDS tree is found, where other nodes have
// their address. With an address, that comes last and goes into both fields; the domain is then
// lost.
void CurrentLayout::storeDomainAndAddress(Node& record, unsigned int nodeType, const Text& domain,
                                          const Text& address) {
  if (nodeType != BKQNode::NDSNode) {
    storeText(record.pszNodeDomain, domain);
    storeText(record.pszNodeAddress, address);
  } else if (address.isEmpty()) {
    storeText(record.pszNodeAddress, domain);
  } else {
    storeText(record.pszNodeDomain, address);
    storeText(record.pszNodeAddress, address);
  }
}

}  // namespace bkoq

int BKQNode::convertToBK2(void*& rec) { return Steps::node(*this, rec); }

int BKQDiskNode::convertToBK2(void*& rec) { return convertToBK2(rec, bkoq::notGiven); }

int BKQDiskNode::convertToBK2(void*& rec, RWSlistCollectables& names) {
  return convertToBK2(rec, names, bkoq::notGiven);
}

int BKQDiskNode::convertToBK2(void*& rec, const char* overridePath) {
  RWSlistCollectables allDisks;
  return convertToBK2(rec, allDisks, overridePath);
}

int BKQDiskNode::convertToBK2(void*& rec, RWSlistCollectables& names, const char* overridePath) {
  return Steps::diskNode(*this, rec, names, overridePath);
}

int BKQUnixNode::convertToBK2(void*& rec) { return Steps::unixNode(*this, rec); }

int BKQUnixNode::convertToBK2(void*& rec, RWSlistCollectables& names, int mode, const char* extra) {
  return Steps::unixNode(*this, rec, names, mode, extra);
}

int BKQRestoreNode::convertToBK2(void*& rec) { return Steps::restoreNode(*this, rec); }

int BKQDBRestoreNode::convertToBK2(void*& rec) { return Steps::dbRestoreNode(*this, rec); }

int BKQTapeNode::convertToBK2(void*& rec) { return convertToBK2(rec, bkoq::notGiven, 0); }

int BKQTapeNode::convertToBK2(void*& rec, const char* tapeName, unsigned short sessionNumber) {
  return Steps::tapeNode(*this, rec, tapeName, sessionNumber);
}
