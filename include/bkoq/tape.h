#ifndef BKOQ_TAPE_H_
#define BKOQ_TAPE_H_

#include "bkoq/collections.h"
#include "bkoq/export.h"
#include "rw/collstr.h"

class BKQFilter;

/// Database credentials and the end time of a tape's session. Becomes one BKDTAPEX in the current
/// layout; the previous layout takes only its session end time.
/// A null text is the empty text.
class BKOQ_API BKQTapeXtension : public RWCollectable {
 public:
  BKQTapeXtension();                              ///< every text empty, every number 0
  explicit BKQTapeXtension(long sessionEndTime);  ///< the same with that time
  ~BKQTapeXtension() override;

  /// Fills the zeroed BKDTAPEX that `rec` points to; 1, or 0 after a line on the standard error
  /// stream for a null pointer.
  int convertToBK2(void*& rec);

  const RWCollectableString& getDBuser() const;  ///< pszDBUser
  void setDBuser(const char* user);
  const RWCollectableString& getDBpw() const;  ///< pszDBPW
  void setDBpw(const char* password);
  long getSessionEndTime() const;  ///< seconds; lSessionEndTime, as given
  void setSessionEndTime(long seconds);
  unsigned int getOptions() const;  ///< ulOptions
  void setOptions(unsigned int options);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString dbUser_;
  RWCollectableString dbPassword_;
  long sessionEndTime_;
  unsigned int options_;
};

/// One file or directory on a tape. Becomes one BKTAPEITEM.
/// A null text is the empty text.
class BKOQ_API BKQTapeItem : public RWCollectable {
 public:
  BKQTapeItem();  ///< every text empty, every number 0
  BKQTapeItem(unsigned int chunkNum, unsigned short chunkOffset);  ///< the same with these
  ~BKQTapeItem() override;

  /// A new item with the same values, owned by the caller; null when memory runs out.
  virtual BKQTapeItem* clone();

  /// Fills the zeroed BKTAPEITEM that `rec` points to; 1, or 0 after a line on the standard error
  /// stream for a null pointer.
  int convertToBK2(void*& rec);
  int convertToBK2_old(void*& rec);

  /// File or directory; pszFileOrDir, with one "/" in front unless it begins with "//".
  const RWCollectableString& getFileOrDir() const;
  void setFileOrDir(const RWCollectableString& name);
  unsigned int getChunkNum() const;  ///< chunk of the session; ulChunkNum
  void setChunkNum(unsigned int chunk);
  unsigned int getPhysicalChunkNum() const;  ///< reaches no record
  void setPhysicalChunkNum(unsigned int chunk);
  unsigned short getChunkOffset() const;     ///< offset within the chunk; usChunkOffset
  void setChunkOffset(unsigned int offset);  ///< keeps the low 16 bits
  unsigned int getOptions() const;           ///< ulOptions
  void setOptions(unsigned int options);

  /// Copies the values of `source`; nothing when it is null or this object.
  void mycopy(BKQTapeItem* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString fileOrDir_;
  unsigned int chunkNum_;
  unsigned short chunkOffset_;
  unsigned int options_;
  unsigned int physicalChunkNum_;
};

/// One tape that a job reads or writes. Becomes one BKDTAPE, or one BKDTAPE_OLD.
/// A null text is the empty text.
class BKOQ_API BKQTape : public RWCollectable {
 public:
  BKQTape();  ///< every text empty, every number 0; no items, filters or extension
  BKQTape(const char* deviceGroup, const char* tapeName);  ///< the same with these
  ~BKQTape() override;
  BKQTape(const BKQTape&) = delete;
  BKQTape& operator=(const BKQTape&) = delete;

  /// A new tape filled by mycopy(), owned by the caller; null when memory runs out.
  virtual BKQTape* clone();

  /// Fills the zeroed tape record that `rec` points to, with its items and filters and, in the
  /// current layout, its extension. 1, or 0 after a line on the standard error stream, for a null
  /// pointer too; nothing is freed then.
  int convertToBK2(void*& rec);
  int convertToBK2_old(void*& rec);

