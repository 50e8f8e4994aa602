#ifndef BKOQ_RECORDS_H_
#define BKOQ_RECORDS_H_

/* The records of the current transfer layout, as the server's queue code reads them: 32-bit,
   little-endian, pointers of 4 bytes. Every record is zeroed before it is filled, so a field that
   nothing writes is 0. Every text and every array is a block of its own from malloc() that belongs
   to the owner of the job record; a null pointer means an empty text or an empty array. Usable
   from C99 and C++11. */

#include <stddef.h>
#include <stdint.h>

#include "bkoq/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The schedule block is 18 bytes long, so nothing in it may be aligned to more than 2. */
#pragma pack(push, 2)

/** Times and repeats of a job's schedule; lies in the job record at byte 56. */
typedef struct BKSCHEDINFO {
  int32_t lSubmitTime;    /**< submit time, local-clock seconds */
  int32_t lExecTime;      /**< execution time, local-clock seconds */
  uint16_t usRepeat1;     /**< custom schedules: the four repeat values */
  uint16_t usRepeat2;     /**< second repeat value */
  uint16_t usRepeat3;     /**< third repeat value */
  uint16_t usRepeat4;     /**< fourth repeat value */
  uint16_t usSkipWeekDay; /**< custom schedules: skip-weekday flag */
} BKSCHEDINFO;

#pragma pack(pop)

/** Media rotation of a job's schedule; lies in the job record at byte 196. */
typedef struct BKROTATIONINFO {
  char* pszSetName;         /**< media set name */
  uint8_t abReserved4[4];   /**< zero */
  uint16_t usCruiseMethod;  /**< cruise schedules: cruise method, low 16 bits */
  uint8_t abReserved10[2];  /**< zero */
  uint8_t abReserved12[8];  /**< zero; the previous layout keeps job types here */
  uint16_t usSaveMonthly;   /**< cruise schedules: monthly copies kept */
  uint16_t usSaveWeekly;    /**< cruise schedules: weekly copies kept */
  uint16_t usSaveDaily;     /**< cruise schedules: daily copies kept */
  uint8_t abReserved26[14]; /**< zero */
  uint32_t ulCruiseOptions; /**< cruise schedules: option word */
  uint16_t usMonths;        /**< cruise schedules: months */
  uint16_t usCopies;        /**< cruise schedules: copies */
} BKROTATIONINFO;

/** Open-file options of a backup job; lies in the job record at byte 104. */
typedef struct BKOFINFO {
  uint32_t ulFActions;      /**< actions on open files */
  uint32_t ulFMethods;      /**< methods of reading open files */
  uint16_t usRetryCount;    /**< retries on an open file */
  uint16_t usRetryInterval; /**< interval between retries */
} BKOFINFO;

/** Fax notification; lies in the job record at byte 132. */
typedef struct BKFAXINFO {
  char* pszHostName;      /**< host name */
  char* pszUserName;      /**< user name */
  char* pszUserPW;        /**< user password */
  char* pszFaxNumber;     /**< fax number */
  char* pszCoverPageFile; /**< cover page file */
  char* pszReceiverName;  /**< always null in this layout; the previous one fills it */
} BKFAXINFO;

/** E-mail notification; lies in the job record at byte 156. */
typedef struct BKEMAILINFO {
  char* pszHostName;    /**< host name */
  char* pszUserName;    /**< user name */
  char* pszUserPW;      /**< user password */
  char* pszMHSDir;      /**< MHS only: directory */
  char* pszMHSId;       /**< MHS only: id */
  char* pszMHSUserName; /**< MHS only: user name */
} BKEMAILINFO;

/** Print-queue notification; lies in the job record at byte 180. */
typedef struct BKPRINTQ {
  char* pszHostName;  /**< host name */
  char* pszUserName;  /**< user name */
  char* pszUserPW;    /**< user password */
  char* pszQueueName; /**< queue name */
} BKPRINTQ;

