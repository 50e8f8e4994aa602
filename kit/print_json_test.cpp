#include <gtest/gtest.h>

#include "kit/test_print.h"

namespace bkoq::test {
namespace {

TEST(PrintJson, HoldsTheWholeTree) {
  BkoqPrintOptions options = withoutZeros();
  options.format = BKOQ_FORMAT_JSON;
  EXPECT_EQ(printed(previousBackup(), options), expected(R"(
{
  "format": "bkoq-tree",
  "version": 1,
  "layout": "previous",
  "job": {"record": "BKQJDATATRANSFER_OLD", "block": 1, "offset": 0, "size": 292, "fields": {
    "usJobType": {"offset": 4, "width": 2, "kind": "number", "value": 20, "hex": "0x0014", "word": "rotation backup"},
    "usJobStatus": {"offset": 8, "width": 2, "kind": "number", "value": 2, "hex": "0x0002"},
    "ulNumSourceNodes": {"offset": 12, "width": 4, "kind": "count", "value": 2, "hex": "0x00000002"},
    "pSourceNodes": {"offset": 16, "width": 4, "kind": "array", "block": 2, "size": 200, "count": 2, "value": [
      {"record": "BKNODE_OLD", "block": 2, "offset": 0, "size": 100, "fields": {
        "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 3, "hex": "0x0003", "word": "UNIX"},
        "usNodeOS": {"offset": 2, "width": 2, "kind": "number", "value": 6, "hex": "0x0006", "word": "UNIX"},
        "pszNodeOSVer": {"offset": 4, "width": 4, "kind": "two texts", "block": 3, "size": 5, "value": ["5.8", ""]},
        "pszNodeName": {"offset": 8, "width": 4, "kind": "two texts", "block": 4, "size": 13, "value": ["ledger", "extra"]},
        "pszPassword": {"offset": 20, "width": 4, "kind": "text", "block": 5, "value": "********", "masked": true},
        "ulFilterCount": {"offset": 24, "width": 4, "kind": "count", "value": 5, "hex": "0x00000005"},
        "pFilters": {"offset": 28, "width": 4, "kind": "array", "block": 6, "size": 160, "count": 5, "value": [
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 0, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 2, "hex": "0x0002", "word": "file"},
            "ulFilterCount": {"offset": 4, "width": 4, "kind": "number", "value": 1, "hex": "0x00000001"},
            "pszFilter": {"offset": 8, "width": 4, "kind": "text", "block": 7, "size": 6, "value": "*.tmp"},
            "usFilterLen": {"offset": 12, "width": 2, "kind": "number", "value": 6, "hex": "0x0006"}
          }},
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 32, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 5, "hex": "0x0005", "word": "attribute"},
            "usInclExcl": {"offset": 2, "width": 2, "kind": "number", "value": 1, "hex": "0x0001", "word": "exclude"},
            "ulAttributes": {"offset": 4, "width": 4, "kind": "flags", "value": 2147483649, "hex": "0x80000001"}
          }},
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 64, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 4, "hex": "0x0004", "word": "time"},
            "usTimeRange": {"offset": 6, "width": 2, "kind": "number", "value": 1, "hex": "0x0001", "word": "after"},
            "lTime": {"offset": 8, "width": 4, "kind": "time", "value": 1078070400, "date": "2004-02-29 16:00:00"}
          }},
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 96, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 4, "hex": "0x0004", "word": "time"},
            "usTimeRange": {"offset": 6, "width": 2, "kind": "number", "value": 2, "hex": "0x0002", "word": "between"},
            "lStartTime": {"offset": 8, "width": 4, "kind": "time", "value": 1078070400, "date": "2004-02-29 16:00:00"},
            "lEndTime": {"offset": 12, "width": 4, "kind": "time", "value": 1078156800, "date": "2004-03-01 16:00:00"}
          }},
          {"record": "BKFILTER_FILE_OLD", "block": 6, "offset": 128, "size": 32, "fields": {
            "usFilterType": {"offset": 0, "width": 2, "kind": "number", "value": 4, "hex": "0x0004", "word": "time"},
            "usTimeRange": {"offset": 6, "width": 2, "kind": "number", "value": 3, "hex": "0x0003", "word": "within"},
            "ulTimeUnits": {"offset": 8, "width": 4, "kind": "number", "value": 7, "hex": "0x00000007"},
            "usTimeUnitType": {"offset": 16, "width": 2, "kind": "number", "value": 2, "hex": "0x0002"}
          }}]},
        "ulMediaCount": {"offset": 36, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
        "pMedia": {"offset": 40, "width": 4, "kind": "array", "block": 8, "size": 52, "count": 1, "value": [
          {"record": "BKDDISK_OLD", "block": 8, "offset": 0, "size": 52, "fields": {
            "pszDiskName": {"offset": 0, "width": 4, "kind": "text", "block": 9, "size": 6, "value": "/home"},
            "ulDiskItemCount": {"offset": 16, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
            "pDiskItems": {"offset": 20, "width": 4, "kind": "array", "block": 10, "size": 32, "count": 1, "value": [
              {"record": "BKDISKITEM_OLD", "block": 10, "offset": 0, "size": 32, "fields": {
                "pszPath": {"offset": 0, "width": 4, "kind": "text", "block": 11, "size": 14, "value": "/home/ledgers"},
                "ulFileCount": {"offset": 4, "width": 4, "kind": "count", "value": 2, "hex": "0x00000002"},
                "pFileList": {"offset": 8, "width": 4, "kind": "text list", "block": 12, "size": 16, "value": ["2003.db", "2004.db"]}
              }}]},
            "usDiskType": {"offset": 24, "width": 2, "kind": "number", "value": 5, "hex": "0x0005"},
            "ulOptions": {"offset": 28, "width": 4, "kind": "flags", "value": 24593, "hex": "0x00006011", "word": "compression, encryption, 0x00000011"},
            "pszDiskPW2": {"offset": 36, "width": 4, "kind": "two texts", "block": 13, "value": ["ops", "********"], "masked": true},
            "pszEncryptionKey": {"offset": 44, "width": 4, "kind": "text", "block": 14, "value": "********", "masked": true}
          }}]},
        "ulNodeOptions": {"offset": 56, "width": 4, "kind": "flags", "value": 864, "hex": "0x00000360", "word": "no estimate, a text follows the name, 0x00000120"}
      }},
      {"record": "BKNODE_OLD", "block": 2, "offset": 100, "size": 100, "fields": {
        "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 9, "hex": "0x0009", "word": "Windows NT"},
        "pszNodeName": {"offset": 8, "width": 4, "kind": "text", "block": 15, "size": 8, "value": "payroll"}
      }}]},
    "ulNumDestNodes": {"offset": 20, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
    "pDestNodes": {"offset": 24, "width": 4, "kind": "array", "block": 16, "size": 100, "count": 1, "value": [
      {"record": "BKNODE_OLD", "block": 16, "offset": 0, "size": 100, "fields": {
        "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 3, "hex": "0x0003", "word": "tape node"},
        "pszNodeName": {"offset": 8, "width": 4, "kind": "text", "block": 17, "size": 9, "value": "library1"},
        "usDeviceType": {"offset": 32, "width": 2, "kind": "number", "value": 1, "hex": "0x0001"},
        "ulMediaCount": {"offset": 36, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
        "pMedia": {"offset": 40, "width": 4, "kind": "array", "block": 18, "size": 72, "count": 1, "value": [
          {"record": "BKDTAPE_OLD", "block": 18, "offset": 0, "size": 72, "fields": {
            "pszTapeName": {"offset": 4, "width": 4, "kind": "text", "block": 19, "size": 9, "value": "NIGHT-01"},
            "ulTapeID": {"offset": 8, "width": 4, "kind": "number", "value": 74565, "hex": "0x00012345"},
            "usSessionNumber": {"offset": 14, "width": 2, "kind": "number", "value": 17, "hex": "0x0011"},
            "ulTapeItemCount": {"offset": 40, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
            "pTapeItems": {"offset": 44, "width": 4, "kind": "array", "block": 20, "size": 32, "count": 1, "value": [
              {"record": "BKTAPEITEM_OLD", "block": 20, "offset": 0, "size": 32, "fields": {
                "ulChunkNum": {"offset": 0, "width": 4, "kind": "number", "value": 7, "hex": "0x00000007"},
                "pszFileOrDir": {"offset": 8, "width": 4, "kind": "text", "block": 21, "size": 12, "value": "/etc/passwd"}
              }}]},
            "lSessionEndTime": {"offset": 64, "width": 4, "kind": "client time", "value": 1000, "date": "1970-01-01 00:16:40"}
          }}]}
      }}]},
    "pszOwner": {"offset": 28, "width": 4, "kind": "text", "block": 22, "size": 9, "value": "operator"},
    "stSchedule": {"offset": 56, "width": 18, "kind": "embedded", "value": {"record": "BKSCHEDINFO_OLD", "block": 1, "offset": 56, "size": 18, "fields": {
        "lSubmitTime": {"offset": 0, "width": 4, "kind": "time", "value": 1078156800, "date": "2004-03-01 16:00:00"},
        "lExecTime": {"offset": 4, "width": 4, "kind": "time", "value": -1, "date": "1969-12-31 23:59:59"}
      }}},
    "stOpenFile": {"offset": 104, "width": 12, "kind": "embedded", "value": {"record": "BKOFINFO_OLD", "block": 1, "offset": 104, "size": 12, "fields": {
        "ulFActions": {"offset": 0, "width": 4, "kind": "flags", "value": 3, "hex": "0x00000003"}
      }}},
    "stFax": {"offset": 132, "width": 24, "kind": "embedded", "value": {"record": "BKFAXINFO_OLD", "block": 1, "offset": 132, "size": 24, "fields": {
        "pszHostName": {"offset": 0, "width": 4, "kind": "text", "block": 23, "size": 8, "value": "faxhost"},
        "pszUserPW": {"offset": 8, "width": 4, "kind": "text", "block": 24, "value": "********", "masked": true},
        "pszReceiverName": {"offset": 20, "width": 4, "kind": "text", "block": 25, "size": 12, "value": "night shift"}
      }}},
    "stScheduleExt": {"offset": 196, "width": 48, "kind": "embedded", "value": {"record": "BKROTATIONINFO_OLD", "block": 1, "offset": 196, "size": 48, "fields": {
        "pszSetName": {"offset": 0, "width": 4, "kind": "text", "block": 26, "size": 9, "value": "NIGHTSET"},
        "abJobTypes": {"offset": 12, "width": 8, "kind": "byte list", "value": [1, 2, 0, 0, 0, 0, 0, 0]}
      }}},
    "ulOptions": {"offset": 256, "width": 4, "kind": "flags", "value": 1048584, "hex": "0x00100008", "word": "no estimate, 0x00000008"}
  }}
}
)"));
}

