#include <cstdio>
#include <exception>
#include <new>

#include "tools/command_line.h"

int main(int count, char** arguments) {
  try {
    return bkoq::tool::runCommandLine(count, arguments);
  } catch (const std::bad_alloc&) {
    std::fputs("bkoq: memory ran out\n", stderr);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "bkoq: %s\n", problem.what());
  }
  return bkoq::tool::kFailed;
}
