#ifndef BKOQ_RECORDS_OLD_H_
#define BKOQ_RECORDS_OLD_H_

/* The records of the previous transfer layout. A record that does not differ in a field is the
   current one under its previous name; the rest differ from the current ones only where a comment
   says so. Usable from C99 and C++11. */

#include "bkoq/records.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef BKSCHEDINFO BKSCHEDINFO_OLD;
typedef BKOFINFO BKOFINFO_OLD;
typedef BKFAXINFO BKFAXINFO_OLD; /**< here pszReceiverName is filled */
typedef BKEMAILINFO BKEMAILINFO_OLD;
typedef BKPRINTQ BKPRINTQ_OLD;
typedef BKFILTER_FILE BKFILTER_FILE_OLD;
typedef BKDISKITEM BKDISKITEM_OLD;
typedef BKDDISK BKDDISK_OLD;
typedef BKTAPEITEM BKTAPEITEM_OLD;

/** Media rotation; differs by the job types. */
typedef struct BKROTATIONINFO_OLD {
  char* pszSetName;         /**< media set name */
  uint8_t abReserved4[4];   /**< zero */
  uint16_t usCruiseMethod;  /**< cruise schedules: cruise method, low 16 bits */
  uint8_t abReserved10[2];  /**< zero */
  uint8_t abJobTypes[8];    /**< job types of the first eight job units, low 8 bits each */
  uint16_t usSaveMonthly;   /**< cruise schedules: monthly copies kept */
  uint16_t usSaveWeekly;    /**< cruise schedules: weekly copies kept */
  uint16_t usSaveDaily;     /**< cruise schedules: daily copies kept */
  uint8_t abReserved26[14]; /**< zero */
  uint32_t ulCruiseOptions; /**< cruise schedules: option word */
  uint16_t usMonths;        /**< cruise schedules: months */
  uint16_t usCopies;        /**< cruise schedules: copies */
} BKROTATIONINFO_OLD;

/** One tape; differs by the whole tape ID, and by a session end time instead of an extension. */
typedef struct BKDTAPE_OLD {
  char* pszDeviceGroup;        /**< device group */
  char* pszTapeName;           /**< tape name */
  uint32_t ulTapeID;           /**< tape ID, whole */
  uint16_t usTapeSeq;          /**< sequence within the tape set */
  uint16_t usSessionNumber;    /**< session on the tape */
  uint32_t ulQFABlockNumber;   /**< block at which the session starts */
  char* pszSessionPW;          /**< session password of the tape, or of the restore job */
  uint16_t usNewTapeMethod;    /**< the job's tape method */
  uint16_t usSpanTapeMethod;   /**< the job's span method */
  uint16_t usNewTapeTimeout;   /**< the job's new-tape time-out */
  uint16_t usSpanTapeTimeout;  /**< the job's span-tape time-out */
  uint32_t ulFilterCount;      /**< elements in pFilters */
  BKFILTER_FILE_OLD* pFilters; /**< filters of this tape */
  uint32_t ulTapeItemCount;    /**< elements in pTapeItems */
  BKTAPEITEM_OLD* pTapeItems;  /**< items of this tape */
  uint16_t usFileSystem;       /**< file-system code, 8 bits widened */
  uint8_t abReserved50[2];     /**< zero */
  uint32_t ulOptions;      /**< tape options; 0x8000000 is cleared when the tape has an extension */
  char* pszPath;           /**< path of the session */
  char* pszLocation;       /**< location of the tape */
  int32_t lSessionEndTime; /**< session end time, as the client gave it, or zero */
  uint8_t abReserved68[4]; /**< zero: this layout has no extension record */
} BKDTAPE_OLD;

/** One node; differs by having no domain. */
typedef struct BKNODE_OLD {
  uint16_t usNodeType;         /**< node kind; 6 for an NDS node, 3 for a tape node, the actual
                                    kind for a restore node, also 13 */
  uint16_t usNodeOS;           /**< operating-system code */
  char* pszNodeOSVer;          /**< operating-system version; a second text may follow its NUL */
  char* pszNodeName;           /**< node name; a second text may follow its NUL */
  char* pszNodeAddress;        /**< node address; the domain for an NDS node */
  char* pszUserName;           /**< user name */
  char* pszPassword;           /**< password */
  uint32_t ulFilterCount;      /**< elements in pFilters */
  BKFILTER_FILE_OLD* pFilters; /**< the node's filters, then the job's */
  uint16_t usDeviceType;       /**< device type */
  uint8_t abReserved34[2];     /**< zero */
  uint32_t ulMediaCount;       /**< elements in pMedia */
  void* pMedia;                /**< BKDTAPE_OLD for tape nodes, BKDDISK_OLD for all others */
  char* pszBeforeNode;         /**< node to process before this one */
  char* pszAfterNode;          /**< node to process after this one */
  uint16_t usBeforeNodeWait;   /**< wait for the before-node */
  uint8_t abReserved54[2];     /**< zero */
  uint32_t ulNodeOptions;      /**< node options; 0x40, 0x200 and 0x800 may be added */
  uint8_t abReserved60[24];    /**< zero */
  uint8_t abReserved84[16];    /**< zero */
} BKNODE_OLD;

