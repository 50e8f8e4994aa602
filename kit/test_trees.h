#ifndef BKOQ_KIT_TEST_TREES_H_
#define BKOQ_KIT_TEST_TREES_H_

#include <bkoq/kit.h>
#include <bkoq/records.h>
#include <bkoq/records_old.h>

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string>

namespace bkoq::test {

// Record trees made by hand, as a conversion would make them: every block from malloc().

inline char* text(const char* content) { return strdup(content); }

// Texts back to back, each with its NUL.
inline char* texts(std::initializer_list<const char*> all) {
  std::string content;
  for (const char* one : all) content.append(one).push_back('\0');
  char* block = static_cast<char*>(std::malloc(content.size()));
  content.copy(block, content.size());
  return block;
}

template <class Record>
Record* zeroed(std::size_t count = 1) {
  return static_cast<Record*>(std::calloc(count, sizeof(Record)));
}

template <class Record>
struct LayoutOf;
template <>
struct LayoutOf<BKQJDATATRANSFER> {
  static constexpr BkoqLayout kValue = BKOQ_LAYOUT_CURRENT;
};
template <>
struct LayoutOf<BKQJDATATRANSFER_OLD> {
  static constexpr BkoqLayout kValue = BKOQ_LAYOUT_PREVIOUS;
};

template <class Job>
struct FreeTree {
  void operator()(Job* job) const { bkoqFree(job, LayoutOf<Job>::kValue, nullptr); }
};
// A tree that the kit frees at the end of the test; LeakSanitizer sees what it forgets.
template <class Job>
using TreeOf = std::unique_ptr<Job, FreeTree<Job>>;
using CurrentTree = TreeOf<BKQJDATATRANSFER>;
using PreviousTree = TreeOf<BKQJDATATRANSFER_OLD>;

template <class Job>
TreeOf<Job> makeJob(std::uint16_t kind) {
  TreeOf<Job> job(zeroed<Job>());
  job->usJobType = kind;
  return job;
}
inline CurrentTree currentJob(std::uint16_t kind) { return makeJob<BKQJDATATRANSFER>(kind); }
inline PreviousTree previousJob(std::uint16_t kind) { return makeJob<BKQJDATATRANSFER_OLD>(kind); }

// Gives an owner an array of zeroed records and returns its first.
template <class Element, class Pointer>
Element* give(std::uint32_t& count, Pointer*& array, std::uint32_t size) {
  count = size;
  Element* elements = zeroed<Element>(size);
  array = elements;
  return elements;
}

inline void makePatternFilter(BKFILTER_FILE& filter, std::uint16_t type, const char* pattern) {
  filter.usFilterType = type;
  filter.ulFilterCount = 1;
  filter.pszFilter = text(pattern);
  filter.usFilterLen = static_cast<std::uint16_t>(std::strlen(pattern) + 1);
}

// A backup of a UNIX machine to a tape, with something of every kind of field; the previous
// layout's is what the same job would give there.
template <class Job, class Node, class Tape>
TreeOf<Job> makeBackup() {
  TreeOf<Job> job = makeJob<Job>(20);
  job->usJobStatus = 2;
  job->pszOwner = text("operator");
  job->ulOptions = 0x00100008;
  job->stSchedule.lSubmitTime = 1078156800;
  job->stSchedule.lExecTime = -1;
  job->stOpenFile.ulFActions = 3;
  job->stFax.pszHostName = text("faxhost");
  job->stFax.pszUserPW = text("f4x");
  job->stScheduleExt.pszSetName = text("NIGHTSET");

  auto& unixNode = *give<Node>(job->ulNumSourceNodes, job->pSourceNodes, 2);
  unixNode.usNodeType = 3;
  unixNode.usNodeOS = 6;
  unixNode.pszNodeOSVer = texts({"5.8", ""});
  unixNode.pszNodeName = texts({"ledger", "extra"});
  unixNode.pszPassword = text("tr0ub4dor");
  unixNode.ulNodeOptions = 0x360;
  auto* filters = give<BKFILTER_FILE>(unixNode.ulFilterCount, unixNode.pFilters, 5);
  makePatternFilter(filters[0], 2, "*.tmp");
  filters[1].usFilterType = 5;
  filters[1].usInclExcl = 1;
  filters[1].ulAttributes = 0x80000001;
  filters[2].usFilterType = 4;
  filters[2].usTimeRange = 1;
  filters[2].lTime = 1078070400;
  filters[3].usFilterType = 4;
  filters[3].usTimeRange = 2;
  filters[3].lStartTime = 1078070400;
  filters[3].lEndTime = 1078156800;
  filters[4].usFilterType = 4;
  filters[4].usTimeRange = 3;
  filters[4].ulTimeUnits = 7;
  filters[4].usTimeUnitType = 2;

  auto& disk = *give<BKDDISK>(unixNode.ulMediaCount, unixNode.pMedia, 1);
  disk.pszDiskName = text("/home");
  disk.usDiskType = 5;
  disk.ulOptions = 0x6011;
  disk.pszDiskPW2 = texts({"ops", "0ps"});
  disk.pszEncryptionKey = text("0123abcd");
  auto& item = *give<BKDISKITEM>(disk.ulDiskItemCount, disk.pDiskItems, 1);
  item.pszPath = text("/home/ledgers");
  item.ulFileCount = 2;
  item.pFileList = texts({"2003.db", "2004.db"});

  auto& ntNode = job->pSourceNodes[1];
  ntNode.usNodeType = 9;
  ntNode.pszNodeName = text("payroll");

  auto& tapeNode = *give<Node>(job->ulNumDestNodes, job->pDestNodes, 1);
  tapeNode.usNodeType = 3;
  tapeNode.pszNodeName = text("library1");
  tapeNode.usDeviceType = 1;
  auto& tape = *give<Tape>(tapeNode.ulMediaCount, tapeNode.pMedia, 1);
  tape.pszTapeName = text("NIGHT-01");
  tape.usSessionNumber = 17;
  auto& tapeItem = *give<BKTAPEITEM>(tape.ulTapeItemCount, tape.pTapeItems, 1);
  tapeItem.ulChunkNum = 7;
  tapeItem.pszFileOrDir = text("/etc/passwd");
  return job;
}

inline CurrentTree currentBackup() {
  CurrentTree job = makeBackup<BKQJDATATRANSFER, BKNODE, BKDTAPE>();
  job->pSourceNodes[0].pszNodeDomain = text("accounting");
  auto& tape = *static_cast<BKDTAPE*>(job->pDestNodes[0].pMedia);
  tape.usTapeID = 0x2345;
  tape.ulOptions = 0x8000000;
  tape.pTapeX = zeroed<BKDTAPEX>();
  tape.pTapeX->pszDBUser = text("sa");
  tape.pTapeX->pszDBPW = text("syb4se");
  tape.pTapeX->lSessionEndTime = 1000;
  return job;
}

inline PreviousTree previousBackup() {
  PreviousTree job = makeBackup<BKQJDATATRANSFER_OLD, BKNODE_OLD, BKDTAPE_OLD>();
  job->stFax.pszReceiverName = text("night shift");
  job->stScheduleExt.abJobTypes[0] = 1;
  job->stScheduleExt.abJobTypes[1] = 2;
  auto& tape = *static_cast<BKDTAPE_OLD*>(job->pDestNodes[0].pMedia);
  tape.ulTapeID = 0x12345;
  tape.lSessionEndTime = 1000;
  return job;
}

inline int appendToString(void* string, const char* content, std::size_t size) {
  static_cast<std::string*>(string)->append(content, size);
  return 0;
}

}  // namespace bkoq::test

#endif  // BKOQ_KIT_TEST_TREES_H_
