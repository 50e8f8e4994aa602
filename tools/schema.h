#ifndef BKOQ_TOOLS_SCHEMA_H_
#define BKOQ_TOOLS_SCHEMA_H_

#include <string>

namespace bkoq::tool {

// The JSON Schema of job files.
std::string jobSchema();

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_SCHEMA_H_
