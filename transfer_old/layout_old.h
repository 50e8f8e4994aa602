#ifndef BKOQ_TRANSFER_OLD_LAYOUT_OLD_H_
#define BKOQ_TRANSFER_OLD_LAYOUT_OLD_H_

#include "bkoq/records_old.h"
#include "bkoq/state.h"

class BKQJobUnitCol;
class BKQTapeXtension;

namespace bkoq {

struct Text;

// What the steps of transfer/flatten.h take from the previous layout.
struct PreviousLayout {
  using Job = BKQJDATATRANSFER_OLD;
  using Node = BKNODE_OLD;
  using Disk = BKDDISK_OLD;
  using DiskItem = BKDISKITEM_OLD;
  using Tape = BKDTAPE_OLD;
  using TapeItem = BKTAPEITEM_OLD;
  using Filter = BKFILTER_FILE_OLD;
  using Schedule = BKSCHEDINFO_OLD;
  using Rotation = BKROTATIONINFO_OLD;
  using Fax = BKFAXINFO_OLD;
  using EMail = BKEMAILINFO_OLD;
  using PrintQueue = BKPRINTQ_OLD;
  using OpenFile = BKOFINFO_OLD;

  static constexpr const char* kJob = "BKQJDATATRANSFER_OLD";
  static constexpr const char* kNode = "BKNODE_OLD";
  static constexpr const char* kDisk = "BKDDISK_OLD";
  static constexpr const char* kDiskItem = "BKDISKITEM_OLD";
  static constexpr const char* kTape = "BKDTAPE_OLD";
  static constexpr const char* kTapeItem = "BKTAPEITEM_OLD";
  static constexpr const char* kFilter = "BKFILTER_FILE_OLD";

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

  // The conversion into this layout of the object's own class, which may be a client's. Only the
  // form that takes nothing but the places to fill is virtual.
  template <class Object, class... Places>
  static int convertVirtually(Object& object, Places*&... places) {
    return object.convertToBK2_old(places...);
  }
  // The conversion of this very class, whatever class the object is of.
  template <class Object, class... Arguments>
  static int convertDirectly(Object& object, Arguments&... arguments) {
    return object.Object::convertToBK2_old(arguments...);
  }

  // Servers of this layout know an NDS tree by another type.
  static unsigned int recordedNodeType(unsigned int nodeType) {
    return nodeType == 13 ? 6 : nodeType;
  }
  static void storeDomainAndAddress(Node& record, unsigned int nodeType, const Text& domain,
                                    const Text& address);
  static bool joinsRestoreCredentials(unsigned int fileSystemType) {
    return fileSystemType == 11 || fileSystemType == 22 || fileSystemType == 31;
  }
  static void storeTapeId(Tape& record, unsigned int id);
  static int storeExtension(Tape& record, BKQTapeXtension* extension, long sessionEndTime);
  static void storeReceiverName(Fax& record, const Text& name);
  // Whether it took anything from the units.
  static bool storeJobTypes(Rotation& record, const BKQJobUnitCol& units);
};

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_OLD_LAYOUT_OLD_H_
