// Restore nodes as records, those of databases included.

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
class RestoreNodeConversion : public NodeConversion<L> {};
TYPED_TEST_SUITE(RestoreNodeConversion, Layouts, );

TYPED_TEST(RestoreNodeConversion, RestoreNodeCarriesTheActualType) {
  using L = TypeParam;
  BKQRestoreNode node("standby", "C:");
  node.setActualNodeType(BKQNode::WinNTNode);
  node.setDestinationDir("\\restored");
  node.setNodeOSver("4.0");
  node.setNodeAddress("A");
  node.setNodeDomain("D");
  node.setUserName("u");
  node.setPassword("p");
  node.setOptions(0x10);
  ASSERT_EQ(this->convert(node), 1);
  std::vector<Row> rows = {
      number(0, 2, 9),      // usNodeType, not 25
      number(2, 2, 8),      // usNodeOS by the actual type
      text(4, "4.0"),       // pszNodeOSVer
      text(8, "standby"),   // pszNodeName
      text(12, "A"),        // pszNodeAddress
      text(16, "u"),        // pszUserName
      text(20, "p"),        // pszPassword
      number(36, 4, 1),     // ulMediaCount
      block(40),            // pMedia
      number(56, 4, 0x10),  // ulNodeOptions
  };
  if (!L::kPrevious) rows.push_back(text(84, "D"));  // pszNodeDomain
  this->expectNode("restore node", rows);
  EXPECT_EQ(L::currentNodeType(), 9u);
  expectBlockSize(this->record.pMedia, 52);
  expectRows("disk", this->record.pMedia, 52, {text(0, "C:"), number(16, 4, 1), block(20)});
  expectBlockSize(this->disk().pDiskItems, 32);
  expectRows("item", this->disk().pDiskItems, 32, {text(0, "\\restored")});
}

TYPED_TEST(RestoreNodeConversion, RestoreNodeWithoutActualTypeCarriesZero) {
  BKQRestoreNode node("standby");
  ASSERT_EQ(this->convert(node), 1);
  this->expectNode("restore node",
                   {number(2, 2, 6), text(8, "standby"), number(36, 4, 1), block(40)});
  EXPECT_EQ(TypeParam::currentNodeType(), 0u);
  expectRows("disk", this->record.pMedia, 52, {number(16, 4, 1), block(20)});
  expectRows("item", this->disk().pDiskItems, 32, {});
}

TYPED_TEST(RestoreNodeConversion, ActualTypeOfAnNDSTreeIsKept) {
  // Both layouts take the actual type as it was set, and the class's own type for the address rule.
  BKQRestoreNode node("standby");
  node.setActualNodeType(BKQNode::NDSNode);
  node.setNodeAddress("A");
  node.setNodeDomain("D");
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.usNodeType, 13);
  EXPECT_EQ(TypeParam::currentNodeType(), 13u);
  EXPECT_EQ(this->record.usNodeOS, 4);
  EXPECT_STREQ(this->record.pszNodeAddress, "A");
}

TYPED_TEST(RestoreNodeConversion, NodeSystemSetAfterTheActualTypeWins) {
  BKQRestoreNode node("standby");
  node.setActualNodeType(BKQNode::WinNTNode);
  node.setNodeOS(99);
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.usNodeOS, 99);
}

TYPED_TEST(RestoreNodeConversion, RestorePath) {
  const struct {
    const char* disk;
    const char* directory;
    const char* path;          // null: none
    const char* databasePath;  // the same of a database restore node
  } cases[] = {
      {"", "", nullptr, nullptr},
      {"", "/tmp", "/tmp", "/tmp"},
      {"", "tmp", "tmp", "tmp"},
      {"/usr", "/tmp", "/usr/tmp", "/usr/tmp"},
      {"/usr", "tmp", "/usrtmp", "/usrtmp"},  // no separator
      {"/usr", "", "/usr", "/usr"},
      {"//", "/tmp", "///tmp", "///tmp"},
      {"/", "/tmp", "/tmp", "/tmp"},
      {"/", "", "/", "/"},
      {"C:", "\\tmp", "\\tmp", "\\tmp"},
      {"C:", "", nullptr, "C:"},
  };
  for (const auto& c : cases) {
    const std::string what = std::string(c.disk) + " " + c.directory;
    BKQRestoreNode node("n", c.disk);
    node.setDestinationDir(c.directory);
    ASSERT_EQ(this->convert(node), 1) << what;
    EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, c.path) << what;
    EXPECT_EQ(this->disk().ulDiskItemCount, 1u) << what;
    EXPECT_EQ(this->disk().pszDiskName != nullptr, *c.disk != '\0') << what;

    BKQDBRestoreNode database("n", c.disk);
    database.setDestinationDir(c.directory);
    ASSERT_EQ(this->convert(database), 1) << what;
    EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, c.databasePath) << what;
  }
}

