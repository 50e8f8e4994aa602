// What a flattening does when memory runs out. For one rich job of each kind a script lists, in
// order, every allocation that the flattening makes, its size, and what is reported when it fails.
// Then each of them is made to fail in turn.

#include <bkoq/kit.h>
#include <gtest/gtest.h>

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
#include "tests/memory/wrap_malloc.h"
#include "tests/support/layouts.h"
#include "tests/support/name_list.h"
#include "tests/support/parts.h"
#include "tests/support/rows.h"
#include "tests/support/state_values.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/time_zone.h"

namespace {

// One allocation. Without lines, its failure is silent: the flattening goes on and what would have
// pointed to the block is null.
struct Step {
  bool isRealloc;
  std::size_t size;
  std::string lines;
  bool keepsOut;       // the failure leaves `out` as the caller set it
  uint32_t count;      // the array's count after the failure, 0 when this is no array
  unsigned int nulls;  // fields that are null after a silent failure
  bool isFirst;        // of two texts: without it the first is empty
};

class Script {
 public:
  explicit Script(bool isPrevious) : isPrevious_(isPrevious) {}

  const std::vector<Step>& steps() const { return steps_; }
  bool isPrevious() const { return isPrevious_; }
  // The name of a record in the layout's messages.
  std::string name(const char* record) const {
    return isPrevious_ ? std::string(record) + "_OLD" : record;
  }

  // What reports a failure of the steps that `content` adds, besides what lies further out.
  void within(const char* part, const std::function<void()>& content) {
    const std::string outer = chain_;
    chain_ = std::string("Failed to convert ") + part + "\n" + outer;
    content();
    chain_ = outer;
  }

  // Copies of texts, each with its NUL.
  void texts(std::initializer_list<const char*> values) {
    for (const char* value : values) silent(std::string(value).size() + 1, 1);
  }
  // A text of which other fields are copies: they are null as well.
  void sharedText(const char* value, unsigned int copies) {
    silent(std::string(value).size() + 1, copies);
  }
  void silent(std::size_t size, unsigned int nulls = 1) {
    steps_.push_back({false, size, "", false, 0, nulls, false});
  }

  // A text that gets a second one behind it.
  void firstText(std::size_t size) { steps_.push_back({false, size, "", false, 0, 0, true}); }

  void jobRecord() {
    steps_.push_back({false, 292, "Failed in malloc " + name("BKQJDATATRANSFER") + "\n" + chain_,
                      true, 0, 0, false});
  }
  // An element of an array, by its index.
  void element(const std::string& record, std::size_t size, uint32_t index) {
    steps_.push_back(
        {index != 0, size * (index + 1), failure(index != 0, record), false, index + 1, 0, false});
  }
  // A block that is no array, first allocated or made longer.
  void block(const char* name, std::size_t size, bool isRealloc) {
    steps_.push_back({isRealloc, size, failure(isRealloc, name), false, 0, 0, false});
  }

  void node(uint32_t index) { element(name("BKNODE"), 100, index); }
  void disk(uint32_t index) { element(name("BKDDISK"), 52, index); }
  void diskItem(uint32_t index) { element(name("BKDISKITEM"), 32, index); }
  void tape(uint32_t index) { element(name("BKDTAPE"), 72, index); }
  void tapeItem(uint32_t index) { element(name("BKTAPEITEM"), 32, index); }
  void filter(uint32_t index) { element(name("BKFILTER_FILE"), 32, index); }
  // A node's own filters have one name in both layouts.
  void nodeFilter(uint32_t index) { element("BKFILTER_FILE", 32, index); }
  void extension(std::initializer_list<const char*> values) {
    if (isPrevious_) return;
    block("BKDTAPEX", 64, false);
    texts(values);
  }
  void fileList(std::initializer_list<const char*> names) {
    std::size_t size = 0;
    for (const char* file : names) {
      const bool isRealloc = size != 0;
      size += std::string(file).size() + 1;
      block("File List", size, isRealloc);
    }
  }

 private:
  std::string failure(bool isRealloc, const std::string& record) const {
    return (isRealloc ? "Failed in realloc " : "Failed in malloc ") + record + "\n" + chain_;
  }

  bool isPrevious_;
  std::string chain_;
  std::vector<Step> steps_;
};

// An array that is lost: a count over a null pointer.
struct LostArray {
  uint32_t count;
  const char* countField;
  const char* pointerField;
};

// All texts of a record tree under the places where they hang, and the arrays that are lost.
struct Tree {
  std::map<std::string, std::string> texts;
  std::map<std::string, LostArray> lost;
};

class TreeReader {
 public:
  explicit TreeReader(Tree& tree) : tree_(tree) {}

