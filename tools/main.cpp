#include <cstdio>
#include <exception>
#include <new>

#include "tools/command_line.h"
#include "tools/output.h"

int main(int count, char** arguments) {
  try {
    return bkoq::tool::runCommandLine(count, arguments);
  } catch (const std::bad_alloc&) {
    std::fputs("bkoq: memory ran out\n", stderr);
  } catch (const std::exception& problem) {
    bkoq::tool::fail(problem.what());
  }
  return bkoq::tool::kFailed;
}
