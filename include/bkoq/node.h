#ifndef BKOQ_NODE_H_
#define BKOQ_NODE_H_

#include "bkoq/collections.h"
#include "bkoq/disk.h"
#include "bkoq/export.h"
#include "rw/collstr.h"

class BKQFilter;
class BKQGroom;
class BKQTape;

/// A machine, tape source or restore destination named in a job. Abstract root. Becomes one BKNODE
/// or BKNODE_OLD.
///
/// A conversion fills the zeroed record that `rec` points to and hangs arrays and texts from it. It
/// returns 1, or 0 after its lines on the standard error stream, for a null pointer too; nothing is
/// freed then, and a count may be one higher than its array, which is null after a failed
/// allocation. A null text is the empty text everywhere.
class BKOQ_API BKQNode : public RWCollectable {
 public:
  /// Node kinds, as nodeType() gives them and usNodeType takes them.
  enum BKQNodeType : unsigned int {
    MacNode = 2,
    UnixNode = 3,
    NetwareNode = 8,
    WinNTNode = 9,
    OS2Node = 10,
    Win95Node = 11,
    WindowsNode = 12,
    NDSNode = 13,
    FTPNode = 20,
    SybaseNode = 21,
    OracleNode = 22,
    InformixNode = 23,
    TapeNode = 24,
    RestoreNode = 25,
    SnapShotNode = 26,
    DBRestoreNode = 27
  };

  BKQNode();  ///< named "localhost"; priority 255, every other number 0, every other text empty
  explicit BKQNode(const char* name);  ///< the same with `name`; null is the empty text
  ~BKQNode() override;
  BKQNode(const BKQNode&) = delete;
  BKQNode& operator=(const BKQNode&) = delete;

  /// A new node of the same class, filled by its mycopy(), owned by the caller; null from the
  /// abstract roots and when memory runs out.
  virtual BKQNode* clone();
  virtual unsigned int nodeType() const = 0;  ///< a BKQNodeType
  virtual int convertToBK2(void*& rec);
  virtual int convertToBK2_old(void*& rec);

  const RWCollectableString& getBeforeNode() const;  ///< pszBeforeNode
  void setBeforeNode(const char* name);
  const RWCollectableString& getAfterNode() const;  ///< pszAfterNode
  void setAfterNode(const char* name);
  unsigned int getNodeOS() const;  ///< operating-system code; usNodeOS takes the low 16 bits
  void setNodeOS(unsigned int os);
  const RWCollectableString& getNodeOSver() const;  ///< pszNodeOSVer
  void setNodeOSver(const char* version);
  const RWCollectableString& getNodeName() const;  ///< pszNodeName
  void setNodeName(const char* name);
  /// pszNodeAddress; of an NDS tree also pszNodeDomain, and in the previous layout neither.
  const RWCollectableString& getNodeAddress() const;
  void setNodeAddress(const char* address);
  /// pszNodeDomain, in the current layout only; of an NDS tree pszNodeAddress, in the current
  /// layout only when the address is empty.
  const RWCollectableString& getNodeDomain() const;
  void setNodeDomain(const char* domain);
  const RWCollectableString& getUserName() const;  ///< pszUserName
  void setUserName(const char* name);
  const RWCollectableString& getPassword() const;  ///< pszPassword
  void setPassword(const char* password);
  unsigned short getPriority() const;  ///< 255: none; orders machines, reaches no record
  void setPriority(unsigned short priority);
  /// A word of its own that no conversion reads; nodeType() is what the records carry.
  unsigned int getNodeType() const;
  void setNodeType(unsigned int type);
  unsigned int getOptions() const;  ///< ulNodeOptions, whole
  void setOptions(unsigned int options);
  unsigned short getDeviceType() const;  ///< usDeviceType
  void setDeviceType(unsigned short type);
  unsigned short getBeforeNodeWait() const;  ///< usBeforeNodeWait
  void setBeforeNodeWait(unsigned short wait);

