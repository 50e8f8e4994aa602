// Writes images into a folder, and beside each what a reader must find in it: a line for each field
// that is not reserved, its path, a tab and its value as JSON. Usage: image_check FOLDER
//
// Or says of each of many images, in one file with the size before each, whether the kit takes it,
// and in how many such lines; "-" for one that it refuses. Usage: image_check --judge FILE
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

std::uint32_t lineCount = 0;

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
    case BKOQ_FIELD_OPAQUE:
      // Not followed, since nothing says what a node of an unknown kind of job holds.
      if (std::strcmp(visit->field, "pMedia") == 0) value = "null";
      break;
    default:
      break;
  }
  if (!value.empty()) {
    ++lineCount;
    static_cast<std::string*>(user)->append(visit->path).append("\t" + value + "\n");
  }
  return 0;
}

template <class Job>
bool write(const std::string& base, const TreeOf<Job>& job) {
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

int judge(const char* path) {
  std::ifstream file(path, std::ios::binary);
  std::uint32_t size = 0;
  while (file.read(reinterpret_cast<char*>(&size), sizeof size)) {
    std::string image(size, '\0');
    if (!file.read(&image[0], static_cast<std::streamsize>(size))) return 1;
    BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
    void* root = nullptr;
    const BkoqStatus status = bkoqReadImage(image.data(), size, &layout, &root, nullptr);
    std::string lines;
    lineCount = 0;
    if (root != nullptr) bkoqWalk(root, layout, addLine, &lines);
    bkoqFree(root, layout, nullptr);
    if (status == BKOQ_OK) {
      std::cout << lineCount << "\n";
    } else {
      std::cout << "-\n";
    }
    // Neither in place, nor by salvaging, is anything else true.
    const auto demand = [&](bool isTrue, const char* what) {
      if (isTrue) return;
      std::ofstream("hostile.image", std::ios::binary) << image;
      std::cerr << what << ": see hostile.image\n";
      std::exit(1);
    };
    void* inPlace = nullptr;
    std::string used = image;
    const BkoqStatus use = bkoqUseImage(&used[0], size, &layout, &inPlace, nullptr);
    demand(use == status, "used in place with another result");
    demand(status == BKOQ_OK || used == image, "changed without being used");
    std::string linesInPlace;
    if (status == BKOQ_OK) bkoqWalk(inPlace, layout, addLine, &linesInPlace);
    demand(status != BKOQ_OK || lines == linesInPlace, "another tree in place");
    void* salvaged = nullptr;
    BkoqSalvage salvage;
    std::string repaired = image + std::string(BKOQ_SALVAGE_ROOM, 'x');
    const BkoqStatus saved =
        bkoqSalvageImage(&repaired[0], size, &layout, &salvaged, nullptr, nullptr, &salvage);
    std::string linesSalvaged;
    if (salvaged != nullptr) bkoqWalk(salvaged, layout, addLine, &linesSalvaged);
    demand(saved == BKOQ_OK || (status != BKOQ_OK && size <= 32), "not salvaged");
    demand(status != BKOQ_OK || (salvage.doubts == 0 && lines == linesSalvaged),
           "doubts about a good image");
    demand(status == BKOQ_OK || saved != BKOQ_OK || salvage.doubts > 0,
           "no doubts about a bad image");
  }
  return 0;
}

}  // namespace
}  // namespace bkoq::test

int main(int argc, char** argv) {
  using namespace bkoq::test;
  if (argc == 3 && std::string(argv[1]) == "--judge") return judge(argv[2]);
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