/* C11 has anonymous structs and unions. C99 and C++ compilers have them as extensions that
   -pedantic must not warn about. */
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wpedantic"
#endif
/** One filter; usFilterType says how the bytes from 4 on are read. */
typedef struct BKFILTER_FILE {
  uint16_t usFilterType; /**< 1 volume, 2 file, 3 directory, 4 time, 5 attribute */
  uint16_t usInclExcl;   /**< 0 include, 1 exclude */
  __extension__ union {
    uint32_t ulFilterCount; /**< volume, file, directory: 1 with a pattern, 0 without */
    uint32_t ulAttributes;  /**< attribute: attribute bits */
    __extension__ struct {
      uint16_t usTimeAttr;  /**< time: which time stamp is tested */
      uint16_t usTimeRange; /**< time: 0 before, 1 after, 2 between, 3 within */
    };
  };
  __extension__ union {
    char* pszFilter;      /**< volume, file, directory: pattern */
    uint32_t ulTimeUnits; /**< within: number of units */
    int32_t lTime;        /**< before, after: bound, local-clock seconds */
    int32_t lStartTime;   /**< between: start bound, local-clock seconds */
  };
  __extension__ union {
    uint16_t usFilterLen; /**< volume, file, directory: pattern length with its NUL, or 0 */
    int32_t lEndTime;     /**< between: end bound, local-clock seconds */
  };
  uint16_t usTimeUnitType;  /**< within: kind of unit */
  uint8_t abReserved18[14]; /**< zero */
} BKFILTER_FILE;
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

/** One item of a disk. */
typedef struct BKDISKITEM {
  char* pszPath;            /**< path as the server uses it */
  uint32_t ulFileCount;     /**< names in pFileList */
  char* pFileList;          /**< ulFileCount texts back to back, no second NUL after the last */
  uint32_t ulOptions;       /**< item options */
  uint8_t abReserved16[16]; /**< zero */
} BKDISKITEM;

/** One disk of a machine or of a restore destination. */
typedef struct BKDDISK {
  char* pszDiskName;        /**< disk name */
  char* pszPassword;        /**< disk password, or the job's session password */
  uint32_t ulFilterCount;   /**< elements in pFilters */
  BKFILTER_FILE* pFilters;  /**< filters of this disk */
  uint32_t ulDiskItemCount; /**< elements in pDiskItems */
  BKDISKITEM* pDiskItems;   /**< items of this disk */
  uint16_t usDiskType;      /**< disk type code */
  uint8_t abReserved26[2];  /**< zero */
  uint32_t ulOptions;       /**< disk options with the job's bits added */
  uint32_t ulReserved1;     /**< zero */
  char* pszDiskPW2;         /**< user and second password: joined by ":", or two texts in a row */
  uint32_t ulReserved2;     /**< zero */
  char* pszEncryptionKey;   /**< encryption key */
  uint32_t ulReserved3;     /**< zero */
} BKDDISK;

/** One item of a tape. */
typedef struct BKTAPEITEM {
  uint32_t ulChunkNum;      /**< chunk of the session */
  uint16_t usChunkOffset;   /**< offset within the chunk */
  uint8_t abReserved6[2];   /**< zero */
  char* pszFileOrDir;       /**< file or directory in server form */
  uint32_t ulOptions;       /**< item options */
  uint8_t abReserved16[16]; /**< zero */
} BKTAPEITEM;

/** Database credentials and session end of a tape. */
typedef struct BKDTAPEX {
  char* pszDBUser;          /**< database user */
  char* pszDBPW;            /**< database password */
  int32_t lSessionEndTime;  /**< session end time, as the client gave it */
  uint8_t abReserved12[44]; /**< zero */
  uint32_t ulOptions;       /**< extension options */
  uint8_t abReserved60[4];  /**< zero */
} BKDTAPEX;

