#ifndef BKOQ_TESTING_COUNTED_H_
#define BKOQ_TESTING_COUNTED_H_

#include <utility>

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

#endif  // BKOQ_TESTING_COUNTED_H_
