#include "bench/floor.h"

#include <bkoq/bkoq.h>

#include <cstdlib>
#include <cstring>

#ifdef BKOQ_BENCH_IN_PLACE
#include "transfer/blocks.h"
#endif

namespace bkoq::bench {
namespace {

// This file is compiled twice: with the C library's copies, and with those of the library.
void copyText(char* to, const char* from, std::size_t size) {
#ifdef BKOQ_BENCH_IN_PLACE
  copyBytes(to, from, size);
#else
  std::memcpy(to, from, size);
#endif
}

template <class Record>
Record& append(std::uint32_t& count, Record*& array) {
  ++count;
  array = static_cast<Record*>(array == nullptr ? std::malloc(sizeof(Record))
                                                : std::realloc(array, count * sizeof(Record)));
  Record& last = array[count - 1];
  std::memset(&last, 0, sizeof last);
  return last;
}

// `nuls` more bytes than the text has, which are zero.
char* copy(const std::string& text, std::size_t nuls = 1) {
  if (text.empty()) return nullptr;
  char* block = static_cast<char*>(std::malloc(text.size() + nuls));
  copyText(block, text.data(), text.size());
  std::memset(block + text.size(), 0, nuls);
  return block;
}

char* join(const char* first, std::size_t firstSize, const std::string& second) {
  const std::size_t size = firstSize + second.size();
  char* block = static_cast<char*>(std::malloc(size + 1));
  copyText(block, first, firstSize);
  copyText(block + firstSize, second.data(), second.size());
  block[size] = '\0';
  return block;
}

void fill(BKFILTER_FILE& record, const Filter& filter) {
  record.usFilterType = filter.type;
  record.usInclExcl = filter.inclExcl;
  if (filter.type == 4) {
    record.usTimeAttr = filter.timeAttribute;
    record.usTimeRange = filter.timeRange;
    record.lStartTime = filter.localBounds[0];
    if (filter.timeRange == 2) record.lEndTime = filter.localBounds[1];
  } else if (filter.type == 5) {
    record.ulAttributes = filter.attributes;
  } else if (!filter.pattern.empty()) {
    record.ulFilterCount = 1;
    record.usFilterLen = static_cast<std::uint16_t>(filter.pattern.size() + 1);
    record.pszFilter = copy(filter.pattern);
  }
}

void fill(BKDISKITEM& record, const DiskItem& item, const Disk& disk, bool isUnix) {
  // On a UNIX machine a path is made absolute by the name of its disk.
  record.pszPath =
      isUnix ? join(disk.name.data(), disk.name.size(), item.path) : join("", 0, item.path);
  record.ulOptions = item.options;
  std::size_t end = 0;
  for (const std::string& file : item.files) {
    const std::size_t size = end + file.size() + 1;
    record.pFileList = static_cast<char*>(
        record.pFileList == nullptr ? std::malloc(size) : std::realloc(record.pFileList, size));
    copyText(record.pFileList + end, file.data(), file.size());
    record.pFileList[size - 1] = '\0';
    ++record.ulFileCount;
    end = size;
  }
}

// The user and the second password in a row, each with its NUL.
char* credentials(const Disk& disk) {
  if (disk.password2.empty()) return copy(disk.user, 2);
  const std::size_t size = disk.user.size() + disk.password2.size() + 2;
  char* block = static_cast<char*>(std::malloc(size));
  copyText(block, disk.user.data(), disk.user.size());
  block[disk.user.size()] = '\0';
  copyText(block + disk.user.size() + 1, disk.password2.data(), disk.password2.size());
  block[size - 1] = '\0';
  return block;
}

void fill(BKDDISK& record, const Disk& disk, std::uint32_t addedOptions, bool isUnix) {
  record.usDiskType = static_cast<std::uint16_t>(disk.type);
  record.ulOptions = disk.options | addedOptions;
  record.pszDiskName = copy(disk.name);
  record.pszEncryptionKey = copy(disk.encryptionKey);
  record.pszPassword = copy(disk.password);
  record.pszDiskPW2 = credentials(disk);
  for (const DiskItem& item : disk.items) {
    fill(append(record.ulDiskItemCount, record.pDiskItems), item, disk, isUnix);
  }
  for (const Filter& filter : disk.filters) {
    fill(append(record.ulFilterCount, record.pFilters), filter);
  }
}

void fill(BKNODE& record, const Node& node, std::uint32_t addedOptions) {
  const bool isUnix = node.type == BKQNode::UnixNode;
  record.usNodeType = static_cast<std::uint16_t>(node.type);
  record.usNodeOS = static_cast<std::uint16_t>(node.os);
  record.usDeviceType = node.deviceType;
  record.usBeforeNodeWait = node.beforeNodeWait;
  record.ulNodeOptions = node.options;
  record.pszNodeOSVer = copy(node.osVersion, isUnix ? 2 : 1);
  record.pszNodeName = copy(node.name, isUnix ? 2 : 1);
  record.pszNodeDomain = copy(node.domain);
  record.pszNodeAddress = copy(node.address);
  record.pszUserName = copy(node.user);
  record.pszPassword = copy(node.password);
  record.pszBeforeNode = copy(node.beforeNode);
  record.pszAfterNode = copy(node.afterNode);
  for (const Filter& filter : node.filters) {
    fill(append(record.ulFilterCount, record.pFilters), filter);
  }
  auto* disks = static_cast<BKDDISK*>(nullptr);
  for (const Disk& disk : node.disks) {
    fill(append(record.ulMediaCount, disks), disk, addedOptions | node.unixOptions, isUnix);
  }
  record.pMedia = disks;
}

void fill(BKTAPEITEM& record, const TapeItem& item) {
  record.ulChunkNum = item.chunk;
  record.usChunkOffset = item.chunkOffset;
  record.ulOptions = item.options;
  if (!item.fileOrDir.empty()) record.pszFileOrDir = join("/", 1, item.fileOrDir);
}

void fill(BKDTAPE& record, const Tape& tape, const Job& job) {
  record.pszDeviceGroup = copy(tape.deviceGroup);
  record.pszTapeName = copy(tape.name);
  record.usTapeID = static_cast<std::uint16_t>(tape.id);
  record.usTapeSeq = tape.sequence;
  record.usSessionNumber = tape.session;
  record.ulQFABlockNumber = tape.qfaBlock;
  record.usNewTapeTimeout = job.newTapeTimeout;
  record.usSpanTapeTimeout = job.spanTapeTimeout;
  record.usNewTapeMethod = static_cast<std::uint16_t>(job.newTapeMethod);
  record.usSpanTapeMethod = static_cast<std::uint16_t>(job.spanTapeMethod);
  record.pszSessionPW = copy(tape.sessionPassword);
  record.usFileSystem = tape.fileSystem;
  record.ulOptions = tape.options;
  record.pszPath = copy(tape.path);
  record.pszLocation = copy(tape.location);
  for (const TapeItem& item : tape.items) {
    fill(append(record.ulTapeItemCount, record.pTapeItems), item);
  }
  for (const Filter& filter : tape.filters) {
    fill(append(record.ulFilterCount, record.pFilters), filter);
  }
}

#ifndef BKOQ_BENCH_IN_PLACE
void freeFilters(const BKFILTER_FILE* filters, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    if (filters[i].usFilterType <= 3) std::free(filters[i].pszFilter);
  }
  std::free(const_cast<BKFILTER_FILE*>(filters));
}

template <class... Texts>
void freeTexts(Texts*... texts) {
  (std::free(texts), ...);
}

void freeNode(const BKNODE& node) {
  freeTexts(node.pszNodeOSVer, node.pszNodeName, node.pszNodeAddress, node.pszUserName,
            node.pszPassword, node.pszBeforeNode, node.pszAfterNode, node.pszNodeDomain);
  freeFilters(node.pFilters, node.ulFilterCount);
}

void freeDisks(const BKNODE& node) {
  auto* disks = static_cast<BKDDISK*>(node.pMedia);
  for (std::uint32_t d = 0; d < node.ulMediaCount; ++d) {
    const BKDDISK& disk = disks[d];
    for (std::uint32_t i = 0; i < disk.ulDiskItemCount; ++i) {
      freeTexts(disk.pDiskItems[i].pszPath, disk.pDiskItems[i].pFileList);
    }
    freeTexts(disk.pszDiskName, disk.pszPassword, disk.pszDiskPW2, disk.pszEncryptionKey);
    freeFilters(disk.pFilters, disk.ulFilterCount);
    std::free(disk.pDiskItems);
  }
  std::free(disks);
}

void freeTapes(const BKNODE& node) {
  auto* tapes = static_cast<BKDTAPE*>(node.pMedia);
  for (std::uint32_t t = 0; t < node.ulMediaCount; ++t) {
    const BKDTAPE& tape = tapes[t];
    for (std::uint32_t i = 0; i < tape.ulTapeItemCount; ++i) {
      std::free(tape.pTapeItems[i].pszFileOrDir);
    }
    freeTexts(tape.pszDeviceGroup, tape.pszTapeName, tape.pszSessionPW, tape.pszPath,
              tape.pszLocation);
    freeFilters(tape.pFilters, tape.ulFilterCount);
    std::free(tape.pTapeItems);
  }
  std::free(tapes);
}

#endif

}  // namespace

