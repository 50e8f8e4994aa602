// What a starter file shows as a comment is what the attribute is by itself.

#include "tools/starter.h"

#include <gtest/gtest.h>

#include <cstddef>
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

TEST_P(Starters, AllObjectsAreThere) {
  const std::string all = starterFile(*jobs().find(GetParam()), true);
  for (const char* key : {"\"faxNumber\"", "\"execTime\"", "\"hostName\"", "\"queueName\""}) {
    EXPECT_NE(all.find(key), std::string::npos) << key;
  }
}

}  // namespace
}  // namespace bkoq::tool
