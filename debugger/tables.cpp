// Prints the tables of the gdb extension as JSON.
#include "debugger/tables.h"

#include <cstdio>
#include <exception>

int main() {
  try {
    const bkoq::debugger::Json tables = {{"records", bkoq::debugger::recordTables()},
                                         {"objects", bkoq::debugger::attributeTables()}};
    std::printf("%s\n", tables.dump().c_str());
    return 0;
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "the tables of the gdb extension: %s\n", problem.what());
    return 1;
  }
}
