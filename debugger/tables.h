#ifndef BKOQ_DEBUGGER_TABLES_H_
#define BKOQ_DEBUGGER_TABLES_H_

// What the gdb extension knows of records and objects, taken from where the kit and the command
// know it. The extension itself lists nothing.

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace bkoq::debugger {

using Json = nlohmann::ordered_json;

// The record table of the kit, the kinds of job and the form of an image.
Json recordTables();

// The classes that a job file can name: for each attribute the place in the object where its setter
// keeps it. Found by setting each one and looking at which bytes change, so that it needs no debug
// information and cannot differ from the library.
Json attributeTables();

// Whatever is not as the extension expects it stops the build.
struct Mismatch : std::runtime_error {
  using std::runtime_error::runtime_error;
};
inline void expect(bool condition, const std::string& otherwise) {
  if (!condition) throw Mismatch(otherwise);
}

}  // namespace bkoq::debugger

#endif  // BKOQ_DEBUGGER_TABLES_H_