/** One job: the root of a record tree. The same fields as the current one; its nodes and its
    rotation block are those of this layout. */
typedef struct BKQJDATATRANSFER_OLD {
  uint32_t ulReserved0;             /**< zero */
  uint16_t usJobType;               /**< job kind */
  uint8_t abReserved6[2];           /**< zero */
  uint16_t usJobStatus;             /**< job status, low 16 bits */
  uint16_t usScriptType;            /**< script type */
  uint32_t ulNumSourceNodes;        /**< elements in pSourceNodes */
  BKNODE_OLD* pSourceNodes;         /**< source nodes */
  uint32_t ulNumDestNodes;          /**< elements in pDestNodes */
  BKNODE_OLD* pDestNodes;           /**< destination nodes */
  char* pszOwner;                   /**< owner */
  char* pszReportFile;              /**< report file */
  char* pszComments;                /**< comments */
  char* pszBeforeJob;               /**< command run before the job */
  char* pszAfterJob;                /**< command run after the job */
  uint16_t usBeforeJobWait;         /**< before-job wait */
  uint8_t abReserved50[2];          /**< zero */
  uint16_t usOnConflict;            /**< restore jobs: what to do on conflict */
  uint8_t abReserved54[2];          /**< zero */
  BKSCHEDINFO_OLD stSchedule;       /**< schedule, zero without one */
  uint8_t abReserved74[30];         /**< zero */
  BKOFINFO_OLD stOpenFile;          /**< open-file options, zero without them */
  uint8_t abReserved116[16];        /**< zero */
  BKFAXINFO_OLD stFax;              /**< fax notification, zero without one */
  BKEMAILINFO_OLD stEMail;          /**< e-mail notification, zero without one */
  BKPRINTQ_OLD stPrintQueue;        /**< print-queue notification, zero without one */
  BKROTATIONINFO_OLD stScheduleExt; /**< rotation, zero unless the schedule is one */
  uint8_t abReserved244[12];        /**< zero */
  uint32_t ulOptions;               /**< job options */
  char* pszHost;                    /**< host */
  uint8_t abReserved264[28];        /**< zero */
} BKQJDATATRANSFER_OLD;

#ifdef __cplusplus
}
#endif