/** One tape. */
typedef struct BKDTAPE {
  char* pszDeviceGroup;       /**< device group */
  char* pszTapeName;          /**< tape name */
  uint16_t usTapeID;          /**< tape ID, low 16 bits */
  uint8_t abReserved10[2];    /**< zero */
  uint16_t usTapeSeq;         /**< sequence within the tape set */
  uint16_t usSessionNumber;   /**< session on the tape */
  uint32_t ulQFABlockNumber;  /**< block at which the session starts */
  char* pszSessionPW;         /**< session password of the tape, or of the restore job */
  uint16_t usNewTapeMethod;   /**< the job's tape method */
  uint16_t usSpanTapeMethod;  /**< the job's span method */
  uint16_t usNewTapeTimeout;  /**< the job's new-tape time-out */
  uint16_t usSpanTapeTimeout; /**< the job's span-tape time-out */
  uint32_t ulFilterCount;     /**< elements in pFilters */
  BKFILTER_FILE* pFilters;    /**< filters of this tape */
  uint32_t ulTapeItemCount;   /**< elements in pTapeItems */
  BKTAPEITEM* pTapeItems;     /**< items of this tape */
  uint16_t usFileSystem;      /**< file-system code, 8 bits widened */
  uint8_t abReserved50[2];    /**< zero */
  uint32_t ulOptions;         /**< tape options */
  char* pszPath;              /**< path of the session */
  char* pszLocation;          /**< location of the tape */
  uint8_t abReserved64[4];    /**< zero; the previous layout keeps a session end time here */
  BKDTAPEX* pTapeX;           /**< extension, or null */
} BKDTAPE;

/** One node: a machine, a tape source or destination, or a restore destination. */
typedef struct BKNODE {
  uint16_t usNodeType;     /**< node kind; 3 for a tape node, the actual kind for a restore node */
  uint16_t usNodeOS;       /**< operating-system code */
  char* pszNodeOSVer;      /**< operating-system version; a second text may follow its NUL */
  char* pszNodeName;       /**< node name; a second text may follow its NUL */
  char* pszNodeAddress;    /**< node address; for an NDS node without one its domain */
  char* pszUserName;       /**< user name */
  char* pszPassword;       /**< password */
  uint32_t ulFilterCount;  /**< elements in pFilters */
  BKFILTER_FILE* pFilters; /**< the node's filters, then the job's */
  uint16_t usDeviceType;   /**< device type */
  uint8_t abReserved34[2]; /**< zero */
  uint32_t ulMediaCount;   /**< elements in pMedia */
  void* pMedia;            /**< BKDTAPE records for tape nodes, BKDDISK records for all others */
  char* pszBeforeNode;     /**< node to process before this one */
  char* pszAfterNode;      /**< node to process after this one */
  uint16_t usBeforeNodeWait; /**< wait for the before-node */
  uint8_t abReserved54[2];   /**< zero */
  uint32_t ulNodeOptions;    /**< node options; 0x40, 0x200 and 0x800 may be added */
  uint8_t abReserved60[24];  /**< zero */
  char* pszNodeDomain;       /**< node domain; for an NDS node its address, null without one */
  uint8_t abReserved88[12];  /**< zero */
} BKNODE;

/** One job: the root of a record tree. */
typedef struct BKQJDATATRANSFER {
  uint32_t ulReserved0;         /**< zero */
  uint16_t usJobType;           /**< job kind */
  uint8_t abReserved6[2];       /**< zero */
  uint16_t usJobStatus;         /**< job status, low 16 bits */
  uint16_t usScriptType;        /**< script type */
  uint32_t ulNumSourceNodes;    /**< elements in pSourceNodes */
  BKNODE* pSourceNodes;         /**< source nodes */
  uint32_t ulNumDestNodes;      /**< elements in pDestNodes */
  BKNODE* pDestNodes;           /**< destination nodes */
  char* pszOwner;               /**< owner */
  char* pszReportFile;          /**< report file */
  char* pszComments;            /**< comments */
  char* pszBeforeJob;           /**< command run before the job */
  char* pszAfterJob;            /**< command run after the job */
  uint16_t usBeforeJobWait;     /**< before-job wait */
  uint8_t abReserved50[2];      /**< zero */
  uint16_t usOnConflict;        /**< restore jobs: what to do on conflict */
  uint8_t abReserved54[2];      /**< zero */
  BKSCHEDINFO stSchedule;       /**< schedule, zero without one */
  uint8_t abReserved74[30];     /**< zero */
  BKOFINFO stOpenFile;          /**< open-file options, zero without them */
  uint8_t abReserved116[16];    /**< zero */
  BKFAXINFO stFax;              /**< fax notification, zero without one */
  BKEMAILINFO stEMail;          /**< e-mail notification, zero without one */
  BKPRINTQ stPrintQueue;        /**< print-queue notification, zero without one */
  BKROTATIONINFO stScheduleExt; /**< rotation, zero unless the schedule is one */
  uint8_t abReserved244[12];    /**< zero */
  uint32_t ulOptions;           /**< job options */
  char* pszHost;                /**< host */
  uint8_t abReserved264[28];    /**< zero */
} BKQJDATATRANSFER;

