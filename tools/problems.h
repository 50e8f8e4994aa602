#ifndef BKOQ_TOOLS_PROBLEMS_H_
#define BKOQ_TOOLS_PROBLEMS_H_

#include <string>
#include <utility>
#include <vector>

#include "tools/document.h"

namespace bkoq::tool {

// A mistake in a job file.
struct Problem {
  Place place;
  std::string path;  // "sourceNodes[1].disks[0].priority"; empty for the file as a whole
  std::string message;
};

// All mistakes of one file, in the order of the file.
class Problems {
 public:
  void add(Place place, std::string path, std::string message) {
    list_.push_back({place, std::move(path), std::move(message)});
  }
  bool empty() const { return list_.empty(); }
  std::vector<Problem> sorted() const;

 private:
  std::vector<Problem> list_;
};

// "job.json:3:5: sourceNodes[0].priority: 70000 is out of range: 0 to 65535"
std::string lineOf(const Problem& problem, const std::string& file);

// Of `words` the one that was probably meant; null when none is near.
const std::string* nearestTo(const std::string& word, const std::vector<std::string>& words);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_PROBLEMS_H_
