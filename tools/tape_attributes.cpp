#include "tools/attributes.h"

namespace bkoq::tool {

const FamilyOf<BKQTapeItem>& tapeItems() {
  static const FamilyOf<BKQTapeItem> family = [] {
    FamilyOf<BKQTapeItem> items("tape item");
    items.add<BKQTapeItem>(
        "", "BKQTapeItem", "one part of a tape session",
        [](const Value&) { return new BKQTapeItem; },
        [](Table<BKQTapeItem> t) {
          t.text(
               "fileOrDir", [](BKQTapeItem& item, const char* name) { item.setFileOrDir(name); },
               &BKQTapeItem::getFileOrDir, "file or directory; the record has a \"/\" before it")
              .shown("\"/home\"");
          t.number("chunkNum", &BKQTapeItem::setChunkNum, &BKQTapeItem::getChunkNum,
                   "chunk on the tape");
          t.number("physicalChunkNum", &BKQTapeItem::setPhysicalChunkNum,
                   &BKQTapeItem::getPhysicalChunkNum, "chunk, as the drive counts")
              .unrecorded();
          t.number("chunkOffset", &BKQTapeItem::setChunkOffset, &BKQTapeItem::getChunkOffset,
                   "offset in the chunk")
              .upTo(0xFFFF);
          t.number("options", &BKQTapeItem::setOptions, &BKQTapeItem::getOptions, "option bits");
        });
    return items;
  }();
  return family;
}

const FamilyOf<BKQTapeXtension>& tapeExtensions() {
  static const FamilyOf<BKQTapeXtension> family = [] {
    FamilyOf<BKQTapeXtension> extensions("tape extension");
    extensions.add<BKQTapeXtension>(
        "", "BKQTapeXtension", "database credentials of a tape session",
        [](const Value&) { return new BKQTapeXtension; },
        [](Table<BKQTapeXtension> t) {
          t.text("dbUser", &BKQTapeXtension::setDBuser, &BKQTapeXtension::getDBuser,
                 "account of the database")
              .carriedOnlyIn("current");
          t.text("dbPassword", &BKQTapeXtension::setDBpw, &BKQTapeXtension::getDBpw,
                 "password of that account")
              .carriedOnlyIn("current");
          t.seconds("sessionEndTime", &BKQTapeXtension::setSessionEndTime,
                    &BKQTapeXtension::getSessionEndTime, "end of the session, recorded as given");
          t.number("options", &BKQTapeXtension::setOptions, &BKQTapeXtension::getOptions,
                   "option bits")
              .carriedOnlyIn("current");
        });
    return extensions;
  }();
  return family;
}

const FamilyOf<BKQTape>& tapes() {
  static const FamilyOf<BKQTape> family = [] {
    FamilyOf<BKQTape> tapes("tape");
    tapes.add<BKQTape>(
        "", "BKQTape", "a tape, or a session on one", [](const Value&) { return new BKQTape; },
        [](Table<BKQTape> t) {
          t.text("deviceGroup", &BKQTape::setDeviceGroup, &BKQTape::getDeviceGroup,
                 "group of drives");
          t.text("tapeName", &BKQTape::setTapeName, &BKQTape::getTapeName, "name of the tape")
              .shown("\"TAPE-01\"");
          t.text("sessionPW", &BKQTape::setSessionPW, &BKQTape::getSessionPW,
                 "instead of the job's session password");
          t.number("streamNum", &BKQTape::setStreamNum, &BKQTape::getStreamNum,
                   "stream on the tape")
              .unrecorded();
          t.number("sessionNumber", &BKQTape::setSessionNumber, &BKQTape::getSessionNumber,
                   "session on the tape")
              .shown("1");
          t.number("qfaBlockNumber", &BKQTape::setQFABlockNumber, &BKQTape::getQFABlockNumber,
                   "block to seek");
          t.number("tapeLevel", &BKQTape::setTapeLevel, &BKQTape::getTapeLevel, "level of the tape")
              .unrecorded();
          t.text("path", &BKQTape::setPath, &BKQTape::getPath, "path of the session");
          t.text("location", &BKQTape::setLocation, &BKQTape::getLocation,
                 "where the tape is kept");
          t.number("tapeID", &BKQTape::setTapeID, &BKQTape::getTapeID,
                   "identifies the tape; the current layout has 16 bits for it")
              .cutAbove(0xFFFF);
          t.number("tapeSeq", &BKQTape::setTapeSeq, &BKQTape::getTapeSeq, "tape of a set");
          t.text("mediaName", &BKQTape::setMediaName, &BKQTape::getMediaName, "name of the medium")
              .unrecorded();
          t.number("serialNumber", &BKQTape::setSerialNumber, &BKQTape::getSerialNumber,
                   "serial number of the medium")
              .unrecorded();
          t.text("tapeSerialNumber", &BKQTape::setTapeSerialNumber, &BKQTape::getTapeSerialNumber,
                 "bar code of the medium")
              .unrecorded();
          t.number("fileSystem", &BKQTape::setFileSystem, &BKQTape::getFileSystem,
                   "the server's code");
          t.seconds("sessionEndTime", &BKQTape::setSessionEndTime, &BKQTape::getSessionEndTime,
                    "end of the session, recorded as given")
              .carriedOnlyIn("previous");
          // An extension adds its bit to the options, so it comes after them.
          t.number("options", &BKQTape::setOptions, &BKQTape::getOptions, "option bits");
          t.kept("tapeXtension", tapeExtensions,
                 adopting<BKQTape, BKQTapeXtension>(&BKQTape::setTapeXtension),
                 "database credentials");
          t.parts("tapeItems", tapeItems, &BKQTape::addTapeItem, "what is wanted of the session");
          t.parts("filters", filters, &BKQTape::addFilter, "filters of this tape");
        });
    return tapes;
  }();
  return family;
}

}  // namespace bkoq::tool
