// Backup jobs as record trees, in both layouts and every form of the conversion.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/catalog/classes.h"
#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/foreign_attachments.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/job_conversion.h"
#include "tests/support/name_list.h"
#include "tests/support/rows.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

template <class L>
class BackupConversion : public JobConversion<L> {};
TYPED_TEST_SUITE(BackupConversion, Layouts, );

TYPED_TEST(BackupConversion, EverySourceNodeGetsEveryFilter) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.directory);
  job.addFilter(machines.file);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job", {number(4, 2, 1), number(12, 4, 3), block(16)});
  EXPECT_EQ(this->sourceNames(), (Names{"A", "B", "C"}));
  expectBlockSize(this->record->pSourceNodes, 300);
  for (unsigned int i = 0; i < 3; ++i) {
    const auto& node = this->record->pSourceNodes[i];
    ASSERT_EQ(node.ulFilterCount, 2u);
    expectBlockSize(node.pFilters, 64);
    expectRows(
        "first filter", &node.pFilters[0], 32,
        {number(0, 2, 3), number(2, 2, 1), number(4, 4, 1), text(8, "/tmp"), number(12, 2, 5)});
    expectRows("second filter", &node.pFilters[1], 32,
               {number(0, 2, 2), number(4, 4, 1), text(8, "*.c"), number(12, 2, 4)});
  }
  // Each its own copy.
  EXPECT_NE(this->record->pSourceNodes[0].pFilters[0].pszFilter,
            this->record->pSourceNodes[1].pFilters[0].pszFilter);
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/usr /opt");
}

TYPED_TEST(BackupConversion, NodesOwnFiltersComeFirst) {
  Machines machines;
  machines.winNT.addFilter(machines.file);
  BKQBackupJob job;
  machines.addTo(job);
  ForeignFilter foreign(1);
  job.addFilter(foreign);
  job.addFilter(machines.directory);
  ASSERT_EQ(this->convert(job), 1);
  const auto& node = this->record->pSourceNodes[1];
  ASSERT_EQ(node.ulFilterCount, 3u);
  EXPECT_EQ(node.pFilters[0].usFilterType, 2);
  EXPECT_EQ(node.pFilters[1].usFilterType,
            TypeParam::kPrevious ? ForeignFilter::kPreviousMark : ForeignFilter::kCurrentMark);
  EXPECT_EQ(node.pFilters[2].usFilterType, 3);
  EXPECT_EQ(this->record->pSourceNodes[0].ulFilterCount, 2u);
}

TYPED_TEST(BackupConversion, OneNodeByName) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.file);
  const struct {
    const char* name;
    Names nodes;
  } cases[] = {
      {"B", {"B"}}, {"", {"A", "B", "C"}}, {nullptr, {"A", "B", "C"}}, {"b", {}}, {"BB", {}},
      {"X", {}},
  };
  for (const auto& c : cases) {
    const std::string what = c.name != nullptr ? c.name : "null";
    ASSERT_EQ(this->convert(job, c.name), 1) << what;
    EXPECT_EQ(this->sourceNames(), c.nodes) << what;
    for (unsigned int i = 0; i < c.nodes.size(); ++i) {
      EXPECT_EQ(this->record->pSourceNodes[i].ulFilterCount, 1u) << what;
    }
    if (c.nodes.empty()) {
      EXPECT_EQ(this->record->pSourceNodes, nullptr) << what;
    } else {
      expectBlockSize(this->record->pSourceNodes, 100 * c.nodes.size());
    }
  }

  job.addSourceNode(machines.otherB);
  ASSERT_EQ(this->convert(job, "B"), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"B", "B"}));
  EXPECT_EQ(this->record->pSourceNodes[0].usNodeType, 9);
  EXPECT_EQ(this->record->pSourceNodes[1].usNodeType, 20);
}

TYPED_TEST(BackupConversion, SkippedNodeConvertsNothing) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  ASSERT_EQ(this->convert(job, "X"), 1);
  EXPECT_EQ(TypeParam::currentNodeType(), 0u);
  EXPECT_EQ(TypeParam::unixOptions(), 0u);
}

TYPED_TEST(BackupConversion, DisksByName) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  NameList names{"C:", "/opt"};
  // The list reaches every source node, UNIX or not.
  ASSERT_EQ(this->convert(job, "", names), 1);
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/opt");
  EXPECT_EQ(this->disks(this->record->pSourceNodes[1]), "C:");
  EXPECT_EQ(this->disks(this->record->pSourceNodes[2]), "");
  EXPECT_EQ(this->record->pSourceNodes[2].pMedia, nullptr);
  ASSERT_EQ(this->convert(job, "A", names), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"A"}));
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/opt");
  NameList none{};
  ASSERT_EQ(this->convert(job, "A", none), 1);
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/usr /opt");
  EXPECT_EQ(names.entries(), 2u);
}

