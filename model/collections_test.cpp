#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "testing/counted.h"

namespace {

template <class Collection>
class CollectionTest : public testing::Test {};
using Collections = testing::Types<BKQNodeCol, BKQRestoreNodeCol, BKQTapeNodeCol, BKQFilterCol,
                                   BKQStringCol, BKQTapeCol, BKQDiskCol, BKQTapeItemCol,
                                   BKQDiskItemCol, BKQJobUnitCol, BKQExceptionDayCol>;
TYPED_TEST_SUITE(CollectionTest, Collections);

TYPED_TEST(CollectionTest, DestructorOnlyUnlinks) {
  int destroyed = 0;
  Counted<RWCollectable> element(destroyed);
  {
    TypeParam collection;
    EXPECT_TRUE(collection.isEmpty());
    EXPECT_EQ(collection.insert(&element), &element);
    EXPECT_EQ(collection.entries(), 1u);
  }
  EXPECT_EQ(destroyed, 0);
}

TYPED_TEST(CollectionTest, DeletesWhenAsked) {
  int destroyed = 0;
  TypeParam collection;
  collection.insert(new Counted<RWCollectable>(destroyed));
  collection.clearAndDestroy();
  EXPECT_EQ(destroyed, 1);
  EXPECT_TRUE(collection.isEmpty());
}

// The idiom that every owner of a collection follows.
TEST(Enumeration, PagesThroughTheElements) {
  BKQBackupJob job;
  BKQUnixNode a("a"), b("b"), c("c"), d("d"), e("e");
  BKQUnixNode* nodes[] = {&a, &b, &c, &d, &e};
  for (BKQUnixNode* node : nodes) job.addSourceNode(*node);
  job.resetSourceNodes();
  unsigned int next = 0;
  for (unsigned int expected : {2u, 2u, 1u, 0u}) {
    BKQNodeCol* out = nullptr;
    EXPECT_EQ(job.enumSourceNodes(out, 2), expected);
    ASSERT_NE(out, nullptr);
    EXPECT_EQ(out->entries(), expected);
    for (unsigned int i = 0; i < expected; ++i) EXPECT_EQ(out->at(i), nodes[next++]);
    delete out;
  }
  EXPECT_EQ(job.sourceNodeEntries(), 5u);
}

TEST(Enumeration, ZeroMeansAll) {
  BKQBackupJob job;
  BKQUnixNode first("a");
  BKQUnixNode second("b");
  job.addSourceNode(first);
  job.addSourceNode(second);
  BKQNodeCol* out = nullptr;
  EXPECT_EQ(job.enumSourceNodes(out, 0), 2u);
  delete out;
  EXPECT_EQ(job.enumSourceNodes(out, 0), 0u);
  EXPECT_TRUE(out->isEmpty());
  delete out;
}

TEST(Enumeration, AddingMovesNoCursor) {
  BKQBackupJob job;
  BKQUnixNode first("a");
  BKQUnixNode second("b");
  job.addSourceNode(first);
  BKQNodeCol* out = nullptr;
  EXPECT_EQ(job.enumSourceNodes(out, 0), 1u);
  delete out;
  job.addSourceNode(second);
  EXPECT_EQ(job.enumSourceNodes(out, 0), 1u);
  EXPECT_EQ(out->at(0), &second);
  delete out;
}

}  // namespace
