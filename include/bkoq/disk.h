#ifndef BKOQ_DISK_H_
#define BKOQ_DISK_H_

#include "bkoq/collections.h"
#include "bkoq/export.h"
#include "rw/collstr.h"

class BKQFilter;

/// One path on a disk, with its options and, if wanted, the names of the files below it. Becomes
/// one BKDISKITEM.
/// A null text is the empty text.
class BKOQ_API BKQDiskItem : public RWCollectable {
 public:
  BKQDiskItem();                           ///< empty path, options 1
  explicit BKQDiskItem(const char* path);  ///< the same with `path`
  ~BKQDiskItem() override;
  BKQDiskItem(const BKQDiskItem&) = delete;
  BKQDiskItem& operator=(const BKQDiskItem&) = delete;

  /// A new item filled by mycopy(), owned by the caller; null when memory runs out.
  virtual BKQDiskItem* clone();

  /// Fills the zeroed BKDISKITEM that `rec` points to. Whenever CURRENT_NODETYPE is 3, the name in
  /// DISK_DISKNAME is put before the path: while a UNIX node is flattened, and in a direct call
  /// also after a tape node, or a restore node of that actual type. The previous layout looks at
  /// its own two variables. 1, or 0 after a line on the standard error stream, for a null pointer
  /// too.
  int convertToBK2(void*& rec);
  int convertToBK2_old(void*& rec);
  /// Fills path and options only: `overridePath`, or the item's own path when that is empty or
  /// null. 1, or 0 after a line on the standard error stream for a null pointer.
  int convertToBK2(void*& rec, const char* overridePath);
  int convertToBK2_old(void*& rec, const char* overridePath);

  /// Path of the item; pszPath, on UNIX nodes after the name of its disk.
  const RWCollectableString& getPath() const;
  void setPath(const char* path);
  /// Option bits; ulOptions. addFile() sets them to 0.
  unsigned int getOptions() const;
  void setOptions(unsigned int options);
  unsigned int getObjectProperty() const;  ///< property word; reaches no record
  void setObjectProperty(unsigned int property);

  /// Appends a copy of a file name below the path, pFileList, and sets the options to 0. Copies of
  /// the item share that string, so nothing deletes it but a mycopy() that replaces it. Null when
  /// memory runs out.
  RWCollectable* addFile(const char* name);
  unsigned int fileEntries() const;
  void resetFiles();
  /// Unlike the other enumerations, hands out copies of the strings, which the caller owns as well:
  /// clearAndDestroy() of the collection frees them.
  unsigned int enumFiles(BKQStringCol*& out, unsigned int n);

  /// Makes this a copy of `source`, whose names it then holds twice: the source's own strings, then
  /// copies of them. Former names that the source does not hold are deleted. Nothing happens when
  /// `source` is null or this object.
  void mycopy(BKQDiskItem* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString path_;
  BKQStringCol files_;
  unsigned int options_;
  unsigned int fileCursor_;
  unsigned int objectProperty_;
};

/// One disk of a machine: a volume, a drive, a database area, the Registry. Becomes one BKDDISK.
/// A null text is the empty text.
class BKOQ_API BKQDisk : public RWCollectable {
 public:
  /// The server's disk-type codes; usDiskType takes the low 16 bits. A disk of type 11, 22 or 31
  /// joins user and second password by a colon, and 23 is transferred as 0. As the file-system type
  /// of a BKQDBRestoreNode, only 22 and 31 join, in the previous layout 11 as well; 23 stays 23.
  enum BKQDiskType : unsigned int {};

  BKQDisk();                           ///< type 0, priority 255
  explicit BKQDisk(BKQDiskType type);  ///< the same with `type`
  ~BKQDisk() override;
  BKQDisk(const BKQDisk&) = delete;
  BKQDisk& operator=(const BKQDisk&) = delete;

  /// A new disk filled by mycopy(), owned by the caller; null when memory runs out.
  virtual BKQDisk* clone();

