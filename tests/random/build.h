#ifndef BKOQ_TESTS_RANDOM_BUILD_H_
#define BKOQ_TESTS_RANDOM_BUILD_H_

#include <bkoq/bkoq.h>

#include <memory>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "tests/random/plan.h"
#include "tests/random/random.h"

namespace bkoq::test {

// A client's own class of node, filter, schedule or e-mail, which converts as its base class does.
// Its clones are objects of the base class.
template <class Base>
class Foreign : public Base {
 public:
  using Base::Base;
  int convertToBK2(void*& record) override { return Base::convertToBK2(record); }
  int convertToBK2_old(void*& record) override { return Base::convertToBK2_old(record); }
};
template <class Base>
class ForeignSchedule : public Base {
 public:
  using Base::Base;
  int convertToBK2(void*& schedule, void*& rotation) override {
    return Base::convertToBK2(schedule, rotation);
  }
  int convertToBK2_old(void*& schedule, void*& rotation) override {
    return Base::convertToBK2_old(schedule, rotation);
  }
};

// Applies plans to the public classes and owns what comes of it.
class Builder {
 public:
  // `random` chooses between ways that must not differ, such as a null and an empty text.
  explicit Builder(Random& random) : random_(random) {}
  ~Builder();
  Builder(const Builder&) = delete;
  Builder& operator=(const Builder&) = delete;

  BKQJob* job(const JobPlan& plan);
  BKQJob* source() const { return job_; }
  // A copy of a job, by its clone() where it has one.
  BKQJob* copy(BKQJob& source, const JobPlan& plan);
  // A copy as well: of `source` into the job of another builder, of the same class and made as
  // `plan` says, which goes from there to this one.
  BKQJob* copyInto(Builder& other, const JobPlan& plan, BKQJob& source);

  // The object made from a part of a plan.
  template <class Object, class Plan>
  Object& made(const Plan& plan) const {
    return *static_cast<Object*>(made_.at(&plan));
  }

  template <class Object, class Plan>
  Object* find(const Plan& plan) const {
    const auto found = made_.find(&plan);
    return found == made_.end() ? nullptr : static_cast<Object*>(found->second);
  }

  const char* text(const Text& text) {
    return text.empty() && random_.chance(1, 2) ? nullptr : text.c_str();
  }

 private:
  template <class Object, class Plan, class Make>
  Object& once(const Plan& plan, Make make);
  template <class Object>
  Object& keep(Object* object);
  template <class Object, class Plan>
  void addFilters(Object& object, const Plan& plan);

  // Of the class itself or of a client's own, which must not differ.
  template <class Object, class... Arguments>
  Object* make(const Arguments&... arguments) {
    using Own = std::conditional_t<std::is_base_of_v<BKQSchedule, Object>, ForeignSchedule<Object>,
                                   Foreign<Object>>;
    if (random_.chance(1, 6)) return new Own(arguments...);
    return new Object(arguments...);
  }

  BKQFilter* newFilter(const FilterPlan& plan);
  BKQDiskItem* newDiskItem(const DiskItemPlan& plan);
  BKQDisk* newDisk(const DiskPlan& plan);
  BKQTapeItem* newTapeItem(const TapeItemPlan& plan);
  BKQTape* newTape(const TapePlan& plan);
  template <class Node>
  Node* named(const NodePlan& plan);
  template <class Node>
  Node* newNodeOf(const NodePlan& plan);
  BKQNode* newNode(const NodePlan& plan);
  void fillDiskNode(BKQDiskNode& node, const NodePlan& plan);
  BKQSchedule* newSchedule(const SchedulePlan& plan);
  void fillRotation(BKQRotationSchedule& schedule, const SchedulePlan& plan);
  BKQJobMask* newMask(const JobMaskPlan& plan);
  BKQJob* newJob(const JobPlan& plan);
  void forgetReplaced(const JobPlan& plan);
  void attach(BKQJob& job, const JobPlan& plan);
  void fillBackup(BKQBackupJob& job, const JobPlan& plan);
  template <class Job>
  void setTypedSchedule(BKQJob& job, BKQSchedule& schedule);

  Random& random_;
  std::vector<BKQJob*> copies_;
  BKQJob* job_ = nullptr;
  std::vector<RWCollectable*> kept_;
  std::vector<std::unique_ptr<BKQPrintQueue>> printQueues_;
  std::vector<std::unique_ptr<BKQOpenFileInfo>> openFiles_;
  std::unordered_map<const void*, RWCollectable*> made_;
};

// A client's own time filter: it converts as BKQTimeFilter does, with the range that it stores.
class ForeignTimeFilter : public BKQTimeFilter {
 public:
  ForeignTimeFilter() = default;
  ForeignTimeFilter(BKQTimeRangeType range, BKQTimeAttrType attribute)
      : BKQTimeFilter(range, attribute) {}
  ForeignTimeFilter* clone() override {
    auto* copy = new ForeignTimeFilter;
    copy->mycopy(this);
    return copy;
  }
  BKQTimeRangeType getTRtype() const override { return Between; }
};

// A client's own filter that no record can hold.
class FailingFilter : public BKQFilter {
 public:
  FailingFilter* clone() override {
    auto* copy = new FailingFilter;
    copy->mycopy(this);
    return copy;
  }
  unsigned int filterType() const override { return 3; }
  int convertToBK2(void*& /*entry*/) override { return 0; }
  int convertToBK2_old(void*& /*entry*/) override { return 0; }
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_BUILD_H_
