// Disk, item, tape, tape item and extension, worked out by hand.

#include "tests/by_hand/page.h"
#include "tests/catalog/types.h"
#include "tests/support/job_conversion.h"

namespace bkoq::test {
namespace {

template <class L>
class DiskByHand : public JobConversion<L> {};
TYPED_TEST_SUITE(DiskByHand, Layouts, );

template <class L>
class TapeByHand : public JobConversion<L> {};
TYPED_TEST_SUITE(TapeByHand, Layouts, );

TYPED_TEST(DiskByHand, EverythingOnAUnixMachine) {
  BKQDisk disk(static_cast<BKQDisk::BKQDiskType>(0x00010005));
  disk.setDiskName("/usr");
  disk.setOptions(0x00000103);
  disk.setPassword("own");
  disk.setUser("u");
  disk.setDiskPW2("p2");
  disk.setEncryptionKey("key");
  BKQDiskItem item;
  item.setPath("/lib");
  item.addFile("a");
  item.addFile("bc");
  item.setOptions(0x80000000);
  disk.addDiskItem(item);
  BKQDiskItem whole;
  disk.addDiskItem(whole);
  BKQFileFilter filter(BKQFilter::Include, "*.c");
  disk.addFilter(filter);
  BKQUnixNode node("n");
  node.setUnixOptions(0x10);
  node.addDisk(disk);
  BKQBackupJob job;
  job.setEncryptionOn();
  job.setCompressionOn();
  job.setSessionPassword("session");
  job.addSourceNode(node);
  ASSERT_EQ(this->convert(job), 1);
  const auto& record = this->disk(this->record->pSourceNodes[0]);
  expectPage(&record, 52, R"(
     0  -> "/usr" 00
     4  -> "own" 00       | its own password, not the session's
     8  01 00 00 00
    12  -> block          | its filter
    16  02 00 00 00
    20  -> block          | its items
    24  05 00             | type 0x00010005, low half
    26  00*2
    28  13 61 00 00       | 0x0103, 0x10 of the UNIX machine, 0x4000 encryption, 0x2000 compression
    32  00*4
    36  -> "u" 00 "p2" 00 | type 5 keeps user and second password apart
    40  00*4
    44  -> "key" 00
    48  00*4
)");
  expectPage(&record.pDiskItems[0], 32, R"(
     0  -> "/usr/lib" 00  | absolute by the name of its disk
     4  02 00 00 00       | two names
     8  -> "a" 00 "bc" 00
    12  00 00 00 80
    16  00*16
)");
  expectPage(&record.pDiskItems[1], 32, R"(
     0  -> "/usr" 00      | without a path, the disk itself
     4  00*4
     8  null
    12  01 00 00 00       | as a new item begins
    16  00*16
)");
  expectPage(record.pFilters, 32, R"(
     0  02 00
     2  00 00
     4  01 00 00 00
     8  -> "*.c" 00
    12  04 00
    14  00*18
)");
}

TYPED_TEST(DiskByHand, RegistryOnWindowsNT) {
  BKQDisk registry;
  registry.setDiskName("Registry");
  registry.setUser("u");
  registry.setDiskPW2("p2");
  BKQDisk joined(static_cast<BKQDisk::BKQDiskType>(22));
  joined.setUser("u");
  joined.setDiskPW2("p2");
  BKQDisk none(static_cast<BKQDisk::BKQDiskType>(23));
  none.setDiskName("Registry");
  BKQDiskItem item;
  item.setPath("");
  none.addDiskItem(item);
  BKQDisk secondOnly;
  secondOnly.setDiskPW2("p2");
  BKQWinNTNode node("n");
  node.addDisk(registry);
  node.addDisk(joined);
  node.addDisk(none);
  node.addDisk(secondOnly);
  BKQBackupJob job;
  job.setSessionPassword("session");
  job.addSourceNode(node);
  ASSERT_EQ(this->convert(job), 1);
  const auto& machine = this->record->pSourceNodes[0];
  ASSERT_EQ(machine.ulMediaCount, 4u);
  expectPage(&this->disk(machine, 0), 52, R"(
     0  -> "Registry" 00
     4  -> "session" 00   | it has none of its own
     8  00*4
    12  null
    16  00*4
    20  null
    24  0b 00             | by its name 11
    26  00*2
    28  00*4
    32  00*4
    36  -> "u" 00 "p2" 00 | joined by a colon when its own type is 11, not when its name makes it so
    40  00*4
    44  null
    48  00*4
)");
  expectPage(&this->disk(machine, 1), 52, R"(
     0  null
     4  -> "session" 00
     8  00*16
    24  16 00             | 22
    26  00*10
    36  -> "u:p2" 00*2    | joined; a reader of two texts finds an empty second one
    40  00*12
)");
  expectPage(&this->disk(machine, 2), 52, R"(
     0  -> "Registry" 00
     4  -> "session" 00
     8  00*8
    16  01 00 00 00
    20  -> block
    24  00 00             | 23 is transferred as 0, whatever the name
    26  00*26
)");
  expectPage(this->disk(machine, 2).pDiskItems, 32, R"(
     0  -> 00             | an empty path is a text all the same
     4  00*8
    12  01 00 00 00
    16  00*16
)");
  expectPage(&this->disk(machine, 3), 52, R"(
     0  null
     4  -> "session" 00
     8  00*28
    36  -> 00 "p2" 00     | an empty user, then the password
    40  00*12
)");
}

TYPED_TEST(TapeByHand, EverythingOfARestore) {
  BKQTape tape("group", "tape");
  tape.setTapeID(0x12345);
  tape.setTapeSeq(7);
  tape.setSessionNumber(0x0201);
  tape.setQFABlockNumber(0x01020304);
  tape.setFileSystem(0xfe);
  tape.setPath("/p");
  tape.setLocation("shelf");
  tape.setSessionEndTime(99);
  BKQTapeXtension extension;
  extension.setDBuser("dbu");
  extension.setDBpw("dbp");
  extension.setSessionEndTime(1000);
  extension.setOptions(0x02);
  tape.setTapeXtension(extension);  // marks its options with 0x8000000
  BKQTapeItem etc(0x00010002, 3);
  etc.setFileOrDir("/etc");
  etc.setOptions(5);
  etc.setPhysicalChunkNum(77);
  tape.addTapeItem(etc);
  BKQTapeItem share;
  share.setFileOrDir("//srv/share");
  tape.addTapeItem(share);
  BKQAttributeFilter filter(BKQFilter::Exclude, 0x20);
  tape.addFilter(filter);
  BKQTapeNode node("library");
  node.addTape(tape);
  BKQRestoreJob job("r");
  job.setNewTapeTimeout(0x0102);
  job.setSpanTapeTimeout(0x0304);
  job.setSessionPassword("session");
  job.addSourceNode(node);
  ASSERT_EQ(this->convert(job), 1);
  const auto& record = this->tape(this->record->pSourceNodes[0]);

  std::string page = R"(
     0  -> "group" 00
     4  -> "tape" 00
)";
  page += TypeParam::kPrevious ? R"(
     8  45 23 01 00       | the whole of 0x12345
)"
                               : R"(
     8  45 23             | the low half of 0x12345
    10  00*2
)";
  page += R"(
    12  07 00             | sequence
    14  01 02             | session 0x0201
    16  04 03 02 01       | block 0x01020304
    20  -> "session" 00   | the job's
    24  00 00             | a restore writes no tapes: methods are the backup job's
    26  00 00
    28  02 01             | time-outs of the job
    30  04 03
    32  01 00 00 00
    36  -> block          | filter
    40  02 00 00 00
    44  -> block          | items
    48  fe 00             | file system
    50  00*2
)";
  page += TypeParam::kPrevious ? R"(
    52  00 00 00 00       | without the mark of an extension, which has no place here
    56  -> "/p" 00
    60  -> "shelf" 00
    64  e8 03 00 00       | the extension's session end time, 1,000, not the tape's own
    68  00*4
)"
                               : R"(
    52  00 00 00 08       | the mark of an extension
    56  -> "/p" 00
    60  -> "shelf" 00
    64  00*4
    68  -> block          | the extension
)";
  expectPage(&record, 72, page.c_str());
  expectPage(&record.pTapeItems[0], 32, R"(
     0  02 00 01 00       | chunk 0x00010002
     4  03 00             | offset in it
     6  00*2
     8  -> "//etc" 00     | the server's form: a slash in front, also of a path that has one
    12  05 00 00 00
    16  00*16
)");
  expectPage(&record.pTapeItems[1], 32, R"(
     0  00*8
     8  -> "//srv/share" 00 | which has two already
    12  00*20
)");
  expectPage(record.pFilters, 32, R"(
     0  05 00
     2  01 00
     4  20 00 00 00
     8  00*24
)");
  if constexpr (!TypeParam::kPrevious) {
    expectPage(record.pTapeX, 64, R"(
     0  -> "dbu" 00
     4  -> "dbp" 00
     8  e8 03 00 00       | 1,000
    12  00*44
    56  02 00 00 00
    60  00*4
)");
  }
}

TYPED_TEST(TapeByHand, BareTapeOfABackup) {
  BKQTape tape;
  tape.setSessionEndTime(99);
  BKQTapeNode& node = *new BKQTapeNode("library");
  node.addTape(tape);
  BKQBackupJob job;
  job.setTapeMethod(static_cast<BKQBackupJob::BKQTapeMethodType>(0x00010003));
  job.setSpanMethod(static_cast<BKQBackupJob::BKQSpanMethodType>(2));
  job.setDestination(node);
  ASSERT_EQ(this->convert(job), 1);
  std::string page = R"(
     0  null
     4  null
     8  00*12
    20  null
    24  03 00             | method of the job, low half
    26  02 00             | its method for further tapes
    28  05 00             | time-outs as a new job has them: 5
    30  0f 27             | and 9,999
    32  00*32
)";
  page += TypeParam::kPrevious ? R"(
    64  63 00 00 00       | its own session end time, 99
    68  00*4
)"
                               : R"(
    64  00*4
    68  null
)";
  expectPage(&this->tape(this->record->pDestNodes[0]), 72, page.c_str());
}

}  // namespace
}  // namespace bkoq::test
