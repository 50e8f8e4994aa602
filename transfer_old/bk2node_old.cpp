#include "transfer/node_steps.h"
#include "transfer_old/layout_old.h"

namespace {

using Steps = bkoq::Flattening::Into<bkoq::PreviousLayout>;

}  // namespace

namespace bkoq {

// This layout has no place for a domain: an NDS tree carries it instead of its address.
void PreviousLayout::storeDomainAndAddress(Node& record, unsigned int nodeType, const Text& domain,
                                           const Text& address) {
  storeText(record.pszNodeAddress, nodeType == BKQNode::NDSNode ? domain : address);
}

}  // namespace bkoq

int BKQNode::convertToBK2_old(void*& rec) { return Steps::node(*this, rec); }

int BKQDiskNode::convertToBK2_old(void*& rec) { return convertToBK2_old(rec, bkoq::notGiven); }

int BKQDiskNode::convertToBK2_old(void*& rec, RWSlistCollectables& names) {
  return convertToBK2_old(rec, names, bkoq::notGiven);
}

int BKQDiskNode::convertToBK2_old(void*& rec, const char* overridePath) {
  RWSlistCollectables allDisks;
  return convertToBK2_old(rec, allDisks, overridePath);
}

int BKQDiskNode::convertToBK2_old(void*& rec, RWSlistCollectables& names,
                                  const char* overridePath) {
  return Steps::diskNode(*this, rec, names, overridePath);
}

int BKQUnixNode::convertToBK2_old(void*& rec) { return Steps::unixNode(*this, rec); }

int BKQUnixNode::convertToBK2_old(void*& rec, RWSlistCollectables& names, int mode,
                                  const char* extra) {
  return Steps::unixNode(*this, rec, names, mode, extra);
}

int BKQRestoreNode::convertToBK2_old(void*& rec) { return Steps::restoreNode(*this, rec); }

int BKQDBRestoreNode::convertToBK2_old(void*& rec) { return Steps::dbRestoreNode(*this, rec); }

int BKQTapeNode::convertToBK2_old(void*& rec) { return convertToBK2_old(rec, bkoq::notGiven, 0); }

int BKQTapeNode::convertToBK2_old(void*& rec, const char* tapeName, unsigned short sessionNumber) {
  return Steps::tapeNode(*this, rec, tapeName, sessionNumber);
}
