#ifndef RW_DEFS_H_
#define RW_DEFS_H_

#include "rw/export.h"

/// 0 is false, anything else true.
typedef int RWBoolean;

/// Number of a class, as isA() answers it.
typedef unsigned short RWClassID;

/// Position of what is not there.
const unsigned int RW_NPOS = ~0u;

#endif  // RW_DEFS_H_
