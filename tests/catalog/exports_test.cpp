// The catalogue against what the library exports: a setter, a class, a kind or a form of a
// conversion that the library has and the catalogue has not is named here.

#include <cxxabi.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/catalog/attributes.h"
#include "tests/catalog/classes.h"
#include "tests/catalog/forms.h"
#include "tests/catalog/kinds.h"
#include "tests/catalog/layouts.h"

namespace bkoq::test {
namespace {

using Names = std::set<std::string>;

// The symbols of the library, as they read in a source.
const std::vector<std::string>& exported() {
  static const std::vector<std::string> symbols = [] {
    std::vector<std::string> read;
    std::ifstream list(BKOQ_EXPORTS);
    for (std::string symbol; std::getline(list, symbol);) {
      int status = 0;
      char* name = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status);
      read.emplace_back(status == 0 ? name : symbol);
      std::free(name);
    }
    return read;
  }();
  return symbols;
}

// What the parts in parentheses of all symbols that match give, joined.
Names exportedAs(const char* pattern, const char* joined) {
  Names found;
  const std::regex expression(pattern);
  for (const std::string& symbol : exported()) {
    std::smatch match;
    if (std::regex_match(symbol, match, expression)) found.insert(match.format(joined));
  }
  EXPECT_FALSE(found.empty()) << BKOQ_EXPORTS << " has no " << pattern;
  return found;
}

void expectSame(const Names& ofLibrary, const Names& ofCatalogue, const char* file) {
  for (const std::string& name : ofLibrary) {
    EXPECT_EQ(ofCatalogue.count(name), 1u) << name << " is not in " << file;
  }
  for (const std::string& name : ofCatalogue) {
    EXPECT_EQ(ofLibrary.count(name), 1u) << name << " is in " << file << ", not in the library";
  }
}

TEST(Catalogue, HasEverySetter) {
  Names setters;
#define BKOQ_ADD(class_, member, getter, setter, ...) setters.insert(#class_ "::" #setter);
  BKOQ_ATTRIBUTES(BKOQ_ADD, BKOQ_ADD)
#undef BKOQ_ADD
#define BKOQ_ADD(class_, setter, key) setters.insert(#class_ "::" #setter);
  BKOQ_OTHER_SETTERS(BKOQ_ADD)
#undef BKOQ_ADD
  expectSame(exportedAs(R"((BKQ\w+)::((?:set|add)\w+|runJobNow|doMakeup)\(.*\))", "$1::$2"),
             setters, "tests/catalog/attributes.h");
}

TEST(Catalogue, HasEveryClass) {
  Names classes;
  for (const ClassLine& line : kClasses) classes.insert(line.name);
  expectSame(exportedAs(R"((BKQ\w+)::(?:BKQ\w+|~BKQ\w+|mycopy)\(.*\))", "$1"), classes,
             "tests/catalog/classes.h");
}

TEST(Catalogue, HasEveryKind) {
  Names jobs;
  for (const JobKindLine& line : kJobKinds) jobs.insert(line.className);
  Names nodes;
  for (const NodeKindLine& line : kNodeKinds) nodes.insert(line.className);
  eachConcreteClass([&](auto type) {
    using Object = typename decltype(type)::Of;
    const char* name = nameOfClass<Object>();
    EXPECT_EQ(jobs.count(name) == 1, (std::is_base_of_v<BKQJob, Object>))
        << name << ": the kinds of job are BKOQ_JOB_KINDS in tests/catalog/kinds.h";
    EXPECT_EQ(nodes.count(name) == 1, (std::is_base_of_v<BKQNode, Object>))
        << name << ": the kinds of node are BKOQ_NODE_KINDS in tests/catalog/kinds.h";
  });
}

TEST(Catalogue, HasEveryFormOfTheConversions) {
  Names forms;
  for (const FormLine& line : kForms) {
    for (const char* suffix : {CurrentLayout::kSuffix, PreviousLayout::kSuffix}) {
      forms.insert(std::string(line.className) + "::convertToBK2" + suffix + "(void*&" +
                   line.parameters + ")");
    }
  }
  expectSame(exportedAs(R"((BKQ\w*(?:Job|Node)::convertToBK2\w*\(.*\)))", "$1"), forms,
             "tests/catalog/forms.h");
}

TEST(Catalogue, HasEveryStateVariable) {
  Names variables;
#define BKOQ_ADD(type, name, variable) \
  variables.insert(#variable);         \
  variables.insert(#variable "_OLD");
  BKOQ_STATE_VARIABLES(BKOQ_ADD)
#undef BKOQ_ADD
  expectSame(exportedAs("([A-Z0-9_]+)", "$1"), variables, "tests/catalog/layouts.h");
}

// What answers for an object says what the table of kinds says.
TEST(Catalogue, KindsAnswerTheirCodes) {
  for (const JobKindLine& line : kJobKinds) {
    const std::unique_ptr<BKQJob> job(line.make("name"));
    EXPECT_EQ(job->jobType(), line.code) << line.className;
    EXPECT_STREQ(job->getJobName(), line.names == JobNames::kNone ? "testjob" : "name");
  }
  for (const NodeKindLine& line : kNodeKinds) {
    const std::unique_ptr<BKQNode> node(line.make("name"));
    EXPECT_EQ(node->nodeType(), line.code) << line.className;
    EXPECT_STREQ(node->getNodeName(), "name");
  }
}

}  // namespace
}  // namespace bkoq::test
