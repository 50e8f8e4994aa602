// What the flattening of a backup does when memory runs out: a rich job of each kind of backup, in
// every form of the conversion.

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
#include "tests/catalog/forms.h"
#include "tests/catalog/kinds.h"
#include "tests/catalog/types.h"
#include "tests/memory/failures.h"
#include "tests/memory/wrap_malloc.h"
#include "tests/support/name_list.h"
#include "tests/support/parts.h"
#include "tests/support/rows.h"
#include "tests/support/state_values.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

template <class L>
class BackupFailures : public Failures<L> {};
TYPED_TEST_SUITE(BackupFailures, Layouts, );

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
      // OS version and node name; an empty one comes after the one that gets no text.
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
      script.silent(16);  // user and second password joined, an empty second text after them
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
static_assert(formsOf(JobFamily::kBackup) == 5, "each form needs its rows here");
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
    Script script(L::kLayout);
    writeNightly(script, form.wanted);
    failEveryAllocation(form.convert, script);
  }
}

TYPED_TEST(BackupFailures, EveryKind) {
  eachJobOf<JobFamily::kBackup>([](auto type) {
    NightlyBackup nightly;
    failBackup<TypeParam>(NightlyAs<typename decltype(type)::Of>(nightly).job());
  });
}

// The job itself, from which those above are made.
TYPED_TEST(BackupFailures, Nightly) {
  NightlyBackup nightly;
  failBackup<TypeParam>(nightly.job());
}

// The second text of a UNIX node.

TYPED_TEST(BackupFailures, SecondTextOfAUnixNode) {
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
    Script script(TypeParam::kLayout);
    script.within("Base BKQJob", [&] { script.jobRecord(); });
    script.node(0);
    script.within("Unix Node", [&] {
      for (std::size_t i = 0; i < texts; ++i) script.silent(3);
      script.block(c.field, c.size, c.isRealloc);
    });
    const auto convert = [&](void*& out) { return TypeParam::convert(job, out, "", c.mode, "xy"); };
    const Flattening whole(convert, script.layout(), Allocations::kNone, false);
    ASSERT_EQ(whole.allocations.calls().size(), script.steps().size());

    const Flattening failed(convert, script.layout(), script.steps().size() - 1, false);
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

TYPED_TEST(BackupFailures, SecondTextBehindAFirstThatFailed) {
  // A first text that could not be copied counts as an empty one.
  BKQUnixNode node("n");
  node.setNodeOSver("5");
  BKQBackupJob job;
  job.addSourceNode(node);
  const auto convert = [&](void*& out) { return TypeParam::convert(job, out, "", 1, "xy"); };
  const Flattening failed(convert, TypeParam::kLayout, 2,
                          false);  // after the job and the node record
  EXPECT_EQ(failed.result, 1);
  EXPECT_EQ(failed.lines, "");
  const char* source = pointerAt(failed.record, 16);
  EXPECT_EQ(std::string(pointerAt(source, 4), 4), std::string("\0xy\0", 4));
  EXPECT_EQ(numberAt(source, 56, 4), 0x920u);
}

}  // namespace
}  // namespace bkoq::test