  const RWCollectableString& getTapeName() const;  ///< pszTapeName
  void setTapeName(const char* name);
  const RWCollectableString& getDeviceGroup() const;  ///< pszDeviceGroup
  void setDeviceGroup(const char* group);
  /// pszSessionPW; when empty, the restore job's session password goes there.
  const RWCollectableString& getSessionPW() const;
  void setSessionPW(const char* password);
  unsigned char getStreamNum() const;  ///< reaches no record
  void setStreamNum(unsigned char stream);
  unsigned short getSessionNumber() const;  ///< usSessionNumber
  void setSessionNumber(unsigned short session);
  unsigned int getQFABlockNumber() const;  ///< block at which the session starts; ulQFABlockNumber
  void setQFABlockNumber(unsigned int block);
  unsigned short getTapeLevel() const;  ///< reaches no record
  void setTapeLevel(unsigned short level);
  const RWCollectableString& getPath() const;  ///< pszPath
  void setPath(const char* path);
  const RWCollectableString& getLocation() const;  ///< pszLocation
  void setLocation(const char* location);
  /// usTapeID takes the low 16 bits, ulTapeID of the previous layout the whole.
  unsigned int getTapeID() const;
  void setTapeID(unsigned int id);
  unsigned char getTapeSeq() const;  ///< sequence within the tape set; usTapeSeq
  void setTapeSeq(unsigned char sequence);
  const RWCollectableString& getMediaName() const;  ///< reaches no record
  void setMediaName(const char* name);
  unsigned int getSerialNumber() const;  ///< reaches no record
  void setSerialNumber(unsigned int number);
  const RWCollectableString& getTapeSerialNumber() const;  ///< bar code; reaches no record
  void setTapeSerialNumber(const char* number);
  unsigned char getFileSystem() const;  ///< file-system code; usFileSystem
  void setFileSystem(unsigned char fileSystem);
  /// Seconds; lSessionEndTime of the previous layout, when positive and without an extension.
  long getSessionEndTime() const;
  void setSessionEndTime(long seconds);

  /// ulOptions; the previous layout clears 0x8000000 there when an extension is attached.
  unsigned int getOptions() const;
  /// Stores the word. Exactly 0x8000000, and no other value with that bit, also creates an
  /// extension when there is none.
  void setOptions(unsigned int options);
  /// Attaches the extension itself, which the tape does not own and which must outlive it, and sets
  /// bit 0x8000000 of the options.
  void setTapeXtension(const BKQTapeXtension& extension);
  void setTapeXtension(const BKQTapeXtension&& extension) = delete;
  /// The attached extension; creates and attaches one when there is none. Null only when memory
  /// runs out. The tape never deletes it.
  BKQTapeXtension* getTapeXtension();
  int tapeXtensionExists();

  /// Append the object itself, which must live as long as the tape; null when memory runs out.
  RWCollectable* addTapeItem(BKQTapeItem& item);  ///< pTapeItems
  RWCollectable* addFilter(BKQFilter& filter);    ///< pFilters
  unsigned int tapeItemEntries() const;
  unsigned int filterEntries() const;
  void resetTapeItems();
  void resetFilters();
  unsigned int enumTapeItems(BKQTapeItemCol*& out, unsigned int n);
  /// As the other enumerations, but 0 means the number of tape items, not of filters.
  unsigned int enumFilters(BKQFilterCol*& out, unsigned int n);

  /// Makes this a copy of `source`, whose items and filters it then holds twice: the source's own
  /// objects, then clones of them; the extension is shared. Former items and filters that the
  /// source does not hold are deleted. Nothing happens when `source` is null or this object.
  void mycopy(BKQTape* source);

 private:
  friend struct bkoq::Flattening;
  BKQStringCol filters_;  // holds filters in spite of its type
  BKQTapeItemCol items_;
  RWCollectableString deviceGroup_;
  RWCollectableString tapeName_;
  RWCollectableString sessionPassword_;
  RWCollectableString mediaName_;
  RWCollectableString tapeSerialNumber_;
  RWCollectableString path_;
  RWCollectableString location_;
  unsigned int tapeId_;
  unsigned int serialNumber_;
  unsigned int qfaBlockNumber_;
  unsigned int options_;
  unsigned short sessionNumber_;
  unsigned char fileSystem_;
  unsigned char fileSystemHigh_;  // always 0: the record takes both bytes
  unsigned short filterCursor_;
  unsigned short itemCursor_;
  unsigned short tapeLevel_;
  unsigned char streamNum_;
  unsigned char tapeSeq_;
  long sessionEndTime_;
  BKQTapeXtension* extension_;
};

#endif  // BKOQ_TAPE_H_
