#ifndef BKOQ_BENCH_FLOOR_H_
#define BKOQ_BENCH_FLOOR_H_

#include <bkoq/records.h>

#include <memory>

#include "bench/content.h"

namespace bkoq::bench {

// The floor: what the records cost by themselves. It makes the blocks of a job's record tree from
// plain structures as the records have to be made, arrays growing by one element at a time, each
// text a block of its own, and does nothing else: no check, no object, no call but the C library's.
BKQJDATATRANSFER* flattenPlain(const Job& job);
// The same with short texts copied in place, as the library copies them.
BKQJDATATRANSFER* flattenInPlace(const Job& job);

// Frees a record tree of a backup job, whoever made it, as barely.
void freePlain(void* job);

struct PlainFree {
  void operator()(void* job) const { freePlain(job); }
};
// A record tree that is freed so.
using PlainTree = std::unique_ptr<void, PlainFree>;

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_FLOOR_H_
