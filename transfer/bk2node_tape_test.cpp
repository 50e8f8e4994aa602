// Tape nodes as records, and the tapes that a form selects.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/catalog/types.h"
#include "tests/support/block_size.h"
#include "tests/support/foreign_filter.h"
#include "tests/support/free_records.h"
#include "tests/support/name_list.h"
#include "tests/support/node_conversion.h"
#include "tests/support/rows.h"

namespace bkoq::test {
namespace {

template <class L>
class TapeNodeConversion : public NodeConversion<L> {};
TYPED_TEST_SUITE(TapeNodeConversion, Layouts, );

TYPED_TEST(TapeNodeConversion, TapeNodeCarriesTypeThree) {
  using L = TypeParam;
  BKQTapeNode node;
  ASSERT_EQ(this->convert(node), 1);
  this->expectNode("tape node", {
                                    number(0, 2, 3),       // usNodeType, not 24
                                    number(2, 2, 6),       // usNodeOS
                                    text(8, "localhost"),  // pszNodeName
                                    number(32, 2, 1),      // usDeviceType
                                });
  EXPECT_EQ(L::currentNodeType(), 3u);
}

TYPED_TEST(TapeNodeConversion, TapesAreSelectedByNameAndSession) {
  BKQTapeNode node("library");
  SessionTape a1("A", 1);
  SessionTape a2("A", 2);
  SessionTape b1("B", 1);
  SessionTape a0("A", 0);
  node.addTape(a1);
  node.addTape(a2);
  node.addTape(b1);
  node.addTape(a0);
  const struct {
    const char* name;
    unsigned short session;
    std::vector<std::string> selected;  // name and session
  } cases[] = {
      {"", 0, {"A1", "A2", "B1", "A0"}},
      {"A", 0, {"A1", "A2", "A0"}},
      {"", 1, {"A1", "B1"}},
      {"A", 2, {"A2"}},
      {"B", 2, {}},
      {"a", 0, {}},
      {"AA", 0, {}},
      {"", 9, {}},
      {nullptr, 0, {"A1", "A2", "B1", "A0"}},
  };
  unsigned int index = 0;
  for (const auto& c : cases) {
    const std::string what = "case " + std::to_string(index++);
    ASSERT_EQ(this->convert(node, c.name, c.session), 1) << what;
    std::vector<std::string> selected;
    for (unsigned int i = 0; i < this->record.ulMediaCount; ++i) {
      selected.push_back(this->tape(i).pszTapeName + std::to_string(this->tape(i).usSessionNumber));
    }
    EXPECT_EQ(selected, c.selected) << what;
    if (c.selected.empty()) {
      EXPECT_EQ(this->record.pMedia, nullptr) << what;
    } else {
      expectBlockSize(this->record.pMedia, 72 * c.selected.size());
    }
  }
  ASSERT_EQ(this->convert(node), 1);
  EXPECT_EQ(this->tapeNames(), (std::vector<std::string>{"A", "A", "B", "A"}));
  ASSERT_EQ(this->convert(static_cast<BKQNode&>(node)), 1);
  EXPECT_EQ(this->record.ulMediaCount, 4u);
  freeTapes(static_cast<typename TypeParam::Tape*>(this->record.pMedia), 4);
  this->record.pMedia = nullptr;
}

TYPED_TEST(TapeNodeConversion, WalkOutlastsTheTapeCursor) {
  // The cursor has 16 bits; the walk visits every tape once nevertheless.
  BKQTapeNode node("library");
  SessionTape other("A", 1);
  SessionTape wanted("B", 1);
  for (int i = 0; i < 65536; ++i) node.addTape(other);
  node.addTape(wanted);
  ASSERT_EQ(this->convert(node, "B", 0), 1);
  EXPECT_EQ(this->tapeNames(), (std::vector<std::string>{"B"}));
}

TYPED_TEST(TapeNodeConversion, TapeNodeFieldsAreTheBaseNodes) {
  BKQTapeNode node("library");
  node.setUserName("u");
  node.setPassword("p");
  node.setNodeOSver("1");
  node.setNodeAddress("A");
  node.setNodeDomain("D");
  node.setOptions(4);
  BKQDirFilter filter(BKQFilter::Include, "/");
  node.addFilter(filter);
  ASSERT_EQ(this->convert(node), 1);
  std::vector<Row> rows = {number(0, 2, 3), number(2, 2, 6),  text(4, "1"),    text(8, "library"),
                           text(12, "A"),   text(16, "u"),    text(20, "p"),   number(24, 4, 1),
                           block(28),       number(32, 2, 1), number(56, 4, 4)};
  if (!TypeParam::kPrevious) rows.push_back(text(84, "D"));
  this->expectNode("tape node", rows);
}

TYPED_TEST(TapeNodeConversion, ATapeNodeContinuesARecordInUse) {
  BKQTapeNode node("n");
  BKQDirFilter filter(BKQFilter::Include, "/a");
  SessionTape first("A", 1);
  SessionTape second("B", 1);
  node.addFilter(filter);
  node.addTape(first);
  node.addTape(second);
  ASSERT_EQ(this->convert(node), 1);
  free(this->record.pszNodeName);
  void* rec = &this->record;
  ASSERT_EQ(TypeParam::convert(node, rec, "B", 0), 1);
  this->expectNode("n", {number(0, 2, 3), number(2, 2, 6), text(8, "n"), number(24, 4, 2),
                         block(28), number(32, 2, 1), number(36, 4, 3), block(40)});
  EXPECT_EQ(this->tapeNames(), (std::vector<std::string>{"A", "B", "B"}));
  EXPECT_STREQ(this->record.pFilters[1].pszFilter, "/a");
}

}  // namespace
}  // namespace bkoq::test
