#ifndef BKOQ_TRANSFER_LAYOUT_H_
#define BKOQ_TRANSFER_LAYOUT_H_

#include "bkoq/records.h"
#include "bkoq/state.h"

class BKQJobUnitCol;
class BKQTapeXtension;

namespace bkoq {

struct Text;

// What the steps of flatten.h take from the current layout: its records and their names, its state
// variables, its conversions, and the few rules in which the layouts differ.
struct CurrentLayout {
  using Job = BKQJDATATRANSFER;
  using Node = BKNODE;
  using Disk = BKDDISK;
  using DiskItem = BKDISKITEM;
  using Tape = BKDTAPE;
  using TapeItem = BKTAPEITEM;
  using Filter = BKFILTER_FILE;
  using Schedule = BKSCHEDINFO;
  using Rotation = BKROTATIONINFO;
  using Fax = BKFAXINFO;
  using EMail = BKEMAILINFO;
  using PrintQueue = BKPRINTQ;
  using OpenFile = BKOFINFO;

  static constexpr const char* kJob = "BKQJDATATRANSFER";
  static constexpr const char* kNode = "BKNODE";
  static constexpr const char* kDisk = "BKDDISK";
  static constexpr const char* kDiskItem = "BKDISKITEM";
  static constexpr const char* kTape = "BKDTAPE";
  static constexpr const char* kTapeItem = "BKTAPEITEM";
  static constexpr const char* kFilter = "BKFILTER_FILE";

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

  // The conversion into this layout of the object's own class, which may be a client's. Only the
  // form that takes nothing but the places to fill is virtual.
  template <class Object, class... Places>
  static int convertVirtually(Object& object, Places*&... places) {
    return object.convertToBK2(places...);
  }
  // The conversion of this very class, whatever class the object is of.
  template <class Object, class... Arguments>
  static int convertDirectly(Object& object, Arguments&... arguments) {
    return object.Object::convertToBK2(arguments...);
  }

  static unsigned int recordedNodeType(unsigned int nodeType) { return nodeType; }
  static void storeDomainAndAddress(Node& record, unsigned int nodeType, const Text& domain,
                                    const Text& address);
  static bool joinsRestoreCredentials(unsigned int fileSystemType) {
    return fileSystemType == 22 || fileSystemType == 31;
  }
  static void storeTapeId(Tape& record, unsigned int id);
  static int storeExtension(Tape& record, BKQTapeXtension* extension, long sessionEndTime);
  static void storeReceiverName(Fax& record, const Text& name);
  // Whether it took anything from the units.
  static bool storeJobTypes(Rotation& record, const BKQJobUnitCol& units);
};

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_LAYOUT_H_
