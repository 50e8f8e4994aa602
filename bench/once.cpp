// One flattening, the only one of its process: bkoq_bench_once SHAPE ELEMENTS library|floor prints
// the nanoseconds that it takes with the freeing of its tree, and how many pages it waits for.

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "bench/floor.h"
#include "bench/measure.h"
#include "bench/message.h"
#include "bench/model.h"
#include "bench/peer.h"
#include "bench/shapes.h"

namespace bkoq::bench {

// A function of its own, by which a profiler can tell the flattening from what comes before it.
extern "C" __attribute__((noinline, visibility("default"))) void* benchFlattenOnce(
    Model& model, const Job& content, const std::string& side) {
  if (side == "library") return model.flatten();
  return side == "floor" ? flattenPlain(content) : flattenInPlace(content);
}

namespace {

struct Cost {
  double nanoseconds = -1;  // negative when it fails
  long pages = 0;
};

long pagesSoFar() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

// What the clocks themselves wait for at their first call is not the work's.
template <class Work>
Cost costOf(const Work& work) {
  pagesSoFar();
  processNanoseconds();
  const long pages = pagesSoFar();
  const double start = processNanoseconds();
  if (!work()) return {};
  const double end = processNanoseconds();
  return {end - start, pagesSoFar() - pages};
}

// The flattening alone, with its freeing. Both sides find the same heap, with the objects and the
// plain structures in it.
Cost costOfFlattening(const Job& content, const std::string& side) {
  Model model(content);
  return costOf([&] {
    void* tree = benchFlattenOnce(model, content, side);
    if (tree == nullptr) return false;
    freePlain(tree);
    return true;
  });
}

// All of a client's work, without the freeing of what it makes.
template <class Make>
Cost costOfMaking(const Make& make) {
  std::optional<decltype(make())> made;
  return costOf([&] {
    made.emplace(make());
    return true;
  });
}

Cost costOfOne(const Job& content, const std::string& side) {
  if (side == "whole") {
    return costOfMaking([&] { return PlainTree(Model(content).flatten()); });
  }
  if (side == "message" && hasMessages()) return costOfMaking([&] { return packMessage(content); });
  if (side == "builder") return costOfMaking([&] { return packPlain(content); });
  if (side == "library" || side == "floor" || side == "inplace") {
    return costOfFlattening(content, side);
  }
  return {};
}

}  // namespace
}  // namespace bkoq::bench

int main(int argc, char** argv) {
  using namespace bkoq::bench;
  Job content;
  if (argc != 4 || !makeJob(argv[1], static_cast<unsigned int>(std::atoi(argv[2])), content)) {
    std::fprintf(stderr, "usage: %s SHAPE ELEMENTS library|floor|inplace|whole|message|builder\n",
                 argv[0]);
    return EXIT_FAILURE;
  }
  const Cost cost = costOfOne(content, argv[3]);
  if (cost.nanoseconds < 0) return EXIT_FAILURE;
  std::printf("%.0f %ld\n", cost.nanoseconds, cost.pages);
  return EXIT_SUCCESS;
}
