#ifndef BKOQ_TOOLS_WARNINGS_H_
#define BKOQ_TOOLS_WARNINGS_H_

#include "tools/document.h"
#include "tools/problems.h"

namespace bkoq::tool {

// Adds what is allowed in a job file and is probably not meant.
void addWarnings(const Document& document, Problems& problems);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_WARNINGS_H_