  void readJob(const void* job) {
    texts(job, "job", {28,  32,  36,  40,  44,  132, 136, 140, 144, 148, 152, 156,
                       160, 164, 168, 172, 176, 180, 184, 188, 192, 196, 260});
    const std::uint32_t type = numberAt(job, 4, 2);
    const bool readsTapes =
        type == 7 || type == 8 || type == 10 || type == 11 || type == 14 || type == 29;
    array(job, "source", 12, 16, 100,
          [&](const void* node, const std::string& where) { readNode(node, where, readsTapes); });
    array(job, "destination", 20, 24, 100,
          [&](const void* node, const std::string& where) { readNode(node, where, !readsTapes); });
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

  Tree& tree_;
};

// One flattening of a job and what came of it.
class Flattening {
 public:
  using Convert = std::function<int(void*& out)>;

  Flattening(const Convert& convert, bool isPrevious, std::size_t failing, bool andAllAfter)
      : allocations(failing, andAllAfter),
        layout(isPrevious ? BKOQ_LAYOUT_PREVIOUS : BKOQ_LAYOUT_CURRENT) {
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
    expectState(isPrevious ? stateOf<Current>() : stateOf<Previous>(), kEmptyState);
    if (out == &untouched_) return;
    record = out;
    TreeReader(tree).readJob(record);
  }

  // Frees the tree, whatever became of it, as a client does: the blocks of the tree and the session
  // passwords are all that there are, but for the one block that a failing realloc() lost.
  ~Flattening() {
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

  Allocations allocations;
  BkoqLayout layout;
  int result = -1;
  std::string lines;
  void* record = nullptr;  // null when `out` was left as it was
  Tree tree;

 private:
  // Hangs a lost array up again, so that what hangs from it is freed with the tree. False for a
  // block that is no array.
  bool putBack() const {
    if (tree.lost.empty()) return false;
    const LostArray& array = tree.lost.begin()->second;
    const uint32_t count = array.count - 1;
    void* const lost = allocations.lost();
    std::memcpy(const_cast<char*>(array.countField), &count, sizeof count);
    std::memcpy(const_cast<char*>(array.pointerField), &lost, sizeof lost);
    return true;
  }

  char untouched_ = 0;
  std::vector<char*> passwords_;  // taken out of the state variables
};

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
  const bool isCount = field.rfind("ulNum", 0) == 0 || field.find("Count") != std::string::npos;
  return isCount && std::stoul(value) < std::stoul(difference.whole);
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

// Whether the place is one of `paths`, or inside one of them.
bool isWithin(const std::string& path, const std::vector<std::string>& paths) {
  for (const std::string& outer : paths) {
    if (path.compare(0, outer.size(), outer) == 0) return true;
  }
  return false;
}

// `unfinished` are the places that were unfinished when the flattening ended one step earlier, and
// become those of this failure: what has been filled stays filled.
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
  // What was not reached is as it was cleared, and the rest as in the whole tree.
  std::vector<std::string> now;
  for (const Difference& difference : differencesOf(whole, failed)) {
    EXPECT_TRUE(isUnfinished(difference))
        << difference.path << " is " << difference.failed << ", in the end " << difference.whole;
    const bool isLostNow = step.count > 1 && difference.failed.rfind("null (unfinished", 0) == 0;
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

// Says in the end how many allocations failed.
class Total : public testing::Environment {
 public:
  static std::size_t failures;
  void TearDown() override { std::printf("%zu allocations made to fail\n", failures); }
};
std::size_t Total::failures = 0;
const auto* const kTotal = testing::AddGlobalTestEnvironment(new Total);

void failEveryAllocation(const Flattening::Convert& convert, const Script& script) {
  const std::vector<Step>& steps = script.steps();
  const bool isPrevious = script.isPrevious();
  const Flattening whole(convert, isPrevious, Allocations::kNone, false);
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
    const Flattening failed(convert, isPrevious, i, false);
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
    const Flattening failed(convert, isPrevious, i, true);
    if (reporting < steps.size()) {
      std::vector<std::string> anything = {""};
      expectReported(failed, steps[reporting], whole, anything);
    } else {
      EXPECT_EQ(failed.result, 1);
      EXPECT_EQ(failed.lines, "");
    }
  }
}

template <class L>
class Failures : public testing::Test {
 protected:
  template <class Job, class... Arguments>
  void failAll(Job& job, const std::function<void(Script&)>& write, Arguments... arguments) {
    Script script(L::kPrevious);
    write(script);
    failEveryAllocation([&](void*& out) { return L::convert(job, out, arguments...); }, script);
  }

