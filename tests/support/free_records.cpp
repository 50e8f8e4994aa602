#include "tests/support/free_records.h"

#include <bkoq/state.h>

#include <cstdlib>
#include <initializer_list>

namespace bkoq::test {
namespace {

template <class Tape>
void freeTapeBlocks(Tape& tape) {
  std::free(tape.pszDeviceGroup);
  std::free(tape.pszTapeName);
  std::free(tape.pszSessionPW);
  std::free(tape.pszPath);
  std::free(tape.pszLocation);
  freeFilters(tape.pFilters, tape.ulFilterCount);
  for (uint32_t i = 0; tape.pTapeItems != nullptr && i < tape.ulTapeItemCount; ++i) {
    std::free(tape.pTapeItems[i].pszFileOrDir);
  }
  std::free(tape.pTapeItems);
}

void freeDomain(BKNODE& node) { std::free(node.pszNodeDomain); }
void freeDomain(BKNODE_OLD& /*node*/) {}

template <class Tape, class Node>
void freeNode(Node& node, Media media) {
  std::free(node.pszNodeOSVer);
  std::free(node.pszNodeName);
  std::free(node.pszNodeAddress);
  std::free(node.pszUserName);
  std::free(node.pszPassword);
  std::free(node.pszBeforeNode);
  std::free(node.pszAfterNode);
  freeDomain(node);
  freeFilters(node.pFilters, node.ulFilterCount);
  if (media == Media::kTapes) {
    freeTapes(static_cast<Tape*>(node.pMedia), node.ulMediaCount);
  } else {
    freeDisks(node.pMedia, node.ulMediaCount);
  }
}

template <class Node>
void freeNodes(Node* nodes, uint32_t count, Media media) {
  for (uint32_t i = 0; nodes != nullptr && i < count; ++i) freeNodeContents(nodes[i], media);
  std::free(nodes);
}

// Restores, verifies, compares, merges and scans read tapes; backups write them.
bool readsTapes(unsigned int jobType) {
  switch (jobType) {
    case 7:
    case 8:
    case 10:
    case 11:
    case 14:
    case 29:
      return true;
    default:
      return false;
  }
}

template <class Job>
void freeJob(Job* job) {
  if (job == nullptr) return;
  const bool sourcesAreTapes = readsTapes(job->usJobType);
  freeNodes(job->pSourceNodes, job->ulNumSourceNodes,
            sourcesAreTapes ? Media::kTapes : Media::kDisks);
  freeNodes(job->pDestNodes, job->ulNumDestNodes, sourcesAreTapes ? Media::kDisks : Media::kTapes);
  for (char* text : {job->pszOwner,
                     job->pszReportFile,
                     job->pszComments,
                     job->pszBeforeJob,
                     job->pszAfterJob,
                     job->pszHost,
                     job->stFax.pszHostName,
                     job->stFax.pszUserName,
                     job->stFax.pszUserPW,
                     job->stFax.pszFaxNumber,
                     job->stFax.pszCoverPageFile,
                     job->stFax.pszReceiverName,
                     job->stEMail.pszHostName,
                     job->stEMail.pszUserName,
                     job->stEMail.pszUserPW,
                     job->stEMail.pszMHSDir,
                     job->stEMail.pszMHSId,
                     job->stEMail.pszMHSUserName,
                     job->stPrintQueue.pszHostName,
                     job->stPrintQueue.pszUserName,
                     job->stPrintQueue.pszUserPW,
                     job->stPrintQueue.pszQueueName,
                     job->stScheduleExt.pszSetName}) {
    std::free(text);
  }
  std::free(job);
}

}  // namespace

void freeFilters(BKFILTER_FILE* filters, uint32_t count) {
  for (uint32_t i = 0; filters != nullptr && i < count; ++i) {
    const unsigned int type = filters[i].usFilterType;
    if (type >= 1 && type <= 3) std::free(filters[i].pszFilter);
  }
  std::free(filters);
}

void freeDisk(BKDDISK& disk) {
  std::free(disk.pszDiskName);
  std::free(disk.pszPassword);
  std::free(disk.pszDiskPW2);
  std::free(disk.pszEncryptionKey);
  freeFilters(disk.pFilters, disk.ulFilterCount);
  for (uint32_t i = 0; disk.pDiskItems != nullptr && i < disk.ulDiskItemCount; ++i) {
    std::free(disk.pDiskItems[i].pszPath);
    std::free(disk.pDiskItems[i].pFileList);
  }
  std::free(disk.pDiskItems);
}

void freeDisks(void* disks, uint32_t count) {
  auto* records = static_cast<BKDDISK*>(disks);
  for (uint32_t i = 0; records != nullptr && i < count; ++i) freeDisk(records[i]);
  std::free(records);
}

void freeTapes(BKDTAPE* tapes, uint32_t count) {
  for (uint32_t i = 0; tapes != nullptr && i < count; ++i) {
    freeTapeBlocks(tapes[i]);
    if (tapes[i].pTapeX == nullptr) continue;
    std::free(tapes[i].pTapeX->pszDBUser);
    std::free(tapes[i].pTapeX->pszDBPW);
    std::free(tapes[i].pTapeX);
  }
  std::free(tapes);
}

void freeTapes(BKDTAPE_OLD* tapes, uint32_t count) {
  for (uint32_t i = 0; tapes != nullptr && i < count; ++i) freeTapeBlocks(tapes[i]);
  std::free(tapes);
}

void freeNodeContents(BKNODE& node, Media media) { freeNode<BKDTAPE>(node, media); }

void freeNodeContents(BKNODE_OLD& node, Media media) { freeNode<BKDTAPE_OLD>(node, media); }

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
