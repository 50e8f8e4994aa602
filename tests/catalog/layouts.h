#ifndef BKOQ_TESTS_CATALOG_LAYOUTS_H_
#define BKOQ_TESTS_CATALOG_LAYOUTS_H_

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <string>
#include <type_traits>
#include <utility>

// Every state variable, once. X(type, name, variable): that of the current layout; the previous
// layout's has _OLD after its name.
// clang-format off
#define BKOQ_STATE_VARIABLES(X) \
  X(unsigned int, newTapeTimeout, BK6_NEWTAPETIMEOUT) \
  X(unsigned int, spanTapeTimeout, BK6_SPANTAPETIMEOUT) \
  X(unsigned int, newTapeMethod, BK6_NEWTAPEMETHOD) \
  X(unsigned int, spanTapeMethod, BK6_SPANTAPEMETHOD) \
  X(char*, diskSessionPassword, BK6_DISKSESSIONPW) \
  X(char*, tapeSessionPassword, BK6_TAPESESSIONPW) \
  X(unsigned int, diskEncryption, DISK_ENCRYPTION) \
  X(unsigned int, diskCompression, DISK_COMPRESSION) \
  X(unsigned int, nodeNoEstimate, NODE_NOESTIMATE) \
  X(unsigned int, currentNodeType, CURRENT_NODETYPE) \
  X(unsigned int, unixOptions, UNIX_OPTIONS) \
  X(RWCollectableString, diskName, DISK_DISKNAME)
// clang-format on

namespace bkoq::test {

// The two layouts as tests see them: what a test of both takes as its type parameter.
struct CurrentLayout {
  static constexpr const char* kSuffix = "";  // of the names of its conversions
  static constexpr bool kPrevious = false;
  static constexpr BkoqLayout kLayout = BKOQ_LAYOUT_CURRENT;
  using Job = BKQJDATATRANSFER;
  using Node = BKNODE;
  using Disk = BKDDISK;
  using DiskItem = BKDISKITEM;
  using Tape = BKDTAPE;
  using TapeItem = BKTAPEITEM;
  using Filter = BKFILTER_FILE;
  using Rotation = BKROTATIONINFO;

  template <class Object, class... Arguments>
  static int convert(Object& object, void*& record, Arguments&&... arguments) {
    return object.convertToBK2(record, std::forward<Arguments>(arguments)...);
  }

  // The name of a record in this layout's messages.
  static std::string name(const std::string& record) { return record; }

#define BKOQ_ACCESS(type, name, variable) \
  static type& name() { return variable; }
  BKOQ_STATE_VARIABLES(BKOQ_ACCESS)
#undef BKOQ_ACCESS
};

struct PreviousLayout {
  static constexpr const char* kSuffix = "_old";
  static constexpr bool kPrevious = true;
  static constexpr BkoqLayout kLayout = BKOQ_LAYOUT_PREVIOUS;
  using Job = BKQJDATATRANSFER_OLD;
  using Node = BKNODE_OLD;
  using Disk = BKDDISK_OLD;
  using DiskItem = BKDISKITEM_OLD;
  using Tape = BKDTAPE_OLD;
  using TapeItem = BKTAPEITEM_OLD;
  using Filter = BKFILTER_FILE_OLD;
  using Rotation = BKROTATIONINFO_OLD;

  template <class Object, class... Arguments>
  static int convert(Object& object, void*& record, Arguments&&... arguments) {
    return object.convertToBK2_old(record, std::forward<Arguments>(arguments)...);
  }

  static std::string name(const std::string& record) { return record + "_OLD"; }

#define BKOQ_ACCESS(type, name, variable) \
  static type& name() { return variable##_OLD; }
  BKOQ_STATE_VARIABLES(BKOQ_ACCESS)
#undef BKOQ_ACCESS
};

// Both, in the order of their numbers.
constexpr BkoqLayout kLayouts[] = {CurrentLayout::kLayout, PreviousLayout::kLayout};
static_assert(kLayouts[0] == 0 && kLayouts[1] == 1, "tests index by the layout");

// What `visit(CurrentLayout())` or `visit(PreviousLayout())` gives: from a layout at run time to
// one at compile time.
template <class Visitor>
decltype(auto) visitLayout(BkoqLayout layout, Visitor&& visit) {
  return layout == PreviousLayout::kLayout ? visit(PreviousLayout()) : visit(CurrentLayout());
}

// As messages name it.
inline const char* layoutName(BkoqLayout layout) {
  return layout == PreviousLayout::kLayout ? "previous" : "current";
}

// The layout whose state variables a conversion into `Layout` must not touch.
template <class Layout>
using OtherLayout = std::conditional_t<Layout::kPrevious, CurrentLayout, PreviousLayout>;

}  // namespace bkoq::test

#endif  // BKOQ_TESTS_CATALOG_LAYOUTS_H_
