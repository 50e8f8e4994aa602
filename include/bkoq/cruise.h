#ifndef BKOQ_CRUISE_H_
#define BKOQ_CRUISE_H_

#include "bkoq/collections.h"
#include "bkoq/export.h"
#include "bkoq/sched.h"

/// One day of a rotation.
/// A null text is the empty text.
class BKOQ_API BKQJobUnit : public RWCollectable {
 public:
  /// What is run on a day; the server's code. The previous layout takes the low 8 bits.
  enum BKQCruiseJobType : unsigned int {};
  /// Option bits of a day; the server's.
  enum BKQJobUnitOptions : unsigned int {};

  BKQJobUnit();  ///< every number 0, every text empty, the time is now
  ~BKQJobUnit() override;

  /// A new unit with the same values, owned by the caller; null when memory runs out.
  virtual BKQJobUnit* clone();
  /// Always 0: no two units are equal, so no search by value finds one.
  int operator==(BKQJobUnit& other);

  BKQCruiseJobType getJobType() const;  ///< abJobTypes of the previous layout
  void setJobType(BKQCruiseJobType type);
  BKQJobUnitOptions getOptions() const;  ///< reaches no record
  void setOptions(BKQJobUnitOptions options);
  unsigned int getSerialNumber() const;  ///< the medium's; reaches no record
  void setSerialNumber(unsigned int number);
  const RWCollectableString& getMediaName() const;  ///< reaches no record
  void setMediaName(const char* name);
  const RWCollectableString& getTapeSerialNumber() const;  ///< bar code; reaches no record
  void setTapeSerialNumber(const char* number);
  const RWCollectableTime& getExecTime() const;  ///< reaches no record
  void setExecTime(const RWCollectableTime& time);

  /// Copies the values of `source`; nothing when it is null or this object.
  void mycopy(BKQJobUnit* source);

 private:
  BKQCruiseJobType jobType_;
  RWCollectableString mediaName_;
  unsigned int serialNumber_;
  RWCollectableString tapeSerialNumber_;
  RWCollectableTime execTime_;
  BKQJobUnitOptions options_;
};

/// A date on which a rotation does something else. No record carries it.
class BKOQ_API BKQExceptionDay : public RWCollectable {
 public:
  BKQExceptionDay();  ///< every number 0, the time is now
  ~BKQExceptionDay() override;

  /// A new day with the same values, owned by the caller; null when memory runs out.
  virtual BKQExceptionDay* clone();

  BKQJobUnit::BKQCruiseJobType getJobType() const;  ///< what is run on that date
  void setJobType(BKQJobUnit::BKQCruiseJobType type);
  BKQJobUnit::BKQJobUnitOptions getOptions() const;  ///< its option bits
  void setOptions(BKQJobUnit::BKQJobUnitOptions options);
  const RWCollectableTime& getExceptionTime() const;  ///< the date
  void setExceptionTime(const RWCollectableTime& time);

  /// Copies the values of `source`; nothing when it is null or this object.
  void mycopy(BKQExceptionDay* source);

 private:
  RWCollectableTime exceptionTime_;
  BKQJobUnit::BKQCruiseJobType jobType_;
  BKQJobUnit::BKQJobUnitOptions options_;
};

/// A media rotation: a job mask with one unit a day, and days of exception.
/// A null text is the empty text.
class BKOQ_API BKQRotationSchedule : public BKQRegularSchedule {
 public:
  BKQRotationSchedule();            ///< no mask, no days; every number 0, every text empty
  ~BKQRotationSchedule() override;  ///< deletes the mask when no other schedule refers to it
  BKQRotationSchedule(const BKQRotationSchedule&) = delete;
  BKQRotationSchedule& operator=(const BKQRotationSchedule&) = delete;

  BKQRotationSchedule* clone() override;
  unsigned int getType() const override;  ///< 2
  int convertToBK2(void*& schedBlock, void*& rotationBlock) override;
  /// Needs no mask: without one it does as with a mask without units.
  int convertToBK2_old(void*& schedBlock, void*& rotationBlock) override;

  BKQJobMask* getJobMask() const;  ///< null when none is set
  /// Adopts the mask itself, which must live on the heap and must not be deleted by the caller;
  /// more schedules than one may hold it. The mask that it replaces is abandoned, not deleted.
  void setJobMask(const BKQJobMask& mask);
  void setJobMask(const BKQJobMask&& mask) = delete;
  const RWCollectableString& getSetName() const;  ///< media set name; pszSetName
  void setSetName(const char* name);
  const RWCollectableString& getSetPW() const;  ///< reaches no record
  void setSetPW(const char* password);
  const RWCollectableString& getSchemeName() const;  ///< reaches no record
  void setSchemeName(const char* name);
  const RWCollectableTime& getPreferedMakeupTime() const;  ///< reaches no record
  void setPreferedMakeupTime(const RWCollectableTime& time);
  /// Time of day of a makeup job; reaches no record.
  void getPreferedMakeupJobTime(unsigned char& hour, unsigned char& minute) const;
  void setPreferedMakeupJobTime(unsigned char hour, unsigned char minute);
  int doMakeup() const;  ///< makeup flag; reaches no record
  void doMakeup(int flag);

