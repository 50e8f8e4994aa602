// The benchmark: bkoq_bench [PART...] prints its tables, or only those parts of them. The status
// says whether it could be run, not whether the values are as they should be.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/sections.h"

namespace {

using namespace bkoq::bench;

const struct {
  const char* name;
  void (*measure)();
} kParts[] = {
    {"steady", measureSteady},
    {"first", measureFirst},
    {"growth", measureGrowth},
    {"counts", measureCounts},
    {"instructions", measureInstructions},
    {"peer", measurePeer},
    {"times", measureTimeFilters},
    {"paging", measurePaging},
    {"building", measureBuilding},
    {"cloning", measureCloning},
    {"diff", measureDiff},
    {"whole", measureWhole},
    {"wholefirst", measureWholeFirst},
    {"bare", measureBare},
    {"inplace", measureInPlace},
};

bool isWanted(const std::string& part, int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (part == argv[i]) return true;
  }
  return argc == 1;
}

// Measures in a process of its own, so that each part finds a heap that no other has used. Whether
// it came to its end.
bool measureApart(void (*measure)()) {
  const pid_t child = fork();
  if (child == 0) {
    measure();
    std::exit(EXIT_SUCCESS);
  }
  int status = 0;
  if (child > 0 && waitpid(child, &status, 0) == child && status == 0) return true;
  std::fprintf(stderr, "bench: a part did not come to its end\n");
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    bool isKnown = false;
    for (const auto& part : kParts) isKnown = isKnown || std::string(part.name) == argv[i];
    if (isKnown) continue;
    std::fprintf(stderr, "usage: %s [PART...], where PART is one of", argv[0]);
    for (const auto& part : kParts) std::fprintf(stderr, " %s", part.name);
    std::fputc('\n', stderr);
    return EXIT_FAILURE;
  }
  for (const auto& part : kParts) {
    if (isWanted(part.name, argc, argv) && !measureApart(part.measure)) return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
