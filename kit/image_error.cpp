#include "kit/image_error.h"

#include <algorithm>
#include <cinttypes>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace bkoq::kit {
namespace {

const char* usualWords(BkoqImageProblem problem) {
  switch (problem) {
    case BKOQ_IMAGE_GOOD:
      break;
    case BKOQ_IMAGE_SHORT:
      return "cut short: not even the header is whole";
    case BKOQ_IMAGE_MAGIC:
      return "this is no image of a job";
    case BKOQ_IMAGE_VERSION:
      return "written in a version of the format that is not known here";
    case BKOQ_IMAGE_LAYOUT:
      return "the header names no layout: bytes were changed";
    case BKOQ_IMAGE_SIZE:
      return "the size does not fit";
    case BKOQ_IMAGE_CHECKSUM:
      return "the checksum does not fit: bytes were changed";
    case BKOQ_IMAGE_ROOT:
      return "the job record is not where it must be";
    case BKOQ_IMAGE_OUTSIDE:
      return "an offset leads out of the image";
    case BKOQ_IMAGE_UNALIGNED:
      return "an offset leads between two blocks";
    case BKOQ_IMAGE_OVERLAP:
      return "two blocks overlap";
    case BKOQ_IMAGE_GAP:
      return "bytes between two blocks belong to neither";
    case BKOQ_IMAGE_COUNT:
      return "the records do not fit into the image";
    case BKOQ_IMAGE_UNTERMINATED:
      return "a text has no end";
    case BKOQ_IMAGE_PADDING:
      return "bytes between two blocks were changed";
    case BKOQ_IMAGE_TRAILING:
      return "bytes after the last block belong to nothing";
    case BKOQ_IMAGE_BLOCKS:
      return "the number of blocks does not fit";
    case BKOQ_IMAGE_UNKNOWN_MEDIA:
      return "a node holds something, but the kind of the job is not known";
  }
  return "";
}

}  // namespace

Words words(const char* format, ...) {
  Words result;
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(result.text, sizeof result.text, format, arguments);
  va_end(arguments);
  return result;
}

Words byteWords(std::uint64_t count) {
  const Words digits = words("%" PRIu64, count);
  Words grouped = {};
  const std::size_t size = std::strlen(digits.text);
  std::size_t at = 0;
  for (std::size_t i = 0; i < size; ++i) {
    if (i > 0 && (size - i) % 3 == 0) grouped.text[at++] = ',';
    grouped.text[at++] = digits.text[i];
  }
  return words("%.40s %s", grouped.text, count == 1 ? "byte" : "bytes");
}

void setImageError(BkoqImageError& error, BkoqImageProblem problem, const char* path,
                   std::uint32_t position, const char* expected, const char* found,
                   const char* what) {
  error.problem = problem;
  error.position = position;
  std::snprintf(error.path, sizeof error.path, "%s", path);
  std::snprintf(error.expected, sizeof error.expected, "%s", expected);
  std::snprintf(error.found, sizeof error.found, "%s", found);
  // With room for the longest of each part.
  char line[sizeof error.path + sizeof error.expected + sizeof error.found + 240];
  std::snprintf(line, sizeof line, "%s (byte %u%s%s: expected %s, found %s)",
                *what != '\0' ? what : usualWords(problem), static_cast<unsigned int>(position),
                error.path[0] != '\0' ? ", " : "", error.path, error.expected, error.found);
  const std::size_t size = std::min(std::strlen(line), sizeof error.text - 1);
  std::memcpy(error.text, line, size);
  error.text[size] = '\0';
}

}  // namespace bkoq::kit
