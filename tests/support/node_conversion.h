#ifndef BKOQ_TESTS_SUPPORT_NODE_CONVERSION_H_
#define BKOQ_TESTS_SUPPORT_NODE_CONVERSION_H_

// What the tests of the conversions of nodes have in common: the fixture, and parts of nodes.

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/catalog/layouts.h"
#include "tests/support/free_records.h"
#include "tests/support/media.h"
#include "tests/support/rows.h"

namespace bkoq::test {

// A machine class of a client's own, of any kind.
class Machine : public BKQDiskNode {
 public:
  Machine(unsigned int type, const char* name) : BKQDiskNode(name), type_(type) {}
  unsigned int nodeType() const override { return type_; }

 private:
  unsigned int type_;
};

template <class L>
class NodeConversion : public testing::Test {
 protected:
  using Other = OtherLayout<L>;

  void SetUp() override {
    // Whatever is taken from or stored in the other layout's variables shows.
    Other::nodeNoEstimate() = 1;
    Other::currentNodeType() = 77;
    Other::unixOptions() = 0x8000;
    Other::diskName() = "foreign";
  }

  void TearDown() override {
    EXPECT_EQ(Other::nodeNoEstimate(), 1u);
    EXPECT_EQ(Other::currentNodeType(), 77u);
    EXPECT_EQ(Other::unixOptions(), 0x8000u);
    EXPECT_STREQ(Other::diskName().data(), "foreign");
    clear();
  }

  // Converts into a zeroed record that the fixture keeps and frees.
  template <class Node, class... Arguments>
  int convert(Node& node, Arguments&&... arguments) {
    clear();
    family_ = std::is_base_of<BKQTapeNode, Node>::value ? NodeFamily::kTape : NodeFamily::kDisk;
    void* rec = &record;
    const int result = L::convert(node, rec, std::forward<Arguments>(arguments)...);
    EXPECT_EQ(rec, static_cast<void*>(&record));
    return result;
  }

  void expectNode(const std::string& what, const std::vector<Row>& rows) {
    expectRows(what, &record, 100, rows);
  }

  // The records that hang from the node, one per index.
  const typename L::Disk& disk(unsigned int i = 0) const {
    return static_cast<const typename L::Disk*>(record.pMedia)[i];
  }
  const typename L::Tape& tape(unsigned int i = 0) const {
    return static_cast<const typename L::Tape*>(record.pMedia)[i];
  }
  std::vector<std::string> diskNames() const {
    std::vector<std::string> names;
    for (unsigned int i = 0; i < record.ulMediaCount; ++i) names.emplace_back(disk(i).pszDiskName);
    return names;
  }
  std::vector<std::string> tapeNames() const {
    std::vector<std::string> names;
    for (unsigned int i = 0; i < record.ulMediaCount; ++i) names.emplace_back(tape(i).pszTapeName);
    return names;
  }

  typename L::Node record{};

 private:
  void clear() {
    freeNodeContents(record, family_);
    record = {};
  }

  NodeFamily family_ = NodeFamily::kDisk;
};

// The cursors after a conversion, told by what the enumeration still hands out.
inline unsigned int filtersLeft(BKQNode& node) {
  BKQFilterCol* filters = nullptr;
  const unsigned int count = node.enumFilters(filters, 0);
  delete filters;
  return count;
}
inline unsigned int disksLeft(BKQDiskNode& node) {
  BKQDiskCol* disks = nullptr;
  const unsigned int count = node.enumDisks(disks, 0);
  delete disks;
  return count;
}
inline unsigned int tapesLeft(BKQTapeNode& node) {
  BKQTapeCol* tapes = nullptr;
  const unsigned int count = node.enumTapes(tapes, 0);
  delete tapes;
  return count;
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_NODE_CONVERSION_H_