#ifdef __cplusplus
}
#endif

/* The layout is the contract with a reader that was compiled long ago: a compiler or a flag that
   would lay a record out differently must not get through. */
/** What an assertion says that fails. */
#define BKOQ_RECORD_REMEDY                                                         \
  "the reader of this record expects its fields where they were: take the change " \
  "back, or, when a compiler or a flag makes it, compile without packing"
/** Asserts at compile time, in every language of the header. */
#define BKOQ_RECORD_ASSERT(condition) BKOQ_STATIC_ASSERT(condition, BKOQ_RECORD_REMEDY)
/** The width of a field. */
#ifdef __cplusplus
#define BKOQ_FIELD_SIZE(record, field) sizeof(record::field)
#else
#define BKOQ_FIELD_SIZE(record, field) sizeof(((record*)0)->field)
#endif
/** Asserts at compile time that a field of a record is at its offset, in its width. */
#define BKOQ_RECORD_FIELD(record, field, offset, width)     \
  BKOQ_RECORD_ASSERT(offsetof(record, field) == (offset) && \
                     BKOQ_FIELD_SIZE(record, field) == (width))

BKOQ_RECORD_ASSERT(sizeof(BKSCHEDINFO) == 18);
BKOQ_RECORD_FIELD(BKSCHEDINFO, lSubmitTime, 0, 4);
BKOQ_RECORD_FIELD(BKSCHEDINFO, lExecTime, 4, 4);
BKOQ_RECORD_FIELD(BKSCHEDINFO, usRepeat1, 8, 2);
BKOQ_RECORD_FIELD(BKSCHEDINFO, usRepeat2, 10, 2);
BKOQ_RECORD_FIELD(BKSCHEDINFO, usRepeat3, 12, 2);
BKOQ_RECORD_FIELD(BKSCHEDINFO, usRepeat4, 14, 2);
BKOQ_RECORD_FIELD(BKSCHEDINFO, usSkipWeekDay, 16, 2);

BKOQ_RECORD_ASSERT(sizeof(BKROTATIONINFO) == 48);
BKOQ_RECORD_FIELD(BKROTATIONINFO, pszSetName, 0, 4);
BKOQ_RECORD_FIELD(BKROTATIONINFO, abReserved4, 4, 4);
BKOQ_RECORD_FIELD(BKROTATIONINFO, usCruiseMethod, 8, 2);
BKOQ_RECORD_FIELD(BKROTATIONINFO, abReserved10, 10, 2);
BKOQ_RECORD_FIELD(BKROTATIONINFO, abReserved12, 12, 8);
BKOQ_RECORD_FIELD(BKROTATIONINFO, usSaveMonthly, 20, 2);
BKOQ_RECORD_FIELD(BKROTATIONINFO, usSaveWeekly, 22, 2);
BKOQ_RECORD_FIELD(BKROTATIONINFO, usSaveDaily, 24, 2);
BKOQ_RECORD_FIELD(BKROTATIONINFO, abReserved26, 26, 14);
BKOQ_RECORD_FIELD(BKROTATIONINFO, ulCruiseOptions, 40, 4);
BKOQ_RECORD_FIELD(BKROTATIONINFO, usMonths, 44, 2);
BKOQ_RECORD_FIELD(BKROTATIONINFO, usCopies, 46, 2);

BKOQ_RECORD_ASSERT(sizeof(BKOFINFO) == 12);
BKOQ_RECORD_FIELD(BKOFINFO, ulFActions, 0, 4);
BKOQ_RECORD_FIELD(BKOFINFO, ulFMethods, 4, 4);
BKOQ_RECORD_FIELD(BKOFINFO, usRetryCount, 8, 2);
BKOQ_RECORD_FIELD(BKOFINFO, usRetryInterval, 10, 2);

