#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "kit/test_trees.h"

// How many allocations of the kit succeed from here on; negative for all.
static long allocationsLeft = -1;

// Not inline, or the compiler sees malloc() and free() through them and warns about mixing.
__attribute__((noinline)) void* operator new(std::size_t size) {
  if (allocationsLeft == 0) throw std::bad_alloc();
  if (allocationsLeft > 0) --allocationsLeft;
  void* block = std::malloc(size > 0 ? size : 1);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
__attribute__((noinline)) void operator delete(void* block) noexcept { std::free(block); }
__attribute__((noinline)) void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}

namespace bkoq::test {
namespace {

int ignore(void*, const char*, std::size_t) { return 0; }

// Runs the operation with room for no allocation, for one, for more ... until it needs no more;
// each time before, it must say that memory ran out. Returns the room that was enough.
template <class Operation>
long failures(const Operation& operation) {
  // In growing steps: the far end of a long operation is like its middle.
  for (long room = 0;; room += 1 + room / 30) {
    allocationsLeft = room;
    const BkoqStatus status = operation();
    allocationsLeft = -1;
    if (status == BKOQ_OK) return room;
    EXPECT_EQ(status, BKOQ_NO_MEMORY);
    if (status != BKOQ_NO_MEMORY) return -1;
  }
}

TEST(Memory, RunsOutWithAStatusAndWithoutALeak) {
  const CurrentTree job = currentBackup();
  const PreviousTree previous = previousBackup();
  const std::pair<BkoqFormat, long> least[] = {{BKOQ_FORMAT_JSON, 3}, {BKOQ_FORMAT_ANNOTATED, 20}};
  for (const auto& row : least) {
    BkoqPrintOptions options{};
    options.format = row.first;
    EXPECT_GT(failures([&] {
                return bkoqPrint(job.get(), BKOQ_LAYOUT_CURRENT, &options, ignore, nullptr);
              }),
              row.second);
  }
  // Text and single fields need no memory at all; what a pattern is about does.
  for (const int isColoured : {0, 1}) {
    BkoqPrintOptions text{};
    text.width = 60;
    text.colour = isColoured;
    EXPECT_EQ(
        failures([&] { return bkoqPrint(job.get(), BKOQ_LAYOUT_CURRENT, &text, ignore, nullptr); }),
        0);
  }
  EXPECT_GT(failures([&] {
              return bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "**.pszNodeName", nullptr,
                                    ignore, nullptr);
            }),
            20);
  EXPECT_EQ(failures([&] {
              return bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "pszOwner", nullptr, ignore,
                                    nullptr);
            }),
            0);
  EXPECT_EQ(failures([&] {
              return bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, 12, 9, nullptr, ignore, nullptr);
            }),
            0);
  BkoqPrintOptions json{};
  json.format = BKOQ_FORMAT_JSON;
  EXPECT_GT(failures([&] {
              return bkoqPrintAt(job.get(), BKOQ_LAYOUT_CURRENT, 12, 9, &json, ignore, nullptr);
            }),
            0);
  EXPECT_GT(failures([&] {
              return bkoqPrintDifferences(job.get(), BKOQ_LAYOUT_CURRENT, previous.get(),
                                          BKOQ_LAYOUT_PREVIOUS, nullptr, ignore, nullptr, nullptr);
            }),
            20);
  EXPECT_GT(failures([&] {
              return bkoqCompare(job.get(), BKOQ_LAYOUT_CURRENT, previous.get(),
                                 BKOQ_LAYOUT_PREVIOUS, 0, nullptr, nullptr, nullptr);
            }),
            20);
  EXPECT_GT(failures([&] {
              return bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, ignore, nullptr, nullptr);
            }),
            5);
  EXPECT_GT(failures([&] {
              return bkoqPrintRecords(nullptr, BKOQ_LAYOUT_CURRENT, BKOQ_FORMAT_TEXT, ignore,
                                      nullptr);
            }),
            100);
  EXPECT_GT(failures([&] {
              return bkoqPrintLayoutDifferences(nullptr, BKOQ_FORMAT_JSON, ignore, nullptr);
            }),
            20);
}

TEST(Memory, RunsOutWhileAnImageIsSalvaged) {
  std::string good;
  {
    const CurrentTree job = currentBackup();
    ASSERT_EQ(bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, appendToString, &good, nullptr),
              BKOQ_OK);
  }
  const std::size_t size = good.size() - 100;
  std::string image = good + std::string(BKOQ_SALVAGE_ROOM, '\0');
  EXPECT_GT(failures([&] {
              std::memcpy(&image[0], good.data(), good.size());
              BkoqLayout layout = BKOQ_LAYOUT_CURRENT;
              void* root = nullptr;
              const BkoqStatus status =
                  bkoqSalvageImage(&image[0], size, &layout, &root, nullptr, nullptr, nullptr);
              EXPECT_EQ(root == nullptr, status != BKOQ_OK);
              return status;
            }),
            0);
}

TEST(Memory, RunsOutWhilePathsAreFollowed) {
  const CurrentTree job = currentBackup();
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_PLAIN_JSON;
  EXPECT_GT(failures([&] {
              return bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "**.pszDiskName", &options,
                                    ignore, nullptr);
            }),
            5);
  char text[200];
  EXPECT_GT(failures([&] {
              const BkoqStatus status = bkoqExplainPath(
                  job.get(), BKOQ_LAYOUT_CURRENT, "pSourceNodes[0].pszNodeNam", text, sizeof text);
              return status == BKOQ_NOT_FOUND ? BKOQ_OK : status;
            }),
            2);
  EXPECT_STREQ(text, "BKNODE has no field \"pszNodeNam\"; did you mean pszNodeName?");
}

TEST(Memory, IsNotNeededToWalkFreeOrRead) {
  std::string image;
  {
    const CurrentTree job = currentBackup();
    ASSERT_EQ(bkoqWriteImage(job.get(), BKOQ_LAYOUT_CURRENT, appendToString, &image, nullptr),
              BKOQ_OK);
  }
  // The blocks of a tree come from malloc().
  allocationsLeft = 0;
  BkoqLayout layout;
  void* root = nullptr;
  const BkoqStatus read = bkoqReadImage(image.data(), image.size(), &layout, &root, nullptr);
  unsigned int fields = 0;
  const BkoqStatus walked = bkoqWalk(
      root, layout,
      [](const BkoqVisit*, void* user) {
        ++*static_cast<unsigned int*>(user);
        return 0;
      },
      &fields);
  BkoqFreed freed;
  const BkoqStatus status = bkoqFree(root, layout, &freed);
  allocationsLeft = -1;
  EXPECT_EQ(read, BKOQ_OK);
  EXPECT_EQ(walked, BKOQ_OK);
  EXPECT_GT(fields, 100u);
  EXPECT_EQ(status, BKOQ_OK);
  EXPECT_EQ(freed.blocks, 29u);
  // Nor to make a tree in place, or to get a value.
  allocationsLeft = 0;
  const BkoqStatus used = bkoqUseImage(&image[0], image.size(), &layout, &root, nullptr);
  BkoqValue value;
  const BkoqStatus got = bkoqGet(root, layout, "pSourceNodes[0].pszNodeName[1]", &value);
  allocationsLeft = -1;
  EXPECT_EQ(used, BKOQ_OK);
  EXPECT_EQ(got, BKOQ_OK);
  EXPECT_STREQ(value.text, "extra");
}

}  // namespace
}  // namespace bkoq::test
