#include <bkoq/kit.h>
#include <bkoq/records.h>
#include <bkoq/records_old.h>
#include <stdlib.h>
#include <string.h>

/* A C program that owns a record: it prints, walks and frees it. */

struct Text {
  char text[32768];
  size_t size;
};

static int collect(void* user, const char* text, size_t size) {
  struct Text* all = user;
  if (size > sizeof all->text - 1 - all->size) return 1;
  memcpy(all->text + all->size, text, size);
  all->size += size;
  all->text[all->size] = '\0';
  return 0;
}

static int countFields(const BkoqVisit* visit, void* user) {
  if (visit->event == BKOQ_FIELD) ++*(unsigned int*)user;
  return 0;
}

static char* copy(const char* text) {
  char* block = malloc(strlen(text) + 1);
  if (block != NULL) strcpy(block, text);
  return block;
}

int main(void) {
  struct Text* output = calloc(1, sizeof *output);
  BKQJDATATRANSFER* job = calloc(1, sizeof *job);
  BkoqPrintOptions options = {0};
  BkoqFreed freed = {0};
  BkoqValue value;
  unsigned int fields = 0;
  if (output == NULL || job == NULL) return 1;
  job->usJobType = BKOQ_JOB_VERIFY;
  job->pszOwner = copy("operator");
  options.hideZero = 1;

  if (bkoqPrint(job, BKOQ_LAYOUT_CURRENT, &options, collect, output) != BKOQ_OK) return 2;
  if (strstr(output->text, "#2  \"operator\"") == NULL) return 3;
  if (bkoqWalk(job, BKOQ_LAYOUT_CURRENT, countFields, &fields) != BKOQ_OK) return 4;
  if (fields != 30 + 7 + 4 + 6 + 6 + 4 + 12) return 5;
  if (bkoqGet(job, BKOQ_LAYOUT_CURRENT, "pszOwner", &value) != BKOQ_OK) return 8;
  if (strcmp(value.text, "operator") != 0 || value.targetSize != 9) return 9;
  if (bkoqFree(job, BKOQ_LAYOUT_CURRENT, &freed) != BKOQ_OK) return 6;
  if (freed.blocks != 2 || freed.bytes != 292 + 9 || freed.notFreed != 0) return 7;
  free(output);
  return 0;
}
