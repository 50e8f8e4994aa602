#ifndef BKOQ_TESTS_SUPPORT_ATTRIBUTES_H_
#define BKOQ_TESTS_SUPPORT_ATTRIBUTES_H_

#include <bkoq/bkoq.h>

#include <memory>

#include "tests/catalog/kinds.h"

namespace bkoq::test {

// An object as fresh as its class allows.
template <class Object>
std::unique_ptr<Object> newObject() {
  return std::unique_ptr<Object>(newFresh<Object>());
}

// Calls `expect` with a copy of the object.
template <class Object, class Expectation>
auto inACopy(Object& object, Expectation expect) -> decltype(object.mycopy(&object)) {
  const std::unique_ptr<Object> copy = newObject<Object>();
  copy->mycopy(&object);
  expect(*copy);
}
// A class without copies.
template <class Expectation>
void inACopy(BKQTapeXtension& /*object*/, Expectation /*expect*/) {}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_ATTRIBUTES_H_
