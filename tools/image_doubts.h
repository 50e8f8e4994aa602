#ifndef BKOQ_TOOLS_IMAGE_DOUBTS_H_
#define BKOQ_TOOLS_IMAGE_DOUBTS_H_

#include <bkoq/kit.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace bkoq::tool {

// What a user is told of a damaged image. A place after a secret would tell how long it is, and so
// would a size or an offset; a checksum would tell whether a guess is right. Unless secrets are to
// be shown, only places in the header, in the job record and up to the first secret are told.
class ImageDoubts {
 public:
  ImageDoubts(std::string file, bool showSecrets)
      : file_(std::move(file)), showSecrets_(showSecrets) {}

  // For bkoqSalvageImage(), with the doubts as user data.
  static void add(const BkoqImageError* error, void* doubts);

  // Prints the first of them, and how many more there are. The tree, which may be null, is what
  // was read of the image, and lies in it if `image` is not null.
  void tell(const void* root, BkoqLayout layout, const void* image, const std::string& hint = "");

  // In one line, after tell(); "" when there are none.
  std::string words() const;

 private:
  std::string wordsOf(const BkoqImageError& error, std::uint32_t knownEnd) const;

  std::string file_;
  bool showSecrets_;
  std::vector<BkoqImageError> errors_;
  unsigned int count_ = 0;
  std::string first_;
};

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_IMAGE_DOUBTS_H_
