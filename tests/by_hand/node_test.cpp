// The node record, for each family of nodes, worked out by hand.

#include "tests/by_hand/page.h"
#include "tests/catalog/types.h"
#include "tests/support/job_conversion.h"

namespace bkoq::test {
namespace {

template <class L>
class NodeByHand : public JobConversion<L> {};
TYPED_TEST_SUITE(NodeByHand, Layouts, );

void fill(BKQNode& node) {
  node.setNodeOS(0x00010008);
  node.setNodeOSver("4.0");
  node.setNodeAddress("A");
  node.setNodeDomain("D");
  node.setUserName("u");
  node.setPassword("p");
  node.setDeviceType(0x0102);
  node.setBeforeNode("first");
  node.setAfterNode("last");
  node.setBeforeNodeWait(60);
  node.setOptions(0x101);
}

TYPED_TEST(NodeByHand, WindowsMachineWithAFilterAndTheJobs) {
  BKQWinNTNode node("nt");
  fill(node);
  BKQFileFilter own(BKQFilter::Include, "*");
  node.addFilter(own);
  NamedDisk disk("C:", 1);
  node.addDisk(disk);
  BKQBackupJob job;
  job.setOptions(0x00100000);  // no estimate
  BKQAttributeFilter jobs(BKQFilter::Exclude, 2);
  job.addFilter(jobs);
  job.addSourceNode(node);
  ASSERT_EQ(this->convert(job), 1);
  std::string page = R"(
     0  09 00             | Windows NT is 9
     2  08 00             | operating system 0x00010008, low half
     4  -> "4.0" 00
     8  -> "nt" 00
    12  -> "A" 00         | address
    16  -> "u" 00
    20  -> "p" 00
    24  02 00 00 00       | its own filter, then the job's
    28  -> block
    32  02 01             | device 0x0102
    34  00*2
    36  01 00 00 00       | one disk
    40  -> block
    44  -> "first" 00
    48  -> "last" 00
    52  3c 00             | wait of 60
    54  00*2
    56  41 01 00 00       | 0x101, and 0x40 because the job wants no estimate
    60  00*24
)";
  page += TypeParam::kPrevious ? R"(
    84  null              | no domain in this layout
    88  00*12
)"
                               : R"(
    84  -> "D" 00
    88  00*12
)";
  expectPage(this->record->pSourceNodes, 100, page.c_str());
  expectPage(&this->record->pSourceNodes[0].pFilters[1], 32, R"(
     0  05 00
     2  01 00
     4  02 00 00 00
     8  00*24
)");
}

TYPED_TEST(NodeByHand, DirectoryServices) {
  BKQNDSNode node("tree");
  node.setNodeAddress("A");
  node.setNodeDomain("D");
  NamedDisk disk("SYS:", 1);
  node.addDisk(disk);
  BKQBackupJob job;
  job.addSourceNode(node);
  ASSERT_EQ(this->convert(job), 1);
  expectPage(this->record->pSourceNodes, 100,
             TypeParam::kPrevious ? R"(
     0  06 00             | the servers of this layout know it as 6
     2  04 00
     4  null
     8  -> "tree" 00
    12  -> "D" 00         | they look for the domain here, and for no address
    16  00*20
    36  00*4              | a directory has no disks
    40  null
    44  00*12
    56  20 01 00 00       | a new machine begins with 0x120
    60  00*24
    84  null
    88  00*12
)"
                                  : R"(
     0  0d 00             | 13
     2  04 00
     4  null
     8  -> "tree" 00
    12  -> "A" 00         | the address is in both places
    16  00*20
    36  00*4              | a directory has no disks
    40  null
    44  00*12
    56  20 01 00 00       | a new machine begins with 0x120
    60  00*24
    84  -> "A" 00
    88  00*12
)");
}