  TimeZone zone_{kFiveHoursWest};
  Keeper keeper_;
  BKQPrintQueue queue_;
};

TYPED_TEST_SUITE(Failures, Layouts, );

// The nightly backup.

// What of the nightly backup a form asks for.
struct Wanted {
  bool onlyLedger = false;
  std::vector<std::string> disks;  // empty for all
  int unixKind = 0;
  const char* unixText = "";
};

void writeHomeDisk(Script& script, uint32_t index) {
  script.disk(index);
  script.within("Disk", [&] {
    script.texts({"/home", "s3ss10n"});
    script.silent(8);  // user and second password in a row
    script.diskItem(0);
    script.within("DiskItem", [&] {
      script.texts({"/home/ledgers"});
      script.fileList({"2003.db", "2004.db"});
    });
    script.diskItem(1);
    script.texts({"/home"});
    script.filter(0);
    script.texts({"vol*"});
    script.filter(1);
  });
}

void writeRootDisk(Script& script, uint32_t index) {
  script.disk(index);
  script.within("Disk", [&] {
    script.texts({"/", "r00t"});
    script.diskItem(0);
    script.texts({"/etc"});
  });
}

void writeNightlyUnixNode(Script& script, const Wanted& wanted) {
  const std::vector<std::string> all = {"/home", "/"};
  const bool hasText = *wanted.unixText != '\0';
  const std::size_t textSize = std::strlen(wanted.unixText) + 1;
  script.node(0);
  script.within("Unix Node", [&] {
    script.within("Base BKQDiskNode", [&] {
      // OS version and node name; behind the one that gets no text stands an empty one.
      hasText&& wanted.unixKind == 1 ? script.firstText(5) : script.silent(5);
      hasText&& wanted.unixKind == 2 ? script.firstText(8) : script.silent(8);
      if (!script.isPrevious()) script.texts({"accounting"});
      script.texts({"10.0.0.5", "root", "tr0ub4dor", "payroll"});
      uint32_t index = 0;
      for (const std::string& disk : wanted.disks.empty() ? all : wanted.disks) {
        disk == "/" ? writeRootDisk(script, index++) : writeHomeDisk(script, index++);
      }
    });
    if (!hasText) return;
    if (wanted.unixKind == 1) script.block("pszNodeOSVer", 4 + textSize, true);
    if (wanted.unixKind == 2) script.block("pszNodeName", 7 + textSize, true);
  });
}

void writeNightlyWindowsNode(Script& script) {
  script.node(1);
  script.within("Node", [&] {
    script.within("Base BKQNode", [&] {
      script.texts({"4.0", "payroll", "Administrator", "l3tm31n"});
      script.nodeFilter(0);
      script.nodeFilter(1);
    });
    script.disk(0);
    script.texts({"Registry", "s3ss10n"});
    script.disk(1);
    script.within("Disk", [&] {
      script.texts({"D:", "0123abcd", "s3ss10n"});
      script.silent(16);  // user and second password joined, an empty second text behind them
      script.diskItem(0);
      script.within("DiskItem", [&] {
        script.texts({"\\payroll"});
        script.fileList({"march.xls", "april.xls", "may.xls"});
      });
    });
  });
}

void writeNightlyOtherNodes(Script& script) {
  writeNightlyWindowsNode(script);
  script.node(2);
  script.within("Node", [&] {
    script.texts({"tree"});
    if (script.isPrevious()) {
      script.texts({"O=ACME"});
    } else {
      script.texts({"10.0.0.9", "10.0.0.9"});
    }
  });
  script.node(3);
  script.within("Node", [&] {
    script.texts({"dbserver", "sa"});
    script.disk(0);
    script.within("Disk", [&] {
      script.texts({"accounts", "s3ss10n"});
      script.silent(11);
      script.diskItem(0);
      script.texts({"master"});
    });
  });
}

void writeNightlyDestination(Script& script) {
  script.node(0);
  script.within("Tape Node", [&] {
    script.texts({"library1"});
    script.tape(0);
    script.texts({"DAILY", "NIGHT-01", "/ledgers", "shelf 4"});
    script.extension({"sa", "syb4se"});
    script.tapeItem(0);
    script.tapeItem(1);
    script.texts({"/etc/passwd"});
    script.filter(0);
    script.texts({"*.db"});
    script.tape(1);
    script.texts({"DAILY", "NIGHT-02", "t4pe"});
  });
}

void writeNightly(Script& script, const Wanted& wanted) {
  script.within("Base BKQJob", [&] {
    script.jobRecord();
    script.texts({"operator", "/var/log/nightly.rpt", "Nightly backup of the accounting machines",
                  "/usr/local/bin/quiesce", "/usr/local/bin/resume", "backup1"});
    script.texts({"faxhost", "faxuser", "f4x", "555-0100", "cover.txt"});
    if (script.isPrevious()) script.texts({"Night shift"});
    script.texts({"mailhost", "mailuser", "m4il", "sys:mhs", "ops@acme", "ops"});
    script.texts({"printhost", "printuser", "pr1nt", "Q_NIGHT", "NIGHTSET"});
  });
  // The session password, of four disks without their own, one of them of the first node.
  const bool hasHome =
      wanted.disks.empty() || wanted.disks.front() == "/home" || wanted.disks.back() == "/home";
  script.sharedText("s3ss10n", wanted.onlyLedger ? hasHome : 4);
  writeNightlyUnixNode(script, wanted);
  if (!wanted.onlyLedger) writeNightlyOtherNodes(script);
  writeNightlyDestination(script);
  // Filter by filter, node by node; the second node has two of its own.
  for (uint32_t filter = 0; filter < 4; ++filter) {
    for (uint32_t node = 0; node < (wanted.onlyLedger ? 1 : 4); ++node) {
      script.filter(node == 1 ? filter + 2 : filter);
      if (filter == 0) script.texts({"/tmp"});
      if (filter == 1) script.texts({"*.o"});
    }
  }
}

// The nightly backup as a job of another class.
template <class Job>
class NightlyAs {
 public:
  explicit NightlyAs(NightlyBackup& nightly) : nightly_(nightly.job()), job_(new Job("nightly")) {
    static_cast<BKQJob&>(*job_).mycopy(&nightly_);
    job_->setSessionPassword("s3ss10n");
    job_->setOpenFileInfo(*new BKQOpenFileInfo);
    BKQNodeCol* nodes = nullptr;
    nightly_.resetSourceNodes();
    const unsigned int nodeCount = nightly_.enumSourceNodes(nodes, 4);
    for (unsigned int i = 0; i < nodeCount; ++i) {
      job_->addSourceNode(*static_cast<BKQNode*>(nodes->at(i)));
    }
    delete nodes;
    BKQFilterCol* filters = nullptr;
    nightly_.resetFilters();
    const unsigned int filterCount = nightly_.enumFilters(filters, 4);
    for (unsigned int i = 0; i < filterCount; ++i) {
      job_->addFilter(*static_cast<BKQFilter*>(filters->at(i)));
    }
    delete filters;
    job_->setDestination(*nightly_.getDestination());
  }
  ~NightlyAs() {
    // The destination stays the other job's.
    job_->setDestination(*spareDestination_);
    deleteClone(job_, nightly_);
  }
  NightlyAs(const NightlyAs&) = delete;
  NightlyAs& operator=(const NightlyAs&) = delete;

