#ifndef BKOQ_TESTS_RANDOM_VARIABLES_H_
#define BKOQ_TESTS_RANDOM_VARIABLES_H_

#include <bkoq/state.h>

namespace bkoq::test {

// The state variables of a layout, as the library exports them.
struct Variables {
  unsigned int& newTapeTimeout;
  unsigned int& spanTapeTimeout;
  unsigned int& newTapeMethod;
  unsigned int& spanTapeMethod;
  char*& diskPassword;
  char*& tapePassword;
  unsigned int& encryption;
  unsigned int& compression;
  unsigned int& noEstimate;
  unsigned int& nodeType;
  unsigned int& unixOptions;
  RWCollectableString& diskName;
};

inline Variables& variables(bool previous) {
  static Variables current = {BK6_NEWTAPETIMEOUT, BK6_SPANTAPETIMEOUT, BK6_NEWTAPEMETHOD,
                              BK6_SPANTAPEMETHOD, BK6_DISKSESSIONPW,   BK6_TAPESESSIONPW,
                              DISK_ENCRYPTION,    DISK_COMPRESSION,    NODE_NOESTIMATE,
                              CURRENT_NODETYPE,   UNIX_OPTIONS,        DISK_DISKNAME};
  static Variables old = {BK6_NEWTAPETIMEOUT_OLD, BK6_SPANTAPETIMEOUT_OLD, BK6_NEWTAPEMETHOD_OLD,
                          BK6_SPANTAPEMETHOD_OLD, BK6_DISKSESSIONPW_OLD,   BK6_TAPESESSIONPW_OLD,
                          DISK_ENCRYPTION_OLD,    DISK_COMPRESSION_OLD,    NODE_NOESTIMATE_OLD,
                          CURRENT_NODETYPE_OLD,   UNIX_OPTIONS_OLD,        DISK_DISKNAME_OLD};
  return previous ? old : current;
}

inline const char* layoutName(bool previous) { return previous ? "previous" : "current"; }

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_VARIABLES_H_
