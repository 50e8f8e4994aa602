#ifndef BKOQ_TESTS_RANDOM_DRAW_H_
#define BKOQ_TESTS_RANDOM_DRAW_H_

#include <memory>

#include "tests/random/attributes.h"
#include "tests/random/expect.h"
#include "tests/random/plan.h"
#include "tests/random/random.h"

namespace bkoq::test {

class Drawer {
 public:
  explicit Drawer(Random& random) : random_(random) {}

  std::shared_ptr<JobPlan> job(JobClass jobClass);
  Call call(const JobPlan& job, BkoqLayout layout);
  // Either.
  BkoqLayout layout() { return kLayouts[chance(1, 2) ? 1 : 0]; }
  // What earlier work of the process may have left in the state variables.
  State state();

  // From here on only what a job file can say: texts of ASCII, small numbers, times of our days.
  void drawPlainly() { isPlain_ = true; }

  Text text();
  bool chance(std::uint32_t in, std::uint32_t of) { return random_.chance(in, of); }

  // As a visitor of attributes.
  template <class Value, class Getter, class Setter>
  void operator()(const char* name, Attribute<Value>& attribute, Getter /*getter*/,
                  Setter /*setter*/) {
    Visited::note(Visited::kDrawn, name);
    if (chance(3, 4)) set(attribute);
  }

 private:
  void draw(Text& value) { value = text(); }
  void draw(std::uint8_t& value) { value = static_cast<std::uint8_t>(number()); }
  void draw(std::uint16_t& value) { value = static_cast<std::uint16_t>(number()); }
  void draw(std::uint32_t& value) { value = number(); }
  void draw(std::int32_t& value) { value = static_cast<std::int32_t>(number()); }
  void draw(bool& value) { value = chance(1, 2); }

  template <class Value>
  void set(Attribute<Value>& attribute) {
    attribute.isSet = true;
    draw(attribute.value);
  }
  template <class Value, class Other>
  void setTo(Attribute<Value>& attribute, const Other& value) {
    attribute.isSet = true;
    attribute.value = static_cast<Value>(value);
  }

  Text anyText();
  std::uint32_t anyNumber();
  std::uint32_t number();
  std::uint32_t time();
  std::uint32_t diskType();
  std::uint32_t options();
  unsigned int few();
  unsigned int some();
  // A part of the job drawn before, now and then, or a new one.
  template <class Plan, class Make>
  std::shared_ptr<Plan> oldOrNew(List<Plan>& drawn, unsigned int oneOf, Make make);

  std::shared_ptr<FilterPlan> filter();
  void filters(List<FilterPlan>& list);
  std::shared_ptr<DiskItemPlan> diskItem();
  std::shared_ptr<DiskPlan> disk();
  std::shared_ptr<TapeItemPlan> tapeItem();
  std::shared_ptr<TapePlan> tape();
  std::shared_ptr<NodePlan> node(NodeClass nodeClass);
  NodeClass diskNodeClass();
  std::shared_ptr<SchedulePlan> schedule(ScheduleClass scheduleClass);
  void attachments(JobPlan& job);
  void backup(JobPlan& job);

  Random& random_;
  bool isPlain_ = false;
  bool mayFail_ = false;  // whether the job may have filters that fail
  List<FilterPlan> filtersDrawn_;
  List<DiskPlan> disksDrawn_;
  List<TapePlan> tapesDrawn_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_RANDOM_DRAW_H_
