#ifndef BKOQ_TRANSFER_FLATTEN_H_
#define BKOQ_TRANSFER_FLATTEN_H_

#include <optional>

#include "bkoq/bkoq.h"
#include "transfer/blocks.h"

namespace bkoq {

// The steps that turn the model into records, once for both layouts. `Layout` says what differs.
// The public conversions are their entry points, so that a conversion called by a client and one
// called from here are the same. Each family's steps are defined in a header of their own, which
// only the entry point files of that family include.
//
// All return 1, or 0 after what they report on the standard error stream, and free nothing: a
// caller that gets 0 finds the record as far as it was filled. A list is walked in place; its
// cursor is left where taking all elements would have left it.
struct Flattening {
  template <class Layout>
  struct Into;
};

// Sets the cursor of a list where handing out all its elements leaves it.
template <class Cursor>
void moveCursorToEnd(const RWSlistCollectables& list, Cursor& cursor) {
  cursor = static_cast<Cursor>(list.entries());
}

template <class Layout>
struct Flattening::Into {
  // job_steps.h
  static int job(BKQJob& job, void*& out);
  static int backupJob(BKQBackupJob& job, void*& out, const char* nodeName,
                       RWSlistCollectables& disks, int unixKind, const char* unixText);
  static int restoreJob(BKQRestoreJob& job, void*& out, const char* tapeName,
                        unsigned short sessionNumber);
  static int verifyJob(BKQVerifyJob& job, void*& out, const char* tapeName,
                       unsigned short sessionNumber);
  static int compareJob(BKQCompareJob& job, void*& out, const char* tapeName,
                        unsigned short sessionNumber, const char* overridePath);
  static int mergeJob(BKQMergeJob& job, void*& out, const char* tapeName,
                      unsigned short sessionNumber);
  static int scanJob(BKQScanJob& job, void*& out, const char* tapeName,
                     unsigned short sessionNumber);

  // node_steps.h
  static int node(BKQNode& node, void*& rec);
  static int diskNode(BKQDiskNode& node, void*& rec, RWSlistCollectables& names,
                      const char* overridePath);
  static int unixNode(BKQUnixNode& node, void*& rec);
  static int unixNode(BKQUnixNode& node, void*& rec, RWSlistCollectables& names, int mode,
                      const char* extra);
  static int restoreNode(BKQRestoreNode& node, void*& rec);
  static int dbRestoreNode(BKQDBRestoreNode& node, void*& rec);
  static int tapeNode(BKQTapeNode& node, void*& rec, const char* tapeName,
                      unsigned short sessionNumber);

  // disk_steps.h
  static int disk(BKQDisk& disk, void*& rec, const char* overridePath);
  static int diskItem(BKQDiskItem& item, void*& rec);
  static int diskItem(BKQDiskItem& item, void*& rec, const char* overridePath);

  // tape_steps.h
  static int tape(BKQTape& tape, void*& rec);
  static int tapeItem(BKQTapeItem& item, void*& rec);
  static int tapeExtension(BKQTapeXtension& extension, void*& rec);

  // filter_steps.h
  static int filter(BKQFilter& filter, void*& entry);
  template <class PatternFilter>
  static int patternFilter(PatternFilter& filter, void*& entry, const char* part);
  static int attributeFilter(BKQAttributeFilter& filter, void*& entry);
  static int timeFilter(BKQTimeFilter& filter, void*& entry);
  static int withinTimeFilter(BKQWithinTimeFilter& filter, void*& entry);
  template <class BoundFilter>
  static int boundTimeFilter(BoundFilter& filter, void*& entry, const char* part);
  static int betweenTimeFilter(BKQBetweenTimeFilter& filter, void*& entry);

  // sched_steps.h
  static int schedule(BKQSchedule& schedule, void*& schedBlock);
  static int customSchedule(BKQCustomSchedule& schedule, void*& schedBlock);
  static int rotationSchedule(BKQRotationSchedule& schedule, void*& schedBlock,
                              void*& rotationBlock);
  static int cruiseSchedule(BKQCruiseSchedule& schedule, void*& schedBlock, void*& rotationBlock);

  // notify_steps.h
  static int fax(BKQFax& fax, void*& block);
  static int printQueue(BKQPrintQueue& queue, void*& block);
  static int email(BKQEMail& email, void*& block);
  static int mhsEMail(BKQMHSEMail& email, void*& block);
  static int openFileInfo(BKQOpenFileInfo& info, void*& rec);

  // Appends one entry to an owner's filters and lets the filter fill it. `name` is what the owner
  // calls the record when memory runs out.
  static int addFilter(uint32_t& count, typename Layout::Filter*& filters, const char* name,
                       RWCollectable* element);
  static int addFilters(uint32_t& count, typename Layout::Filter*& filters, const char* name,
                        const RWSlistCollectables& elements);
  // The same for all the filters that an owner has for itself, whose cursor it leaves at the end.
  // Most owners have none, which costs no call.
  template <class Cursor>
  static int addOwnFilters(uint32_t& count, typename Layout::Filter*& filters, const char* name,
                           const RWSlistCollectables& elements, Cursor& cursor) {
    if (elements.isEmpty()) return 1;
    moveCursorToEnd(elements, cursor);
    return addFilters(count, filters, name, elements);
  }

  // The next element of a job's node array, for a conversion to fill; null after a report.
  static void* addNode(uint32_t& count, typename Layout::Node*& nodes);
  // The first element of a job's node array, made when there is none; null after a report.
  static void* firstNode(typename Layout::Node*& nodes);
  // The one source of a job; none for null.
  static int tapeSource(BKQTapeNode* source, typename Layout::Job& record, const char* tapeName,
                        unsigned short sessionNumber);
  static int tapeSources(RWSlistCollectables& sources, typename Layout::Job& record,
                         const char* tapeName, unsigned short sessionNumber);
  static int addDisk(BKQDisk& disk, typename Layout::Node& record, const char* overridePath);
};

// A text that the caller of a conversion hands in. It may lie in the variable that takes the name
// of each disk on the way, and stays what it was all the same: then this shares the block of that
// name, which takes no memory and so cannot fail. Most texts lie elsewhere and cost no string.
template <class Layout>
class ArgumentText {
 public:
  ArgumentText(const char* text) : text_(text != nullptr ? text : notGiven) {
    if (*text_ == '\0') return;
    const RWCString& name = Layout::diskName();
    if (text >= name.data() && text <= name.data() + name.length()) name_.emplace(name);
  }
  ArgumentText(const ArgumentText&) = delete;
  ArgumentText& operator=(const ArgumentText&) = delete;

  bool isEmpty() const { return *text_ == '\0'; }
  operator const char*() const { return text_; }

 private:
  const char* text_;
  std::optional<RWCString> name_;
};

template <class Layout>
int Flattening::Into<Layout>::addFilter(uint32_t& count, typename Layout::Filter*& filters,
                                        const char* name, RWCollectable* element) {
  void* entry = appendRecord(count, filters, name);
  if (entry == nullptr) return 0;
  if (!Layout::convertVirtually(*static_cast<BKQFilter*>(element), entry))
    return failedToConvert("Filter");
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::addFilters(uint32_t& count, typename Layout::Filter*& filters,
                                         const char* name, const RWSlistCollectables& elements) {
  for (unsigned int i = 0; i < elements.entries(); ++i) {
    if (!addFilter(count, filters, name, elements.at(i))) return 0;
  }
  return 1;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_FLATTEN_H_