TYPED_TEST(NodeByHand, UnixMachineWithASecondText) {
  BKQUnixNode node("ux");
  node.setOptions(0);
  node.setNodeOSver("5");
  BKQBackupJob job;
  job.addSourceNode(node);
  ASSERT_EQ(this->convert(job, "", 1, "x"), 1);
  expectPage(this->record->pSourceNodes, 100, R"(
     0  03 00
     2  06 00
     4  -> "5" 00 "x" 00  | kind 1 puts the second text after the version
     8  -> "ux" 00*2      | room for an empty second text
    12  00*44
    56  00 08 00 00       | which 0x800 tells
    60  00*40
)");
  ASSERT_EQ(this->convert(job, "", 2, "xyz"), 1);
  expectPage(this->record->pSourceNodes, 100, R"(
     0  03 00
     2  06 00
     4  -> "5" 00*2
     8  -> "ux" 00 "xyz" 00 | kind 2 after the name
    12  00*44
    56  00 02 00 00       | 0x200
    60  00*40
)");
  ASSERT_EQ(this->convert(job, "", 3, "x"), 1);
  expectPage(this->record->pSourceNodes, 100, R"(
     0  03 00
     2  06 00
     4  -> "5" 00*2
     8  -> "ux" 00*2
    12  00*44
    56  00*4              | no other kind does anything
    60  00*40
)");
}

TYPED_TEST(NodeByHand, TapeNode) {
  BKQTapeNode node("library");
  SessionTape tape("A", 1);
  node.addTape(tape);
  BKQVerifyJob job("v");
  job.addSourceNode(node);
  ASSERT_EQ(this->convert(job), 1);
  expectPage(this->record->pSourceNodes, 100, R"(
     0  03 00             | not 24: the server takes it for a UNIX machine
     2  06 00
     4  null
     8  -> "library" 00
    12  00*20
    32  01 00             | device 1, a tape drive
    34  00*2
    36  01 00 00 00
    40  -> block
    44  00*56
)");
}

TYPED_TEST(NodeByHand, RestoreDestination) {
  BKQRestoreNode node("target", "/usr");
  node.setActualNodeType(BKQNode::WinNTNode);
  node.setDestinationDir("/tmp");
  BKQRestoreJob job("r");
  job.addDestNode(node);
  ASSERT_EQ(this->convert(job), 1);
  expectPage(this->record->pDestNodes, 100, R"(
     0  09 00             | what it is, not 25
     2  08 00             | and its operating system with it
     4  null
     8  -> "target" 00
    12  00*24
    36  01 00 00 00       | always one disk
    40  -> block
    44  00*56
)");
  const auto& disk = this->disk(this->record->pDestNodes[0]);
  expectPage(&disk, 52, R"(
     0  -> "/usr" 00
     4  00*12
    16  01 00 00 00       | with one item
    20  -> block
    24  00*28
)");
  expectPage(disk.pDiskItems, 32, R"(
     0  -> "/usr/tmp" 00  | an absolute disk name, then the directory
     4  00*28
)");
}

TYPED_TEST(NodeByHand, DatabaseRestoreDestination) {
  BKQDBRestoreNode node("db", "master");
  node.setActualNodeType(BKQNode::UnixNode);
  node.setDBuser("u", "p");
  node.setFStype(static_cast<BKQDisk::BKQDiskType>(11));
  node.setOptions(0x00010002);
  BKQDatabaseRestoreJob job("r");
  job.addDestNode(node);
  ASSERT_EQ(this->convert(job), 1);
  const auto& disk = this->disk(this->record->pDestNodes[0]);
  std::string page = R"(
     0  -> "master" 00
     4  00*12
    16  01 00 00 00
    20  -> block
    24  0b 00             | its file system, 11
    26  00*2
    28  02 00 01 00       | the database options 0x00010002
    32  00*4
)";
  page += TypeParam::kPrevious ? R"(
    36  -> "u:p" 00*2     | of 11, 22 and 31 joined
)"
                               : R"(
    36  -> "u" 00 "p" 00  | of 22 and 31 only joined, of 11 apart
)";
  page += R"(
    40  00*12
)";
  expectPage(&disk, 52, page.c_str());
  expectPage(disk.pDiskItems, 32, R"(
     0  -> "master" 00    | without a directory, a database is its own path
     4  00*28
)");
}

}  // namespace
}  // namespace bkoq::test
