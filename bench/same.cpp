#include "bench/same.h"

#include <bkoq/kit.h>

#include <cstdio>
#include <cstdlib>

#include "bench/floor.h"

namespace bkoq::bench {
namespace {

int report(const BkoqDifference* difference, void* user) {
  std::fprintf(stderr, "bench: %s: the library's tree is not the floor's: %s is %s, %s there\n",
               static_cast<const char*>(user), difference->path, difference->oldValue,
               difference->newValue);
  return 1;
}

}  // namespace

void expectSameTrees(const char* what, Model& model, const Job& content) {
  void* tree = model.flatten();
  if (tree == nullptr) {
    std::fprintf(stderr, "bench: %s: the conversion failed\n", what);
    std::exit(EXIT_FAILURE);
  }
  void* floor = flattenPlain(content);
  const BkoqStatus status = bkoqCompare(tree, BKOQ_LAYOUT_CURRENT, floor, BKOQ_LAYOUT_CURRENT, 1,
                                        report, const_cast<char*>(what), nullptr);
  if (status != BKOQ_OK) {
    if (status != BKOQ_STOPPED) {
      std::fprintf(stderr, "bench: %s: %s\n", what, bkoqStatusText(status));
    }
    std::exit(EXIT_FAILURE);
  }
  freePlain(tree);
  freePlain(floor);
}

}  // namespace bkoq::bench