  /// Appends the filter itself, which must live as long as the node; pFilters. Null when memory
  /// runs out.
  RWCollectable* addFilter(BKQFilter& filter);
  unsigned int filterEntries() const;
  void resetFilters();
  unsigned int enumFilters(BKQFilterCol*& out, unsigned int n);

  /// Copies every attribute of `source` and replaces the filters, which are unlinked and not
  /// deleted, by clones of the source's. The concrete classes' copies share the filters instead.
  /// Nothing happens when `source` is null or this object; so in every class.
  void mycopy(BKQNode* source);

 protected:
  /// Copies the texts, numbers and the cursor, not the filters.
  void copyAttributes(const BKQNode& source);
  /// The same, and the filter list as a list of the same objects.
  void copyAttributesAndFilters(const BKQNode& source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString beforeNode_;
  RWCollectableString afterNode_;
  unsigned int nodeOS_;
  RWCollectableString nodeOSver_;
  RWCollectableString nodeName_;
  RWCollectableString nodeAddress_;
  RWCollectableString nodeDomain_;
  RWCollectableString userName_;
  RWCollectableString password_;
  unsigned short priority_;
  unsigned int storedNodeType_;
  unsigned int options_;
  unsigned short deviceType_;
  unsigned short beforeNodeWait_;
  unsigned int filterCursor_;
  BKQFilterCol filters_;
};

/// A machine with disks. Abstract root of the machine classes. Options are 0x120 at first.
class BKOQ_API BKQDiskNode : public BKQNode {
 public:
  BKQDiskNode();
  explicit BKQDiskNode(const char* name);
  ~BKQDiskNode() override;

  BKQDiskNode* clone() override;  ///< null
  unsigned int nodeType() const override = 0;
  /// Orders machines by priority: -1 whenever the other's is 255, even when this one's is too; else
  /// 0, 1 or -1 by the priorities as signed 16-bit numbers. `other` must be a disk node; nothing
  /// counts as one of priority 255.
  int compareTo(const RWCollectable* other) const override;

  int convertToBK2(void*& rec) override;
  int convertToBK2_old(void*& rec) override;
  /// Only the disks that `names`, a list of RWCollectableStrings, names, in the order of that list;
  /// an empty list takes all disks in their own order. A name listed twice gives two records; what
  /// is no RWCollectableString names no disk.
  int convertToBK2(void*& rec, RWSlistCollectables& names);
  int convertToBK2_old(void*& rec, RWSlistCollectables& names);
  /// A non-empty `overridePath` replaces the items of every disk that has any by one with that
  /// path.
  int convertToBK2(void*& rec, const char* overridePath);
  int convertToBK2_old(void*& rec, const char* overridePath);
  int convertToBK2(void*& rec, RWSlistCollectables& names, const char* overridePath);
  int convertToBK2_old(void*& rec, RWSlistCollectables& names, const char* overridePath);

  /// Appends the disk itself, which must live as long as the node; pMedia. Null when memory runs
  /// out.
  RWCollectable* addDisk(BKQDisk& disk);
  /// Unlinks, and does not delete, the first disk of the same name; 0, or -1 when there is none.
  int removeDisk(BKQDisk& disk);
  void clearDisks();  ///< unlinks all disks and deletes none
  unsigned int diskEntries() const;
  void resetDisks();
  unsigned int enumDisks(BKQDiskCol*& out, unsigned int n);

  /// Keeps the address of the object, which the node never deletes. No record carries it.
  void setGroomInfo(BKQGroom& groom);
  BKQGroom* getGroomInfo() const;  ///< null when none is set
  int groomInfoExists();

  /// Makes this a copy of `source`, whose disks it then holds twice: the source's own objects, then
  /// clones of them; filters and grooming are shared. Former disks and filters are unlinked and not
  /// deleted.
  void mycopy(BKQDiskNode* source);

