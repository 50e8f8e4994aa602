/* Preloaded into the command: the library's allocation of a job record fails, as when memory has
   run out. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stddef.h>
#include <string.h>

static int isLibrary(const void* caller) {
  Dl_info info;
  return dladdr(caller, &info) != 0 && strstr(info.dli_fname, "libbkoq.so") != NULL;
}

void* malloc(size_t size) {
  static void* (*next)(size_t);
  if (next == NULL) *(void**)&next = dlsym(RTLD_NEXT, "malloc");
  if (size == 292 && isLibrary(__builtin_return_address(0))) return NULL;
  return next(size);
}
