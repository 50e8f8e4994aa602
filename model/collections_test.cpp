#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"

namespace bkoq::test {
namespace {

template <class Collection>
class CollectionTest : public testing::Test {};
using Collections = testing::Types<BKQNodeCol, BKQRestoreNodeCol, BKQTapeNodeCol, BKQFilterCol,
                                   BKQStringCol, BKQTapeCol, BKQDiskCol, BKQTapeItemCol,
                                   BKQDiskItemCol, BKQJobUnitCol, BKQExceptionDayCol>;
TYPED_TEST_SUITE(CollectionTest, Collections, );

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

// A list that an object hands out by cursor, and what a copy of the object holds in its place.
enum class Copied { kTwice, kAsClones, kShared };
enum class Former { kDeleted, kUnlinked };

template <class OwnerClass, class ElementClass, class CollectionClass, auto addElement,
          auto countElements, auto resetCursor, auto enumElements, class CursorType, Copied copied,
          Former former>
struct List {
  using Owner = OwnerClass;
  using Element = ElementClass;
  using Collection = CollectionClass;
  static constexpr bool kIsCursorShort = sizeof(CursorType) == 2;
  static constexpr Copied kCopied = copied;
  static constexpr Former kFormer = former;
  // What stands for all elements; the filters of a tape are an exception.
  static constexpr bool kZeroIsAll =
      !(std::is_same<Owner, BKQTape>::value && std::is_same<Collection, BKQFilterCol>::value);