TEST(PrintJson, ListsRecordsOfOneName) {
  BkoqPrintOptions options = withoutZeros();
  options.format = BKOQ_FORMAT_JSON;
  options.onlyRecord = "BKNODE";
  EXPECT_EQ(printed(currentBackup(), options), expected(R"(
{
  "format": "bkoq-records",
  "version": 1,
  "layout": "current",
  "records": [
    {"record": "BKNODE", "path": "pSourceNodes[0]", "block": 2, "offset": 0, "size": 100, "fields": {
      "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 3, "hex": "0x0003", "word": "UNIX"},
      "usNodeOS": {"offset": 2, "width": 2, "kind": "number", "value": 6, "hex": "0x0006", "word": "UNIX"},
      "pszNodeOSVer": {"offset": 4, "width": 4, "kind": "two texts", "block": 3, "size": 5, "value": ["5.8", ""]},
      "pszNodeName": {"offset": 8, "width": 4, "kind": "two texts", "block": 4, "size": 13, "value": ["ledger", "extra"]},
      "pszPassword": {"offset": 20, "width": 4, "kind": "text", "block": 5, "value": "********", "masked": true},
      "ulFilterCount": {"offset": 24, "width": 4, "kind": "count", "value": 5, "hex": "0x00000005"},
      "pFilters": {"offset": 28, "width": 4, "kind": "array", "block": 6, "size": 160, "count": 5},
      "ulMediaCount": {"offset": 36, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
      "pMedia": {"offset": 40, "width": 4, "kind": "array", "block": 8, "size": 52, "count": 1},
      "ulNodeOptions": {"offset": 56, "width": 4, "kind": "flags", "value": 864, "hex": "0x00000360", "word": "no estimate, a text follows the name, 0x00000120"},
      "pszNodeDomain": {"offset": 84, "width": 4, "kind": "text", "block": 15, "size": 11, "value": "accounting"}
    }},
    {"record": "BKNODE", "path": "pSourceNodes[1]", "block": 2, "offset": 100, "size": 100, "fields": {
      "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 9, "hex": "0x0009", "word": "Windows NT"},
      "pszNodeName": {"offset": 8, "width": 4, "kind": "text", "block": 16, "size": 8, "value": "payroll"}
    }},
    {"record": "BKNODE", "path": "pDestNodes[0]", "block": 17, "offset": 0, "size": 100, "fields": {
      "usNodeType": {"offset": 0, "width": 2, "kind": "number", "value": 3, "hex": "0x0003", "word": "tape node"},
      "pszNodeName": {"offset": 8, "width": 4, "kind": "text", "block": 18, "size": 9, "value": "library1"},
      "usDeviceType": {"offset": 32, "width": 2, "kind": "number", "value": 1, "hex": "0x0001"},
      "ulMediaCount": {"offset": 36, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
      "pMedia": {"offset": 40, "width": 4, "kind": "array", "block": 19, "size": 72, "count": 1}
    }}
  ]
}
)"));
}

TEST(PrintJson, TellsWhatItCannotFollow) {
  const CurrentTree job = currentJob(99);
  auto* nodes = give<BKNODE>(job->ulNumSourceNodes, job->pSourceNodes, 2);
  int somewhere = 0;
  nodes[0].pMedia = &somewhere;
  auto& filter = *give<BKFILTER_FILE>(nodes[0].ulFilterCount, nodes[0].pFilters, 1);
  filter.usFilterType = 6;
  filter.ulTimeUnits = 0x12345678;
  BkoqPrintOptions options{};
  const auto field = [&](BkoqFormat format, const char* name, int which) {
    options.format = format;
    const std::string all = printed(job, options);
    std::size_t at = all.find(name);
    for (int i = 0; i < which; ++i) at = all.find(name, at + 1);
    return all.substr(at, all.find('\n', at) - at);
  };
  const std::string start = "pMedia\": {\"offset\": 40, \"width\": 4, \"kind\": \"opaque\", ";
  EXPECT_EQ(field(BKOQ_FORMAT_JSON, "pMedia", 0), start + "\"value\": \"not followed\"},");
  EXPECT_EQ(field(BKOQ_FORMAT_JSON, "pMedia", 1), start + "\"value\": null},");
  EXPECT_EQ(
      field(BKOQ_FORMAT_JSON, "ulOpaque8", 0),
      "ulOpaque8\": {\"offset\": 8, \"width\": 4, \"kind\": \"opaque\", \"value\": 305419896, "
      "\"hex\": \"0x12345678\"},");
  EXPECT_EQ(field(BKOQ_FORMAT_PLAIN_JSON, "pMedia", 0), "pMedia\": null,");
  EXPECT_EQ(field(BKOQ_FORMAT_PLAIN_JSON, "pMedia", 1), "pMedia\": null,");
  EXPECT_EQ(field(BKOQ_FORMAT_PLAIN_JSON, "ulOpaque8", 0), "ulOpaque8\": 305419896,");
}

TEST(PrintJson, StopsAtADepth) {
  BkoqPrintOptions options = withoutZeros();
  options.format = BKOQ_FORMAT_JSON;
  options.depth = 1;
  EXPECT_EQ(printed(currentBackup(), options), expected(R"(
{
  "format": "bkoq-tree",
  "version": 1,
  "layout": "current",
  "job": {"record": "BKQJDATATRANSFER", "block": 1, "offset": 0, "size": 292, "fields": {
    "usJobType": {"offset": 4, "width": 2, "kind": "number", "value": 20, "hex": "0x0014", "word": "rotation backup"},
    "usJobStatus": {"offset": 8, "width": 2, "kind": "number", "value": 2, "hex": "0x0002"},
    "ulNumSourceNodes": {"offset": 12, "width": 4, "kind": "count", "value": 2, "hex": "0x00000002"},
    "pSourceNodes": {"offset": 16, "width": 4, "kind": "array", "block": 2, "size": 200, "count": 2},
    "ulNumDestNodes": {"offset": 20, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
    "pDestNodes": {"offset": 24, "width": 4, "kind": "array", "block": 17, "size": 100, "count": 1},
    "pszOwner": {"offset": 28, "width": 4, "kind": "text", "block": 26, "size": 9, "value": "operator"},
    "stSchedule": {"offset": 56, "width": 18, "kind": "embedded"},
    "stOpenFile": {"offset": 104, "width": 12, "kind": "embedded"},
    "stFax": {"offset": 132, "width": 24, "kind": "embedded"},
    "stScheduleExt": {"offset": 196, "width": 48, "kind": "embedded"},
    "ulOptions": {"offset": 256, "width": 4, "kind": "flags", "value": 1048584, "hex": "0x00100008", "word": "no estimate, 0x00000008"}
  }}
}
)"));
}

// Of what a pattern is about, as deep as asked for, as far to the left as if it were all there is.
TEST(PrintJson, GivesWhatAPatternIsAboutToADepth) {
  const CurrentTree job = currentBackup();
  struct Case {
    const char* pattern;
    BkoqFormat format;
    unsigned int depth;
    const char* text;  // of the matches
  };
  const Case cases[] = {
      // Embedded records, which nothing but their own end ends.
      {"stSchedule*", BKOQ_FORMAT_JSON, 0, R"(
  "matches": [
    {"path": "stSchedule", "field": {"name": "stSchedule", "offset": 56, "width": 18, "kind": "embedded", "value": {"record": "BKSCHEDINFO", "block": 1, "offset": 56, "size": 18, "fields": {
          "lSubmitTime": {"offset": 0, "width": 4, "kind": "time", "value": 1078156800, "date": "2004-03-01 16:00:00"},
          "lExecTime": {"offset": 4, "width": 4, "kind": "time", "value": -1, "date": "1969-12-31 23:59:59"}
        }}}},
    {"path": "stScheduleExt", "field": {"name": "stScheduleExt", "offset": 196, "width": 48, "kind": "embedded", "value": {"record": "BKROTATIONINFO", "block": 1, "offset": 196, "size": 48, "fields": {
          "pszSetName": {"offset": 0, "width": 4, "kind": "text", "block": 29, "size": 9, "value": "NIGHTSET"}
        }}}}
  ]
}
)"},
      // Fields, whose records are one level further in.
      {"p*Nodes[*].pMedia", BKOQ_FORMAT_PLAIN_JSON, 0, R"(
  "matches": [
    {"path": "pSourceNodes[0].pMedia", "value": [
        {
          "pszDiskName": "/home",
          "ulDiskItemCount": 1,
          "pDiskItems": [
            {
              "pszPath": "/home/ledgers",
              "ulFileCount": 2,
              "pFileList": ["2003.db", "2004.db"]
            }],
          "usDiskType": 5,
          "ulOptions": 24593,
          "pszDiskPW2": ["ops", "********"],
          "pszEncryptionKey": "********"
        }]},
    {"path": "pDestNodes[0].pMedia", "value": [
        {
          "pszTapeName": "NIGHT-01",
          "usTapeID": 9029,
          "usSessionNumber": 17,
          "ulTapeItemCount": 1,
          "pTapeItems": [
            {
              "ulChunkNum": 7,
              "pszFileOrDir": "/etc/passwd"
            }],
          "ulOptions": 134217728,
          "pTapeX": {
              "pszDBUser": "sa",
              "pszDBPW": "********",
              "lSessionEndTime": 1000
            }
        }]}
  ]
}
)"},
      // Records.
      {"p*Nodes[*].pMedia[*]", BKOQ_FORMAT_JSON, 0, R"(
  "matches": [
    {"path": "pSourceNodes[0].pMedia[0]", "record": {"record": "BKDDISK", "block": 8, "offset": 0, "size": 52, "fields": {
      "pszDiskName": {"offset": 0, "width": 4, "kind": "text", "block": 9, "size": 6, "value": "/home"},
      "ulDiskItemCount": {"offset": 16, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
      "pDiskItems": {"offset": 20, "width": 4, "kind": "array", "block": 10, "size": 32, "count": 1, "value": [
        {"record": "BKDISKITEM", "block": 10, "offset": 0, "size": 32, "fields": {
          "pszPath": {"offset": 0, "width": 4, "kind": "text", "block": 11, "size": 14, "value": "/home/ledgers"},
          "ulFileCount": {"offset": 4, "width": 4, "kind": "count", "value": 2, "hex": "0x00000002"},
          "pFileList": {"offset": 8, "width": 4, "kind": "text list", "block": 12, "size": 16, "value": ["2003.db", "2004.db"]}
        }}]},
      "usDiskType": {"offset": 24, "width": 2, "kind": "number", "value": 5, "hex": "0x0005"},
      "ulOptions": {"offset": 28, "width": 4, "kind": "flags", "value": 24593, "hex": "0x00006011", "word": "compression, encryption, 0x00000011"},
      "pszDiskPW2": {"offset": 36, "width": 4, "kind": "two texts", "block": 13, "value": ["ops", "********"], "masked": true},
      "pszEncryptionKey": {"offset": 44, "width": 4, "kind": "text", "block": 14, "value": "********", "masked": true}
    }}},
    {"path": "pDestNodes[0].pMedia[0]", "record": {"record": "BKDTAPE", "block": 19, "offset": 0, "size": 72, "fields": {
      "pszTapeName": {"offset": 4, "width": 4, "kind": "text", "block": 20, "size": 9, "value": "NIGHT-01"},
      "usTapeID": {"offset": 8, "width": 2, "kind": "number", "value": 9029, "hex": "0x2345"},
      "usSessionNumber": {"offset": 14, "width": 2, "kind": "number", "value": 17, "hex": "0x0011"},
      "ulTapeItemCount": {"offset": 40, "width": 4, "kind": "count", "value": 1, "hex": "0x00000001"},
      "pTapeItems": {"offset": 44, "width": 4, "kind": "array", "block": 21, "size": 32, "count": 1, "value": [
        {"record": "BKTAPEITEM", "block": 21, "offset": 0, "size": 32, "fields": {
          "ulChunkNum": {"offset": 0, "width": 4, "kind": "number", "value": 7, "hex": "0x00000007"},
          "pszFileOrDir": {"offset": 8, "width": 4, "kind": "text", "block": 22, "size": 12, "value": "/etc/passwd"}
        }}]},
      "ulOptions": {"offset": 52, "width": 4, "kind": "flags", "value": 134217728, "hex": "0x08000000", "word": "extension"},
      "pTapeX": {"offset": 68, "width": 4, "kind": "record", "block": 23, "size": 64, "count": 1, "value": {"record": "BKDTAPEX", "block": 23, "offset": 0, "size": 64, "fields": {
          "pszDBUser": {"offset": 0, "width": 4, "kind": "text", "block": 24, "size": 3, "value": "sa"},
          "pszDBPW": {"offset": 4, "width": 4, "kind": "text", "block": 25, "value": "********", "masked": true},
          "lSessionEndTime": {"offset": 8, "width": 4, "kind": "client time", "value": 1000, "date": "1970-01-01 00:16:40"}
        }}}
    }}}
  ]
}
)"},
      {"pDestNodes[*]", BKOQ_FORMAT_PLAIN_JSON, 0, R"(
  "matches": [
    {"path": "pDestNodes[0]", "value": {
      "usNodeType": 3,
      "pszNodeName": "library1",
      "usDeviceType": 1,
      "ulMediaCount": 1,
      "pMedia": [
        {
          "pszTapeName": "NIGHT-01",
          "usTapeID": 9029,
          "usSessionNumber": 17,
          "ulTapeItemCount": 1,
          "pTapeItems": [
            {
              "ulChunkNum": 7,
              "pszFileOrDir": "/etc/passwd"
            }],
          "ulOptions": 134217728,
          "pTapeX": {
              "pszDBUser": "sa",
              "pszDBPW": "********",
              "lSessionEndTime": 1000
            }
        }]
    }}
  ]
}
)"},
      {"pDestNodes[*]", BKOQ_FORMAT_PLAIN_JSON, 1, R"(
  "matches": [
    {"path": "pDestNodes[0]", "value": {
      "usNodeType": 3,
      "pszNodeName": "library1",
      "usDeviceType": 1,
      "ulMediaCount": 1,
      "pMedia": null
    }}
  ]
}
)"},
      {"pDestNodes[*]", BKOQ_FORMAT_PLAIN_JSON, 2, R"(
  "matches": [
    {"path": "pDestNodes[0]", "value": {
      "usNodeType": 3,
      "pszNodeName": "library1",
      "usDeviceType": 1,
      "ulMediaCount": 1,
      "pMedia": [
        {
          "pszTapeName": "NIGHT-01",
          "usTapeID": 9029,
          "usSessionNumber": 17,
          "ulTapeItemCount": 1,
          "pTapeItems": null,
          "ulOptions": 134217728,
          "pTapeX": null
        }]
    }}
  ]
}
)"},
  };
  for (const Case& each : cases) {
    BkoqPrintOptions options = withoutZeros();
    options.format = each.format;
    options.depth = each.depth;
    std::string text;
    EXPECT_EQ(bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, each.pattern, &options, appendToString,
                             &text),
              BKOQ_OK);
    const std::size_t begin = text.find("  \"matches\"");
    ASSERT_NE(begin, std::string::npos);
    EXPECT_EQ(text.substr(begin), expected(each.text)) << each.pattern << " " << each.depth;
  }
}

