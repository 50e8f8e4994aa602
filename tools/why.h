#ifndef BKOQ_TOOLS_WHY_H_
#define BKOQ_TOOLS_WHY_H_

#include <memory>
#include <string>
#include <vector>

#include "tools/experiment.h"
#include "tools/job_file.h"

namespace bkoq::tool {

// Answers for one job file which of its lines decide what a record field holds.
class Why {
 public:
  // `content` must be a job without mistakes.
  Why(const std::string& content, const std::string& file, const Selection& selection);

  // One line without its end; empty when there is no such field. Of an element of an array, what
  // decides its first text.
  std::string ofPath(const std::string& path, BkoqLayout layout);
  // The path of the field that the byte belongs to, or that points to it; empty when there is none.
  std::string pathAt(unsigned int block, unsigned int offset, BkoqLayout layout);

 private:
  Selection selection_;
  std::string file_;
  LoadedJob loaded_;
  std::unique_ptr<Experiment> experiment_;
};

// The differences between two trees as they were printed, a line each, with what decides either
// side below each. A side that is no job has no Why.
struct Differing {
  std::vector<std::string> paths[2];
  std::string printed;
};
std::string withReasons(const Differing& differing, Why* const (&whys)[2],
                        const BkoqLayout (&layouts)[2]);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_WHY_H_
