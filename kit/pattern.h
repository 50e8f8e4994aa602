#ifndef BKOQ_KIT_PATTERN_H_
#define BKOQ_KIT_PATTERN_H_

namespace bkoq::kit {

// A path in which "*" stands for any characters of one name or index ("pSourceNodes[*].psz*") and
// "**" for anything ("**.pszPassword", a field of that name anywhere).

bool isPattern(const char* path);

// Whether the pattern is about this very path.
bool matches(const char* pattern, const char* path);
// Whether it is about the path, or about something in which the path lies.
bool covers(const char* pattern, const char* path);
// Whether it may be about something that lies in the path.
bool leadsTo(const char* pattern, const char* path);

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_PATTERN_H_
