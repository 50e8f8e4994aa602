#ifndef BKOQ_GROOM_H_
#define BKOQ_GROOM_H_

#include "bkoq/collections.h"
#include "bkoq/export.h"

class BKQFilter;

/// Grooming of a machine's files: how long and how many copies of backed-up files are kept, for the
/// files that the filters select. No record carries it.
class BKOQ_API BKQGroom : public RWCollectable {
 public:
  BKQGroom();  ///< months 0, copies 0, options 2, no filters
  ~BKQGroom() override;
  BKQGroom(const BKQGroom&) = delete;
  BKQGroom& operator=(const BKQGroom&) = delete;

  /// A new object filled by mycopy(), owned by the caller; null when memory runs out.
  virtual BKQGroom* clone();

  unsigned short getMonths() const;  ///< months to keep
  void setMonths(unsigned short months);
  unsigned short getCopies() const;  ///< copies to keep
  void setCopies(unsigned short copies);
  unsigned int getOptions() const;  ///< the server's option bits
  void setOptions(unsigned int options);

  /// Appends the filter itself, which must outlive this object; null when memory runs out.
  RWCollectable* addFilter(BKQFilter& filter);
  unsigned int filterEntries() const;
  void resetFilters();
  unsigned int enumFilters(BKQFilterCol*& out, unsigned int n);

  /// Makes this a copy of `source`, whose filters it then holds twice: the source's own objects,
  /// then clones of them. Former filters that the source does not hold are deleted. Nothing happens
  /// when `source` is null or this object.
  void mycopy(BKQGroom* source);

 private:
  unsigned short months_;
  unsigned short copies_;
  unsigned int options_;
  BKQFilterCol filters_;
  unsigned int filterCursor_;
};

#endif  // BKOQ_GROOM_H_
