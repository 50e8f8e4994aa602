// What a flattening does when memory runs out. For one rich job of each kind a script lists, in
// order, every allocation that the flattening makes, its size, and what is reported when it fails.
// Then each of them is made to fail in turn.

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "examples/nightly_job.h"
#include "testing/layouts.h"
#include "testing/rows.h"
#include "testing/state_values.h"
#include "testing/stderr_capture.h"
#include "testing/time_zone.h"
#include "transfer/internal/wrap_malloc.h"

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
    steps_.push_back({false, size, "", false, 0, nulls});
  }

  void jobRecord() {
    steps_.push_back(
        {false, 292, "Failed in malloc " + name("BKQJDATATRANSFER") + "\n" + chain_, true, 0, 0});
  }
  // An element of an array, by its index.
  void element(const std::string& record, std::size_t size, uint32_t index) {
    steps_.push_back(
        {index != 0, size * (index + 1), failure(index != 0, record), false, index + 1, 0});
  }
  // A block that is no array, first allocated or made longer.
  void block(const char* name, std::size_t size, bool isRealloc) {
    steps_.push_back({isRealloc, size, failure(isRealloc, name), false, 0, 0});
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

// All texts of a record tree under the places where they hang, and the arrays that are lost: a
// count over a null pointer.
struct Tree {
  std::map<std::string, std::string> texts;
  std::map<std::string, uint32_t> lost;
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
      if (count != 0) tree_.lost[where] = count;
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

  // Afterwards the state variables hold none of the blocks, which are freed with this.
  Flattening(const Convert& convert, std::size_t failing, bool andAllAfter)
      : allocations(failing, andAllAfter) {
    void* out = &untouched_;
    lines = standardErrorOf([&] {
      allocations.start();
      result = convert(out);
      Allocations::stop();
    });
    BK6_DISKSESSIONPW = BK6_TAPESESSIONPW = nullptr;
    BK6_DISKSESSIONPW_OLD = BK6_TAPESESSIONPW_OLD = nullptr;
    if (out == &untouched_) return;
    record = out;
    TreeReader(tree).readJob(record);
  }

  Allocations allocations;
  int result = -1;
  std::string lines;
  const void* record = nullptr;  // null when `out` was left as it was
  Tree tree;

 private:
  char untouched_ = 0;
};

void expectSilent(const Flattening& failed, const Step& step, const Flattening& whole) {
  EXPECT_EQ(failed.result, 1);
  EXPECT_EQ(failed.lines, "");
  ASSERT_NE(failed.record, nullptr);
  EXPECT_TRUE(failed.tree.lost.empty());
  // The same tree but for the fields that are null.
  unsigned int nulls = 0;
  for (const auto& text : whole.tree.texts) {
    const auto found = failed.tree.texts.find(text.first);
    if (found == failed.tree.texts.end()) {
      ++nulls;
    } else {
      EXPECT_EQ(found->second, text.second) << text.first;
    }
  }
  EXPECT_EQ(nulls, step.nulls);
  EXPECT_EQ(failed.tree.texts.size() + nulls, whole.tree.texts.size());
}

void expectReported(const Flattening& failed, const Step& step) {
  EXPECT_EQ(failed.result, 0);
  EXPECT_EQ(failed.lines, step.lines);
  EXPECT_EQ(failed.record == nullptr, step.keepsOut);
  // The count of the array that failed is one higher than what it held, and the array is gone.
  if (step.count == 0) {
    EXPECT_TRUE(failed.tree.lost.empty());
  } else {
    ASSERT_EQ(failed.tree.lost.size(), 1u);
    EXPECT_EQ(failed.tree.lost.begin()->second, step.count) << failed.tree.lost.begin()->first;
  }
}

void failEveryAllocation(const Flattening::Convert& convert, const Script& script) {
  const std::vector<Step>& steps = script.steps();
  const Flattening whole(convert, Allocations::kNone, false);
  ASSERT_EQ(whole.result, 1);
  EXPECT_EQ(whole.lines, "");
  ASSERT_TRUE(whole.tree.lost.empty());
  const auto& calls = whole.allocations.calls();
  for (std::size_t i = 0; i < calls.size() && i < steps.size(); ++i) {
    ASSERT_EQ(calls[i].isRealloc, steps[i].isRealloc) << "allocation " << i << steps[i].lines;
    ASSERT_EQ(calls[i].size, steps[i].size) << "allocation " << i << steps[i].lines;
  }
  ASSERT_EQ(calls.size(), steps.size());

  for (std::size_t i = 0; i < steps.size(); ++i) {
    SCOPED_TRACE("allocation " + std::to_string(i) + " fails");
    const Flattening failed(convert, i, false);
    if (steps[i].lines.empty()) {
      expectSilent(failed, steps[i], whole);
    } else {
      expectReported(failed, steps[i]);
      EXPECT_EQ(failed.allocations.calls().size(), i + 1) << "goes on after a failure";
    }
  }

  // From one point on nothing succeeds: what is reported is the first step that reports at all.
  for (std::size_t i = 0; i < steps.size(); ++i) {
    SCOPED_TRACE("memory has run out from allocation " + std::to_string(i) + " on");
    std::size_t reporting = i;
    while (reporting < steps.size() && steps[reporting].lines.empty()) ++reporting;
    const Flattening failed(convert, i, true);
    if (reporting < steps.size()) {
      expectReported(failed, steps[reporting]);
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
};

TYPED_TEST_SUITE(Failures, Layouts, );

// The nightly backup.

void writeNightlyUnixNode(Script& script) {
  script.node(0);
  script.within("Unix Node", [&] {
    script.within("Base BKQDiskNode", [&] {
      script.silent(5);  // OS version, an empty second text behind it
      script.silent(8);  // node name, likewise
      if (!script.isPrevious()) script.texts({"accounting"});
      script.texts({"10.0.0.5", "root", "tr0ub4dor", "payroll"});
      script.disk(0);
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
      script.disk(1);
      script.within("Disk", [&] {
        script.texts({"/", "r00t"});
        script.diskItem(0);
        script.texts({"/etc"});
      });
    });
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

void writeNightly(Script& script) {
  script.within("Base BKQJob", [&] {
    script.jobRecord();
    script.texts({"operator", "/var/log/nightly.rpt", "Nightly backup of the accounting machines",
                  "/usr/local/bin/quiesce", "/usr/local/bin/resume", "backup1"});
    script.texts({"faxhost", "faxuser", "f4x", "555-0100", "cover.txt"});
    if (script.isPrevious()) script.texts({"Night shift"});
    script.texts({"mailhost", "mailuser", "m4il", "sys:mhs", "ops@acme", "ops"});
    script.texts({"printhost", "printuser", "pr1nt", "Q_NIGHT", "NIGHTSET"});
  });
  script.sharedText("s3ss10n", 4);  // the session password, of four disks without their own
  writeNightlyUnixNode(script);
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
  writeNightlyDestination(script);
  // Filter by filter, node by node; the second node has two of its own.
  for (uint32_t filter = 0; filter < 4; ++filter) {
    for (uint32_t node = 0; node < 4; ++node) {
      script.filter(node == 1 ? filter + 2 : filter);
      if (filter == 0) script.texts({"/tmp"});
      if (filter == 1) script.texts({"*.o"});
    }
  }
}

TYPED_TEST(Failures, NightlyBackup) {
  NightlyBackup nightly;
  this->failAll(nightly.job(), writeNightly);
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
    const Flattening whole(convert, Allocations::kNone, false);
    ASSERT_EQ(whole.allocations.calls().size(), script.steps().size());

    const Flattening failed(convert, script.steps().size() - 1, false);
    EXPECT_EQ(failed.allocations.calls().back().isRealloc, c.isRealloc);
    EXPECT_EQ(failed.allocations.calls().back().size, c.size);
    expectReported(failed, script.steps().back());
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
  const Flattening failed(convert, 2, false);  // after the job and the node record
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
  node->addTape(keeper.make<BKQTape>("G", "U"));
  return node;
}

// `password` is what tapes without one of their own take from the job; null when it has none.
void writeLibrary(Script& script, const char* password) {
  script.within("Tape Node", [&] {
    script.within("Base BKQNode", [&] {
      script.texts({"library"});
      script.nodeFilter(0);
      script.texts({"/a"});
    });
    script.tape(0);
    script.texts({"G", "T"});
    if (password != nullptr) script.texts({password});
    script.extension({"sa", "pw"});
    script.tapeItem(0);
    script.texts({"//srv"});
    script.tapeItem(1);
    script.texts({"//srv"});
    script.filter(0);
    script.texts({"f"});
    script.filter(1);
    script.texts({"g"});
    script.tape(1);
    script.texts({"G", "U"});
    if (password != nullptr) script.texts({password});
  });
}

TYPED_TEST(Failures, BaseJob) {
  BKQJob job;
  job.setOwner("owner");
  job.setHost("host");
  this->failAll(job, [](Script& script) {
    script.jobRecord();
    script.texts({"owner", "host"});
  });
}

void writeRestore(Script& script) {
  script.within("Base BKQJob", [&] {
    script.jobRecord();
    script.texts({"owner"});
  });
  script.sharedText("secret", 2);  // the session password, of two tapes
  script.node(0);
  writeLibrary(script, "secret");
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

void fillRestore(BKQRestoreJob& job, Keeper& keeper) {
  job.setOwner("owner");
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
  fillRestore(job, this->keeper_);
  this->failAll(job, writeRestore);
}

TYPED_TEST(Failures, DatabaseRestore) {
  BKQDatabaseRestoreJob job("restore");
  fillRestore(job, this->keeper_);
  this->failAll(job, writeRestore);
}

void writeTapeSources(Script& script) {
  script.node(0);
  writeLibrary(script, nullptr);
  script.node(1);
  script.texts({"other"});
}

TYPED_TEST(Failures, Verify) {
  BKQVerifyJob job("verify");
  job.setOwner("owner");
  job.addSourceNode(
      *makeLibrary(&this->keeper_.template make<BKQTapeNode>("library"), this->keeper_));
  job.addSourceNode(this->keeper_.template make<BKQTapeNode>("other"));
  this->failAll(job, [](Script& script) {
    script.jobRecord();
    script.texts({"owner"});
    writeTapeSources(script);
  });
}

TYPED_TEST(Failures, Compare) {
  BKQCompareJob job("compare");
  job.setOwner("owner");
  job.addSourceNode(
      *makeLibrary(&this->keeper_.template make<BKQTapeNode>("library"), this->keeper_));
  job.addSourceNode(this->keeper_.template make<BKQTapeNode>("other"));
  job.setDestination(makeMachine(this->keeper_));
  for (const char* overridePath : {"", "\\other"}) {
    const bool isOverridden = *overridePath != '\0';
    this->failAll(
        job,
        [&](Script& script) {
          script.within("Base BKQVerifyJob", [&] {
            script.jobRecord();
            script.texts({"owner"});
            writeTapeSources(script);
          });
          script.node(0);
          script.within("Disk Node", [&] { writeMachine(script, isOverridden); });
        },
        overridePath);
  }
}

TYPED_TEST(Failures, Merge) {
  BKQMergeJob job;
  job.setOwner("owner");
  job.setSource(*makeLibrary(new BKQTapeNode("library"), this->keeper_));
  job.setDestination(makeMachine(this->keeper_));
  this->failAll(job, [](Script& script) {
    script.within("Base BKQJob", [&] {
      script.jobRecord();
      script.texts({"owner"});
    });
    script.node(0);
    writeLibrary(script, nullptr);
    script.node(0);
    script.within("Disk Node", [&] { writeMachine(script, false); });
  });
}

TYPED_TEST(Failures, Scan) {
  BKQScanJob job;
  job.setOwner("owner");
  job.setSource(*makeLibrary(new BKQTapeNode("library"), this->keeper_));
  this->failAll(job, [](Script& script) {
    script.within("Base BKQJob", [&] {
      script.jobRecord();
      script.texts({"owner"});
    });
    script.node(0);
    writeLibrary(script, nullptr);
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
