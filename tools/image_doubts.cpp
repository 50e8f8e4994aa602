#include "tools/image_doubts.h"

#include <algorithm>
#include <cstring>

#include "tools/output.h"
#include "tools/walk.h"

namespace bkoq::tool {
namespace {

constexpr std::size_t kMost = 20;
constexpr std::uint32_t kHeaderSize = 32;

// Where the job record ends, and where the first secret begins.
struct Places {
  const void* image;
  std::uint32_t jobEnd = kHeaderSize;
  std::uint32_t firstSecret = UINT32_MAX;

  int visit(const BkoqVisit& visit) {
    if (visit.event == BKOQ_RECORD_BEGIN && visit.depth == 0) jobEnd = kHeaderSize + visit.width;
    if (visit.event != BKOQ_FIELD || visit.isSecret == 0 || visit.target == 0) return 0;
    // Blocks of their own tell nothing of where they were.
    firstSecret = jobEnd;
    if (image != nullptr) {
      firstSecret = static_cast<std::uint32_t>(static_cast<const char*>(visit.targetBytes) -
                                               static_cast<const char*>(image));
    }
    return 1;
  }
};

// Whether all that is said of it is about the header, or about numbers of blocks.
bool tellsNoLength(BkoqImageProblem problem) {
  switch (problem) {
    case BKOQ_IMAGE_SHORT:
    case BKOQ_IMAGE_MAGIC:
    case BKOQ_IMAGE_VERSION:
    case BKOQ_IMAGE_LAYOUT:
    case BKOQ_IMAGE_ROOT:
    case BKOQ_IMAGE_BLOCKS:
      return true;
    default:
      return false;
  }
}

// Whether a field is there and is no secret.
bool isPlain(const void* root, BkoqLayout layout, const char* path) {
  bool isFound = false;
  if (root == nullptr) return false;
  walk(root, layout, [&](const BkoqVisit& visit) {
    isFound =
        visit.event == BKOQ_FIELD && visit.isSecret == 0 && std::strcmp(visit.path, path) == 0;
    return isFound ? 1 : 0;
  });
  return isFound;
}

}  // namespace

void ImageDoubts::add(const BkoqImageError* error, void* doubts) {
  auto& self = *static_cast<ImageDoubts*>(doubts);
  if (++self.count_ <= kMost) self.errors_.push_back(*error);
}

void ImageDoubts::tell(const void* root, BkoqLayout layout, const void* image,
                       const std::string& hint) {
  Places places{image};
  if (root != nullptr) {
    walk(root, layout, [&places](const BkoqVisit& visit) { return places.visit(visit); });
  }
  // After the first doubt about the tree itself a secret may lie where none was found.
  std::uint32_t knownEnd = std::max(places.jobEnd, places.firstSecret);
  for (const BkoqImageError& error : errors_) {
    // Bytes after a secret tell where it ends, even if it could not be read for them.
    const bool isAfterSecret =
        error.problem == BKOQ_IMAGE_PADDING && !isPlain(root, layout, error.path);
    const std::string text = wordsOf(error, isAfterSecret ? places.jobEnd : knownEnd);
    if (first_.empty()) first_ = text;
    fail(std::string(file_).append(": ").append(text).append(hint));
    if (error.position >= kHeaderSize) knownEnd = places.jobEnd;
  }
  if (count_ > kMost) {
    const unsigned int more = count_ - kMost;
    fail(file_ + ": " + std::to_string(more) + (more == 1 ? " more doubt" : " more doubts"));
  }
}

std::string ImageDoubts::words() const {
  if (count_ < 2) return first_;
  return first_ + "; and " + std::to_string(count_ - 1) +
         (count_ == 2 ? " doubt more" : " doubts more");
}

std::string ImageDoubts::wordsOf(const BkoqImageError& error, std::uint32_t knownEnd) const {
  std::string text = error.text;
  if (showSecrets_ || tellsNoLength(error.problem)) return text;
  const std::string byte = "byte " + std::to_string(error.position);
  std::string place = error.position < knownEnd ? byte : "";
  if (error.path[0] != '\0') place += (place.empty() ? "" : ", ") + std::string(error.path);
  const std::string what = text.substr(0, text.rfind(" (" + byte));
  return place.empty() ? what : what + " (" + place + ")";
}

}  // namespace bkoq::tool