/** Asserts that a field of a previous record is where the current one has it. */
#define BKOQ_RECORD_SAME(record, field)                                          \
  BKOQ_RECORD_ASSERT(offsetof(record##_OLD, field) == offsetof(record, field) && \
                     BKOQ_FIELD_SIZE(record##_OLD, field) == BKOQ_FIELD_SIZE(record, field))

BKOQ_RECORD_ASSERT(sizeof(BKROTATIONINFO_OLD) == 48);
BKOQ_RECORD_SAME(BKROTATIONINFO, pszSetName);
BKOQ_RECORD_SAME(BKROTATIONINFO, abReserved4);
BKOQ_RECORD_SAME(BKROTATIONINFO, usCruiseMethod);
BKOQ_RECORD_SAME(BKROTATIONINFO, abReserved10);
BKOQ_RECORD_FIELD(BKROTATIONINFO_OLD, abJobTypes, 12, 8);
BKOQ_RECORD_SAME(BKROTATIONINFO, usSaveMonthly);
BKOQ_RECORD_SAME(BKROTATIONINFO, usSaveWeekly);
BKOQ_RECORD_SAME(BKROTATIONINFO, usSaveDaily);
BKOQ_RECORD_SAME(BKROTATIONINFO, abReserved26);
BKOQ_RECORD_SAME(BKROTATIONINFO, ulCruiseOptions);
BKOQ_RECORD_SAME(BKROTATIONINFO, usMonths);
BKOQ_RECORD_SAME(BKROTATIONINFO, usCopies);

BKOQ_RECORD_ASSERT(sizeof(BKDTAPE_OLD) == 72);
BKOQ_RECORD_SAME(BKDTAPE, pszDeviceGroup);
BKOQ_RECORD_SAME(BKDTAPE, pszTapeName);
BKOQ_RECORD_FIELD(BKDTAPE_OLD, ulTapeID, 8, 4);
BKOQ_RECORD_SAME(BKDTAPE, usTapeSeq);
BKOQ_RECORD_SAME(BKDTAPE, usSessionNumber);
BKOQ_RECORD_SAME(BKDTAPE, ulQFABlockNumber);
BKOQ_RECORD_SAME(BKDTAPE, pszSessionPW);
BKOQ_RECORD_SAME(BKDTAPE, usNewTapeMethod);
BKOQ_RECORD_SAME(BKDTAPE, usSpanTapeMethod);
BKOQ_RECORD_SAME(BKDTAPE, usNewTapeTimeout);
BKOQ_RECORD_SAME(BKDTAPE, usSpanTapeTimeout);
BKOQ_RECORD_SAME(BKDTAPE, ulFilterCount);
BKOQ_RECORD_SAME(BKDTAPE, pFilters);
BKOQ_RECORD_SAME(BKDTAPE, ulTapeItemCount);
BKOQ_RECORD_SAME(BKDTAPE, pTapeItems);
BKOQ_RECORD_SAME(BKDTAPE, usFileSystem);
BKOQ_RECORD_SAME(BKDTAPE, abReserved50);
BKOQ_RECORD_SAME(BKDTAPE, ulOptions);
BKOQ_RECORD_SAME(BKDTAPE, pszPath);
BKOQ_RECORD_SAME(BKDTAPE, pszLocation);
BKOQ_RECORD_FIELD(BKDTAPE_OLD, lSessionEndTime, 64, 4);
BKOQ_RECORD_FIELD(BKDTAPE_OLD, abReserved68, 68, 4);

BKOQ_RECORD_ASSERT(sizeof(BKNODE_OLD) == 100);
BKOQ_RECORD_SAME(BKNODE, usNodeType);
BKOQ_RECORD_SAME(BKNODE, usNodeOS);
BKOQ_RECORD_SAME(BKNODE, pszNodeOSVer);
BKOQ_RECORD_SAME(BKNODE, pszNodeName);
BKOQ_RECORD_SAME(BKNODE, pszNodeAddress);
BKOQ_RECORD_SAME(BKNODE, pszUserName);
BKOQ_RECORD_SAME(BKNODE, pszPassword);
BKOQ_RECORD_SAME(BKNODE, ulFilterCount);
BKOQ_RECORD_SAME(BKNODE, pFilters);
BKOQ_RECORD_SAME(BKNODE, usDeviceType);
BKOQ_RECORD_SAME(BKNODE, abReserved34);
BKOQ_RECORD_SAME(BKNODE, ulMediaCount);
BKOQ_RECORD_SAME(BKNODE, pMedia);
BKOQ_RECORD_SAME(BKNODE, pszBeforeNode);
BKOQ_RECORD_SAME(BKNODE, pszAfterNode);
BKOQ_RECORD_SAME(BKNODE, usBeforeNodeWait);
BKOQ_RECORD_SAME(BKNODE, abReserved54);
BKOQ_RECORD_SAME(BKNODE, ulNodeOptions);
BKOQ_RECORD_SAME(BKNODE, abReserved60);
BKOQ_RECORD_FIELD(BKNODE_OLD, abReserved84, 84, 16);

BKOQ_RECORD_ASSERT(sizeof(BKQJDATATRANSFER_OLD) == 292);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, ulReserved0);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, usJobType);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, abReserved6);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, usJobStatus);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, usScriptType);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, ulNumSourceNodes);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, pSourceNodes);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, ulNumDestNodes);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, pDestNodes);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, pszOwner);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, pszReportFile);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, pszComments);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, pszBeforeJob);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, pszAfterJob);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, usBeforeJobWait);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, abReserved50);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, usOnConflict);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, abReserved54);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, stSchedule);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, abReserved74);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, stOpenFile);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, abReserved116);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, stFax);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, stEMail);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, stPrintQueue);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, stScheduleExt);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, abReserved244);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, ulOptions);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, pszHost);
BKOQ_RECORD_SAME(BKQJDATATRANSFER, abReserved264);

#endif /* BKOQ_RECORDS_OLD_H_ */
