#ifndef BKOQ_BENCH_MESSAGE_H_
#define BKOQ_BENCH_MESSAGE_H_

#include <string>

#include "bench/content.h"

namespace bkoq::bench {

// Whether the benchmark was built with Protocol Buffers.
bool hasMessages();

// The whole work of a client of Protocol Buffers: a message is made of the plain structures,
// becomes bytes, and is deleted.
std::string packMessage(const Job& job);

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_MESSAGE_H_
