// Jobs that read tapes and are no restores: verify, compare, merge and scan jobs as record trees,
// in both layouts and every form of their conversions.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

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
class MediaConversion : public JobConversion<L> {};
TYPED_TEST_SUITE(MediaConversion, Layouts, );

// Verify jobs.

TYPED_TEST(MediaConversion, VerifyReadsTapes) {
  BKQVerifyJob job("verify");
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("verify", {number(4, 2, 29)});

  Library first("first");
  Library second("second");
  job.addSourceNode(first);
  job.addSourceNode(second);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("verify", {number(4, 2, 29), number(12, 4, 2), block(16)});
  EXPECT_EQ(this->sourceNames(), (Names{"first", "second"}));
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[1]), "A1 A2 B1");
  EXPECT_EQ(left(job, &BKQVerifyJob::enumSourceNodes), 0u);

  ASSERT_EQ(this->convert(job, "A", 1), 1);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A1");
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[1]), "A1");
  ASSERT_EQ(this->convert(job, "X", 1), 1);
  EXPECT_EQ(this->record->ulNumSourceNodes, 2u);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[1]), "");
}

// Compare jobs.

TYPED_TEST(MediaConversion, CompareAddsAMachine) {
  BKQCompareJob job("compare");
  Library source;
  job.addSourceNode(source);
  NamedDisk drive("C:");
  BKQDiskItem one("\\one");
  BKQDiskItem two("\\two");
  drive.addDiskItem(one);
  drive.addDiskItem(two);
  auto* machine = new BKQWinNTNode("machine");
  machine->addDisk(drive);
  job.setDestination(*machine);
  const auto paths = [&] {
    const auto& disk = this->disk(this->record->pDestNodes[0]);
    std::string all;
    for (unsigned int i = 0; i < disk.ulDiskItemCount; ++i) all += disk.pDiskItems[i].pszPath;
    return all;
  };
  const auto tapes = [&] { return this->tapes(this->record->pSourceNodes[0]); };

  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("compare",
                  {number(4, 2, 11), number(12, 4, 1), block(16), number(20, 4, 1), block(24)});
  expectBlockSize(this->record->pDestNodes, 100);
  expectRows("destination", this->record->pDestNodes, 100,
             {number(0, 2, 9), number(2, 2, 8), text(8, "machine"), number(36, 4, 1), block(40),
              number(56, 4, 0x120)});
  EXPECT_EQ(tapes(), "A1 A2 B1");
  EXPECT_EQ(paths(), "\\one\\two");

  ASSERT_EQ(this->convert(job, "\\other"), 1);
  EXPECT_EQ(tapes(), "A1 A2 B1");
  EXPECT_EQ(paths(), "\\other");

  ASSERT_EQ(this->convert(job, "A", 2), 1);
  EXPECT_EQ(tapes(), "A2");
  EXPECT_EQ(paths(), "\\one\\two");

  ASSERT_EQ(this->convert(job, "B", 0, "\\other"), 1);
  EXPECT_EQ(tapes(), "B1");
  EXPECT_EQ(paths(), "\\other");

  ASSERT_EQ(this->convert(job, nullptr, 0, nullptr), 1);
  EXPECT_EQ(tapes(), "A1 A2 B1");
  EXPECT_EQ(paths(), "\\one\\two");
}

TYPED_TEST(MediaConversion, CompareTakesAUnixMachineAsAnyDiskNode) {
  using L = TypeParam;
  BKQCompareJob job("compare");
  NamedDisk disk("/usr", 1);
  auto* machine = new BKQUnixNode("machine");
  machine->setUnixOptions(0x10);
  machine->addDisk(disk);
  job.setDestination(*machine);
  L::unixOptions() = 0x20;  // left by a UNIX node before
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(L::unixOptions(), 0x20u);
  EXPECT_EQ(this->disk(this->record->pDestNodes[0]).ulOptions, 0x21u);
}

TYPED_TEST(MediaConversion, CompareDestinationIsNotCalledThroughItsOwnClass) {
  BKQCompareJob job("compare");
  job.setDestination(*new ForeignMachine<BKQDiskNode>(99, "n"));
  ASSERT_EQ(this->convert(job), 1);
  EXPECT_EQ(this->record->pDestNodes[0].usNodeType, 99);
}

