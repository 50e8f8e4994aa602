#include "bkoq/state.h"

unsigned int BK6_NEWTAPETIMEOUT = 0;
unsigned int BK6_SPANTAPETIMEOUT = 0;
unsigned int BK6_NEWTAPEMETHOD = 0;
unsigned int BK6_SPANTAPEMETHOD = 0;
char* BK6_DISKSESSIONPW = nullptr;
char* BK6_TAPESESSIONPW = nullptr;
unsigned int DISK_ENCRYPTION = 0;
unsigned int DISK_COMPRESSION = 0;
unsigned int NODE_NOESTIMATE = 0;
unsigned int CURRENT_NODETYPE = 0;
unsigned int UNIX_OPTIONS = 0;
RWCollectableString DISK_DISKNAME;
