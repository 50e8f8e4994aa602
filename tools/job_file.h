#ifndef BKOQ_TOOLS_JOB_FILE_H_
#define BKOQ_TOOLS_JOB_FILE_H_

#include <bkoq/bkoq.h>

#include <memory>
#include <string>

#include "tools/document.h"
#include "tools/problems.h"
#include "tools/reader.h"

namespace bkoq::tool {

// A job made from a file, with all that it refers to. The job goes first.
struct LoadedJob {
  std::unique_ptr<Document> document;
  Kept kept;
  std::unique_ptr<BKQJob> job;
};

// Reads a job file. The job is whole exactly when no problem was added.
LoadedJob readJob(std::string text, Problems& problems);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_JOB_FILE_H_