TEST(PrintJson, SaysFirstThatATreeLooksLikeOneOfTheOtherLayout) {
  const CurrentTree job = currentJob(20);
  job->stScheduleExt.abReserved12[0] = 1;
  BkoqPrintOptions options = withoutZeros();
  options.format = BKOQ_FORMAT_JSON;
  options.depth = 1;
  EXPECT_EQ(printed(job, options), expected(R"(
{
  "format": "bkoq-tree",
  "version": 1,
  "layout": "current",
  "note": "this looks like a tree of the previous layout: stScheduleExt.abReserved12 is not zero, where that layout has abJobTypes",
  "job": {"record": "BKQJDATATRANSFER", "block": 1, "offset": 0, "size": 292, "fields": {
    "usJobType": {"offset": 4, "width": 2, "kind": "number", "value": 20, "hex": "0x0014", "word": "rotation backup"},
    "stScheduleExt": {"offset": 196, "width": 48, "kind": "embedded"}
  }}
}
)"));
}

// The record has the path of its field, and is found once.
TEST(PrintJson, FindsARecordInAFieldOnceAtEveryDepth) {
  const CurrentTree job = currentJob(1);
  job->stFax.pszFaxNumber = text("1");
  const auto found = [&](const char* path, BkoqFormat format, std::uint32_t depth) {
    BkoqPrintOptions options = withoutZeros();
    options.format = format;
    options.depth = depth;
    std::string all;
    EXPECT_EQ(bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, path, &options, appendToString, &all),
              BKOQ_OK);
    const std::size_t start = all.find('\n', all.find(std::string("\"") + path));
    return all.substr(start + 1);
  };
  for (const std::uint32_t depth : {0u, 1u, 2u}) {
    EXPECT_EQ(found("stFax", BKOQ_FORMAT_PLAIN_JSON, depth), R"(  "value": {
        "pszFaxNumber": "1"
      }
}
)");
    EXPECT_EQ(found("stF*", BKOQ_FORMAT_PLAIN_JSON, depth), R"(  "matches": [
    {"path": "stFax", "value": {
          "pszFaxNumber": "1"
        }}
  ]
}
)");
    EXPECT_EQ(found("stE*", BKOQ_FORMAT_JSON, depth), "  \"matches\": [\n  ]\n}\n") << "all zero";
  }
}

