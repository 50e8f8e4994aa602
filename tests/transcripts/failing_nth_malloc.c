/* Preloaded into the command: the allocation number FAIL_AT fails, and with FAIL_ON all after it.
   How many there were is written to FAIL_COUNT. */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

/* Before the program begins, nothing fails: that would be a test of the loader. */
static unsigned long failAt;
static int failOn;
static int isBegun;
static unsigned long count;

static int fails(void) {
  if (!isBegun) return 0;
  ++count;
  if (failAt == 0 || count < failAt || (count > failAt && !failOn)) return 0;
  errno = ENOMEM;
  return 1;
}

__attribute__((constructor)) static void begin(void) {
  const char* at = getenv("FAIL_AT");
  failAt = at == NULL ? 0 : strtoul(at, NULL, 10);
  failOn = getenv("FAIL_ON") != NULL;
  isBegun = 1;
}

__attribute__((destructor)) static void tell(void) {
  isBegun = 0;
  const char* name = getenv("FAIL_COUNT");
  const int file = name == NULL ? -1 : open(name, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  if (file < 0) return;
  dprintf(file, "%lu", count);
  close(file);
}

void* malloc(size_t size) { return fails() ? NULL : __libc_malloc(size); }
void* calloc(size_t number, size_t size) { return fails() ? NULL : __libc_calloc(number, size); }
void* realloc(void* block, size_t size) { return fails() ? NULL : __libc_realloc(block, size); }
