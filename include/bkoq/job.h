#ifndef BKOQ_JOB_H_
#define BKOQ_JOB_H_

#include "bkoq/collections.h"
#include "bkoq/cruise.h"
#include "bkoq/export.h"
#include "bkoq/node.h"
#include "bkoq/sched.h"
#include "rw/collstr.h"

class BKQEMail;
class BKQFax;
class BKQFilter;
class BKQOpenFileInfo;
class BKQPrintQueue;

/// What every job has. Jobs live by these rules:
///
/// - What a job has one of (schedule, fax, e-mail, print queue, open-file information, destination,
///   the source of a merge or scan job) is adopted by its setter: it must live on the heap and
///   belong to one job only; a temporary does not compile. A setter abandons what it replaces. With
///   the job go all of these but the print queue and the open-file information, which the client
///   frees after the job. So it does with those of a copy.
/// - What a job has a list of (nodes, filters) is kept by address and not deleted with the job.
/// - A copy holds the clone() of each part. A client's own class must override clone(): one that it
///   inherits from a root class gives null, and the part is missing from the copy.
/// - convertToBK2() flattens the job into a BKQJDATATRANSFER, convertToBK2_old() into a
///   BKQJDATATRANSFER_OLD. The result is 1 with the record in `out`, which the caller owns: it and
///   every block that hangs from it are from malloc(). Or it is 0, after a line on the standard
///   error stream for each part that failed, the innermost first; only the failure of a client's
///   own schedule class is that class's to report, and that of a verify job then has no line. After
///   a 0 `out` is as the caller set it when the base step failed, and else the partly filled
///   record, which is the caller's as well. A text for whose copy there is no memory is null in the
///   record, without a line. Flattening changes nothing of the job but the cursors of its lists.
///   One flattening may run at a time in a process.
/// - A null text is the empty text everywhere.
class BKOQ_API BKQJob : public RWCollectable {
 public:
  /// The server's job status; usJobStatus takes the low 16 bits.
  enum BKQJobStatus : unsigned int {};
  /// The server's kinds of merge and scan; they reach no record.
  enum BKQMergeScanType : unsigned int {};

  BKQJob();  ///< named "testjob"; new-tape time-out 5, span-tape time-out 9999, all else 0 or empty
  explicit BKQJob(const char* name);  ///< the same with `name`; nothing else sets a job's name
  /// Deletes schedule, fax and e-mail. The print queue outlives the job: the client frees it.
  ~BKQJob() override;
  BKQJob(const BKQJob&) = delete;
  BKQJob& operator=(const BKQJob&) = delete;

  /// 1 exactly when `other`, which must be a job or null, is one with the same job ID.
  RWBoolean isEqual(const RWCollectable* other) const override;

  /// A new job of the same class, filled by its mycopy(), owned by the caller. Null from a plain
  /// BKQJob and when memory runs out.
  virtual BKQJob* clone();
  virtual unsigned int jobType() const;  ///< the job's kind, usJobType; 1
  virtual int convertToBK2(void*& out);
  virtual int convertToBK2_old(void*& out);

