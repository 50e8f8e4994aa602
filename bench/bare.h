#ifndef BKOQ_BENCH_BARE_H_
#define BKOQ_BENCH_BARE_H_

#include "bench/content.h"

namespace bkoq::bench {

// The floor of building: what a client's objects cost by themselves. Makes a block of the size of
// each object, cleared, one for each text with as many bytes before it as a string has, and lists
// that grow as those of the library do, and frees them all; nothing else: no class, no virtual
// table, no call but the C library's.
class BareModel {
 public:
  explicit BareModel(const Job& content);
  BareModel(const BareModel&) = delete;
  BareModel& operator=(const BareModel&) = delete;
  ~BareModel();

 private:
  void* job_;
};

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_BARE_H_