BKOQ_RECORD_ASSERT(sizeof(BKFAXINFO) == 24);
BKOQ_RECORD_FIELD(BKFAXINFO, pszHostName, 0, 4);
BKOQ_RECORD_FIELD(BKFAXINFO, pszUserName, 4, 4);
BKOQ_RECORD_FIELD(BKFAXINFO, pszUserPW, 8, 4);
BKOQ_RECORD_FIELD(BKFAXINFO, pszFaxNumber, 12, 4);
BKOQ_RECORD_FIELD(BKFAXINFO, pszCoverPageFile, 16, 4);
BKOQ_RECORD_FIELD(BKFAXINFO, pszReceiverName, 20, 4);

BKOQ_RECORD_ASSERT(sizeof(BKEMAILINFO) == 24);
BKOQ_RECORD_FIELD(BKEMAILINFO, pszHostName, 0, 4);
BKOQ_RECORD_FIELD(BKEMAILINFO, pszUserName, 4, 4);
BKOQ_RECORD_FIELD(BKEMAILINFO, pszUserPW, 8, 4);
BKOQ_RECORD_FIELD(BKEMAILINFO, pszMHSDir, 12, 4);
BKOQ_RECORD_FIELD(BKEMAILINFO, pszMHSId, 16, 4);
BKOQ_RECORD_FIELD(BKEMAILINFO, pszMHSUserName, 20, 4);

BKOQ_RECORD_ASSERT(sizeof(BKPRINTQ) == 16);
BKOQ_RECORD_FIELD(BKPRINTQ, pszHostName, 0, 4);
BKOQ_RECORD_FIELD(BKPRINTQ, pszUserName, 4, 4);
BKOQ_RECORD_FIELD(BKPRINTQ, pszUserPW, 8, 4);
BKOQ_RECORD_FIELD(BKPRINTQ, pszQueueName, 12, 4);

BKOQ_RECORD_ASSERT(sizeof(BKFILTER_FILE) == 32);
BKOQ_RECORD_FIELD(BKFILTER_FILE, usFilterType, 0, 2);
BKOQ_RECORD_FIELD(BKFILTER_FILE, usInclExcl, 2, 2);
BKOQ_RECORD_FIELD(BKFILTER_FILE, ulFilterCount, 4, 4);
BKOQ_RECORD_FIELD(BKFILTER_FILE, ulAttributes, 4, 4);
BKOQ_RECORD_FIELD(BKFILTER_FILE, usTimeAttr, 4, 2);
BKOQ_RECORD_FIELD(BKFILTER_FILE, usTimeRange, 6, 2);
BKOQ_RECORD_FIELD(BKFILTER_FILE, pszFilter, 8, 4);
BKOQ_RECORD_FIELD(BKFILTER_FILE, ulTimeUnits, 8, 4);
BKOQ_RECORD_FIELD(BKFILTER_FILE, lTime, 8, 4);
BKOQ_RECORD_FIELD(BKFILTER_FILE, lStartTime, 8, 4);
BKOQ_RECORD_FIELD(BKFILTER_FILE, usFilterLen, 12, 2);
BKOQ_RECORD_FIELD(BKFILTER_FILE, lEndTime, 12, 4);
BKOQ_RECORD_FIELD(BKFILTER_FILE, usTimeUnitType, 16, 2);
BKOQ_RECORD_FIELD(BKFILTER_FILE, abReserved18, 18, 14);

BKOQ_RECORD_ASSERT(sizeof(BKDISKITEM) == 32);
BKOQ_RECORD_FIELD(BKDISKITEM, pszPath, 0, 4);
BKOQ_RECORD_FIELD(BKDISKITEM, ulFileCount, 4, 4);
BKOQ_RECORD_FIELD(BKDISKITEM, pFileList, 8, 4);
BKOQ_RECORD_FIELD(BKDISKITEM, ulOptions, 12, 4);
BKOQ_RECORD_FIELD(BKDISKITEM, abReserved16, 16, 16);