  unsigned int getJobID() const;  ///< reaches no record
  void setJobID(unsigned int id);
  unsigned int getJobNumber() const;  ///< the same number as the instance ID; reaches no record
  void setJobNumber(unsigned int number);
  unsigned int getInstanceID() const;  ///< the same number as the job number
  void setInstanceID(unsigned int id);
  unsigned short getScriptType() const;  ///< usScriptType
  void setScriptType(unsigned short type);
  BKQJobStatus getJobStatus() const;  ///< usJobStatus, low 16 bits
  void setJobStatus(BKQJobStatus status);
  /// ulOptions, whole. Bit 0x00100000 asks for no estimate: every node record then gets 0x40.
  unsigned int getOptions() const;
  void setOptions(unsigned int options);
  unsigned short getBeforeJobWait() const;  ///< usBeforeJobWait
  void setBeforeJobWait(unsigned short wait);
  int getOnExitCode();  ///< reaches no record
  void setOnExitCode(int code);
  unsigned short getNewTapeTimeout() const;  ///< usNewTapeTimeout of every tape
  void setNewTapeTimeout(unsigned short timeout);
  unsigned short getSpanTapeTimeout() const;  ///< usSpanTapeTimeout of every tape
  void setSpanTapeTimeout(unsigned short timeout);
  const RWCollectableString& getJobName() const;     ///< reaches no record
  const RWCollectableString& getJobVersion() const;  ///< reaches no record
  void setJobVersion(const RWCollectableString& version);
  const RWCollectableString& getHost() const;  ///< pszHost
  void setHost(const char* host);
  const RWCollectableString& getOwner() const;  ///< pszOwner
  void setOwner(const char* owner);
  const RWCollectableString& getPassword() const;  ///< reaches no record
  void setPassword(const char* password);
  const RWCollectableString& getMachineName() const;  ///< reaches no record
  void setMachineName(const char* name);
  const RWCollectableString& getMachineUser() const;  ///< reaches no record
  void setMachineUser(const char* user);
  const RWCollectableString& getMachinePassword() const;  ///< reaches no record
  void setMachinePassword(const char* password);
  const RWCollectableString& getMachineAddress() const;  ///< reaches no record
  void setMachineAddress(const char* address);
  const RWCollectableString& getReportFile() const;  ///< pszReportFile
  void setReportFile(const char* file);
  const RWCollectableString& getComments() const;  ///< pszComments
  void setComments(const char* comments);
  const RWCollectableString& getBeforeJob() const;  ///< command run before; pszBeforeJob
  void setBeforeJob(const char* command);
  const RWCollectableString& getAfterJob() const;  ///< command run after; pszAfterJob
  void setAfterJob(const char* command);
  const RWCollectableString& getFileName() const;  ///< reaches no record
  void setFileName(const char* name);
  const RWCollectableString& getPoolName() const;  ///< media pool; reaches no record
  void setPoolName(const char* name);

  /// SNMP flag, 0 or 1; reaches no record.
  void setSNMPOn();
  void setSNMPOff();
  int SNMPOn();
  /// Ovix flag, 0 or 1; reaches no record.
  void setOvixOn();
  void setOvixOff();
  int OvixOn();

  /// User and password under which the job's scripts run; they reach no record.
  void setScriptUserID(RWCollectableString userID, RWCollectableString password);
  /// Copies both out.
  void getScriptUserID(RWCollectableString& userID, RWCollectableString& password);

  int scheduleExists();  ///< 1 when there is one, else 0
  /// stSchedule and stScheduleExt. The object must be on the heap; the job deletes it.
  void setSchedule(const BKQSchedule& schedule);
  void setSchedule(const BKQSchedule&& schedule) = delete;
  BKQSchedule* getSchedule() const;  ///< null when there is none
  int printQueueExists();            ///< 1 when there is one, else 0
  /// stPrintQueue. The object must be on the heap; the client frees it after the job.
  void setPrintQueue(const BKQPrintQueue& queue);
  void setPrintQueue(const BKQPrintQueue&& queue) = delete;
  BKQPrintQueue* getPrintQueue();  ///< null when there is none
  int emailInfoExists();           ///< 1 when there is one, else 0
  /// stEMail. The object must be on the heap; the job deletes it.
  void setEMailInfo(const BKQEMail& email);
  void setEMailInfo(const BKQEMail&& email) = delete;
  BKQEMail* getEMailInfo();  ///< null when there is none
  int faxInfoExists();       ///< 1 when there is one, else 0; makes none
  /// stFax. The object must be on the heap; the job deletes it.
  void setFaxInfo(const BKQFax& fax);
  void setFaxInfo(const BKQFax&& fax) = delete;
  /// Attaches an empty fax object when there is none; null only when memory runs out.
  BKQFax* getFaxInfo();

  /// Makes this a deep copy of `source`: its own fax, e-mail, print queue and schedule are deleted
  /// unless `source` holds them too, and replaced by clones of the source's. The source should have
  /// all four; one that is missing copies as null. Nothing happens when `source` is null or this
  /// object; so in every class. A call through this class copies this class's part only.
  void mycopy(BKQJob* source);

