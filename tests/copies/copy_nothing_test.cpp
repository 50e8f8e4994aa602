// A copy from a null pointer, or of an object onto itself, leaves every object as it is.

#include <bkoq/bkoq.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <typeinfo>
#include <utility>
#include <vector>

#include "tests/catalog/classes.h"
#include "tests/catalog/kinds.h"

namespace bkoq::test {
namespace {

template <class Object>
std::vector<char> bytesOf(const Object& object) {
  std::vector<char> bytes(sizeof object);
  std::memcpy(bytes.data(), static_cast<const void*>(&object), bytes.size());
  return bytes;
}

// A text would get a new block if it was copied.
template <class Object>
void expectUnchanged(Object& object) {
  SCOPED_TRACE(typeid(object).name());
  const std::vector<char> before = bytesOf(object);
  object.mycopy(static_cast<Object*>(nullptr));
  EXPECT_EQ(bytesOf(object), before);
  object.mycopy(&object);
  EXPECT_EQ(bytesOf(object), before);
}

template <class Object, class = void>
constexpr bool kHasCopies = false;
template <class Object>
constexpr bool kHasCopies<Object, decltype(static_cast<void>(std::declval<Object>().mycopy(
                                      std::declval<Object*>())))> = true;

TEST(CopyOfNothing, ChangesNoObject) {
  unsigned int classes = 0;
  eachConcreteClass([&](auto type) {
    using Object = typename decltype(type)::Of;
    if constexpr (kHasCopies<Object>) {
      const std::unique_ptr<Object> object(newNamed<Object>("n"));
      expectUnchanged(*object);
      ++classes;
    } else {
      EXPECT_STREQ(nameOfClass<Object>(), "BKQTapeXtension") << "has no mycopy()";
    }
  });
  EXPECT_GT(classes, 50u);
}

// Nor does a base class that copies its own part alone.
template <class Base, class Object>
void expectPartUnchanged() {
  const std::unique_ptr<Object> object(newNamed<Object>("n"));
  expectUnchanged<Base>(*object);
}

TEST(CopyOfNothing, ChangesNoPart) {
  expectPartUnchanged<BKQNode, BKQMacNode>();
  expectPartUnchanged<BKQEMail, BKQMHSEMail>();
  expectPartUnchanged<BKQFilter, BKQAttributeFilter>();
  expectPartUnchanged<BKQTimeFilter, BKQBeforeTimeFilter>();
}

}  // namespace
}  // namespace bkoq::test
