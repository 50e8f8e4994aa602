#ifndef BKOQ_TOOLS_SOURCE_H_
#define BKOQ_TOOLS_SOURCE_H_

#include <string>
#include <vector>

#include "tools/flattening.h"
#include "tools/job_file.h"
#include "tools/output.h"

namespace bkoq::tool {

// The files of a command line, as several commands read them.

const char* nameOf(BkoqLayout layout);
// "current", "previous" or "both"; the current one when it is empty.
std::vector<BkoqLayout> layoutsOf(const std::string& name);
std::string shownName(const std::string& file);
bool isImage(const std::string& content);

// The job of a file, without a job after messages.
LoadedJob loadJob(const std::string& text, const std::string& file);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_SOURCE_H_