 private:
  friend struct bkoq::Flattening;
  unsigned int jobId_;
  unsigned short scriptType_;
  unsigned short reserved3_;  // 1 at first; only copied, as are the other reserved members
  unsigned int options_;
  unsigned short beforeJobWait_;
  RWCollectableString host_;
  RWCollectableString jobName_;
  RWCollectableString reportFile_;
  RWCollectableString beforeJob_;
  RWCollectableString afterJob_;
  RWCollectableString machineName_;
  RWCollectableString machineUser_;
  RWCollectableString machinePassword_;
  RWCollectableString machineAddress_;
  RWCollectableString comments_;
  RWCollectableString owner_;
  RWCollectableString password_;
  BKQSchedule* schedule_;
  RWCollectableString fileName_;
  RWCollectableString poolName_;
  BKQFax* fax_;
  BKQEMail* email_;
  BKQPrintQueue* printQueue_;
  RWCollectableString jobVersion_;
  BKQJobStatus jobStatus_;
  unsigned int reserved26_;
  RWCollectableString scriptUserId_;
  RWCollectableString scriptUserPassword_;
  unsigned int jobNumber_;
  unsigned short newTapeTimeout_;
  unsigned short spanTapeTimeout_;
  int snmp_;
  int ovix_;
  int onExitCode_;
  unsigned short reserved35_;
};

/// A backup of source nodes to a destination tape node. The subclasses differ in jobType() and in
/// the schedule that they take.
class BKOQ_API BKQBackupJob : public BKQJob {
 public:
  /// The server's codes; usNewTapeMethod of every tape takes the low 16 bits.
  enum BKQTapeMethodType : unsigned int {};
  /// The server's codes; usSpanTapeMethod of every tape takes the low 16 bits.
  enum BKQSpanMethodType : unsigned int {};

  /// Named "testjob"; no nodes, filters or objects, all numbers 0, and what every job starts with.
  BKQBackupJob();
  explicit BKQBackupJob(const char* name);  ///< the same with `name`
  /// Deletes the destination. Source nodes and filters are the client's; so is the open-file
  /// information, which the client frees after the job.
  ~BKQBackupJob() override;

  BKQBackupJob* clone() override;
  unsigned int jobType() const override;  ///< 1

  /// The short forms take all nodes, an empty list, `unixKind` 0 and an empty text for what they
  /// lack.
  /// With a non-empty `nodeName` only the source nodes of exactly that name go. `disks`, a list of
  /// texts, narrows the disks of every source node (see BKQDiskNode). `unixKind` and
  /// `unixText` reach UNIX source nodes only (see BKQUnixNode).
  int convertToBK2(void*& out) override;
  int convertToBK2(void*& out, const char* nodeName);
  int convertToBK2(void*& out, const char* nodeName, RWSlistCollectables& disks);
  int convertToBK2(void*& out, const char* nodeName, int unixKind, const char* unixText);
  int convertToBK2(void*& out, const char* nodeName, RWSlistCollectables& disks, int unixKind,
                   const char* unixText);
  int convertToBK2_old(void*& out) override;
  int convertToBK2_old(void*& out, const char* nodeName);
  int convertToBK2_old(void*& out, const char* nodeName, RWSlistCollectables& disks);
  int convertToBK2_old(void*& out, const char* nodeName, int unixKind, const char* unixText);
  int convertToBK2_old(void*& out, const char* nodeName, RWSlistCollectables& disks, int unixKind,
                       const char* unixText);

  /// Appends the node itself; pSourceNodes. Null when memory runs out. A node that is no disk node
  /// can be added but not flattened.
  RWCollectable* addSourceNode(BKQNode& node);
  /// Unlinks and deletes the first source node of the same name, which may be `node` itself; 0, or
  /// -1 when there is none. A node that is listed more than once is deleted with its last place;
  /// one that is also the destination leaves the job without.
  int removeSourceNode(BKQNode& node);
  /// Unlinks every source node and deletes each once; a destination among them goes as well.
  void clearSourceNodes();
  unsigned int sourceNodeEntries() const;
  void resetSourceNodes();
  unsigned int enumSourceNodes(BKQNodeCol*& out, unsigned int n);

  int destinationExists();  ///< 1 when there is one, else 0
  /// pDestNodes. The node must be on the heap; the job deletes it.
  void setDestination(BKQTapeNode& node);
  BKQTapeNode* getDestination() const;  ///< null when there is none

  int openFileInfoExists();  ///< 1 when there is one, else 0; makes none
  /// stOpenFile. The object must be on the heap; the client frees it after the job.
  void setOpenFileInfo(const BKQOpenFileInfo& info);
  void setOpenFileInfo(const BKQOpenFileInfo&& info) = delete;
  /// Attaches a default object when there is none, which the client frees after the job; null only
  /// when memory runs out.
  BKQOpenFileInfo* getOpenFileInfo();

