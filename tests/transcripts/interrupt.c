/* Preloaded into the command: at the INTERRUPT_AT-th call by which it writes a file, the signal
   INTERRUPT_BY is raised, or the call fails with that errno if it is negative; or the link "link"
   is led elsewhere if it is 0. With INTERRUPT_NAMED there are no files without a name. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/types.h>
#include <unistd.h>

#define NEXT(name)                 \
  static __typeof__(&(name)) next; \
  if (next == NULL) *(void**)&next = dlsym(RTLD_NEXT, #name)

static int count;

static int numberIn(const char* variable) {
  const char* text = getenv(variable);
  return text == NULL ? 0 : atoi(text);
}

/* Whether the call fails. */
static int isFailing(void) {
  const int by = numberIn("INTERRUPT_BY");
  if (++count != numberIn("INTERRUPT_AT")) return 0;
  if (by > 0) raise(by);
  if (by == 0) {
    static int (*next)(const char*, const char*);
    *(void**)&next = dlsym(RTLD_NEXT, "rename");
    next("other-link", "link");
  }
  if (by >= 0) return 0;
  errno = -by;
  return 1;
}

__attribute__((destructor)) static void tellCount(void) {
  const char* file = getenv("INTERRUPT_COUNT");
  FILE* out = file == NULL ? NULL : fopen(file, "w");
  if (out == NULL) return;
  fprintf(out, "%d", count);
  fclose(out);
}

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const int mode = va_arg(rest, int);
  va_end(rest);
  NEXT(open);
  if ((flags & O_TMPFILE) == O_TMPFILE && getenv("INTERRUPT_NAMED") != NULL) {
    errno = EOPNOTSUPP;
    return -1;
  }
  if ((flags & O_ACCMODE) == O_WRONLY && strcmp(path, "/dev/null") != 0 && isFailing()) return -1;
  return next(path, flags, mode);
}

ssize_t write(int file, const void* bytes, size_t size) {
  NEXT(write);
  /* What is half written is a file as well. */
  if (file > 2) {
    const ssize_t half = size > 1 ? next(file, bytes, size / 2) : 0;
    if (half < 0 || isFailing()) return -1;
    const ssize_t rest = next(file, (const char*)bytes + half, size - (size_t)half);
    return rest < 0 ? rest : half + rest;
  }
  return next(file, bytes, size);
}

int fsync(int file) {
  NEXT(fsync);
  return isFailing() ? -1 : next(file);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
  NEXT(linkat);
  return isFailing() ? -1 : next(fromFolder, from, toFolder, to, flags);
}

int rename(const char* from, const char* to) {
  NEXT(rename);
  return isFailing() ? -1 : next(from, to);
}

int close(int file) {
  NEXT(close);
  /* Closed it is all the same. */
  const int fails = file > 2 && isFailing();
  return next(file) != 0 || fails ? -1 : 0;
}
