#include "bench/shapes.h"

#include <bkoq/bkoq.h>

#include <cstdarg>
#include <cstdio>

namespace bkoq::bench {
namespace {

// Words of the lengths that names on backed-up machines have.
const char* const kWords[] = {"accounts", "archive", "backup",   "cache",     "data",   "finance",
                              "home",     "images",  "ledger",   "mail",      "orders", "payroll",
                              "projects", "reports", "software", "statistics"};
const char* const kSuffixes[] = {"db", "txt", "pdf", "log", "xls", "tar.gz", "c", "html"};

const char* word(unsigned int n) { return kWords[n % 16]; }

__attribute__((format(printf, 1, 2))) std::string print(const char* format, ...) {
  char text[96];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  return text;
}

std::string fileName(unsigned int n) {
  return print("%s-2004-%05u.%s", word(n * 7), n, kSuffixes[n % 8]);
}

Filter patternFilter(unsigned int n) {
  Filter filter{};
  filter.type = static_cast<std::uint16_t>(1 + n % 3);
  filter.inclExcl = n % 4 != 0 ? 1 : 0;
  if (filter.type == 1) {
    filter.pattern = print("%s%u*", word(n), n);
  } else if (filter.type == 2) {
    filter.pattern = print("*.%s~%u", kSuffixes[n % 8], n);
  } else {
    filter.pattern = print("/var/cache/%s/%u", word(n), n);
  }
  return filter;
}

Filter attributeFilter(unsigned int n) {
  Filter filter{};
  filter.type = 5;
  filter.inclExcl = 1;
  filter.attributes = 0x80000000 | n;
  return filter;
}

Filter timeFilter(unsigned int n) {
  constexpr std::uint32_t kMarch2004 = 3255627600U;
  constexpr std::uint32_t kHours = 5 * 3600;
  Filter filter{};
  filter.type = 4;
  filter.timeAttribute = static_cast<std::uint16_t>(1 + n % 3);
  filter.timeRange = static_cast<std::uint16_t>(n % 3);
  filter.bounds[0] = kMarch2004 + n * kHours % 500000000;
  filter.bounds[1] = filter.bounds[0] + 86400;
  for (int i = 0; i < 2; ++i) filter.localBounds[i] = asRecorded(filter.bounds[i]);
  return filter;
}

DiskItem item(unsigned int n) {
  DiskItem item{};
  item.path = print("/srv/%s/2004/%s-%05u", word(n), word(n / 16), n);
  item.options = 1 + n % 4;
  return item;
}

Disk disk(unsigned int n) {
  Disk disk{};
  disk.type = 5;
  disk.options = 1;
  disk.name = print("/export/%s%u", word(n), n);
  if (n % 2 == 0) disk.password = print("pw%u", n);
  if (n % 3 == 0) {
    disk.user = "operator";
    disk.password2 = print("s3cret%u", n);
  }
  if (n % 8 == 0) disk.encryptionKey = "0123456789abcdef";
  return disk;
}

Node node(unsigned int n) {
  const struct {
    std::uint32_t type;
    std::uint32_t os;
    const char* version;
  } kinds[] = {{BKQNode::UnixNode, 6, "5.8"},
               {BKQNode::WinNTNode, 8, "4.0 SP6"},
               {BKQNode::NetwareNode, 4, "5.1"}};
  const auto& kind = kinds[n % 3];
  Node node{};
  node.type = kind.type;
  node.os = kind.os;
  node.options = 0x120;
  node.beforeNodeWait = 5;
  node.unixOptions = kind.type == BKQNode::UnixNode ? 0x10 : 0;
  node.osVersion = kind.version;
  node.name = print("%s%u", word(n), n);
  node.domain = "accounting";
  node.address = print("10.%u.%u.%u", n / 65536 % 256, n / 256 % 256, n % 256);
  node.user = n % 3 == 1 ? "Administrator" : "root";
  node.password = print("tr0ub4%u", n);
  return node;
}

Tape tape(unsigned int n) {
  Tape tape{};
  tape.deviceGroup = "DAILY";
  tape.name = print("NIGHT-%05u", n);
  tape.path = print("/%s/%u", word(n), n);
  tape.location = print("shelf %u", n % 40);
  if (n % 2 == 0) tape.sessionPassword = "t4pe";
  tape.id = n;
  tape.sequence = static_cast<std::uint8_t>(n);
  tape.session = static_cast<std::uint16_t>(n);
  tape.qfaBlock = 4096 + n;
  tape.fileSystem = 2;
  return tape;
}

TapeItem tapeItem(unsigned int n) {
  TapeItem item{};
  item.chunk = n;
  item.chunkOffset = 512;
  item.options = 1;
  item.fileOrDir = print("srv/%s/%u", word(n), n);
  return item;
}

Job emptyJob() {
  Job job{};
  job.owner = "operator";
  job.host = "backup1";
  job.reportFile = "/var/log/nightly.rpt";
  job.comments = "Nightly backup of the accounting machines";
  job.beforeJob = "/usr/local/bin/quiesce";
  job.afterJob = "/usr/local/bin/resume";
  job.status = 2;
  job.scriptType = 2;
  job.beforeJobWait = 30;
  job.options = 8;
  job.newTapeTimeout = 10;
  job.spanTapeTimeout = 600;
  job.newTapeMethod = 1;
  job.spanTapeMethod = 2;
  job.isEncrypted = true;
  job.isCompressed = true;
  job.destination = "library1";
  return job;
}

Job oneNode() {
  Job job = emptyJob();
  job.nodes.push_back(node(0));
  return job;
}

Job manyNodes(unsigned int elements) {
  Job job = emptyJob();
  for (unsigned int i = 0; i < elements; ++i) job.nodes.push_back(node(i));
  return job;
}

Job manyDisks(unsigned int elements) {
  Job job = oneNode();
  for (unsigned int i = 0; i < elements; ++i) job.nodes[0].disks.push_back(disk(i));
  return job;
}

Job manyItems(unsigned int elements) {
  Job job = oneNode();
  job.nodes[0].disks.push_back(disk(0));
  for (unsigned int i = 0; i < elements; ++i) job.nodes[0].disks[0].items.push_back(item(i));
  return job;
}

Job manyFiles(unsigned int elements) {
  Job job = oneNode();
  job.nodes[0].disks.push_back(disk(0));
  job.nodes[0].disks[0].items.push_back(item(0));
  auto& files = job.nodes[0].disks[0].items[0].files;
  for (unsigned int i = 0; i < elements; ++i) files.push_back(fileName(i));
  return job;
}

Job tenNodes() {
  Job job = emptyJob();
  for (unsigned int i = 0; i < 10; ++i) job.nodes.push_back(node(i));
  return job;
}

Job manyFilters(unsigned int elements) {
  Job job = tenNodes();
  for (unsigned int i = 0; i < elements / 10; ++i) {
    job.filters.push_back(i % 8 == 7 ? attributeFilter(i) : patternFilter(i));
  }
  return job;
}

Job manyTapes(unsigned int elements) {
  Job job = oneNode();
  for (unsigned int i = 0; i < elements; ++i) job.tapes.push_back(tape(i));
  return job;
}

// Of every 50 elements: 1 node, 4 disks, 12 items, 24 file names, 4 filters, 1 tape, 4 tape items.
Job mixture(unsigned int elements) {
  Job job = emptyJob();
  for (unsigned int i = 0; i < elements / 50; ++i) {
    job.nodes.push_back(node(i));
    Node& newNode = job.nodes.back();
    newNode.filters.push_back(patternFilter(i));
    for (unsigned int d = 0; d < 4; ++d) {
      newNode.disks.push_back(disk(4 * i + d));
      Disk& newDisk = newNode.disks.back();
      if (d < 2) newDisk.filters.push_back(attributeFilter(d));
      for (unsigned int k = 0; k < 3; ++k) {
        newDisk.items.push_back(item(12 * i + 3 * d + k));
        if (k != 0) continue;
        for (unsigned int f = 0; f < 6; ++f) newDisk.items[0].files.push_back(fileName(6 * i + f));
      }
    }
    job.tapes.push_back(tape(i));
    Tape& newTape = job.tapes.back();
    newTape.filters.push_back(patternFilter(i + 1));
    for (unsigned int k = 0; k < 4; ++k) newTape.items.push_back(tapeItem(4 * i + k));
  }
  return job;
}

}  // namespace

Job typicalJob() {
  Job job = emptyJob();
  for (unsigned int n = 0; n < 3; ++n) {
    job.nodes.push_back(node(n));
    for (unsigned int d = 0; d < 2; ++d) {
      job.nodes.back().disks.push_back(disk(2 * n + d));
      Disk& newDisk = job.nodes.back().disks.back();
      for (unsigned int k = 0; k < 3; ++k) newDisk.items.push_back(item(6 * n + 3 * d + k));
      newDisk.items[0].files = {fileName(2 * n), fileName(2 * n + 1)};
    }
  }
  for (unsigned int i = 0; i < 3; ++i) job.filters.push_back(patternFilter(i));
  job.filters.push_back(attributeFilter(1));
  job.tapes.push_back(tape(1));
  return job;
}

const std::vector<Shape>& growingShapes() {
  static const std::vector<Shape> shapes = {
      {"nodes", manyNodes},      {"disks", manyDisks},     {"items", manyItems},
      {"file names", manyFiles}, {"filters", manyFilters}, {"tapes", manyTapes},
      {"mixture", mixture},
  };
  return shapes;
}

std::int32_t asRecorded(std::uint32_t seconds) {
  struct tm fields;
  RWTime(seconds).extract(&fields);
  return static_cast<std::int32_t>(BKConvertToBKTime(mktime(&fields), 0));
}

Job jobTimeFilters(unsigned int elements) {
  Job job = tenNodes();
  for (unsigned int i = 0; i < elements / 10; ++i) job.filters.push_back(timeFilter(i));
  return job;
}

Job nodeTimeFilters(unsigned int elements) {
  Job job = oneNode();
  for (unsigned int i = 0; i < elements; ++i) job.nodes[0].filters.push_back(timeFilter(i));
  return job;
}

bool makeJob(const std::string& shape, unsigned int elements, Job& out) {
  if (shape == "typical job") {
    out = typicalJob();
    return true;
  }
  for (const Shape& known : growingShapes()) {
    if (shape != known.name) continue;
    out = known.make(elements);
    return true;
  }
  return false;
}

}  // namespace bkoq::bench
