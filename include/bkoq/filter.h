#ifndef BKOQ_FILTER_H_
#define BKOQ_FILTER_H_

#include "bkoq/export.h"
#include "rw/collect.h"
#include "rw/collstr.h"
#include "rw/colltime.h"

/// A filter includes or excludes what a job touches on a source. Abstract root of the family; the
/// classes tell themselves apart by filterType() and, for time filters, getTRtype().
///
/// Every conversion fills one zeroed BKFILTER_FILE entry that the caller allocated and returns 1,
/// or 0 after a line on the standard error stream, for a null pointer too.
/// A null text is the empty text.
class BKOQ_API BKQFilter : public RWCollectable {
 public:
  /// Goes into usInclExcl; any 32-bit value passes through, the record takes its low 16 bits.
  enum BKQInclExclType : unsigned int { Include = 0, Exclude = 1 };

  BKQFilter();                               ///< an including filter
  explicit BKQFilter(BKQInclExclType mode);  ///< a filter of that mode
  ~BKQFilter() override;

  /// A new filter of the same class with the same values, owned by the caller; null from the
  /// abstract roots and when memory runs out.
  virtual BKQFilter* clone();
  /// The filter's kind, usFilterType of its entry: 1 volume, 2 file, 3 directory, 4 time,
  /// 5 attribute.
  virtual unsigned int filterType() const = 0;
  virtual int convertToBK2(void*& entry);
  virtual int convertToBK2_old(void*& entry);

  BKQInclExclType getInclExcl() const;  ///< usInclExcl, low 16 bits
  void setInclExcl(BKQInclExclType mode);
  int isInclude() const;  ///< 1 exactly when the mode is Include; not the opposite of isExclude()
  int isExclude() const;  ///< 1 exactly when the mode is Exclude

  /// Copies the values of `source`; nothing when it is null or this object.
  void mycopy(BKQFilter* source);

 private:
  friend struct bkoq::Flattening;
  BKQInclExclType mode_;
};

/// Selects directories by pattern.
class BKOQ_API BKQDirFilter : public BKQFilter {
 public:
  BKQDirFilter();  ///< including, with the empty pattern
  /// A null pattern is the empty one, which is valid.
  BKQDirFilter(BKQInclExclType mode, const char* pattern);
  ~BKQDirFilter() override;

  BKQDirFilter* clone() override;
  unsigned int filterType() const override;  ///< 3
  int convertToBK2(void*& entry) override;
  int convertToBK2_old(void*& entry) override;

  /// The pattern as given, wildcards and all; copied to pszFilter, with its length and NUL counted
  /// in usFilterLen.
  const RWCollectableString& getFilterString() const;
  void setFilterString(const char* pattern);

  void mycopy(BKQDirFilter* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString pattern_;
};

/// Selects files by pattern.
class BKOQ_API BKQFileFilter : public BKQFilter {
 public:
  BKQFileFilter();  ///< including, with the empty pattern
  /// A null pattern is the empty one, which is valid.
  BKQFileFilter(BKQInclExclType mode, const char* pattern);
  ~BKQFileFilter() override;

  BKQFileFilter* clone() override;
  unsigned int filterType() const override;  ///< 2
  int convertToBK2(void*& entry) override;
  int convertToBK2_old(void*& entry) override;

  /// As BKQDirFilter::getFilterString().
  const RWCollectableString& getFilterString() const;
  void setFilterString(const char* pattern);

  void mycopy(BKQFileFilter* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString pattern_;
};

/// Selects volumes by pattern.
class BKOQ_API BKQVolumeFilter : public BKQFilter {
 public:
  BKQVolumeFilter();  ///< including, with the empty pattern
  /// A null pattern is the empty one, which is valid.
  BKQVolumeFilter(BKQInclExclType mode, const char* pattern);
  ~BKQVolumeFilter() override;

  BKQVolumeFilter* clone() override;
  unsigned int filterType() const override;  ///< 1
  int convertToBK2(void*& entry) override;
  int convertToBK2_old(void*& entry) override;

  /// As BKQDirFilter::getFilterString().
  const RWCollectableString& getFilterString() const;
  void setFilterString(const char* pattern);

  void mycopy(BKQVolumeFilter* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableString pattern_;
};

/// Selects files by their attribute bits.
class BKOQ_API BKQAttributeFilter : public BKQFilter {
 public:
  BKQAttributeFilter();  ///< including, with no attribute
  /// With that mode and those attribute bits.
  BKQAttributeFilter(BKQInclExclType mode, unsigned int attributes);
  ~BKQAttributeFilter() override;

  BKQAttributeFilter* clone() override;
  unsigned int filterType() const override;  ///< 5
  int convertToBK2(void*& entry) override;
  int convertToBK2_old(void*& entry) override;

  /// The server's attribute bits; ulAttributes, whole.
  unsigned int getAttributes() const;
  void setAttributes(unsigned int attributes);

  void mycopy(BKQAttributeFilter* source);

 private:
  friend struct bkoq::Flattening;
  unsigned int attributes_;
};

/// Selects files by a time. Abstract root of the time filters. Every time filter is made as an
/// including one; setInclExcl() changes it.
class BKOQ_API BKQTimeFilter : public BKQFilter {
 public:
  /// How the time is compared; usTimeRange.
  enum BKQTimeRangeType : unsigned int { Before = 0, After = 1, Between = 2, Within = 3 };
  /// Which time stamp is tested; the server's code, the low 16 bits go into usTimeAttr.
  enum BKQTimeAttrType : unsigned int {};
  /// The unit of a within span; the server's code, the low 16 bits go into usTimeUnitType.
  enum BKQTimeUnitType : unsigned int {};

