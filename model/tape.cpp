#include "bkoq/tape.h"

#include <new>

#include "bkoq/filter.h"
#include "model/clone.h"
#include "model/copy_list.h"
#include "model/enumerate.h"

namespace {

constexpr unsigned int kExtensionMark = 0x8000000;

}  // namespace

BKQTapeXtension::BKQTapeXtension() : BKQTapeXtension(0) {}

BKQTapeXtension::BKQTapeXtension(long sessionEndTime)
    : sessionEndTime_(sessionEndTime), options_(0) {}

BKQTapeXtension::~BKQTapeXtension() = default;

const RWCollectableString& BKQTapeXtension::getDBuser() const { return dbUser_; }

void BKQTapeXtension::setDBuser(const char* user) { dbUser_ = user; }

const RWCollectableString& BKQTapeXtension::getDBpw() const { return dbPassword_; }

void BKQTapeXtension::setDBpw(const char* password) { dbPassword_ = password; }

long BKQTapeXtension::getSessionEndTime() const { return sessionEndTime_; }

void BKQTapeXtension::setSessionEndTime(long seconds) { sessionEndTime_ = seconds; }

unsigned int BKQTapeXtension::getOptions() const { return options_; }

void BKQTapeXtension::setOptions(unsigned int options) { options_ = options; }

BKQTapeItem::BKQTapeItem() : BKQTapeItem(0, 0) {}

BKQTapeItem::BKQTapeItem(unsigned int chunkNum, unsigned short chunkOffset)
    : chunkNum_(chunkNum), chunkOffset_(chunkOffset), options_(0), physicalChunkNum_(0) {}

BKQTapeItem::~BKQTapeItem() = default;

BKQTapeItem* BKQTapeItem::clone() { return bkoq::makeClone(this); }

const RWCollectableString& BKQTapeItem::getFileOrDir() const { return fileOrDir_; }

void BKQTapeItem::setFileOrDir(const RWCollectableString& name) { fileOrDir_ = name; }

unsigned int BKQTapeItem::getChunkNum() const { return chunkNum_; }

void BKQTapeItem::setChunkNum(unsigned int chunk) { chunkNum_ = chunk; }

unsigned int BKQTapeItem::getPhysicalChunkNum() const { return physicalChunkNum_; }

void BKQTapeItem::setPhysicalChunkNum(unsigned int chunk) { physicalChunkNum_ = chunk; }

unsigned short BKQTapeItem::getChunkOffset() const { return chunkOffset_; }

void BKQTapeItem::setChunkOffset(unsigned int offset) {
  chunkOffset_ = static_cast<unsigned short>(offset);
}

unsigned int BKQTapeItem::getOptions() const { return options_; }

void BKQTapeItem::setOptions(unsigned int options) { options_ = options; }

void BKQTapeItem::mycopy(BKQTapeItem* source) {
  if (source == nullptr || source == this) return;
  fileOrDir_ = source->fileOrDir_;
  chunkNum_ = source->chunkNum_;
  physicalChunkNum_ = source->physicalChunkNum_;
  chunkOffset_ = source->chunkOffset_;
  options_ = source->options_;
}

BKQTape::BKQTape() : BKQTape("", "") {}

BKQTape::BKQTape(const char* deviceGroup, const char* tapeName)
    : deviceGroup_(deviceGroup),
      tapeName_(tapeName),
      tapeId_(0),
      serialNumber_(0),
      qfaBlockNumber_(0),
      options_(0),
      sessionNumber_(0),
      fileSystem_(0),
      fileSystemHigh_(0),
      filterCursor_(0),
      itemCursor_(0),
      tapeLevel_(0),
      streamNum_(0),
      tapeSeq_(0),
      sessionEndTime_(0),
      extension_(nullptr) {}

BKQTape::~BKQTape() = default;

BKQTape* BKQTape::clone() { return bkoq::makeClone(this); }

const RWCollectableString& BKQTape::getTapeName() const { return tapeName_; }

void BKQTape::setTapeName(const char* name) { tapeName_ = name; }

const RWCollectableString& BKQTape::getDeviceGroup() const { return deviceGroup_; }

void BKQTape::setDeviceGroup(const char* group) { deviceGroup_ = group; }

const RWCollectableString& BKQTape::getSessionPW() const { return sessionPassword_; }

void BKQTape::setSessionPW(const char* password) { sessionPassword_ = password; }

unsigned char BKQTape::getStreamNum() const { return streamNum_; }

void BKQTape::setStreamNum(unsigned char stream) { streamNum_ = stream; }

unsigned short BKQTape::getSessionNumber() const { return sessionNumber_; }

void BKQTape::setSessionNumber(unsigned short session) { sessionNumber_ = session; }

