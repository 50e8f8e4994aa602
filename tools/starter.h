#ifndef BKOQ_TOOLS_STARTER_H_
#define BKOQ_TOOLS_STARTER_H_

#include <string>

#include "tools/attributes.h"

namespace bkoq::tool {

// A job file to begin with: what matters is filled in, every other attribute is a comment with
// its default, so that removing its "//" changes nothing. With `hasAll`, every object that can be
// in it is.
std::string starterFile(const ObjectClass& kind, bool hasAll);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_STARTER_H_