  /// Appends the filter itself; pFilters of every source node, after the node's own. Null when
  /// memory runs out.
  RWCollectable* addFilter(BKQFilter& filter);
  unsigned int filterEntries() const;
  void resetFilters();
  unsigned int enumFilters(BKQFilterCol*& out, unsigned int n);

  unsigned short getMaxThreads() const;  ///< parallel threads; reaches no record
  void setMaxThreads(unsigned short threads);
  /// pszPassword of every disk without a password of its own.
  const RWCollectableString& getSessionPassword();
  void setSessionPassword(const char* password);
  void setEncryptionOn();  ///< adds 0x4000 to the options of every disk
  void setEncryptionOff();
  int encryptionOn();
  void setCompressionOn();  ///< adds 0x2000 to the options of every disk
  void setCompressionOff();
  int compressionOn();
  BKQTapeMethodType getTapeMethod() const;  ///< usNewTapeMethod of every tape
  void setTapeMethod(BKQTapeMethodType method);
  BKQSpanMethodType getSpanMethod() const;  ///< usSpanTapeMethod of every tape
  void setSpanMethod(BKQSpanMethodType method);

  /// Makes this a copy of `source`: its source nodes and filters twice, the source's own objects,
  /// then clones of them; and clones of its destination, open-file information and the four
  /// attachments, all of which the source should have (one that is missing copies as null). The
  /// source stays as it was. Former nodes, filters and attached objects are deleted unless the
  /// source holds them too, in its own lists or as its destination: a filter that is one of this
  /// job's filters must not also be a filter of a node, disk or tape of the source. Since the first
  /// half of each list is shared, only one of the two jobs may delete those nodes by
  /// clearSourceNodes() or removeSourceNode(); the other must not use them afterwards.
  void mycopy(BKQBackupJob* source);

 private:
  friend struct bkoq::Flattening;
  BKQNodeCol sourceNodes_;
  BKQTapeNode* destination_;
  unsigned int sourceNodeCursor_;
  BKQOpenFileInfo* openFileInfo_;
  BKQFilterCol filters_;
  unsigned int filterCursor_;
  unsigned short maxThreads_;
  unsigned int reserved8_;  // only copied
  RWCollectableString sessionPassword_;
  int encryption_;
  int compression_;
  BKQTapeMethodType tapeMethod_;
  BKQSpanMethodType spanMethod_;
};

/// A backup on the automatic rotation. Job type 3.
class BKOQ_API BKQCruiseBackupJob : public BKQBackupJob {
 public:
  BKQCruiseBackupJob();
  explicit BKQCruiseBackupJob(const char* name);
  ~BKQCruiseBackupJob() override;
  BKQCruiseBackupJob* clone() override;
  unsigned int jobType() const override;  ///< 3
  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQCruiseSchedule& schedule);
  void setSchedule(const BKQCruiseSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQCruiseSchedule* getSchedule() const;
  void mycopy(BKQCruiseBackupJob* source);
};

/// A backup on a media rotation. Job type 20.
class BKOQ_API BKQRotationBackupJob : public BKQBackupJob {
 public:
  BKQRotationBackupJob();
  explicit BKQRotationBackupJob(const char* name);
  ~BKQRotationBackupJob() override;
  BKQRotationBackupJob* clone() override;
  unsigned int jobType() const override;  ///< 20
  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQRotationSchedule& schedule);
  void setSchedule(const BKQRotationSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQRotationSchedule* getSchedule() const;
  void mycopy(BKQRotationBackupJob* source);
};

/// Catches up a missed run of the automatic rotation. Job type 5.
class BKOQ_API BKQCruiseMakeupJob : public BKQBackupJob {
 public:
  BKQCruiseMakeupJob();
  explicit BKQCruiseMakeupJob(const char* name);
  ~BKQCruiseMakeupJob() override;
  BKQCruiseMakeupJob* clone() override;
  unsigned int jobType() const override;  ///< 5
  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQCruiseSchedule& schedule);
  void setSchedule(const BKQCruiseSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQCruiseSchedule* getSchedule() const;
  void mycopy(BKQCruiseMakeupJob* source);
};