  static RWCollectable* add(Owner& owner, Element& element) { return (owner.*addElement)(element); }
  static unsigned int entries(const Owner& owner) { return (owner.*countElements)(); }
  static void reset(Owner& owner) { (owner.*resetCursor)(); }
  static unsigned int enumerate(Owner& owner, Collection*& out, unsigned int n) {
    return (owner.*enumElements)(out, n);
  }
};

// clang-format off
using Lists = testing::Types<
    List<BKQBackupJob, BKQMacNode, BKQNodeCol, &BKQBackupJob::addSourceNode,
         &BKQBackupJob::sourceNodeEntries, &BKQBackupJob::resetSourceNodes,
         &BKQBackupJob::enumSourceNodes, unsigned int, Copied::kTwice, Former::kDeleted>,
    List<BKQBackupJob, BKQDirFilter, BKQFilterCol, &BKQBackupJob::addFilter,
         &BKQBackupJob::filterEntries, &BKQBackupJob::resetFilters, &BKQBackupJob::enumFilters,
         unsigned int, Copied::kTwice, Former::kDeleted>,
    List<BKQCruiseMakeupJob, BKQMacNode, BKQNodeCol, &BKQBackupJob::addSourceNode,
         &BKQBackupJob::sourceNodeEntries, &BKQBackupJob::resetSourceNodes,
         &BKQBackupJob::enumSourceNodes, unsigned int, Copied::kTwice, Former::kDeleted>,
    List<BKQRestoreJob, BKQTapeNode, BKQTapeNodeCol, &BKQRestoreJob::addSourceNode,
         &BKQRestoreJob::sourceNodeEntries, &BKQRestoreJob::resetSourceNodes,
         &BKQRestoreJob::enumSourceNodes, unsigned short, Copied::kAsClones, Former::kUnlinked>,
    List<BKQRestoreJob, BKQRestoreNode, BKQRestoreNodeCol, &BKQRestoreJob::addDestNode,
         &BKQRestoreJob::destNodeEntries, &BKQRestoreJob::resetDestNodes,
         &BKQRestoreJob::enumDestNodes, unsigned short, Copied::kAsClones, Former::kUnlinked>,
    List<BKQDatabaseRestoreJob, BKQDirFilter, BKQFilterCol, &BKQRestoreJob::addFilter,
         &BKQRestoreJob::filterEntries, &BKQRestoreJob::resetFilters, &BKQRestoreJob::enumFilters,
         unsigned int, Copied::kAsClones, Former::kUnlinked>,
    List<BKQVerifyJob, BKQTapeNode, BKQTapeNodeCol, &BKQVerifyJob::addSourceNode,
         &BKQVerifyJob::sourceNodeEntries, &BKQVerifyJob::resetSourceNodes,
         &BKQVerifyJob::enumSourceNodes, unsigned short, Copied::kAsClones, Former::kUnlinked>,
    List<BKQCompareJob, BKQTapeNode, BKQTapeNodeCol, &BKQVerifyJob::addSourceNode,
         &BKQVerifyJob::sourceNodeEntries, &BKQVerifyJob::resetSourceNodes,
         &BKQVerifyJob::enumSourceNodes, unsigned short, Copied::kAsClones, Former::kUnlinked>,
    List<BKQMacNode, BKQDirFilter, BKQFilterCol, &BKQNode::addFilter, &BKQNode::filterEntries,
         &BKQNode::resetFilters, &BKQNode::enumFilters, unsigned int, Copied::kShared,
         Former::kUnlinked>,
    List<BKQTapeNode, BKQDirFilter, BKQFilterCol, &BKQNode::addFilter, &BKQNode::filterEntries,
         &BKQNode::resetFilters, &BKQNode::enumFilters, unsigned int, Copied::kShared,
         Former::kUnlinked>,
    List<BKQDBRestoreNode, BKQDirFilter, BKQFilterCol, &BKQNode::addFilter,
         &BKQNode::filterEntries, &BKQNode::resetFilters, &BKQNode::enumFilters, unsigned int,
         Copied::kShared, Former::kUnlinked>,
    List<BKQUnixNode, BKQDisk, BKQDiskCol, &BKQDiskNode::addDisk, &BKQDiskNode::diskEntries,
         &BKQDiskNode::resetDisks, &BKQDiskNode::enumDisks, unsigned int, Copied::kTwice,
         Former::kUnlinked>,
    List<BKQTapeNode, BKQTape, BKQTapeCol, &BKQTapeNode::addTape, &BKQTapeNode::tapeEntries,
         &BKQTapeNode::resetTapes, &BKQTapeNode::enumTapes, unsigned short, Copied::kTwice,
         Former::kUnlinked>,
    List<BKQDisk, BKQDiskItem, BKQDiskItemCol, &BKQDisk::addDiskItem, &BKQDisk::diskItemEntries,
         &BKQDisk::resetDiskItems, &BKQDisk::enumDiskItems, unsigned int, Copied::kTwice,
         Former::kDeleted>,
    List<BKQDisk, BKQDirFilter, BKQFilterCol, &BKQDisk::addFilter, &BKQDisk::filterEntries,
         &BKQDisk::resetFilters, &BKQDisk::enumFilters, unsigned int, Copied::kTwice,
         Former::kDeleted>,
    List<BKQTape, BKQTapeItem, BKQTapeItemCol, &BKQTape::addTapeItem, &BKQTape::tapeItemEntries,
         &BKQTape::resetTapeItems, &BKQTape::enumTapeItems, unsigned short, Copied::kTwice,
         Former::kDeleted>,
    List<BKQTape, BKQDirFilter, BKQFilterCol, &BKQTape::addFilter, &BKQTape::filterEntries,
         &BKQTape::resetFilters, &BKQTape::enumFilters, unsigned short, Copied::kTwice,
         Former::kDeleted>,
    List<BKQGroom, BKQDirFilter, BKQFilterCol, &BKQGroom::addFilter, &BKQGroom::filterEntries,
         &BKQGroom::resetFilters, &BKQGroom::enumFilters, unsigned int, Copied::kTwice,
         Former::kDeleted>,
    List<BKQJobMask, BKQJobUnit, BKQJobUnitCol, &BKQJobMask::addJobUnit,
         &BKQJobMask::jobUnitEntries, &BKQJobMask::resetJobUnits, &BKQJobMask::enumJobUnits,
         unsigned int, Copied::kTwice, Former::kDeleted>,
    List<BKQRotationSchedule, BKQExceptionDay, BKQExceptionDayCol,
         &BKQRotationSchedule::addExceptionDay, &BKQRotationSchedule::exceptionDayEntries,
         &BKQRotationSchedule::resetExceptionDays, &BKQRotationSchedule::enumExceptionDays,
         unsigned int, Copied::kTwice, Former::kDeleted>,
    List<BKQCruiseSchedule, BKQExceptionDay, BKQExceptionDayCol,
         &BKQRotationSchedule::addExceptionDay, &BKQRotationSchedule::exceptionDayEntries,
         &BKQRotationSchedule::resetExceptionDays, &BKQRotationSchedule::enumExceptionDays,
         unsigned int, Copied::kShared, Former::kUnlinked>>;
// clang-format on

template <class Element>
std::unique_ptr<Element> newCounted(int& destroyed) {
  if constexpr (std::is_default_constructible<Element>::value) {
    return std::make_unique<Counted<Element>>(destroyed);
  } else {
    return std::make_unique<Counted<Element>>(destroyed, "name");
  }
}

template <class L>
class ListTest : public testing::Test {
 protected:
  using Owner = typename L::Owner;
  using Element = typename L::Element;
  using Collection = typename L::Collection;

  ListTest() {
    for (std::unique_ptr<Element>& element : elements) element = newCounted<Element>(destroyed);
  }
  ~ListTest() override {
    owner.reset();
    EXPECT_EQ(destroyed, 0) << "elements deleted with their owner, or in a copy";
  }

