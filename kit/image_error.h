#ifndef BKOQ_KIT_IMAGE_ERROR_H_
#define BKOQ_KIT_IMAGE_ERROR_H_

#include <cstdint>

#include "bkoq/kit.h"

namespace bkoq::kit {

// A line of words; in memory of its own, since there may be none to be had.
struct Words {
  char text[120];
};
__attribute__((format(printf, 1, 2))) Words words(const char* format, ...);
// "1,020 bytes".
Words byteWords(std::uint64_t count);

// Fills in an error and its line. `what` says it to a user; empty for the problem's usual words.
void setImageError(BkoqImageError& error, BkoqImageProblem problem, const char* path,
                   std::uint32_t position, const char* expected, const char* found,
                   const char* what = "");

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_IMAGE_ERROR_H_
