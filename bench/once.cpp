// One flattening, the only one of its process: bkoq_bench_once SHAPE ELEMENTS library|floor prints
// the nanoseconds that it takes with the freeing of its tree.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/floor.h"
#include "bench/measure.h"
#include "bench/model.h"
#include "bench/shapes.h"

namespace bkoq::bench {

// A function of its own, by which a profiler can tell the flattening from what comes before it.
extern "C" __attribute__((noinline, visibility("default"))) void* benchFlattenOnce(
    Model& model, const Job& content, bool byLibrary) {
  return byLibrary ? model.flatten() : flattenPlain(content);
}

}  // namespace bkoq::bench

int main(int argc, char** argv) {
  using namespace bkoq::bench;
  Job content;
  if (argc != 4 || !makeJob(argv[1], static_cast<unsigned int>(std::atoi(argv[2])), content)) {
    std::fprintf(stderr, "usage: %s SHAPE ELEMENTS library|floor\n", argv[0]);
    return EXIT_FAILURE;
  }
  const bool byLibrary = std::string(argv[3]) == "library";
  // Both sides find the same heap, with the objects and the plain structures in it.
  Model model(content);
  const double start = processNanoseconds();
  void* tree = benchFlattenOnce(model, content, byLibrary);
  if (tree == nullptr) return EXIT_FAILURE;
  freePlain(tree);
  std::printf("%.0f\n", processNanoseconds() - start);
  return EXIT_SUCCESS;
}
