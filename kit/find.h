#ifndef BKOQ_KIT_FIND_H_
#define BKOQ_KIT_FIND_H_

#include <string>

#include "kit/view.h"

namespace bkoq::kit {

// What is at a path, which is followed from the job on instead of searched for.
class Finding {
 public:
  // False when the path leads nowhere.
  bool find(const RecordView& job, const char* path);

  // After success: a text of a list, a field, or a record, in this order.
  const char* text() const { return text_; }
  const FieldDef* field() const { return field_; }
  const RecordView& record() const { return record_; }

  // After failure: the part of the path up to which it is good, the part that fails, and where.
  enum class Failure { kNoField, kNoElement, kNoIndex, kNotAnArray, kNull, kNoFields, kSpelling };
  std::string words(const char* path) const;

 private:
  bool fail(Failure failure, std::size_t good, std::size_t end) {
    failure_ = failure;
    good_ = good;
    end_ = end;
    return false;
  }
  bool takeField(const char* path, std::size_t& at);
  bool takeIndex(const char* path, std::size_t& at);

  RecordView record_;
  const FieldDef* field_ = nullptr;
  const char* text_ = nullptr;
  Failure failure_ = Failure::kSpelling;
  std::size_t good_ = 0;
  std::size_t end_ = 0;
};

}  // namespace bkoq::kit

#endif  // BKOQ_KIT_FIND_H_
