// What the class library's stand-in does when memory has run out. The program is linked so that
// its calls of malloc() and realloc() come here first.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <new>

#include "rw/collstr.h"
#include "rw/colltime.h"
#include "rw/ctoken.h"
#include "rw/slistcol.h"
#include "tests/memory/wrap_malloc.h"

namespace {

// Lets allocations fail for as long as it lives.
class NoMemory {
 public:
  NoMemory() { allocations_.start(); }
  ~NoMemory() { bkoq::test::Allocations::stop(); }

 private:
  bkoq::test::Allocations allocations_{0, true};
};

}  // namespace

extern "C" void* __real_malloc(size_t size);

// Not inline, or the compiler sees malloc() and free() through them and warns about mixing.
[[gnu::noinline]] void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return malloc(size);
}
// What the tests note needs memory nevertheless.
[[gnu::noinline]] void* operator new(size_t size) {
  if (void* block = __real_malloc(size)) return block;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept { free(block); }
[[gnu::noinline]] void operator delete(void* block, size_t) noexcept { free(block); }

namespace {

TEST(NoMemory, NewTextIsEmpty) {
  RWCString string("text");
  RWCString sum;
  {
    NoMemory now;
    sum = string + "s";
    string = "longer text";
  }
  EXPECT_TRUE(sum.isNull());
  EXPECT_TRUE(string.isNull());
  string = "text";
  {
    NoMemory now;
    string += "s";
  }
  EXPECT_TRUE(string.isNull());
  string = "again";
  EXPECT_STREQ("again", string.data());
}

TEST(NoMemory, CopyingATextNeedsNone) {
  const RWCString string("text");
  RWCString assigned("other");
  {
    NoMemory now;
    assigned = RWCString(string);
    assigned += "";
    assigned = assigned + RWCString();
  }
  EXPECT_STREQ("text", assigned.data());
}

TEST(NoMemory, TokenIsEmpty) {
  RWCTokenizer next(RWCString("a b"));
  RWCString token("not read yet");
  {
    NoMemory now;
    token = next();
  }
  EXPECT_TRUE(token.isNull());
  EXPECT_STREQ("b", next());
}

TEST(NoMemory, ListStaysAsItWas) {
  RWCollectable element;
  RWSlistCollectables source;
  RWSlistCollectables list;
  for (int i = 0; i < 4; ++i) source.insert(&element);
  {
    NoMemory now;
    EXPECT_EQ(nullptr, list.insert(&element));
    EXPECT_EQ(nullptr, list.prepend(&element));
    list = source;
    EXPECT_EQ(0U, list.entries());
    EXPECT_EQ(0U, RWSlistCollectables(source).entries());
    EXPECT_EQ(nullptr, source.insert(&element));
    EXPECT_EQ(4U, source.entries());
  }
  list.insert(&element);
  {
    NoMemory now;
    list = source;
    EXPECT_EQ(4U, list.entries()) << "they fit into the memory that the list has";
  }
}

TEST(NoMemory, ListIsClearedAndDestroyed) {
  RWSlistCollectables list;
  for (int i = 0; i < 1000; ++i) list.insert(new RWCollectableString("element"));
  {
    NoMemory now;
    list.clearAndDestroy();
  }
  EXPECT_TRUE(list.isEmpty());
}

TEST(NoMemory, NoObjectIsMade) {
  const RWCollectableString string("text");
  const RWCollectableTime time(5UL);
  NoMemory now;
  EXPECT_EQ(nullptr, string.copy());
  EXPECT_EQ(nullptr, string.newSpecies());
  EXPECT_EQ(nullptr, time.copy());
  EXPECT_EQ(nullptr, time.newSpecies());
}

}  // namespace