BKOQ_RECORD_ASSERT(sizeof(BKDDISK) == 52);
BKOQ_RECORD_FIELD(BKDDISK, pszDiskName, 0, 4);
BKOQ_RECORD_FIELD(BKDDISK, pszPassword, 4, 4);
BKOQ_RECORD_FIELD(BKDDISK, ulFilterCount, 8, 4);
BKOQ_RECORD_FIELD(BKDDISK, pFilters, 12, 4);
BKOQ_RECORD_FIELD(BKDDISK, ulDiskItemCount, 16, 4);
BKOQ_RECORD_FIELD(BKDDISK, pDiskItems, 20, 4);
BKOQ_RECORD_FIELD(BKDDISK, usDiskType, 24, 2);
BKOQ_RECORD_FIELD(BKDDISK, abReserved26, 26, 2);
BKOQ_RECORD_FIELD(BKDDISK, ulOptions, 28, 4);
BKOQ_RECORD_FIELD(BKDDISK, ulReserved1, 32, 4);
BKOQ_RECORD_FIELD(BKDDISK, pszDiskPW2, 36, 4);
BKOQ_RECORD_FIELD(BKDDISK, ulReserved2, 40, 4);
BKOQ_RECORD_FIELD(BKDDISK, pszEncryptionKey, 44, 4);
BKOQ_RECORD_FIELD(BKDDISK, ulReserved3, 48, 4);

BKOQ_RECORD_ASSERT(sizeof(BKTAPEITEM) == 32);
BKOQ_RECORD_FIELD(BKTAPEITEM, ulChunkNum, 0, 4);
BKOQ_RECORD_FIELD(BKTAPEITEM, usChunkOffset, 4, 2);
BKOQ_RECORD_FIELD(BKTAPEITEM, abReserved6, 6, 2);
BKOQ_RECORD_FIELD(BKTAPEITEM, pszFileOrDir, 8, 4);
BKOQ_RECORD_FIELD(BKTAPEITEM, ulOptions, 12, 4);
BKOQ_RECORD_FIELD(BKTAPEITEM, abReserved16, 16, 16);

BKOQ_RECORD_ASSERT(sizeof(BKDTAPEX) == 64);
BKOQ_RECORD_FIELD(BKDTAPEX, pszDBUser, 0, 4);
BKOQ_RECORD_FIELD(BKDTAPEX, pszDBPW, 4, 4);
BKOQ_RECORD_FIELD(BKDTAPEX, lSessionEndTime, 8, 4);
BKOQ_RECORD_FIELD(BKDTAPEX, abReserved12, 12, 44);
BKOQ_RECORD_FIELD(BKDTAPEX, ulOptions, 56, 4);
BKOQ_RECORD_FIELD(BKDTAPEX, abReserved60, 60, 4);

BKOQ_RECORD_ASSERT(sizeof(BKDTAPE) == 72);
BKOQ_RECORD_FIELD(BKDTAPE, pszDeviceGroup, 0, 4);
BKOQ_RECORD_FIELD(BKDTAPE, pszTapeName, 4, 4);
BKOQ_RECORD_FIELD(BKDTAPE, usTapeID, 8, 2);
BKOQ_RECORD_FIELD(BKDTAPE, abReserved10, 10, 2);
BKOQ_RECORD_FIELD(BKDTAPE, usTapeSeq, 12, 2);
BKOQ_RECORD_FIELD(BKDTAPE, usSessionNumber, 14, 2);
BKOQ_RECORD_FIELD(BKDTAPE, ulQFABlockNumber, 16, 4);
BKOQ_RECORD_FIELD(BKDTAPE, pszSessionPW, 20, 4);
BKOQ_RECORD_FIELD(BKDTAPE, usNewTapeMethod, 24, 2);
BKOQ_RECORD_FIELD(BKDTAPE, usSpanTapeMethod, 26, 2);
BKOQ_RECORD_FIELD(BKDTAPE, usNewTapeTimeout, 28, 2);
BKOQ_RECORD_FIELD(BKDTAPE, usSpanTapeTimeout, 30, 2);
BKOQ_RECORD_FIELD(BKDTAPE, ulFilterCount, 32, 4);
BKOQ_RECORD_FIELD(BKDTAPE, pFilters, 36, 4);
BKOQ_RECORD_FIELD(BKDTAPE, ulTapeItemCount, 40, 4);
BKOQ_RECORD_FIELD(BKDTAPE, pTapeItems, 44, 4);
BKOQ_RECORD_FIELD(BKDTAPE, usFileSystem, 48, 2);
BKOQ_RECORD_FIELD(BKDTAPE, abReserved50, 50, 2);
BKOQ_RECORD_FIELD(BKDTAPE, ulOptions, 52, 4);
BKOQ_RECORD_FIELD(BKDTAPE, pszPath, 56, 4);
BKOQ_RECORD_FIELD(BKDTAPE, pszLocation, 60, 4);
BKOQ_RECORD_FIELD(BKDTAPE, abReserved64, 64, 4);
BKOQ_RECORD_FIELD(BKDTAPE, pTapeX, 68, 4);

