#ifndef BKOQ_TESTS_CATALOG_LAYOUTS_H_
#define BKOQ_TESTS_CATALOG_LAYOUTS_H_

#include <bkoq/bkoq.h>
#include <bkoq/kit.h>

#include <string>
#include <type_traits>
#include <utility>

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

  static unsigned int& newTapeTimeout() { return BK6_NEWTAPETIMEOUT; }
  static unsigned int& spanTapeTimeout() { return BK6_SPANTAPETIMEOUT; }
  static unsigned int& newTapeMethod() { return BK6_NEWTAPEMETHOD; }
  static unsigned int& spanTapeMethod() { return BK6_SPANTAPEMETHOD; }
  static char*& diskSessionPassword() { return BK6_DISKSESSIONPW; }
  static char*& tapeSessionPassword() { return BK6_TAPESESSIONPW; }
  static unsigned int& diskEncryption() { return DISK_ENCRYPTION; }
  static unsigned int& diskCompression() { return DISK_COMPRESSION; }
  static unsigned int& nodeNoEstimate() { return NODE_NOESTIMATE; }
  static unsigned int& currentNodeType() { return CURRENT_NODETYPE; }
  static unsigned int& unixOptions() { return UNIX_OPTIONS; }
  static RWCollectableString& diskName() { return DISK_DISKNAME; }
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

  static unsigned int& newTapeTimeout() { return BK6_NEWTAPETIMEOUT_OLD; }
  static unsigned int& spanTapeTimeout() { return BK6_SPANTAPETIMEOUT_OLD; }
  static unsigned int& newTapeMethod() { return BK6_NEWTAPEMETHOD_OLD; }
  static unsigned int& spanTapeMethod() { return BK6_SPANTAPEMETHOD_OLD; }
  static char*& diskSessionPassword() { return BK6_DISKSESSIONPW_OLD; }
  static char*& tapeSessionPassword() { return BK6_TAPESESSIONPW_OLD; }
  static unsigned int& diskEncryption() { return DISK_ENCRYPTION_OLD; }
  static unsigned int& diskCompression() { return DISK_COMPRESSION_OLD; }
  static unsigned int& nodeNoEstimate() { return NODE_NOESTIMATE_OLD; }
  static unsigned int& currentNodeType() { return CURRENT_NODETYPE_OLD; }
  static unsigned int& unixOptions() { return UNIX_OPTIONS_OLD; }
  static RWCollectableString& diskName() { return DISK_DISKNAME_OLD; }
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
