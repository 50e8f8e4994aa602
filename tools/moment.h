#ifndef BKOQ_TOOLS_MOMENT_H_
#define BKOQ_TOOLS_MOMENT_H_

#include <cstdint>
#include <string>

#include "rw/rwtime.h"

namespace bkoq::tool {

// Reads a time as ISO 8601 writes it: "2004-03-01", "2004-03-01T21:00", "2004-03-01T21:00:00", with
// "Z" or an offset such as "+01:00" after a time of day; without one it is local time. Gives
// seconds since 1970-01-01 00:00 UTC. Returns null, or what is wrong with the text.
const char* parseMoment(const std::string& text, std::int64_t& seconds);

// The same moment as a text that is read back as it; in UTC.
std::string momentText(std::int64_t seconds);

// What counts as now, in seconds since 1970: what was set, else SOURCE_DATE_EPOCH, else the present
// time when this was asked for first.
std::int64_t commandMoment();
void setCommandMoment(std::int64_t seconds);

// Seconds from 1901-01-01 to 1970-01-01, both 00:00 UTC: RWTime counts from the former.
constexpr std::int64_t kSecondsBefore1970 = RW_SECONDS_TO_1970;

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_MOMENT_H_
