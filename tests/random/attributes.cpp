#include "tests/random/attributes.h"

#include <set>
#include <string>

namespace bkoq::test {
namespace {

constexpr const char* kPlaces[] = {"drawn by no job: tests/random/draw.cpp",
                                   "set in no job: tests/random/build.cpp",
                                   "checked in no job: tests/random/check.cpp"};
std::set<std::string> seen[3];

}  // namespace

unsigned int Visited::jobs = 0;

void Visited::note(Visitor visitor, const char* attribute) {
  if (jobs < kJobs) seen[visitor].insert(attribute);
}

std::string Visited::leftOut() {
  std::string lines;
  if (jobs < kJobs) return lines;
  for (int visitor = kDrawn; visitor <= kChecked; ++visitor) {
    const auto expect = [&](const char* attribute) {
      if (seen[visitor].count(attribute) == 1) return;
      lines += std::string(attribute) + " is " + kPlaces[visitor] + "\n";
    };
#define BKOQ_EXPECT(class_, member, getter, setter, ...) expect(#class_ "::" #setter);
    BKOQ_ATTRIBUTES(BKOQ_EXPECT, BKOQ_NO_ATTRIBUTE)
#undef BKOQ_EXPECT
  }
  return lines;
}

}  // namespace bkoq::test
