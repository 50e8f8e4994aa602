#ifndef BKOQ_BENCH_COMMAND_H_
#define BKOQ_BENCH_COMMAND_H_

#include <string>
#include <vector>

namespace bkoq::bench {

// The path of another program of the benchmark, which stands beside this one.
std::string besideThis(const char* program);

bool isInstalled(const char* program);

// Runs a program and gives what it wrote, on the standard error stream as well. Ends this program
// with a message when that fails.
std::string outputOf(const std::vector<std::string>& command);

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_COMMAND_H_
