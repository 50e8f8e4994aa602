#include "kit/nearest.h"

#include <gtest/gtest.h>

#include <string>

namespace bkoq::test {
namespace {

TEST(Nearest, IsFewStepsAway) {
  const std::string forty(40, 'a');
  const struct {
    const char* what;
    std::string word;
    std::string known;
    bool isNear;
  } rows[] = {
      {"itself", "owner", "owner", true},
      {"in capitals", "OwNeR", "oWnEr", true},
      {"one more at the start", "xhost", "host", true},
      {"one more at the end", "hostx", "host", true},
      {"one less at the start", "ost", "host", true},
      {"one less at the end", "hos", "host", true},
      {"another one", "hxst", "host", true},
      {"neighbours swapped at the start", "ohst", "host", true},
      {"neighbours swapped at the end", "hots", "host", true},
      {"two others", "hxxt", "host", false},
      {"one moved in front of its neighbour, another one behind it", "abxx", "caxx", false},
      {"one moved behind its neighbour, another one in front of it", "abxx", "bcxx", false},
      {"two steps of five letters", "ownxx", "owner", false},
      {"two steps of six letters", "ownexx", "owners", true},
      {"three steps of six letters", "ownxxx", "owners", false},
      {"three steps of nine letters", "abcdefxxx", "abcdefghi", true},
      {"one of two letters", "ix", "id", true},
      {"one more of two letters", "idx", "id", true},
      {"two more", "idxx", "id", false},
      {"two more that are known", "id", "idxx", false},
      {"twice", "hoshos", "hos", false},
      {"twice with another between", "hosxhos", "hos", false},
      {"as long as a word can be", forty, forty + "a", true},
      {"longer", forty + "a", forty + "a", false},
      {"nothing", "", "a", true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(kit::nearestOf(row.word, {row.known}), row.isNear ? 0u : 1u) << row.what;
  }
}

TEST(Nearest, IsTheFirstOfTheNearest) {
  EXPECT_EQ(kit::nearestOf("owners", {"host", "ownexx", "owner", "ownerz", "owners2"}), 2u);
  EXPECT_EQ(kit::nearestOf("owners", {"ownexx", "owners"}), 1u);
  EXPECT_EQ(kit::nearestOf("zzz", {"host", "owner"}), 2u) << "none";
  EXPECT_EQ(kit::nearestOf("zzz", {}), 0u) << "none";
}

}  // namespace
}  // namespace bkoq::test
