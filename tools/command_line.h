#ifndef BKOQ_TOOLS_COMMAND_LINE_H_
#define BKOQ_TOOLS_COMMAND_LINE_H_

#include <string>

#include "tools/output.h"

namespace bkoq::tool {

// Runs the command that the arguments name.
Status runCommandLine(int count, const char* const* arguments);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_COMMAND_LINE_H_
