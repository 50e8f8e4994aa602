#include "tools/attribute_cases.h"

namespace bkoq::tool {

void addDisks(std::vector<ClassCase>& cases) {
  cases.push_back(makeCase<BKQDisk>(
      disks, "",
      R"({"kind": "backup", "jobName": "",
          "sourceNodes": [{"kind": "unix", "nodeName": "", "disks": [@]}]})",
      diskOf, [](AttributeRows<BKQDisk>& rows) {
        rows.text("diskName", &BKQDisk::getDiskName, "/")
            .number("diskType", &BKQDisk::getDiskType, 301)
            .number("options", &BKQDisk::getOptions, 70302)
            .text("password", &BKQDisk::getPassword, "password")
            .text("user", &BKQDisk::getUser, "user")
            .text("diskPW2", &BKQDisk::getDiskPW2, "second password")
            .text("encryptionKey", &BKQDisk::getEncryptionKey, "key")
            .number("priority", &BKQDisk::getPriority, 303)
            .number("compareFirstMB", &BKQDisk::getCompareFirstMB, 304)
            .text("afterDisk", &BKQDisk::getAfterDisk, "/bin/after")
            .text("beforeDisk", &BKQDisk::getBeforeDisk, "/bin/before")
            .number("beforeDiskWait", &BKQDisk::getBeforeDiskWait, 305)
            .number("dbProperty", &BKQDisk::getDBProperty, 70306)
            .row(
                "diskItems", R"([{"path": "/home"}, {"path": "/var"}])",
                [](BKQDisk& disk) {
                  return ofEach(elements<BKQDiskItem>(&disk, &BKQDisk::resetDiskItems,
                                                      &BKQDisk::enumDiskItems),
                                &BKQDiskItem::getPath);
                },
                "/home, /var")
            .row(
                "filters", kTwoFilters,
                [](BKQDisk& disk) {
                  return filtersOf(disk, &BKQDisk::resetFilters, &BKQDisk::enumFilters);
                },
                kTwoFiltersShown);
      }));
  cases.push_back(makeCase<BKQDiskItem>(
      diskItems, "",
      R"({"kind": "backup", "jobName": "",
          "sourceNodes": [{"kind": "unix", "nodeName": "", "disks": [{"diskItems": [@]}]}]})",
      diskItemOf, [](AttributeRows<BKQDiskItem>& rows) {
        rows.text("path", &BKQDiskItem::getPath, "/home")
            .row(
                "files", R"(["a.txt", "b.txt"])",
                [](BKQDiskItem& item) {
                  // This list is one of copies, which are the caller's.
                  item.resetFiles();
                  BKQStringCol* handedOut = nullptr;
                  item.enumFiles(handedOut, 0);
                  const std::unique_ptr<BKQStringCol> names(handedOut);
                  std::string all;
                  for (unsigned int i = 0; i < names->entries(); ++i) {
                    all += (i == 0 ? "" : ", ") +
                           shown(*dynamic_cast<RWCollectableString*>(names->at(i)));
                  }
                  names->clearAndDestroy();
                  return all;
                },
                "a.txt, b.txt")
            .also("options", "0")
            .number("options", &BKQDiskItem::getOptions, 70301)
            .number("objectProperty", &BKQDiskItem::getObjectProperty, 70302);
      }));
}

}  // namespace bkoq::tool