// Not even the beginning is printed.
TEST(PrintJson, PrintsNothingOfARecordThatIsNotThere) {
  const CurrentTree job = currentJob(1);
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_JSON;
  for (const char* record : {"BKNODE", "BKNODE_OLD"}) {
    options.onlyRecord = record;
    std::string text;
    EXPECT_EQ(bkoqPrint(job.get(), BKOQ_LAYOUT_CURRENT, &options, appendToString, &text),
              BKOQ_NOT_FOUND);
    EXPECT_EQ(text, "");
  }
}

// What is not to be shown as it is, of every length in UTF-8 and, from U+10000 on, as two escapes.
TEST(PrintJson, EscapesCharactersOfEveryLength) {
  const CurrentTree job = currentJob(1);
  job->pszComments = text("a\x1F\xC2\x85\xEF\xBB\xBF\xF0\x9D\x85\xB3\xF4\x8F\xBF\xBF");
  BkoqPrintOptions options{};
  options.format = BKOQ_FORMAT_JSON;
  std::string value;
  EXPECT_EQ(bkoqPrintField(job.get(), BKOQ_LAYOUT_CURRENT, "pszComments", &options, appendToString,
                           &value),
            BKOQ_OK);
  EXPECT_NE(value.find(R"("value": "a\u001f\u0085\ufeff\ud834\udd73\udbff\udfff")"),
            std::string::npos)
      << value;
}

}  // namespace
}  // namespace bkoq::test
