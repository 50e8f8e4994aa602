// A client for gdb to look at: jobs of every kind with every attribute set, those of the examples
// and some that no job file makes. Writes the images of their records, as the kit has them, into
// the folder given and stops in ready(). With a number, passwords and keys of the jobs that set all
// are longer by so many bytes.
#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "examples/nightly_job.h"
#include "examples/other_jobs.h"
#include "tests/debugger/documents.h"
#include "tests/support/reset_state.h"
#include "tools/attributes.h"

namespace {

struct Case {
  std::string name;
  BKQJob* job = nullptr;
  BKQJDATATRANSFER* current = nullptr;
  BKQJDATATRANSFER_OLD* previous = nullptr;
};

// A client's own classes.
class LabelledNode : public BKQUnixNode {
 public:
  LabelledNode() : BKQUnixNode("labelled") {}
  LabelledNode* clone() override { return new LabelledNode; }
  const char* label = "shelf 4";
};
class NoFilter : public BKQFilter {
 public:
  NoFilter* clone() override { return new NoFilter; }
  unsigned int filterType() const override { return 2; }
};
struct Named {
  virtual ~Named() = default;
  const char* title = "second base";
};
class NamedJob : public Named, public BKQBackupJob {
 public:
  NamedJob() : BKQBackupJob("named") {}
};

std::string folder;

void writeImage(const Case& made, const void* root, BkoqLayout layout) {
  const bool isCurrent = layout == BKOQ_LAYOUT_CURRENT;
  const std::string path =
      folder + "/" + made.name + (isCurrent ? ".current.image" : ".previous.image");
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr || bkoqWriteImage(root, layout, bkoqFileSink, file, nullptr) != BKOQ_OK) {
    std::fprintf(stderr, "no image of %s\n", made.name.c_str());
    std::exit(1);
  }
  std::fclose(file);
}

}  // namespace

// gdb finds these by their names.
std::vector<Case> cases;
LabelledNode* labelledNode = nullptr;
NamedJob* namedJob = nullptr;

extern "C" __attribute__((noinline)) void ready() { asm volatile("" ::: "memory"); }

namespace {

void add(const std::string& name, BKQJob& job) {
  Case made;
  made.name = name;
  made.job = &job;
  void* out = nullptr;
  bkoq::test::resetState();
  if (job.convertToBK2(out) != 1) std::fprintf(stderr, "%s: the conversion failed\n", name.c_str());
  made.current = static_cast<BKQJDATATRANSFER*>(out);
  out = nullptr;
  bkoq::test::resetState();
  job.convertToBK2_old(out);
  made.previous = static_cast<BKQJDATATRANSFER_OLD*>(out);
  writeImage(made, made.current, BKOQ_LAYOUT_CURRENT);
  writeImage(made, made.previous, BKOQ_LAYOUT_PREVIOUS);
  cases.push_back(made);
}

bkoq::tool::Kept kept;

void addEveryAttribute(const bkoq::tool::ObjectClass& kind, unsigned int seed,
                       std::size_t secretLength) {
  bkoq::tool::Problems problems;
  const auto document = bkoq::parsed(bkoq::test::everyAttribute(kind, seed, secretLength));
  bkoq::tool::Reader reader(*document, problems, kept);
  BKQJob* job = bkoq::tool::jobs().read(reader, document->root());
  for (const bkoq::tool::Problem& problem : problems.sorted()) {
    std::fprintf(stderr, "%s\n", bkoq::tool::lineOf(problem, kind.kind).c_str());
  }
  if (job == nullptr || !problems.empty()) std::exit(1);
  add("every-" + kind.kind + "-" + std::to_string(seed), *job);
}

}  // namespace

int main(int argc, char** argv) {  // NOLINT(bugprone-exception-escape): it fails the test
  if (argc < 2) return 2;
  folder = argv[1];
  const std::size_t secretLength = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 0;
  for (const bkoq::tool::ObjectClass& kind : bkoq::tool::jobs().classes) {
    // A schedule of each class that there is; the others take fewer.
    const unsigned int seeds = kind.kind == "restore" ? 4 : 2;
    for (unsigned int seed = 0; seed < seeds; ++seed) addEveryAttribute(kind, seed, secretLength);
  }

  NightlyBackup nightly;
  add("nightly", nightly.job());
  Keeper keeper;
  BKQRestoreJob restore("ledgers back");
  defineRestore(restore, keeper);
  add("restore", restore);
  BKQMergeJob merge;
  defineMerge(merge, keeper);
  add("merge", merge);

  // What no job file can carry.
  // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what it is about
  BKQBackupJob foreign("foreign \"classes\" \x1b[31m\xe2\x80\xae");
  foreign.setOwner("\xff\xfe");
  LabelledNode node;
  labelledNode = &node;
  NoFilter filter;
  node.addFilter(filter);
  BKQWithinTimeFilter within;
  node.addFilter(within);
  foreign.addSourceNode(node);
  foreign.setDestination(*new BKQTapeNode("library1"));
  add("foreign", foreign);

  NamedJob named;
  namedJob = &named;
  ready();
  return 0;
}