 private:
  friend struct bkoq::Flattening;
  BKQDiskCol disks_;
  unsigned int diskCursor_;
  BKQGroom* groom_;
};

/// A Macintosh machine. Node type 2, operating-system code 7.
class BKOQ_API BKQMacNode : public BKQDiskNode {
 public:
  explicit BKQMacNode(const char* name);
  ~BKQMacNode() override;
  BKQMacNode* clone() override;
  unsigned int nodeType() const override;  ///< 2
  void mycopy(BKQMacNode* source);
};

/// A UNIX machine. Node type 3, operating-system code 6.
class BKOQ_API BKQUnixNode : public BKQDiskNode {
 public:
  explicit BKQUnixNode(const char* name);
  ~BKQUnixNode() override;
  BKQUnixNode* clone() override;
  unsigned int nodeType() const override;  ///< 3

  /// Sets UNIX_OPTIONS, then fills the record as a disk node does. The forms taken over from the
  /// disk node do not set UNIX_OPTIONS: they add the word that the last UNIX node left there.
  using BKQDiskNode::convertToBK2;
  using BKQDiskNode::convertToBK2_old;
  int convertToBK2(void*& rec) override;
  int convertToBK2_old(void*& rec) override;
  /// The same for the disks named in `names`; then a non-empty `extra` is put after the NUL of
  /// pszNodeOSVer with `mode` 1, of pszNodeName with `mode` 2, and 0x800 or 0x200 is added to the
  /// node options.
  int convertToBK2(void*& rec, RWSlistCollectables& names, int mode, const char* extra);
  int convertToBK2_old(void*& rec, RWSlistCollectables& names, int mode, const char* extra);

  unsigned int getUnixOptions() const;  ///< added to the options of each of its disks
  void setUnixOptions(unsigned int options);

  void mycopy(BKQUnixNode* source);

 private:
  friend struct bkoq::Flattening;
  unsigned int unixOptions_;
};

/// A NetWare machine. Node type 8, operating-system code 4.
class BKOQ_API BKQNetwareNode : public BKQDiskNode {
 public:
  explicit BKQNetwareNode(const char* name);
  ~BKQNetwareNode() override;
  BKQNetwareNode* clone() override;
  unsigned int nodeType() const override;  ///< 8
  void mycopy(BKQNetwareNode* source);

 private:
  // Reserved: only copied.
  RWSlistCollectables list_;
  unsigned int value_;
};

/// A Windows NT machine. Node type 9, operating-system code 8.
class BKOQ_API BKQWinNTNode : public BKQDiskNode {
 public:
  explicit BKQWinNTNode(const char* name);
  ~BKQWinNTNode() override;
  BKQWinNTNode* clone() override;
  unsigned int nodeType() const override;  ///< 9
  void mycopy(BKQWinNTNode* source);
};

/// An OS/2 machine. Node type 10, operating-system code 2.
class BKOQ_API BKQOS2Node : public BKQDiskNode {
 public:
  explicit BKQOS2Node(const char* name);
  ~BKQOS2Node() override;
  BKQOS2Node* clone() override;
  unsigned int nodeType() const override;  ///< 10
  void mycopy(BKQOS2Node* source);
};

/// A Windows 95 machine. Node type 11, operating-system code 5.
class BKOQ_API BKQWin95Node : public BKQDiskNode {
 public:
  explicit BKQWin95Node(const char* name);
  ~BKQWin95Node() override;
  BKQWin95Node* clone() override;
  unsigned int nodeType() const override;  ///< 11
  void mycopy(BKQWin95Node* source);
};

/// A Windows machine. Node type 12, operating-system code 5.
class BKOQ_API BKQWindowsNode : public BKQDiskNode {
 public:
  explicit BKQWindowsNode(const char* name);
  ~BKQWindowsNode() override;
  BKQWindowsNode* clone() override;
  unsigned int nodeType() const override;  ///< 12
  void mycopy(BKQWindowsNode* source);
};

/// An NDS tree; it never carries disk records, and the previous layout calls it type 6. Node type
/// 13, operating-system code 4.
class BKOQ_API BKQNDSNode : public BKQDiskNode {
 public:
  explicit BKQNDSNode(const char* name);
  ~BKQNDSNode() override;
  BKQNDSNode* clone() override;
  unsigned int nodeType() const override;  ///< 13
  void mycopy(BKQNDSNode* source);
};

/// An FTP server. Node type 20, operating-system code 6.
class BKOQ_API BKQFTPNode : public BKQDiskNode {
 public:
  explicit BKQFTPNode(const char* name);
  ~BKQFTPNode() override;
  BKQFTPNode* clone() override;
  unsigned int nodeType() const override;  ///< 20
  void mycopy(BKQFTPNode* source);
};

/// A Sybase server. Node type 21, operating-system code 6.
class BKOQ_API BKQSybaseNode : public BKQDiskNode {
 public:
  explicit BKQSybaseNode(const char* name);
  ~BKQSybaseNode() override;
  BKQSybaseNode* clone() override;
  unsigned int nodeType() const override;  ///< 21

