/* A C program that is handed a record tree by others needs the kit alone. */
#include <bkoq/kit.h>
#include <bkoq/records.h>
#include <stdlib.h>

int main(void) {
  BKQJDATATRANSFER* job = calloc(1, sizeof *job);
  BkoqFreed freed;
  if (bkoqPrint(job, BKOQ_LAYOUT_CURRENT, NULL, bkoqFileSink, stdout) != BKOQ_OK) return 1;
  return bkoqFree(job, BKOQ_LAYOUT_CURRENT, &freed) == BKOQ_OK && freed.blocks == 1 ? 0 : 1;
}
