#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "tools/command_line.h"
#include "tools/output.h"

namespace {

void tellOfMemory() { std::fputs("bkoq: memory ran out\n", stderr); }

// The parser of options allocates before main() begins, and where nothing may be thrown.
[[noreturn]] void terminated() {
  try {
    if (std::current_exception() != nullptr) std::rethrow_exception(std::current_exception());
  } catch (const std::bad_alloc&) {
    tellOfMemory();
    _exit(bkoq::tool::kFailed);
  } catch (...) {  // a mistake of the command
  }
  std::abort();
}

[[gnu::constructor(101)]] void beforeAllElse() { std::set_terminate(terminated); }

}  // namespace

int main(int count, char** arguments) {
  try {
    return bkoq::tool::runCommandLine(count, arguments);
  } catch (const std::bad_alloc&) {
    tellOfMemory();
  } catch (const std::exception& problem) {
    bkoq::tool::fail(problem.what());
  }
  return bkoq::tool::kFailed;
}
