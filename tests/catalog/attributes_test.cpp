// Every attribute of every class by the catalogue: what it is at first, that the getter gives back
// what the setter took, and that a copy has it.

#include "tests/catalog/attributes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/catalog/classes.h"

namespace bkoq::test {
namespace {

template <class Object>
std::unique_ptr<Object> fresh() {
  return std::unique_ptr<Object>(newFresh<Object>());
}

template <class Object, class = void>
constexpr bool kHasCopies = false;
template <class Object>
constexpr bool kHasCopies<Object, decltype(static_cast<void>(std::declval<Object>().mycopy(
                                      std::declval<Object*>())))> = true;

template <class Class, class Parameter>
Parameter parameterOf(void (Class::*)(Parameter));
template <class Setter>
using ParameterOf = decltype(parameterOf(std::declval<Setter>()));

template <class Object>
class Checks {
 public:
  // Texts: a copy of the caller's, and empty for null.
  template <class Getter, class Setter>
  void operator()(const AttributeLine& line, Text*, Getter get, Setter set, const char* first) {
    const std::unique_ptr<Object> object = fresh<Object>();
    EXPECT_STREQ(((*object).*get)(), first) << line.name() << " at first";
    char text[] = "some text";
    ((*object).*set)(text);
    text[0] = 'X';
    EXPECT_STREQ(((*object).*get)(), "some text") << line.name();
    expectInCopy(line, *object,
                 [=](Object& copy) { return std::string((copy.*get)().data()) == "some text"; });
    if constexpr (std::is_same_v<ParameterOf<Setter>, const char*>) {
      ((*object).*set)(nullptr);
      EXPECT_STREQ(((*object).*get)(), "") << line.name() << " of null";
      EXPECT_EQ(((*object).*get)().length(), 0u) << line.name() << " of null";
    }
  }

  // Times, to the second; what they are at first depends on when.
  template <class Getter, class Setter>
  void operator()(const AttributeLine& line, Time*, Getter get, Setter set, unsigned long) {
    const unsigned long seconds = 3255627600;
    const std::unique_ptr<Object> object = fresh<Object>();
    ((*object).*set)(RWCollectableTime(seconds));
    EXPECT_EQ(((*object).*get)().seconds(), seconds) << line.name();
    expectInCopy(line, *object, [=](Object& copy) { return (copy.*get)().seconds() == seconds; });
  }

  // Numbers of any width and values of enumerations pass through whole.
  template <class Value, class Getter, class Setter>
  void operator()(const AttributeLine& line, Value*, Getter get, Setter set, unsigned long first) {
    const std::unique_ptr<Object> object = fresh<Object>();
    using Got = decltype(((*object).*get)());
    EXPECT_EQ(((*object).*get)(), static_cast<Got>(first)) << line.name() << " at first";
    for (const unsigned long number : {~0ul, 0x5aul}) {
      ((*object).*set)(static_cast<ParameterOf<Setter>>(number));
      EXPECT_EQ(((*object).*get)(), static_cast<Got>(number)) << line.name();
      expectInCopy(line, *object,
                   [=](Object& copy) { return (copy.*get)() == static_cast<Got>(number); });
    }
  }

 private:
  template <class Has>
  static void expectInCopy(const AttributeLine& line, Object& object, Has has) {
    if constexpr (kHasCopies<Object>) {
      const std::unique_ptr<Object> copy = fresh<Object>();
      copy->mycopy(&object);
      EXPECT_TRUE(has(*copy)) << "A copy of a " << nameOfClass<Object>() << " has not what "
                              << line.name() << " was told: copy it in "
                              << findClass(line.owner)->model << ", " << line.owner << "::mycopy()";
    }
  }
};

TEST(Attributes, AreKeptAndCopied) {
  unsigned int classes = 0;
  eachConcreteClass([&](auto type) {
    using Object = typename decltype(type)::Of;
    SCOPED_TRACE(nameOfClass<Object>());
    Checks<Object> checks;
    eachAttribute<Object>(checks);
    ++classes;
  });
  EXPECT_GT(classes, 50u);
}

}  // namespace
}  // namespace bkoq::test
