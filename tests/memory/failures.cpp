#include "tests/memory/failures.h"

#include <bkoq/kit.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "examples/nightly_job.h"
#include "tests/catalog/kinds.h"
#include "tests/catalog/layouts.h"
#include "tests/memory/wrap_malloc.h"
#include "tests/support/name_list.h"
#include "tests/support/parts.h"
#include "tests/support/rows.h"
#include "tests/support/state_values.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

class TreeReader {
 public:
  explicit TreeReader(TreeTexts& tree) : tree_(tree) {}

  void readJob(const void* job) {
    texts(job, "job", {28,  32,  36,  40,  44,  132, 136, 140, 144, 148, 152, 156,
                       160, 164, 168, 172, 176, 180, 184, 188, 192, 196, 260});
    const bool hasTapes = readsTapes(familyOfCode(numberAt(job, 4, 2)));
    array(job, "source", 12, 16, 100,
          [&](const void* node, const std::string& where) { readNode(node, where, hasTapes); });
    array(job, "destination", 20, 24, 100,
          [&](const void* node, const std::string& where) { readNode(node, where, !hasTapes); });
  }

 private:
  using Read = std::function<void(const void* element, const std::string& where)>;

  void texts(const void* record, const std::string& where,
             std::initializer_list<std::size_t> offsets) {
    for (const std::size_t offset : offsets) {
      const char* value = pointerAt(record, offset);
      if (value != nullptr) tree_.texts[where + " " + std::to_string(offset)] = value;
    }
  }

  void array(const void* record, const std::string& where, std::size_t countOffset,
             std::size_t pointerOffset, std::size_t size, const Read& read) {
    const std::uint32_t count = numberAt(record, countOffset, 4);
    const char* elements = pointerAt(record, pointerOffset);
    if (elements == nullptr) {
      if (count != 0) {
        const char* bytes = static_cast<const char*>(record);
        tree_.lost[where] = {count, bytes + countOffset, bytes + pointerOffset};
      }
      return;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
      read(elements + i * size, where + " " + std::to_string(i));
    }
  }

  void readFilters(const void* record, const std::string& where, std::size_t countOffset) {
    array(record, where + " filter", countOffset, countOffset + 4, 32,
          [&](const void* filter, const std::string& at) {
            if (numberAt(filter, 0, 2) <= 3) texts(filter, at, {8});
          });
  }

  void readNode(const void* node, const std::string& where, bool hasTapes) {
    texts(node, where, {4, 8, 12, 16, 20, 44, 48, 84});
    readFilters(node, where, 24);
    if (hasTapes) {
      array(node, where + " tape", 36, 40, 72,
            [&](const void* tape, const std::string& at) { readTape(tape, at); });
    } else {
      array(node, where + " disk", 36, 40, 52,
            [&](const void* disk, const std::string& at) { readDisk(disk, at); });
    }
  }

  void readDisk(const void* disk, const std::string& where) {
    texts(disk, where, {0, 4, 36, 44});
    readFilters(disk, where, 8);
    array(disk, where + " item", 16, 20, 32, [&](const void* item, const std::string& at) {
      texts(item, at, {0, 8});
    });
  }

  void readTape(const void* tape, const std::string& where) {
    texts(tape, where, {0, 4, 20, 56, 60});
    readFilters(tape, where, 32);
    array(tape, where + " item", 40, 44, 32,
          [&](const void* item, const std::string& at) { texts(item, at, {8}); });
    const char* extension = pointerAt(tape, 68);
    if (extension != nullptr) texts(extension, where + " extension", {0, 4});
  }

  TreeTexts& tree_;
};

}  // namespace

Flattening::Flattening(const Convert& convert, BkoqLayout layout, std::size_t failing,
                       bool andAllAfter)
    : allocations(failing, andAllAfter), layout(layout) {
  void* out = &untouched_;
  lines = standardErrorOf([&] {
    allocations.start();
    result = convert(out);
    Allocations::stop();
  });
  for (char** password :
       {&BK6_DISKSESSIONPW, &BK6_TAPESESSIONPW, &BK6_DISKSESSIONPW_OLD, &BK6_TAPESESSIONPW_OLD}) {
    if (*password != nullptr) passwords_.push_back(*password);
    *password = nullptr;
  }
  // What the other layout's flattenings left is theirs.
  expectState(
      visitLayout(layout, [](auto traits) { return stateOf<OtherLayout<decltype(traits)>>(); }),
      kEmptyState);
  if (out == &untouched_) return;
  record = out;
  TreeReader(tree).readJob(record);
}

