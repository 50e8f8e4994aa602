#ifndef BKOQ_EMAIL_H_
#define BKOQ_EMAIL_H_

#include "bkoq/export.h"
#include "rw/collstr.h"

/// Notification of a job's outcome by e-mail; fills BKEMAILINFO, inside the job record at byte 156.
/// Abstract root. Every text is empty at first; an empty one leaves a null pointer in the record.
/// A null text is the empty text.
class BKOQ_API BKQEMail {
 public:
  BKQEMail();  ///< every text empty

  /// A new object of the same class with the same texts, owned by the caller; null from this root
  /// and when memory runs out.
  virtual BKQEMail* clone();
  virtual unsigned int emailType() const = 0;  ///< 0 Internet, 1 MHS; reaches no record
  /// Fills the zeroed block that `block` points to; 1, or 0 after a line on the standard error
  /// stream for a null pointer.
  virtual int convertToBK2(void*& block);
  virtual int convertToBK2_old(void*& block);
  virtual ~BKQEMail();

  const RWCollectableString& getHostName() const;  ///< pszHostName
  void setHostName(const char* text);
  const RWCollectableString& getUserName() const;  ///< pszUserName
  void setUserName(const char* text);
  const RWCollectableString& getUserPW() const;  ///< pszUserPW
  void setUserPW(const char* text);

  /// Copies the texts of `source`; nothing when it is null or this object.
  void mycopy(BKQEMail* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString hostName_;
  RWCollectableString userName_;
  RWCollectableString userPW_;
};

/// E-mail over the Internet.
class BKOQ_API BKQInternetEMail : public BKQEMail {
 public:
  BKQInternetEMail();
  ~BKQInternetEMail() override;
  BKQInternetEMail* clone() override;
  unsigned int emailType() const override;  ///< 0
  void mycopy(BKQInternetEMail* source);
};

/// E-mail over MHS.
class BKOQ_API BKQMHSEMail : public BKQEMail {
 public:
  BKQMHSEMail();
  ~BKQMHSEMail() override;
  BKQMHSEMail* clone() override;
  unsigned int emailType() const override;  ///< 1
  int convertToBK2(void*& block) override;
  int convertToBK2_old(void*& block) override;

  const RWCollectableString& getMHSDir() const;  ///< pszMHSDir
  void setMHSDir(const char* text);
  const RWCollectableString& getMHSId() const;  ///< pszMHSId
  void setMHSId(const char* text);
  const RWCollectableString& getMHSUserName() const;  ///< pszMHSUserName
  void setMHSUserName(const char* text);

  void mycopy(BKQMHSEMail* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString mhsDir_;
  RWCollectableString mhsId_;
  RWCollectableString mhsUserName_;
};

#endif  // BKOQ_EMAIL_H_
