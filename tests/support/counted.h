#ifndef BKOQ_TESTS_SUPPORT_COUNTED_H_
#define BKOQ_TESTS_SUPPORT_COUNTED_H_

#include <string>
#include <utility>

namespace bkoq::test {

// An object whose destruction the test sees: adds 1 to the counter that it was made with.
template <class Object>
class Counted : public Object {
 public:
  template <class... Arguments>
  explicit Counted(int& destroyed, Arguments&&... arguments)
      : Object(std::forward<Arguments>(arguments)...), destroyed_(destroyed) {}
  ~Counted() override { ++destroyed_; }

 private:
  int& destroyed_;
};

// An object that notes in a log when it is cloned ('c') and when it is deleted ('d').
template <class Object>
class Logged : public Object {
 public:
  template <class... Arguments>
  explicit Logged(std::string& log, Arguments&&... arguments)
      : Object(std::forward<Arguments>(arguments)...), log_(log) {}
  ~Logged() override { log_ += 'd'; }
  Object* clone() override {
    log_ += 'c';
    return Object::clone();
  }

 private:
  std::string& log_;
};

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_COUNTED_H_
