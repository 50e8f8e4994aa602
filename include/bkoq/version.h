#ifndef BKOQ_VERSION_H_
#define BKOQ_VERSION_H_

/* The version of the headers, and so of the library that a client is built with; CHANGELOG.md says
   what its numbers promise. The name of the shared library carries the first number, so that no
   client starts with a library of another. Usable from C99 and C++11. */

#include "bkoq/export.h"

/** The first number of the version. */
#define BKOQ_VERSION_MAJOR 1
/** The second number of the version. */
#define BKOQ_VERSION_MINOR 0
/** The third number of the version. */
#define BKOQ_VERSION_PATCH 0

/** One number that grows with the version: 10203 for 1.2.3. */
#define BKOQ_VERSION (BKOQ_VERSION_MAJOR * 10000 + BKOQ_VERSION_MINOR * 100 + BKOQ_VERSION_PATCH)

/** The version as a text, "1.2.3". */
#define BKOQ_VERSION_TEXT                  \
  BKOQ_VERSION_TEXT_OF(BKOQ_VERSION_MAJOR) \
  "." BKOQ_VERSION_TEXT_OF(BKOQ_VERSION_MINOR) "." BKOQ_VERSION_TEXT_OF(BKOQ_VERSION_PATCH)
/** What a number's macro stands for, as a text. */
#define BKOQ_VERSION_TEXT_OF(number) BKOQ_VERSION_QUOTED(number)
/** Its argument as a text. */
#define BKOQ_VERSION_QUOTED(number) #number

#endif /* BKOQ_VERSION_H_ */
