// The reader of job files: whatever the text, it says what is wrong and where, or gives a job that
// is flattened in both layouts.

#include <algorithm>
#include <cstdint>
#include <string>

#include "tests/fuzz/require.h"
#include "tools/flattening.h"
#include "tools/job_file.h"
#include "tools/warnings.h"

namespace {

using namespace bkoq::tool;

void expectInside(const Problem& problem, std::size_t lines) {
  FUZZ_REQUIRE(problem.place.line >= 1 && problem.place.line <= lines);
  FUZZ_REQUIRE(problem.place.column >= 1);
  const std::string line = lineOf(problem, "job.json");
  FUZZ_REQUIRE(line.rfind("job.json:", 0) == 0);
  FUZZ_REQUIRE(!problem.message.empty());
}

void flattenWhole(BKQJob& job, BkoqLayout layout) {
  const Flattened flattened = flatten(job, Selection(), layout);
  FUZZ_REQUIRE(flattened.succeeded);
  std::uint32_t differences = 1;
  FUZZ_REQUIRE(bkoqCompare(flattened.tree.root(), layout, flattened.tree.root(), layout, 0, nullptr,
                           nullptr, &differences) == BKOQ_OK);
  FUZZ_REQUIRE(differences == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  Problems problems;
  LoadedJob loaded = readJob(text, problems);
  const bool isRight = problems.empty();
  addWarnings(*loaded.document, problems);
  FUZZ_REQUIRE(problems.empty() == isRight);
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
  for (const Problem& problem : problems.sorted()) expectInside(problem, lines);
  if (isRight) {
    FUZZ_REQUIRE(loaded.job != nullptr);
    // Reading is this target's subject; in which layout the job is flattened its text chooses.
    if (takesAll(size % 2 == 0)) flattenWhole(*loaded.job, BKOQ_LAYOUT_CURRENT);
    if (takesAll(size % 2 == 1)) flattenWhole(*loaded.job, BKOQ_LAYOUT_PREVIOUS);
  }
  return 0;
}
