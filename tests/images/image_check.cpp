// Writes images into a folder, and beside each what a reader must find in it: a line for each field
// that is not reserved, its path, a tab and its value as JSON. Usage: image_check FOLDER
//
// Or says of each of many images, in one file with the size before each, whether the kit takes it,
// and in how many such lines; "-" for one that it refuses. Usage: image_check --judge FILE
#include <cstdio>
#include <fstream>
#include <iostream>

#include "kit/test_trees.h"
#include "tests/images/judge.h"

namespace bkoq::test {
namespace {

template <class Job>
bool write(const std::string& base, const TreeOf<Job>& job) {
  std::string image;
  const BkoqLayout layout = LayoutOf<Job>::kValue;
  if (bkoqWriteImage(job.get(), layout, appendToString, &image, nullptr) != BKOQ_OK) return false;
  std::ofstream(base + ".image", std::ios::binary) << image;
  std::ofstream(base + ".expected", std::ios::binary) << linesOf(job.get(), layout);
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

int judgeAll(const char* path) {
  std::ifstream file(path, std::ios::binary);
  std::uint32_t size = 0;
  while (file.read(reinterpret_cast<char*>(&size), sizeof size)) {
    std::string image(size, '\0');
    if (!file.read(&image[0], static_cast<std::streamsize>(size))) return 1;
    const Verdict verdict = judge(image);
    if (verdict.isTaken) {
      std::cout << verdict.lines << "\n";
    } else {
      std::cout << "-\n";
    }
  }
  return 0;
}

}  // namespace
}  // namespace bkoq::test

int main(int argc, char** argv) {
  using namespace bkoq::test;
  if (argc == 3 && std::string(argv[1]) == "--judge") return judgeAll(argv[2]);
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
