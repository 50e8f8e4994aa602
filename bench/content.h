#ifndef BKOQ_BENCH_CONTENT_H_
#define BKOQ_BENCH_CONTENT_H_

#include <cstdint>
#include <string>
#include <vector>

// What a job holds, as plain structures: what a program would have without the library.
namespace bkoq::bench {

struct Filter {
  std::uint16_t type;  // as in the record: 1 volume, 2 file, 3 directory, 4 time, 5 attribute
  std::uint16_t inclExcl;
  std::string pattern;
  std::uint32_t attributes;
  std::uint16_t timeAttribute;
  std::uint16_t timeRange;      // 0 before, 1 after, 2 between
  std::uint32_t bounds[2];      // seconds since 1901, as the library's objects hold them
  std::int32_t localBounds[2];  // the same moments as the records hold them
};

struct DiskItem {
  std::string path;
  std::uint32_t options;
  std::vector<std::string> files;
};

struct Disk {
  std::uint32_t type;
  std::uint32_t options;
  std::string name;
  std::string password;
  std::string user;
  std::string password2;
  std::string encryptionKey;
  std::vector<DiskItem> items;
  std::vector<Filter> filters;
};

struct Node {
  std::uint32_t type;
  std::uint32_t os;
  std::uint32_t options;
  std::uint16_t deviceType;
  std::uint16_t beforeNodeWait;
  std::uint32_t unixOptions;
  std::string osVersion;
  std::string name;
  std::string domain;
  std::string address;
  std::string user;
  std::string password;
  std::string beforeNode;
  std::string afterNode;
  std::vector<Disk> disks;
  std::vector<Filter> filters;
};

struct TapeItem {
  std::uint32_t chunk;
  std::uint16_t chunkOffset;
  std::uint32_t options;
  std::string fileOrDir;
};

struct Tape {
  std::string deviceGroup;
  std::string name;
  std::string sessionPassword;
  std::string path;
  std::string location;
  std::uint32_t id;
  std::uint8_t sequence;
  std::uint16_t session;
  std::uint32_t qfaBlock;
  std::uint8_t fileSystem;
  std::uint32_t options;
  std::vector<TapeItem> items;
  std::vector<Filter> filters;
};

struct Job {
  std::string owner;
  std::string host;
  std::string reportFile;
  std::string comments;
  std::string beforeJob;
  std::string afterJob;
  std::uint16_t status;
  std::uint16_t scriptType;
  std::uint16_t beforeJobWait;
  std::uint32_t options;
  std::uint16_t newTapeTimeout;
  std::uint16_t spanTapeTimeout;
  std::uint32_t newTapeMethod;
  std::uint32_t spanTapeMethod;
  bool isEncrypted;
  bool isCompressed;
  std::vector<Node> nodes;
  std::string destination;
  std::vector<Tape> tapes;
  std::vector<Filter> filters;  // go to every node
};

}  // namespace bkoq::bench

#endif  // BKOQ_BENCH_CONTENT_H_
