#include <gtest/gtest.h>

#include "kit/test_trees.h"

// Everything here runs under LeakSanitizer as well: what the kit forgets is a leak, what it frees
// twice an error.

namespace bkoq::test {
namespace {

template <class Job>
BkoqFreed freeTree(TreeOf<Job> job) {
  BkoqFreed freed{};
  EXPECT_EQ(bkoqFree(job.release(), LayoutOf<Job>::kValue, &freed), BKOQ_OK);
  return freed;
}

TEST(Free, ReleasesEveryBlockOfATree) {
  const BkoqFreed current = freeTree(currentBackup());
  // Records: job 292, nodes 200 and 100, filters 160, disk 52, item 32, tape 72, tape item 32,
  // extension 64.
  // Texts: operator 9, faxhost 8, f4x 4, NIGHTSET 9, 5.8 4+1, ledger 7+6, tr0ub4dor 10, *.tmp 6,
  // /home 6, ops 4+4, key 9, path 14, files 8+8, payroll 8, library1 9, NIGHT-01 9, passwd 12,
  // accounting 11, sa 3, syb4se 7.
  EXPECT_EQ(current.blocks, 29u);
  EXPECT_EQ(current.bytes, 1004u + 176u);
  EXPECT_EQ(current.notFreed, 0u);

  const BkoqFreed previous = freeTree(previousBackup());
  // Without domain and extension, with a receiver of 12 bytes.
  EXPECT_EQ(previous.blocks, 29u - 4 + 1);
  EXPECT_EQ(previous.bytes, 1004u + 176u - 64 - 21 + 12);
}

TEST(Free, TakesACountOverANullArrayForNoElements) {
  CurrentTree job = currentJob(1);
  job->ulNumSourceNodes = 4000000000u;
  job->ulNumDestNodes = 1;
  auto& tapeNode = *give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1);
  tapeNode.ulFilterCount = 1;
  auto& tape = *give<BKDTAPE>(tapeNode.ulMediaCount, tapeNode.pMedia, 1);
  tape.ulTapeItemCount = 7;
  tape.ulFilterCount = 8;
  const BkoqFreed freed = freeTree(std::move(job));
  EXPECT_EQ(freed.blocks, 3u);
  EXPECT_EQ(freed.bytes, 292u + 100u + 72u);
}

TEST(Free, TakesPartlyFilledRecords) {
  CurrentTree job = currentJob(20);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  auto& item = *give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, 1);
  item.pszPath = text("");
  item.ulFileCount = 3;  // the list ran out of memory
  give<BKFILTER_FILE>(disk.ulFilterCount, disk.pFilters, 1);
  const BkoqFreed freed = freeTree(std::move(job));
  EXPECT_EQ(freed.blocks, 6u);
  EXPECT_EQ(freed.bytes, 292u + 100u + 52u + 32u + 1u + 32u);
}

TEST(Free, KnowsWhatEveryKindOfJobHolds) {
  struct Case {
    std::uint16_t kind;
    char sources;  // d disks, t tapes, - nothing
    char destinations;
  };
  const Case cases[] = {{1, 'd', 't'},  {3, 'd', 't'},  {5, 'd', 't'},  {9, 'd', 't'},
                        {20, 'd', 't'}, {21, 'd', 't'}, {7, 't', 'd'},  {10, 't', 'd'},
                        {8, 't', 'd'},  {11, 't', 'd'}, {14, 't', '-'}, {29, 't', '-'}};
  // Three blocks each. Where a disk keeps its second text and its key, a tape has a list of
  // filters.
  const auto addMedia = [](BKNODE& node, char media) {
    node.usNodeType = 3;
    if (media == 'd') {
      auto& disk = *give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
      disk.pszDiskPW2 = texts({"u", ""});
      disk.pszEncryptionKey = text("k");
    } else if (media == 't') {
      auto& tape = *give<BKDTAPE>(node.ulMediaCount, node.pMedia, 1);
      makePatternFilter(*give<BKFILTER_FILE>(tape.ulFilterCount, tape.pFilters, 1), 1, "vol*");
    }
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.kind);
    CurrentTree job = currentJob(each.kind);
    addMedia(*give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1), each.sources);
    addMedia(*give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1), each.destinations);
    const BkoqFreed freed = freeTree(std::move(job));
    EXPECT_EQ(freed.blocks, each.destinations == '-' ? 6u : 9u);
    EXPECT_EQ(freed.notFreed, 0u);
  }
}

TEST(Free, LeavesWhatItCannotTell) {
  CurrentTree job = currentJob(99);
  auto& node = *give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1);
  node.pszNodeName = text("unknown");
  auto* media = give<BKDDISK>(node.ulMediaCount, node.pMedia, 1);
  // A filter of a kind that is not known may hold a pointer, or a number.
  auto& filter = *give<BKFILTER_FILE>(node.ulFilterCount, node.pFilters, 1);
  filter.usFilterType = 6;
  filter.ulTimeUnits = 12345;
  const BkoqFreed freed = freeTree(std::move(job));
  EXPECT_EQ(freed.blocks, 4u);
  EXPECT_EQ(freed.bytes, 292u + 100u + 8u + 32u);
  EXPECT_EQ(freed.notFreed, 1u);
  std::free(media);
}

TEST(Free, ANullRootIsNoTree) {
  BkoqFreed freed{9, 9, 9};
  EXPECT_EQ(bkoqFree(nullptr, BKOQ_LAYOUT_PREVIOUS, &freed), BKOQ_OK);
  EXPECT_EQ(freed.blocks, 0u);
  EXPECT_EQ(freed.bytes, 0u);
  EXPECT_EQ(freed.notFreed, 0u);
}

TEST(Free, RefusesAnUnknownLayout) {
  CurrentTree job = currentJob(1);
  EXPECT_EQ(bkoqFree(job.get(), static_cast<BkoqLayout>(2), nullptr), BKOQ_BAD_ARGUMENT);
}

}  // namespace
}  // namespace bkoq::test
