#include "bench/sections.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "bench/command.h"
#include "bench/floor.h"
#include "bench/measure.h"
#include "bench/model.h"
#include "bench/same.h"
#include "bench/shapes.h"
#include "bench/table.h"

namespace bkoq::bench {
namespace {

constexpr Limit kRow = {1.30};
constexpr Limit kSteady = {1.05};
constexpr Limit kFirst = {1.10};
constexpr Limit kExponent = {1.10};
constexpr Limit kNone = {0};

struct Workload {
  std::string shape;
  unsigned int elements;  // 1 for the typical job, which is counted as a whole

  std::string name() const { return elements == 1 ? shape : countText(elements) + " " + shape; }
  Job content() const {
    Job job;
    if (!makeJob(shape, elements, job)) std::abort();
    return job;
  }
  // Of the smallest sizes the job's own texts are the greater part.
  bool counts() const { return elements == 1 || elements >= 1000; }
};

std::vector<Workload> workloadsOf(const std::vector<unsigned int>& sizes) {
  std::vector<Workload> workloads = {{"typical job", 1}};
  for (const Shape& shape : growingShapes()) {
    for (const unsigned int elements : sizes) workloads.push_back({shape.name, elements});
  }
  return workloads;
}

std::string perElement(double nanoseconds, unsigned int elements) {
  return timeText(nanoseconds / elements) + (elements == 1 ? "" : " an element");
}

}  // namespace

void measureSteady() {
  Table::section("library / floor, steady: one process, again and again");
  std::vector<double> ratios;
  for (const Workload& workload : workloadsOf({100, 1000, 10000, 100000})) {
    const Job content = workload.content();
    Model model(content);
    expectSameTrees(workload.name().c_str(), model, content);
    const Comparison times = compareTimes([&] { freePlain(model.flatten()); },
                                          [&] { freePlain(flattenPlain(content)); }, 21);
    Table::row(workload.name(), times.ratio, &kRow,
               perElement(times.nanoseconds, workload.elements));
    if (workload.counts()) ratios.push_back(times.ratio.median);
  }
  Table::row("geometric mean, typical job and >= 1,000", geometricMean(ratios), &kSteady);
}

void measureFirst() {
  Table::section("library / floor, first: the only flattening of a fresh process");
  const std::string program = besideThis("bkoq_bench_once");
  struct Cost {
    double time;
    double pages;
  };
  std::vector<double> ratios;
  std::vector<double> pagesOfTypical;
  for (const Workload& workload : workloadsOf({1000, 10000, 100000})) {
    const auto once = [&](const char* side) {
      Cost cost = {};
      const std::string output =
          outputOf({program, workload.shape, std::to_string(workload.elements), side});
      if (std::sscanf(output.c_str(), "%lf %lf", &cost.time, &cost.pages) != 2) std::abort();
      return cost;
    };
    std::vector<double> rounds;
    std::vector<double> times;
    for (int i = 0; i < 15; ++i) {
      const bool libraryLeads = i % 2 == 0;
      Cost cost = libraryLeads ? once("library") : Cost();
      const Cost floor = once("floor");
      if (!libraryLeads) cost = once("library");
      rounds.push_back(cost.time / floor.time);
      times.push_back(cost.time);
      if (workload.elements == 1) pagesOfTypical.push_back(cost.pages - floor.pages);
    }
    const Spread ratio = spreadOf(rounds);
    Table::row(workload.name(), ratio, nullptr,
               perElement(spreadOf(times).median, workload.elements));
    ratios.push_back(ratio.median);
  }
  Table::row("geometric mean", geometricMean(ratios), &kFirst);
  Table::row("typical job, page faults beyond the floor's", spreadOf(pagesOfTypical), &kNone);
}

void measureGrowth() {
  Table::section("exponent of time over size, from 1,000 to 64,000 elements");
  struct Size {
    Model model;
    Timing timing;
    unsigned int repeats;
  };
  for (const Shape& shape : growingShapes()) {
    std::vector<double> elements;
    std::vector<std::unique_ptr<Size>> sizes;
    for (unsigned int count = 1000; count <= 64000; count *= 2) {
      elements.push_back(count);
      sizes.emplace_back(new Size{Model(shape.make(count)), {}, 0});
      Size& size = *sizes.back();
      size.timing = timingOf([&size] { freePlain(size.model.flatten()); });
      size.repeats = repeatsFor(size.timing);
    }
    // Each round takes all sizes, so that a machine that slows down meanwhile slows all of them.
    std::vector<double> rounds;
    for (int i = 0; i < 21; ++i) {
      std::vector<double> times;
      times.reserve(sizes.size());
      for (const auto& size : sizes) times.push_back(size->timing(size->repeats));
      rounds.push_back(exponentOf(elements, times));
    }
    Table::row(shape.name, spreadOf(rounds), &kExponent);
  }
}

void measureCounts() {
  Table::section("allocations and bytes of a flattening, beyond the floor's");
  const std::string program = besideThis("bkoq_bench_counts");
  for (const Workload& workload : workloadsOf({10000})) {
    unsigned long long calls = 0;
    unsigned long long bytes = 0;
    unsigned long long floorCalls = 0;
    unsigned long long floorBytes = 0;
    const std::string output =
        outputOf({program, workload.shape, std::to_string(workload.elements)});
    if (std::sscanf(output.c_str(), "%llu %llu %llu %llu", &calls, &bytes, &floorCalls,
                    &floorBytes) != 4) {
      std::abort();
    }
    Table::row(workload.name() + ", allocations",
               static_cast<double>(calls) - static_cast<double>(floorCalls), &kNone,
               "of " + countText(calls));
    Table::row(workload.name() + ", bytes",
               static_cast<double>(bytes) - static_cast<double>(floorBytes), &kNone,
               "of " + countText(bytes));
  }
}

void measureInstructions() {
  Table::section("instructions of a flattening without the freeing, library / floor");
  if (!isInstalled("valgrind")) {
    Table::note("left out: valgrind is not installed");
    return;
  }
  const std::string program = besideThis("bkoq_bench_once");
  for (const Workload& workload : workloadsOf({10000})) {
    const auto instructions = [&](const char* side) {
      const std::string output =
          outputOf({"valgrind", "--tool=callgrind", "--toggle-collect=benchFlattenOnce",
                    "--callgrind-out-file=/dev/null", program, workload.shape,
                    std::to_string(workload.elements), side});
      const std::size_t at = output.find("Collected : ");
      return at == std::string::npos ? 0.0 : std::atof(output.c_str() + at + 12);
    };
    const double library = instructions("library");
    const double floor = instructions("floor");
    if (library == 0 || floor == 0) {
      Table::note("left out: valgrind does not run this program");
      return;
    }
    char remark[96];
    std::snprintf(remark, sizeof remark, "%.1f of the library, %.1f of the floor",
                  library / workload.elements, floor / workload.elements);
    Table::row(workload.name(), library / floor, nullptr,
               std::string(remark) + (workload.elements == 1 ? "" : " an element"));
  }
}

}  // namespace bkoq::bench
