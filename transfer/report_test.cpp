#include "transfer/report.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/heap.h"
#include "tests/support/stderr_capture.h"

namespace bkoq::test {
namespace {

struct Report {
  int (*function)(const char* name);
  const char* name;
  const char* line;
};

const Report kReports[] = {
    {bkoq::failedToConvert, "Base BKQRestoreNode", "Failed to convert Base BKQRestoreNode\n"},
    {bkoq::failedToConvert, "GFS Rotation Schedule", "Failed to convert GFS Rotation Schedule\n"},
    {bkoq::failedInMalloc, "BKQJDATATRANSFER_OLD", "Failed in malloc BKQJDATATRANSFER_OLD\n"},
    {bkoq::failedInRealloc, "BKFILTER_FILE_OLD", "Failed in realloc BKFILTER_FILE_OLD\n"},
};

TEST(Report, IsOneWriteOfOneLineAndAFailure) {
  for (const Report& report : kReports) {
    int result = -1;
    const std::vector<std::string> writes =
        standardErrorWritesOf([&] { result = report.function(report.name); });
    EXPECT_EQ(writes, std::vector<std::string>{report.line});
    EXPECT_EQ(result, 0);
  }
}

TEST(Report, CutsWhatNoLineOfTheLibraryIsAsLongAs) {
  const std::string name(300, 'n');
  const std::string start(300, 's');
  EXPECT_EQ(standardErrorOf([&] { bkoq::failedToConvert(name.c_str()); }),
            "Failed to convert " + name.substr(0, 95 - 18) + "\n");
  EXPECT_EQ(standardErrorOf([&] { bkoq::report(start.c_str(), "name"); }),
            start.substr(0, 95) + "\n");
}

TEST(Report, NeedsNoMemory) {
  if (!kSeesAllocations) GTEST_SKIP() << "allocations are not seen with this heap";
  for (const Report& report : kReports) {
    unsigned int allocations = 99;
    const std::string line = standardErrorOf([&] {
      const HeapWatch noMemory(1);
      report.function(report.name);
      allocations = noMemory.allocations();
    });
    EXPECT_EQ(allocations, 0u);
    EXPECT_EQ(line, report.line);
  }
}

}  // namespace
}  // namespace bkoq::test
