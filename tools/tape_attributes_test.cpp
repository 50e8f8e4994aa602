#include "tools/attribute_cases.h"

namespace bkoq::tool {

void addTapes(std::vector<ClassCase>& cases) {
  cases.push_back(makeCase<BKQTape>(
      tapes, "",
      R"({"kind": "restore", "jobName": "", "sourceNodes": [{"nodeName": "", "tapes": [@]}]})",
      tapeOf, [](AttributeRows<BKQTape>& rows) {
        rows.text("deviceGroup", &BKQTape::getDeviceGroup, "GROUP")
            .text("tapeName", &BKQTape::getTapeName, "TAPE-01")
            .text("sessionPW", &BKQTape::getSessionPW, "session's password")
            .number("streamNum", &BKQTape::getStreamNum, 201)
            .number("sessionNumber", &BKQTape::getSessionNumber, 302)
            .number("qfaBlockNumber", &BKQTape::getQFABlockNumber, 70303)
            .number("tapeLevel", &BKQTape::getTapeLevel, 304)
            .text("path", &BKQTape::getPath, "/home")
            .text("location", &BKQTape::getLocation, "cellar")
            .number("tapeID", &BKQTape::getTapeID, 70305)
            .number("tapeSeq", &BKQTape::getTapeSeq, 206)
            .text("mediaName", &BKQTape::getMediaName, "medium")
            .number("serialNumber", &BKQTape::getSerialNumber, 70307)
            .text("tapeSerialNumber", &BKQTape::getTapeSerialNumber, "bar code")
            .number("fileSystem", &BKQTape::getFileSystem, 208)
            .number("sessionEndTime", &BKQTape::getSessionEndTime, -70309)
            .row("options", R"("0x8000010")", &BKQTape::getOptions, std::to_string(0x8000010))
            .row(
                "tapeXtension", R"({"dbUser": "database's user"})",
                [](BKQTape& tape) { return of(extensionOf(&tape), &BKQTapeXtension::getDBuser); },
                "database's user")
            .also("options", std::to_string(0x8000000))
            .row(
                "tapeItems", R"([{"fileOrDir": "/home/a"}, {"fileOrDir": "/home/b"}])",
                [](BKQTape& tape) {
                  return ofEach(elements<BKQTapeItem>(&tape, &BKQTape::resetTapeItems,
                                                      &BKQTape::enumTapeItems),
                                &BKQTapeItem::getFileOrDir);
                },
                "/home/a, /home/b")
            .row(
                "filters", kTwoFilters,
                [](BKQTape& tape) {
                  return filtersOf(tape, &BKQTape::resetFilters, &BKQTape::enumFilters);
                },
                kTwoFiltersShown);
      }));
  cases.push_back(makeCase<BKQTapeItem>(
      tapeItems, "",
      R"({"kind": "restore", "jobName": "",
          "sourceNodes": [{"nodeName": "", "tapes": [{"tapeItems": [@]}]}]})",
      tapeItemOf, [](AttributeRows<BKQTapeItem>& rows) {
        rows.text("fileOrDir", &BKQTapeItem::getFileOrDir, "/home/a")
            .number("chunkNum", &BKQTapeItem::getChunkNum, 70301)
            .number("physicalChunkNum", &BKQTapeItem::getPhysicalChunkNum, 70302)
            .number("chunkOffset", &BKQTapeItem::getChunkOffset, 303)
            .number("options", &BKQTapeItem::getOptions, 70304);
      }));
  cases.push_back(makeCase<BKQTapeXtension>(
      tapeExtensions, "",
      R"({"kind": "restore", "jobName": "",
          "sourceNodes": [{"nodeName": "", "tapes": [{"tapeXtension": @}]}]})",
      [](BKQJob& job) { return extensionOf(tapeOf(job)); },
      [](AttributeRows<BKQTapeXtension>& rows) {
        rows.text("dbUser", &BKQTapeXtension::getDBuser, "database's user")
            .text("dbPassword", &BKQTapeXtension::getDBpw, "database's password")
            // Seconds of the client's, as a time.
            .row("sessionEndTime", R"("1970-01-02T01:00:00")", &BKQTapeXtension::getSessionEndTime,
                 std::to_string(25 * 3600))
            .number("options", &BKQTapeXtension::getOptions, 70301);
      }));
}

}  // namespace bkoq::tool
