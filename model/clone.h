#ifndef BKOQ_MODEL_CLONE_H_
#define BKOQ_MODEL_CLONE_H_

#include <cstddef>
#include <new>
#include <type_traits>

namespace bkoq {

// The clone() of every class that can be made: a new object, filled by its own mycopy(), or null
// without memory for it. A class that is made with a name is made without one, since the copy
// replaces it.
template <class Object>
Object* makeClone(Object* source) {
  Object* clone;
  if constexpr (std::is_constructible_v<Object, std::nullptr_t>) {
    clone = new (std::nothrow) Object(nullptr);
  } else {
    clone = new (std::nothrow) Object;
  }
  if (clone != nullptr) clone->mycopy(source);
  return clone;
}

}  // namespace bkoq

#endif  // BKOQ_MODEL_CLONE_H_
