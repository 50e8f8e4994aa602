#ifndef BKOQ_TOOLS_MANY_FILES_H_
#define BKOQ_TOOLS_MANY_FILES_H_

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "tools/output.h"

namespace bkoq::tool {

// How many of many files ended with each status.
struct Tally {
  std::size_t ended[3] = {};  // by status
  Status worst() const {
    return ended[kFailed] != 0 ? kFailed : ended[kDiffers] != 0 ? kDiffers : kDone;
  }
};

// Calls `one` with the number of each file in so many processes, since a process flattens one job
// at a time. What it prints comes in the order of the files; messages come when they come. A
// process that ends before it has done its files counts as trouble with each of these.
Tally forEachFile(std::size_t files, unsigned int processes,
                  const std::function<Status(std::size_t)>& one);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_MANY_FILES_H_
