#ifndef BKOQ_TESTS_SUPPORT_JOB_CONVERSION_H_
#define BKOQ_TESTS_SUPPORT_JOB_CONVERSION_H_

// What the tests of the conversions of jobs have in common: the fixture, and jobs and nodes to
// convert.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/catalog/layouts.h"
#include "tests/support/free_records.h"
#include "tests/support/media.h"
#include "tests/support/rows.h"

namespace bkoq::test {

// A tape node with tapes A of session 1, A of session 2 and B of session 1.
class Library : public BKQTapeNode {
 public:
  explicit Library(const char* name = "library") : BKQTapeNode(name) {
    addTape(a1_);
    addTape(a2_);
    addTape(b1_);
  }

 private:
  SessionTape a1_{"A", 1};
  SessionTape a2_{"A", 2};
  SessionTape b1_{"B", 1};
};

template <class L>
class JobConversion : public testing::Test {
 protected:
  using Other = OtherLayout<L>;

  void SetUp() override {
    // Whatever is taken from or stored in the other layout's variables shows.
    Other::newTapeTimeout() = 71;
    Other::spanTapeTimeout() = 72;
    Other::newTapeMethod() = 73;
    Other::spanTapeMethod() = 74;
    Other::diskSessionPassword() = otherDiskPassword_;
    Other::tapeSessionPassword() = otherTapePassword_;
    Other::diskEncryption() = 1;
    Other::diskCompression() = 1;
    Other::nodeNoEstimate() = 1;
    Other::currentNodeType() = 77;
    Other::unixOptions() = 0x8000;
    Other::diskName() = "other";
  }

  void TearDown() override {
    EXPECT_EQ(Other::newTapeTimeout(), 71u);
    EXPECT_EQ(Other::spanTapeTimeout(), 72u);
    EXPECT_EQ(Other::newTapeMethod(), 73u);
    EXPECT_EQ(Other::spanTapeMethod(), 74u);
    EXPECT_EQ(Other::diskSessionPassword(), otherDiskPassword_);
    EXPECT_EQ(Other::tapeSessionPassword(), otherTapePassword_);
    EXPECT_EQ(Other::diskEncryption(), 1u);
    EXPECT_EQ(Other::diskCompression(), 1u);
    EXPECT_EQ(Other::nodeNoEstimate(), 1u);
    EXPECT_EQ(Other::currentNodeType(), 77u);
    EXPECT_EQ(Other::unixOptions(), 0x8000u);
    EXPECT_STREQ(Other::diskName().data(), "other");
    Other::diskSessionPassword() = nullptr;
    Other::tapeSessionPassword() = nullptr;
    clear();
  }

  // Flattens the job; the fixture keeps the record and frees it.
  template <class Job, class... Arguments>
  int convert(Job& job, Arguments&&... arguments) {
    clear();
    void* out = nullptr;
    const int result = L::convert(job, out, std::forward<Arguments>(arguments)...);
    record = static_cast<typename L::Job*>(out);
    return result;
  }

  void expectJob(const std::string& what, const std::vector<Row>& rows) {
    expectRows(what, record, 292, rows);
  }

  std::vector<std::string> sourceNames() const {
    return names(record->pSourceNodes, record->ulNumSourceNodes);
  }
  std::vector<std::string> destNames() const {
    return names(record->pDestNodes, record->ulNumDestNodes);
  }
  const typename L::Disk& disk(const typename L::Node& node, unsigned int i = 0) const {
    return static_cast<const typename L::Disk*>(node.pMedia)[i];
  }
  const typename L::Tape& tape(const typename L::Node& node, unsigned int i = 0) const {
    return static_cast<const typename L::Tape*>(node.pMedia)[i];
  }
  // Name and session of each tape, "A1 B2".
  std::string tapes(const typename L::Node& node) const {
    std::string all;
    for (unsigned int i = 0; i < node.ulMediaCount; ++i) {
      if (i != 0) all += ' ';
      all += tape(node, i).pszTapeName + std::to_string(tape(node, i).usSessionNumber);
    }
    return all;
  }
  std::string disks(const typename L::Node& node) const {
    std::string all;
    for (unsigned int i = 0; i < node.ulMediaCount; ++i) {
      if (i != 0) all += ' ';
      all += disk(node, i).pszDiskName;
    }
    return all;
  }

  typename L::Job* record = nullptr;

 private:
  static std::vector<std::string> names(const typename L::Node* nodes, unsigned int count) {
    std::vector<std::string> all;
    for (unsigned int i = 0; i < count; ++i) all.emplace_back(nodes[i].pszNodeName);
    return all;
  }