  Job& job() { return *job_; }

 private:
  BKQBackupJob& nightly_;
  Job* job_;
  BKQTapeNode* spareDestination_ = new BKQTapeNode("");
};

// Every form of the conversion of a backup.
template <class L, class Job>
void failBackup(Job& job) {
  NameList noNames{};
  NameList home{"/home"};
  NameList both{"/", "/home"};
  const struct {
    std::function<int(void*& out)> convert;
    Wanted wanted;
  } forms[] = {
      {[&](void*& out) { return L::convert(job, out); }, {}},
      {[&](void*& out) { return L::convert(job, out, ""); }, {}},
      {[&](void*& out) { return L::convert(job, out, "ledger"); }, {true, {}, 0, ""}},
      {[&](void*& out) { return L::convert(job, out, "", noNames); }, {}},
      {[&](void*& out) { return L::convert(job, out, "ledger", both); },
       {true, {"/", "/home"}, 0, ""}},
      {[&](void*& out) { return L::convert(job, out, "", 0, ""); }, {}},
      {[&](void*& out) { return L::convert(job, out, "ledger", 1, "extra"); },
       {true, {}, 1, "extra"}},
      {[&](void*& out) { return L::convert(job, out, "", noNames, 2, ""); }, {}},
      {[&](void*& out) { return L::convert(job, out, "ledger", home, 2, "extra"); },
       {true, {"/home"}, 2, "extra"}},
  };
  for (const auto& form : forms) {
    Script script(L::kPrevious);
    writeNightly(script, form.wanted);
    failEveryAllocation(form.convert, script);
  }
}

template <class L, class... Jobs>
void failBackups() {
  NightlyBackup nightly;
  (failBackup<L>(NightlyAs<Jobs>(nightly).job()), ...);
}

TYPED_TEST(Failures, Backups) {
  NightlyBackup nightly;
  failBackup<TypeParam>(nightly.job());
  failBackups<TypeParam, BKQBackupJob, BKQCruiseBackupJob, BKQCruiseMakeupJob, BKQRotationMakeupJob,
              BKQCustomBackupJob, BKQDatabaseBackupJob>();
}

// The second text of a UNIX node.

TYPED_TEST(Failures, SecondTextOfAUnixNode) {
  BKQUnixNode node("n");
  BKQUnixNode empty("");
  node.setNodeOSver("5");
  const struct {
    BKQUnixNode& node;
    int mode;
    const char* field;
    std::size_t size;
    bool isRealloc;
  } cases[] = {
      {node, 1, "pszNodeOSVer", 5, true},
      {node, 2, "pszNodeName", 5, true},
      {empty, 1, "pszNodeOSVer", 4, false},
      {empty, 2, "pszNodeName", 4, false},
  };
  for (const auto& c : cases) {
    BKQBackupJob job;
    job.addSourceNode(c.node);
    const std::size_t texts = c.isRealloc ? 2 : 0;
    Script script(TypeParam::kPrevious);
    script.within("Base BKQJob", [&] { script.jobRecord(); });
    script.node(0);
    script.within("Unix Node", [&] {
      for (std::size_t i = 0; i < texts; ++i) script.silent(3);
      script.block(c.field, c.size, c.isRealloc);
    });
    const auto convert = [&](void*& out) { return TypeParam::convert(job, out, "", c.mode, "xy"); };
    const Flattening whole(convert, script.isPrevious(), Allocations::kNone, false);
    ASSERT_EQ(whole.allocations.calls().size(), script.steps().size());

    const Flattening failed(convert, script.isPrevious(), script.steps().size() - 1, false);
    EXPECT_EQ(failed.allocations.calls().back().isRealloc, c.isRealloc);
    EXPECT_EQ(failed.allocations.calls().back().size, c.size);
    std::vector<std::string> unfinished = {""};
    expectReported(failed, script.steps().back(), whole, unfinished);
    // The field is null, and the option bit says nothing of a second text.
    const char* source = pointerAt(failed.record, 16);
    EXPECT_EQ(pointerAt(source, c.mode == 1 ? 4 : 8), nullptr);
    EXPECT_EQ(numberAt(source, 56, 4), 0x120u);
    EXPECT_EQ(pointerAt(source, c.mode == 1 ? 8 : 4) != nullptr, c.isRealloc);
  }
}

TYPED_TEST(Failures, SecondTextBehindAFirstThatFailed) {
  // A first text that could not be copied counts as an empty one.
  BKQUnixNode node("n");
  node.setNodeOSver("5");
  BKQBackupJob job;
  job.addSourceNode(node);
  const auto convert = [&](void*& out) { return TypeParam::convert(job, out, "", 1, "xy"); };
  const Flattening failed(convert, TypeParam::kPrevious, 2,
                          false);  // after the job and the node record
  EXPECT_EQ(failed.result, 1);
  EXPECT_EQ(failed.lines, "");
  const char* source = pointerAt(failed.record, 16);
  EXPECT_EQ(std::string(pointerAt(source, 4), 4), std::string("\0xy\0", 4));
  EXPECT_EQ(numberAt(source, 56, 4), 0x920u);
}

// An override path: one item for all.

void writeMachine(Script& script, bool isOverridden) {
  script.within("Base BKQNode", [&] {
    script.texts({"machine"});
    script.nodeFilter(0);
    script.texts({"/a"});
  });
  script.disk(0);
  script.within("Disk", [&] {
    script.texts({"C:", "key", "own"});
    script.silent(5);  // only a user, an empty second text behind it
    script.diskItem(0);
    if (isOverridden) {
      script.texts({"\\other"});
    } else {
      script.within("DiskItem", [&] {
        script.texts({"\\one"});
        script.fileList({"a", "bc"});
      });
      script.diskItem(1);
      script.texts({""});
    }
    script.filter(0);
    script.filter(1);
    script.texts({"*"});
  });
}

// A machine with a node filter and a disk with two items and two filters.
BKQDiskNode& makeMachine(Keeper& keeper) {
  auto* node = new BKQWinNTNode("machine");
  node->addFilter(keeper.make<BKQDirFilter>(BKQFilter::Include, "/a"));
  auto& disk = keeper.make<BKQDisk>();
  disk.setDiskName("C:");
  disk.setEncryptionKey("key");
  disk.setPassword("own");
  disk.setUser("ops");
  auto& item = keeper.make<BKQDiskItem>("\\one");
  item.addFile("a");
  item.addFile("bc");
  disk.addDiskItem(item);
  disk.addDiskItem(keeper.make<BKQDiskItem>(""));
  disk.addFilter(keeper.make<BKQAttributeFilter>(BKQFilter::Include, 1u));
  disk.addFilter(keeper.make<BKQVolumeFilter>(BKQFilter::Include, "*"));
  node->addDisk(disk);
  return *node;
}

// A tape node with a filter and two tapes.
BKQTapeNode* makeLibrary(BKQTapeNode* node, Keeper& keeper) {
  node->addFilter(keeper.make<BKQDirFilter>(BKQFilter::Include, "/a"));
  auto& first = keeper.make<BKQTape>("G", "T");
  first.setSessionNumber(5);
  auto& extension = keeper.make<BKQTapeXtension>(5L);
  extension.setDBuser("sa");
  extension.setDBpw("pw");
  first.setTapeXtension(extension);
  auto& item = keeper.make<BKQTapeItem>(1u, static_cast<unsigned short>(2));
  item.setFileOrDir("//srv");
  first.addTapeItem(item);
  first.addTapeItem(item);
  first.addFilter(keeper.make<BKQFileFilter>(BKQFilter::Include, "f"));
  first.addFilter(keeper.make<BKQFileFilter>(BKQFilter::Include, "g"));
  node->addTape(first);
  auto& second = keeper.make<BKQTape>("G", "U");
  second.setSessionNumber(9);
  node->addTape(second);
  return node;
}

// Which of the two tapes a form asks for.
enum class Tapes { kBoth, kFirst, kSecond, kNone };

// `password` is what tapes without one of their own take from the job; null when it has none.
void writeLibrary(Script& script, const char* password, Tapes wanted) {
  const auto writeTape = [&](uint32_t index, const char* name) {
    script.tape(index);
    script.texts({"G", name});
    if (password != nullptr) script.texts({password});
  };
  script.within("Tape Node", [&] {
    script.within("Base BKQNode", [&] {
      script.texts({"library"});
      script.nodeFilter(0);
      script.texts({"/a"});
    });
    if (wanted == Tapes::kBoth || wanted == Tapes::kFirst) {
      writeTape(0, "T");
      script.extension({"sa", "pw"});
      script.tapeItem(0);
      script.texts({"//srv"});
      script.tapeItem(1);
      script.texts({"//srv"});
      script.filter(0);
      script.texts({"f"});
      script.filter(1);
      script.texts({"g"});
    }
    if (wanted == Tapes::kBoth) writeTape(1, "U");
    if (wanted == Tapes::kSecond) writeTape(0, "U");
  });
}

// Every form of the conversions that narrow the tapes.
template <class L, class Job>
void failTapeForms(Job& job, const std::function<void(Script&, Tapes)>& write) {
  const auto session = [](int number) { return static_cast<unsigned short>(number); };
  const struct {
    std::function<int(void*& out)> convert;
    Tapes wanted;
  } forms[] = {
      {[&](void*& out) { return L::convert(job, out); }, Tapes::kBoth},
      {[&](void*& out) { return L::convert(job, out, "", session(0)); }, Tapes::kBoth},
      {[&](void*& out) { return L::convert(job, out, "T", session(0)); }, Tapes::kFirst},
      {[&](void*& out) { return L::convert(job, out, "", session(9)); }, Tapes::kSecond},
      {[&](void*& out) { return L::convert(job, out, "T", session(9)); }, Tapes::kNone},
  };
  for (const auto& form : forms) {
    Script script(L::kPrevious);
    write(script, form.wanted);
    failEveryAllocation(form.convert, script);
  }
}

// What every kind of job can have, as another job than the nightly backup has it: Internet e-mail
// and a grandfather-father-son rotation.
void fillBase(BKQJob& job, BKQPrintQueue& queue) {
  job.setOwner("owner");
  job.setReportFile("report");
  job.setComments("comments");
  job.setBeforeJob("before");
  job.setAfterJob("after");
  job.setHost("host");
  auto* fax = new BKQFax;
  fax->setHostName("faxhost");
  fax->setReceiverName("receiver");
  job.setFaxInfo(*fax);
  auto* email = new BKQInternetEMail;
  email->setHostName("mailhost");
  email->setUserName("mailuser");
  email->setUserPW("m4il");
  job.setEMailInfo(*email);
  queue.setQueueName("Q");
  job.setPrintQueue(queue);
  auto* schedule = new BKQCruiseSchedule;
  schedule->setSetName("SET");
  schedule->setJobMask(*new BKQJobMask);
  job.BKQJob::setSchedule(*schedule);
}

void writeBase(Script& script) {
  script.jobRecord();
  script.texts({"owner", "report", "comments", "before", "after", "host", "faxhost"});
  if (script.isPrevious()) script.texts({"receiver"});
  script.texts({"mailhost", "mailuser", "m4il", "Q", "SET"});
}

TYPED_TEST(Failures, BaseJob) {
  BKQJob job;
  BKQPrintQueue queue;
  fillBase(job, queue);
  this->failAll(job, writeBase);
}

void writeRestore(Script& script, Tapes wanted) {
  script.within("Base BKQJob", [&] { writeBase(script); });
  // The session password, of each tape.
  script.sharedText("secret", wanted == Tapes::kBoth ? 2 : wanted == Tapes::kNone ? 0 : 1);
  script.node(0);
  writeLibrary(script, "secret", wanted);
  script.node(1);
  script.texts({"other"});

  script.node(0);
  script.within("Restore Node", [&] {
    script.within("Base BKQNode", [&] {
      script.texts({"standby"});
      script.nodeFilter(0);
      script.texts({"/a"});
    });
    script.disk(0);
    script.texts({"/usr"});
    script.diskItem(0);
    script.texts({"/usr/tmp"});
  });
  script.node(1);
  script.within("DB Restore Node", [&] {
    script.within("Base BKQRestoreNode", [&] {
      script.texts({"db"});
      script.disk(0);
      script.texts({"accounts"});
      script.diskItem(0);
      script.texts({"accounts"});
    });
    script.block("pszDiskPW2", 7, false);  // joined, an empty second text behind it
  });
  script.node(2);
  script.within("DB Restore Node", [&] {
    script.within("Base BKQRestoreNode", [&] {
      script.within("Base BKQNode", [&] {
        script.texts({"pair"});
        script.nodeFilter(0);
        script.texts({"/a"});
      });
      script.disk(0);
      script.diskItem(0);
    });
    script.block("pszDiskPW2", 6, false);  // two texts in a row
  });

  // The first source has a filter of its own.
  for (uint32_t filter = 0; filter < 2; ++filter) {
    for (uint32_t node = 0; node < 2; ++node) {
      script.filter(node == 0 ? filter + 1 : filter);
      script.texts({filter == 0 ? "*.c" : "/tmp"});
    }
  }
}

void fillRestore(BKQRestoreJob& job, Keeper& keeper, BKQPrintQueue& queue) {
  fillBase(job, queue);
  job.setSessionPassword("secret");
  job.addSourceNode(*makeLibrary(&keeper.make<BKQTapeNode>("library"), keeper));
  job.addSourceNode(keeper.make<BKQTapeNode>("other"));
  auto& filter = keeper.make<BKQDirFilter>(BKQFilter::Include, "/a");
  auto& machine = keeper.make<BKQRestoreNode>("standby", "/usr");
  machine.setDestinationDir("/tmp");
  machine.addFilter(filter);
  job.addDestNode(machine);
  auto& database = keeper.make<BKQDBRestoreNode>("db", "accounts");
  database.setFStype(static_cast<BKQDisk::BKQDiskType>(22));
  database.setDBuser("sa", "pw");
  job.addDestNode(database);
  auto& pair = keeper.make<BKQDBRestoreNode>("pair");
  pair.setDBuser("sa", "pw");
  pair.addFilter(filter);
  job.addDestNode(pair);
  job.addFilter(keeper.make<BKQFileFilter>(BKQFilter::Include, "*.c"));
  job.addFilter(keeper.make<BKQDirFilter>(BKQFilter::Exclude, "/tmp"));
}

TYPED_TEST(Failures, Restore) {
  BKQRestoreJob job("restore");
  fillRestore(job, this->keeper_, this->queue_);
  failTapeForms<TypeParam>(job, writeRestore);
}

TYPED_TEST(Failures, DatabaseRestore) {
  BKQDatabaseRestoreJob job("restore");
  fillRestore(job, this->keeper_, this->queue_);
  failTapeForms<TypeParam>(job, writeRestore);
}

void writeTapeSources(Script& script, Tapes wanted) {
  script.node(0);
  writeLibrary(script, nullptr, wanted);
  script.node(1);
  script.texts({"other"});
}

TYPED_TEST(Failures, Verify) {
  BKQVerifyJob job("verify");
  fillBase(job, this->queue_);
  job.addSourceNode(
      *makeLibrary(&this->keeper_.template make<BKQTapeNode>("library"), this->keeper_));
  job.addSourceNode(this->keeper_.template make<BKQTapeNode>("other"));
  failTapeForms<TypeParam>(job, [](Script& script, Tapes wanted) {
    writeBase(script);
    writeTapeSources(script, wanted);
  });
}

TYPED_TEST(Failures, Compare) {
  BKQCompareJob job("compare");
  fillBase(job, this->queue_);
  job.addSourceNode(
      *makeLibrary(&this->keeper_.template make<BKQTapeNode>("library"), this->keeper_));
  job.addSourceNode(this->keeper_.template make<BKQTapeNode>("other"));
  job.setDestination(makeMachine(this->keeper_));
  const auto write = [](Script& script, Tapes wanted, bool isOverridden) {
    script.within("Base BKQVerifyJob", [&] {
      writeBase(script);
      writeTapeSources(script, wanted);
    });
    script.node(0);
    script.within("Disk Node", [&] { writeMachine(script, isOverridden); });
  };
  failTapeForms<TypeParam>(job,
                           [&](Script& script, Tapes wanted) { write(script, wanted, false); });
  this->failAll(
      job, [&](Script& script) { write(script, Tapes::kBoth, true); }, "\\other");
  this->failAll(
      job, [&](Script& script) { write(script, Tapes::kSecond, true); }, "",
      static_cast<unsigned short>(9), "\\other");
  this->failAll(
      job, [&](Script& script) { write(script, Tapes::kFirst, false); }, "T",
      static_cast<unsigned short>(0), "");
}

TYPED_TEST(Failures, Merge) {
  BKQMergeJob job;
  fillBase(job, this->queue_);
  job.setSource(*makeLibrary(new BKQTapeNode("library"), this->keeper_));
  job.setDestination(makeMachine(this->keeper_));
  failTapeForms<TypeParam>(job, [](Script& script, Tapes wanted) {
    script.within("Base BKQJob", [&] { writeBase(script); });
    script.node(0);
    writeLibrary(script, nullptr, wanted);
    script.node(0);
    script.within("Disk Node", [&] { writeMachine(script, false); });
  });
}

TYPED_TEST(Failures, Scan) {
  BKQScanJob job;
  fillBase(job, this->queue_);
  job.setSource(*makeLibrary(new BKQTapeNode("library"), this->keeper_));
  failTapeForms<TypeParam>(job, [](Script& script, Tapes wanted) {
    script.within("Base BKQJob", [&] { writeBase(script); });
    script.node(0);
    writeLibrary(script, nullptr, wanted);
  });
}

// Without a job record a flattening decides nothing: what the last one left stays.
TYPED_TEST(Failures, JobRecordThatFailsLeavesTheStateAsItWas) {
  using L = TypeParam;
  char diskPassword[] = "disk";
  char tapePassword[] = "tape";
  L::newTapeTimeout() = 11;
  L::spanTapeTimeout() = 12;
  L::newTapeMethod() = 13;
  L::spanTapeMethod() = 14;
  L::diskSessionPassword() = diskPassword;
  L::tapeSessionPassword() = tapePassword;
  L::diskEncryption() = 15;
  L::diskCompression() = 16;
  L::nodeNoEstimate() = 17;
  L::currentNodeType() = 18;
  L::unixOptions() = 19;
  L::diskName() = "name";
  const StateValues before = {11, 12, 13, 14, "disk", "tape", 15, 16, 17, 18, 19, "name"};

  std::vector<std::unique_ptr<BKQJob>> jobs;
  jobs.emplace_back(new BKQJob);
  const auto addBackup = [&](BKQBackupJob* job) {
    job->setSessionPassword("secret");
    job->setEncryptionOn();
    job->addSourceNode(this->keeper_.template make<BKQUnixNode>("unix"));
    jobs.emplace_back(job);
  };
  addBackup(new BKQBackupJob);
  addBackup(new BKQCruiseBackupJob);
  addBackup(new BKQRotationBackupJob);
  addBackup(new BKQCruiseMakeupJob);
  addBackup(new BKQRotationMakeupJob);
  addBackup(new BKQCustomBackupJob);
  addBackup(new BKQDatabaseBackupJob("backup"));
  for (BKQRestoreJob* job : {new BKQRestoreJob("restore"),
                             static_cast<BKQRestoreJob*>(new BKQDatabaseRestoreJob("restore"))}) {
    job->setSessionPassword("secret");
    job->addSourceNode(this->keeper_.template make<BKQTapeNode>("library"));
    jobs.emplace_back(job);
  }
  jobs.emplace_back(new BKQVerifyJob("verify"));
  jobs.emplace_back(new BKQCompareJob("compare"));
  jobs.emplace_back(new BKQMergeJob);
  jobs.emplace_back(new BKQScanJob);

  for (const std::unique_ptr<BKQJob>& job : jobs) {
    SCOPED_TRACE(job->jobType());
    job->setOptions(0x00100000);
    Allocations noMemory(0);
    int result = -1;
    char untouched = 0;
    void* out = &untouched;
    standardErrorOf([&] {
      noMemory.start();
      result = L::convert(*job, out);
      Allocations::stop();
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(out, &untouched);
    EXPECT_EQ(noMemory.calls().size(), 1u);
    expectState(stateOf<L>(), before);
    EXPECT_EQ(L::diskSessionPassword(), diskPassword);
    EXPECT_EQ(L::tapeSessionPassword(), tapePassword);
    expectState(stateOf<OtherLayout<L>>(), kEmptyState);
  }
  L::diskSessionPassword() = L::tapeSessionPassword() = nullptr;
}

}  // namespace