// Merge jobs.

TYPED_TEST(MediaConversion, MergeHasOneSourceAndOneDestination) {
  using L = TypeParam;
  BKQMergeJob job;
  job.setMergeRange(1, 2);
  job.setMergeType(static_cast<BKQJob::BKQMergeScanType>(3));
  job.setMergeFilter("1-2");
  job.setDetailedMerge(1);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("neither", {number(4, 2, 8)});

  auto* source = new Library;
  job.setSource(*source);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("source", {number(4, 2, 8), number(12, 4, 1), block(16)});
  expectBlockSize(this->record->pSourceNodes, 100);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A1 A2 B1");

  NamedDisk disk("/usr", 1);
  auto* machine = new BKQUnixNode("machine");
  machine->setUnixOptions(0x10);
  machine->addDisk(disk);
  job.setDestination(*machine);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("both",
                  {number(4, 2, 8), number(12, 4, 1), block(16), number(20, 4, 1), block(24)});
  expectBlockSize(this->record->pDestNodes, 100);
  // Through its own class: a UNIX machine sets its options.
  EXPECT_EQ(L::unixOptions(), 0x10u);
  EXPECT_EQ(this->disk(this->record->pDestNodes[0]).ulOptions, 0x11u);

  ASSERT_EQ(this->convert(job, "A", 2), 1);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A2");
  ASSERT_EQ(this->convert(job, "X", 0), 1);
  EXPECT_EQ(this->record->ulNumSourceNodes, 1u);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "");

  BKQMergeJob destinationOnly;
  destinationOnly.setDestination(*new ForeignMachine<BKQDiskNode>(99, "n"));
  ASSERT_EQ(this->convert(destinationOnly), 1);
  this->expectJob("destination", {number(4, 2, 8), number(20, 4, 1), block(24)});
  EXPECT_EQ(this->record->pDestNodes[0].usNodeType, L::kPrevious ? 302 : 301);
}

// Scan jobs.

TYPED_TEST(MediaConversion, ScanHasOneSource) {
  BKQScanJob job;
  job.setScanRange(1, 2);
  job.setScanType(static_cast<BKQJob::BKQMergeScanType>(3));
  job.setScanFilter("1-2");
  job.setDetailedScan(1);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("without source", {number(4, 2, 14)});

  job.setSource(*new Library);
  ASSERT_EQ(this->convert(job), 1);
  this->expectJob("scan", {number(4, 2, 14), number(12, 4, 1), block(16)});
  expectBlockSize(this->record->pSourceNodes, 100);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A1 A2 B1");
  ASSERT_EQ(this->convert(job, "B", 1), 1);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "B1");
  ASSERT_EQ(this->convert(job, "", 2), 1);
  EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), "A2");
}

// A null tape name is no tape's name: all tapes go, those of the session if one is given.
TYPED_TEST(MediaConversion, NullTapeNameIsTheEmptyOne) {
  Library source;
  BKQVerifyJob verify("verify");
  verify.addSourceNode(source);
  BKQCompareJob compare("compare");
  compare.addSourceNode(source);
  compare.setDestination(*new BKQWinNTNode("machine"));
  BKQMergeJob merge;
  merge.setSource(*new Library);
  BKQScanJob scan;
  scan.setSource(*new Library);
  const struct {
    unsigned short session;
    const char* tapes;
  } rows[] = {{0, "A1 A2 B1"}, {1, "A1 B1"}, {2, "A2"}, {9, ""}};
  for (const auto& row : rows) {
    const auto expect = [&](auto& job) {
      ASSERT_EQ(this->convert(job, nullptr, row.session), 1);
      ASSERT_EQ(this->record->ulNumSourceNodes, 1u);
      EXPECT_EQ(this->tapes(this->record->pSourceNodes[0]), row.tapes);
    };
    expect(verify);
    expect(compare);
    expect(merge);
    expect(scan);
  }
}

}  // namespace
}  // namespace bkoq::test
