#ifndef BKOQ_CODES_H_
#define BKOQ_CODES_H_

/* The codes and bits of the transfer records by name, for C and C++. */

#include "bkoq/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** BKQJDATATRANSFER::usJobType. */
enum {
  BKOQ_JOB_BACKUP = 1,
  BKOQ_JOB_CRUISE_BACKUP = 3,
  BKOQ_JOB_CRUISE_MAKEUP = 5,
  BKOQ_JOB_RESTORE = 7,
  BKOQ_JOB_MERGE = 8,
  BKOQ_JOB_DATABASE_BACKUP = 9,
  BKOQ_JOB_DATABASE_RESTORE = 10,
  BKOQ_JOB_COMPARE = 11,
  BKOQ_JOB_SCAN = 14,
  BKOQ_JOB_ROTATION_BACKUP = 20,
  BKOQ_JOB_ROTATION_MAKEUP = 21,
  BKOQ_JOB_VERIFY = 29
};

/** BKNODE::usNodeType. Tape nodes carry the number of UNIX machines. */
enum {
  BKOQ_NODE_MACINTOSH = 2,
  BKOQ_NODE_UNIX = 3,
  BKOQ_NODE_TAPE = 3,
  BKOQ_NODE_NDS_PREVIOUS = 6, /**< the previous layout's number of an NDS node */
  BKOQ_NODE_NETWARE = 8,
  BKOQ_NODE_WINDOWS_NT = 9,
  BKOQ_NODE_OS2 = 10,
  BKOQ_NODE_WINDOWS_95 = 11,
  BKOQ_NODE_WINDOWS = 12,
  BKOQ_NODE_NDS = 13,
  BKOQ_NODE_FTP = 20,
  BKOQ_NODE_SYBASE = 21,
  BKOQ_NODE_ORACLE = 22,
  BKOQ_NODE_INFORMIX = 23,
  BKOQ_NODE_TAPE_UNFINISHED = 24,    /**< left by a conversion that failed */
  BKOQ_NODE_RESTORE_UNFINISHED = 25, /**< likewise */
  BKOQ_NODE_SNAPSHOT = 26,
  BKOQ_NODE_DATABASE_RESTORE_UNFINISHED = 27 /**< likewise */
};

/** BKNODE::usNodeOS. */
enum {
  BKOQ_SYSTEM_OS2 = 2,
  BKOQ_SYSTEM_NETWARE = 4,
  BKOQ_SYSTEM_WINDOWS = 5,
  BKOQ_SYSTEM_UNIX = 6,
  BKOQ_SYSTEM_MAC = 7,
  BKOQ_SYSTEM_WINDOWS_NT = 8
};

/** BKFILTER_FILE::usFilterType. */
enum {
  BKOQ_FILTER_VOLUME = 1,
  BKOQ_FILTER_FILE = 2,
  BKOQ_FILTER_DIRECTORY = 3,
  BKOQ_FILTER_TIME = 4,
  BKOQ_FILTER_ATTRIBUTE = 5
};

/** BKFILTER_FILE::usInclExcl. */
enum { BKOQ_MODE_INCLUDE = 0, BKOQ_MODE_EXCLUDE = 1 };

/** BKFILTER_FILE::usTimeRange. */
enum { BKOQ_RANGE_BEFORE = 0, BKOQ_RANGE_AFTER = 1, BKOQ_RANGE_BETWEEN = 2, BKOQ_RANGE_WITHIN = 3 };

/** Bits of the fields with options. */
enum {
  BKOQ_JOB_NO_ESTIMATE = 0x00100000,    /**< BKQJDATATRANSFER::ulOptions */
  BKOQ_NODE_NO_ESTIMATE = 0x40,         /**< BKNODE::ulNodeOptions */
  BKOQ_NODE_TEXT_AFTER_NAME = 0x200,    /**< likewise */
  BKOQ_NODE_TEXT_AFTER_VERSION = 0x800, /**< likewise */
  BKOQ_DISK_COMPRESSION = 0x2000,       /**< BKDDISK::ulOptions */
  BKOQ_DISK_ENCRYPTION = 0x4000,        /**< likewise */
  BKOQ_TAPE_EXTENSION = 0x8000000       /**< BKDTAPE::ulOptions */
};

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* BKOQ_CODES_H_ */
