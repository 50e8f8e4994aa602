// Random jobs of every kind, flattened in both layouts before and after copying, against records
// computed from their plans.
//
//   random_jobs [--seed S] [--count N] [--seconds T] [--random-seed]
//   random_jobs [--seed S] [--plain] --write FOLDER
//
// Job k is drawn from seed S + k, so --seed with the seed of a failure and --count 1 repeats it. Of
// a failing job as much is left out as can be, and the rest printed, as C++ and as a job file as
// well. --write writes a job down so, with its images; with --plain it is one of values that a job
// file can say. --fault expects something wrong.

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "tests/random/attributes.h"
#include "tests/random/error_stream.h"
#include "tests/random/run.h"
#include "tests/random/source.h"

namespace bkoq::test {
namespace {

// Says with how little of the job it still fails.
void shrink(std::uint64_t seed, std::uint32_t parts, ErrorStream& errors) {
  Run::isSilent = true;
  const auto stillFails = [&](const PartNumbers& leftOut) {
    Run run(seed, errors);
    run.leaveOut(leftOut);
    const bool fails = !run.run();
    errors.take();
    return fails;
  };
  const PartNumbers leftOut = shrunk(parts, stillFails);
  Run::isSilent = false;
  Run smallest(seed, errors);
  smallest.leaveOut(leftOut);
  std::printf("with %zu of %u parts:\n", parts - leftOut.size(), unsigned{parts});
  smallest.run();
  const JobPlan& plan = smallest.plan();
  std::printf("%s\nas C++:\n\n%s\nas a job file:\n\n%s", outline(smallest.plan()).c_str(),
              asSource(plan).c_str(), asJobFile(plan).text.c_str());
}

[[noreturn]] void usage() {
  std::printf(
      "usage: random_jobs [--seed S | --random-seed] [--count N] [--seconds T]\n"
      "       random_jobs [--seed S] [--plain] --write FOLDER\n");
  std::exit(2);
}

int runAll(int argc, char** argv) {
  std::uint64_t seed = 1;
  std::uint64_t count = 0;
  double seconds = 0;
  std::string folder;
  bool isPlain = false;
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    if (option == "--random-seed") {
      std::random_device device;
      seed = device();
      continue;
    }
    if (option == "--plain") {
      isPlain = true;
      continue;
    }
    if (option == "--fault") {
      Run::hasFault = true;
      continue;
    }
    if (i + 1 == argc) usage();
    char* end = nullptr;
    const char* value = argv[++i];
    if (option == "--write") {
      folder = value;
      continue;
    }
    if (option == "--seed") {
      seed = std::strtoull(value, &end, 10);
    } else if (option == "--count") {
      count = std::strtoull(value, &end, 10);
    } else if (option == "--seconds") {
      seconds = std::strtod(value, &end);
    } else {
      usage();
    }
    if (end == value || *end != '\0') usage();
  }
  if (count == 0 && seconds == 0) count = 1000;

  if (!folder.empty()) {
    ErrorStream errors;
    Run run(seed, errors);
    if (isPlain) run.drawPlainly();
    return run.write(folder) ? 0 : 1;
  }
  std::printf("random_jobs --seed %" PRIu64 "\n", seed);
  std::fflush(stdout);
  ErrorStream errors;
  const auto start = std::chrono::steady_clock::now();
  const auto elapsed = [&] {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  std::uint64_t done = 0;
  while ((count == 0 || done < count) && (seconds == 0 || done % 16 != 0 || elapsed() < seconds)) {
    Run run(seed + done, errors);
    if (!run.run()) {
      std::printf("again: random_jobs --seed %" PRIu64 " --count 1\n", seed + done);
      std::fflush(stdout);
      shrink(seed + done, run.parts(), errors);
      std::fflush(stdout);
      std::_Exit(1);
    }
    ++done;
    ++Visited::jobs;
  }
  const std::string leftOut = Visited::leftOut();
  if (!leftOut.empty()) {
    std::printf("%s", leftOut.c_str());
    return 1;
  }
  std::printf("%" PRIu64 " jobs, %" PRIu64 " flattenings, %" PRIu64 " blocks, %.0f jobs a second\n",
              done, Run::flattenings, Run::blocksCompared, static_cast<double>(done) / elapsed());
  return 0;
}

}  // namespace
}  // namespace bkoq::test

int main(int argc, char** argv) { return bkoq::test::runAll(argc, argv); }
