// Parts converted on their own.

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iterator>
#include <random>
#include <set>
#include <string>

#include "tests/random/run.h"
#include "tests/random/variables.h"

namespace bkoq::test {

namespace {

constexpr FilledArray filtersAt(std::uint32_t countOffset) {
  return {countOffset, countOffset + 4, 32, 0, "pFilters"};
}
constexpr FilledArray kDisks = {36, 40, 52, 24, "pMedia"};
constexpr FilledArray kTapes = {36, 40, 72, 12, "pMedia"};
constexpr FilledArray kDiskItems = {16, 20, 32, 12, "pDiskItems"};
constexpr FilledArray kTapeItems = {40, 44, 32, 0, "pTapeItems"};

void fill(void* record, const FilledArray& array) {
  if (array.count == 0) return;
  auto* elements = static_cast<char*>(std::calloc(array.count, array.size));
  for (std::uint32_t i = 0; i < array.count; ++i) {
    const std::uint16_t mark = array.markOf(i);
    std::memcpy(elements + i * array.size + array.markOffset, &mark, sizeof mark);
  }
  std::memcpy(static_cast<char*>(record) + array.countOffset, &array.count, sizeof array.count);
  std::memcpy(static_cast<char*>(record) + array.offset, &elements, sizeof elements);
}

}  // namespace

template <class Expect, class Convert>
bool Run::convertPart(const char* what, std::size_t size, Expect expect, Convert convert,
                      std::vector<FilledArray> arrays, const BkoqLayout* only) {
  const BkoqLayout layout = only != nullptr ? *only : drawer_.layout();
  if (random_.chance(2, 3)) setState(layout);
  Expectation expectation(tree(), states_[layout], layout, zone_->standardOffset);
  for (FilledArray& each : arrays) each.count = random_.chance(1, 4) ? 1 + random_.below(3) : 0;
  expectation.fill(arrays);
  const int expected = expect(expectation);
  void* const record = std::calloc(1, size);
  for (const FilledArray& each : arrays) fill(record, each);
  const int result = convert(layout, record);
  if (!compare(what, layout, result, expected, expectation.messages(), record)) return false;
  tree().freeFound(true);
  return true;
}

bool Run::convertParts() {
  for (const auto* nodes : {&plan_->sources, &plan_->destinations}) {
    for (const auto& each : *nodes) {
      if (random_.chance(1, 3) && !convertNode(*each)) return false;
      for (const auto& disk : each->disks) {
        if (random_.chance(1, 6) && !convertDisk(*disk)) return false;
      }
      for (const auto& tape : each->tapes) {
        if (random_.chance(1, 6) && !convertTape(*tape)) return false;
      }
    }
  }
  if (plan_->schedule && random_.chance(1, 4) && !convertSchedule()) return false;
  for (const auto& each : plan_->filters) {
    if (!random_.chance(1, 6)) continue;
    const FilterPlan& filter = *each;
    if (!convertPart(
            "a filter", 32, [&](Expectation& expected) { return expected.filter(filter); },
            [&](BkoqLayout layout, void* record) {
              return convertTo(layout, builder_.made<BKQFilter>(filter), record);
            })) {
      return false;
    }
  }
  return true;
}

bool Run::convertSchedule() {
  call_ = "";
  return convertPart(
      "a schedule", 292,
      [&](Expectation& expected) { return expected.schedule(*plan_->schedule), 1; },
      [&](BkoqLayout layout, void* record) {
        void* schedule = static_cast<char*>(record) + 56;
        void* rotation = static_cast<char*>(record) + 196;
        BKQSchedule& object = *builder_.source()->getSchedule();
        return convertTo(layout, object, schedule, rotation);
      });
}

bool Run::convertNode(const NodePlan& plan) {
  Call call;
  NodeForm form = NodeForm::kVirtual;
  if (isDiskNode(plan.nodeClass)) {
    const std::uint32_t forms = plan.nodeClass == NodeClass::kUnix ? 5 : 4;
    form = static_cast<NodeForm>(random_.below(forms));
    for (std::uint32_t i = random_.below(4); i > 0; --i) {
      call.disks.push_back(
          plan.disks.empty() || random_.chance(1, 3)
              ? drawer_.text()
              : plan.disks[random_.below(static_cast<std::uint32_t>(plan.disks.size()))]
                    ->name.value);
    }
    call.overridePath = drawer_.text();
    call.unixKind = static_cast<std::int32_t>(random_.below(4));
    call.unixText = drawer_.text();
  } else if (plan.nodeClass == NodeClass::kTape && random_.chance(1, 2)) {
    form = NodeForm::kTapeSelected;
    call.session = static_cast<std::uint16_t>(random_.below(3));
    call.tapeName =
        plan.tapes.empty() || random_.chance(1, 2) ? drawer_.text() : plan.tapes[0]->name.value;
  }
  if (random_.chance(1, 8)) form = NodeForm::kBase;
  call_ = "form " + std::to_string(static_cast<unsigned int>(form));
  RWSlistCollectables disks;
  std::vector<std::unique_ptr<RWCollectableString>> names;
  for (const Text& name : call.disks) {
    names.emplace_back(new RWCollectableString(name.c_str()));
    disks.insert(names.back().get());
  }
  auto& node = builder_.made<BKQNode>(plan);
  std::vector<FilledArray> arrays = {filtersAt(24)};
  // A restore node counts one disk more, and makes an array of one whatever there is.
  if (isDiskNode(plan.nodeClass)) arrays.push_back(kDisks);
  if (plan.nodeClass == NodeClass::kTape) arrays.push_back(kTapes);
  return convertPart(
      "a node", 100, [&](Expectation& expected) { return expected.node(plan, form, call); },
      [&](BkoqLayout layout, void* record) {
        const char* overridePath = builder_.text(call.overridePath);
        switch (form) {
          case NodeForm::kVirtual:
            return convertTo(layout, node, record);
          case NodeForm::kNames:
            return convertTo(layout, static_cast<BKQDiskNode&>(node), record, disks);
          case NodeForm::kOverride:
            return convertTo(layout, static_cast<BKQDiskNode&>(node), record, overridePath);
          case NodeForm::kNamesOverride:
            return convertTo(layout, static_cast<BKQDiskNode&>(node), record, disks, overridePath);
          case NodeForm::kUnixLong:
            return convertTo(layout, static_cast<BKQUnixNode&>(node), record, disks, call.unixKind,
                             builder_.text(call.unixText));
          case NodeForm::kTapeSelected:
            return convertTo(layout, static_cast<BKQTapeNode&>(node), record,
                             builder_.text(call.tapeName), call.session);
          case NodeForm::kBase:
            return layout == PreviousLayout::kLayout ? node.BKQNode::convertToBK2_old(record)
                                                     : node.BKQNode::convertToBK2(record);
        }
        return 0;
      },
      std::move(arrays));
}

bool Run::convertDisk(const DiskPlan& plan) {
  const Text overridePath = drawer_.text();
  call_ = "";
  if (!convertPart(
          "a disk", 52, [&](Expectation& expected) { return expected.disk(plan, overridePath); },
          [&](BkoqLayout layout, void* record) {
            return convertTo(layout, builder_.made<BKQDisk>(plan), record,
                             builder_.text(overridePath));
          },
          {filtersAt(8), kDiskItems})) {
    return false;
  }
  for (const auto& each : plan.items) {
    const DiskItemPlan& item = *each;
    if (!random_.chance(1, 3)) continue;
    const bool hasOverride = random_.chance(1, 2);
    if (!convertPart(
            "a disk item", 32,
            [&](Expectation& expected) {
              expected.diskItem(item, hasOverride, overridePath);
              return 1;
            },
            [&](BkoqLayout layout, void* record) {
              auto& object = builder_.made<BKQDiskItem>(item);
              return hasOverride ? convertTo(layout, object, record, builder_.text(overridePath))
                                 : convertTo(layout, object, record);
            })) {
      return false;
    }
  }
  return true;
}

bool Run::convertTape(const TapePlan& plan) {
  call_ = "";
  if (!convertPart(
          "a tape", 72, [&](Expectation& expected) { return expected.tape(plan); },
          [&](BkoqLayout layout, void* record) {
            return convertTo(layout, builder_.made<BKQTape>(plan), record);
          },
          {filtersAt(32), kTapeItems})) {
    return false;
  }
  for (const auto& each : plan.items) {
    const TapeItemPlan& item = *each;
    if (!random_.chance(1, 3)) continue;
    if (!convertPart(
            "a tape item", 32, [&](Expectation& expected) { return expected.tapeItem(item), 1; },
            [&](BkoqLayout layout, void* record) {
              return convertTo(layout, builder_.made<BKQTapeItem>(item), record);
            })) {
      return false;
    }
  }
  if (!plan.extension) return true;
  return convertPart(
      "a tape extension", 64,
      [&](Expectation& expected) { return expected.tapeExtension(*plan.extension), 1; },
      [&](BkoqLayout /*layout*/, void* record) {
        return builder_.made<BKQTapeXtension>(*plan.extension).convertToBK2(record);
      },
      {}, &CurrentLayout::kLayout);
}

}  // namespace bkoq::test