/// Catches up a missed run of a media rotation. Job type 21.
class BKOQ_API BKQRotationMakeupJob : public BKQBackupJob {
 public:
  BKQRotationMakeupJob();
  explicit BKQRotationMakeupJob(const char* name);
  ~BKQRotationMakeupJob() override;
  BKQRotationMakeupJob* clone() override;
  unsigned int jobType() const override;  ///< 21
  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQRotationSchedule& schedule);
  void setSchedule(const BKQRotationSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQRotationSchedule* getSchedule() const;
  void mycopy(BKQRotationMakeupJob* source);
};

/// A backup on a custom schedule. Job type 1.
class BKOQ_API BKQCustomBackupJob : public BKQBackupJob {
 public:
  BKQCustomBackupJob();
  explicit BKQCustomBackupJob(const char* name);
  ~BKQCustomBackupJob() override;
  BKQCustomBackupJob* clone() override;
  unsigned int jobType() const override;  ///< 1
  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQCustomSchedule& schedule);
  void setSchedule(const BKQCustomSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQCustomSchedule* getSchedule() const;
  void mycopy(BKQCustomBackupJob* source);
};

/// A backup of databases. Job type 9.
class BKOQ_API BKQDatabaseBackupJob : public BKQBackupJob {
 public:
  explicit BKQDatabaseBackupJob(const char* name);
  ~BKQDatabaseBackupJob() override;
  BKQDatabaseBackupJob* clone() override;
  unsigned int jobType() const override;  ///< 9
  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQRegularSchedule& schedule);
  void setSchedule(const BKQRegularSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQRegularSchedule* getSchedule() const;
  void mycopy(BKQDatabaseBackupJob* source);
};

/// Restores from tape sources to restore destinations. Job type 7.
class BKOQ_API BKQRestoreJob : public BKQJob {
 public:
  /// The server's codes; usOnConflict takes the low 16 bits.
  enum BKQConflictType : unsigned int {};
  /// The server's codes; they reach no record.
  enum BKQRestoreViewType : unsigned int {};

  explicit BKQRestoreJob(const char* name);  ///< options 0x6200000, on conflict 3, view 1
  ~BKQRestoreJob() override;                 ///< deletes no node and no filter

  BKQRestoreJob* clone() override;
  unsigned int jobType() const override;  ///< 7

  /// Only the tapes of that name (unless it is empty) and session (unless it is 0) go; see
  /// BKQTapeNode. The short form takes all.
  int convertToBK2(void*& out) override;
  int convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber);
  int convertToBK2_old(void*& out) override;
  int convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber);

  /// Append the object itself, which the job never deletes; null when memory runs out.
  RWCollectable* addSourceNode(BKQTapeNode& node);   ///< pSourceNodes
  RWCollectable* addDestNode(BKQRestoreNode& node);  ///< pDestNodes
  RWCollectable* addFilter(BKQFilter& filter);       ///< pFilters of every source node
  unsigned int sourceNodeEntries() const;
  unsigned int destNodeEntries() const;
  unsigned int filterEntries() const;
  void resetSourceNodes();
  void resetDestNodes();
  void resetFilters();
  unsigned int enumSourceNodes(BKQTapeNodeCol*& out, unsigned int n);
  unsigned int enumDestNodes(BKQRestoreNodeCol*& out, unsigned int n);
  unsigned int enumFilters(BKQFilterCol*& out, unsigned int n);

  BKQConflictType getOnConflict() const;  ///< usOnConflict
  void setOnConflict(BKQConflictType type);
  BKQRestoreViewType getRestoreView() const;  ///< reaches no record
  void setRestoreView(BKQRestoreViewType view);
  /// pszSessionPW of every tape without a password of its own.
  const RWCollectableString& getSessionPassword() const;
  void setSessionPassword(const char* password);

  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQRegularSchedule& schedule);
  void setSchedule(const BKQRegularSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQRegularSchedule* getSchedule() const;

  /// Copies the base job's part as BKQJob::mycopy() does, and the nodes and filters as clones. What
  /// the lists held before is unlinked and not deleted.
  void mycopy(BKQRestoreJob* source);

 private:
  friend struct bkoq::Flattening;
  BKQTapeNodeCol sourceNodes_;
  BKQRestoreNodeCol destNodes_;
  unsigned short sourceNodeCursor_;
  unsigned short destNodeCursor_;
  BKQConflictType onConflict_;
  BKQRestoreViewType restoreView_;
  BKQFilterCol filters_;
  RWCollectableString sessionPassword_;
  unsigned int filterCursor_;
};

