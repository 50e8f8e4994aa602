#ifndef BKOQ_TRANSFER_TAPE_STEPS_H_
#define BKOQ_TRANSFER_TAPE_STEPS_H_

#include "transfer/flatten.h"

namespace bkoq {

constexpr uint32_t kTapeOptionExtension = 0x8000000;

template <class Layout>
int Flattening::Into<Layout>::tape(BKQTape& tape, void*& rec) {
  if (rec == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::Tape*>(rec);
  storeText(record.pszDeviceGroup, tape.deviceGroup_);
  storeText(record.pszTapeName, tape.tapeName_);
  Layout::storeTapeId(record, tape.tapeId_);
  record.usTapeSeq = tape.tapeSeq_;
  record.usSessionNumber = tape.sessionNumber_;
  record.ulQFABlockNumber = tape.qfaBlockNumber_;
  record.usNewTapeTimeout = static_cast<uint16_t>(Layout::newTapeTimeout());
  record.usSpanTapeTimeout = static_cast<uint16_t>(Layout::spanTapeTimeout());
  record.usNewTapeMethod = static_cast<uint16_t>(Layout::newTapeMethod());
  record.usSpanTapeMethod = static_cast<uint16_t>(Layout::spanTapeMethod());
  if (!tape.sessionPassword_.isNull()) {
    record.pszSessionPW = duplicate(tape.sessionPassword_);
  } else if (Layout::tapeSessionPassword() != nullptr) {
    record.pszSessionPW = duplicate(Layout::tapeSessionPassword());
  }
  record.usFileSystem = tape.fileSystem_;
  record.ulOptions = tape.options_;
  storeText(record.pszPath, tape.path_);
  storeText(record.pszLocation, tape.location_);
  if (!Layout::storeExtension(record, tape.extension_, tape.sessionEndTime_)) return 0;

  if (!tape.items_.isEmpty()) moveCursorToEnd(tape.items_, tape.itemCursor_);
  for (unsigned int i = 0; i < tape.items_.entries(); ++i) {
    void* element = appendRecord(record.ulTapeItemCount, record.pTapeItems, Layout::kTapeItem);
    if (element == nullptr) return 0;
    auto& item = *static_cast<BKQTapeItem*>(tape.items_.at(i));
    if (!Layout::convertDirectly(item, element)) return failedToConvert("TapeItem");
  }

  return addOwnFilters(record.ulFilterCount, record.pFilters, Layout::kFilter, tape.filters_,
                       tape.filterCursor_);
}

template <class Layout>
int Flattening::Into<Layout>::tapeItem(BKQTapeItem& item, void*& rec) {
  if (rec == nullptr) return noRecord();
  auto& record = *static_cast<typename Layout::TapeItem*>(rec);
  record.ulChunkNum = item.chunkNum_;
  record.usChunkOffset = item.chunkOffset_;
  record.ulOptions = item.options_;
  const Text name(item.fileOrDir_);
  if (name.isEmpty()) return 1;
  // The server's form of a path begins with "//"; anything else gets one "/", also "/etc".
  const bool isServerForm = name.data[0] == '/' && name.data[1] == '/';
  record.pszFileOrDir = isServerForm ? duplicate(name) : joinTexts("/", name, 1);
  return 1;
}

template <class Layout>
int Flattening::Into<Layout>::tapeExtension(BKQTapeXtension& extension, void*& rec) {
  if (rec == nullptr) return noRecord();
  auto& record = *static_cast<BKDTAPEX*>(rec);
  storeText(record.pszDBUser, extension.dbUser_);
  storeText(record.pszDBPW, extension.dbPassword_);
  record.lSessionEndTime = extension.sessionEndTime_;
  record.ulOptions = extension.options_;
  return 1;
}

}  // namespace bkoq

#endif  // BKOQ_TRANSFER_TAPE_STEPS_H_