  /// The server's option bits; they reach no record.
  enum BKQSybaseNodeOptions : unsigned int {};

  BKQSybaseNodeOptions getSybaseOptions() const;  ///< whole; 0 at first, reaches no record
  void setSybaseOptions(BKQSybaseNodeOptions options);
  const RWCollectableString& getEncryptKey() const;  ///< reaches no record
  void setEncryptKey(const char* key);
  const RWCollectableString& getDumpFile() const;  ///< reaches no record
  void setDumpFile(const char* file);

  void mycopy(BKQSybaseNode* source);

 private:
  BKQStringCol lists_[3];  // reserved: only copied, as lists of the same objects
  BKQSybaseNodeOptions sybaseOptions_;
  RWCollectableString encryptKey_;
  RWCollectableString dumpFile_;
};

/// An Oracle server. Node type 22, operating-system code 6.
class BKOQ_API BKQOracleNode : public BKQDiskNode {
 public:
  explicit BKQOracleNode(const char* name);
  ~BKQOracleNode() override;
  BKQOracleNode* clone() override;
  unsigned int nodeType() const override;  ///< 22

  /// The server's option bits; they reach no record.
  enum BKQOracleNodeOptions : unsigned int {};

  BKQOracleNodeOptions getOracleOptions() const;  ///< whole; 0 at first, reaches no record
  void setOracleOptions(BKQOracleNodeOptions options);

  void mycopy(BKQOracleNode* source);

 private:
  BKQOracleNodeOptions oracleOptions_;
};

/// An Informix server. Node type 23, operating-system code 6.
class BKOQ_API BKQInformixNode : public BKQDiskNode {
 public:
  explicit BKQInformixNode(const char* name);
  ~BKQInformixNode() override;
  BKQInformixNode* clone() override;
  unsigned int nodeType() const override;  ///< 23

  /// The server's option bits; they reach no record.
  enum BKQInformixNodeOptions : unsigned int {};

  BKQInformixNodeOptions getInformixOptions() const;  ///< whole; 0 at first, reaches no record
  void setInformixOptions(BKQInformixNodeOptions options);

  void mycopy(BKQInformixNode* source);

 private:
  BKQInformixNodeOptions informixOptions_;
};

/// A machine read through a snapshot. Node type 26, operating-system code 6.
class BKOQ_API BKQSnapShotNode : public BKQDiskNode {
 public:
  explicit BKQSnapShotNode(const char* name);
  ~BKQSnapShotNode() override;
  BKQSnapShotNode* clone() override;
  unsigned int nodeType() const override;  ///< 26

  /// The server's option bits; they reach no record.
  enum BKQSnapShotOptions : unsigned int {};

  BKQSnapShotOptions getSnapShotOptions() const;  ///< whole; 0 at first, reaches no record
  void setSnapShotOptions(BKQSnapShotOptions options);

  void mycopy(BKQSnapShotNode* source);

 private:
  BKQSnapShotOptions snapShotOptions_;
};

/// The tapes that a job reads, or writes to. Node type 24, operating-system code 6, device type 1.
/// In the records it carries type 3.
class BKOQ_API BKQTapeNode : public BKQNode {
 public:
  BKQTapeNode();
  explicit BKQTapeNode(const char* name);
  ~BKQTapeNode() override;

  BKQTapeNode* clone() override;
  unsigned int nodeType() const override;  ///< 24

