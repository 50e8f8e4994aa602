#ifndef BKOQ_COLLECTIONS_H_
#define BKOQ_COLLECTIONS_H_

#include "bkoq/export.h"
#include "rw/slistcol.h"

/// The typed collections: lists whose name says what they hold. A collection holds the addresses of
/// its elements and never deletes them, unless clearAndDestroy() or removeAndDestroy() is called.
///
/// Objects hand out their collections by cursor: `reset*()` sets the cursor to 0 and
/// `enum*(out, n)` stores a new collection in `out`, puts up to `n` elements from the cursor on
/// into it (0: as many as there are in all), advances the cursor and returns how many it placed.
/// The new collection belongs to the caller, also the empty one at the end; its elements still
/// belong to their owner. When it cannot be allocated, `out` is null, the cursor stays and the
/// result is 0. Adding or removing elements never moves a cursor; a conversion leaves the cursors
/// of what it walked at the end. The cursors of tapes, tape nodes, restore jobs and verify jobs
/// have 16 bits: in a list of 65,536 elements or more they come round to 0, so that an enumeration
/// never ends, and a conversion leaves them at the number of elements modulo 65,536.

/// List of source nodes: BKQNode and its subclasses.
class BKOQ_API BKQNodeCol : public RWSlistCollectables {
 public:
  ~BKQNodeCol() override;
};

/// List of restore destinations: BKQRestoreNode and its subclasses.
class BKOQ_API BKQRestoreNodeCol : public RWSlistCollectables {
 public:
  ~BKQRestoreNodeCol() override;
};

/// List of tape nodes.
class BKOQ_API BKQTapeNodeCol : public RWSlistCollectables {
 public:
  ~BKQTapeNodeCol() override;
};

/// List of filters: BKQFilter and its subclasses.
class BKOQ_API BKQFilterCol : public RWSlistCollectables {
 public:
  ~BKQFilterCol() override;
};

/// List of RWCollectableString values.
class BKOQ_API BKQStringCol : public RWSlistCollectables {
 public:
  ~BKQStringCol() override;
};

/// List of tapes.
class BKOQ_API BKQTapeCol : public RWSlistCollectables {
 public:
  ~BKQTapeCol() override;
};

/// List of disks.
class BKOQ_API BKQDiskCol : public RWSlistCollectables {
 public:
  ~BKQDiskCol() override;
};

/// List of tape items.
class BKOQ_API BKQTapeItemCol : public RWSlistCollectables {
 public:
  ~BKQTapeItemCol() override;
};

/// List of disk items.
class BKOQ_API BKQDiskItemCol : public RWSlistCollectables {
 public:
  ~BKQDiskItemCol() override;
};

/// List of job units of a job mask.
class BKOQ_API BKQJobUnitCol : public RWSlistCollectables {
 public:
  ~BKQJobUnitCol() override;
};

/// List of exception days of a rotation.
class BKOQ_API BKQExceptionDayCol : public RWSlistCollectables {
 public:
  ~BKQExceptionDayCol() override;
};

#endif  // BKOQ_COLLECTIONS_H_
