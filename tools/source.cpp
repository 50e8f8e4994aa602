#include "tools/source.h"

#include <cstdio>

#include "tools/problems.h"

namespace bkoq::tool {
namespace {

// Says what is wrong with a job file, all of it.
void reportProblems(const Problems& problems, const std::string& file) {
  std::fflush(stdout);
  for (const Problem& problem : problems.sorted()) {
    if (problem.isWarning) continue;
    std::fprintf(stderr, "%s\n", lineOf(problem, shownName(file)).c_str());
  }
}

}  // namespace

// Whether a file begins as an image does and no job file; the start is enough, so that one that is
// damaged further on is still taken for an image.
bool isImage(const std::string& content) {
  return content.compare(0, 3, BKOQ_IMAGE_SIGNATURE, 3) == 0;
}

const char* nameOf(BkoqLayout layout) {
  return layout == BKOQ_LAYOUT_CURRENT ? "current" : "previous";
}

std::string shownName(const std::string& file) { return file == "-" ? "standard input" : file; }

LoadedJob loadJob(const std::string& text, const std::string& file) {
  if (isImage(text)) {
    fail(shownName(file) + " is an image, not a job file");
    return {};
  }
  Problems problems;
  LoadedJob loaded = readJob(text, problems);
  if (!problems.empty()) {
    reportProblems(problems, file);
    loaded.job.reset();
  }
  return loaded;
}

std::vector<BkoqLayout> layoutsOf(const std::string& name) {
  if (name == "both") return {BKOQ_LAYOUT_CURRENT, BKOQ_LAYOUT_PREVIOUS};
  return {name == "previous" ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT};
}

}  // namespace bkoq::tool
