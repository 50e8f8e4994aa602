#include <bkoq/bkoq.h>

#include <type_traits>

#include "tests/catalog/classes.h"

namespace bkoq::test {

// Objects that hold others by address are copied by clone() and mycopy() alone: a constructor or an
// assignment would leave two owners of one object.

namespace {

template <class... Classes>
constexpr bool kNotCopyable = ((!std::is_copy_constructible<Classes>::value &&
                                !std::is_move_constructible<Classes>::value &&
                                !std::is_copy_assignable<Classes>::value &&
                                !std::is_move_assignable<Classes>::value) &&
                               ...);

enum class Copies { kValue, kAlone };
#define BKOQ_EXPECT(class_, sort, copies, ...)                               \
  static_assert(Copies::k##copies == Copies::kValue || kNotCopyable<class_>, \
                #class_ " is copied by clone() and mycopy() alone: tests/catalog/classes.h");
BKOQ_CLASSES(BKOQ_EXPECT)
#undef BKOQ_EXPECT

// Abstract classes are never constructible, but a class of a client's that adds nothing is.
class ForeignNode : public BKQNode {
 public:
  unsigned int nodeType() const override { return 1; }
};
class ForeignDiskNode : public BKQDiskNode {
 public:
  unsigned int nodeType() const override { return 1; }
};
static_assert(kNotCopyable<ForeignNode, ForeignDiskNode>, "");

}  // namespace
}  // namespace bkoq::test