Flattening::~Flattening() {
  const std::size_t blocks = allocations.blocks();
  std::size_t freed = passwords_.size();
  for (char* password : passwords_) std::free(password);
  if (allocations.lost() != nullptr && !putBack()) {
    ++freed;
    std::free(allocations.lost());
  }
  BkoqFreed released = {};
  EXPECT_EQ(bkoqFree(record, layout, &released), BKOQ_OK);
  EXPECT_EQ(released.notFreed, 0u);
  EXPECT_EQ(freed + released.blocks, blocks);
  allocations.handOver();
}

bool Flattening::putBack() const {
  if (tree.lost.empty()) return false;
  const LostArray& array = tree.lost.begin()->second;
  const uint32_t count = array.count - 1;
  void* const lost = allocations.lost();
  std::memcpy(const_cast<char*>(array.countField), &count, sizeof count);
  std::memcpy(const_cast<char*>(array.pointerField), &lost, sizeof lost);
  return true;
}

namespace {

struct Difference {
  std::string path;
  std::string whole;
  std::string failed;
};

// Where the two trees differ, field by field.
std::vector<Difference> differencesOf(const Flattening& whole, const Flattening& failed) {
  std::vector<Difference> differences;
  const auto note = [](const BkoqDifference* difference, void* user) {
    static_cast<std::vector<Difference>*>(user)->push_back(
        {difference->path, difference->oldValue, difference->newValue});
    return 0;
  };
  EXPECT_NE(bkoqCompare(whole.record, whole.layout, failed.record, failed.layout, 1, note,
                        &differences, nullptr),
            BKOQ_BAD_ARGUMENT);
  return differences;
}

bool isCount(const Difference& difference) {
  const std::string field = difference.path.substr(difference.path.rfind('.') + 1);
  return field.rfind("ulNum", 0) == 0 || field.find("Count") != std::string::npos;
}

// Whether a field stands as it does before the flattening comes to it: zero or null, or as what is
// done first leaves it.
bool isUnfinished(const Difference& difference) {
  const std::string& path = difference.path;
  const std::string field = path.substr(path.rfind('.') + 1);
  const std::string& value = difference.failed;
  if (value == "null" || value == "absent" || value == "0") return true;
  if (value.rfind("null (unfinished", 0) == 0) return true;
  // The type of a node is its own until it is replaced by that of the record.
  if (field == "usNodeType") return value.find("unfinished") != std::string::npos;
  if (field == "ulNodeOptions") {
    const unsigned long bits = std::stoul(value, nullptr, 16);
    return (bits & std::stoul(difference.whole, nullptr, 16)) == bits;
  }
  // A second text comes last.
  const std::size_t second = value.rfind(", \"\"");
  if (second != std::string::npos) return difference.whole.rfind(value.substr(0, second), 0) == 0;
  return isCount(difference) && std::stoul(value) < std::stoul(difference.whole);
}

void expectSilent(const Flattening& failed, const Step& step, const Flattening& whole) {
  EXPECT_EQ(failed.result, 1);
  EXPECT_EQ(failed.lines, "");
  ASSERT_NE(failed.record, nullptr);
  EXPECT_TRUE(failed.tree.lost.empty());
  // The same tree but for the fields that are null.
  unsigned int nulls = 0;
  unsigned int emptied = 0;
  for (const auto& text : whole.tree.texts) {
    const auto found = failed.tree.texts.find(text.first);
    if (found == failed.tree.texts.end()) {
      ++nulls;
    } else if (found->second.empty() && !text.second.empty()) {
      ++emptied;
    } else {
      EXPECT_EQ(found->second, text.second) << text.first;
    }
  }
  EXPECT_EQ(nulls, step.nulls);
  EXPECT_EQ(emptied, step.isFirst ? 1u : 0u);
  EXPECT_EQ(failed.tree.texts.size() + nulls, whole.tree.texts.size());
  const std::vector<Difference> differences = differencesOf(whole, failed);
  EXPECT_EQ(differences.size(), nulls + emptied);
  for (const Difference& difference : differences) {
    EXPECT_EQ(difference.failed, step.isFirst ? "\"\", \"extra\"" : "null") << difference.path;
  }
}

bool isLost(const Difference& difference) {
  return difference.failed.rfind("null (unfinished", 0) == 0;
}

// Whether the place is one of `paths`, or inside one of them.
bool isWithin(const std::string& path, const std::vector<std::string>& paths) {
  for (const std::string& outer : paths) {
    if (path.compare(0, outer.size(), outer) == 0) return true;
  }
  return false;
}

}  // namespace

