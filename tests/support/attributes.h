#ifndef BKOQ_TESTS_SUPPORT_ATTRIBUTES_H_
#define BKOQ_TESTS_SUPPORT_ATTRIBUTES_H_

#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace bkoq::test {

// What every plain attribute promises: its value at first, that the getter gives back what the
// setter took, and that a copy has it, too.

// An object as fresh as its class allows.
template <class Object>
std::unique_ptr<Object> newObject() {
  if constexpr (std::is_default_constructible<Object>::value) {
    return std::unique_ptr<Object>(new Object);
  } else {
    return std::unique_ptr<Object>(new Object(static_cast<const char*>(nullptr)));
  }
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

// A text attribute: `first` at first, a copy of the caller's text, and empty for a null text.
template <class Object, class Base>
void expectText(Object& object, const RWCollectableString& (Base::*get)() const,
                void (Base::*set)(const char*), const char* first = "") {
  EXPECT_STREQ((object.*get)(), first);
  char text[] = "some text";
  (object.*set)(text);
  text[0] = 'X';
  EXPECT_STREQ((object.*get)(), "some text");
  inACopy(object, [=](Object& copy) { EXPECT_STREQ((copy.*get)(), "some text"); });
  (object.*set)(nullptr);
  EXPECT_STREQ((object.*get)(), "");
  EXPECT_EQ((object.*get)().length(), 0u);
}

// A number of any width, or a value of an enumeration, passes through whole.
template <class Object, class Base, class Value>
void expectNumber(Object& object, Value (Base::*get)() const, void (Base::*set)(Value),
                  unsigned long first) {
  EXPECT_EQ((object.*get)(), static_cast<Value>(first));
  const Value largest = static_cast<Value>(~0ul);
  (object.*set)(largest);
  EXPECT_EQ((object.*get)(), largest);
  inACopy(object, [=](Object& copy) { EXPECT_EQ((copy.*get)(), largest); });
  (object.*set)(static_cast<Value>(0x5a));
  EXPECT_EQ((object.*get)(), static_cast<Value>(0x5a));
}

// A time passes through to the second.
template <class Object, class Base>
void expectTime(Object& object, const RWCollectableTime& (Base::*get)() const,
                void (Base::*set)(const RWCollectableTime&)) {
  (object.*set)(RWCollectableTime(3255627600UL));
  EXPECT_EQ((object.*get)().seconds(), 3255627600UL);
  inACopy(object, [=](Object& copy) { EXPECT_EQ((copy.*get)().seconds(), 3255627600UL); });
}

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_SUPPORT_ATTRIBUTES_H_
