#include "tools/attributes.h"

namespace bkoq::tool {

const FamilyOf<BKQTapeItem>& tapeItems() {
  static const FamilyOf<BKQTapeItem> family = [] {
    FamilyOf<BKQTapeItem> items("tape item");
    items.add<BKQTapeItem>(
        "", "BKQTapeItem", "one part of a tape session",
        [](const Value&) { return new BKQTapeItem; },
        [](Table<BKQTapeItem>& t) {
          t.text(
               "fileOrDir", [](BKQTapeItem& item, const char* name) { item.setFileOrDir(name); },
               "file or directory; pszFileOrDir, with a \"/\" in front")
              .shown("\"/home\"");
          t.number("chunkNum", &BKQTapeItem::setChunkNum, "chunk on the tape; ulChunkNum");
          t.number("physicalChunkNum", &BKQTapeItem::setPhysicalChunkNum, "in no record");
          t.number("chunkOffset", &BKQTapeItem::setChunkOffset, "in the chunk; usChunkOffset")
              .upTo(0xFFFF);
          t.number("options", &BKQTapeItem::setOptions, "option bits; ulOptions");
        });
    return items;
  }();
  return family;
}

const FamilyOf<BKQTapeXtension>& tapeExtensions() {
  static const FamilyOf<BKQTapeXtension> family = [] {
    FamilyOf<BKQTapeXtension> extensions("tape extension");
    extensions.add<BKQTapeXtension>(
        "", "BKQTapeXtension", "database credentials of a tape session; pTapeX",
        [](const Value&) { return new BKQTapeXtension; },
        [](Table<BKQTapeXtension>& t) {
          t.text("dbUser", &BKQTapeXtension::setDBuser, "pszDBUser");
          t.text("dbPassword", &BKQTapeXtension::setDBpw, "pszDBPW");
          t.seconds("sessionEndTime", &BKQTapeXtension::setSessionEndTime,
                    "lSessionEndTime, as given");
          t.number("options", &BKQTapeXtension::setOptions, "option bits; ulOptions");
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
        [](Table<BKQTape>& t) {
          t.text("deviceGroup", &BKQTape::setDeviceGroup, "group of drives; pszDeviceGroup");
          t.text("tapeName", &BKQTape::setTapeName, "pszTapeName").shown("\"TAPE-01\"");
          t.text("sessionPW", &BKQTape::setSessionPW,
                 "instead of the job's session password; pszSessionPW");
          t.number("streamNum", &BKQTape::setStreamNum, "in no record");
          t.number("sessionNumber", &BKQTape::setSessionNumber,
                   "session on the tape; usSessionNumber")
              .shown("1");
          t.number("qfaBlockNumber", &BKQTape::setQFABlockNumber,
                   "block to seek; ulQFABlockNumber");
          t.number("tapeLevel", &BKQTape::setTapeLevel, "in no record");
          t.text("path", &BKQTape::setPath, "pszPath");
          t.text("location", &BKQTape::setLocation, "where the tape lies; pszLocation");
          t.number("tapeID", &BKQTape::setTapeID,
                   "usTapeID, low 16 bits; ulTapeID in the previous layout");
          t.number("tapeSeq", &BKQTape::setTapeSeq, "tape of a set; usTapeSeq");
          t.text("mediaName", &BKQTape::setMediaName, "in no record");
          t.number("serialNumber", &BKQTape::setSerialNumber, "in no record");
          t.text("tapeSerialNumber", &BKQTape::setTapeSerialNumber, "in no record");
          t.number("fileSystem", &BKQTape::setFileSystem, "the server's code; usFileSystem");
          t.seconds("sessionEndTime", &BKQTape::setSessionEndTime,
                    "lSessionEndTime of the previous layout, as given");
          // An extension adds its bit to the options, so it comes behind.
          t.number("options", &BKQTape::setOptions, "option bits; ulOptions");
          t.kept("tapeXtension", tapeExtensions,
                 adopting<BKQTape, BKQTapeXtension>(&BKQTape::setTapeXtension),
                 "database credentials; pTapeX");
          t.parts("tapeItems", tapeItems, &BKQTape::addTapeItem,
                  "what is wanted of the session; pTapeItems");
          t.parts("filters", filters, &BKQTape::addFilter, "pFilters of the tape");
        });
    return tapes;
  }();
  return family;
}

}  // namespace bkoq::tool