TYPED_TEST(BackupConversion, UnixTextReachesUnixNodesOnly) {
  Machines machines;
  machines.winNT.setNodeOSver("4");
  BKQBackupJob job;
  machines.addTo(job);
  NameList names{"/usr", "C:"};

  ASSERT_EQ(this->convert(job, "", 1, "x"), 1);
  expectRows("UNIX node", &this->record->pSourceNodes[0], 100,
             {number(0, 2, 3), number(2, 2, 6), bytes(4, "5\0x\0"), bytes(8, "A\0\0"),
              number(36, 4, 2), block(40), number(56, 4, 0x920)});
  expectRows("Windows NT node", &this->record->pSourceNodes[1], 100,
             {number(0, 2, 9), number(2, 2, 8), text(4, "4"), text(8, "B"), number(36, 4, 1),
              block(40), number(56, 4, 0x120)});

  ASSERT_EQ(this->convert(job, "A", 2, "xy"), 1);
  EXPECT_EQ(this->record->ulNumSourceNodes, 1u);
  expectRows("UNIX node", &this->record->pSourceNodes[0], 100,
             {number(0, 2, 3), number(2, 2, 6), bytes(4, "5\0\0"), bytes(8, "A\0xy\0"),
              number(36, 4, 2), block(40), number(56, 4, 0x320)});

  ASSERT_EQ(this->convert(job, "", names, 1, "x"), 1);
  EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/usr");
  EXPECT_EQ(std::string(this->record->pSourceNodes[0].pszNodeOSVer, 4), std::string("5\0x\0", 4));
  EXPECT_EQ(this->disks(this->record->pSourceNodes[1]), "C:");
  EXPECT_EQ(this->disks(this->record->pSourceNodes[2]), "");

  ASSERT_EQ(this->convert(job, "", 3, "x"), 1);
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x120u);
}

// Without a text a form takes what the shorter forms take: every node, and no second text.
TYPED_TEST(BackupConversion, NullTextsOfABackupAreEmptyOnes) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  NameList names{"/usr", "C:"};
  const auto expect = [&](const char* disksOfTheFirst) {
    EXPECT_EQ(this->sourceNames(), (Names{"A", "B", "C"}));
    EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), disksOfTheFirst);
    EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x120u);
    EXPECT_EQ(std::string(this->record->pSourceNodes[0].pszNodeOSVer, 3), std::string("5\0\0", 3));
    EXPECT_EQ(std::string(this->record->pSourceNodes[0].pszNodeName, 3), std::string("A\0\0", 3));
  };
  ASSERT_EQ(this->convert(job, nullptr), 1);
  expect("/usr /opt");
  ASSERT_EQ(this->convert(job, nullptr, names), 1);
  expect("/usr");
  for (const int kind : {1, 2}) {
    ASSERT_EQ(this->convert(job, nullptr, kind, nullptr), 1);
    expect("/usr /opt");
    ASSERT_EQ(this->convert(job, nullptr, names, kind, nullptr), 1);
    expect("/usr");
  }
  // Each of the two for itself.
  ASSERT_EQ(this->convert(job, nullptr, names, 1, "x"), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"A", "B", "C"}));
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x920u);
  ASSERT_EQ(this->convert(job, "A", names, 1, nullptr), 1);
  EXPECT_EQ(this->sourceNames(), Names{"A"});
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x120u);
}

TYPED_TEST(BackupConversion, UnixNodeAlwaysSetsItsOptions) {
  using L = TypeParam;
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(L::unixOptions(), 0x10u);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[0], 0).ulOptions, 0x11u);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[1], 0).ulOptions, 4u);
  EXPECT_EQ(L::currentNodeType(), 2u);
  EXPECT_STREQ(L::diskName().data(), "HD");
}

TYPED_TEST(BackupConversion, DestinationGetsNoFilters) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.file);
  job.setDestination(*new Library);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job",
                  {number(4, 2, 1), number(12, 4, 3), block(16), number(20, 4, 1), block(24)});
  expectBlockSize(this->record->pDestNodes, 100);
  expectRows("destination", this->record->pDestNodes, 100,
             {number(0, 2, 3), number(2, 2, 6), text(8, "library"), number(32, 2, 1),
              number(36, 4, 3), block(40)});
  EXPECT_EQ(this->tapes(this->record->pDestNodes[0]), "A1 A2 B1");
}

