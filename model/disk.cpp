#include "bkoq/disk.h"

#include <new>

#include "bkoq/filter.h"
#include "model/clone.h"
#include "model/copy_list.h"
#include "model/enumerate.h"

BKQDiskItem::BKQDiskItem() : BKQDiskItem("") {}

BKQDiskItem::BKQDiskItem(const char* path)
    : path_(path), options_(1), fileCursor_(0), objectProperty_(0) {}

BKQDiskItem::~BKQDiskItem() = default;

BKQDiskItem* BKQDiskItem::clone() { return bkoq::makeClone(this); }

const RWCollectableString& BKQDiskItem::getPath() const { return path_; }

void BKQDiskItem::setPath(const char* path) { path_ = path; }

unsigned int BKQDiskItem::getOptions() const { return options_; }

void BKQDiskItem::setOptions(unsigned int options) { options_ = options; }

unsigned int BKQDiskItem::getObjectProperty() const { return objectProperty_; }

void BKQDiskItem::setObjectProperty(unsigned int property) { objectProperty_ = property; }

RWCollectable* BKQDiskItem::addFile(const char* name) {
  auto* file = new (std::nothrow) RWCollectableString(name);
  RWCollectable* added = files_.insert(file);
  if (added == nullptr) delete file;
  options_ = 0;
  return added;
}

unsigned int BKQDiskItem::fileEntries() const { return files_.entries(); }

void BKQDiskItem::resetFiles() { fileCursor_ = 0; }

unsigned int BKQDiskItem::enumFiles(BKQStringCol*& out, unsigned int n) {
  return bkoq::enumerate<bkoq::HandOutCopies>(files_, fileCursor_, out, n);
}

void BKQDiskItem::mycopy(BKQDiskItem* source) {
  if (source == nullptr || source == this) return;
  path_ = source->path_;
  options_ = source->options_;
  fileCursor_ = source->fileCursor_;
  objectProperty_ = source->objectProperty_;
  bkoq::copyDoubled<RWCollectableString>(files_, source->files_);
}

BKQDisk::BKQDisk() : BKQDisk(static_cast<BKQDiskType>(0)) {}

BKQDisk::BKQDisk(BKQDiskType type)
    : type_(type),
      options_(0),
      priority_(255),
      compareFirstMB_(0),
      beforeDiskWait_(0),
      itemCursor_(0),
      filterCursor_(0),
      dbProperty_(0) {}

BKQDisk::~BKQDisk() = default;

BKQDisk* BKQDisk::clone() { return bkoq::makeClone(this); }

const RWCollectableString& BKQDisk::getDiskName() const { return name_; }

void BKQDisk::setDiskName(const char* name) { name_ = name; }

BKQDisk::BKQDiskType BKQDisk::getDiskType() const { return type_; }

void BKQDisk::setDiskType(BKQDiskType type) { type_ = type; }

unsigned int BKQDisk::getOptions() const { return options_; }

void BKQDisk::setOptions(unsigned int options) { options_ = options; }

const RWCollectableString& BKQDisk::getPassword() const { return password_; }

void BKQDisk::setPassword(const char* password) { password_ = password; }

const RWCollectableString& BKQDisk::getUser() const { return user_; }

void BKQDisk::setUser(const char* user) { user_ = user; }

const RWCollectableString& BKQDisk::getDiskPW2() const { return password2_; }

void BKQDisk::setDiskPW2(const char* password) { password2_ = password; }

const RWCollectableString& BKQDisk::getEncryptionKey() const { return encryptionKey_; }

void BKQDisk::setEncryptionKey(const char* key) { encryptionKey_ = key; }

unsigned short BKQDisk::getPriority() const { return priority_; }

void BKQDisk::setPriority(unsigned short priority) { priority_ = priority; }

unsigned short BKQDisk::getCompareFirstMB() const { return compareFirstMB_; }

void BKQDisk::setCompareFirstMB(unsigned short megabytes) { compareFirstMB_ = megabytes; }

const RWCollectableString& BKQDisk::getAfterDisk() const { return afterDisk_; }

void BKQDisk::setAfterDisk(const char* name) { afterDisk_ = name; }

const RWCollectableString& BKQDisk::getBeforeDisk() const { return beforeDisk_; }

void BKQDisk::setBeforeDisk(const char* name) { beforeDisk_ = name; }

unsigned short BKQDisk::getBeforeDiskWait() const { return beforeDiskWait_; }

void BKQDisk::setBeforeDiskWait(unsigned short wait) { beforeDiskWait_ = wait; }

unsigned int BKQDisk::getDBProperty() const { return dbProperty_; }

void BKQDisk::setDBProperty(unsigned int property) { dbProperty_ = property; }

RWCollectable* BKQDisk::addDiskItem(BKQDiskItem& item) { return items_.insert(&item); }

unsigned int BKQDisk::diskItemEntries() const { return items_.entries(); }

void BKQDisk::resetDiskItems() { itemCursor_ = 0; }

unsigned int BKQDisk::enumDiskItems(BKQDiskItemCol*& out, unsigned int n) {
  return bkoq::enumerate(items_, itemCursor_, out, n);
}

RWCollectable* BKQDisk::addFilter(BKQFilter& filter) { return filters_.insert(&filter); }

unsigned int BKQDisk::filterEntries() const { return filters_.entries(); }

void BKQDisk::resetFilters() { filterCursor_ = 0; }

unsigned int BKQDisk::enumFilters(BKQFilterCol*& out, unsigned int n) {
  return bkoq::enumerate(filters_, filterCursor_, out, n);
}

void BKQDisk::mycopy(BKQDisk* source) {
  if (source == nullptr || source == this) return;
  const bkoq::DoubledCopy<BKQDiskItem> items(source->items_);
  const bkoq::DoubledCopy<BKQFilter> filters(source->filters_);
  name_ = source->name_;
  type_ = source->type_;
  options_ = source->options_;
  password_ = source->password_;
  user_ = source->user_;
  password2_ = source->password2_;
  encryptionKey_ = source->encryptionKey_;
  priority_ = source->priority_;
  compareFirstMB_ = source->compareFirstMB_;
  afterDisk_ = source->afterDisk_;
  beforeDisk_ = source->beforeDisk_;
  beforeDiskWait_ = source->beforeDiskWait_;
  dbProperty_ = source->dbProperty_;
  itemCursor_ = source->itemCursor_;
  filterCursor_ = source->filterCursor_;
  items.replace(items_);
  filters.replace(filters_);
}
