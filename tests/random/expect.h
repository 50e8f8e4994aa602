#ifndef BKOQ_TESTS_RANDOM_EXPECT_H_
#define BKOQ_TESTS_RANDOM_EXPECT_H_

// What a flattening must give: the record tree, the state variables after it, the result and the
// messages, computed from the plan alone.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/random/plan.h"
#include "tests/random/tree.h"

namespace bkoq::test {

// The state variables of one layout.
struct State {
  std::uint32_t newTapeTimeout = 0;
  std::uint32_t spanTapeTimeout = 0;
  std::uint32_t newTapeMethod = 0;
  std::uint32_t spanTapeMethod = 0;
  bool hasDiskPassword = false;
  Text diskPassword;
  bool hasTapePassword = false;
  Text tapePassword;
  std::uint32_t encryption = 0;
  std::uint32_t compression = 0;
  std::uint32_t noEstimate = 0;
  std::uint32_t nodeType = 0;
  std::uint32_t unixOptions = 0;
  Text diskName;
};

// What the constructors and setters of a plan add up to.
std::uint32_t optionsOf(const DiskItemPlan& item);
bool hasExtension(const TapePlan& tape);
std::uint32_t optionsOf(const TapePlan& tape);
std::uint32_t nodeTypeOf(NodeClass nodeClass);
std::uint32_t nodeOSOf(const NodePlan& node);
std::uint16_t jobTypeOf(JobClass jobClass);
std::uint32_t optionsOf(const JobPlan& job);
std::uint32_t optionsOf(const NodePlan& node);
std::uint16_t deviceTypeOf(const NodePlan& node);

// How a node is converted, when not by its job.
enum class NodeForm {
  kVirtual,
  kNames,
  kOverride,
  kNamesOverride,
  kUnixLong,
  kTapeSelected,
  kBase  // BKQNode's own, by a qualified call
};

// An array that a record holds before a part is converted into it: new elements come after those
// that are there, which keep their mark.
struct FilledArray {
  std::uint32_t countOffset;
  std::uint32_t offset;
  std::uint32_t size;        // of an element
  std::uint32_t markOffset;  // in an element
  const char* field;
  std::uint32_t count = 0;

  std::uint16_t markOf(std::uint32_t element) const {
    return static_cast<std::uint16_t>(0x7700 + element);
  }
};

class Expectation {
 public:
  // `standardOffset`: seconds east of UTC of the zone's standard time.
  Expectation(ExpectedTree& tree, State& state, BkoqLayout layout, std::int32_t standardOffset)
      : tree_(tree), state_(state), layout_(layout), standardOffset_(standardOffset) {}

  // The result; the tree is what `out` points to whenever the base step succeeded.
  int job(const JobPlan& plan, const Call& call);

  // Parts on their own, into a record that is zero but for these arrays.
  void fill(std::vector<FilledArray> arrays) { filled_ = std::move(arrays); }
  int node(const NodePlan& plan, NodeForm form, const Call& call);
  int disk(const DiskPlan& plan, const Text& overridePath);
  void diskItem(const DiskItemPlan& plan, bool hasOverride, const Text& overridePath);
  int tape(const TapePlan& plan);
  void tapeItem(const TapeItemPlan& plan);
  void tapeExtension(const TapeExtensionPlan& plan);
  int filter(const FilterPlan& plan);
  // Both blocks, in a record as long as a job's.
  void schedule(const SchedulePlan& plan);

  const std::string& messages() const { return messages_; }

 private:
  Record start(std::uint32_t size);
  void base(const JobPlan& plan, Record job);
  int backup(const JobPlan& plan, const Call& call, Record job);
  int restore(const JobPlan& plan, const Call& call, Record job);
  int verify(const JobPlan& plan, const Call& call, Record job);
  int compare(const JobPlan& plan, const Call& call, Record job);
  int mergeOrScan(const JobPlan& plan, const Call& call, Record job);
  bool jobFilters(const JobPlan& plan, Record job);

  bool baseNode(const NodePlan& plan, Record node);
  bool diskNode(const NodePlan& plan, const std::vector<Text>& names, const Text& overridePath,
                Record node);
  bool unixNode(const NodePlan& plan, const std::vector<Text>& names, int mode, const Text& extra,
                Record node);
  bool virtualNode(const NodePlan& plan, Record node);
  bool tapeNode(const NodePlan& plan, const Text& name, std::uint16_t session, Record node);
  bool restoreNode(const NodePlan& plan, Record node);

  bool disk(const DiskPlan& plan, const Text& overridePath, Record disk);
  void diskItem(const DiskItemPlan& plan, Record item);
  void overriddenItem(const DiskItemPlan& plan, const Text& overridePath, Record item);
  bool tape(const TapePlan& plan, Record tape);
  void tapeItem(const TapeItemPlan& plan, Record item);
  void tapeExtension(const TapeExtensionPlan* plan, Record extension);
  bool filters(const List<FilterPlan>& plans, std::uint32_t countOffset, std::uint32_t offset,
               Record owner);
  bool filter(const FilterPlan& plan, Record entry);
  void schedule(const SchedulePlan& plan, Record job);
  std::uint32_t localTime(std::uint32_t seconds) const;
  bool fail(const char* message) {
    messages_ += std::string(message) + "\n";
    return false;
  }

  ExpectedTree& tree_;
  State& state_;
  BkoqLayout layout_;
  std::int32_t standardOffset_;
  std::vector<FilledArray> filled_;
  std::string messages_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_EXPECT_H_
