#ifndef BKOQ_KIT_IMAGE_ERROR_H_
#define BKOQ_KIT_IMAGE_ERROR_H_

#include <cstdint>
#include <cstdio>

#include "bkoq/kit.h"

namespace bkoq::kit {

// Fills in an error and its line; in memory of the caller, since there may be none to be had.
inline void setImageError(BkoqImageError& error, BkoqImageProblem problem, const char* path,
                          std::uint32_t position, const char* expected, const char* found) {
  error.problem = problem;
  error.position = position;
  std::snprintf(error.path, sizeof error.path, "%s", path);
  std::snprintf(error.expected, sizeof error.expected, "%s", expected);
  std::snprintf(error.found, sizeof error.found, "%s", found);
  std::snprintf(error.text, sizeof error.text, "byte %u%s%s: expected %s, found %s",
                static_cast<unsigned int>(position), error.path[0] != '\0' ? ", " : "", error.path,
                error.expected, error.found);
}

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_IMAGE_ERROR_H_
