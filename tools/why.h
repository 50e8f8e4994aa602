#ifndef BKOQ_TOOLS_WHY_H_
#define BKOQ_TOOLS_WHY_H_

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "tools/experiment.h"
#include "tools/explain.h"
#include "tools/job_file.h"

namespace bkoq::tool {

// Answers for one job file which of its lines decide what a record field holds.
class Why {
 public:
  // `content` must be a job without mistakes.
  Why(const std::string& content, const std::string& file, const Selection& selection);

  // Of each field that a path or a pattern is about, and of all in a record.
  std::vector<FieldReason> ofPath(const std::string& path, BkoqLayout layout);
  // Of the paths of differences; without a field where there is none. Of an element of an array,
  // what decides its first text.
  std::vector<std::optional<FieldReason>> ofDifferences(const std::vector<std::string>& paths,
                                                        BkoqLayout layout);

  // One line without its end.
  std::string text(const FieldReason& why) const;
  nlohmann::ordered_json json(const FieldReason& why, BkoqLayout layout) const;

  // The path of the field that the byte belongs to, or that points to it; empty when there is none.
  std::string pathAt(unsigned int block, unsigned int offset, BkoqLayout layout);

 private:
  Selection selection_;
  std::string file_;
  LoadedJob loaded_;
  std::unique_ptr<Experiment> experiment_;
};

// The differences between two trees as they were printed, with what decides either side. A side
// that is no job has no Why.
struct Differing {
  std::vector<std::string> paths[2];
  std::string printed;  // a line each, or JSON
};
std::string withReasons(const Differing& differing, Why* const (&whys)[2],
                        const BkoqLayout (&layouts)[2], bool isJson);

// A document about one tree with the reasons.
std::string withReasons(const std::string& document, const Why& why,
                        const std::vector<FieldReason>& reasons, BkoqLayout layout);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_WHY_H_
