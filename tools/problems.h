#ifndef BKOQ_TOOLS_PROBLEMS_H_
#define BKOQ_TOOLS_PROBLEMS_H_

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "tools/document.h"

namespace bkoq::tool {

// A mistake in a job file, or what may be one.
struct Problem {
  Place place;
  std::string path;  // "sourceNodes[1].disks[0].priority"; empty for the file as a whole
  std::string message;
  bool isWarning = false;
};

// All mistakes and warnings of one file, in the order of the file.
class Problems {
 public:
  void add(Place place, std::string path, std::string message) {
    list_.push_back({place, std::move(path), std::move(message), false});
  }
  void warn(Place place, std::string path, std::string message) {
    list_.push_back({place, std::move(path), std::move(message), true});
  }
  // Whether the file is right; warnings may have been added.
  bool empty() const;
  std::vector<Problem> sorted() const;
  // Whether there are so many that nobody reads advice on each.
  bool areMany() const { return list_.size() > kMany; }

 private:
  static constexpr std::size_t kMany = 1000;
  std::vector<Problem> list_;
};

// A text of a file as messages show it: in quotes, and shortened when it is long.
std::string inQuotes(const std::string& text);
// The same without quotes, for numbers.
std::string shortened(const std::string& text);

// Whatever a message holds, as one line that a terminal shows and does not obey: what cannot be
// printed as it is, is written as \u001B or \U000E0001, and a byte that is no UTF-8 as \xFF.
std::string printable(const std::string& text);
// The same for JSON in lines, in which only texts can hold such a character: as \u001b.
std::string printableJson(const std::string& json);

// "job.json:3:5: sourceNodes[0].priority: 70000 is out of range: 0 to 65535"
std::string lineOf(const Problem& problem, const std::string& file);

// Of `words` the one that was probably meant; null when none is near.
const std::string* nearestTo(const std::string& word, const std::vector<std::string>& words);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_PROBLEMS_H_
