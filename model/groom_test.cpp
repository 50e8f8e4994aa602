#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/attributes.h"
#include "tests/support/counted.h"
#include "tests/support/failing_new.h"

namespace bkoq::test {
namespace {

TEST(Groom, CloneHoldsEachFilterTwice) {
  BKQDirFilter first(BKQFilter::Include, "a");
  BKQDirFilter second(BKQFilter::Include, "b");
  BKQGroom groom;
  EXPECT_EQ(groom.addFilter(first), &first);
  groom.addFilter(second);
  groom.setMonths(6);
  std::unique_ptr<BKQGroom> clone(groom.clone());
  EXPECT_EQ(clone->getMonths(), 6);
  EXPECT_EQ(clone->filterEntries(), 4u);
  BKQFilterCol* filters = nullptr;
  EXPECT_EQ(clone->enumFilters(filters, 0), 4u);
  EXPECT_EQ(filters->at(0), &first);
  EXPECT_EQ(filters->at(1), &second);
  EXPECT_STREQ(static_cast<BKQDirFilter*>(filters->at(2))->getFilterString(), "a");
  EXPECT_STREQ(static_cast<BKQDirFilter*>(filters->at(3))->getFilterString(), "b");
  EXPECT_NE(filters->at(2), &first);
  delete filters->at(2);
  delete filters->at(3);
  delete filters;
}

TEST(Groom, CopyingTwiceKeepsTheSourcesFilters) {
  int destroyed = 0;
  Counted<BKQDirFilter> filter(destroyed);
  BKQGroom source;
  source.addFilter(filter);
  BKQGroom target;
  target.addFilter(*new Counted<BKQFileFilter>(destroyed));
  target.mycopy(&source);  // the target's own filter goes
  EXPECT_EQ(destroyed, 1);
  target.mycopy(&source);  // the first clone goes, the source's filter stays
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(target.filterEntries(), 2u);
  target.mycopy(&target);
  EXPECT_EQ(target.filterEntries(), 2u);
  BKQFilterCol* filters = nullptr;
  target.enumFilters(filters, 0);
  EXPECT_EQ(filters->at(0), &filter);
  delete filters->at(1);
  delete filters;
}

TEST(Groom, WithoutMemoryThereIsNoClone) {
  BKQGroom groom;
  const FailingNew noMemory(1);
  EXPECT_EQ(groom.clone(), nullptr);
}

}  // namespace
}  // namespace bkoq::test
