#ifndef BKOQ_TESTS_IMAGES_JUDGE_H_
#define BKOQ_TESTS_IMAGES_JUDGE_H_

#include <bkoq/kit.h>

#include <cstdint>
#include <string>

namespace bkoq::test {

// What a reader must find in a tree: a line for each field that is not reserved, its path, a tab
// and its value as JSON.
std::string linesOf(const void* root, BkoqLayout layout);

struct Verdict {
  bool isTaken = false;
  BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
  std::uint32_t lines = 0;
  BkoqImageError error = {};
};

// Reads an image in each way that the kit has. They must agree, and an image that is taken must be
// written again byte for byte; otherwise the program ends after a message, and the image is in
// hostile.image.
Verdict judge(const std::string& image);

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_IMAGES_JUDGE_H_
