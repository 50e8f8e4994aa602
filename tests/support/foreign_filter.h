#ifndef BKOQ_TESTS_SUPPORT_FOREIGN_FILTER_H_
#define BKOQ_TESTS_SUPPORT_FOREIGN_FILTER_H_

#include <bkoq/bkoq.h>

namespace bkoq::test {

// A filter class of a client's own. It marks the entry that it is handed, each layout with another
// type, and answers `result`.
class ForeignFilter : public BKQFilter {
 public:
  static constexpr unsigned int kCurrentMark = 201;
  static constexpr unsigned int kPreviousMark = 202;

  explicit ForeignFilter(int result) : result_(result) {}

  unsigned int filterType() const override { return 200; }
  int convertToBK2(void*& entry) override { return mark(entry, kCurrentMark); }
  int convertToBK2_old(void*& entry) override { return mark(entry, kPreviousMark); }

 private:
  int mark(void* entry, unsigned int type) const {
    static_cast<BKFILTER_FILE*>(entry)->usFilterType = static_cast<uint16_t>(type);
    return result_;
  }

  int result_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_FOREIGN_FILTER_H_