  void clear() {
    freeJobRecord(record);
    record = nullptr;
    free(L::diskSessionPassword());
    L::diskSessionPassword() = nullptr;
    free(L::tapeSessionPassword());
    L::tapeSessionPassword() = nullptr;
  }

  char otherDiskPassword_[8] = "disk";
  char otherTapePassword_[8] = "tape";
};

inline void fillBase(BKQJob& job) {
  job.setOwner("owner");
  job.setReportFile("report");
  job.setComments("comments");
  job.setBeforeJob("before");
  job.setAfterJob("after");
  job.setHost("host");
  job.setJobStatus(static_cast<BKQJob::BKQJobStatus>(0x00010002));
  job.setScriptType(0xFFFE);
  job.setBeforeJobWait(0xFFFD);
  job.setOptions(0x80000001);
  job.setNewTapeTimeout(0xFFFF);
  job.setSpanTapeTimeout(0xFFFE);
  // What follows reaches no record.
  job.setJobID(0x11111111);
  job.setJobNumber(0x22222222);
  job.setOnExitCode(-1);
  job.setJobVersion("version");
  job.setPassword("password");
  job.setMachineName("machine");
  job.setMachineUser("user");
  job.setMachinePassword("machine password");
  job.setMachineAddress("address");
  job.setFileName("file");
  job.setPoolName("pool");
  job.setSNMPOn();
  job.setOvixOn();
  job.setScriptUserID("id", "script password");
}

inline std::vector<Row> baseRows(unsigned int jobType) {
  return {
      number(4, 2, jobType),       // usJobType
      number(8, 2, 2),             // usJobStatus: low 16 bits
      number(10, 2, 0xFFFE),       // usScriptType
      text(28, "owner"),           // pszOwner
      text(32, "report"),          // pszReportFile
      text(36, "comments"),        // pszComments
      text(40, "before"),          // pszBeforeJob
      text(44, "after"),           // pszAfterJob
      number(48, 2, 0xFFFD),       // usBeforeJobWait
      number(256, 4, 0x80000001),  // ulOptions
      text(260, "host"),           // pszHost
  };
}

// Three machines, the second and the fourth of one name, each with a disk.
class Machines {
 public:
  Machines() {
    unixNode.setNodeOSver("5");
    unixNode.setUnixOptions(0x10);
    unixNode.addDisk(usr);
    unixNode.addDisk(opt);
    winNT.addDisk(drive);
    mac.addDisk(hd);
    otherB.addDisk(usr);
  }
  void addTo(BKQBackupJob& job) {
    job.addSourceNode(unixNode);
    job.addSourceNode(winNT);
    job.addSourceNode(mac);
  }

  NamedDisk usr{"/usr", 1};
  NamedDisk opt{"/opt", 2};
  NamedDisk drive{"C:", 4};
  NamedDisk hd{"HD", 8};
  BKQUnixNode unixNode{"A"};
  BKQWinNTNode winNT{"B"};
  BKQMacNode mac{"C"};
  BKQFTPNode otherB{"B"};
  BKQDirFilter directory{BKQFilter::Exclude, "/tmp"};
  BKQFileFilter file{BKQFilter::Include, "*.c"};
};

using Names = std::vector<std::string>;

// A tape node class of a client's own.
class ForeignTapeNode : public BKQTapeNode {
 public:
  int convertToBK2(void*& rec) override { return mark(rec, 301); }
  int convertToBK2_old(void*& rec) override { return mark(rec, 302); }

 private:
  int mark(void* rec, unsigned int type) {
    static_cast<BKNODE*>(rec)->usNodeType = static_cast<uint16_t>(type);
    return 1;
  }
};

// A disk node class of a client's own, of any kind.
template <class Base>
class ForeignMachine : public Base {
 public:
  ForeignMachine(unsigned int type, const char* name) : Base(name), type_(type) {}
  unsigned int nodeType() const override { return type_; }
  using Base::convertToBK2;
  using Base::convertToBK2_old;
  int convertToBK2(void*& rec) override { return mark(rec, 301); }
  int convertToBK2_old(void*& rec) override { return mark(rec, 302); }

 private:
  int mark(void* rec, unsigned int type) {
    static_cast<BKNODE*>(rec)->usNodeType = static_cast<uint16_t>(type);
    return 1;
  }
  unsigned int type_;
};

template <class Collection, class Job>
unsigned int left(Job& job, unsigned int (Job::*enumerate)(Collection*&, unsigned int),
                  unsigned int n = 0) {
  Collection* elements = nullptr;
  const unsigned int count = (job.*enumerate)(elements, n);
  delete elements;
  return count;
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_JOB_CONVERSION_H_