#ifdef BKOQ_BENCH_IN_PLACE
BKQJDATATRANSFER* flattenInPlace(const Job& job) {
#else
BKQJDATATRANSFER* flattenPlain(const Job& job) {
#endif
  auto* record = static_cast<BKQJDATATRANSFER*>(std::malloc(sizeof(BKQJDATATRANSFER)));
  std::memset(record, 0, sizeof *record);
  record->usJobType = 1;
  record->usJobStatus = job.status;
  record->usScriptType = job.scriptType;
  record->usBeforeJobWait = job.beforeJobWait;
  record->ulOptions = job.options;
  record->pszOwner = copy(job.owner);
  record->pszReportFile = copy(job.reportFile);
  record->pszComments = copy(job.comments);
  record->pszBeforeJob = copy(job.beforeJob);
  record->pszAfterJob = copy(job.afterJob);
  record->pszHost = copy(job.host);

  const std::uint32_t addedOptions =
      (job.isEncrypted ? 0x4000U : 0U) | (job.isCompressed ? 0x2000U : 0U);
  for (const Node& node : job.nodes) {
    fill(append(record->ulNumSourceNodes, record->pSourceNodes), node, addedOptions);
  }

  BKNODE& destination = append(record->ulNumDestNodes, record->pDestNodes);
  destination.usNodeType = BKQNode::UnixNode;
  destination.usNodeOS = 6;
  destination.usDeviceType = 1;
  destination.pszNodeName = copy(job.destination);
  auto* tapes = static_cast<BKDTAPE*>(nullptr);
  for (const Tape& tape : job.tapes) fill(append(destination.ulMediaCount, tapes), tape, job);
  destination.pMedia = tapes;

  for (const Filter& filter : job.filters) {
    for (std::uint32_t n = 0; n < record->ulNumSourceNodes; ++n) {
      BKNODE& node = record->pSourceNodes[n];
      fill(append(node.ulFilterCount, node.pFilters), filter);
    }
  }
  return record;
}

#ifndef BKOQ_BENCH_IN_PLACE
void freePlain(void* job) {
  auto* record = static_cast<BKQJDATATRANSFER*>(job);
  for (std::uint32_t i = 0; i < record->ulNumSourceNodes; ++i) {
    freeDisks(record->pSourceNodes[i]);
    freeNode(record->pSourceNodes[i]);
  }
  freeTapes(*record->pDestNodes);
  freeNode(*record->pDestNodes);
  freeTexts(record->pszOwner, record->pszReportFile, record->pszComments, record->pszBeforeJob,
            record->pszAfterJob, record->pszHost);
  std::free(record->pSourceNodes);
  std::free(record->pDestNodes);
  std::free(record);
}
#endif

}  // namespace bkoq::bench
