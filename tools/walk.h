#ifndef BKOQ_TOOLS_WALK_H_
#define BKOQ_TOOLS_WALK_H_

#include <bkoq/kit.h>

#include <cstdint>
#include <new>

namespace bkoq::tool {

// A callback of the kit cannot throw through it: that memory ran out in there comes back as a
// status, and is thrown on from here.
inline BkoqStatus withMemory(BkoqStatus status) {
  if (status == BKOQ_NO_MEMORY) throw std::bad_alloc();
  return status;
}

inline bool isText(BkoqFieldKind kind) {
  return kind == BKOQ_FIELD_TEXT || kind == BKOQ_FIELD_TWO_TEXTS || kind == BKOQ_FIELD_TEXT_LIST;
}
// Whether the field holds an address that the walk follows.
inline bool isPointer(BkoqFieldKind kind) {
  return isText(kind) || kind == BKOQ_FIELD_ARRAY || kind == BKOQ_FIELD_RECORD;
}

// Visits the records and fields of a tree while `visit` gives 0.
template <class Visit>
BkoqStatus walk(const void* root, BkoqLayout layout, Visit visit) {
  const BkoqVisitor call = [](const BkoqVisit* at, void* user) -> int {
    return (*static_cast<Visit*>(user))(*at);
  };
  return withMemory(bkoqWalk(root, layout, call, &visit));
}

// Visits what differs between two trees while `visit` gives 0, and counts all of it.
template <class Visit>
BkoqStatus compareTrees(const void* root, BkoqLayout layout, const void* otherRoot,
                        BkoqLayout otherLayout, bool showSecrets, const BkoqPaths* paths,
                        Visit visit, std::uint32_t* count = nullptr) {
  const auto call = [](const BkoqDifference* difference, BkoqChange change, void* user) -> int {
    return (*static_cast<Visit*>(user))(*difference, change);
  };
  return withMemory(bkoqCompareChanges(root, layout, otherRoot, otherLayout, showSecrets ? 1 : 0,
                                       paths, call, &visit, count));
}

}  // namespace bkoq::tool

#endif  // BKOQ_TOOLS_WALK_H_
