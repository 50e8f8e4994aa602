#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "bench/bare.h"
#include "bench/command.h"
#include "bench/floor.h"
#include "bench/measure.h"
#include "bench/message.h"
#include "bench/model.h"
#include "bench/peer.h"
#include "bench/sections.h"
#include "bench/shapes.h"
#include "bench/table.h"

namespace bkoq::bench {
namespace {

constexpr Limit kMessageRow = {1.15};
constexpr Limit kMessageSteady = {0.90};
constexpr Limit kMessageFirst = {1.00};
constexpr Limit kBuilderSteady = {1.80};
constexpr Limit kBuilderFirst = {1.40};
constexpr Limit kInPlaceSteady = {1.02};
constexpr Limit kInPlaceFirst = {1.08};

// One client's work against another's, over all shapes and sizes.
struct Contest {
  const char* name;
  const Limit* row;
  const Limit* mean;
  std::vector<double> ratios;

  void add(const std::string& workload, const Spread& ratio, unsigned int elements,
           const std::string& remark) {
    Table::row(workload + ", " + name, ratio, elements >= 1000 ? row : nullptr, remark);
    if (elements >= 1000) ratios.push_back(ratio.median);
  }
  void finish() const {
    if (!ratios.empty()) {
      Table::row(std::string("geometric mean of 1,000 and more, ") + name, geometricMean(ratios),
                 mean);
    }
  }
};

struct Workload {
  std::string shape;
  unsigned int elements;

  std::string name() const { return elements == 1 ? shape : countText(elements) + " " + shape; }
  Job content() const {
    Job job;
    if (!makeJob(shape, elements, job)) std::abort();
    return job;
  }
};

std::vector<Workload> workloads() {
  std::vector<Workload> all = {{"typical job", 1}};
  for (const Shape& shape : growingShapes()) {
    for (const unsigned int elements : {1000U, 10000U, 100000U}) {
      all.push_back({shape.name, elements});
    }
  }
  return all;
}

std::string timesText(const Comparison& times, unsigned int elements) {
  return timeText(times.nanoseconds / elements) + " instead of " +
         timeText(times.itsNanoseconds / elements) + (elements == 1 ? "" : " an element");
}

}  // namespace

void measureWhole() {
  Table::section("whole work, steady: plain structures to objects to records, the objects deleted");
  if (!hasMessages()) Table::note("without Protocol Buffers, whose sources are not there");
  Contest messages = {"/ Protocol Buffers", &kMessageRow, &kMessageSteady, {}};
  Contest builder = {"/ FlatBuffers, builder", nullptr, &kBuilderSteady, {}};
  Contest bare = {"/ the floor of all of it", nullptr, nullptr, {}};
  for (const Workload& workload : workloads()) {
    const Job content = workload.content();
    const auto ours = timingOfMaking([&] { return PlainTree(Model(content).flatten()); });
    if (hasMessages()) {
      const Comparison times =
          compareTimings(ours, timingOfMaking([&] { return packMessage(content); }), 11);
      messages.add(workload.name(), times.ratio, workload.elements,
                   timesText(times, workload.elements));
    }
    const Comparison times =
        compareTimings(ours, timingOfMaking([&] { return packPlain(content); }), 11);
    builder.add(workload.name(), times.ratio, workload.elements,
                timesText(times, workload.elements));
    const auto floor = timingOfMaking([&] {
      const BareModel objects(content);
      return PlainTree(flattenPlain(content));
    });
    const Comparison all = compareTimings(ours, floor, 11);
    bare.add(workload.name(), all.ratio, workload.elements, timesText(all, workload.elements));
  }
  messages.finish();
  builder.finish();
  bare.finish();
}

void measureWholeFirst() {
  Table::section("whole work, first: the only one of a fresh process");
  if (!hasMessages()) Table::note("without Protocol Buffers, whose sources are not there");
  const std::string program = besideThis("bkoq_bench_once");
  Contest messages = {"/ Protocol Buffers", nullptr, &kMessageFirst, {}};
  Contest builder = {"/ FlatBuffers, builder", nullptr, &kBuilderFirst, {}};
  for (const Workload& workload : workloads()) {
    const auto once = [&](const char* side) -> Timing {
      return [&, side](unsigned int) {
        return std::atof(
            outputOf({program, workload.shape, std::to_string(workload.elements), side}).c_str());
      };
    };
    const auto against = [&](const char* side, Contest& contest) {
      const Comparison times = compareFixed(once("whole"), once(side), 11);
      contest.add(workload.name(), times.ratio, workload.elements,
                  timesText(times, workload.elements));
    };
    if (hasMessages()) against("message", messages);
    against("builder", builder);
  }
  messages.finish();
  builder.finish();
}

void measureBare() {
  Table::section(
      "making and deleting the library's objects, against a bare loop for the same blocks");
  Contest bare = {"/ bare loop", nullptr, nullptr, {}};
  for (const Workload& workload : workloads()) {
    const Job content = workload.content();
    const Comparison times = compareTimes([&] { const Model model(content); },
                                          [&] { const BareModel model(content); }, 11);
    bare.add(workload.name(), times.ratio, workload.elements, timesText(times, workload.elements));
  }
  bare.finish();
}

void measureInPlace() {
  Table::section("library / floor with the same copies in place, steady and first");
  const std::string program = besideThis("bkoq_bench_once");
  Contest steady = {"steady", nullptr, &kInPlaceSteady, {}};
  Contest first = {"first", nullptr, &kInPlaceFirst, {}};
  for (const Workload& workload : workloads()) {
    const Job content = workload.content();
    Model model(content);
    const Comparison times = compareTimes([&] { freePlain(model.flatten()); },
                                          [&] { freePlain(flattenInPlace(content)); }, 21);
    steady.add(workload.name(), times.ratio, workload.elements,
               timesText(times, workload.elements));
    const auto once = [&](const char* side) -> Timing {
      return [&, side](unsigned int) {
        return std::atof(
            outputOf({program, workload.shape, std::to_string(workload.elements), side}).c_str());
      };
    };
    const Comparison alone = compareFixed(once("library"), once("inplace"), 15);
    first.add(workload.name(), alone.ratio, workload.elements, timesText(alone, workload.elements));
  }
  steady.finish();
  first.finish();
}

}  // namespace bkoq::bench