/// Restores databases. Job type 10.
class BKOQ_API BKQDatabaseRestoreJob : public BKQRestoreJob {
 public:
  explicit BKQDatabaseRestoreJob(const char* name);
  ~BKQDatabaseRestoreJob() override;
  BKQDatabaseRestoreJob* clone() override;
  unsigned int jobType() const override;  ///< 10
  void mycopy(BKQDatabaseRestoreJob* source);
};

/// Reads tape sources without restoring them. Job type 29.
class BKOQ_API BKQVerifyJob : public BKQJob {
 public:
  explicit BKQVerifyJob(const char* name);
  ~BKQVerifyJob() override;  ///< deletes no node

  BKQVerifyJob* clone() override;
  unsigned int jobType() const override;  ///< 29

  /// As BKQRestoreJob selects tapes.
  int convertToBK2(void*& out) override;
  int convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber);
  int convertToBK2_old(void*& out) override;
  int convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber);

  /// Appends the node itself, which the job never deletes; pSourceNodes. Null when memory runs out.
  RWCollectable* addSourceNode(BKQTapeNode& node);
  unsigned int sourceNodeEntries() const;
  void resetSourceNodes();
  unsigned int enumSourceNodes(BKQTapeNodeCol*& out, unsigned int n);

  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQRegularSchedule& schedule);
  void setSchedule(const BKQRegularSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQRegularSchedule* getSchedule() const;

  /// Copies the base job's part as BKQJob::mycopy() does, and the nodes as clones. What the list
  /// held before is unlinked and not deleted.
  void mycopy(BKQVerifyJob* source);

 private:
  friend struct bkoq::Flattening;
  BKQTapeNodeCol sourceNodes_;
  unsigned short sourceNodeCursor_;
};

/// Compares tape sources with a machine's disks. Job type 11.
class BKOQ_API BKQCompareJob : public BKQVerifyJob {
 public:
  explicit BKQCompareJob(const char* name);
  ~BKQCompareJob() override;  ///< deletes the destination

  BKQCompareJob* clone() override;
  unsigned int jobType() const override;  ///< 11

  /// As BKQRestoreJob selects tapes; `overridePath` as BKQDiskNode takes it. The job must have a
  /// destination: without one the result is 0, with an empty node in the record. A UNIX destination
  /// is flattened as any disk node is: it does not set UNIX_OPTIONS.
  int convertToBK2(void*& out) override;
  int convertToBK2(void*& out, const char* overridePath);
  int convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber);
  int convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber,
                   const char* overridePath);
  int convertToBK2_old(void*& out) override;
  int convertToBK2_old(void*& out, const char* overridePath);
  int convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber);
  int convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber,
                       const char* overridePath);

  /// pDestNodes. The node must be on the heap; the job deletes it.
  void setDestination(BKQDiskNode& node);
  BKQDiskNode* getDestination() const;  ///< null when there is none

  /// As BKQVerifyJob::mycopy(), with a clone of the destination; the former one is deleted.
  void mycopy(BKQCompareJob* source);

 private:
  friend struct bkoq::Flattening;
  BKQDiskNode* destination_;
};

/// Merges the sessions of a tape source into a disk node. Job type 8. Range, type, filter and the
/// detailed flag reach no record.
class BKOQ_API BKQMergeJob : public BKQJob {
 public:
  BKQMergeJob();            ///< named "testjob"; no source or destination, all numbers 0
  ~BKQMergeJob() override;  ///< deletes the source and destination

  BKQMergeJob* clone() override;
  unsigned int jobType() const override;  ///< 8

