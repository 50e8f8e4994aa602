// How many allocations a flattening makes: one a record array element and one a text, and no other.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "examples/nightly_job.h"
#include "tests/catalog/types.h"
#include "tests/memory/wrap_malloc.h"

namespace bkoq::test {
namespace {

// Three machines of two disks of three items each, four filters for all of them, one tape.
void defineTypicalJob(BKQBackupJob& job, Keeper& keeper) {
  job.setOwner("operator");
  const auto addMachine = [&](BKQDiskNode& node) {
    node.setUserName("backup");
    for (const char* name : {"/home", "/var"}) {
      auto& disk = keeper.make<BKQDisk>();
      disk.setDiskName(name);
      for (const char* path : {"/accounts", "/orders", "/mail"}) {
        disk.addDiskItem(keeper.make<BKQDiskItem>(path));
      }
      node.addDisk(disk);
    }
    job.addSourceNode(node);
  };
  addMachine(keeper.make<BKQUnixNode>("ledger"));
  addMachine(keeper.make<BKQWinNTNode>("payroll"));
  addMachine(keeper.make<BKQNetwareNode>("files"));
  for (const char* pattern : {"*.o", "*.tmp", "core", "*~"}) {
    job.addFilter(keeper.make<BKQFileFilter>(BKQFilter::Exclude, pattern));
  }
  auto* destination = new BKQTapeNode("library1");
  destination->addTape(keeper.make<BKQTape>("DAILY", "NIGHT-01"));
  job.setDestination(*destination);
}

template <class L>
class TypicalJob : public testing::Test {};
TYPED_TEST_SUITE(TypicalJob, Layouts, );

TYPED_TEST(TypicalJob, MakesTheBlocksOfItsRecordsAndNoOther) {
  Keeper keeper;
  BKQBackupJob job("nightly");
  defineTypicalJob(job, keeper);

  constexpr std::size_t kJob = 2;           // the record, its owner
  constexpr std::size_t kNodes = 3 * 3;     // each an element, its name and user
  constexpr std::size_t kDisks = 6 * 2;     // each an element and its name
  constexpr std::size_t kItems = 18 * 2;    // each an element and its path
  constexpr std::size_t kFilters = 12 * 2;  // for each machine an element and its pattern
  constexpr std::size_t kDestination = 2;   // the record, its name
  constexpr std::size_t kTapes = 3;         // the element, its group and name
  // Every element but the first of its array.
  constexpr std::size_t kReallocs = 2 + 3 * 1 + 6 * 2 + 3 * 3;

  Allocations allocations;
  void* out = nullptr;
  allocations.start();
  const int result = TypeParam::convert(job, out);
  Allocations::stop();

  ASSERT_EQ(result, 1);
  const auto& calls = allocations.calls();
  EXPECT_EQ(calls.size(), kJob + kNodes + kDisks + kItems + kFilters + kDestination + kTapes);
  EXPECT_EQ(std::count_if(calls.begin(), calls.end(),
                          [](const AllocationCall& call) { return call.isRealloc; }),
            static_cast<std::ptrdiff_t>(kReallocs));
}

}  // namespace
}  // namespace bkoq::test
