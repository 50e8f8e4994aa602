#include "bench/message.h"

#include "peer.pb.h"

namespace bkoq::bench {
namespace {

// Texts and numbers without a value are left as they are: that is how they are absent.
#define BKOQ_SET(field, value) \
  if (!(value).empty()) out.set_##field(value)

void fill(message::Filter& out, const Filter& filter) {
  out.set_type(filter.type);
  out.set_incl_excl(filter.inclExcl);
  BKOQ_SET(pattern, filter.pattern);
  out.set_attributes(filter.attributes);
  out.set_time_attribute(filter.timeAttribute);
  out.set_time_range(filter.timeRange);
  out.set_start(filter.localBounds[0]);
  out.set_end(filter.localBounds[1]);
}

void fill(message::DiskItem& out, const DiskItem& item) {
  BKOQ_SET(path, item.path);
  out.set_options(item.options);
  for (const std::string& file : item.files) out.add_files(file);
}

void fill(message::Disk& out, const Disk& disk) {
  out.set_type(disk.type);
  out.set_options(disk.options);
  BKOQ_SET(name, disk.name);
  BKOQ_SET(password, disk.password);
  BKOQ_SET(user, disk.user);
  BKOQ_SET(password2, disk.password2);
  BKOQ_SET(encryption_key, disk.encryptionKey);
  for (const DiskItem& item : disk.items) fill(*out.add_items(), item);
  for (const Filter& filter : disk.filters) fill(*out.add_filters(), filter);
}

void fill(message::Node& out, const Node& node, const Job& job) {
  out.set_type(node.type);
  out.set_os(node.os);
  out.set_options(node.options);
  out.set_device_type(node.deviceType);
  out.set_before_node_wait(node.beforeNodeWait);
  BKOQ_SET(os_version, node.osVersion);
  BKOQ_SET(name, node.name);
  BKOQ_SET(domain, node.domain);
  BKOQ_SET(address, node.address);
  BKOQ_SET(user, node.user);
  BKOQ_SET(password, node.password);
  BKOQ_SET(before_node, node.beforeNode);
  BKOQ_SET(after_node, node.afterNode);
  for (const Disk& disk : node.disks) fill(*out.add_disks(), disk);
  for (const auto* filters : {&node.filters, &job.filters}) {
    for (const Filter& filter : *filters) fill(*out.add_filters(), filter);
  }
}

void fill(message::TapeItem& out, const TapeItem& item) {
  out.set_chunk(item.chunk);
  out.set_chunk_offset(item.chunkOffset);
  out.set_options(item.options);
  BKOQ_SET(file_or_dir, item.fileOrDir);
}

void fill(message::Tape& out, const Tape& tape, const Job& job) {
  BKOQ_SET(device_group, tape.deviceGroup);
  BKOQ_SET(name, tape.name);
  BKOQ_SET(session_password, tape.sessionPassword);
  BKOQ_SET(path, tape.path);
  BKOQ_SET(location, tape.location);
  out.set_id(tape.id);
  out.set_sequence(tape.sequence);
  out.set_session(tape.session);
  out.set_qfa_block(tape.qfaBlock);
  out.set_new_tape_method(job.newTapeMethod);
  out.set_span_tape_method(job.spanTapeMethod);
  out.set_new_tape_timeout(job.newTapeTimeout);
  out.set_span_tape_timeout(job.spanTapeTimeout);
  out.set_file_system(tape.fileSystem);
  out.set_options(tape.options);
  for (const TapeItem& item : tape.items) fill(*out.add_items(), item);
  for (const Filter& filter : tape.filters) fill(*out.add_filters(), filter);
}

}  // namespace

bool hasMessages() { return true; }

std::string packMessage(const Job& job) {
  message::Job out;
  BKOQ_SET(owner, job.owner);
  BKOQ_SET(host, job.host);
  BKOQ_SET(report_file, job.reportFile);
  BKOQ_SET(comments, job.comments);
  BKOQ_SET(before_job, job.beforeJob);
  BKOQ_SET(after_job, job.afterJob);
  out.set_status(job.status);
  out.set_script_type(job.scriptType);
  out.set_before_job_wait(job.beforeJobWait);
  out.set_options(job.options);
  for (const Node& node : job.nodes) fill(*out.add_nodes(), node, job);
  BKOQ_SET(destination, job.destination);
  for (const Tape& tape : job.tapes) fill(*out.add_tapes(), tape, job);
  return out.SerializeAsString();
}

#undef BKOQ_SET

}  // namespace bkoq::bench