  /// Appends the day itself, which must outlive the schedule; null when memory runs out.
  RWCollectable* addExceptionDay(BKQExceptionDay& day);
  unsigned int exceptionDayEntries() const;
  void resetExceptionDays();
  unsigned int enumExceptionDays(BKQExceptionDayCol*& out, unsigned int n);

  /// Makes this a copy of `source`: a clone of its mask, and its exception days twice, the source's
  /// own objects, then clones of them. The position in the days stays this object's own, 0 in a
  /// clone. The former mask, unless shared, and former days that the
  /// source does not hold are deleted. The source should have a mask; without one the copy has
  /// none. Nothing happens when `source` is null or this object.
  void mycopy(BKQRotationSchedule* source);

 private:
  friend struct bkoq::Flattening;
  friend class BKQCruiseSchedule;
  void holdMask(BKQJobMask* mask);  // takes hold of `mask`, gives up the one held
  BKQJobMask* releaseMask();        // gives up the mask held and returns it
  static void deleteUnlessHeld(BKQJobMask* mask);
  void copyRotationValues(BKQRotationSchedule& source);

  BKQJobMask* mask_;
  BKQExceptionDayCol exceptionDays_;
  unsigned int exceptionDayCursor_;
  RWCollectableString setName_;
  RWCollectableString setPassword_;
  RWCollectableString schemeName_;
  RWCollectableTime makeupTime_;
  int makeup_;
  unsigned char makeupHour_;
  unsigned char makeupMinute_;
};

/// The automatic grandfather-father-son rotation.
/// A null text is the empty text.
class BKOQ_API BKQCruiseSchedule : public BKQRotationSchedule {
 public:
  /// The server's code; usCruiseMethod takes the low 16 bits.
  enum BKQCruiseMethod : unsigned int {};

  BKQCruiseSchedule();  ///< as a rotation starts; both names empty
  /// Two names that are kept and copied, but that nothing reads.
  BKQCruiseSchedule(const char* name1, const char* name2);
  ~BKQCruiseSchedule() override;

  BKQCruiseSchedule* clone() override;
  unsigned int getType() const override;  ///< 1
  int convertToBK2(void*& schedBlock, void*& rotationBlock) override;
  int convertToBK2_old(void*& schedBlock, void*& rotationBlock) override;

  unsigned short getSaveMonthly() const;  ///< usSaveMonthly
  void setSaveMonthly(unsigned short count);
  unsigned short getSaveWeekly() const;  ///< usSaveWeekly
  void setSaveWeekly(unsigned short count);
  unsigned short getSaveDaily() const;  ///< usSaveDaily
  void setSaveDaily(unsigned short count);
  unsigned short getMonths() const;  ///< usMonths
  void setMonths(unsigned short months);
  unsigned short getCopies() const;  ///< usCopies
  void setCopies(unsigned short copies);
  unsigned int getOptions() const;  ///< ulCruiseOptions
  void setOptions(unsigned int options);
  BKQCruiseMethod getCruiseMethod() const;  ///< usCruiseMethod
  void setCruiseMethod(BKQCruiseMethod method);
  /// The three media pools; they reach no record.
  void getGFSPoolNames(RWCollectableString& pool1, RWCollectableString& pool2,
                       RWCollectableString& pool3) const;
  void setGFSPoolNames(const RWCollectableString& pool1, const RWCollectableString& pool2,
                       const RWCollectableString& pool3);
  void setGFSPoolNames(const char* pool1, const char* pool2, const char* pool3);

  /// Makes this a copy of `source` that shares its mask, its exception days and its position in
  /// them; nothing is cloned or doubled. The days held before are unlinked. Nothing
  /// happens when `source` is null or this object.
  void mycopy(BKQCruiseSchedule* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString names_[2];
  unsigned short saveMonthly_;
  unsigned short saveWeekly_;
  unsigned short saveDaily_;
  unsigned int options_;
  unsigned short months_;
  unsigned short copies_;
  BKQCruiseMethod method_;
  RWCollectableString poolNames_[3];
};

#endif  // BKOQ_CRUISE_H_
