#ifndef BKOQ_STATE_H_
#define BKOQ_STATE_H_

#include "bkoq/export.h"
#include "rw/collstr.h"

/// The conversion-state variables: what a job's conversion tells the node, disk and tape
/// conversions that run after it. They are process-wide and unguarded: one flattening may run at a
/// time in a process, wholly on one thread. All are zero (or the empty text) at load. The two
/// layouts use disjoint sets.
///
/// The base conversion of every job sets the first nine on each call; the last three keep what the
/// last node or disk left in them.

extern BKOQ_API unsigned int BK6_NEWTAPETIMEOUT;   ///< the job's new-tape time-out
extern BKOQ_API unsigned int BK6_SPANTAPETIMEOUT;  ///< the job's span-tape time-out
extern BKOQ_API unsigned int BK6_NEWTAPEMETHOD;    ///< a backup job's tape method, else 0
extern BKOQ_API unsigned int BK6_SPANTAPEMETHOD;   ///< a backup job's span method, else 0
/// Copy of a backup job's session password, or null. Each flattening of a job with a password
/// makes a new copy and never frees the last one: whoever reads the variable owns the copy.
extern BKOQ_API char* BK6_DISKSESSIONPW;
/// Copy of a restore job's session password, or null; owned as BK6_DISKSESSIONPW is.
extern BKOQ_API char* BK6_TAPESESSIONPW;
extern BKOQ_API unsigned int DISK_ENCRYPTION;       ///< 1 adds 0x4000 to every disk's options
extern BKOQ_API unsigned int DISK_COMPRESSION;      ///< 1 adds 0x2000 to every disk's options
extern BKOQ_API unsigned int NODE_NOESTIMATE;       ///< 1 adds 0x40 to every node's options
extern BKOQ_API unsigned int CURRENT_NODETYPE;      ///< type of the node being flattened
extern BKOQ_API unsigned int UNIX_OPTIONS;          ///< option word of the last UNIX node flattened
extern BKOQ_API RWCollectableString DISK_DISKNAME;  ///< name of the last disk flattened

/// The twins that the previous layout's conversions use.
extern BKOQ_API unsigned int BK6_NEWTAPETIMEOUT_OLD;
extern BKOQ_API unsigned int BK6_SPANTAPETIMEOUT_OLD;
extern BKOQ_API unsigned int BK6_NEWTAPEMETHOD_OLD;
extern BKOQ_API unsigned int BK6_SPANTAPEMETHOD_OLD;
extern BKOQ_API char* BK6_DISKSESSIONPW_OLD;
extern BKOQ_API char* BK6_TAPESESSIONPW_OLD;
extern BKOQ_API unsigned int DISK_ENCRYPTION_OLD;
extern BKOQ_API unsigned int DISK_COMPRESSION_OLD;
extern BKOQ_API unsigned int NODE_NOESTIMATE_OLD;
extern BKOQ_API unsigned int CURRENT_NODETYPE_OLD;
extern BKOQ_API unsigned int UNIX_OPTIONS_OLD;
extern BKOQ_API RWCollectableString DISK_DISKNAME_OLD;

#endif  // BKOQ_STATE_H_
