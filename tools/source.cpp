#include "tools/source.h"

#include <cstdio>
#include <string_view>

#include "tools/problems.h"

namespace bkoq::tool {
namespace {

// Says what is wrong with a job file, all of it.
void reportProblems(const Problems& problems, const std::string& file) {
  for (const Problem& problem : problems.sorted()) {
    if (problem.isWarning) continue;
    std::fprintf(stderr, "%s\n", lineOf(problem, shownName(file)).c_str());
  }
}

}  // namespace

// Whether a file begins as an image does and no job file. A part of the start is enough, so that a
// damaged one is still taken for an image.
bool isImage(const std::string& content) {
  constexpr std::string_view kSignature = BKOQ_IMAGE_SIGNATURE;
  if (content.compare(0, 3, kSignature.substr(0, 3)) == 0) return true;
  if (content.size() < kSignature.size()) return false;
  std::size_t same = 0;
  for (std::size_t i = 0; i < kSignature.size(); ++i) same += content[i] == kSignature[i] ? 1 : 0;
  return same >= 5;
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