void expectReported(const Flattening& failed, const Step& step, const Flattening& whole,
                    std::vector<std::string>& unfinished) {
  EXPECT_EQ(failed.result, 0);
  EXPECT_EQ(failed.lines, step.lines);
  EXPECT_EQ(failed.record == nullptr, step.keepsOut);
  // The count of the array that failed is one higher than what it held, and the array is gone.
  if (step.count == 0) {
    EXPECT_TRUE(failed.tree.lost.empty());
  } else {
    ASSERT_EQ(failed.tree.lost.size(), 1u);
    EXPECT_EQ(failed.tree.lost.begin()->second.count, step.count)
        << failed.tree.lost.begin()->first;
  }
  if (failed.record == nullptr) return;
  // What was not reached is as it was cleared, and the rest as in the whole tree. The count of an
  // array that is lost is less than in the end; one step earlier it told of the elements.
  const std::vector<Difference> differences = differencesOf(whole, failed);
  const auto ownerOf = [](const Difference& each) {
    return each.path.substr(0, each.path.rfind('.') + 1);
  };
  const auto isCountOfLost = [&](const Difference& each) {
    return step.count > 1 && isCount(each) && each.failed == std::to_string(step.count) &&
           std::any_of(differences.begin(), differences.end(), [&](const Difference& other) {
             return isLost(other) && ownerOf(other) == ownerOf(each);
           });
  };
  std::vector<std::string> now;
  for (const Difference& difference : differences) {
    if (isCountOfLost(difference)) continue;
    EXPECT_TRUE(isUnfinished(difference))
        << difference.path << " is " << difference.failed << ", in the end " << difference.whole;
    const bool isLostNow = step.count > 1 && isLost(difference);
    EXPECT_TRUE(isLostNow || isWithin(difference.path, unfinished))
        << difference.path << " had been filled, and is " << difference.failed;
    if (!isLostNow) {
      now.push_back(difference.path);
      continue;
    }
    // Of what is lost now the same is unfinished as before.
    for (const std::string& path : unfinished) {
      if (isWithin(path, {difference.path})) now.push_back(path);
    }
  }
  unfinished = now;
}

namespace {

// Says in the end how many allocations failed.
class Total : public testing::Environment {
 public:
  static std::size_t failures;
  void TearDown() override { std::printf("%zu allocations made to fail\n", failures); }
};
std::size_t Total::failures = 0;
const auto* const kTotal = testing::AddGlobalTestEnvironment(new Total);

}  // namespace

void failEveryAllocation(const Flattening::Convert& convert, const Script& script) {
  const std::vector<Step>& steps = script.steps();
  const Flattening whole(convert, script.layout(), Allocations::kNone, false);
  ASSERT_EQ(whole.result, 1);
  EXPECT_EQ(whole.lines, "");
  ASSERT_TRUE(whole.tree.lost.empty());
  const auto& calls = whole.allocations.calls();
  for (std::size_t i = 0; i < calls.size() && i < steps.size(); ++i) {
    ASSERT_EQ(calls[i].isRealloc, steps[i].isRealloc) << "allocation " << i << steps[i].lines;
    ASSERT_EQ(calls[i].size, steps[i].size) << "allocation " << i << steps[i].lines;
  }
  ASSERT_EQ(calls.size(), steps.size());

  Total::failures += 2 * steps.size();
  std::vector<std::string> unfinished = {""};
  for (std::size_t i = 0; i < steps.size(); ++i) {
    SCOPED_TRACE("allocation " + std::to_string(i) + " fails");
    const Flattening failed(convert, script.layout(), i, false);
    if (steps[i].lines.empty()) {
      expectSilent(failed, steps[i], whole);
    } else {
      expectReported(failed, steps[i], whole, unfinished);
      EXPECT_EQ(failed.allocations.calls().size(), i + 1) << "goes on after a failure";
    }
  }

  // From one point on nothing succeeds: what is reported is the first step that reports at all.
  for (std::size_t i = 0; i < steps.size(); ++i) {
    SCOPED_TRACE("memory has run out from allocation " + std::to_string(i) + " on");
    std::size_t reporting = i;
    while (reporting < steps.size() && steps[reporting].lines.empty()) ++reporting;
    const Flattening failed(convert, script.layout(), i, true);
    if (reporting < steps.size()) {
      std::vector<std::string> anything = {""};
      expectReported(failed, steps[reporting], whole, anything);
    } else {
      EXPECT_EQ(failed.result, 1);
      EXPECT_EQ(failed.lines, "");
    }
  }
}

}  // namespace bkoq::test
