#include "tests/support/free_records.h"

#include <bkoq/kit.h>
#include <bkoq/state.h>

#include <cstdint>
#include <cstdlib>
#include <initializer_list>

// All of them free by the kit: what is no whole tree is hung into a job record first.

namespace bkoq::test {
namespace {

template <class Job>
struct Parts;
template <>
struct Parts<BKQJDATATRANSFER> {
  using Node = BKNODE;
  static constexpr BkoqLayout kLayout = BKOQ_LAYOUT_CURRENT;
};
template <>
struct Parts<BKQJDATATRANSFER_OLD> {
  using Node = BKNODE_OLD;
  static constexpr BkoqLayout kLayout = BKOQ_LAYOUT_PREVIOUS;
};

template <class Record>
Record* newRecord() {
  return static_cast<Record*>(std::calloc(1, sizeof(Record)));
}

template <class Job>
void freeJob(Job* job) {
  if (job != nullptr) bkoqFree(job, Parts<Job>::kLayout, nullptr);
}

template <class Job>
void freeNode(const typename Parts<Job>::Node& node, NodeFamily family) {
  constexpr std::uint16_t kBackup = 1;
  constexpr std::uint16_t kRestore = 7;
  Job* job = newRecord<Job>();
  job->usJobType = family == NodeFamily::kTape ? kRestore : kBackup;
  job->ulNumSourceNodes = 1;
  job->pSourceNodes = newRecord<typename Parts<Job>::Node>();
  *job->pSourceNodes = node;
  // A restore destination may be called a UNIX machine, whose texts are two in a block; to free a
  // block it is enough to know of the first.
  job->pSourceNodes->usNodeType = 0;
  freeJob(job);
}

template <class Job>
void freeMedia(void* records, std::uint32_t count, NodeFamily family) {
  typename Parts<Job>::Node node{};
  node.ulMediaCount = count;
  node.pMedia = records;
  freeNode<Job>(node, family);
}

}  // namespace

void freeFilters(BKFILTER_FILE* filters, uint32_t count) {
  BKNODE node{};
  node.ulFilterCount = count;
  node.pFilters = filters;
  freeNodeContents(node, NodeFamily::kDisk);
}

void freeDisk(BKDDISK& disk) {
  auto* record = newRecord<BKDDISK>();
  *record = disk;
  freeDisks(record, 1);
}

void freeDisks(void* disks, uint32_t count) {
  freeMedia<BKQJDATATRANSFER>(disks, count, NodeFamily::kDisk);
}

void freeTapes(BKDTAPE* tapes, uint32_t count) {
  freeMedia<BKQJDATATRANSFER>(tapes, count, NodeFamily::kTape);
}

void freeTapes(BKDTAPE_OLD* tapes, uint32_t count) {
  freeMedia<BKQJDATATRANSFER_OLD>(tapes, count, NodeFamily::kTape);
}

void freeNodeContents(BKNODE& node, NodeFamily family) { freeNode<BKQJDATATRANSFER>(node, family); }

void freeNodeContents(BKNODE_OLD& node, NodeFamily family) {
  freeNode<BKQJDATATRANSFER_OLD>(node, family);
}

void freeJobRecord(BKQJDATATRANSFER* job) { freeJob(job); }

void freeJobRecord(BKQJDATATRANSFER_OLD* job) { freeJob(job); }

void freeSessionPasswords() {
  for (char** variable :
       {&BK6_DISKSESSIONPW, &BK6_TAPESESSIONPW, &BK6_DISKSESSIONPW_OLD, &BK6_TAPESESSIONPW_OLD}) {
    std::free(*variable);
    *variable = nullptr;
  }
}

}  // namespace bkoq::test
