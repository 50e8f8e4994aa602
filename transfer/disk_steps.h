#ifndef BKOQ_TRANSFER_DISK_STEPS_H_
#define BKOQ_TRANSFER_DISK_STEPS_H_

#include "transfer/file_list.h"
#include "transfer/flatten.h"

namespace bkoq {

constexpr uint32_t kDiskOptionCompression = 0x2000;
constexpr uint32_t kDiskOptionEncryption = 0x4000;
constexpr unsigned int kDiskTypeRegistry = 11;
constexpr unsigned int kDiskTypeNone = 23;  // transferred as 0

inline bool joinsDiskCredentials(unsigned int diskType) {
  return diskType == 11 || diskType == 22 || diskType == 31;
}

template <class Layout>
int Flattening::Into<Layout>::disk(BKQDisk& disk, void*& rec, const char* overridePath) {
  if (rec == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::Disk*>(rec);
  const ArgumentText<Layout> path(overridePath);
  // Every item conversion below reads the name of its disk from here.
  Layout::diskName() = disk.name_;

  record.usDiskType = static_cast<uint16_t>(disk.type_);
  record.ulOptions = disk.options_;
  storeText(record.pszDiskName, disk.name_);
  storeText(record.pszEncryptionKey, disk.encryptionKey_);
  if (disk.type_ == kDiskTypeNone) {
    record.usDiskType = 0;
  } else if (Layout::currentNodeType() == BKQNode::WinNTNode &&
             Text(disk.name_).equals("Registry")) {
    record.usDiskType = kDiskTypeRegistry;
  }
  if (Layout::unixOptions() != 0 && Layout::currentNodeType() == BKQNode::UnixNode) {
    record.ulOptions |= Layout::unixOptions();
  }
  if (Layout::diskEncryption() == 1) record.ulOptions |= kDiskOptionEncryption;
  if (Layout::diskCompression() == 1) record.ulOptions |= kDiskOptionCompression;

  if (!disk.password_.isNull()) {
    record.pszPassword = duplicate(disk.password_);
  } else if (Layout::diskSessionPassword() != nullptr) {
    record.pszPassword = duplicate(Layout::diskSessionPassword());
  }
  // By the disk's own type, not by what the record says.
  const bool joined = joinsDiskCredentials(disk.type_);
  if (hasCredentials(joined, disk.user_, disk.password2_)) {
    record.pszDiskPW2 = copyCredentials(joined, disk.user_, disk.password2_);
  }

  if (!disk.items_.isEmpty()) moveCursorToEnd(disk.items_, disk.itemCursor_);
  if (!path.isEmpty()) {
    // One item takes the place of all of them.
    if (!disk.items_.isEmpty() && record.pDiskItems == nullptr) {
      record.ulDiskItemCount = 1;
      record.pDiskItems = allocateRecord<typename Layout::DiskItem>(Layout::kDiskItem);
      if (record.pDiskItems == nullptr) return 0;
      void* element = record.pDiskItems;
      auto& item = *static_cast<BKQDiskItem*>(disk.items_.at(0));
      if (!Layout::convertDirectly(item, element, path)) return failedToConvert("DiskItem");
    }
  } else {
    for (unsigned int i = 0; i < disk.items_.entries(); ++i) {
      void* element = appendRecord(record.ulDiskItemCount, record.pDiskItems, Layout::kDiskItem);
      if (element == nullptr) return 0;
      auto& item = *static_cast<BKQDiskItem*>(disk.items_.at(i));
      if (!Layout::convertDirectly(item, element)) return failedToConvert("DiskItem");
    }
  }

  return addOwnFilters(record.ulFilterCount, record.pFilters, Layout::kFilter, disk.filters_,
                       disk.filterCursor_);
}

// The path of an item as the server uses it: on a UNIX machine it is made absolute by the name of
// its disk. Unlike other texts, an empty path is a block as well.
inline char* itemPath(const Text& path, const Text& diskName, bool isUnix) {
  const Text root("/");
  if (!isUnix) return duplicate(path);
  if (!diskName.equals(root)) return joinTexts(diskName, path, 1);
  return duplicate(path.isEmpty() ? root : path);
}

template <class Layout>
int Flattening::Into<Layout>::diskItem(BKQDiskItem& item, void*& rec) {
  if (rec == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::DiskItem*>(rec);
  record.pszPath =
      itemPath(item.path_, Layout::diskName(), Layout::currentNodeType() == BKQNode::UnixNode);
  record.ulOptions = item.options_;

  if (item.files_.isEmpty()) return 1;
  moveCursorToEnd(item.files_, item.fileCursor_);
  size_t end = listLength(record.pFileList, static_cast<int>(record.ulFileCount));
  for (unsigned int i = 0; i < item.files_.entries(); ++i) {
    const Text name(*static_cast<RWCollectableString*>(item.files_.at(i)));
    ++record.ulFileCount;
    const bool isFirst = record.pFileList == nullptr;
    const size_t size = end + name.length + 1;
    record.pFileList = static_cast<char*>(isFirst ? malloc(size) : realloc(record.pFileList, size));
    if (record.pFileList == nullptr) {
      return isFirst ? failedInMalloc("File List") : failedInRealloc("File List");
    }
    copyBytes(record.pFileList + end, name.data, name.length + 1);
    end = size;
  }
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::diskItem(BKQDiskItem& item, void*& rec, const char* overridePath) {
  if (rec == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::DiskItem*>(rec);
  const Text path(overridePath);
  storeText(record.pszPath, path.isEmpty() ? Text(item.path_) : path);
  record.ulOptions = item.options_;
  return 1;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_DISK_STEPS_H_