TYPED_TEST(BackupConversion, DestinationAloneAndFiltersDropped) {
  Machines machines;
  BKQBackupJob job;
  job.addFilter(machines.file);
  job.setDestination(*new BKQTapeNode("library"));
  const std::string lines = standardErrorOf([&] { ASSERT_EQ(this->convert(job), 1); });
  EXPECT_EQ(lines, "");
  this->expectJob("job", {number(4, 2, 1), number(20, 4, 1), block(24)});
}

TYPED_TEST(BackupConversion, DestinationIsCalledThroughItsOwnClassSourcesAreNot) {
  const unsigned int mark = TypeParam::kPrevious ? 302 : 301;
  BKQBackupJob job;
  ForeignMachine<BKQDiskNode> other(99, "other");
  ForeignMachine<BKQUnixNode> unixNode(3, "unix");
  job.addSourceNode(other);
  job.addSourceNode(unixNode);
  job.setDestination(*new ForeignTapeNode);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(this->record->pSourceNodes[0].usNodeType, 99);
  EXPECT_EQ(this->record->pSourceNodes[1].usNodeType, 3);
  EXPECT_EQ(this->record->pDestNodes[0].usNodeType, mark);
}

TYPED_TEST(BackupConversion, TypeNotClassMakesAUnixSource) {
  // A UNIX node that answers another type is flattened as any disk node.
  BKQBackupJob job;
  ForeignMachine<BKQUnixNode> node(9, "n");
  node.setNodeOSver("5");
  node.setUnixOptions(0x10);
  job.addSourceNode(node);
  ASSERT_EQ(this->convert(job, "", 1, "x"), 1);
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x120u);
  EXPECT_EQ(TypeParam::unixOptions(), 0u);
}

TYPED_TEST(BackupConversion, SessionPasswordReachesDisksOnly) {
  using L = TypeParam;
  Machines machines;
  machines.opt.setPassword("own");
  BKQBackupJob job;
  machines.addTo(job);
  job.setDestination(*new Library);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(L::diskSessionPassword(), nullptr);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[0], 0).pszPassword, nullptr);

  job.setSessionPassword("secret");
  ASSERT_EQ(this->convert(job), 1);
  ASSERT_NE(L::diskSessionPassword(), nullptr);
  EXPECT_STREQ(L::diskSessionPassword(), "secret");
  expectBlockSize(L::diskSessionPassword(), 7);
  EXPECT_NE(static_cast<const void*>(L::diskSessionPassword()), job.getSessionPassword().data());
  EXPECT_EQ(L::tapeSessionPassword(), nullptr);
  EXPECT_STREQ(this->disk(this->record->pSourceNodes[0], 0).pszPassword, "secret");
  EXPECT_STREQ(this->disk(this->record->pSourceNodes[0], 1).pszPassword, "own");
  EXPECT_STREQ(this->disk(this->record->pSourceNodes[1], 0).pszPassword, "secret");
  EXPECT_NE(this->disk(this->record->pSourceNodes[0], 0).pszPassword, L::diskSessionPassword());
  EXPECT_EQ(this->tape(this->record->pDestNodes[0], 0).pszSessionPW, nullptr);

  // Each flattening makes a copy of its own and leaves the one before to its reader.
  char* former = L::diskSessionPassword();
  void* out = nullptr;
  ASSERT_EQ(L::convert(job, out), 1);
  freeJobRecord(static_cast<typename L::Job*>(out));
  EXPECT_STREQ(former, "secret");
  EXPECT_NE(L::diskSessionPassword(), former);
  free(former);
}

TYPED_TEST(BackupConversion, MethodsAndFlagsReachTheirReaders) {
  using L = TypeParam;
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.setDestination(*new Library);
  job.setEncryptionOn();
  job.setTapeMethod(static_cast<BKQBackupJob::BKQTapeMethodType>(0x10002));
  job.setSpanMethod(static_cast<BKQBackupJob::BKQSpanMethodType>(0x10003));
  job.setNewTapeTimeout(11);
  job.setSpanTapeTimeout(12);
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(L::diskEncryption(), 1u);
  EXPECT_EQ(L::diskCompression(), 0u);
  EXPECT_EQ(L::newTapeMethod(), 0x10002u);
  EXPECT_EQ(L::spanTapeMethod(), 0x10003u);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[1], 0).ulOptions, 0x4004u);
  for (unsigned int i = 0; i < 3; ++i) {
    const auto& tape = this->tape(this->record->pDestNodes[0], i);
    EXPECT_EQ(tape.usNewTapeMethod, 2);
    EXPECT_EQ(tape.usSpanTapeMethod, 3);
    EXPECT_EQ(tape.usNewTapeTimeout, 11);
    EXPECT_EQ(tape.usSpanTapeTimeout, 12);
  }

  job.setEncryptionOff();
  job.setCompressionOn();
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[1], 0).ulOptions, 0x2004u);

  // Nothing survives into another job.
  BKQBackupJob plain;
  machines.addTo(plain);
  ASSERT_EQ(this->convert(plain), 1);
  EXPECT_EQ(this->disk(this->record->pSourceNodes[1], 0).ulOptions, 4u);
  EXPECT_EQ(L::newTapeMethod(), 0u);
  EXPECT_EQ(L::spanTapeMethod(), 0u);
}

