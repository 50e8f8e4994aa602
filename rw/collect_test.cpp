#include "rw/collect.h"

#include <gtest/gtest.h>
#include <stddef.h>
#include <string.h>

#include "rw/collstr.h"
#include "rw/colltime.h"

class RWFile {};
class RWvistream {};
class RWvostream {};

namespace {

static_assert(sizeof(RWCollectable) == 4 && sizeof(RWCString) == 4 && sizeof(RWTime) == 4,
              "clients that were compiled before hold these by value: they keep their sizes");
static_assert(sizeof(RWCollectableString) == 8 && sizeof(RWCollectableTime) == 8,
              "clients that were compiled before hold these by value: they keep their sizes");

#if defined(__i386__)
// A pointer to a virtual operation holds one more than the offset of its slot.
template <class Operation>
size_t slotOf(Operation operation) {
  size_t offset;
  memcpy(&offset, &operation, sizeof offset);
  return (offset - 1) / sizeof(void*);
}

TEST(Collectable, OperationsStandInTheirSlots) {
  SCOPED_TRACE("clients that were compiled before call these by number: none may move or go");
  EXPECT_EQ(0U, slotOf(&RWCollectable::newSpecies));
  EXPECT_EQ(1U, slotOf(&RWCollectable::copy));
  EXPECT_EQ(2U, slotOf(&RWCollectable::isA));
  // 3 and 4: the destructor, without and with freeing.
  EXPECT_EQ(5U, slotOf(&RWCollectable::binaryStoreSize));
  EXPECT_EQ(6U, slotOf(&RWCollectable::compareTo));
  EXPECT_EQ(7U, slotOf(&RWCollectable::hash));
  EXPECT_EQ(8U, slotOf(&RWCollectable::isEqual));
  EXPECT_EQ(9U, slotOf<void (RWCollectable::*)(RWFile&)>(&RWCollectable::restoreGuts));
  EXPECT_EQ(10U, slotOf<void (RWCollectable::*)(RWvistream&)>(&RWCollectable::restoreGuts));
  EXPECT_EQ(11U, slotOf<void (RWCollectable::*)(RWFile&) const>(&RWCollectable::saveGuts));
  EXPECT_EQ(12U, slotOf<void (RWCollectable::*)(RWvostream&) const>(&RWCollectable::saveGuts));
}
#endif

TEST(Collectable, BaseComparesByIdentityAndOrdersByAddress) {
  const RWCollectable objects[2];
  EXPECT_EQ(1, objects[0].isEqual(&objects[0]));
  EXPECT_EQ(0, objects[0].isEqual(&objects[1]));
  EXPECT_EQ(0, objects[0].isEqual(nullptr));
  EXPECT_EQ(0, objects[0].compareTo(&objects[0]));
  EXPECT_EQ(-1, objects[0].compareTo(&objects[1]));
  EXPECT_EQ(1, objects[1].compareTo(&objects[0]));
  EXPECT_EQ(objects[0].hash(), objects[0].hash());
  EXPECT_NE(objects[0].hash(), objects[1].hash());
}

TEST(Collectable, BaseMakesNoObjectsAndStoresNothing) {
  RWCollectable object;
  RWFile file;
  RWvistream in;
  RWvostream out;
  EXPECT_EQ(nullptr, object.newSpecies());
  EXPECT_EQ(nullptr, object.copy());
  EXPECT_EQ(0U, object.isA());
  EXPECT_EQ(0U, object.binaryStoreSize());
  object.saveGuts(file);
  object.saveGuts(out);
  object.restoreGuts(file);
  object.restoreGuts(in);
}

TEST(Collectable, IsDestroyedThroughTheBase) {
  struct Element : RWCollectable {
    explicit Element(int& destroyed) : destroyed_(destroyed) {}
    ~Element() override { ++destroyed_; }
    int& destroyed_;
  };
  int destroyed = 0;
  RWCollectable* object = new Element(destroyed);
  delete object;
  EXPECT_EQ(1, destroyed);
}

}  // namespace
