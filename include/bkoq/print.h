#ifndef BKOQ_PRINT_H_
#define BKOQ_PRINT_H_

#include "bkoq/export.h"
#include "rw/collstr.h"

// The size and the slots of the class are fixed: its destructor cannot become virtual.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif
/// Notification of a job's outcome on a print queue; fills BKPRINTQ, inside the job record at byte
/// 180. Every text is empty at first; an empty one leaves a null pointer in the record. The
/// destructor is not virtual: do not derive from this class what has to be destroyed through it.
/// A null text is the empty text.
class BKOQ_API BKQPrintQueue {
 public:
  BKQPrintQueue();  ///< every text empty
  ~BKQPrintQueue();

  /// A new object with the same texts, owned by the caller; null when memory runs out.
  virtual BKQPrintQueue* clone();

  /// Fills the zeroed block that `block` points to; 1, or 0 after a line on the standard error
  /// stream for a null pointer.
  int convertToBK2(void*& block);
  int convertToBK2_old(void*& block);

  const RWCollectableString& getHostName() const;  ///< pszHostName
  void setHostName(const char* text);
  const RWCollectableString& getUserName() const;  ///< pszUserName
  void setUserName(const char* text);
  const RWCollectableString& getUserPW() const;  ///< pszUserPW
  void setUserPW(const char* text);
  const RWCollectableString& getQueueName() const;  ///< pszQueueName
  void setQueueName(const char* text);

  /// Copies the texts of `source`; nothing when it is null or this object.
  void mycopy(BKQPrintQueue* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString hostName_;
  RWCollectableString userName_;
  RWCollectableString userPW_;
  RWCollectableString queueName_;
};
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

#endif  // BKOQ_PRINT_H_