unsigned int BKQTape::getQFABlockNumber() const { return qfaBlockNumber_; }

void BKQTape::setQFABlockNumber(unsigned int block) { qfaBlockNumber_ = block; }

unsigned short BKQTape::getTapeLevel() const { return tapeLevel_; }

void BKQTape::setTapeLevel(unsigned short level) { tapeLevel_ = level; }

const RWCollectableString& BKQTape::getPath() const { return path_; }

void BKQTape::setPath(const char* path) { path_ = path; }

const RWCollectableString& BKQTape::getLocation() const { return location_; }

void BKQTape::setLocation(const char* location) { location_ = location; }

unsigned int BKQTape::getTapeID() const { return tapeId_; }

void BKQTape::setTapeID(unsigned int id) { tapeId_ = id; }

unsigned char BKQTape::getTapeSeq() const { return tapeSeq_; }

void BKQTape::setTapeSeq(unsigned char sequence) { tapeSeq_ = sequence; }

const RWCollectableString& BKQTape::getMediaName() const { return mediaName_; }

void BKQTape::setMediaName(const char* name) { mediaName_ = name; }

unsigned int BKQTape::getSerialNumber() const { return serialNumber_; }

void BKQTape::setSerialNumber(unsigned int number) { serialNumber_ = number; }

const RWCollectableString& BKQTape::getTapeSerialNumber() const { return tapeSerialNumber_; }

void BKQTape::setTapeSerialNumber(const char* number) { tapeSerialNumber_ = number; }

unsigned char BKQTape::getFileSystem() const { return fileSystem_; }

void BKQTape::setFileSystem(unsigned char fileSystem) { fileSystem_ = fileSystem; }

long BKQTape::getSessionEndTime() const { return sessionEndTime_; }

void BKQTape::setSessionEndTime(long seconds) { sessionEndTime_ = seconds; }

unsigned int BKQTape::getOptions() const { return options_; }

void BKQTape::setOptions(unsigned int options) {
  options_ = options;
  if (options == kExtensionMark) getTapeXtension();
}

void BKQTape::setTapeXtension(const BKQTapeXtension& extension) {
  extension_ = const_cast<BKQTapeXtension*>(&extension);
  options_ |= kExtensionMark;
}

BKQTapeXtension* BKQTape::getTapeXtension() {
  if (extension_ == nullptr) extension_ = new (std::nothrow) BKQTapeXtension;
  return extension_;
}

int BKQTape::tapeXtensionExists() { return extension_ != nullptr ? 1 : 0; }

RWCollectable* BKQTape::addTapeItem(BKQTapeItem& item) { return items_.insert(&item); }

unsigned int BKQTape::tapeItemEntries() const { return items_.entries(); }

void BKQTape::resetTapeItems() { itemCursor_ = 0; }

unsigned int BKQTape::enumTapeItems(BKQTapeItemCol*& out, unsigned int n) {
  return bkoq::enumerate(items_, itemCursor_, out, n);
}

RWCollectable* BKQTape::addFilter(BKQFilter& filter) { return filters_.insert(&filter); }

unsigned int BKQTape::filterEntries() const { return filters_.entries(); }

void BKQTape::resetFilters() { filterCursor_ = 0; }

unsigned int BKQTape::enumFilters(BKQFilterCol*& out, unsigned int n) {
  // All means as many as there are items.
  if (n == 0) n = items_.entries();
  return bkoq::enumerateUpTo(filters_, filterCursor_, out, n);
}

void BKQTape::mycopy(BKQTape* source) {
  if (source == nullptr || source == this) return;
  const bkoq::DoubledCopy<BKQTapeItem> items(source->items_);
  const bkoq::DoubledCopy<BKQFilter> filters(source->filters_);
  tapeName_ = source->tapeName_;
  deviceGroup_ = source->deviceGroup_;
  sessionPassword_ = source->sessionPassword_;
  streamNum_ = source->streamNum_;
  sessionNumber_ = source->sessionNumber_;
  qfaBlockNumber_ = source->qfaBlockNumber_;
  tapeLevel_ = source->tapeLevel_;
  path_ = source->path_;
  location_ = source->location_;
  tapeId_ = source->tapeId_;
  tapeSeq_ = source->tapeSeq_;
  mediaName_ = source->mediaName_;
  serialNumber_ = source->serialNumber_;
  tapeSerialNumber_ = source->tapeSerialNumber_;
  fileSystem_ = source->fileSystem_;
  sessionEndTime_ = source->sessionEndTime_;
  options_ = source->options_;
  filterCursor_ = source->filterCursor_;
  itemCursor_ = source->itemCursor_;
  extension_ = source->extension_;
  items.replace(items_);
  filters.replace(filters_);
}
