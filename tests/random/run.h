#ifndef BKOQ_TESTS_RANDOM_RUN_H_
#define BKOQ_TESTS_RANDOM_RUN_H_

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <cstdint>
#include <iterator>
#include <memory>
#include <set>
#include <string>

#include "tests/catalog/layouts.h"
#include "tests/random/build.h"
#include "tests/random/draw.h"
#include "tests/random/error_stream.h"
#include "tests/random/expect.h"
#include "tests/random/plan.h"
#include "tests/random/random.h"
#include "tests/random/shrink.h"
#include "tests/random/tree.h"

namespace bkoq::test {

struct Zone {
  const char* rule;
  std::int32_t standardOffset;
};

// One job: everything that is done with it follows from its seed.
class Run {
 public:
  Run(std::uint64_t seed, ErrorStream& errors)
      : seed_(seed), random_(seed), drawer_(random_), errors_(errors), builder_(random_) {}
  ~Run();
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  // Whether all was as expected.
  bool run();

  // Writes the job into a folder in place of running it: as C++ and as a job file, and its images
  // as the conversion without arguments makes them in a new process.
  bool write(const std::string& folder);
  void drawPlainly() { drawer_.drawPlainly(); }

  // Of the plan as drawn.
  void leaveOut(PartNumbers parts) { leftOut_ = std::move(parts); }
  std::uint32_t parts() const { return parts_; }
  JobPlan& plan() { return *plan_; }
  static bool isSilent;  // says nothing of failures
  // A deliberately wrong expectation, to test what is done with a failure: no disk has a name that
  // begins with a slash.
  static bool hasFault;

  static std::uint64_t blocksCompared;
  static std::uint64_t flattenings;

 private:
  // Of the first things that follow from the seed.
  void draw();

  void setZone();

  char* passwordOf(const Text& text);

  void setState(BkoqLayout layout);

  void report(const char* what, BkoqLayout layout, const Mismatch& mismatch);

  bool checkValues(BKQJob& job, const JobPlan& plan, const char* what);

  bool checkWord(const char* name, std::uint32_t expected, std::uint32_t got);

  bool checkPassword(const char* name, bool expected, const Text& text, char* got);

  bool checkState(BkoqLayout layout);

  // The result, the messages, the records and the variables of a conversion.
  bool compare(const char* what, BkoqLayout layout, int result, int expectedResult,
               const std::string& expectedMessages, const void* root);

  static ExpectedTree& tree();

  bool flattenBoth(BKQJob& job, const JobPlan& plan, const char* what);

  bool flatten(BKQJob& job, const JobPlan& plan, BkoqLayout layout, const char* what);

  static int keepImage(void* image, const char* bytes, size_t size);

  // A tree that was stored and read again is still the expected one.
  bool throughImage(void* root, BkoqLayout layout, const char* what);

  // Changes of the source and its parts after the copy: the copy sees those of shared parts.
  void change(BKQJob& job);

  template <class Object, class... Arguments>
  static int convertTo(BkoqLayout layout, Object& object, void*& record, Arguments&&... arguments) {
    return visitLayout(layout, [&](auto traits) {
      return decltype(traits)::convert(object, record, arguments...);
    });
  }

  int convert(BKQJob& job, JobClass jobClass, const Call& call, void*& root);

  // A copy into a job that has parts of its own is the same as a new one.
  bool copyIntoFilled(BKQJob& job);

  // Parts converted on their own, with whatever the variables hold.
  bool convertParts();

  bool convertSchedule();

  template <class Expect, class Convert>
  bool convertPart(const char* what, std::size_t size, Expect expect, Convert convert,
                   std::vector<FilledArray> arrays = {}, const BkoqLayout* only = nullptr);

  bool convertNode(const NodePlan& plan);

  bool convertDisk(const DiskPlan& plan);

  bool convertTape(const TapePlan& plan);

  std::uint64_t seed_;
  Random random_;
  Drawer drawer_;
  ErrorStream& errors_;
  const Zone* zone_ = nullptr;
  std::shared_ptr<JobPlan> plan_;
  PartNumbers leftOut_;
  std::uint32_t parts_ = 0;
  State states_[std::size(kLayouts)];
  std::set<char*> passwords_;
  std::string call_;
  Mismatch stateMismatch_;
  Builder builder_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_RUN_H_
