#include "tools/attributes.h"

namespace bkoq::tool {

const FamilyOf<BKQDiskItem>& diskItems() {
  static const FamilyOf<BKQDiskItem> family = [] {
    FamilyOf<BKQDiskItem> items("disk item");
    items.add<BKQDiskItem>(
        "", "BKQDiskItem", "one path on a disk", [](const Value&) { return new BKQDiskItem; },
        [](Table<BKQDiskItem>& t) {
          t.text("path", &BKQDiskItem::setPath,
                 "path, on UNIX machines below the disk's name; pszPath")
              .shown("\"/home\"");
          // A new name sets the options to 0, so they come behind.
          t.texts("files", &BKQDiskItem::addFile, "names of the only files wanted; pFileList");
          t.number("options", &BKQDiskItem::setOptions,
                   "option bits, 1 unless given, 0 with files; ulOptions");
          t.number("objectProperty", &BKQDiskItem::setObjectProperty, "in no record");
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
        [](Table<BKQDisk>& t) {
          t.text("diskName", &BKQDisk::setDiskName, "drive, volume or file system; pszDiskName")
              .shown("\"/\"");
          t.number("diskType", &BKQDisk::setDiskType, "the server's type code; usDiskType")
              .upTo(0xFFFF);
          t.number("options", &BKQDisk::setOptions, "option bits; ulOptions");
          t.text("password", &BKQDisk::setPassword,
                 "instead of the job's session password; pszPassword");
          t.text("user", &BKQDisk::setUser, "first text of pszDiskPW2");
          t.text("diskPW2", &BKQDisk::setDiskPW2, "second password; in pszDiskPW2");
          t.text("encryptionKey", &BKQDisk::setEncryptionKey, "pszEncryptionKey");
          t.number("priority", &BKQDisk::setPriority, "255: none; orders disks, in no record");
          t.number("compareFirstMB", &BKQDisk::setCompareFirstMB,
                   "megabytes that a compare reads; in no record");
          t.text("afterDisk", &BKQDisk::setAfterDisk, "in no record");
          t.text("beforeDisk", &BKQDisk::setBeforeDisk, "in no record");
          t.number("beforeDiskWait", &BKQDisk::setBeforeDiskWait, "in no record");
          t.number("dbProperty", &BKQDisk::setDBProperty, "in no record");
          t.parts("diskItems", diskItems, &BKQDisk::addDiskItem,
                  "what is wanted of the disk; pDiskItems")
              .shown("[]");
          t.parts("filters", filters, &BKQDisk::addFilter, "pFilters of the disk");
        });
    return disks;
  }();
  return family;
}

}  // namespace bkoq::tool