  /// As BKQRestoreJob selects tapes.
  int convertToBK2(void*& out) override;
  int convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber);
  int convertToBK2_old(void*& out) override;
  int convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber);

  int sourceExists();  ///< 1 when there is one, else 0
  /// pSourceNodes. The node must be on the heap; the job deletes it.
  void setSource(const BKQTapeNode& node);
  void setSource(const BKQTapeNode&& node) = delete;
  BKQTapeNode* getSource() const;  ///< null when there is none
  int destinationExists();         ///< 1 when there is one, else 0
  /// pDestNodes. The node must be on the heap; the job deletes it.
  void setDestination(BKQDiskNode& node);
  BKQDiskNode* getDestination() const;  ///< null when there is none

  /// First and last session, any numbers in any order; 0 and 0, as at first, for all sessions.
  void getMergeRange(unsigned short& start, unsigned short& end) const;
  void setMergeRange(unsigned short start, unsigned short end);
  int mergeAll() const;                   ///< 1 exactly when both ends of the range are 0
  BKQMergeScanType getMergeType() const;  ///< passes through whole; 0 at first
  void setMergeType(BKQMergeScanType type);
  const RWCollectableString& getMergeFilter() const;  ///< the last one accepted; empty at first
  /// A session number or a range of them, from 1 to 5000: 1 when the text was accepted and stored
  /// as it is; 0 when it was rejected and the old one kept. Without a "-" it is one number. With
  /// one, the tokens between are at most two numbers, the second not below the first ("3-7", also
  /// "5-").
  int setMergeFilter(const RWCollectableString& filter);
  int getDetailedMerge() const;  ///< flag, kept as given; 0 at first
  void setDetailedMerge(int detailed);

  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQRegularSchedule& schedule);
  void setSchedule(const BKQRegularSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQRegularSchedule* getSchedule() const;

  /// Copies the base job's part as BKQJob::mycopy() does, and the source and destination as clones;
  /// the former ones are deleted.
  void mycopy(BKQMergeJob* source);

 private:
  friend struct bkoq::Flattening;
  BKQTapeNode* source_;
  BKQDiskNode* destination_;
  unsigned short rangeStart_;
  unsigned short rangeEnd_;
  BKQMergeScanType type_;
  RWCollectableString filter_;
  int detailed_;
};

/// Scans the sessions of a tape source. Job type 14. Range, type, filter and the detailed flag
/// reach no record.
class BKOQ_API BKQScanJob : public BKQJob {
 public:
  BKQScanJob();            ///< named "testjob"; no source, all numbers 0
  ~BKQScanJob() override;  ///< deletes the source

  BKQScanJob* clone() override;
  unsigned int jobType() const override;  ///< 14

  /// As BKQRestoreJob selects tapes.
  int convertToBK2(void*& out) override;
  int convertToBK2(void*& out, const char* tapeName, unsigned short sessionNumber);
  int convertToBK2_old(void*& out) override;
  int convertToBK2_old(void*& out, const char* tapeName, unsigned short sessionNumber);

  int sourceExists();  ///< 1 when there is one, else 0
  /// pSourceNodes. The node must be on the heap; the job deletes it.
  void setSource(const BKQTapeNode& node);
  void setSource(const BKQTapeNode&& node) = delete;
  BKQTapeNode* getSource() const;  ///< null when there is none

  /// First and last session, any numbers in any order; 0 and 0, as at first, for all sessions.
  void getScanRange(unsigned short& start, unsigned short& end) const;
  void setScanRange(unsigned short start, unsigned short end);
  int scanAll() const;                   ///< 1 exactly when both ends of the range are 0
  BKQMergeScanType getScanType() const;  ///< passes through whole; 0 at first
  void setScanType(BKQMergeScanType type);
  const RWCollectableString& getScanFilter() const;  ///< the last one accepted; empty at first
  /// A session number or a range of them, from 1 to 5000: 1 when the text was accepted and stored
  /// as it is; 0 when it was rejected and the old one kept. Without a "-" it is one number. With
  /// one, the tokens between are at most two numbers, the second not below the first ("3-7", also
  /// "5-").
  int setScanFilter(const RWCollectableString& filter);
  int getDetailedScan() const;  ///< flag, kept as given; 0 at first
  void setDetailedScan(int detailed);

  /// As BKQJob::setSchedule(): an object on the heap, which the job deletes.
  void setSchedule(const BKQRegularSchedule& schedule);
  void setSchedule(const BKQRegularSchedule&& schedule) = delete;
  /// Null when there is none, or one of another class.
  BKQRegularSchedule* getSchedule() const;

  /// Copies the base job's part as BKQJob::mycopy() does, and the source as a clone; the former
  /// one is deleted.
  void mycopy(BKQScanJob* source);

 private:
  friend struct bkoq::Flattening;
  BKQTapeNode* source_;
  unsigned short rangeStart_;
  unsigned short rangeEnd_;
  BKQMergeScanType type_;
  RWCollectableString filter_;
  int detailed_;
};

#endif  // BKOQ_JOB_H_
