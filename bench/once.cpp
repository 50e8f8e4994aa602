// One flattening, the only one of its process: bkoq_bench_once SHAPE ELEMENTS library|floor prints
// the nanoseconds that it takes with the freeing of its tree.

#include <cstdio>
#include <cstdlib>
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

// The flattening alone, with its freeing. Both sides find the same heap, with the objects and the
// plain structures in it. Negative when it fails.
double timeOfFlattening(const Job& content, const std::string& side) {
  Model model(content);
  const double start = processNanoseconds();
  void* tree = benchFlattenOnce(model, content, side);
  if (tree == nullptr) return -1;
  freePlain(tree);
  return processNanoseconds() - start;
}

// All of a client's work, without the freeing of what it makes.
template <class Make>
double timeOfMaking(const Make& make) {
  const double start = processNanoseconds();
  const auto made = make();
  return processNanoseconds() - start;
}

double timeOf(const Job& content, const std::string& side) {
  if (side == "whole") {
    return timeOfMaking([&] { return PlainTree(Model(content).flatten()); });
  }
  if (side == "message" && hasMessages()) return timeOfMaking([&] { return packMessage(content); });
  if (side == "builder") return timeOfMaking([&] { return packPlain(content); });
  if (side == "library" || side == "floor" || side == "inplace") {
    return timeOfFlattening(content, side);
  }
  return -1;
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
  const double time = timeOf(content, argv[3]);
  if (time < 0) return EXIT_FAILURE;
  std::printf("%.0f\n", time);
  return EXIT_SUCCESS;
}
