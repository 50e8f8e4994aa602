// UNIX nodes as records: the options of their disks, and the text that a form adds.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/name_list.h"
#include "tests/support/node_conversion.h"
#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

template <class L>
class UnixNodeConversion : public NodeConversion<L> {};
TYPED_TEST_SUITE(UnixNodeConversion, Layouts, );

TYPED_TEST(UnixNodeConversion, UnixNodeAddsItsOptionsToItsDisks) {
  using L = TypeParam;
  BKQUnixNode node("n");
  node.setUnixOptions(0x10);
  NamedDisk disk("/usr", 1);
  BKQDiskItem item("/lib");
  disk.addDiskItem(item);
  node.addDisk(disk);
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(L::unixOptions(), 0x10u);
  EXPECT_EQ(L::currentNodeType(), 3u);
  this->expectNode("UNIX node", {
                                    number(0, 2, 3),
                                    number(2, 2, 6),
                                    bytes(8, "n\0\0"),  // pszNodeName, an empty second text
                                    number(36, 4, 1),
                                    block(40),
                                    number(56, 4, 0x120),
                                });
  EXPECT_EQ(this->disk().ulOptions, 0x11u);
  EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, "/usr/lib");

  // The disk node's forms take what the last UNIX node left.
  L::unixOptions() = 0x20;
  NameList names{"/usr"};
  ASSERT_EQ(this->convert(node, names), 1);
  EXPECT_EQ(this->disk().ulOptions, 0x21u);
  ASSERT_EQ(this->convert(node, "/other"), 1);
  EXPECT_EQ(this->disk().ulOptions, 0x21u);
  EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, "/other");
  ASSERT_EQ(this->convert(node, names, "/other"), 1);
  EXPECT_EQ(this->disk().ulOptions, 0x21u);
  ASSERT_EQ(this->convert(static_cast<BKQDiskNode&>(node), names), 1);
  EXPECT_EQ(this->disk().ulOptions, 0x21u);
  EXPECT_EQ(L::unixOptions(), 0x20u);

  // The virtual form, through any base, is the UNIX node's.
  ASSERT_EQ(this->convert(static_cast<BKQNode&>(node)), 1);
  EXPECT_EQ(L::unixOptions(), 0x10u);
  EXPECT_EQ(this->disk().ulOptions, 0x11u);

  ASSERT_EQ(this->convert(node, names, 0, ""), 1);
  EXPECT_EQ(this->diskNames(), (std::vector<std::string>{"/usr"}));
  NameList otherNames{"/opt"};
  ASSERT_EQ(this->convert(node, otherNames, 0, ""), 1);
  EXPECT_EQ(this->record.ulMediaCount, 0u);
}

TYPED_TEST(UnixNodeConversion, UnixOptionsStayForDisksOfOtherNodes) {
  BKQUnixNode first("n");
  first.setUnixOptions(0x10);
  ASSERT_EQ(this->convert(first), 1);
  BKQWinNTNode other("n");
  NamedDisk disk("C:", 1);
  other.addDisk(disk);
  ASSERT_EQ(this->convert(other), 1);
  EXPECT_EQ(this->disk().ulOptions, 1u);  // only on nodes of type 3
  EXPECT_EQ(TypeParam::unixOptions(), 0x10u);
}

TYPED_TEST(UnixNodeConversion, UnixExtraTextIsPutBehindTheFirst) {
  const struct {
    const char* version;
    const char* name;
    int mode;
    const char* extra;
    std::string versionBytes;  // empty: null
    std::string nameBytes;
    uint32_t options;
  } cases[] = {
      {"5", "n", 1, "x", std::string("5\0x\0", 4), std::string("n\0\0", 3), 0x800},
      {"5.8", "n", 1, "long", std::string("5.8\0long\0", 9), std::string("n\0\0", 3), 0x800},
      {"", "n", 1, "x", std::string("\0x\0", 3), std::string("n\0\0", 3), 0x800},
      {"5", "node", 2, "xy", std::string("5\0\0", 3), std::string("node\0xy\0", 8), 0x200},
      {"5", "", 2, "x", std::string("5\0\0", 3), std::string("\0x\0", 3), 0x200},
      {"5", "n", 0, "x", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", 3, "x", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", -1, "x", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", 1, "", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", 2, "", std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"5", "n", 1, nullptr, std::string("5\0\0", 3), std::string("n\0\0", 3), 0},
      {"", "", 1, "", "", "", 0},
  };
  NameList names{};
  unsigned int index = 0;
  for (const auto& c : cases) {
    const std::string what = "case " + std::to_string(index++);
    BKQUnixNode node(c.name);
    node.setNodeOSver(c.version);
    ASSERT_EQ(this->convert(node, names, c.mode, c.extra), 1) << what;
    std::vector<Row> rows = {number(0, 2, 3), number(2, 2, 6), number(56, 4, 0x120 | c.options)};
    if (!c.versionBytes.empty()) rows.push_back(bytes(4, c.versionBytes));
    if (!c.nameBytes.empty()) rows.push_back(bytes(8, c.nameBytes));
    this->expectNode(what, rows);
    if (!c.versionBytes.empty()) {
      expectBlockSize(this->record.pszNodeOSVer, c.versionBytes.size());
    }
    if (!c.nameBytes.empty()) expectBlockSize(this->record.pszNodeName, c.nameBytes.size());
  }
}

TYPED_TEST(UnixNodeConversion, UnixLongFormTakesNoOverridePath) {
  BKQUnixNode node("n");
  NamedDisk disk("/");
  BKQDiskItem etc("/etc");
  BKQDiskItem var("/var");
  disk.addDiskItem(etc);
  disk.addDiskItem(var);
  node.addDisk(disk);
  NameList names{"/"};
  ASSERT_EQ(this->convert(node, names, 1, "/extra"), 1);
  ASSERT_EQ(this->disk().ulDiskItemCount, 2u);
  EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, "/etc");
  EXPECT_STREQ(this->disk().pDiskItems[1].pszPath, "/var");
}

}  // namespace
}  // namespace bkoq::test
