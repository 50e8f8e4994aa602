#ifndef BKOQ_TOOLS_PAGE_H_
#define BKOQ_TOOLS_PAGE_H_

#include <bkoq/kit.h>

#include <cstdint>
#include <string>
#include <vector>

namespace bkoq::tool {

// A tree on a page, with what it is called there: the name of its file, or its layout.
struct PageTree {
  const void* root;
  BkoqLayout layout;
  std::string name;
  std::uint32_t doubtfulFrom =
      0;  // the block from which on a salvaged tree is doubtful; 0 for none
};

// A page about one tree, about the two layouts of a job in tabs, or about two trees side by side.
struct Page {
  std::string title;
  std::vector<PageTree> trees;
  bool isComparison = false;
  bool showSecrets = false;
  std::string warning;  // what is wrong with the image that the tree is from; "" when nothing is
};

// Of each tree so many bytes of records and texts at most are put on a page, of the differences so
// many, and of one text so many bytes; the page says what was left out. A page is thus never larger
// than 48 MiB.
constexpr std::size_t kMostTreeBytes = std::size_t{16} << 20;
constexpr std::size_t kMostTextBytes = std::size_t{64} << 10;
constexpr std::size_t kMostDifferences = 5000;

// Writes a page that needs nothing else: no network, no other file. Unless secrets are to be shown,
// neither they nor their lengths are anywhere in it. `differences` takes how many there are between
// two trees.
BkoqStatus writePage(const Page& page, BkoqSink sink, void* user, std::uint32_t& differences);

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_PAGE_H_
