// The allocations of one flattening: bkoq_bench_counts SHAPE ELEMENTS prints calls and bytes of the
// library's, then of the floor's. This program has an allocator's functions of its own, which count
// and hand on to the C library's, for itself and for every library in it.

#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "bench/floor.h"
#include "bench/model.h"
#include "bench/shapes.h"

namespace {

struct Counts {
  unsigned long calls;
  unsigned long long bytes;
};
Counts counts = {};
bool isCounting = false;

void note(std::size_t size) {
  if (!isCounting) return;
  ++counts.calls;
  counts.bytes += size;
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) {
  note(size);
  return __libc_malloc(size);
}
void* calloc(std::size_t nmemb, std::size_t size) {
  note(nmemb * size);
  return __libc_calloc(nmemb, size);
}
void* realloc(void* ptr, std::size_t size) {
  note(size);
  return __libc_realloc(ptr, size);
}
void free(void* ptr) { __libc_free(ptr); }

}  // extern "C"
#pragma GCC visibility pop

int main(int argc, char** argv) {
  using namespace bkoq::bench;
  Job content;
  if (argc != 3 || !makeJob(argv[1], static_cast<unsigned int>(std::atoi(argv[2])), content)) {
    std::fprintf(stderr, "usage: %s SHAPE ELEMENTS\n", argv[0]);
    return EXIT_FAILURE;
  }
  Model model(content);
  isCounting = true;
  void* tree = model.flatten();
  isCounting = false;
  if (tree == nullptr) return EXIT_FAILURE;
  const Counts library = counts;
  counts = {};
  isCounting = true;
  void* floor = flattenPlain(content);
  isCounting = false;
  std::printf("%lu %llu %lu %llu\n", library.calls, library.bytes, counts.calls, counts.bytes);
  freePlain(tree);
  freePlain(floor);
  return EXIT_SUCCESS;
}