  int convertToBK2(void*& rec) override;
  int convertToBK2_old(void*& rec) override;
  /// Only the tapes of that name (unless it is empty) and of that session (unless it is 0).
  int convertToBK2(void*& rec, const char* tapeName, unsigned short sessionNumber);
  int convertToBK2_old(void*& rec, const char* tapeName, unsigned short sessionNumber);

  /// Appends the tape itself, which must live as long as the node; pMedia. Null when memory runs
  /// out.
  RWCollectable* addTape(BKQTape& tape);
  unsigned int tapeEntries() const;
  void resetTapes();
  unsigned int enumTapes(BKQTapeCol*& out, unsigned int n);

  /// Makes this a copy of `source`, whose tapes it then holds twice: the source's own objects, then
  /// clones of them; filters are shared. Former tapes and filters are unlinked and not deleted.
  void mycopy(BKQTapeNode* source);

 private:
  friend struct bkoq::Flattening;
  BKQTapeCol tapes_;
  unsigned short tapeCursor_;
};

/// Where restored data goes. Node type 25, operating-system code 6. In the records it carries its
/// actual node type, and one disk with one item.
class BKOQ_API BKQRestoreNode : public BKQNode {
 public:
  BKQRestoreNode();
  explicit BKQRestoreNode(const char* name);
  /// The same with `diskName`.
  BKQRestoreNode(const char* name, const char* diskName);
  ~BKQRestoreNode() override;

  BKQRestoreNode* clone() override;
  unsigned int nodeType() const override;  ///< 25
  int convertToBK2(void*& rec) override;
  int convertToBK2_old(void*& rec) override;

  BKQNodeType getActualNodeType() const;  ///< the destination machine's kind; usNodeType
  /// Also sets the node OS: 7 for type 2, 4 for 8 and 13, 8 for 9, 2 for 10, 5 for 11 and 12, 6 for
  /// all others.
  void setActualNodeType(BKQNodeType type);
  /// Part of pszPath of the item, after or instead of the disk name.
  const RWCollectableString& getDestinationDir() const;
  void setDestinationDir(const char* directory);
  const RWCollectableString& getDiskName() const;  ///< pszDiskName
  void setDiskName(const char* name);

  /// Makes this a copy of `source` that shares its filters; former ones are unlinked.
  void mycopy(BKQRestoreNode* source);

 private:
  friend struct bkoq::Flattening;
  BKQNodeType actualNodeType_;
  RWCollectableString destinationDir_;
  RWCollectableString diskName_;
};

/// A restore destination with database credentials. Node type 27.
class BKOQ_API BKQDBRestoreNode : public BKQRestoreNode {
 public:
  BKQDBRestoreNode();
  explicit BKQDBRestoreNode(const char* name);
  /// The same with `diskName`.
  BKQDBRestoreNode(const char* name, const char* diskName);
  ~BKQDBRestoreNode() override;

  BKQDBRestoreNode* clone() override;
  unsigned int nodeType() const override;  ///< 27
  int convertToBK2(void*& rec) override;
  int convertToBK2_old(void*& rec) override;

  /// The credentials, copied out; pszDiskPW2 of the disk.
  void getDBuser(RWCollectableString& user, RWCollectableString& password) const;
  void setDBuser(const RWCollectableString& user, const RWCollectableString& password);
  BKQDisk::BKQDiskType getFStype() const;  ///< file-system type; usDiskType of the disk
  void setFStype(BKQDisk::BKQDiskType type);
  /// The options of the disk, ulOptions of BKDDISK. They hide the node's own word, ulNodeOptions,
  /// which is reached as BKQNode::setOptions().
  unsigned int getOptions() const;
  void setOptions(unsigned int options);

  /// Makes this a copy of `source` that shares its filters; former ones are unlinked.
  void mycopy(BKQDBRestoreNode* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString dbUser_;
  RWCollectableString dbPassword_;
  BKQDisk::BKQDiskType fsType_;
  unsigned int dbOptions_;
};

#endif  // BKOQ_NODE_H_
