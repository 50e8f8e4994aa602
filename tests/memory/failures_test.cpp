// What a flattening does when memory runs out: a rich job of each kind that is no backup, in every
// form of the conversion.

#include "tests/memory/failures.h"

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
#include "tests/memory/wrap_malloc.h"
#include "tests/support/name_list.h"
#include "tests/support/parts.h"
#include "tests/support/rows.h"
#include "tests/support/state_values.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/time_zone.h"

namespace bkoq::test {
namespace {

TYPED_TEST_SUITE(Failures, Layouts, );

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
    script.silent(5);  // only a user, an empty second text after it
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

// Every form of the conversions that narrow the tapes; compares have two more, with a path.
static_assert(formsOf(JobFamily::kRestore) == 2 && formsOf(JobFamily::kVerify) == 2 &&
                  formsOf(JobFamily::kMerge) == 2 && formsOf(JobFamily::kScan) == 2 &&
                  formsOf(JobFamily::kCompare) == 4,
              "each form needs its rows here");
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
    Script script(L::kLayout);
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
    script.block("pszDiskPW2", 7, false);  // joined, an empty second text after it
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

TYPED_TEST(Failures, Restores) {
  eachJobOf<JobFamily::kRestore>([](auto type) {
    Keeper keeper;
    BKQPrintQueue queue;
    typename decltype(type)::Of job("restore");
    fillRestore(job, keeper, queue);
    failTapeForms<TypeParam>(job, writeRestore);
  });
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

  for (const JobKindLine& line : kJobKinds) {
    SCOPED_TRACE(line.className);
    const std::unique_ptr<BKQJob> job(line.make("job"));
    if (auto* backup = dynamic_cast<BKQBackupJob*>(job.get())) {
      backup->setSessionPassword("secret");
      backup->setEncryptionOn();
      backup->addSourceNode(this->keeper_.template make<BKQUnixNode>("unix"));
    } else if (auto* restore = dynamic_cast<BKQRestoreJob*>(job.get())) {
      restore->setSessionPassword("secret");
      restore->addSourceNode(this->keeper_.template make<BKQTapeNode>("library"));
    }
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
}  // namespace bkoq::test
