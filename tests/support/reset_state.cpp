#include "tests/support/reset_state.h"

#include <bkoq/state.h>

#include <initializer_list>

namespace bkoq::test {

void resetState() {
  for (unsigned int* word :
       {&BK6_NEWTAPETIMEOUT, &BK6_SPANTAPETIMEOUT, &BK6_NEWTAPEMETHOD, &BK6_SPANTAPEMETHOD,
        &DISK_ENCRYPTION, &DISK_COMPRESSION, &NODE_NOESTIMATE, &CURRENT_NODETYPE, &UNIX_OPTIONS,
        &BK6_NEWTAPETIMEOUT_OLD, &BK6_SPANTAPETIMEOUT_OLD, &BK6_NEWTAPEMETHOD_OLD,
        &BK6_SPANTAPEMETHOD_OLD, &DISK_ENCRYPTION_OLD, &DISK_COMPRESSION_OLD, &NODE_NOESTIMATE_OLD,
        &CURRENT_NODETYPE_OLD, &UNIX_OPTIONS_OLD}) {
    *word = 0;
  }
  for (char** password :
       {&BK6_DISKSESSIONPW, &BK6_TAPESESSIONPW, &BK6_DISKSESSIONPW_OLD, &BK6_TAPESESSIONPW_OLD}) {
    *password = nullptr;
  }
  DISK_DISKNAME = "";
  DISK_DISKNAME_OLD = "";
}

}  // namespace bkoq::test
