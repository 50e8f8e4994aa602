#ifndef BKOQ_SCHED_H_
#define BKOQ_SCHED_H_

#include "bkoq/collections.h"
#include "bkoq/export.h"
#include "rw/collstr.h"
#include "rw/colltime.h"

class BKQJobUnit;

/// A number with a kind, such as an interval. The kinds are the server's.
class BKOQ_API BKQTime : public RWCollectable {
 public:
  /// The kind of the number, as the server knows it.
  enum BKQTimeType : unsigned int {};

  BKQTime();                                      ///< value 0, type 1
  BKQTime(unsigned int value, BKQTimeType type);  ///< that number of that kind
  ~BKQTime() override;

  /// A new object with the same values, owned by the caller; null when memory runs out.
  virtual BKQTime* clone();

  unsigned int getValue() const;  ///< the number
  void setValue(unsigned int value);
  BKQTimeType getType() const;  ///< its kind
  void setType(BKQTimeType type);

  void mycopy(BKQTime* source);

 private:
  unsigned int value_;
  BKQTimeType type_;
};

/// The job units of a rotation, with its repeats. Of all this the records carry only the units' job
/// types, in the previous layout. A mask handed to a rotation schedule must live on the heap.
class BKOQ_API BKQJobMask : public RWCollectable {
 public:
  /// The kind of tape name prefix; the server's code.
  enum BKQTapePrefixType : unsigned int {};

  BKQJobMask();  ///< prefix 1, repeats 0, interval and cycle (0, 1), no units
  explicit BKQJobMask(BKQTapePrefixType prefix);  ///< the same with `prefix`
  ~BKQJobMask() override;
  BKQJobMask(const BKQJobMask&) = delete;
  BKQJobMask& operator=(const BKQJobMask&) = delete;

  /// A new mask filled by mycopy(), owned by the caller; null when memory runs out.
  virtual BKQJobMask* clone();

  BKQTapePrefixType getTapeNamePrefix() const;  ///< reaches no record
  void setTapeNamePrefix(BKQTapePrefixType prefix);
  unsigned short getRepeats() const;  ///< how often; reaches no record
  void setRepeats(unsigned short repeats);
  const BKQTime& getRepeatCycle() const;  ///< reaches no record
  void setRepeatCycle(const BKQTime& cycle);
  const BKQTime& getRepeatInterval() const;  ///< reaches no record
  void setRepeatInterval(const BKQTime& interval);

  /// Appends the unit itself, which must outlive the mask; null when memory runs out. The first
  /// eight units' job types go into abJobTypes of the previous layout.
  RWCollectable* addJobUnit(BKQJobUnit& unit);
  unsigned int jobUnitEntries() const;
  void resetJobUnits();
  unsigned int enumJobUnits(BKQJobUnitCol*& out, unsigned int n);

  /// Makes this a copy of `source`, whose units it then holds twice: the source's own objects, then
  /// clones of them. Former units that the source does not hold are deleted. Nothing happens when
  /// `source` is null or this object.
  void mycopy(BKQJobMask* source);

 private:
  friend struct bkoq::Flattening;
  friend class BKQRotationSchedule;
  BKQJobUnitCol units_;
  BKQTapePrefixType prefix_;
  BKQTime interval_;
  BKQTime cycle_;
  unsigned short repeats_;
  unsigned int unitCursor_;
  unsigned int holders_;  // rotation schedules that refer to this mask; never copied
};

/// When a job is submitted and when it runs. Abstract root of the schedules.
///
/// A conversion fills the schedule block and, for rotations, the rotation block of the job record
/// in place: `schedBlock` points to a BKSCHEDINFO, `rotationBlock` to a BKROTATIONINFO, at which
/// only rotations look. It returns 1, or 0 after a line on the standard error stream, also for the
/// null pointer of a block that it is to fill.
/// A null text is the empty text.
class BKOQ_API BKQSchedule : public RWCollectable {
 public:
  BKQSchedule();  ///< all times are now, no pool name, run-now flag 0
  ~BKQSchedule() override;

  /// A new schedule of the same class, filled by its mycopy(), owned by the caller; null from this
  /// root and when memory runs out.
  virtual BKQSchedule* clone();
  virtual unsigned int getType() const = 0;  ///< 0 custom, 1 cruise, 2 rotation, 3 regular
  virtual int convertToBK2(void*& schedBlock, void*& rotationBlock);
  virtual int convertToBK2_old(void*& schedBlock, void*& rotationBlock);

  const RWCollectableTime& getSubmitTime() const;  ///< lSubmitTime, as local-clock seconds
  void setSubmitTime(const RWCollectableTime& time);
  const RWCollectableTime& getExecTime() const;  ///< lExecTime, as local-clock seconds
  void setExecTime(const RWCollectableTime& time);
  const RWCollectableString& getPoolName() const;  ///< reaches no record
  void setPoolName(const char* name);
  int runJobNow() const;  ///< run-now flag; reaches no record
  void runJobNow(int flag);
  /// The window in which the job may run; reaches no record.
  void getScheduleWindow(RWCollectableTime& start, RWCollectableTime& end) const;
  void setScheduleWindow(const RWCollectableTime& start, const RWCollectableTime& end);

  /// Copies the values of `source`; nothing when it is null or this object.
  void mycopy(BKQSchedule* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableTime submitTime_;
  RWCollectableTime execTime_;
  RWCollectableString poolName_;
  int runNow_;
  RWCollectableTime windowStart_;
  RWCollectableTime windowEnd_;
};

/// A one-shot schedule, or one that the server repeats.
class BKOQ_API BKQRegularSchedule : public BKQSchedule {
 public:
  BKQRegularSchedule();
  ~BKQRegularSchedule() override;
  BKQRegularSchedule* clone() override;
  unsigned int getType() const override;  ///< 3
  void mycopy(BKQRegularSchedule* source);
};

/// A schedule with four repeat values and a skip-weekday flag, whose meanings are the server's.
class BKOQ_API BKQCustomSchedule : public BKQRegularSchedule {
 public:
  BKQCustomSchedule();  ///< repeats and flag 0
  /// With those repeats.
  BKQCustomSchedule(unsigned short repeat1, unsigned short repeat2, unsigned short repeat3,
                    unsigned short repeat4);
  ~BKQCustomSchedule() override;
  BKQCustomSchedule* clone() override;
  unsigned int getType() const override;  ///< 0
  int convertToBK2(void*& schedBlock, void*& rotationBlock) override;
  int convertToBK2_old(void*& schedBlock, void*& rotationBlock) override;

  /// The repeat values in order; usRepeat1 to usRepeat4. A null pointer asks for none.
  void getRepeat(unsigned short* repeat1, unsigned short* repeat2, unsigned short* repeat3,
                 unsigned short* repeat4) const;
  void getRepeat(unsigned short& repeat1, unsigned short& repeat2, unsigned short& repeat3,
                 unsigned short& repeat4) const;
  void setRepeat(unsigned short repeat1, unsigned short repeat2, unsigned short repeat3,
                 unsigned short repeat4);
  unsigned short getSkipWeekDayFlag() const;  ///< usSkipWeekDay
  void setSkipWeekDayFlag(unsigned short flag);

  void mycopy(BKQCustomSchedule* source);

 private:
  friend struct bkoq::Flattening;
  unsigned short repeats_[4];
  RWSlistCollectables lists_[3];  // reserved: only copied, as lists of the same objects
  unsigned short skipWeekDay_;
};

#endif  // BKOQ_SCHED_H_
