#include "rw/slistcol.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "rw/collstr.h"

namespace {

using Elements = std::vector<RWCollectable*>;

Elements elementsOf(const RWSlistCollectables& list) {
  Elements elements;
  for (unsigned int i = 0; i < list.entries(); ++i) elements.push_back(list.at(i));
  return elements;
}

// Equal are texts that are equal.
class List : public testing::Test {
 protected:
  RWCollectableString a_{"a"}, b_{"b"}, c_{"c"}, otherB_{"b"}, absent_{"absent"};
  RWSlistCollectables list_;
};

// Counts its destructions, and looks at a list during each.
class Watched : public RWCollectable {
 public:
  Watched(unsigned int& destroyed, const RWSlistCollectables& list)
      : destroyed_(destroyed), list_(list) {}
  ~Watched() override {
    ++destroyed_;
    EXPECT_EQ(0U, list_.entries());
    EXPECT_EQ(nullptr, list_.first());
  }

 private:
  unsigned int& destroyed_;
  const RWSlistCollectables& list_;
};

TEST_F(List, IsEmptyAtFirst) {
  EXPECT_EQ(0U, list_.entries());
  EXPECT_TRUE(list_.isEmpty());
  EXPECT_EQ(nullptr, list_.first());
  EXPECT_EQ(nullptr, list_.last());
  EXPECT_EQ(nullptr, list_.at(0));
  EXPECT_EQ(nullptr, list_.remove(&a_));
  list_.clear();
  list_.clearAndDestroy();
  list_.removeAndDestroy(&a_);
  EXPECT_TRUE(list_.isEmpty());
}

TEST_F(List, AddsAtBothEnds) {
  EXPECT_EQ(&b_, list_.insert(&b_));
  EXPECT_EQ(&c_, list_.append(&c_));
  EXPECT_EQ(&a_, list_.prepend(&a_));
  EXPECT_EQ((Elements{&a_, &b_, &c_}), elementsOf(list_));
  EXPECT_FALSE(list_.isEmpty());
  EXPECT_EQ(&a_, list_.first());
  EXPECT_EQ(&c_, list_.last());
  EXPECT_EQ(&b_, list_.at(1));
  EXPECT_EQ(nullptr, list_.at(3));
  EXPECT_EQ(nullptr, list_.at(RW_NPOS));
}

TEST_F(List, AddsAtAPosition) {
  EXPECT_EQ(nullptr, list_.insertAt(1, &a_));
  EXPECT_EQ(&c_, list_.insertAt(0, &c_));
  EXPECT_EQ(&a_, list_.insertAt(0, &a_));
  EXPECT_EQ(&b_, list_.insertAt(1, &b_));
  EXPECT_EQ(&a_, list_.insertAt(3, &a_));
  EXPECT_EQ(nullptr, list_.insertAt(5, &a_));
  EXPECT_EQ(nullptr, list_.insertAt(RW_NPOS, &a_));
  EXPECT_EQ((Elements{&a_, &b_, &c_, &a_}), elementsOf(list_));
}

TEST_F(List, AddsBehindAPosition) {
  EXPECT_EQ(nullptr, list_.insertAfter(0, &a_));
  EXPECT_EQ(&b_, list_.insertAfter(-1, &b_));
  EXPECT_EQ(&a_, list_.insertAfter(-1, &a_));
  EXPECT_EQ(&c_, list_.insertAfter(1, &c_));
  EXPECT_EQ(nullptr, list_.insertAfter(3, &c_));
  EXPECT_EQ(nullptr, list_.insertAfter(-2, &c_));
  EXPECT_EQ((Elements{&a_, &b_, &c_}), elementsOf(list_));
}

TEST_F(List, HoldsNoNull) {
  EXPECT_EQ(nullptr, list_.insert(nullptr));
  EXPECT_EQ(nullptr, list_.append(nullptr));
  EXPECT_EQ(nullptr, list_.prepend(nullptr));
  EXPECT_EQ(nullptr, list_.insertAt(0, nullptr));
  EXPECT_EQ(nullptr, list_.insertAfter(-1, nullptr));
  EXPECT_EQ(0U, list_.entries());

  list_.insert(&a_);
  EXPECT_FALSE(list_.contains(nullptr));
  EXPECT_EQ(nullptr, list_.find(nullptr));
  EXPECT_EQ(RW_NPOS, list_.index(nullptr));
  EXPECT_EQ(0U, list_.occurrencesOf(nullptr));
  EXPECT_EQ(nullptr, list_.remove(nullptr));
  list_.removeAndDestroy(nullptr);
  EXPECT_EQ((Elements{&a_}), elementsOf(list_));
}

TEST_F(List, FindsTheFirstEqualElement) {
  for (RWCollectable* element : Elements{&a_, &b_, &otherB_, &b_}) list_.insert(element);
  EXPECT_TRUE(list_.contains(&otherB_));
  EXPECT_EQ(&b_, list_.find(&otherB_));
  EXPECT_EQ(1U, list_.index(&otherB_));
  EXPECT_EQ(3U, list_.occurrencesOf(&otherB_));
  EXPECT_EQ(1U, list_.occurrencesOf(&a_));

  EXPECT_FALSE(list_.contains(&absent_));
  EXPECT_EQ(nullptr, list_.find(&absent_));
  EXPECT_EQ(RW_NPOS, list_.index(&absent_));
  EXPECT_EQ(0U, list_.occurrencesOf(&absent_));
}

TEST_F(List, AsksTheElementWhetherItIsEqual) {
  struct EqualToAll : RWCollectable {
    RWBoolean isEqual(const RWCollectable*) const override { return 7; }
  } anything;
  list_.insert(&a_);
  EXPECT_FALSE(list_.contains(&anything));
  list_.insert(&anything);
  EXPECT_EQ(1U, list_.index(&absent_));
}

TEST_F(List, RemovesTheFirstEqualElement) {
  for (RWCollectable* element : Elements{&a_, &b_, &c_, &otherB_}) list_.insert(element);
  EXPECT_EQ(&b_, list_.remove(&otherB_));
  EXPECT_EQ((Elements{&a_, &c_, &otherB_}), elementsOf(list_));
  EXPECT_EQ(1U, list_.occurrencesOf(&otherB_)) << "what is behind the last one counts no more";
  EXPECT_EQ(nullptr, list_.remove(&absent_));
  EXPECT_EQ(&otherB_, list_.remove(&b_));
  EXPECT_EQ(&a_, list_.remove(&a_));
  EXPECT_EQ((Elements{&c_}), elementsOf(list_));
  EXPECT_EQ(&c_, list_.last());
}

TEST_F(List, RemovesAndDestroysTheFirstEqualElement) {
  unsigned int destroyed = 0;
  const RWSlistCollectables watched;
  RWCollectable* element = new Watched(destroyed, watched);
  list_.insert(&a_);
  list_.insert(element);
  list_.removeAndDestroy(&absent_);
  EXPECT_EQ(0U, destroyed);
  // The argument is the element itself.
  list_.removeAndDestroy(element);
  EXPECT_EQ(1U, destroyed);
  EXPECT_EQ((Elements{&a_}), elementsOf(list_));
}

TEST_F(List, ClearsWithoutDestroying) {
  unsigned int destroyed = 0;
  const RWSlistCollectables watched;
  const std::unique_ptr<RWCollectable> element(new Watched(destroyed, watched));
  list_.insert(element.get());
  list_.clear();
  EXPECT_TRUE(list_.isEmpty());
  {
    RWSlistCollectables scoped;
    scoped.insert(element.get());
  }
  EXPECT_EQ(0U, destroyed);
  // and is as good as new
  EXPECT_EQ(&a_, list_.insert(&a_));
  EXPECT_EQ((Elements{&a_}), elementsOf(list_));
}

TEST_F(List, ClearsAndDestroysEachElementOnce) {
  unsigned int destroyed = 0;
  RWCollectable* first = new Watched(destroyed, list_);
  RWCollectable* second = new Watched(destroyed, list_);
  RWCollectable* third = new Watched(destroyed, list_);
  for (RWCollectable* element : Elements{second, first, second, third, first, second}) {
    list_.insert(element);
  }
  list_.clearAndDestroy();
  EXPECT_EQ(3U, destroyed);
  EXPECT_TRUE(list_.isEmpty());
}

TEST_F(List, IsDestroyedThroughTheBase) {
  RWCollectable* list = new RWSlistCollectables(list_);
  delete list;
}

TEST_F(List, CopiesAddressesNotElements) {
  list_.insert(&a_);
  list_.insert(&b_);

  RWSlistCollectables copy(list_);
  EXPECT_EQ((Elements{&a_, &b_}), elementsOf(copy));
  copy.insert(&c_);
  EXPECT_EQ((Elements{&a_, &b_}), elementsOf(list_));

  list_ = copy;
  EXPECT_EQ((Elements{&a_, &b_, &c_}), elementsOf(list_));

  RWSlistCollectables shorter;
  shorter.insert(&c_);
  list_.RWSlist::operator=(shorter);
  EXPECT_EQ((Elements{&c_}), elementsOf(list_));
  EXPECT_EQ((Elements{&a_, &b_, &c_}), elementsOf(copy));

  const Elements many{&a_, &b_, &c_, &a_, &b_, &c_};
  RWSlistCollectables longer;
  for (RWCollectable* element : many) longer.insert(element);
  shorter = longer;
  EXPECT_EQ(many, elementsOf(shorter));

  const RWSlistCollectables& same = list_;
  list_ = same;
  EXPECT_EQ((Elements{&c_}), elementsOf(list_));

  list_ = RWSlistCollectables();
  EXPECT_TRUE(list_.isEmpty());
  list_.insert(&a_);
  EXPECT_EQ((Elements{&a_}), elementsOf(list_));
}

TEST_F(List, AppliesAFunctionInOrder) {
  for (RWCollectable* element : Elements{&a_, &b_, &a_}) list_.insert(element);
  Elements seen;
  list_.apply(nullptr, nullptr);
  list_.apply(
      [](RWCollectable* element, void* data) { static_cast<Elements*>(data)->push_back(element); },
      &seen);
  EXPECT_EQ((Elements{&a_, &b_, &a_}), seen);
}

TEST_F(List, IsWalkedToTheEnd) {
  RWSlistCollectablesIterator nothing(list_);
  EXPECT_EQ(nullptr, nothing());

  list_.insert(&a_);
  list_.insert(&b_);
  RWSlistCollectablesIterator next(list_);
  EXPECT_EQ(&a_, next());
  EXPECT_EQ(&b_, next());
  EXPECT_EQ(nullptr, next());
  EXPECT_EQ(nullptr, next());

  list_.append(&c_);
  EXPECT_EQ(&c_, next()) << "appended during the walk";
  list_.clear();
  EXPECT_EQ(nullptr, next());
}

// Quadratic cost would take longer than a test may.
TEST_F(List, TakesTimeInProportionToItsLength) {
  constexpr unsigned int kMany = 1000000;
  for (unsigned int i = 0; i < kMany; ++i) {
    auto* element = new RWCollectable;
    ASSERT_EQ(element, list_.insert(element));
  }
  EXPECT_EQ(kMany, list_.entries());
  for (unsigned int i = 0; i < kMany; ++i) ASSERT_NE(nullptr, list_.at(i));
  list_.clearAndDestroy();
}

}  // namespace
