#ifndef BKOQ_BENCH_SAME_H_
#define BKOQ_BENCH_SAME_H_

#include "bench/content.h"
#include "bench/model.h"

namespace bkoq::bench {

// Compares the tree that the library makes with the floor's, value by value. A difference, or a
// conversion that fails, ends the program with a message and status 1.
void expectSameTrees(const char* what, Model& model, const Job& content);

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_SAME_H_