  /// Fills the zeroed BKDDISK that `rec` points to, with its items and filters; leaves the disk's
  /// name in DISK_DISKNAME. With a non-empty `overridePath` only the first item goes, with that
  /// path; a disk without items stays without. 1, or 0 after a line on the standard error stream,
  /// for a null pointer too; nothing is freed then.
  int convertToBK2(void*& rec, const char* overridePath);
  int convertToBK2_old(void*& rec, const char* overridePath);

  /// Name of the disk as its node knows it; pszDiskName. "Registry" on a Windows NT node is
  /// transferred as type 11, unless the type is 23; it joins no credentials for that.
  const RWCollectableString& getDiskName() const;
  void setDiskName(const char* name);
  BKQDiskType getDiskType() const;  ///< usDiskType
  void setDiskType(BKQDiskType type);
  /// Option bits; ulOptions, with the job's encryption 0x4000 and compression 0x2000 added, and on
  /// UNIX nodes (CURRENT_NODETYPE is 3) the word in UNIX_OPTIONS.
  unsigned int getOptions() const;
  void setOptions(unsigned int options);
  /// pszPassword; when empty, the backup job's session password goes there.
  const RWCollectableString& getPassword() const;
  void setPassword(const char* password);
  const RWCollectableString& getUser() const;  ///< account; first text of pszDiskPW2
  void setUser(const char* user);
  const RWCollectableString& getDiskPW2() const;  ///< second secret; second text of pszDiskPW2
  void setDiskPW2(const char* password);
  const RWCollectableString& getEncryptionKey() const;  ///< pszEncryptionKey
  void setEncryptionKey(const char* key);
  unsigned short getPriority() const;  ///< ordering priority; reaches no record
  void setPriority(unsigned short priority);
  unsigned short getCompareFirstMB() const;  ///< megabytes to compare; reaches no record
  void setCompareFirstMB(unsigned short megabytes);
  const RWCollectableString& getAfterDisk() const;  ///< reaches no record
  void setAfterDisk(const char* name);
  const RWCollectableString& getBeforeDisk() const;  ///< reaches no record
  void setBeforeDisk(const char* name);
  unsigned short getBeforeDiskWait() const;  ///< reaches no record
  void setBeforeDiskWait(unsigned short wait);
  unsigned int getDBProperty() const;  ///< database property word; reaches no record
  void setDBProperty(unsigned int property);

  /// Append the object itself, which must live as long as the disk; null when memory runs out.
  RWCollectable* addDiskItem(BKQDiskItem& item);  ///< pDiskItems
  RWCollectable* addFilter(BKQFilter& filter);    ///< pFilters
  unsigned int diskItemEntries() const;
  unsigned int filterEntries() const;
  void resetDiskItems();
  void resetFilters();
  unsigned int enumDiskItems(BKQDiskItemCol*& out, unsigned int n);
  unsigned int enumFilters(BKQFilterCol*& out, unsigned int n);

  /// Makes this a copy of `source`, whose items and filters it then holds twice: the source's own
  /// objects, then clones of them. Former ones that the source does not hold are deleted. Nothing
  /// happens when `source` is null or this object.
  void mycopy(BKQDisk* source);

 private:
  friend struct bkoq::Flattening;
  BKQFilterCol filters_;
  BKQDiskItemCol items_;
  RWCollectableString name_;
  BKQDiskType type_;
  unsigned int options_;
  RWCollectableString user_;
  RWCollectableString password_;
  RWCollectableString password2_;
  unsigned short priority_;
  RWCollectableString encryptionKey_;
  unsigned short compareFirstMB_;
  RWCollectableString beforeDisk_;
  RWCollectableString afterDisk_;
  unsigned short beforeDiskWait_;
  unsigned int itemCursor_;
  unsigned int filterCursor_;
  unsigned int dbProperty_;
};

#endif  // BKOQ_DISK_H_
