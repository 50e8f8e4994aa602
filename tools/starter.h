#ifndef BKOQ_TOOLS_STARTER_H_
#define BKOQ_TOOLS_STARTER_H_

#include <string>

#include "tools/attributes.h"

namespace bkoq::tool {

// A job file to begin with: what matters is filled in, every other attribute is a comment that
// becomes valid when its "//" is removed.
std::string starterFile(const ObjectClass& kind);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_STARTER_H_
