// What a starter file shows as a comment is what the attribute is by itself.

#include "tools/starter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tools/flattening.h"
#include "tools/job_file.h"
#include "tools/output.h"
#include "tools/problems.h"

namespace bkoq::tool {
namespace {

struct Trees {
  OwnedTree current;
  OwnedTree previous;
};

Trees flattenText(const std::string& text) {
  Problems problems;
  const LoadedJob loaded = readJob(text, problems);
  for (const Problem& problem : problems.sorted()) ADD_FAILURE() << lineOf(problem, "job");
  if (!problems.empty()) return {};
  return {std::move(flatten(*loaded.job, Selection(), BKOQ_LAYOUT_CURRENT).tree),
          std::move(flatten(*loaded.job, Selection(), BKOQ_LAYOUT_PREVIOUS).tree)};
}

std::string differences(const OwnedTree& first, const OwnedTree& second) {
  std::string text;
  bkoqPrintDifferences(first.root(), first.layout(), second.root(), second.layout(), nullptr,
                       stringSink, &text, nullptr);
  return text;
}

void expectNoLineChangesAnything(const std::string& starter) {
  const Trees plain = flattenText(starter);
  ASSERT_NE(plain.current.root(), nullptr);
  std::size_t lines = 0;
  for (std::size_t at = starter.find("// \""); at != std::string::npos;
       at = starter.find("// \"", at + 1)) {
    const std::size_t begin = starter.rfind('\n', at) + 1;
    if (starter.find_first_not_of(' ', begin) != at) continue;  // a note after an attribute
    ++lines;
    std::string with = starter;
    with.erase(at, 3);
    const std::string line = with.substr(begin, with.find('\n', begin) - begin);
    const Trees taken = flattenText(with);
    ASSERT_NE(taken.current.root(), nullptr) << line;
    EXPECT_EQ(differences(plain.current, taken.current), "") << line;
    EXPECT_EQ(differences(plain.previous, taken.previous), "") << line;
  }
  EXPECT_GT(lines, 20u);
}

class Starters : public testing::TestWithParam<std::string> {};

std::vector<std::string> kinds() {
  std::vector<std::string> kinds;
  for (const ObjectClass& kind : jobs().classes) kinds.push_back(kind.kind);
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Of, Starters, testing::ValuesIn(kinds()),
                         [](const testing::TestParamInfo<std::string>& info) {
                           return info.param;
                         });

TEST_P(Starters, NoLineChangesAnything) {
  expectNoLineChangesAnything(starterFile(*jobs().find(GetParam()), false));
}

TEST_P(Starters, NoLineOfAllObjectsChangesAnything) {
  expectNoLineChangesAnything(starterFile(*jobs().find(GetParam()), true));
}

// Every attribute that an object of that class, or one within it, can have.
void collectKeys(const ObjectClass& own, std::set<const Family*>& met,
                 std::set<std::string>& keys) {
  for (const Attribute& attribute : own.attributes) {
    keys.insert(attribute.key);
    if (!attribute.family || !met.insert(&attribute.family()).second) continue;
    for (const ObjectClass& part : attribute.family().classes) {
      if (!part.kind.empty()) keys.insert("kind\": \"" + part.kind);
      collectKeys(part, met, keys);
    }
  }
}

TEST_P(Starters, EveryAttributeOfEveryObjectIsThere) {
  const ObjectClass& kind = *jobs().find(GetParam());
  std::set<const Family*> met;
  std::set<std::string> keys;
  collectKeys(kind, met, keys);
  const std::string all = starterFile(kind, true);
  for (const std::string& key : keys)
    EXPECT_NE(all.find('"' + key + '"'), std::string::npos) << key;
}

// The file with one of its alternatives in the place of the object before them; empty when it has
// not as many.
std::string withAlternative(const std::string& starter, std::size_t wanted) {
  std::istringstream lines(starter);
  std::vector<std::string> taken;
  std::map<std::string, std::size_t> begins;  // of the last object of each indent
  std::size_t met = 0;
  for (std::string line; std::getline(lines, line);) {
    const std::string indent(line.find_first_not_of(' '), ' ');
    if (line == indent + "// or") {
      if (met++ == wanted) taken.resize(begins[indent]);
    } else if (met == wanted + 1 && line.compare(indent.size(), 5, "//   ") == 0) {
      taken.push_back(indent + line.substr(indent.size() + 5));
    } else {
      if (line.compare(indent.size(), 1, "\"") == 0 && line.back() == '{') {
        begins[indent] = taken.size();
      }
      taken.push_back(line);
    }
  }
  if (met <= wanted) return "";
  std::string text;
  for (const std::string& each : taken) text += each + '\n';
  return text;
}

TEST_P(Starters, EachAlternativeCanTakeThePlaceOfTheFirstKind) {
  const std::string all = starterFile(*jobs().find(GetParam()), true);
  std::size_t alternatives = 0;
  for (std::string text; !(text = withAlternative(all, alternatives)).empty(); ++alternatives) {
    EXPECT_NE(flattenText(text).current.root(), nullptr) << text;
  }
  EXPECT_GT(alternatives, 0u);
}

// Of what stands there, comments apart: each level is indented by two columns more.
void expectIndented(const std::string& starter) {
  std::istringstream lines(starter);
  std::size_t depth = 0;
  std::size_t deepest = 0;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t indent = line.find_first_not_of(' ');
    if (line.compare(indent, 2, "//") == 0) continue;
    if (line[indent] == '}' || line[indent] == ']') --depth;
    EXPECT_EQ(indent, 2 * depth) << line;
    if (line.back() == '{' || line.back() == '[') deepest = std::max(deepest, ++depth);
  }
  EXPECT_EQ(depth, 0u);
  EXPECT_GT(deepest, 1u);
}

TEST_P(Starters, AreIndentedByTheirDepth) {
  expectIndented(starterFile(*jobs().find(GetParam()), true));
}

// Names differ, as those of the nodes of one job should.
TEST(Starter, EachMachineIsNamedAfterItsKind) {
  const std::string all = starterFile(*jobs().find("backup"), true);
  for (const ObjectClass& machine : machines().classes) {
    const std::string name = "\"nodeName\": \"" + machine.kind + "1\"";
    const std::size_t at = all.find(name);
    EXPECT_NE(at, std::string::npos) << name;
    EXPECT_EQ(all.find(name, at + 1), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace bkoq::tool
