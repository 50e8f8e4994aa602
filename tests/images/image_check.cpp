// Writes images into a folder, and beside each what a reader must find in it: a line for each field
// that is not reserved, its path, a tab and its value as JSON. Usage: image_check FOLDER
#include <cstdio>
#include <fstream>
#include <iostream>

#include "kit/test_trees.h"

namespace bkoq::test {
namespace {

std::string textsOf(const BkoqVisit& visit) {
  const char* text = static_cast<const char*>(visit.targetBytes);
  std::string list;
  for (std::uint32_t i = 0; i < visit.count; ++i) {
    list += (i > 0 ? ", \"" : "\"") + std::string(text) + "\"";
    text += std::strlen(text) + 1;
  }
  return visit.kind == BKOQ_FIELD_TEXT ? list : "[" + list + "]";
}

std::string bytesOf(const BkoqVisit& visit) {
  std::string list;
  for (std::uint32_t i = 0; i < visit.width; ++i) {
    list += (i > 0 ? ", " : "") + std::to_string(static_cast<const unsigned char*>(visit.bytes)[i]);
  }
  return "[" + list + "]";
}

int addLine(const BkoqVisit* visit, void* user) {
  if (visit->event != BKOQ_FIELD) return 0;
  std::string value;
  switch (visit->kind) {
    case BKOQ_FIELD_NUMBER:
    case BKOQ_FIELD_COUNT:
    case BKOQ_FIELD_FLAGS:
      value = std::to_string(visit->number);
      break;
    case BKOQ_FIELD_TIME:
    case BKOQ_FIELD_CLIENT_TIME:
      value = std::to_string(static_cast<std::int32_t>(visit->number));
      break;
    case BKOQ_FIELD_BYTE_LIST:
      value = bytesOf(*visit);
      break;
    case BKOQ_FIELD_TEXT:
    case BKOQ_FIELD_TWO_TEXTS:
    case BKOQ_FIELD_TEXT_LIST:
      value = visit->target != 0 ? textsOf(*visit) : "null";
      break;
    case BKOQ_FIELD_ARRAY:
    case BKOQ_FIELD_RECORD:
      if (visit->target == 0) value = "null";
      break;
    default:
      break;
  }
  if (!value.empty()) {
    static_cast<std::string*>(user)->append(visit->path).append("\t" + value + "\n");
  }
  return 0;
}

template <class Job>
bool write(const std::string& base, const Tree<Job>& job) {
  std::string image;
  std::string lines;
  const BkoqLayout layout = LayoutOf<Job>::kValue;
  if (bkoqWriteImage(job.get(), layout, appendToString, &image, nullptr) != BKOQ_OK) return false;
  if (bkoqWalk(job.get(), layout, addLine, &lines) != BKOQ_OK) return false;
  std::ofstream(base + ".image", std::ios::binary) << image;
  std::ofstream(base + ".expected", std::ios::binary) << lines;
  return true;
}

// A job of a kind with a UNIX node in either array, so that it shows how their texts and media are
// read.
CurrentTree jobOfKind(std::uint16_t kind, bool sourceHasTapes, bool hasDestination, bool isPlain) {
  CurrentTree job = currentJob(kind);
  const auto fill = [](BKNODE& node, bool hasTapes, bool isOneText) {
    node.usNodeType = 3;
    node.pszNodeOSVer = isOneText ? text("5.8") : texts({"5.8", "x"});
    node.pszNodeName = isOneText ? text("node") : texts({"node", ""});
    if (hasTapes) {
      give<BKDTAPE>(node.ulMediaCount, node.pMedia, 2)->pszTapeName = text("tape");
    } else {
      give<BKDDISK>(node.ulMediaCount, node.pMedia, 1)->pszDiskPW2 = texts({"u", "p"});
    }
  };
  fill(*give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 1), sourceHasTapes, sourceHasTapes);
  if (hasDestination) {
    fill(*give<BKNODE>(job->ulNumDestNodes, job->pDestNodes, 1), !sourceHasTapes,
         !sourceHasTapes || isPlain);
  }
  return job;
}

}  // namespace
}  // namespace bkoq::test

int main(int argc, char** argv) {
  using namespace bkoq::test;
  if (argc != 2) return 2;
  const std::string folder = std::string(argv[1]) + "/";
  CurrentTree unfinished = currentJob(1);
  unfinished->ulNumSourceNodes = 3;
  give<BKNODE>(unfinished->ulNumDestNodes, unfinished->pDestNodes, 2)[1].ulMediaCount = 1;
  const bool isWritten = write(folder + "current", currentBackup()) &&
                         write(folder + "previous", previousBackup()) &&
                         write(folder + "unfinished", unfinished) &&
                         write(folder + "cruise", jobOfKind(3, false, true, false)) &&
                         write(folder + "restore", jobOfKind(7, true, true, true)) &&
                         write(folder + "database_restore", jobOfKind(10, true, true, true)) &&
                         write(folder + "merge", jobOfKind(8, true, true, false)) &&
                         write(folder + "compare", jobOfKind(11, true, true, false)) &&
                         write(folder + "scan", jobOfKind(14, true, false, false)) &&
                         write(folder + "verify", jobOfKind(29, true, false, false));
  return isWritten ? 0 : 1;
}