TYPED_TEST(BackupConversion, NoEstimateReachesEveryNode) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.setDestination(*new Library);
  job.setOptions(0x00100000);
  ASSERT_EQ(this->convert(job), 1);
  for (unsigned int i = 0; i < 3; ++i) {
    EXPECT_EQ(this->record->pSourceNodes[i].ulNodeOptions, 0x160u);
  }
  EXPECT_EQ(this->record->pDestNodes[0].ulNodeOptions, 0x40u);
}

TYPED_TEST(BackupConversion, OpenFileInformationFillsItsBlock) {
  BKQBackupJob job;
  BKQOpenFileInfo info;
  info.setFActions(0x80000001);
  info.setFMethods(0x80000002);
  info.setRetryCount(0xFFFE);
  info.setRetryInterval(0xFFFD);
  job.setOpenFileInfo(info);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("job", {number(4, 2, 1), number(104, 4, 0x80000001), number(108, 4, 0x80000002),
                          number(112, 2, 0xFFFE), number(114, 2, 0xFFFD)});
}

TYPED_TEST(BackupConversion, EveryBackupKindIsFlattenedAlike) {
  Machines machines;
  eachJobOf<JobFamily::kBackup>([&](auto type) {
    using Job = typename decltype(type)::Of;
    SCOPED_TRACE(nameOfClass<Job>());
    Job job("n");
    machines.addTo(job);
    job.addFilter(machines.file);
    job.setDestination(*new Library);
    // Through the base class, as a queue of jobs does it.
    ASSERT_EQ(this->convert(static_cast<BKQJob&>(job)), 1);
    this->expectJob("job", {number(4, 2, job.jobType()), number(12, 4, 3), block(16),
                            number(20, 4, 1), block(24)});
    EXPECT_EQ(this->record->pSourceNodes[2].ulFilterCount, 1u);
  });
  BKQRotationBackupJob rotation("n");
  machines.addTo(rotation);
  NameList names{"/usr"};
  ASSERT_EQ(this->convert(rotation, "A", names, 2, "x"), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"A"}));
  EXPECT_EQ(this->record->pSourceNodes[0].ulNodeOptions, 0x320u);
}

TYPED_TEST(BackupConversion, BackupCursorsStandAtTheEnd) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.file);
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes, 1), 1u);
  ASSERT_EQ(this->convert(job, "C"), 1);
  EXPECT_EQ(this->sourceNames(), (Names{"C"}));
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes), 0u);
  EXPECT_EQ(left(job, &BKQBackupJob::enumFilters), 0u);
  job.resetSourceNodes();
  job.resetFilters();
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes), 3u);
  EXPECT_EQ(left(job, &BKQBackupJob::enumFilters), 1u);
}

TYPED_TEST(BackupConversion, CursorOfAnEmptyListStays) {
  BKQBackupJob job;
  auto* node = new BKQWinNTNode("n");
  job.addSourceNode(*node);
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes), 1u);
  job.clearSourceNodes();
  ASSERT_EQ(this->convert(job), 1);
  // The cursor still stands at 1, so that the first of two new nodes is passed over.
  BKQWinNTNode first("first");
  BKQWinNTNode second("second");
  job.addSourceNode(first);
  job.addSourceNode(second);
  EXPECT_EQ(left(job, &BKQBackupJob::enumSourceNodes), 1u);
}

TYPED_TEST(BackupConversion, FlatteningChangesNothingOfTheJob) {
  Machines machines;
  BKQBackupJob job;
  machines.addTo(job);
  job.addFilter(machines.file);
  job.setDestination(*new Library);
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(this->convert(job), 1);
    this->expectJob("job",
                    {number(4, 2, 1), number(12, 4, 3), block(16), number(20, 4, 1), block(24)});
    EXPECT_EQ(this->disks(this->record->pSourceNodes[0]), "/usr /opt");
    EXPECT_EQ(this->record->pSourceNodes[0].ulFilterCount, 1u);
  }
}

}  // namespace
}  // namespace bkoq::test