  BKQTimeFilter();  ///< attribute 0
  /// With that attribute; what an entry says of the range is getTRtype().
  BKQTimeFilter(BKQTimeRangeType range, BKQTimeAttrType attribute);
  ~BKQTimeFilter() override;

  BKQTimeFilter* clone() override;           ///< null
  unsigned int filterType() const override;  ///< 4
  int convertToBK2(void*& entry) override;
  int convertToBK2_old(void*& entry) override;
  /// The range of the class; it decides what the entry of a concrete class carries.
  virtual BKQTimeRangeType getTRtype() const = 0;

  BKQTimeAttrType getTRattribute() const;  ///< usTimeAttr, low 16 bits
  void setTRattribute(BKQTimeAttrType attribute);

  void mycopy(BKQTimeFilter* source);

 private:
  friend struct bkoq::Flattening;
  // What the constructor stored: the default constructors leave it 0 whatever the class.
  BKQTimeRangeType range_;
  BKQTimeAttrType attribute_;
};

/// Selects files whose time lies within a span, such as the last 7 days; the server reckons from
/// when.
class BKOQ_API BKQWithinTimeFilter : public BKQTimeFilter {
 public:
  BKQWithinTimeFilter();                                    ///< 0 units of kind 0
  explicit BKQWithinTimeFilter(BKQTimeAttrType attribute);  ///< 0 units of kind 0
  /// With that span.
  BKQWithinTimeFilter(BKQTimeAttrType attribute, unsigned short units, BKQTimeUnitType unitType);
  ~BKQWithinTimeFilter() override;

  BKQWithinTimeFilter* clone() override;
  int convertToBK2(void*& entry) override;
  int convertToBK2_old(void*& entry) override;
  BKQTimeRangeType getTRtype() const override;  ///< Within

  /// Number of units; ulTimeUnits.
  unsigned short getTimeUnits() const;
  void setTimeUnits(unsigned short units);
  /// The unit; usTimeUnitType.
  BKQTimeUnitType getTimeUnitType() const;
  void setTimeUnitType(BKQTimeUnitType unitType);

  void mycopy(BKQWithinTimeFilter* source);

 private:
  friend struct bkoq::Flattening;
  unsigned short units_;
  BKQTimeUnitType unitType_;
};

/// Selects files whose time lies before a bound.
class BKOQ_API BKQBeforeTimeFilter : public BKQTimeFilter {
 public:
  BKQBeforeTimeFilter();                                    ///< the bound is now
  explicit BKQBeforeTimeFilter(BKQTimeAttrType attribute);  ///< the bound is now
  /// With that bound.
  BKQBeforeTimeFilter(BKQTimeAttrType attribute, const RWCollectableTime& time);
  ~BKQBeforeTimeFilter() override;

  BKQBeforeTimeFilter* clone() override;
  int convertToBK2(void*& entry) override;
  int convertToBK2_old(void*& entry) override;
  BKQTimeRangeType getTRtype() const override;  ///< Before

  /// The bound; lTime, as local-clock seconds.
  const RWCollectableTime& getTime() const;
  void setTime(const RWCollectableTime& time);

  void mycopy(BKQBeforeTimeFilter* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableTime time_;
};

/// Selects files whose time lies after a bound.
class BKOQ_API BKQAfterTimeFilter : public BKQTimeFilter {
 public:
  BKQAfterTimeFilter();                                    ///< the bound is now
  explicit BKQAfterTimeFilter(BKQTimeAttrType attribute);  ///< the bound is now
  /// With that bound.
  BKQAfterTimeFilter(BKQTimeAttrType attribute, const RWCollectableTime& time);
  ~BKQAfterTimeFilter() override;

  BKQAfterTimeFilter* clone() override;
  int convertToBK2(void*& entry) override;
  int convertToBK2_old(void*& entry) override;
  BKQTimeRangeType getTRtype() const override;  ///< After

  /// The bound; lTime, as local-clock seconds.
  const RWCollectableTime& getTime() const;
  void setTime(const RWCollectableTime& time);

  void mycopy(BKQAfterTimeFilter* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableTime time_;
};

/// Selects files whose time lies between two bounds.
class BKOQ_API BKQBetweenTimeFilter : public BKQTimeFilter {
 public:
  BKQBetweenTimeFilter();                                    ///< both bounds are now
  explicit BKQBetweenTimeFilter(BKQTimeAttrType attribute);  ///< both bounds are now
  /// With those bounds.
  BKQBetweenTimeFilter(BKQTimeAttrType attribute, const RWCollectableTime& start,
                       const RWCollectableTime& end);
  ~BKQBetweenTimeFilter() override;

  BKQBetweenTimeFilter* clone() override;
  int convertToBK2(void*& entry) override;
  int convertToBK2_old(void*& entry) override;
  BKQTimeRangeType getTRtype() const override;  ///< Between

  /// The start bound; lStartTime, as local-clock seconds.
  const RWCollectableTime& getStartTime() const;
  void setStartTime(const RWCollectableTime& time);
  /// The end bound; lEndTime, as local-clock seconds.
  const RWCollectableTime& getEndTime() const;
  void setEndTime(const RWCollectableTime& time);

  void mycopy(BKQBetweenTimeFilter* source);

 private:
  friend struct bkoq::Flattening;
  RWCollectableTime start_;
  RWCollectableTime end_;
};

#endif  // BKOQ_FILTER_H_
