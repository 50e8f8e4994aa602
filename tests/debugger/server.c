/* A server that knows nothing of the libraries: it holds record trees, good and damaged ones, and
   has no symbols. Prints a line "name address" for each tree and waits to be looked at. */
#define _DEFAULT_SOURCE
#include <signal.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

#include "bkoq/records.h"

enum { kPage = 4096, kBackup = 1, kUnix = 3 };

static void* records(size_t count, size_t size) { return calloc(count, size); }

static char* text(const char* bytes, size_t size) { return memcpy(malloc(size), bytes, size); }
#define TEXT(literal) text((literal), sizeof(literal))

/* Two machines: the first with a disk of three items, all texts set. */
static BKQJDATATRANSFER* makeTree(void) {
  BKQJDATATRANSFER* job = records(1, sizeof *job);
  BKNODE* nodes = records(2, sizeof *nodes);
  BKDDISK* disk = records(1, sizeof *disk);
  BKDISKITEM* items = records(3, sizeof *items);
  job->usJobType = kBackup;
  job->ulNumSourceNodes = 2;
  job->pSourceNodes = nodes;
  job->pszOwner = TEXT("op \"q\" \\ \x1b[31m \xe2\x80\xae \xff \xc3\xa9\n");
  nodes[0].usNodeType = kUnix;
  nodes[0].pszNodeName = TEXT("ledger\0extra");
  nodes[0].pszNodeOSVer = TEXT("5.8\0");
  nodes[0].pszPassword = TEXT("tr0ub4dor-secret");
  nodes[0].ulMediaCount = 1;
  nodes[0].pMedia = disk;
  nodes[1].usNodeType = 9;
  nodes[1].pszNodeName = TEXT("payroll");
  disk->pszDiskName = TEXT("/home");
  disk->pszDiskPW2 = TEXT("sa:joined:secret\0");
  disk->usDiskType = 31;
  disk->ulDiskItemCount = 3;
  disk->pDiskItems = items;
  items[0].pszPath = TEXT("/a");
  items[1].pszPath = TEXT("");
  items[1].ulFileCount = 2;
  items[1].pFileList = TEXT("one\0two");
  return job;
}

static void tell(const char* name, const void* address) {
  printf("%s 0x%x\n", name, (unsigned int)(uintptr_t)address);
}

static BKDDISK* diskOf(BKQJDATATRANSFER* job) { return ((BKNODE*)job->pSourceNodes)[0].pMedia; }

int main(void) {
  BKQJDATATRANSFER* job = makeTree();
  tell("good", job);

  /* As a conversion leaves it that fails at the nodes. */
  job = makeTree();
  job->pSourceNodes = NULL;
  tell("failed", job);

  job = makeTree();
  job->pszOwner = (void*)0x13;
  diskOf(job)->pDiskItems = (void*)0xFFFFFFF0;
  tell("lost", job);

  job = makeTree();
  diskOf(job)->ulDiskItemCount = 0xFFFFFFFF;
  tell("count", job);

  /* Less than 2^32 bytes and more than there are. */
  job = makeTree();
  job->ulNumSourceNodes = 2000000;
  tell("many", job);

  /* A disk that holds its node's records again. */
  job = makeTree();
  ((BKNODE*)job->pSourceNodes)[1].ulMediaCount = 100;
  ((BKNODE*)job->pSourceNodes)[1].pMedia = job->pSourceNodes;
  tell("round", job);

  /* A text that runs up to where memory ends. */
  job = makeTree();
  char* last = mmap(NULL, 2 * kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  munmap(last + kPage, kPage);
  memset(last, 'x', kPage);
  job->pszOwner = last + kPage - 3;
  tell("endless", job);

  /* One that ends with it. */
  job = makeTree();
  last = mmap(NULL, 2 * kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  munmap(last + kPage, kPage);
  memcpy(last + kPage - 3, "ok", 3);
  job->pszOwner = last + kPage - 3;
  tell("edge", job);

  job = makeTree();
  job->usJobType = 1234;
  tell("unknown", job);

  fflush(stdout);
  raise(SIGSTOP);
  pause();
  return 0;
}
