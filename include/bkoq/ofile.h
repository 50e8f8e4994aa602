#ifndef BKOQ_OFILE_H_
#define BKOQ_OFILE_H_

#include "bkoq/export.h"

// The size and the slots of the class are fixed: its destructor cannot become virtual.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif
/// What a backup job does about files held open by another program; fills BKOFINFO, inside the job
/// record at byte 104. The bits and the unit of the interval are the server's. The destructor is
/// not virtual: do not derive from this class what has to be destroyed through it.
class BKOQ_API BKQOpenFileInfo {
 public:
  BKQOpenFileInfo();   ///< actions 1, methods 0, 5 retries at interval 5
  ~BKQOpenFileInfo();  // NOLINT(performance-trivially-destructible): it is exported

  /// A new object with the same values, owned by the caller; null when memory runs out.
  virtual BKQOpenFileInfo* clone();

  /// Fills the 12 bytes that `rec` points to; 1, or 0 after a line on the standard error stream for
  /// a null pointer.
  int convertToBK2(void*& rec);
  int convertToBK2_old(void*& rec);

  unsigned int getFActions() const;  ///< actions on open files; ulFActions
  void setFActions(unsigned int actions);
  unsigned int getFMethods() const;  ///< methods of reading open files; ulFMethods
  void setFMethods(unsigned int methods);
  unsigned short getRetryCount() const;  ///< retries on an open file; usRetryCount
  void setRetryCount(unsigned short count);
  unsigned short getRetryInterval() const;  ///< interval between retries; usRetryInterval
  void setRetryInterval(unsigned short interval);

  /// Copies the values of `source`; nothing when it is null.
  void mycopy(BKQOpenFileInfo* source);

 private:
  friend struct bkoq::Flattening;
  unsigned int fileActions_;
  unsigned int fileMethods_;
  unsigned short retryCount_;
  unsigned short retryInterval_;
};
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

#endif  // BKOQ_OFILE_H_
