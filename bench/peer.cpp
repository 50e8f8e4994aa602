#include "bench/peer.h"

#include "peer_generated.h"

namespace bkoq::bench {
namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;
using flatbuffers::Vector;

// By the builder, from the plain structures.
class Packer {
 public:
  explicit Packer(const Job& job) : job_(job) {}

  flatbuffers::DetachedBuffer pack() {
    const auto owner = pack(job_.owner);
    const auto host = pack(job_.host);
    const auto reportFile = pack(job_.reportFile);
    const auto comments = pack(job_.comments);
    const auto beforeJob = pack(job_.beforeJob);
    const auto afterJob = pack(job_.afterJob);
    const auto nodes = packAll<peer::Node>(job_.nodes);
    const auto destination = pack(job_.destination);
    const auto tapes = packAll<peer::Tape>(job_.tapes);
    builder_.Finish(peer::CreateJob(builder_, owner, host, reportFile, comments, beforeJob,
                                    afterJob, job_.status, job_.scriptType, job_.beforeJobWait,
                                    job_.options, nodes, destination, tapes));
    return builder_.Release();
  }

 private:
  // As the object API does it, an empty text is left out.
  Offset<flatbuffers::String> pack(const std::string& text) {
    return text.empty() ? 0 : builder_.CreateString(text);
  }

  template <class Table, class Element>
  Offset<Vector<Offset<Table>>> packAll(const std::vector<Element>& elements) {
    if (elements.empty()) return 0;
    return builder_.CreateVector<Offset<Table>>(elements.size(),
                                                [&](std::size_t i) { return pack(elements[i]); });
  }

  Offset<peer::Filter> pack(const Filter& filter) {
    const auto pattern = pack(filter.pattern);
    return peer::CreateFilter(builder_, filter.type, filter.inclExcl, pattern, filter.attributes,
                              filter.timeAttribute, filter.timeRange, filter.localBounds[0],
                              filter.localBounds[1]);
  }

  Offset<Vector<Offset<peer::Filter>>> packNodeFilters(const Node& node) {
    const std::size_t own = node.filters.size();
    const std::size_t count = own + job_.filters.size();
    if (count == 0) return 0;
    return builder_.CreateVector<Offset<peer::Filter>>(count, [&](std::size_t i) {
      return pack(i < own ? node.filters[i] : job_.filters[i - own]);
    });
  }

  Offset<flatbuffers::Vector<Offset<flatbuffers::String>>> packFiles(const DiskItem& item) {
    if (item.files.empty()) return 0;
    return builder_.CreateVector<Offset<flatbuffers::String>>(
        item.files.size(), [&](std::size_t i) { return builder_.CreateString(item.files[i]); });
  }

  Offset<peer::DiskItem> pack(const DiskItem& item) {
    const auto path = pack(item.path);
    const auto files = packFiles(item);
    return peer::CreateDiskItem(builder_, path, item.options, files);
  }

  Offset<peer::Disk> pack(const Disk& disk) {
    const auto name = pack(disk.name);
    const auto password = pack(disk.password);
    const auto user = pack(disk.user);
    const auto password2 = pack(disk.password2);
    const auto encryptionKey = pack(disk.encryptionKey);
    const auto items = packAll<peer::DiskItem>(disk.items);
    const auto filters = packAll<peer::Filter>(disk.filters);
    return peer::CreateDisk(builder_, static_cast<std::uint16_t>(disk.type), disk.options, name,
                            password, user, password2, encryptionKey, items, filters);
  }

  Offset<peer::Node> pack(const Node& node) {
    const auto osVersion = pack(node.osVersion);
    const auto name = pack(node.name);
    const auto domain = pack(node.domain);
    const auto address = pack(node.address);
    const auto user = pack(node.user);
    const auto password = pack(node.password);
    const auto beforeNode = pack(node.beforeNode);
    const auto afterNode = pack(node.afterNode);
    const auto disks = packAll<peer::Disk>(node.disks);
    const auto filters = packNodeFilters(node);
    return peer::CreateNode(builder_, static_cast<std::uint16_t>(node.type),
                            static_cast<std::uint16_t>(node.os), node.options, node.deviceType,
                            node.beforeNodeWait, osVersion, name, domain, address, user, password,
                            beforeNode, afterNode, disks, filters);
  }

  Offset<peer::TapeItem> pack(const TapeItem& item) {
    const auto fileOrDir = pack(item.fileOrDir);
    return peer::CreateTapeItem(builder_, item.chunk, item.chunkOffset, item.options, fileOrDir);
  }

  Offset<peer::Tape> pack(const Tape& tape) {
    const auto deviceGroup = pack(tape.deviceGroup);
    const auto name = pack(tape.name);
    const auto sessionPassword = pack(tape.sessionPassword);
    const auto path = pack(tape.path);
    const auto location = pack(tape.location);
    const auto items = packAll<peer::TapeItem>(tape.items);
    const auto filters = packAll<peer::Filter>(tape.filters);
    return peer::CreateTape(builder_, deviceGroup, name, sessionPassword, path, location,
                            static_cast<std::uint16_t>(tape.id), tape.sequence, tape.session,
                            tape.qfaBlock, static_cast<std::uint16_t>(job_.newTapeMethod),
                            static_cast<std::uint16_t>(job_.spanTapeMethod), job_.newTapeTimeout,
                            job_.spanTapeTimeout, tape.fileSystem, tape.options, items, filters);
  }