  void add(unsigned int count) {
    for (unsigned int i = 0; i < count; ++i) {
      EXPECT_EQ(L::add(*owner, *elements[i]), elements[i].get());
    }
  }

  // A page of the list, which deletes itself.
  static std::unique_ptr<Collection> page(Owner& from, unsigned int n, unsigned int expected) {
    Collection* out = nullptr;
    EXPECT_EQ(L::enumerate(from, out, n), expected);
    std::unique_ptr<Collection> elements(out);
    EXPECT_NE(elements, nullptr);
    EXPECT_EQ(elements->entries(), expected);
    return elements;
  }
  static std::unique_ptr<Collection> all(Owner& from) {
    L::reset(from);
    return page(from, L::entries(from), L::entries(from));
  }

  // Deletes a copy and those of its elements that are not the source's.
  void deleteCopy(std::unique_ptr<Owner> copy) {
    std::set<RWCollectable*> own;
    const std::unique_ptr<Collection> copied = all(*copy);
    for (unsigned int i = 0; i < copied->entries(); ++i) own.insert(copied->at(i));
    for (const std::unique_ptr<Element>& element : elements) own.erase(element.get());
    copy.reset();
    for (RWCollectable* element : own) delete element;
  }

  // The copy of an owner of the first two elements.
  void expectCopyOfTwo(Owner& copy) {
    const unsigned int count = L::kCopied == Copied::kTwice ? 4 : 2;
    ASSERT_EQ(L::entries(copy), count);
    const std::unique_ptr<Collection> copied = all(copy);
    std::set<RWCollectable*> distinct;
    for (unsigned int i = 0; i < count; ++i) {
      distinct.insert(copied->at(i));
      const bool isShared = L::kCopied != Copied::kAsClones && i < 2;
      if (isShared) {
        EXPECT_EQ(copied->at(i), elements[i].get());
      } else {
        EXPECT_NE(dynamic_cast<Element*>(copied->at(i)), nullptr);
        EXPECT_NE(copied->at(i), elements[0].get());
        EXPECT_NE(copied->at(i), elements[1].get());
      }
    }
    EXPECT_EQ(distinct.size(), count);
  }

