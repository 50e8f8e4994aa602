#include "bkoq/state.h"

unsigned int BK6_NEWTAPETIMEOUT_OLD = 0;
unsigned int BK6_SPANTAPETIMEOUT_OLD = 0;
unsigned int BK6_NEWTAPEMETHOD_OLD = 0;
unsigned int BK6_SPANTAPEMETHOD_OLD = 0;
char* BK6_DISKSESSIONPW_OLD = nullptr;
char* BK6_TAPESESSIONPW_OLD = nullptr;
unsigned int DISK_ENCRYPTION_OLD = 0;
unsigned int DISK_COMPRESSION_OLD = 0;
unsigned int NODE_NOESTIMATE_OLD = 0;
unsigned int CURRENT_NODETYPE_OLD = 0;
unsigned int UNIX_OPTIONS_OLD = 0;
RWCollectableString DISK_DISKNAME_OLD;
