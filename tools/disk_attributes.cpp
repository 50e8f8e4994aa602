#include "tools/attributes.h"

namespace bkoq::tool {

const FamilyOf<BKQDiskItem>& diskItems() {
  static const FamilyOf<BKQDiskItem> family = [] {
    FamilyOf<BKQDiskItem> items("disk item");
    items.add<BKQDiskItem>(
        "", "BKQDiskItem", "one path on a disk", [](const Value&) { return new BKQDiskItem; },
        [](Table<BKQDiskItem> t) {
          t.text("path", &BKQDiskItem::setPath, &BKQDiskItem::getPath,
                 "path, on UNIX machines below the disk's name")
              .shown("\"/home\"");
          // A new name sets the options to 0, so they come after it.
          t.texts("files", &BKQDiskItem::addFile,
                  "names of the only files wanted; giving any sets the options to 0");
          t.number("options", &BKQDiskItem::setOptions, &BKQDiskItem::getOptions, "option bits");
          t.number("objectProperty", &BKQDiskItem::setObjectProperty,
                   &BKQDiskItem::getObjectProperty, "the server's property bits")
              .unrecorded();
        });
    return items;
  }();
  return family;
}

const FamilyOf<BKQDisk>& disks() {
  static const FamilyOf<BKQDisk> family = [] {
    FamilyOf<BKQDisk> disks("disk");
    disks.add<BKQDisk>(
        "", "BKQDisk", "a disk of a machine", [](const Value&) { return new BKQDisk; },
        [](Table<BKQDisk> t) {
          t.text("diskName", &BKQDisk::setDiskName, &BKQDisk::getDiskName,
                 "drive, volume or file system")
              .shown("\"/\"");
          t.number("diskType", &BKQDisk::setDiskType, &BKQDisk::getDiskType,
                   "the server's type code")
              .upTo(0xFFFF);
          t.number("options", &BKQDisk::setOptions, &BKQDisk::getOptions, "option bits");
          t.text("password", &BKQDisk::setPassword, &BKQDisk::getPassword,
                 "instead of the job's session password");
          t.text("user", &BKQDisk::setUser, &BKQDisk::getUser,
                 "user, kept beside the second password");
          t.text("diskPW2", &BKQDisk::setDiskPW2, &BKQDisk::getDiskPW2, "second password");
          t.text("encryptionKey", &BKQDisk::setEncryptionKey, &BKQDisk::getEncryptionKey,
                 "key for encryption");
          t.number("priority", &BKQDisk::setPriority, &BKQDisk::getPriority,
                   "place in the order of the disks; 255: none");
          t.number("compareFirstMB", &BKQDisk::setCompareFirstMB, &BKQDisk::getCompareFirstMB,
                   "megabytes that a compare reads")
              .unrecorded();
          t.text("afterDisk", &BKQDisk::setAfterDisk, &BKQDisk::getAfterDisk,
                 "command run after the disk")
              .unrecorded();
          t.text("beforeDisk", &BKQDisk::setBeforeDisk, &BKQDisk::getBeforeDisk,
                 "command run before the disk")
              .unrecorded();
          t.number("beforeDiskWait", &BKQDisk::setBeforeDiskWait, &BKQDisk::getBeforeDiskWait,
                   "wait after that command")
              .unrecorded();
          t.number("dbProperty", &BKQDisk::setDBProperty, &BKQDisk::getDBProperty,
                   "the server's property bits of a database")
              .unrecorded();
          t.parts("diskItems", diskItems, &BKQDisk::addDiskItem, "what is wanted of the disk")
              .shown("[]");
          t.parts("filters", filters, &BKQDisk::addFilter, "filters of this disk");
        });
    return disks;
  }();
  return family;
}

}  // namespace bkoq::tool