  int destroyed = 0;
  std::unique_ptr<Element> elements[5];
  std::unique_ptr<Owner> owner = newObject<Owner>();
};
TYPED_TEST_SUITE(ListTest, Lists, );

TYPED_TEST(ListTest, PagesThroughTheElements) {
  EXPECT_EQ(TypeParam::entries(*this->owner), 0u);
  this->add(5);
  EXPECT_EQ(TypeParam::entries(*this->owner), 5u);
  unsigned int next = 0;
  for (unsigned int expected : {2u, 2u, 1u, 0u}) {
    const auto page = this->page(*this->owner, 2, expected);
    for (unsigned int i = 0; i < expected; ++i) {
      EXPECT_EQ(page->at(i), this->elements[next++].get());
    }
  }
  EXPECT_EQ(TypeParam::entries(*this->owner), 5u);
}

TYPED_TEST(ListTest, ZeroIsAllThatRemain) {
  this->add(3);
  const unsigned int all = TypeParam::kZeroIsAll ? 0 : 3;
  this->page(*this->owner, all, 3);
  this->page(*this->owner, all, 0);
  TypeParam::reset(*this->owner);
  this->page(*this->owner, 2, 2);
  const auto rest = this->page(*this->owner, all, 1);
  EXPECT_EQ(rest->at(0), this->elements[2].get());
}

TYPED_TEST(ListTest, AddingMovesNoCursor) {
  this->add(1);
  this->page(*this->owner, 1, 1);
  EXPECT_EQ(TypeParam::add(*this->owner, *this->elements[4]), this->elements[4].get());
  const auto page = this->page(*this->owner, 9, 1);
  EXPECT_EQ(page->at(0), this->elements[4].get());
}

TYPED_TEST(ListTest, WithoutMemoryNothingIsHandedOut) {
  this->add(2);
  this->page(*this->owner, 1, 1);
  typename TypeParam::Collection unchanged;
  typename TypeParam::Collection* out = &unchanged;
  {
    const FailingNew noMemory(1);
    EXPECT_EQ(TypeParam::enumerate(*this->owner, out, 2), 0u);
  }
  EXPECT_EQ(out, nullptr);
  const auto page = this->page(*this->owner, 2, 1);
  EXPECT_EQ(page->at(0), this->elements[1].get());
}

// A cursor of 16 bits starts again after 65,536 elements; one of 32 bits goes on.
TYPED_TEST(ListTest, CursorMovesInItsOwnWidth) {
  this->add(1);
  for (unsigned int i = 0; i < 65536; ++i) TypeParam::add(*this->owner, *this->elements[1]);
  const auto page = this->page(*this->owner, 65537, 65537);
  EXPECT_EQ(page->at(0), this->elements[0].get());
  EXPECT_EQ(page->at(65535), this->elements[1].get());
  EXPECT_EQ(page->at(65536), this->elements[TypeParam::kIsCursorShort ? 0 : 1].get());
  this->page(*this->owner, 1, TypeParam::kIsCursorShort ? 1 : 0);
}

TYPED_TEST(ListTest, CopyHoldsWhatItsClassSays) {
  this->add(2);
  auto copy = newObject<typename TypeParam::Owner>();
  copy->mycopy(this->owner.get());
  this->expectCopyOfTwo(*copy);
  copy->mycopy(copy.get());
  copy->mycopy(static_cast<typename TypeParam::Owner*>(nullptr));
  this->expectCopyOfTwo(*copy);
  EXPECT_EQ(TypeParam::entries(*this->owner), 2u);
  this->deleteCopy(std::move(copy));
}

TYPED_TEST(ListTest, CopyHasTheCursor) {
  this->add(2);
  this->page(*this->owner, 1, 1);
  auto copy = newObject<typename TypeParam::Owner>();
  copy->mycopy(this->owner.get());
  // A rotation's copy alone keeps its own position, here the first.
  const bool hasTheCursor = !std::is_same<typename TypeParam::Owner, BKQRotationSchedule>::value;
  this->page(*copy, 9, TypeParam::entries(*copy) - (hasTheCursor ? 1 : 0));
  this->deleteCopy(std::move(copy));
}

TYPED_TEST(ListTest, CopyingReplacesTheFormerElements) {
  this->add(2);
  int deleted = 0;
  std::unique_ptr<typename TypeParam::Element> former[2];
  for (auto& element : former) element = newCounted<typename TypeParam::Element>(deleted);
  auto copy = newObject<typename TypeParam::Owner>();
  TypeParam::add(*copy, *former[0]);
  TypeParam::add(*copy, *this->elements[1]);  // the source holds it, too
  TypeParam::add(*copy, *former[1]);
  TypeParam::add(*copy, *former[0]);  // listed twice, deleted once
  copy->mycopy(this->owner.get());
  if (TypeParam::kFormer == Former::kDeleted) {
    EXPECT_EQ(deleted, 2);
    for (auto& element : former) static_cast<void>(element.release());
  } else {
    EXPECT_EQ(deleted, 0);
  }
  this->expectCopyOfTwo(*copy);
  this->deleteCopy(std::move(copy));
}

TYPED_TEST(ListTest, CopyingTwiceLeavesTheSourceAsItWas) {
  this->add(2);
  auto copy = newObject<typename TypeParam::Owner>();
  copy->mycopy(this->owner.get());
  std::set<RWCollectable*> first;
  const auto page = this->all(*copy);
  for (unsigned int i = 0; i < page->entries(); ++i) first.insert(page->at(i));
  for (const auto& element : this->elements) first.erase(element.get());
  copy->mycopy(this->owner.get());
  // The first clones were deleted, or else are the test's.
  if (TypeParam::kFormer == Former::kUnlinked) {
    for (RWCollectable* element : first) delete element;
  }
  this->expectCopyOfTwo(*copy);
  const auto source = this->all(*this->owner);
  ASSERT_EQ(source->entries(), 2u);
  EXPECT_EQ(source->at(0), this->elements[0].get());
  EXPECT_EQ(source->at(1), this->elements[1].get());
  this->deleteCopy(std::move(copy));
}

TYPED_TEST(ListTest, CopyWithoutMemoryForClones) {
  this->add(2);
  auto copy = newObject<typename TypeParam::Owner>();
  {
    const FailingNew noMemory(1);
    copy->mycopy(this->owner.get());
  }
  const unsigned int shared = TypeParam::kCopied == Copied::kAsClones ? 0 : 2;
  EXPECT_EQ(TypeParam::entries(*copy), shared);
  this->deleteCopy(std::move(copy));
}

// Each of the former elements is looked up among the source's; compared one by one they would keep
// this test busy for a minute.
TEST(ListCopy, TakesTimeInProportionToLongLists) {
  constexpr unsigned int kCount = 200000;
  auto* filter = new BKQDirFilter;
  BKQGroom source;
  BKQGroom target;
  for (unsigned int i = 0; i < kCount; ++i) {
    source.addFilter(*filter);
    target.addFilter(*new BKQDirFilter);
  }
  target.mycopy(&source);
  EXPECT_EQ(target.filterEntries(), 2 * kCount);
  BKQGroom none;
  target.mycopy(&none);  // deletes the clones and the filter, which no source holds any more
  EXPECT_EQ(target.filterEntries(), 0u);
}

}  // namespace
}  // namespace bkoq::test