TYPED_TEST(RestoreNodeConversion, ActualTypeMakesNoDatabaseOfARestoreNode) {
  // The rule for the disk name goes by the class, whatever type was set.
  BKQRestoreNode node("n", "accounts");
  node.setActualNodeType(BKQNode::DBRestoreNode);
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->record.usNodeType, 27);
  EXPECT_EQ(this->disk().pDiskItems[0].pszPath, nullptr);

  BKQDBRestoreNode database("n", "accounts");
  database.setActualNodeType(BKQNode::UnixNode);
  ASSERT_EQ(this->convert(database), 1);
  EXPECT_EQ(this->record.usNodeType, 3);
  EXPECT_STREQ(this->disk().pDiskItems[0].pszPath, "accounts");
}

TYPED_TEST(RestoreNodeConversion, DatabaseRestoreNodeFillsItsDisk) {
  using L = TypeParam;
  BKQDBRestoreNode node("dbserver", "accounts");
  node.setActualNodeType(BKQNode::SybaseNode);
  node.setFStype(static_cast<BKQDisk::BKQDiskType>(0x10017));  // low half 23: no rule for it here
  node.setOptions(0x80000003);
  node.BKQNode::setOptions(0x11);
  node.setDBuser("sa", "pw");
  ASSERT_EQ(this->convert(node), 1);
  this->expectNode("database restore node",
                   {
                       number(0, 2, 21), number(2, 2, 6), text(8, "dbserver"), number(36, 4, 1),
                       block(40), number(56, 4, 0x11),  // the node's own word
                   });
  expectRows("disk", this->record.pMedia, 52,
             {
                 text(0, "accounts"),        // pszDiskName
                 number(16, 4, 1),           // ulDiskItemCount
                 block(20),                  // pDiskItems
                 number(24, 2, 23),          // usDiskType
                 number(28, 4, 0x80000003),  // ulOptions
                 bytes(36, "sa\0pw\0"),      // pszDiskPW2
             });
  EXPECT_EQ(L::currentNodeType(), 21u);
}

TYPED_TEST(RestoreNodeConversion, DatabaseCredentials) {
  const std::string none;
  const std::string pair("sa\0pw\0", 6);
  const std::string joined("sa:pw\0\0", 7);
  const std::string user("sa\0\0", 4);
  const std::string password("\0pw\0", 4);
  const bool isPrevious = TypeParam::kPrevious;
  const struct {
    unsigned int type;
    const char* user;
    const char* password;
    const std::string& bytes;  // empty: null
  } cases[] = {
      {5, "sa", "pw", pair},
      {5, "sa", "", user},
      {5, "", "pw", password},
      {5, "", "", none},
      {23, "sa", "pw", pair},
      {22, "sa", "pw", joined},
      {22, "sa", "", user},
      {22, "", "pw", none},
      {22, "", "", none},
      {31, "sa", "pw", joined},
      {31, "sa", "", user},
      {31, "", "pw", none},
      // The previous layout joins type 11, too.
      {11, "sa", "pw", isPrevious ? joined : pair},
      {11, "sa", "", user},
      {11, "", "pw", isPrevious ? none : password},
      {11, "", "", none},
      // The whole type counts, not the half that the record takes.
      {0x10016, "sa", "pw", pair},
  };
  for (const auto& c : cases) {
    const std::string what = std::to_string(c.type) + " " + c.user + " " + c.password;
    BKQDBRestoreNode node("n");
    node.setFStype(static_cast<BKQDisk::BKQDiskType>(c.type));
    node.setDBuser(c.user, c.password);
    ASSERT_EQ(this->convert(node), 1) << what;
    std::vector<Row> rows = {number(16, 4, 1), block(20), number(24, 2, c.type & 0xFFFF)};
    if (!c.bytes.empty()) rows.push_back(bytes(36, c.bytes));
    expectRows(what, this->record.pMedia, 52, rows);
    if (!c.bytes.empty()) expectBlockSize(this->disk().pszDiskPW2, c.bytes.size());
  }
}

// A restore node continues its filters and the count of its media, but its one disk is a new array.
TYPED_TEST(RestoreNodeConversion, ARestoreNodeContinuesARecordInUse) {
  BKQRestoreNode plain("n", "/usr");
  BKQDBRestoreNode database("n", "/usr");
  BKQDirFilter filter(BKQFilter::Include, "/a");
  for (BKQRestoreNode* node : {&plain, static_cast<BKQRestoreNode*>(&database)}) {
    node->addFilter(filter);
    node->setDestinationDir("/lib");
    ASSERT_EQ(this->convert(*node), 1);
    void* const former = this->record.pMedia;
    free(this->record.pszNodeName);
    void* rec = &this->record;
    ASSERT_EQ(TypeParam::convert(*node, rec), 1);
    this->expectNode("n", {number(2, 2, 6), text(8, "n"), number(24, 4, 2), block(28),
                           number(36, 4, 2), block(40)});
    EXPECT_STREQ(this->record.pFilters[1].pszFilter, "/a");
    EXPECT_NE(this->record.pMedia, former);
    for (const void* disk : {former, static_cast<void*>(this->record.pMedia)}) {
      expectRows("disk", disk, 52, {text(0, "/usr"), number(16, 4, 1), block(20)});
      EXPECT_STREQ(static_cast<const typename TypeParam::Disk*>(disk)->pDiskItems[0].pszPath,
                   "/usr/lib");
    }
    freeDisks(former, 1);
    this->record.ulMediaCount = 1;
  }
}

}  // namespace
}  // namespace bkoq::test
