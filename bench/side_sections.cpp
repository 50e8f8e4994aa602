#include <bkoq/kit.h>

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "bench/floor.h"
#include "bench/measure.h"
#include "bench/model.h"
#include "bench/peer.h"
#include "bench/same.h"
#include "bench/sections.h"
#include "bench/shapes.h"
#include "bench/table.h"

namespace bkoq::bench {
namespace {

constexpr Limit kPeer = {0.90};
constexpr Limit kPages = {3};

std::string decimal(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", value);
  return text;
}

// Sets TZ, or unsets it, for as long as it lives.
class ZoneSetting {
 public:
  explicit ZoneSetting(const char* zone) {
    if (const char* former = std::getenv("TZ")) former_ = {true, former};
    set(zone);
  }
  ~ZoneSetting() { set(former_.first ? former_.second.c_str() : nullptr); }
  ZoneSetting(const ZoneSetting&) = delete;
  ZoneSetting& operator=(const ZoneSetting&) = delete;

 private:
  static void set(const char* zone) {
    if (zone != nullptr) {
      setenv("TZ", zone, 1);
    } else {
      unsetenv("TZ");
    }
  }
  std::pair<bool, std::string> former_;
};

// The conversions that the time filters of a flattening ask for, one after the other.
void convertEachBound(const Job& job) {
  for (const Node& node : job.nodes) {
    for (const auto* filters : {&node.filters, &job.filters}) {
      for (const Filter& filter : *filters) {
        for (int i = 0; i <= (filter.timeRange == BKQTimeFilter::Between ? 1 : 0); ++i) {
          asRecorded(filter.bounds[i]);
        }
      }
    }
  }
}

}  // namespace

void measurePeer() {
  Table::section("library / FlatBuffers, without and with the freeing of what was made");
  std::vector<std::pair<std::string, Job>> jobs = {{"typical job", typicalJob()}};
  for (const Shape& shape : growingShapes()) {
    for (const unsigned int elements : {1000U, 10000U, 100000U}) {
      jobs.emplace_back(countText(elements) + " " + shape.name, shape.make(elements));
    }
  }
  struct Peer {
    const char* name;
    const Limit* must;
    std::vector<double> ours;
    std::vector<double> floor;
  } peers[] = {{"builder", &kPeer, {}, {}},
               {"object API", &kPeer, {}, {}},
               {"builder and freeing", nullptr, {}, {}},
               {"object API and freeing", nullptr, {}, {}},
               {"filling, object API and freeing", nullptr, {}, {}},
               {"objects, object API and freeing", nullptr, {}, {}}};
  for (const auto& job : jobs) {
    const Job& content = job.second;
    Model model(content);
    const PeerModel objects(content);
    const auto flatten = [&] { return PlainTree(model.flatten()); };
    const auto flattenFloor = [&] { return PlainTree(flattenPlain(content)); };
    const auto pack = [&] { return packPlain(content); };
    const auto packObjects = [&] { return objects.pack(); };
    const Timing fillAndPack = timingOf([&] { PeerModel(content).pack(); });
    const struct {
      Timing ours;
      Timing floor;
      Timing peer;
    } contests[] = {
        {timingOfMaking(flatten), timingOfMaking(flattenFloor), timingOfMaking(pack)},
        {timingOfMaking(flatten), timingOfMaking(flattenFloor), timingOfMaking(packObjects)},
        {timingOf(flatten), timingOf(flattenFloor), timingOf(pack)},
        {timingOf(flatten), timingOf(flattenFloor), timingOf(packObjects)},
        {timingOf(flatten), timingOf(flattenFloor), fillAndPack},
        {timingOf([&] { PlainTree(Model(content).flatten()); }), timingOf([&] {
           const Job copy = content;
           PlainTree(flattenPlain(copy));
         }),
         fillAndPack}};
    for (std::size_t i = 0; i < std::size(peers); ++i) {
      const Comparison ours = compareTimings(contests[i].ours, contests[i].peer, 11);
      const Comparison floor = compareTimings(contests[i].floor, contests[i].peer, 11);
      Table::row(job.first + ", " + peers[i].name, ours.ratio, nullptr,
                 "the floor " + decimal(floor.ratio.median));
      peers[i].ours.push_back(ours.ratio.median);
      peers[i].floor.push_back(floor.ratio.median);
    }
  }
  for (const Peer& peer : peers) {
    Table::row(std::string("mean, ") + peer.name, geometricMean(peer.ours), peer.must,
               "the floor " + decimal(geometricMean(peer.floor)));
  }
}

void measureTimeFilters() {
  Table::section("time filters, TZ unset and set: library / the floor with a conversion a bound");
  const struct {
    const char* name;
    Job (*make)(unsigned int elements);
  } shapes[] = {{"of the job, 10 nodes", jobTimeFilters}, {"of one node", nodeTimeFilters}};
  for (const char* zone : {static_cast<const char*>(nullptr), "EST5EDT,M3.2.0,M11.1.0"}) {
    const ZoneSetting setting(zone);
    for (const auto& shape : shapes) {
      constexpr unsigned int kElements = 1000;
      const Job content = shape.make(kElements);
      Model model(content);
      const std::string name =
          std::string(shape.name) + (zone == nullptr ? ", TZ unset" : ", TZ set");
      expectSameTrees(name.c_str(), model, content);
      const Work library = [&] { freePlain(model.flatten()); };
      const Work converting = [&] {
        convertEachBound(content);
        freePlain(flattenPlain(content));
      };
      const Comparison times = compareTimes(library, converting, 11);
      const Comparison floor = compareTimes(
          library, [&] { freePlain(flattenPlain(content)); }, 11);
      Table::row(name, times.ratio, nullptr,
                 timeText(times.nanoseconds / kElements) + " an entry instead of " +
                     timeText(times.itsNanoseconds / kElements) + "; library / floor " +
                     decimal(floor.ratio.median));
    }
  }
}

void measurePaging() {
  Table::section("a list of 100,000 items by pages of 10, against one page");
  constexpr unsigned int kItems = 100000;
  BKQDisk disk;
  BKQDiskItem item;
  for (unsigned int i = 0; i < kItems; ++i) disk.addDiskItem(item);
  const auto pages = [&](unsigned int size) {
    disk.resetDiskItems();
    for (;;) {
      BKQDiskItemCol* page = nullptr;
      const unsigned int placed = disk.enumDiskItems(page, size);
      delete page;
      if (placed == 0 || placed == kItems) return;
    }
  };
  const Comparison times = compareTimes([&] { pages(10); }, [&] { pages(kItems); }, 21);
  Table::row("enumDiskItems()", times.ratio, &kPages,
             timeText(times.nanoseconds / kItems) + " an element, in one page " +
                 timeText(times.itsNanoseconds / kItems));
}

void measureBuilding() {
  Table::section("making and deleting the library's objects, against copying the plain structures");
  for (const Shape& shape : growingShapes()) {
    constexpr unsigned int kElements = 10000;
    const Job content = shape.make(kElements);
    const Comparison times =
        compareTimes([&] { Model model(content); }, [&] { static_cast<void>(Job(content)); }, 11);
    Table::row(countText(kElements) + " " + shape.name, times.ratio, nullptr,
               timeText(times.nanoseconds / kElements) + " an element");
  }
  const Job content = typicalJob();
  const Comparison times =
      compareTimes([&] { Model model(content); }, [&] { static_cast<void>(Job(content)); }, 21);
  Table::row("typical job", times.ratio, nullptr, timeText(times.nanoseconds));
}

void measureCloning() {
  Table::section("cloning the typical job, against building it anew; neither is deleted");
  const Job content = typicalJob();
  Model model(content);
  const Comparison times =
      compareTimes([&] { model.job().clone(); }, [&] { new Model(content); }, 11);
  Table::row("clone()", times.ratio, nullptr,
             timeText(times.nanoseconds) + " instead of " + timeText(times.itsNanoseconds));
}

void measureDiff() {
  Table::section("comparing two images of 100,000 items, against reading both");
  static constexpr Limit kReadings = {2};
  const BkoqSink append = [](void* user, const char* text, std::size_t size) {
    static_cast<std::string*>(user)->append(text, size);
    return 0;
  };
  std::string images[2];
  for (std::string& image : images) {
    Job content;
    makeJob("items", 100000, content);
    if (&image != images) content.nodes[0].disks[0].items[50000].path = "/another";
    Model model(content);
    const PlainTree tree(model.flatten());
    bkoqWriteImage(tree.get(), BKOQ_LAYOUT_CURRENT, append, &image, nullptr);
  }
  std::string used[2];
  void* roots[2] = {};
  const Work read = [&] {
    for (int i = 0; i < 2; ++i) {
      BkoqLayout layout = BKOQ_LAYOUT_WIDEST;
      bkoqUseImage(&used[i][0], used[i].size(), &layout, &roots[i], nullptr);
    }
  };
  // Reading makes a tree of the image's own bytes, so each time needs a copy, which is not timed.
  const Timing reading = [&](unsigned int repeats) {
    double time = 0;
    for (unsigned int i = 0; i < repeats; ++i) {
      used[0] = images[0];
      used[1] = images[1];
      const double start = processNanoseconds();
      read();
      time += processNanoseconds() - start;
    }
    return time / repeats;
  };
  reading(1);
  const Timing comparing = timingOf([&] {
    std::string text;
    bkoqPrintChanges(roots[0], BKOQ_LAYOUT_CURRENT, roots[1], BKOQ_LAYOUT_CURRENT, nullptr, nullptr,
                     append, &text, nullptr);
  });
  const Comparison times = compareTimings(comparing, reading, 21);
  Table::row("bkoqPrintChanges() / two bkoqUseImage()", times.ratio, &kReadings,
             timeText(times.nanoseconds) + ", reading " + timeText(times.itsNanoseconds));
}

}  // namespace bkoq::bench