BKOQ_RECORD_ASSERT(sizeof(BKNODE) == 100);
BKOQ_RECORD_FIELD(BKNODE, usNodeType, 0, 2);
BKOQ_RECORD_FIELD(BKNODE, usNodeOS, 2, 2);
BKOQ_RECORD_FIELD(BKNODE, pszNodeOSVer, 4, 4);
BKOQ_RECORD_FIELD(BKNODE, pszNodeName, 8, 4);
BKOQ_RECORD_FIELD(BKNODE, pszNodeAddress, 12, 4);
BKOQ_RECORD_FIELD(BKNODE, pszUserName, 16, 4);
BKOQ_RECORD_FIELD(BKNODE, pszPassword, 20, 4);
BKOQ_RECORD_FIELD(BKNODE, ulFilterCount, 24, 4);
BKOQ_RECORD_FIELD(BKNODE, pFilters, 28, 4);
BKOQ_RECORD_FIELD(BKNODE, usDeviceType, 32, 2);
BKOQ_RECORD_FIELD(BKNODE, abReserved34, 34, 2);
BKOQ_RECORD_FIELD(BKNODE, ulMediaCount, 36, 4);
BKOQ_RECORD_FIELD(BKNODE, pMedia, 40, 4);
BKOQ_RECORD_FIELD(BKNODE, pszBeforeNode, 44, 4);
BKOQ_RECORD_FIELD(BKNODE, pszAfterNode, 48, 4);
BKOQ_RECORD_FIELD(BKNODE, usBeforeNodeWait, 52, 2);
BKOQ_RECORD_FIELD(BKNODE, abReserved54, 54, 2);
BKOQ_RECORD_FIELD(BKNODE, ulNodeOptions, 56, 4);
BKOQ_RECORD_FIELD(BKNODE, abReserved60, 60, 24);
BKOQ_RECORD_FIELD(BKNODE, pszNodeDomain, 84, 4);
BKOQ_RECORD_FIELD(BKNODE, abReserved88, 88, 12);

BKOQ_RECORD_ASSERT(sizeof(BKQJDATATRANSFER) == 292);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, ulReserved0, 0, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, usJobType, 4, 2);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, abReserved6, 6, 2);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, usJobStatus, 8, 2);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, usScriptType, 10, 2);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, ulNumSourceNodes, 12, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, pSourceNodes, 16, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, ulNumDestNodes, 20, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, pDestNodes, 24, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, pszOwner, 28, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, pszReportFile, 32, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, pszComments, 36, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, pszBeforeJob, 40, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, pszAfterJob, 44, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, usBeforeJobWait, 48, 2);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, abReserved50, 50, 2);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, usOnConflict, 52, 2);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, abReserved54, 54, 2);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, stSchedule, 56, 18);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, abReserved74, 74, 30);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, stOpenFile, 104, 12);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, abReserved116, 116, 16);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, stFax, 132, 24);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, stEMail, 156, 24);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, stPrintQueue, 180, 16);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, stScheduleExt, 196, 48);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, abReserved244, 244, 12);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, ulOptions, 256, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, pszHost, 260, 4);
BKOQ_RECORD_FIELD(BKQJDATATRANSFER, abReserved264, 264, 28);

#endif /* BKOQ_RECORDS_H_ */