  const Job& job_;
  FlatBufferBuilder builder_;
};

// The same content as objects. makeAll() appends one for each element.
void fill(peer::FilterT& out, const Filter& filter);
void fill(peer::DiskItemT& out, const DiskItem& item);
void fill(peer::DiskT& out, const Disk& disk);
void fill(peer::NodeT& out, const Node& node);
void fill(peer::TapeItemT& out, const TapeItem& item);
void fill(peer::TapeT& out, const Tape& tape);

template <class Object, class Element>
void makeAll(std::vector<std::unique_ptr<Object>>& out, const std::vector<Element>& elements) {
  for (const Element& element : elements) {
    out.push_back(std::make_unique<Object>());
    fill(*out.back(), element);
  }
}

void fill(peer::FilterT& out, const Filter& filter) {
  out.type = filter.type;
  out.incl_excl = filter.inclExcl;
  out.pattern = filter.pattern;
  out.attributes = filter.attributes;
  out.time_attribute = filter.timeAttribute;
  out.time_range = filter.timeRange;
  out.start = filter.localBounds[0];
  out.end = filter.localBounds[1];
}

void fill(peer::DiskItemT& out, const DiskItem& item) {
  out.path = item.path;
  out.options = item.options;
  out.files = item.files;
}

void fill(peer::DiskT& out, const Disk& disk) {
  out.type = static_cast<std::uint16_t>(disk.type);
  out.options = disk.options;
  out.name = disk.name;
  out.password = disk.password;
  out.user = disk.user;
  out.password2 = disk.password2;
  out.encryption_key = disk.encryptionKey;
  makeAll(out.items, disk.items);
  makeAll(out.filters, disk.filters);
}

void fill(peer::NodeT& out, const Node& node) {
  out.type = static_cast<std::uint16_t>(node.type);
  out.os = static_cast<std::uint16_t>(node.os);
  out.options = node.options;
  out.device_type = node.deviceType;
  out.before_node_wait = node.beforeNodeWait;
  out.os_version = node.osVersion;
  out.name = node.name;
  out.domain = node.domain;
  out.address = node.address;
  out.user = node.user;
  out.password = node.password;
  out.before_node = node.beforeNode;
  out.after_node = node.afterNode;
  makeAll(out.disks, node.disks);
  makeAll(out.filters, node.filters);
}

void fill(peer::TapeItemT& out, const TapeItem& item) {
  out.chunk = item.chunk;
  out.chunk_offset = item.chunkOffset;
  out.options = item.options;
  out.file_or_dir = item.fileOrDir;
}

void fill(peer::TapeT& out, const Tape& tape) {
  out.device_group = tape.deviceGroup;
  out.name = tape.name;
  out.session_password = tape.sessionPassword;
  out.path = tape.path;
  out.location = tape.location;
  out.id = static_cast<std::uint16_t>(tape.id);
  out.sequence = tape.sequence;
  out.session = tape.session;
  out.qfa_block = tape.qfaBlock;
  out.file_system = tape.fileSystem;
  out.options = tape.options;
  makeAll(out.items, tape.items);
  makeAll(out.filters, tape.filters);
}

}  // namespace

flatbuffers::DetachedBuffer packPlain(const Job& job) { return Packer(job).pack(); }

PeerModel::PeerModel(const Job& content) : job_(std::make_unique<peer::JobT>()) {
  peer::JobT& job = *job_;
  job.owner = content.owner;
  job.host = content.host;
  job.report_file = content.reportFile;
  job.comments = content.comments;
  job.before_job = content.beforeJob;
  job.after_job = content.afterJob;
  job.status = content.status;
  job.script_type = content.scriptType;
  job.before_job_wait = content.beforeJobWait;
  job.options = content.options;
  job.destination = content.destination;
  makeAll(job.nodes, content.nodes);
  for (auto& node : job.nodes) makeAll(node->filters, content.filters);
  makeAll(job.tapes, content.tapes);
  for (auto& tape : job.tapes) {
    tape->new_tape_method = static_cast<std::uint16_t>(content.newTapeMethod);
    tape->span_tape_method = static_cast<std::uint16_t>(content.spanTapeMethod);
    tape->new_tape_timeout = content.newTapeTimeout;
    tape->span_tape_timeout = content.spanTapeTimeout;
  }
}

PeerModel::~PeerModel() = default;

flatbuffers::DetachedBuffer PeerModel::pack() const {
  FlatBufferBuilder builder;
  builder.Finish(peer::CreateJob(builder, job_.get()));
  return builder.Release();
}

}  // namespace bkoq::bench
